#include "tool/json/Examples.h"

#include "describing/Describing.h"
#include "parsing/SectionParser.h"
#include "tables/TableKinds.h"
#include "tool/json/ExampleSections.h"

#include <stdexcept>

std::vector<Example> examples() {
    std::vector<Example> examples;
    for (const ByteVector& bytes : exampleSections()) {
        const inspect::Section section(bytes.data(), bytes.size(), {});
        const inspect::ParsedSection parsed = inspect::parse(section);
        if (parsed.table == nullptr) {
            throw std::logic_error("rejected: example " + std::to_string(examples.size()) + ", " +
                                   std::string(inspect::tableName(section.tableId())) +
                                   (parsed.logLines.empty() ? "" : ": " + parsed.logLines.back()));
        }
        examples.push_back({std::string(inspect::tableName(section.tableId())), inspect::describe(*parsed.table)});
    }
    return examples;
}
