#include "metrics/Metrics.h"

#include "inputs/ListeningAddress.h"
#include "metrics/Figures.h"

#include <fmt/format.h>
#include <mutex>
#include <prometheus/collectable.h>
#include <prometheus/exposer.h>
#include <prometheus/metric_family.h>
#include <stdexcept>

namespace inspect {

namespace {

/// The figures of all inputs, which a thread of the server asks for.
class AllFigures : public prometheus::Collectable {
public:
    void update(const std::string& source, const Summary& summary, bool ended) {
        const std::lock_guard lock(m_mutex);
        m_sources.try_emplace(source, source).first->second.update(summary, ended, std::chrono::system_clock::now());
    }

    void alarm(const std::string& source, std::string_view check, const FaultPlace& place, bool isActive) {
        const std::lock_guard lock(m_mutex);
        m_sources.try_emplace(source, source).first->second.alarm(check, place, isActive);
    }

    std::vector<prometheus::MetricFamily> Collect() const override {
        std::vector<Metric> all = metrics();
        {
            const std::lock_guard lock(m_mutex);
            for (const auto& [name, figures] : m_sources) {
                figures.addTo(all);
            }
        }
        std::vector<prometheus::MetricFamily> families;
        families.reserve(all.size());
        for (const Metric& metric : all) {
            families.push_back(familyOf(metric));
        }
        return families;
    }

private:
    static prometheus::MetricFamily familyOf(const Metric& metric) {
        prometheus::MetricFamily family;
        family.name = metric.name;
        family.help = metric.help;
        family.type = metric.isCounter ? prometheus::MetricType::Counter : prometheus::MetricType::Gauge;
        for (const Figure& figure : metric.figures) {
            prometheus::ClientMetric& value = family.metric.emplace_back();
            for (const auto& [name, text] : figure.labels) {
                value.label.push_back({name, text});
            }
            (metric.isCounter ? value.counter.value : value.gauge.value) = figure.value;
        }
        return family;
    }

    mutable std::mutex m_mutex;
    std::map<std::string, Figures> m_sources;
};

} // namespace

struct Metrics::Server {
    explicit Server(const std::string& address) : exposer(address) { exposer.RegisterCollectable(figures); }

    std::shared_ptr<AllFigures> figures = std::make_shared<AllFigures>();
    prometheus::Exposer exposer;
};

std::string Metrics::objectionTo(const std::string& address) {
    return objectionToListeningOn(address);
}

Metrics::Metrics(const std::string& address) {
    try {
        m_server = std::make_unique<Server>(listeningAddress(address));
    } catch (const std::exception&) {
        throw std::runtime_error(fmt::format("--metrics: {} cannot be listened on", listeningAddress(address)));
    }
}

Metrics::~Metrics() = default;

void Metrics::update(const std::string& source, const Summary& summary, bool ended) {
    m_server->figures->update(source, summary, ended);
}

void Metrics::alarm(const std::string& source, std::string_view check, const FaultPlace& place, bool isActive) {
    m_server->figures->alarm(source, check, place, isActive);
}

} // namespace inspect
