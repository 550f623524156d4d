#pragma once

#include "reports/Carousel.h"
#include "starting/Outcome.h"

#include <map>
#include <set>
#include <string_view>

namespace inspect {

/// What a receiver finds in a carousel, and whether what it does not find is missing: a stream that is shorter than a
/// turn of the carousel proves nothing.
class CarouselFiles {
public:
    explicit CarouselFiles(const CarouselReport& report);

    const dsmcc::Carousel& carousel() const { return *m_carousel; }

    /// How often the carousel came round: the least of its modules.
    std::uint64_t wholeTurns() const { return m_wholeTurns; }

    /// Whether what has to come each turn would have come.
    bool isLong() const;

    /// Null when no DII announces it.
    const dsmcc::Module* module(std::uint16_t id) const;

    /// Whether a module is there.
    Outcome lookForModule(std::uint16_t id) const;

    /// Whether the service gateway is in its module.
    Outcome lookForGateway() const;

    /// Whether a path leads to a file or directory that is there.
    /// @param what it is: "base directory"
    /// @param path without slashes at its ends
    Outcome lookFor(std::string_view what, const std::string& path, bool isDirectory, FaultKind fault) const;

    /// Whether there is anything at a path.
    bool has(const std::string& path) const { return m_entries.count(path) != 0; }

    /// The modules that hold what is below a directory, and the directory itself.
    std::set<std::uint16_t> modulesBelow(const std::string& directory) const;

    /// The stream event objects.
    std::vector<const dsmcc::Entry*> streamEvents() const;

private:
    std::uint64_t turnsOf(const dsmcc::Module& module) const;
    Outcome lackOf(const dsmcc::Module& module) const;
    Outcome lookAt(const dsmcc::Entry& entry) const;
    Outcome absence(const std::string& subject, const std::string& path, bool isDirectory, FaultKind fault) const;
    std::string nearest(const std::string& path, bool isDirectory) const;

    const dsmcc::Carousel* m_carousel;
    const dsmcc::Tree* m_tree;
    std::map<std::uint16_t, const dsmcc::Module*> m_modules;
    std::map<std::string_view, const dsmcc::Entry*> m_entries; ///< those with a path; of two the first
    std::uint64_t m_wholeTurns = 0;
};

/// "7 of 9 blocks, missing 3-4, 8"
std::string blocksText(const dsmcc::Module& module);

/// A path as people see it, safe for a terminal.
std::string shownPath(std::string_view path);

} // namespace inspect
