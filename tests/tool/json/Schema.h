#pragma once

#include <string>

/// The schema of a line of isdbt-inspect --json. The objects themselves are written down in frame.json; what stands in
/// their fields comes from the descriptions of the example sections.
std::string schemaText();
