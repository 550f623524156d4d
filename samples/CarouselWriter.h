#pragma once

#include "CarouselMessages.h"

#include <filesystem>
#include <optional>

namespace sample {

/// What stands at a path of a carousel: a file, or the events of a stream.
struct CarouselEntry {
    std::string path; ///< from the root, with "/" between the names
    Bytes content{};
    std::optional<wire::Events> events{};
};

/// The files of a folder, by their paths in it.
/// @throws std::runtime_error when they cannot be read
std::vector<CarouselEntry> filesIn(const std::filesystem::path& folder);

/// Files that have modules to themselves.
struct CarouselPart {
    std::string path;    ///< how their paths begin
    std::string label{}; ///< for prefetching; none when it is empty
    bool compressed = true;
};

/// How a carousel is cut.
struct CarouselPlan {
    std::uint32_t id = 1;
    std::uint16_t associationTag = 0;
    std::uint16_t identification = 1; ///< of the first DII
    std::uint16_t blockSize = 4066;
    std::size_t moduleSize = 65536; ///< a module of several objects is no larger, before it is compressed
    std::size_t modulesOfDii = 64;
    bool compressed = false; ///< the directories, and the files of no part
    std::vector<CarouselPart> parts{};
};

/// A carousel of objects on air.
class CarouselWriter {
public:
    /// @throws std::length_error when a module has more blocks than there are numbers
    CarouselWriter(CarouselPlan plan, const std::vector<CarouselEntry>& entries);

    /// Carries other files from now on, or cut otherwise: what changes has a new version.
    void update(const std::vector<CarouselEntry>& entries);
    void update(const std::vector<CarouselEntry>& entries, CarouselPlan plan);

    /// The DSI and the DIIs.
    const std::vector<Bytes>& announcements() const { return m_announcements; }

    /// The blocks of all modules, in order.
    const std::vector<Bytes>& blocks() const { return m_blocks; }

    /// All sections, once.
    std::vector<Bytes> turn() const;

private:
    struct Module {
        Bytes bytes; ///< on air
        Bytes descriptors;
        unsigned version;
    };

    void make(const std::vector<CarouselEntry>& entries);
    void send();

    CarouselPlan m_plan;
    unsigned m_version = 0;
    std::vector<Module> m_modules; ///< the first has id 1 and begins with the service gateway
    std::vector<Bytes> m_announcements;
    std::vector<Bytes> m_blocks;
};

} // namespace sample
