#include "describing/Catalogue.h"
#include "describing/Codes.h"
#include "describing/Lists.h"
#include "describing/Readings.h"
#include "descriptors/TBouquetNameDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TLogoTransmissionDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TNVODReferenceDescriptor.h"
#include "descriptors/TServiceDescriptor.h"
#include "descriptors/TTimeShiftedServiceDescriptor.h"

namespace inspect {

namespace {

using Quor::TServiceDescriptor;

constexpr CodeName SERVICE_TYPES[] = {
    {TServiceDescriptor::SERVICE_DIGITAL_TV, "digital television"},
    {TServiceDescriptor::SERVICE_DIGITAL_AUDIO, "digital audio"},
    {TServiceDescriptor::SERVICE_TELETEXT, "teletext"},
    {TServiceDescriptor::SERVICE_NVOD_REFERENCE, "NVOD reference"},
    {TServiceDescriptor::SERVICE_NVOD_TIME_SHIFTED, "NVOD time-shifted"},
    {TServiceDescriptor::SERVICE_MOSAIC, "mosaic"},
    {TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_RADIO, "advanced coding digital radio"},
    {TServiceDescriptor::SERVICE_ADVANCED_CODING_MOSAIC, "advanced coding mosaic"},
    {TServiceDescriptor::SERVICE_DATA_BROADCASTING, "data broadcasting"},
    {TServiceDescriptor::SERVICE_RESERVED_COMMON_INTERFACE, "reserved for the common interface"},
    {TServiceDescriptor::SERVICE_RCS_MAP, "RCS map"},
    {TServiceDescriptor::SERVICE_RCS_FLS, "RCS FLS"},
    {TServiceDescriptor::SERVICE_DVB_MHP, "DVB MHP"},
    {TServiceDescriptor::SERVICE_DIGITAL_MPEG2_HD_TELEVISION, "MPEG-2 HD television"},
    {TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_SD_TV, "advanced coding SD television"},
    {TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_SD_TIME_SHIFTED_TV,
     "advanced coding SD NVOD time-shifted"},
    {TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_SD_REFERENCE_TV, "advanced coding SD NVOD reference"},
    {TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_HD_TV, "advanced coding HD television"},
    {TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_HD_TIME_SHIFTED_TV,
     "advanced coding HD NVOD time-shifted"},
    {TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_HD_REFERENCE_TV, "advanced coding HD NVOD reference"},
    {TServiceDescriptor::SERVICE_SPECIAL_VIDEO, "special video"},
    {TServiceDescriptor::SERVICE_SPECIAL_AUDIO, "special audio"},
    {TServiceDescriptor::SERVICE_SPECIAL_DATA, "special data"},
    {TServiceDescriptor::SERVICE_ENGINEERING, "engineering"},
    {TServiceDescriptor::SERVICE_PROMOTIONAL_VIDEO, "promotional video"},
    {TServiceDescriptor::SERVICE_PROMOTIONAL_AUDIO, "promotional audio"},
    {TServiceDescriptor::SERVICE_PROMOTIONAL_DATA, "promotional data"},
    {TServiceDescriptor::SERVICE_DATA_SERVICE_FOR_ANTECIPATED_STORAGE, "data for storage in advance"},
    {TServiceDescriptor::SERVICE_EXCLUSIVE_DATA_SERVICE_FOR_STORAGE, "data only for storage"},
    {TServiceDescriptor::SERVICE_BOOKMARK_LIST, "bookmark list"},
    {TServiceDescriptor::SERVICE_SIMULTANEOUS_SERVER_TYPE, "simultaneous server type"},
    {TServiceDescriptor::SERVICE_INDEPENDENT_FILE_SERVICE, "independent file"},
    {TServiceDescriptor::SERVICE_DATA, "data"},
};

Fields describeService(const TServiceDescriptor& descriptor) {
    return {serviceType(descriptor.getServiceType()),
            text("service_provider_name", descriptor.getServiceProviderName()),
            text("service_name", descriptor.getServiceName())};
}

Fields describeBouquetName(const Quor::TBouquetNameDescriptor& descriptor) {
    return {text("bouquet_name", descriptor.getBouquetName())};
}

constexpr CodeName COUNTRY_AVAILABILITIES[] = {
    {0, "not in these countries"},
    {1, "in these countries"},
};

Field describeCountry(QUOR_U32 packed) {
    return identifier("", packed, 6).reads(countryCode(packed));
}

Fields describeCountryAvailability(const Quor::TCountryAvailabilityDescriptor& descriptor) {
    return {code("country_availability_flag", descriptor.getCountryAvailabilityFlag(), COUNTRY_AVAILABILITIES),
            listByPosition("country_codes", descriptor, descriptor.size(), &Quor::TCountryAvailabilityDescriptor::get,
                           describeCountry)};
}

Field describeNvodService(const Quor::TNVODReferenceDescriptorItem& item) {
    return object("", {identifier("transport_stream_id", item.getTransportStreamID(), 4),
                       identifier("original_network_id", item.getOriginalNetworkID(), 4),
                       identifier("service_id", item.getServiceID(), 4)});
}

Fields describeNvodReference(const Quor::TNVODReferenceDescriptor& descriptor) {
    return {listByPosition("items", descriptor, descriptor.size(), &Quor::TNVODReferenceDescriptor::get,
                           describeNvodService)};
}

Fields describeTimeShiftedService(const Quor::TTimeShiftedServiceDescriptor& descriptor) {
    return {identifier("reference_service_id", descriptor.getReferenceServiceID(), 4)};
}

using Quor::TMosaicDescriptorCell;

constexpr CodeName PRESENTATION_TYPES[] = {
    {TMosaicDescriptorCell::PRESENTATION_TYPE_UNDEFINED, "undefined"},
    {TMosaicDescriptorCell::PRESENTATION_TYPE_VIDEO, "video"},
    {TMosaicDescriptorCell::PRESENTATION_TYPE_STILL_PICTURE, "still picture"},
    {TMosaicDescriptorCell::PRESENTATION_TYPE_GRAPHICS_OR_TEXT, "graphics or text"},
};

constexpr CodeName CELL_LINKAGES[] = {
    {TMosaicDescriptorCell::LINKAGE_TYPE_UNDEFINED, "undefined"},
    {TMosaicDescriptorCell::LINKAGE_TYPE_BOUQUET_RELATED, "bouquet"},
    {TMosaicDescriptorCell::LINKAGE_TYPE_SERVICE_RELATED, "service"},
    {TMosaicDescriptorCell::LINKAGE_TYPE_OTHER_MOSAIC_RELATED, "other mosaic"},
    {TMosaicDescriptorCell::LINKAGE_TYPE_EVENT_RELATED, "event"},
};

Field describeCell(const TMosaicDescriptorCell& cell) {
    return object("",
                  {number("logical_cell_id", cell.getLogicalCellID()),
                   code("logical_cell_presentation_info", cell.getLogicalCellPresentationInfo(), PRESENTATION_TYPES),
                   number("elementary_cell_field_length", cell.getElementaryCellFieldLength()),
                   numbers("elementary_cell_ids", cell.getElementaryCellIDs(), cell.getElementaryCellFieldLength(), 0),
                   code("cell_linkage_info", cell.getCellLinkageInfo(), CELL_LINKAGES),
                   identifier("bouquet_id", cell.getBouquetID(), 4),
                   identifier("original_network_id", cell.getOriginalNetworkID(), 4),
                   identifier("transport_stream_id", cell.getTransportStreamID(), 4),
                   identifier("service_id", cell.getServiceID(), 4), identifier("event_id", cell.getEventID(), 4)});
}

using Quor::TMosaicDescriptor;

constexpr CodeName NUMBERS_OF_CELLS[] = {
    {TMosaicDescriptor::NUMBER_OF_CELLS_1, "1 cell"},  {TMosaicDescriptor::NUMBER_OF_CELLS_2, "2 cells"},
    {TMosaicDescriptor::NUMBER_OF_CELLS_3, "3 cells"}, {TMosaicDescriptor::NUMBER_OF_CELLS_4, "4 cells"},
    {TMosaicDescriptor::NUMBER_OF_CELLS_5, "5 cells"}, {TMosaicDescriptor::NUMBER_OF_CELLS_6, "6 cells"},
    {TMosaicDescriptor::NUMBER_OF_CELLS_7, "7 cells"}, {TMosaicDescriptor::NUMBER_OF_CELLS_8, "8 cells"},
};

Fields describeMosaic(const TMosaicDescriptor& descriptor) {
    return {numberOfCells("number_of_horizontal_cells", descriptor.getNumberOfHorizontalCells()),
            numberOfCells("number_of_vertical_cells", descriptor.getNumberOfVerticalCells()),
            listByPosition("cells", descriptor, descriptor.size(), &TMosaicDescriptor::getCell, describeCell)};
}

using Quor::TLogoTransmissionDescriptor;

constexpr CodeName LOGO_TYPES[] = {
    {TLogoTransmissionDescriptor::TYPE_CDT1, "common data table, with its version"},
    {TLogoTransmissionDescriptor::TYPE_CDT2, "common data table"},
    {TLogoTransmissionDescriptor::TYPE_SIMPLE, "simple logo"},
};

Fields describeLogoTransmission(const TLogoTransmissionDescriptor& descriptor) {
    return {code("logo_transm_type", descriptor.getLogoTransmType(), LOGO_TYPES),
            identifier("logo_id", descriptor.getLogoID(), 3),
            number("logo_version", descriptor.getLogoVersion()),
            identifier("download_data_id", descriptor.getDownloadDataID(), 4),
            number("logo_data_length", descriptor.getLogoDataLength()).in("bytes"),
            bytes("logo_data", descriptor.getLogoData(), descriptor.getLogoDataLength())};
}

} // namespace

Field numberOfCells(std::string_view name, QUOR_U8 number) {
    return code(name, number, NUMBERS_OF_CELLS);
}

Field serviceType(QUOR_U8 type) {
    return identifier("service_type", type, 2).named(SERVICE_TYPES);
}

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
