#pragma once

#include "descriptors/TISDBTDescriptor.h"

#include <cstdint>
#include <memory>
#include <string_view>

namespace inspect {

/// A descriptor that the library has a class for.
struct DescriptorKind {
    std::string_view name;

    /// @param data      the descriptor, from its tag on
    /// @param length    all its bytes
    /// @param errorCode what the library says to it
    /// @return null when the library refuses it; refers to the bytes
    std::unique_ptr<Quor::TISDBTDescriptor> (*parse)(QUOR_U8* data, QUOR_U32 length, QUOR_U16* errorCode);
};

/// The kind of a tag in the sections of a table; null when the library skips it.
const DescriptorKind* knownDescriptor(std::uint8_t tableId, std::uint8_t tag);

} // namespace inspect
