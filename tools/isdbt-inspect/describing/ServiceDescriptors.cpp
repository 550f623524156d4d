#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "describing/Readings.h"
#include "descriptors/TBouquetNameDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TLogoTransmissionDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TNVODReferenceDescriptor.h"
#include "descriptors/TServiceDescriptor.h"
#include "descriptors/TTimeShiftedServiceDescriptor.h"
#include "naming/Names.h"

namespace inspect {

namespace {

Fields describeService(const Quor::TServiceDescriptor& descriptor) {
    return {identifier("service_type", descriptor.getServiceType(), 2).named(names::SERVICE_TYPE),
            text("service_provider_name", descriptor.getServiceProviderName()),
            text("service_name", descriptor.getServiceName())};
}

Fields describeBouquetName(const Quor::TBouquetNameDescriptor& descriptor) {
    return {text("bouquet_name", descriptor.getBouquetName())};
}

Field describeCountry(QUOR_U32 packed) {
    return identifier("", packed, 6).reads(countryCode(packed));
}

Fields describeCountryAvailability(const Quor::TCountryAvailabilityDescriptor& descriptor) {
    return {code("country_availability_flag", descriptor.getCountryAvailabilityFlag(), names::COUNTRY_AVAILABILITY),
            listByPosition("country_codes", descriptor, descriptor.size(), &Quor::TCountryAvailabilityDescriptor::get,
                           describeCountry)};
}

Field describeNvodService(const Quor::TNVODReferenceDescriptorItem& item) {
    return object("", {identifier("transport_stream_id", item.getTransportStreamID(), 4),
                       identifier("original_network_id", item.getOriginalNetworkID(), 4),
                       identifier("service_id", item.getServiceID(), 4)});
}

Fields describeNvodReference(const Quor::TNVODReferenceDescriptor& descriptor) {
    return {items(descriptor, describeNvodService)};
}

Fields describeTimeShiftedService(const Quor::TTimeShiftedServiceDescriptor& descriptor) {
    return {identifier("reference_service_id", descriptor.getReferenceServiceID(), 4)};
}

Field describeCell(const Quor::TMosaicDescriptorCell& cell) {
    return object(
        "", {number("logical_cell_id", cell.getLogicalCellID()),
             code("logical_cell_presentation_info", cell.getLogicalCellPresentationInfo(), names::MOSAIC_PRESENTATION),
             number("elementary_cell_field_length", cell.getElementaryCellFieldLength()),
             numbers("elementary_cell_ids", cell.getElementaryCellIDs(), cell.getElementaryCellFieldLength(), 0),
             code("cell_linkage_info", cell.getCellLinkageInfo(), names::MOSAIC_LINKAGE),
             identifier("bouquet_id", cell.getBouquetID(), 4),
             identifier("original_network_id", cell.getOriginalNetworkID(), 4),
             identifier("transport_stream_id", cell.getTransportStreamID(), 4),
             identifier("service_id", cell.getServiceID(), 4), identifier("event_id", cell.getEventID(), 4)});
}

Fields describeMosaic(const Quor::TMosaicDescriptor& descriptor) {
    return {code("number_of_horizontal_cells", descriptor.getNumberOfHorizontalCells(), names::MOSAIC_CELLS),
            code("number_of_vertical_cells", descriptor.getNumberOfVerticalCells(), names::MOSAIC_CELLS),
            listByPosition("cells", descriptor, descriptor.size(), &Quor::TMosaicDescriptor::getCell, describeCell)};
}

Fields describeLogoTransmission(const Quor::TLogoTransmissionDescriptor& descriptor) {
    return {code("logo_transm_type", descriptor.getLogoTransmType(), names::LOGO_TRANSMISSION_TYPE),
            identifier("logo_id", descriptor.getLogoID(), 3),
            number("logo_version", descriptor.getLogoVersion()),
            identifier("download_data_id", descriptor.getDownloadDataID(), 4),
            number("logo_data_length", descriptor.getLogoDataLength()).in("bytes"),
            bytes("logo_data", descriptor.getLogoData(), descriptor.getLogoDataLength())};
}

} // namespace

void addServiceDescriptors(Catalogue& catalogue) {
    catalogue.addDescriptor<describeService>("service_descriptor", {SDT});
    catalogue.addDescriptor<describeBouquetName>("bouquet_name_descriptor", {SDT});
    catalogue.addDescriptor<describeCountryAvailability>("country_availability_descriptor", {PMT, SDT});
    catalogue.addDescriptor<describeNvodReference>("nvod_reference_descriptor", {SDT});
    catalogue.addDescriptor<describeTimeShiftedService>("time_shifted_service_descriptor", {SDT});
    catalogue.addDescriptor<describeMosaic>("mosaic_descriptor", {PMT, SDT});
    catalogue.addDescriptor<describeLogoTransmission>("logo_transmission_descriptor", {SDT});
}

} // namespace inspect
