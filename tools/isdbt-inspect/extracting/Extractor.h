#pragma once

#include "carousels/CarouselCollector.h"
#include "extracting/CarouselFolder.h"
#include "sections/BoundedMap.h"

#include <functional>
#include <utility>
#include <variant>

namespace inspect {

/// Writes the files of carousels, each version of a carousel into a folder of its own. A version is what its DIIs
/// announce: when one of them announces other modules, the next begins. Of those that are not the last it is one if it
/// is complete, or if its announcement came again: where several DIIs change one behind the other, what is in between
/// is none.
class Extractor : public CarouselListener {
public:
    /// @param tell what is told each folder
    Extractor(ExtractionWishes wishes, std::function<void(const Extraction&)> tell)
        : m_wishes(std::move(wishes)), m_tell(std::move(tell)) {}

    /// @throws std::runtime_error when nothing can be written
    void before(Pid pid, const Position& position, const dsmcc::Carousels& carousels,
                const dsmcc::DownloadInfoIndication& dii) override;
    void ends(Pid pid, const dsmcc::Carousels& carousels) override;

    /// Whether all that was announced, and at least one carousel, has been written.
    bool wroteAll() const { return m_folders != 0 && m_isWhole; }

    /// How many folders it wrote.
    std::size_t folders() const { return m_folders; }

private:
    using Key = std::pair<Pid, std::optional<std::uint32_t>>;

    struct Followed {
        std::optional<std::uint16_t> begunBy; ///< identification of the DII that began the version
        bool isSettled = false;               ///< it came again
        std::uint64_t versions = 0;           ///< that are written
    };

    Followed& followedOf(const Key& key);
    void write(const Key& key, Followed& followed, const dsmcc::Carousel& carousel, const dsmcc::Tree& tree);
    void leaveOnce(bool& isSaid, const Key& key, const std::string& why);
    void tell(const Extraction& extraction);

    ExtractionWishes m_wishes;
    std::function<void(const Extraction&)> m_tell;
    BoundedMap<Key, Followed> m_followed{1024};
    BoundedMap<std::uint64_t, std::monostate> m_written{
        1024};                   ///< hashes of versions: one that returns is there already
    std::uint64_t m_effort = 0;  ///< what has been looked at so far, about in bytes
    std::uint64_t m_reached = 0; ///< byte of the stream
    std::uint64_t m_bytes = 0;   ///< that are written
    std::size_t m_folders = 0;
    bool m_saidTooOften = false;
    bool m_saidTooMany = false;
    bool m_saidTooMuch = false;
    bool m_isWhole = true;
};

} // namespace inspect
