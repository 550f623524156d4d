#include "Chain.h"

#include "Reading.h"
#include "dsmcc/Carousels.h"
#include "support/StreamSections.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr unsigned PMT = 0x0101;
constexpr unsigned AIT = 0x0130;
constexpr unsigned CAROUSEL = 0x0140;
constexpr unsigned EVENTS = 0x0150;

using Told = std::vector<std::string>;

std::string digits(const ByteVector& bytes) {
    std::string text;
    for (const QUOR_U8 byte : bytes) {
        char two[3];
        std::snprintf(two, sizeof two, "%02X", byte);
        text += two;
    }
    return text;
}

std::size_t length(const ByteVector& bytes, std::size_t at) {
    return (bytes.at(at) & 0x0FU) << 8U | bytes.at(at + 1);
}

/// The descriptors of a tag in a loop.
void tellDescriptors(Told& told, const std::string& of, const ByteVector& loop, QUOR_U8 tag) {
    for (std::size_t at = 0; at + 2 <= loop.size(); at += 2U + loop[at + 1]) {
        if (loop[at] == tag) {
            const auto begin = loop.begin() + static_cast<std::ptrdiff_t>(at);
            told.push_back(of + digits(ByteVector(begin, begin + 2 + begin[1])));
        }
    }
}

ByteVector part(const ByteVector& bytes, std::size_t at, std::size_t size) {
    const auto begin = bytes.begin() + static_cast<std::ptrdiff_t>(at);
    return ByteVector(begin, begin + static_cast<std::ptrdiff_t>(size));
}

/// An AIT has one application: an identifier of 6 bytes and its control code stand before its loop.
void tellAit(Told& told, const ByteVector& section) {
    const std::string of = "AIT " + digits(part(section, 3, 2)) + " ";
    const std::size_t common = length(section, 8);
    const std::size_t application = 10 + common + 2;
    told.push_back(of + "version " + std::to_string(section[5] >> 1U & 0x1FU) + ", control code " +
                   std::to_string(section.at(application + 6)));
    const ByteVector own = part(section, application + 9, length(section, application + 7));
    tellDescriptors(told, of, own, 0x00);
    tellDescriptors(told, of, part(section, 10, common), 0x02);
    tellDescriptors(told, of, own, 0x02);
}

const char* stateOf(dsmcc::ModuleState state) {
    switch (state) {
    case dsmcc::ModuleState::Complete:
        return "complete";
    case dsmcc::ModuleState::Incomplete:
        return "incomplete";
    case dsmcc::ModuleState::Unannounced:
        return "unannounced";
    case dsmcc::ModuleState::InflateFailed:
        return "does not inflate";
    default:
        return "otherwise";
    }
}

std::string hexadecimal(std::uint32_t number) {
    char text[9];
    std::snprintf(text, sizeof text, "%08X", number);
    return text;
}

void tellModule(Told& told, const dsmcc::Module& module) {
    const std::string label = module.info.text(dsmcc::Descriptor::LABEL);
    told.push_back("module " + std::to_string(module.id) + " version " + std::to_string(module.version) + ", " +
                   stateOf(module.state) + (label.empty() ? "" : ", " + label));
}

void tellCarousel(Told& told, const dsmcc::Carousels& carousels, const dsmcc::Carousel& carousel) {
    if (carousel.dsi != nullptr) {
        const dsmcc::ObjectLocation& gateway = *carousel.dsi->gateway->location;
        told.push_back("DSI " + hexadecimal(carousel.dsi->transactionId) + ", gateway in carousel " +
                       std::to_string(gateway.carouselId) + ", " + std::to_string(gateway.moduleId) + "/" +
                       digits(gateway.objectKey));
    }
    for (const dsmcc::Group& group : carousel.groups) {
        told.push_back("DII " + hexadecimal(group.dii->transactionId) + " of carousel " +
                       std::to_string(group.dii->downloadId));
        for (const dsmcc::Module* const each : group.modules) {
            tellModule(told, *each);
        }
    }
    for (const dsmcc::Module* const each : carousel.unannounced) {
        tellModule(told, *each);
    }
    for (const dsmcc::Entry& each : carousels.tree(carousel).entries) {
        told.push_back((each.naming == dsmcc::Naming::None ? "(no name)" : each.path) +
                       (each.state == dsmcc::EntryState::Complete ? "" : ", not there"));
    }
}

} // namespace

std::vector<std::string> chainOf(const ByteVector& stream) {
    Told told;
    for (const ByteVector& each : sectionsOf(stream, PMT)) {
        told.push_back(crc32(each) == 0 ? "PMT" : "PMT, damaged");
    }
    for (const ByteVector& each : sectionsOf(stream, AIT)) {
        if (crc32(each) == 0) {
            tellAit(told, each);
        } else {
            told.emplace_back("AIT, damaged");
        }
    }
    for (const ByteVector& each : sectionsOf(stream, EVENTS)) {
        // behind a time line and a mode
        told.push_back("event " + std::to_string(each.at(8 + 20 + 4 + 2) << 8U | each.at(8 + 20 + 4 + 3)));
    }
    for (const reading::Packet& each : reading::packets(stream, CAROUSEL)) {
        told.emplace_back(each.isScrambled() ? "scrambled packets" : "packets");
    }
    dsmcc::Carousels carousels;
    double seconds = 0;
    for (const ByteVector& each : sectionsOf(stream, CAROUSEL)) {
        seconds += 0.01;
        if (const auto refusal = carousels.take({each.data(), each.size()}, seconds)) {
            told.push_back(refusal->text);
        }
    }
    for (const dsmcc::Carousel& each : carousels.carousels()) {
        tellCarousel(told, carousels, each);
    }
    std::sort(told.begin(), told.end());
    told.erase(std::unique(told.begin(), told.end()), told.end());
    return told;
}
