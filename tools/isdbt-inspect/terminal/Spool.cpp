#include "terminal/Spool.h"

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace inspect {

namespace {

constexpr const char* NAME = "temporary file";

std::runtime_error failure() {
    return std::runtime_error(std::string(NAME) + ": " + std::strerror(errno));
}

} // namespace

Spool::Spool() : m_file(std::tmpfile(), std::fclose) {
    if (m_file == nullptr) {
        throw failure();
    }
    m_sink = std::make_shared<Sink>(fileno(m_file.get()), NAME);
}

void Spool::writeTo(Sink& sink) const {
    constexpr std::size_t CHUNK = std::size_t{1} << 16;
    std::rewind(m_file.get());
    std::vector<char> chunk(CHUNK);
    while (const std::size_t count = std::fread(chunk.data(), 1, chunk.size(), m_file.get())) {
        sink.write(nullptr, {chunk.data(), count});
    }
    if (std::ferror(m_file.get()) != 0) {
        throw failure();
    }
}

} // namespace inspect
