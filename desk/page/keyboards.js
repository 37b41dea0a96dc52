import { h } from "./dom.js";
import { hasIcon, icon } from "./icons.js";
import { isForBrowser, isModifier, isNeverOnes, keyOfCode, layoutOf, ownKeysNote, spokenName } from "./keys.js";

// In milliseconds: after so long a key counts as held, and so often the page lets time pass then.
const holdAfter = 300;
const holdStep = 100;

/** A key that a person holds down: let go early it is one press; later it has repeated. */
class HeldKey {
  constructor(store, key) {
    this.store = store;
    this.key = key;
    this.isDown = true;
    this.hasBegun = false;
    store.during(new Promise((resolve) => (this.isDone = resolve)));
    this.timer = setTimeout(() => this.begin(), holdAfter);
  }

  begin() {
    this.hasBegun = true;
    this.repeat().finally(this.isDone);
  }

  async repeat() {
    let began = performance.now();
    const isHeld = await this.store.play([`hold ${this.key}${this.store.late}`, `wait ${holdAfter / 1000}s`]);
    if (!isHeld) return;
    for (;;) {
      const rest = holdStep - (performance.now() - began);
      await new Promise((resolve) => setTimeout(resolve, Math.max(0, rest)));
      if (!this.isDown) break;
      began = performance.now();
      await this.store.play([`wait ${holdStep / 1000}s`], { continues: true });
    }
    await this.store.play([`release ${this.key}${this.store.late}`, "wait 0.3s"], { continues: true });
  }

  end() {
    this.isDown = false;
    if (this.hasBegun) return;
    clearTimeout(this.timer);
    this.store.act(`press ${this.key}${this.store.late}`);
    this.isDone();
  }
}

/** By "KEY on KEYBOARD". */
const heldKeys = new Map();

function pressKey(store, key) {
  if (store.isFilm || heldKeys.has(key)) return;
  heldKeys.set(key, new HeldKey(store, key));
  store.draw();
}

function releaseKey(store, key) {
  heldKeys.get(key)?.end();
  heldKeys.delete(key);
  store.draw();
}

function releaseKeysOf(store, keyboard) {
  for (const key of [...heldKeys.keys()]) {
    if (key.endsWith(` on ${keyboard}`)) releaseKey(store, key);
  }
}

function toggle(store, keyboard, name) {
  const isHeld = keyboard.held.includes(name);
  store.act(`${isHeld ? "release" : "hold"} ${name} on ${keyboard.name}${store.late}`);
}

function switchCapsLock(store, keyboard) {
  const isOn = store.snapshot.system.capsLock;
  store.act(`caps-lock ${isOn ? "off" : "on"} on ${keyboard.name}`);
}

/** What one's own keyboard does while this one has the focus. Tab leaves it. */
function ownKeyListeners(store, keyboard) {
  const keyOf = (event) => {
    const name = event.target === event.currentTarget ? keyOfCode(event.code) : null;
    return name && `${name} on ${keyboard.name}`;
  };
  return {
    onkeydown: (event) => {
      // Where a key comes up meanwhile, the browser may not tell.
      if (isForBrowser(event)) return releaseKeysOf(store, keyboard.name);
      const key = keyOf(event);
      if (!key) return;
      event.preventDefault();
      if (event.repeat) return;
      if (event.code === "CapsLock") switchCapsLock(store, keyboard);
      else pressKey(store, key);
    },
    onkeyup: (event) => {
      const key = keyOf(event);
      if (key) releaseKey(store, key);
    },
    onblur: () => releaseKeysOf(store, keyboard.name),
  };
}

function keyLabel(name, label, topRowKey) {
  if (!topRowKey) return h("span", { class: "legend" }, label);
  if (!hasIcon(topRowKey.does)) return h("span", { class: "legend big" }, topRowKey.does);
  return [icon(topRowKey.does, 15), h("span", { class: "name" }, name)];
}

function keyButton(store, keyboard, { name, label, width }) {
  const topRowKey = keyboard.topRow.find((one) => one.key === name);
  const id = `${name} on ${keyboard.name}`;
  const isSticky = isModifier(name);
  const isCapsLock = name === "caps-lock";
  const isHeld = isCapsLock
    ? store.snapshot.system.capsLock
    : heldKeys.has(id) || keyboard.held.some((one) => one.toLowerCase().replaceAll(" ", "-") === name.toLowerCase());
  const tap = () => {
    if (isCapsLock) switchCapsLock(store, keyboard);
    else if (isSticky) toggle(store, keyboard, name);
    else store.act(`press ${id}${store.late}`);
  };
  const isTapped = isSticky || isCapsLock;
  return h(
    "button",
    {
      key: name,
      type: "button",
      class: ["key", isHeld && "held", topRowKey && "top", topRowKey?.isTranslated && "translated"]
        .filter(Boolean)
        .join(" "),
      tabindex: "-1",
      disabled: store.isFilm,
      "data-key": name,
      "data-does": topRowKey?.does,
      "aria-label":
        topRowKey && topRowKey.does !== name ? `${name}: ${topRowKey.does}` : spokenName(name),
      "aria-pressed": isTapped ? String(isHeld) : null,
      title: topRowKey ? topRowTitle(topRowKey) : null,
      style: { "flex-grow": String(width), "flex-basis": `${width * 2}px` },
      // A screen reader presses without a pointer.
      onclick: (event) => (isTapped || event.detail === 0) && tap(),
      onpointerdown: (event) => {
        if (isTapped || event.button !== 0) return;
        event.target.setPointerCapture?.(event.pointerId);
        pressKey(store, id);
      },
      onpointerup: () => !isTapped && releaseKey(store, id),
      onpointercancel: () => !isTapped && releaseKey(store, id),
    },
    keyLabel(name, label, topRowKey),
  );
}

function topRowTitle({ key, does, isTranslated }) {
  if (does === key) return `${key} is ${key} now`;
  return isTranslated ? `Keyrow makes ${key} ${does} now` : `${key} is ${does} now`;
}

/** For who has no mouse: keys to hold, and those that one's own keyboard cannot press here. */
function keySwitches(store, keyboard) {
  const names = layoutOf(keyboard).flat().map((one) => one.name);
  const offered = names.filter((name) => isModifier(name) || isNeverOnes(name));
  if (offered.length === 0) return null;
  const wordOf = (name) => {
    if (!isModifier(name)) return "Press";
    return keyboard.held.includes(name) ? "Let go" : "Hold";
  };
  return h(
    "select",
    {
      class: "holds",
      "aria-label": `Hold or press a key of ${titleOf(keyboard)}`,
      value: "",
      onchange: (event) => {
        const name = event.target.value;
        event.target.value = "";
        if (isModifier(name)) toggle(store, keyboard, name);
        else if (name) store.act(`press ${name} on ${keyboard.name}${store.late}`);
      },
    },
    h("option", { value: "" }, "Keys…"),
    offered.map((name) => h("option", { key: name, value: name }, `${wordOf(name)} ${spokenName(name)}`)),
  );
}

const titleOf = (keyboard) => keyboard.product || keyboard.name;

function keyboardView(store, keyboard) {
  const title = titleOf(keyboard);
  const name = keyboard.product && `“${keyboard.name}”`;
  const note = keyboard.isExclusive ? "another program has it to itself" : name;
  return h(
    "section",
    { key: keyboard.name, class: `keyboard${keyboard.isKeypad ? " keypad" : ""}`, "aria-label": title },
    h(
      "header",
      {},
      h("h2", {}, title),
      h("span", { class: "note" }, note),
      !store.isFilm && keySwitches(store, keyboard),
      !store.isFilm && h(
        "button",
        {
          type: "button",
          class: "small",
          "aria-label": `Unplug ${title}`,
          onclick: () => store.act(`unplug ${keyboard.name}`),
        },
        "Unplug",
      ),
    ),
    h(
      "div",
      {
        class: "keys",
        role: "application",
        tabindex: store.isFilm ? null : "0",
        "aria-label": `Keys of ${title}`,
        "aria-description": store.isFilm ? null : ownKeysNote,
        "data-keyboard": keyboard.name,
        ...ownKeyListeners(store, keyboard),
      },
      layoutOf(keyboard).map((row, index) =>
        h("div", { key: index, class: "row" }, row.map((one) => keyButton(store, keyboard, one))),
      ),
    ),
  );
}

const attachable = [
  { name: "built-in", title: "The built-in keyboard", line: 'keyboard built-in product="Built-in Keyboard" transport=SPI built-in=true' },
  { name: "apple", title: "An Apple keyboard", line: 'keyboard apple vendor=0x05ac product="Apple Keyboard" transport=USB built-in=false' },
  { name: "usb", title: "A foreign keyboard", line: 'keyboard usb vendor=0x046d product="Foreign Keyboard" transport=USB built-in=false' },
  { name: "keypad", title: "A keypad", line: 'keyboard keypad vendor=0x046d product="Keypad" transport=USB built-in=false usage=7' },
];

/** What can be plugged in that is not there. */
export function attachMenu(store) {
  const attached = store.snapshot.keyboards.map((one) => one.name);
  const missing = attachable.filter(({ name }) => !attached.includes(name));
  if (store.isFilm || missing.length === 0) return null;
  return h(
    "select",
    {
      key: "attach",
      class: "attach",
      "aria-label": "Attach a keyboard",
      title: "Attach a keyboard",
      value: "",
      onchange: (event) => {
        const found = missing.find(({ name }) => name === event.target.value);
        event.target.value = "";
        if (found) store.act(found.line);
      },
    },
    h("option", { key: "none", value: "" }, "Attach…"),
    missing.map(({ name, title }) => h("option", { key: name, value: name }, title)),
  );
}

export function keyboardsView(store) {
  // The widest first; the names say nothing about that.
  const inOrder = [...store.snapshot.keyboards].sort((a, b) => Number(a.isKeypad) - Number(b.isKeypad));
  return h(
    "section",
    { class: "keyboards", "aria-label": "Keyboards" },
    inOrder.map((keyboard) => keyboardView(store, keyboard)),
  );
}
