// Faults and alarms, each of which leads to its place on the timeline.

import { wholeAlarms } from "./data.js";
import { element, table } from "./dom.js";
import { count, pidText, seconds } from "./words.js";

const MOST_FAULTS = 500;

/// @param jump is called with a moment, a PID and a table_id
export function faultList(input, jump) {
  const alarms = wholeAlarms(input);
  const all = [
    ...input.faults.filter((each) => !alarms.some((alarm) => isSame(each, alarm))).map((each) => ({ ...each, what: [each.about, each.text].filter((text) => text).join(": ") })),
    ...alarms.map((each) => ({ ...each, what: `${each.text}${each.until === null ? "; goes on" : ""}` })),
  ];
  const items = all.slice(0, MOST_FAULTS).map((each) => faultItem(each, jump));
  if (all.length > MOST_FAULTS) {
    items.push(element("li", {}, `${all.length - MOST_FAULTS} more are in the data`));
  }
  return [all.length ? element("ul", { class: "faults" }, ...items) : element("p", {}, "None."), ...checkTable(input)];
}

/// What breaks a limit is an alarm each time, and a fault of all of them together.
function isSame(fault, alarm) {
  return fault.fault === alarm.check && ["pid", "table_id", "table_id_extension"].every((place) => fault[place] === alarm[place]);
}

/// What became of each limit that was asked for.
function checkTable(input) {
  if (input.checks.length === 0) {
    return [];
  }
  const rows = input.checks.map((check) => [
    check.check,
    check.indicator ?? "",
    check.limits ?? "",
    check.result === "not_measured" ? `not measured: ${check.why_not_measured}` : check.result === "ok" ? "kept" : count(check.alarms, "alarm"),
  ]);
  const summary = element("summary", {}, `${count(rows.length, "limit")}; * is a proposal`);
  return [element("details", {}, summary, table(["Check", "TR 101 290", "Limits", "Result"], rows))];
}

function faultItem(fault, jump) {
  const sign = { error: "✖ error", warning: "▲ warning" }[fault.severity] ?? "remark";
  const pid = pidText(fault.pid);
  const text = [fault.what, pid && !fault.what.includes(pid) ? `PID ${pid}` : "", seconds(fault.seconds)].filter((each) => each).join("  ");
  const isPlaced = fault.seconds !== null && fault.seconds !== undefined;
  return element(
    "li",
    { class: fault.severity },
    element("span", { class: "sign" }, sign),
    isPlaced ? element("button", { type: "button", class: "jump", click: () => jump(fault.seconds, fault.pid, fault.table_id) }, text) : text,
  );
}
