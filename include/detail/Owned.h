#ifndef QUOR_DETAIL_OWNED_H
#define QUOR_DETAIL_OWNED_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

#include <memory>
#include <string>
#include <utility>

/// What objects keep besides numbers: arrays, texts and rows, on the heap or in the block of memory of a table.
/// Private members of public classes; nothing for callers.
namespace Quor { // NOLINT(modernize-concat-nested-namespaces): C++11
namespace detail {

/// Gives memory back that lies on the heap.
struct Release {
    void operator()(void* memory) const noexcept { TISDBTMemory::operator delete(memory); }
};

/// An array of numbers or characters.
template <class Number> using Array = std::unique_ptr<Number[], Release>;

/// A text as it is on the wire.
class Text {
public:
    Text() = default;
    Text(const std::string& text) // NOLINT(google-explicit-constructor)
        : m_pCharacters(text.empty() ? nullptr : static_cast<char*>(TISDBTMemory::operator new(text.size()))),
          m_iSize(static_cast<QUOR_U32>(text.size())) {
        text.copy(m_pCharacters.get(), text.size());
    }
    Text(const Text& other) : Text(std::string(other)) {}
    Text(Text&&) = default;
    Text& operator=(const Text& other) { return *this = Text(other); }
    Text& operator=(Text&&) = default;
    ~Text() = default;

    /// Takes the characters over.
    Text(Array<char> characters, QUOR_U32 size) : m_pCharacters(std::move(characters)), m_iSize(size) {}

    operator std::string() const { // NOLINT(google-explicit-constructor)
        return m_iSize == 0 ? std::string() : std::string(m_pCharacters.get(), m_iSize);
    }

private:
    Array<char> m_pCharacters{};
    QUOR_U32 m_iSize = 0;
};

/// The memory of a row.
class RowMemory {
public:
    RowMemory() = default;
    RowMemory(RowMemory&& other) noexcept
        : m_pValues(std::move(other.m_pValues)), m_iSize(other.m_iSize), m_iCapacity(other.m_iCapacity) {
        other.m_iSize = 0;
    }
    RowMemory(const RowMemory&) = delete;
    RowMemory& operator=(const RowMemory&) = delete;

    QUOR_U32 size() const { return m_iSize; }

protected:
    ~RowMemory() = default;

    /// Moves the values, as bytes, to where there is room for more of them.
    void grow(Memory& memory, QUOR_U32 capacity, std::size_t valueSize);

    std::unique_ptr<unsigned char[], Release> m_pValues{};
    QUOR_U32 m_iSize = 0;
    QUOR_U32 m_iCapacity = 0;
};

/// Values in a row: numbers, or what owns by a pointer, so that it can be moved as bytes.
template <class Value> class Row : public RowMemory {
public:
    Row() = default;
    Row(Row&& other) noexcept : RowMemory(std::move(other)) {}
    Row(const Row&) = delete;
    Row& operator=(const Row&) = delete;
    ~Row() {
        for (Value& value : *this) {
            value.~Value();
        }
    }

    Value* begin() const { return reinterpret_cast<Value*>(m_pValues.get()); }
    Value* end() const { return begin() + m_iSize; }

    /// Makes room for that many values in all.
    void makeRoom(Memory& memory, QUOR_U32 capacity) {
        if (capacity > m_iCapacity) {
            grow(memory, capacity, sizeof(Value));
        }
    }

    /// Puts a value, for which there is room, before the one at @p position, which is at most size().
    void insert(QUOR_U32 position, Value value);

    /// Destroys the value at @p position, which is less than size().
    void erase(QUOR_U32 position);
};

/// Owned objects in a row.
template <class Item> using Items = Row<std::unique_ptr<Item>>;

/// The item at @p index, or null past the end.
template <class Item> Item* at(const Items<Item>& items, QUOR_U32 index) {
    return index < items.size() ? items.begin()[index].get() : nullptr;
}

} // namespace detail
} // namespace Quor

#endif
