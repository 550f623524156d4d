#include "CarouselMessages.h"

#include <algorithm>

namespace wire {

using sample::Wire;

Bytes u8(std::size_t value) {
    return Wire().bits(8, value).bytes();
}

Bytes u32(std::size_t value) {
    return Wire().bits(32, value).bytes();
}

Bytes counted8(const Bytes& bytes) {
    return Wire().bits(8, bytes.size()).append(bytes).bytes();
}

Bytes counted16(const Bytes& bytes) {
    return Wire().bits(16, bytes.size()).append(bytes).bytes();
}

Bytes counted32(const Bytes& bytes) {
    return Wire().bits(32, bytes.size()).append(bytes).bytes();
}

namespace {

constexpr std::uint8_t MESSAGES_TABLE_ID = 0x3B;
constexpr std::uint8_t BLOCKS_TABLE_ID = 0x3C;

constexpr unsigned SERVER_INITIATE = 0x1006;
constexpr unsigned INFO_INDICATION = 0x1002;
constexpr unsigned DATA_BLOCK = 0x1003;

Wire message(unsigned messageId, std::size_t id, const Bytes& adaptation, const Bytes& body) {
    return Wire()
        .bits(8, 0x11) // protocolDiscriminator
        .bits(8, 0x03) // dsmccType: download
        .bits(16, messageId)
        .bits(32, id)
        .reserved(8)
        .bits(8, adaptation.size())
        .bits(16, adaptation.size() + body.size())
        .append(adaptation)
        .append(body);
}

/// "dir" and its like, with the NUL that belongs to it.
Bytes alias(const std::string& kind) {
    return Wire().text(kind).bits(8, 0).bytes();
}

/// A tap without a selector.
Wire tap(unsigned use, unsigned associationTag) {
    return Wire().bits(16, 0).bits(16, use).bits(16, associationTag).bits(8, 0);
}

/// A tap that names a DII, and a time-out that nobody knows.
Wire deliveryTap(const Delivery& delivery) {
    return Wire()
        .bits(16, 0)
        .bits(16, 0x0016) // use: delivery parameters
        .bits(16, delivery.associationTag)
        .bits(8, 10)
        .bits(16, 1) // selector_type: message
        .bits(32, delivery.transactionId)
        .reserved(32);
}

} // namespace

Bytes messageSection(unsigned messageId, unsigned transactionId, const Bytes& body, const Bytes& adaptation) {
    return sample::downloadSection(MESSAGES_TABLE_ID, static_cast<std::uint16_t>(transactionId),
                                   message(messageId, transactionId, adaptation, body));
}

Bytes objectTap(unsigned associationTag) {
    return tap(0x0017, associationTag).bytes();
}

Bytes ior(const std::string& kind, unsigned carouselId, unsigned moduleId, const Bytes& objectKey,
          const Delivery& delivery) {
    const Wire location = Wire()
                              .bits(32, carouselId)
                              .bits(16, moduleId)
                              .bits(16, 0x0100) // version
                              .append(counted8(objectKey));
    const Wire binder = Wire().bits(8, 1).append(deliveryTap(delivery).bytes());
    const Wire profile = Wire()
                             .bits(8, 0)           // byte_order: big-endian
                             .bits(8, 2)           // components_count
                             .bits(32, 0x49534F50) // ObjectLocation
                             .append(counted8(location.bytes()))
                             .bits(32, 0x49534F40) // ConnBinder
                             .append(counted8(binder.bytes()));
    return Wire()
        .append(counted32(alias(kind)))
        .bits(32, 1)          // taggedProfiles_count
        .bits(32, 0x49534F06) // BIOP profile
        .append(counted32(profile.bytes()))
        .bytes();
}

Bytes gatewaySection(unsigned carouselId, unsigned moduleId, const Bytes& objectKey, unsigned transactionId,
                     const Delivery& delivery) {
    const Wire info = Wire()
                          .append(ior("srg", carouselId, moduleId, objectKey, delivery))
                          .bits(8, 0)   // downloadTaps_count
                          .bits(8, 0)   // serviceContextList_count
                          .bits(16, 0); // userInfoLength
    return messageSection(SERVER_INITIATE, transactionId,
                          Wire()
                              .append(Bytes(20, 0xFF)) // serverId
                              .bits(16, 0)             // compatibilityDescriptor
                              .append(counted16(info.bytes()))
                              .bytes());
}

Bytes diiOf(const Dii& dii, unsigned numberOfModules, const Bytes& modules) {
    return messageSection(INFO_INDICATION, dii.transactionId,
                          Wire()
                              .bits(32, dii.downloadId)
                              .bits(16, dii.blockSize)
                              .bits(16, 0) // windowSize, ackPeriod
                              .bits(32, 0) // tCDownloadWindow
                              .bits(32, 0) // tCDownloadScenario
                              .bits(16, 0) // compatibilityDescriptor
                              .bits(16, numberOfModules)
                              .append(modules)
                              .bits(16, 0) // privateDataLength
                              .bytes());
}

namespace {

Bytes announced(const Announced& module, const Bytes& info) {
    return Wire().bits(16, module.id).bits(32, module.size).bits(8, module.version).append(counted8(info)).bytes();
}

} // namespace

Bytes objectDii(const Dii& dii, const std::vector<Announced>& modules) {
    Wire all;
    for (const Announced& each : modules) {
        all.append(announced(each, Wire()
                                       .bits(32, dii.moduleTimeOut)
                                       .bits(32, dii.blockTimeOut)
                                       .bits(32, dii.minBlockTime)
                                       .bits(8, 1) // taps_count
                                       .append(objectTap(dii.associationTag))
                                       .append(counted8(each.descriptors))
                                       .bytes()));
    }
    return diiOf(dii, static_cast<unsigned>(modules.size()), all.bytes());
}

Bytes dataDii(const Dii& dii, const std::vector<Announced>& modules) {
    Wire all;
    for (const Announced& each : modules) {
        all.append(announced(each, each.descriptors));
    }
    return diiOf(dii, static_cast<unsigned>(modules.size()), all.bytes());
}

Bytes blockSection(unsigned downloadId, const Bytes& body) {
    return sample::downloadSection(BLOCKS_TABLE_ID, 0x0001, message(DATA_BLOCK, downloadId, {}, body));
}

Bytes block(const Ddb& ddb, const Bytes& bytes) {
    const Wire body = Wire().bits(16, ddb.moduleId).bits(8, ddb.version).reserved(8).bits(16, ddb.number).append(bytes);
    return sample::downloadSection(BLOCKS_TABLE_ID, static_cast<std::uint16_t>(ddb.moduleId),
                                   message(DATA_BLOCK, ddb.downloadId, {}, body.bytes()),
                                   {ddb.version % 32, ddb.number % 256, ddb.lastSection});
}

std::vector<Bytes> blocks(const Ddb& first, std::size_t blockSize, const Bytes& module) {
    constexpr unsigned SECTIONS = 256; // of which section_number knows
    std::vector<Bytes> sections;
    const auto count = static_cast<unsigned>((module.size() + blockSize - 1) / blockSize);
    Ddb ddb = first;
    for (std::size_t at = 0; at < module.size(); at += blockSize) {
        const auto begin = module.begin() + static_cast<std::ptrdiff_t>(at);
        const auto size = static_cast<std::ptrdiff_t>(std::min(blockSize, module.size() - at));
        ddb.lastSection = std::min(count - 1 - ddb.number / SECTIONS * SECTIONS, SECTIONS - 1);
        sections.push_back(block(ddb, Bytes(begin, begin + size)));
        ++ddb.number;
    }
    return sections;
}

Bytes object(const std::string& kind, const Bytes& key, const Bytes& info, const Bytes& body) {
    const Wire behindSize = Wire()
                                .append(counted8(key))
                                .append(counted32(alias(kind)))
                                .append(counted16(info))
                                .bits(8, 0) // serviceContextList_count
                                .append(counted32(body));
    return Wire()
        .text("BIOP")
        .bits(16, 0x0100) // version
        .bits(8, 0)       // byte_order: big-endian
        .bits(8, 0)       // message_type
        .append(counted32(behindSize.bytes()))
        .bytes();
}

Bytes file(const Bytes& key, const Bytes& content) {
    return object("fil", key, Wire().bits(64, content.size()).bytes(), counted32(content));
}

Bytes streamEvents(const Bytes& key, const Events& events) {
    Wire info;
    info.bits(8, 0)          // aDescription_length
        .bits(64, 0)         // duration: seconds and microseconds
        .bits(24, 0x010101); // audio, video, data
    info.bits(16, events.events.size());
    Wire body;
    body.bits(8, 1)                                         // taps_count
        .append(tap(0x000C, events.associationTag).bytes()) // status and events
        .bits(8, events.events.size());
    for (const Events::Event& each : events.events) {
        info.append(counted8(alias(each.name)));
        body.bits(16, each.id);
    }
    return object("ste", key, info.bytes(), body.bytes());
}

Bytes binding(const Bound& bound) {
    const bool context = bound.kind == "dir" || bound.kind == "srg";
    return Wire()
        .bits(8, 1) // nameComponents_count
        .append(counted8(alias(bound.name)))
        .append(counted8(alias(bound.kind)))
        .bits(8, context ? 2 : 1) // bindingType
        .append(ior(bound.kind, bound.carouselId, bound.moduleId, bound.key, bound.delivery))
        .bits(16, 0) // objectInfo_length
        .bytes();
}

Bytes directory(const std::string& kind, const Bytes& key, const std::vector<Bound>& bindings) {
    Wire all;
    all.bits(16, bindings.size());
    for (const Bound& each : bindings) {
        all.append(binding(each));
    }
    return object(kind, key, {}, all.bytes());
}

} // namespace wire
