#include "checking/Checks.h"

#include "starting/Starting.h"
#include "tables/TableKinds.h"

namespace inspect {

void checkCarried(Faults& faults, const Table& table, const std::vector<ApplicationReport>& applications) {
    checkSections(faults, subject(table), table);
    if (table.key.tableId != AIT) {
        return;
    }
    const std::vector<const Fields*> entries = table.entries("applications");
    for (const Fields* const entry : entries) {
        const ApplicationReport* const report = reportOf(applications, table, *entry);
        for (const Step& step : report == nullptr ? std::vector<Step>{} : report->steps) {
            if (step.fault) {
                faults.add({entry, titleOfApplication(*entry)}, {*step.fault, step.place, step.text, step.position});
            }
        }
    }
    if (!table.taken.empty() && entries.empty()) {
        addShown(faults, subject(table), faults::TABLE_EMPTY, table, "it names no application");
    }
}

} // namespace inspect
