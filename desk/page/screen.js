import { h } from "./dom.js";
import { icon } from "./icons.js";
import { attachMenu } from "./keyboards.js";
import { quoted, alertView, mailWindow, notificationsView, settingsWindow, systemSettingsWindow } from "./windows.js";

// The Mac's screen: menu bar, windows, Dock.

const keyrowID = "app.keyrow.Keyrow";
const knownNames = {
  [keyrowID]: "Keyrow",
  "com.apple.finder": "Finder",
  "com.apple.systempreferences": "System Preferences",
  "com.apple.SystemSettings": "System Settings",
};

export function appName(id) {
  return knownNames[id] ?? id.slice(id.lastIndexOf(".") + 1);
}

function hueOf(id) {
  let hue = 0;
  for (const character of id) hue = (hue * 31 + character.codePointAt(0)) % 360;
  return hue;
}

function frontName(snapshot) {
  if (snapshot.front) return appName(snapshot.front);
  return snapshot.frontName === "nobody" ? "No application" : "An unnamed application";
}

function dot(kind, item) {
  return h("span", {
    key: kind,
    class: `dot ${kind}`,
    style: { width: `${item.dotSize}px`, height: `${item.dotSize}px`, "margin-left": `${item.dotGap}px` },
  });
}

/** What a screen reader says of it: the state in Keyrow's own words. */
function itemLabel(item) {
  return ["Keyrow", item.value, item.hasCapsLockDot && "Caps Lock is on"].filter(Boolean).join(", ");
}

function moveInMenu(event, store) {
  const items = [...event.currentTarget.querySelectorAll('[role="menuitem"]:not([aria-disabled="true"])')];
  const place = items.indexOf(document.activeElement);
  const to = { ArrowDown: place + 1, ArrowUp: place - 1, Home: 0, End: items.length - 1 }[event.key];
  if (event.key === "Escape" || event.key === "Tab") store.act("close menu");
  else if (to === undefined) return;
  else items[(to + items.length) % items.length]?.focus();
  event.preventDefault();
}

function menuView(store, item) {
  if (!item.menu) return null;
  return h(
    "div",
    { class: "menu", role: "menu", "aria-label": "Keyrow", style: { left: `${item.menuX}px` }, onkeydown: (event) => moveInMenu(event, store) },
    item.menu.map((one, index) => {
      if (one.kind === "separator") return h("div", { key: index, role: "separator" });
      if (one.kind === "heading") return h("div", { key: index, class: "heading", role: "presentation" }, one.title);
      return h(
        "button",
        {
          key: index,
          type: "button",
          role: "menuitem",
          tabindex: "-1",
          title: one.toolTip || null,
          "aria-disabled": one.isEnabled ? null : "true",
          onclick: () => one.isEnabled && store.act(`choose ${quoted(one.title)}`),
        },
        h("span", {}, one.title),
        // As a Mac draws it: a small letter stands for the key, and Shift is drawn by itself.
        h("kbd", {}, one.key.replace(/[a-z]$/, (letter) => letter.toUpperCase())),
      );
    }),
  );
}

function statusItem(store) {
  const item = store.snapshot.keyrow?.item;
  if (!item) return null;
  const click = (event) => {
    if (item.menu) store.act("close menu");
    // Without a pointer it is as with VoiceOver, which presses without an event.
    else if (event.detail === 0) store.act("voice-over press");
    else store.act(event.ctrlKey ? "click control" : "click");
  };
  return h(
    "div",
    { key: "item", class: "status-item" },
    h(
      "button",
      {
        type: "button",
        id: "status-item",
        class: item.isHighlighted || item.menu ? "highlighted" : null,
        disabled: store.isFilm,
        title: item.toolTip,
        "aria-label": itemLabel(item),
        "aria-haspopup": "menu",
        "aria-expanded": String(item.menu !== null),
        onclick: click,
        oncontextmenu: (event) => {
          event.preventDefault();
          if (!item.menu) store.act("click right");
        },
        onkeydown: (event) => {
          if (event.key !== "ArrowDown" || item.menu) return;
          event.preventDefault();
          store.act("voice-over show-menu");
        },
      },
      item.image !== "none" && icon(item.image, 18),
      item.hasCapsLockDot && dot("caps-lock", item),
      item.hasOverrideDot && dot("override", item),
    ),
    menuView(store, item),
  );
}

function menuBar(store) {
  const { snapshot } = store;
  const other = snapshot.user === "me" ? "anna" : "me";
  return h(
    "div",
    { class: "menu-bar", role: "group", "aria-label": "Menu bar" },
    h("strong", { class: "front", "data-front": snapshot.front }, frontName(snapshot)),
    h("span", { class: "space" }),
    h(
      "button",
      { type: "button", disabled: store.isFilm, "aria-label": `${snapshot.user} is here: switch to ${other}`, title: `Switch to ${other}`, onclick: () => store.act(`user ${other}`) },
      icon("person", 14),
      snapshot.user,
    ),
    h(
      "button",
      { type: "button", disabled: store.isFilm || snapshot.isAsleep, title: "Close the lid", "aria-label": "Close the lid", onclick: () => store.act("sleep") },
      icon("lid", 16),
    ),
    attachMenu(store),
    statusItem(store),
    h("span", { class: "clock" }, `${snapshot.date}  ${snapshot.clock.slice(0, 8)}`),
  );
}

const installable = ["com.apple.Music", "com.apple.Safari", "com.apple.TextEdit", "com.example.game", "com.example.editor"];
const fixed = ["com.apple.finder", "com.apple.SystemSettings", "com.apple.systempreferences"];

function applicationsPanel(store) {
  const { apps } = store.snapshot;
  const row = (id, title, line) =>
    h(
      "li",
      { key: id },
      h("span", {}, appName(id)),
      h("button", { type: "button", class: "small", "aria-label": `${title} ${appName(id)}`, onclick: () => store.act(line) }, title),
    );
  return h(
    "details",
    { key: "applications", class: "applications" },
    h("summary", { "aria-label": "Install and throw away applications", title: "Install and throw away applications" }, icon("plus", 18)),
    h(
      "ul",
      {},
      apps.filter((id) => !fixed.includes(id)).map((id) => row(id, "Throw away", `uninstall ${id}`)),
      installable.filter((id) => !apps.includes(id)).map((id) => row(id, "Install", `install ${id}`)),
    ),
  );
}

const drawings = { "com.apple.SystemSettings": icon("gear", 24), [keyrowID]: h("span", { class: "cap" }) };

function dockButton(store, id, line, isRunning) {
  const name = appName(id);
  const isFront = store.snapshot.front === id;
  return h(
    "button",
    {
      key: id,
      type: "button",
      class: isFront ? "app front" : "app",
      disabled: store.isFilm,
      title: name,
      "aria-label": isFront ? `${name}, in front` : name,
      "data-app": id,
      onclick: () => store.act(line),
    },
    h(
      "span",
      { class: id === keyrowID ? "tile own" : "tile", "data-letter": id in drawings ? "" : name[0].toUpperCase(), style: { "--hue": String(hueOf(id)) } },
      drawings[id],
    ),
    h("span", { class: "app-name" }, name),
    h("span", { class: "running", "data-is": isRunning ? "yes" : "no" }),
  );
}

/** The others stand between these two. */
const dockPlaces = { "com.apple.finder": -1, "com.apple.SystemSettings": 1 };

function dock(store) {
  const { apps, front, keyrow } = store.snapshot;
  const place = (id) => dockPlaces[id] ?? 0;
  const shown = apps
    .filter((id) => id !== "com.apple.systempreferences" || front === id)
    .sort((a, b) => place(a) - place(b) || a.localeCompare(b));
  return h(
    "div",
    { class: "dock", role: "group", "aria-label": "Dock" },
    shown.map((id) => dockButton(store, id, `front ${id}`, id === front)),
    dockButton(store, keyrowID, keyrow ? "reopen keyrow" : "launch keyrow", keyrow !== null),
    !store.isFilm && applicationsPanel(store),
  );
}

/** An event as a person reads it: what was seen, and what became of a key, without the quotes. */
function inWords(text) {
  const quote = /^(?:screen|key|voice) "(.*)"$/.exec(text);
  return quote ? quote[1].replace(/\\(["\\])/g, "$1") : text;
}

/** What the last thing that one did has come to, in a few words. */
function caption(store) {
  const told = store.recentEvents.filter(({ kind }) => ["key", "screen", "voice", "hardware", "tap", "fault", "output"].includes(kind));
  const words = told.slice(-4).map(({ text }) => inWords(text));
  return h(
    "div",
    { class: "caption", role: "status", "aria-label": "What happened" },
    words.map((text, index) => h("p", { key: index }, text)),
  );
}

/** What the story says, and below it what came of the last line. */
function told(store) {
  const story = [];
  for (const frame of store.frames.slice(0, store.at).reverse()) {
    if (frame.kind === "comment" && frame.line !== "#") story.unshift(frame.line.slice(2));
    else if (story.length > 0) break;
  }
  const text = story.join(" ");
  return h("div", { class: "told" }, caption(store), text && h("p", { class: "story" }, text));
}

export function screenView(store) {
  const { snapshot } = store;
  const isBeeping = store.recentEvents.some(({ text }) => text === 'screen "beep"');
  return h(
    "section",
    { class: "screen", "aria-label": "The Mac's screen" },
    menuBar(store),
    h(
      "div",
      {
        class: isBeeping ? "desktop beeping" : "desktop",
        onclick: (event) => {
          if (event.target === event.currentTarget && snapshot.keyrow?.item?.menu) store.act("close menu");
        },
      },
      told(store),
      settingsWindow(store),
      systemSettingsWindow(store),
      mailWindow(store),
      notificationsView(store),
      alertView(store),
    ),
    dock(store),
    snapshot.isAsleep &&
      h(
        "div",
        { key: "asleep", class: "asleep" },
        h("p", {}, "The Mac sleeps."),
        h("button", { type: "button", class: "push", disabled: store.isFilm, onclick: () => store.act("wake") }, "Open the lid"),
      ),
  );
}
