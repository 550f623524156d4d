#pragma once

#include <string>
#include <string_view>

namespace inspect {

/// Compressed with gzip.
std::string compressed(std::string_view text);

std::string base64(std::string_view bytes);

/// A part of the page: what lines in JSON say of an input.
std::string pagePart(std::string_view lines);

} // namespace inspect
