#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// A path from the root of a carousel, without slashes at its ends: "guia/fotos" of "/guia//fotos/".
std::string normalised(std::string_view path);

/// What lies below a directory, if not in the root: a path that begins with a slash does.
std::string pathFrom(std::string_view directory, std::string_view path);

/// Texts with something between them.
std::vector<std::string_view> split(std::string_view text, char between);

/// The file of a class: "guia/Principal.class" of "guia.Principal".
std::string fileOfClass(std::string_view name);

/// Whether two names differ in nothing but the case of their ASCII letters.
bool equalWithoutCase(std::string_view one, std::string_view other);

/// How many characters have to be put in, left out or replaced to make one of the other; nothing when these are more.
std::optional<std::size_t> distance(std::string_view one, std::string_view other, std::size_t most);

} // namespace inspect
