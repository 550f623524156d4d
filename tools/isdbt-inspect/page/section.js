// A section: its fields beside its bytes.

import { bytesOf, fieldsAt, partsOf, rangesOf } from "./bytes.js";
import { element } from "./dom.js";
import { fieldList } from "./fields.js";
import { count, seconds, sectionMarks, sectionName } from "./words.js";

const A_LINE = 16;
const NOT_TRIED = "Which bytes its fields stand for was not tried: it is too long, or came after too many others.";

/// Shows a section, and looks there.
export function openSection(section) {
  const host = document.getElementById("section");
  host.replaceChildren(...sectionView(section));
  host.scrollIntoView({ block: "nearest" });
  host.focus({ preventScroll: true });
}

function sectionView(section) {
  const parts = partsOf(section);
  const said = element("p", { "aria-live": "polite", class: "said" }, "A field shows its bytes, and a byte its fields.");
  const bytes = bytesView(section, (at) => chooseByte(at));
  const what = element("div", { class: "what" });
  const mark = (ranges, paths, text) => {
    markBytes(bytes, ranges);
    markFields(what, paths);
    said.textContent = text;
  };
  const choosePart = (part) => mark([part], [], `bytes ${rangeText(part)}`);
  const chooseField = (path) => mark(rangesOf(section, path), [path], placeText(section, path));
  const chooseByte = (at) => {
    const paths = fieldsAt(section, at);
    const part = parts.filter(({ begin, end }) => begin <= at && at < end).at(-1);
    if (paths.length === 0 && part) {
      choosePart(part);
    } else {
      mark([{ begin: at, end: at + 1 }, ...paths.flatMap((path) => rangesOf(section, path))], paths, byteText(section, at, paths));
    }
  };
  what.append(section.error ? rejection(section) : fieldList(section.fields, chooseField), wire(parts, choosePart));
  const marks = sectionMarks(section);
  const where = [section.packet ? `packet ${section.packet}` : `byte ${section.offset}`, seconds(section.seconds), section.time ?? ""];
  return [
    element("h3", {}, sectionName(section)),
    element("p", {}, where.filter((each) => each).join("  ")),
    marks ? element("p", { class: "mark" }, marks) : null,
    section.fields && !section.places ? element("p", {}, NOT_TRIED) : null,
    said,
    element("div", { class: "beside" }, what, bytes),
  ].filter((each) => each !== null);
}

/// "programs 0 program_number: bytes 8 to 9"
function placeText(section, path) {
  const ranges = rangesOf(section, path).map(({ begin, end }) => (end === begin + 1 ? `byte ${begin}` : `bytes ${begin} to ${end - 1}`));
  return `${path.join(" ")}: ${ranges.join(", ") || "which bytes say so is not known"}`;
}

function byteText(section, at, paths) {
  return paths.length ? paths.map((path) => placeText(section, path)).join("; ") : `byte ${at} is of no field`;
}

/// Why it was rejected, as the receiver's log has it.
function rejection(section) {
  return element(
    "div",
    {},
    element("p", { class: "mark" }, `${section.error.name} (${section.error.code})`),
    element("pre", { class: "log" }, section.log.join("\n")),
  );
}

/// The parts as they stand on the wire.
function wire(parts, choose) {
  return element(
    "details",
    { open: true },
    element("summary", {}, `On the wire: ${count(parts.length, "part")}`),
    element(
      "ul",
      { class: "wire" },
      ...parts.map((part) =>
        element(
          "li",
          { class: part.atFault ? "mark" : "" },
          element("button", { type: "button", class: "name", click: () => choose(part), focus: () => choose(part) }, rangeText(part)),
          part.atFault ? ` refused: ${part.reason ?? "does not fit"}` : "",
        ),
      ),
    ),
  );
}

function rangeText(part) {
  const loop = part.loop === null ? "" : `, ${part.loop}`;
  return `${part.begin} to ${part.end - 1}  ${part.name}${loop}`;
}

/// @param choose is called with the number of a byte that is looked at
function bytesView(section, choose) {
  const bytes = bytesOf(section);
  const lines = [];
  for (let begin = 0; begin < bytes.length; begin += A_LINE) {
    const line = element("div", {}, element("span", { class: "offset" }, begin.toString(16).toUpperCase().padStart(4, "0")));
    for (let at = begin; at < Math.min(begin + A_LINE, bytes.length); ++at) {
      line.append(" ", element("span", { class: "byte", "data-at": at }, bytes[at]));
    }
    lines.push(line);
  }
  let current = 0;
  const look = (at) => {
    current = Math.min(Math.max(at, 0), bytes.length - 1);
    choose(current);
  };
  const click = ({ target }) => target.dataset.at && look(Number(target.dataset.at));
  const keydown = (event) => {
    const by = { ArrowLeft: -1, ArrowRight: 1, ArrowUp: -A_LINE, ArrowDown: A_LINE, Home: -bytes.length, End: bytes.length }[event.key];
    if (by && bytes.length) {
      event.preventDefault();
      look(current + by);
    }
  };
  const label = `${count(bytes.length, "byte")}; arrow keys go from one to the next`;
  return element("div", { class: "bytes", tabindex: 0, role: "group", "aria-label": label, click, keydown }, ...lines);
}

function markBytes(bytes, ranges) {
  for (const each of bytes.querySelectorAll(".byte")) {
    const at = Number(each.dataset.at);
    each.classList.toggle("chosen", ranges.some(({ begin, end }) => begin <= at && at < end));
  }
}

/// Marks the fields of some paths, and comes to see the first.
function markFields(what, paths) {
  const wanted = new Set(paths.map((path) => path.join(" ")));
  const buttons = [...what.querySelectorAll("[data-path]")];
  buttons.forEach((each) => each.classList.toggle("chosen", wanted.has(each.dataset.path)));
  buttons.find((each) => wanted.has(each.dataset.path))?.scrollIntoView({ block: "nearest" });
}
