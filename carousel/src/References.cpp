// Taps, object references and descriptors, which messages and objects have in common.
//
// IOP::IOR
//   type_id_length 32, type_id, 0xFF up to a multiple of 4, taggedProfiles_count 32
//   each: profileId_tag 32, profile_data_length 32, profile
//
// BIOPProfileBody
//   byte_order 8, components_count 8; each: componentId_tag 32, component_data_length 8, data
//   ObjectLocation: carouselId 32, moduleId 16, version 16, objectKey_length 8, objectKey
//   ConnBinder: taps
//
// LiteOptionsProfileBody
//   byte_order 8, components_count 8; each: componentId_tag 32, component_data_length 32, data
//   ServiceLocation: serviceDomain_length 8, serviceDomain, path
//
// tap: id 16, use 16, association_tag 16, selector_length 8, selector

#include "References.h"

namespace dsmcc {

namespace {

constexpr std::uint32_t BIOP_PROFILE = 0x49534F06;
constexpr std::uint32_t LITE_OPTIONS_PROFILE = 0x49534F05;
constexpr std::uint32_t OBJECT_LOCATION = 0x49534F50;
constexpr std::uint32_t CONNECTION_BINDER = 0x49534F40;
constexpr std::uint32_t SERVICE_LOCATION = 0x49534F46;

Tap readTap(Reader& reader) {
    constexpr std::uint16_t MESSAGE = 1; // selector_type
    constexpr std::size_t MESSAGE_SIZE = 10;
    Tap tap;
    tap.id = reader.u16("tap id");
    tap.use = reader.u16("tap use");
    tap.associationTag = reader.u16("association_tag");
    Reader selector = reader.part(reader.u8("selector_length"), "selector");
    Reader message = selector;
    tap.selector = selector.bytes(selector.left(), "selector");
    if (message.left() >= MESSAGE_SIZE && message.u16("selector_type") == MESSAGE) {
        tap.transactionId = message.u32("transactionId");
        tap.timeout = message.u32("timeout");
    }
    return tap;
}

ObjectLocation readLocation(Reader reader) {
    ObjectLocation location;
    location.carouselId = reader.u32("carouselId");
    location.moduleId = reader.u16("moduleId");
    reader.u16("version");
    location.objectKey = reader.bytes(reader.u8("objectKey_length"), "objectKey");
    return location;
}

void readProfile(std::uint32_t tag, Reader profile, Ior& ior) {
    profile.littleEndian(profile.u8("byte_order") == 1);
    for (unsigned left = profile.u8("components_count"); left != 0; --left) {
        const std::uint32_t component = profile.u32("componentId_tag");
        const std::size_t size =
            tag == BIOP_PROFILE ? profile.u8("component_data_length") : profile.u32("component_data_length");
        Reader data = profile.part(size, "component");
        if (component == OBJECT_LOCATION) {
            ior.location = readLocation(data);
        } else if (component == CONNECTION_BINDER) {
            ior.taps = readTaps(data);
        } else if (component == SERVICE_LOCATION) {
            ior.serviceDomain = data.bytes(data.u8("serviceDomain_length"), "serviceDomain");
        }
    }
}

} // namespace

std::vector<Tap> readTaps(Reader& reader) {
    std::vector<Tap> taps;
    for (unsigned left = reader.u8("taps_count"); left != 0; --left) {
        taps.push_back(readTap(reader));
    }
    return taps;
}

Ior readIor(Reader& reader) {
    constexpr std::size_t ALIGNMENT = 4;
    Ior ior;
    const std::size_t size = reader.u32("type_id_length");
    ior.typeId = reader.text(size, "type_id");
    reader.view((ALIGNMENT - size % ALIGNMENT) % ALIGNMENT, "gap behind type_id");
    for (std::uint32_t left = reader.u32("taggedProfiles_count"); left != 0; --left) {
        const std::uint32_t tag = reader.u32("profileId_tag");
        const Reader profile = reader.part(reader.u32("profile_data_length"), "profile");
        if (tag == BIOP_PROFILE || tag == LITE_OPTIONS_PROFILE) {
            readProfile(tag, profile, ior);
        }
    }
    return ior;
}

void skipServiceContexts(Reader& reader) {
    for (unsigned left = reader.u8("serviceContextList_count"); left != 0; --left) {
        reader.u32("context_id");
        reader.view(reader.u16("context_data_length"), "context");
    }
}

std::vector<Descriptor> readDescriptors(Reader reader) {
    std::vector<Descriptor> descriptors;
    try {
        while (reader.left() != 0) {
            const std::uint8_t tag = reader.u8("descriptor_tag");
            descriptors.push_back({tag, reader.bytes(reader.u8("descriptor_length"), "descriptor")});
        }
    } catch (const Refused&) {
        return descriptors; // what came before is what it says
    }
    return descriptors;
}

} // namespace dsmcc
