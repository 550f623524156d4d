#pragma once

#include "descriptors/TAACDescriptor.h"
#include "descriptors/TAVCTimingAndHRDDescriptor.h"
#include "descriptors/TAVCVideoDescriptor.h"
#include "descriptors/TCAIdentifierDescriptor.h"
#include "descriptors/TCarouselCompatibleCompositeDescriptor.h"
#include "descriptors/TCarouselIdentifierDescriptor.h"
#include "descriptors/TComponentDescriptor.h"
#include "descriptors/TConditionalPlaybackDescriptor.h"
#include "descriptors/TContentAvailabilityDescriptor.h"
#include "descriptors/TCopyrightDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/THierarchicalTransmissionDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TParentalRatingDescriptor.h"
#include "descriptors/TStreamIdentifierDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTargetRegionDescriptor.h"
#include "descriptors/TVideoDecodeControlDescriptor.h"
#include "pmt/TPMTTable.h"
#include "pmt/TProgramMap.h"
#include "support/Kinds.h"
#include "support/Sections.h"

/// A kind of the program map table, with the accessor that can fall back on the table.
struct ProgramKind : DescriptorKind<Quor::TPMTTable, Quor::TProgramMap> {
    std::function<Quor::TISDBTDescriptor*(const Quor::TProgramMap&, int inherit, int* inherited)> ofStream;
};

inline void PrintTo(const ProgramKind& kind, std::ostream* out) {
    *out << kind.name;
}

template <class D>
ProgramKind programKind(const std::string& name, const std::string& good, QUOR_U32 minimum,
                        D* (Quor::TPMTTable::*ofTable)() const, D* (Quor::TProgramMap::*ofStream)(int, int*) const) {
    ProgramKind kind;
    if (minimum != 0) {
        static_cast<DescriptorKind<Quor::TPMTTable, Quor::TProgramMap>&>(kind) =
            kindWithMinimum<Quor::TPMTTable, Quor::TProgramMap>(name, good, minimum);
    }
    kind.name = name;
    kind.good = hex(good);
    kind.tag = kind.good.at(0);
    kind.ofTable = ofTable;
    kind.ofEntry = [ofStream](const Quor::TProgramMap& stream) { return (stream.*ofStream)(0, nullptr); };
    kind.ofStream = ofStream;
    return kind;
}

/// The kinds in the order of getDescriptorTags().
inline std::vector<ProgramKind> programKinds() {
    using P = Quor::TPMTTable;
    using S = Quor::TProgramMap;
    std::vector<ProgramKind> kinds{
        programKind("CAIdentifier", "53 02 0005", 2, &P::getCAIdentifierDescriptor, &S::getCAIdentifierDescriptor),
        programKind("Copyright", "0D 03 01E123", 3, &P::getCopyrightDescriptor, &S::getCopyrightDescriptor),
        programKind("CountryAvailability", "49 04 80 425241", 4, &P::getCountryAvailabilityDescriptor,
                    &S::getCountryAvailabilityDescriptor),
        programKind("Linkage", "4A 07 0001 0002 0003 01", 7, &P::getLinkageDescriptor, &S::getLinkageDescriptor),
        programKind("Component", "50 06 01 B1 10 706F72", 6, &P::getComponentDescriptor, &S::getComponentDescriptor),
        programKind("Mosaic", "51 01 11", 1, &P::getMosaicDescriptor, &S::getMosaicDescriptor),
        programKind("StreamIdentifier", "52 01 10", 1, &P::getStreamIdentifierDescriptor,
                    &S::getStreamIdentifierDescriptor),
        programKind("ParentalRating", "55 04 425241 05", 0, &P::getParentalRatingDescriptor,
                    &S::getParentalRatingDescriptor),
        programKind("HierarchicalTransmission", "C0 03 01E123", 3, &P::getHierarchicalTransmissionDescriptor,
                    &S::getHierarchicalTransmissionDescriptor),
        programKind("DigitalCopyControl", "C1 01 C0", 1, &P::getDigitalCopyControlDescriptor,
                    &S::getDigitalCopyControlDescriptor),
        programKind("EmergencyInformation", "FC 06 5C20 80 02 1230", 4, &P::getEmergencyInformationDescriptor,
                    &S::getEmergencyInformationDescriptor),
        programKind("DataComponent", "FD 03 0008 3D", 2, &P::getDataComponentDescriptor,
                    &S::getDataComponentDescriptor),
        programKind("SystemManagement", "FE 02 0301", 2, &P::getSystemManagementDescriptor,
                    &S::getSystemManagementDescriptor),
        programKind("TargetRegion", "C6 01 01", 1, &P::getTargetRegionDescriptor, &S::getTargetRegionDescriptor),
        programKind("VideoDecodeControl", "C8 01 FC", 1, &P::getVideoDecodeControlDescriptor,
                    &S::getVideoDecodeControlDescriptor),
        programKind("ContentAvailability", "DE 01 31", 1, &P::getContentAvailabilityDescriptor,
                    &S::getContentAvailabilityDescriptor),
        programKind("CarouselCompatibleComposite", "F7 04 00000000", 4, &P::getCarouselCompatibleCompositeDescriptor,
                    &S::getCarouselCompatibleCompositeDescriptor),
        programKind("ConditionalPlayback", "F8 04 0005 E123", 4, &P::getConditionalPlaybackDescriptor,
                    &S::getConditionalPlaybackDescriptor),
        programKind("AVCVideo", "28 04 42 E0 1E C0", 4, &P::getAVCVideoDescriptor, &S::getAVCVideoDescriptor),
        programKind("AVCTimingAndHRD", "2A 02 80 E0", 2, &P::getAVCTimingAndHRDDescriptor,
                    &S::getAVCTimingAndHRDDescriptor),
        programKind("AAC", "7C 02 28 00", 2, &P::getAACDescriptor, &S::getAACDescriptor),
        programKind("CarouselIdentifier", "13 04 0000002A", 4, &P::getCarouselIdentifierDescriptor,
                    &S::getCarouselIdentifierDescriptor)};
    for (ProgramKind& kind : kinds) {
        if (kind.tag == 0x55) { // its body may be empty
            kind.bad = hex("55 01 42");
            kind.badCode = Quor::TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH;
            kind.badLines = {"ISDBTUtils: TParentalRatingDescriptorItem::parse: Descriptor length not valid: 1. "
                             "Aborting!",
                             "ISDBTUtils: TParentalRatingDescriptor::parse: Invalid item. Aborting!"};
        }
        if (kind.tag == 0xF7) {
            kind.lines = {"ISDBTUtils: TCarouselCompatibleCompositeDescriptor::parse: TODO: Descriptor not "
                          "implemented yet. If you really need this descriptor, please contact support."};
        }
    }
    return kinds;
}

/// An elementary stream entry: stream_type | elementary_PID | ES_info_length | descriptors.
inline ByteVector stream(QUOR_U8 streamType, unsigned pid, const ByteVector& descriptors = {}) {
    return join({{streamType}, u16(pid, 0xE000), loopOf(descriptors)});
}

/// A program map section of PCR_PID 0x0100.
inline ByteVector pmt(const ByteVector& programDescriptors, const ByteVector& streams, const LongHeader& header = {}) {
    return longSection(0x02, header, join({hex("E100"), loopOf(programDescriptors), streams}));
}
