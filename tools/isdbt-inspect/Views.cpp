#include "Views.h"

#include "text/DiffRenderer.h"
#include "text/StatisticsRenderer.h"
#include "text/TablesRenderer.h"
#include "text/TreeRenderer.h"
#include "json/DiffJsonRenderer.h"
#include "json/JsonRenderer.h"
#include "json/StatisticsJsonRenderer.h"

namespace inspect {

namespace {

/// A view has a renderer for either form.
template <class InText, class InJson> View view(std::string name, std::string help) {
    return {std::move(name), std::move(help),
            [](Output& output, const Style& style) -> std::unique_ptr<Renderer> {
                return std::make_unique<InText>(output, style);
            },
            [](Output& output) -> std::unique_ptr<Renderer> { return std::make_unique<InJson>(output); }};
}

} // namespace

const std::vector<View>& views() {
    static const std::vector<View> VIEWS{
        view<TreeRenderer, JsonRenderer>("tree", "the multiplex in one outline"),
        view<TablesRenderer, JsonRenderer>("tables", "each section when it is new"),
        view<StatisticsRenderer, StatisticsJsonRenderer>("stats", "counts, intervals and bit rates"),
        view<DiffRenderer, DiffJsonRenderer>("diff", "what changes")};
    return VIEWS;
}

} // namespace inspect
