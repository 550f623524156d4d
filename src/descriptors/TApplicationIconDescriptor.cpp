#include "descriptors/TApplicationIconDescriptor.h"

#include "detail/Family.h"
#include "detail/Log.h"
#include "detail/Strings.h"

namespace Quor {

namespace {

// descriptor_tag (8) | descriptor_length (8) | icon_locator_length (8) | icon_locator | icon_flags (16)
constexpr QUOR_U32 LOCATOR_AT = 2;
constexpr QUOR_U32 FLAGS_LENGTH = 2;

} // namespace

TApplicationIconDescriptor::TApplicationIconDescriptor(std::string iconLocator, QUOR_U16 iconFlags)
    : TISDBTDescriptor(DESCRIPTOR_TAG, nullptr, 0), m_sIconLocator(iconLocator), m_iIconFlags(iconFlags) {}

TApplicationIconDescriptor::TApplicationIconDescriptor(TApplicationIconDescriptor* source)
    : TApplicationIconDescriptor(source->m_sIconLocator, source->m_iIconFlags) {}

TApplicationIconDescriptor::~TApplicationIconDescriptor() = default;

TApplicationIconDescriptor* TApplicationIconDescriptor::parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                                              QUOR_U16* errorCode) {
    return detail::parseDescriptor<TApplicationIconDescriptor>(data, length, parsedLength, errorCode);
}

detail::Outcome TApplicationIconDescriptor::decode(const detail::Bytes& descriptor) {
    const detail::Bytes locator = descriptor.from(LOCATOR_AT);
    const QUOR_S32 taken = detail::readPrefixedText(locator, m_sIconLocator);
    if (taken < 0) {
        QUOR_ISDBT_LOG("%s: TApplicationIconDescriptor:: parse: ERROR: parsing Icon Locator. Aborting!",
                       detail::LOG_TAG);
        return detail::Outcome::failed(TISDBTTable::ERROR_INVALID_STRING);
    }
    const detail::Bytes flags = locator.from(static_cast<QUOR_U32>(taken));
    m_iIconFlags = flags.size() < FLAGS_LENGTH ? QUOR_U16{0} : flags.u16(0);
    return detail::Outcome::done(descriptor.size() & 0xFFU);
}

} // namespace Quor
