#pragma once

#include "dsmcc/Bytes.h"
#include "dsmcc/Refusal.h"

#include <exception>
#include <string>

namespace dsmcc {

/// Ends the reading of what does not hold together.
struct Refused : std::exception {
    explicit Refused(Refusal why) : refusal(std::move(why)) {}
    Refusal refusal;
};

[[noreturn]] void refuse(RefusalKind kind, std::size_t at, std::string text);

/// Goes through bytes, field by field. A field that is not there as a whole ends the reading.
class Reader {
public:
    /// @param base where the bytes begin in what refusals count from
    explicit Reader(ByteView bytes, std::size_t base = 0) : m_bytes(bytes), m_base(base) {}

    std::size_t at() const { return m_base + m_at; }
    std::size_t left() const { return m_bytes.size - m_at; }

    /// From here on numbers have their lowest byte first.
    void littleEndian(bool little) { m_little = little; }

    std::uint8_t u8(const char* field) { return static_cast<std::uint8_t>(number(1, field)); }
    std::uint16_t u16(const char* field) { return static_cast<std::uint16_t>(number(2, field)); }
    std::uint32_t u32(const char* field) { return static_cast<std::uint32_t>(number(4, field)); }
    std::uint64_t u64(const char* field) { return number(8, field); }

    ByteView view(std::size_t size, const char* field);
    Bytes bytes(std::size_t size, const char* field);

    /// A text, without the NULs at its end.
    std::string text(std::size_t size, const char* field);

    /// The next bytes by themselves.
    Reader part(std::size_t size, const char* field);

    /// What is left of these bytes.
    Reader rest() { return part(left(), ""); }

private:
    std::uint64_t number(std::size_t size, const char* field);

    ByteView m_bytes;
    std::size_t m_base;
    std::size_t m_at = 0;
    bool m_little = false;
};

} // namespace dsmcc
