// The multiplex as a tree that folds, and that can be searched.

import { element } from "./dom.js";
import { fieldList } from "./fields.js";
import { count } from "./words.js";

export function treeView(input) {
  const nodes = (input.outline?.nodes ?? []).map((node) => nodeView(node));
  if (nodes.length === 0) {
    return [];
  }
  const said = element("span", { class: "said", "aria-live": "polite" });
  const search = element("input", { type: "search", id: "tree-search", input: () => find(nodes, search.value, said) });
  return [
    element("p", {}, element("label", { for: "tree-search" }, "Search "), search, " ", said),
    element("div", { class: "tree" }, ...nodes),
  ];
}

/// What cannot be folded is a line.
function nodeView(node) {
  const line = [
    element("strong", {}, node.title),
    ...node.names.map((name) => element("span", { class: "named" }, ` ${name}`)),
    node.facts.length ? element("span", { class: "facts" }, `  ${node.facts.join(", ")}`) : "",
    ...node.faults.map((fault) => element("span", { class: "mark" }, `  ! ${fault}`)),
  ];
  if (node.children.length === 0 && node.details.length === 0) {
    return element("div", { class: "node leaf" }, ...line);
  }
  const details = node.details.map((each) => [each.table ? element("p", {}, each.table) : "", fieldList(each.fields)]).flat();
  return element(
    "details",
    { class: "node", open: node.children.length > 0 },
    element("summary", {}, ...line),
    details.length ? element("details", { class: "descriptors" }, element("summary", {}, "descriptors"), ...details) : "",
    ...node.children.map((child) => nodeView(child)),
  );
}

/// Shows the nodes that have a text in them, and those above and below them.
function find(nodes, text, said) {
  const wanted = text.trim().toLowerCase();
  const found = nodes.map((node) => filter(node, wanted)).reduce((sum, each) => sum + each, 0);
  said.textContent = wanted ? `${count(found, "node")} found` : "";
}

/// How many nodes have it.
function filter(node, wanted) {
  const own = ownText(node).includes(wanted) ? 1 : 0;
  const children = [...node.children].filter((child) => child.classList.contains("node"));
  const below = children.reduce((sum, child) => sum + filter(child, own ? "" : wanted), 0);
  node.hidden = wanted !== "" && own === 0 && below === 0;
  if (wanted !== "" && below > 0 && node.tagName === "DETAILS") {
    node.open = true;
  }
  return wanted === "" ? 0 : own + below;
}

/// The texts of a node itself, without those of the nodes below it.
function ownText(node) {
  const parts = [...node.childNodes].filter((child) => !child.classList?.contains("node"));
  return parts.map((part) => part.textContent).join(" ").toLowerCase();
}
