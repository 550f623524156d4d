// What callers may do with the objects of a table that lie in its block of memory, and with their own. As all memory is
// counted here, what is lost or freed twice is seen with blocks, too, where nothing else sees it.

#include "OutOfMemory.h"

#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "support/FullSections.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <new>
#include <stdexcept>

using Quor::TNITTable;
using Quor::TParentalRatingDescriptorItem;
using Quor::TPATTable;
using Quor::TPMTTable;
using Quor::TProgramAssociation;
using Quor::TProgramMap;
using Quor::TSDTTable;
using Quor::TServiceDescription;
using Quor::TTransportStreamInfo;

namespace {

template <class Table> std::unique_ptr<Table> parsed(const HeapBytes& bytes) {
    return std::unique_ptr<Table>(Table::parse(bytes.data(), bytes.size(), 1, 1, nullptr, nullptr));
}

/// An entry of its own, on the heap.
template <class Entry> std::unique_ptr<Entry> entry(const HeapBytes& bytes) {
    return std::unique_ptr<Entry>(Entry::parse(bytes.data(), bytes.size(), 1, nullptr, nullptr));
}

ByteVector service(unsigned id, const ByteVector& descriptors) {
    return join({u16(id), hex("FF"), u16(static_cast<unsigned>(descriptors.size()), 0x8000), descriptors});
}

/// All that was there before is there after, and nothing else.
class Blocks : public testing::Test {
protected:
    void SetUp() override {
        networkDescriptors(); // the list of classes is made when it is asked for, and kept
        m_before = allocationsAlive();
    }
    void TearDown() override { EXPECT_EQ(allocationsAlive(), m_before); }

private:
    int m_before = 0;
};

} // namespace

TEST_F(Blocks, HoldObjectsOfCallersAmongTheirOwn) {
    const ByteVector stream = join({hex("0735 0001"), loopOf(networkDescriptors())});
    const ByteVector next = join({hex("0736 0001"), loopOf(networkDescriptors())});
    const ByteVector added = join({hex("0734 0001"), loopOf(networkDescriptors())});
    const HeapBytes bytes(longSection(0x40, {}, join({hex("F000"), loopOf(join({stream, next}))})));
    const HeapBytes addedBytes(added);
    const auto table = parsed<TNITTable>(bytes);
    ASSERT_NE(table, nullptr);
    table->addTransportStreamInfo(entry<TTransportStreamInfo>(addedBytes).release());
    for (QUOR_U16 id = 0x0734; id <= 0x0736; ++id) {
        auto* const info = table->getTransportStreamInfo(id);
        ASSERT_NE(info, nullptr);
        info->getEmergencyInformationDescriptor()->add(new Quor::TEmergencyInformationDescriptorItem);
        info->getEmergencyInformationDescriptor()->add(new Quor::TEmergencyInformationDescriptorItem);
        EXPECT_TRUE(info->getEmergencyInformationDescriptor()->remove(0));
        EXPECT_EQ(info->getEmergencyInformationDescriptor()->size(), 2U);
    }
    EXPECT_TRUE(table->removeTransportStreamInfo(0x0735));
    EXPECT_EQ(table->getTransportStreamLoopSize(), 2U);
}

TEST_F(Blocks, OutliveWhatWasDisplacedInThem) {
    const HeapBytes bytes(longSection(
        0x42, {}, join({hex("0001 FF"), service(1, serviceDescriptors()), service(2, serviceDescriptors())})));
    const HeapBytes addedBytes(service(1, serviceDescriptors()));
    auto table = parsed<TSDTTable>(bytes);
    ASSERT_NE(table, nullptr);
    std::unique_ptr<TServiceDescription> displaced(table->getServiceDescription(1));
    auto* const added = entry<TServiceDescription>(addedBytes).release();
    table->addServiceDescription(added);
    displaced->getNVODReferenceDescriptor()->add(new Quor::TNVODReferenceDescriptorItem);
    displaced.reset();
    EXPECT_EQ(table->getServiceDescription(1), added);
    auto* const neighbour = table->getServiceDescription(2);
    EXPECT_EQ(neighbour->getServiceDescriptor()->getServiceName(), "Um1");
    EXPECT_EQ(neighbour->getNVODReferenceDescriptor()->size(), 1U);

    // What a caller added and displaces again is the caller's.
    displaced.reset(added);
    table->addServiceDescription(entry<TServiceDescription>(addedBytes).release());
    table.reset();
    EXPECT_EQ(displaced->getServiceDescriptor()->getServiceName(), "Um1");
}

TEST_F(Blocks, AreNotNeededByTablesOnTheStack) {
    const HeapBytes bytes(fullPmt());
    const HeapBytes streamBytes(join({hex("1B E111"), loopOf(componentDescriptors())}));
    TPMTTable table(bytes.data(), bytes.size());
    for (int i = 0; i < 9; ++i) {
        table.addProgramMap(entry<TProgramMap>(streamBytes).release());
    }
    EXPECT_TRUE(table.removeProgramMap(4));
    EXPECT_EQ(table.size(), 8U);
    EXPECT_EQ(table.getProgramMap(7)->getComponentDescriptor(0, nullptr)->getText(), "T");
}

TEST_F(Blocks, AreChainedForTheLongestSectionOfServices) {
    constexpr unsigned COUNT = 510; // with a descriptor of one byte
    ByteVector services;
    for (unsigned id = COUNT; id != 0; --id) {
        services = join({services, service(id, descriptor(0xDE, hex("3F")))});
    }
    const HeapBytes bytes(longSection(0x42, {}, join({hex("0001 FF"), services})));
    ASSERT_EQ(bytes.size(), 4095U);
    const auto table = parsed<TSDTTable>(bytes);
    ASSERT_NE(table, nullptr);
    for (QUOR_U16 id = 1; id <= COUNT; id += 2) {
        EXPECT_TRUE(table->removeServiceDescription(id));
    }
    EXPECT_EQ(table->size(), COUNT / 2);
    for (QUOR_U16 id = 2; id <= COUNT; id += 2) {
        ASSERT_NE(table->getServiceDescription(id), nullptr);
        ASSERT_NE(table->getServiceDescription(id)->getContentAvailabilityDescriptor(), nullptr);
    }
}

/// Each displaces the one before, whose memory stays.
TEST_F(Blocks, AreChainedForTheSmallestDescriptors) {
    ByteVector descriptors;
    while (descriptors.size() < 4080) {
        descriptors = join({descriptors, descriptor(0x55, {})});
    }
    const HeapBytes bytes(longSection(0x02, {}, join({hex("E100"), loopOf(descriptors)})));
    ASSERT_EQ(bytes.size(), 4096U);
    const auto table = parsed<TPMTTable>(bytes);
    ASSERT_NE(table, nullptr);
    auto* const ratings = table->getParentalRatingDescriptor();
    ASSERT_NE(ratings, nullptr);
    EXPECT_EQ(ratings->getData(), bytes.data() + bytes.size() - 4 - 2);
    ratings->add(new TParentalRatingDescriptorItem);
    EXPECT_EQ(ratings->size(), 1U);
}

TEST_F(Blocks, AreNotWhereNewTakesMemoryFrom) {
    delete new (std::nothrow) TPATTable(nullptr, 0);
    const std::unique_ptr<TParentalRatingDescriptorItem[]> several(new TParentalRatingDescriptorItem[3]);
    EXPECT_EQ(several[2].getRating(), 0);

    const OutOfMemory limit(0);
    EXPECT_EQ(new (std::nothrow) TPATTable(nullptr, 0), nullptr);
    EXPECT_THROW(delete new TPATTable(nullptr, 0), std::bad_alloc);
}

/// A place within an object stands where a block's objects may stand, too.
TEST_F(Blocks, AreNotWhereACallerPlacesObjects) {
    const OutOfMemory limit(0);
    alignas(TProgramAssociation) std::array<unsigned char, 4 * sizeof(TProgramAssociation)> place{};
    for (std::size_t at = 0; at + sizeof(TProgramAssociation) <= place.size(); at += alignof(TProgramAssociation)) {
        auto* const entry = new (place.data() + at) TProgramAssociation(1, 0x100);
        EXPECT_EQ(entry->getProgramMapPid(), 0x100);
        entry->~TProgramAssociation();
    }
}

TEST_F(Blocks, AreNotWhereAConstructorThrows) {
    struct Refusing : TProgramAssociation {
        Refusing() : TProgramAssociation(1, 0x100) { throw std::runtime_error("refused"); }
    };
    alignas(Refusing) std::array<unsigned char, sizeof(Refusing)> place{};
    EXPECT_THROW(delete new Refusing, std::runtime_error);
    EXPECT_THROW(delete new (std::nothrow) Refusing, std::runtime_error);
    EXPECT_THROW(new (place.data()) Refusing, std::runtime_error);
}
