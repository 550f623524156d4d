#include "TypicalSections.h"

#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "support/FullSections.h"
#include "tot/TTOTTable.h"

#include <memory>

namespace {

template <class Table> bool parseAndDestroy(QUOR_U8* data, QUOR_U32 size) {
    return std::unique_ptr<Table>(Table::parse(data, size, 1, 1, nullptr, nullptr)) != nullptr;
}

} // namespace

std::vector<TypicalSection> typicalSections() {
    return {{"PAT", fullPat(), parseAndDestroy<Quor::TPATTable>},
            {"PMT", fullPmt(), parseAndDestroy<Quor::TPMTTable>},
            {"TOT", fullTot(), parseAndDestroy<Quor::TTOTTable>},
            {"NIT", fullNit(), parseAndDestroy<Quor::TNITTable>},
            {"SDT", fullSdt(), parseAndDestroy<Quor::TSDTTable>},
            {"AIT", fullAit(), parseAndDestroy<Quor::TAITTable>},
            {"SDTT", fullSdtt(), parseAndDestroy<Quor::TSDTTTable>},
            {"DSM-CC", fullDsmccSection(), parseAndDestroy<Quor::TDSMCCSectionTable>}};
}
