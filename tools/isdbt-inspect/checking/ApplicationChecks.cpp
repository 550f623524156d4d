#include "checking/Checks.h"

#include "describing/FieldLookup.h"
#include "pmt/TProgramMap.h"
#include "tables/TableKinds.h"

#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::string_view APPLICATION = "application_descriptor";
constexpr std::string_view TRANSPORT = "transport_protocol_descriptor";
constexpr std::string_view LOCATION = "ginga_application_location_descriptor";
constexpr std::string_view LABEL = "transport_protocol_label";

/// Without these a receiver does not know what to start, or where it comes from.
constexpr std::string_view NECESSARY[] = {APPLICATION, TRANSPORT, LOCATION};

bool carriesCarousel(const Component& component) {
    using Quor::TProgramMap;
    return component.streamType >= TProgramMap::STREAM_TYPE_0X0A &&
           component.streamType <= TProgramMap::STREAM_TYPE_0X0D;
}

/// Finds what is wrong with one application.
class ApplicationChecker {
public:
    ApplicationChecker(Faults& faults, const Table& ait, const Fields& application)
        : m_faults(faults), m_ait(ait), m_application(application) {}

    void checkNecessary() {
        for (const std::string_view name : NECESSARY) {
            if (find(m_application, name) == nullptr) {
                add(faults::DESCRIPTOR_MISSING, fmt::format("no {}", name));
            }
        }
    }

    /// Descriptors refer to the protocol by its label.
    void checkLabels() {
        const std::optional<std::int64_t> label = numberIn(inner(m_application, TRANSPORT), LABEL);
        std::vector<std::pair<std::string_view, std::int64_t>> uses;
        for (const std::int64_t each : numbersIn(inner(m_application, APPLICATION), "transport_protocols")) {
            uses.emplace_back(APPLICATION, each);
        }
        for (const std::string_view name : {"prefetch_descriptor", "dii_location_descriptor"}) {
            if (const std::optional<std::int64_t> each = numberIn(inner(m_application, name), LABEL)) {
                uses.emplace_back(name, *each);
            }
        }
        for (const auto& [name, each] : uses) {
            if (label && each != *label) {
                add(faults::LABEL_UNKNOWN,
                    fmt::format("{} names transport protocol label 0x{:02X}, but the receiver has 0x{:02X}", name, each,
                                *label));
            }
        }
    }

    void checkCarousel(const Components& components) {
        const std::optional<std::int64_t> tag = carouselTag(m_application);
        const Component* const component = tag ? withTag(components, *tag) : nullptr;
        if (tag && component == nullptr) {
            add(faults::CAROUSEL_MISSING,
                fmt::format("its carousel has component tag 0x{:02X}, which the PMT does not have", *tag));
        } else if (tag && !carriesCarousel(*component)) {
            add(faults::CAROUSEL_IS_NONE,
                fmt::format("the component 0x{:02X} of its carousel is no DSM-CC (stream type 0x{:02X})", *tag,
                            component->streamType));
        }
    }

private:
    void add(FaultKind kind, std::string text) {
        addShown(m_faults, {&m_application, titleOfApplication(m_application)}, kind, m_ait, std::move(text));
    }

    Faults& m_faults;
    const Table& m_ait;
    const Fields& m_application;
};

} // namespace

void checkCarried(Faults& faults, const Table& table, const Components* components) {
    checkSections(faults, subject(table), table);
    if (table.key.tableId != AIT) {
        return;
    }
    const std::vector<const Fields*> applications = table.entries("applications");
    for (const Fields* const application : applications) {
        ApplicationChecker checker(faults, table, *application);
        checker.checkNecessary();
        checker.checkLabels();
        if (components != nullptr) {
            checker.checkCarousel(*components);
        }
    }
    if (!table.taken.empty() && applications.empty()) {
        addShown(faults, subject(table), faults::TABLE_EMPTY, table, "it names no application");
    }
}

} // namespace inspect
