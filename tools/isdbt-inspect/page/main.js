// Puts the page together.

import { applicationsView } from "./applications.js";
import { carouselsView } from "./carousels.js";
import { inputsOf, unpack } from "./data.js";
import { element, fill } from "./dom.js";
import { faultList } from "./faults.js";
import { intervalsView } from "./intervals.js";
import { sectionsView } from "./sections.js";
import { Span } from "./span.js";
import { Timeline } from "./timeline.js";
import { treeView } from "./tree.js";
import { bitRate, count, seconds } from "./words.js";

const PERIOD = 2000; // milliseconds from one look at a live input to the next

let timeline = null;
let inputs = [];
let chosen = null; // its source
const shown = new Map(); // what each place shows, so that what stays the same is not made anew

export async function start() {
  const parts = [...document.querySelectorAll('script[type="application/gzip;base64"]')];
  await take(parts.map((part) => part.textContent));
  window.matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => timeline?.recolour());
  window.addEventListener("beforeprint", () => timeline?.recolour());
  window.addEventListener("afterprint", () => timeline?.recolour());
  document.documentElement.dataset.ready = "true";
  if (document.getElementById("live")) {
    follow();
  }
}

async function take(parts) {
  inputs = inputsOf((await Promise.all(parts.map(unpack))).flat());
  showTabs();
  if (inputs.length) {
    show(chosenInput());
  }
}

/// Others may come before it.
function chosenInput() {
  return inputs.find(({ source }) => source === chosen) ?? inputs[0];
}

/// Looks again and again at what comes.
async function follow() {
  try {
    const answer = await fetch("/parts", { cache: "no-store" });
    const text = await answer.text();
    await take(text.split("\n").filter((line) => line !== ""));
    tell(inputs.length ? "" : "nothing has come yet");
  } catch {
    tell("the server does not answer");
  }
  setTimeout(follow, PERIOD);
}

function tell(text) {
  document.getElementById("state").textContent = text;
}

/// A tab for each input, when there are several.
function showTabs() {
  const host = document.getElementById("inputs");
  const sources = inputs.map(({ source }) => source);
  host.hidden = sources.length < 2;
  if (isShown("inputs", sources)) {
    return;
  }
  const hadFocus = host.contains(document.activeElement);
  host.replaceChildren(
    ...sources.map((source) =>
      element("button", { type: "button", role: "tab", "aria-controls": "page", click: () => choose(source), keydown: turn }, source),
    ),
  );
  mark(hadFocus);
}

function mark(withFocus = false) {
  const { source } = chosenInput() ?? {};
  for (const tab of document.getElementById("inputs").children) {
    const isChosen = tab.textContent === source;
    tab.setAttribute("aria-selected", String(isChosen));
    tab.tabIndex = isChosen ? 0 : -1;
    if (isChosen && withFocus) {
      tab.focus();
    }
  }
}

function choose(source, withFocus = false) {
  chosen = source;
  mark(withFocus);
  shown.clear();
  shown.set("inputs", JSON.stringify(inputs.map(({ source }) => source)));
  timeline?.end();
  timeline = null;
  document.getElementById("section").replaceChildren();
  show(chosenInput());
}

function turn(event) {
  const by = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
  if (by) {
    const at = inputs.indexOf(chosenInput());
    choose(inputs[(at + by + inputs.length) % inputs.length].source, true);
  }
}

/// Whether a place shows this already; from now on it does.
function isShown(place, what) {
  const text = JSON.stringify(what);
  const same = shown.get(place) === text;
  shown.set(place, text);
  return same;
}

function show(input) {
  document.title = `${input.source} - isdbt-inspect`;
  document.getElementById("stream").textContent = streamText(input);
  showTime(input);
  const jump = (time, pid, table) => timeline?.jump(time, pid, table);
  const places = {
    faults: [[input.faults, input.alarms, input.checks], () => faultList(input, jump)],
    sections: [input.sections.map(({ packet, offset }) => [packet, offset]), () => sectionsView(input)],
    tree: [input.outline, () => treeView(input)],
    applications: [input.applications, () => applicationsView(input, jump)],
    carousels: [[input.carousels, input.carouselPids], () => carouselsView(input)],
    intervals: [[input.tableStatistics, input.checks], () => intervalsView(input)],
  };
  for (const [place, [what, view]] of Object.entries(places)) {
    if (!isShown(place, what)) {
      fill(place, ...view());
    }
  }
}

function showTime(input) {
  const hasTime = input.history !== null && input.length > 0;
  if (timeline !== null && hasTime) {
    timeline.span.grow(input.length);
    timeline.take(input);
    return;
  }
  fill("timeline", ...(hasTime ? [element("div")] : []));
  timeline = hasTime ? new Timeline(document.getElementById("timeline"), input, new Span(input.length)) : null;
}

function streamText(input) {
  const stream = input.stream;
  const parts = [input.source];
  if (stream?.packets) {
    parts.push(count(stream.packets, "packet"), seconds(stream.duration), bitRate(stream.bit_rate));
  }
  if (stream) {
    parts.push(count(stream.sections, "section"), count(stream.crc_errors, "CRC error"));
  }
  if (stream?.first_time) {
    parts.push(`${stream.first_time} to ${stream.time}`);
  }
  return parts.filter((each) => each).join("  ·  ");
}
