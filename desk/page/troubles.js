import { h, smallButton } from "./dom.js";
import { quoted } from "./windows.js";

// What can go wrong.

const troubleGroup = (title, ...children) => h("fieldset", { key: title }, h("legend", {}, title), children);

const does = (store, title, line, properties) => smallButton(title, () => store.act(line), properties);

/** One types and chooses something, and `lineOf` makes the line of it. */
function lineForm(store, lineOf, ...children) {
  const onsubmit = (event) => {
    event.preventDefault();
    store.act(lineOf(event.target.elements, event.submitter?.value));
  };
  return h("form", { onsubmit }, children);
}

function choice(name, spoken, options, properties = {}) {
  return h(
    "select",
    { name, "aria-label": spoken, ...properties },
    options.map(({ value, title = value, toolTip }) => h("option", { key: value, value, title: toolTip }, title)),
  );
}

const valueField = (spoken, placeholder) =>
  h("input", { name: "value", type: "text", autocomplete: "off", spellcheck: "false", "aria-label": spoken, placeholder });

const submit = (title, properties) => h("button", { type: "submit", class: "small", key: title, ...properties }, title);

function processTroubles(store, { keyrow, processes }) {
  const missing = { disabled: keyrow === null };
  return troubleGroup(
    "Keyrow",
    keyrow?.isHanging ? does(store, "It answers again", "resume keyrow") : does(store, "It hangs", "hang keyrow", missing),
    does(store, "It is killed", "kill keyrow", missing),
    does(store, "It quits", "quit keyrow", missing),
    does(store, processes.length > 0 ? "A second one starts" : "It starts", "launch keyrow"),
    keyrow?.mainMenu.length > 0 &&
      lineForm(
        store,
        ({ title }) => `menu ${quoted(title.value)}`,
        choice("title", "An item of the main menu, which only assistive technology finds", keyrow.mainMenu.map((value) => ({ value }))),
        submit("Choose in its main menu"),
      ),
  );
}

function tapTroubles(store) {
  return troubleGroup(
    "Its event tap",
    does(store, "takes too long", "disable tap timeout"),
    does(store, "is disabled by the user", "disable tap user-input"),
    does(store, "dies silently", "disable tap silently"),
  );
}

const lateness = [
  { value: "", title: "at once" },
  { value: " late 100ms", title: "100 ms late" },
  { value: " late 400ms", title: "400 ms late" },
];

function keyTroubles(store, { system }) {
  const change = (event) => {
    store.late = event.target.value;
    store.draw();
  };
  return troubleGroup(
    "Keys",
    h("label", {}, "Keyboards tell of theirs ", choice("late", "How late keyboards tell of their keys", lateness, { value: store.late, onchange: change })),
    system.areEventTimesNanoseconds
      ? does(store, "They tell their time in ticks again", "timestamps ticks")
      : does(store, "They tell their time in nanoseconds", "timestamps nanoseconds"),
  );
}

function permissionTroubles(store, { system }) {
  return troubleGroup(
    "Permissions",
    system.accessibility
      ? does(store, "Accessibility is taken away", "revoke accessibility")
      : does(store, "Accessibility is given", "grant accessibility"),
    system.accessibility && does(store, "the same, untold", "revoke accessibility untold"),
    does(store, "Input Monitoring is forgotten", "reset input-monitoring"),
    system.secureInput
      ? does(store, "The password is typed", "secure-input off")
      : does(store, "A password field takes the keys", "secure-input on"),
  );
}

function callTroubles(store, { system }) {
  const times = [{ value: "", title: "once" }, { value: " 3 times", title: "3 times" }, { value: " always", title: "always" }];
  return troubleGroup(
    "Calls of the system",
    lineForm(
      store,
      ({ call, times }) => `fail ${call.value}${times.value}`,
      choice("call", "The call that fails", store.calls.map(({ name, failure }) => ({ value: name, toolTip: failure }))),
      choice("times", "How often it fails", times),
      submit("Fail"),
    ),
    does(store, "Repair all", "repair", { disabled: system.faults.length === 0 }),
    system.faults.length > 0 && h("p", { class: "faults" }, `Fails: ${system.faults.join(", ")}`),
  );
}

const rawPlaces = ["hardware HIDFKeyMode=", "hardware HIDParameters=", "preference "];

function modeTroubles(store, { system }) {
  const other = system.mode === "standard" ? "special" : "standard";
  return troubleGroup(
    "The mode, behind Keyrow's back",
    does(store, `The hardware becomes ${other}`, `hardware ${other}`),
    lineForm(
      store,
      ({ place, value }) => `${place.value}${value.value.trim() || "none"}`,
      choice("place", "Where a raw value is put", rawPlaces.map((value) => ({ value, title: value.replace("=", "").trim() }))),
      valueField("The raw value; empty removes it", "2"),
      submit("Put there"),
    ),
  );
}

/** What somebody else does with a stored setting, and the line that it is. */
const settingLines = {
  Write: (key, value) => `defaults write ${key} ${value}`,
  Delete: (key) => `defaults delete ${key}`,
  Manage: (key, value) => `managed ${key} ${value}`,
  "Manage no longer": (key) => `managed ${key} none`,
};

function settingTroubles(store) {
  return troubleGroup(
    "Its settings, by somebody else",
    lineForm(
      store,
      ({ setting, value }, what) => settingLines[what](setting.value, value.value.trim()),
      choice("setting", "The setting", store.settings.map((value) => ({ value }))),
      valueField("The value of the setting", "1"),
      Object.keys(settingLines).map((title) => submit(title, { value: title })),
    ),
  );
}

function serviceTroubles(store, { system, keyrow }) {
  return troubleGroup(
    "Mail, login item, update",
    ["works", "missing", "refuses"].map((word) => does(store, `Mail ${word}`, `mail ${word}`, { disabled: system.mail === word })),
    system.loginItemsNeedApproval
      ? does(store, "Login items are allowed", "login-item allowed")
      : does(store, "Login items need approval", "login-item needs-approval"),
    does(store, "An update is found", "update found 9.9", { disabled: keyrow === null }),
  );
}

/** The drawer. */
export function troubles(store) {
  const groups = [processTroubles, tapTroubles, permissionTroubles, keyTroubles, callTroubles, modeTroubles, settingTroubles, serviceTroubles];
  return h(
    "details",
    { class: "troubles" },
    h("summary", {}, "What can go wrong"),
    h("div", { class: "drawer" }, groups.map((one) => one(store, store.snapshot))),
  );
}
