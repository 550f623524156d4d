#include "extracting/CarouselFolder.h"

#include "extracting/FileNames.h"

#include <fmt/format.h>

namespace inspect {

namespace {

using dsmcc::EntryState;
using dsmcc::ObjectKind;
using Kind = NotAsAnnounced::Kind;

std::string_view textOf(dsmcc::ByteView bytes) {
    return {reinterpret_cast<const char*>(bytes.data), bytes.size};
}

bool isDirectory(const dsmcc::Entry& entry) {
    return entry.kind == ObjectKind::Directory || entry.kind == ObjectKind::ServiceGateway;
}

/// Whether it may still come; what cannot is refused.
bool mayCome(const dsmcc::Entry& entry) {
    return entry.state == EntryState::ModuleIncomplete || entry.state == EntryState::ModuleNotAnnounced;
}

std::string reasonOf(const dsmcc::Entry& entry) {
    const std::string module = fmt::format("module 0x{:04X}", entry.moduleId);
    switch (entry.state) {
    case EntryState::ModuleIncomplete:
        return fmt::format("{} of {} blocks of {} came", entry.module->received(), entry.module->blockCount, module);
    case EntryState::ModuleNotAnnounced:
        return module + " is not announced";
    case EntryState::ModuleRefused:
        return module + " cannot be read";
    case EntryState::NoSuchObject:
        return module + " has no such object";
    case EntryState::OtherCarousel:
        return "it is in another carousel";
    default:
        return "it is too deep";
    }
}

/// What is called so that no directory names.
std::string unnamed(const dsmcc::Entry& entry) {
    std::string name = fmt::format("module-0x{:04X}", entry.moduleId);
    if (entry.kind != ObjectKind::Module) {
        name = "unnamed-" + name + "-object-";
        for (const std::uint8_t each : entry.objectKey) {
            name += fmt::format("{:02X}", each);
        }
    }
    return fileNameOf(name);
}

/// Why it has another name; empty when it has its own.
std::string otherNameOf(const dsmcc::Entry& entry, bool differs) {
    switch (entry.naming) {
    case dsmcc::Naming::Unsafe:
        return "no safe name";
    case dsmcc::Naming::Duplicate:
        return "a name that is there already";
    case dsmcc::Naming::None:
        return entry.kind == ObjectKind::Module && !differs ? "" : "no name leads to it";
    case dsmcc::Naming::Good:
        break;
    }
    return differs ? "there is another of this name, or it can be none" : "";
}

std::string joined(const std::string& folder, const std::string& name) {
    return folder.empty() ? name : folder + '/' + name;
}

} // namespace

CarouselFolder::CarouselFolder(const Folder& parent, const std::string& name, const ExtractionWishes& wishes,
                               Extraction& extraction)
    : m_folder(parent.enter(name)), m_wishes(wishes), m_extraction(extraction) {}

void CarouselFolder::write(const dsmcc::Carousel& carousel, const dsmcc::Tree& tree) {
    if (carousel.type == dsmcc::CarouselType::Object) {
        writeObjects(tree);
    } else {
        writeModules(carousel, tree);
    }
    if (tree.refusal) {
        ++m_extraction.refused;
        m_extraction.others.push_back({Kind::Refused, {}, {}, tree.refusal->text});
    }
}

void CarouselFolder::writeObjects(const dsmcc::Tree& tree) {
    if (!tree.gateway || tree.gateway->object == nullptr) {
        ++m_extraction.incomplete;
        m_extraction.others.push_back(
            {Kind::Incomplete,
             {},
             {},
             "no service gateway came" + (tree.gateway ? ": " + reasonOf(*tree.gateway) : "")});
    }
    for (const dsmcc::Entry& entry : tree.entries) {
        write(entry, wantedOf(entry));
    }
}

/// Groups have modules of the same ids and names: each has a folder where there are several.
void CarouselFolder::writeModules(const dsmcc::Carousel& carousel, const dsmcc::Tree& tree) {
    auto entry = tree.entries.begin();
    for (const dsmcc::Group& group : carousel.groups) {
        const bool several = carousel.groups.size() > 1 && group.dii != nullptr;
        const std::string folder = several ? fmt::format("group-0x{:08X}", group.dii->transactionId) : "";
        for (std::size_t count = 0; count < group.modules.size() && entry != tree.entries.end(); ++count, ++entry) {
            const std::string name = entry->naming == dsmcc::Naming::None ? unnamed(*entry) : filePathOf(entry->path);
            write(*entry, joined(folder, name));
        }
        if (group.dii == nullptr) {
            ++m_extraction.incomplete;
            m_extraction.others.push_back(
                {Kind::Incomplete, {}, {}, fmt::format("DII 0x{:08X} did not come", group.info->id)});
        }
    }
}

/// Directories stand before what is in them.
std::string CarouselFolder::wantedOf(const dsmcc::Entry& entry) {
    if (entry.naming == dsmcc::Naming::None) {
        return unnamed(entry);
    }
    while (!m_directories.empty() &&
           entry.path.compare(0, m_directories.back().path.size() + 1, m_directories.back().path + '/') != 0) {
        m_directories.pop_back();
    }
    const std::string name =
        m_directories.empty() ? entry.path : entry.path.substr(m_directories.back().path.size() + 1);
    const bool isUnsafe = entry.naming == dsmcc::Naming::Unsafe; // a slash in it leads into no directory
    return joined(m_directories.empty() ? "" : m_directories.back().writtenAs,
                  isUnsafe ? fileNameOf(name) : filePathOf(name));
}

void CarouselFolder::write(const dsmcc::Entry& entry, const std::string& wanted) {
    if (entry.state == EntryState::Loop) {
        return; // all that is in it is written already
    }
    if (entry.state == EntryState::UnknownKind || entry.kind == ObjectKind::Stream ||
        entry.kind == ObjectKind::StreamEvent) {
        leave(entry, Kind::NoFile,
              entry.state == EntryState::UnknownKind ? "an object of an unknown kind" : "a stream");
    } else if (entry.state != EntryState::Complete) {
        if (mayCome(entry)) {
            writeIncomplete(entry, wanted, reasonOf(entry));
        } else {
            leave(entry, Kind::Refused, reasonOf(entry));
        }
    } else if (isDirectory(entry)) {
        if (entry.naming == dsmcc::Naming::None) {
            return;
        }
        const std::optional<std::string> path = place(entry, wanted, {}, "/");
        if (path && !entry.path.empty()) {
            m_directories.push_back({entry.path, *path});
        }
    } else {
        writeFile(entry, wanted, textOf(entry.content()), Kind::Renamed, {});
    }
}

void CarouselFolder::writeIncomplete(const dsmcc::Entry& entry, const std::string& wanted, const std::string& why) {
    const PartialModule* const module = m_wishes.partial && !isDirectory(entry) ? partialOf(entry.module) : nullptr;
    const bool isModule = entry.kind == ObjectKind::Module;
    if (module == nullptr || (!isModule && !module->has(entry.objectKey))) {
        const bool isCompressed = m_wishes.partial && entry.module != nullptr && entry.module->originalSize;
        leave(entry, Kind::Incomplete, why + (isCompressed ? ", which is compressed" : ""));
        return;
    }
    const PartialModule::Part part = isModule ? module->whole() : module->file(entry.objectKey);
    writeFile(entry, wanted + ".partial", part.bytes, Kind::Partial,
              fmt::format("{}: {} of {} bytes are missing, and zeros", why, part.missing, part.bytes.size()));
}

/// @param kind what it is then, if that is not what was announced
void CarouselFolder::writeFile(const dsmcc::Entry& entry, const std::string& wanted, std::string_view content,
                               NotAsAnnounced::Kind kind, const std::string& why) {
    if (content.size() > m_wishes.most - m_bytes) {
        leave(entry, Kind::Refused, fmt::format("the files of a carousel would be more than {} bytes", m_wishes.most));
        return;
    }
    const std::optional<std::string> path = place(entry, wanted, content, "");
    if (!path) {
        return;
    }
    m_bytes += content.size();
    if (kind == Kind::Partial) {
        leave(entry, kind, why, *path);
        return;
    }
    ++m_extraction.files;
    m_extraction.bytes += content.size();
}

/// Puts something there, or as near as can be. @return where; nothing when it is refused.
std::optional<std::string> CarouselFolder::place(const dsmcc::Entry& entry, const std::string& wanted,
                                                 std::string_view content, const char* ending) {
    std::string path;
    try {
        try {
            path = free(wanted);
            put(path + ending, content);
        } catch (const Folder::Refused& refused) {
            if (!refused.ofName) {
                throw;
            }
            const std::size_t name = wanted.rfind('/') + 1;
            path = free(wanted.substr(0, name) + plainFileNameOf(wanted.substr(name)));
            put(path + ending, content);
        }
    } catch (const Folder::Refused& refused) {
        leave(entry, Kind::Refused, refused.what());
        return std::nullopt;
    }
    if (const std::string why = otherNameOf(entry, path != wanted); !why.empty()) {
        leave(entry, Kind::Renamed, why, path);
    }
    return path;
}

/// Writes a file, or makes a folder of a path that ends with a slash.
void CarouselFolder::put(const std::string& path, std::string_view content) const {
    std::optional<Folder> folder;
    std::size_t begin = 0;
    for (std::size_t end = path.find('/'); end != std::string::npos; end = path.find('/', begin)) {
        const std::string name = path.substr(begin, end - begin);
        Folder inner = folder ? folder->enter(name) : m_folder.enter(name);
        folder.emplace(std::move(inner));
        begin = end + 1;
    }
    if (begin < path.size()) {
        (folder ? *folder : m_folder)
            .write(path.substr(begin), content,
                   m_wishes.overwrite ? Folder::Existing::Replaced : Folder::Existing::Kept);
    }
}

/// The path, or another one where it is used already.
std::string CarouselFolder::free(const std::string& wanted) {
    std::string path = wanted;
    while (!m_used.emplace(path, 1).second) {
        path = fmt::format("{}~{}", wanted, ++m_used[wanted]);
    }
    return path;
}

void CarouselFolder::leave(const dsmcc::Entry& entry, NotAsAnnounced::Kind kind, const std::string& text,
                           const std::string& writtenAs) {
    m_extraction.partial += kind == Kind::Partial ? 1U : 0U;
    m_extraction.incomplete += kind == Kind::Incomplete ? 1U : 0U;
    m_extraction.refused += kind == Kind::Refused ? 1U : 0U;
    m_extraction.others.push_back({kind, entry.path, writtenAs, text});
}

/// Null when nothing of it can be read.
const PartialModule* CarouselFolder::partialOf(const dsmcc::Module* module) {
    if (module == nullptr || module->state != dsmcc::ModuleState::Incomplete || module->originalSize) {
        return nullptr;
    }
    if (m_partialOf != module) {
        m_partial.emplace(*module);
        m_partialOf = module;
    }
    return &*m_partial;
}

} // namespace inspect
