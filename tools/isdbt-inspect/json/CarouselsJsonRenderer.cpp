#include "json/CarouselsJsonRenderer.h"

#include "json/AlarmJson.h"
#include "json/CarouselJson.h"
#include "json/SectionJson.h"
#include "json/TransmissionJson.h"

namespace inspect {

void CarouselsJsonRenderer::interim(const Summary& summary, double seconds) {
    write(carouselLines(source(), summary, seconds));
}

void CarouselsJsonRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    write(carouselLines(source(), summary) + transmissionLine(source(), summary) + checkLines(source(), summary) +
          faultLines(source(), faults));
}

} // namespace inspect
