#include "watching/Spot.h"

#include "watching/Check.h"

#include <fmt/format.h>

namespace inspect {

std::string textOf(const Spot& spot) {
    const Check& check = *checkNamed(spot.check);
    std::string text(check.what);
    if (spot.section) {
        text += fmt::format(" section {}", *spot.section);
    }
    if (spot.place.extension) {
        text += fmt::format(" of 0x{:04X}", *spot.place.extension);
    }
    if (spot.place.pid && !(check.table && check.table->pid)) {
        text += fmt::format(" on PID 0x{:04X}", *spot.place.pid);
    }
    return text;
}

std::string lengthText(double seconds) {
    constexpr double MANY = 100; // which three digits tell
    return seconds < MANY ? fmt::format("{:.3g} s", seconds) : fmt::format("{:.0f} s", seconds);
}

} // namespace inspect
