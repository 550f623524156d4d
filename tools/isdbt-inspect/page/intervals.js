// How long it took from one section to the next, as histograms with the limits drawn in.

import { limitsOf } from "./data.js";
import { drawing, element } from "./dom.js";
import { count, pidText, seconds } from "./words.js";

/// The upper bounds of the buckets in JSON, in seconds. The last bucket has none.
const BOUNDS = [0.01, 0.025, 0.05, 0.1, 0.2, 0.25, 0.4, 0.5, 0.7, 1, 2, 3, 5, 10, 30, 60];
const BAR = 16;
const FIGURE_HEIGHT = 60;
const LABELS = 14;

export function intervalsView(input) {
  const all = input.tableStatistics
    .filter(({ intervals }) => intervals.count > 0)
    .map((each) => {
      const name = each.table ?? each.table_id_name?.replace(/ \(.*/, "") ?? `table ${each.table_id}`;
      return figure(`${name} ${pidText(each.pid)}`, each.intervals, limitsOf(input, name, each.pid));
    });
  for (const [name, member, what] of [["PCR", "pcr_intervals", "PCR"], ["PTS", "pts_intervals", "PTS"]]) {
    const spread = input.stream?.[member];
    if (spread?.count > 0) {
      all.push(figure(`${name} of all PIDs`, spread, limitsOf(input, what, null)));
    }
  }
  return all.length ? [element("div", { class: "figures" }, ...all)] : [];
}

function figure(name, spread, limits) {
  const largest = Math.max(...spread.buckets);
  const bars = spread.buckets.map((each, index) => bar(each, index, largest));
  const lines = limits.map((limit) => line(limit));
  const width = BAR * spread.buckets.length;
  const ticks = [0, 3, 7, 9, 13].map((index) =>
    drawing("text", { x: (index + 1) * BAR, y: FIGURE_HEIGHT + LABELS - 3, "text-anchor": "middle" }, String(BOUNDS[index])),
  );
  const mean = seconds(spread.sum / spread.count);
  const words = `${count(spread.count, "interval")}, ${seconds(spread.minimum)} to ${seconds(spread.maximum)}, mean ${mean}`;
  const limitWords = limits.length ? `; limits ${limits.map(({ text }) => text).join(", ")}` : "";
  return element(
    "figure",
    {},
    element("figcaption", {}, element("strong", {}, name), element("br"), words + limitWords),
    drawing(
      "svg",
      { viewBox: `0 0 ${width} ${FIGURE_HEIGHT + LABELS}`, role: "img", "aria-label": `${name}: ${bucketsText(spread.buckets)}${limitWords}` },
      ...bars,
      drawing("line", { x1: 0, y1: FIGURE_HEIGHT, x2: width, y2: FIGURE_HEIGHT, class: "axis" }),
      ...ticks,
      ...lines,
    ),
  );
}

function bar(number, index, largest) {
  const high = number === 0 ? 0 : Math.max(2, (number / largest) * (FIGURE_HEIGHT - 6));
  return drawing(
    "rect",
    { x: index * BAR + 1, y: FIGURE_HEIGHT - high, width: BAR - 2, height: high },
    drawing("title", {}, `${bucketText(index)}: ${number}`),
  );
}

/// Where a limit is among the buckets.
export function placeOf(value) {
  const index = BOUNDS.findIndex((bound) => value <= bound);
  if (index < 0) {
    return BOUNDS.length + 1;
  }
  const low = index === 0 ? 0 : BOUNDS[index - 1];
  return index + (value - low) / (BOUNDS[index] - low);
}

function line(limit) {
  const x = placeOf(limit.seconds) * BAR;
  return drawing("line", { x1: x, y1: 0, x2: x, y2: FIGURE_HEIGHT, class: "limit" }, drawing("title", {}, limit.text));
}

function bucketText(index) {
  return index < BOUNDS.length ? `up to ${BOUNDS[index]} s` : "longer";
}

function bucketsText(buckets) {
  return buckets.map((each, index) => (each ? `${bucketText(index)} ${each}` : "")).filter((each) => each).join(", ");
}
