#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// The text holds something else than bytes. The message says where, and what was expected.
class HexError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Reads bytes in hexadecimal as logs, debuggers and sources hold them: "02B014", "02 B0 14", "0x02, 0xB0", "02:B0-14",
/// "\x02\xB0", an array in C, and dumps with an offset before each line and the characters behind it. Of dumps of
/// words, whose bytes may be swapped, it says how to make others.
/// @throws HexError
std::vector<std::uint8_t> readHex(std::string_view text);

} // namespace inspect
