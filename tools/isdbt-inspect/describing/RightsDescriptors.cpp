#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Readings.h"
#include "descriptors/TCAIdentifierDescriptor.h"
#include "descriptors/TConditionalPlaybackDescriptor.h"
#include "descriptors/TContentAvailabilityDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TParentalRatingDescriptor.h"
#include "descriptors/TTargetRegionDescriptor.h"
#include "naming/Names.h"

#include <fmt/format.h>

namespace inspect {

namespace {

Fields describeCaIdentifier(const Quor::TCAIdentifierDescriptor& descriptor) {
    return {number("ca_system_id_count", descriptor.getCASystemIDCount()),
            numbers("ca_system_ids", descriptor.getCASystemIDs(), descriptor.getCASystemIDCount(), 4)};
}

/// The fields that the descriptor has in common with its items.
template <class Rule> Field recordingControl(const Rule& rule) {
    return code("digital_recording_control_data", rule.getDigitalRecordingControlData(),
                names::DIGITAL_RECORDING_CONTROL);
}

template <class Rule> Field copyControlType(const Rule& rule) {
    return code("copy_control_type", rule.getCopyControlType(), names::COPY_CONTROL_TYPE);
}

template <class Rule> Field maximumBitrate(const Rule& rule) {
    if (!rule.hasMaximumBitrate()) {
        return absent("maximum_bitrate");
    }
    const unsigned quarters = rule.getMaximumBitrate();
    return number("maximum_bitrate", quarters).in("x 0.25 Mbit/s").reads(fmt::format("{:.2f} Mbit/s", quarters * 0.25));
}

Field describeCopyControlItem(const Quor::TDigitalCopyControlDescriptorItem& item) {
    return object("", {recordingControl(item), copyControlType(item),
                       number("aps_control_data", item.getAPSControlData()), maximumBitrate(item)});
}

Fields describeDigitalCopyControl(const Quor::TDigitalCopyControlDescriptor& descriptor) {
    return {recordingControl(descriptor), flag("component_control", descriptor.hasComponentControl()),
            copyControlType(descriptor),  number("aps_control_data", descriptor.getAPSControlData()),
            maximumBitrate(descriptor),   items(descriptor, describeCopyControlItem)};
}

Fields describeContentAvailability(const Quor::TContentAvailabilityDescriptor& descriptor) {
    return {flag("image_constrained", descriptor.isImageConstrained()),
            flag("retention_allowed", descriptor.isRetentionAllowed()),
            code("retention_state", descriptor.getRetentionState(), names::RETENTION_STATE),
            flag("encryption_mode_enabled", descriptor.isEncryptionModeEnabled())};
}

Field describeRating(const Quor::TParentalRatingDescriptorItem& item) {
    const std::string country = item.getCountryCode();
    return object("", {isoCode("country_code", country),
                       identifier("rating", item.getRating(), 2).reads(parentalRating(country, item.getRating()))});
}

Fields describeParentalRating(const Quor::TParentalRatingDescriptor& descriptor) {
    return {items(descriptor, describeRating)};
}

Fields describeTargetRegion(const Quor::TTargetRegionDescriptor& descriptor) {
    return {number("region_spec_type", descriptor.getRegionSpecType()),
            number("spec_size", descriptor.getSpecSize()).in("bytes"),
            bytes("spec_data", descriptor.getSpecData(), descriptor.getSpecSize())};
}

Fields describeConditionalPlayback(const Quor::TConditionalPlaybackDescriptor& descriptor) {
    return {identifier("ca_system_id", descriptor.getCASystemID(), 4), identifier("ca_pid", descriptor.getCAPID(), 4),
            number("private_data_size", descriptor.getPrivateDataSize()).in("bytes"),
            bytes("private_data", descriptor.getPrivateData(), descriptor.getPrivateDataSize())};
}

} // namespace

void addRightsDescriptors(Catalogue& catalogue) {
    catalogue.addDescriptor<describeCaIdentifier>("ca_identifier_descriptor", {PMT, SDT});
    catalogue.addDescriptor<describeDigitalCopyControl>("digital_copy_control_descriptor", {PMT, SDT});
    catalogue.addDescriptor<describeContentAvailability>("content_availability_descriptor", {PMT, SDT});
    catalogue.addDescriptor<describeParentalRating>("parental_rating_descriptor", {PMT});
    catalogue.addDescriptor<describeTargetRegion>("target_region_descriptor", {PMT});
    catalogue.addDescriptor<describeConditionalPlayback>("conditional_playback_descriptor", {PMT});
}

} // namespace inspect
