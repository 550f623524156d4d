#include "Tree.h"

#include "Objects.h"
#include "Reader.h"

#include <algorithm>
#include <set>

namespace dsmcc {

namespace {

/// Walks a carousel from its gateway on.
class Walk {
public:
    Walk(const Carousel& carousel, const Limits& limits) : m_carousel(carousel), m_limits(limits) {}

    Tree tree();

private:
    using Key = std::pair<std::uint16_t, Bytes>;

    void listModules();
    void listObjects();
    void findGateway();
    void enter(const Entry& directory, std::size_t depth);
    Entry entryOf(const Entry& directory, const Binding& binding) const;
    void find(Entry& entry, const Ior& ior) const;
    void find(Entry& entry, const ObjectLocation& location) const;
    void listUnnamed();
    void add(Entry entry);

    const Carousel& m_carousel;
    const Limits& m_limits;
    Tree m_tree;
    std::map<std::uint16_t, const Module*> m_modules;
    std::map<Key, const Object*> m_objects;
    std::set<const Object*> m_named;
    std::vector<const Object*> m_entered; // from the root to where the walk is
    std::size_t m_bytesOfPaths = 0;
};

EntryState stateOf(const Module& module) {
    switch (module.state) {
    case ModuleState::Complete:
        return EntryState::Complete;
    case ModuleState::Incomplete:
        return EntryState::ModuleIncomplete;
    default:
        return EntryState::ModuleRefused;
    }
}

bool isDirectory(const Object& object) {
    return object.kind == ObjectKind::Directory || object.kind == ObjectKind::ServiceGateway;
}

/// Sets what an object says of itself.
void setObject(Entry& entry, const Object& object) {
    entry.object = &object;
    entry.kind = object.kind;
    if (object.kind == ObjectKind::File) {
        entry.size = object.contentSize;
    }
    if (object.kind == ObjectKind::Unknown) {
        entry.state = EntryState::UnknownKind;
    }
}

Tree Walk::tree() {
    try {
        if (m_carousel.type == CarouselType::Object) {
            listObjects();
            findGateway();
            if (m_tree.gateway) {
                enter(*m_tree.gateway, 0);
            }
            listUnnamed();
        } else {
            listModules();
        }
    } catch (const Refused& refused) {
        m_tree.refusal = refused.refusal;
    }
    return std::move(m_tree);
}

/// A module is a file, which has the name that a descriptor gives it.
void Walk::listModules() {
    for (const Group& group : m_carousel.groups) {
        std::set<std::string> names;
        for (const Module* const module : group.modules) {
            Entry entry;
            entry.path = module->info.text(Descriptor::NAME);
            entry.kind = ObjectKind::Module;
            entry.moduleId = module->id;
            entry.module = module;
            entry.state = stateOf(*module);
            entry.size = module->originalSize.value_or(module->info.size);
            if (module->info.descriptor(Descriptor::NAME) == nullptr) {
                entry.naming = Naming::None;
            } else if (!safePath(entry.path, m_limits)) {
                entry.naming = Naming::Unsafe;
            } else if (!names.insert(entry.path).second) {
                entry.naming = Naming::Duplicate;
            }
            add(std::move(entry));
        }
    }
}

void Walk::listObjects() {
    for (const Group& group : m_carousel.groups) {
        for (const Module* const module : group.modules) {
            m_modules.emplace(module->id, module);
            for (const Object& object : module->objects) {
                m_objects.emplace(Key(module->id, object.key), &object); // the first of a key
            }
        }
    }
}

/// Where the DSI says, or else, when there is one only, the object of that kind.
void Walk::findGateway() {
    Entry gateway;
    gateway.kind = ObjectKind::ServiceGateway;
    if (m_carousel.dsi != nullptr) {
        find(gateway, *m_carousel.dsi->gateway);
        if (gateway.object != nullptr && !isDirectory(*gateway.object)) {
            gateway.object = nullptr;
            gateway.state = EntryState::NoSuchObject;
            gateway.kind = ObjectKind::ServiceGateway;
            gateway.size.reset();
        }
        m_tree.gateway = gateway;
    }
    if (gateway.object == nullptr) {
        const auto isGateway = [](const auto& each) { return each.second->kind == ObjectKind::ServiceGateway; };
        const auto found = std::find_if(m_objects.begin(), m_objects.end(), isGateway);
        if (found == m_objects.end() || std::find_if(std::next(found), m_objects.end(), isGateway) != m_objects.end()) {
            return;
        }
        gateway.state = EntryState::Complete;
        find(gateway, ObjectLocation{0, found->first.first, found->first.second});
    }
    m_named.insert(gateway.object);
    m_tree.gateway = gateway;
}

void Walk::enter(const Entry& directory, std::size_t depth) {
    if (directory.object == nullptr || directory.state != EntryState::Complete || !isDirectory(*directory.object)) {
        return;
    }
    m_entered.push_back(directory.object);
    std::set<std::string> names;
    for (const Binding& binding : directory.object->bindings) {
        Entry entry = entryOf(directory, binding);
        if (!names.insert(binding.name).second && entry.naming == Naming::Good) {
            entry.naming = Naming::Duplicate;
        }
        if (entry.object != nullptr) {
            m_named.insert(entry.object);
            if (std::find(m_entered.begin(), m_entered.end(), entry.object) != m_entered.end()) {
                entry.state = EntryState::Loop;
            } else if (isDirectory(*entry.object) && depth + 1 > m_limits.depth) {
                entry.state = EntryState::TooDeep;
            }
        }
        add(entry);
        enter(entry, depth + 1);
    }
    m_entered.pop_back();
}

Entry Walk::entryOf(const Entry& directory, const Binding& binding) const {
    Entry entry;
    entry.path = directory.path.empty() ? binding.name : directory.path + "/" + binding.name;
    entry.naming = binding.safe ? directory.naming : Naming::Unsafe;
    entry.kind = binding.kind;
    entry.size = binding.size;
    find(entry, binding.ior);
    return entry;
}

void Walk::find(Entry& entry, const Ior& ior) const {
    if (!ior.location) {
        entry.state = ior.serviceDomain ? EntryState::OtherCarousel : EntryState::NoSuchObject;
        return;
    }
    if (ior.location->carouselId != m_carousel.id) {
        entry.state = EntryState::OtherCarousel;
        entry.moduleId = ior.location->moduleId;
        entry.objectKey = ior.location->objectKey;
        return;
    }
    find(entry, *ior.location);
}

void Walk::find(Entry& entry, const ObjectLocation& location) const {
    entry.moduleId = location.moduleId;
    entry.objectKey = location.objectKey;
    const auto module = m_modules.find(location.moduleId);
    if (module == m_modules.end()) {
        entry.state = EntryState::ModuleNotAnnounced;
        return;
    }
    entry.module = module->second;
    entry.state = stateOf(*module->second);
    if (entry.state != EntryState::Complete) {
        return;
    }
    const auto object = m_objects.find(Key(location.moduleId, location.objectKey));
    if (object == m_objects.end()) {
        entry.state = EntryState::NoSuchObject;
        return;
    }
    setObject(entry, *object->second);
}

/// Objects that no directory leads to have content worth showing.
void Walk::listUnnamed() {
    for (const auto& [id, module] : m_modules) {
        for (const Object& object : module->objects) {
            if (m_named.count(&object) == 0) {
                Entry entry;
                entry.naming = Naming::None;
                entry.moduleId = id;
                entry.objectKey = object.key;
                entry.module = module;
                setObject(entry, object);
                add(std::move(entry));
            }
        }
    }
}

void Walk::add(Entry entry) {
    m_bytesOfPaths += entry.path.size();
    if (m_tree.entries.size() >= m_limits.entries || m_bytesOfPaths > m_limits.memory) {
        refuse(RefusalKind::EntryLimit, 0,
               "the tree has more than " + std::to_string(m_tree.entries.size()) + " entries");
    }
    m_tree.entries.push_back(std::move(entry));
}

} // namespace

Tree treeOf(const Carousel& carousel, const Limits& limits) {
    return Walk(carousel, limits).tree();
}

} // namespace dsmcc
