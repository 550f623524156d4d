// Fuzzes the classes of one group: FUZZED_GROUP.

#include "SectionMutator.h"
#include "Target.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr Target::Group GROUP = Target::Group::FUZZED_GROUP;

const std::vector<Target>& targets() {
    static const std::vector<Target> ofGroup = targetsOf(GROUP);
    return ofGroup;
}

} // namespace

/// Which class, how, how much; then the bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size >= Input::HEADER) {
        const Target& target = targets()[data[0] % targets().size()];
        target.use({ByteVector(data + Input::HEADER, data + size), data[1], data[2]});
    }
    return 0;
}

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t maxSize,
                                               unsigned seed) {
    return mutateInput(data, size, maxSize, seed, GROUP);
}
