#pragma once

#include <string_view>

namespace inspect::descriptors {

// Those that lead to the files of an application, as the fields call them.
inline constexpr std::string_view APPLICATION = "application_descriptor";
inline constexpr std::string_view TRANSPORT = "transport_protocol_descriptor";
inline constexpr std::string_view LOCATION = "ginga_application_location_descriptor";
inline constexpr std::string_view ICON = "application_icon_descriptor";
inline constexpr std::string_view PREFETCH = "prefetch_descriptor";
inline constexpr std::string_view DII_LOCATION = "dii_location_descriptor";
inline constexpr std::string_view STREAM_EVENT = "stream_event_descriptor";

} // namespace inspect::descriptors
