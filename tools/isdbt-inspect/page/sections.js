// All sections that say something new, to search and to open.

import { element } from "./dom.js";
import { openSection } from "./section.js";
import { count, seconds, sectionMarks, sectionName } from "./words.js";

const MOST_SECTIONS = 200;

export function sectionsView(input) {
  if (input.sections.length === 0) {
    return [];
  }
  const list = element("ol", { class: "sections" });
  const said = element("span", { class: "said", "aria-live": "polite" });
  const show = () => {
    const wanted = search.value.trim().toLowerCase();
    const found = input.sections.filter((each) => titleOf(each).toLowerCase().includes(wanted));
    list.replaceChildren(...found.slice(0, MOST_SECTIONS).map(sectionItem));
    said.textContent = count(found.length, "section") + (found.length > MOST_SECTIONS ? `, the first ${MOST_SECTIONS} of which are shown` : "");
  };
  const search = element("input", { type: "search", id: "sections-search", input: show });
  show();
  return [element("p", {}, element("label", { for: "sections-search" }, "Search "), search, " ", said), list];
}

function titleOf(section) {
  return [seconds(section.seconds), sectionName(section), sectionMarks(section)].filter((each) => each).join("  ");
}

function sectionItem(section) {
  const isWrong = section.error || section.damaged || section.same_version;
  return element(
    "li",
    {},
    element("button", { type: "button", class: isWrong ? "jump mark" : "jump", click: () => openSection(section) }, titleOf(section)),
  );
}
