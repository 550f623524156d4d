#pragma once

#include "packets/Pid.h"
#include "packets/Position.h"

#include <optional>
#include <string>
#include <string_view>

namespace inspect {

/// How bad it is for a receiver.
enum class Severity {
    Error,   ///< something is not found, or does not start
    Warning, ///< tables contradict each other, or one of them is not what it should be
    Remark   ///< nothing is wrong: no fault is so
};

/// What does not fit together in a multiplex.
struct FaultKind {
    std::string_view name;
    Severity severity;
    enum class ShownBy { Fault, Section, Alarm, Summary } shownBy = ShownBy::Fault; ///< where it is seen without a list
};

namespace faults {

inline constexpr FaultKind CHANGED_SILENTLY{"changed_without_new_version", Severity::Error,
                                            FaultKind::ShownBy::Section};
inline constexpr FaultKind DAMAGED{"damaged", Severity::Error, FaultKind::ShownBy::Section};
inline constexpr FaultKind REJECTED{"rejected", Severity::Error, FaultKind::ShownBy::Section};
inline constexpr FaultKind SECTION_MISSING{"section_missing", Severity::Error};
inline constexpr FaultKind TABLE_MISSING{"table_missing", Severity::Error};
inline constexpr FaultKind SCRAMBLED{"scrambled", Severity::Error};
inline constexpr FaultKind TABLE_EMPTY{"table_empty", Severity::Warning};
inline constexpr FaultKind WRONG_PID{"wrong_pid", Severity::Error};
inline constexpr FaultKind NOT_IN_NIT{"not_in_nit", Severity::Warning};
inline constexpr FaultKind NOT_IN_PAT{"not_in_pat", Severity::Error};
inline constexpr FaultKind NOT_IN_SDT{"not_in_sdt", Severity::Warning};
inline constexpr FaultKind NOT_IN_TS_INFORMATION{"not_in_ts_information", Severity::Warning};
inline constexpr FaultKind NOT_IN_SERVICE_LIST{"not_in_service_list", Severity::Warning};
inline constexpr FaultKind ONLY_IN_SERVICE_LIST{"only_in_service_list", Severity::Warning};
inline constexpr FaultKind NETWORKS_DIFFER{"networks_differ", Severity::Warning};
inline constexpr FaultKind TAG_TWICE{"component_tag_twice", Severity::Error};
inline constexpr FaultKind PID_TWICE{"pid_twice", Severity::Warning};
inline constexpr FaultKind PID_UNANNOUNCED{"pid_unannounced", Severity::Warning};
inline constexpr FaultKind APPLICATION_TABLE_MISSING{"ait_missing", Severity::Error};
inline constexpr FaultKind DESCRIPTOR_MISSING{"descriptor_missing", Severity::Error};
inline constexpr FaultKind PROFILE_MISSING{"profile_missing", Severity::Error};
inline constexpr FaultKind LABEL_UNKNOWN{"label_unknown", Severity::Error};
inline constexpr FaultKind CAROUSEL_MISSING{"carousel_missing", Severity::Error};
inline constexpr FaultKind CAROUSEL_IS_NONE{"carousel_is_none", Severity::Error};
inline constexpr FaultKind APPLICATION_TABLE_UNSTABLE{"ait_unstable", Severity::Warning};
inline constexpr FaultKind CAROUSEL_SILENT{"carousel_silent", Severity::Error};
inline constexpr FaultKind CAROUSEL_WITHOUT_SECTIONS{"carousel_without_sections", Severity::Error};
inline constexpr FaultKind CAROUSEL_ID_DIFFERS{"carousel_id_differs", Severity::Error};
inline constexpr FaultKind DSI_MISSING{"dsi_missing", Severity::Error};
inline constexpr FaultKind DII_MISSING{"dii_missing", Severity::Error};
inline constexpr FaultKind MODULE_MISSING{"module_missing", Severity::Error};
inline constexpr FaultKind MODULE_INCOMPLETE{"module_incomplete", Severity::Error};
inline constexpr FaultKind MODULE_VERSION{"module_version", Severity::Error};
inline constexpr FaultKind MODULE_UNREADABLE{"module_unreadable", Severity::Error};
inline constexpr FaultKind OBJECT_MISSING{"object_missing", Severity::Error};
inline constexpr FaultKind BASE_DIRECTORY_MISSING{"base_directory_missing", Severity::Error};
inline constexpr FaultKind INITIAL_CLASS_MISSING{"initial_class_missing", Severity::Error};
inline constexpr FaultKind CLASS_PATH_MISSING{"class_path_missing", Severity::Warning};
inline constexpr FaultKind ICONS_MISSING{"icons_missing", Severity::Warning};
inline constexpr FaultKind PREFETCH_UNKNOWN{"prefetch_unknown", Severity::Warning};
inline constexpr FaultKind EVENTS_UNKNOWN{"events_unknown", Severity::Warning};
inline constexpr FaultKind CLOCKS_DIFFER{"clocks_differ", Severity::Warning};
inline constexpr FaultKind PACKETS_LOST{"packets_lost", Severity::Error};
inline constexpr FaultKind TRAILERS_DAMAGED{"trailers_damaged", Severity::Warning};
inline constexpr FaultKind FRAME_LENGTH{"frame_length", Severity::Warning};
inline constexpr FaultKind IIP_MISSING{"iip_missing", Severity::Error};
inline constexpr FaultKind IIP_DAMAGED{"iip_damaged", Severity::Error};
inline constexpr FaultKind SEGMENTS{"segments", Severity::Warning};
inline constexpr FaultKind LAYER_PACKETS{"layer_packets", Severity::Warning};
inline constexpr FaultKind NIT_CONTRADICTS_IIP{"nit_contradicts_iip", Severity::Warning};

inline constexpr FaultKind CRC_ERRORS{"crc_errors", Severity::Error, FaultKind::ShownBy::Summary};
inline constexpr FaultKind DISCONTINUITIES{"discontinuities", Severity::Error, FaultKind::ShownBy::Summary};
inline constexpr FaultKind SECTIONS_CUT_SHORT{"sections_cut_short", Severity::Error, FaultKind::ShownBy::Summary};
inline constexpr FaultKind MALFORMED_PACKETS{"malformed_packets", Severity::Error, FaultKind::ShownBy::Summary};
inline constexpr FaultKind TRANSPORT_ERRORS{"transport_errors", Severity::Error, FaultKind::ShownBy::Summary};
inline constexpr FaultKind BYTES_SKIPPED{"bytes_skipped", Severity::Error, FaultKind::ShownBy::Summary};
inline constexpr FaultKind INPUT_LOSSES{"input_losses", Severity::Error, FaultKind::ShownBy::Summary};
inline constexpr FaultKind NO_DATA{"no_data", Severity::Error, FaultKind::ShownBy::Summary};

} // namespace faults

/// Where in the stream.
struct FaultPlace {
    std::optional<Pid> pid;
    std::optional<std::uint8_t> tableId;
    std::optional<std::uint16_t> extension; ///< table_id_extension
};

struct Fault {
    FaultKind kind;
    FaultPlace place;
    std::string text;
    std::optional<Position> since; ///< of the section that shows it; nothing when none does
    std::string about = {};        ///< "Service 0xE6A0 (59040)"
};

} // namespace inspect
