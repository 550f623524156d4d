#include "Kinds.h"

#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationDescriptorProfile.h"
#include "descriptors/TApplicationIconDescriptor.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TApplicationNameDescriptorItem.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TDIILocationDescriptorItem.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptorItem.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"
#include "descriptors/TIPSignalingDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "descriptors/TPrefetchDescriptorItem.h"
#include "descriptors/TTransportProtocolDescriptorDC.h"
#include "descriptors/TTransportProtocolDescriptorIP.h"
#include "descriptors/TTransportProtocolDescriptorOC.h"
#include "support/Kinds.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

using Quor::TAITTable;
using Quor::TApplication;
using Quor::TISDBTTable;

namespace ait {

namespace {

std::string show(const Quor::TApplicationDescriptor& descriptor) {
    std::ostringstream out;
    out << "application:";
    for (const QUOR_U16 number : taken(descriptor.getProfiles())) {
        const auto* const profile = descriptor.getProfile(number);
        out << " profile " << profile->getApplicationProfile() << " of " << int{profile->getVersionMajor()} << '.'
            << int{profile->getVersionMinor()} << '.' << int{profile->getVersionMicro()};
    }
    out << (descriptor.isServiceBound() != 0 ? " bound" : " unbound") << ", visibility "
        << int{descriptor.getVisibility()} << (descriptor.isVisibileForUsers() != 0 ? " users" : "")
        << (descriptor.isVisibileForApplications() != 0 ? " applications" : "") << ", priority "
        << int{descriptor.getApplicationPriority()} << ", labels";
    const std::unique_ptr<QUOR_U8[]> labels(descriptor.getTransportProtocols());
    for (unsigned i = 0; i < descriptor.getTransportProtocolsCount(); ++i) {
        out << ' ' << int{labels[i]};
    }
    return out.str();
}

std::string show(const Quor::TApplicationNameDescriptor& descriptor) {
    std::string out = "name:";
    for (const std::string& code : taken(descriptor.getLanguageCodes())) {
        out += ' ' + descriptor.get(code)->getLanguageCode() + '=' + descriptor.get(code)->getName();
    }
    return out;
}

std::string show(const Quor::TApplicationIconDescriptor& descriptor) {
    return "icon: " + descriptor.getIconLocator() + ' ' + std::to_string(descriptor.getIconFlags());
}

std::string show(const Quor::TExternalApplicationAuthorizationDescriptor& descriptor) {
    std::ostringstream out;
    out << "authorization:";
    for (const std::string& key : taken(descriptor.getApplicationIdentifierHashIDs())) {
        const auto* const item = descriptor.get(key);
        out << ' ' << key << '=' << item->getApplicationIdentifier()->getOrganizationID() << '.'
            << item->getApplicationIdentifier()->getApplicationID() << '@' << int{item->getPriority()};
    }
    return out.str();
}

template <class Variant> std::string showConnection(const Variant& transport) {
    std::ostringstream out;
    out << ", protocol " << transport.getProtocolID() << ", label " << int{transport.getTransportProtocolLabel()};
    if (transport.isRemoteConnection() != 0) {
        out << ", service " << transport.getOriginalNetworkID() << '.' << transport.getTransportStreamID() << '.'
            << transport.getServiceID();
    }
    return out.str();
}

std::string show(const Quor::TTransportProtocolDescriptorOC& transport) {
    return "object carousel" + showConnection(transport) + ", component " + std::to_string(transport.getComponentTag());
}

std::string show(const Quor::TTransportProtocolDescriptorDC& transport) {
    return "data carousel" + showConnection(transport) + ", component " + std::to_string(transport.getComponentTag());
}

std::string show(const Quor::TTransportProtocolDescriptorIP& transport) {
    std::string out = "IP" + showConnection(transport) + (transport.isAligned() != 0 ? ", aligned" : "");
    for (QUOR_U32 i = 0; i < transport.getURLCount(); ++i) {
        out += ", " + transport.getURL(static_cast<QUOR_U8>(i));
    }
    return out;
}

std::string show(const Quor::TIPSignalingDescriptor& descriptor) {
    return "platform: " + std::to_string(descriptor.getPlatformID());
}

std::string show(const Quor::TPrefetchDescriptor& descriptor) {
    std::string out = "prefetch: label " + std::to_string(descriptor.getTransportProtocolLabel());
    for (QUOR_U32 i = 0; i < descriptor.size(); ++i) {
        out += ", " + descriptor.get(i)->getLabel() + '@' + std::to_string(descriptor.get(i)->getPriority());
    }
    return out;
}

std::string show(const Quor::TDIILocationDescriptor& descriptor) {
    std::string out = "DII: label " + std::to_string(descriptor.getTransportProtocolLabel());
    for (QUOR_U32 i = 0; i < descriptor.size(); ++i) {
        out += ", " + std::to_string(descriptor.get(i)->getDIIIdentification()) + '.' +
               std::to_string(descriptor.get(i)->getAssociationTag());
    }
    return out;
}

std::string showParameters(const char* form, const Quor::TGingaApplicationDescriptor& descriptor) {
    std::string out = std::string(form) + " parameters:";
    for (QUOR_U32 i = 0; i < descriptor.size(); ++i) {
        out += ' ' + descriptor.get(i);
    }
    return out;
}

std::string showLocation(const char* form, const Quor::TGingaApplicationLocationDescriptor& descriptor) {
    return std::string(form) + " location: " + descriptor.getBaseDirectory() + ' ' +
           descriptor.getClasspathExtension() + ' ' + descriptor.getInitialClass();
}

std::string show(const Quor::TGingaJavaApplicationDescriptor& descriptor) {
    return showParameters("Java", descriptor);
}

std::string show(const Quor::TGingaNCLApplicationDescriptor& descriptor) {
    return showParameters("NCL", descriptor);
}

std::string show(const Quor::TGingaJavaApplicationLocationDescriptor& descriptor) {
    return showLocation("Java", descriptor);
}

std::string show(const Quor::TGingaNCLApplicationLocationDescriptor& descriptor) {
    return showLocation("NCL", descriptor);
}

std::string classNameOf(const Quor::TISDBTDescriptor& descriptor) {
    std::string name;
    forEachHeld<TAITTable>(classRows(), [&](const auto& row) {
        using Class = typename std::decay_t<decltype(row)>::Class;
        name = dynamic_cast<const Class*>(&descriptor) != nullptr ? nameOf<Class>() : name;
    });
    return name;
}

/// The first of the classes that the descriptor is an object of; its name alone, if it is none of them.
template <class Class, class... Others> std::string showAs(const Quor::TISDBTDescriptor& descriptor) {
    if (const auto* const object = dynamic_cast<const Class*>(&descriptor)) {
        return show(*object);
    }
    if constexpr (sizeof...(Others) > 0) {
        return showAs<Others...>(descriptor);
    } else {
        return classNameOf(descriptor);
    }
}

/// A string behind its length.
ByteVector counted(const std::string& characters) {
    return join({{static_cast<QUOR_U8>(characters.size())}, text(characters)});
}

#define ACCESSORS(name)                                                                                                \
    [](const TAITTable& table) -> Quor::TISDBTDescriptor* { return table.name(); },                                    \
        [](const TApplication& application, int inherit, int* inherited) -> Quor::TISDBTDescriptor* {                  \
            return application.name(inherit, inherited);                                                               \
        }

/// Those that are shown in all their values.
std::vector<Kind> shownKinds() {
    const ByteVector name = join({text("por"), counted("Jogos"), text("eng"), counted("Games for all")});
    const ByteVector parameters = join({counted("-fullscreen"), counted("a longer parameter")});
    const ByteVector location = join({counted("/carousel/base"), counted("/class/path/extension"), text("Main.class")});
    return {
        {"application", 0x00, descriptor(0x00, hex("05 0001 010203  E0 07  01 02")),
         "application: profile 1 of 1.2.3 bound, visibility 3 users applications, priority 7, labels 1 2",
         descriptor(0x00, hex("00 40 09")), "application: unbound, visibility 2 users, priority 9, labels", "",
         ACCESSORS(getApplicationDescriptor)},
        {"application name", 0x01, descriptor(0x01, name), "name: eng=Games for all por=Jogos",
         descriptor(0x01, join({text("spa"), counted("Juegos")})), "name: spa=Juegos", "",
         ACCESSORS(getApplicationNameDescriptor)},
        {"transport protocol", 0x02, descriptor(0x02, hex("0001 07 80 0001 0002 0003 33")),
         "object carousel, protocol 1, label 7, service 1.2.3, component 51", descriptor(0x02, hex("0004 08 00 34")),
         "data carousel, protocol 4, label 8, component 52", "", ACCESSORS(getTransportProtocolDescriptor)},
        {"Ginga-J application", 0x03, descriptor(0x03, parameters), "Java parameters: -fullscreen a longer parameter",
         descriptor(0x03, {}),
         "Java parameters:", "ISDBTUtils: TAITTable::parse: Ginga Java Application Descriptor... WHAT TO DO????",
         ACCESSORS(getGingaApplicationDescriptor)},
        {"Ginga-J application location", 0x04, descriptor(0x04, location),
         "Java location: /carousel/base /class/path/extension Main.class", descriptor(0x04, hex("01 61 01 62 63")),
         "Java location: a b c",
         "ISDBTUtils: TAITTable::parse: Ginga Java Application Location Descriptor... WHAT TO DO????",
         ACCESSORS(getGingaApplicationLocationDescriptor)},
        {"external application authorization", 0x05, descriptor(0x05, hex("0000ABCD 0012 01  00000001 0002 FF")),
         "authorization: 000000010002=1.2@255 0000ABCD0012=43981.18@1", descriptor(0x05, {}), "authorization:", "",
         ACCESSORS(getExternalApplicationAuthorizationDescriptor)},
        {"Ginga-NCL application", 0x06, descriptor(0x06, parameters), "NCL parameters: -fullscreen a longer parameter",
         descriptor(0x06, counted("b")), "NCL parameters: b",
         "ISDBTUtils: TAITTable::parse: Ginga NCL Application Descriptor... WHAT TO DO????",
         ACCESSORS(getGingaApplicationDescriptor)},
        {"Ginga-NCL application location", 0x07, descriptor(0x07, location),
         "NCL location: /carousel/base /class/path/extension Main.class", descriptor(0x07, hex("01 64 01 65 66")),
         "NCL location: d e f",
         "ISDBTUtils: TAITTable::parse: Ginga NCL Application Location Descriptor... WHAT TO DO????",
         ACCESSORS(getGingaApplicationLocationDescriptor)},
        {"application icon", 0x0B, descriptor(0x0B, join({counted("/ico../../the/carousel"), hex("0109")})),
         "icon: /ico../../the/carousel 265", descriptor(0x0B, hex("01 69 0001")), "icon: i 1", "",
         ACCESSORS(getApplicationIconDescriptor)},
        {"prefetch", 0x0C, descriptor(0x0C, join({hex("07"), counted("a module of the menu"), hex("63 00 01")})),
         "prefetch: label 7, a module of the menu@99, @1", descriptor(0x0C, hex("08 01 6D 02")),
         "prefetch: label 8, m@2", "", ACCESSORS(getPrefetchDescriptor)},
        {"DII location", 0x0D, descriptor(0x0D, hex("07 8001 000A  0002 000B")), "DII: label 7, 1.10, 2.11",
         descriptor(0x0D, hex("08 0003 000C")), "DII: label 8, 3.12", "", ACCESSORS(getDIILocationDescriptor)},
        {"IP signalling", 0x11, descriptor(0x11, hex("010203")), "platform: 66051", descriptor(0x11, hex("000004")),
         "platform: 4", "", ACCESSORS(getIPSignalingDescriptor)},
    };
}

#undef ACCESSORS

bool has(const std::vector<Kind>& kinds, QUOR_U8 tag) {
    return std::any_of(kinds.begin(), kinds.end(), [tag](const Kind& each) { return each.tag == tag; });
}

/// All; the values of the others are the matter of their own tests.
std::vector<Kind> makeKinds() {
    std::vector<Kind> kinds = shownKinds();
    forEachHeld<TAITTable>(classRows(), [&kinds](const auto& row) {
        using Class = typename std::decay_t<decltype(row)>::Class;
        if (!has(kinds, row.tag)) {
            const auto ofApplication = getterOf<TApplication>(row.in);
            kinds.push_back({nameOf<Class>(), row.tag, row.wire, nameOf<Class>(), row.wire, nameOf<Class>(), "",
                             getterOf<TAITTable>(row.in),
                             [ofApplication](const TApplication& application, int inherit, int* inherited) {
                                 return (application.*ofApplication)(inherit, inherited);
                             }});
        }
    });
    return kinds;
}

const char* const EXCEEDS = "ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: ";

/// One of each tag, as its class speaks of it, and several of some.
std::vector<Broken> shownBroken() {
    const QUOR_U16 dataLength = TISDBTTable::ERROR_INVALID_DATA_LENGTH;
    const QUOR_U16 descriptorLength = TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH;
    const QUOR_U16 string = TISDBTTable::ERROR_INVALID_STRING;
    const Lines parameter{std::string(EXCEEDS) + "1 > 0.Aborting!",
                          "ISDBTUtils: TGingaApplicationDescriptor:: parse: ERROR: parsing Parameter. Aborting!"};
    const Lines location{"ISDBTUtils: TGingaApplicationLocationDescriptor::parse: Longer data length is required: 0 < "
                         "1. Aborting!"};
    return {
        {"application",
         0x00,
         hex("00 03 03 0000"),
         dataLength,
         {"ISDBTUtils: TApplicationDescriptor:: parse: Application Profiles Length exceeds Descriptor Length: 3 > 2. "
          "Aborting!"}},
        {"application name",
         0x01,
         hex("01 04 706F72 01"),
         descriptorLength,
         {std::string(EXCEEDS) + "1 > 0.Aborting!",
          "ISDBTUtils: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!",
          "ISDBTUtils: TApplicationNameDescriptor::parse: Invalid item. Aborting!"}},
        {"object carousel",
         0x02,
         hex("02 03 0001 07"),
         dataLength,
         {"ISDBTUtils: TTransportProtocolDescriptorOC::parse: Item length not valid: 3. Aborting!"}},
        {"IP",
         0x02,
         hex("02 07 0002 07 00 80 02 61"),
         string,
         {std::string(EXCEEDS) + "2 > 1.Aborting!",
          "ISDBTUtils: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!"}},
        {"data piping",
         0x02,
         hex("02 05 0003 07 00 33"),
         TISDBTTable::ERROR_OK,
         {"ISDBTUtils: TTransportProtocolDescriptor::parse: DataPiping not supported. Aborting!"}},
        {"unknown protocol",
         0x02,
         hex("02 05 0005 07 00 33"),
         TISDBTTable::ERROR_OK,
         {"ISDBTUtils: TTransportProtocolDescriptor::parse: Unknown protocol ID: 0x0005. Aborting!"}},
        {"Ginga-J application", 0x03, hex("03 01 01"), string, parameter},
        {"Ginga-J application location", 0x04, hex("04 04 03 616263"), descriptorLength, location},
        {"external application authorization",
         0x05,
         hex("05 01 00"),
         descriptorLength,
         {"ISDBTUtils: TExternalApplicationAuthorizationDescriptorItem::parse: Item length not valid: 1. Aborting!",
          "ISDBTUtils: TExternalApplicationAuthorizationDescriptor::parse: Invalid item. Aborting!"}},
        {"Ginga-NCL application", 0x06, hex("06 01 01"), string, parameter},
        {"Ginga-NCL application location", 0x07, hex("07 04 03 616263"), descriptorLength, location},
        {"application icon",
         0x0B,
         hex("0B 02 02 41"),
         string,
         {std::string(EXCEEDS) + "2 > 1.Aborting!",
          "ISDBTUtils: TApplicationIconDescriptor:: parse: ERROR: parsing Icon Locator. Aborting!"}},
        {"prefetch",
         0x0C,
         hex("0C 04 07 02 4142"),
         descriptorLength,
         {"ISDBTUtils: TPrefetchDescriptorItem::parse: Item length not valid: 0. Aborting!",
          "ISDBTUtils: TPrefetchDescriptor::parse: Invalid item. Aborting!"}},
        {"DII location",
         0x0D,
         hex("0D 04 07 000102"),
         descriptorLength,
         {"ISDBTUtils: TDIILocationDescriptorItem::parse: Item length not valid: 3. Aborting!",
          "ISDBTUtils: TDIILocationDescriptor::parse: Invalid item. Aborting!"}},
        {"IP signalling",
         0x11,
         hex("11 02 0000"),
         descriptorLength,
         {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 4 < 5. Aborting!"}},
    };
}

} // namespace

namespace {

std::vector<Broken> makeBroken() {
    std::vector<Broken> all = shownBroken();
    forEachHeld<TAITTable>(classRows(), [&all](const auto& row) {
        using Class = typename std::decay_t<decltype(row)>::Class;
        if (!has(shownKinds(), row.tag)) {
            const ByteVector wire = refusedOf<Class>(row.tag, row.minimum);
            const Parsed<Class> alone = parseBytes<Class>(wire);
            all.push_back({nameOf<Class>(), row.tag, wire, alone.error, alone.lines});
        }
    });
    return all;
}

} // namespace

const std::vector<Kind>& kinds() {
    static const std::vector<Kind> all = makeKinds();
    return all;
}

const Kind& kind(QUOR_U8 tag) {
    const auto found =
        std::find_if(kinds().begin(), kinds().end(), [tag](const Kind& each) { return each.tag == tag; });
    return found == kinds().end() ? throw std::invalid_argument("no such tag") : *found;
}

bool isKnown(QUOR_U8 tag) {
    return has(kinds(), tag);
}

bool sameMember(const Kind& one, const Kind& other) {
    const auto member = [](QUOR_U8 tag) { return tag == 0x06 ? 0x03 : tag == 0x07 ? 0x04 : tag; };
    return member(one.tag) == member(other.tag);
}

std::vector<QUOR_U8> orderOfTags(bool java) {
    std::vector<QUOR_U8> order = {0x00, 0x01, 0x0B, 0x05, 0x02, 0x11, 0x0C, 0x0D};
    order.push_back(java ? 0x03 : 0x06);
    order.push_back(java ? 0x04 : 0x07);
    for (const Kind& joinedLater : kinds()) {
        if (!has(shownKinds(), joinedLater.tag)) {
            order.push_back(joinedLater.tag);
        }
    }
    return order;
}

const std::vector<Broken>& broken() {
    static const std::vector<Broken> all = makeBroken();
    return all;
}

std::string shown(const Quor::TISDBTDescriptor* descriptor) {
    using namespace Quor;
    if (descriptor == nullptr) {
        return "none";
    }
    return showAs<TApplicationDescriptor, TApplicationNameDescriptor, TApplicationIconDescriptor,
                  TExternalApplicationAuthorizationDescriptor, TTransportProtocolDescriptorOC,
                  TTransportProtocolDescriptorIP, TTransportProtocolDescriptorDC, TIPSignalingDescriptor,
                  TPrefetchDescriptor, TDIILocationDescriptor, TGingaJavaApplicationDescriptor,
                  TGingaNCLApplicationDescriptor, TGingaJavaApplicationLocationDescriptor,
                  TGingaNCLApplicationLocationDescriptor>(*descriptor);
}

} // namespace ait
