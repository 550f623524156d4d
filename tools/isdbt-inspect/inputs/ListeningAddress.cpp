#include "inputs/ListeningAddress.h"

#include "inputs/StreamAddress.h"

#include <stdexcept>

namespace inspect {

std::string listeningAddress(const std::string& text) {
    return text.find(':') == std::string::npos ? "127.0.0.1:" + text : text;
}

std::string objectionToListeningOn(const std::string& text) {
    const std::string whole = listeningAddress(text);
    try {
        const StreamAddress checked("udp://" + whole);
        const bool hasHost = whole.front() != ':' && whole.find('@') == std::string::npos && !checked.isMulticast();
        return hasHost ? "" : text + " is no address to listen on";
    } catch (const std::invalid_argument& error) {
        return text + ": " + error.what();
    }
}

} // namespace inspect
