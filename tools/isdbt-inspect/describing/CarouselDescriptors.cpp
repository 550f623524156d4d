#include "DSMCCSection/TDSMCCSectionTable.h"
#include "describing/Catalogue.h"
#include "describing/Loops.h"
#include "describing/Readings.h"
#include "descriptors/TCarouselCompatibleCompositeDescriptor.h"
#include "descriptors/TCarouselIdentifierDescriptor.h"
#include "descriptors/TNPTReferenceDescriptor.h"
#include "descriptors/TStreamEventDescriptor.h"
#include "descriptors/TStreamModeDescriptor.h"
#include "naming/Names.h"

namespace inspect {

namespace {

Fields describeCarouselIdentifier(const Quor::TCarouselIdentifierDescriptor& descriptor) {
    return {identifier("carousel_id", descriptor.getCarouselID(), 8),
            number("format_id", descriptor.getFormatID()).reads("not decoded; it begins private_data"),
            number("module_version", descriptor.getModuleVersion()),
            identifier("module_id", descriptor.getModuleID(), 4),
            number("block_size", descriptor.getBlockSize()).in("bytes"),
            number("module_size", descriptor.getModuleSize()).in("bytes"),
            number("compression_method", descriptor.getCompressionMethod()),
            number("original_size", descriptor.getOriginalSize()).in("bytes"),
            number("time_out", descriptor.getTimeOut()).in("s"),
            number("object_key_length", descriptor.getObjectKeyLength()).in("bytes"),
            bytes("object_key_data", descriptor.getObjectKeyData(), descriptor.getObjectKeyLength()),
            number("private_data_size", descriptor.getPrivateDataSize()).in("bytes"),
            bytes("private_data", descriptor.getPrivateData(), descriptor.getPrivateDataSize())};
}

/// The library decodes nothing of it, so that its bytes are all there is to see.
Fields describeCarouselCompatibleComposite(const Quor::TCarouselCompatibleCompositeDescriptor& descriptor) {
    return {bytes("data", descriptor.getData(), descriptor.getDataLength())};
}

Fields describeNptReference(const Quor::TNPTReferenceDescriptor& descriptor) {
    return {flag("post_discontinuity", descriptor.isPostDiscontinuity()),
            identifier("dsmcc_content_id", descriptor.getDSMCCContentID(), 2),
            number("stc_reference_h", descriptor.getSTCReferenceH()),
            number("stc_reference_l", descriptor.getSTCReferenceL())
                .reads(ticks(descriptor.getSTCReferenceH(), descriptor.getSTCReferenceL())),
            number("npt_reference_h", descriptor.getNPTReferenceH()),
            number("npt_reference_l", descriptor.getNPTReferenceL())
                .reads(ticks(descriptor.getNPTReferenceH(), descriptor.getNPTReferenceL())),
            number("scale_numerator", descriptor.getScaleNumerator()),
            number("scale_denominator", descriptor.getScaleDenominator())};
}

Fields describeStreamMode(const Quor::TStreamModeDescriptor& descriptor) {
    return {code("stream_mode", descriptor.getStreamMode(), names::STREAM_MODE)};
}

Fields describeStreamEvent(const Quor::TStreamEventDescriptor& descriptor) {
    return {identifier("event_id", descriptor.getEventID(), 4), number("event_npt_h", descriptor.getEventNPTH()),
            number("event_npt_l", descriptor.getEventNPTL())
                .reads(ticks(descriptor.getEventNPTH(), descriptor.getEventNPTL())),
            number("private_data_size", descriptor.getPrivateDataSize()).in("bytes"),
            bytes("private_data", descriptor.getPrivateData(), descriptor.getPrivateDataSize())};
}

Fields describeDsmccSection(const Quor::TDSMCCSectionTable& section) {
    Fields fields{identifier("data_event_id", section.getDataEventID(), 1),
                  identifier("event_msg_group_id", section.getEventMsgGroupID(), 3)};
    appendDescriptors(fields, section);
    Loops(section).appendLeftOut(fields);
    return fields;
}

} // namespace

void addCarouselDescriptors(Catalogue& catalogue) {
    catalogue.addTable<describeDsmccSection>();
    catalogue.addDescriptor<describeCarouselIdentifier>("carousel_identifier_descriptor", {PMT});
    catalogue.addDescriptor<describeCarouselCompatibleComposite>("carousel_compatible_composite_descriptor", {PMT});
    catalogue.addDescriptor<describeNptReference>("npt_reference_descriptor", {DSMCC_STREAM_DESCRIPTORS});
    catalogue.addDescriptor<describeStreamMode>("stream_mode_descriptor", {DSMCC_STREAM_DESCRIPTORS});
    catalogue.addDescriptor<describeStreamEvent>("stream_event_descriptor", {DSMCC_STREAM_DESCRIPTORS});
}

} // namespace inspect
