#pragma once

#include "packets/Position.h"

#include <variant>

namespace inspect {

/// A part of an input. What was before it is learnt from, and nothing is told of it. A packet belongs to the range in
/// which its first byte lies.
struct Range {
    using Bound = std::variant<std::uint64_t, double>; ///< a byte of the input, or a second of the stream

    std::optional<Bound> from; ///< nothing where the input begins
    std::optional<Bound> to;   ///< what comes there is not part of it any more; nothing where the input ends

    bool isPart() const { return from || to; }
    bool isTimed() const { return isTime(from) || isTime(to); }

    bool hasBegun(const Position& position) const { return !from || isReached(*from, position); }
    bool isOver(const Position& position) const { return to && isReached(*to, position); }

private:
    static bool isTime(const std::optional<Bound>& bound) { return bound && std::holds_alternative<double>(*bound); }

    /// Before the stream's clock is known, its time has just begun.
    static bool isReached(const Bound& bound, const Position& position) {
        const auto* const byte = std::get_if<std::uint64_t>(&bound);
        return byte != nullptr ? position.offset >= *byte : position.seconds.value_or(0) >= std::get<double>(bound);
    }
};

} // namespace inspect
