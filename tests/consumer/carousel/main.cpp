#include "dsmcc/Carousels.h"

#include <iostream>

int main() {
    dsmcc::Carousels carousels;
    const auto refusal = carousels.take({}, 0);
    std::cout << refusal->text << " at byte " << refusal->at << "\n";
    return carousels.carousels().empty() ? 0 : 1;
}
