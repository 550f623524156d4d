#ifndef QUOR_TISDBT_DESCRIPTOR_H
#define QUOR_TISDBT_DESCRIPTOR_H

#include "TISDBTDataHolder.h"

namespace Quor {

namespace detail {
class Descriptors;
class Family;
} // namespace detail

/// Base of every descriptor: the tag of the class and a view of the descriptor's bytes in the buffer that was parsed.
///
/// Every descriptor class has a static `parse` over the whole descriptor, from descriptor_tag on, whose length is
/// descriptor_length + 2. It returns a new object, which the caller owns and deletes, or null with the reason in an
/// error code. The bytes are never copied: getData() points into the caller's buffer.
class QUOR_ISDBT_API TISDBTDescriptor : public TISDBTDataHolder {
public:
    /// Bytes of descriptor_tag and descriptor_length.
    static constexpr QUOR_U32 COMMON_HEADER_LENGTH = 2;

    /// A view of the caller's bytes, which are not copied.
    /// @param descriptorTag the tag of the class.
    /// @param data          the descriptor, from its tag on.
    /// @param length        number of bytes.
    TISDBTDescriptor(QUOR_U8 descriptorTag, QUOR_U8* data, QUOR_U32 length)
        : TISDBTDataHolder(data, length, 0), m_iDescriptorTag(descriptorTag) {}
    ~TISDBTDescriptor() override;

    TISDBTDescriptor(const TISDBTDescriptor&) = delete;
    TISDBTDescriptor& operator=(const TISDBTDescriptor&) = delete;

    /// The tag of the class; it is not read from the bytes.
    QUOR_U8 getDescriptorTag() const { return m_iDescriptorTag; }

    /// Checks descriptor_tag and descriptor_length against the tag and the minimum of a class.
    /// @param data                    the descriptor, from its tag on.
    /// @param length                  number of bytes.
    /// @param errorCode               ERROR_OK or the reason of the failure (ERROR_INVALID_DATA,
    ///                                ERROR_INVALID_DESCRIPTOR_LENGTH, ERROR_INVALID_DESCRIPTOR_TAG). May be null.
    /// @param minimumDescriptorLength the smallest descriptor_length that the class accepts.
    /// @param expectedDescriptorTag   the tag of the class.
    /// @return whether the header is good.
    static bool parseCommonHeader(QUOR_U8* data, QUOR_U32 length, QUOR_U16* errorCode, QUOR_U8 minimumDescriptorLength,
                                  QUOR_U16 expectedDescriptorTag);

private:
    friend class detail::Descriptors;
    friend class detail::Family;

    QUOR_U8 m_iDescriptorTag;
    TISDBTDescriptor* m_pFormer = nullptr; ///< the one that its holder got before it
};

} // namespace Quor

#endif
