#include "DescriptorReports.h"

#include "TISDBTTable.h"
#include "describing/Describing.h"
#include "parsing/LogLines.h"
#include "parsing/SectionParser.h"
#include "tables/TableKinds.h"

namespace inspect {

namespace {

DescriptorReport reportOf(std::uint8_t tableId, const RawDescriptor& raw, const Conventions& conventions) {
    DescriptorReport report{tableId, std::string(tableName(tableId)), describeOnWire(raw), {}, {}};
    if (raw.kind == nullptr) {
        return report;
    }
    std::vector<std::uint8_t> bytes = raw.bytes();
    QUOR_U16 errorCode = Quor::TISDBTTable::ERROR_OK;
    LogLines log;
    // One that is incomplete is handed over, too, so that the user sees the lines of the receiver's log.
    const auto taken = raw.kind->parse(bytes.data(), static_cast<QUOR_U32>(bytes.size()), &errorCode);
    if (taken != nullptr) {
        report.taken = describe(*taken, conventions);
    } else {
        report.rejection = {errorCode,
                            std::string(errorName(errorCode)),
                            log.take(),
                            {{report.tableName, {}, {report.onWire}}},
                            std::move(bytes)};
    }
    return report;
}

} // namespace

std::vector<DescriptorReport> reportDescriptors(std::uint8_t tableId, const std::vector<std::uint8_t>& bytes,
                                                const Conventions& conventions) {
    std::vector<DescriptorReport> reports;
    for (const RawDescriptor& raw : descriptorsIn({tableId}, bytes.data(), 0, bytes.size())) {
        reports.push_back(reportOf(tableId, raw, conventions));
    }
    return reports;
}

} // namespace inspect
