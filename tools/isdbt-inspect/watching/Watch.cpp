#include "watching/Watch.h"

namespace inspect {

void Watch::take(const Event& /*event*/) {}

void Watch::take(const Section& /*section*/) {}

void Watch::learn(const SectionReport& /*report*/) {}

void Watch::tick(const Position& /*now*/) {}

std::vector<Alarm> Watch::news() {
    return {};
}

} // namespace inspect
