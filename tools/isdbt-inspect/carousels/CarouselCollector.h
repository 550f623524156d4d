#pragma once

#include "carousels/BlockStreams.h"
#include "reports/Carousel.h"
#include "sections/BoundedMap.h"
#include "sections/Section.h"

#include <dsmcc/Carousels.h>
#include <map>

namespace inspect {

/// Wants to know what carousels have brought before it is gone.
class CarouselListener {
public:
    CarouselListener() = default;
    virtual ~CarouselListener() = default;
    CarouselListener(const CarouselListener&) = delete;
    CarouselListener& operator=(const CarouselListener&) = delete;

    /// A DII comes, and is not taken yet.
    virtual void before(Pid pid, const Position& position, const dsmcc::Carousels& carousels,
                        const dsmcc::DownloadInfoIndication& dii) = 0;

    /// The carousels of a PID are forgotten, or the stream ends.
    virtual void ends(Pid pid, const dsmcc::Carousels& carousels) = 0;
};

/// Puts the carousels of a stream together.
class CarouselCollector {
public:
    /// What the carousels of a stream may take, in bytes.
    static constexpr std::size_t MEMORY = std::size_t{64} << 20;

    explicit CarouselCollector(std::size_t memory = MEMORY);

    void tell(CarouselListener& listener) { m_listener = &listener; }

    /// What tells on which PID blocks come that another one announces.
    BlockStreams& blockStreams() { return m_blockStreams; }

    /// The stream has ended.
    void finish();

    /// Whether a packet has the first bytes of such a section, whatever is said of its PID.
    static bool isBegunIn(const std::uint8_t* packet);

    /// Takes a section of table 0x3B or 0x3C, sound or not; of others, nothing. As long as the stream's clock is not
    /// known, they wait for it, if they are not too many: times are measured from the first on.
    void take(const Section& section);

    /// The stream's clock is known from now on.
    /// @param secondsOf std::optional<double>(std::uint64_t packet), of those that have come
    template <class Clock> void date(const Clock& secondsOf) {
        for (Taken& each : m_waiting) {
            each.position.seconds = secondsOf(each.position.packet);
        }
        flush();
    }

    /// What has come, by PID. Nothing waits for the clock any more.
    std::vector<CarouselPid> carousels();

private:
    struct Taken {
        Pid pid;
        dsmcc::Bytes bytes;
        bool sound;
        Position position;
    };

    struct Collected {
        dsmcc::Carousels carousels;
        std::uint64_t sections = 0;
        std::uint64_t crcErrors = 0;
        std::vector<CarouselRefusal> refusals;
        double last = 0; ///< when a section came, in seconds
        std::map<std::uint16_t, CarouselMessage> messages;

        void remember(const Taken& section, std::size_t most);
    };

    void flush();
    void take(const Taken& section);
    Collected* collectedOn(Pid pid, double now);
    void forgetWhatIsSilent(double now);
    std::optional<dsmcc::Refusal> take(Pid pid, Collected& collected, const Taken& section);
    std::optional<dsmcc::Refusal> takeBlock(Collected& collected, const Taken& section);
    void expectBlocks(Pid pid, const dsmcc::DownloadInfoIndication& dii);

    dsmcc::Limits m_limits;
    std::map<Pid, Collected> m_pids;
    std::vector<Taken> m_waiting;
    bool m_waits = true; ///< for the clock
    CarouselListener* m_listener = nullptr;
    BlockStreams m_blockStreams;
    BoundedMap<std::pair<Pid, std::uint32_t>, Pid> m_homes{
        256};                 ///< by PID and downloadId of blocks, what announces them
    std::size_t m_memory = 0; ///< that all of them take
};

} // namespace inspect
