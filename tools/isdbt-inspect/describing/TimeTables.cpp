#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Loops.h"
#include "describing/Readings.h"
#include "descriptors/TLocalTimeOffsetDescriptor.h"
#include "naming/Names.h"
#include "tot/TTOTTable.h"

namespace inspect {

namespace {

constexpr std::int64_t BEHIND = 1;

/// Bytes of one item on the wire.
constexpr unsigned ITEM_SIZE = 13;

Field describeItem(const Quor::TLocalTimeOffsetDescriptorItem& item) {
    const auto polarity = item.getLocalTimeOffsetPolarity();
    const auto offset = item.getLocalTimeOffset();
    return object("", {isoCode("country_code", item.getCountryCode()),
                       number("country_region_id", item.getCountryRegionID()),
                       code("local_time_offset_polarity", polarity, names::POLARITY),
                       number("local_time_offset", offset).in("s").reads(isoOffset(polarity == BEHIND, offset))});
}

Fields describeLocalTimeOffset(const Quor::TLocalTimeOffsetDescriptor& descriptor) {
    const std::size_t sent = descriptor.getData()[1] / ITEM_SIZE;
    return {keptOf(listByKey("items", descriptor, &Quor::TLocalTimeOffsetDescriptor::getCountryCodes,
                             &Quor::TLocalTimeOffsetDescriptor::get, describeItem),
                   sent, "country")};
}

Fields describeTot(const Quor::TTOTTable& tot) {
    Fields fields{clockTime("unix_time", tot.getUnixTime())};
    appendDescriptors(fields, tot);
    Loops(tot).appendLeftOut(fields);
    return fields;
}

} // namespace

void addTimeTables(Catalogue& catalogue) {
    catalogue.addTable<describeTot>();
    catalogue.addDescriptor<describeLocalTimeOffset>("local_time_offset_descriptor", {TOT});
}

} // namespace inspect
