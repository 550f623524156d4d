#include "DSMCCSection/TDSMCCSectionTable.h"
#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Loops.h"
#include "descriptors/TDownloadContentDescriptor.h"
#include "naming/Names.h"
#include "sdtt/TSDTTTable.h"

namespace inspect {

namespace {

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

Fields describeDsmccSection(const Quor::TDSMCCSectionTable& section) {
    Fields fields{identifier("data_event_id", section.getDataEventID(), 1),
                  identifier("event_msg_group_id", section.getEventMsgGroupID(), 3)};
    appendDescriptors(fields, section);
    Loops(section).appendLeftOut(fields);
    return fields;
}

} // namespace

void addDownloadTables(Catalogue& catalogue) {
    catalogue.addTable<describeSdtt>();
    catalogue.addTable<describeDsmccSection>();
}

} // namespace inspect
