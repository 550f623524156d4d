#ifndef QUOR_TAPPLICATION_H
#define QUOR_TAPPLICATION_H

#include "TISDBTDataHolder.h"
#include "ait/TAITDescriptors.h"
#include "ait/TApplicationIdentifier.h"

#include <list>
#include <memory>
#include <string>

namespace Quor {

class TAITTable;
class TISDBTDescriptor;

namespace detail {
class Bytes;
class Outcome;
} // namespace detail

/// One interactive application of an application information table: its identifier, how the receiver is to control it,
/// and its own descriptors, each of which it can also take from the common ones of its table.
class QUOR_ISDBT_API TApplication : public TISDBTDataHolder {
public:
    /// @name Values of getApplicationType()
    /// @{
    static constexpr QUOR_U16 TYPE_JAVA = 1; ///< Ginga-J
    static constexpr QUOR_U16 TYPE_NCL = 9;  ///< Ginga-NCL
    /// @}

    /// @name Values of getControlCode()
    /// @{
    static constexpr QUOR_U8 CONTROLCODE_AUTOSTART = 1; ///< to be started as soon as its service is selected
    static constexpr QUOR_U8 CONTROLCODE_PRESENT = 2;   ///< may be started, by the user or by another application
    static constexpr QUOR_U8 CONTROLCODE_DESTROY = 3;   ///< to be ended in an orderly way
    static constexpr QUOR_U8 CONTROLCODE_KILL = 4;      ///< to be ended at once
    static constexpr QUOR_U8 CONTROLCODE_REMOTE = 6;    ///< belongs to another service
    static constexpr QUOR_U8 CONTROLCODE_UNBOUND = 7;   ///< may be kept for later, whichever service is selected
    /// @}

    /// An empty application without a table, over the caller's bytes, which are not copied.
    TApplication(QUOR_U8* sectionData, QUOR_U32 dataLength);

    /// A deep copy, without a table. It needs neither the source nor its table nor the section any more, except that
    /// getData() still points into the section.
    /// @param source  the application to copy; not null.
    /// @param inherit non-zero: the copy also gets copies of those descriptors that the source takes from its table.
    TApplication(TApplication* source, int inherit);

    ~TApplication() override;

    /// Parses one entry of the application loop.
    /// @param sectionData      the entry; it must outlive the use of getData(). With a @p dataLength of 6 to 8 it is
    ///                         the caller's duty that nine bytes can be read all the same.
    /// @param dataLength       bytes left in the section before its CRC_32.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param itemLength       receives the bytes of the entry: 9 and those of its descriptors. May be null.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA_LENGTH, ERROR_INVALID_ITEM or
    ///                         what a descriptor failed with, which is ERROR_OK for a transport protocol that is not
    ///                         supported. May be null.
    /// @return a new application, which the caller deletes, or null.
    static TApplication* parse(QUOR_U8* sectionData, QUOR_U32 dataLength, int parseDescriptors, QUOR_U32* itemLength,
                               QUOR_U16* errorCode);

    /// Sets the table that descriptors are inherited from; null for none. It is not owned and must outlive its use.
    void setParentAITTable(TAITTable* parent) { m_pParentAITTable = parent; }

    /// Sets what getApplicationType() returns; parsing a table sets its application_type.
    void setApplicationType(QUOR_U16 appType) { m_iApplicationType = appType; }

    /// The application's key, see TApplicationIdentifier::calculateHashID(); empty in an application that was not
    /// parsed.
    std::string getHashID() const { return m_sHashId; }

    /// organisation_id and application_id, owned by the application; null in one that was not parsed.
    TApplicationIdentifier* getApplicationIdentifier() const { return m_pAppIdentifier.get(); }

    /// application_control_code as received.
    QUOR_U8 getControlCode() const { return m_iControlCode; }

    /// application_type of the table; 0 until it is set.
    QUOR_U16 getApplicationType() const { return m_iApplicationType; }

    /// @name The application's descriptors
    /// Each is null when absent, and owned by the application, or by its table when it is inherited. With @p inherit
    /// non-zero the table's descriptor stands in for one that the application lacks; 1 is then written to
    /// @p inherited, which may be null and is otherwise left as it was.
    /// @{
    TApplicationDescriptor* getApplicationDescriptor(int inherit, int* inherited) const;
    TApplicationNameDescriptor* getApplicationNameDescriptor(int inherit, int* inherited) const;
    TApplicationIconDescriptor* getApplicationIconDescriptor(int inherit, int* inherited) const;
    TExternalApplicationAuthorizationDescriptor* getExternalApplicationAuthorizationDescriptor(int inherit,
                                                                                               int* inherited) const;
    TTransportProtocolDescriptor* getTransportProtocolDescriptor(int inherit, int* inherited) const;
    TIPSignalingDescriptor* getIPSignalingDescriptor(int inherit, int* inherited) const;
    TPrefetchDescriptor* getPrefetchDescriptor(int inherit, int* inherited) const;
    TDIILocationDescriptor* getDIILocationDescriptor(int inherit, int* inherited) const;
    TGingaApplicationDescriptor* getGingaApplicationDescriptor(int inherit, int* inherited) const;
    TGingaApplicationLocationDescriptor* getGingaApplicationLocationDescriptor(int inherit, int* inherited) const;
    /// @}

    /// The application's own descriptor of a tag, or null. The application keeps ownership.
    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const;

    /// The tags of the application's own descriptors in the order 0x00, 0x01, 0x0B, 0x05, 0x02, 0x11, 0x0C, 0x0D, 0x03
    /// or 0x06, 0x04 or 0x07: a new list, which the caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const;

private:
    friend class TAITTable;

    /// The parse of an entry that a table offers with a count that may differ from the bytes that there are.
    static TApplication* parseWithin(detail::Bytes bytes, QUOR_U32 dataLength, QUOR_U32* itemLength,
                                     QUOR_U16* errorCode);
    detail::Outcome decode(detail::Bytes bytes, QUOR_U32 dataLength, QUOR_U16* errorCode);

    const TAITDescriptors* commonDescriptors() const;

    TAITTable* m_pParentAITTable;
    std::string m_sHashId;
    QUOR_U8 m_iControlCode;
    QUOR_U16 m_iApplicationType;
    std::unique_ptr<TApplicationIdentifier> m_pAppIdentifier;
    TAITDescriptors m_descriptors;
};

} // namespace Quor

#endif
