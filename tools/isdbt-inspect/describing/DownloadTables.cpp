#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Loops.h"
#include "descriptors/TDownloadContentDescriptor.h"
#include "naming/Names.h"
#include "sdtt/TSDTTTable.h"

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

Fields describeDownloadContent(const Quor::TDownloadContentDescriptor& descriptor) {
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
                           &Quor::TDownloadContentDescriptor::getDownloadContentDescriptorItem, describeModule),
            number("private_data_length", descriptor.getPrivateDataLength()).in("bytes"),
            bytes("private_data", descriptor.getPrivateData(), descriptor.getPrivateDataLength()),
            isoCode("language_code", descriptor.getLanguageCode()),
            text("text", descriptor.getText())};
}

Field describeSchedule(const Quor::TScheduleInfo& schedule) {
    return object(
        "", {clockTime("start_time", schedule.getStartTime()), digitDuration("duration", schedule.getDuration())});
}

Field describeContent(const Quor::TDownloadContent& content) {
    Fields fields{number("group", content.getGroup()),
                  number("target_version", content.getTargetVersion()),
                  number("new_version", content.getNewVersion()),
                  code("download_level", content.getDownloadLevel(), names::DOWNLOAD_LEVEL),
                  code("version_indicator", content.getVersionIndicator(), names::DOWNLOAD_VERSIONS),
                  code("schedule_time_shift_info", content.getScheduleTimeShiftInfo(), names::DOWNLOAD_SCHEDULE_SHIFT),
                  listByPosition("schedule_infos", content, content.getScheduleInfoSize(),
                                 &Quor::TDownloadContent::getScheduleInfo, describeSchedule)};
    appendDescriptors(fields, content);
    return object("", std::move(fields));
}

Fields describeSdtt(const Quor::TSDTTTable& sdtt) {
    Field contents = listByPosition("download_contents", sdtt, sdtt.getDownloadContentSize(),
                                    &Quor::TSDTTTable::getDownloadContent, describeContent);
    Loops(sdtt).appendLeftOutInOrder(contents);
    return {identifier("table_id_extension", sdtt.getTableIDExtension(), 4),
            identifier("maker_id", sdtt.getMakerID(), 2),
            identifier("model_id", sdtt.getModelID(), 2),
            identifier("transport_stream_id", sdtt.getTransportStreamID(), 4),
            identifier("original_network_id", sdtt.getOriginalNetworkID(), 4),
            identifier("service_id", sdtt.getServiceID(), 4),
            std::move(contents)};
}

} // namespace

void addDownloadTables(Catalogue& catalogue) {
    catalogue.addDescriptor<describeDownloadContent>("download_content_descriptor", {SDTT});
    catalogue.addTable<describeSdtt>();
}

} // namespace inspect
