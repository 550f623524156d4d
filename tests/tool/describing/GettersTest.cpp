#include "describing/Describing.h"
#include "support/FullSections.h"
#include "tool/describing/PublicHeaders.h"
#include "tool/describing/Taken.h"

#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "describing/Catalogue.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "tot/TTOTTable.h"

#include "json/FieldJson.h"

#include <gmock/gmock.h>

#include <map>
#include <nlohmann/json.hpp>
#include <set>

namespace {

using inspect::Fields;
using Names = std::set<std::string>;

/// The names of the fields of every object, under the name of the object, and once more with the name of what holds it
/// in front of it: "aac_descriptor", "applications/application_identifier". An element goes by the name of its list.
class NamesOfObjects {
public:
    void add(const std::string& holder, const std::string& name, const Fields& fields) {
        for (const std::string& key : {name, holder + '/' + name}) {
            for (const inspect::Field& field : fields) {
                m_names[key].insert(field.name);
            }
        }
        for (const inspect::Field& field : fields) {
            addField(name, field.name, field);
        }
    }

    void add(const std::string& holder, const std::string& name, const nlohmann::ordered_json& object) {
        for (const auto& [member, value] : object.items()) {
            m_names[name].insert(member);
            m_names[holder + '/' + name].insert(member);
            addValue(name, member, value);
        }
    }

    const Names& of(const std::string& key) const {
        static const Names none;
        const auto found = m_names.find(key);
        return found == m_names.end() ? none : found->second;
    }

private:
    void addField(const std::string& holder, const std::string& name, const inspect::Field& field) {
        if (const auto* const object = std::get_if<inspect::Object>(&field.value)) {
            add(holder, name, object->fields);
        } else if (const auto* const list = std::get_if<inspect::List>(&field.value)) {
            for (const inspect::Field& element : list->elements) {
                addField(holder, name, element);
            }
        }
    }

    void addValue(const std::string& holder, const std::string& name, const nlohmann::ordered_json& value) {
        if (value.is_object()) {
            add(holder, name, value);
        } else if (value.is_array()) {
            for (const nlohmann::ordered_json& element : value) {
                addValue(holder, name, element);
            }
        }
    }

    std::map<std::string, Names> m_names;
};

/// A form in which the names are looked at: the fields as they are, or as their JSON.
using Form = void (*)(NamesOfObjects& names, const std::string& className, const Fields& fields);

void asFields(NamesOfObjects& names, const std::string& className, const Fields& fields) {
    names.add("", className, fields);
}

void asJson(NamesOfObjects& names, const std::string& className, const Fields& fields) {
    names.add("", className, inspect::fieldsJson(fields));
}

template <class Table>
void addTable(NamesOfObjects& names, Form form, const std::string& className, const ByteVector& section) {
    const auto taken = takenSection<Table>(section);
    ASSERT_NE(taken.object, nullptr) << className;
    form(names, className, inspect::describe(*taken.object));
}

template <class Descriptor>
void addDescriptor(NamesOfObjects& names, Form form, const std::string& className, const std::string& wire) {
    const auto taken = takenDescriptor<Descriptor>(hex(wire));
    ASSERT_NE(taken.object, nullptr) << className;
    const inspect::Field described = inspect::Catalogue::instance().describe(*taken.object);
    form(names, className, std::get<inspect::Object>(described.value).fields);
}

NamesOfObjects everything(Form form) {
    NamesOfObjects names;
    addTable<Quor::TPATTable>(names, form, "TPATTable", fullPat());
    addTable<Quor::TPMTTable>(names, form, "TPMTTable", fullPmt());
    addTable<Quor::TTOTTable>(names, form, "TTOTTable", fullTot());
    addTable<Quor::TNITTable>(names, form, "TNITTable", fullNit());
    addTable<Quor::TSDTTable>(names, form, "TSDTTable", fullSdt());
    addTable<Quor::TAITTable>(names, form, "TAITTable", fullAit());
    addTable<Quor::TSDTTTable>(names, form, "TSDTTTable", fullSdtt());
    addTable<Quor::TDSMCCSectionTable>(names, form, "TDSMCCSectionTable", fullDsmccSection());
    using Transport = Quor::TTransportProtocolDescriptor;
    addDescriptor<Transport>(names, form, "TTransportProtocolDescriptorOC", "02 05 0001 01 00 0B");
    addDescriptor<Transport>(names, form, "TTransportProtocolDescriptorIP", "02 07 0002 01 00 80 01 61");
    addDescriptor<Transport>(names, form, "TTransportProtocolDescriptorDC", "02 05 0004 01 00 0B");
    return names;
}

/// Classes of which no object is ever in a table, so that nothing is described: those that are but a base of another
/// one, and the general event descriptor, whose tag all tables take for that of another one.
bool isInNoTable(const std::string& className) {
    static const Names names{"TGeneralEventDescriptor",
                             "TISDBTDataHolder",
                             "TISDBTTable",
                             "TISDBTVersionedTable",
                             "TISDBTDescriptor",
                             "TTransportProtocolDescriptor",
                             "TGingaApplicationDescriptor",
                             "TGingaApplicationLocationDescriptor"};
    return names.count(className) != 0;
}

/// Where the objects of a class are described that is neither a table, nor a descriptor of its own name, nor the item
/// of one with "items".
const std::map<std::string, std::string> PLACES{
    {"TProgramAssociation", "TPATTable/programs"},
    {"TProgramMap", "TPMTTable/elementary_streams"},
    {"TTransportStreamInfo", "TNITTable/transport_streams"},
    {"TServiceDescription", "TSDTTable/services"},
    {"TApplication", "TAITTable/applications"},
    {"TApplicationIdentifier", "applications/application_identifier"},
    {"TDownloadContent", "TSDTTTable/download_contents"},
    {"TScheduleInfo", "download_contents/schedule_infos"},
    {"TApplicationDescriptorProfile", "application_descriptor/profiles"},
    {"TCompatibilityDescriptorSubItem", "items/sub_items"},
    {"TDownloadContentDescriptorItem", "download_content_descriptor/modules"},
    {"TGingaJavaApplicationDescriptor", "ginga_application_descriptor"},
    {"TGingaJavaApplicationLocationDescriptor", "ginga_application_location_descriptor"},
    {"TGingaNCLApplicationDescriptor", "ginga_application_descriptor"},
    {"TGingaNCLApplicationLocationDescriptor", "ginga_application_location_descriptor"},
    {"TMosaicDescriptorCell", "mosaic_descriptor/cells"},
    {"TTSInformationDescriptorItem", "ts_information_descriptor/transmission_types"},
};

/// The fields that hold what these getters give one by one, count or list the keys of. Others do that for "items".
struct ListGetters {
    const char* className;
    const char* field;
    Names getters;
};

const ListGetters LISTS[] = {
    {"TPATTable", "programs", {"get", "getProgramNumbers", "size"}},
    {"TPMTTable",
     "elementary_streams",
     {"getProgramMap", "getProgramMapByComponentTag", "getProgramMapByStreamType", "getProgramMapsByStreamType",
      "size"}},
    {"TNITTable",
     "transport_streams",
     {"getTransportStreamIDs", "getTransportStreamInfo", "getTransportStreamLoopSize"}},
    {"TSDTTable", "services", {"getServiceDescription", "getServiceIDs", "size"}},
    {"TAITTable", "applications", {"getApplication", "getApplicationsCount", "getApplicationsIDs"}},
    {"TSDTTTable", "download_contents", {"getDownloadContent", "getDownloadContentSize"}},
    {"TDownloadContent", "schedule_infos", {"getScheduleInfo", "getScheduleInfoSize"}},
    {"TApplicationDescriptor", "profiles", {"getProfile", "getProfiles", "getProfilesCount"}},
    {"TCompatibilityDescriptor", "items", {"getCompatibilityDescriptorItem", "getCompatibilityDescriptorItemSize"}},
    {"TCompatibilityDescriptorItem",
     "sub_items",
     {"getCompatibilityDescriptorSubItem", "getCompatibilityDescriptorSubItemSize"}},
    {"TCountryAvailabilityDescriptor", "country_codes", {"get", "size"}},
    {"TDownloadContentDescriptor",
     "modules",
     {"getDownloadContentDescriptorItem", "getDownloadContentDescriptorItemSize"}},
    {"TGingaApplicationDescriptor", "parameters", {"get", "size"}},
    {"TMosaicDescriptor", "cells", {"getCell", "size"}},
    {"TTSInformationDescriptor", "transmission_types", {"getTransmissionType", "getTransmissionTypeCount"}},
    {"TTransportProtocolDescriptorIP", "urls", {"getURL", "getURLCount"}},
};

/// The field where a getter's value must be found; empty for the descriptors by tag, which have fields by name.
std::string fieldOf(const PublicClass& holder, const std::string& getter) {
    for (const ListGetters& each : LISTS) {
        if (holder.name == each.className && each.getters.count(getter) != 0) {
            return each.field;
        }
    }
    if (getter == "getDescriptor" || getter == "getDescriptorTags") {
        return {};
    }
    return getter == "get" || getter == "size" || holder.lists.count(getter) != 0 ? "items" : fieldName(getter);
}

using Classes = std::map<std::string, PublicClass>;

Classes classesByName() {
    Classes classes;
    for (PublicClass& each : publicClasses()) {
        classes.emplace(each.name, std::move(each));
    }
    return classes;
}

/// The fields that the getters of a class and of its bases ask for.
Names fieldsAskedFor(const Classes& classes, const std::string& className) {
    static const Names sectionHeader{"TISDBTDataHolder", "TISDBTTable", "TISDBTVersionedTable"};
    Names fields;
    for (auto found = classes.find(className); found != classes.end() && sectionHeader.count(found->first) == 0;
         found = classes.find(found->second.base)) {
        for (const std::string& getter : found->second.getters) {
            fields.insert(fieldOf(found->second, getter));
        }
    }
    fields.erase("");
    return fields;
}

std::string placeOf(const NamesOfObjects& names, const std::string& className) {
    const auto found = PLACES.find(className);
    if (found != PLACES.end()) {
        return found->second;
    }
    const std::string item = "Item";
    if (className.size() > item.size() && className.compare(className.size() - item.size(), item.size(), item) == 0) {
        return descriptorName(className.substr(0, className.size() - item.size())) + "/items";
    }
    return names.of(className).empty() ? descriptorName(className) : className;
}

Names without(Names names, const Names& others) {
    for (const std::string& other : others) {
        names.erase(other);
    }
    return names;
}

TEST(PublicHeaders, AreReadWithTheirGetters) {
    const Classes classes = classesByName();
    EXPECT_GT(classes.size(), 80U);
    const auto& pmt = classes.at("TPMTTable");
    EXPECT_EQ(pmt.base, "TISDBTVersionedTable");
    EXPECT_THAT(pmt.getters, testing::IsSupersetOf({"getPCRPID", "getAACDescriptor", "getProgramMap", "size"}));
    EXPECT_THAT(classes.at("TApplication").getters,
                testing::Contains("getExternalApplicationAuthorizationDescriptor")); // declared on two lines
    EXPECT_THAT(classes.at("TAVCTimingAndHRDDescriptor").getters, testing::Contains("is90kHzFlag"));
    EXPECT_THAT(classes.at("TProgramAssociation").getters,
                testing::ElementsAre("getProgramMapPid", "getProgramNumber"));
}

TEST(PublicHeaders, FieldsAreCalledAsTheGettersInSnakeCase) {
    EXPECT_EQ(fieldName("getStreamType"), "stream_type");
    EXPECT_EQ(fieldName("hasEITSchedule"), "eit_schedule");
    EXPECT_EQ(fieldName("isStart"), "start");
    EXPECT_EQ(fieldName("getDIIIdentification"), "dii_identification");
    EXPECT_EQ(fieldName("getConstraintSet0Flag"), "constraint_set0_flag");
    EXPECT_EQ(fieldName("getCASystemIDs"), "ca_system_ids");
    EXPECT_EQ(fieldName("getPCRPID"), "pcr_pid");
    EXPECT_EQ(fieldName("getEventMsgNPTH"), "event_msg_npt_h");
    EXPECT_EQ(fieldName("is90kHzFlag"), "90khz_flag");
    EXPECT_EQ(fieldName("getN"), "n");
    EXPECT_EQ(descriptorName("TNVODReferenceDescriptor"), "nvod_reference_descriptor");
}

void expectEveryGetter(const NamesOfObjects& names) {
    const Classes classes = classesByName();
    for (const auto& [className, each] : classes) {
        const Names expected = fieldsAskedFor(classes, className);
        if (isInNoTable(className) || expected.empty()) {
            continue;
        }
        const std::string place = placeOf(names, className);
        EXPECT_FALSE(names.of(place).empty()) << className << " is not described at " << place;
        EXPECT_THAT(without(expected, names.of(place)), testing::IsEmpty()) << "of " << className << " at " << place;
    }
}

TEST(Description, HasEveryGetterOfEveryClass) {
    expectEveryGetter(everything(asFields));
}

TEST(Description, HasEveryGetterOfEveryClassInJson) {
    expectEveryGetter(everything(asJson));
}

/// No getter gives them.
const Names OF_THE_TOOL{"inherited", "data", "standard"};

TEST(Description, HasNoFieldsThatNoGetterGives) {
    const NamesOfObjects names = everything(asFields);
    const Classes classes = classesByName();
    for (const auto& [className, each] : classes) {
        if (isInNoTable(className)) {
            continue;
        }
        const std::string place = placeOf(names, className);
        const Names surplus = without(without(names.of(place), fieldsAskedFor(classes, className)), OF_THE_TOOL);
        EXPECT_THAT(surplus, testing::IsEmpty()) << "of " << className << " at " << place;
    }
}

} // namespace
