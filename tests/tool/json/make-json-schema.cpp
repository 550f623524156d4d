#include "tool/json/Schema.h"

#include <cstdio>
#include <exception>
#include <fstream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "Usage: make-json-schema FILE\n");
        return 2;
    }
    try {
        std::ofstream file(argv[1]);
        if (file << schemaText() << std::flush) {
            return 0;
        }
        std::fprintf(stderr, "make-json-schema: %s: cannot be written\n", argv[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make-json-schema: %s\n", error.what());
    }
    return 1;
}
