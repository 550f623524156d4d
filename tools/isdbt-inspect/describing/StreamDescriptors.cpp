#include "describing/Catalogue.h"
#include "describing/Readings.h"
#include "descriptors/TAACDescriptor.h"
#include "descriptors/TAVCTimingAndHRDDescriptor.h"
#include "descriptors/TAVCVideoDescriptor.h"
#include "descriptors/TComponentDescriptor.h"
#include "descriptors/TCopyrightDescriptor.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "descriptors/THierarchicalTransmissionDescriptor.h"
#include "descriptors/TStreamIdentifierDescriptor.h"
#include "descriptors/TVideoDecodeControlDescriptor.h"
#include "naming/Names.h"

#include <fmt/format.h>

namespace inspect {

namespace {

Fields describeStreamIdentifier(const Quor::TStreamIdentifierDescriptor& descriptor) {
    return {identifier("component_tag", descriptor.getComponentTag(), 2)};
}

Fields describeComponent(const Quor::TComponentDescriptor& descriptor) {
    return {code("stream_content", descriptor.getStreamContent(), names::STREAM_CONTENT),
            identifier("component_type", descriptor.getComponentType(), 2)
                .reads(names::COMPONENT_TYPE.of(descriptor.getStreamContentComponentType())),
            identifier("stream_content_component_type", descriptor.getStreamContentComponentType(), 4),
            identifier("component_tag", descriptor.getComponentTag(), 2),
            isoCode("language_code", descriptor.getLanguageCode()),
            text("text", descriptor.getText())};
}

Fields describeCopyright(const Quor::TCopyrightDescriptor& descriptor) {
    return {number("hierarchical_level", descriptor.getHierarchicalLevel()),
            identifier("reference_pid", descriptor.getReferencePID(), 4)};
}

Fields describeHierarchicalTransmission(const Quor::THierarchicalTransmissionDescriptor& descriptor) {
    return {code("quality_level", descriptor.getQualityLevel(), names::QUALITY_LEVEL),
            identifier("reference_pid", descriptor.getReferencePID(), 4)};
}

Fields describeDataComponent(const Quor::TDataComponentDescriptor& descriptor) {
    return {identifier("data_component_id", descriptor.getDataComponentID(), 4).named(names::DATA_COMPONENT_ID),
            number("additional_data_size", descriptor.getAdditionalDataSize()).in("bytes"),
            bytes("additional_data", descriptor.getAdditionalData(), descriptor.getAdditionalDataSize())};
}

Fields describeVideoDecodeControl(const Quor::TVideoDecodeControlDescriptor& descriptor) {
    return {flag("still_picture", descriptor.isStillPicture()),
            flag("sequence_end_code", descriptor.hasSequenceEndCode()),
            code("video_encode_format", descriptor.getVideoEncodeFormat(), names::VIDEO_ENCODE_FORMAT)};
}

Fields describeAvcVideo(const Quor::TAVCVideoDescriptor& descriptor) {
    const unsigned level = descriptor.getLevelIDC();
    return {code("profile_idc", descriptor.getProfileIDC(), names::AVC_PROFILE),
            flag("constraint_set0_flag", descriptor.getConstraintSet0Flag()),
            flag("constraint_set1_flag", descriptor.getConstraintSet1Flag()),
            flag("constraint_set2_flag", descriptor.getConstraintSet2Flag()),
            identifier("avc_compatible_flags", descriptor.getAVCCompatibleFlags(), 2),
            number("level_idc", level).reads(fmt::format("level {}.{}", level / 10, level % 10)),
            flag("avc_still_present", descriptor.isAVCStillPresent()),
            flag("avc_24_hour_picture_flag", descriptor.getAVC24HourPictureFlag())};
}

Fields describeAvcTimingAndHrd(const Quor::TAVCTimingAndHRDDescriptor& descriptor) {
    return {flag("hrd_management_valid", descriptor.isHRDManagementValid()),
            flag("picture_timing_info_present", descriptor.isPictureTimingInfoPresent()),
            flag("90khz_flag", descriptor.is90kHzFlag()),
            number("n", descriptor.getN()),
            number("k", descriptor.getK()),
            number("num_units_in_tick", descriptor.getNumUnitsInTick()),
            flag("fixed_frame_rate_flag", descriptor.isFixedFrameRateFlag()),
            flag("temporal_poc_flag", descriptor.isTemporalPOCFlag()),
            flag("picture_to_display_conversion_flag", descriptor.isPictureToDisplayConversionFlag())};
}

Fields describeAac(const Quor::TAACDescriptor& descriptor) {
    return {code("profile_and_level", descriptor.getProfileAndLevel(), names::AAC_PROFILE),
            descriptor.hasAACType() ? identifier("aac_type", descriptor.getAACType(), 2) : absent("aac_type"),
            number("additional_info_size", descriptor.getAdditionalInfoSize()).in("bytes"),
            bytes("additional_info", descriptor.getAdditionalInfo(), descriptor.getAdditionalInfoSize())};
}

} // namespace

void addStreamDescriptors(Catalogue& catalogue) {
    catalogue.addDescriptor<describeStreamIdentifier>("stream_identifier_descriptor", {PMT});
    catalogue.addDescriptor<describeComponent>("component_descriptor", {PMT});
    catalogue.addDescriptor<describeCopyright>("copyright_descriptor", {PMT});
    catalogue.addDescriptor<describeHierarchicalTransmission>("hierarchical_transmission_descriptor", {PMT});
    catalogue.addDescriptor<describeDataComponent>("data_component_descriptor", {PMT});
    catalogue.addDescriptor<describeVideoDecodeControl>("video_decode_control_descriptor", {PMT});
    catalogue.addDescriptor<describeAvcVideo>("avc_video_descriptor", {PMT});
    catalogue.addDescriptor<describeAvcTimingAndHrd>("avc_timing_and_hrd_descriptor", {PMT});
    catalogue.addDescriptor<describeAac>("aac_descriptor", {PMT});
}

} // namespace inspect
