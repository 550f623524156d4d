// What the page makes of the lines in JSON, without a browser.

import assert from "node:assert/strict";
import { readdirSync, readFileSync } from "node:fs";
import test from "node:test";
import { gzipSync } from "node:zlib";

const PAGE = new URL("../../../tools/isdbt-inspect/page/", import.meta.url);
const load = (name) => import(new URL(name, PAGE));
const { bitRates, inputsOf, largestPids, limitsOf, linesOf, sectionAt, stepsOf, unpack, wholeAlarms } = await load("data.js");
const { fieldsAt, partsOf, rangesOf } = await load("bytes.js");
const { barOf, carouselLines, groupLines, moduleBy, moduleText } = await load("carousels.js");
const { cellText, isRemarkable, lanesOf } = await load("lanes.js");
const { placeOf } = await load("intervals.js");
const { Span } = await load("span.js");
const { valueText } = await load("fields.js");
const { seconds, bitRate, sectionName } = await load("words.js");

const HISTORY = { type: "history", source: "a", step: 0.5, sections_left_out: 0, events_left_out: 0 };
const STREAM = { type: "stream", source: "a", duration: 4 };
const pidHistory = (pid, gaps, packets) => ({ type: "pid_history", source: "a", pid, gaps, packets });

test("modules are one script, in which no name is there twice", () => {
  const names = readdirSync(PAGE)
    .filter((file) => file.endsWith(".js"))
    .flatMap((file) => readFileSync(new URL(file, PAGE), "utf8").match(/^(export )?(async )?(function|const|let|class) \w+/gm) ?? [])
    .map((line) => line.split(" ").at(-1));
  assert.deepEqual(names.filter((name, at) => names.indexOf(name) !== at), []);
});

test("parts are unpacked", async () => {
  const part = gzipSync('{"type":"stream","source":"é"}\n').toString("base64");
  assert.deepEqual(await unpack(`${part}\n`), [{ type: "stream", source: "é" }]);
});

test("lines are put together by input", () => {
  const inputs = inputsOf([STREAM, { type: "fault", source: "b" }, pidHistory(1, [0, 2], [3, 4])]);
  assert.deepEqual(inputs.map(({ source }) => source), ["a", "b"]);
  assert.equal(inputs[0].length, 4);
  assert.deepEqual(inputs[0].pids[0].steps, [0, 2]);
  assert.equal(inputs[1].length, 0);
  assert.equal(inputs[1].faults.length, 1);
  assert.deepEqual(linesOf("\n"), []);
});

test("gaps add up to steps", () => {
  assert.deepEqual(stepsOf([3, 1, 5]), [3, 4, 9]);
});

test("bit rates are those of bins", () => {
  const [input] = inputsOf([HISTORY, STREAM, pidHistory(1, [0, 1, 1], [10, 20, 40]), pidHistory(2, [7], [5])]);
  const { times, length, rates } = bitRates(input, [[1], [2]], 0, 4, 4);
  assert.deepEqual(times, [0, 1, 2, 3]);
  assert.equal(length, 1);
  assert.deepEqual(rates, [[30 * 1504, 40 * 1504, 0, 0], [0, 0, 0, 5 * 1504]]);
});

test("the last bin is as long as the stream goes on", () => {
  const [input] = inputsOf([HISTORY, { ...STREAM, duration: 2.5 }, pidHistory(1, [4], [10])]);
  const { rates } = bitRates(input, [[1]], 0, 2.5, 3);
  assert.equal(rates[0].at(-1), 20 * 1504);
});

test("the largest PIDs stand by themselves", () => {
  const [input] = inputsOf([pidHistory(1, [0], [1]), pidHistory(2, [0], [9]), pidHistory(3, [0], [5]), pidHistory(4, [0], [2])]);
  assert.deepEqual(largestPids(input, 3), [[2], [3], [4, 1]]);
  assert.deepEqual(largestPids(input, 4), [[2], [3], [4], [1]]);
});

test("a moment has the last section before it", () => {
  const section = (at) => ({ type: "section", source: "a", pid: 0, table_id: 0, seconds: at });
  const [input] = inputsOf([section(null), section(2), section(5)]);
  const course = { pid: 0, table_id: 0 };
  assert.equal(sectionAt(input, course, 1).seconds, null);
  assert.equal(sectionAt(input, course, 4).seconds, 2);
  assert.equal(sectionAt(input, course, 9).seconds, 5);
  assert.equal(sectionAt(input, { pid: 1, table_id: 0 }, 9), undefined);
});

test("program maps have the limits of their PIDs", () => {
  const check = (name, what, limits) => ({ type: "check", source: "a", check: name, what, limits });
  const [input] = inputsOf([
    check("pmt_interval", "PMT", "0.2*, 0.5"),
    check("pmt_one_seg_interval", "PMT", "0.7*"),
    check("pmt_engineering_interval", "PMT", "1.5*"),
    check("pcr_interval", "PCR", "0.1"),
    check("crc", "wrong CRC_32", null),
  ]);
  assert.deepEqual(limitsOf(input, "PMT", 0x101), [{ seconds: 0.2, text: "0.2 s (proposal)" }, { seconds: 0.5, text: "0.5 s" }]);
  assert.deepEqual(limitsOf(input, "PMT", 0x1fc8).map((each) => each.seconds), [0.7]);
  assert.deepEqual(limitsOf(input, "PCR", null).map((each) => each.seconds), [0.1]);
  assert.deepEqual(limitsOf(input, "NIT", 16), []);
});

test("an alarm is one from its begin to its end", () => {
  const alarm = (id, event, at) => ({ type: "alarm", source: "a", id, event, seconds: at, text: `${event} of ${id}`, severity: "error" });
  const [input] = inputsOf([alarm("x", "begin", 1), alarm("y", "begin", 2), alarm("x", "end", 3)]);
  assert.deepEqual(wholeAlarms(input).map(({ id, seconds: at, until }) => [id, at, until]), [["x", 1, 3], ["y", 2, null]]);
});

const PMT = {
  table: "PMT",
  version: 3,
  bytes: "02B014E6A0C10000E100F0001BE111F0035201074D749347",
  loops: [
    { loop: "program", descriptors: [] },
    {
      loop: "elementary_stream 0x0111",
      descriptors: [{ offset: 17, descriptor_tag: 82, descriptor_tag_name: "stream_identifier_descriptor", bytes: "07", at_fault: false }],
    },
  ],
  fields: { program_number: 59040, streams: [{ elementary_pid: 273, stream_identifier_descriptor: { descriptor_tag: 82, component_tag: 7 } }] },
  places: { program_number: "3-4", streams: [{ elementary_pid: "13-14", stream_identifier_descriptor: { descriptor_tag: "17", component_tag: "19" } }] },
};

test("a section has parts from its header to its CRC_32", () => {
  assert.deepEqual(
    partsOf(PMT).map(({ name, begin, end }) => [name, begin, end]),
    [
      ["table_id", 0, 1],
      ["section_syntax_indicator, section_length", 1, 3],
      ["table_id_extension", 3, 5],
      ["version_number, current_next_indicator", 5, 6],
      ["section_number", 6, 7],
      ["last_section_number", 7, 8],
      ["stream_identifier_descriptor", 17, 20],
      ["CRC_32", 20, 24],
    ],
  );
});

test("parts end where the bytes do", () => {
  assert.deepEqual(partsOf({ ...PMT, bytes: "02B0" }).map(({ begin, end }) => [begin, end]), [[0, 1], [1, 2]]);
});

test("a field has its bytes, and what holds fields those of all of them", () => {
  const range = (...path) => rangesOf(PMT, path).map(({ begin, end }) => [begin, end]);
  assert.deepEqual(range("program_number"), [[3, 5]]);
  assert.deepEqual(range("streams", 0, "stream_identifier_descriptor", "component_tag"), [[19, 20]]);
  assert.deepEqual(range("streams", 0, "stream_identifier_descriptor"), [[17, 20]]);
  assert.deepEqual(range("streams", 0), [[13, 15], [17, 18], [19, 20]]);
  assert.deepEqual(range("streams", 1), []);
  assert.deepEqual(rangesOf({ ...PMT, places: { of: ["8-9,12", "10", null] } }, ["of"]).map(({ begin, end }) => [begin, end]), [[8, 11], [12, 13]]);
  assert.deepEqual(rangesOf({ ...PMT, places: null }, ["program_number"]), []);
});

test("a byte has the fields that depend on it", () => {
  assert.deepEqual(fieldsAt(PMT, 4), [["program_number"]]);
  assert.deepEqual(fieldsAt(PMT, 19), [["streams", 0, "stream_identifier_descriptor", "component_tag"]]);
  assert.deepEqual(fieldsAt(PMT, 18), []);
  assert.deepEqual(fieldsAt({ ...PMT, places: { high: "8", low: "8-9", unknown: null } }, 8), [["high"], ["low"]]);
  assert.deepEqual(fieldsAt({ ...PMT, places: null }, 4), []);
  assert.deepEqual(fieldsAt({ bytes: "FF" }, 0), []);
});

test("lanes tell changes from repetitions", () => {
  const course = {
    type: "table_history", source: "a", pid: 0, table: "PAT", table_id: 0, table_id_name: null,
    gaps: [0, 2, 2, 2], sections: [5, 5, 4, 5], distinct: [1, 0, 0, 1], crc_errors: [0, 0, 1, 0], rejected: [0, 0, 0, 0], versions: [1, 1, 1, 2],
  };
  const [lane] = lanesOf(inputsOf([HISTORY, STREAM, course])[0]).lanes;
  assert.equal(lane.name, "PAT 0x0000");
  assert.deepEqual(lane.cells.map((cell) => isRemarkable(lane, cell)), [false, false, true, true]);
  assert.equal(cellText(lane, lane.cells[3]), "PAT 0x0000, 3.000 s: 5 sections, version 2, 1 changed");
});

test("there is an end to the lanes", () => {
  const lines = Array.from({ length: 500 }, (_, pid) => ({
    type: "event_history", source: "a", event: "scrambled", pid, gaps: [0], counts: [1], most: [0],
  }));
  const { lanes, leftOut } = lanesOf(inputsOf([HISTORY, STREAM, ...lines])[0]);
  assert.equal(lanes.length, 400);
  assert.equal(leftOut, 100);
});

test("a limit stands where it is among the buckets", () => {
  assert.equal(placeOf(0.1), 4);
  assert.equal(placeOf(0.005), 0.5);
  assert.equal(placeOf(100), 17);
});

test("the span stays within the stream", () => {
  const span = new Span(100);
  span.zoom(0.1, 0);
  assert.deepEqual([span.from, span.to], [0, 10]);
  span.pan(-1);
  assert.deepEqual([span.from, span.to], [0, 10]);
  span.show(95);
  assert.deepEqual([span.from, span.to], [90, 100]);
  span.grow(200);
  assert.deepEqual([span.from, span.to], [90, 100]);
  span.all();
  span.grow(300);
  assert.deepEqual([span.from, span.to], [0, 300]);
});

test("values have their readings", () => {
  assert.equal(valueText({ stream_type: 27, stream_type_name: "H.264 video" }, "stream_type"), "27 (0x1B) = H.264 video");
  assert.equal(valueText({ running: true }, "running"), "yes");
  assert.equal(valueText({ nothing: null }, "nothing"), "none");
});

test("numbers are said shortly", () => {
  assert.equal(seconds(1.5), "1.500 s");
  assert.equal(seconds(3723), "1:02:03");
  assert.equal(bitRate(1504000), "1.504 Mbit/s");
  assert.equal(sectionName({ table: "SDT", pid: 17, version: 2, section_number: 1, last_section_number: 2 }), "SDT PID 0x0011 version 2 section 1/2");
});

const MODULE = {
  module_id: 3,
  version: 0,
  state: "incomplete",
  size: 1171,
  compressed: true,
  original_size: 3073,
  blocks: 6,
  received: 3,
  missing: [{ first: 1, last: 2 }, { first: 5, last: 5 }],
  name: null,
  mime_type: null,
  label: "<b>",
  whole_turns: 1,
  turns: { count: 2, first: 0, last: 2, shortest: 2, longest: 2.5 },
  completed: null,
  refusals: [],
};

test("a module says which of its blocks are missing", () => {
  assert.equal(
    moduleText(MODULE),
    "module 0x0003, label <b>, incomplete, 3 of 6 blocks (missing 1-2, 5), 1,171 bytes, inflated 3,073, 1 turn, 2.000 s to 2.500 s",
  );
  const many = Array.from({ length: 9 }, (_, at) => ({ first: 2 * at, last: 2 * at }));
  assert.match(moduleText({ ...MODULE, missing: many }), /\(missing 0, 2, 4, 6, 8, 10, 12, 14, \.\.\.\),/);
});

test("blocks stand in their order", () => {
  const names = (module) => barOf(module).map(({ name, size }) => [name, size]);
  assert.deepEqual(names(MODULE), [["came", 1], ["missing", 2], ["came", 2], ["missing", 1]]);
  assert.deepEqual(names({ blocks: null, missing: [] }), []);
  assert.deepEqual(names({ blocks: 65536, missing: [{ first: 65535, last: 65535 }] }), [["came", 219], ["missing", 1]]);
  const everyOther = Array.from({ length: 32768 }, (_, at) => ({ first: 2 * at, last: 2 * at }));
  assert.deepEqual(names({ blocks: 65536, missing: everyOther }), [["missing", 220]]);
});

test("a module is as it was at a moment", () => {
  const module = { ...MODULE, state: "complete", received: 6, missing: [], arrivals: { gaps: [1, 2, 1], blocks: ["3-4", "0,5", "1-2"] } };
  const at = (steps) => moduleBy(module, steps);
  assert.deepEqual([at(1).received, at(1).missing, at(1).state], [0, [{ first: 0, last: 5 }], "incomplete"]);
  assert.deepEqual([at(2).received, at(2).missing], [2, [{ first: 0, last: 2 }, { first: 5, last: 5 }]]);
  assert.deepEqual([at(4).received, at(4).missing], [4, [{ first: 1, last: 2 }]]);
  assert.deepEqual([at(5).received, at(5).missing, at(5).state], [6, [], "complete"]);
  assert.equal(moduleBy({ ...MODULE, arrivals: { gaps: [], blocks: [] } }, 9).received, 0);
});

test("a carousel says what of it did not come", () => {
  const came = { count: 2, first: 0, last: 1, shortest: 1, longest: 1 };
  const none = { dsi: null, kind: "object", groups: [], gateway: "module_incomplete", cut: null };
  assert.deepEqual(carouselLines(none).map(({ text }) => text), ["no DSI came", "no DII came", "no service gateway: module incomplete"]);
  const whole = { dsi: { transaction_id: 0x80000000, version: 0, came }, kind: "object", groups: [{}], gateway: "complete", cut: null };
  assert.deepEqual(carouselLines(whole), [{ text: "DSI 0x80000000, version 0, came 2 times", isWrong: false }]);
  const group = { transaction_id: 2, version: 1, came, block_size: 512, refusals: [{ text: "cut short" }] };
  assert.deepEqual(groupLines(group), [
    { text: "DII 0x00000002, version 1, came 2 times, blocks of 512 bytes", isWrong: false },
    { text: "cut short", isWrong: true },
  ]);
  assert.equal(groupLines({ ...group, version: null })[0].text, "DII 0x00000002: the DSI announces it, and it did not come");
});
