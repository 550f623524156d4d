#ifndef DSMCC_CAROUSEL_H
#define DSMCC_CAROUSEL_H

#include "dsmcc/Objects.h"

#include <map>
#include <utility>

namespace dsmcc {

/// When something that comes again and again came.
struct Repetition {
    std::uint64_t count = 0; ///< how often
    double first = 0;        ///< seconds, as given to take()
    double last = 0;         ///< seconds, as given to take()
    double shortest = 0;     ///< seconds from one time to the next; 0 when it came once
    double longest = 0;      ///< seconds from one time to the next; 0 when it came once
};

/// How far a module has come.
enum class ModuleState {
    Unannounced,   ///< blocks that no DII announces
    Incomplete,    ///< blocks are missing
    Complete,      ///< all there and, where it is compressed, inflated
    BadBlockSize,  ///< no module of its size can be sent in blocks of the announced size
    TooLarge,      ///< larger than the limit of memory
    InflateFailed, ///< all there, and does not inflate
    InflateLimit,  ///< all there, and would be too large inflated
    OriginalSize   ///< all there, and does not inflate to the announced size
};

/// When a block of a module came for the first time.
struct Arrival {
    std::uint16_t block = 0; ///< its number
    double seconds = 0;      ///< as given to take()
};

/// A version of a module.
struct Module {
    std::uint16_t id = 0;                         ///< of the module, among those of its downloadId
    std::uint8_t version = 0;                     ///< of the module
    ModuleInfo info;                              ///< its announcement; empty when there is none
    std::uint16_t blockSize = 0;                  ///< of all blocks but the last
    std::uint32_t blockCount = 0;                 ///< how many there are to be; 0 when not announced
    bool object = false;                          ///< it is of an object carousel
    ModuleState state = ModuleState::Unannounced; ///< how far it has come
    std::optional<std::uint32_t> originalSize;    ///< announced size when inflated; none when not compressed
    std::map<std::uint16_t, Bytes> blocks;        ///< those that came, by number, while some are missing
    std::vector<Arrival> arrivals;                ///< of the blocks that are there, in the order in which they came
    Bytes bytes;                                  ///< as on air, when no block is missing
    Bytes inflated;                               ///< when it is compressed and complete
    std::vector<Object> objects;                  ///< when it is complete, in their order
    std::vector<Refusal> refusals;                ///< of its announcement, blocks, inflation and objects, each once
    std::uint16_t turnBlock = 0;                  ///< the block that counts the turns of the carousel
    Repetition repetition;                        ///< of that block: intervals are the cycle time of the module
    double completed = 0;                         ///< when the last missing block came, in seconds

    /// Whether no block is missing.
    bool whole() const { return !bytes.empty() || (blockCount == 0 && state == ModuleState::Complete); }
    /// How many blocks are there.
    std::size_t received() const { return whole() ? blockCount : blocks.size(); }
    /// What it holds: its bytes, inflated where it is compressed. Empty when it is not complete.
    ByteView content() const {
        if (state != ModuleState::Complete) {
            return {};
        }
        const Bytes& held = originalSize ? inflated : bytes;
        return {held.data(), held.size()};
    }
    /// The first and last numbers of the blocks that are missing, in order.
    DSMCC_API std::vector<std::pair<std::uint16_t, std::uint16_t>> missing() const;
};

/// The modules of a DII.
struct Group {
    const GroupInfo* info = nullptr;             ///< its announcement in a DSI; null when there is none
    const DownloadInfoIndication* dii = nullptr; ///< null when it has not come
    Repetition repetition;                       ///< of the DII
    std::vector<const Module*> modules;          ///< as the DII announces them
    std::vector<Refusal> refusals;               ///< of its modules' announcements
};

/// What a carousel carries.
enum class CarouselType {
    Object, ///< objects with names
    Data,   ///< modules
    Unknown ///< blocks, and nothing that says of what
};

/// A carousel as it is now. What it points to lives until the next section is taken.
struct Carousel {
    CarouselType type = CarouselType::Unknown;   ///< what it carries
    std::optional<std::uint32_t> id;             ///< carouselId and downloadId; none where a DSI joins groups
    const DownloadServerInitiate* dsi = nullptr; ///< null when none has come
    Repetition repetition;                       ///< of the DSI
    std::vector<Group> groups;                   ///< by identification, or in the order of the DSI
    std::vector<const Module*> unannounced;      ///< other modules and versions of which blocks have come
    double first = 0;                            ///< when its first section came, in seconds
    double last = 0;                             ///< when its last section came, in seconds
    std::uint64_t revision = 0;                  ///< grows when a module comes to be announced, changes or goes
};

/// What a path leads to.
enum class EntryState {
    Complete,           ///< it is there; of a directory, not all in it need be
    ModuleIncomplete,   ///< blocks of its module are missing
    ModuleRefused,      ///< its module does not inflate, or cannot come
    ModuleNotAnnounced, ///< no DII announces its module
    NoSuchObject,       ///< its module has no object of its key
    OtherCarousel,      ///< it is in another carousel
    UnknownKind,        ///< an object of a kind that is not known
    Loop,               ///< a directory that contains itself; it is not entered again
    TooDeep             ///< a directory beyond the limit of depth; it is not entered
};

/// What is to be thought of a name.
enum class Naming {
    Good,      ///< a name of its own that is safe in a file system
    Unsafe,    ///< of the path, a name that is none: empty, "..", with a slash, a control character, a drive, too long
    Duplicate, ///< the directory has the name already; the first counts
    None       ///< no directory names it; or a module without a name
};

/// A path of a carousel.
struct Entry {
    std::string path;                        ///< from the root, as broadcast, with "/" between the names
    Naming naming = Naming::Good;            ///< of the path
    ObjectKind kind = ObjectKind::Unknown;   ///< by the object, or else by the directory
    EntryState state = EntryState::Complete; ///< whether it can be had
    std::uint16_t moduleId = 0;              ///< of the module that has it
    Bytes objectKey;                         ///< of the object in that
    const Module* module = nullptr;          ///< null when it is not announced
    const Object* object = nullptr;          ///< null when it is not there, and of whole modules
    std::optional<std::uint64_t> size;       ///< of a file or module, known or announced

    /// The bytes of a file or module; empty when it is not there.
    ByteView content() const {
        const ByteView all = module == nullptr ? ByteView() : module->content();
        if (kind == ObjectKind::Module) {
            return all;
        }
        const bool file = object != nullptr && object->kind == ObjectKind::File;
        return file ? ByteView{all.data + object->contentAt, object->contentSize} : ByteView();
    }
};

/// The paths of a carousel as it is now. What it points to lives until the next section is taken.
struct Tree {
    std::optional<Entry> gateway;   ///< the root of an object carousel; none when there is no DSI and no such object
    std::vector<Entry> entries;     ///< a directory before what is in it; at the end what no directory names
    std::optional<Refusal> refusal; ///< when it had to be cut
};

} // namespace dsmcc

#endif
