#include "Tables.h"

namespace sample {

namespace {

constexpr std::uint8_t AIT_TABLE_ID = 0x74;
constexpr std::uint8_t STREAM_DESCRIPTORS_TABLE_ID = 0x3D;

constexpr std::uint8_t APPLICATION_DESCRIPTOR = 0x00;
constexpr std::uint8_t APPLICATION_NAME_DESCRIPTOR = 0x01;
constexpr std::uint8_t TRANSPORT_PROTOCOL_DESCRIPTOR = 0x02;
constexpr std::uint8_t JAVA_APPLICATION_DESCRIPTOR = 0x03;
constexpr std::uint8_t JAVA_APPLICATION_LOCATION_DESCRIPTOR = 0x04;
constexpr std::uint8_t EXTERNAL_APPLICATION_AUTHORIZATION_DESCRIPTOR = 0x05;
constexpr std::uint8_t NCL_APPLICATION_DESCRIPTOR = 0x06;
constexpr std::uint8_t NCL_APPLICATION_LOCATION_DESCRIPTOR = 0x07;
constexpr std::uint8_t APPLICATION_ICON_DESCRIPTOR = 0x0B;
constexpr std::uint8_t PREFETCH_DESCRIPTOR = 0x0C;
constexpr std::uint8_t DII_LOCATION_DESCRIPTOR = 0x0D;

constexpr std::uint8_t NPT_REFERENCE_DESCRIPTOR = 1;
constexpr std::uint8_t STREAM_MODE_DESCRIPTOR = 3;
constexpr std::uint8_t STREAM_EVENT_DESCRIPTOR = 4;

constexpr std::uint16_t GINGA_J = 0x0001;
constexpr std::uint16_t GINGA_NCL = 0x0009;

constexpr std::uint8_t AUTOSTART = 1;
constexpr std::uint8_t PRESENT = 2;

constexpr std::uint32_t ORGANIZATION_ID = 0x00000735;
constexpr std::uint16_t GUIDE = 0x0001;
constexpr std::uint16_t POLL = 0x0002;

/// transport_protocol_label
constexpr std::uint8_t FROM_CAROUSEL = 1;
constexpr std::uint8_t FROM_INTERNET = 2;

Bytes identifier(std::uint16_t applicationId) {
    return Wire().bits(32, ORGANIZATION_ID).bits(16, applicationId).bytes();
}

Bytes application(std::uint16_t id, std::uint8_t controlCode, const Wire& descriptors) {
    return Wire().append(identifier(id)).bits(8, controlCode).loop(descriptors.bytes()).bytes();
}

Bytes ait(std::uint16_t applicationType, unsigned version, const Wire& common, const Bytes& applications) {
    return longSection(AIT_TABLE_ID, applicationType, Wire().loop(common.bytes()).loop(applications), {version});
}

Bytes profile(std::uint16_t number, unsigned major, unsigned minor, unsigned micro) {
    return Wire().bits(16, number).bits(8, major).bits(8, minor).bits(8, micro).bytes();
}

Bytes describedApplication(const Wire& profiles, bool serviceBound, std::uint8_t priority, const Bytes& labels) {
    return descriptor(APPLICATION_DESCRIPTOR, Wire()
                                                  .bits(8, profiles.bytes().size())
                                                  .append(profiles.bytes())
                                                  .bits(1, serviceBound ? 1 : 0)
                                                  .bits(2, 3) // visibility: to users and applications
                                                  .reserved(5)
                                                  .bits(8, priority)
                                                  .append(labels));
}

Bytes name(std::string_view portuguese) {
    return descriptor(APPLICATION_NAME_DESCRIPTOR, Wire().text("por").countedText(portuguese));
}

Bytes objectCarousel(const Signalling& signalling) {
    Wire body;
    body.bits(16, 1) // protocol_id: object carousel
        .bits(8, FROM_CAROUSEL)
        .bits(1, signalling.service ? 1 : 0) // remote_connection
        .reserved(7);
    if (signalling.service) {
        body.bits(16, NETWORK_ID).bits(16, TRANSPORT_STREAM_ID).bits(16, *signalling.service);
    }
    return descriptor(TRANSPORT_PROTOCOL_DESCRIPTOR, body.bits(8, signalling.componentTag));
}

Bytes internet(std::string_view url) {
    return descriptor(TRANSPORT_PROTOCOL_DESCRIPTOR, Wire()
                                                         .bits(16, 2) // protocol_id: IP
                                                         .bits(8, FROM_INTERNET)
                                                         .bits(1, 0) // remote_connection
                                                         .reserved(7)
                                                         .bits(1, 1) // alignment_indicator
                                                         .reserved(7)
                                                         .countedText(url));
}

Bytes location(std::uint8_t tag, std::string_view baseDirectory, std::string_view extension, std::string_view initial) {
    return descriptor(tag, Wire().countedText(baseDirectory).countedText(extension).text(initial));
}

/// postDiscontinuityIndicator, contentId, two time stamps of 33 bits, and the speed: one.
Bytes timeLine(std::uint64_t clock, std::uint64_t position) {
    return descriptor(NPT_REFERENCE_DESCRIPTOR, Wire()
                                                    .bits(1, 0)
                                                    .bits(7, 5)
                                                    .reserved(7)
                                                    .bits(33, clock)
                                                    .reserved(31)
                                                    .bits(33, position)
                                                    .bits(16, 1)
                                                    .bits(16, 1));
}

Bytes event(std::uint16_t id, std::uint64_t position, std::string_view data) {
    return descriptor(STREAM_EVENT_DESCRIPTOR, Wire().bits(16, id).reserved(31).bits(33, position).text(data));
}

constexpr std::uint64_t TICKS_PER_SECOND = 90000;

} // namespace

Bytes nclAit(const Signalling& signalling) {
    const Wire common = Wire()
                            .append(objectCarousel(signalling))
                            .append(descriptor(EXTERNAL_APPLICATION_AUTHORIZATION_DESCRIPTOR,
                                               Wire().append(identifier(POLL)).bits(8, 20)));
    const Wire guide =
        Wire()
            .append(describedApplication(Wire()
                                             .append(profile(1, signalling.profileVersion, 0, 0))
                                             .append(profile(2, signalling.profileVersion, 2, 0)),
                                         true, 40, {signalling.label}))
            .append(name("Guia da Programa\xE7\xE3o"))
            .append(descriptor(APPLICATION_ICON_DESCRIPTOR,
                               Wire().countedText("/icones").bits(16, 0x0001 | 0x0008 | 0x0020)))
            .append(descriptor(
                PREFETCH_DESCRIPTOR,
                Wire().bits(8, FROM_CAROUSEL).countedText("principal").bits(8, 100).countedText("imagens").bits(8, 30)))
            .append(descriptor(DII_LOCATION_DESCRIPTOR,
                               Wire().bits(8, FROM_CAROUSEL).reserved(1).bits(15, CAROUSEL_DII).bits(16, CAROUSEL_TAG)))
            .append(descriptor(NCL_APPLICATION_DESCRIPTOR, Wire().countedText("idioma=por").countedText("tema=claro")))
            .append(location(NCL_APPLICATION_LOCATION_DESCRIPTOR, "/guia", "", "principal.ncl"));
    return ait(GINGA_NCL, signalling.version, common,
               application(GUIDE, signalling.controlCode.value_or(AUTOSTART), guide));
}

Bytes javaAit(const Signalling& signalling) {
    const Wire poll = Wire()
                          .append(describedApplication(Wire().append(profile(1, signalling.profileVersion, 0, 2)),
                                                       false, 20, {signalling.label}))
                          .append(name("Enquete: voc\xEA decide"))
                          .append(objectCarousel(signalling))
                          .append(descriptor(JAVA_APPLICATION_DESCRIPTOR, Wire().countedText("rodada=7")))
                          .append(location(JAVA_APPLICATION_LOCATION_DESCRIPTOR, "/enquete", "lib/grafico.jar",
                                           "example.mareacu.enquete.EnqueteXlet"));
    const Wire common =
        Wire()
            .append(internet("http://enquete.mareacu.example/app"))
            .append(descriptor(APPLICATION_ICON_DESCRIPTOR, Wire().countedText("/icones").bits(16, 0x0001)));
    return ait(GINGA_J, signalling.version, common, application(POLL, signalling.controlCode.value_or(PRESENT), poll));
}

Bytes streamEvents(std::uint16_t eventId) {
    return longSection(STREAM_DESCRIPTORS_TABLE_ID, 0x1001, // data_event_id 1, event_msg_group_id 1
                       Wire()
                           .append(timeLine(10 * TICKS_PER_SECOND, 754 * TICKS_PER_SECOND))
                           .append(descriptor(STREAM_MODE_DESCRIPTOR, Wire().bits(8, 2).reserved(8)))
                           .append(event(eventId, 780 * TICKS_PER_SECOND, "gol")));
}

} // namespace sample
