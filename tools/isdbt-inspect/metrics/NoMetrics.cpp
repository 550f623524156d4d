#include "metrics/Metrics.h"

#include <stdexcept>

namespace inspect {

struct Metrics::Server {};

std::string Metrics::objectionTo(const std::string& /*address*/) {
    return "this build serves no metrics";
}

Metrics::Metrics(const std::string& address) {
    throw std::runtime_error(objectionTo(address));
}

Metrics::~Metrics() = default;

void Metrics::update(const std::string& /*source*/, const Summary& /*summary*/, bool /*ended*/) {}

void Metrics::alarm(const std::string& /*source*/, std::string_view /*check*/, const FaultPlace& /*place*/,
                    bool /*isActive*/) {}

} // namespace inspect
