#pragma once

#include "multiplex/Multiplex.h"
#include "reports/Carousel.h"

namespace inspect {

/// The tags by which carousels find a component, beside its component_tag.
std::vector<std::uint16_t> associationTagsOf(const Component& component);

/// Association tags that a program map leaves to another service.
struct DeferredTags {
    std::vector<std::uint16_t> tags;
    std::uint16_t transportStream;
    std::uint16_t service;
};

std::vector<DeferredTags> deferredTagsOf(const Fields& programMap);

/// The component that one of them leads to: the one that has it, else the one whose component_tag is its low byte. Null
/// when none of this stream does.
const Component* associated(const Multiplex& multiplex, const DeferredTags& deferred, std::uint16_t tag);

/// The components that have a PID.
std::vector<CarouselStream> streamsOn(Pid pid, const Multiplex& multiplex);

} // namespace inspect
