#ifndef QUOR_TISDBT_MEMORY_H
#define QUOR_TISDBT_MEMORY_H

#include "QuorISDBTExport.h"

#include <cstddef>
#include <new>

namespace Quor {

/// Root of every class with objects: where they lie. `new` takes them from the heap. What the parse of a table builds
/// lies in a block of memory that belongs to the table: `delete` of such an object destroys it as ever, and leaves its
/// memory to the table.
class QUOR_ISDBT_API TISDBTMemory {
public:
    /// @name The object's memory, as `new` and `delete` ask for it.
    /// @{
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, const std::nothrow_t& tag) noexcept;
    static void* operator new(std::size_t /*size*/, void* place) noexcept { return place; }
    static void operator delete(void* memory) noexcept;
    static void operator delete(void* memory, const std::nothrow_t& tag) noexcept;
    static void operator delete(void* /*memory*/, void* /*place*/) noexcept {}
    /// @}

protected:
    TISDBTMemory() = default;
    ~TISDBTMemory() = default;
};

namespace detail {

class Bytes; // NOLINT(bugprone-forward-declaration-namespace): not the one of a program
class Memory;
class Outcome;
struct Access;

} // namespace detail

} // namespace Quor

#endif
