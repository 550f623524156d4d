#pragma once

#include "describing/Field.h"

#include <string>
#include <vector>

/// What is said of a section.
struct Example {
    std::string table;
    inspect::Fields fields;
};

/// What is said of the example sections. @throws std::logic_error when the library rejects one.
std::vector<Example> examples();
