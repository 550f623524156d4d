// Carousels as maps: a bar for each module, filled as far as its blocks came.

import { rangesOfText } from "./bytes.js";
import { stepsOf } from "./data.js";
import { element, table } from "./dom.js";
import { count, hex, pidText, seconds } from "./words.js";

const MOST_PARTS = 220; // of a bar, which is as many pixels wide
const MOST_RANGES = 8; // of blocks that are missing

export function carouselsView(input) {
  const maps = []; // of modules, each of which shows a moment
  const views = input.carousels.map((carousel) => carouselView(carousel, input.carouselPids, maps));
  return [...momentView(input, maps), ...views, ...input.carouselPids.flatMap(leftOut).map(lineOf)];
}

let chosenMoment = null; // but the end: of which source, and its seconds

/// Chooses the moment whose blocks are shown, as far as the data tells them apart.
function momentView(input, maps) {
  const step = input.history?.step;
  const last = Math.ceil(input.length / step);
  if (maps.length === 0 || !(last > 1)) {
    return [];
  }
  const output = element("output", { for: "carousels-moment" });
  const show = () => {
    const steps = Number(slider.value);
    chosenMoment = steps === last ? null : { source: input.source, at: steps * step };
    const isEnd = steps === last;
    const text = isEnd ? `the end, ${seconds(input.length)}` : seconds(steps * step);
    output.textContent = text;
    slider.setAttribute("aria-valuetext", text);
    maps.forEach((map) => map(isEnd ? null : steps, text));
  };
  const slider = element("input", { type: "range", id: "carousels-moment", min: 0, max: last, value: last, input: show });
  // What comes while somebody looks at a moment makes the page anew.
  if (chosenMoment?.source === input.source) {
    slider.value = Math.round(chosenMoment.at / step);
  }
  if (document.activeElement?.id === slider.id) {
    queueMicrotask(() => slider.focus());
  }
  show();
  return [element("p", { class: "moment" }, element("label", { for: "carousels-moment" }, "What had come by "), slider, " ", output)];
}

function carouselView(carousel, pids, maps) {
  const components = pids.find(({ pid }) => pid === carousel.pid)?.components ?? [];
  const title = [
    `PID ${pidText(carousel.pid)}`,
    `${carousel.kind} carousel`,
    carousel.carousel_id === null ? "" : hex(carousel.carousel_id, 8),
    ...components.map((each) => `service ${hex(each.service_id, 4)}`),
  ];
  return element(
    "div",
    {},
    element("h3", {}, title.filter((each) => each).join("  ")),
    ...carouselLines(carousel).map(lineOf),
    ...carousel.groups.flatMap((group) => [...groupLines(group).map(lineOf), modulesView(group.modules, maps)]),
    modulesView(carousel.unannounced, maps),
    ...filesView(carousel),
  );
}

function lineOf({ text, isWrong }) {
  return element("p", { class: isWrong ? "mark" : null }, text);
}

function messageText(name, message) {
  return `${name} ${hex(message.transaction_id, 8)}, version ${message.version}, came ${count(message.came.count, "time")}`;
}

/// What is to be said of a carousel as a whole.
export function carouselLines(carousel) {
  const lines = [];
  if (carousel.dsi !== null) {
    lines.push({ text: messageText("DSI", carousel.dsi), isWrong: false });
  } else if (carousel.kind === "object") {
    lines.push({ text: "no DSI came", isWrong: true });
  }
  if (carousel.groups.length === 0) {
    lines.push({ text: "no DII came", isWrong: true });
  }
  if (carousel.gateway !== null && carousel.gateway !== "complete") {
    lines.push({ text: `no service gateway: ${carousel.gateway.replaceAll("_", " ")}`, isWrong: true });
  }
  return carousel.cut === null ? lines : [...lines, { text: carousel.cut, isWrong: true }];
}

/// What is to be said of a DII.
export function groupLines(group) {
  if (group.version === null) {
    return [{ text: `DII ${hex(group.transaction_id, 8)}: the DSI announces it, and it did not come`, isWrong: true }];
  }
  const text = `${messageText("DII", group)}, blocks of ${count(group.block_size, "byte")}`;
  return [{ text, isWrong: false }, ...group.refusals.map((each) => ({ text: each.text, isWrong: true }))];
}

/// What was not taken of a PID's sections.
function leftOut(of) {
  const where = `PID ${pidText(of.pid)}`;
  const lines = of.refusals.map((each) => `${where}: ${each.text}, ${count(each.count, "time")}`);
  if (of.crc_errors !== 0) {
    lines.unshift(`${where}: ${of.crc_errors.toLocaleString("en")} of ${count(of.sections, "section")} with a wrong CRC_32`);
  }
  return lines.map((text) => ({ text, isWrong: true }));
}

function modulesView(modules, maps) {
  return modules.length === 0 ? null : element("ul", { class: "modules" }, ...modules.map((module) => moduleItem(module, maps)));
}

function moduleItem(module, maps) {
  const item = element("li", {});
  const show = (steps = null, moment = "") => {
    const then = steps === null ? module : moduleBy(module, steps);
    item.className = then.state === "complete" ? "" : "mark";
    item.replaceChildren(blocksView(then), element("span", {}, steps === null ? moduleText(module) : momentText(then, moment)));
  };
  show();
  if (module.arrivals) {
    maps.push(show);
  }
  return item;
}

/// The module as it was after so many steps, of the blocks that there are now.
export function moduleBy(module, steps) {
  const came = new Set();
  stepsOf(module.arrivals.gaps).forEach((at, index) => {
    for (const { begin, end } of at < steps ? rangesOfText(module.arrivals.blocks[index]) : []) {
      for (let block = begin; block < end; ++block) {
        came.add(block);
      }
    }
  });
  const missing = [];
  for (let block = 0; block < (module.blocks ?? 0); ++block) {
    if (came.has(block)) {
      continue;
    }
    if (missing.at(-1)?.last === block - 1) {
      missing.at(-1).last = block;
    } else {
      missing.push({ first: block, last: block });
    }
  }
  return { ...module, received: came.size, missing, state: came.size === module.blocks ? module.state : "incomplete" };
}

function momentText(module, moment) {
  return [...nameParts(module), blocksText(module)].join(", ") + ` at ${moment}`;
}

function nameParts(module) {
  return [`module ${hex(module.module_id, 4)}`, module.name ?? "", module.label === null ? "" : `label ${module.label}`].filter((each) => each);
}

export function moduleText(module) {
  const inflated = module.original_size === null ? "" : `, inflated ${module.original_size.toLocaleString("en")}`;
  const parts = [
    ...nameParts(module),
    module.state.replaceAll("_", " "),
    blocksText(module),
    module.size === null ? "" : `${count(module.size, "byte")}${inflated}`,
    module.completed === null ? "" : `whole at ${seconds(module.completed)}`,
    turnsText(module),
    ...module.refusals.map(({ text }) => text),
  ];
  return parts.filter((each) => each).join(", ");
}

/// "3 of 6 blocks (missing 1-2, 5)"
function blocksText({ blocks, received, missing }) {
  return blocks === null ? count(received, "block") : `${received} of ${count(blocks, "block")}${missingText(missing)}`;
}

function missingText(ranges) {
  const some = ranges.slice(0, MOST_RANGES).map(({ first, last }) => (first === last ? `${first}` : `${first}-${last}`));
  const more = ranges.length > MOST_RANGES ? ", ..." : "";
  return some.length ? ` (missing ${some.join(", ")}${more})` : "";
}

/// None proves nothing missing. A stream without a clock has turns that nobody knows the length of.
function turnsText({ whole_turns: turns, turns: { shortest, longest } }) {
  return count(turns, "turn") + (shortest === null ? "" : `, ${seconds(shortest)} to ${seconds(longest)}`);
}

/// The blocks from left to right, as parts that came or are missing; where there are very many, some together.
export function barOf(module) {
  const all = module.blocks ?? 0;
  const size = Math.min(all, MOST_PARTS);
  const cells = new Array(size).fill("came");
  const cellOf = (block) => Math.floor((block * size) / all);
  for (const { first, last } of module.missing) {
    cells.fill("missing", cellOf(first), cellOf(last) + 1);
  }
  const parts = [];
  for (const name of cells) {
    if (parts.at(-1)?.name === name) {
      ++parts.at(-1).size;
    } else {
      parts.push({ name, size: 1 });
    }
  }
  return parts;
}

function blocksView(module) {
  const parts = barOf(module).map(({ name, size }) => element("span", { class: name, style: `flex: ${size}` }));
  return element("span", { class: "blocks", "aria-hidden": "true" }, ...parts);
}

function filesView(carousel) {
  if (carousel.files.length === 0) {
    return [];
  }
  const rows = carousel.files.map((file) => [
    file.path ?? "",
    file.kind.replaceAll("_", " "),
    file.size === null ? "" : file.size.toLocaleString("en"),
    hex(file.module_id, 4),
    file.content_type ?? "",
    file.state.replaceAll("_", " "),
  ]);
  const summary = element("summary", {}, count(rows.length, "file and directory", "files and directories"));
  return [element("details", {}, summary, table(["Path", "Kind", "Bytes", "Module", "Type", "State"], rows))];
}
