#include "nit/TNITTable.h"

#include "support/Pins.h"
#include "support/Shown.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TNITTable;

namespace {

std::string shownTable(const TNITTable& table) {
    std::string text = shownHeader(table) + "\n" + shownDescriptors(table);
    const std::unique_ptr<std::list<QUOR_U16>> ids(table.getTransportStreamIDs());
    for (const QUOR_U16 id : *ids) {
        const Quor::TTransportStreamInfo& stream = *table.getTransportStreamInfo(id);
        text += "stream " + shownHex(stream.getTransportStreamID(), 4) + " of " +
                shownHex(stream.getOriginalNetworkID(), 4) + "\n" + shownDescriptors(stream);
    }
    return text;
}

} // namespace

// Broadcast service lists have entries of three bytes; this library reads two. An odd number of services fails.
TEST(RecordedNIT, EverySectionHasItsOutcome) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<Pin> pins{
        {"sections/tsduck-170-pid0x0010-tid0x40.sec",
         R"(
02E1 version 12 section 0/0
  40 "TV INTEGRA[C7][C3]O"
stream 02E1 of 02E1
  41 20 type 01, 5C type 38, C0 type 5C
  FA area 891, guard 1, mode 2, 0F90
  FB 5C38
  CD key 07, "TV INTEGRA[C7][C3]O", AF: 5C38, 0F: 5C20
)",
         {}},
        {"sections/tsduck-208.1-pid0x0010-tid0x40.sec",
         R"(
7ED4 version 14 section 0/0
  40 "=)ED[0E]4"
  FE 0301
stream 7ED4 of 7ED4
  41 01 type 49, 21 type 01, 48 type 22, A0 type C0
  FA area AC6, guard 2, mode 2, 0CF0 0D98 0E16 0E6A 0F3C 0F90 0FBA 0FE4 1038 1062 108C 10B6 110A 115E 1188 11DC 1206 1230 125A 12AE 12D8 132C 1356
  FB 49A0
  CD key 05, "[1B]~[C1][C1][C2]=)EDD+F|J|Aw", 0F: 4820 4821 4822, AF: 49A0
)",
         {}},
        {"sections/tsduck-101-pid0x0010-tid0x40.sec", "",
         Lines{"ISDBTUtils: TServiceListDescriptorItem::parse: Descriptor length not valid: 1. Aborting!",
               "ISDBTUtils: TServiceListDescriptor::parse: Invalid item. Aborting!",
               "ISDBTUtils: TNITTable::parse: Invalid item. Aborting!"},
         TISDBTTable::ERROR_INVALID_ITEM},
        {"sections/tsduck-165-pid0x0010-tid0x40.sec", R"(
0003 version 1 section 0/0
stream 110B of 0003
  41 40 type CA, 81 type 43, D7 type 01
)",
         unknown("TNITTable", "82 8B 99 9A") + unknown("TNITTransportStreamInfo", "44")},
        {"sections/tsduck-018-pid0x0010-tid0x40.sec", R"(
0110 version 1 section 0/0
  40 "Mediaset"
stream 1770 of 0110
)",
         unknown("TNITTransportStreamInfo", "43")},
        {"sections/tsduck-092-pid0x0010-tid0x40.sec", "",
         unknown("TNITTransportStreamInfo", "5A 5F 83 5A 5F 83") +
             Lines{"ISDBTUtils: TServiceListDescriptorItem::parse: Descriptor length not valid: 1. Aborting!",
                   "ISDBTUtils: TServiceListDescriptor::parse: Invalid item. Aborting!",
                   "ISDBTUtils: TNITTable::parse: Invalid item. Aborting!"},
         TISDBTTable::ERROR_INVALID_ITEM},
        {"sections/tsduck-016-pid0x0010-tid0x40.sec", R"(
007E version 9 section 0/0
  4A EB8C 007E 00B7 type 0B 11 00 00 04 0D 45 4E 47 09 43 41 4E 41 4C 45 54 54 4F
stream EB8C of 007E
)",
         unknown("TNITTransportStreamInfo", "43")},
        {"sections/tsduck-134-pid0x0010-tid0x40.sec", R"(
321D version 10 section 0/0
  40 "Nine Network Australia"
stream 0430 of 1012
  41 01 type 04, 04 type 38, 19 type 04, 31 type 19, 33 type 01, 35 type 01, 37 type 01, 39 type 01
)",
         unknown("TNITTransportStreamInfo", "5A 5F 83")},
        {"sections/tsduck-134-pid0x0010-tid0x40.sec", R"(
321B version 15 section 0/0
  40 "ABC Melbourne"
stream 0231 of 1010
  41 01 type 02, 02 type 02, 31 type 01, 33 type 01, 35 type 19, 37 type 02, 39 type 02, 3B type 02, 3D type 02, 3F type 0A
)",
         unknown("TNITTransportStreamInfo", "5A 5F 83")},
        {"generated/gen-tsduck-005-pidNA-tid0x40.sec", R"(
4589 version 0 section 0/0
  40 "net 1"
stream 0014 of 0282
stream 1234 of 0682
)",
         unknown("TNITTransportStreamInfo", "47 47 47 47")},
        {"generated/gen-opencaster-pidNA-tid0x40.sec", "",
         Lines{"ISDBTUtils: TServiceListDescriptorItem::parse: Descriptor length not valid: 1. Aborting!",
               "ISDBTUtils: TServiceListDescriptor::parse: Invalid item. Aborting!",
               "ISDBTUtils: TNITTable::parse: Invalid item. Aborting!"},
         TISDBTTable::ERROR_INVALID_ITEM},
    };
    expectPins<TNITTable>(0x40, pins, shownTable);
}
