// The items of tables and descriptors, given any number of bytes and none.

#include "ait/TApplication.h"
#include "ait/TApplicationIdentifier.h"
#include "descriptors/TApplicationDescriptorProfile.h"
#include "descriptors/TApplicationNameDescriptorItem.h"
#include "descriptors/TCompatibilityDescriptor.h"
#include "descriptors/TCompatibilityDescriptorItem.h"
#include "descriptors/TCompatibilityDescriptorSubItem.h"
#include "descriptors/TDIILocationDescriptorItem.h"
#include "descriptors/TDigitalCopyControlDescriptorItem.h"
#include "descriptors/TDownloadContentDescriptorItem.h"
#include "descriptors/TEmergencyInformationDescriptorItem.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptorItem.h"
#include "descriptors/TLocalTimeOffsetDescriptorItem.h"
#include "descriptors/TMosaicDescriptorCell.h"
#include "descriptors/TNVODReferenceDescriptorItem.h"
#include "descriptors/TParentalRatingDescriptorItem.h"
#include "descriptors/TPrefetchDescriptorItem.h"
#include "descriptors/TServiceListDescriptorItem.h"
#include "descriptors/TTSInformationDescriptorItem.h"
#include "hostile/Tables.h"
#include "nit/TTransportStreamInfo.h"
#include "pmt/TProgramMap.h"
#include "sdt/TServiceDescription.h"
#include "sdtt/TDownloadContent.h"
#include "sdtt/TScheduleInfo.h"

#include <gmock/gmock.h>

using Quor::TISDBTTable;

namespace {

/// What a caller sees of an item's parse.
struct Verdict {
    bool taken;
    QUOR_U16 error;
    QUOR_U32 length;
    std::size_t lines;
};

struct ItemClass {
    std::string name;
    QUOR_U32 minimum; ///< fewest bytes of an item
    Verdict (*parse)(QUOR_U8* data, QUOR_U32 length);
};

void PrintTo(const ItemClass& item, std::ostream* out) {
    *out << item.name;
}

template <class Parse> Verdict judge(Parse parse) {
    Verdict verdict{false, PRESET_ERROR, PRESET_LENGTH, 0};
    const LogCapture log;
    verdict.taken =
        std::unique_ptr<typename std::remove_pointer<decltype(parse(verdict))>::type>(parse(verdict)) != nullptr;
    verdict.lines = log.records().size();
    return verdict;
}

template <class Item> ItemClass item(const std::string& name, QUOR_U32 minimum) {
    return {name, minimum, [](QUOR_U8* data, QUOR_U32 length) {
                return judge(
                    [=](Verdict& verdict) { return Item::parse(data, length, &verdict.length, &verdict.error); });
            }};
}

/// An entry of a table, which has one more argument.
template <class Item> ItemClass entry(const std::string& name, QUOR_U32 minimum) {
    return {name, minimum, [](QUOR_U8* data, QUOR_U32 length) {
                return judge(
                    [=](Verdict& verdict) { return Item::parse(data, length, 1, &verdict.length, &verdict.error); });
            }};
}

std::vector<ItemClass> itemClasses() {
    return {
        item<Quor::TApplicationDescriptorProfile>("ApplicationProfile", 5),
        item<Quor::TApplicationNameDescriptorItem>("ApplicationName", 4),
        item<Quor::TCompatibilityDescriptor>("Compatibility", 4),
        item<Quor::TCompatibilityDescriptorItem>("CompatibilityItem", 11),
        item<Quor::TCompatibilityDescriptorSubItem>("CompatibilitySubItem", 2),
        item<Quor::TDIILocationDescriptorItem>("DIILocation", 4),
        item<Quor::TDigitalCopyControlDescriptorItem>("DigitalCopyControl", 1),
        item<Quor::TDownloadContentDescriptorItem>("DownloadModule", 7),
        item<Quor::TEmergencyInformationDescriptorItem>("EmergencyInformation", 4),
        item<Quor::TExternalApplicationAuthorizationDescriptorItem>("ExternalAuthorization", 7),
        item<Quor::TLocalTimeOffsetDescriptorItem>("LocalTimeOffset", 13),
        item<Quor::TMosaicDescriptorCell>("MosaicCell", 4),
        item<Quor::TNVODReferenceDescriptorItem>("NVODReference", 6),
        item<Quor::TParentalRatingDescriptorItem>("ParentalRating", 4),
        item<Quor::TPrefetchDescriptorItem>("Prefetch", 2),
        item<Quor::TScheduleInfo>("Schedule", 8),
        item<Quor::TServiceListDescriptorItem>("ServiceList", 2),
        item<Quor::TTSInformationDescriptorItem>("TransmissionType", 2),
        entry<Quor::TApplicationIdentifier>("ApplicationIdentifier", 6),
        entry<Quor::TApplication>("Application", 9),
        entry<Quor::TDownloadContent>("DownloadContent", 8),
        entry<Quor::TProgramMap>("ProgramMap", 5),
        entry<Quor::TServiceDescription>("ServiceDescription", 5),
        entry<Quor::TTransportStreamInfo>("TransportStream", 6),
    };
}

class Items : public testing::TestWithParam<ItemClass> {
protected:
    static void expectRefused(const Verdict& verdict) {
        EXPECT_FALSE(verdict.taken);
        EXPECT_THAT(verdict.error,
                    testing::AnyOf(TISDBTTable::ERROR_INVALID_DATA, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                   TISDBTTable::ERROR_INVALID_DESCRIPTOR_TAG,
                                   TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, TISDBTTable::ERROR_INVALID_STRING,
                                   TISDBTTable::ERROR_INVALID_ITEM));
        EXPECT_EQ(verdict.length, PRESET_LENGTH);
        EXPECT_GT(verdict.lines, 0U);
    }

    /// TApplication trusts its caller for the nine fixed bytes once there are six.
    static bool mayNotBeGiven(QUOR_U32 size) { return GetParam().name == "Application" && size >= 6 && size < 9; }
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Each, Items, testing::ValuesIn(itemClasses()), caseName<ItemClass>);

TEST_P(Items, ShorterThanTheirFields) {
    for (QUOR_U32 size = 0; size < GetParam().minimum; ++size) {
        for (const QUOR_U8 value : hex("00 01 7F 80 FF")) {
            if (!mayNotBeGiven(size)) {
                SCOPED_TRACE(std::to_string(size) + " bytes of " + std::to_string(value));
                const HeapBytes bytes(fill(size, value));
                expectRefused(GetParam().parse(bytes.data(), bytes.size()));
            }
        }
    }
}

TEST_P(Items, OfAnySize) {
    for (QUOR_U32 size = GetParam().minimum; size < 300; ++size) {
        for (const ByteVector& wire : {fill(size, 0x00), fill(size, 0x01), fill(size, 0x7F), fill(size, 0x80),
                                       fill(size, 0xFF), counting(size)}) {
            SCOPED_TRACE(std::to_string(size) + " bytes, the last " + std::to_string(wire.back()));
            const HeapBytes bytes(wire);
            const Verdict verdict = GetParam().parse(bytes.data(), bytes.size());
            if (verdict.taken) {
                EXPECT_EQ(verdict.error, TISDBTTable::ERROR_OK);
                EXPECT_LE(verdict.length, size);
            } else {
                expectRefused(verdict);
            }
        }
    }
}

TEST_P(Items, OfNoDataWhateverTheirLength) {
    for (const QUOR_U32 size : {0U, 1U}) {
        SCOPED_TRACE(size);
        expectRefused(GetParam().parse(nullptr, size));
    }
}
