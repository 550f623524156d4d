#pragma once

#include "checking/Fault.h"
#include "reports/Report.h"

#include <memory>
#include <string>
#include <string_view>

namespace inspect {

/// Serves figures of all inputs to who collects them: over HTTP, as Prometheus reads them. What comes off the air is in
/// no label but as a number.
class Metrics {
public:
    /// Why nothing can be served at an address, "[ADDRESS:]PORT"; empty when it can.
    static std::string objectionTo(const std::string& address);

    /// @param address that of the loopback when there is a port alone
    /// @throws std::runtime_error when it cannot be listened on
    explicit Metrics(const std::string& address);
    ~Metrics();
    Metrics(const Metrics&) = delete;
    Metrics& operator=(const Metrics&) = delete;

    /// What came of an input so far. Threads may call it at the same time.
    /// @param ended whether no more comes
    void update(const std::string& source, const Summary& summary, bool ended);

    /// An alarm of an input began, or ended.
    void alarm(const std::string& source, std::string_view check, const FaultPlace& place, bool isActive);

private:
    struct Server;
    std::unique_ptr<Server> m_server;
};

} // namespace inspect
