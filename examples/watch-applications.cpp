// Watches the application information tables of a recorded transport stream for applications that a receiver has to
// start, and shows where each comes from: what an application does not say itself it inherits from its table.
#include "SectionReader.h"
#include "Update.h"

#include "ait/TAITTable.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "descriptors/TGingaApplicationLocationDescriptor.h"
#include "descriptors/TTransportProtocolDescriptorOC.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"

#include <cstdio>
#include <fstream>
#include <memory>

namespace {

using namespace Quor;

constexpr QUOR_U16 PAT_PID = 0x0000;

std::string nameOf(const TApplication& application) {
    const TApplicationNameDescriptor* const names = application.getApplicationNameDescriptor(1, nullptr);
    const TApplicationNameDescriptorItem* const name = names ? names->get("por") : nullptr;
    return name ? utf8(name->getName()) : "(no name)";
}

void printTransport(const TApplication& application) {
    int inherited = 0; // only ever set, so that it has to begin with 0
    const TTransportProtocolDescriptor* const transport = application.getTransportProtocolDescriptor(1, &inherited);
    if (transport && transport->getType() == TTransportProtocolDescriptor::ObjectCarousel) {
        const auto* const carousel = static_cast<const TTransportProtocolDescriptorOC*>(transport);
        std::printf("  object carousel on component_tag 0x%02X%s\n", unsigned{carousel->getComponentTag()},
                    inherited ? ", as the table says for all applications" : "");
    }
}

void start(const TApplication& application) {
    std::printf("start %s  %s\n", application.getHashID().c_str(), nameOf(application).c_str());
    printTransport(application);
    const TGingaApplicationLocationDescriptor* const location =
        application.getGingaApplicationLocationDescriptor(1, nullptr);
    if (location) {
        std::printf("  runs %s in %s\n", location->getInitialClass().c_str(), location->getBaseDirectory().c_str());
    }
}

/// Follows a stream from its program association table to its applications.
class ApplicationManager {
public:
    explicit ApplicationManager(SectionReader& demultiplexer) : m_demultiplexer(demultiplexer) {}

    void onPat(QUOR_U8* section, QUOR_U32 length) {
        if (!update(m_pat, section, length)) {
            return;
        }
        const std::unique_ptr<std::list<QUOR_U16>> services(m_pat->getProgramNumbers());
        for (const QUOR_U16 service : *services) {
            m_demultiplexer.watch(m_pat->get(service)->getProgramMapPid(),
                                  [=](QUOR_U8* data, QUOR_U32 size) { onPmt(m_pmts[service], data, size); });
        }
    }

    std::size_t running() const { return m_running.size(); }

private:
    void onPmt(std::unique_ptr<TPMTTable>& pmt, QUOR_U8* section, QUOR_U32 length) {
        if (!update(pmt, section, length)) {
            return;
        }
        for (QUOR_U32 at = 0; at < pmt->size(); ++at) {
            const TProgramMap* const stream = pmt->getProgramMap(static_cast<QUOR_U8>(at));
            const TDataComponentDescriptor* const component = stream->getDataComponentDescriptor(0, nullptr);
            if (component &&
                component->getDataComponentID() == TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_INFORMATION_TABLE) {
                m_demultiplexer.watch(stream->getElementaryPID(),
                                      [=](QUOR_U8* data, QUOR_U32 size) { onAit(data, size); });
            }
        }
    }

    /// A stream carries a table for each application_type, and each of them has versions of its own.
    void onAit(QUOR_U8* section, QUOR_U32 length) {
        const QUOR_U16 applicationType = static_cast<QUOR_U16>(section[3] << 8 | section[4]);
        std::unique_ptr<TAITTable>& ait = m_aits[applicationType];
        if (!update(ait, section, length)) {
            return;
        }
        const std::unique_ptr<std::list<std::string>> ids(&ait->getApplicationsIDs());
        for (const std::string& id : *ids) {
            TApplication* const application = ait->getApplication(id);
            if (application->getControlCode() == TApplication::CONTROLCODE_AUTOSTART && m_running.count(id) == 0) {
                start(*application);
                // A copy, with what it inherits: it stays when the next version of the table has replaced this one.
                m_running[id].reset(new TApplication(application, 1));
            }
        }
    }

    SectionReader& m_demultiplexer;
    std::unique_ptr<TPATTable> m_pat;
    std::map<QUOR_U16, std::unique_ptr<TPMTTable>> m_pmts;
    std::map<QUOR_U16, std::unique_ptr<TAITTable>> m_aits;
    std::map<std::string, std::unique_ptr<TApplication>> m_running;
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: watch-applications FILE\n");
        return 2;
    }
    SectionReader reader;
    ApplicationManager manager(reader);
    reader.watch(PAT_PID, [&](QUOR_U8* section, QUOR_U32 length) { manager.onPat(section, length); });

    std::ifstream stream(argv[1], std::ios::binary);
    if (!stream || !reader.read(stream)) {
        std::fprintf(stderr, "%s: no transport stream\n", argv[1]);
        return 1;
    }
    std::printf("%u running\n", static_cast<unsigned>(manager.running()));
    return 0;
}
