#include "ait/TAITTable.h"

#include "describing/ApplicationIdentifier.h"
#include "describing/Catalogue.h"
#include "describing/Loops.h"
#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationIconDescriptor.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"
#include "descriptors/TGingaApplicationDescriptor.h"
#include "descriptors/TGingaApplicationLocationDescriptor.h"
#include "descriptors/TIPSignalingDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "naming/Names.h"

namespace inspect {

namespace {

using Quor::TApplication;

/// The application's descriptor of a kind, or the one that it inherits from its table, marked as such.
template <class Descriptor>
void appendOwnOrInherited(Fields& fields, const TApplication& application,
                          Descriptor* (TApplication::*get)(int, int*) const) {
    int inherited = 0;
    const Descriptor* const descriptor = (application.*get)(1, &inherited);
    if (descriptor == nullptr) {
        return;
    }
    Field field = Catalogue::instance().describe(*descriptor);
    if (inherited != 0) {
        Fields& inner = std::get<Object>(field.value).fields;
        inner.insert(inner.begin(), flag("inherited", true));
    }
    fields.push_back(std::move(field));
}

Field describeApplication(const TApplication& application) {
    Fields fields{address("hash_id", application.getHashID()),
                  applicationIdentifier(*application.getApplicationIdentifier()),
                  code("control_code", application.getControlCode(), names::APPLICATION_CONTROL_CODE),
                  identifier("application_type", application.getApplicationType(), 4).named(names::APPLICATION_TYPE)};
    appendOwnOrInherited(fields, application, &TApplication::getApplicationDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getApplicationNameDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getApplicationIconDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getExternalApplicationAuthorizationDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getTransportProtocolDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getIPSignalingDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getPrefetchDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getDIILocationDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getGingaApplicationDescriptor);
    appendOwnOrInherited(fields, application, &TApplication::getGingaApplicationLocationDescriptor);
    return object("", std::move(fields));
}

Field describeApplications(const Quor::TAITTable& ait) {
    Fields applications;
    const std::unique_ptr<const std::list<std::string>> ids(&ait.getApplicationsIDs());
    for (const std::string& id : *ids) {
        applications.push_back(describeApplication(*ait.getApplication(id)));
    }
    return list("applications", std::move(applications));
}

Fields describeAit(const Quor::TAITTable& ait) {
    const Loops loops(ait);
    Fields fields{identifier("application_type", ait.getApplicationType(), 4).named(names::APPLICATION_TYPE)};
    appendDescriptors(fields, ait);
    loops.appendLeftOut(fields);
    Field applications = describeApplications(ait);
    loops.appendLeftOutByKey(applications, "application");
    fields.push_back(std::move(applications));
    return fields;
}

} // namespace

void addApplicationTable(Catalogue& catalogue) {
    catalogue.addTable<describeAit>();
}

} // namespace inspect
