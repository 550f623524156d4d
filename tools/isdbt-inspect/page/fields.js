// Fields as a list, each with its readings.

import { element } from "./dom.js";
import { hex } from "./words.js";

const COMPANIONS = ["_name", "_hex", "_reading", "_instant", "_seconds", "_names", "_readings", "_instants"];

/// The fields of an object. What the receiver reads otherwise than the standard is marked.
/// @param choose is called with the path of a field that is looked at
export function fieldList(object, choose = null, path = []) {
  const names = Object.keys(object).filter((name) => name !== "standard" && !isCompanion(object, name));
  const own = names.map((name) => fieldItem(object, name, choose, [...path, name]));
  if (!object.standard) {
    return element("ul", { class: "fields" }, ...own);
  }
  return element(
    "ul",
    { class: "fields" },
    ...Object.keys(object.standard)
      .filter((name) => !isCompanion(object.standard, name))
      .map((name) => fieldItem(object.standard, name, choose, [...path, "standard", name])),
    element(
      "li",
      { class: "otherwise" },
      element("strong", {}, "the receiver reads"),
      element("ul", { class: "fields" }, ...own),
    ),
  );
}

function isCompanion(object, name) {
  return COMPANIONS.some((suffix) => name.endsWith(suffix) && name.slice(0, -suffix.length) in object);
}

function fieldItem(object, name, choose, path) {
  const value = object[name];
  const item = element("li", {}, nameOf(name, choose, path));
  if (Array.isArray(value)) {
    item.append(` (${value.length})`, listOf(object, name, choose, path));
  } else if (value !== null && typeof value === "object") {
    item.append(fieldList(value, choose, path));
  } else {
    item.append(" ", element("span", { class: "value" }, valueText(object, name)));
  }
  return item;
}

function nameOf(name, choose, path) {
  if (choose === null) {
    return element("span", { class: "name" }, name);
  }
  const look = () => choose(path);
  return element("button", { class: "name", type: "button", "data-path": path.join(" "), click: look, focus: look, mouseenter: look }, name);
}

function listOf(object, name, choose, path) {
  const values = object[name];
  return element(
    "ol",
    { class: "fields", start: 0 },
    ...values.map((each, index) =>
      element(
        "li",
        {},
        each !== null && typeof each === "object"
          ? fieldList(each, choose, [...path, index])
          : nameOf(plainText(each) + remark(object[`${name}_names`]?.[index] ?? object[`${name}_readings`]?.[index]), choose, [...path, index]),
      ),
    ),
  );
}

export function valueText(object, name) {
  const value = object[name];
  const isIdentifier = typeof value === "number" && /(pid|_id|_tag|_code|number|_type|version)$/.test(name);
  const text = plainText(value) + (isIdentifier && value > 9 ? ` (${hex(value, 2)})` : "");
  return text + remark(object[`${name}_name`]) + remark(object[`${name}_reading`]);
}

function plainText(value) {
  return value === null ? "none" : value === true ? "yes" : value === false ? "no" : String(value);
}

function remark(text) {
  return text ? ` = ${text}` : "";
}
