#pragma once

#include <string>

/// What reading a byte array logs on every ordinary call, since its target is still null then. The routine goes on.
inline const std::string INVALID_TARGET =
    "ISDBTUils: ParserUtils::parseByteArray: ERROR: Invalid data target. Aborting!";

/// What reading a text of @p length bytes logs when only @p left are there.
inline std::string textExceeds(unsigned length, unsigned left) {
    return "ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: " +
           std::to_string(length) + " > " + std::to_string(left) + ".Aborting!";
}
