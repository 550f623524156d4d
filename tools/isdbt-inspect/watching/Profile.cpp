#include "watching/Profile.h"

#include "watching/BundledProfiles.h"
#include "watching/Check.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* ALWAYS = "always";
constexpr std::string_view PROPOSAL = "proposal";

constexpr std::pair<const char*, Severity> LEVELS[] = {
    {"alarm", Severity::Error}, {"warn", Severity::Warning}, {"remark", Severity::Remark}};

/// A value of a profile, and where it stands: "own.json: checks: crc".
struct Part {
    const Json& json;
    std::string where;

    Part at(const std::string& key) const { return {json.at(key), where + ": " + key}; }
};

[[noreturn]] void expected(const Part& part, std::string_view what) {
    throw ProfileError(fmt::format("{}: expected {}", part.where, what));
}

/// An object that has no other keys than these.
void expectObject(const Part& part, const std::vector<std::string>& keys) {
    if (!part.json.is_object()) {
        expected(part, fmt::format("an object with {}", fmt::join(keys, ", ")));
    }
    for (const auto& [key, value] : part.json.items()) {
        if (std::find(keys.begin(), keys.end(), key) == keys.end()) {
            throw ProfileError(fmt::format("{}: \"{}\" is none of {}", part.where, key, fmt::join(keys, ", ")));
        }
    }
}

/// A key that has to be there.
Part needed(const Part& part, const std::string& key) {
    if (!part.json.contains(key)) {
        expected(part, '"' + key + '"');
    }
    return part.at(key);
}

double numberOf(const Part& part) {
    if (!part.json.is_number() || !(part.json.get<double>() > 0) || !std::isfinite(part.json.get<double>())) {
        expected(part, "a number above 0");
    }
    return part.json.get<double>();
}

std::string sourceOf(const Part& part) {
    const Part source = needed(part, "source");
    if (!source.json.is_string() || source.json.get<std::string>().empty()) {
        expected(source, "the standard that sets it, or \"proposal\"");
    }
    return source.json.get<std::string>();
}

/// { "seconds": 5, "source": "proposal" }
double secondsOf(const Part& part) {
    expectObject(part, {"seconds", "source"});
    sourceOf(part);
    return numberOf(needed(part, "seconds"));
}

Bound boundOf(const Part& part, const Check& check, Severity severity) {
    if (check.limited == Check::Limited::Never) {
        expectObject(part, {"source"});
        return {severity, std::nullopt, sourceOf(part)};
    }
    const char* const unit = check.limited == Check::Limited::Seconds ? "seconds" : "times";
    expectObject(part, {unit, "source"});
    return {severity, numberOf(needed(part, unit)), sourceOf(part)};
}

Limit limitOf(const Part& part, const Check& check) {
    expectObject(part, {"alarm", "warn", "remark", "required"});
    Limit limit;
    for (const auto& [key, severity] : LEVELS) {
        if (part.json.contains(key)) {
            limit.bounds.push_back(boundOf(part.at(key), check, severity));
        }
    }
    if (limit.bounds.empty()) {
        expected(part, R"("alarm", "warn" or "remark")");
    }
    if (part.json.contains("required")) {
        if (!part.json["required"].is_boolean()) {
            expected(part.at("required"), "true or false");
        }
        limit.isRequired = part.json["required"].get<bool>();
    }
    return limit;
}

const BundledProfile* bundledNamed(std::string_view name) {
    const auto* const found = std::find_if(std::begin(BUNDLED_PROFILES), std::end(BUNDLED_PROFILES),
                                           [name](const BundledProfile& each) { return each.name == name; });
    return found == std::end(BUNDLED_PROFILES) ? nullptr : found;
}

Json parsed(const std::string& name, std::string_view text) {
    Json json;
    try {
        json = Json::parse(text.begin(), text.end(), nullptr, true, true);
    } catch (const Json::parse_error& error) {
        const std::string_view reason =
            error.what(); // behind a number of the parser's own: "parse error at line 2, ..."
        throw ProfileError(fmt::format("{}: {}", name, reason.substr(std::min(reason.find("] ") + 2, reason.size()))));
    }
    expectObject({json, name}, {"based_on", "hold", "settle", "checks"});
    return json;
}

/// With what it is based on, whose values stay where it says nothing else.
Json withBase(const std::string& name, std::string_view text) {
    Json own = parsed(name, text);
    if (!own.contains("based_on")) {
        return own;
    }
    const Part base{own["based_on"], name + ": based_on"};
    const BundledProfile* const bundled = base.json.is_string() ? bundledNamed(base.json.get<std::string>()) : nullptr;
    if (bundled == nullptr) {
        expected(base, fmt::format("one of {}", fmt::join(Profile::bundled(), ", ")));
    }
    Json whole = withBase(std::string(bundled->name), bundled->text);
    own.erase("based_on");
    whole.merge_patch(own);
    return whole;
}

} // namespace

bool Bound::isProposal() const {
    return source.find(PROPOSAL) != std::string::npos;
}

std::string Bound::text() const {
    return value ? fmt::format("limit {:g} s, {}", *value, source) : source;
}

const Bound* Limit::brokenBy(std::optional<double> value) const {
    const auto broken = std::find_if(bounds.begin(), bounds.end(), [value](const Bound& bound) {
        return !bound.value || (value && *value > *bound.value);
    });
    return broken == bounds.end() ? nullptr : &*broken;
}

std::string Limit::text() const {
    std::vector<std::string> texts;
    for (auto bound = bounds.rbegin(); bound != bounds.rend(); ++bound) {
        if (bound->value) {
            texts.push_back(fmt::format("{:g}{}", *bound->value, bound->isProposal() ? "*" : ""));
        }
    }
    return fmt::format("{}", fmt::join(texts, ", "));
}

const Profile& Profile::always() {
    static const Profile ALL = named(ALWAYS);
    return ALL;
}

std::vector<std::string> Profile::bundled() {
    std::vector<std::string> names;
    for (const BundledProfile& each : BUNDLED_PROFILES) {
        names.emplace_back(each.name);
    }
    return names;
}

Profile Profile::named(const std::string& nameOrPath) {
    if (const BundledProfile* const profile = bundledNamed(nameOrPath)) {
        return read(nameOrPath, profile->text);
    }
    std::ifstream file(nameOrPath);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file || text.empty()) {
        throw ProfileError(
            fmt::format("{}: neither a file with limits nor one of {}", nameOrPath, fmt::join(bundled(), ", ")));
    }
    return read(nameOrPath, text);
}

Profile Profile::read(const std::string& name, std::string_view text) {
    const Json json = withBase(name, text);
    const Part whole{json, name};
    Profile profile;
    profile.m_name = name;
    profile.m_hold = secondsOf(needed(whole, "hold"));
    profile.m_settle = secondsOf(needed(whole, "settle"));
    const Part limits = needed(whole, "checks");
    if (!limits.json.is_object()) {
        expected(limits, "an object with checks");
    }
    for (const auto& [key, value] : limits.json.items()) {
        const Check* const check = checkNamed(key);
        if (check == nullptr) {
            throw ProfileError(fmt::format("{}: there is no check \"{}\"", limits.where, key));
        }
        if (!value.is_null()) {
            profile.m_limits.emplace(key, limitOf(limits.at(key), *check));
        }
    }
    return profile;
}

const Limit* Profile::of(std::string_view check) const {
    const auto found = m_limits.find(check);
    return found == m_limits.end() ? nullptr : &found->second;
}

} // namespace inspect
