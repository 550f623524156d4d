#include "Node.h"

#include <algorithm>
#include <pybind11/pybind11.h>

namespace binding {

namespace {

/// An application of fewer bytes is read up to here.
constexpr std::size_t ALWAYS_READ = 9;

} // namespace

Bytes::Bytes(const void* bytes, std::size_t size)
    : m_bytes(new std::uint8_t[std::max(size, ALWAYS_READ)]()), m_size(static_cast<std::uint32_t>(size)) {
    std::copy_n(static_cast<const std::uint8_t*>(bytes), size, m_bytes.get());
}

Node::Node(Found found, std::vector<Bytes> bytes) : m_found(found), m_bytes(std::move(bytes)) {}

Node::~Node() {
    if (m_isOwn && m_found.object != nullptr) {
        m_found.destroy(m_found.object);
    }
}

std::shared_ptr<Node> Node::child(const Found& found) {
    std::weak_ptr<Node>& known = m_children[found.object];
    std::shared_ptr<Node> node = known.lock();
    if (!node) {
        node = std::make_shared<Node>(found, std::vector<Bytes>());
        node->m_isOwn = false;
        node->m_above = shared_from_this();
        known = node;
    }
    return node;
}

const Found& Node::get() const {
    for (const Node* node = this; node != nullptr; node = node->m_above.get()) {
        if (node->m_found.object == nullptr) {
            PyErr_SetString(PyExc_ReferenceError, "it was removed from what held it");
            throw pybind11::error_already_set();
        }
    }
    return m_found;
}

Node& Node::root() {
    Node* node = this;
    while (node->m_above) {
        node = node->m_above.get();
    }
    return *node;
}

std::vector<Found> Node::changed(const std::function<std::vector<Found>()>& items,
                                 const std::function<void()>& change) {
    std::vector<Found> before = items();
    change();
    root().m_isAsParsed = false;
    const std::vector<Found> after = items();
    const auto isThere = [&after](const Found& each) {
        return std::any_of(after.begin(), after.end(),
                           [&each](const Found& other) { return other.object == each.object; });
    };
    before.erase(std::remove_if(before.begin(), before.end(), isThere), before.end());
    return before;
}

void Node::take(Node& item, const std::function<std::vector<Found>()>& items, const std::function<void()>& add) {
    if (!item.m_isOwn || item.m_above) {
        throw pybind11::value_error("it belongs to another object already; add a copy");
    }
    const std::vector<Found> displaced = changed(items, add);
    item.m_isOwn = false;
    item.m_isAsParsed = false;
    item.m_above = shared_from_this();
    m_children[item.m_found.object] = item.weak_from_this();
    std::vector<Bytes>& kept = root().m_bytes;
    kept.insert(kept.end(), item.m_bytes.begin(), item.m_bytes.end());
    item.m_bytes.clear();
    for (const Found& each : displaced) {
        child(each)->m_isOwn = true; // deleted right here when nobody has it
        m_children.erase(each.object);
    }
}

void Node::drop(const std::function<std::vector<Found>()>& items, const std::function<void()>& remove) {
    for (const Found& each : changed(items, remove)) {
        const auto known = m_children.find(each.object);
        if (known == m_children.end()) {
            continue;
        }
        if (const std::shared_ptr<Node> node = known->second.lock()) {
            node->m_found.object = nullptr;
        }
        m_children.erase(known);
    }
}

std::uint32_t Node::readable(const std::uint8_t* at, std::uint32_t size) {
    for (const Bytes& bytes : root().m_bytes) {
        if (bytes.has(at)) {
            return std::min(size, static_cast<std::uint32_t>(bytes.data() + bytes.size() - at));
        }
    }
    return size;
}

} // namespace binding
