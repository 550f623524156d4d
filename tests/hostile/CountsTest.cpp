// Bytes taken for a count or a length, whatever they say.

#include "hostile/Tables.h"

#include <gmock/gmock.h>

namespace {

class Counts : public testing::TestWithParam<TableClass> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(Each, Counts, testing::ValuesIn(tableClasses()), caseName<TableClass>);

TEST_P(Counts, AnyByteAsACount) {
    const ByteVector& full = GetParam().full;
    for (std::size_t at = 0; at < full.size(); ++at) {
        for (const QUOR_U8 count : hex("00 01 7F 80 FF")) {
            SCOPED_TRACE("byte " + std::to_string(at) + " = " + std::to_string(count));
            ByteVector wire = full;
            wire[at] = count;
            expectTakenOrRefused(GetParam().parse(wire, nullptr));
            expectTakenOrRefused(GetParam().parse(join({wire, fill(300, count)}), nullptr));
        }
    }
}
