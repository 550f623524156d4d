// How numbers and places are said.

export function hex(number, digits) {
  return "0x" + number.toString(16).toUpperCase().padStart(digits, "0");
}

export function pidText(pid) {
  return pid === null || pid === undefined ? "" : hex(pid, 4);
}

export function seconds(value) {
  if (value === null || value === undefined) {
    return "";
  }
  if (value < 120) {
    return `${value.toFixed(3)} s`;
  }
  const whole = Math.floor(value);
  const two = (number) => String(number).padStart(2, "0");
  return `${Math.floor(whole / 3600)}:${two(Math.floor(whole / 60) % 60)}:${two(whole % 60)}`;
}

export function bitRate(value) {
  if (value === null || value === undefined) {
    return "";
  }
  return value >= 1e6 ? `${(value / 1e6).toFixed(3)} Mbit/s` : `${(value / 1e3).toFixed(2)} kbit/s`;
}

export function count(number, one, many = `${one}s`) {
  return `${number.toLocaleString("en")} ${number === 1 ? one : many}`;
}

/// "PMT PID 0x0101 version 3"
export function sectionName(section) {
  const parts = [section.table];
  if (section.pid !== null) {
    parts.push(`PID ${pidText(section.pid)}`);
  }
  if (section.version !== null) {
    parts.push(`version ${section.version}`);
    if (section.last_section_number !== 0) {
      parts.push(`section ${section.section_number}/${section.last_section_number}`);
    }
  }
  return parts.join(" ");
}

/// What is wrong with a section; empty when nothing is.
export function sectionMarks(section) {
  const marks = [];
  if (section.error) {
    marks.push(`rejected: ${section.error.name}`);
  }
  if (section.damaged) {
    marks.push("damaged");
  }
  if (section.same_version) {
    marks.push("changed without a new version");
  }
  if (section.current === false) {
    marks.push("next");
  }
  return marks.join(", ");
}
