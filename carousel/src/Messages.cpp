// Sections 0x3B and 0x3C.
//
// section
//   table_id 8, section_syntax_indicator 1, 3, section_length 12, table_id_extension 16, 8, section_number 8,
//   last_section_number 8, message, CRC_32 or checksum 32
// dsmccMessageHeader, dsmccDownloadDataHeader
//   protocolDiscriminator 8, dsmccType 8, messageId 16, transactionId or downloadId 32, 8, adaptationLength 8,
//   messageLength 16, adaptation header, body
// DSI
//   serverId 160, compatibilityDescriptor behind its length 16, private data behind their length 16:
//     IOR, taps, contexts, descriptors behind their length 16
//     or numberOfGroups 16, groups, private data behind their length 16
//   group: groupId 32, groupSize 32, groupCompatibility and descriptors each behind their length 16
// DII
//   downloadId 32, blockSize 16, 48, tCDownloadScenario 32 (behind tCDownloadWindow 32), compatibilityDescriptor behind
//   its length 16, numberOfModules 16, modules, private data behind their length 16 module: moduleId 16, moduleSize 32,
//   moduleVersion 8, moduleInfo behind its length 8:
//     moduleTimeOut 32, blockTimeOut 32, minBlockTime 32, taps, descriptors behind their length 8
//     or descriptors
// DDB
//   module_id 16, module_version 8, 8, block_number 16, block

#include "Crc32.h"
#include "References.h"

#include <algorithm>
#include <utility>

namespace dsmcc {

namespace {

constexpr std::uint8_t MESSAGES = 0x3B; // table_id
constexpr std::uint8_t BLOCKS = 0x3C;   // table_id
constexpr std::uint16_t INFO_INDICATION = 0x1002;
constexpr std::uint16_t DATA_BLOCK = 0x1003;
constexpr std::uint16_t SERVER_INITIATE = 0x1006;

struct Header {
    std::uint16_t messageId = 0;
    std::uint32_t id = 0; // transactionId or downloadId
};

/// What is between the header of a section and its CRC_32.
Reader readSection(ByteView section, bool crc32Counts) {
    constexpr std::size_t CRC_SIZE = 4;
    constexpr std::uint8_t SYNTAX = 0x80;
    Reader reader(section);
    const std::uint8_t tableId = reader.u8("table_id");
    if (tableId != MESSAGES && tableId != BLOCKS) {
        refuse(RefusalKind::TableId, 0, "table_id " + std::to_string(tableId) + " is not of a carousel");
    }
    const std::uint16_t length = reader.u16("section_length");
    if ((length & 0x0FFFU) != reader.left()) {
        refuse(RefusalKind::SectionLength, 1,
               "section_length is " + std::to_string(length & 0x0FFFU) + ", and " + std::to_string(reader.left()) +
                   " bytes follow");
    }
    reader.view(5, "section header");
    Reader message = reader.part(std::max(reader.left(), CRC_SIZE) - CRC_SIZE, "message");
    reader.view(CRC_SIZE, "CRC_32");
    // Without the syntax a checksum stands there, which nobody broadcasts.
    if (crc32Counts && (section.data[1] & SYNTAX) != 0 && crc32(section) != 0) {
        refuse(RefusalKind::Crc32, section.size - CRC_SIZE, "the CRC_32 is wrong");
    }
    return message;
}

/// The body behind the header of a message.
Reader readHeader(Reader message, Header& header) {
    constexpr std::uint8_t PROTOCOL = 0x11;
    constexpr std::uint8_t DOWNLOAD = 0x03;
    const std::size_t begin = message.at();
    if (message.u8("protocolDiscriminator") != PROTOCOL || message.u8("dsmccType") != DOWNLOAD) {
        refuse(RefusalKind::Protocol, begin, "no message of the download protocol");
    }
    header.messageId = message.u16("messageId");
    header.id = message.u32("transactionId or downloadId");
    message.u8("reserved");
    const std::size_t adaptation = message.u8("adaptationLength");
    Reader body = message.part(message.u16("messageLength"), "message");
    body.view(adaptation, "adaptation header");
    return body;
}

bool beginsWithIor(Reader reader) {
    constexpr std::uint32_t LONGEST = 64; // of the names of service gateways
    if (reader.left() < 8) {
        return false;
    }
    const std::uint32_t size = reader.u32("");
    if (size < 4 || size > LONGEST) {
        return false;
    }
    const ByteView name = reader.view(3, "");
    const std::string begin(name.begin(), name.end());
    return begin == "srg" || begin == "SRG" || begin == "DSM";
}

GroupInfo readGroup(Reader& reader) {
    GroupInfo group;
    group.id = reader.u32("groupId");
    group.size = reader.u32("groupSize");
    group.compatibility = reader.bytes(reader.u16("groupCompatibility length"), "groupCompatibility");
    group.descriptors = readDescriptors(reader.part(reader.u16("groupInfoLength"), "groupInfo"));
    return group;
}

DownloadServerInitiate readServerInitiate(const Header& header, Reader reader) {
    constexpr std::size_t SERVER_ID = 20;
    DownloadServerInitiate dsi;
    dsi.transactionId = header.id;
    reader.view(SERVER_ID, "serverId");
    dsi.compatibility = reader.bytes(reader.u16("compatibilityDescriptorLength"), "compatibilityDescriptor");
    Reader data = reader.part(reader.u16("privateDataLength"), "privateData");
    if (beginsWithIor(data)) {
        const std::size_t begin = data.at();
        dsi.gateway = readIor(data);
        if (!dsi.gateway->location) {
            refuse(RefusalKind::Location, begin, "the IOR of the service gateway has no ObjectLocation");
        }
        dsi.taps = readTaps(data);
        skipServiceContexts(data);
        dsi.descriptors = readDescriptors(data.part(data.u16("userInfoLength"), "userInfo"));
    } else if (data.left() != 0) {
        for (unsigned left = data.u16("numberOfGroups"); left != 0; --left) {
            dsi.groups.push_back(readGroup(data));
        }
        dsi.privateData = data.left() == 0 ? Bytes() : data.bytes(data.u16("privateDataLength"), "privateData");
    }
    return dsi;
}

/// Whether what announces a module is that of an object carousel, which it then is read from.
bool readObjectInfo(Reader info, ModuleInfo& module) {
    try {
        module.moduleTimeOut = info.u32("moduleTimeOut");
        module.blockTimeOut = info.u32("blockTimeOut");
        module.minBlockTime = info.u32("minBlockTime");
        module.taps = readTaps(info);
        module.descriptors = readDescriptors(info.part(info.u8("userInfoLength"), "userInfo"));
        return info.left() == 0;
    } catch (const Refused&) {
        return false;
    }
}

DownloadInfoIndication readInfoIndication(const Header& header, Reader reader) {
    DownloadInfoIndication dii;
    dii.transactionId = header.id;
    dii.downloadId = reader.u32("downloadId");
    dii.blockSize = reader.u16("blockSize");
    reader.view(6, "windowSize, ackPeriod and tCDownloadWindow");
    dii.downloadTimeOut = reader.u32("tCDownloadScenario");
    dii.compatibility = reader.bytes(reader.u16("compatibilityDescriptorLength"), "compatibilityDescriptor");
    std::vector<Reader> infos;
    for (unsigned left = reader.u16("numberOfModules"); left != 0; --left) {
        ModuleInfo module;
        module.id = reader.u16("moduleId");
        module.size = reader.u32("moduleSize");
        module.version = reader.u8("moduleVersion");
        infos.push_back(reader.part(reader.u8("moduleInfoLength"), "moduleInfo"));
        dii.modules.push_back(std::move(module));
    }
    dii.privateData = reader.bytes(reader.u16("privateDataLength"), "privateData");

    dii.object = !infos.empty();
    for (std::size_t at = 0; at < infos.size() && dii.object; ++at) {
        dii.object = readObjectInfo(infos[at], dii.modules[at]);
    }
    for (std::size_t at = 0; at < infos.size() && !dii.object; ++at) {
        ModuleInfo& module = dii.modules[at];
        module = {module.id, module.size, module.version, 0, 0, 0, {}, readDescriptors(infos[at])};
    }
    return dii;
}

DownloadDataBlock readDataBlock(const Header& header, Reader reader) {
    DownloadDataBlock ddb;
    ddb.downloadId = header.id;
    ddb.moduleId = reader.u16("module_id");
    ddb.moduleVersion = reader.u8("module_version");
    reader.u8("reserved");
    ddb.blockNumber = reader.u16("block_number");
    ddb.at = reader.at();
    ddb.data = reader.view(reader.left(), "block");
    return ddb;
}

} // namespace

Message readMessage(ByteView section, bool crc32) {
    try {
        Header header;
        const Reader body = readHeader(readSection(section, crc32), header);
        const bool block = section.data[0] == BLOCKS;
        if (block && header.messageId == DATA_BLOCK) {
            return readDataBlock(header, body);
        }
        if (!block && header.messageId == SERVER_INITIATE) {
            return readServerInitiate(header, body);
        }
        if (!block && header.messageId == INFO_INDICATION) {
            return readInfoIndication(header, body);
        }
        return OtherMessage{header.messageId};
    } catch (const Refused& refused) {
        return refused.refusal;
    }
}

} // namespace dsmcc
