// BIOP messages, of which a module of an object carousel is a row.
//
// message
//   "BIOP", version 16, byte_order 8, message_type 8, message_size 32,
//   objectKey behind its length 8, objectKind behind its length 32, objectInfo behind its length 16, contexts,
//   body behind its length 32
// fil
//   objectInfo: contentSize 64, descriptors; body: content behind its length 32
// dir, srg
//   body: bindings_count 16; each: nameComponents_count 8; each: id and kind, each behind its length 8;
//   bindingType 8, IOR, objectInfo behind its length 16
// str, ste
//   objectInfo: aDescription behind its length 8, seconds 32, microseconds 32 (16 by some), audio 8, video 8, data 8;
//   of ste also eventNames_count 16, names each behind its length 8
//   body: taps; of ste also eventIds_count 8, ids 16 each

#include "Objects.h"

#include "Modules.h"
#include "References.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace dsmcc {

namespace {

constexpr std::size_t MESSAGE_HEADER = 12; // up to message_size

/// Reads the objects of one module.
class ObjectReader {
public:
    ObjectReader(ByteView module, std::size_t room, const Limits& limits, std::vector<Refusal>& refusals)
        : m_module(module), m_room(room), m_limits(limits), m_refusals(refusals) {}

    std::vector<Object> read();

private:
    /// Adds the object of a message, and goes to the next. @return whether there is one
    bool readMessage();
    bool goOnAt(std::uint64_t at, std::size_t read);
    void spend(std::size_t count);
    void noteKey(const Object& object);
    void readBody(Object& object, Reader info, Reader body);
    Binding readBinding(Reader& reader);
    void readStream(Object& object, const Reader& info, Reader body);

    ByteView m_module;
    std::size_t m_room;
    const Limits& m_limits;
    std::vector<Refusal>& m_refusals;
    std::vector<Object> m_objects;
    std::set<Bytes> m_keys;
    std::size_t m_at = 0;
};

bool isMessage(ByteView module, std::uint64_t at) {
    constexpr std::uint8_t MAGIC[] = {'B', 'I', 'O', 'P'};
    return at <= module.size && module.size - at >= sizeof MAGIC &&
           std::equal(std::begin(MAGIC), std::end(MAGIC), module.data + at);
}

std::vector<Object> ObjectReader::read() {
    try {
        while (m_at < m_module.size && readMessage()) {
        }
    } catch (const Refused& refused) {
        note(m_refusals, refused.refusal); // a limit
    }
    return std::move(m_objects);
}

/// Never within what has been read, so that the time a module takes grows with its size alone.
bool ObjectReader::goOnAt(std::uint64_t at, std::size_t read) {
    if (at < read || (at != m_module.size && !isMessage(m_module, at))) {
        return false;
    }
    m_at = static_cast<std::size_t>(at);
    return true;
}

void ObjectReader::spend(std::size_t count) {
    if (count > m_room) {
        refuse(RefusalKind::ObjectLimit, m_at,
               "the carousel has more than " + std::to_string(m_limits.objects) + " objects and parts of them");
    }
    m_room -= count;
}

bool ObjectReader::readMessage() {
    Reader reader({m_module.data + m_at, m_module.size - m_at}, m_at);
    std::uint64_t announcedEnd = 0;
    try {
        if (!isMessage(m_module, m_at)) {
            refuse(RefusalKind::ObjectMessage, m_at, "no BIOP message begins here");
        }
        reader.view(6, "BIOP header"); // up to byte_order
        reader.littleEndian(reader.u8("byte_order") == 1);
        reader.u8("message_type");
        announcedEnd = std::uint64_t{reader.u32("message_size")} + m_at + MESSAGE_HEADER;
        Object object;
        object.at = m_at;
        object.key = reader.bytes(reader.u8("objectKey_length"), "objectKey");
        object.kind = kindOf(reader.text(reader.u32("objectKind_length"), "objectKind"));
        const Reader info = reader.part(reader.u16("objectInfo_length"), "objectInfo");
        skipServiceContexts(reader);
        const Reader body = reader.part(reader.u32("messageBody_length"), "messageBody");
        spend(1);
        noteKey(object);
        readBody(object, info, body);
        m_objects.push_back(std::move(object));
    } catch (const Refused& refused) {
        if (refused.refusal.kind == RefusalKind::ObjectLimit) {
            throw;
        }
        note(m_refusals, refused.refusal);
        return announcedEnd > m_at && goOnAt(announcedEnd, reader.at());
    }
    if (reader.at() != announcedEnd) {
        note(m_refusals, {RefusalKind::MessageSize, m_at,
                          "message_size leads to byte " + std::to_string(announcedEnd) + ", and the message ends at " +
                              std::to_string(reader.at())});
    }
    if (!goOnAt(reader.at(), reader.at()) && !goOnAt(announcedEnd, reader.at())) {
        m_at = reader.at();
    }
    return true;
}

void ObjectReader::noteKey(const Object& object) {
    if (m_keys.insert(object.key).second) {
        return;
    }
    constexpr const char* DIGITS = "0123456789ABCDEF";
    std::string key;
    for (const std::uint8_t byte : object.key) {
        key += {DIGITS[byte >> 4U], DIGITS[byte & 0x0FU]};
    }
    note(m_refusals, {RefusalKind::ObjectKey, object.at, "another object before has the key " + key});
}

void ObjectReader::readBody(Object& object, Reader info, Reader body) {
    switch (object.kind) {
    case ObjectKind::File:
        if (info.left() >= 8) {
            object.announcedSize = info.u64("contentSize");
            object.descriptors = readDescriptors(info);
            spend(object.descriptors.size());
        }
        object.contentSize = body.u32("content_length");
        object.contentAt = body.at();
        body.view(object.contentSize, "content");
        break;
    case ObjectKind::Directory:
    case ObjectKind::ServiceGateway:
        for (unsigned left = body.u16("bindings_count"); left != 0; --left) {
            object.bindings.push_back(readBinding(body));
            spend(1 + object.bindings.back().ior.taps.size());
        }
        break;
    case ObjectKind::Stream:
    case ObjectKind::StreamEvent:
        readStream(object, info, body);
        break;
    default:
        break;
    }
}

Binding ObjectReader::readBinding(Reader& reader) {
    constexpr std::uint8_t CONTEXT = 2; // bindingType
    Binding binding;
    const unsigned components = reader.u8("nameComponents_count");
    binding.safe = components != 0;
    std::string kind;
    for (unsigned component = 0; component < components; ++component) {
        const std::string name = reader.text(reader.u8("id_length"), "id");
        kind = reader.text(reader.u8("kind_length"), "kind");
        binding.safe = binding.safe && safeName(name, m_limits);
        binding.name += (component == 0 ? "" : "/") + name;
    }
    const bool context = reader.u8("bindingType") == CONTEXT;
    binding.ior = readIor(reader);
    Reader info = reader.part(reader.u16("objectInfo_length"), "objectInfo");
    binding.kind = kindOf(kind);
    if (binding.kind == ObjectKind::Unknown) {
        binding.kind = kindOf(binding.ior.typeId);
    }
    if (binding.kind == ObjectKind::Unknown && context) {
        binding.kind = ObjectKind::Directory;
    }
    if (binding.kind == ObjectKind::File && info.left() >= 8) {
        binding.size = info.u64("contentSize");
    }
    return binding;
}

/// The names of events. Their list must end with the objectInfo, but for the last way of reading it.
std::optional<StreamInfo> readStreamInfo(Reader reader, bool events, bool shortMicroseconds, bool toTheEnd) {
    StreamInfo info;
    try {
        info.description = reader.text(reader.u8("aDescription_length"), "aDescription");
        info.seconds = static_cast<std::int32_t>(reader.u32("seconds"));
        info.microseconds = shortMicroseconds ? reader.u16("microseconds") : reader.u32("microseconds");
        info.audio = reader.u8("audio") != 0;
        info.video = reader.u8("video") != 0;
        info.data = reader.u8("data") != 0;
        for (unsigned left = events ? reader.u16("eventNames_count") : 0; left != 0; --left) {
            StreamEvent event;
            event.name = reader.text(reader.u8("eventName_length"), "eventName");
            info.events.push_back(std::move(event));
        }
    } catch (const Refused&) {
        return std::nullopt;
    }
    return toTheEnd && reader.left() != 0 ? std::nullopt : std::optional<StreamInfo>(std::move(info));
}

void ObjectReader::readStream(Object& object, const Reader& info, Reader body) {
    const bool events = object.kind == ObjectKind::StreamEvent;
    std::optional<StreamInfo> found;
    for (unsigned way = 0; way < 4 && !found; ++way) {
        found = readStreamInfo(info, events, way % 2 != 0, way < 2);
    }
    if (!found) {
        refuse(RefusalKind::Truncated, info.at(), "the objectInfo of a stream does not hold what it says");
    }
    found->taps = readTaps(body);
    spend(found->taps.size() + found->events.size());
    const std::size_t names = found->events.size();
    const std::size_t ids = events ? body.u8("eventIds_count") : 0;
    for (std::size_t at = 0; at < ids; ++at) {
        const std::uint16_t id = body.u16("eventId");
        if (at < names) {
            found->events[at].id = id;
        }
    }
    if (names != ids) {
        note(m_refusals, {RefusalKind::EventCount, object.at,
                          std::to_string(names) + " names and " + std::to_string(ids) + " ids of events"});
        found->events.resize(std::min(names, ids));
    }
    object.stream = std::move(found);
}

} // namespace

ObjectKind kindOf(const std::string& name) {
    static constexpr struct {
        const char* name;
        ObjectKind kind;
    } KINDS[] = {{"fil", ObjectKind::File},
                 {"dir", ObjectKind::Directory},
                 {"srg", ObjectKind::ServiceGateway},
                 {"str", ObjectKind::Stream},
                 {"ste", ObjectKind::StreamEvent},
                 {"dsm::file", ObjectKind::File},
                 {"dsm::directory", ObjectKind::Directory},
                 {"dsm::servicegateway", ObjectKind::ServiceGateway},
                 {"dsm::stream", ObjectKind::Stream},
                 {"dsm::streamevent", ObjectKind::StreamEvent},
                 {"biop::streamevent", ObjectKind::StreamEvent}};
    std::string lower = name;
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    for (const auto& each : KINDS) {
        if (lower == each.name) {
            return each.kind;
        }
    }
    return ObjectKind::Unknown;
}

bool safeName(const std::string& name, const Limits& limits) {
    constexpr unsigned char DELETE = 0x7F;
    const bool drive = name.size() >= 2 && name[1] == ':' && std::isalpha(static_cast<unsigned char>(name[0])) != 0;
    return !name.empty() && name.size() <= limits.name && name != "." && name != ".." && !drive &&
           std::none_of(name.begin(), name.end(), [](char letter) {
               const auto byte = static_cast<unsigned char>(letter);
               return byte < ' ' || byte == DELETE || letter == '/' || letter == '\\';
           });
}

bool safePath(const std::string& path, const Limits& limits) {
    std::size_t begin = 0;
    for (std::size_t end = 0; end != std::string::npos; begin = end + 1) {
        end = path.find('/', begin);
        if (!safeName(path.substr(begin, end - begin), limits)) {
            return false;
        }
    }
    return true;
}

std::size_t countOf(const std::vector<Object>& objects) {
    std::size_t count = objects.size();
    for (const Object& each : objects) {
        count += each.descriptors.size() + each.bindings.size();
        for (const Binding& binding : each.bindings) {
            count += binding.ior.taps.size();
        }
        count += each.stream ? each.stream->taps.size() + each.stream->events.size() : 0;
    }
    return count;
}

std::vector<Object> readObjects(ByteView module, std::size_t room, const Limits& limits,
                                std::vector<Refusal>& refusals) {
    return ObjectReader(module, room, limits, refusals).read();
}

} // namespace dsmcc
