#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "descriptors/TDownloadContentDescriptor.h"
#include "naming/Names.h"

#include <fmt/format.h>

namespace inspect {

namespace {

Field describeSubItem(const Quor::TCompatibilityDescriptorSubItem& item) {
    return object(
        "", {identifier("sub_descriptor_type", item.getSubDescriptorType(), 2),
             number("additional_information_length", item.getAdditionalInformationLength()).in("bytes"),
             bytes("additional_information", item.getAdditionalInformation(), item.getAdditionalInformationLength())});
}

Field describeCompatibilityItem(const Quor::TCompatibilityDescriptorItem& item) {
    return object(
        "", {identifier("descriptor_type", item.getDescriptorType(), 2).named(names::COMPATIBILITY_TYPE),
             identifier("specifier_type", item.getSpecifierType(), 2).named(names::COMPATIBILITY_SPECIFIER),
             identifier("specifier_data", item.getSpecifierData(), 6), identifier("model", item.getModel(), 4),
             identifier("version", item.getVersion(), 4),
             listByPosition("sub_items", item, item.getCompatibilityDescriptorSubItemSize(),
                            &Quor::TCompatibilityDescriptorItem::getCompatibilityDescriptorSubItem, describeSubItem)});
}

Field describeCompatibility(const Quor::TCompatibilityDescriptor* descriptor) {
    constexpr std::string_view NAME = "compatibility_descriptor";
    if (descriptor == nullptr) {
        return absent(NAME);
    }
    return object(NAME, {listByPosition("items", *descriptor, descriptor->getCompatibilityDescriptorItemSize(),
                                        &Quor::TCompatibilityDescriptor::getCompatibilityDescriptorItem,
                                        describeCompatibilityItem)});
}

Field describeModule(const Quor::TDownloadContentDescriptorItem& item) {
    return object("", {identifier("module_id", item.getModuleID(), 4),
                       number("module_size", item.getModuleSize()).in("bytes"),
                       number("module_info_length", item.getModuleInfoLength()).in("bytes"),
                       bytes("module_info", item.getModuleInfo(), item.getModuleInfoLength())});
}

using Quor::TDownloadContentDescriptor;

Fields describeDownloadContent(const TDownloadContentDescriptor& descriptor) {
    constexpr std::uint64_t LEAK_UNIT = 50; // bytes a second
    return {code("reboot", descriptor.getReboot(), names::DOWNLOAD_REBOOT),
            code("add_on", descriptor.getAddOn(), names::DOWNLOAD_ADD_ON),
            code("compatibility_flag", descriptor.getCompatibilityFlag(), names::DOWNLOAD_PART),
            code("module_info_flag", descriptor.getModuleInfoFlag(), names::DOWNLOAD_PART),
            code("text_info_flag", descriptor.getTextInfoFlag(), names::DOWNLOAD_PART),
            number("component_size", descriptor.getComponentSize()).in("bytes"),
            identifier("download_id", descriptor.getDownloadID(), 8),
            number("time_out_value_dii", descriptor.getTimeOutValueDII()).in("ms"),
            number("leak_rate", descriptor.getLeakRate())
                .in("x 50 bytes/s")
                .reads(fmt::format("{} bytes/s", descriptor.getLeakRate() * LEAK_UNIT)),
            identifier("component_tag", descriptor.getComponentTag(), 2),
            describeCompatibility(descriptor.getCompatibilityDescriptor()),
            listByPosition("modules", descriptor, descriptor.getDownloadContentDescriptorItemSize(),
                           &TDownloadContentDescriptor::getDownloadContentDescriptorItem, describeModule),
            number("private_data_length", descriptor.getPrivateDataLength()).in("bytes"),
            bytes("private_data", descriptor.getPrivateData(), descriptor.getPrivateDataLength()),
            isoCode("language_code", descriptor.getLanguageCode()),
            text("text", descriptor.getText())};
}

} // namespace

void addDownloadDescriptors(Catalogue& catalogue) {
    catalogue.addDescriptor<describeDownloadContent>("download_content_descriptor", {SDTT});
}

} // namespace inspect
