#include "Modules.h"

#include <algorithm>

namespace dsmcc {

namespace {

/// What compressed_module and CompressionType say: a byte for the method, then original_size.
std::optional<std::uint32_t> originalSizeOf(const ModuleInfo& info) {
    constexpr std::size_t SIZE = 5;
    for (const std::uint8_t tag : {Descriptor::COMPRESSED_MODULE, Descriptor::COMPRESSION_TYPE}) {
        const Descriptor* const found = info.descriptor(tag);
        if (found != nullptr && found->body.size() >= SIZE) {
            std::uint32_t size = 0;
            for (std::size_t at = 1; at < SIZE; ++at) {
                size = size << 8U | found->body[at];
            }
            return size;
        }
    }
    return std::nullopt;
}

std::uint64_t blockCountOf(const Module& module) {
    return (std::uint64_t{module.info.size} + module.blockSize - 1) / module.blockSize;
}

} // namespace

std::vector<std::pair<std::uint16_t, std::uint16_t>> Module::missing() const {
    std::vector<std::pair<std::uint16_t, std::uint16_t>> ranges;
    std::uint32_t next = 0;
    const auto add = [&](std::uint32_t end) {
        if (next < end) {
            ranges.emplace_back(static_cast<std::uint16_t>(next), static_cast<std::uint16_t>(end - 1));
        }
    };
    if (whole()) {
        return ranges;
    }
    for (const auto& block : blocks) {
        add(block.first);
        next = block.first + 1U;
    }
    add(blockCount);
    return ranges;
}

void note(std::vector<Refusal>& refusals, const Refusal& refusal) {
    constexpr std::size_t ENOUGH = 16;
    const bool known = std::any_of(refusals.begin(), refusals.end(), [&](const Refusal& each) {
        return each.kind == refusal.kind && each.at == refusal.at && each.text == refusal.text;
    });
    if (!known && refusals.size() < ENOUGH) {
        refusals.push_back(refusal);
    }
}

void count(Repetition& repetition, double seconds) {
    if (repetition.count == 0) {
        repetition.first = seconds;
    } else {
        const double interval = std::max(seconds - repetition.last, 0.0);
        repetition.shortest = repetition.count == 1 ? interval : std::min(repetition.shortest, interval);
        repetition.longest = std::max(repetition.longest, interval);
    }
    repetition.last = seconds;
    ++repetition.count;
}

Module announced(const DownloadInfoIndication& dii, const ModuleInfo& info, std::size_t memoryLimit) {
    constexpr std::uint64_t MOST_BLOCKS = 65536;
    Module module;
    module.id = info.id;
    module.version = info.version;
    module.info = info;
    module.blockSize = dii.blockSize;
    module.object = dii.object;
    module.originalSize = originalSizeOf(info);
    module.state = ModuleState::Incomplete;
    if (info.size != 0 && (dii.blockSize == 0 || blockCountOf(module) > MOST_BLOCKS)) {
        module.state = ModuleState::BadBlockSize;
        note(module.refusals,
             {RefusalKind::BlockSize, 0,
              "a module of " + std::to_string(info.size) + " bytes in blocks of " + std::to_string(dii.blockSize)});
        return module;
    }
    module.blockCount = info.size == 0 ? 0 : static_cast<std::uint32_t>(blockCountOf(module));
    if (info.size > memoryLimit) {
        module.state = ModuleState::TooLarge;
        note(module.refusals, {RefusalKind::MemoryLimit, 0, "a module of " + std::to_string(info.size) + " bytes"});
    }
    return module;
}

bool sameModule(const Module& module, const Module& announcement) {
    return module.version == announcement.version && module.info.size == announcement.info.size &&
           module.blockSize == announcement.blockSize && module.object == announcement.object &&
           module.originalSize == announcement.originalSize;
}

bool collects(const Module& module) {
    return module.state != ModuleState::BadBlockSize && module.state != ModuleState::TooLarge;
}

std::optional<Refusal> mismatch(const Module& module, std::uint16_t number, std::size_t size, std::size_t at) {
    const std::string block = "block " + std::to_string(number);
    if (number >= module.blockCount) {
        return Refusal{RefusalKind::BlockNumber, at, block + " of " + std::to_string(module.blockCount)};
    }
    const std::size_t begin = std::size_t{number} * module.blockSize;
    const std::size_t expected = std::min<std::size_t>(module.blockSize, module.info.size - begin);
    if (size != expected) {
        return Refusal{RefusalKind::BlockLength, at,
                       block + " has " + std::to_string(size) + " bytes instead of " + std::to_string(expected)};
    }
    return std::nullopt;
}

std::optional<ByteView> blockOf(const Module& module, std::uint16_t number) {
    if (module.whole()) {
        const std::size_t begin = std::size_t{number} * module.blockSize;
        return ByteView{module.bytes.data() + begin,
                        std::min<std::size_t>(module.blockSize, module.bytes.size() - begin)};
    }
    const auto found = module.blocks.find(number);
    if (found == module.blocks.end()) {
        return std::nullopt;
    }
    return ByteView{found->second.data(), found->second.size()};
}

void add(Module& module, std::uint16_t number, ByteView data, double seconds) {
    if (module.arrivals.size() == module.arrivals.capacity()) {
        module.arrivals.reserve(2 * module.arrivals.size() + 1);
    }
    module.blocks.emplace(number, Bytes(data.begin(), data.end()));
    module.arrivals.push_back({number, seconds}); // for which there is room
}

std::size_t costOfBlock(std::size_t size) {
    constexpr std::size_t PLACE = 64; // in the map of blocks and among the arrivals
    return size + PLACE;
}

std::size_t costOf(const Module& module) {
    const std::size_t joined = module.arrivals.size() - module.blocks.size();
    std::size_t cost = module.bytes.size() + module.inflated.size() + joined * sizeof(Arrival);
    for (const auto& [number, bytes] : module.blocks) {
        cost += costOfBlock(bytes.size());
    }
    return cost;
}

void join(Module& module) {
    Bytes whole;
    whole.reserve(module.info.size); // from here on nothing runs out of memory
    while (!module.blocks.empty()) {
        const auto block = module.blocks.begin();
        whole.insert(whole.end(), block->second.begin(), block->second.end());
        module.blocks.erase(block);
    }
    module.bytes = std::move(whole);
}

} // namespace dsmcc
