#pragma once

#include "descriptors/TBouquetNameDescriptor.h"
#include "descriptors/TCAIdentifierDescriptor.h"
#include "descriptors/TContentAvailabilityDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TLogoTransmissionDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TNVODReferenceDescriptor.h"
#include "descriptors/TServiceDescriptor.h"
#include "descriptors/TTimeShiftedServiceDescriptor.h"
#include "sdt/TSDTTable.h"
#include "sdt/TServiceDescription.h"
#include "support/Kinds.h"
#include "support/Sections.h"

using ServiceKind = DescriptorKind<Quor::TSDTTable, Quor::TServiceDescription>;

template <class D>
ServiceKind serviceKind(const std::string& name, const std::string& good, QUOR_U32 minimum,
                        D* (Quor::TServiceDescription::*ofEntry)() const) {
    ServiceKind kind = kindWithMinimum<Quor::TSDTTable, Quor::TServiceDescription>(name, good, minimum);
    kind.ofEntry = ofEntry;
    return kind;
}

/// The kinds in the order of getDescriptorTags().
inline std::vector<ServiceKind> serviceKinds() {
    using S = Quor::TServiceDescription;
    return {serviceKind("Service", "48 05 01 01 41 01 42", 3, &S::getServiceDescriptor),
            serviceKind("BouquetName", "47 03 474C42", 1, &S::getBouquetNameDescriptor),
            serviceKind("CountryAvailability", "49 04 80 425241", 4, &S::getCountryAvailabilityDescriptor),
            serviceKind("Linkage", "4A 07 0001 0002 0003 01", 7, &S::getLinkageDescriptor),
            serviceKind("DigitalCopyControl", "C1 01 C0", 1, &S::getDigitalCopyControlDescriptor),
            serviceKind("LogoTransmission", "CF 03 02 0123", 1, &S::getLogoTransmissionDescriptor),
            serviceKind("ContentAvailability", "DE 01 31", 1, &S::getContentAvailabilityDescriptor),
            serviceKind("NVODReference", "4B 06 0001 0002 0003", 6, &S::getNVODReferenceDescriptor),
            serviceKind("TimeShiftedService", "4C 02 5C20", 2, &S::getTimeShiftedServiceDescriptor),
            serviceKind("Mosaic", "51 01 11", 1, &S::getMosaicDescriptor),
            serviceKind("CAIdentifier", "53 02 0005", 2, &S::getCAIdentifierDescriptor)};
}

/// A service entry: service_id | EIT flags | running_status, free_CA_mode, descriptors_loop_length | descriptors.
inline ByteVector serviceEntry(unsigned serviceId, const ByteVector& descriptors = {}) {
    return join({u16(serviceId), hex("FD"), u16(static_cast<unsigned>(descriptors.size()), 0x8000), descriptors});
}

/// A service description section of original_network_id 0x7ED4.
inline ByteVector sdt(const ByteVector& services, const LongHeader& header = {}) {
    return longSection(0x42, header, join({hex("7ED4 FF"), services}));
}
