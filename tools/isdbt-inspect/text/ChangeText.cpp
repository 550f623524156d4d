#include "text/ChangeText.h"

#include "text/FieldText.h"
#include "text/ValueText.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr std::size_t INDENT = 2;
constexpr std::string_view ARROW = " -> ";

/// A mark that stands before each line of a text.
struct Mark {
    std::string_view text;
    Ink ink;
};

constexpr Mark GONE{"-", Ink::Fault};
constexpr Mark NEW{"+", Ink::Good};
constexpr Mark OTHER{"~", Ink::Remark};

std::string marked(const Mark& mark, const Style& style, std::size_t indent) {
    return std::string(indent, ' ') + style.paint(mark.ink, mark.text) + ' ';
}

/// What is left of a page behind an indented mark.
Page behindMark(const Page& page, std::size_t indent) {
    Page inner{page.style, {}};
    inner.style.width -= std::min(inner.style.width, indent + INDENT);
    return inner;
}

void appendMarked(Page& page, const Page& inner, const Mark& mark, std::size_t indent) {
    const std::string margin = marked(mark, page.style, indent);
    for (std::size_t at = 0; at < inner.text.size();) {
        const std::size_t end = inner.text.find('\n', at) + 1;
        page.text += margin + inner.text.substr(at, end - at);
        at = end;
    }
}

/// Appends a value alone, in as many lines as it takes.
void appendValue(Page& page, const Field& field, std::size_t indent) {
    if (const auto* const bytes = std::get_if<Bytes>(&field.value); bytes != nullptr && !bytes->bytes.empty()) {
        appendBytes(page, bytes->bytes, indent);
    } else {
        appendLine(page, std::string(indent, ' ') + valueText(field, page.style), indent + INDENT);
    }
}

void appendMarkedValue(Page& page, const Field& field, const Mark& mark, std::size_t indent) {
    Page inner = behindMark(page, indent);
    appendValue(inner, field, 0);
    appendMarked(page, inner, mark, indent);
}

/// Appends a field in full.
void appendField(Page& page, const std::string& path, const Field& field, const Mark& mark, std::size_t indent) {
    Page inner = behindMark(page, indent);
    const bool fits = columns(path) + INDENT + columns(valueText(field, page.style)) <= inner.style.width;
    if (isNested(field) || fits) {
        Field named = field;
        named.name = path;
        appendFields(inner, {std::move(named)}, 0);
    } else {
        appendLine(inner, page.style.paint(Ink::Name, path), 0);
        appendValue(inner, field, 2 * INDENT);
    }
    appendMarked(page, inner, mark, indent);
}

void appendOtherValue(Page& page, const Change& change, std::size_t indent) {
    const Style& style = page.style;
    const std::string head = marked(OTHER, style, indent) + style.paint(Ink::Name, change.path);
    const std::string values = valueText(*change.before, style) + std::string(ARROW) + valueText(*change.after, style);
    const std::size_t inner = indent + 2 * INDENT;
    if (columns(head) + INDENT + columns(values) <= style.width) {
        page.text += head + std::string(INDENT, ' ') + values + '\n';
    } else if (inner + columns(values) <= style.width) {
        page.text += head + '\n' + std::string(inner, ' ') + values + '\n';
    } else {
        page.text += head + '\n';
        appendMarkedValue(page, *change.before, GONE, inner);
        appendMarkedValue(page, *change.after, NEW, inner);
    }
}

} // namespace

void appendChanges(Page& page, const std::vector<Change>& changes, std::size_t indent) {
    for (const Change& change : changes) {
        const bool bothSimple = change.before != nullptr && change.after != nullptr && !isNested(*change.before) &&
                                !isNested(*change.after);
        if (bothSimple) {
            appendOtherValue(page, change, indent);
            continue;
        }
        if (change.before != nullptr) {
            appendField(page, change.path, *change.before, GONE, indent);
        }
        if (change.after != nullptr) {
            appendField(page, change.path, *change.after, NEW, indent);
        }
    }
}

} // namespace inspect
