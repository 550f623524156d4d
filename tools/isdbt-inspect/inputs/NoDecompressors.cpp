// For a build without the libraries.
#include "inputs/Decompressor.h"

namespace inspect {

std::unique_ptr<Decompressor> decompressorFor(const std::uint8_t* /*data*/, std::size_t /*size*/) {
    return nullptr;
}

} // namespace inspect
