#include "starting/CarouselFiles.h"

#include "describing/Conversion.h"
#include "reports/Report.h"
#include "starting/Paths.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr double LONG_ENOUGH = 5; // seconds: what begins a carousel comes about each second

std::string key(const dsmcc::Bytes& objectKey) {
    std::string digits;
    for (const std::uint8_t each : objectKey) {
        digits += fmt::format("{:02X}", each);
    }
    return digits;
}

bool isDirectoryEntry(const dsmcc::Entry& entry) {
    return entry.kind == dsmcc::ObjectKind::Directory || entry.kind == dsmcc::ObjectKind::ServiceGateway;
}

bool isFileEntry(const dsmcc::Entry& entry) {
    return entry.kind == dsmcc::ObjectKind::File || entry.kind == dsmcc::ObjectKind::Module;
}

} // namespace

std::string blocksText(const dsmcc::Module& module) {
    constexpr std::size_t SOME = 4;
    std::string text = fmt::format("{} of {} blocks", module.received(), module.blockCount);
    const auto missing = module.missing();
    for (std::size_t at = 0; at < missing.size() && at <= SOME; ++at) {
        const auto [first, last] = missing[at];
        text += at == 0 ? ", missing " : ", ";
        text += at == SOME ? "..." : first == last ? std::to_string(first) : fmt::format("{}-{}", first, last);
    }
    return text;
}

std::string shownPath(std::string_view path) {
    return Conversion("UTF-8").shown(path);
}

CarouselFiles::CarouselFiles(const CarouselReport& report) : m_carousel(&report.carousel), m_tree(&report.tree) {
    std::optional<std::uint64_t> least;
    const auto count = [&least](const dsmcc::Module& module) {
        if (module.repetition.count != 0) {
            least = std::min(least.value_or(UINT64_MAX), module.repetition.count - 1);
        }
    };
    for (const dsmcc::Group& group : m_carousel->groups) {
        for (const dsmcc::Module* const module : group.modules) {
            m_modules.emplace(module->id, module);
            count(*module);
        }
    }
    if (!least) {
        for (const dsmcc::Module* const module : m_carousel->unannounced) {
            count(*module);
        }
    }
    m_wholeTurns = least.value_or(0);
    for (const dsmcc::Entry& entry : m_tree->entries) {
        if (!entry.path.empty()) {
            m_entries.emplace(entry.path, &entry);
        }
    }
}

bool CarouselFiles::isLong() const {
    return m_wholeTurns != 0 || m_carousel->last - m_carousel->first >= LONG_ENOUGH;
}

const dsmcc::Module* CarouselFiles::module(std::uint16_t id) const {
    const auto found = m_modules.find(id);
    return found == m_modules.end() ? nullptr : found->second;
}

std::uint64_t CarouselFiles::turnsOf(const dsmcc::Module& module) const {
    return module.repetition.count == 0 ? m_wholeTurns : module.repetition.count - 1;
}

/// Why a module that is announced cannot be had.
Outcome CarouselFiles::lackOf(const dsmcc::Module& module) const {
    switch (module.state) {
    case dsmcc::ModuleState::TooLarge:
    case dsmcc::ModuleState::InflateLimit:
        return notSeen(fmt::format("module 0x{:04X} is too large to be looked at", module.id));
    case dsmcc::ModuleState::BadBlockSize:
    case dsmcc::ModuleState::InflateFailed:
    case dsmcc::ModuleState::OriginalSize:
        return failed(faults::MODULE_UNREADABLE,
                      fmt::format("module 0x{:04X} cannot be read{}", module.id,
                                  module.refusals.empty() ? "" : ": " + module.refusals.back().text));
    default:
        break;
    }
    const auto others = std::find_if(m_carousel->unannounced.begin(), m_carousel->unannounced.end(),
                                     [&module](const dsmcc::Module* each) { return each->id == module.id; });
    if (module.received() == 0 && others != m_carousel->unannounced.end()) {
        return missing(turnsOf(**others) != 0, faults::MODULE_VERSION,
                       fmt::format("module 0x{:04X} is announced with version {}, but its blocks have version {}",
                                   module.id, module.version, (*others)->version));
    }
    const dsmcc::Ior* const gateway =
        m_carousel->dsi == nullptr || !m_carousel->dsi->gateway ? nullptr : &*m_carousel->dsi->gateway;
    if (module.received() == 0 && !module.info.taps.empty() && gateway != nullptr && !gateway->taps.empty() &&
        module.info.taps.front().associationTag != gateway->taps.front().associationTag) {
        return notSeen(fmt::format("module 0x{:04X} comes in another stream, that of association tag 0x{:04X}",
                                   module.id, module.info.taps.front().associationTag));
    }
    const std::uint64_t count = turnsOf(module);
    return missing(count != 0, faults::MODULE_INCOMPLETE,
                   fmt::format("module 0x{:04X} has {}, {}", module.id, blocksText(module),
                               count == 0 ? "and the stream no whole turn of it"
                                          : "after " + counted(count, "whole turn", "whole turns")));
}

Outcome CarouselFiles::lookForModule(std::uint16_t id) const {
    const dsmcc::Module* const found = module(id);
    if (found == nullptr) {
        return missing(isLong(), faults::MODULE_MISSING, fmt::format("no DII announces module 0x{:04X}", id));
    }
    return found->state == dsmcc::ModuleState::Complete
               ? passed(
                     fmt::format("module 0x{:04X} is complete: version {}, {}", id, found->version, blocksText(*found)),
                     found->completed)
               : lackOf(*found);
}

/// A receiver goes by the DSI, whatever else the module has.
Outcome CarouselFiles::lookForGateway() const {
    const std::optional<dsmcc::Entry>& gateway = m_tree->gateway;
    const dsmcc::DownloadServerInitiate* const dsi = m_carousel->dsi;
    const dsmcc::ObjectLocation* const location =
        dsi != nullptr && dsi->gateway && dsi->gateway->location ? &*dsi->gateway->location : nullptr;
    const bool isThere = gateway && gateway->object != nullptr;
    if (location != nullptr &&
        (!isThere || gateway->moduleId != location->moduleId || gateway->objectKey != location->objectKey)) {
        return failed(faults::OBJECT_MISSING,
                      fmt::format("module 0x{:04X} has no service gateway with the key {} that the DSI names",
                                  location->moduleId, key(location->objectKey)));
    }
    return isThere ? passed(fmt::format("the service gateway is in module 0x{:04X}, and has {}", gateway->moduleId,
                                        counted(gateway->object->bindings.size(), "name", "names")))
                   : notSeen("there is no service gateway");
}

Outcome CarouselFiles::lookAt(const dsmcc::Entry& entry) const {
    switch (entry.state) {
    case dsmcc::EntryState::Complete:
        return passed("", entry.module == nullptr ? 0 : entry.module->completed);
    case dsmcc::EntryState::ModuleIncomplete:
    case dsmcc::EntryState::ModuleRefused:
        return lackOf(*entry.module);
    case dsmcc::EntryState::ModuleNotAnnounced:
        return missing(isLong(), faults::MODULE_MISSING,
                       fmt::format("no DII announces its module 0x{:04X}", entry.moduleId));
    case dsmcc::EntryState::NoSuchObject:
        return failed(faults::OBJECT_MISSING, fmt::format("module 0x{:04X} has no object with its key {}",
                                                          entry.moduleId, key(entry.objectKey)));
    case dsmcc::EntryState::UnknownKind:
        return failed(faults::OBJECT_MISSING, "its object is of no kind that is known");
    case dsmcc::EntryState::OtherCarousel:
        return notSeen("it is in another carousel");
    default:
        return notSeen("its directory is not gone into");
    }
}

Outcome CarouselFiles::lookFor(std::string_view what, const std::string& path, bool isDirectory,
                               FaultKind fault) const {
    const std::string subject = fmt::format("{} {}", what, path.empty() ? "/" : shownPath(path));
    if (path.empty() && isDirectory) {
        return passed(subject + " is the root of the carousel");
    }
    double completed = 0;
    for (std::size_t end = 0; end != path.size();) {
        end = std::min(path.find('/', end + 1), path.size());
        const auto found = m_entries.find(std::string_view(path).substr(0, end));
        if (found == m_entries.end() && has(path)) {
            continue; // some names have slashes of their own
        }
        if (found == m_entries.end()) {
            return absence(subject, path, isDirectory, fault);
        }
        const dsmcc::Entry& entry = *found->second;
        Outcome there = lookAt(entry);
        if (!there.passed()) {
            there.text =
                fmt::format("{}: {}{}", subject, end == path.size() ? "" : shownPath(entry.path) + ": ", there.text);
            return there;
        }
        completed = std::max(completed, there.completed);
    }
    const dsmcc::Entry& entry = *m_entries.at(path);
    if (isDirectory ? !isDirectoryEntry(entry) : !isFileEntry(entry)) {
        return failed(fault, fmt::format("{} is no {}", subject, isDirectory ? "directory" : "file"));
    }
    return passed(isDirectory ? subject + " is there"
                              : fmt::format("{} is there: {} bytes in module 0x{:04X}", subject, entry.content().size,
                                            entry.moduleId),
                  completed);
}

Outcome CarouselFiles::absence(const std::string& subject, const std::string& path, bool isDirectory,
                               FaultKind fault) const {
    if (m_tree->refusal) {
        return notSeen(subject + " is not in what was read of the carousel");
    }
    const std::string near = nearest(path, isDirectory);
    return failed(fault, fmt::format("{} is not in the carousel{}", subject,
                                     near.empty() ? "" : "; the nearest is " + shownPath(near)));
}

/// What was probably meant: the same in other letters, or with a few characters changed; or a file of the same name
/// elsewhere. Empty when there is nothing like it.
std::string CarouselFiles::nearest(const std::string& path, bool isDirectory) const {
    constexpr std::size_t MOST_ENTRIES = 1024;
    constexpr std::size_t MOST_CHANGES = 3;
    const std::string_view name = std::string_view(path).substr(path.find_last_of('/') + 1);
    std::size_t changes = std::min(MOST_CHANGES, path.size() / 3) + 1;
    std::string_view changed;
    std::string_view elsewhere;
    std::size_t looked = 0;
    for (const auto& [each, entry] : m_entries) {
        if (isDirectory ? !isDirectoryEntry(*entry) : !isFileEntry(*entry)) {
            continue;
        }
        if (equalWithoutCase(each, path)) {
            return std::string(each);
        }
        if (++looked > MOST_ENTRIES || changes == 0) {
            continue;
        }
        if (const std::optional<std::size_t> found = distance(path, each, changes - 1)) {
            changes = *found;
            changed = each;
        }
        if (elsewhere.empty() && equalWithoutCase(each.substr(each.find_last_of('/') + 1), name)) {
            elsewhere = each;
        }
    }
    return std::string(changed.empty() ? elsewhere : changed);
}

std::set<std::uint16_t> CarouselFiles::modulesBelow(const std::string& directory) const {
    std::set<std::uint16_t> modules;
    const std::string below = directory.empty() ? "" : directory + "/";
    for (auto each = m_entries.lower_bound(directory); each != m_entries.end(); ++each) {
        const bool isBelow = each->first.substr(0, below.size()) == below;
        const dsmcc::Entry& entry = *each->second;
        if (isBelow || each->first == directory) {
            const bool isHere = entry.module != nullptr || entry.state == dsmcc::EntryState::ModuleNotAnnounced;
            if (isHere) {
                modules.insert(entry.moduleId);
            }
        } else if (each->first.substr(0, directory.size()) != directory) {
            break;
        }
    }
    return modules;
}

std::vector<const dsmcc::Entry*> CarouselFiles::streamEvents() const {
    std::vector<const dsmcc::Entry*> found;
    for (const auto& [path, entry] : m_entries) {
        if (entry->kind == dsmcc::ObjectKind::StreamEvent && entry->object != nullptr && entry->object->stream) {
            found.push_back(entry);
        }
    }
    return found;
}

} // namespace inspect
