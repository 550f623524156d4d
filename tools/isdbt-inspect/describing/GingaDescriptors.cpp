#include "describing/Catalogue.h"
#include "describing/Lists.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"

namespace inspect {

namespace {

Field describeParameter(const std::string& parameter) {
    return address("", parameter);
}

Fields describeParameters(const Quor::TGingaApplicationDescriptor& descriptor) {
    return {listByPosition("parameters", descriptor, descriptor.size(), &Quor::TGingaApplicationDescriptor::get,
                           describeParameter)};
}

Fields describeLocation(const Quor::TGingaApplicationLocationDescriptor& descriptor) {
    return {address("base_directory", descriptor.getBaseDirectory()),
            address("classpath_extension", descriptor.getClasspathExtension()),
            address("initial_class", descriptor.getInitialClass())};
}

} // namespace

void addGingaDescriptors(Catalogue& catalogue) {
    constexpr std::string_view APPLICATION = "ginga_application_descriptor";
    constexpr std::string_view LOCATION = "ginga_application_location_descriptor";
    constexpr std::string_view JAVA = "Ginga-J";
    constexpr std::string_view NCL = "Ginga-NCL";
    catalogue.addDescriptor<describeParameters, Quor::TGingaJavaApplicationDescriptor>(APPLICATION, {AIT}, JAVA);
    catalogue.addDescriptor<describeParameters, Quor::TGingaNCLApplicationDescriptor>(APPLICATION, {AIT}, NCL);
    catalogue.addDescriptor<describeLocation, Quor::TGingaJavaApplicationLocationDescriptor>(LOCATION, {AIT}, JAVA);
    catalogue.addDescriptor<describeLocation, Quor::TGingaNCLApplicationLocationDescriptor>(LOCATION, {AIT}, NCL);
}

} // namespace inspect
