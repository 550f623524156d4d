#include "tool/watching/Watched.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using inspect::EventKind;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const ByteVector PAT_BYTES = pat("E6A0 E101");
const ByteVector PMT_BYTES = pmt(0xE6A0, "E100", "1B E111 F000 06 E130 F000");
const ByteVector SDT_BYTES = longSection(0x42, {}, hex("0735 FF E6A0 FC 8005 48 03 01 00 00"));

/// EIT p/f of a service.
ByteVector eit(QUOR_U8 section, QUOR_U16 service = 0xE6A0) {
    LongHeader header;
    header.extension = service;
    header.section = section;
    header.last = 1;
    return longSection(0x4E, header, hex("0735 0735 01 4E"));
}

ByteVector ofNetwork(QUOR_U8 tableId, unsigned version = 0) {
    LongHeader header;
    header.extension = 0x0735;
    header.version = version;
    return longSection(tableId, header, hex("F000 F000"));
}

/// Carries what every stream has to have, as often as it should.
void carryAll(Watched& stream, double now) {
    if (each(1, now)) {
        stream.section(0x0000, PAT_BYTES);
        stream.section(0x0101, PMT_BYTES);
        stream.packet(0x0111);
        stream.happens(EventKind::PcrInterval, 0x0100, 0.09);
    }
    if (each(5, now)) {
        stream.happens(EventKind::PtsInterval, 0x0111, 0.5);
    }
    if (each(10, now)) {
        stream.section(0x0010, ofNetwork(0x40));
        stream.section(0x0011, SDT_BYTES);
        stream.section(0x0012, eit(0));
        stream.section(0x0012, eit(1));
    }
    if (each(50, now)) {
        stream.section(0x0014, tot(static_cast<unsigned>(now)));
    }
}

TEST(Watch, HasNothingToSayOfAGoodStream) {
    Watched stream("isdbt");
    stream.until(120, [&](double now) { carryAll(stream, now); });
    EXPECT_THAT(stream.checks(), IsEmpty());
    EXPECT_EQ(stream.result("pat_interval"), "ok");
    EXPECT_EQ(stream.result("pmt_interval"), "ok");
    EXPECT_EQ(stream.result("pcr_interval"), "ok");
    EXPECT_EQ(stream.result("pcr_jump"), "ok");
    EXPECT_EQ(stream.result("pcr_accuracy"), "packets come without times that are exact enough");
    EXPECT_EQ(stream.result("ait_interval"), "none came");
    EXPECT_EQ(stream.result("declared_cycle"), "no BIT declares any");
    EXPECT_EQ(stream.result("min_gap"), "not in the profile");
}

TEST(Watch, SaysThatATableStopsWhenItDoes) {
    Watched stream("dvb");
    stream.until(80, [&](double now) {
        if (now <= 20 || now > 60) {
            stream.section(0x0000, PAT_BYTES);
        }
    });
    EXPECT_THAT(stream.said("pat_interval"),
                ElementsAre("20.6 begin alarm: no PAT for 0.6 s (limit 0.5 s, TR 101 290 1.3.a)",
                            "60.1 end alarm: PAT came again after 40.1 s"));
    EXPECT_EQ(stream.result("pat_interval"), "1 alarms");
    ASSERT_THAT(stream.watch().alarms(),
                Contains(testing::Field(&inspect::Alarm::worst, testing::Optional(testing::DoubleNear(40.1, 1e-6)))));
}

TEST(Watch, WarnsBeforeItAlarms) {
    Watched stream("isdbt");
    stream.until(20, [&](double now) {
        if (now <= 10) {
            stream.section(0x0000, PAT_BYTES);
        }
    });
    EXPECT_THAT(stream.said("pat_interval"),
                ElementsAre("10.3 begin warning: no PAT for 0.3 s (limit 0.2 s, proposal)",
                            "10.6 worse alarm: no PAT for 0.6 s (limit 0.5 s, TR 101 290 1.3.a)"));
}

TEST(Watch, MissesWhatNeverCame) {
    Watched stream("dvb");
    stream.until(40);
    EXPECT_THAT(stream.said("pat_interval"), ElementsAre(HasSubstr("0.6 begin alarm: no PAT for 0.6 s")));
    EXPECT_THAT(stream.said("sdt_interval"), ElementsAre(HasSubstr("2.1 begin alarm: no SDT for 2.1 s")));
    EXPECT_THAT(stream.said("tdt_interval"), ElementsAre(HasSubstr("30.1 begin alarm: no TDT for 30.1 s")));
    EXPECT_THAT(stream.said("bat_interval"), IsEmpty());
    EXPECT_EQ(stream.result("bat_interval"), "none came");
}

TEST(Watch, MakesOneAlarmOfOneFault) {
    Watched stream("dvb");
    stream.until(40, [&](double now) {
        if (now > 10 && now < 20 ? each(7, now) : each(2, now)) {
            stream.section(0x0000, PAT_BYTES);
        }
    });
    ASSERT_EQ(stream.said("pat_interval").size(), 2U);
    EXPECT_THAT(stream.said("pat_interval")[1], HasSubstr("end alarm: PAT came too late 13 times"));
}

TEST(Watch, WaitsForThePmtOfEachProgram) {
    Watched stream("isdbt");
    stream.until(10, [&](double /*now*/) {
        stream.section(0x0000, pat("E6A0 E101 E6A1 E101"));
        stream.section(0x0011, SDT_BYTES);
        stream.section(0x0101, PMT_BYTES);
    });
    EXPECT_THAT(stream.said("pmt_interval"),
                ElementsAre(HasSubstr("no PMT of 0xE6A1 on PID 0x0101 for 0.5 s (limit 0.2 s, proposal)"),
                            HasSubstr("(limit 0.5 s, TR 101 290 1.5.a)")));
}

TEST(Watch, MissesAPcrThatNeverComesWithoutLimitsToo) {
    Watched stream("always");
    stream.until(20, [&stream](double /*now*/) {
        stream.section(0x0000, pat("E6A0 E101"));
        stream.section(0x0101, PMT_BYTES);
    });
    EXPECT_THAT(stream.said("pcr_interval"),
                ElementsAre(HasSubstr("begin alarm: no PCR on PID 0x0100 for 10.1 s (limit 5 s, proposal)")));
}

TEST(Watch, GivesOneSegItsOwnLimits) {
    Watched stream("isdbt");
    Watched strict("dvb");
    for (Watched* const each : {&stream, &strict}) {
        each->until(10, [each](double now) {
            each->section(0x0000, pat("E6B8 FFC8"));
            if (::each(5, now)) {
                each->section(0x1FC8, pmt(0xE6B8, "E200", "1B E211 F000"));
            }
            if (::each(2, now)) {
                each->packet(0x0211);
                each->happens(EventKind::PcrInterval, 0x0200, 0.205);
            }
        });
    }
    EXPECT_THAT(stream.said("pcr_one_seg_interval"), IsEmpty());
    EXPECT_THAT(stream.said("pmt_one_seg_interval"), IsEmpty());
    EXPECT_THAT(strict.said("pcr_interval"),
                ElementsAre(HasSubstr("no PCR on PID 0x0200 for 0.205 s (limit 0.1 s, TR 101 290 2.3.a)")));
}

TEST(Watch, GivesServicesForDownloadsTheirOwnLimits) {
    const ByteVector services =
        longSection(0x42, {}, hex("0735 FF E6A0 FC 8005 48 03 01 00 00 E6F0 FC 8005 48 03 A4 00 00"));
    Watched stream("isdbt");
    stream.until(20, [&](double now) {
        stream.section(0x0000, pat("E6A0 E101 E6F0 E1F0"));
        stream.section(0x0101, PMT_BYTES);
        if (each(10, now)) {
            stream.section(0x01F0, pmt(0xE6F0, "FFFF", "0D E140 F000"));
        }
        if (each(20, now) && now > 0) {
            stream.section(0x0011, services);
        }
    });
    EXPECT_THAT(stream.said("pmt_interval"), IsEmpty());
    EXPECT_THAT(stream.said("pmt_engineering_interval"), IsEmpty());
    EXPECT_EQ(stream.result("pmt_engineering_interval"), "ok");
}

TEST(Watch, MissesVideoThatIsAnnounced) {
    Watched stream("isdbt");
    stream.until(20, [&](double now) {
        stream.section(0x0000, PAT_BYTES);
        stream.section(0x0101, pmt(0xE6A0, "E100", "1B E111 F000 0F E112 F000 06 E130 F000"));
        if (now < 10 || now > 18) {
            stream.packet(0x0111);
        }
    });
    EXPECT_THAT(
        stream.said("video_audio_pid"),
        ElementsAre("5.1 begin alarm: no packet of video or audio on PID 0x0112 for 5.1 s (limit 5 s, proposal)",
                    "15.0 begin alarm: no packet of video or audio on PID 0x0111 for 5.1 s (limit 5 s, proposal)"));
}

TEST(Watch, SeesPtsThatPause) {
    Watched stream("isdbt");
    stream.until(10, [&](double now) {
        carryAll(stream, now);
        if (each(50, now)) {
            stream.happens(EventKind::PtsInterval, 0x0130, 3); // of captions
        }
    });
    EXPECT_THAT(stream.said("pts_interval"), IsEmpty());
    stream.until(11);
    EXPECT_THAT(stream.said("pts_interval"), ElementsAre(HasSubstr("no PTS on PID 0x0111 for 0.8 s")));
}

TEST(Watch, LetsStillPicturesStay) {
    const std::string descriptors[] = {"C8 01 80", "02 01 01", "28 04 64 00 1E 80", ""};
    for (const std::string& descriptor : descriptors) {
        const std::string length = descriptor.empty()
                                       ? "F000"
                                       : "F0" + std::string(descriptor[1] == '8' && descriptor[0] == '2' ? "06" : "03");
        Watched stream("dvb");
        stream.section(0x0000, PAT_BYTES);
        stream.section(0x0101, pmt(0xE6A0, "E100", "1B E111 " + length + descriptor));
        stream.until(20, [&](double now) {
            if (each(80, now)) {
                stream.packet(0x0111);
                stream.happens(EventKind::PtsInterval, 0x0111, 8);
            }
        });
        const bool isStill = !descriptor.empty();
        EXPECT_EQ(stream.said("pts_interval").empty(), isStill) << descriptor;
        EXPECT_EQ(stream.said("video_audio_pid").empty(), isStill) << descriptor;
    }
}

TEST(Watch, TakesTheCyclesThatAStationDeclares) {
    const ByteVector bit = longSection(0xC4, {}, hex("F008 D7 06 00 0000 40 01 01"));
    Watched stream("isdbt");
    stream.until(20, [&](double now) {
        carryAll(stream, now);
        stream.section(0x0024, bit);
        if (now > 10) {
            return;
        }
        stream.section(0x0010, ofNetwork(0x40));
    });
    EXPECT_THAT(stream.said("nit_interval"), IsEmpty());
    stream.until(30, [&](double /*now*/) { stream.section(0x0024, bit); });
    EXPECT_THAT(
        stream.said("nit_interval"),
        ElementsAre(
            "21.6 begin warning: no NIT for 1.6 s (limit 1.5 s, 1.5 times the 1 s that the BIT declares: proposal)",
            "23.1 worse alarm: no NIT for 3.1 s (limit 3 s, 3 times the 1 s that the BIT declares: proposal)"));
    EXPECT_EQ(stream.result("declared_cycle"), "ok");
}

TEST(Watch, MissesOneOfTwoSectionsOfAnEit) {
    Watched stream("dvb");
    stream.until(10, [&](double now) {
        if (each(10, now)) {
            stream.section(0x0012, eit(0));
        }
    });
    EXPECT_THAT(stream.said("eit_interval"), ElementsAre(HasSubstr("no EIT p/f section 1 of 0xE6A0 for 2.1 s")));
}

TEST(Watch, StartsAnewBehindALoss) {
    Watched stream("isdbt");
    stream.until(10, [&](double now) { carryAll(stream, now); });
    Watched unaware("isdbt");
    stream.happens(EventKind::Loss, {}, 3);
    stream.until(10.3).until(30, [&](double now) { carryAll(stream, now); });
    EXPECT_THAT(stream.checks(), ElementsAre("loss"));
    EXPECT_THAT(stream.said("loss").front(), HasSubstr("packets lost, 3 s of the stream (ISO/IEC 13818-1"));
}

TEST(Watch, TakesBrokenCountersForALoss) {
    Watched stream("isdbt");
    stream.until(10, [&](double now) { carryAll(stream, now); });
    stream.happens(EventKind::Discontinuity, 0x0111, 1);
    stream.until(10.3, [&](double now) { carryAll(stream, now); });
    stream.happens(EventKind::Loss, {}, 3);
    stream.happens(EventKind::Discontinuity, 0x0010, 1);
    stream.until(30, [&](double now) { carryAll(stream, now); });
    EXPECT_THAT(stream.checks(), ElementsAre("loss"));
}

/// Whose counters broke later had no packet in between; those of a PID whose packets are rare need not be told again.
TEST(Watch, TakesCountersThatBreakTogetherForOneLoss) {
    Watched stream("isdbt");
    stream.until(10, [&](double now) { carryAll(stream, now); });
    stream.breaks(0x0111, 3, 2);
    stream.breaks(0x0112, 2, 5);
    stream.until(10.2, [&](double now) { carryAll(stream, now); });
    stream.breaks(0x0000, 1, 6);
    stream.until(14, [&](double now) { carryAll(stream, now); });
    stream.breaks(0x0014, 1, 80);
    stream.until(50, [&](double now) { carryAll(stream, now); });
    stream.breaks(0x0023, 1, 450);
    stream.until(60, [&](double now) { carryAll(stream, now); });
    EXPECT_THAT(stream.checks(), ElementsAre("loss"));
    EXPECT_THAT(stream.said("loss").front(),
                HasSubstr("10.1 begin alarm: at least 6 packets of 3 PIDs lost at once (ISO/IEC 13818-1"));
}

TEST(Watch, TellsTwoLossesApartThoughTheyFollowSoon) {
    Watched stream("isdbt");
    stream.until(10, [&](double now) { carryAll(stream, now); });
    stream.breaks(0x0111, 3, 2);
    stream.breaks(0x0112, 2, 5);
    stream.until(10.3, [&](double now) { carryAll(stream, now); });
    stream.breaks(0x0111, 7, 1);
    stream.breaks(0x0112, 8, 2);
    stream.until(30, [&](double now) { carryAll(stream, now); });
    EXPECT_THAT(stream.checks(), ElementsAre("loss"));
    EXPECT_THAT(stream.said("loss").back(), HasSubstr("at least 5 packets of 2 PIDs lost at once (ISO/IEC 13818-1 "
                                                      "2.4.3.3), 2 times"));
}

TEST(Watch, TakesCountersThatBreakApartForWhatTheyAre) {
    Watched stream("isdbt");
    stream.until(10, [&](double now) { carryAll(stream, now); });
    stream.breaks(0x0111, 3, 2);
    stream.until(10.1, [&](double now) { carryAll(stream, now); });
    stream.breaks(0x0112, 2, 1);
    stream.until(20, [&](double now) { carryAll(stream, now); });
    EXPECT_THAT(stream.checks(), ElementsAre("continuity"));
    EXPECT_EQ(stream.said("continuity").size(), 4U);
}

/// Its packets may have been among them.
TEST(Watch, MissesNothingThatALossTookOnce) {
    Watched stream("dvb");
    stream.until(10, [&](double /*now*/) { stream.section(0x0000, PAT_BYTES); });
    stream.until(10.4);
    stream.breaks(0x0111, 3, 2);
    stream.breaks(0x0112, 2, 5);
    stream.until(11);
    EXPECT_THAT(stream.said("pat_interval"), IsEmpty());
    stream.until(12);
    EXPECT_THAT(stream.said("pat_interval"), ElementsAre(HasSubstr("11.6 begin alarm: no PAT for 1.1 s")));
}

/// Each loss may have taken it along, but not one after the other for so long.
TEST(Watch, MissesATableThoughPacketsAreLostAllTheTime) {
    Watched stream("dvb");
    const auto loseOften = [&](double now) {
        if (each(3, now)) {
            stream.happens(EventKind::Loss, {}, 0.2);
        }
    };
    stream.until(20, [&](double now) {
        loseOften(now);
        if (each(4, now)) {
            stream.section(0x0000, PAT_BYTES);
        }
    });
    EXPECT_THAT(stream.said("pat_interval"), IsEmpty());
    stream.until(40, loseOften);
    EXPECT_THAT(stream.said("pat_interval"), ElementsAre(HasSubstr("begin alarm: no PAT for 2.")));
    stream.until(50, [&](double /*now*/) { stream.section(0x0000, PAT_BYTES); });
    EXPECT_THAT(stream.said("pat_interval"),
                ElementsAre(HasSubstr("begin"), HasSubstr("40.1 end alarm: PAT came again after")));
}

/// The other counter that shows it comes only when the table does.
TEST(Watch, WaitsWithWhatABrokenCounterMayExplain) {
    Watched stream("dvb");
    const auto carry = [&](double now) {
        if (each(4, now)) {
            stream.section(0x0000, PAT_BYTES);
        }
    };
    stream.until(10.3, carry);
    stream.breaks(0x0111, 3, 1);
    stream.until(10.7);
    stream.breaks(0x0000, 1, 8);
    stream.until(20, carry);
    EXPECT_THAT(stream.said("pat_interval"), IsEmpty());
    EXPECT_THAT(stream.said("continuity"), IsEmpty());
    EXPECT_THAT(stream.said("loss").front(), HasSubstr("at least 4 packets of 2 PIDs lost at once"));
}

/// Nothing else is broken: it was away.
TEST(Watch, TellsInTheEndWhatABrokenCounterDoesNotExplain) {
    Watched stream("dvb");
    const auto carry = [&](double /*now*/) { stream.section(0x0000, PAT_BYTES); };
    stream.until(10, carry);
    stream.breaks(0x0111, 3, 1);
    stream.until(10.8).until(20, carry);
    EXPECT_THAT(stream.said("pat_interval"), ElementsAre(HasSubstr("begin alarm: no PAT for 0.9 s"), HasSubstr("end")));
    EXPECT_EQ(stream.said("continuity").size(), 2U);
}

TEST(Watch, SaysOnceThatNothingComes) {
    Watched stream("isdbt");
    stream.until(10, [&](double now) { carryAll(stream, now); });
    EXPECT_EQ(stream.result("no_packets"), "the input does not come live");
    stream.silentUntil(25);
    EXPECT_THAT(stream.said("no_packets"), ElementsAre("11.2 begin alarm: no packets for 1.1 s (limit 1 s, proposal)"));
    stream.until(25.3, [&](double now) { carryAll(stream, now); });
    stream.happens(EventKind::Pause, 0x0100, 15);
    stream.happens(EventKind::Loss, 0x0100, 15);
    stream.breaks(0x0111, 3, 10);
    stream.until(60, [&](double now) { carryAll(stream, now); });
    EXPECT_THAT(stream.checks(), ElementsAre("no_packets"));
    EXPECT_THAT(stream.said("no_packets").back(),
                testing::StartsWith("25.1 end alarm: packets came again after 14.9 s"));
    EXPECT_EQ(stream.result("no_packets"), "1 alarms");
    stream.happens(EventKind::Pause, 0x0100, 2);
    EXPECT_EQ(stream.result("pause"), "1 alarms");
}

TEST(Watch, SaysAtOnceThatNothingCameAtAll) {
    Watched stream("isdbt");
    stream.silentUntil(3);
    EXPECT_THAT(stream.checks(), ElementsAre("no_packets"));
}

/// It may come in bursts.
TEST(Watch, MissesNothingInAShortSilence) {
    Watched stream("isdbt");
    stream.until(10, [&](double now) { carryAll(stream, now); });
    stream.silentUntil(10.9);
    stream.until(30, [&](double now) { carryAll(stream, now); });
    EXPECT_THAT(stream.checks(), IsEmpty());
}

TEST(Watch, SaysOnceThatTheStreamIsSlower) {
    Watched stream("isdbt");
    stream.until(300, [&](double now) {
        carryAll(stream, now);
        if (now < 200 && each(200, now)) { // two in a hundred
            stream.happens(EventKind::SlowClock, 0x0100, 0.02, 20);
        }
    });
    EXPECT_THAT(stream.checks(), ElementsAre("slow_clock"));
    ASSERT_EQ(stream.said("slow_clock").size(), 2U);
    EXPECT_THAT(stream.said("slow_clock")[0],
                HasSubstr("alarm: the stream comes slower than its PCRs say: 19.6 s of them in 20 s (proposal)"));
    EXPECT_THAT(stream.said("slow_clock")[1], HasSubstr(", 10 times"));
}

TEST(Watch, StartsAnewWhenTheLostTimeIsCounted) {
    Watched stream("isdbt");
    stream.until(10, [&](double now) { carryAll(stream, now); });
    stream.lose(3);
    stream.until(30, [&](double now) { carryAll(stream, now); });
    EXPECT_THAT(stream.checks(), ElementsAre("loss"));
}

TEST(Watch, RemarksAStreamThatBeginsAgain) {
    Watched stream("always");
    stream.until(1);
    stream.happens(EventKind::Looped, {}, 33);
    stream.happens(EventKind::NewStream);
    stream.until(2);
    EXPECT_THAT(stream.said("looped"),
                ElementsAre("1.1 begin remark: the stream begins again after 33.000 s (proposal)"));
    EXPECT_THAT(stream.said("new_stream"), ElementsAre("1.1 begin remark: new stream from here (proposal)"));
}

TEST(Watch, HasACheckForWhatHappens) {
    Watched stream("isdbt");
    stream.until(0.2);
    stream.happens(EventKind::SyncLost);
    stream.happens(EventKind::BytesSkipped, {}, 17);
    stream.happens(EventKind::Discontinuity, 0x0111, 1);
    stream.happens(EventKind::TransportError, 0x0111);
    stream.happens(EventKind::PcrJump, 0x0100, 0, 10, 7210.5);
    stream.happens(EventKind::PcrFrozen, 0x0100);
    stream.happens(EventKind::Scrambled, 0x0000);
    stream.until(2);
    EXPECT_THAT(stream.checks(), ElementsAre("sync_loss", "sync_byte", "transport_error", "pcr_jump", "pcr_frozen",
                                             "scrambled_table", "pat_interval", "continuity"));
    EXPECT_THAT(stream.said("sync_byte").front(), HasSubstr("17 bytes that are no packets (TR 101 290 1.2)"));
    EXPECT_THAT(stream.said("continuity").front(),
                HasSubstr("wrong continuity_counter on PID 0x0111 (TR 101 290 1.4)"));
    EXPECT_THAT(stream.said("pcr_jump").front(),
                HasSubstr("PCR on PID 0x0100 jumps from 10.000 s to 7210.500 s, which nothing announces"));
}

/// It is told of once, and lasts.
TEST(Watch, APcrThatStandsStillIsOneAlarmUntilItGoesOn) {
    for (const EventKind kind : {EventKind::PcrFrozen, EventKind::PcrCeased}) {
        Watched stream("always");
        stream.until(1);
        stream.happens(kind, 0x0100);
        stream.until(20);
        stream.happens(EventKind::PcrInterval, 0x0100, 19);
        stream.until(30);
        const std::string check = kind == EventKind::PcrFrozen ? "pcr_frozen" : "pcr_ceased";
        ASSERT_EQ(stream.said(check).size(), 2U);
        EXPECT_THAT(stream.said(check)[0], HasSubstr("1.1 begin alarm: "));
        EXPECT_THAT(stream.said(check)[1], HasSubstr("20.0 end alarm: over: "));
    }
}

TEST(Watch, NobodyWaitsForThePcrThatIsAnnouncedNoMore) {
    Watched stream("always");
    stream.section(0x0000, PAT_BYTES);
    stream.section(0x0101, PMT_BYTES);
    stream.until(1);
    stream.happens(EventKind::PcrCeased, 0x0100);
    stream.until(10);
    EXPECT_EQ(stream.said("pcr_ceased").size(), 1U);
    stream.section(0x0101, pmt(0xE6A0, "E200", "1B E111 F000 06 E130 F000", 1));
    stream.until(20);
    EXPECT_EQ(stream.said("pcr_ceased").size(), 2U);
}

/// The packets between two PCRs may come faster than those before.
TEST(Watch, MissesNoPcrByAnEstimate) {
    Watched stream("isdbt");
    stream.until(1, [&](double now) { carryAll(stream, now); });
    stream.until(1.2);
    stream.happens(EventKind::PcrInterval, 0x0100, 0.09);
    stream.until(1.3);
    EXPECT_THAT(stream.said("pcr_interval"), IsEmpty());
    stream.until(2);
    EXPECT_THAT(stream.said("pcr_interval"),
                ElementsAre("1.6 begin alarm: no PCR on PID 0x0100 for 0.3 s (limit 0.1 s, TR 101 290 2.3.a)"));
}

TEST(Watch, SaysHowManySecondsAnHourWas) {
    Watched stream("dvb");
    stream.until(4000, [&](double now) {
        if (now <= 20 || now > 3620) {
            stream.section(0x0000, PAT_BYTES);
        }
    });
    EXPECT_THAT(stream.said("pat_interval").back(), HasSubstr("PAT came again after 3600 s"));
}

TEST(Watch, CountsWhatHappensAgain) {
    Watched stream("dvb");
    stream.until(20, [&](double now) {
        if (now > 5 && now < 7) {
            stream.happens(EventKind::Discontinuity, 0x0111, 1);
        }
    });
    EXPECT_THAT(stream.said("continuity"),
                ElementsAre("5.1 begin alarm: wrong continuity_counter on PID 0x0111 (TR 101 290 1.4)",
                            "6.9 end alarm: over: wrong continuity_counter on PID 0x0111 (TR 101 290 1.4), 19 times"));
}

TEST(Watch, SeesAVersionThatGoesBackAndForth) {
    Watched stream("always");
    stream.until(2, [&](double now) { stream.section(0x0010, ofNetwork(0x40, now < 1 ? 3 : 4)); });
    EXPECT_THAT(stream.checks(), IsEmpty());
    stream.until(4, [&](double now) { stream.section(0x0010, ofNetwork(0x40, now < 3 ? 3 : 4)); });
    EXPECT_THAT(
        stream.said("version_flaps"),
        ElementsAre("3.0 begin alarm: NIT 0x0735 goes back and forth between version 3 and 4 (limit 60 s, proposal)"));
}

TEST(Watch, SeesAChangeWithoutANewVersionWhenItComes) {
    LongHeader header;
    header.extension = 0x0735;
    Watched stream("isdbt");
    stream.until(1, [&](double /*now*/) {
        stream.section(0x0011, longSection(0x42, header, hex("0735 FF E6A0 FC 8000")));
        stream.section(0x0140, longSection(0x3D, header, hex("01")));
    });
    stream.until(10, [&](double /*now*/) {
        stream.section(0x0011, longSection(0x42, header, hex("0735 FF E6A0 FD 8000")));
        stream.section(0x0140, longSection(0x3D, header, hex("02")));
    });
    EXPECT_THAT(stream.said("silent_change"),
                ElementsAre("1.1 begin alarm: SDT 0x0735 changes without a new version (ISO/IEC 13818-1 2.4.4)",
                            "1.1 end alarm: over: SDT 0x0735 changes without a new version (ISO/IEC 13818-1 2.4.4)"));
    header.version = 1;
    stream.until(11, [&](double /*now*/) { stream.section(0x0011, longSection(0x42, header, hex("0735 FF"))); });
    EXPECT_EQ(stream.said("silent_change").size(), 2U);
}

TEST(Watch, SeesThatTheNitAndTheSdtDisagreeAboutTheNetwork) {
    LongHeader header;
    header.extension = 0x0735;
    Watched stream("isdbt");
    stream.until(1, [&](double /*now*/) {
        stream.section(0x0010, longSection(0x40, header, hex("F000 F00C 0736 0001 F000 0735 0735 F000")));
        stream.section(0x0011, longSection(0x42, header, hex("0735 FF")));
    });
    EXPECT_THAT(stream.said("original_network"), IsEmpty());
    stream.until(2, [&](double /*now*/) { stream.section(0x0011, longSection(0x42, header, hex("0734 FF"))); });
    stream.until(10, [&](double /*now*/) { stream.section(0x0011, longSection(0x42, header, hex("0735 FF"))); });
    EXPECT_THAT(
        stream.said("original_network"),
        ElementsAre(
            "1.1 begin warning: the SDT says original network 0x0734, the NIT 0x0735 (proposal)",
            "2.0 end warning: over: the SDT says original network 0x0734, the NIT 0x0735 (proposal), 10 times"));
}

TEST(Watch, HeedsNoNetworkBehindTheEndOfTheNit) {
    LongHeader header;
    header.extension = 0x0735;
    Watched stream("isdbt");
    stream.until(1, [&](double /*now*/) {
        stream.section(0x0010, longSection(0x40, header, hex("F000 F006 0735 0001 FFFF")));
        stream.section(0x0011, longSection(0x42, header, hex("0735 FF")));
        stream.section(0x0011, longSection(0x42, header, hex("")));
    });
    EXPECT_THAT(stream.said("original_network"), IsEmpty());
}

TEST(Watch, SeesATimeThatRunsBack) {
    Watched stream("always");
    stream.until(2, [&](double now) { stream.section(0x0014, tot(now < 1 ? 100 : 95)); });
    EXPECT_THAT(stream.said("time_runs_back"),
                ElementsAre("1.0 begin alarm: the time of the TOT runs back by 5 s (proposal)"));
}

TEST(Watch, SeesTablesWhereTheyDoNotBelong) {
    Watched stream("dvb");
    stream.section(0x0010, ofNetwork(0x42));
    stream.section(0x0011, ofNetwork(0x42));
    stream.section(0x0300, ofNetwork(0x42));
    stream.until(0.1);
    EXPECT_THAT(stream.said("wrong_table_id"), ElementsAre(HasSubstr("table_id 0x42 on PID 0x0010 (TR 101 290 1.3.a")));
}

TEST(Watch, SeesSectionsThatComeTooSoon) {
    Watched stream("dvb");
    stream.until(0.1, [&](double /*now*/) {
        stream.section(0x0010, ofNetwork(0x40));
        stream.section(0x0010, ofNetwork(0x40));
    });
    EXPECT_THAT(stream.said("min_gap"),
                ElementsAre(HasSubstr("NIT 0x0735 came again after 0 s (limit 0.025 s, TR 101")));
}

TEST(Watch, SeesSectionsThatAreDamaged) {
    Watched stream("dvb");
    ByteVector damaged = ofNetwork(0x40);
    damaged.back() ^= 1U;
    stream.section(0x0010, damaged);
    stream.until(0.1);
    EXPECT_THAT(stream.said("crc"),
                ElementsAre("0.0 begin alarm: CRC_32 of NIT on PID 0x0010 is wrong (TR 101 290 2.2)"));
}

TEST(Watch, SeesPidsThatNobodyNames) {
    Watched stream("isdbt");
    stream.until(20, [&](double now) {
        carryAll(stream, now);
        stream.packet(0x0029);
        stream.packet(0x0130);
        if (now > 12) {
            stream.packet(0x0300);
        }
    });
    ASSERT_THAT(stream.checks(), ElementsAre("unreferenced_pid_isdb"));
    EXPECT_THAT(stream.said("unreferenced_pid_isdb").front(),
                HasSubstr("alarm: no table names PID 0x0300 (limit 0.5 s, TR 101 290 3.4.a)"));
}

TEST(Watch, WantsACatWhenPacketsAreScrambled) {
    Watched stream("isdbt");
    stream.until(40, [&](double now) {
        carryAll(stream, now);
        if (now == 1) {
            stream.happens(EventKind::Scrambled, 0x0111);
        }
    });
    EXPECT_THAT(stream.said("cat_interval"),
                ElementsAre(HasSubstr("11.1 begin warning: no CAT for 10.1 s (limit 10 s, proposal)"),
                            HasSubstr("worse alarm: no CAT for 30.1 s")));
}

/// Names all the time other tables, and damages them, on each of the PIDs more than twice.
TEST(Watch, DoesNotGrowWithABrokenStream) {
    Watched stream("isdbt");
    const ByteVector other = ofNetwork(0x74);
    ByteVector damaged = ofNetwork(0x40);
    damaged.back() ^= 1U;
    unsigned number = 0;
    stream.until(20, [&](double /*now*/) {
        for (unsigned each = 0; each < 100; ++each, ++number) {
            stream.section(static_cast<inspect::Pid>(0x100 + number % 0x1E00), other);
            stream.section(static_cast<inspect::Pid>(0x100 + number % 0x1E00), damaged);
        }
    });
    EXPECT_EQ(stream.watch().alarms().size(), 1024U);
}

} // namespace
