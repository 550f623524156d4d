#pragma once

#include "pages/KeptSections.h"
#include "pages/PageFile.h"
#include "placing/FieldFinder.h"
#include "reports/Renderer.h"
#include "serving/PageServer.h"

#include <deque>
#include <memory>

namespace inspect {

/// A view of whose input there is a page, too.
class PageRenderer : public Renderer {
public:
    /// @param file where the page is written at the end; may be null
    /// @param server by which it is seen before; may be null
    /// @param withBytes whether the view shows the bytes of all sections
    PageRenderer(std::unique_ptr<Renderer> view, PageFile* file, PageServer* server, bool withBytes)
        : m_view(std::move(view)), m_file(file), m_server(server), m_withBytes(withBytes) {}

    void begin(const std::string& name) override;
    void section(const SectionReport& report) override;
    void descriptor(const DescriptorReport& report) override { m_view->descriptor(report); }
    void alarm(const Alarm& alarm) override;
    void interim(const Summary& summary, double seconds) override { m_view->interim(summary, seconds); }
    bool wantsUpdates() const override { return m_view->wantsUpdates(); }
    void update(const Summary& summary) override { m_view->update(summary); }
    bool wantsAll() const override { return m_server != nullptr && m_server->isWatched(); }
    void updateAll(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;
    bool wantsHistory() const override { return true; }
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;

private:
    static constexpr std::size_t ROOM = std::size_t{32} << 20U;     ///< for texts of sections
    static constexpr std::size_t LIVE_ROOM = std::size_t{4} << 20U; ///< where there may be many inputs
    static constexpr std::size_t MOST_ALARMS = 10000;               ///< lines of them

    FieldPlaces placesIn(const SectionReport& report);
    std::string linesOf(const Summary& summary, const Multiplex& multiplex, const Faults& faults) const;

    std::unique_ptr<Renderer> m_view;
    PageFile* m_file;
    PageServer* m_server;
    bool m_withBytes;
    std::string m_source;
    KeptSections m_sections{0};
    FieldFinder m_finder;
    std::deque<std::string> m_alarms;
};

} // namespace inspect
