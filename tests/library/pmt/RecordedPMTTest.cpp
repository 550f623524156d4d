#include "pmt/TPMTTable.h"

#include "support/Pins.h"
#include "support/Shown.h"

#include <gtest/gtest.h>

using Quor::TPMTTable;

namespace {

std::string shownTable(const TPMTTable& table) {
    std::string text = shownHeader(table) + ", PCR " + shownHex(table.getPCRPID(), 4) + "\n" + shownDescriptors(table);
    for (QUOR_U8 i = 0; i < table.size(); ++i) {
        const Quor::TProgramMap& stream = *table.getProgramMap(i);
        text += "stream " + shownHex(stream.getStreamType(), 2) + " PID " + shownHex(stream.getElementaryPID(), 4) +
                "\n" + shownDescriptors(stream);
    }
    return text;
}

} // namespace

// Descriptors of conditional access (09), AAC (2B) and association tags (14) are not among those of this table.
TEST(RecordedPMT, EverySectionHasItsOutcome) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<Pin> pins{
        {"sections/tsduck-170-pid0x0101-tid0x02.sec", R"(
5C20 version 5 section 0/0, PCR 0100
stream 1B PID 0111
  52 00
stream 11 PID 0112
  52 10
stream 11 PID 0113
  52 11
stream 11 PID 0114
  52 12
stream 11 PID 0115
  52 13
stream 06 PID 0116
  52 30
  FD 0008 3D
stream 05 PID 01F4
  FD 00A3
stream 0B PID 0384
  52 40
  FD 00A0 A4 00 00 00 0A 00 64 00 00 00 01 1F
  13 00000001
stream 0C PID 05DC
  52 78
)",
         unknown("TProgramMap", "14")},
        {"sections/tsduck-170-pid0x1FC8-tid0x02.sec",
         R"(
5C38 version 6 section 0/0, PCR 0200
stream 11 PID 0212
  52 83
stream 1B PID 0211
  52 81
stream 06 PID 0119
  52 87
  FD 0008 3D
)",
         {}},
        {"sections/tsduck-101-pid0x0101-tid0x02.sec", R"(
008D version 9 section 0/0, PCR 0100
  C1 recording 2, copy 1, APS 0
  DE image 0, retention 1, state 7, encryption 0
stream 02 PID 0140
  52 00
  C8 still 0, end 1, format 1
stream 0F PID 0141
  52 10
stream 06 PID 0145
  52 30
  FD 0008 3D
stream 06 PID 0146
  52 38
  FD 0008 3C
stream 0D PID 0148
  52 40
  FD 0007 33 5F FF BF
stream 0D PID 0149
  52 52
  FD 0007 1F FF BF
stream 0D PID 014A
  52 53
  FD 0007 1F FF BF
stream 0D PID 014E
  52 66
  FD 0007 1F FF BF
)",
         unknown("TPMTTable", "09") + unknown("TProgramMap", "09 09")},
        {"sections/tsduck-101-pid0x0201-tid0x02.sec", R"(
008E version 16 section 0/0, PCR 0100
  C1 recording 2, copy 1, APS 0
  DE image 0, retention 1, state 7, encryption 0
stream 02 PID 0140
  52 00
  C8 still 0, end 1, format 1
stream 0F PID 0141
  52 10
stream 06 PID 0145
  52 30
  FD 0008 3D
stream 06 PID 0146
  52 38
  FD 0008 3C
stream 0D PID 0148
  52 40
  FD 0007 33 5F FF BF
stream 0D PID 0149
  52 52
  FD 0007 1F FF BF
stream 0D PID 014A
  52 53
  FD 0007 1F FF BF
stream 0D PID 014E
  52 66
  FD 0007 1F FF BF
)",
         unknown("TPMTTable", "09") + unknown("TProgramMap", "09 09")},
        {"sections/tsduck-101-pid0x0203-tid0x02.sec", R"(
008F version 6 section 0/0, PCR 0100
  C1 recording 2, copy 1, APS 0
  DE image 0, retention 1, state 7, encryption 0
stream 02 PID 0140
  52 00
  C8 still 0, end 1, format 1
stream 0F PID 0141
  52 10
stream 06 PID 0145
  52 30
  FD 0008 3D
stream 06 PID 0146
  52 38
  FD 0008 3C
stream 0D PID 0148
  52 40
  FD 0007 33 5F FF BF
stream 0D PID 0149
  52 52
  FD 0007 1F FF BF
stream 0D PID 014A
  52 53
  FD 0007 1F FF BF
stream 0D PID 014E
  52 66
  FD 0007 1F FF BF
)",
         unknown("TPMTTable", "09") + unknown("TProgramMap", "09 09")},
        {"sections/tsduck-165-pidNA-tid0x02.sec", R"(
5C79 version 1 section 0/0, PCR 1112
stream 02 PID 1002
  52 00
stream 0F PID 1012
  52 10
)",
         unknown("TProgramMap", "2B")},
        {"sections/tsduck-165-pidNA-tid0x02.sec", R"(
5C78 version 1 section 0/0, PCR 1111
stream 02 PID 1001
  52 00
stream 0F PID 1011
  52 10
)",
         unknown("TPMTTable", "09") + unknown("TProgramMap", "2B")},
        {"sections/gr-isdbt-tx-pid0x0218-tid0x02.sec", R"(
0211 version 23 section 0/0, PCR 021E
stream 1B PID 0219
  52 81
stream 11 PID 021A
  52 83
stream 06 PID 021B
  52 87
  FD 0012 3D
stream 0B PID 021C
  52 80
  FD 00A0
  13 00000002 00
stream 05 PID 021D
  FD 00A3
)",
         unknown("TProgramMap", "14")},
        {"sections/sedec-arib-pid0x01F0-tid0x02.sec", R"(
0065 version 14 section 0/0, PCR 01FF
  C1 recording 2, copy 1, APS 0
stream 02 PID 0100
  52 00
  C8 still 0, end 1, format 1
stream 0F PID 0110
  52 10
stream 06 PID 0130
  52 30
  FD 0008 3D
stream 06 PID 0138
  52 38
  FD 0008 3C
stream 0D PID 0140
  52 40
  FD 0007 33 7F FF FF
stream 0D PID 0160
  52 60
  FD 0007 1F FF FF
stream 0D PID 0161
  52 61
  FD 0007 1F FF FF
stream 0D PID 0162
  52 62
  FD 0007 1F FF FF
stream 0D PID 0170
  52 70
  FD 0007 1F FF FF
stream 0D PID 0171
  52 71
  FD 0007 1F FF FF
)",
         unknown("TPMTTable", "09") + unknown("TProgramMap", "09 09")},
        {"sections/tsduck-018-pid0x0100-tid0x02.sec", R"(
0001 version 4 section 0/0, PCR 0654
stream 02 PID 0654
stream 04 PID 0655
stream 04 PID 0656
stream 06 PID 0653
stream 05 PID 1EC5
stream 05 PID 1EC6
stream 05 PID 1EC7
stream 0B PID 1E9E
  52 0A
  13 00001AB6 01 00 00 0A 0F E2 00 00 00 6E 00 00 00 00 6E 01 04 53 47 57 00
stream 0B PID 1E9F
  52 0E
  13 00001AB7 01 00 00 0A 0F E2 00 00 00 B9 00 00 00 00 B9 03 04 53 47 57 00
)",
         unknown("TProgramMap", "09 09 0A 09 09 0A 09 09 56 6F 6F 6F 14 66 14 66")},
        {"sections/tsduck-018-pid0x0101-tid0x02.sec", R"(
0002 version 4 section 0/0, PCR 064A
stream 02 PID 064A
stream 04 PID 064B
stream 04 PID 064C
stream 06 PID 0653
stream 05 PID 1EC5
stream 05 PID 1EC6
stream 05 PID 1EC7
stream 0B PID 1E9E
  52 0A
  13 00001AB6 01 00 00 0A 0F E2 00 00 00 6E 00 00 00 00 6E 01 04 53 47 57 00
stream 0B PID 1E9F
  52 0E
  13 00001AB7 01 00 00 0A 0F E2 00 00 00 B9 00 00 00 00 B9 03 04 53 47 57 00
)",
         unknown("TProgramMap", "09 09 0A 09 09 0A 09 09 56 6F 6F 6F 14 66 14 66")},
        {"sections/exoplayer-ait-pid0x012C-tid0x02.sec", R"(
0407 version 22 section 0/0, PCR 0140
stream 06 PID 014A
  52 02
stream 05 PID 0172
stream 0B PID 0173
  52 F1
  13 000000F1 00
)",
         unknown("TProgramMap", "0A 7A 6F 66")},
        {"sections/tsduck-026-pid0x006E-tid0x02.sec", R"(
0101 version 1 section 0/0, PCR 0078
stream 1B PID 0078
  52 01
stream 06 PID 0082
  52 02
stream 06 PID 0083
  52 03
stream 06 PID 0084
  52 04
stream 06 PID 008C
  52 05
stream 06 PID 008E
  52 06
)",
         unknown("TProgramMap", "0A 7A 0A 7F 7A 0A 7A 59 59")},
        {"sections/tsduck-092-pid0x006E-tid0x02.sec", R"(
0101 version 12 section 0/0, PCR 0078
stream 1B PID 0078
  52 01
stream 06 PID 0082
  52 02
stream 06 PID 0083
  52 03
stream 06 PID 0084
  52 04
stream 06 PID 008C
  52 05
stream 06 PID 008E
  52 06
)",
         unknown("TProgramMap", "0A 7A 0A 7F 7A 0A 7A 59 59")},
        {"sections/tsduck-092-pid0x00D2-tid0x02.sec", R"(
0111 version 1 section 0/0, PCR 00DC
stream 1B PID 00DC
stream 03 PID 00E6
stream 03 PID 00E7
stream 06 PID 00F0
stream 03 PID 00E8
stream 06 PID 00F2
  52 06
)",
         unknown("TProgramMap", "0A 0A 7F 59 0A 59")},
        {"sections/tsduck-092-pid0x0136-tid0x02.sec", R"(
0104 version 10 section 0/0, PCR 0140
stream 1B PID 0140
  52 01
stream 06 PID 014A
  52 02
stream 06 PID 014B
  52 03
stream 06 PID 014C
  52 04
stream 06 PID 0154
  52 05
stream 06 PID 0156
  52 06
)",
         unknown("TProgramMap", "0A 7A 0A 7F 7A 0A 7A 59 59")},
        {"sections/tsduck-092-pid0x01FE-tid0x02.sec", R"(
0105 version 9 section 0/0, PCR 0208
stream 1B PID 0208
  52 01
stream 06 PID 0212
  52 02
stream 06 PID 0213
  52 03
stream 06 PID 021C
  52 05
)",
         unknown("TProgramMap", "0A 7A 0A 7F 7A 59")},
        {"sections/tsduck-092-pid0x0262-tid0x02.sec", R"(
0106 version 10 section 0/0, PCR 026C
stream 1B PID 026C
  52 01
stream 06 PID 0276
  52 02
stream 06 PID 0280
  52 05
)",
         unknown("TProgramMap", "0A 7A 59")},
        {"sections/tsduck-092-pid0x02C6-tid0x02.sec", R"(
0170 version 16 section 0/0, PCR 02D0
stream 1B PID 02D0
stream 06 PID 02DA
)",
         unknown("TProgramMap", "0A 7A")},
        {"sections/tsduck-016-pid0x07D0-tid0x02.sec", R"(
000A version 8 section 0/0, PCR 1FFF
stream 0D PID 07D1
  52 01
stream 0D PID 07D2
  52 02
stream 0D PID 07D3
  52 03
stream 0D PID 07D4
  52 04
stream 0D PID 07D5
  52 05
stream 0D PID 07D6
  52 06
stream 0D PID 07D7
  52 07
)",
         unknown("TProgramMap", "66 66 66 66 66 66 66")},
        {"sections/tsduck-016-pid0x0BB8-tid0x02.sec", R"(
00B7 version 15 section 0/0, PCR 1FFF
stream 0D PID 0BB9
)",
         unknown("TProgramMap", "66")},
        {"sections/tsduck-040-pid0x0030-tid0x02.sec", R"(
0003 version 2 section 0/0, PCR 0031
stream 02 PID 0031
stream 81 PID 0034
)",
         unknown("TPMTTable", "A3") + unknown("TProgramMap", "02 06 05 A3 81 0A")},
        {"sections/tsduck-040-pid0x0040-tid0x02.sec", R"(
0004 version 7 section 0/0, PCR 0041
stream 02 PID 0041
stream 81 PID 0044
)",
         unknown("TPMTTable", "A3") + unknown("TProgramMap", "02 06 05 A3 81 0A")},
        {"sections/tsduck-040-pid0x0050-tid0x02.sec", R"(
0005 version 6 section 0/0, PCR 0051
stream 02 PID 0051
stream 81 PID 0054
)",
         unknown("TPMTTable", "A3") + unknown("TProgramMap", "02 06 05 A3 81 0A")},
        {"sections/tsduck-040-pid0x0060-tid0x02.sec", R"(
0006 version 1 section 0/0, PCR 0061
stream 02 PID 0061
stream 81 PID 0064
)",
         unknown("TPMTTable", "05 10 A3 AA") + unknown("TProgramMap", "02 06 86 05 A3 81 0A")},
        {"sections/exoplayer-sdt-pid0x1500-tid0x02.sec",
         R"(
5566 version 0 section 0/0, PCR 0150
stream 02 PID 0150
stream 81 PID 0151
)",
         {}},
        {"generated/gen-tsduck-005-pidNA-tid0x02.sec", R"(
0456 version 4 section 0/0, PCR 1234
stream 12 PID 0567
)",
         unknown("TPMTTable", "09") + unknown("TProgramMap", "0A 7F")},
        {"generated/gen-opencaster-pidNA-tid0x02.sec", R"(
0001 version 1 section 0/0, PCR 0810
stream 02 PID 0810
stream 03 PID 0814
stream 05 PID 07D1
stream 0B PID 07D3
  52 0B
  13 00000001 00
)",
         unknown("TProgramMap", "6F 14 66")},
        {"generated/gen-opencaster-pidNA-tid0x02.sec",
         R"(
0001 version 1 section 0/0, PCR 0810
stream 02 PID 0810
stream 04 PID 0814
)",
         {}},
    };
    expectPins<TPMTTable>(0x02, pins, shownTable);
}
