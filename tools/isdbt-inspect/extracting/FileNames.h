#pragma once

#include <string>
#include <string_view>

namespace inspect {

/// What a name of a carousel is called as that of one file: safe ones as they are; of others what is none for a file is
/// %2F, and the end of what is too long a hash.
std::string fileNameOf(std::string_view name);

/// The same where a file system does not take that: nothing but letters, digits, dots, hyphens and underscores.
std::string plainFileNameOf(std::string_view name);

/// The same of a path, each name for itself. A path of which a name is not safe becomes one name.
std::string filePathOf(std::string_view path);

} // namespace inspect
