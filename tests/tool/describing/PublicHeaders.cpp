#include "tool/describing/PublicHeaders.h"

#include <cctype>
#include <fstream>
#include <regex>

namespace {

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
    const std::regex isGetter("(get|is|has)([A-Z0-9].*)?|size");
    std::vector<PublicClass> classes;
    std::ifstream listing(PUBLIC_HEADERS);
    std::string header;
    std::string name;
    std::string kind;
    std::string type;
    std::string member;
    std::string rest;
    const auto field = [&listing](std::string& text) { return static_cast<bool>(std::getline(listing, text, '\t')); };
    while (field(header) && field(name) && field(kind) && field(type) && field(member) && std::getline(listing, rest)) {
        if (kind == "class") {
            classes.push_back({name, type, {}, {}});
        } else if (kind == "const" && std::regex_match(member, isGetter)) {
            classes.back().getters.insert(member);
            if (type.rfind("std::list<", 0) == 0) {
                classes.back().lists.insert(member);
            }
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
