#include "descriptors/TGingaApplicationLocationDescriptor.h"

#include "detail/Log.h"
#include "detail/Parse.h"
#include "detail/Strings.h"

namespace Quor {

namespace {

// base_directory_length (8) | base_directory | classpath_extension_length (8) | classpath_extension | initial_class
constexpr QUOR_U32 LENGTH_LENGTH = 1;

detail::Outcome tooShort(QUOR_U32 left, QUOR_U32 needed) {
    QUOR_ISDBT_LOG("%s: TGingaApplicationLocationDescriptor::parse: Longer data length is required: %u < %u. Aborting!",
                   detail::LOG_TAG, left, needed);
    return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
}

/// Copies a field of a known length. A field without bytes leaves the string as it is.
bool readField(const detail::Bytes& left, QUOR_U32 length, detail::Text& field) {
    return length == 0 || detail::readText(left, length, field) == static_cast<QUOR_S32>(length);
}

} // namespace

TGingaApplicationLocationDescriptor::TGingaApplicationLocationDescriptor(QUOR_U8 tag, std::string baseDirectory,
                                                                         std::string classpathExtension,
                                                                         std::string initialClass)
    : TISDBTDescriptor(tag, nullptr, 0), m_sBaseDirectory(baseDirectory), m_sClasspathExt(classpathExtension),
      m_sInitialClass(initialClass) {}

TGingaApplicationLocationDescriptor::TGingaApplicationLocationDescriptor(TGingaApplicationLocationDescriptor* source)
    : TGingaApplicationLocationDescriptor(source->getDescriptorTag(), source->m_sBaseDirectory, source->m_sClasspathExt,
                                          source->m_sInitialClass) {}

TGingaApplicationLocationDescriptor::~TGingaApplicationLocationDescriptor() = default;

QUOR_BOOL TGingaApplicationLocationDescriptor::parseData(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                         QUOR_U16* errorCode) {
    return detail::parseBody(*this, data, length, parsedLength, errorCode);
}

detail::Outcome TGingaApplicationLocationDescriptor::decode(const detail::Bytes& descriptor) {
    return decodeBody(descriptor.from(COMMON_HEADER_LENGTH));
}

detail::Outcome TGingaApplicationLocationDescriptor::decodeBody(const detail::Bytes& body) {
    if (body.size() < MINIMUM_DESCRIPTOR_LENGTH) {
        QUOR_ISDBT_LOG("%s: TGingaApplicationLocationDescriptor::parse: Item length not valid: %u. Aborting!",
                       detail::LOG_TAG, body.size());
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    }
    const QUOR_U8 baseLength = body.u8(0);
    detail::Bytes left = body.from(LENGTH_LENGTH);
    if (left.size() < baseLength) {
        return tooShort(left.size(), baseLength);
    }
    if (!readField(left, baseLength, m_sBaseDirectory)) {
        QUOR_ISDBT_LOG("%s: TGingaApplicationLocationDescriptor:: parse: ERROR: parsing Base Directory. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    left = left.from(baseLength);
    if (left.empty()) {
        return tooShort(0, LENGTH_LENGTH);
    }
    const QUOR_U8 classpathLength = left.u8(0);
    left = left.from(LENGTH_LENGTH);
    if (left.size() < classpathLength) {
        return tooShort(left.size(), classpathLength);
    }
    if (!readField(left, classpathLength, m_sClasspathExt)) {
        QUOR_ISDBT_LOG("%s: TGingaApplicationLocationDescriptor:: parse: ERROR: parsing Classpath Extension. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    left = left.from(classpathLength);
    if (!readField(left, left.size(), m_sInitialClass)) {
        QUOR_ISDBT_LOG("%s: TGingaApplicationLocationDescriptor:: parse: ERROR: parsing Initial Class. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    // Quirk: the classpath counts once more in place of the initial class.
    const QUOR_U32 again = left.empty() ? 0 : classpathLength;
    return detail::Outcome::done(QUOR_U32{baseLength} + classpathLength + again);
}

} // namespace Quor
