#pragma once

#include "support/Bytes.h"

#include <string>

/// SHA-256 in hexadecimal digits.
std::string sha256(const ByteVector& bytes);
