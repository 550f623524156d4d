#pragma once

#include "reports/Fault.h"

#include <map>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// What a value may not exceed.
struct Bound {
    Severity severity;
    std::optional<double> value; ///< in seconds, or times a cycle; nothing for what should never happen
    std::string source;          ///< who sets it

    /// No standard at hand does.
    bool isProposal() const;

    /// "limit 0.5 s, TR 101 290 1.3.a"
    std::string text() const;
};

/// What a check is held to.
struct Limit {
    std::vector<Bound> bounds; ///< the worst first
    bool isRequired = false;   ///< also missed when it has never come

    /// The worst that is broken; null when none is.
    /// @param value nothing of what should never happen
    const Bound* brokenBy(std::optional<double> value) const;

    /// "0.2 s, 0.5 s"
    std::string text() const;
};

/// A profile cannot be used. The text says where, and what was expected.
struct ProfileError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// What a stream is held to: a limit for each of some checks.
class Profile {
public:
    /// What is wrong with any stream.
    static const Profile& always();

    /// A profile that comes with the tool, or else a file.
    /// @throws ProfileError
    static Profile named(const std::string& nameOrPath);

    /// @param name what it is called where something is wrong with it
    /// @throws ProfileError
    static Profile read(const std::string& name, std::string_view text);

    /// The names of those that come with the tool.
    static std::vector<std::string> bundled();

    const std::string& name() const { return m_name; }
    double hold() const { return m_hold; }     ///< seconds for which an alarm stays when all is well again
    double settle() const { return m_settle; } ///< seconds in which nothing is missed

    /// Null when the profile has none.
    const Limit* of(std::string_view check) const;

private:
    std::string m_name;
    double m_hold = 0;
    double m_settle = 0;
    std::map<std::string, Limit, std::less<>> m_limits;
};

} // namespace inspect
