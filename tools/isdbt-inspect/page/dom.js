// The page is made of elements and texts alone: nothing that came off the air is ever read as markup.

/// An element with attributes, and with children that are elements or texts. An attribute that is a function listens.
export function element(name, attributes = {}, ...children) {
  const made = document.createElement(name);
  set(made, attributes);
  made.append(...children.filter((child) => child !== null && child !== undefined));
  return made;
}

/// The same in SVG.
export function drawing(name, attributes = {}, ...children) {
  const made = document.createElementNS("http://www.w3.org/2000/svg", name);
  set(made, attributes);
  made.append(...children);
  return made;
}

function set(made, attributes) {
  for (const [name, value] of Object.entries(attributes)) {
    if (typeof value === "function") {
      made.addEventListener(name, value);
    } else if (value !== null && value !== undefined && value !== false) {
      made.setAttribute(name, value === true ? "" : String(value));
    }
  }
}

/// Shows these in place of what an element showed before, and hides the section around it when there are none.
export function fill(id, ...children) {
  const host = document.getElementById(id);
  host.replaceChildren(...children);
  host.closest("section")?.toggleAttribute("hidden", children.length === 0);
}

/// A colour of the style, which is light or dark.
export function ink(name) {
  return getComputedStyle(document.documentElement).getPropertyValue(`--${name}`).trim();
}

/// A table with a line of headings.
export function table(headings, rows) {
  return element(
    "table",
    {},
    element("thead", {}, element("tr", {}, ...headings.map((each) => element("th", { scope: "col" }, each)))),
    element("tbody", {}, ...rows.map((row) => element("tr", {}, ...row.map((each) => element("td", {}, each))))),
  );
}
