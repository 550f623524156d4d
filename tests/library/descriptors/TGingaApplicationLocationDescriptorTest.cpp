#include "descriptors/TGingaApplicationLocationDescriptor.h"

#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"
#include "support/Fields.h"
#include "support/Outcome.h"
#include "support/Survival.h"

#include <type_traits>

using Quor::TGingaApplicationLocationDescriptor;
using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;

static_assert(std::is_abstract<TGingaApplicationLocationDescriptor>::value, "there are only the Java and the NCL form");
static_assert(std::is_base_of<TISDBTDescriptor, TGingaApplicationLocationDescriptor>::value, "a descriptor");

EXPECT_GETTER(std::string, TGingaApplicationLocationDescriptor, getBaseDirectory);
EXPECT_GETTER(std::string, TGingaApplicationLocationDescriptor, getClasspathExtension);
EXPECT_GETTER(std::string, TGingaApplicationLocationDescriptor, getInitialClass);

namespace {

/// base_directory_length, base directory, classpath_extension_length, classpath extension, initial class
ByteVector location(const std::string& base, const std::string& classpath, const std::string& initial) {
    return join({{static_cast<QUOR_U8>(base.size())},
                 text(base),
                 {static_cast<QUOR_U8>(classpath.size())},
                 text(classpath),
                 text(initial)});
}

void expectStrings(const TGingaApplicationLocationDescriptor& descriptor, const std::string& base,
                   const std::string& classpath, const std::string& initial) {
    EXPECT_EQ(descriptor.getBaseDirectory(), base);
    EXPECT_EQ(descriptor.getClasspathExtension(), classpath);
    EXPECT_EQ(descriptor.getInitialClass(), initial);
}

Lines longerIsRequired(const char* numbers) {
    return {"ISDBTUtils: TGingaApplicationLocationDescriptor::parse: Longer data length is required: " +
            std::string(numbers) + ". Aborting!"};
}

/// What both forms do alike.
template <class Form> class TGingaApplicationLocationDescriptorForms : public testing::Test {
protected:
    static ByteVector wire(const ByteVector& body) { return descriptor(Form::DESCRIPTOR_TAG, body); }

    /// A descriptor that is longer than descriptor_length, 4, can tell.
    static ByteVector overlong(const ByteVector& body) { return join({{Form::DESCRIPTOR_TAG, 0x04}, body}); }
};

using Forms =
    testing::Types<Quor::TGingaJavaApplicationLocationDescriptor, Quor::TGingaNCLApplicationLocationDescriptor>;

} // namespace

TYPED_TEST_SUITE(TGingaApplicationLocationDescriptorForms, Forms, );

TEST(TGingaApplicationLocationDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U32, TGingaApplicationLocationDescriptor::MINIMUM_DESCRIPTOR_LENGTH, 2);
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, ShowsItsStrings) {
    // The length told counts the classpath extension twice and the initial class not at all.
    const auto parsed = expectDescriptor<TypeParam>(this->wire(location("ba", "cla", "init")), 8);
    expectStrings(*parsed.object, "ba", "cla", "init");
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, WithoutInitialClassTheClasspathExtensionCountsOnce) {
    const auto parsed = expectDescriptor<TypeParam>(this->wire(location("ba", "cla", "")), 5);
    expectStrings(*parsed.object, "ba", "cla", "");
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, StringsMayBeEmpty) {
    expectStrings(*expectDescriptor<TypeParam>(this->wire(location("base", "", "")), 4).object, "base", "", "");
    expectStrings(*expectDescriptor<TypeParam>(this->wire(location("", "path", "")), 4).object, "", "path", "");
    expectStrings(*expectDescriptor<TypeParam>(this->wire(location("", "", "init")), 0).object, "", "", "init");
    expectStrings(*expectDescriptor<TypeParam>(this->wire(location("base", "", "init")), 4).object, "base", "", "init");
    expectStrings(*expectDescriptor<TypeParam>(this->wire(location("", "path", "init")), 8).object, "", "path", "init");
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, AnEmptyLocationIsDecodedByItself) {
    TypeParam form(nullptr, 0);
    const HeapBytes body(hex("00 00"));
    QUOR_U32 length = PRESET_LENGTH;
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    EXPECT_TRUE(form.parseData(body.data(), body.size(), &length, &error));
    EXPECT_EQ(length, 0U);
    EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    expectStrings(form, "", "", "");
    EXPECT_TRUE(form.parseData(body.data(), body.size(), nullptr, nullptr));
    EXPECT_EQ(log.lines(), Lines{});
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, CharactersAreKeptAsReceived) {
    const auto parsed = expectDescriptor<TypeParam>(this->wire(hex("02 00E7  02 E700  00FF")), 6);
    expectStrings(*parsed.object, std::string("\0\xE7", 2), std::string("\xE7\0", 2), std::string("\0\xFF", 2));
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, ABaseDirectoryLongerThanTheBodyFails) {
    expectFailure<TypeParam>(this->wire(hex("04 616263")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             longerIsRequired("3 < 4"));
    expectFailure<TypeParam>(this->wire(hex("FF 61626364")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             longerIsRequired("4 < 255"));
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, ABaseDirectoryThatFillsTheBodyFails) {
    expectFailure<TypeParam>(this->wire(hex("03 616263")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             longerIsRequired("0 < 1"));
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, AClasspathExtensionLongerThanTheRestFails) {
    expectFailure<TypeParam>(this->wire(hex("01 61  03 6263")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             longerIsRequired("2 < 3"));
    expectFailure<TypeParam>(this->wire(hex("02 6162  01")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             longerIsRequired("0 < 1"));
    expectFailure<TypeParam>(this->wire(hex("00  FF 6162")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             longerIsRequired("2 < 255"));
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, StringsRunToTheEndOfTheCallersLength) {
    const std::string longest(255, 's');
    const auto parsed = expectDescriptor<TypeParam>(this->overlong(location(longest, longest, longest)), 765);
    expectStrings(*parsed.object, longest, longest, longest);
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, AnInitialClassLongerThanEightBitsCountFails) {
    for (const std::size_t size : {256U, 257U, 511U, 512U, 1000U}) {
        expectFailure<TypeParam>(
            this->overlong(location("b", "c", std::string(size, 'i'))), TISDBTTable::ERROR_INVALID_STRING,
            {"ISDBTUtils: TGingaApplicationLocationDescriptor:: parse: ERROR: parsing Initial Class. Aborting!"});
    }
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, ABodyByItselfMustHoldBothLengths) {
    TypeParam form(nullptr, 0);
    for (const unsigned size : {0U, 1U}) {
        const HeapBytes body(fill(size, 0x00));
        QUOR_U32 length = PRESET_LENGTH;
        QUOR_U16 error = PRESET_ERROR;
        const LogCapture log;
        EXPECT_FALSE(form.parseData(body.data(), body.size(), &length, &error));
        EXPECT_EQ(length, PRESET_LENGTH);
        EXPECT_EQ(error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(log.lines(), Lines{"ISDBTUtils: TGingaApplicationLocationDescriptor::parse: Item length not valid: " +
                                     std::to_string(size) + ". Aborting!"});
        EXPECT_FALSE(form.parseData(body.data(), body.size(), nullptr, nullptr));
    }
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, IsMadeOfThreeStrings) {
    const TypeParam form("base", "classpath", "initial");
    EXPECT_EQ(form.getDescriptorTag(), TypeParam::DESCRIPTOR_TAG);
    EXPECT_EQ(form.getData(), nullptr);
    EXPECT_EQ(form.getDataLength(), 0U);
    expectStrings(form, "base", "classpath", "initial");
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, ACopyNeedsNeitherSourceNorBytes) {
    std::unique_ptr<TypeParam> copy;
    {
        const auto parsed = parseBytes<TypeParam>(
            this->wire(location("/a/base/directory", "/a/classpath/extension", "an.initial.Class")));
        ASSERT_NE(parsed.object, nullptr);
        copy = std::make_unique<TypeParam>(parsed.object.get());
    }
    EXPECT_EQ(copy->getDescriptorTag(), TypeParam::DESCRIPTOR_TAG);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    expectStrings(*copy, "/a/base/directory", "/a/classpath/extension", "an.initial.Class");
}

TYPED_TEST(TGingaApplicationLocationDescriptorForms, DamageIsSurvived) {
    const ByteVector good = this->wire(location("base", "path", "Main"));
    expectEveryPrefixSurvives<TypeParam>(good);
    expectEveryByteChangeSurvives<TypeParam>(good);
}
