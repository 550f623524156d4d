// Which bytes of a section say what.

const LONG_HEADER = [
  ["table_id", 0, 1],
  ["section_syntax_indicator, section_length", 1, 3],
  ["table_id_extension", 3, 5],
  ["version_number, current_next_indicator", 5, 6],
  ["section_number", 6, 7],
  ["last_section_number", 7, 8],
];

export function bytesOf(section) {
  return (section.bytes ?? "").match(/../g) ?? [];
}

/// The parts of a section by their places, in the order of the bytes: its header, its descriptors, its CRC_32. What stands
/// between them has no part.
export function partsOf(section) {
  const size = bytesOf(section).length;
  const parts = [];
  const add = (part) => {
    if (part.begin < size) {
      parts.push({ ...part, end: Math.min(part.end, size) });
    }
  };
  const header = section.version === null ? LONG_HEADER.slice(0, 2) : LONG_HEADER;
  for (const [name, begin, end] of header) {
    add({ name, begin, end, loop: null });
  }
  for (const loop of section.loops ?? []) {
    for (const descriptor of loop.descriptors) {
      add({
        name: descriptor.descriptor_tag_name ?? "descriptor",
        tag: descriptor.descriptor_tag,
        begin: descriptor.offset,
        end: descriptor.offset + 2 + descriptor.bytes.length / 2,
        loop: loop.loop,
        atFault: descriptor.at_fault,
        reason: descriptor.refused_though_right ?? descriptor.error_code_name,
      });
    }
  }
  if (size >= 8) {
    add({ name: "CRC_32", begin: size - 4, end: size, loop: null });
  }
  return parts.sort((one, other) => one.begin - other.begin);
}

/// What a field stands for in the bytes: its value, or all that is in it. Of a descriptor that is the whole of it.
/// @param path of the field: names, and numbers of elements
export function rangesOf(section, path) {
  const place = path.reduce((at, name) => at?.[name], section.places);
  const [tag] = rangesIn(place?.descriptor_tag);
  const descriptor = tag && partsOf(section).find(({ begin, loop }) => loop !== null && begin === tag.begin);
  return descriptor ? [{ begin: descriptor.begin, end: descriptor.end }] : merged(rangesIn(place));
}

/// In the order of the bytes, and those that touch as one.
function merged(ranges) {
  const all = [];
  for (const { begin, end } of ranges.sort((one, other) => one.begin - other.begin)) {
    if (all.length && begin <= all.at(-1).end) {
      all.at(-1).end = Math.max(all.at(-1).end, end);
    } else {
      all.push({ begin, end });
    }
  }
  return all;
}

/// The ranges of a value, or those of all in it.
function rangesIn(place) {
  if (place === null || place === undefined) {
    return [];
  }
  return typeof place === "string" ? rangesOfText(place) : Object.values(place).flatMap(rangesIn);
}

/// "8-9,12" is from 8 to before 10, and from 12 to before 13.
export function rangesOfText(text) {
  return text.split(",").map((range) => {
    const [first, last = first] = range.split("-").map(Number);
    return { begin: first, end: last + 1 };
  });
}

/// The paths of the values that depend on a byte.
export function fieldsAt(section, at) {
  const found = [];
  const look = (place, path) => {
    if (typeof place === "string") {
      if (rangesOfText(place).some(({ begin, end }) => begin <= at && at < end)) {
        found.push(path);
      }
    } else if (place !== null) {
      const keys = Array.isArray(place) ? place.keys() : Object.keys(place);
      [...keys].forEach((key) => look(place[key], [...path, key]));
    }
  };
  look(section.places ?? null, []);
  return found;
}
