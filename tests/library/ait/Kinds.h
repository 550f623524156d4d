#pragma once

#include "ait/TAITTable.h"
#include "ait/TApplication.h"
#include "descriptors/TISDBTDescriptor.h"
#include "support/Bytes.h"

#include <functional>
#include <string>
#include <vector>

/// The kinds of descriptors that an application information table carries for the whole table and for each
/// application, with an example of each.
namespace ait {

struct Kind {
    std::string name;
    QUOR_U8 tag;
    ByteVector wire;
    std::string shown; ///< what shown() makes of the wire
    ByteVector otherWire;
    std::string otherShown;
    const char* tableLine; ///< what the table logs when it finds one; empty for nothing
    std::function<Quor::TISDBTDescriptor*(const Quor::TAITTable&)> ofTable;
    std::function<Quor::TISDBTDescriptor*(const Quor::TApplication&, int, int*)> ofApplication;
};

/// One of each tag, in the order of the tags.
const std::vector<Kind>& kinds();

/// The kind of a tag.
const Kind& kind(QUOR_U8 tag);

/// Whether there is a kind of this tag.
bool isKnown(QUOR_U8 tag);

/// Whether two kinds displace each other: a kind itself, and the Java and the NCL form of a pair.
bool sameMember(const Kind& one, const Kind& other);

/// The order in which tags are listed, with the Java or the NCL forms of the last two.
std::vector<QUOR_U8> orderOfTags(bool java);

/// Every value that a descriptor decoded, as text; "none" for null.
std::string shown(const Quor::TISDBTDescriptor* descriptor);

/// A descriptor that is not accepted.
struct Broken {
    std::string name;
    QUOR_U8 tag;
    ByteVector wire;
    QUOR_U16 code;
    Lines lines;
};

/// At least one of each tag.
const std::vector<Broken>& broken();

} // namespace ait
