#pragma once

#include "packets/Input.h"

#include <algorithm>
#include <utility>

namespace inspect {

/// Reads lines, without their ends, to the end of an input.
/// @param take void(const std::string& line)
template <class Take> void forEachLine(Input& input, const Take& take) {
    constexpr std::size_t BUFFER_SIZE = std::size_t{1} << 16;
    std::vector<std::uint8_t> buffer(BUFFER_SIZE);
    std::string line;
    while (const std::size_t count = input.read(buffer.data(), buffer.size())) {
        const auto end = buffer.begin() + static_cast<std::ptrdiff_t>(count);
        for (auto at = buffer.begin(); at != end;) {
            const auto behind = std::find(at, end, '\n');
            line.append(at, behind);
            at = behind;
            if (at != end) {
                take(std::as_const(line));
                line.clear();
                ++at;
            }
        }
    }
    if (!line.empty()) {
        take(std::as_const(line));
    }
}

} // namespace inspect
