#pragma once

#include "Reader.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"
#include "descriptors/TTransportProtocolDescriptorDC.h"
#include "descriptors/TTransportProtocolDescriptorIP.h"
#include "descriptors/TTransportProtocolDescriptorOC.h"

#include <functional>
#include <memory>
#include <vector>

/// Calls with an object as the first of these classes that it is of.
template <class First, class... Others, class Object, class Use> void asOneOf(Object& object, Use use) {
    if (auto* const found = dynamic_cast<First*>(&object)) {
        use(*found);
    } else if constexpr (sizeof...(Others) != 0) {
        asOneOf<Others...>(object, use);
    }
}

/// Calls with an object as the class that it is of.
template <class Object, class Use> void asItIs(Object& object, Use use) {
    using namespace Quor;
    if constexpr (std::is_same_v<Object, TTransportProtocolDescriptor>) {
        asOneOf<TTransportProtocolDescriptorOC, TTransportProtocolDescriptorIP, TTransportProtocolDescriptorDC>(object,
                                                                                                                use);
    } else if constexpr (std::is_same_v<Object, TGingaApplicationDescriptor>) {
        asOneOf<TGingaJavaApplicationDescriptor, TGingaNCLApplicationDescriptor>(object, use);
    } else if constexpr (std::is_same_v<Object, TGingaApplicationLocationDescriptor>) {
        asOneOf<TGingaJavaApplicationLocationDescriptor, TGingaNCLApplicationLocationDescriptor>(object, use);
    } else {
        use(object);
    }
}

/// Deep copies, which must outlive what they are copies of.
class Copied {
public:
    /// Takes a new copy. Null is ignored.
    template <class T> void operator()(T* copy) {
        const std::shared_ptr<T> owned(copy);
        if (owned != nullptr) {
            m_reads.push_back([owned] {
                asItIs(*owned, [](auto& object) {
                    Reader reader;
                    read(reader, object);
                });
            });
        }
    }

    void readAll() const {
        for (const auto& each : m_reads) {
            each();
        }
    }

private:
    std::vector<std::function<void()>> m_reads;
};

template <class Object> void Reader::takeObject(Object& object) {
    asItIs(object, [this](auto& each) {
        Reader inner(m_copied);
        read(inner, each);
        if (m_copied != nullptr) {
            copy(*m_copied, each);
        }
    });
}
