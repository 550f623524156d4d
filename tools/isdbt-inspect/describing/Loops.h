#pragma once

#include "TISDBTTable.h"
#include "describing/Field.h"
#include "walking/DescriptorLoops.h"

namespace inspect {

/// The descriptor loops of a parsed table's section, for what the library leaves out of the table: descriptors that it
/// has no class for, and those that a later one of their kind displaced.
class Loops {
public:
    explicit Loops(const Quor::TISDBTTable& table);

    /// Appends what is left out of the table's own loop.
    void appendLeftOut(Fields& fields) const;

    /// A list of entries, which are Objects, in the order of the wire, each with what is left out of it.
    Field withLeftOut(Field entries) const;

    /// The same of a list in ascending order of keys. Says so when entries were displaced.
    /// @param key what the entries are called: "service"
    Field withLeftOutByKey(Field entries, std::string_view key) const;

private:
    std::vector<DescriptorLoop> m_loops;
};

} // namespace inspect
