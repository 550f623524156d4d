#include "describing/Kept.h"

#include "descriptors/TApplicationNameDescriptor.h"
#include "pat/TPATTable.h"

#include <fmt/format.h>

namespace inspect {

Field keptOf(Field list, std::size_t sent, std::string_view key) {
    if (sent > std::get<List>(list.value).elements.size()) {
        list.reading = fmt::format("of {} sent; of each {} the last is kept", sent, key);
    }
    return list;
}

/// Language codes of three bytes, each with a name behind its length.
std::size_t namesIn(const Quor::TApplicationNameDescriptor& descriptor) {
    constexpr unsigned LANGUAGE_CODE_SIZE = 3;
    const QUOR_U8* const data = descriptor.getData();
    std::size_t names = 0;
    for (unsigned at = 2; at + LANGUAGE_CODE_SIZE < 2U + data[1]; at += LANGUAGE_CODE_SIZE + 1) {
        at += data[at + LANGUAGE_CODE_SIZE];
        ++names;
    }
    return names;
}

/// The entries of program numbers other than 0, which stands for the network.
std::size_t programsIn(const Quor::TPATTable& pat) {
    constexpr QUOR_U32 ENTRY_SIZE = 4;
    const QUOR_U8* const data = pat.getData();
    const QUOR_U32 size = pat.getDataLength() - Quor::TISDBTTable::CRC_LENGTH;
    std::size_t programs = 0;
    for (QUOR_U32 at = Quor::TISDBTVersionedTable::COMMON_HEADER_LENGTH; at + ENTRY_SIZE <= size; at += ENTRY_SIZE) {
        programs += data[at] != 0 || data[at + 1] != 0 ? 1U : 0U;
    }
    return programs;
}

} // namespace inspect
