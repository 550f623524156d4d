#include "starting/Paths.h"

#include <algorithm>
#include <numeric>

namespace inspect {

namespace {

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

} // namespace

std::vector<std::string_view> split(std::string_view text, char between) {
    std::vector<std::string_view> parts;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(between, begin), text.size());
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

std::string normalised(std::string_view path) {
    std::string whole;
    for (const std::string_view part : split(path, '/')) {
        if (!part.empty() && part != ".") {
            whole.append(whole.empty() ? "" : "/").append(part);
        }
    }
    return whole;
}

std::string pathFrom(std::string_view directory, std::string_view path) {
    const bool fromRoot = !path.empty() && path.front() == '/';
    return normalised(fromRoot ? std::string(path) : std::string(directory).append("/").append(path));
}

std::string fileOfClass(std::string_view name) {
    std::string file(name);
    std::replace(file.begin(), file.end(), '.', '/');
    return file + ".class";
}

bool equalWithoutCase(std::string_view one, std::string_view other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char left, char right) { return lower(left) == lower(right); });
}

std::optional<std::size_t> distance(std::string_view one, std::string_view other, std::size_t most) {
    const std::size_t longer = std::max(one.size(), other.size());
    if (longer - std::min(one.size(), other.size()) > most) {
        return std::nullopt;
    }
    std::vector<std::size_t> above(other.size() + 1);
    std::iota(above.begin(), above.end(), std::size_t{0});
    std::vector<std::size_t> row(above);
    for (std::size_t left = 1; left <= one.size(); ++left) {
        // Further away from the diagonal there are more of them anyhow.
        const std::size_t begin = left > most ? left - most : 1;
        const std::size_t end = std::min(other.size(), left + most);
        row[begin - 1] = begin == 1 ? left : most + 1;
        if (end < other.size()) {
            row[end + 1] = most + 1;
        }
        std::size_t least = left <= most ? left : most + 1;
        for (std::size_t right = begin; right <= end; ++right) {
            const std::size_t replaced = above[right - 1] + (one[left - 1] == other[right - 1] ? 0U : 1U);
            row[right] = std::min({replaced, above[right] + 1, row[right - 1] + 1});
            least = std::min(least, row[right]);
        }
        if (least > most) {
            return std::nullopt;
        }
        above.swap(row);
    }
    return above.back() <= most ? std::optional(above.back()) : std::nullopt;
}

} // namespace inspect
