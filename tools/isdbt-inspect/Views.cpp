#include "Views.h"

#include "text/ApplicationsRenderer.h"
#include "text/CarouselsRenderer.h"
#include "text/DiffRenderer.h"
#include "text/StatisticsRenderer.h"
#include "text/TablesRenderer.h"
#include "text/TreeRenderer.h"
#include "json/AllJsonRenderer.h"
#include "json/ApplicationsJsonRenderer.h"
#include "json/CarouselsJsonRenderer.h"
#include "json/DiffJsonRenderer.h"
#include "json/JsonRenderer.h"
#include "json/StatisticsJsonRenderer.h"

namespace inspect {

namespace {

constexpr bool OF_CAROUSELS = true;

template <class InJson> std::unique_ptr<Renderer> inJson(Output& output) {
    return std::make_unique<InJson>(output);
}

/// A view has a renderer for either form.
template <class InText, class InJson> View view(std::string name, std::string help, bool ofCarousels = false) {
    return {std::move(name), std::move(help),
            [](Output& output, const Style& style) -> std::unique_ptr<Renderer> {
                return std::make_unique<InText>(output, style);
            },
            &inJson<InJson>, ofCarousels};
}

/// One for programs alone.
template <class InJson> View viewInJson(std::string name, std::string help, bool ofCarousels = false) {
    return {std::move(name), std::move(help), nullptr, &inJson<InJson>, ofCarousels};
}

} // namespace

const std::vector<View>& views() {
    static const std::vector<View> VIEWS{
        view<TreeRenderer, JsonRenderer>("tree", "the multiplex in one outline", OF_CAROUSELS),
        view<TablesRenderer, JsonRenderer>("tables", "each section when it is new"),
        view<StatisticsRenderer, StatisticsJsonRenderer>("stats", "counts, intervals and bit rates"),
        view<DiffRenderer, DiffJsonRenderer>("diff", "what changes"),
        view<ApplicationsRenderer, ApplicationsJsonRenderer>("applications", "why each application starts, or does not",
                                                             OF_CAROUSELS),
        view<CarouselsRenderer, CarouselsJsonRenderer>("carousels", "what carousels bring, and what is missing of it",
                                                       OF_CAROUSELS),
        viewInJson<AllJsonRenderer>(
            "all", "with --json, the lines of tables, stats, applications and carousels at once", OF_CAROUSELS)};
    return VIEWS;
}

} // namespace inspect
