#pragma once

#include <cstring>
#include <new>

/// An object built in memory that held something else before, to show which members its constructor sets.
template <class T> class InDirtyMemory {
public:
    template <class... Arguments> explicit InDirtyMemory(Arguments... arguments) {
        std::memset(m_memory, 0xA5, sizeof m_memory);
        m_object = new (m_memory) T(arguments...);
    }
    ~InDirtyMemory() { m_object->~T(); }
    InDirtyMemory(const InDirtyMemory&) = delete;
    InDirtyMemory& operator=(const InDirtyMemory&) = delete;

    const T* operator->() const { return m_object; }
    const T& operator*() const { return *m_object; }

private:
    alignas(T) unsigned char m_memory[sizeof(T)];
    T* m_object;
};
