#include "json/AllJsonRenderer.h"

#include "json/ApplicationsJsonRenderer.h"
#include "json/CarouselJson.h"
#include "json/SectionJson.h"
#include "json/StatisticsJsonRenderer.h"
#include "json/TransmissionJson.h"

namespace inspect {

std::string allLines(const std::string& source, const Summary& summary, const Faults& faults,
                     std::optional<double> step) {
    return statisticsLines(source, summary, {}) + transmissionLine(source, summary) +
           applicationLines(source, summary) + carouselLines(source, summary, {}, step) + checkLines(source, summary) +
           faultLines(source, faults);
}

void AllJsonRenderer::endRange(const Summary& summary) {
    write(rangeLines(source(), summary));
}

void AllJsonRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    write(allLines(source(), summary, faults));
}

} // namespace inspect
