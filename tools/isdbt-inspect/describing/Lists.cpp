#include "describing/Lists.h"

namespace inspect {

Field keptOf(Field list, std::size_t sent, std::string_view key) {
    if (sent <= std::get<List>(list.value).elements.size()) {
        return list;
    }
    return std::move(list).reads(fmt::format("of {} sent; of each {} the last is kept", sent, key));
}

} // namespace inspect
