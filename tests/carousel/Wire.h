#pragma once

#include "support/Bytes.h"

#include <string>
#include <vector>

/// Parts of carousels as they are on air.
namespace wire {

ByteVector u8(std::size_t value);
ByteVector u32(std::size_t value);

/// Bytes behind their length of 8, 16 or 32 bits.
ByteVector counted8(const ByteVector& bytes);
ByteVector counted16(const ByteVector& bytes);
ByteVector counted32(const ByteVector& bytes);

/// A section of table 0x3B with a message of the given header.
ByteVector messageSection(unsigned messageId, unsigned transactionId, const ByteVector& body,
                          const ByteVector& adaptation = {});

/// A tap of use 0x0016 that names a DII.
ByteVector deliveryTap(unsigned associationTag, unsigned transactionId);

/// A tap of use 0x0017, without a selector.
ByteVector objectTap(unsigned associationTag);

/// An IOR of one BIOP profile, with a tap that names DII 0x80000002 on association_tag 0x000B.
ByteVector ior(const std::string& kind, unsigned carouselId, unsigned moduleId, const ByteVector& objectKey);

/// A DSI with a service gateway.
ByteVector gatewaySection(unsigned carouselId, unsigned moduleId, const ByteVector& objectKey,
                          unsigned transactionId = 0x80000000);

/// A module as a DII announces it.
struct Announced {
    unsigned id;
    std::size_t size;
    unsigned version = 1;
    ByteVector descriptors = {};
};

struct Dii {
    unsigned downloadId = 2;
    unsigned blockSize = 16;
    unsigned transactionId = 0x80000002;
};

/// A DII of an object carousel, and one of a data carousel.
ByteVector objectDii(const Dii& dii, const std::vector<Announced>& modules);
ByteVector dataDii(const Dii& dii, const std::vector<Announced>& modules);

/// A DII of any moduleInfo, with its length.
ByteVector diiOf(const Dii& dii, unsigned numberOfModules, const ByteVector& modules);

struct Ddb {
    unsigned moduleId = 1;
    unsigned number = 0;
    unsigned version = 1;
    unsigned downloadId = 2;
};

/// A section of table 0x3C with any body.
ByteVector blockSection(unsigned downloadId, const ByteVector& body);

ByteVector block(const Ddb& ddb, const ByteVector& bytes);

/// All blocks of a module, in order.
std::vector<ByteVector> blocks(const Ddb& first, std::size_t blockSize, const ByteVector& module);

/// A BIOP message.
ByteVector object(const std::string& kind, const ByteVector& key, const ByteVector& info, const ByteVector& body);

/// A file with its contentSize.
ByteVector file(const ByteVector& key, const ByteVector& content);

/// A name in a directory.
struct Bound {
    std::string name;
    std::string kind;
    unsigned moduleId;
    ByteVector key;
    unsigned carouselId = 2;
};

/// A directory; the kind is "dir" or "srg".
ByteVector directory(const std::string& kind, const ByteVector& key, const std::vector<Bound>& bindings);

/// A binding as it stands in a directory.
ByteVector binding(const Bound& bound);

} // namespace wire
