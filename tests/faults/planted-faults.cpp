// planted-faults NAME: makes one fault. Without a name: lists them. What checks memory must report every one of them,
// or its silence over the other tests says nothing.

#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "support/FullSections.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <memory>

using Quor::TPATTable;
using Quor::TPMTTable;

namespace {

const HeapBytes& pmtBytes() {
    static const HeapBytes bytes(fullPmt());
    return bytes;
}

std::unique_ptr<TPMTTable> pmt() {
    return std::unique_ptr<TPMTTable>(TPMTTable::parse(pmtBytes().data(), pmtBytes().size(), 1, 1, nullptr, nullptr));
}

/// Makes the program depend on a value, which it prints nowhere.
void use(unsigned value) {
    static volatile unsigned used = 0;
    used = used ^ value;
}

void none() {
    const auto table = pmt();
    const auto* const linkage = table->getLinkageDescriptor();
    use(linkage->getPrivateData()[linkage->getPrivateDataSize() - 1]);
    use(table->getData()[table->getDataLength() - 1]);
    table->getDigitalCopyControlDescriptor()->remove(0);
    table->removeProgramMap(0);
}

void beyondAnArray() {
    const auto table = pmt();
    const auto* const linkage = table->getLinkageDescriptor();
    use(linkage->getPrivateData()[linkage->getPrivateDataSize()]);
}

void beyondTheSection() {
    const auto table = pmt();
    use(table->getData()[table->getDataLength()]);
}

void removedItem() {
    const auto table = pmt();
    auto* const descriptor = table->getDigitalCopyControlDescriptor();
    const auto* const item = descriptor->get(0);
    descriptor->remove(0);
    use(item->getCopyControlType());
}

void removedStream() {
    const auto table = pmt();
    const auto* const stream = table->getProgramMap(0);
    table->removeProgramMap(0);
    use(stream->getStreamType());
}

void deletedTable() {
    auto table = pmt();
    const auto* const linkage = table->getLinkageDescriptor();
    table.reset();
    use(linkage->getServiceID());
}

/// Several, as a forgotten copy of an address on the stack hides one from LeakSanitizer.
void displacedAndLost() {
    const HeapBytes bytes(longSection(0x00, {}, hex("0001 E101  0002 E102  0003 E103  0004 E104  0005 E105")));
    const std::unique_ptr<TPATTable> table(TPATTable::parse(bytes.data(), bytes.size(), 1, 1, nullptr, nullptr));
    for (QUOR_U16 service = 1; service <= 5; ++service) {
        table->add(new Quor::TProgramAssociation(service, 0x100));
    }
}

struct Fault {
    const char* name;
    void (*make)();
};

constexpr std::array FAULTS{
    Fault{"beyond-an-array", beyondAnArray}, Fault{"beyond-the-section", beyondTheSection},
    Fault{"removed-item", removedItem},      Fault{"removed-stream", removedStream},
    Fault{"deleted-table", deletedTable},    Fault{"displaced-and-lost", displacedAndLost},
};

} // namespace

int main(int argc, char** argv) {
    if (argc == 1) {
        for (const Fault& fault : FAULTS) {
            std::puts(fault.name);
        }
        return 0;
    }
    if (std::strcmp(argv[1], "none") == 0) {
        none();
        return 0;
    }
    for (const Fault& fault : FAULTS) {
        if (std::strcmp(argv[1], fault.name) == 0) {
            fault.make();
            return 0;
        }
    }
    return 2;
}
