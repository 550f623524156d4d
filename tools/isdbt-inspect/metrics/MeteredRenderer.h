#pragma once

#include "metrics/Metrics.h"
#include "reports/Renderer.h"

namespace inspect {

/// A view whose figures are served, too.
class MeteredRenderer : public Renderer {
public:
    MeteredRenderer(std::unique_ptr<Renderer> view, Metrics& metrics) : m_view(std::move(view)), m_metrics(metrics) {}

    void begin(const std::string& name) override {
        m_source = name;
        m_view->begin(name);
    }

    void section(const SectionReport& report) override { m_view->section(report); }
    void descriptor(const DescriptorReport& report) override { m_view->descriptor(report); }

    void alarm(const Alarm& alarm) override {
        m_metrics.alarm(m_source, alarm.kind.name, alarm.place, !alarm.until);
        m_view->alarm(alarm);
    }

    void interim(const Summary& summary, double seconds) override { m_view->interim(summary, seconds); }
    bool wantsUpdates() const override { return true; }
    void update(const Summary& summary) override {
        m_metrics.update(m_source, summary, false);
        m_view->update(summary);
    }
    bool wantsAll() const override { return m_view->wantsAll(); }
    void updateAll(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override {
        m_view->updateAll(summary, multiplex, faults);
    }
    bool wantsHistory() const override { return m_view->wantsHistory(); }

    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override {
        m_metrics.update(m_source, summary, true);
        m_view->end(summary, multiplex, faults);
    }

private:
    std::unique_ptr<Renderer> m_view;
    Metrics& m_metrics;
    std::string m_source;
};

} // namespace inspect
