#pragma once

#include "Wire.h"

#include <string>

/// Messages and objects of carousels as they are on air.
namespace wire {

using sample::Bytes;

Bytes u8(std::size_t value);
Bytes u32(std::size_t value);

/// Bytes behind their length of 8, 16 or 32 bits.
Bytes counted8(const Bytes& bytes);
Bytes counted16(const Bytes& bytes);
Bytes counted32(const Bytes& bytes);

/// A section of table 0x3B with a message of the given header.
Bytes messageSection(unsigned messageId, unsigned transactionId, const Bytes& body, const Bytes& adaptation = {});

/// The DII that announces a module, and the stream in which it comes.
struct Delivery {
    unsigned associationTag = 0x000B;
    unsigned transactionId = 0x80000002;
};

/// A tap of use 0x0017, without a selector.
Bytes objectTap(unsigned associationTag);

/// An IOR of one BIOP profile.
Bytes ior(const std::string& kind, unsigned carouselId, unsigned moduleId, const Bytes& objectKey,
          const Delivery& delivery = {});

/// A DSI with a service gateway.
Bytes gatewaySection(unsigned carouselId, unsigned moduleId, const Bytes& objectKey,
                     unsigned transactionId = 0x80000000, const Delivery& delivery = {});

/// A module as a DII announces it.
struct Announced {
    unsigned id;
    std::size_t size;
    unsigned version = 1;
    Bytes descriptors = {};
};

struct Dii {
    unsigned downloadId = 2;
    unsigned blockSize = 16;
    unsigned transactionId = 0x80000002;
    unsigned associationTag = 0x000B; ///< of the stream with the blocks
    unsigned moduleTimeOut = 100;     ///< microseconds, as the next ones
    unsigned blockTimeOut = 101;
    unsigned minBlockTime = 102;
};

/// A DII of an object carousel, and one of a data carousel.
Bytes objectDii(const Dii& dii, const std::vector<Announced>& modules);
Bytes dataDii(const Dii& dii, const std::vector<Announced>& modules);

/// A DII of any moduleInfo, with its length.
Bytes diiOf(const Dii& dii, unsigned numberOfModules, const Bytes& modules);

struct Ddb {
    unsigned moduleId = 1;
    unsigned number = 0;
    unsigned version = 1;
    unsigned downloadId = 2;
    unsigned lastSection = 0;
};

/// A section of table 0x3C with any body.
Bytes blockSection(unsigned downloadId, const Bytes& body);

Bytes block(const Ddb& ddb, const Bytes& bytes);

/// All blocks of a module, in order.
std::vector<Bytes> blocks(const Ddb& first, std::size_t blockSize, const Bytes& module);

/// A BIOP message.
Bytes object(const std::string& kind, const Bytes& key, const Bytes& info, const Bytes& body);

/// A file with its contentSize.
Bytes file(const Bytes& key, const Bytes& content);

/// Events of a stream, and the stream of their sections.
struct Events {
    struct Event {
        std::string name;
        unsigned id;
    };

    unsigned associationTag;
    std::vector<Event> events;
};

/// A stream event object of a stream that has sound, pictures and data, and no end.
Bytes streamEvents(const Bytes& key, const Events& events);

/// A name in a directory.
struct Bound {
    std::string name;
    std::string kind;
    unsigned moduleId;
    Bytes key;
    unsigned carouselId = 2;
    Delivery delivery = {};
};

/// A directory; the kind is "dir" or "srg".
Bytes directory(const std::string& kind, const Bytes& key, const std::vector<Bound>& bindings);

/// A binding as it stands in a directory.
Bytes binding(const Bound& bound);

} // namespace wire
