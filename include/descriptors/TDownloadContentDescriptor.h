#ifndef QUOR_TDOWNLOAD_CONTENT_DESCRIPTOR_H
#define QUOR_TDOWNLOAD_CONTENT_DESCRIPTOR_H

#include "descriptors/TCompatibilityDescriptor.h"
#include "descriptors/TDownloadContentDescriptorItem.h"
#include "descriptors/TISDBTDescriptor.h"
#include "detail/Owned.h"

#include <string>

namespace Quor {

namespace detail {
class Bytes;
class Outcome;
} // namespace detail

/// Download content descriptor (ARIB STD-B21, tag 0xC9, in the software download trigger table): one component that
/// receivers can download, and where in the data carousel it is.
class QUOR_ISDBT_API TDownloadContentDescriptor : public TISDBTDescriptor {
public:
    static constexpr U8 DESCRIPTOR_TAG = 0xC9;
    static constexpr QUOR_U32 MINIMUM_DESCRIPTOR_LENGTH = 18;

    /// An empty descriptor over the caller's bytes, which are not copied.
    TDownloadContentDescriptor(QUOR_U8* data, QUOR_U32 length) : TISDBTDescriptor(DESCRIPTOR_TAG, data, length) {}
    ~TDownloadContentDescriptor() override;

    /// Parses one descriptor.
    /// @param data         the descriptor, from its tag on; it must outlive the use of getData().
    /// @param length       descriptor_length + 2.
    /// @param parsedLength receives the bytes of the body that were used. May be null.
    /// @param errorCode    ERROR_OK or the reason of a failure: those of TISDBTDescriptor::parseCommonHeader(),
    ///                     ERROR_INVALID_DATA_LENGTH or ERROR_INVALID_ITEM for a bad compatibility descriptor or module
    ///                     list, ERROR_INVALID_STRING for bad private data, language code or text. May be null.
    /// @return a new descriptor, which the caller deletes, or null.
    static TDownloadContentDescriptor* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength,
                                             QUOR_U16* errorCode);

    /// reboot: 1 when the receiver has to restart after the download, else 0.
    QUOR_U8 getReboot() const { return m_iReboot; }

    /// add_on: 1 when the component adds to what the receiver has, 0 when it replaces it.
    QUOR_U8 getAddOn() const { return m_iAddOn; }

    /// compatibility_flag: 1 when getCompatibilityDescriptor() is there, else 0.
    QUOR_U8 getCompatibilityFlag() const { return m_iCompatibilityFlag; }

    /// module_info_flag: 1 when there is a list of modules, which may be empty; else 0.
    QUOR_U8 getModuleInfoFlag() const { return m_iModuleInfoFlag; }

    /// text_info_flag: 1 when language code and text are there, else 0.
    QUOR_U8 getTextInfoFlag() const { return m_iTextInfoFlag; }

    /// component_size in bytes.
    QUOR_U32 getComponentSize() const { return m_iComponentSize; }

    /// download_id of the data carousel.
    QUOR_U32 getDownloadID() const { return m_iDownloadID; }

    /// time_out_value_DII in milliseconds.
    QUOR_U32 getTimeOutValueDII() const { return m_iTimeOutValueDII; }

    /// leak_rate, 22 bits, in units of 50 bytes per second.
    QUOR_U32 getLeakRate() const { return m_iLeakRate; }

    /// component_tag of the stream that carries the data carousel.
    QUOR_U8 getComponentTag() const { return m_iComponentTag; }

    /// The receivers that the component is made for, owned by the descriptor; null when there is no such restriction.
    TCompatibilityDescriptor* getCompatibilityDescriptor() const { return m_pCompatibilityDesc.get(); }

    /// The number of modules.
    QUOR_U32 getDownloadContentDescriptorItemSize() const { return m_pItems.size(); }

    /// The module at a position in wire order, owned by the descriptor; null past the end.
    TDownloadContentDescriptorItem* getDownloadContentDescriptorItem(QUOR_U8 index) const {
        return detail::at(m_pItems, index);
    }

    /// Appends a module, which the descriptor owns from now on.
    void addDownloadContentDescriptorItem(TDownloadContentDescriptorItem* item);

    /// Removes and deletes the module at a position. @return whether there was one.
    QUOR_BOOL removeDownloadContentDescriptorItem(QUOR_U8 index);

    /// private_data_length: the bytes of getPrivateData().
    QUOR_U8 getPrivateDataLength() const { return m_iPrivateDataLength; }

    /// private_data, owned by the descriptor; null when its length is 0.
    QUOR_U8* getPrivateData() const { return m_iPrivateData.get(); }

    /// ISO_639_language_code of the text, three letters; empty without text_info_flag.
    std::string getLanguageCode() const { return m_sLanguageCode; }

    /// text as it is on the wire; empty without text_info_flag.
    std::string getText() const { return m_sText; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& descriptor);

    void decodeFixed(const detail::Bytes& descriptor);
    detail::Outcome decodeCompatibility(detail::Bytes& left);
    detail::Outcome decodeModules(detail::Bytes& left);
    detail::Outcome decodePrivateData(detail::Bytes& left);
    detail::Outcome decodeText(detail::Bytes& left);

    QUOR_U8 m_iReboot = 0;
    QUOR_U8 m_iAddOn = 0;
    QUOR_U8 m_iCompatibilityFlag = 0;
    QUOR_U8 m_iModuleInfoFlag = 0;
    QUOR_U8 m_iTextInfoFlag = 0;
    QUOR_U32 m_iComponentSize = 0;
    QUOR_U32 m_iDownloadID = 0;
    QUOR_U32 m_iTimeOutValueDII = 0;
    QUOR_U32 m_iLeakRate = 0;
    QUOR_U8 m_iComponentTag = 0;
    QUOR_U8 m_iPrivateDataLength = 0;
    detail::Array<QUOR_U8> m_iPrivateData{};
    detail::Text m_sLanguageCode{};
    detail::Text m_sText{};
    std::unique_ptr<TCompatibilityDescriptor> m_pCompatibilityDesc{};
    detail::Items<TDownloadContentDescriptorItem> m_pItems{};
};

} // namespace Quor

#endif
