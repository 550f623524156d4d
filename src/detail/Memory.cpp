#include "detail/Memory.h"

#include "detail/Owned.h"

#include <cstdint>

namespace Quor {

namespace {

#ifdef QUOR_ISDBT_BLOCKS
constexpr bool WANTED = QUOR_ISDBT_BLOCKS != 0;
#else
constexpr bool WANTED = true;
#endif

constexpr std::size_t WORD = sizeof(void*);

/// Where the heap does not promise even multiples, an object of it could stand like one of a block.
constexpr bool BLOCKS = WANTED && __STDCPP_DEFAULT_NEW_ALIGNMENT__ % (2 * WORD) == 0;

/// A piece of the heap. Small ones need not be aligned as well as large ones, and could pass for parts of a block.
void* takeFromHeap(std::size_t size) {
    return ::operator new(BLOCKS ? std::max(size, 2 * WORD) : size);
}

bool liesInBlock(const void* memory) {
    return BLOCKS && reinterpret_cast<std::uintptr_t>(memory) / WORD % 2 != 0;
}

/// C libraries keep pieces of up to this size at hand.
constexpr std::size_t FIRST_BLOCK = 1024;

/// When a section has more in it than was expected.
constexpr std::size_t UNEXPECTED_BLOCK = 512;

/// Longer sections are not sent; data behind a section count as bytes of it up to here.
constexpr QUOR_U32 LONGEST_SECTION = 4096;

} // namespace

void* TISDBTMemory::operator new(std::size_t size) {
    return takeFromHeap(size);
}

void* TISDBTMemory::operator new(std::size_t size, const std::nothrow_t& tag) noexcept {
    return ::operator new(size, tag);
}

void TISDBTMemory::operator delete(void* memory) noexcept {
    if (!liesInBlock(memory)) {
        ::operator delete(memory);
    }
}

void TISDBTMemory::operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept {
    TISDBTMemory::operator delete(memory);
}

namespace detail {

void* Memory::beginBlock(std::size_t tableSize, const QUOR_U8* section, QUOR_U32 length, unsigned density) {
    if (!BLOCKS || section == nullptr) {
        return ::operator new(tableSize);
    }
    const std::size_t tableAndCopy = tableSize + WORD + length + STEP;
    const std::size_t expected = tableAndCopy + std::min(length, LONGEST_SECTION) * WORD * density / 10;
    const std::size_t size = std::max(tableAndCopy, std::min(expected, FIRST_BLOCK));
    void* const block = ::operator new(size);
    m_iExpected = expected - size;
    use(block, tableSize, size);
    return block;
}

void* Memory::takeElsewhere(std::size_t size, std::size_t room) {
    if (!BLOCKS || m_pTable == nullptr) {
        return takeFromHeap(size);
    }
    const std::size_t length = WORD + std::max(room, m_iExpected == 0 ? UNEXPECTED_BLOCK : m_iExpected);
    void* const block = ::operator new(length);
    m_iExpected = 0;
    void*& lastBlock = Access::lastBlock(*m_pTable);
    *static_cast<void**>(block) = lastBlock;
    lastBlock = block;
    use(block, WORD, length);
    return take(size);
}

/// Goes on in a block whose first bytes are used.
void Memory::use(void* block, std::size_t used, std::size_t size) {
    m_pNext = static_cast<char*>(block) + (used / WORD | 1U) * WORD;
    m_pEnd = static_cast<char*>(block) + size;
}

void Memory::release(void* lastBlock) noexcept {
    while (lastBlock != nullptr) {
        void* const former = *static_cast<void**>(lastBlock);
        ::operator delete(lastBlock);
        lastBlock = former;
    }
}

void RowMemory::grow(Memory& memory, QUOR_U32 capacity, std::size_t valueSize) {
    capacity = std::max(capacity, m_iCapacity == 0 ? 4 : 2 * m_iCapacity);
    std::unique_ptr<unsigned char[], Release> values(static_cast<unsigned char*>(memory.take(capacity * valueSize)));
    std::copy_n(m_pValues.get(), m_iSize * valueSize, values.get());
    m_pValues = std::move(values);
    m_iCapacity = capacity;
}

} // namespace detail

} // namespace Quor
