#ifndef DSMCC_OBJECTS_H
#define DSMCC_OBJECTS_H

#include "dsmcc/Messages.h"

#include <optional>
#include <string>
#include <vector>

namespace dsmcc {

/// What an object is.
enum class ObjectKind {
    File,           ///< "fil"
    Directory,      ///< "dir"
    ServiceGateway, ///< "srg", the root
    Stream,         ///< "str"
    StreamEvent,    ///< "ste"
    Module,         ///< no object: a whole module of a data carousel
    Unknown         ///< none of those
};

/// A name in a directory, and what it is of.
struct Binding {
    std::string name;                      ///< as broadcast, without the NUL at its end; components with "/" between
    bool safe = true;                      ///< no component could lead out of a folder or disturb a terminal
    ObjectKind kind = ObjectKind::Unknown; ///< by the binding, not by the object
    Ior ior;                               ///< the object
    std::optional<std::uint64_t> size;     ///< contentSize of a file, where the binding has it
};

/// An event of a stream.
struct StreamEvent {
    std::string name;     ///< as broadcast, without the NUL at its end
    std::uint16_t id = 0; ///< eventId of its stream event descriptors
};

/// What a stream or stream event object says of its stream.
struct StreamInfo {
    std::string description;         ///< a text
    std::int32_t seconds = 0;        ///< duration
    std::uint32_t microseconds = 0;  ///< beside the seconds
    bool audio = false;              ///< it has sound
    bool video = false;              ///< it has pictures
    bool data = false;               ///< it has data
    std::vector<Tap> taps;           ///< where it comes
    std::vector<StreamEvent> events; ///< of a stream event object
};

/// A BIOP object in a module.
struct Object {
    ObjectKind kind = ObjectKind::Unknown;      ///< what it is
    Bytes key;                                  ///< objectKey, unique in its module
    std::size_t at = 0;                         ///< where its message begins in the module
    std::size_t contentAt = 0;                  ///< where the content of a file begins in the module
    std::size_t contentSize = 0;                ///< bytes of a file
    std::optional<std::uint64_t> announcedSize; ///< contentSize of the objectInfo of a file
    std::vector<Descriptor> descriptors;        ///< of a file
    std::vector<Binding> bindings;              ///< of a directory or service gateway
    std::optional<StreamInfo> stream;           ///< of a stream or stream event object
};

} // namespace dsmcc

#endif
