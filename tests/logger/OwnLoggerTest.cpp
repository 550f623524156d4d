#include "pat/TPATTable.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TPATTable;

TEST(OwnLogger, TakesThePlaceOfTheStandIn) {
    QUOR_U16 error = 0;
    testing::internal::CaptureStderr();
    const LogCapture log;
    EXPECT_EQ(TPATTable::parse(nullptr, 0, 1, 1, &error, nullptr), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(error, TISDBTTable::ERROR_INVALID_DATA);
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].level, 4);
    EXPECT_EQ(log.records()[0].tag, "ISDBTUtils");
    EXPECT_EQ(log.records()[0].text, "ISDBTUtils: TISDBTTable::parse: Invalid data. Aborting!");
}
