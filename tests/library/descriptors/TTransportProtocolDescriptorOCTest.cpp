#include "descriptors/TTransportProtocolDescriptorOC.h"

#include "CarouselTransport.h"

namespace {

struct ObjectCarouselTraits {
    using Variant = Quor::TTransportProtocolDescriptorOC;
    static constexpr QUOR_U16 PROTOCOL = 1;
    static constexpr auto NAME = "TTransportProtocolDescriptorOC";
    static constexpr auto TYPE = Quor::TTransportProtocolDescriptor::ObjectCarousel;
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(TTransportProtocolDescriptorOC, CarouselTransport, ObjectCarouselTraits, );
