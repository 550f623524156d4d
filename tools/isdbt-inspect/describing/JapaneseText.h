#pragma once

#include <string>
#include <string_view>

namespace inspect {

/// Whether this build can.
bool canReadJapanese();

/// A text of Japan in UTF-8, with letters, digits and blanks of usual width. Any bytes make one, with nothing for what
/// is no character. Empty in a build that cannot.
std::string readJapanese(std::string_view raw);

} // namespace inspect
