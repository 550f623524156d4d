#pragma once

#include "Reader.h"
#include "dsmcc/Messages.h"

namespace dsmcc {

/// Taps behind their count of 8 bits.
std::vector<Tap> readTaps(Reader& reader);

/// An IOP::IOR.
Ior readIor(Reader& reader);

/// A serviceContextList, which says nothing.
void skipServiceContexts(Reader& reader);

/// Descriptors up to the first that does not fit.
std::vector<Descriptor> readDescriptors(Reader reader);

} // namespace dsmcc
