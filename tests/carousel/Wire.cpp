#include "Wire.h"

#include <algorithm>

namespace wire {

ByteVector u8(std::size_t value) {
    return {static_cast<QUOR_U8>(value)};
}

ByteVector u32(std::size_t value) {
    return join({u16(static_cast<unsigned>(value >> 16U & 0xFFFFU)), u16(static_cast<unsigned>(value & 0xFFFFU))});
}

ByteVector counted8(const ByteVector& bytes) {
    return join({u8(bytes.size()), bytes});
}

ByteVector counted16(const ByteVector& bytes) {
    return join({u16(static_cast<unsigned>(bytes.size())), bytes});
}

ByteVector counted32(const ByteVector& bytes) {
    return join({u32(bytes.size()), bytes});
}

namespace {

ByteVector message(unsigned messageId, std::size_t id, const ByteVector& adaptation, const ByteVector& body) {
    return join(
        {hex("11 03"), u16(messageId), u32(id), hex("FF"), u8(adaptation.size()), counted16(join({adaptation, body}))});
}

/// "dir" and its like, with the NUL that belongs to it.
ByteVector alias(const std::string& kind) {
    return join({text(kind), hex("00")});
}

} // namespace

ByteVector messageSection(unsigned messageId, unsigned transactionId, const ByteVector& body,
                          const ByteVector& adaptation) {
    const LongHeader header{static_cast<QUOR_U16>(transactionId)};
    return longSection(0x3B, header, message(messageId, transactionId, adaptation, body));
}

ByteVector deliveryTap(unsigned associationTag, unsigned transactionId) {
    return join({hex("0000 0016"), u16(associationTag), hex("0A 0001"), u32(transactionId), hex("FFFFFFFF")});
}

ByteVector objectTap(unsigned associationTag) {
    return join({hex("0000 0017"), u16(associationTag), hex("00")});
}

ByteVector ior(const std::string& kind, unsigned carouselId, unsigned moduleId, const ByteVector& objectKey) {
    const ByteVector location =
        join({hex("49534F50"), counted8(join({u32(carouselId), u16(moduleId), hex("0100"), counted8(objectKey)}))});
    const ByteVector binder = join({hex("49534F40"), counted8(join({hex("01"), deliveryTap(0x000B, 0x80000002)}))});
    return join({counted32(alias(kind)), u32(1), hex("49534F06"), counted32(join({hex("00 02"), location, binder}))});
}

ByteVector gatewaySection(unsigned carouselId, unsigned moduleId, const ByteVector& objectKey, unsigned transactionId) {
    return messageSection(0x1006, transactionId,
                          join({fill(20, 0xFF), hex("0000"),
                                counted16(join({ior("srg", carouselId, moduleId, objectKey), hex("00 00 0000")}))}));
}

ByteVector diiOf(const Dii& dii, unsigned numberOfModules, const ByteVector& modules) {
    return messageSection(0x1002, dii.transactionId,
                          join({u32(dii.downloadId), u16(dii.blockSize), hex("00 00 00000000 00000000 0000"),
                                u16(numberOfModules), modules, hex("0000")}));
}

namespace {

ByteVector announced(const Announced& module, const ByteVector& info) {
    return join({u16(module.id), u32(module.size), u8(module.version), counted8(info)});
}

} // namespace

ByteVector objectDii(const Dii& dii, const std::vector<Announced>& modules) {
    ByteVector all;
    for (const Announced& each : modules) {
        const ByteVector times = hex("00000064 00000065 00000066");
        all = join({all, announced(each, join({times, hex("01"), objectTap(0x000B), counted8(each.descriptors)}))});
    }
    return diiOf(dii, static_cast<unsigned>(modules.size()), all);
}

ByteVector dataDii(const Dii& dii, const std::vector<Announced>& modules) {
    ByteVector all;
    for (const Announced& each : modules) {
        all = join({all, announced(each, each.descriptors)});
    }
    return diiOf(dii, static_cast<unsigned>(modules.size()), all);
}

ByteVector blockSection(unsigned downloadId, const ByteVector& body) {
    return longSection(0x3C, {}, message(0x1003, downloadId, {}, body));
}

ByteVector block(const Ddb& ddb, const ByteVector& bytes) {
    const LongHeader header{static_cast<QUOR_U16>(ddb.moduleId), ddb.version % 32U, true,
                            static_cast<QUOR_U8>(ddb.number)};
    const ByteVector body = join({u16(ddb.moduleId), u8(ddb.version), hex("FF"), u16(ddb.number), bytes});
    return longSection(0x3C, header, message(0x1003, ddb.downloadId, {}, body));
}

std::vector<ByteVector> blocks(const Ddb& first, std::size_t blockSize, const ByteVector& module) {
    std::vector<ByteVector> sections;
    Ddb ddb = first;
    for (std::size_t at = 0; at < module.size(); at += blockSize) {
        const auto begin = module.begin() + static_cast<std::ptrdiff_t>(at);
        const auto size = static_cast<std::ptrdiff_t>(std::min(blockSize, module.size() - at));
        sections.push_back(block(ddb, ByteVector(begin, begin + size)));
        ++ddb.number;
    }
    return sections;
}

ByteVector object(const std::string& kind, const ByteVector& key, const ByteVector& info, const ByteVector& body) {
    return join(
        {text("BIOP"), hex("01 00 00 00"),
         counted32(join({counted8(key), counted32(alias(kind)), counted16(info), hex("00"), counted32(body)}))});
}

ByteVector file(const ByteVector& key, const ByteVector& content) {
    return object("fil", key, join({u32(0), u32(content.size())}), counted32(content));
}

ByteVector binding(const Bound& bound) {
    const bool context = bound.kind == "dir" || bound.kind == "srg";
    return join({hex("01"), counted8(alias(bound.name)), counted8(alias(bound.kind)), u8(context ? 2 : 1),
                 ior(bound.kind, bound.carouselId, bound.moduleId, bound.key), hex("0000")});
}

ByteVector directory(const std::string& kind, const ByteVector& key, const std::vector<Bound>& bindings) {
    ByteVector all = u16(static_cast<unsigned>(bindings.size()));
    for (const Bound& each : bindings) {
        all = join({all, binding(each)});
    }
    return object(kind, key, {}, all);
}

} // namespace wire
