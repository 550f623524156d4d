#pragma once

#include "packets/Pid.h"
#include "transmission/Parameters.h"

namespace inspect {

/// The PID of the ISDB-T information packet (IIP), of which each frame has one.
constexpr Pid INFORMATION_PID = 0x1FF0;

/// What an IIP says of the transmission.
struct InformationPacket {
    TransmissionParameters current;
    bool emergency; ///< switch-on_control_flag_used_for_alert_broadcasting

    /// @param packet 188 bytes
    /// @return nothing for a packet that is damaged, or no IIP
    static std::optional<InformationPacket> of(const std::uint8_t* packet);
};

} // namespace inspect
