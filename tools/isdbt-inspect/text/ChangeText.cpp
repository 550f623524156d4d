#include "text/ChangeText.h"

#include "text/FieldText.h"
#include "text/ValueText.h"

namespace inspect {

namespace {

// What stands before each line of a text.
const Line GONE("-", Ink::Fault);
const Line NEW("+", Ink::Good);

void appendMarked(Page& page, const Page& inner, const Line& mark, std::size_t indent) {
    const Line margin = blanks(indent) + mark + " ";
    appendPage(page, margin, margin, inner);
}

/// Appends a value alone, in as many lines as it takes.
void appendValue(Page& page, const Field& field, std::size_t indent) {
    if (const auto* const bytes = std::get_if<Bytes>(&field.value); bytes != nullptr && !bytes->bytes.empty()) {
        appendBytes(page, bytes->bytes, indent);
    } else {
        appendLine(page, blanks(indent) + valueText(field), indent + INDENT);
    }
}

void appendMarkedValue(Page& page, const Field& field, const Line& mark, std::size_t indent) {
    Page inner = pageBehind(indent + INDENT, page.style);
    appendValue(inner, field, 0);
    appendMarked(page, inner, mark, indent);
}

/// Appends a field in full.
void appendField(Page& page, const std::string& path, const Field& field, const Line& mark, std::size_t indent) {
    Page inner = pageBehind(indent + INDENT, page.style);
    const bool fits = Line(path).cells() + INDENT + valueText(field).cells() <= inner.style.width;
    if (isNested(field) || fits) {
        Field named = field;
        named.name = path;
        appendFields(inner, {std::move(named)}, 0);
    } else {
        appendLine(inner, {path, Ink::Name});
        appendValue(inner, field, 2 * INDENT);
    }
    appendMarked(page, inner, mark, indent);
}

void appendOtherValue(Page& page, const Change& change, std::size_t indent) {
    const Line head = blanks(indent) + Line("~", Ink::Remark) + " " + Line(change.path, Ink::Name);
    const Line values = valueText(*change.before) + " -> " + valueText(*change.after);
    const std::size_t inner = indent + 2 * INDENT;
    if (head.cells() + INDENT + values.cells() <= page.style.width) {
        appendLine(page, head + blanks(INDENT) + values);
        return;
    }
    appendLine(page, head, indent + INDENT);
    if (inner + values.cells() <= page.style.width) {
        appendLine(page, blanks(inner) + values);
    } else {
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
