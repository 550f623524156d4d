#include "Reader.h"

namespace dsmcc {

void refuse(RefusalKind kind, std::size_t at, std::string text) {
    throw Refused({kind, at, std::move(text)});
}

ByteView Reader::view(std::size_t size, const char* field) {
    if (size > left()) {
        refuse(RefusalKind::Truncated, at(),
               std::string(field) + " takes " + std::to_string(size) + " bytes, and " + std::to_string(left()) +
                   " are left");
    }
    const ByteView found{m_bytes.data + m_at, size};
    m_at += size;
    return found;
}

Bytes Reader::bytes(std::size_t size, const char* field) {
    const ByteView found = view(size, field);
    return {found.begin(), found.end()};
}

std::string Reader::text(std::size_t size, const char* field) {
    const ByteView found = view(size, field);
    std::string text(found.begin(), found.end());
    text.erase(text.find_last_not_of('\0') + 1);
    return text;
}

Reader Reader::part(std::size_t size, const char* field) {
    const std::size_t begin = at();
    Reader part(view(size, field), begin);
    part.m_little = m_little;
    return part;
}

std::uint64_t Reader::number(std::size_t size, const char* field) {
    const ByteView found = view(size, field);
    std::uint64_t value = 0;
    for (std::size_t at = 0; at < size; ++at) {
        value = value << 8U | found.data[m_little ? size - 1 - at : at];
    }
    return value;
}

} // namespace dsmcc
