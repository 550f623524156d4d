// Fuzzes the carousel library: messages one after the other, or the objects of one module.

#include "CarouselMessages.h"
#include "dsmcc/Carousels.h"
#include "support/Bytes.h"

#include <algorithm>

namespace {

volatile unsigned sum = 0; // so that what is read is needed

/// Reads everything that there is.
void read(const dsmcc::Carousels& carousels) {
    for (const dsmcc::Carousel& carousel : carousels.carousels()) {
        for (const dsmcc::Group& group : carousel.groups) {
            for (const dsmcc::Module* const module : group.modules) {
                for (const auto& [first, last] : module->missing()) {
                    sum = sum + first + last;
                }
                for (const std::uint8_t byte : module->content()) {
                    sum = sum + byte;
                }
            }
        }
        const dsmcc::Tree tree = carousels.tree(carousel);
        for (const dsmcc::Entry& entry : tree.entries) {
            for (const std::uint8_t byte : entry.content()) {
                sum = sum + byte;
            }
        }
    }
}

void take(dsmcc::Carousels& carousels, const ByteVector& section, double seconds) {
    const HeapBytes bytes(section);
    carousels.take({bytes.data(), bytes.size()}, seconds);
}

/// Each message has a byte for its kind, its id, its size in 16 bits, and its bytes.
void takeMessages(dsmcc::Carousels& carousels, const ByteVector& input) {
    constexpr std::size_t HEADER = 7;
    constexpr std::size_t ROOM = 4066; // of a section, for a block; for a message it has a little more
    double seconds = 0;
    for (std::size_t at = 0; at + HEADER <= input.size();) {
        const unsigned kind = input[at];
        const unsigned id = unsigned{input[at + 1]} << 24U | unsigned{input[at + 2]} << 16U |
                            unsigned{input[at + 3]} << 8U | input[at + 4];
        const std::size_t size = std::size_t{input[at + 5]} << 8U | input[at + 6];
        at += HEADER;
        const auto begin = input.begin() + static_cast<std::ptrdiff_t>(at);
        at = std::min(at + size, input.size());
        const ByteVector bytes(begin, input.begin() + static_cast<std::ptrdiff_t>(at));
        const ByteVector body(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(std::min(bytes.size(), ROOM)));
        switch (kind % 4) {
        case 0:
            take(carousels, bytes, seconds);
            break;
        case 1:
            take(carousels, wire::messageSection(0x1006, id, body), seconds);
            break;
        case 2:
            take(carousels, wire::messageSection(0x1002, id, body), seconds);
            break;
        default:
            take(carousels, wire::blockSection(id, body), seconds);
            break;
        }
        seconds += kind / 4;
    }
}

/// A module of an object carousel, and a service gateway with key 01 in it.
void takeModule(dsmcc::Carousels& carousels, const ByteVector& module) {
    constexpr std::size_t BLOCK = 1000;
    take(carousels, wire::gatewaySection(2, 1, {1}), 0);
    take(carousels, wire::objectDii({2, BLOCK}, {{1, module.size()}}), 0);
    for (const ByteVector& each : wire::blocks({}, BLOCK, module)) {
        take(carousels, each, 0);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    dsmcc::Limits limits;
    limits.memory = std::size_t{1} << 20U;
    limits.inflated = std::size_t{1} << 18U;
    limits.carousels = 3;
    limits.groups = 3;
    limits.modules = 8;
    limits.objects = 2000;
    limits.entries = 500;
    limits.silence = 100;
    limits.crc32 = false;
    dsmcc::Carousels carousels(limits);
    const ByteVector input(data + 1, data + size);
    if (data[0] % 2 == 0) {
        takeMessages(carousels, input);
    } else {
        takeModule(carousels, input);
    }
    read(carousels);
    return 0;
}
