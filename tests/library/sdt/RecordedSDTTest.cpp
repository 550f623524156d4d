#include "sdt/TSDTTable.h"

#include "support/Pins.h"
#include "support/Shown.h"

#include <gtest/gtest.h>

using Quor::TSDTTable;

namespace {

std::string shownTable(const TSDTTable& table) {
    std::string text = shownHeader(table) + ", network " + shownHex(table.getOriginalNetworkID(), 4) + "\n";
    const std::unique_ptr<std::list<QUOR_U16>> ids(table.getServiceIDs());
    for (const QUOR_U16 id : *ids) {
        const Quor::TServiceDescription& service = *table.getServiceDescription(id);
        text += "service " + shownHex(service.getServiceID(), 4) + " schedule " +
                std::to_string(service.hasEITSchedule()) + ", present " +
                std::to_string(service.hasEITPresentFollowing()) + ", status " +
                std::to_string(service.getRunningStatus()) + ", CA " + std::to_string(service.getFreeCAMode()) + "\n" +
                shownDescriptors(service);
    }
    return text;
}

} // namespace

TEST(RecordedSDT, EverySectionHasItsOutcome) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<Pin> pins{
        {"sections/tsduck-170-pid0x0011-tid0x42.sec",
         R"(
02E1 version 12 section 0/0, network 02E1
service 5C20 schedule 0, present 1, status 4, CA 0
  48 type 01, "TV INTEGRA[C7][C3]O", "TV INTEGRA[C7][C3]O HD"
service 5C38 schedule 0, present 1, status 4, CA 0
  48 type C0, "TV INTEGRA[C7][C3]O", "TV INTEGRA[C7][C3]O 1-SEG"
)",
         {}},
        {"sections/tsduck-165-pid0x0011-tid0x42.sec", R"(
110B version 5 section 0/0, network 0003
service 40CA schedule 0, present 1, status 0, CA 0
  C1 recording 0, copy 1, APS 0
service 43D7 schedule 0, present 1, status 0, CA 0
  C1 recording 0, copy 3, APS 3
service 70CA schedule 0, present 0, status 0, CA 1
service 73D7 schedule 0, present 0, status 0, CA 1
)",
         unknown("TServiceDescription", "82 82 8F 8A 82 82 8F 8A 91 91")},
        {"sections/gr-isdbt-tx-pid0x0011-tid0x42.sec",
         R"(
0001 version 5 section 0/0, network 0000
service 0110 schedule 1, present 1, status 4, CA 0
  48 type 01, "RTVE", "La 1"
service 0111 schedule 1, present 1, status 4, CA 0
  48 type 01, "RTVE", "La 2"
service 0211 schedule 0, present 1, status 0, CA 0
  48 type C0, "", "[0E]MTV 1Seg[0F]"
)",
         {}},
        {"sections/tsduck-018-pid0x0011-tid0x42.sec",
         R"(
1770 version 3 section 0/0, network 0110
service 0001 schedule 0, present 1, status 4, CA 1
  48 type 01, "Mediaset", "Italia 1"
service 0002 schedule 0, present 1, status 4, CA 1
  48 type 01, "Mediaset", "Canale 5"
service 0003 schedule 0, present 1, status 4, CA 1
  48 type 01, "Mediaset", "Rete 4"
service 0004 schedule 0, present 1, status 4, CA 1
  48 type 01, "Mediaset", "Iris"
service 0006 schedule 0, present 1, status 4, CA 1
  48 type 01, "Mediaset", "Boing"
service 0007 schedule 0, present 1, status 4, CA 1
  48 type 01, "Mediaset", "La 5"
service 0008 schedule 0, present 1, status 4, CA 0
  48 type 01, "Mediaset", "TgCom24"
service 0009 schedule 0, present 1, status 4, CA 1
  48 type 01, "Mediaset", "Mediaset EXTRA"
service 000A schedule 0, present 1, status 4, CA 1
  48 type 01, "Mediaset", "Mediaset ITALIA DUE"
service 000C schedule 0, present 1, status 4, CA 1
  48 type 01, "Mediaset", "Topcrime"
service 000D schedule 0, present 1, status 4, CA 1
  48 type 01, "", "Cartoonito"
service 0047 schedule 0, present 1, status 4, CA 1
  48 type 01, "", "LA7"
service 0048 schedule 0, present 1, status 4, CA 1
  48 type 01, "", "LA7d"
service 0065 schedule 0, present 1, status 4, CA 0
  48 type 02, "", "Radio R101"
service 0066 schedule 0, present 1, status 4, CA 0
  48 type 02, "", "Radio Monte Carlo"
service 0067 schedule 0, present 1, status 4, CA 0
  48 type 02, "", "Radio Monte Carlo 2"
service 0068 schedule 0, present 1, status 4, CA 0
  48 type 02, "", "Virgin radio"
service 0069 schedule 0, present 1, status 4, CA 0
  48 type 02, "", "Radio 105"
service 0325 schedule 0, present 1, status 4, CA 0
  48 type 01, "Mediaset", "Mediaset On Demand"
service 0383 schedule 0, present 1, status 4, CA 0
  48 type 01, "", "Infinity"
)",
         {}},
        {"sections/tsduck-026-pid0x0011-tid0x42.sec",
         R"(
0001 version 19 section 0/0, network 20FA
service 0101 schedule 1, present 1, status 4, CA 0
  48 type 01, "GR1 A", "France 2"
)",
         {}},
        {"sections/tsduck-092-pid0x0011-tid0x42.sec",
         R"(
0001 version 2 section 0/0, network 20FA
service 0101 schedule 1, present 1, status 4, CA 0
  48 type 01, "GR1 A", "France 2"
service 0104 schedule 1, present 1, status 4, CA 0
  48 type 01, "GR1 A", "France 4"
service 0105 schedule 1, present 1, status 4, CA 0
  48 type 01, "GR1 A", "[05]France [D4]"
service 0106 schedule 1, present 1, status 4, CA 0
  48 type 01, "GR1 A", "franceinfo:"
service 0111 schedule 1, present 1, status 4, CA 0
  48 type 01, "GR1", "F3 Paris Ile-de-France"
service 0170 schedule 1, present 1, status 4, CA 0
  48 type 01, "R1 TFL", "BFM Paris"
)",
         {}},
        {"sections/tsduck-016-pid0x0011-tid0x42.sec", R"(
EB8C version 12 section 0/0, network 013E
service 000A schedule 0, present 1, status 4, CA 0
  48 type 0C, "EUTELSAT", "CANALETTO"
service 00B7 schedule 0, present 1, status 4, CA 0
  48 type 80, "EUTELSAT", "Int Table"
)",
         unknown("TServiceDescription", "64 64 64 64 64 64 64 64")},
        {"sections/tsduck-utest-sdt_r3-pid0x0011-tid0x42.sec",
         R"(
0003 version 2 section 0/0, network 20FA
service 0301 schedule 0, present 1, status 4, CA 0
  48 type 01, "CNH", "CANAL+"
service 0302 schedule 0, present 1, status 4, CA 1
  48 type 01, "CNH", "CANAL+ CINEMA"
service 0303 schedule 0, present 1, status 4, CA 1
  48 type 01, "CNH", "CANAL+ SPORT"
service 0304 schedule 0, present 1, status 4, CA 1
  48 type 01, "CNH", "PLANETE"
service 0305 schedule 0, present 1, status 4, CA 1
  48 type 01, "CNH", "CANAL J"
service 0306 schedule 0, present 1, status 4, CA 0
  48 type 01, "CNH", "TPS STAR"
service 03F0 schedule 0, present 1, status 4, CA 0
  48 type 0C, "CNH", ""
service 03F1 schedule 0, present 1, status 4, CA 0
  48 type 0C, "CNH", ""
)",
         {}},
        {"sections/exoplayer-sdt-pid0x0011-tid0x42.sec",
         R"(
3344 version 0 section 0/0, network 1122
service 5566 schedule 0, present 0, status 4, CA 0
  48 type 01, "Some provider", "Some Channel"
)",
         {}},
        {"generated/gen-tsduck-005-pidNA-tid0x42.sec",
         R"(
7896 version 2 section 0/0, network 46AC
service 4659 schedule 0, present 1, status 0, CA 0
  49 flag 0, 78797A
service 46A9 schedule 1, present 0, status 3, CA 1
  49 flag 0, 797569
)",
         {}},
        {"generated/gen-opencaster-pidNA-tid0x42.sec",
         R"(
0001 version 1 section 0/0, network 0001
service 0001 schedule 0, present 0, status 4, CA 0
  48 type 01, "Avalpa", "Avalpa 1"
)",
         {}},
    };
    expectPins<TSDTTable>(0x42, pins, shownTable);
}
