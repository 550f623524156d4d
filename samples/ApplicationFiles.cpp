#include "ApplicationFiles.h"

#include "Station.h"

namespace sample {

std::vector<CarouselEntry> applicationFiles() {
    std::vector<CarouselEntry> all = filesIn(APPLICATIONS);
    all.push_back({"enquete/eventos", {}, wire::Events{EVENTS_TAG, {{"gol", GOAL_EVENT}}}});
    return all;
}

CarouselPlan applicationPlan() {
    CarouselPlan plan;
    plan.id = CAROUSEL_ID;
    plan.associationTag = CAROUSEL_TAG;
    plan.identification = CAROUSEL_DII;
    plan.blockSize = 512; // a block fills three packets
    plan.parts = {{"guia/imagens/", "imagens"}, {"guia/", "principal"}, {"icones/", "", false}, {"enquete/"}};
    return plan;
}

} // namespace sample
