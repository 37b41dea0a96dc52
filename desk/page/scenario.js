import { h, smallButton } from "./dom.js";
import { icon } from "./icons.js";
import { troubles } from "./troubles.js";

// The lines so far and what came of them; time; play and pause.

const rows = new WeakMap();

function eventRow(store, index, event) {
  return h(
    "li",
    { class: `event of-${event.kind}` },
    h("span", { class: "mark", "aria-hidden": "true" }),
    h("code", {}, event.text),
    !store.isFilm &&
      h(
        "button",
        {
          type: "button",
          tabindex: "-1",
          class: "expect",
          title: "Expect this",
          "aria-label": `Expect ${event.text}`,
          onclick: () => store.expect(index, event.text),
        },
        "+",
      ),
  );
}

function timeOf(frame, before) {
  const time = frame.at.slice(11);
  return before && before.at === frame.at ? "" : time;
}

function frameRow(store, frame, index) {
  const isShown = index < store.at;
  const isLast = index === store.at - 1;
  const known = rows.get(frame);
  if (known && known.isShown === isShown && known.isLast === isLast && known.index === index) return known.row;
  const state = frame.failure ? "unmet" : frame.kind === "expectation" ? "met" : frame.kind;
  const words = frame.kind === "comment" ? frame.line.slice(2) : frame.line;
  const spoken = { unmet: "Does not hold: ", met: "Holds: " }[state] ?? "";
  const row = h(
    "li",
    { key: index, class: `frame ${state}${isShown ? "" : " later"}`, "data-index": String(index), "aria-current": isLast ? "step" : null },
    h(
      "button",
      { type: "button", tabindex: "-1", class: "line-button", title: "Show how things stood then", onclick: () => store.enqueue(() => store.goTo(index + 1)) },
      h("span", { class: "time" }, timeOf(frame, store.frames[index - 1])),
      h("span", { class: "words" }, spoken && h("span", { class: "spoken" }, spoken), words),
    ),
    frame.failure && h("p", { class: "failure" }, frame.failure),
    frame.events.length > 0 && h("ul", {}, frame.events.map((event) => eventRow(store, index, event))),
  );
  rows.set(frame, { row, isShown, isLast, index });
  return row;
}

function laterRow(one, index) {
  const known = rows.get(one);
  if (known && known.index === index) return known.row;
  const words = one.kind === "comment" ? one.line.slice(2) : one.line;
  const row = h("li", { key: `later ${index}`, class: `frame later ${one.kind}` }, h("span", { class: "line-button" }, h("span", { class: "time" }), h("span", { class: "words" }, words)));
  rows.set(one, { row, index });
  return row;
}

function refusal(store) {
  const { refused } = store;
  if (!refused) return null;
  return h(
    "p",
    { key: "refused", class: "refused", role: "alert" },
    h("code", {}, refused.line),
    ` was not played: ${refused.message}`,
  );
}

/** One stop for Tab; from there the arrow keys lead to its lines, and to what can be expected. */
function moveInTimeline(event) {
  const steps = { ArrowDown: 1, ArrowUp: -1 };
  if (!(event.key in steps)) return;
  event.preventDefault();
  const list = event.currentTarget;
  const buttons = [...list.querySelectorAll("button")];
  const place = buttons.indexOf(document.activeElement);
  const current = buttons.indexOf(list.querySelector("[aria-current] > button"));
  const to = place < 0 ? Math.max(0, current) : place + steps[event.key];
  buttons[to]?.focus();
}

// So many lines before and after the one that is shown are drawn; what a change costs stays the same
// however many there are. And so many more at a time where one asks for them.
const linesBefore = 80;
const linesAfter = 40;
const linesMore = 400;

function moreButton(store, title, count, change) {
  if (count === 0) return null;
  return h(
    "li",
    { key: title },
    h(
      "button",
      {
        type: "button",
        tabindex: "-1",
        class: "small more",
        onclick: () => {
          change();
          store.draw();
        },
      },
      `${count} ${title}`,
    ),
  );
}

function timeline(store) {
  const first = Math.max(0, store.at - linesBefore - store.moreBefore);
  const last = Math.min(store.lineCount, store.at + linesAfter + store.moreAfter);
  const rowOf = (index) =>
    index < store.frames.length
      ? frameRow(store, store.frames[index], index)
      : laterRow(store.script[index - store.frames.length], index);
  return h(
    "ol",
    { class: "timeline", "aria-label": "Timeline; the arrow keys lead through it", tabindex: "0", onkeydown: moveInTimeline },
    moreButton(store, "earlier lines", first, () => (store.moreBefore += linesMore)),
    Array.from({ length: last - first }, (_, place) => rowOf(first + place)),
    moreButton(store, "later lines", store.lineCount - last, () => (store.moreAfter += linesMore)),
  );
}

function timeButtons(store) {
  return h(
    "div",
    { class: "group", role: "group", "aria-label": "Time" },
    h("span", {}, "Wait"),
    smallButton("a moment", () => store.play(["wait 1s"])),
    smallButton("a minute", () => store.play(["wait 1min"])),
    smallButton("an hour", () => store.play(["wait 1h"])),
  );
}

function download(store) {
  const link = document.createElement("a");
  link.href = URL.createObjectURL(new Blob([store.text], { type: "text/plain" }));
  link.download = "my-scenario.txt";
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 1000);
}

async function copy(store) {
  try {
    await navigator.clipboard.writeText(store.text);
    store.note = "Copied.";
  } catch {
    store.note = "The browser does not let this page copy; download it instead.";
  }
  store.draw();
}

function lineButtons(store) {
  return h(
    "div",
    { class: "group", role: "group", "aria-label": "As a scenario" },
    smallButton("Take back", () => store.takeBack(), { disabled: store.undos.length === 0 }),
    smallButton("Start again", () => store.startAgain()),
    smallButton("Copy", () => copy(store)),
    smallButton("Download", () => download(store)),
    h("span", { class: "note", role: "status" }, store.note ?? ""),
  );
}

function playButtons(store) {
  if (!store.file || (store.lineCount === 0 && !store.isFilm)) return null;
  return h(
    "div",
    { class: "player", role: "group", "aria-label": "Play" },
    smallButton(icon("back"), () => store.step(-1), { key: "back", "aria-label": "One line back", disabled: store.at === 0 }),
    smallButton(icon(store.isPlaying ? "pause" : "run"), () => store.playOn(), { key: "play", class: "small play", "aria-label": store.isPlaying ? "Pause" : "Play" }),
    smallButton(icon("on"), () => store.step(1), { key: "on", "aria-label": "One line on", disabled: store.at >= store.lineCount }),
    h("input", {
      type: "range",
      min: "0",
      max: String(store.lineCount),
      step: "1",
      value: String(store.at),
      "aria-label": "Lines played",
      oninput: (event) => {
        const count = Number(event.target.value);
        store.enqueue(() => store.goTo(count));
      },
    }),
    h("output", { class: "count" }, `${store.at} of ${store.lineCount}`),
  );
}

function typedLine(store) {
  return h(
    "form",
    {
      class: "typed",
      onsubmit: (event) => {
        event.preventDefault();
        const field = event.target.elements.line;
        const line = field.value.trim();
        if (line) store.play([line]).then((isPlayed) => isPlayed && (field.value = ""));
      },
    },
    h("input", { name: "line", type: "text", autocomplete: "off", spellcheck: "false", placeholder: "press F8 on usb", "aria-label": "A line of the language" }),
    h("button", { type: "submit", class: "small" }, "Play"),
  );
}

export function scenarioView(store) {
  return h(
    "aside",
    { class: "side", "aria-label": "As a scenario" },
    h("header", {}, h("h2", {}, store.file ? store.file.name : "As a scenario"), playButtons(store)),
    !store.isFilm && timeButtons(store),
    !store.isFilm && troubles(store),
    timeline(store),
    refusal(store),
    !store.isFilm && typedLine(store),
    !store.isFilm && lineButtons(store),
    store.hasDeparted && store.file && h("p", { class: "note" }, "You have left the file. “Start again” brings it back."),
  );
}
