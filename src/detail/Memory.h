#ifndef QUOR_DETAIL_MEMORY_H
#define QUOR_DETAIL_MEMORY_H

#include "detail/Access.h"

#include <algorithm>
#include <memory>

/// A table and all that its parse builds lie in one block of memory, which goes when the table is deleted:
///
///     [ table | its copy of the section | entries, descriptors, items, arrays, texts ... ]
///
/// A table that needs more chains further blocks. Objects are destroyed one by one as ever, since callers may have put
/// objects from the heap among them; their memory stays. `delete` tells them apart by the address: what the heap gives
/// stands at even multiples of a pointer's size, what lies in a block at odd ones. Tables stand where the heap put
/// them.
///
/// Checkers of memory do not see what happens inside a block. For them the library is built with QUOR_ISDBT_BLOCKS=0:
/// each object, array and text then is a request to the heap of exactly its size.
namespace Quor::detail {

/// Where a parse takes memory from: the heap, or the block of the table that it builds.
class Memory {
public:
    /// The heap, for the parse of a single descriptor, entry or item.
    Memory() = default;

    Memory(const Memory&) = delete;
    Memory& operator=(const Memory&) = delete;

    /// A table with a copy of the section; null stays null. From now on its block is the memory.
    /// @param density what a byte of the section is expected to take in objects, in tenths of a pointer's size.
    template <class Table> std::unique_ptr<Table> makeTable(QUOR_U8* section, QUOR_U32 length, unsigned density) {
        void* const block = beginBlock(sizeof(Table), section, length, density);
        std::unique_ptr<Table> table(::new (block) Table(nullptr, length));
        m_pTable = table.get();
        if (section != nullptr) {
            Access::data(*table) = static_cast<QUOR_U8*>(take(length));
            std::copy_n(section, length, table->getData());
        }
        return table;
    }

    template <class Object, class... Values> std::unique_ptr<Object> make(Values... values) {
        return std::unique_ptr<Object>(::new (take(sizeof(Object))) Object(values...));
    }

    /// Memory for an object or an array of that many bytes, aligned for pointers. Part of its caller, as all that is
    /// done for each descriptor of a loop: the calls would be a tenth of a parse's time.
    [[gnu::always_inline]] void* take(std::size_t size) {
        const std::size_t room = (size + STEP - 1) / STEP * STEP;
        if (room > static_cast<std::size_t>(m_pEnd - m_pNext)) {
            return takeElsewhere(size, room);
        }
        void* const taken = m_pNext;
        m_pNext += room;
        return taken;
    }

    /// Gives up the blocks that a table chained.
    static void release(void* lastBlock) noexcept;

private:
    static constexpr std::size_t STEP = 2 * sizeof(void*);

    void* beginBlock(std::size_t tableSize, const QUOR_U8* section, QUOR_U32 length, unsigned density);
    [[gnu::cold]] void* takeElsewhere(std::size_t size, std::size_t room);
    void use(void* block, std::size_t used, std::size_t size);

    char* m_pNext = nullptr;         ///< the next free address, an odd multiple of a pointer's size
    char* m_pEnd = nullptr;          ///< of the block
    std::size_t m_iExpected = 0;     ///< what is expected to be needed beyond them
    TISDBTTable* m_pTable = nullptr; ///< who owns the blocks; null: the heap
};

} // namespace Quor::detail

#endif
