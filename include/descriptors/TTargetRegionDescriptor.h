#ifndef QUOR_TTARGET_REGION_DESCRIPTOR_H
#define QUOR_TTARGET_REGION_DESCRIPTOR_H

#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

namespace Quor {

/// Target region descriptor (ARIB STD-B10, tag 0xC6): the region that a program or stream is meant for.
class QUOR_ISDBT_API TTargetRegionDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xC6;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 1;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TTargetRegionDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TTargetRegionDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives length - 2. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(). May be
    ///                     null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TTargetRegionDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// region_spec_type, 0 to 255: how getSpecData() is to be read.
    QUOR_U16 getRegionSpecType() const { return m_iRegionSpecType; }

    /// The number of bytes of getSpecData(), kept in 8 bits.
    QUOR_U8 getSpecSize() const { return m_iSpecSize; }

    /// target_region_spec as it is on the wire, owned by the descriptor; null when there is none.
    QUOR_U8* getSpecData() const { return m_pSpec.get(); }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    QUOR_U16 m_iRegionSpecType = 0;
    QUOR_U8 m_iSpecSize = 0;
    detail::Array<QUOR_U8> m_pSpec{};
};

} // namespace Quor

#endif
