#include "serving/PageServer.h"

#include <stdexcept>

namespace inspect {

struct PageServer::Server {};

std::string PageServer::objectionTo(const std::string& /*address*/) {
    return "this build serves no page";
}

PageServer::PageServer(const std::string& address) {
    throw std::runtime_error(objectionTo(address));
}

PageServer::~PageServer() = default;

bool PageServer::isWatched() const {
    return false;
}

void PageServer::update(const std::string& /*source*/, std::string_view /*lines*/) {}

} // namespace inspect
