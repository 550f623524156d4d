#pragma once

#include "reports/Fault.h"

#include <string>
#include <string_view>
#include <tuple>

namespace inspect {

/// A check, and what of the stream it looks at.
struct Spot {
    std::string_view check;
    FaultPlace place{};
    std::optional<std::uint8_t> section{}; ///< section_number

    bool operator<(const Spot& other) const { return order() < other.order(); }

private:
    std::tuple<std::string_view, const std::optional<Pid>&, const std::optional<std::uint8_t>&,
               const std::optional<std::uint16_t>&, const std::optional<std::uint8_t>&>
    order() const {
        return {check, place.pid, place.tableId, place.extension, section};
    }
};

/// What is looked for there: "PMT of 0xE6A0 on PID 0x0101".
std::string textOf(const Spot& spot);

/// "0.551 s", "40.1 s", "3600 s"
std::string lengthText(double seconds);

} // namespace inspect
