#include "extracting/PartialModule.h"

#include <algorithm>
#include <array>

namespace inspect {

namespace {

constexpr std::array<std::uint8_t, 4> MAGIC{'B', 'I', 'O', 'P'};

/// Reads the fields of an object, one behind the other.
class ObjectReader {
public:
    ObjectReader(const dsmcc::Bytes& bytes, std::size_t at) : m_bytes(bytes), m_at(at) {}

    std::size_t number(unsigned size) {
        std::size_t number = 0;
        for (; size != 0; --size) {
            number = number << 8U | (m_at < m_bytes.size() ? m_bytes[m_at] : 0U);
            ++m_at;
        }
        return number;
    }

    void skip(std::size_t count) { m_at += std::min(count, m_bytes.size()); }

    dsmcc::Bytes taken(std::size_t count) {
        const std::size_t begin = std::min(m_at, m_bytes.size());
        const std::size_t end = begin + std::min(count, m_bytes.size() - begin);
        skip(count);
        return {m_bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                m_bytes.begin() + static_cast<std::ptrdiff_t>(end)};
    }

    std::size_t at() const { return m_at; }

private:
    const dsmcc::Bytes& m_bytes;
    std::size_t m_at;
};

} // namespace

PartialModule::PartialModule(const dsmcc::Module& module) : m_bytes(module.info.size) {
    for (const auto& [number, block] : module.blocks) {
        const std::size_t begin = std::size_t{number} * module.blockSize;
        std::copy_n(block.begin(), std::min(block.size(), m_bytes.size() - std::min(begin, m_bytes.size())),
                    m_bytes.begin() + static_cast<std::ptrdiff_t>(std::min(begin, m_bytes.size())));
    }
    for (const auto& [first, last] : module.missing()) {
        m_missing.push_back({std::size_t{first} * module.blockSize,
                             std::min((std::size_t{last} + 1) * module.blockSize, m_bytes.size())});
    }
    for (auto at = m_bytes.begin(); module.object; ++at) {
        at = std::search(at, m_bytes.end(), MAGIC.begin(), MAGIC.end());
        if (at == m_bytes.end()) {
            break;
        }
        findFile(static_cast<std::size_t>(at - m_bytes.begin()));
    }
}

/// Takes down the file of an object that begins here, if all in front of its content is there.
void PartialModule::findFile(std::size_t at) {
    constexpr std::size_t TO_OBJECT_KEY = 12;
    ObjectReader fields(m_bytes, at + TO_OBJECT_KEY);
    const dsmcc::Bytes key = fields.taken(fields.number(1));
    const dsmcc::Bytes kind = fields.taken(fields.number(4));
    fields.skip(fields.number(2)); // objectInfo
    for (std::size_t contexts = fields.number(1); contexts != 0; --contexts) {
        fields.skip(4);
        fields.skip(fields.number(2));
    }
    fields.skip(4); // messageBody_length
    const std::size_t size = fields.number(4);
    const std::size_t begin = fields.at();
    if (kind == dsmcc::Bytes{'f', 'i', 'l', 0} && begin <= m_bytes.size() && size <= m_bytes.size() - begin &&
        part(at, begin).missing == 0) {
        m_files.emplace(key, Range{begin, begin + size});
    }
}

PartialModule::Part PartialModule::part(std::size_t begin, std::size_t end) const {
    std::uint64_t missing = 0;
    for (const Range& each : m_missing) {
        const std::size_t from = std::max(begin, each.begin);
        missing += std::max(from, std::min(end, each.end)) - from;
    }
    return {{reinterpret_cast<const char*>(m_bytes.data()) + begin, end - begin}, missing};
}

PartialModule::Part PartialModule::file(const dsmcc::Bytes& objectKey) const {
    const Range& found = m_files.at(objectKey);
    return part(found.begin, found.end);
}

} // namespace inspect
