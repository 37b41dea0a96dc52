import { h } from "./dom.js";

// Keyrow's settings window, drawn from its layout, and the other windows on the screen. All sizes
// of Keyrow's own are in points, which are pixels here.

const px = (points) => `${points}px`;

function pushButton(store, { title, isEnabled }, properties = {}) {
  return h(
    "button",
    {
      type: "button",
      disabled: !isEnabled || store.isFilm,
      onclick: () => store.act(`click ${quoted(title)}`),
      ...properties,
      class: `${properties.class ?? "push"}${isEnabled ? "" : " off"}`,
    },
    title,
  );
}

/** A text as the language quotes it. */
export function quoted(text) {
  const escapes = { '"': '\\"', "\\": "\\\\", "\n": "\\n", "\t": "\\t" };
  return `"${text.replace(/["\\\n\t]/g, (character) => escapes[character])}"`;
}

function permissionRow(store, row) {
  return [
    pushButton(store, row.button),
    pushButton(store, row.help, {
      class: "help",
      "aria-label": "Help about the permissions",
      "aria-expanded": String(row.popover !== null),
    }),
    h("span", {
      class: `permission ${row.color}`,
      role: "img",
      "aria-label": row.toolTip,
      title: row.toolTip,
      style: { width: px(row.dotSize), height: px(row.dotSize) },
    }),
    row.popover !== null &&
      h(
        "div",
        { class: "popover", role: "note", style: { width: px(row.popoverWidth), padding: px(row.popoverInset) } },
        row.popover,
      ),
  ];
}

function popUpRow(store, row) {
  return [
    h("label", { for: "replacement" }, row.title),
    h(
      "select",
      {
        id: "replacement",
        class: "pop-up",
        disabled: store.isFilm,
        value: row.items[row.selected]?.title ?? "",
        onchange: (event) => {
          const { value } = event.target;
          // What was chosen is shown when Keyrow shows it.
          event.target.value = row.items[row.selected]?.title ?? "";
          store.act(`choose ${quoted(value)}`);
        },
      },
      row.items.map((item, index) =>
        item.isSeparator
          ? h("hr", { key: index })
          : h("option", { key: index, value: item.title }, item.title),
      ),
    ),
  ];
}

const rowViews = {
  checkbox: (store, row) =>
    h(
      "label",
      { class: "check" },
      h("input", {
        type: "checkbox",
        checked: row.isOn,
        disabled: store.isFilm,
        "data-name": row.name,
        onclick: (event) => {
          event.preventDefault();
          store.act(`click ${quoted(row.title)}`);
        },
      }),
      h("span", {}, row.title),
    ),
  hint: (store, row) => h("p", { class: "hint" }, row.text),
  permission: permissionRow,
  shortcut: (store, row) => [
    h("span", {}, row.title),
    pushButton(store, row.button, {
      class: "push shortcut",
      title: row.toolTip || null,
      "aria-label": `${row.title}: ${row.button.title}`,
      style: { "max-width": px(row.maximumWidth) },
    }),
    pushButton(store, row.reset),
  ],
  popUp: popUpRow,
  icon: (store, row) =>
    h("span", {
      class: "app-icon",
      role: "img",
      "aria-label": "Keyrow's icon",
      style: { width: px(row.size), height: px(row.size) },
    }, h("span", { class: "cap" })),
  text: (store, row) => h("p", { class: row.isSmall ? "hint" : "text" }, row.text),
  buttons: (store, row) => row.buttons.map((button) => pushButton(store, button)),
};

function paneView(store, window) {
  const { pane } = window;
  return h(
    "div",
    {
      class: "pane",
      role: "tabpanel",
      "aria-label": window.tab,
      style: {
        width: px(window.width),
        "min-height": px(window.height),
        padding: `0 ${px(window.inset)} ${px(pane.bottomGap)}`,
      },
    },
    pane.rows.map((row, index) =>
      h(
        "div",
        {
          key: index,
          class: `line ${row.kind} ${row.place.width}`,
          style: {
            "margin-top": px(row.place.topGap),
            gap: px(row.spacing ?? row.gap ?? 8),
          },
        },
        rowViews[row.kind](store, row),
      ),
    ),
    pane.quit &&
      h(
        "div",
        { key: "quit", class: "line quit", style: { "margin-top": "auto", "padding-top": px(pane.gapAboveQuit) } },
        pushButton(store, pane.quit),
      ),
  );
}

function titleBar(title, closeLabel, close) {
  return h(
    "div",
    { class: "title-bar" },
    h("button", { type: "button", class: "close", "aria-label": closeLabel, disabled: !close, onclick: close }, "×"),
    h("h2", {}, title),
  );
}

export function settingsWindow(store) {
  const window = store.snapshot.keyrow?.window;
  if (!window) return null;
  return h(
    "section",
    { key: "settings", class: window.isKey ? "window settings" : "window settings behind", "aria-label": "Keyrow settings" },
    titleBar(window.title, "Close Keyrow's settings", store.isFilm ? null : () => store.act("close window")),
    h(
      "div",
      { class: "tabs", role: "tablist", "aria-label": "Settings" },
      window.tabs.map((title) =>
        h(
          "button",
          {
            key: title,
            type: "button",
            role: "tab",
            disabled: store.isFilm,
            "aria-selected": String(title === window.tab),
            onclick: () => store.act(`tab ${title}`),
          },
          title,
        ),
      ),
    ),
    paneView(store, window),
  );
}

function settingSwitch(store, title, isOn, lineFor, note) {
  return h(
    "div",
    { key: title, class: "setting" },
    h("span", { class: "setting-title" }, title, note && h("small", {}, note)),
    h("button", {
      type: "button",
      role: "switch",
      class: "switch",
      disabled: store.isFilm,
      "aria-checked": String(isOn),
      "aria-label": title,
      onclick: () => store.act(lineFor(!isOn)),
    }),
  );
}

const systemSettings = "com.apple.SystemSettings";

/** The pages of System Settings that Keyrow depends on. */
export function systemSettingsWindow(store) {
  const { front, system } = store.snapshot;
  if (front !== systemSettings) return null;
  const permission = (name) => (isOn) => `${isOn ? "grant" : "revoke"} ${name}`;
  return h(
    "section",
    { key: "system", class: "window system", "aria-label": "System Settings" },
    titleBar("System Settings", "Leave System Settings", store.isFilm ? null : () => store.act("front com.apple.finder")),
    h(
      "div",
      { class: "pane" },
      h("h3", {}, "Keyboard"),
      settingSwitch(store, "Use F1, F2, etc. keys as standard function keys", system.mode === "standard",
        (isOn) => `system-settings ${isOn ? "standard" : "special"}`,
        system.mode === "unreadable" ? "The keyboard gives no mode." : null),
      h("h3", {}, "Privacy & Security"),
      settingSwitch(store, "Accessibility: Keyrow", system.accessibility, permission("accessibility")),
      settingSwitch(store, "Input Monitoring: Keyrow", system.inputMonitoring === "granted", permission("input-monitoring"),
        system.inputMonitoring === "not asked for" ? "Nobody has asked yet." : null),
      h("h3", {}, "General"),
      settingSwitch(store, "Login item: Keyrow", system.loginItem === "on", (isOn) => `login-item ${isOn ? "on" : "off"}`,
        system.loginItem === "needs approval" ? "It waits for your approval." : null),
      settingSwitch(store, "Notifications: Keyrow", system.allowsNotifications,
        (isOn) => `notifications ${isOn ? "allowed" : "refused"}`),
    ),
  );
}

export function alertView(store) {
  const { alert, system } = store.snapshot;
  if (alert) {
    return h(
      "div",
      { key: "alert", class: "alert", role: "alertdialog", "aria-labelledby": "alert-message", "aria-describedby": "alert-text" },
      h("h2", { id: "alert-message" }, alert.message),
      h("p", { id: "alert-text" }, alert.informative),
      h(
        "div",
        { class: "buttons" },
        alert.buttons.map((title, index) =>
          h(
            "button",
            {
              key: title,
              type: "button",
              disabled: store.isFilm,
              class: index === 0 ? "push default" : "push",
              onclick: () => store.act(`answer ${quoted(title)}`),
            },
            title,
          ),
        ),
      ),
    );
  }
  if (!system.asksForInputMonitoring) return null;
  const consent = (title, line) =>
    h("button", { key: line, type: "button", class: "push", disabled: store.isFilm, onclick: () => store.act(line) }, title);
  return h(
    "div",
    { key: "consent", class: "alert", role: "alertdialog", "aria-labelledby": "consent-message" },
    h("h2", { id: "consent-message" }, "Keyrow would like to receive keystrokes from any application."),
    h("div", { class: "buttons" }, consent("Deny", "deny input-monitoring"), consent("Allow", "allow input-monitoring")),
  );
}

export function notificationsView(store) {
  return store.snapshot.notifications.map(({ title, body }, index) =>
    h(
      "button",
      {
        key: `notification ${index}`,
        type: "button",
        class: "notification",
        disabled: store.isFilm,
        onclick: () => store.act("open notification"),
      },
      h("strong", {}, title),
      h("span", {}, body),
    ),
  );
}

/** Drafts that were put away; they are still in the mailbox. */
let draftsSeen = 0;

export function mailWindow(store) {
  const { mail } = store.snapshot;
  if (!mail || mail.number <= draftsSeen) {
    if (!mail) draftsSeen = 0;
    return null;
  }
  return h(
    "section",
    { key: "mail", class: "window mail", "aria-label": "Mail draft" },
    titleBar("New Message", "Put the draft away", () => {
      draftsSeen = mail.number;
      store.draw();
    }),
    h(
      "div",
      { class: "pane" },
      h("p", {}, h("b", {}, "To: "), mail.recipient),
      h("p", {}, h("b", {}, "Subject: "), mail.subject),
      h("pre", { tabindex: "0", "aria-label": "The mail" }, mail.body),
      mail.attachment &&
        h(
          "details",
          { class: "attachment" },
          h("summary", {}, `Attached: ${mail.attachment.name}`),
          h("pre", { tabindex: "0", "aria-label": "The attached file" }, mail.attachment.text),
        ),
    ),
  );
}
