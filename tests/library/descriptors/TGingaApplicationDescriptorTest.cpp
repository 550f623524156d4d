#include "descriptors/TGingaApplicationDescriptor.h"

#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "support/Outcome.h"
#include "support/Survival.h"

#include <type_traits>

using Quor::TGingaApplicationDescriptor;
using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;

static_assert(std::is_abstract<TGingaApplicationDescriptor>::value, "there are only the Java and the NCL form");
static_assert(std::is_base_of<TISDBTDescriptor, TGingaApplicationDescriptor>::value, "a descriptor");

namespace {

const char* const PARAMETER_LINE =
    "ISDBTUtils: TGingaApplicationDescriptor:: parse: ERROR: parsing Parameter. Aborting!";

/// parameter_length and parameter
ByteVector parameter(const std::string& characters) {
    return join({{static_cast<QUOR_U8>(characters.size())}, text(characters)});
}

std::vector<std::string> parameters(const TGingaApplicationDescriptor& descriptor) {
    std::vector<std::string> all;
    for (QUOR_U32 index = 0; index < descriptor.size(); ++index) {
        all.push_back(descriptor.get(index));
    }
    return all;
}

/// What both forms do alike.
template <class Form> class TGingaApplicationDescriptorForms : public testing::Test {
protected:
    static ByteVector wire(const ByteVector& parameters) { return descriptor(Form::DESCRIPTOR_TAG, parameters); }
};

using Forms = testing::Types<Quor::TGingaJavaApplicationDescriptor, Quor::TGingaNCLApplicationDescriptor>;

} // namespace

TYPED_TEST_SUITE(TGingaApplicationDescriptorForms, Forms, );

TEST(TGingaApplicationDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U32, TGingaApplicationDescriptor::MINIMUM_DESCRIPTOR_LENGTH, 0);
}

TYPED_TEST(TGingaApplicationDescriptorForms, MayBeEmpty) {
    const auto parsed = expectDescriptor<TypeParam>(this->wire({}), 0);
    EXPECT_EQ(parsed->size(), 0U);
}

TYPED_TEST(TGingaApplicationDescriptorForms, ShowsParametersInTheirOrder) {
    const auto parsed = expectDescriptor<TypeParam>(this->wire(join({parameter("one"), parameter("after")})), 10);
    EXPECT_EQ(parsed->size(), 2U);
    EXPECT_EQ(parsed->get(0), "one");
    EXPECT_EQ(parsed->get(1), "after");
}

TYPED_TEST(TGingaApplicationDescriptorForms, ParametersMayBeEmptyOrEqual) {
    const auto parsed = expectDescriptor<TypeParam>(
        this->wire(join({parameter("a"), parameter(""), parameter("a"), parameter("")})), 6);
    EXPECT_EQ(parameters(*parsed.object), (std::vector<std::string>{"a", "", "a", ""}));
}

TYPED_TEST(TGingaApplicationDescriptorForms, CharactersAreKeptAsReceived) {
    const auto parsed = expectDescriptor<TypeParam>(this->wire(hex("03 00E741")), 4);
    EXPECT_EQ(parsed->get(0), std::string("\0\xE7"
                                          "A",
                                          3));
}

TYPED_TEST(TGingaApplicationDescriptorForms, AParameterThatDoesNotFitFails) {
    expectFailure<TypeParam>(
        this->wire(hex("03 6162")), TISDBTTable::ERROR_INVALID_STRING,
        {"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 3 > 2.Aborting!",
         PARAMETER_LINE});
    expectFailure<TypeParam>(
        this->wire(hex("02 6162  01")), TISDBTTable::ERROR_INVALID_STRING,
        {"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 1 > 0.Aborting!",
         PARAMETER_LINE});
}

TYPED_TEST(TGingaApplicationDescriptorForms, ParametersRunToTheEndOfTheCallersLength) {
    const ByteVector longest = parameter(std::string(254, 'p'));
    const auto parsed = expectDescriptor<TypeParam>(
        join({{TypeParam::DESCRIPTOR_TAG, 0x00}, longest, longest, parameter("end")}), 255 + 255 + 4);
    EXPECT_EQ(parameters(*parsed.object),
              (std::vector<std::string>{std::string(254, 'p'), std::string(254, 'p'), "end"}));
}

TYPED_TEST(TGingaApplicationDescriptorForms, AParameterWhoseLengthComesToNothingFails) {
    // Its 256 bytes count 0 in eight bits.
    expectFailure<TypeParam>(join({{TypeParam::DESCRIPTOR_TAG, 0x00}, parameter(std::string(255, 'p'))}),
                             TISDBTTable::ERROR_INVALID_STRING, {PARAMETER_LINE});
    expectFailure<TypeParam>(
        join({{TypeParam::DESCRIPTOR_TAG, 0x00}, parameter("a"), parameter(std::string(255, 'p')), parameter("b")}),
        TISDBTTable::ERROR_INVALID_STRING, {PARAMETER_LINE});
}

TYPED_TEST(TGingaApplicationDescriptorForms, DecodesABodyByItself) {
    TypeParam form(nullptr, 0);
    const HeapBytes body(join({parameter("one"), parameter("two")}));
    QUOR_U32 length = PRESET_LENGTH;
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    EXPECT_TRUE(form.parseData(body.data(), body.size(), &length, &error));
    EXPECT_EQ(length, 8U);
    EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parameters(form), (std::vector<std::string>{"one", "two"}));

    EXPECT_TRUE(form.parseData(body.data(), 0, &length, &error));
    EXPECT_EQ(length, 0U);
    EXPECT_TRUE(form.parseData(body.data(), 0, nullptr, nullptr));
    EXPECT_TRUE(form.parseData(body.data(), body.size(), nullptr, nullptr));
    EXPECT_EQ(parameters(form), (std::vector<std::string>{"one", "two", "one", "two"}));
    EXPECT_EQ(log.lines(), Lines{});
}

TYPED_TEST(TGingaApplicationDescriptorForms, ABodyByItselfMustFit) {
    TypeParam form(nullptr, 0);
    const HeapBytes body(join({parameter("one"), hex("02 61")}));
    QUOR_U32 length = PRESET_LENGTH;
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    EXPECT_FALSE(form.parseData(body.data(), body.size(), &length, &error));
    EXPECT_EQ(length, PRESET_LENGTH);
    EXPECT_EQ(error, TISDBTTable::ERROR_INVALID_STRING);
    EXPECT_EQ(parameters(form), std::vector<std::string>{"one"});
    EXPECT_FALSE(form.parseData(body.data(), body.size(), nullptr, nullptr));
}

TYPED_TEST(TGingaApplicationDescriptorForms, AddedParametersComeLast) {
    TypeParam form(nullptr, 0);
    form.add("first");
    form.add("");
    form.add("last");
    EXPECT_EQ(parameters(form), (std::vector<std::string>{"first", "", "last"}));
}

TYPED_TEST(TGingaApplicationDescriptorForms, ParametersAreRemovedByTheirPlace) {
    TypeParam form(nullptr, 0);
    form.add("a");
    form.add("b");
    form.add("c");
    form.remove(1);
    EXPECT_EQ(parameters(form), (std::vector<std::string>{"a", "c"}));
    form.remove(0);
    EXPECT_EQ(parameters(form), std::vector<std::string>{"c"});
    form.remove(0);
    EXPECT_EQ(form.size(), 0U);
}

TYPED_TEST(TGingaApplicationDescriptorForms, PlacesBehindTheLastParameterHoldNothing) {
    TypeParam form(nullptr, 0);
    EXPECT_EQ(form.get(0), "");
    form.remove(0);
    form.add("a");
    EXPECT_EQ(form.get(form.size()), "");
    EXPECT_EQ(form.get(0xFFFFFFFF), "");
    form.remove(1);
    form.remove(0xFFFFFFFF);
    EXPECT_EQ(parameters(form), std::vector<std::string>{"a"});
}

TYPED_TEST(TGingaApplicationDescriptorForms, ACopyNeedsNeitherSourceNorBytes) {
    std::unique_ptr<TypeParam> copy;
    {
        const auto parsed =
            parseBytes<TypeParam>(this->wire(join({parameter("a parameter of some length"), parameter("b")})));
        ASSERT_NE(parsed.object, nullptr);
        copy = std::make_unique<TypeParam>(parsed.object.get());
        parsed->remove(0);
    }
    EXPECT_EQ(copy->getDescriptorTag(), TypeParam::DESCRIPTOR_TAG);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    EXPECT_EQ(parameters(*copy), (std::vector<std::string>{"a parameter of some length", "b"}));
}

TYPED_TEST(TGingaApplicationDescriptorForms, DamageIsSurvived) {
    const ByteVector good = this->wire(join({parameter("one"), parameter(""), parameter("three")}));
    expectEveryPrefixSurvives<TypeParam>(good);
    expectEveryByteChangeSurvives<TypeParam>(good);
}
