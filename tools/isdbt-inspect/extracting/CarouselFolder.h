#pragma once

#include "extracting/Folder.h"
#include "extracting/PartialModule.h"
#include "reports/Extraction.h"

#include <dsmcc/Limits.h>
#include <map>
#include <vector>

namespace inspect {

/// What the user wants of extraction.
struct ExtractionWishes {
    std::string folder;
    bool partial = false;   ///< what did not come whole is written, too, as far as it came
    bool overwrite = false; ///< what is there already is replaced

    /// Bytes of the files of a folder. A file can have tens of thousands of names, and each is written: without that,
    /// this is more than a carousel can hold.
    std::size_t most = 4 * dsmcc::Limits().memory;

    std::size_t mostFolders = 10000; ///< a week of a version each minute

    /// Bytes of all folders, of a stream however short. It grows with the stream.
    std::uint64_t mostOfAll = std::uint64_t{1} << 30;

    /// What DIIs may have compared anew, about in bytes, in a stream however short. It grows with the stream.
    std::uint64_t effort = std::uint64_t{256} << 20;
};

/// A folder into which one version of a carousel is written.
class CarouselFolder {
public:
    /// @param extraction is told what becomes of all
    /// @throws Folder::Refused, or std::runtime_error when nothing can be written
    CarouselFolder(const Folder& parent, const std::string& name, const ExtractionWishes& wishes,
                   Extraction& extraction);

    /// @throws std::runtime_error when nothing can be written
    void write(const dsmcc::Carousel& carousel, const dsmcc::Tree& tree);

    /// That are written.
    std::size_t bytes() const { return m_bytes; }

private:
    /// A directory of the carousel, and where it is.
    struct Place {
        std::string path;      ///< as broadcast
        std::string writtenAs; ///< below the folder
    };

    void writeObjects(const dsmcc::Tree& tree);
    void writeModules(const dsmcc::Carousel& carousel, const dsmcc::Tree& tree);
    void write(const dsmcc::Entry& entry, const std::string& wanted);
    void writeIncomplete(const dsmcc::Entry& entry, const std::string& wanted, const std::string& why);
    void writeFile(const dsmcc::Entry& entry, const std::string& wanted, std::string_view content,
                   NotAsAnnounced::Kind kind, const std::string& why);
    std::optional<std::string> place(const dsmcc::Entry& entry, const std::string& wanted, std::string_view content,
                                     const char* ending);
    void put(const std::string& path, std::string_view content) const;
    std::string wantedOf(const dsmcc::Entry& entry);
    std::string free(const std::string& wanted);
    void leave(const dsmcc::Entry& entry, NotAsAnnounced::Kind kind, const std::string& text,
               const std::string& writtenAs = {});
    const PartialModule* partialOf(const dsmcc::Module* module);

    Folder m_folder;
    const ExtractionWishes& m_wishes;
    Extraction& m_extraction;
    std::vector<Place> m_directories; ///< from the outermost to where the walk is
    std::size_t m_bytes = 0;
    std::map<std::string, unsigned> m_used; ///< paths below the folder, with the last number behind each
    const dsmcc::Module* m_partialOf = nullptr;
    std::optional<PartialModule> m_partial; ///< the last that was asked for
};

} // namespace inspect
