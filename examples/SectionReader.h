#ifndef QUOR_EXAMPLES_SECTION_READER_H
#define QUOR_EXAMPLES_SECTION_READER_H

#include "QuorDefs.h"

#include <functional>
#include <istream>
#include <map>
#include <string>
#include <vector>

/// Stands in for a receiver's demultiplexer: cuts the sections of some PIDs out of a recorded transport stream with
/// packets of 188 bytes. Sections whose CRC_32 is wrong are dropped, as a hardware section filter does.
class SectionReader {
public:
    /// Takes one complete section, from table_id to CRC_32. The bytes are gone when it returns.
    using Callback = std::function<void(QUOR_U8* section, QUOR_U32 length)>;

    /// Sections of a PID go to @p callback from now on. Callbacks may call this, too.
    void watch(QUOR_U16 pid, Callback callback);

    /// Reads a stream to its end. @return false when it is no transport stream.
    bool read(std::istream& stream);

private:
    struct Filter {
        Callback callback;
        std::vector<QUOR_U8> bytes; ///< of a section that is not complete yet
    };

    static void take(Filter& filter, const QUOR_U8* begin, const QUOR_U8* end);
    static void deliver(Filter& filter);

    std::map<QUOR_U16, Filter> m_filters;
};

/// A text of the broadcast (ISO 8859-15 in Brazil) as UTF-8, for a terminal.
std::string utf8(const std::string& text);

#endif
