#ifndef DSMCC_MESSAGES_H
#define DSMCC_MESSAGES_H

#include "dsmcc/Bytes.h"
#include "dsmcc/Export.h"
#include "dsmcc/Refusal.h"

#include <optional>
#include <string>
#include <variant>

namespace dsmcc {

/// A descriptor of a module, a group or an object; the tags are those of carousels.
struct Descriptor {
    static constexpr std::uint8_t TYPE = 0x01;              ///< MIME type, a text
    static constexpr std::uint8_t NAME = 0x02;              ///< name, a text
    static constexpr std::uint8_t COMPRESSED_MODULE = 0x09; ///< compression_method and original_size
    static constexpr std::uint8_t LABEL = 0x70;             ///< label for prefetching, a text
    static constexpr std::uint8_t CONTENT_TYPE = 0x72;      ///< MIME type of a file, a text
    static constexpr std::uint8_t COMPRESSION_TYPE = 0xC2;  ///< compression_type and original_size, of ARIB

    std::uint8_t tag = 0; ///< which
    Bytes body;           ///< behind its length
};

/// A connection, by which an elementary stream is found.
struct Tap {
    std::uint16_t id = 0;                       ///< of the tap
    std::uint16_t use = 0;                      ///< 0x0016: delivers a DII; 0x0017: blocks; others
    std::uint16_t associationTag = 0;           ///< of the elementary stream
    Bytes selector;                             ///< as broadcast
    std::optional<std::uint32_t> transactionId; ///< of the DII, where the selector has one
    std::uint32_t timeout = 0;                  ///< microseconds to wait for it
};

/// Where an object is.
struct ObjectLocation {
    std::uint32_t carouselId = 0; ///< of the carousel
    std::uint16_t moduleId = 0;   ///< of the module in it
    Bytes objectKey;              ///< of the object in that
};

/// An interoperable object reference.
struct Ior {
    std::string typeId;                     ///< the kind of object, without the NUL at its end
    std::optional<ObjectLocation> location; ///< none when there is no BIOP profile
    std::vector<Tap> taps;                  ///< how to get to it; the first names the DII
    std::optional<Bytes> serviceDomain;     ///< NSAP address of the carousel of another service
};

/// A group as a DSI announces it.
struct GroupInfo {
    std::uint32_t id = 0;                ///< transactionId of its DII
    std::uint32_t size = 0;              ///< bytes of its modules
    Bytes compatibility;                 ///< compatibilityDescriptor, behind its length
    std::vector<Descriptor> descriptors; ///< of the group
};

/// DSI: how a carousel begins. It has a service gateway, or else groups.
struct DownloadServerInitiate {
    std::uint32_t transactionId = 0;     ///< see identificationOf() and versionOf()
    Bytes compatibility;                 ///< compatibilityDescriptor, behind its length
    std::optional<Ior> gateway;          ///< of an object carousel
    std::vector<Tap> taps;               ///< downloadTaps of an object carousel
    std::vector<Descriptor> descriptors; ///< userInfo of an object carousel
    std::vector<GroupInfo> groups;       ///< of a data carousel
    Bytes privateData;                   ///< behind the groups
};

/// A module as a DII announces it.
struct ModuleInfo {
    std::uint16_t id = 0;                ///< of the module
    std::uint32_t size = 0;              ///< on air, in bytes
    std::uint8_t version = 0;            ///< of the module
    std::uint32_t moduleTimeOut = 0;     ///< microseconds; of object carousels
    std::uint32_t blockTimeOut = 0;      ///< microseconds; of object carousels
    std::uint32_t minBlockTime = 0;      ///< microseconds; of object carousels
    std::vector<Tap> taps;               ///< of object carousels: where its blocks come
    std::vector<Descriptor> descriptors; ///< those before the first that does not fit

    /// The first descriptor of a tag; null when there is none.
    const Descriptor* descriptor(std::uint8_t tag) const {
        for (const Descriptor& each : descriptors) {
            if (each.tag == tag) {
                return &each;
            }
        }
        return nullptr;
    }
    /// The text of a descriptor; empty when there is none.
    std::string text(std::uint8_t tag) const {
        const Descriptor* const found = descriptor(tag);
        return found == nullptr ? std::string() : std::string(found->body.begin(), found->body.end());
    }
};

/// DII: which modules there are.
struct DownloadInfoIndication {
    std::uint32_t transactionId = 0;   ///< see identificationOf() and versionOf()
    std::uint32_t downloadId = 0;      ///< of its blocks; in object carousels the id of the carousel
    std::uint16_t blockSize = 0;       ///< bytes of every block but a module's last
    std::uint32_t downloadTimeOut = 0; ///< tCDownloadScenario, in microseconds
    Bytes compatibility;               ///< compatibilityDescriptor, behind its length
    bool object = false;               ///< every module is announced as one of an object carousel
    std::vector<ModuleInfo> modules;   ///< in the order of the message
    Bytes privateData;                 ///< behind the modules
};

/// DDB: a block of a module.
struct DownloadDataBlock {
    std::uint32_t downloadId = 0;   ///< as in the DII
    std::uint16_t moduleId = 0;     ///< of the module
    std::uint8_t moduleVersion = 0; ///< of the module
    std::uint16_t blockNumber = 0;  ///< from 0 on
    ByteView data;                  ///< in the section
    std::size_t at = 0;             ///< where in the section they begin
};

/// Another message of the download protocol, such as DownloadCancel.
struct OtherMessage {
    std::uint16_t messageId = 0; ///< which
};

/// What a section holds, or why it was refused.
using Message = std::variant<Refusal, DownloadServerInitiate, DownloadInfoIndication, DownloadDataBlock, OtherMessage>;

/// Reads a complete section of table 0x3B or 0x3C, from table_id to CRC_32.
/// @param section the bytes; a DownloadDataBlock refers to them
/// @param crc32 whether the CRC_32 must be right
/// @return the message, or a Refusal
DSMCC_API Message readMessage(ByteView section, bool crc32 = true);

/// Which DSI or DII a transactionId is of: its bits 15 to 1. The others change with its versions.
constexpr std::uint16_t identificationOf(std::uint32_t transactionId) {
    return static_cast<std::uint16_t>(transactionId >> 1U & 0x7FFFU);
}

/// Version of a DSI or DII: bits 29 to 16 of its transactionId.
constexpr std::uint16_t versionOf(std::uint32_t transactionId) {
    return static_cast<std::uint16_t>(transactionId >> 16U & 0x3FFFU);
}

} // namespace dsmcc

#endif
