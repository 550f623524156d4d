#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace sample {

using Bytes = std::vector<std::uint8_t>;

/// Writes fields as they follow each other in a section, first bit first.
class Wire {
public:
    /// A number of 1 to 64 bits.
    Wire& bits(unsigned width, std::uint64_t value);

    /// The reserved bits of a field, all ones.
    Wire& reserved(unsigned width);

    /// From here on whole bytes only.
    Wire& text(std::string_view characters);
    Wire& append(const Bytes& bytes);

    /// Text behind its length of 8 bits.
    Wire& countedText(std::string_view characters);

    /// What is counted by a length of 12 bits behind 4 reserved ones: a loop of descriptors or of entries.
    Wire& loop(const Bytes& bytes);

    const Bytes& bytes() const { return m_bytes; }

private:
    Bytes m_bytes;
    unsigned m_usedBits = 0; ///< of the last byte; 0 when it is full
};

/// A descriptor: descriptor_tag, descriptor_length, body.
Bytes descriptor(std::uint8_t tag, const Wire& body);

/// A time: Modified Julian Date, then hours, minutes and seconds in BCD.
Bytes clockTime(unsigned day, unsigned hour, unsigned minute, unsigned second);

/// The time so many seconds behind the day's beginning, on a later day when they are more than a day.
Bytes clockTime(unsigned day, unsigned second);

/// Two BCD digits.
std::uint64_t bcd(unsigned number);

/// Which part of a table, in which version.
struct SectionNumber {
    unsigned version = 0;
    unsigned number = 0;
    unsigned last = 0;
};

/// A section with the long header, applicable now, and its CRC_32.
Bytes longSection(std::uint8_t tableId, std::uint16_t extension, const Wire& body, const SectionNumber& number = {});

/// The same of a carousel, whose private_indicator is the complement of section_syntax_indicator.
Bytes downloadSection(std::uint8_t tableId, std::uint16_t extension, const Wire& body,
                      const SectionNumber& number = {});

/// A section with the short header and a CRC_32.
Bytes shortSection(std::uint8_t tableId, const Wire& body);

} // namespace sample
