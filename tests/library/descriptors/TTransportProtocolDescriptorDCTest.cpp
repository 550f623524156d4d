#include "descriptors/TTransportProtocolDescriptorDC.h"

#include "CarouselTransport.h"

namespace {

struct DataCarouselTraits {
    using Variant = Quor::TTransportProtocolDescriptorDC;
    static constexpr QUOR_U16 PROTOCOL = 4;
    static constexpr auto NAME = "TTransportProtocolDescriptorDC";
    static constexpr auto TYPE = Quor::TTransportProtocolDescriptor::DataCarousel;
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(TTransportProtocolDescriptorDC, CarouselTransport, DataCarouselTraits, );
