// Lists the services of a recorded transport stream: what they are called, and where their program map tables are.
#include "SectionReader.h"
#include "Update.h"

#include "descriptors/TServiceDescriptor.h"
#include "pat/TPATTable.h"
#include "sdt/TSDTTable.h"

#include <cstdio>
#include <fstream>
#include <memory>

namespace {

constexpr QUOR_U16 PAT_PID = 0x0000;
constexpr QUOR_U16 SDT_PID = 0x0011;
constexpr QUOR_U8 SDT_OF_THIS_STREAM = 0x42; // its PID carries other tables as well

/// The name of a service; the table may be null, and may not know the service.
std::string nameOf(QUOR_U16 serviceId, const Quor::TSDTTable* sdt) {
    const Quor::TServiceDescription* const service = sdt ? sdt->getServiceDescription(serviceId) : nullptr;
    const Quor::TServiceDescriptor* const descriptor = service ? service->getServiceDescriptor() : nullptr;
    return descriptor ? utf8(descriptor->getServiceName()) : "(no name)";
}

void printServices(const Quor::TPATTable& pat, const Quor::TSDTTable* sdt) {
    const std::unique_ptr<std::list<QUOR_U16>> services(pat.getProgramNumbers());
    for (const QUOR_U16 service : *services) {
        const Quor::TProgramAssociation* const program = pat.get(service);
        std::printf("%5u  %s, PMT on PID 0x%04X\n", unsigned{service}, nameOf(service, sdt).c_str(),
                    unsigned{program->getProgramMapPid()});
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: list-services FILE\n");
        return 2;
    }
    std::unique_ptr<Quor::TPATTable> pat;
    std::unique_ptr<Quor::TSDTTable> sdt;

    SectionReader reader;
    reader.watch(PAT_PID, [&](QUOR_U8* section, QUOR_U32 length) { update(pat, section, length); });
    reader.watch(SDT_PID, [&](QUOR_U8* section, QUOR_U32 length) {
        if (section[0] == SDT_OF_THIS_STREAM) {
            update(sdt, section, length);
        }
    });

    std::ifstream stream(argv[1], std::ios::binary);
    if (!stream || !reader.read(stream) || !pat) {
        std::fprintf(stderr, "%s: no transport stream with a program association table\n", argv[1]);
        return 1;
    }
    printServices(*pat, sdt.get());
    return 0;
}
