#include "naming/NameList.h"

#include <algorithm>

namespace inspect {

std::string_view NameList::of(std::int64_t number) const {
    const Name* const found =
        std::lower_bound(m_begin, m_end, number, [](const Name& name, std::int64_t each) { return name.last < each; });
    return found != m_end && found->first <= number ? found->text : std::string_view{};
}

std::string_view abbreviation(std::string_view name) {
    return name.substr(0, name.find(" ("));
}

} // namespace inspect
