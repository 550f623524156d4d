#pragma once

#include "CarouselWriter.h"

namespace sample {

/// The files of both applications, and the events of the guide.
std::vector<CarouselEntry> applicationFiles();

/// How their carousel is cut: the directories in module 1, which is of several blocks, the guide's document in
/// module 3.
CarouselPlan applicationPlan();

} // namespace sample
