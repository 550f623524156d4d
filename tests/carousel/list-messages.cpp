// Lists the messages of the carousels in a transport stream as the library reads them, a line each, for
// compare-readers.

#include "dsmcc/Messages.h"
#include "support/StreamSections.h"

#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

constexpr unsigned PIDS = 0x1FFF; // without null packets

struct Listing {
    void operator()(const dsmcc::Refusal& /*none*/) const {}
    void operator()(const dsmcc::OtherMessage& other) const { std::printf("%04X\n", unsigned{other.messageId}); }
    void operator()(const dsmcc::DownloadServerInitiate& dsi) const {
        std::printf("1006 extension %04X\n", dsi.transactionId & 0xFFFFU);
    }
    void operator()(const dsmcc::DownloadInfoIndication& dii) const {
        std::printf("1002 transaction %08X download %08X block size %u modules %u:", dii.transactionId, dii.downloadId,
                    unsigned{dii.blockSize}, static_cast<unsigned>(dii.modules.size()));
        for (const dsmcc::ModuleInfo& each : dii.modules) {
            std::printf(" %u/%u/%u", unsigned{each.id}, unsigned{each.size}, unsigned{each.version});
        }
        std::printf("\n");
    }
    void operator()(const dsmcc::DownloadDataBlock& ddb) const {
        std::printf("1003 download %08X module %u/%u block %u\n", ddb.downloadId, unsigned{ddb.moduleId},
                    unsigned{ddb.moduleVersion}, unsigned{ddb.blockNumber});
    }
};

} // namespace

int main(int argc, char** argv) {
    std::ifstream file(argc == 2 ? argv[1] : "", std::ios::binary);
    if (!file) {
        std::cerr << "Usage: list-messages FILE\n";
        return 2;
    }
    const ByteVector stream(std::istreambuf_iterator<char>(file), {});
    for (unsigned pid = 0; pid < PIDS; ++pid) {
        for (const ByteVector& each : sectionsOf(stream, pid)) {
            if (each[0] == 0x3B || each[0] == 0x3C) {
                std::visit(Listing(), dsmcc::readMessage({each.data(), each.size()}));
            }
        }
    }
}
