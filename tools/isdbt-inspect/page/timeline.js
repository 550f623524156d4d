// The lanes over time, on a canvas that answers to mouse and keyboard.

import { sectionAt } from "./data.js";
import { element, ink, table } from "./dom.js";
import { cellText, isRemarkable, lanesOf } from "./lanes.js";
import { Rates } from "./rates.js";
import { openSection } from "./section.js";
import { count, seconds } from "./words.js";

const GUTTER = 190;
const RIGHT = 30; // half of the last moment's text
const LANE = 18;
const AXIS = 20;
const VERSIONS = 8; // colours

export class Timeline {
  constructor(host, input, span) {
    this.span = span;
    this.canvas = element("canvas", {
      tabindex: 0,
      role: "application",
      "aria-label": "Timeline",
      "aria-describedby": "timeline-help timeline-said",
      keydown: (event) => this.key(event),
      pointerdown: (event) => this.press(event),
      pointermove: (event) => this.move(event),
      pointerup: (event) => this.release(event),
      dblclick: (event) => this.span.zoom(0.5, this.timeAt(event.offsetX)),
      wheel: (event) => this.wheel(event),
    });
    this.said = element("p", { class: "said", id: "timeline-said", "aria-live": "polite" });
    this.rateHost = element("div", { class: "rates" });
    this.summary = element("div");
    host.replaceChildren(this.tools(), this.rateHost, this.canvas, this.said, this.summary);
    this.lane = 0;
    this.at = 0;
    this.take(input);
    span.followers.push(() => this.follow());
    this.observer = new ResizeObserver(() => this.resize());
    this.observer.observe(host);
  }

  /// Another one takes its place.
  end() {
    this.observer.disconnect();
    this.rates.chart.destroy();
  }

  take(input) {
    this.input = input;
    const { lanes, leftOut } = lanesOf(input);
    this.lanes = lanes;
    if (this.rates) {
      this.rates.take(input);
    } else {
      this.rates = new Rates(this.rateHost, input, this.span, GUTTER, RIGHT);
    }
    this.summary.replaceChildren(this.asTable(leftOut));
    this.draw();
  }

  tools() {
    const button = (name, text, act) => element("button", { type: "button", "aria-label": name, title: name, click: act }, text);
    return element(
      "div",
      { class: "tools", role: "toolbar", "aria-label": "Time" },
      button("Earlier", "←", () => this.span.pan(-0.25)),
      button("Later", "→", () => this.span.pan(0.25)),
      button("Zoom in", "+", () => this.span.zoom(0.5)),
      button("Zoom out", "−", () => this.span.zoom(2)),
      button("All", "All", () => this.span.all()),
      element(
        "span",
        { id: "timeline-help" },
        "Drag or ← → to move, Ctrl and the wheel or + − to zoom, ↑ ↓ for the lane, N and P for the next and the previous mark, Enter for the section.",
      ),
    );
  }

  /// The lanes for who does not see the canvas.
  asTable(leftOut) {
    const rows = this.lanes
      .filter((lane) => lane.kind === "table")
      .map((lane) => {
        const sum = (name) => lane.cells.reduce((all, cell) => all + cell[name], 0).toLocaleString("en");
        return [lane.name, sum("sections"), sum("distinct"), sum("crcErrors"), sum("rejected")];
      });
    const more = leftOut ? [element("p", {}, `${count(leftOut, "lane")} more are not drawn.`)] : [];
    const { sections_left_out: sections = 0, events_left_out: events = 0 } = this.input.history ?? {};
    if (sections || events) {
      more.push(element("p", {}, `There was no room for ${count(sections, "section")} and ${count(events, "event")}.`));
    }
    return element(
      "div",
      {},
      ...more,
      element(
        "details",
        {},
        element("summary", {}, `The lanes as a table, steps of ${seconds(this.input.history?.step ?? 0)}`),
        table(["Table", "Sections", "Distinct", "CRC errors", "Rejected"], rows),
      ),
    );
  }

  follow() {
    this.rates.draw();
    this.draw();
  }

  resize() {
    const width = this.canvas.parentElement.clientWidth;
    if (width !== this.width) {
      this.width = width;
      this.rates.make();
      this.draw();
    }
  }

  /// Colours are others.
  recolour() {
    this.rates.make();
    this.draw();
  }

  x(time) {
    return GUTTER + ((time - this.span.from) / (this.span.to - this.span.from)) * this.inner;
  }

  timeAt(x) {
    return this.span.from + ((x - GUTTER) / this.inner) * (this.span.to - this.span.from);
  }

  draw() {
    const width = this.canvas.parentElement.clientWidth || 800;
    const height = this.lanes.length * LANE + AXIS;
    const dense = window.devicePixelRatio || 1;
    this.inner = Math.max(width - GUTTER - RIGHT, 50);
    this.canvas.width = width * dense;
    this.canvas.height = height * dense;
    this.canvas.style.height = `${height}px`;
    const pen = this.canvas.getContext("2d");
    pen.scale(dense, dense);
    this.colours = {
      text: ink("text"),
      line: ink("line"),
      fault: ink("fault"),
      warning: ink("warning"),
      quiet: ink("quiet"),
      chosen: ink("chosen"),
      versions: Array.from({ length: VERSIONS }, (_, index) => ink(`series-${index}`)),
    };
    pen.font = "12px system-ui, sans-serif";
    pen.textBaseline = "middle";
    this.lanes.forEach((lane, index) => this.drawLane(pen, lane, index, width));
    this.drawAxis(pen, height - AXIS);
  }

  drawLane(pen, lane, index, width) {
    const top = index * LANE;
    if (index === this.lane) {
      pen.fillStyle = this.colours.chosen;
      pen.fillRect(0, top, width, LANE);
    }
    pen.fillStyle = this.colours.text;
    pen.fillText(lane.name, 4, top + LANE / 2, GUTTER - 8);
    pen.fillStyle = this.colours.line;
    pen.fillRect(GUTTER, top + LANE - 1, this.inner, 1);
    pen.save();
    pen.beginPath();
    pen.rect(GUTTER, top, this.inner, LANE);
    pen.clip();
    for (const cell of lane.cells) {
      if (cell.to >= this.span.from && cell.from <= this.span.to) {
        this.drawCell(pen, lane, cell, top);
      }
    }
    pen.restore();
    if (index === this.lane) {
      pen.fillStyle = this.colours.text;
      pen.fillRect(this.x(this.at) - 0.5, top, 1, LANE);
    }
  }

  /// What is wrong has another shape, too, not another colour alone.
  drawCell(pen, lane, cell, top) {
    const left = this.x(cell.from);
    const wide = Math.max(this.x(cell.to) - left - (lane.kind === "table" ? 0.5 : 0), 1);
    if (lane.kind === "alarms") {
      pen.fillStyle = cell.severity === "error" ? this.colours.fault : this.colours.warning;
      pen.fillRect(left, top + 3, Math.max(wide, 2), LANE - 7);
    } else if (lane.kind === "measure") {
      const high = lane.most > 0 ? Math.max(1, (cell.most / lane.most) * (LANE - 3)) : 1;
      pen.fillStyle = this.colours.quiet;
      pen.fillRect(left, top + LANE - 1 - high, wide, high);
    } else if (lane.kind === "event") {
      this.triangle(pen, left + wide / 2, top + 4, this.colours.warning);
    } else {
      this.drawSections(pen, cell, left, wide, top);
    }
  }

  drawSections(pen, cell, left, wide, top) {
    pen.fillStyle = cell.version === null ? this.colours.quiet : this.colours.versions[cell.version % VERSIONS];
    pen.fillRect(left, top + 5, wide, LANE - 9);
    if (cell.isChange) {
      pen.fillStyle = this.colours.text;
      pen.fillRect(left - 0.5, top + 1, 2, LANE - 3);
    }
    if (cell.rejected) {
      this.triangle(pen, left + wide / 2, top + 2, this.colours.warning);
    }
    if (cell.crcErrors) {
      this.cross(pen, left + wide / 2, top + LANE / 2);
    }
  }

  triangle(pen, x, top, colour) {
    pen.fillStyle = colour;
    pen.beginPath();
    pen.moveTo(x, top);
    pen.lineTo(x + 5, top + 9);
    pen.lineTo(x - 5, top + 9);
    pen.closePath();
    pen.fill();
  }

  cross(pen, x, y) {
    pen.strokeStyle = this.colours.fault;
    pen.lineWidth = 2;
    pen.beginPath();
    pen.moveTo(x - 4, y - 4);
    pen.lineTo(x + 4, y + 4);
    pen.moveTo(x + 4, y - 4);
    pen.lineTo(x - 4, y + 4);
    pen.stroke();
    pen.lineWidth = 1;
  }

  drawAxis(pen, top) {
    const size = this.span.to - this.span.from;
    const least = (size / this.inner) * 90;
    const magnitude = 10 ** Math.floor(Math.log10(least));
    const step = [1, 2, 5, 10].map((each) => each * magnitude).find((each) => each >= least);
    pen.fillStyle = this.colours.text;
    pen.textAlign = "center";
    for (let at = Math.ceil(this.span.from / step) * step; at <= this.span.to; at += step) {
      pen.fillRect(this.x(at), top, 1, 4);
      pen.fillText(seconds(at), this.x(at), top + 12);
    }
    pen.textAlign = "start";
  }

  key(event) {
    const act = {
      ArrowLeft: () => this.span.pan(-0.25),
      ArrowRight: () => this.span.pan(0.25),
      ArrowUp: () => this.choose(this.lane - 1, this.at),
      ArrowDown: () => this.choose(this.lane + 1, this.at),
      "+": () => this.span.zoom(0.5, this.at),
      "=": () => this.span.zoom(0.5, this.at),
      "-": () => this.span.zoom(2, this.at),
      Home: () => this.span.all(),
      n: () => this.next(1),
      p: () => this.next(-1),
      Enter: () => this.open(),
    }[event.key.length === 1 ? event.key.toLowerCase() : event.key];
    if (act && !event.ctrlKey && !event.altKey && !event.metaKey) {
      event.preventDefault();
      act();
    }
  }

  wheel(event) {
    if (event.ctrlKey) {
      event.preventDefault();
      this.span.zoom(event.deltaY < 0 ? 0.8 : 1.25, this.timeAt(event.offsetX));
    }
  }

  press(event) {
    this.grip = { x: event.offsetX, from: this.span.from, to: this.span.to, moved: false };
    this.canvas.setPointerCapture(event.pointerId);
  }

  move(event) {
    if (!this.grip) {
      const lane = this.lanes[Math.floor(event.offsetY / LANE)];
      const cell = lane && this.nearest(lane, this.timeAt(event.offsetX));
      this.canvas.title = cell ? cellText(lane, cell) : "";
      return;
    }
    const by = event.offsetX - this.grip.x;
    if (Math.abs(by) > 3 || this.grip.moved) {
      this.grip.moved = true;
      const time = (by / this.inner) * (this.grip.to - this.grip.from);
      this.span.set(this.grip.from - time, this.grip.to - time);
    }
  }

  release(event) {
    const moved = this.grip?.moved;
    this.grip = null;
    const lane = Math.floor(event.offsetY / LANE);
    if (moved === false && lane < this.lanes.length && event.offsetX >= GUTTER) {
      this.choose(lane, this.timeAt(event.offsetX));
      this.open();
    }
  }

  /// @param at the moment that is looked at
  choose(lane, at) {
    this.lane = Math.min(Math.max(lane, 0), this.lanes.length - 1);
    this.at = at;
    const cell = this.lanes.length ? this.nearest(this.lanes[this.lane], at) : null;
    this.said.textContent = cell ? cellText(this.lanes[this.lane], cell) : "";
    this.draw();
  }

  nearest(lane, at) {
    let best = null;
    for (const cell of lane.cells) {
      const away = (each) => Math.max(each.from - at, at - each.to, 0);
      best = best === null || away(cell) < away(best) ? cell : best;
    }
    return best;
  }

  /// Goes to the next mark of the lane that is more than a repetition.
  next(direction) {
    const lane = this.lanes[this.lane];
    const marks = (lane?.cells ?? []).filter((cell) => isRemarkable(lane, cell));
    const found = direction > 0 ? marks.find(({ from }) => from > this.at) : marks.findLast(({ from }) => from < this.at);
    if (found) {
      this.span.show(found.from);
      this.choose(this.lane, found.from);
    }
  }

  open() {
    const lane = this.lanes[this.lane];
    const section = lane?.kind === "table" ? sectionAt(this.input, lane.course, this.endOf(lane)) : null;
    if (section) {
      openSection(section);
    }
  }

  /// The end of the step that is looked at: what came in it came before.
  endOf(lane) {
    const cell = this.nearest(lane, this.at);
    return cell ? Math.max(this.at, cell.to) : this.at;
  }

  /// Comes to see a moment of a table, or of whatever.
  jump(time, pid, tableId) {
    this.span.show(time);
    const lane = this.lanes.findIndex(({ course }) => course && course.pid === pid && course.table_id === tableId);
    this.choose(lane < 0 ? 0 : lane, time);
    this.canvas.scrollIntoView({ block: "center" });
    this.canvas.focus({ preventScroll: true });
  }
}
