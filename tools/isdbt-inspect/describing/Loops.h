#pragma once

#include "TISDBTTable.h"
#include "describing/Field.h"
#include "walking/DescriptorLoops.h"

namespace inspect {

/// The descriptor loops of a parsed table's section, for what the library leaves out of the table.
class Loops {
public:
    explicit Loops(const Quor::TISDBTTable& table);

    /// Appends what the table's own loop holds without a class for it.
    void appendUnknown(Fields& fields) const;

    /// The same to each entry, an Object, of a list in the order of the wire.
    void appendUnknownInOrder(Field& entries) const;

    /// The same to each entry of a list in ascending order of their keys, of each of which the last is kept.
    void appendUnknownByKey(Field& entries) const;

private:
    std::vector<DescriptorLoop> m_loops;
};

} // namespace inspect
