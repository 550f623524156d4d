#pragma once

#include "comparing/ChangesRenderer.h"
#include "json/InJson.h"

namespace inspect {

/// What changes from version to version of a table and from one input to the next: an object in JSON for each section
/// that something becomes of, with its fields that differ.
class DiffJsonRenderer : public InJson<ChangesRenderer> {
public:
    using InJson::InJson;

private:
    void tell(const Fate& fate) override;
    void tellOutcome(const Summary& summary, const Faults& faults) override;
};

} // namespace inspect
