import { h, smallButton } from "./dom.js";

// What can go wrong.

export function troubles(store) {
  const { snapshot } = store;
  const { system, keyrow } = snapshot;
  const act = (title, line, properties) => smallButton(title, () => store.act(line), properties);
  const group = (title, ...children) => h("fieldset", { key: title }, h("legend", {}, title), children);
  const missing = { disabled: keyrow === null };
  return h(
    "details",
    { class: "troubles" },
    h("summary", {}, "What can go wrong"),
    h(
      "div",
      { class: "drawer" },
      group(
        "Keyrow",
        keyrow?.isHanging ? act("It answers again", "resume keyrow") : act("It hangs", "hang keyrow", missing),
        act("It is killed", "kill keyrow", missing),
        act("It quits", "quit keyrow", missing),
        act(snapshot.processes.length > 0 ? "A second one starts" : "It starts", "launch keyrow"),
      ),
      group(
        "Its event tap",
        act("takes too long", "disable tap timeout"),
        act("is disabled by the user", "disable tap user-input"),
        act("dies silently", "disable tap silently"),
      ),
      group(
        "Permissions",
        system.accessibility
          ? act("Accessibility is taken away", "revoke accessibility")
          : act("Accessibility is given", "grant accessibility"),
        system.accessibility && act("the same, untold", "revoke accessibility untold"),
        act("Input Monitoring is forgotten", "reset input-monitoring"),
        system.secureInput ? act("The password is typed", "secure-input off") : act("A password field takes the keys", "secure-input on"),
      ),
      group(
        "Calls of the system",
        h(
          "form",
          {
            onsubmit: (event) => {
              event.preventDefault();
              const { call, times } = event.target.elements;
              store.act(`fail ${call.value}${times.value}`);
            },
          },
          h("select", { name: "call", "aria-label": "The call that fails" }, store.calls.map(({ name, failure }) => h("option", { key: name, value: name, title: failure }, name))),
          h("select", { name: "times", "aria-label": "How often it fails" }, h("option", { value: "" }, "once"), h("option", { value: " 3 times" }, "3 times"), h("option", { value: " always" }, "always")),
          h("button", { type: "submit", class: "small" }, "Fail"),
        ),
        act("Repair all", "repair", { disabled: system.faults.length === 0 }),
        system.faults.length > 0 && h("p", { class: "faults" }, `Fails: ${system.faults.join(", ")}`),
      ),
      group(
        "Mail, login item, update",
        ["works", "missing", "refuses"].map((word) => act(`Mail ${word}`, `mail ${word}`, { disabled: system.mail === word })),
        act(system.loginItemsNeedApproval ? "Login items are allowed" : "Login items need approval", `login-item ${system.loginItemsNeedApproval ? "allowed" : "needs-approval"}`),
        act("An update is found", "update found 9.9", missing),
      ),
    ),
  );
}
