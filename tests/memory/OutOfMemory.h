#pragma once

/// While it lives, this thread can allocate @p allowed times and then gets std::bad_alloc.
class OutOfMemory {
public:
    explicit OutOfMemory(int allowed);
    ~OutOfMemory();
    OutOfMemory(const OutOfMemory&) = delete;
    OutOfMemory& operator=(const OutOfMemory&) = delete;
};

/// How many allocations of this thread are not freed yet.
int allocationsAlive();
