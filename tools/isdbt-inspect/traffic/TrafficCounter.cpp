#include "traffic/TrafficCounter.h"

#include <bitstream/mpeg/ts.h>

namespace inspect {

void TrafficCounter::take(const std::uint8_t* packet, const Position& position) {
    std::unique_ptr<PidTraffic>& traffic = m_ofPids.at(ts_get_pid(packet));
    if (!traffic) {
        traffic = std::make_unique<PidTraffic>();
        traffic->first = position;
    }
    ++traffic->packets;
    traffic->last = position;
}

} // namespace inspect
