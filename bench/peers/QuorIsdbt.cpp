#include "Crc32.h"
#include "Peer.h"

#include "descriptors/TCAIdentifierDescriptor.h"
#include "descriptors/TComponentDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TParentalRatingDescriptor.h"
#include "descriptors/TPartialReceptionDescriptor.h"
#include "descriptors/TServiceDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TStreamIdentifierDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"

#include <memory>

using namespace Quor;

namespace {

void add(Readout& readout, const TStreamIdentifierDescriptor& descriptor) {
    readout.addDescriptor(Kind::STREAM_IDENTIFIER, descriptor.getComponentTag());
}

void add(Readout& readout, const TComponentDescriptor& descriptor) {
    const QUOR_U32 content = QUOR_U32{descriptor.getStreamContent()} + descriptor.getComponentType();
    readout.addDescriptor(Kind::COMPONENT,
                          content + descriptor.getComponentTag() + letters(descriptor.getLanguageCode().data()));
}

void add(Readout& readout, const TCAIdentifierDescriptor& descriptor) {
    QUOR_U32 sum = 0;
    for (QUOR_U8 i = 0; i < descriptor.getCASystemIDCount(); ++i) {
        sum += descriptor.getCASystemIDs()[i];
    }
    readout.addDescriptor(Kind::CA_IDENTIFIER, sum);
}

void add(Readout& readout, const TParentalRatingDescriptor& descriptor) {
    QUOR_U32 sum = 0;
    for (QUOR_U8 i = 0; i < descriptor.size(); ++i) {
        const TParentalRatingDescriptorItem* const item = descriptor.get(i);
        sum += letters(item->getCountryCode().data()) + rated(item->getRating());
    }
    readout.addDescriptor(Kind::PARENTAL_RATING, sum);
}

void add(Readout& readout, const TServiceDescriptor& descriptor) {
    const std::string provider = descriptor.getServiceProviderName();
    const std::string service = descriptor.getServiceName();
    readout.addDescriptor(Kind::SERVICE, descriptor.getServiceType() + name(provider.data(), provider.size()) +
                                             name(service.data(), service.size()));
}

void add(Readout& readout, const TNetworkNameDescriptor& descriptor) {
    const std::string network = descriptor.getNetworkName();
    readout.addDescriptor(Kind::NETWORK_NAME, name(network.data(), network.size()));
}

void add(Readout& readout, const TLinkageDescriptor& descriptor) {
    const QUOR_U32 stream = QUOR_U32{descriptor.getTransportStreamID()} + descriptor.getOriginalNetworkID();
    readout.addDescriptor(Kind::LINKAGE, stream + descriptor.getServiceID() + descriptor.getLinkageType());
}

// An item has two bytes here, and three for the others: the sum over all bytes is the same.
void add(Readout& readout, const TServiceListDescriptor& descriptor) {
    QUOR_U32 sum = 0;
    const std::unique_ptr<std::list<QUOR_U8>> services(descriptor.getServiceIDs());
    for (const QUOR_U8 service : *services) {
        sum += QUOR_U32{service} + descriptor.get(service)->getServiceType();
    }
    readout.addDescriptor(Kind::SERVICE_LIST, sum);
}

void add(Readout& readout, const TTerrestrialDeliverySystemDescriptor& descriptor) {
    const QUOR_U32 transmission = QUOR_U32{descriptor.getGuardInterval()} + descriptor.getTransmissionMode();
    readout.addDescriptor(Kind::TERRESTRIAL_DELIVERY,
                          descriptor.getAreaCode() + transmission + descriptor.getFrequencyCounter());
}

void add(Readout& readout, const TPartialReceptionDescriptor& descriptor) {
    QUOR_U32 sum = 0;
    for (QUOR_U8 i = 0; i < descriptor.getServiceIDCount(); ++i) {
        sum += descriptor.getServiceIDs()[i];
    }
    readout.addDescriptor(Kind::PARTIAL_RECEPTION, sum);
}

void add(Readout& readout, const TTSInformationDescriptor& descriptor) {
    const std::string stream = descriptor.getTransportStreamName();
    QUOR_U32 sum = descriptor.getRemoteControlKeyID() + name(stream.data(), stream.size());
    for (QUOR_U8 i = 0; i < descriptor.getTransmissionTypeCount(); ++i) {
        const TTSInformationDescriptorItem* const type = descriptor.getTransmissionType(i);
        sum += type->getTransmissionTypeInfo();
        for (QUOR_U8 j = 0; j < type->getNumberOfServices(); ++j) {
            sum += type->getServices()[j];
        }
    }
    readout.addDescriptor(Kind::TS_INFORMATION, sum);
}

template <class Descriptor> void addIfPresent(Readout& readout, const Descriptor* descriptor) {
    if (descriptor != nullptr) {
        add(readout, *descriptor);
    }
}

QUOR_U32 versionOf(const TISDBTVersionedTable& table) {
    return versioned(table.getVersion(), table.getCurrentIndicator() != 0);
}

void add(Readout& readout, const TPATTable& pat) {
    readout.table = QUOR_U32{pat.getTransportStreamID()} + versionOf(pat);
    const std::unique_ptr<std::list<QUOR_U16>> programs(pat.getProgramNumbers());
    for (const QUOR_U16 program : *programs) {
        readout.addEntry(QUOR_U32{program} + pat.get(program)->getProgramMapPid());
    }
}

void add(Readout& readout, const TPMTTable& pmt) {
    readout.table = QUOR_U32{pmt.getProgramNumber()} + pmt.getPCRPID() + versionOf(pmt);
    addIfPresent(readout, pmt.getStreamIdentifierDescriptor());
    addIfPresent(readout, pmt.getComponentDescriptor());
    addIfPresent(readout, pmt.getCAIdentifierDescriptor());
    addIfPresent(readout, pmt.getParentalRatingDescriptor());
    for (QUOR_U8 i = 0; i < pmt.size(); ++i) {
        const TProgramMap* const stream = pmt.getProgramMap(i);
        readout.addEntry(QUOR_U32{stream->getStreamType()} + stream->getElementaryPID());
        addIfPresent(readout, stream->getStreamIdentifierDescriptor(0, nullptr));
        addIfPresent(readout, stream->getComponentDescriptor(0, nullptr));
        addIfPresent(readout, stream->getCAIdentifierDescriptor(0, nullptr));
        addIfPresent(readout, stream->getParentalRatingDescriptor(0, nullptr));
    }
}

void add(Readout& readout, const TSDTTable& sdt) {
    readout.table = QUOR_U32{sdt.getTransportStreamID()} + sdt.getOriginalNetworkID() + versionOf(sdt);
    const std::unique_ptr<std::list<QUOR_U16>> services(sdt.getServiceIDs());
    for (const QUOR_U16 id : *services) {
        const TServiceDescription* const service = sdt.getServiceDescription(id);
        readout.addEntry(QUOR_U32{id} + service->getRunningStatus() + service->getFreeCAMode() +
                         (service->hasEITSchedule() != 0 ? 1 : 0) + (service->hasEITPresentFollowing() != 0 ? 1 : 0));
        addIfPresent(readout, service->getServiceDescriptor());
        addIfPresent(readout, service->getCAIdentifierDescriptor());
    }
}

template <class Descriptors> void addNitDescriptors(Readout& readout, const Descriptors& holder) {
    addIfPresent(readout, holder.getNetworkNameDescriptor());
    addIfPresent(readout, holder.getServiceListDescriptor());
    addIfPresent(readout, holder.getLinkageDescriptor());
    addIfPresent(readout, holder.getTerrestrialDeliverySystemDescriptor());
    addIfPresent(readout, holder.getPartialReceptionDescriptor());
    addIfPresent(readout, holder.getTSInformationDescriptor());
}

void add(Readout& readout, const TNITTable& nit) {
    readout.table = QUOR_U32{nit.getNetworkID()} + versionOf(nit);
    addNitDescriptors(readout, nit);
    const std::unique_ptr<std::list<QUOR_U16>> streams(nit.getTransportStreamIDs());
    for (const QUOR_U16 id : *streams) {
        const TTransportStreamInfo* const stream = nit.getTransportStreamInfo(id);
        readout.addEntry(QUOR_U32{id} + stream->getOriginalNetworkID());
        addNitDescriptors(readout, *stream);
    }
}

// To parse is to decode everything: no descriptor is left for later.
template <class Table, class Out> bool decode(Out& out, QUOR_U8* section, QUOR_U32 size) {
    const std::unique_ptr<Table> table(Table::parse(section, size, 0, 0, nullptr, nullptr));
    if (!table) {
        return false;
    }
    out.read([&](Readout& readout) { add(readout, *table); });
    return true;
}

template <class Table, class Out> bool decodeAfterCrc32(Out& out, QUOR_U8* section, QUOR_U32 size) {
    return crc32IsRight(section, size) && decode<Table>(out, section, size);
}

template <class Table> constexpr auto plain = decoderOf<Unread, decode<Table>, decode<Table>>;
template <class Table> constexpr auto checked = decoderOf<Unread, decodeAfterCrc32<Table>, decodeAfterCrc32<Table>>;

} // namespace

Peer quorIsdbt() {
    return {plain<TPATTable>, plain<TPMTTable>, plain<TSDTTable>, plain<TNITTable>};
}

Peer quorIsdbtAfterCrc32() {
    return {checked<TPATTable>, checked<TPMTTable>, checked<TSDTTable>, checked<TNITTable>};
}
