#pragma once

#include "CarouselMessages.h"
#include "Streams.h"
#include "support/Bytes.h"

/// PAT and PMT of service 0xE760, whose one component has PID 0x0140, component tag 0x0C and association tag 0x0140.
StreamBuilder serviceWithCarousel();

constexpr unsigned CAROUSEL_PID = 0x0140;

/// Carousel 2 with what a directory holds: module 1 is the service gateway, module 2 has the rest.
/// @param objects beside the gateway, in module 2
std::vector<ByteVector> carouselOf(const std::vector<wire::Bound>& bindings, const ByteVector& objects,
                                   unsigned version = 1);

/// The same where a block of one more module is missing.
std::vector<ByteVector> incompleteCarousel();
