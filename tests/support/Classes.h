#pragma once

#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "descriptors/TGeneralEventDescriptor.h"
#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "support/Rows.h"
#include "tot/TTOTTable.h"

/// The classes that bytes are parsed into, each in a line, with the class of the items that it owns. The tests of what
/// all of them promise go through this list, and one test misses a descriptor or an item that does not stand here.
inline auto makeClassRows() {
    using namespace Quor;
    return Rows{
        // tag, smallest descriptor_length, body of a good descriptor, who hands it out, the items that it owns
        descriptorRow<TLocalTimeOffsetDescriptor>(0x58, 11,
                                                  "425241 0C 0300 0000000000 0000  415247 04 0300 0000000000 0000"
                                                  "000000 04 0300 0000000000 0000",
                                                  in(&TTOTTable::getLocalTimeOffsetDescriptor),
                                                  map<&TLocalTimeOffsetDescriptor::getCountryCodes>(13), 2),

        descriptorRow<TStreamIdentifierDescriptor>(
            0x52, 1, "07", in(&TPMTTable::getStreamIdentifierDescriptor, &TProgramMap::getStreamIdentifierDescriptor)),
        descriptorRow<TComponentDescriptor>(
            0x50, 6, "F1 B3 10 706F72 566964656F",
            in(&TPMTTable::getComponentDescriptor, &TProgramMap::getComponentDescriptor)),
        descriptorRow<TCopyrightDescriptor>(
            0x0D, 3, "01 E123", in(&TPMTTable::getCopyrightDescriptor, &TProgramMap::getCopyrightDescriptor)),
        descriptorRow<THierarchicalTransmissionDescriptor>(
            0xC0, 3, "01 E111",
            in(&TPMTTable::getHierarchicalTransmissionDescriptor, &TProgramMap::getHierarchicalTransmissionDescriptor)),
        descriptorRow<TDataComponentDescriptor>(
            0xFD, 2, "00A0 112233",
            in(&TPMTTable::getDataComponentDescriptor, &TProgramMap::getDataComponentDescriptor)),
        descriptorRow<TVideoDecodeControlDescriptor>(
            0xC8, 1, "47",
            in(&TPMTTable::getVideoDecodeControlDescriptor, &TProgramMap::getVideoDecodeControlDescriptor)),
        descriptorRow<TAVCVideoDescriptor>(0x28, 4, "64 00 28 3F",
                                           in(&TPMTTable::getAVCVideoDescriptor, &TProgramMap::getAVCVideoDescriptor)),
        descriptorRow<TAVCTimingAndHRDDescriptor>(
            0x2A, 2, "81 80 00000001 0000012C A0000BB8 1F",
            in(&TPMTTable::getAVCTimingAndHRDDescriptor, &TProgramMap::getAVCTimingAndHRDDescriptor)),
        descriptorRow<TAACDescriptor>(0x7C, 2, "2C 80 11 AABB",
                                      in(&TPMTTable::getAACDescriptor, &TProgramMap::getAACDescriptor)),

        descriptorRow<TCAIdentifierDescriptor>(0x53, 2, "0005 8001 02",
                                               in(&TPMTTable::getCAIdentifierDescriptor,
                                                  &TProgramMap::getCAIdentifierDescriptor,
                                                  &TServiceDescription::getCAIdentifierDescriptor)),
        descriptorRow<TDigitalCopyControlDescriptor>(0xC1, 1, "70 7F 03 25 40 C0",
                                                     in(&TPMTTable::getDigitalCopyControlDescriptor,
                                                        &TProgramMap::getDigitalCopyControlDescriptor,
                                                        &TServiceDescription::getDigitalCopyControlDescriptor),
                                                     list<TDigitalCopyControlDescriptor>(1)),
        descriptorRow<TContentAvailabilityDescriptor>(0xDE, 1, "31",
                                                      in(&TPMTTable::getContentAvailabilityDescriptor,
                                                         &TProgramMap::getContentAvailabilityDescriptor,
                                                         &TServiceDescription::getContentAvailabilityDescriptor)),
        descriptorRow<TParentalRatingDescriptor>(
            0x55, 0, "425241 05 415247 07",
            in(&TPMTTable::getParentalRatingDescriptor, &TProgramMap::getParentalRatingDescriptor),
            list<TParentalRatingDescriptor>(4)),
        descriptorRow<TTargetRegionDescriptor>(
            0xC6, 1, "01 11223344", in(&TPMTTable::getTargetRegionDescriptor, &TProgramMap::getTargetRegionDescriptor)),
        descriptorRow<TConditionalPlaybackDescriptor>(
            0xF8, 4, "0005 E100 1122",
            in(&TPMTTable::getConditionalPlaybackDescriptor, &TProgramMap::getConditionalPlaybackDescriptor)),

        descriptorRow<TNetworkNameDescriptor>(
            0x40, 1, "474C4F424F",
            in(&TNITTable::getNetworkNameDescriptor, &TTransportStreamInfo::getNetworkNameDescriptor)),
        descriptorRow<TServiceListDescriptor>(
            0x41, 2, "38 C0 20 01 00 16",
            in(&TNITTable::getServiceListDescriptor, &TTransportStreamInfo::getServiceListDescriptor),
            map<&TServiceListDescriptor::getServiceIDs>(2)),
        descriptorRow<TLinkageDescriptor>(
            0x4A, 7, "02E1 7ED4 5C20 06 1122",
            in(&TPMTTable::getLinkageDescriptor, &TProgramMap::getLinkageDescriptor, &TNITTable::getLinkageDescriptor,
               &TTransportStreamInfo::getLinkageDescriptor, &TServiceDescription::getLinkageDescriptor)),
        descriptorRow<TTSInformationDescriptor>(
            0xCD, 8, "07 0E 474C42 AF 01 5C38 0F 02 5C20 5C21",
            in(&TNITTable::getTSInformationDescriptor, &TTransportStreamInfo::getTSInformationDescriptor),
            list<&TTSInformationDescriptor::getTransmissionTypeCount, &TTSInformationDescriptor::getTransmissionType,
                 &TTSInformationDescriptor::addTransmissionType, &TTSInformationDescriptor::removeTransmissionType>(2)),
        descriptorRow<TTerrestrialDeliverySystemDescriptor>(
            0xFA, 4, "8916 0F90 0E27",
            in(&TNITTable::getTerrestrialDeliverySystemDescriptor,
               &TTransportStreamInfo::getTerrestrialDeliverySystemDescriptor)),
        descriptorRow<TPartialReceptionDescriptor>(
            0xFB, 2, "5C38 5C20",
            in(&TNITTable::getPartialReceptionDescriptor, &TTransportStreamInfo::getPartialReceptionDescriptor)),
        descriptorRow<TEmergencyInformationDescriptor>(
            0xFC, 4, "5C20 80 02 1230 5C38 40 04 4560 7890",
            in(&TPMTTable::getEmergencyInformationDescriptor, &TProgramMap::getEmergencyInformationDescriptor,
               &TNITTable::getEmergencyInformationDescriptor, &TTransportStreamInfo::getEmergencyInformationDescriptor),
            list<TEmergencyInformationDescriptor>(4)),
        descriptorRow<TSystemManagementDescriptor>(
            0xFE, 2, "0301 1122",
            in(&TPMTTable::getSystemManagementDescriptor, &TProgramMap::getSystemManagementDescriptor,
               &TNITTable::getSystemManagementDescriptor, &TTransportStreamInfo::getSystemManagementDescriptor)),

        descriptorRow<TBouquetNameDescriptor>(0x47, 1, "474C42", in(&TServiceDescription::getBouquetNameDescriptor)),
        descriptorRow<TServiceDescriptor>(0x48, 3, "01 03 474C42 05 474C4F424F",
                                          in(&TServiceDescription::getServiceDescriptor)),
        descriptorRow<TCountryAvailabilityDescriptor>(0x49, 4, "80 425241 415247",
                                                      in(&TPMTTable::getCountryAvailabilityDescriptor,
                                                         &TProgramMap::getCountryAvailabilityDescriptor,
                                                         &TServiceDescription::getCountryAvailabilityDescriptor)),
        descriptorRow<TNVODReferenceDescriptor>(0x4B, 6, "0001 0002 0003 0004 0005 0006",
                                                in(&TServiceDescription::getNVODReferenceDescriptor),
                                                list<TNVODReferenceDescriptor>(6)),
        descriptorRow<TTimeShiftedServiceDescriptor>(0x4C, 2, "5C20",
                                                     in(&TServiceDescription::getTimeShiftedServiceDescriptor)),
        descriptorRow<TMosaicDescriptor>(
            0x51, 1, "12  04 01 01 05 01 0001  08 02 00 02 0001 0002 0003  0C 03 00 04 0001 0002 0003 0004",
            in(&TPMTTable::getMosaicDescriptor, &TProgramMap::getMosaicDescriptor,
               &TServiceDescription::getMosaicDescriptor),
            list<&TMosaicDescriptor::size, &TMosaicDescriptor::getCell, &TMosaicDescriptor::addCell,
                 &TMosaicDescriptor::removeCell>(4)),
        descriptorRow<TLogoTransmissionDescriptor>(0xCF, 1, "01 0123 0456 FEDC",
                                                   in(&TServiceDescription::getLogoTransmissionDescriptor)),

        descriptorRow<TCarouselIdentifierDescriptor>(
            0x13, 4, "0000002A 01 0500",
            in(&TPMTTable::getCarouselIdentifierDescriptor, &TProgramMap::getCarouselIdentifierDescriptor)),
        descriptorRow<TCarouselCompatibleCompositeDescriptor>(
            0xF7, 4, "01020304 05",
            in(&TPMTTable::getCarouselCompatibleCompositeDescriptor,
               &TProgramMap::getCarouselCompatibleCompositeDescriptor)),
        descriptorRow<TNPTReferenceDescriptor>(0x01, 18, "A5 01 89ABCDEF FFFFFF 01 01234567 0001 0002",
                                               in(&TDSMCCSectionTable::getNPTReferenceDescriptor)),
        descriptorRow<TStreamModeDescriptor>(0x03, 2, "07 FF", in(&TDSMCCSectionTable::getStreamModeDescriptor)),
        descriptorRow<TStreamEventDescriptor>(0x04, 10, "0102 FFFFFFFF 00015F90 1122",
                                              in(&TDSMCCSectionTable::getStreamEventDescriptor)),
        descriptorRow<TGeneralEventDescriptor>(0x04, 16, "ABCD 01 C079 123456 0102030405 66 7788 99", in()),

        descriptorRow<TApplicationDescriptor>(
            0x00, 3, "0A 8001 01 02 03 0001 01 00 00 FF 05 0102",
            in(&TAITTable::getApplicationDescriptor, &TApplication::getApplicationDescriptor),
            map<&TApplicationDescriptor::getProfilesCount, &TApplicationDescriptor::getProfile,
                &TApplicationDescriptor::addProfile, &TApplicationDescriptor::removeProfile,
                &TApplicationDescriptor::getProfiles>(5, 3)),
        descriptorRow<TApplicationNameDescriptor>(
            0x01, 4, "706F72 00  656E67 00  737061 05 4A7565676F",
            in(&TAITTable::getApplicationNameDescriptor, &TApplication::getApplicationNameDescriptor),
            map<&TApplicationNameDescriptor::getLanguageCodes>(4)),
        descriptorRow<TApplicationIconDescriptor>(
            0x0B, 2, "03 2F6963 01FF",
            in(&TAITTable::getApplicationIconDescriptor, &TApplication::getApplicationIconDescriptor)),
        descriptorRow<TTransportProtocolDescriptor>(
            0x02, 3, "0002 07 80 0102 0304 0506 80 01 61 02 6263",
            in(&TAITTable::getTransportProtocolDescriptor, &TApplication::getTransportProtocolDescriptor), NoItems{},
            2),
        descriptorRow<TExternalApplicationAuthorizationDescriptor>(
            0x05, 0, "0000000B 0002 06  0000000A 0001 05",
            in(&TAITTable::getExternalApplicationAuthorizationDescriptor,
               &TApplication::getExternalApplicationAuthorizationDescriptor),
            map<&TExternalApplicationAuthorizationDescriptor::getApplicationIdentifierHashIDs>(7)),
        descriptorRow<TIPSignalingDescriptor>(
            0x11, 3, "010203", in(&TAITTable::getIPSignalingDescriptor, &TApplication::getIPSignalingDescriptor)),
        descriptorRow<TPrefetchDescriptor>(0x0C, 4, "07 02 6162 01 01 63 02",
                                           in(&TAITTable::getPrefetchDescriptor, &TApplication::getPrefetchDescriptor),
                                           list<TPrefetchDescriptor>(2)),
        descriptorRow<TDIILocationDescriptor>(
            0x0D, 4, "07 FF01 0002 0003 0004",
            in(&TAITTable::getDIILocationDescriptor, &TApplication::getDIILocationDescriptor),
            list<TDIILocationDescriptor>(4)),
        descriptorRow<TGingaJavaApplicationDescriptor>(
            0x03, 0, "03 616263 02 6465",
            in(&TAITTable::getGingaApplicationDescriptor, &TApplication::getGingaApplicationDescriptor)),
        descriptorRow<TGingaJavaApplicationLocationDescriptor>(
            0x04, 4, "02 2F61 03 2F6263 4D61696E",
            in(&TAITTable::getGingaApplicationLocationDescriptor,
               &TApplication::getGingaApplicationLocationDescriptor)),
        descriptorRow<TGingaNCLApplicationDescriptor>(
            0x06, 0, "03 616263 02 6465",
            in(&TAITTable::getGingaApplicationDescriptor, &TApplication::getGingaApplicationDescriptor)),
        descriptorRow<TGingaNCLApplicationLocationDescriptor>(0x07, 4, "02 2F61 03 2F6263 4D61696E",
                                                              in(&TAITTable::getGingaApplicationLocationDescriptor,
                                                                 &TApplication::getGingaApplicationLocationDescriptor)),

        descriptorRow<TDownloadContentDescriptor>(
            0xC9, 18,
            "FF 00001000 00000001 00000064 001F43 40"
            "0011 0001 01 0D 01 000001 0002 0003 01 01 02 AABB"
            "0002 0100 00000800 01 CC 0200 00000800 00"
            "02 DDEE 706F72 03 4E6577",
            in(&TDownloadContent::getDownloadContentDescriptor),
            list<&TDownloadContentDescriptor::getDownloadContentDescriptorItemSize,
                 &TDownloadContentDescriptor::getDownloadContentDescriptorItem,
                 &TDownloadContentDescriptor::addDownloadContentDescriptorItem,
                 &TDownloadContentDescriptor::removeDownloadContentDescriptorItem>(7)),

        // smallest size of items that stand alone
        itemRow<TApplicationIdentifier>(6),
        itemRow<TCompatibilityDescriptor>(4),

        // what else owns items, a good one of it, and the items
        ownerRow<TCompatibilityDescriptor>(
            "001B 0002  01 09 01 000001 0002 0003 00  02 0C 01 000001 0002 0003 01  04 01 AA",
            list<&TCompatibilityDescriptor::getCompatibilityDescriptorItemSize,
                 &TCompatibilityDescriptor::getCompatibilityDescriptorItem,
                 &TCompatibilityDescriptor::addCompatibilityDescriptorItem,
                 &TCompatibilityDescriptor::removeCompatibilityDescriptorItem>(11)),
        ownerRow<TCompatibilityDescriptorItem>(
            "01 0E 01 000001 0002 0003 02  04 01 AA  05 00",
            list<&TCompatibilityDescriptorItem::getCompatibilityDescriptorSubItemSize,
                 &TCompatibilityDescriptorItem::getCompatibilityDescriptorSubItem,
                 &TCompatibilityDescriptorItem::addCompatibilityDescriptorSubItem,
                 &TCompatibilityDescriptorItem::removeCompatibilityDescriptorSubItem>(2)),
        ownerRow<TDownloadContent>("1200 2081 0100 0100  C079 123456 013000  C07A 000000 235959",
                                   list<&TDownloadContent::getScheduleInfoSize, &TDownloadContent::getScheduleInfo,
                                        &TDownloadContent::addScheduleInfo, &TDownloadContent::removeScheduleInfo>(8)),
        ownerRow<TPATTable>("00 B011 0735 C1 00 00  E6A1 E102  E6A0 E101  CCCCCCCC",
                            map<&TPATTable::getProgramNumbers>(4, 8)),
        ownerRow<TPMTTable>(
            "02 B01D E6A0 C1 00 00  E100 F000  1B E111 F000  11 E112 F006 55 04 425241 05  CCCCCCCC",
            list<&TPMTTable::size, static_cast<TProgramMap* (TPMTTable::*)(QUOR_U8) const>(&TPMTTable::getProgramMap),
                 &TPMTTable::addProgramMap, &TPMTTable::removeProgramMap>(5)),
        ownerRow<TNITTable>(
            "40 B025 0735 C1 00 00  F000 F018  FFFE 0001 F000  0003 0001 F000  0000 0001 F006 41 04 2001 38C0 CCCCCCCC",
            map<&TNITTable::getTransportStreamLoopSize, &TNITTable::getTransportStreamInfo,
                &TNITTable::addTransportStreamInfo, &TNITTable::removeTransportStreamInfo,
                &TNITTable::getTransportStreamIDs>(6, 12)),
        ownerRow<TSDTTable>(
            "42 B023 0735 C1 00 00  0001 FF  FFFE FF 8000  0003 FF 8000  0000 FF 8008 4B 06 0001 0002 0003  CCCCCCCC",
            map<&TSDTTable::size, &TSDTTable::getServiceDescription, &TSDTTable::addServiceDescription,
                &TSDTTable::removeServiceDescription, &TSDTTable::getServiceIDs>(5, 11)),
        ownerRow<TAITTable>(
            "74 B031 0009 C1 00 00  F000 F024  0000000A 0002 01 F000  0000000A 0001 02 F000"
            "0000000A 0003 02 F009 05 07 0000000B 0002 06  CCCCCCCC",
            map<&TAITTable::getApplicationsCount, &TAITTable::getApplication, &TAITTable::addApplication,
                &TAITTable::removeApplication, &TAITTable::getApplicationsIDs>(9, 12)),
        ownerRow<TSDTTTable>("C3 B028 1234 C1 00 00  0735 0001 E6A0 02  1200 2081 0000 0000"
                             "2200 2081 0080 0080 C079 123456 013000  CCCCCCCC",
                             list<&TSDTTTable::getDownloadContentSize, &TSDTTTable::getDownloadContent,
                                  &TSDTTTable::addDownloadContent, &TSDTTTable::removeDownloadContent>(8)),
    };
}

using ClassRows = decltype(makeClassRows());

/// Made once, in a source of its own.
const ClassRows& classRows();
