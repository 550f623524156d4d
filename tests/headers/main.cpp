#include "Constant.h"

#include "Constants.inc"

#include <cstdio>

int main() {
    int count = 0;
    for (const Constant* const ofHeader : constants) {
        for (const Constant* each = ofHeader; each->name != nullptr; ++each) {
            if (each->address == nullptr) {
                std::printf("%s has no address\n", each->name);
                return 1;
            }
            ++count;
        }
    }
    std::printf("%d constants\n", count);
    return count == 0 ? 1 : 0;
}
