#ifndef DSMCC_REFUSAL_H
#define DSMCC_REFUSAL_H

#include <cstddef>
#include <string>

namespace dsmcc {

/// What something was refused for.
enum class RefusalKind {
    /// @name Sections and messages: the place is a byte of the section.
    /// @{
    Truncated,     ///< a field, a text or a loop goes beyond the bytes that hold it
    TableId,       ///< a section of another table than 0x3B and 0x3C
    SectionLength, ///< section_length is not that of the bytes that were given
    Crc32,         ///< a wrong CRC_32
    Protocol,      ///< no message of the download protocol
    Location,      ///< a service gateway whose IOR does not say where it is
    BlockNumber,   ///< a block behind the last of its module
    BlockLength,   ///< a block of another length than its module's announcement has it
    BlockChanged,  ///< a block that came again with other bytes in the same version of its module
    /// @}

    /// @name Announcements of modules: the place is 0.
    /// @{
    BlockSize,      ///< a blockSize with which no module of its size can be sent
    AnnouncedTwice, ///< a module that another DII announces otherwise
    /// @}

    /// @name Modules and objects: the place is a byte of the module, inflated where it is compressed.
    /// @{
    Compression,   ///< a way of compression that is not known
    Inflation,     ///< bytes that do not inflate; the place is a byte on air
    OriginalSize,  ///< inflated, it has another size than announced
    ObjectMessage, ///< no BIOP message stands where one should
    MessageSize,   ///< message_size does not agree with what the message holds; the object is taken nevertheless
    ObjectKey,     ///< two objects of one key; the first is taken
    EventCount,    ///< not as many event ids as event names; those with both are taken
    /// @}

    /// @name Limits of the caller, see Limits.
    /// @{
    CarouselLimit,  ///< too many carousels on the PID
    GroupLimit,     ///< too many DIIs in a carousel
    ModuleLimit,    ///< too many modules in a carousel
    MemoryLimit,    ///< a carousel takes too much memory
    InflationLimit, ///< a module would be too large when inflated
    ObjectLimit,    ///< too many objects, or parts of them, in a carousel
    EntryLimit      ///< too many names in a tree
    /// @}
};

/// Why something was refused, and where.
struct Refusal {
    RefusalKind kind; ///< what for
    std::size_t at;   ///< the byte where; of what, the kind says
    std::string text; ///< for people
};

} // namespace dsmcc

#endif
