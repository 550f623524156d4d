#include "json/RangeMerger.h"

#include "Broadcast.h"
#include "Inspector.h"
#include "Views.h"
#include "inputs/MemoryInput.h"
#include "support/RecordedFolder.h"
#include "tool/BroadcastStream.h"
#include "tool/Streams.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <random>
#include <sstream>

namespace {

using inspect::MergeError;
using inspect::Range;
using inspect::RangeMerger;
using inspect::View;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

#ifdef QUOR_ISDBT_SANITIZE
constexpr bool IS_CHECKED = true;
#else
constexpr bool IS_CHECKED = sizeof EMULATOR > 1;
#endif
constexpr std::size_t SPARSENESS = IS_CHECKED ? 25 : 1; // each run takes many times as long

/// What a run says.
struct Told {
    std::string lines;
    std::string error; ///< why the input could not be read to its end
};

const View& viewNamed(const std::string& name) {
    const std::vector<View>& views = inspect::views();
    return *std::find_if(views.begin(), views.end(), [&name](const View& each) { return each.name == name; });
}

/// Runs the rooms as the program does.
Told tell(const ByteVector& stream, const View& view, const Range& range) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
    inspect::Output output(fileno(file.get()));
    const auto renderer = view.json(output);
    static const inspect::Profile LIMITS = inspect::Profile::named("isdbt");
    inspect::Interest interest;
    interest.limits = LIMITS;
    interest.carousels = view.ofCarousels;
    const inspect::Conventions conventions{inspect::Charset(inspect::Charset::AUTO), {}};
    inspect::Inspector inspector(*renderer, interest, conventions);
    inspect::MemoryInput input("stream", stream);
    Told told;
    try {
        if (range.isPart()) {
            inspector.setRange(range);
        }
        inspector.run(input);
    } catch (const inspect::InputError& error) {
        told.error = error.what();
    }
    std::rewind(file.get());
    std::array<char, 65536> buffer{};
    while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file.get())) {
        told.lines.append(buffer.data(), count);
    }
    return told;
}

std::string merged(const std::vector<std::string>& ranges) {
    std::string lines;
    RangeMerger merger([&lines](const std::string& line) { lines += line; });
    for (const std::string& range : ranges) {
        std::istringstream stream(range);
        for (std::string line; std::getline(stream, line);) {
            merger.take(line);
        }
    }
    merger.finish();
    return lines;
}

/// The first line that differs, for people.
std::string difference(const std::string& one, const std::string& other) {
    std::istringstream left(one);
    std::istringstream right(other);
    std::string is;
    std::string was;
    while (std::getline(left, is) && std::getline(right, was) && is == was) {
    }
    return "is  " + is + "\nwas " + was;
}

template <class Bound>
void expectToMerge(const ByteVector& stream, const View& view, const Told& whole, const std::vector<Bound>& cuts) {
    std::vector<std::string> ranges;
    std::string error;
    for (std::size_t number = 0; number <= cuts.size(); ++number) {
        Range range;
        if (number != 0) {
            range.from = cuts[number - 1];
        }
        if (number != cuts.size()) {
            range.to = cuts[number];
        }
        Told told = tell(stream, view, range);
        ranges.push_back(std::move(told.lines));
        error = told.error;
    }
    EXPECT_EQ(error, whole.error);
    try {
        const std::string lines = merged(ranges);
        EXPECT_TRUE(lines == whole.lines) << view.name << " cut at " << testing::PrintToString(cuts) << "\n"
                                          << difference(lines, whole.lines);
    } catch (const MergeError& mistake) {
        EXPECT_EQ(whole.lines, "") << view.name << " cut at " << testing::PrintToString(cuts) << ": " << mistake.what();
    }
}

/// Cuts at some bytes, two to seven ranges.
std::vector<std::uint64_t> someCuts(std::mt19937& random, std::size_t size) {
    std::vector<std::uint64_t> cuts(1 + random() % 6);
    std::generate(cuts.begin(), cuts.end(), [&] { return random() % (size + 1); });
    std::sort(cuts.begin(), cuts.end());
    return cuts;
}

void expectSomeToMerge(const ByteVector& stream, const std::vector<std::string>& views, std::size_t times,
                       unsigned seed = 1) {
    std::mt19937 random(seed); // the same cuts each time
    for (const std::string& name : views) {
        const View& view = viewNamed(name);
        const Told whole = tell(stream, view, {});
        for (std::size_t time = 0; time < times; ++time) {
            expectToMerge(stream, view, whole, someCuts(random, stream.size()));
        }
    }
}

std::vector<std::string> allViews() {
    std::vector<std::string> names;
    for (const View& view : inspect::views()) {
        names.push_back(view.name);
    }
    return names;
}

ByteVector bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return ByteVector(std::istreambuf_iterator<char>(file), {});
}

/// Tables, clocks, lost packets, a section over several packets, and what is no packet.
ByteVector eventful() {
    constexpr std::uint64_t TENTH = 2700000;
    ByteVector stream;
    const auto add = [&stream](const ByteVector& bytes) { stream.insert(stream.end(), bytes.begin(), bytes.end()); };
    StreamBuilder builder;
    builder.clock(0x200, 0).section(PAT_PID, pat("E6A0 E101")).null(3).clock(0x200, TENTH);
    builder.section(PAT_PID, pat("E6A0 E101")).null(3).clock(0x200, 2 * TENTH).lose(PAT_PID, 2);
    builder.section(PAT_PID, pat("E6A0 E101 E6B8 E102", 1)).null(2);
    builder.sections(0x0011, {sdt("E6A0 FD 8000")}).clock(0x200, 3 * TENTH).null(2);
    builder.section(PAT_PID, pat("E6A0 E101 E6B8 E102", 1)).patch(20, 0x55).null(2).clock(0x200, 15 * TENTH).null(4);
    add(builder.bytes());
    add(ByteVector(77, 0x00));
    StreamBuilder rest;
    rest.clock(0x200, 16 * TENTH).section(PAT_PID, pat("E6A0 E101")).null(4).clock(0x200, 17 * TENTH).null(3);
    rest.section(PAT_PID, pat("E6A0 E101")).again().again().clock(0x200, 18 * TENTH).null(2);
    add(rest.bytes());
    return stream;
}

/// All bytes of the first packet and of those around the bytes that are none, and some of each other packet.
bool isOdd(std::uint64_t byte, const ByteVector& stream) {
    const auto gap = std::search_n(stream.begin(), stream.end(), 77, 0x00) - stream.begin();
    const std::uint64_t fromGap = byte - (static_cast<std::uint64_t>(gap) - PACKET_SIZE);
    const std::uint64_t inPacket = byte % PACKET_SIZE;
    return byte < PACKET_SIZE || fromGap < 3 * PACKET_SIZE || inPacket < 2 || inPacket + 1 == PACKET_SIZE;
}

TEST(Ranges, OfAnyByteOfAnEventfulStreamMergeToTheWhole) {
    const ByteVector stream = eventful();
    for (const std::string name : {"stats", "diff"}) {
        const View& view = viewNamed(name);
        const Told whole = tell(stream, view, {});
        EXPECT_THAT(whole.lines, HasSubstr(R"("type":"alarm")"));
        const std::uint64_t step = name == "stats" ? SPARSENESS : 47;
        for (std::uint64_t cut = 0; cut <= stream.size() + 1; cut += step) {
            if (isOdd(cut, stream)) {
                expectToMerge(stream, view, whole, std::vector<std::uint64_t>{cut});
            }
        }
    }
}

TEST(Ranges, OfAnEventfulStreamMergeInAllViews) {
    expectSomeToMerge(eventful(), allViews(), 40 / SPARSENESS + 1);
}

TEST(Ranges, OfTheSampleMergeInAllViews) {
    expectSomeToMerge(sampleStream(), allViews(), 12 / SPARSENESS + 1);
}

TEST(Ranges, OfACutOffStreamMerge) {
    ByteVector stream = sampleStream();
    stream.resize(stream.size() - 50);
    const Told whole = tell(stream, viewNamed("stats"), {});
    EXPECT_EQ(whole.error, "stream: cut off in its last packet (138 of 188 bytes)");
    for (const std::uint64_t cut : {stream.size() - 200, stream.size() - 139, stream.size() - 100, stream.size()}) {
        expectToMerge(stream, viewNamed("stats"), whole, std::vector<std::uint64_t>{cut});
    }
}

TEST(Ranges, OfOtherSpacingsMerge) {
    expectSomeToMerge(withTimeStamps(sampleStream(), hex("01020304")), {"stats", "tables"}, 3);
    expectSomeToMerge(withParity(sampleStream()), {"stats", "tables"}, 3);
}

TEST(Ranges, OfABroadcastTransportStreamMerge) {
    expectSomeToMerge(BroadcastStream(3).bytes(), {"stats", "tree"}, 4);
}

TEST(Ranges, OfAStreamWithoutPacketsAreRefusedAlike) {
    const ByteVector nothing(3000000, 0x11);
    const Told whole = tell(nothing, viewNamed("stats"), {});
    EXPECT_EQ(whole.error, "stream: not a transport stream: no packets of 188, 192 or 204 bytes found");
    expectToMerge(nothing, viewNamed("stats"), whole, std::vector<std::uint64_t>{100, 2000000});
}

TEST(Ranges, OfTimeMerge) {
    for (const std::string name : {"stats", "tables", "diff", "applications"}) {
        const View& view = viewNamed(name);
        const Told whole = tell(sampleStream(), view, {});
        expectToMerge(sampleStream(), view, whole, std::vector<double>{0.5, 1.0000001, 1.7});
        expectToMerge(sampleStream(), view, whole, std::vector<double>{0, 3, 4});
    }
}

/// The parts of a stream with a fault, begun in one and ended in another range.
TEST(Ranges, OfEachFaultMerge) {
    constexpr sample::Ticks LENGTH = 5 * sample::SECOND;
    const std::vector<std::string> views = allViews();
    unsigned number = 0;
    for (const sample::Fault& fault : sample::faults()) {
        if (number++ % SPARSENESS == 0) {
            SCOPED_TRACE(fault.name);
            const sample::FaultAt during = sample::faultAt(fault.name, sample::SECOND, 3 * sample::SECOND);
            const ByteVector stream = sample::broadcast(LENGTH, {during});
            expectSomeToMerge(stream, {"stats"}, 1, number);
            if (number % 3 == 0) {
                expectSomeToMerge(stream, {views[number / 3 % views.size()]}, 1, number);
            }
        }
    }
    EXPECT_GT(number, 50U);
}

TEST(Ranges, OfRecordingsMerge) {
    SKIP_WITHOUT_RECORDINGS();
    constexpr std::uintmax_t LARGEST = 4000000;
    const std::vector<std::string> views = allViews();
    std::vector<std::filesystem::path> paths;
    for (const char* const folder : {"/streams", "/carousel", "/bts"}) {
        for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA + std::string(folder))) {
            const std::string kind = entry.path().extension();
            if ((kind == ".ts" || kind == ".bts") && entry.file_size() < LARGEST) {
                paths.push_back(entry.path());
            }
        }
    }
    std::sort(paths.begin(), paths.end());
    for (std::size_t number = 0; number < paths.size(); number += SPARSENESS) {
        SCOPED_TRACE(paths[number]);
        const auto seed = static_cast<unsigned>(number);
        expectSomeToMerge(bytesOf(paths[number]), {"stats", views[number % views.size()]}, 2, seed);
    }
    EXPECT_GT(paths.size(), 10U);
}

std::vector<std::string> linesOf(const std::string& text, const std::string& what) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (line.find(what) != std::string::npos) {
            lines.push_back(line);
        }
    }
    return lines;
}

/// The 240th packet begins at byte 44932.
TEST(Ranges, ARangeSaysWhichPacketsItHas) {
    const View& stats = viewNamed("stats");
    Range first;
    first.to = std::uint64_t{44933};
    const std::string told = tell(sampleStream(), stats, first).lines;
    EXPECT_THAT(
        linesOf(told, R"("type":"range")"),
        ElementsAre(StartsWith(R"({"type":"range","schema_version":1,"source":"stream","packets_before":0,)"
                               R"("packets_until":240,"ended":false,"fault_found":null,"duration_until":1.0)")));
    EXPECT_THAT(linesOf(told, R"("type":"stream")"), ElementsAre(HasSubstr(R"("packets":240,"packet_spacing":188)")));
    EXPECT_THAT(linesOf(told, R"("table":"PAT")"), ElementsAre(HasSubstr(R"("sections":10,"distinct":1,)")));
    EXPECT_TRUE(linesOf(told, R"("type":"fault")").empty());
    EXPECT_TRUE(linesOf(told, R"("type":"check")").empty());

    Range second;
    second.from = std::uint64_t{44933};
    const std::string rest = tell(sampleStream(), stats, second).lines;
    EXPECT_THAT(linesOf(rest, R"("type":"range")"),
                ElementsAre(HasSubstr(R"("packets_before":240,"packets_until":480,"ended":true,"fault_found":false)")));
    EXPECT_THAT(linesOf(rest, R"("type":"stream")"), ElementsAre(HasSubstr(R"("packets":240,"packet_spacing":188)")));
    EXPECT_THAT(linesOf(rest, R"("table":"PAT")"),
                ElementsAre(testing::AllOf(HasSubstr(R"("sections":10,"distinct":0,)"),
                                           HasSubstr(R"("intervals":{"count":10,"sum":1.0,)"))));
    EXPECT_FALSE(linesOf(rest, R"("type":"check")").empty());
}

/// A section that lies in two ranges is of that in which it ends; nothing of it is in the other.
TEST(Ranges, ASectionIsOfTheRangeInWhichItEnds) {
    const ByteVector stream = StreamBuilder().sections(0x0011, {sdt("E6A0 FD 8000")}).null(6).bytes();
    const View& tables = viewNamed("tables");
    Range first;
    first.to = std::uint64_t{1};
    Range second;
    second.from = std::uint64_t{1};
    EXPECT_EQ(linesOf(tell(stream, tables, first).lines, R"("type":"section")").size(), 1U);
    EXPECT_EQ(linesOf(tell(stream, tables, second).lines, R"("type":"section")").size(), 0U);
}

std::string whyNot(const std::vector<std::string>& ranges) {
    try {
        merged(ranges);
        return "";
    } catch (const MergeError& error) {
        return error.what();
    }
}

TEST(RangeMerger, WantsAllRangesInTheirOrder) {
    const View& stats = viewNamed("stats");
    Range first;
    first.to = std::uint64_t{10000};
    Range second;
    second.from = std::uint64_t{20000};
    const std::string begin = tell(sampleStream(), stats, first).lines;
    const std::string end = tell(sampleStream(), stats, second).lines;
    EXPECT_EQ(whyNot({begin, end}),
              "ends a range that begins behind packet 107, and the one before it ended with packet 54");
    EXPECT_EQ(whyNot({end}), "ends a range that begins behind packet 107, and the one before it ended with packet 0");
    EXPECT_EQ(whyNot({begin}), "the range that ends with the input is missing");
    EXPECT_EQ(whyNot({}), "the range that ends with the input is missing");
}

TEST(RangeMerger, SaysWhatIsNoLine) {
    EXPECT_EQ(whyNot({"nonsense\n"}), "is no line of a range");
    EXPECT_EQ(whyNot({"[]\n"}), "is no object");
    EXPECT_EQ(whyNot({"{}\n"}), "is no line of a range");
    EXPECT_EQ(whyNot({R"({"type":"range","packets_before":"0"})"}), "is no line of a range");
    EXPECT_EQ(whyNot({"{\"type\":" + std::string(500, '[') + std::string(500, ']') + "}"}), "nests too deep");
}

} // namespace
