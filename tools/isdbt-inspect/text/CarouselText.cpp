#include "text/CarouselText.h"

#include "describing/Conversion.h"
#include "text/Columns.h"
#include "text/SectionText.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

using dsmcc::EntryState;
using dsmcc::ModuleState;
using dsmcc::ObjectKind;

constexpr std::size_t FURTHER = 4; // where a line goes on that had to be broken

/// One long path is not to push the sizes of all files out of sight.
constexpr std::size_t WIDEST_NAME = 64;

std::string quoted(std::string_view raw) {
    return fmt::format("\"{}\"", shownName(raw));
}

std::string bytesText(std::uint64_t count) {
    return fmt::format("{} {}", count, count == 1 ? "byte" : "bytes");
}

std::string intervalText(const dsmcc::Repetition& repetition) {
    const std::string shortest = fmt::format("{:.3f} s", repetition.shortest);
    const std::string longest = fmt::format("{:.3f} s", repetition.longest);
    return shortest == longest ? longest : fmt::format("{} to {}", shortest, longest);
}

/// "came 3 times, every 0.300 s to 0.301 s"
std::string cameText(const dsmcc::Repetition& repetition, const Summary& summary) {
    if (repetition.count < 2) {
        return "came once";
    }
    const std::string times = fmt::format("came {} times", repetition.count);
    return summary.seconds ? fmt::format("{}, every {}", times, intervalText(repetition)) : times;
}

/// "2 whole turns of 0.300 s": none proves nothing missing.
Line turnsText(const dsmcc::Module& module, const Summary& summary) {
    if (module.repetition.count < 2) {
        return {"no whole turn", Ink::Remark};
    }
    const std::uint64_t turns = module.repetition.count - 1;
    const std::string text = fmt::format("{} whole {}", turns, turns == 1 ? "turn" : "turns");
    return summary.seconds ? fmt::format("{} of {}", text, intervalText(module.repetition)) : text;
}

/// "missing 3-6, 9"
std::string missingText(const dsmcc::Module& module) {
    constexpr std::size_t MANY = 8;
    std::string text = "missing ";
    const auto ranges = module.missing();
    for (std::size_t at = 0; at < std::min(ranges.size(), MANY); ++at) {
        const auto [first, last] = ranges[at];
        text += at == 0 ? "" : ", ";
        text += first == last ? fmt::format("{}", first) : fmt::format("{}-{}", first, last);
    }
    return ranges.size() > MANY ? text + ", ..." : text;
}

Line stateText(const dsmcc::Module& module) {
    const std::string blocks = fmt::format("{} of {} blocks", module.received(), module.blockCount);
    switch (module.state) {
    case ModuleState::Complete:
        return {"complete", Ink::Good};
    case ModuleState::Incomplete:
        return {fmt::format("{}, {}", blocks, missingText(module)), Ink::Fault};
    case ModuleState::Unannounced:
        return {fmt::format("{} {} that no DII announces", module.blocks.size(),
                            module.blocks.size() == 1 ? "block" : "blocks"),
                Ink::Remark};
    case ModuleState::BadBlockSize:
        return {"cannot be sent in blocks of this size", Ink::Fault};
    case ModuleState::TooLarge:
        return {"too large to be kept", Ink::Fault};
    case ModuleState::InflateFailed:
        return {blocks + ", does not inflate", Ink::Fault};
    case ModuleState::InflateLimit:
        return {blocks + ", too large to be inflated", Ink::Fault};
    case ModuleState::OriginalSize:
        break;
    }
    return {blocks + ", does not inflate to its size", Ink::Fault};
}

std::vector<Line> piecesOf(const dsmcc::Module& module, const Summary& summary) {
    std::vector<Line> pieces{Line(fmt::format("module 0x{:04X}", module.id), Ink::Name),
                             fmt::format("version {}", module.version)};
    if (module.state != ModuleState::Unannounced) {
        pieces.emplace_back(bytesText(module.info.size) +
                            (module.originalSize ? fmt::format(", inflated {}", *module.originalSize) : ""));
    }
    pieces.push_back(stateText(module));
    pieces.push_back(turnsText(module, summary));
    const std::pair<const char*, std::uint8_t> TEXTS[] = {
        {"name", dsmcc::Descriptor::NAME}, {"type", dsmcc::Descriptor::TYPE}, {"label", dsmcc::Descriptor::LABEL}};
    for (const auto& [what, tag] : TEXTS) {
        if (module.info.descriptor(tag) != nullptr) {
            pieces.emplace_back(fmt::format("{} {}", what, quoted(module.info.text(tag))));
        }
    }
    return pieces;
}

void appendAt(Page& page, std::size_t indent, const std::vector<Line>& pieces) {
    appendPieces(page, blanks(indent), blanks(indent + FURTHER), pieces);
}

void appendRefusals(Page& page, const std::vector<dsmcc::Refusal>& refusals, std::size_t indent) {
    for (const dsmcc::Refusal& refusal : refusals) {
        appendAt(page, indent, {Line(fmt::format("! {} (byte {})", refusal.text, refusal.at), Ink::Fault)});
    }
}

void appendModule(Page& page, const dsmcc::Module& module, const Summary& summary, std::size_t indent) {
    appendAt(page, indent, piecesOf(module, summary));
    appendRefusals(page, module.refusals, indent + INDENT);
}

void appendGroup(Page& page, const dsmcc::Group& group, const Summary& summary) {
    if (group.dii == nullptr) {
        appendAt(page, INDENT,
                 {Line(fmt::format("DII 0x{:08X}", group.info->id), Ink::Name),
                  Line("the DSI announces it, and it did not come", Ink::Fault)});
        return;
    }
    std::vector<Line> pieces{Line(fmt::format("DII 0x{:08X}", group.dii->transactionId), Ink::Name),
                             fmt::format("version {}", dsmcc::versionOf(group.dii->transactionId)),
                             fmt::format("blocks of {}", bytesText(group.dii->blockSize)),
                             cameText(group.repetition, summary)};
    if (group.modules.empty()) {
        pieces.emplace_back("no modules");
    }
    appendAt(page, INDENT, pieces);
    appendRefusals(page, group.refusals, 2 * INDENT);
    for (const dsmcc::Module* const module : group.modules) {
        appendModule(page, *module, summary, 2 * INDENT);
    }
}

std::string stateText(const dsmcc::Entry& entry) {
    switch (entry.state) {
    case EntryState::Complete:
        return "";
    case EntryState::ModuleIncomplete:
        return fmt::format("module 0x{:04X} is incomplete", entry.moduleId);
    case EntryState::ModuleRefused:
        return fmt::format("module 0x{:04X} cannot be read", entry.moduleId);
    case EntryState::ModuleNotAnnounced:
        return fmt::format("module 0x{:04X} is not announced", entry.moduleId);
    case EntryState::NoSuchObject:
        return fmt::format("module 0x{:04X} has no such object", entry.moduleId);
    case EntryState::OtherCarousel:
        return "in another carousel";
    case EntryState::UnknownKind:
        return "of an unknown kind";
    case EntryState::Loop:
        return "contains itself";
    case EntryState::TooDeep:
        break;
    }
    return "too deep to be entered";
}

std::string_view nameOf(ObjectKind kind) {
    switch (kind) {
    case ObjectKind::Directory:
    case ObjectKind::ServiceGateway:
        return "directory";
    case ObjectKind::Stream:
        return "stream";
    case ObjectKind::StreamEvent:
        return "stream events";
    case ObjectKind::Module:
        return "module";
    case ObjectKind::File:
    case ObjectKind::Unknown:
        break;
    }
    return "";
}

/// What stands in the place of a name that there is none of.
Line nameOf(const dsmcc::Entry& entry) {
    if (entry.naming != dsmcc::Naming::None) {
        return {shownName(entry.path), Ink::Name};
    }
    std::string name = fmt::format("(module 0x{:04X}", entry.moduleId);
    if (entry.kind != ObjectKind::Module) {
        name += ", object ";
        for (const std::uint8_t each : entry.objectKey) {
            name += fmt::format("{:02X}", each);
        }
    }
    return {name + ")", Ink::Name};
}

Line remarksOn(const dsmcc::Entry& entry) {
    std::vector<Line> remarks;
    if (const std::string_view kind = nameOf(entry.kind); !kind.empty()) {
        remarks.emplace_back(kind, Ink::Remark);
    }
    const auto describe = [&remarks](const std::vector<dsmcc::Descriptor>& descriptors) {
        for (const dsmcc::Descriptor& each : descriptors) {
            if (each.tag == dsmcc::Descriptor::CONTENT_TYPE) {
                remarks.emplace_back(shownName(std::string(each.body.begin(), each.body.end())));
            }
        }
    };
    if (entry.object != nullptr) {
        describe(entry.object->descriptors);
    }
    if (entry.naming == dsmcc::Naming::Unsafe) {
        remarks.emplace_back("no safe name", Ink::Fault);
    } else if (entry.naming == dsmcc::Naming::Duplicate) {
        remarks.emplace_back("a name that is there already", Ink::Fault);
    } else if (entry.naming == dsmcc::Naming::None && entry.kind != ObjectKind::Module) {
        remarks.emplace_back("no directory names it", Ink::Remark);
    }
    if (const std::string state = stateText(entry); !state.empty()) {
        remarks.emplace_back(state, Ink::Fault);
    }
    Line line;
    for (const Line& each : remarks) {
        line += line.empty() ? each : ", " + each;
    }
    return line;
}

void appendEvents(std::vector<Row>& rows, const dsmcc::Entry& entry) {
    const bool known = entry.object != nullptr && entry.object->stream;
    for (const dsmcc::StreamEvent& event : known ? entry.object->stream->events : std::vector<dsmcc::StreamEvent>{}) {
        rows.push_back(
            {blanks(2 * INDENT) + Line(fmt::format("event 0x{:04X} {}", event.id, quoted(event.name))), {}, {}});
    }
}

void appendTree(Page& page, const dsmcc::Tree& tree) {
    if (tree.gateway && tree.gateway->object == nullptr) {
        appendAt(page, INDENT, {Line("! no service gateway: " + stateText(*tree.gateway), Ink::Fault)});
    }
    std::vector<Row> rows;
    for (const dsmcc::Entry& entry : tree.entries) {
        rows.push_back({blanks(INDENT) + nameOf(entry), entry.size ? bytesText(*entry.size) : "", remarksOn(entry)});
        appendEvents(rows, entry);
    }
    if (!rows.empty()) {
        page.lines.emplace_back();
        Grid({Column::Kind::Name, Column::Kind::Number, Column::Kind::Name}, std::move(rows), WIDEST_NAME)
            .append(page, 2, FURTHER);
    }
    if (tree.refusal) {
        appendRefusals(page, {*tree.refusal}, INDENT);
    }
}

std::string_view nameOf(dsmcc::CarouselType type) {
    switch (type) {
    case dsmcc::CarouselType::Object:
        return "object carousel";
    case dsmcc::CarouselType::Data:
        return "data carousel";
    case dsmcc::CarouselType::Unknown:
        break;
    }
    return "unknown carousel";
}

std::vector<Line> headingOf(const CarouselPid& pid, const dsmcc::Carousel& carousel) {
    std::vector<Line> pieces{
        Line(carousel.id ? fmt::format("Carousel 0x{:08X}", *carousel.id) : "Carousel of groups", Ink::Heading),
        nameOf(carousel.type), fmt::format("PID 0x{:04X}", pid.pid)};
    for (const CarouselStream& stream : pid.streams) {
        std::string text = fmt::format("service 0x{:04X}", stream.service);
        text += stream.componentTag ? fmt::format(" component tag 0x{:02X}", *stream.componentTag) : "";
        for (const std::uint16_t tag : stream.associationTags) {
            text += fmt::format(" association tag 0x{:04X}", tag);
        }
        pieces.emplace_back(text);
    }
    return pieces;
}

void appendCarousel(Page& page, const CarouselPid& pid, const CarouselReport& report, const Summary& summary) {
    const dsmcc::Carousel& carousel = report.carousel;
    appendAt(page, 0, headingOf(pid, carousel));
    if (carousel.dsi != nullptr) {
        appendAt(page, INDENT,
                 {Line(fmt::format("DSI 0x{:08X}", carousel.dsi->transactionId), Ink::Name),
                  fmt::format("version {}", dsmcc::versionOf(carousel.dsi->transactionId)),
                  cameText(carousel.repetition, summary)});
    } else if (carousel.type == dsmcc::CarouselType::Object) {
        appendAt(page, INDENT, {Line("! no DSI came", Ink::Fault)});
    }
    for (const dsmcc::Group& group : carousel.groups) {
        appendGroup(page, group, summary);
    }
    if (carousel.groups.empty()) {
        appendAt(page, INDENT, {Line("! no DII came", Ink::Fault)});
    }
    for (const dsmcc::Module* const module : carousel.unannounced) {
        appendModule(page, *module, summary, INDENT);
    }
    appendTree(page, report.tree);
    page.lines.emplace_back();
}

/// What was not taken of a PID's sections.
void appendLeftOut(Page& page, const CarouselPid& pid) {
    const std::size_t before = page.lines.size();
    const std::string where = fmt::format("! PID 0x{:04X}: ", pid.pid);
    if (pid.crcErrors != 0) {
        appendAt(page, 0,
                 {Line(fmt::format("{}{} of {} sections with a wrong CRC_32", where, pid.crcErrors,
                                   pid.sections + pid.crcErrors),
                       Ink::Fault)});
    }
    for (const CarouselRefusal& each : pid.refusals) {
        const std::string times = each.count == 1 ? "" : fmt::format(", {} times, first", each.count);
        appendAt(page, 0,
                 {Line(fmt::format("{}{} (byte {}){}{}", where, each.refusal.text, each.refusal.at, times,
                                   positionText(each.first)),
                       Ink::Fault)});
    }
    if (page.lines.size() != before) {
        page.lines.emplace_back();
    }
}

} // namespace

void appendCarousels(Page& page, const Summary& summary) {
    for (const CarouselPid& pid : summary.carousels) {
        for (const CarouselReport& report : pid.carousels) {
            appendCarousel(page, pid, report, summary);
        }
        appendLeftOut(page, pid);
    }
    if (summary.carousels.empty()) {
        appendLine(page, "no carousel came");
        page.lines.emplace_back();
    }
}

} // namespace inspect
