import { h } from "./dom.js";

// Drawings of our own, on a field of 16 by 16.
const paths = {
  "brightness down": ["M8 5.5a2.5 2.5 0 1 0 .01 0", "M8 2.6v.01M8 13.4v.01M2.6 8h.01M13.4 8h.01M4.2 4.2h.01M11.8 4.2h.01M4.2 11.8h.01M11.8 11.8h.01"],
  "brightness up": ["M8 5a3 3 0 1 0 .01 0", "M8 1v1.6M8 13.4V15M1 8h1.6M13.4 8H15M3.1 3.1l1.1 1.1M11.8 11.8l1.1 1.1M3.1 12.9l1.1-1.1M11.8 4.2l1.1-1.1"],
  "Mission Control": ["M2 3h12v10H2z", "M4.5 5.5h3v2h-3zM9.5 5.5h2v2h-2zM4.5 9.5h2v1.5h-2zM8.5 9.5h3v1.5h-3z"],
  Spotlight: ["M7 2.5a4.5 4.5 0 1 0 .01 0", "M10.4 10.4L14 14"],
  "Spotlight Shortcut": ["M7 2.5a4.5 4.5 0 1 0 .01 0", "M10.4 10.4L14 14"],
  Dictation: ["M8 1.5a2 2 0 0 1 2 2v4a2 2 0 0 1-4 0v-4a2 2 0 0 1 2-2z", "M3.8 7.5a4.2 4.2 0 0 0 8.4 0M8 11.7V14.5M5.5 14.5h5"],
  "Do Not Disturb": ["M13 9.5A5.6 5.6 0 0 1 6.5 3a5.6 5.6 0 1 0 6.5 6.5z"],
  previous: ["M8 4L3 8l5 4zM14 4L9 8l5 4z", "M2 4v8"],
  play: ["M2.5 4v8L8 8z", "M10.5 4v8M13.5 4v8"],
  next: ["M8 4l5 4-5 4zM2 4l5 4-5 4z", "M14 4v8"],
  run: ["M5 3.5v9L12 8z"],
  pause: ["M5.5 3.5v9M10.5 3.5v9"],
  back: ["M11 3.5v9L5.5 8z", "M4 3.5v9"],
  on: ["M5 3.5v9L10.5 8z", "M12 3.5v9"],
  mute: ["M2.5 6h2.5l3.5-3v10L5 10H2.5z", "M11 6l3.5 4M14.5 6L11 10"],
  "volume down": ["M2.5 6h2.5l3.5-3v10L5 10H2.5z", "M11 6.2a2.6 2.6 0 0 1 0 3.6"],
  "volume up": ["M1.5 6H4l3.5-3v10L4 10H1.5z", "M10 6.2a2.6 2.6 0 0 1 0 3.6M12.2 4.2a5.4 5.4 0 0 1 0 7.6"],
  globe: ["M8 1.8a6.2 6.2 0 1 0 .01 0", "M1.8 8h12.4M8 1.8c-4 3.6-4 8.8 0 12.4M8 1.8c4 3.6 4 8.8 0 12.4"],
  fn: ["M6.5 3C4.9 2.5 4.2 3.4 4.2 5v8M2.5 6.7h4", "M9 6.7V13M9 9c0-1.6 1-2.4 2.2-2.4 1.3 0 2 .9 2 2.3V13"],
  gear: ["M8 5.4a2.6 2.6 0 1 0 .01 0", "M8 1.5v2M8 12.5v2M1.5 8h2M12.5 8h2M3.4 3.4l1.4 1.4M11.2 11.2l1.4 1.4M3.4 12.6l1.4-1.4M11.2 4.8l1.4-1.4"],
  plus: ["M8 3v10M3 8h10"],
  lid: ["M3.5 3h9v7h-9z", "M1.5 12.5h13"],
  person: ["M8 2.5a2.6 2.6 0 1 0 .01 0", "M3 14c.3-3 2.2-4.4 5-4.4s4.7 1.4 5 4.4"],
};

/** A drawing that says nothing by itself. */
export function icon(name, size = 16) {
  return h(
    "svg",
    {
      viewBox: "0 0 16 16",
      width: size,
      height: size,
      class: "icon",
      "aria-hidden": "true",
      focusable: "false",
    },
    (paths[name] ?? []).map((path) => h("path", { d: path })),
  );
}

export const hasIcon = (name) => name in paths;
