#pragma once

#include "TISDBTMemory.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <typeinfo>
#include <vector>

namespace binding {

/// An object of the library, of whatever class. Without an object it is nothing.
struct Found {
    Quor::TISDBTMemory* object = nullptr;
    const std::type_info* type = nullptr;
    void (*destroy)(Quor::TISDBTMemory*) = nullptr;
};

template <class T> Found found(T* object) {
    if (object == nullptr) {
        return {};
    }
    return {object, &typeid(*object), [](Quor::TISDBTMemory* memory) { delete static_cast<T*>(memory); }};
}

/// A copy of what Python gave to be read: it may change or lose its own.
class Bytes {
public:
    Bytes(const void* bytes, std::size_t size);

    std::uint8_t* data() const { return m_bytes.get(); }
    std::uint32_t size() const { return m_size; }
    bool has(const std::uint8_t* at) const { return at >= data() && at <= data() + size(); }

private:
    std::shared_ptr<std::uint8_t[]> m_bytes;
    std::uint32_t m_size;
};

/// An object that Python has met, and what must live as long. Only who stands below holds who stands above, so that
/// nothing holds itself.
class Node : public std::enable_shared_from_this<Node> {
public:
    /// What nobody else owns.
    /// @param bytes what it points into
    Node(Found found, std::vector<Bytes> bytes);
    ~Node();
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    /// The node of an object that this one's object, or what it holds, owns: always the same for the same object.
    std::shared_ptr<Node> child(const Found& found);

    /// The object. Throws when it, or what holds it, was removed.
    const Found& get() const;

    /// The one at the top, which all others live as long as.
    Node& root();
    std::shared_ptr<Node> holder() const { return m_above; }

    /// Lets @p add give an object to this one's.
    /// @param items what the object holds, of which @p add may displace one: that is Python's then
    void take(Node& item, const std::function<std::vector<Found>()>& items, const std::function<void()>& add);

    /// Lets @p remove delete what this one's object holds, which is gone for those who still have it.
    void drop(const std::function<std::vector<Found>()>& items, const std::function<void()>& remove);

    const std::vector<Bytes>& bytes() const { return m_bytes; }

    /// How many of the bytes from @p at on are there to be read.
    std::uint32_t readable(const std::uint8_t* at, std::uint32_t size);

    /// Whether the object is as a parse left it.
    bool m_isAsParsed = false;

private:
    std::vector<Found> changed(const std::function<std::vector<Found>()>& items, const std::function<void()>& change);

    Found m_found;
    bool m_isOwn = true;
    std::shared_ptr<Node> m_above;
    std::vector<Bytes> m_bytes;
    std::map<const void*, std::weak_ptr<Node>> m_children;
};

} // namespace binding
