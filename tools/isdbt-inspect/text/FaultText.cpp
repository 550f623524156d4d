#include "text/FaultText.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

bool isListed(const FaultKind& kind, Listed listed) {
    return kind.shownBy == FaultKind::ShownBy::Fault ||
           (kind.shownBy != FaultKind::ShownBy::Summary && listed == Listed::All);
}

/// A text, and all that it is said of.
struct Group {
    std::string text;
    std::vector<std::string> abouts;
};

} // namespace

void appendFaults(Page& page, const Faults& faults, Listed listed, std::size_t most) {
    std::vector<Group> groups;
    std::size_t count = 0;
    for (const Fault& fault : faults.all()) {
        if (isListed(fault.kind, listed)) {
            auto group = std::find_if(groups.begin(), groups.end(),
                                      [&fault](const Group& each) { return each.text == fault.text; });
            group = group != groups.end() ? group : groups.insert(group, {fault.text, {}});
            group->abouts.push_back(fault.about);
            ++count;
        }
    }
    if (count != 0) {
        appendLine(page, counted(count, "fault", "faults") + ":");
    }
    for (const Group& group : groups) {
        const std::size_t named = std::min(group.abouts.size(), most);
        std::string abouts = fmt::format(
            "{}", fmt::join(group.abouts.begin(), group.abouts.begin() + static_cast<std::ptrdiff_t>(named), ", "));
        if (named != group.abouts.size()) {
            abouts += fmt::format(" and {} more", group.abouts.size() - named);
        }
        appendLine(page, {fmt::format("! {}{}{}", abouts, abouts.empty() ? "" : ": ", group.text), Ink::Fault},
                   2 * INDENT);
    }
}

} // namespace inspect
