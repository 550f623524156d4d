#include "checking/Fault.h"

namespace inspect {

namespace {

struct KindRow {
    FaultKind kind;
    std::string_view name;
    Severity severity;
};

constexpr KindRow ROWS[] = {
    {FaultKind::ChangedSilently, "changed_without_new_version", Severity::Error},
    {FaultKind::Damaged, "damaged", Severity::Error},
    {FaultKind::Rejected, "rejected", Severity::Error},
    {FaultKind::SectionMissing, "section_missing", Severity::Error},
    {FaultKind::TableMissing, "table_missing", Severity::Error},
    {FaultKind::TableEmpty, "table_empty", Severity::Warning},
    {FaultKind::WrongPid, "wrong_pid", Severity::Error},
    {FaultKind::NotInNit, "not_in_nit", Severity::Warning},
    {FaultKind::NotInPat, "not_in_pat", Severity::Error},
    {FaultKind::NotInSdt, "not_in_sdt", Severity::Warning},
    {FaultKind::NotInTsInformation, "not_in_ts_information", Severity::Warning},
    {FaultKind::NetworksDiffer, "networks_differ", Severity::Warning},
    {FaultKind::TagTwice, "component_tag_twice", Severity::Error},
    {FaultKind::PidTwice, "pid_twice", Severity::Warning},
    {FaultKind::PidUnannounced, "pid_unannounced", Severity::Warning},
    {FaultKind::ApplicationTableMissing, "ait_missing", Severity::Error},
    {FaultKind::DescriptorMissing, "descriptor_missing", Severity::Error},
    {FaultKind::LabelUnknown, "label_unknown", Severity::Error},
    {FaultKind::CarouselMissing, "carousel_missing", Severity::Error},
    {FaultKind::CarouselIsNone, "carousel_is_none", Severity::Error},
};

constexpr bool standInOrder() {
    std::size_t place = 0;
    for (const KindRow& row : ROWS) {
        if (static_cast<std::size_t>(row.kind) != place++) {
            return false;
        }
    }
    return place == static_cast<std::size_t>(FaultKind::CarouselIsNone) + 1;
}

static_assert(standInOrder());

const KindRow& rowOf(FaultKind kind) {
    return ROWS[static_cast<std::size_t>(kind)];
}

} // namespace

Severity Fault::severity() const {
    return rowOf(kind).severity;
}

std::string_view Fault::name() const {
    return rowOf(kind).name;
}

void Faults::add(const void* part, Fault fault) {
    m_byPart.emplace(part, m_all.size());
    m_all.push_back(std::move(fault));
}

std::vector<std::string> Faults::of(const void* part) const {
    std::vector<std::string> texts;
    const auto [begin, end] = m_byPart.equal_range(part);
    for (auto each = begin; each != end; ++each) {
        texts.push_back(m_all[each->second].text);
    }
    return texts;
}

} // namespace inspect
