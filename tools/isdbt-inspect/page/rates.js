// The bit rate of each PID over time, one above the other.

import { bitRates, largestPids } from "./data.js";
import { element, ink } from "./dom.js";
import { bitRate, pidText, seconds } from "./words.js";

const MOST_PIDS = 8;
const MOST_BINS = 400;
const CHART_HEIGHT = 220;

/// @param gutter left of the time axis, and right of it, in pixels, as in the lanes below
export class Rates {
  constructor(host, input, span, gutter, right) {
    this.host = host;
    this.span = span;
    this.gutter = gutter;
    this.right = right;
    this.said = element("p", { class: "said" });
    this.legend = element("ul", { class: "legend" });
    this.take(input);
  }

  take(input) {
    const before = JSON.stringify(this.pids);
    this.input = input;
    this.pids = largestPids(input, MOST_PIDS);
    if (JSON.stringify(this.pids) === before) {
      this.legend.replaceChildren(...this.pids.map((pids, index) => this.entry(pids, index)));
      this.draw();
    } else {
      this.make();
    }
  }

  /// All anew: the colours or the width are others.
  make() {
    this.chart?.destroy();
    this.host.replaceChildren(this.legend, this.said);
    this.legend.replaceChildren(...this.pids.map((pids, index) => this.entry(pids, index)));
    const { columns, names } = this.columns();
    const axis = { stroke: ink("text"), grid: { stroke: ink("line"), width: 1 }, ticks: { stroke: ink("line"), width: 1 } };
    this.chart = new uPlot(
      {
        width: Math.max(this.host.clientWidth, 200),
        height: CHART_HEIGHT,
        padding: [10, this.right, 0, 0],
        legend: { show: false },
        scales: { x: { time: false, min: this.span.from, max: this.span.to }, y: { range: (_, least, most) => [0, Math.max(most, 1) * 1.05] } },
        axes: [
          { ...axis, values: (_, values) => values.map((each) => `${each} s`) },
          { ...axis, size: this.gutter, values: (_, values) => values.map(bitRate) },
        ],
        series: [{}, ...names.map((index) => this.series(index))],
        cursor: { drag: { x: true, y: false, setScale: false } },
        hooks: { setSelect: [(chart) => this.select(chart)], setCursor: [(chart) => this.say(chart)] },
      },
      columns,
      this.host,
    );
    this.chart.root.setAttribute("role", "img");
    this.chart.root.setAttribute("aria-label", "Bit rate of each PID over time, stacked; the mean rates stand below");
  }

  /// The columns of the chart: the times, and the sums of all PIDs, of all but the last, and so on, since what is drawn later
  /// covers what was drawn before.
  columns() {
    const { times, rates, length } = bitRates(this.input, this.pids, this.span.from, this.span.to, MOST_BINS);
    this.rates = rates;
    const sums = [];
    rates.reduce((below, of) => {
      const sum = of.map((rate, index) => rate + (below[index] ?? 0));
      sums.push(sum);
      return sum;
    }, []);
    times.push(Math.min(times.at(-1) + length, this.input.length));
    sums.forEach((sum) => sum.push(sum.at(-1)));
    return { columns: [times, ...sums.reverse()], names: rates.map((_, index) => index).reverse() };
  }

  series(index) {
    const colour = ink(`series-${index}`);
    return { stroke: ink("page"), fill: colour, width: 1, points: { show: false }, paths: uPlot.paths.stepped({ align: 1 }) };
  }

  draw() {
    const { columns } = this.columns();
    this.chart.setData(columns, false);
    this.chart.setScale("x", { min: this.span.from, max: this.span.to });
  }

  nameOf(pids) {
    if (pids.length > 1) {
      return `${pids.length} others`;
    }
    const statistics = this.input.pidStatistics.find(({ pid }) => pid === pids[0]);
    const tables = this.input.tables.filter(({ pid }) => pid === pids[0]).map((each) => each.table ?? "");
    const content = statistics?.content ?? [...new Set(tables.filter((each) => each))].join(", ");
    return `${pidText(pids[0])} ${content}`.trim();
  }

  entry(pids, index) {
    const rates = pids.map((pid) => this.input.pidStatistics.find((each) => each.pid === pid)?.bit_rate ?? null);
    const mean = rates.includes(null) ? null : rates.reduce((sum, each) => sum + each, 0);
    return element(
      "li",
      {},
      element("span", { class: `swatch series-${index}`, "aria-hidden": "true" }),
      `${this.nameOf(pids)} ${mean === null ? "" : `mean ${bitRate(mean)}`}`,
    );
  }

  select(chart) {
    const { left, width } = chart.select;
    if (width > 4) {
      this.span.set(chart.posToVal(left, "x"), chart.posToVal(left + width, "x"));
    }
    chart.setSelect({ left: 0, width: 0, top: 0, height: 0 }, false);
  }

  say(chart) {
    const at = chart.cursor.idx;
    if (at === null || at === undefined || at >= (this.rates[0]?.length ?? 0)) {
      this.said.textContent = "";
      return;
    }
    const parts = this.pids.map((pids, index) => [this.nameOf(pids), this.rates[index][at]]).filter(([, rate]) => rate > 0);
    this.said.textContent = `${seconds(chart.data[0][at])}: ${parts.map(([name, rate]) => `${name} ${bitRate(rate)}`).join(", ")}`;
  }
}
