// How keyboards are laid out: of each key the name that the language has for it, what is written
// on it, and its width in units of a letter's key.

const key = (name, label = name, width = 1) => ({ name, label, width });
const letters = (text) => [...text].map((letter) => key(letter));
const topRowKeys = Array.from({ length: 12 }, (_, index) => key(`F${index + 1}`, undefined, 13 / 12));
// Where "↑" stands above "↓", so that each is as large as any other key.
const arrows = [key("left-arrow", "←"), key("down-arrow", "↓"), key("right-arrow", "→", 1.25)];

const upperRows = [
  [key("Escape", "esc", 1.5), ...topRowKeys],
  [...letters("`1234567890-="), key("delete", "⌫", 1.5)],
  [key("tab", "⇥", 1.5), ...letters("QWERTYUIOP[]\\")],
  [key("caps-lock", "⇪", 1.75), ...letters("ASDFGHJKL;'"), key("return", "↩", 1.75)],
  [key("left-shift", "⇧", 2.25), ...letters("ZXCVBNM,./"), key("up-arrow", "↑"), key("right-shift", "⇧", 1.25)],
];

const lowestRow = [
  key("left-control", "⌃"),
  key("left-option", "⌥"),
  key("left-command", "⌘", 1.25),
  key("space", "", 4.75),
  key("right-command", "⌘", 1.25),
  key("right-option", "⌥"),
];

const layouts = {
  apple: [...upperRows, [key("fn"), ...lowestRow, ...arrows]],
  // The Fn key of other makes is the keyboard's own; no Mac ever hears of it.
  foreign: [...upperRows, [...lowestRow, key("right-control", "⌃"), ...arrows]],
  keypad: [
    [...letters("789/")],
    [...letters("456-")],
    [...letters("123=")],
    [key("0", "0", 2), key("."), key("return", "↩")],
  ],
};

/** The rows of a keyboard. */
export function layoutOf(keyboard) {
  if (keyboard.isKeypad) return layouts.keypad;
  return keyboard.isApples ? layouts.apple : layouts.foreign;
}

const modifierNames = {
  fn: "Fn",
  "left-control": "Control",
  "left-option": "Option",
  "left-command": "Command",
  "left-shift": "Shift",
  "right-command": "right Command",
  "right-option": "right Option",
  "right-control": "right Control",
  "right-shift": "right Shift",
};

export const isModifier = (name) => name in modifierNames;

const spokenNames = {
  Escape: "esc, Escape",
  "caps-lock": "Caps Lock",
  delete: "Delete",
  tab: "Tab",
  return: "Return",
  space: "Space",
  "left-arrow": "Left Arrow",
  "right-arrow": "Right Arrow",
  "up-arrow": "Up Arrow",
  "down-arrow": "Down Arrow",
};

export const spokenName = (name) => modifierNames[name] ?? spokenNames[name] ?? name;

const codes = {
  Backquote: "`", Minus: "-", Equal: "=", BracketLeft: "[", BracketRight: "]", Backslash: "\\",
  Semicolon: ";", Quote: "'", Comma: ",", Period: ".", Slash: "/", Space: "space", Enter: "return",
  Backspace: "delete", Escape: "Escape", ArrowLeft: "left-arrow", ArrowRight: "right-arrow",
  ArrowUp: "up-arrow", ArrowDown: "down-arrow", ShiftLeft: "left-shift", ShiftRight: "right-shift",
  CapsLock: "caps-lock",
};

/** They reload the page, leave it for the address, fill the screen, and show how it is made. */
const browserKeys = ["F5", "F6", "F11", "F12"];

/** Whether a person means the browser with what is pressed on a keyboard of their own. */
export const isForBrowser = (event) =>
  event.ctrlKey || event.metaKey || event.altKey || browserKeys.includes(event.code);

/** Whether the page never hears of this key from a keyboard of one's own. */
export const isNeverOnes = (name) => name === "tab" || browserKeys.includes(name);

/** For a screen reader. */
export const ownKeysNote =
  `Type here. Tab leaves. ${browserKeys.join(", ")}, and what is pressed with Control, Option or Command, stay the browser's.`;

/** The name of the key that a person has pressed on a keyboard of their own; none where the page has
 * none for it. */
export function keyOfCode(code) {
  if (/^Key[A-Z]$/.test(code)) return code.slice(3);
  if (/^Digit[0-9]$/.test(code)) return code.slice(5);
  if (/^F([1-9]|1[0-2])$/.test(code)) return code;
  return codes[code] ?? null;
}
