#pragma once

#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace inspect {

/// Lines that are none of a range, or ranges that do not follow each other. The text says why.
struct MergeError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Makes the lines of a whole input of those of its ranges. What happened is taken as it comes; counts and what took
/// how long are put together; what is said of the whole when it ends, the last range says.
class RangeMerger {
public:
    /// @param write takes each line, with its end
    explicit RangeMerger(std::function<void(const std::string&)> write) : m_write(std::move(write)) {}

    /// The next line of a range, without its end; the ranges come in order.
    /// @throws MergeError
    void take(const std::string& line);

    /// No line follows.
    /// @throws MergeError when the last range has not come
    void finish() const;

    /// Whether anything was at fault.
    bool foundFault() const { return m_foundFault; }

private:
    using Json = nlohmann::ordered_json;

    /// A line that waits until it is known whether its range is the last.
    struct Waiting {
        std::string line;
        Json statistics; ///< null when it is none
    };

    void takeStatistics(const std::string& line, Json object);
    void endRange(const Json& range);

    std::function<void(const std::string&)> m_write;
    std::vector<Waiting> m_waiting;
    std::map<std::string, Json> m_before; ///< statistics of the ranges before
    std::uint64_t m_packets = 0;          ///< of these
    bool m_isComplete = false;
    bool m_foundFault = false;
};

} // namespace inspect
