#pragma once

#include "ait/TApplicationIdentifier.h"
#include "describing/Field.h"

namespace inspect {

/// What identifies an application, as "application_identifier".
Field applicationIdentifier(const Quor::TApplicationIdentifier& applicationIdentifier);

} // namespace inspect
