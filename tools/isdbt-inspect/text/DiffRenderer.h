#pragma once

#include "comparing/ChangesRenderer.h"
#include "text/InText.h"

namespace inspect {

/// What changes from version to version of a table, field by field, and from one input to the next.
class DiffRenderer : public InText<ChangesRenderer> {
public:
    using InText::InText;

private:
    void tell(const Fate& fate) override;
    void tellOutcome(const Summary& summary, const Faults& faults) override;
};

} // namespace inspect
