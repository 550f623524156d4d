#include "Starting.h"

#include "describing/FieldLookup.h"
#include "starting/CarouselSteps.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

/// No multiplex comes near; a broken stream must not fill the memory.
constexpr std::size_t MOST_APPLICATIONS = 256;

std::string nameOf(const Fields& application) {
    for (const Field& item : elements(inner(application, "application_name_descriptor"), "items")) {
        if (const Field* const name = find(inner(item), "name")) {
            return std::get<Text>(name->value).decoded;
        }
    }
    return {};
}

/// What else is not as it should be, in some words.
std::string reservations(const Steps& steps) {
    std::vector<std::string_view> texts;
    for (const Step& step : steps.all()) {
        if (step.result == Step::Result::Failed && !step.needed && step.name != CONTROL_CODE) {
            texts.push_back(step.text);
        }
    }
    return texts.empty() ? ""
                         : fmt::format("; but {}{}", texts.front(),
                                       texts.size() == 1 ? "" : fmt::format(", and {} more", texts.size() - 1));
}

/// From the first packet of the carousel on.
std::optional<double> secondsOf(const Steps& steps, const Component& component, const Summary& summary) {
    for (const PidStatistics& each : summary.statistics) {
        if (each.pid == component.pid && summary.seconds) {
            return steps.completed() - each.traffic.first.seconds.value_or(0);
        }
    }
    return std::nullopt;
}

/// @param starter that starts it, if not itself
void judge(ApplicationReport& report, const Steps& steps, const std::string& starter) {
    using Verdict = ApplicationReport::Verdict;
    const Step* const failed = steps.first(Step::Result::Failed, Need::Start);
    const Step* const open = steps.first(Step::Result::NotSeen, Need::Start);
    if (!starter.empty()) {
        report.verdict = Verdict::NotByItself;
        report.text = fmt::format("is not started by itself: {}{}", starter,
                                  failed != nullptr ? "; nor would it start: " + failed->text
                                  : open != nullptr ? "; and not known: " + open->text
                                                    : reservations(steps));
    } else if (failed != nullptr) {
        report.verdict = Verdict::DoesNotStart;
        report.text = "does not start: " + failed->text;
    } else if (open != nullptr) {
        report.verdict = Verdict::NotKnown;
        report.text = "not known: " + open->text;
    } else {
        report.verdict = Verdict::Starts;
        report.text =
            fmt::format("starts: all there{}{}", report.seconds ? fmt::format(" after {:.1f} s", *report.seconds) : "",
                        reservations(steps));
    }
}

ApplicationReport reportOn(const Candidate& candidate, const CarouselIndex& carousels) {
    const Fields& id = inner(candidate.application, "application_identifier");
    Steps steps;
    TableSteps tables(steps, candidate);
    tables.goTables();
    const Component* const component = tables.goTransport();
    CarouselSteps(steps, candidate, carousels, component, tables.components()).go();
    ApplicationReport report{placeOf(candidate.ait),
                             static_cast<std::uint32_t>(numberIn(id, "organization_id").value_or(0)),
                             static_cast<std::uint16_t>(numberIn(id, "application_id").value_or(0)),
                             nameOf(candidate.application),
                             {},
                             ApplicationReport::Verdict::NotKnown,
                             {}};
    if (candidate.claim != nullptr) {
        report.serviceId = candidate.claim->service->id;
    }
    if (component != nullptr && steps.goesOn()) {
        report.seconds = secondsOf(steps, *component, candidate.summary);
    }
    judge(report, steps, starterOf(candidate.application));
    report.steps = steps.take();
    return report;
}

} // namespace

const ApplicationReport* reportOf(const std::vector<ApplicationReport>& reports, const Table& ait,
                                  const Fields& application) {
    const Fields& id = inner(application, "application_identifier");
    const auto found = std::find_if(reports.begin(), reports.end(), [&](const ApplicationReport& each) {
        return each.place.pid == ait.key.pid && each.place.extension == ait.key.extension &&
               each.organisationId == numberIn(id, "organization_id") &&
               each.applicationId == numberIn(id, "application_id");
    });
    return found == reports.end() ? nullptr : &*found;
}

std::vector<ApplicationReport> applicationsOf(const Multiplex& multiplex, const Summary& summary,
                                              const ReceiverProfiles& receiver) {
    const CarouselIndex carousels(summary.carousels);
    std::vector<ApplicationReport> reports;
    for (const Table* const ait : multiplex.tables().of(AIT)) {
        const Multiplex::Claim* const claim = ait->key.pid ? multiplex.claimOf(*ait->key.pid) : nullptr;
        for (const TakenSection* const section : ait->taken) {
            const std::vector<DescriptorLoop> loops = descriptorLoops(section->bytes.data(), section->bytes.size());
            for (const Field& application : elements(section->fields, "applications")) {
                if (reports.size() < MOST_APPLICATIONS) {
                    reports.push_back(reportOn(
                        {multiplex, summary, receiver, *ait, *section, loops, inner(application), claim}, carousels));
                }
            }
        }
    }
    return reports;
}

} // namespace inspect
