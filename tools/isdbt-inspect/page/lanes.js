// What the lanes of the timeline show: a row of cells for each table, each kind of event, and the alarms.

import { wholeAlarms } from "./data.js";
import { pidText, seconds } from "./words.js";

export const MOST_LANES = 400;

const MEASURES = { pcr_interval: "PCR intervals", pts_interval: "PTS intervals" };

/// All lanes of an input, the alarms first.
export function lanesOf(input) {
  const lanes = [];
  const alarms = alarmCells(input);
  if (alarms.length) {
    lanes.push({ kind: "alarms", name: "alarms and faults", cells: alarms });
  }
  for (const course of input.tables) {
    lanes.push(tableLane(input, course));
  }
  for (const course of input.happenings) {
    lanes.push(eventLane(input, course));
  }
  return { lanes: lanes.slice(0, MOST_LANES), leftOut: Math.max(0, lanes.length - MOST_LANES) };
}

function tableLane(input, course) {
  const step = input.history.step;
  const name = course.table ?? course.table_id_name?.replace(/ \(.*/, "") ?? `table ${course.table_id}`;
  let isFirst = true;
  const cells = course.steps.map((at, index) => {
    const isChange = course.distinct[index] > 0 && !isFirst;
    isFirst = false;
    return {
      from: at * step,
      to: (at + 1) * step,
      sections: course.sections[index],
      distinct: course.distinct[index],
      crcErrors: course.crc_errors[index],
      rejected: course.rejected[index],
      version: course.versions[index],
      isChange,
    };
  });
  return { kind: "table", name: `${name} ${pidText(course.pid)}`, course, cells };
}

function eventLane(input, course) {
  const step = input.history.step;
  const isMeasure = course.event in MEASURES;
  const name = MEASURES[course.event] ?? course.event.replaceAll("_", " ");
  return {
    kind: isMeasure ? "measure" : "event",
    name: `${name} ${pidText(course.pid)}`.trim(),
    course,
    most: course.most.reduce((most, each) => Math.max(most, each), 0),
    cells: course.steps.map((at, index) => ({
      from: at * step,
      to: (at + 1) * step,
      count: course.counts[index],
      most: course.most[index],
    })),
  };
}

/// Alarms from their begin to their end, and faults where they are seen first.
function alarmCells(input) {
  const cells = wholeAlarms(input).map(({ seconds: at, until, text, severity }) => ({
    from: at ?? 0,
    to: until ?? input.length,
    text,
    severity,
  }));
  for (const fault of input.faults) {
    if (fault.seconds !== null && fault.seconds !== undefined) {
      cells.push({ from: fault.seconds, to: fault.seconds, text: fault.text, severity: fault.severity });
    }
  }
  return cells.sort((one, other) => one.from - other.from);
}

/// Whether a cell is more than a repetition.
export function isRemarkable(lane, cell) {
  if (lane.kind === "table") {
    return cell.isChange || cell.crcErrors > 0 || cell.rejected > 0;
  }
  return lane.kind !== "measure";
}

/// "PAT 0x0000, 12.000 s: 10 sections, version 3, changed"
export function cellText(lane, cell) {
  return `${lane.name}, ${seconds(cell.from)}: ${whatOf(lane, cell)}`;
}

function whatOf(lane, cell) {
  if (lane.kind === "alarms") {
    return cell.text;
  }
  if (lane.kind === "measure") {
    return `${cell.count} measured, the longest ${seconds(cell.most)}`;
  }
  if (lane.kind === "event") {
    return `${cell.count} times`;
  }
  const parts = [`${cell.sections} sections`];
  if (cell.version !== null) {
    parts.push(`version ${cell.version}`);
  }
  if (cell.distinct) {
    parts.push(cell.isChange ? `${cell.distinct} changed` : `${cell.distinct} new`);
  }
  if (cell.crcErrors) {
    parts.push(`${cell.crcErrors} with CRC errors`);
  }
  if (cell.rejected) {
    parts.push(`${cell.rejected} rejected`);
  }
  return parts.join(", ");
}
