#ifndef QUOR_TAPPLICATION_H
#define QUOR_TAPPLICATION_H

#include "TISDBTDataHolder.h"
#include "ait/TApplicationIdentifier.h"
#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationIconDescriptor.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"
#include "descriptors/TIPSignalingDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "detail/Descriptors.h"
#include "detail/Owned.h"

#include <list>
#include <string>

namespace Quor {

class TAITTable;

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
    TApplication(QUOR_U8* data, QUOR_U32 length) : TISDBTDataHolder(data, length, 0) {}

    /// A deep copy, without a table. It needs neither the source nor its table nor the section any more, except that
    /// getData() still points into the section.
    /// @param source  the application to copy; not null.
    /// @param inherit non-zero: the copy also gets copies of those descriptors that the source takes from its table.
    TApplication(TApplication* source, int inherit);

    ~TApplication() override;

    TApplication(const TApplication&) = delete;
    TApplication& operator=(const TApplication&) = delete;

    /// Parses one entry of the application loop.
    /// @param data             the entry; it must outlive the use of getData(). With a @p length of 6 to 8 it is the
    ///                         caller's duty that nine bytes can be read all the same.
    /// @param length           bytes left in the section before its CRC_32.
    /// @param parseDescriptors ignored: descriptors are always parsed.
    /// @param parsedLength     receives the bytes of the entry: 9 and those of its descriptors. May be null.
    /// @param errorCode        ERROR_OK or the reason of a failure: ERROR_INVALID_DATA_LENGTH, ERROR_INVALID_ITEM or
    ///                         what a descriptor failed with, which is ERROR_OK for a transport protocol that is not
    ///                         supported. May be null.
    /// @return a new application, which the caller deletes, or null.
    static TApplication* parse(QUOR_U8* data, QUOR_U32 length, int parseDescriptors, QUOR_U32* parsedLength,
                               QUOR_U16* errorCode);

    /// Sets the table that descriptors are inherited from; null for none. It is not owned and must outlive its use.
    void setParentAITTable(TAITTable* parent);

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
    TApplicationDescriptor* getApplicationDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TApplicationDescriptor>(m_pCommon, inherit, inherited);
    }
    TApplicationNameDescriptor* getApplicationNameDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TApplicationNameDescriptor>(m_pCommon, inherit, inherited);
    }
    TApplicationIconDescriptor* getApplicationIconDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TApplicationIconDescriptor>(m_pCommon, inherit, inherited);
    }
    TExternalApplicationAuthorizationDescriptor* getExternalApplicationAuthorizationDescriptor(int inherit,
                                                                                               int* inherited) const {
        return m_descriptors.get<TExternalApplicationAuthorizationDescriptor>(m_pCommon, inherit, inherited);
    }
    TTransportProtocolDescriptor* getTransportProtocolDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TTransportProtocolDescriptor>(m_pCommon, inherit, inherited);
    }
    TIPSignalingDescriptor* getIPSignalingDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TIPSignalingDescriptor>(m_pCommon, inherit, inherited);
    }
    TPrefetchDescriptor* getPrefetchDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TPrefetchDescriptor>(m_pCommon, inherit, inherited);
    }
    TDIILocationDescriptor* getDIILocationDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TDIILocationDescriptor>(m_pCommon, inherit, inherited);
    }
    TGingaApplicationDescriptor* getGingaApplicationDescriptor(int inherit, int* inherited) const {
        return m_descriptors
            .get<TGingaJavaApplicationDescriptor, TGingaNCLApplicationDescriptor, TGingaApplicationDescriptor>(
                m_pCommon, inherit, inherited);
    }
    TGingaApplicationLocationDescriptor* getGingaApplicationLocationDescriptor(int inherit, int* inherited) const {
        return m_descriptors.get<TGingaJavaApplicationLocationDescriptor, TGingaNCLApplicationLocationDescriptor,
                                 TGingaApplicationLocationDescriptor>(m_pCommon, inherit, inherited);
    }
    /// @}

    /// The application's own descriptor of a tag, or null. The application keeps ownership.
    TISDBTDescriptor* getDescriptor(QUOR_U8 descriptorTag) const { return m_descriptors.find(descriptorTag); }

    /// The tags of the application's own descriptors in the order 0x00, 0x01, 0x0B, 0x05, 0x02, 0x11, 0x0C, 0x0D, 0x03
    /// or 0x06, 0x04 or 0x07: a new list, which the caller deletes.
    std::list<QUOR_U8>* getDescriptorTags() const;

private:
    friend struct detail::Access;

    /// @param stated the bytes left as the section counts them, which may be more than there are.
    detail::Outcome decode(const detail::Bytes& entry, QUOR_U32 stated);

    const detail::Descriptors* m_pCommon = nullptr; ///< the table's, or null
    detail::Text m_sHashId{};
    QUOR_U8 m_iControlCode = 0;
    QUOR_U16 m_iApplicationType = 0;
    std::unique_ptr<TApplicationIdentifier> m_pAppIdentifier{};
    detail::Descriptors m_descriptors{};
};

} // namespace Quor

#endif
