#include "sections/Section.h"

#include "sections/Crc32.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <bitstream/mpeg/psi.h>
#include <functional>
#include <new>
#include <string_view>

namespace inspect {

namespace {

bool isOf(TableKind::Header header, std::uint8_t tableId) {
    const TableKind* const kind = tableKind(tableId);
    return kind != nullptr && kind->header == header;
}

} // namespace

Section::Section(Pid pid, Memory bytes, const Position& position)
    : m_pid(pid), m_bytes(std::move(bytes)), m_size(std::size_t{psi_get_length(m_bytes.get())} + PSI_HEADER_SIZE),
      m_position(position), m_sound(checkBytes()) {}

Section::Section(const std::uint8_t* data, std::size_t size, const Position& position)
    : m_bytes(static_cast<std::uint8_t*>(std::malloc(size))), m_size(size), m_position(position), m_sound(false) {
    if (m_bytes == nullptr) {
        throw std::bad_alloc();
    }
    std::copy_n(data, size, m_bytes.get());
    m_sound = checkBytes();
}

Bits Section::body() const {
    Bits bits(m_bytes.get(), std::max<std::size_t>(m_size, PSI_CRC_SIZE) - PSI_CRC_SIZE);
    bits.takeBytes(PSI_HEADER_SIZE_SYNTAX1);
    return bits;
}

bool Section::isLong() const {
    return (m_size > 1 && psi_get_syntax(m_bytes.get())) || isOf(TableKind::Header::Long, tableId());
}

bool Section::hasCrc() const {
    return isLong() || isOf(TableKind::Header::ShortWithCrc, tableId());
}

std::optional<LongHeader> Section::longHeader() const {
    if (!isLong() || size() < PSI_HEADER_SIZE_SYNTAX1) {
        return std::nullopt;
    }
    const std::uint8_t* const header = m_bytes.get();
    return LongHeader{psi_get_tableidext(header), psi_get_version(header), psi_get_current(header),
                      psi_get_section(header), psi_get_lastsection(header)};
}

bool Section::complete() const {
    return m_size >= PSI_HEADER_SIZE && m_size == std::size_t{psi_get_length(m_bytes.get())} + PSI_HEADER_SIZE;
}

bool Section::checkBytes() const {
    if (!complete()) {
        return false;
    }
    // A CRC_32 that does not fit into section_length would be looked for in front of the section.
    return !hasCrc() || (psi_get_length(m_bytes.get()) >= PSI_CRC_SIZE && crc32(m_bytes.get(), m_size) == 0);
}

std::uint32_t Section::fingerprint() const {
    // Over a good section a CRC that includes the CRC_32 would always come to the same.
    const std::string_view bytes(reinterpret_cast<const char*>(data()), size());
    return static_cast<std::uint32_t>(std::hash<std::string_view>()(bytes));
}

} // namespace inspect
