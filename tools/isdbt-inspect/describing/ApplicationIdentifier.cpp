#include "describing/ApplicationIdentifier.h"

namespace inspect {

Field applicationIdentifier(const Quor::TApplicationIdentifier& applicationIdentifier) {
    return object("application_identifier",
                  {identifier("organization_id", applicationIdentifier.getOrganizationID(), 8),
                   identifier("application_id", applicationIdentifier.getApplicationID(), 4)});
}

} // namespace inspect
