#include "tool/describing/PublicHeaders.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>

namespace {

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path);
    std::string text{std::istreambuf_iterator<char>(file), {}};
    return std::regex_replace(text, std::regex("//[^\n]*"), "");
}

std::vector<std::string> gettersIn(const std::string& declarations) {
    const std::regex pattern(R"(\b((?:get|is|has)(?:[A-Z0-9]\w*)?|size)\([^()]*\)\s*const\b)");
    std::vector<std::string> getters;
    for (std::sregex_iterator match(declarations.begin(), declarations.end(), pattern), end; match != end; ++match) {
        getters.push_back((*match)[1]);
    }
    std::sort(getters.begin(), getters.end());
    getters.erase(std::unique(getters.begin(), getters.end()), getters.end());
    return getters;
}

/// What a class declares as public, which comes first in all of them.
std::string publicPart(const std::string& text, std::size_t begin) {
    const std::size_t end =
        std::min({text.find("private:", begin), text.find("protected:", begin), text.find("\n};", begin)});
    return text.substr(begin, end - begin);
}

/// Names that run words together, or whose capitals are no words.
struct Spelling {
    const char* run;
    const char* apart;
};

constexpr Spelling SPELLINGS[] = {
    {"PCRPID", "PcrPid"}, {"CAPID", "CaPid"}, {"NPTH", "NptH"}, {"NPTL", "NptL"},
    {"AVC24", "Avc_24"},  {"90kHz", "90khz"}, {"IDs", "Ids"},
};

std::string snakeCase(std::string name) {
    for (const Spelling& spelling : SPELLINGS) {
        if (const std::size_t at = name.find(spelling.run); at != std::string::npos) {
            name.replace(at, std::string(spelling.run).size(), spelling.apart);
        }
    }
    const auto upper = [&name](std::size_t at) { return std::isupper(static_cast<unsigned char>(name[at])) != 0; };
    std::string snake;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const bool endsWord = at != 0 && !upper(at - 1) && name[at - 1] != '_';
        const bool beginsWord =
            at != 0 && at + 1 < name.size() && std::islower(static_cast<unsigned char>(name[at + 1])) != 0;
        if (upper(at) && (endsWord || beginsWord)) {
            snake += '_';
        }
        snake += static_cast<char>(std::tolower(static_cast<unsigned char>(name[at])));
    }
    return snake;
}

} // namespace

std::vector<PublicClass> publicClasses() {
    const std::regex pattern(R"(\nclass QUOR_ISDBT_API (\w+)(?: : public (\w+))? \{)");
    std::vector<PublicClass> classes;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(PUBLIC_HEADERS)) {
        if (entry.path().extension() != ".h") {
            continue;
        }
        const std::string text = contentsOf(entry.path());
        for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) {
            const auto body = static_cast<std::size_t>(match->position() + match->length());
            classes.push_back({(*match)[1], (*match)[2], gettersIn(publicPart(text, body))});
        }
    }
    return classes;
}

std::string fieldName(const std::string& getter) {
    return snakeCase(std::regex_replace(getter, std::regex("^(get|is|has)"), ""));
}

std::string descriptorName(const std::string& className) {
    return snakeCase(className.substr(1));
}
