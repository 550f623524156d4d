#ifndef DSMCC_CAROUSELS_H
#define DSMCC_CAROUSELS_H

#include "dsmcc/Carousel.h"
#include "dsmcc/Limits.h"

#include <memory>

namespace dsmcc {

struct CollectedCarousels;

/// The carousels on a PID: takes their sections one after the other, in any order, and shows what they have brought.
class DSMCC_API Carousels {
public:
    /// @param limits what they may take
    explicit Carousels(const Limits& limits = {});
    ~Carousels();
    /// What is left behind must not be used.
    Carousels(Carousels&& other) noexcept;
    /// What is left behind must not be used.
    Carousels& operator=(Carousels&& other) noexcept;
    Carousels(const Carousels&) = delete;
    Carousels& operator=(const Carousels&) = delete;

    /// Takes a complete section of table 0x3B or 0x3C, from table_id to CRC_32. When memory runs out (std::bad_alloc),
    /// the section counts as lost.
    /// @param section the bytes, which need not stay
    /// @param seconds when it came, on any clock
    /// @return why it was refused; empty when it was taken
    std::optional<Refusal> take(ByteView section, double seconds);

    /// All of them, as they are now: first the one whose DSI joins groups, then by their ids.
    std::vector<Carousel> carousels() const;

    /// The paths of one of them: of an object carousel from its service gateway on, of a data carousel its modules.
    Tree tree(const Carousel& carousel) const;

    /// About how many bytes what they hold takes.
    std::size_t memory() const;

private:
    std::unique_ptr<CollectedCarousels> m_state;
};

} // namespace dsmcc

#endif
