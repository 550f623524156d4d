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

#include <fmt/format.h>

namespace inspect {

namespace {

Fields describeStreamIdentifier(const Quor::TStreamIdentifierDescriptor& descriptor) {
    return {identifier("component_tag", descriptor.getComponentTag(), 2)};
}

constexpr CodeName STREAM_CONTENTS[] = {
    {1, "video"},
    {2, "audio"},
    {5, "H.264 video"},
    {6, "HE-AAC audio"},
};

/// What component_type says of video.
std::string videoFormat(unsigned streamContent, unsigned componentType) {
    constexpr unsigned VIDEO = 1;
    constexpr unsigned H264_VIDEO = 5;
    constexpr std::string_view LINES[] = {"480i", "", "", "", "", "", "", "", "", "", "480p", "1080i", "720p", "240p"};
    constexpr std::string_view ASPECTS[] = {"", "4:3", "16:9 with pan vectors", "16:9", "wider than 16:9"};
    const unsigned lines = componentType >> 4U;
    const unsigned aspect = componentType & 0x0FU;
    if ((streamContent != VIDEO && streamContent != H264_VIDEO) || lines >= std::size(LINES) || LINES[lines].empty() ||
        aspect >= std::size(ASPECTS) || ASPECTS[aspect].empty()) {
        return {};
    }
    return fmt::format("{} {}", LINES[lines], ASPECTS[aspect]);
}

Fields describeComponent(const Quor::TComponentDescriptor& descriptor) {
    return {code("stream_content", descriptor.getStreamContent(), STREAM_CONTENTS),
            identifier("component_type", descriptor.getComponentType(), 2)
                .reads(videoFormat(descriptor.getStreamContent(), descriptor.getComponentType())),
            identifier("stream_content_component_type", descriptor.getStreamContentComponentType(), 4),
            identifier("component_tag", descriptor.getComponentTag(), 2),
            isoCode("language_code", descriptor.getLanguageCode()),
            text("text", descriptor.getText())};
}

Fields describeCopyright(const Quor::TCopyrightDescriptor& descriptor) {
    return {number("hierarchical_level", descriptor.getHierarchicalLevel()),
            identifier("reference_pid", descriptor.getReferencePID(), 4)};
}

constexpr CodeName QUALITY_LEVELS[] = {
    {0, "low"},
    {1, "high"},
};

Fields describeHierarchicalTransmission(const Quor::THierarchicalTransmissionDescriptor& descriptor) {
    return {code("quality_level", descriptor.getQualityLevel(), QUALITY_LEVELS),
            identifier("reference_pid", descriptor.getReferencePID(), 4)};
}

using Quor::TDataComponentDescriptor;

constexpr CodeName DATA_COMPONENTS[] = {
    {TDataComponentDescriptor::COMPONENT_ID_GINGA_XML_BASE_MMEDIA_CODING, "XML-based multimedia coding"},
    {TDataComponentDescriptor::COMPONENT_ID_CAPTION_AND_SUPERIMPOSED, "captions and superimposed text"},
    {TDataComponentDescriptor::COMPONENT_ID_DATA_DOWNLOAD_SBTVD, "data download"},
    {TDataComponentDescriptor::COMPONENT_ID_OBJECT_CAROUSEL, "object carousel"},
    {TDataComponentDescriptor::COMPONENT_ID_CAPTION_1_SEG, "one-segment captions"},
    {TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_EXECUTING_ENGINE, "Ginga application engine"},
    {TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_INFORMATION_TABLE, "Ginga application information table"},
    {TDataComponentDescriptor::COMPONENT_ID_SBTVD_PROGRAM_INDEX_CONFIG, "programme index"},
};

Fields describeDataComponent(const TDataComponentDescriptor& descriptor) {
    return {identifier("data_component_id", descriptor.getDataComponentID(), 4).named(DATA_COMPONENTS),
            number("additional_data_size", descriptor.getAdditionalDataSize()).in("bytes"),
            bytes("additional_data", descriptor.getAdditionalData(), descriptor.getAdditionalDataSize())};
}

using Quor::TVideoDecodeControlDescriptor;

constexpr CodeName VIDEO_ENCODE_FORMATS[] = {
    {TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_1080P, "1080p"},
    {TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_1080I, "1080i"},
    {TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_720P, "720p"},
    {TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_480P, "480p"},
    {TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_480I, "480i"},
    {TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_240P, "240p"},
    {TVideoDecodeControlDescriptor::VIDEO_ENCODE_FORMAT_120P, "120p"},
};

Fields describeVideoDecodeControl(const TVideoDecodeControlDescriptor& descriptor) {
    return {flag("still_picture", descriptor.isStillPicture()),
            flag("sequence_end_code", descriptor.hasSequenceEndCode()),
            code("video_encode_format", descriptor.getVideoEncodeFormat(), VIDEO_ENCODE_FORMATS)};
}

constexpr CodeName AVC_PROFILES[] = {
    {66, "Baseline"}, {77, "Main"},        {88, "Extended"},    {100, "High"},
    {110, "High 10"}, {122, "High 4:2:2"}, {244, "High 4:4:4"},
};

Fields describeAvcVideo(const Quor::TAVCVideoDescriptor& descriptor) {
    const unsigned level = descriptor.getLevelIDC();
    return {code("profile_idc", descriptor.getProfileIDC(), AVC_PROFILES),
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

using Quor::TAACDescriptor;

constexpr CodeName AAC_PROFILES[] = {
    {TAACDescriptor::PROFILE_ACC_L1, "AAC level 1"},
    {TAACDescriptor::PROFILE_ACC_L2, "AAC level 2"},
    {TAACDescriptor::PROFILE_ACC_L4, "AAC level 4"},
    {TAACDescriptor::PROFILE_ACC_L5, "AAC level 5"},
    {TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L2, "HE-AAC level 2"},
    {TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L3, "HE-AAC level 3"},
    {TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L4, "HE-AAC level 4"},
    {TAACDescriptor::PROFILE_HIGH_EFFICIENCY_ACC_L5, "HE-AAC level 5"},
    {TAACDescriptor::PROFILE_NOT_SPECIFIED, "not specified"},
    {TAACDescriptor::PROFILE_NO_AUDIO_INFO, "no audio information"},
};

Fields describeAac(const TAACDescriptor& descriptor) {
    return {code("profile_and_level", descriptor.getProfileAndLevel(), AAC_PROFILES),
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
