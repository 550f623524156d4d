#pragma once

#include "QuorDefs.h"

#include <memory>
#include <string>
#include <vector>

using ByteVector = std::vector<QUOR_U8>;
using Lines = std::vector<std::string>;

/// Bytes written as hexadecimal digits; white space between them is ignored, so that fields can be set apart.
ByteVector hex(const std::string& digits);

/// The bytes of a text.
ByteVector text(const std::string& characters);

/// The parts one behind the other.
ByteVector join(std::initializer_list<ByteVector> parts);

/// @p count times the byte @p value.
ByteVector fill(std::size_t count, QUOR_U8 value);

/// A heap copy of exactly the given size, so that the sanitizers see a read of one byte too far.
class HeapBytes {
public:
    explicit HeapBytes(const ByteVector& bytes);
    QUOR_U8* data() const { return m_data.get(); }
    QUOR_U32 size() const { return m_size; }

private:
    std::unique_ptr<QUOR_U8[]> m_data;
    QUOR_U32 m_size;
};

/// A section with the short header and its CRC_32: table_id | 0x70 section_length | body | CRC_32.
ByteVector shortSection(QUOR_U8 tableId, const ByteVector& body);

/// The fields of the long header that follow section_length.
struct LongHeader {
    QUOR_U16 extension = 0x0001;
    unsigned version = 0;
    bool current = true;
    QUOR_U8 section = 0;
    QUOR_U8 last = 0;
};

/// A section with the long header and its CRC_32:
/// table_id | 0xB0 section_length | extension | version | section_number | last_section_number | body | CRC_32.
ByteVector longSection(QUOR_U8 tableId, const LongHeader& header, const ByteVector& body);

/// Overwrites section_length, leaving everything else (the CRC_32 too) as it is.
ByteVector withSectionLength(ByteVector section, unsigned sectionLength);

/// The CRC_32 of ISO/IEC 13818-1 as sections carry it.
QUOR_U32 crc32(const ByteVector& bytes);

/// A descriptor: tag, descriptor_length, body.
ByteVector descriptor(QUOR_U8 tag, const ByteVector& body);

/// A 16-bit number in wire order; with @p flags in its high bits where a field is narrower.
ByteVector u16(unsigned value, unsigned flags = 0);

/// A loop behind its length of 12 bits, which keeps what fits of a longer one, under four reserved bits.
ByteVector loopOf(const ByteVector& content);

/// Descriptors of one tag, filled with zeros, that take @p size bytes (2 or more) in all.
ByteVector descriptorRun(QUOR_U8 tag, std::size_t size);
