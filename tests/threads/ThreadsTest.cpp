#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "descriptors/TISDBTDescriptor.h"
#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "support/FullSections.h"
#include "tot/TTOTTable.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr unsigned ROUNDS = 200;

/// Parses a section and reads what came of it, again and again. @return how often it was taken.
template <class Table> unsigned takeAgainAndAgain(const ByteVector& wire) {
    unsigned taken = 0;
    for (unsigned round = 0; round < ROUNDS; ++round) {
        const HeapBytes bytes(wire);
        QUOR_U16 error = 0xFFFF;
        const std::unique_ptr<Table> table(Table::parse(bytes.data(), bytes.size(), 1, 1, &error, nullptr));
        if (table == nullptr || error != Quor::TISDBTTable::ERROR_OK) {
            continue;
        }
        const std::unique_ptr<std::list<QUOR_U8>> tags(table->getDescriptorTags());
        bool complete = true;
        for (const QUOR_U8 tag : *tags) {
            complete = complete && table->getDescriptor(tag)->getDescriptorTag() == tag;
        }
        taken += complete ? 1 : 0;
    }
    return taken;
}

/// The same with the last byte of the section missing: each round logs a line. @return how often it was refused.
template <class Table> unsigned refuseAgainAndAgain(ByteVector wire) {
    wire.pop_back();
    unsigned refused = 0;
    for (unsigned round = 0; round < ROUNDS; ++round) {
        const HeapBytes bytes(wire);
        QUOR_U16 error = Quor::TISDBTTable::ERROR_OK;
        const std::unique_ptr<Table> table(Table::parse(bytes.data(), bytes.size(), 1, 1, &error, nullptr));
        refused += table == nullptr && error != Quor::TISDBTTable::ERROR_OK ? 1 : 0;
    }
    return refused;
}

/// Lets two threads for each table work at once, one on good sections and one on bad ones.
class Crowd {
public:
    template <class Table> void join(const ByteVector& wire) {
        m_threads.emplace_back([this, wire] { m_taken += takeAgainAndAgain<Table>(wire); });
        m_threads.emplace_back([this, wire] { m_refused += refuseAgainAndAgain<Table>(wire); });
    }

    void finish() {
        for (std::thread& each : m_threads) {
            each.join();
        }
    }

    unsigned taken() const { return m_taken; }
    unsigned refused() const { return m_refused; }

private:
    std::atomic<unsigned> m_taken{0};
    std::atomic<unsigned> m_refused{0};
    std::vector<std::thread> m_threads;
};

} // namespace

/// Distinct tables may live in distinct threads, whatever the others do; the log is common to all.
TEST(Threads, ParseReadAndDestroyDistinctTablesAtOnce) {
    setenv("QUOR_LOG_LEVEL", "99", 1);
    testing::internal::CaptureStderr();
    Crowd crowd;
    for (int pairs = 0; pairs < 2; ++pairs) {
        crowd.join<Quor::TPATTable>(fullPat());
        crowd.join<Quor::TPMTTable>(fullPmt());
        crowd.join<Quor::TTOTTable>(fullTot());
        crowd.join<Quor::TNITTable>(fullNit());
        crowd.join<Quor::TSDTTable>(fullSdt());
        crowd.join<Quor::TAITTable>(fullAit());
        crowd.join<Quor::TSDTTTable>(fullSdtt());
        crowd.join<Quor::TDSMCCSectionTable>(fullDsmccSection());
    }
    crowd.finish();
    EXPECT_EQ(crowd.taken(), 2 * 8 * ROUNDS);
    EXPECT_EQ(crowd.refused(), 2 * 8 * ROUNDS);
    unsigned lines = 0;
    std::istringstream log(testing::internal::GetCapturedStderr());
    for (std::string line; std::getline(log, line); ++lines) {
        EXPECT_EQ(line.rfind("ISDBTU", 0), 0U) << line; // some spell it "ISDBTUils"
    }
    EXPECT_GE(lines, crowd.refused());
}
