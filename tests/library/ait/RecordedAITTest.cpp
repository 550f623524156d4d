#include "ait/TAITTable.h"

#include "Kinds.h"
#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationDescriptorProfile.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TApplicationNameDescriptorItem.h"
#include "descriptors/TGingaApplicationLocationDescriptor.h"
#include "descriptors/TTransportProtocolDescriptorOC.h"
#include "support/Parse.h"
#include "support/Recordings.h"

#include <algorithm>
#include <sstream>

using Quor::TAITTable;
using Quor::TApplication;
using Quor::TISDBTTable;

namespace {

/// A recorded section, and what becomes of it: most are of other profiles, whose transports this one does not know.
struct Outcome {
    const char* file;
    std::size_t index;
    QUOR_U16 code;
    Lines lines;
    Lines report; ///< of the table; empty when there is none
};

const char* const DATA_PIPING = "ISDBTUtils: TTransportProtocolDescriptor::parse: DataPiping not supported. Aborting!";
const char* const INVALID_ITEM = "ISDBTUtils: TAITTable::parse: Invalid item. Aborting!";
const char* const UNKNOWN_AT_TABLE = "ISDBTUtils: TAITTable::parse: Unknown descriptor: 0x16. Ignored!";
const char* const UNKNOWN_AT_APPLICATION = "ISDBTUtils: TApplication::parse: Unknown descriptor: 0x16. Ignored!";

const std::vector<Outcome>& outcomes() {
    static const std::vector<Outcome> all = {
        {"sections/tsduck-018-pid0x1EC5-tid0x74.sec",
         0,
         TISDBTTable::ERROR_INVALID_ITEM,
         {DATA_PIPING, INVALID_ITEM},
         {}},
        {"sections/tsduck-018-pid0x1EC6-tid0x74.sec",
         0,
         TISDBTTable::ERROR_OK,
         {},
         {"type 1, version 0, current, section 0 of 0", "0000000B1AB6: type 1, control code 1, 61 bytes",
          "application: profile 1 of 1.0.2 bound, visibility 3 users applications, priority 60, labels 1",
          "name: eng=Launcher SAT", "object carousel, protocol 1, label 1, component 10",
          "Java parameters:", "Java location: /  bd.BDXlet"}},
        {"sections/tsduck-018-pid0x1EC7-tid0x74.sec",
         0,
         TISDBTTable::ERROR_OK,
         {},
         {"type 1, version 1, current, section 0 of 0", "0000000B1AB7: type 1, control code 2, 96 bytes",
          "application: profile 1 of 1.0.2 bound, visibility 3 users applications, priority 60, labels 1",
          "name: eng=Programmi TV SAT", "object carousel, protocol 1, label 1, component 14",
          "Java parameters:", "Java location: /  it.mediaset.schedulestv.PortaleLightXlet"}},
        {"sections/exoplayer-ait-pid0x0172-tid0x74.sec",
         0,
         TISDBTTable::ERROR_INVALID_ITEM,
         {DATA_PIPING, INVALID_ITEM},
         {}},
        {"sections/dvbsnoop-doc-pid0x087A-tid0x74.sec",
         0,
         TISDBTTable::ERROR_OK,
         {},
         {"type 1, version 3, current, section 0 of 0", "000000130100: type 1, control code 1, 279 bytes",
          "application: profile 1 of 1.0.2 unbound, visibility 3 users applications, priority 5, labels 1",
          "name: deu=ARD TV-Portal", "object carousel, protocol 1, label 1, component 4",
          "Java parameters:", "Java location: /  de.ard.mhp.Portal", "0000001301FF: type 1, control code 2, 209 bytes",
          "application: profile 1 of 1.0.2 unbound, visibility 3 users applications, priority 5, labels 2",
          "name: deu=ARD TV-Portal.", "object carousel, protocol 1, label 2, component 4",
          "Java parameters:", "Java location: /  de.ard.mhp.Portal", "000000130206: type 1, control code 2, 138 bytes",
          "application: profile 1 of 1.0.2 bound, visibility 3 users applications, priority 5, labels 3",
          "name: deu=Browser Test", "object carousel, protocol 1, label 3, component 14",
          "Java parameters: config=/browser.prp start=start.png, 365, 510, 350, 35",
          "Java location: /  tv.scip.browser.hal.mhp.MHPXlet"}},
        {"generated/gen-tsduck-022-pidNA-tid0x74.sec",
         0,
         TISDBTTable::ERROR_OK,
         {},
         {"type 37428, version 21, current, section 0 of 0"}},
        {"generated/gen-tsduck-022-pidNA-tid0x74.sec",
         1,
         TISDBTTable::ERROR_OK,
         {UNKNOWN_AT_TABLE, UNKNOWN_AT_TABLE, UNKNOWN_AT_TABLE, UNKNOWN_AT_APPLICATION, UNKNOWN_AT_APPLICATION,
          UNKNOWN_AT_APPLICATION},
         {"type 30874, version 10, current, section 0 of 0", "123456789ABC: type 30874, control code 7, 27 bytes",
          "87654321CBA9: type 30874, control code 171, 18 bytes"}},
        {"generated/gen-tsduck-022-pidNA-tid0x74.sec",
         2,
         TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
         {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 2 < 6. Aborting!"},
         {}},
        {"generated/gen-opencaster-pidNA-tid0x74.sec",
         0,
         TISDBTTable::ERROR_OK,
         {},
         {"type 1, version 1, current, section 0 of 0", "0000000A03E9: type 1, control code 2, 80 bytes",
          "application: profile 1 of 1.0.2 bound, visibility 3 users applications, priority 1, labels 1",
          "name: deu=Text input example", "object carousel, protocol 1, label 1, component 11",
          "Java parameters: file:///sample8", "Java location: /  Wizard"}},
    };
    return all;
}

std::vector<std::string> keys(const TAITTable& table) {
    const std::unique_ptr<std::list<std::string>> list(&table.getApplicationsIDs());
    return std::vector<std::string>(list->begin(), list->end());
}

template <class Holder> void reportDescriptors(Lines& lines, const Holder& holder) {
    for (const ait::Kind& kind : ait::kinds()) {
        if (holder.getDescriptor(kind.tag) != nullptr) {
            lines.push_back(ait::shown(holder.getDescriptor(kind.tag)));
        }
    }
}

Lines report(const TAITTable& table) {
    Lines lines;
    std::ostringstream header;
    header << "type " << table.getApplicationType() << ", version " << int{table.getVersion()}
           << (table.getCurrentIndicator() != 0 ? ", current" : ", next") << ", section "
           << int{table.getSectionNumber()} << " of " << int{table.getLastSectionNumber()};
    lines.push_back(header.str());
    reportDescriptors(lines, table);
    for (const std::string& key : keys(table)) {
        const TApplication& application = *table.getApplication(key);
        lines.push_back(key + ": type " + std::to_string(application.getApplicationType()) + ", control code " +
                        std::to_string(application.getControlCode()) + ", " +
                        std::to_string(application.getDataLength()) + " bytes");
        reportDescriptors(lines, application);
    }
    return lines;
}

} // namespace

TEST(RecordedAIT, EverySectionHasItsOutcome) {
    SKIP_WITHOUT_RECORDINGS();
    EXPECT_EQ(recordedSections(QUOR_U8{0x74}).size(), outcomes().size());
    for (const Outcome& outcome : outcomes()) {
        SCOPED_TRACE(std::string(outcome.file) + ", section " + std::to_string(outcome.index));
        const auto parsed = parseSection<TAITTable>(recordedSections(outcome.file).at(outcome.index));
        EXPECT_EQ(parsed.error, outcome.code);
        EXPECT_EQ(parsed.lines, outcome.lines);
        EXPECT_EQ(parsed.object == nullptr ? Lines{} : report(*parsed.object), outcome.report);
    }
}

TEST(RecordedAIT, AgreesWithAnotherReading) {
    SKIP_WITHOUT_RECORDINGS();
    const auto parsed = parseSection<TAITTable>(recordedSections("sections/tsduck-018-pid0x1EC6-tid0x74.sec").at(0));
    ASSERT_NE(parsed.object, nullptr);
    ASSERT_EQ(parsed->getApplicationsCount(), 1U);
    const TApplication& application = *parsed->getApplication(keys(*parsed.object)[0]);
    const auto& described = *application.getApplicationDescriptor(0, nullptr);
    const auto& profile = *described.getProfile(taken(described.getProfiles()).at(0));
    const auto& names = *application.getApplicationNameDescriptor(0, nullptr);
    const auto& name = *names.get(taken(names.getLanguageCodes()).at(0));
    const auto& carousel =
        dynamic_cast<Quor::TTransportProtocolDescriptorOC&>(*application.getTransportProtocolDescriptor(0, nullptr));
    const auto& location = *application.getGingaApplicationLocationDescriptor(0, nullptr);
    const std::unique_ptr<QUOR_U8[]> labels(described.getTransportProtocols());
    ASSERT_EQ(described.getTransportProtocolsCount(), 1);

    const auto print = [](const char* format, auto... values) {
        char line[160];
        std::snprintf(line, sizeof line, format, values...);
        return std::string(line);
    };
    const unsigned organisation = application.getApplicationIdentifier()->getOrganizationID();
    const unsigned id = application.getApplicationIdentifier()->getApplicationID();
    const Lines ours = {
        print("  Version: %d, sections: %d, total size: %u bytes", parsed->getVersion(),
              parsed->getLastSectionNumber() + 1, parsed->getDataLength()),
        print("    Application type: %d (0x%04X), Test application: 0", parsed->getApplicationType(),
              parsed->getApplicationType()),
        print("    Application: Identifier: (Organization id: 0x%08X (%u), Application id: 0x%04X (%u)), Control code: "
              "%d",
              organisation, organisation, id, id, application.getControlCode()),
        print("      Profile: 0x%04X (%d), version: %d.%d.%d", profile.getApplicationProfile(),
              profile.getApplicationProfile(), profile.getVersionMajor(), profile.getVersionMinor(),
              profile.getVersionMicro()),
        print("      Service bound: %d, visibility: %d, priority: %d", described.isServiceBound() != 0 ? 1 : 0,
              described.getVisibility(), described.getApplicationPriority()),
        print("      Transport protocol label: 0x%02X (%d)", labels[0], labels[0]),
        print("      Transport protocol label: 0x%02X (%d)", carousel.getTransportProtocolLabel(),
              carousel.getTransportProtocolLabel()),
        print("      Component tag: 0x%02X (%d)", carousel.getComponentTag(), carousel.getComponentTag()),
        "      Language: " + name.getLanguageCode() + ", name: \"" + name.getName() + "\"",
        "      Base directory: \"" + location.getBaseDirectory() + "\"",
        "      Classpath ext: \"" + location.getClasspathExtension() + "\"",
        "      Initial class: \"" + location.getInitialClass() + "\"",
    };
    const Lines theirs = recordedLines("decoded/tsduck-018-pid0x1ec6.txt");
    for (const std::string& line : ours) {
        EXPECT_NE(std::find(theirs.begin(), theirs.end(), line), theirs.end()) << line;
    }
}
