import { h, patch } from "./dom.js";
import { Store } from "./store.js";
import { keyboardsView } from "./keyboards.js";
import { screenView } from "./screen.js";
import { scenarioView } from "./scenario.js";

const place = document.getElementById("desk");
let hadMenu = false;
let hadAlert = false;
let lastShown = -1;
let isToScroll = false;

function view(store) {
  if (!store.start) return [h("p", { class: "opening" }, "The desk opens…")];
  return [
    !store.isReachable &&
      h("p", { key: "ended", class: "ended", role: "alert" }, "The desk was ended. Start script/desk again, and this page goes on where it stood."),
    h("main", { key: "main", class: store.isFilm ? "film" : null }, h("h1", { class: "spoken" }, "Keyrow on a simulated Mac"), h("div", { class: "mac" }, screenView(store), keyboardsView(store)), scenarioView(store)),
  ].filter(Boolean);
}

/** Where the focus goes when a menu or an alert has come or gone. */
function moveFocus(store) {
  const menu = Boolean(store.snapshot.keyrow?.item?.menu);
  const alert = Boolean(store.snapshot.alert);
  if (store.isFilm) return;
  if (alert && !hadAlert) document.querySelector(".alert button")?.focus();
  else if (menu && !hadMenu) document.querySelector('[role="menuitem"]:not([aria-disabled="true"])')?.focus();
  else if (!menu && hadMenu && !alert) document.getElementById("status-item")?.focus();
  hadMenu = menu;
  hadAlert = alert;
}

/** The line that is shown stays in sight. Where it stands is asked for when a frame is due, since
 * everything is laid out then anyway. */
function scrollToShown(store) {
  if (store.at === lastShown) return;
  lastShown = store.at;
  isToScroll = true;
  requestAnimationFrame(() => {
    isToScroll = false;
    bringIntoSight();
    tellIdle();
  });
}

function bringIntoSight() {
  const timeline = document.querySelector(".timeline");
  const row = timeline?.querySelector('[aria-current="step"]');
  if (!row) return;
  const top = row.offsetTop;
  const isSeen = top >= timeline.scrollTop && top + row.offsetHeight <= timeline.scrollTop + timeline.clientHeight;
  if (!isSeen) timeline.scrollTop = top - timeline.clientHeight + Math.min(row.offsetHeight, timeline.clientHeight) + 8;
}

/** Whoever drives the page from outside waits for this. */
function tellIdle() {
  document.documentElement.dataset.idle = store.isIdle && !isToScroll ? "yes" : "no";
}

function draw() {
  patch(place, view(store));
  if (!store.start) return;
  moveFocus(store);
  scrollToShown(store);
  document.documentElement.dataset.drawnAt ??= String(performance.now());
  tellIdle();
}

const store = new Store(draw, tellIdle);

const film = document.getElementById("film");
store.draw();
if (film) {
  store.openFilm(JSON.parse(film.textContent));
  store.draw();
} else {
  addEventListener("pagehide", () => store.close());
  store.enqueue(() => store.open());
}
