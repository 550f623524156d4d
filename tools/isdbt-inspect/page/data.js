// What the page is made of: the lines in JSON of each input.

/// The lines of a compressed part of the page.
export async function unpack(part) {
  const bytes = Uint8Array.from(atob(part.trim()), (each) => each.charCodeAt(0));
  const stream = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("gzip"));
  return linesOf(await new Response(stream).text());
}

export function linesOf(text) {
  return text
    .split("\n")
    .filter((line) => line !== "")
    .map((line) => JSON.parse(line));
}

/// When the cells of a course were: the number of the step of each.
export function stepsOf(gaps) {
  let step = 0;
  return gaps.map((gap) => (step += gap));
}

/// Lines of one kind.
const KINDS = {
  section: "sections",
  pid_history: "pids",
  table_history: "tables",
  event_history: "happenings",
  event: "events",
  pid_statistics: "pidStatistics",
  table_statistics: "tableStatistics",
  fault: "faults",
  alarm: "alarms",
  check: "checks",
  carousel: "carousels",
  carousel_pid: "carouselPids",
  application: "applications",
};

/// The inputs that some lines are of, in their order.
export function inputsOf(lines) {
  const inputs = new Map();
  for (const line of lines) {
    if (!inputs.has(line.source)) {
      inputs.set(line.source, emptyInput(line.source));
    }
    const input = inputs.get(line.source);
    if (KINDS[line.type]) {
      input[KINDS[line.type]].push(line);
    } else {
      input[line.type] = line;
    }
  }
  for (const input of inputs.values()) {
    input.length = lengthOf(input);
    for (const course of [...input.pids, ...input.tables, ...input.happenings]) {
      course.steps = stepsOf(course.gaps);
    }
  }
  return [...inputs.values()];
}

function emptyInput(source) {
  const input = { source, history: null, stream: null, outline: null, transmission: null };
  for (const name of Object.values(KINDS)) {
    input[name] = [];
  }
  return input;
}

/// In seconds; 0 when the stream has no clock.
function lengthOf(input) {
  return input.stream?.duration ?? 0;
}

/// Bits in each second, of each of some PIDs and of all others, in bins of equal length.
/// @param pids lists of PIDs that stand together
export function bitRates(input, pids, from, to, most) {
  const step = input.history.step;
  const length = Math.max(1, Math.ceil(Math.max((to - from) / most, 0.1) / step)) * step;
  const first = Math.floor(from / length);
  const size = Math.max(1, Math.ceil(to / length) - first);
  const times = Array.from({ length: size }, (_, each) => (first + each) * length);
  const place = new Map();
  pids.forEach((some, index) => some.forEach((pid) => place.set(pid, index)));
  const rates = pids.map(() => new Float64Array(size));
  for (const course of input.pids) {
    const of = rates[place.get(course.pid)];
    if (of === undefined) {
      continue;
    }
    course.steps.forEach((at, index) => {
      const bin = Math.floor((at * step) / length + 1e-9) - first;
      if (bin >= 0 && bin < size) {
        of[bin] += course.packets[index];
      }
    });
  }
  // The last bin may be cut short by the end of the stream.
  const lengths = times.map((time) => Math.max(Math.min(length, input.length - time), step));
  return { times, length, rates: rates.map((of) => Array.from(of, (packets, bin) => (packets * 188 * 8) / lengths[bin])) };
}

/// The PIDs with the most packets, each by itself, and all others together.
export function largestPids(input, most) {
  const sizes = input.pids.map(({ pid, packets }) => ({ pid, packets: packets.reduce((sum, each) => sum + each, 0) }));
  sizes.sort((one, other) => other.packets - one.packets || one.pid - other.pid);
  const own = sizes.slice(0, sizes.length > most ? most - 1 : most).map(({ pid }) => [pid]);
  const others = sizes.slice(own.length).map(({ pid }) => pid);
  return others.length ? [...own, others] : own;
}

/// The section that was at a place of the timeline: the last one up to a moment, or else the first one behind it.
export function sectionAt(input, course, time) {
  const of = input.sections.filter((each) => each.pid === course.pid && each.table_id === course.table_id);
  const before = of.filter((each) => (each.seconds ?? 0) <= time);
  return before.at(-1) ?? of[0];
}

const ONE_SEG = { first: 0x1fc8, last: 0x1fcf };

/// The limits that checks set for the intervals of a table, in seconds. Program maps on the PIDs of one-segment services
/// have others than the rest.
export function limitsOf(input, name, pid) {
  const isOneSeg = pid >= ONE_SEG.first && pid <= ONE_SEG.last;
  const wanted = name === "PMT" ? [isOneSeg ? "pmt_one_seg_interval" : "pmt_interval"] : null;
  return input.checks
    .filter(({ check, limits, what }) => limits && what === name && check.endsWith("_interval"))
    .filter(({ check }) => (wanted ?? [check]).includes(check) && !/(engineering|one_seg|other)/.test(check.replace(wanted?.[0], "")))
    .flatMap(({ limits }) => limits.split(", ").map((text) => ({ seconds: parseFloat(text), text: limitText(text) })));
}

/// A proposal has an asterisk.
function limitText(text) {
  return `${parseFloat(text)} s${text.includes("*") ? " (proposal)" : ""}`;
}

/// Alarms as they are in the end: one for each, from its begin to its end.
export function wholeAlarms(input) {
  const alarms = new Map();
  for (const alarm of input.alarms) {
    const begin = alarms.get(alarm.id);
    if (begin === undefined) {
      alarms.set(alarm.id, { ...alarm, until: alarm.event === "end" ? (alarm.seconds ?? null) : null });
    } else if (alarm.event === "end") {
      begin.until = alarm.seconds;
      begin.text = `${begin.text}; ${alarm.text}`;
    } else {
      begin.severity = alarm.severity;
    }
  }
  return [...alarms.values()];
}
