#include "CarouselWriter.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <zlib.h>

namespace sample {

namespace {

constexpr std::uint8_t COMPRESSED_MODULE_DESCRIPTOR = 0x09;
constexpr std::uint8_t LABEL_DESCRIPTOR = 0x70;
constexpr std::uint8_t ZLIB_METHOD = 0x78;

constexpr std::size_t MOST_BLOCKS = 65536;
constexpr unsigned UNKNOWN_TIME = 0xFFFFFFFF;

/// References name the first version of a DII: who looks for it compares its identification alone.
constexpr unsigned FIRST_VERSION = 0;

std::uint32_t transactionId(unsigned identification, unsigned version) {
    return 2U << 30U | (version & 0x3FFFU) << 16U | identification << 1U | (version & 1U);
}

Bytes deflated(const Bytes& bytes) {
    uLongf size = compressBound(static_cast<uLong>(bytes.size()));
    Bytes out(size);
    if (compress2(out.data(), &size, bytes.data(), static_cast<uLong>(bytes.size()), Z_BEST_COMPRESSION) != Z_OK) {
        throw std::runtime_error("a module cannot be compressed");
    }
    out.resize(size);
    return out;
}

/// A directory, or what an entry says; where it is.
struct Object {
    const CarouselEntry* entry = nullptr; ///< none: a directory
    std::set<std::string> paths{};        ///< of what is in a directory
    std::size_t module = 0;
    std::size_t place = 0; ///< in the module
};

std::string folderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? "" : path.substr(0, slash);
}

std::string nameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1); // npos + 1 is 0
}

/// The objects of a carousel, and the modules that hold them.
class Objects {
public:
    Objects(const CarouselPlan& plan, const std::vector<CarouselEntry>& entries) : m_plan(plan) {
        m_objects[""];
        for (const CarouselEntry& each : entries) {
            add(each.path).entry = &each;
        }
        place([](const Object& each) { return each.entry == nullptr; }, {"", "", plan.compressed});
        for (const CarouselPart& part : plan.parts) {
            place([&part](const Object& each) { return each.module == 0 && each.entry->path.find(part.path) == 0; },
                  part);
        }
        place([](const Object& each) { return each.module == 0; }, {"", "", plan.compressed});
    }

    std::size_t modules() const { return m_parts.size(); }

    const CarouselPart& partOf(std::size_t module) const { return m_parts.at(module); }

    /// What a module holds.
    Bytes bytesOf(std::size_t module) const {
        Wire all;
        for (const std::string& path : m_paths.at(module)) {
            all.append(bytesOf(path));
        }
        return all.bytes();
    }

private:
    Object& add(const std::string& path) {
        const auto [at, isNew] = m_objects.try_emplace(path);
        if (isNew) {
            add(folderOf(path)).paths.insert(path);
        }
        return at->second;
    }

    /// Puts objects into modules of their own. What they refer to does not change their sizes.
    template <class Choice> void place(Choice isChosen, const CarouselPart& part) {
        std::size_t size = m_plan.moduleSize;
        for (auto& [path, object] : m_objects) {
            if (!isChosen(object)) {
                continue;
            }
            const std::size_t more = bytesOf(path).size();
            if (size + more > m_plan.moduleSize) {
                m_parts.push_back(part);
                m_paths.emplace_back();
                size = 0;
            }
            size += more;
            m_paths.back().push_back(path);
            object.module = m_parts.size();
            object.place = m_paths.back().size();
        }
    }

    Bytes bytesOf(const std::string& path) const {
        const Object& object = m_objects.at(path);
        const Bytes key = wire::u32(object.place);
        if (object.entry == nullptr) {
            return wire::directory(kindOf(path), key, bindingsOf(object));
        }
        return object.entry->events ? wire::streamEvents(key, *object.entry->events)
                                    : wire::file(key, object.entry->content);
    }

    std::string kindOf(const std::string& path) const {
        const CarouselEntry* const entry = m_objects.at(path).entry;
        if (entry == nullptr) {
            return path.empty() ? "srg" : "dir";
        }
        return entry->events ? "ste" : "fil";
    }

    std::vector<wire::Bound> bindingsOf(const Object& directory) const {
        std::vector<wire::Bound> all;
        for (const std::string& path : directory.paths) {
            const Object& object = m_objects.at(path);
            const auto dii = static_cast<unsigned>(object.module == 0 ? 0 : (object.module - 1) / m_plan.modulesOfDii);
            all.push_back({nameOf(path),
                           kindOf(path),
                           static_cast<unsigned>(object.module),
                           wire::u32(object.place),
                           m_plan.id,
                           {m_plan.associationTag, transactionId(m_plan.identification + dii, FIRST_VERSION)}});
        }
        return all;
    }

    const CarouselPlan& m_plan;
    std::map<std::string, Object> m_objects; ///< by path; a directory stands before what is in it
    std::vector<CarouselPart> m_parts;       ///< of each module
    std::vector<std::vector<std::string>> m_paths;
};

} // namespace

std::vector<CarouselEntry> filesIn(const std::filesystem::path& folder) {
    std::vector<CarouselEntry> files;
    for (const auto& each : std::filesystem::recursive_directory_iterator(folder)) {
        if (each.is_regular_file()) {
            std::ifstream file(each.path(), std::ios::binary);
            Bytes content(std::istreambuf_iterator<char>(file), {});
            if (!file) {
                throw std::runtime_error(each.path().string() + ": cannot be read");
            }
            files.push_back({each.path().lexically_relative(folder).generic_string(), std::move(content)});
        }
    }
    std::sort(files.begin(), files.end(),
              [](const CarouselEntry& left, const CarouselEntry& right) { return left.path < right.path; });
    return files;
}

CarouselWriter::CarouselWriter(CarouselPlan plan, const std::vector<CarouselEntry>& entries) : m_plan(std::move(plan)) {
    make(entries);
    send();
}

void CarouselWriter::update(const std::vector<CarouselEntry>& entries) {
    const std::vector<Module> former = std::move(m_modules);
    ++m_version;
    make(entries);
    for (std::size_t at = 0; at < std::min(former.size(), m_modules.size()); ++at) {
        const bool isSame =
            former[at].bytes == m_modules[at].bytes && former[at].descriptors == m_modules[at].descriptors;
        m_modules[at].version = isSame ? former[at].version : m_version;
    }
    send();
}

void CarouselWriter::update(const std::vector<CarouselEntry>& entries, CarouselPlan plan) {
    m_plan = std::move(plan);
    update(entries);
}

void CarouselWriter::make(const std::vector<CarouselEntry>& entries) {
    const Objects objects(m_plan, entries);
    m_modules.clear();
    for (std::size_t module = 0; module < objects.modules(); ++module) {
        const CarouselPart& part = objects.partOf(module);
        Module made{objects.bytesOf(module), {}, m_version};
        Wire descriptors;
        if (part.compressed) {
            descriptors.append(
                descriptor(COMPRESSED_MODULE_DESCRIPTOR, Wire().bits(8, ZLIB_METHOD).bits(32, made.bytes.size())));
            made.bytes = deflated(made.bytes);
        }
        if (!part.label.empty()) {
            descriptors.append(descriptor(LABEL_DESCRIPTOR, Wire().text(part.label)));
        }
        made.descriptors = descriptors.bytes();
        m_modules.push_back(std::move(made));
    }
}

/// The DSI changes with the DIIs.
void CarouselWriter::send() {
    m_blocks.clear();
    m_announcements = {
        wire::gatewaySection(m_plan.id, 1, wire::u32(1), transactionId(0, m_version),
                             {m_plan.associationTag, transactionId(m_plan.identification, FIRST_VERSION)})};
    std::vector<wire::Announced> announced;
    for (std::size_t at = 0; at < m_modules.size(); ++at) {
        const Module& module = m_modules[at];
        if ((module.bytes.size() + m_plan.blockSize - 1) / m_plan.blockSize > MOST_BLOCKS) {
            throw std::length_error("a module has more than 65536 blocks");
        }
        const auto id = static_cast<unsigned>(at + 1);
        announced.push_back({id, module.bytes.size(), module.version % 256, module.descriptors});
        for (Bytes& each : wire::blocks({id, 0, module.version % 256, m_plan.id}, m_plan.blockSize, module.bytes)) {
            m_blocks.push_back(std::move(each));
        }
        if (announced.size() == m_plan.modulesOfDii || id == m_modules.size()) {
            const auto identification = static_cast<unsigned>(m_plan.identification + at / m_plan.modulesOfDii);
            m_announcements.push_back(
                wire::objectDii({m_plan.id, m_plan.blockSize, transactionId(identification, m_version),
                                 m_plan.associationTag, UNKNOWN_TIME, UNKNOWN_TIME, UNKNOWN_TIME},
                                announced));
            announced.clear();
        }
    }
}

std::vector<Bytes> CarouselWriter::turn() const {
    std::vector<Bytes> all = m_announcements;
    all.insert(all.end(), m_blocks.begin(), m_blocks.end());
    return all;
}

} // namespace sample
