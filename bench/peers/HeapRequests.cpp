#include "Peer.h"

#include <cstdio>

// What each library asks of the heap to decode a section. A program of its own, so that no count slows down what is
// timed: the dynamic linker finds the executable's malloc() before that of the C library, for the calls of all
// libraries.

namespace {

std::size_t requests = 0;

} // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);

[[gnu::visibility("default")]] void* malloc(std::size_t size) {
    ++requests;
    return __libc_malloc(size);
}

[[gnu::visibility("default")]] void* calloc(std::size_t count, std::size_t size) {
    ++requests;
    return __libc_calloc(count, size);
}

[[gnu::visibility("default")]] void* realloc(void* memory, std::size_t size) {
    ++requests;
    return __libc_realloc(memory, size);
}
}

int main() {
    std::printf("%-*s %27s\n", NAME_WIDTH, "", "heap requests per section");
    for (const Candidate& candidate : CANDIDATES) {
        std::printf("%-*s", NAME_WIDTH, candidate.name);
        if (candidate.make == nullptr) {
            std::printf("  not installed\n");
            continue;
        }
        const Peer peer = candidate.make();
        for (std::size_t table = 0; table < TABLES.size(); ++table) {
            const Decoder decoder = peer[table](fourServices(TABLES[table]));
            decoder.decode(); // the first section may make a library prepare what it needs for good
            const std::size_t before = requests;
            decoder.decode();
            std::printf(" %6zu", requests - before);
        }
        std::printf("\n");
    }
    return 0;
}
