#include "OutOfMemory.h"

#include <cstdlib>
#include <new>

namespace {

constexpr int UNLIMITED = -1;

thread_local int left = UNLIMITED;
thread_local int alive = 0;

void* allocate(std::size_t size) {
    if (left == 0) {
        return nullptr;
    }
    if (left != UNLIMITED) {
        --left;
    }
    void* const memory = std::malloc(size == 0 ? 1 : size);
    alive += memory != nullptr ? 1 : 0;
    return memory;
}

void* allocateOrThrow(std::size_t size) {
    void* const memory = allocate(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void release(void* memory) {
    alive -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

} // namespace

OutOfMemory::OutOfMemory(int allowed) {
    left = allowed;
}

OutOfMemory::~OutOfMemory() {
    left = UNLIMITED;
}

int allocationsAlive() {
    return alive;
}

void* operator new(std::size_t size) {
    return allocateOrThrow(size);
}

void* operator new[](std::size_t size) {
    return allocateOrThrow(size);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
    return allocate(size);
}

void operator delete(void* memory) noexcept {
    release(memory);
}

void operator delete[](void* memory) noexcept {
    release(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    release(memory);
}

void operator delete[](void* memory, std::size_t) noexcept {
    release(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}

void operator delete[](void* memory, const std::nothrow_t&) noexcept {
    release(memory);
}
