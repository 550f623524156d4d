// Applications, what has to be right before each of them starts, and whether it does.

import { element } from "./dom.js";
import { hex, pidText, seconds } from "./words.js";

const SIGNS = { passed: "✔", failed: "✖", not_seen: "?" };

/// @param jump is called with a moment, a PID and a table_id
export function applicationsView(input, jump) {
  return input.applications.map((application) =>
    element(
      "details",
      { class: "application", open: application.verdict !== "starts" },
      element(
        "summary",
        {},
        element("strong", {}, application.name ?? "application"),
        ` ${hex(application.organization_id, 8)}/${hex(application.application_id, 4)}, AIT PID ${pidText(application.pid)}: `,
        element("span", { class: application.verdict === "does_not_start" ? "mark" : "" }, application.text),
      ),
      element("ol", {}, ...application.steps.map((step) => stepItem(step, jump))),
    ),
  );
}

function stepItem(step, jump) {
  const text = `${step.step}: ${step.text}`;
  const isPlaced = step.seconds !== null && step.seconds !== undefined;
  return element(
    "li",
    { class: step.result === "failed" ? "mark" : "" },
    element("span", { class: "sign" }, `${SIGNS[step.result] ?? ""} ${step.result.replaceAll("_", " ")} `),
    isPlaced
      ? element("button", { type: "button", class: "jump", click: () => jump(step.seconds, step.pid, step.table_id) }, `${text}  ${seconds(step.seconds)}`)
      : text,
  );
}
