#include "Station.h"
#include "Tables.h"

namespace sample {

namespace {

constexpr std::uint8_t PAT_TABLE_ID = 0x00;
constexpr std::uint8_t PMT_TABLE_ID = 0x02;

constexpr std::uint8_t CAROUSEL_IDENTIFIER_DESCRIPTOR = 0x13;
constexpr std::uint8_t ASSOCIATION_TAG_DESCRIPTOR = 0x14;
constexpr std::uint8_t AVC_VIDEO_DESCRIPTOR = 0x28;
constexpr std::uint8_t STREAM_IDENTIFIER_DESCRIPTOR = 0x52;
constexpr std::uint8_t PARENTAL_RATING_DESCRIPTOR = 0x55;
constexpr std::uint8_t AAC_DESCRIPTOR = 0x7C;
constexpr std::uint8_t DIGITAL_COPY_CONTROL_DESCRIPTOR = 0xC1;
constexpr std::uint8_t DATA_COMPONENT_DESCRIPTOR = 0xFD;

constexpr std::uint8_t PRIVATE_SECTIONS = 0x05;
constexpr std::uint8_t PES_PRIVATE_DATA = 0x06;
constexpr std::uint8_t DSMCC_MESSAGES = 0x0B;
constexpr std::uint8_t DSMCC_STREAM_DESCRIPTORS = 0x0C;
constexpr std::uint8_t AAC_AUDIO = 0x11;
constexpr std::uint8_t AVC_VIDEO = 0x1B;

constexpr std::uint16_t CAPTIONS = 8;
constexpr std::uint16_t GINGA_ENGINE = 160;
constexpr std::uint16_t APPLICATION_INFORMATION = 163;

Bytes program(std::uint16_t programNumber, std::uint16_t pid) {
    return Wire().bits(16, programNumber).reserved(3).bits(13, pid).bytes();
}

Bytes stream(std::uint8_t streamType, std::uint16_t pid, const Wire& descriptors) {
    return Wire().bits(8, streamType).reserved(3).bits(13, pid).loop(descriptors.bytes()).bytes();
}

Bytes pmt(std::uint16_t programNumber, std::uint16_t pcrPid, const Wire& descriptors, const Wire& streams) {
    return longSection(PMT_TABLE_ID, programNumber,
                       Wire().reserved(3).bits(13, pcrPid).loop(descriptors.bytes()).append(streams.bytes()));
}

Bytes componentTag(std::uint8_t tag) {
    return descriptor(STREAM_IDENTIFIER_DESCRIPTOR, Wire().bits(8, tag));
}

Bytes dataComponent(std::uint16_t id, const Wire& additionalInfo = {}) {
    return descriptor(DATA_COMPONENT_DESCRIPTOR, Wire().bits(16, id).append(additionalInfo.bytes()));
}

Bytes avcVideo(std::uint8_t profile, std::uint8_t level) {
    return descriptor(AVC_VIDEO_DESCRIPTOR, Wire()
                                                .bits(8, profile)
                                                .bits(8, 0) // constraint flags, compatible flags
                                                .bits(8, level)
                                                .bits(1, 0) // AVC_still_present
                                                .bits(1, 0) // AVC_24_hour_picture_flag
                                                .reserved(6));
}

Bytes aac(std::uint8_t profileAndLevel) {
    return descriptor(AAC_DESCRIPTOR, Wire().bits(8, profileAndLevel).bits(1, 0).reserved(7));
}

Bytes captions(std::uint8_t tag) {
    const Wire additionalInfo = Wire()
                                    .bits(2, 0) // DMF: shown without being asked for
                                    .reserved(2)
                                    .bits(4, 0xD); // timing: by the time stamps
    return Wire().append(componentTag(tag)).append(dataComponent(CAPTIONS, additionalInfo)).bytes();
}

/// Which carousel is meant by the component_tag that applications name.
Bytes associationTag(std::uint16_t tag) {
    return descriptor(ASSOCIATION_TAG_DESCRIPTOR, Wire()
                                                      .bits(16, tag)
                                                      .bits(16, 0)            // use: DSI with the service gateway
                                                      .bits(8, 8)             // selector_length
                                                      .bits(32, 0x80000000)   // transaction_id
                                                      .bits(32, 0xFFFFFFFF)); // timeout: none
}

} // namespace

Bytes pat() {
    return longSection(PAT_TABLE_ID, TRANSPORT_STREAM_ID,
                       Wire()
                           .append(program(0, NIT_PID))
                           .append(program(HD_SERVICE_ID, HD_PMT_PID))
                           .append(program(ONE_SEG_SERVICE_ID, ONE_SEG_PMT_PID)));
}

Bytes hdPmt() {
    const Wire service =
        Wire()
            .append(descriptor(PARENTAL_RATING_DESCRIPTOR, Wire().text("BRA").bits(8, 0x23)))
            .append(descriptor(DIGITAL_COPY_CONTROL_DESCRIPTOR, Wire()
                                                                    .bits(2, 0) // digital_recording_control_data: free
                                                                    .bits(1, 1) // maximum_bitrate_flag
                                                                    .bits(1, 0) // component_control_flag
                                                                    .bits(2, 1) // copy_control_type
                                                                    .bits(2, 0) // APS_control_data
                                                                    .bits(8, 72))); // maximum_bitrate
    const Wire engine = Wire().append({0xA4, 0x00, 0x00, 0x00, 0x0A, 0x00, 0x64, 0x00, 0x00, 0x00, 0x01, 0x1F});
    return pmt(HD_SERVICE_ID, HD_PCR_PID, service,
               Wire()
                   .append(stream(AVC_VIDEO, HD_VIDEO_PID,
                                  Wire().append(componentTag(HD_VIDEO_TAG)).append(avcVideo(100, 40))))
                   .append(stream(AAC_AUDIO, HD_AUDIO_PID, Wire().append(componentTag(HD_AUDIO_TAG)).append(aac(0x2E))))
                   .append(stream(PES_PRIVATE_DATA, HD_CAPTIONS_PID, Wire().append(captions(HD_CAPTIONS_TAG))))
                   .append(stream(PRIVATE_SECTIONS, AIT_PID, Wire().append(dataComponent(APPLICATION_INFORMATION))))
                   .append(stream(
                       DSMCC_MESSAGES, CAROUSEL_PID,
                       Wire()
                           .append(descriptor(CAROUSEL_IDENTIFIER_DESCRIPTOR, Wire().bits(32, CAROUSEL_ID).bits(8, 0)))
                           .append(associationTag(CAROUSEL_TAG))
                           .append(componentTag(CAROUSEL_TAG))
                           .append(dataComponent(GINGA_ENGINE, engine))))
                   .append(stream(DSMCC_STREAM_DESCRIPTORS, EVENTS_PID, Wire().append(componentTag(EVENTS_TAG)))));
}

Bytes oneSegPmt() {
    return pmt(
        ONE_SEG_SERVICE_ID, ONE_SEG_PCR_PID, Wire(),
        Wire()
            .append(stream(AVC_VIDEO, ONE_SEG_VIDEO_PID,
                           Wire().append(componentTag(ONE_SEG_VIDEO_TAG)).append(avcVideo(66, 13))))
            .append(
                stream(AAC_AUDIO, ONE_SEG_AUDIO_PID, Wire().append(componentTag(ONE_SEG_AUDIO_TAG)).append(aac(0x2C))))
            .append(stream(PES_PRIVATE_DATA, ONE_SEG_CAPTIONS_PID, Wire().append(captions(ONE_SEG_CAPTIONS_TAG)))));
}

} // namespace sample
