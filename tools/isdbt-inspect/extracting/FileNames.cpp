#include "extracting/FileNames.h"

#include <algorithm>
#include <cctype>
#include <fmt/format.h>

namespace inspect {

namespace {

/// File systems hold names of 255 bytes. Of those that are made up some are left for endings.
constexpr std::size_t LONGEST = 255;
constexpr std::size_t LONGEST_MADE_UP = 230;

bool isControl(char each) {
    constexpr unsigned char DELETE = 0x7F;
    const auto byte = static_cast<unsigned char>(each);
    return byte < ' ' || byte == DELETE;
}

bool hasDrive(std::string_view name) {
    return name.size() > 1 && name[1] == ':' && std::isalpha(static_cast<unsigned char>(name[0])) != 0;
}

/// One that would lead elsewhere, or is not a name on all systems.
bool isSafe(std::string_view name) {
    return !name.empty() && name.size() <= LONGEST && name != "." && name != ".." && !hasDrive(name) &&
           std::none_of(name.begin(), name.end(),
                        [](char each) { return isControl(each) || each == '/' || each == '\\'; });
}

std::uint32_t hashOf(std::string_view name) {
    std::uint32_t hash = 2166136261U; // FNV-1a
    for (const char each : name) {
        hash = (hash ^ static_cast<unsigned char>(each)) * 16777619U;
    }
    return hash;
}

/// @param isKept bool(char)
template <class IsKept> std::string escaped(std::string_view name, const IsKept& isKept) {
    if (name.empty()) {
        return "%";
    }
    const bool onlyDots = name == "." || name == "..";
    std::string text;
    for (const char each : name) {
        text +=
            isKept(each) && !onlyDots ? std::string(1, each) : fmt::format("%{:02X}", static_cast<unsigned char>(each));
    }
    if (text.size() > LONGEST_MADE_UP) {
        constexpr std::size_t HASH = 10;
        text = fmt::format("{}%~{:08X}", text.substr(0, LONGEST_MADE_UP - HASH), hashOf(name));
    }
    return text;
}

} // namespace

std::string fileNameOf(std::string_view name) {
    if (isSafe(name)) {
        return std::string(name);
    }
    const bool drive = hasDrive(name);
    return escaped(name, [drive](char each) {
        return !isControl(each) && each != '/' && each != '\\' && each != '%' && !(drive && each == ':');
    });
}

std::string plainFileNameOf(std::string_view name) {
    constexpr std::string_view MARKS = ".-_";
    return escaped(name, [MARKS](char each) {
        const auto byte = static_cast<unsigned char>(each);
        constexpr unsigned char BEHIND_ASCII = 0x80;
        return (byte < BEHIND_ASCII && std::isalnum(byte) != 0) || MARKS.find(each) != std::string_view::npos;
    });
}

std::string filePathOf(std::string_view path) {
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string_view::npos; begin = end + 1) {
        end = path.find('/', begin);
        if (!isSafe(path.substr(begin, end - begin))) {
            return fileNameOf(path);
        }
    }
    return std::string(path);
}

} // namespace inspect
