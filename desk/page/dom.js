// Draws: what is to be there is described by `h`, and `patch` changes what differs.

const svgTags = new Set(["svg", "path", "circle", "rect", "g"]);
const svgNamespace = "http://www.w3.org/2000/svg";
/** What stands below a node, as it was drawn last. */
const drawn = new WeakMap();

const isThere = (child) => child !== null && child !== undefined && typeof child !== "boolean";

/** An element that is to be there. Properties that begin with "on" are listeners; `key` tells it
 * from its siblings. */
export function h(tag, properties, ...children) {
  return {
    tag,
    properties: properties ?? {},
    children: children
      .flat(Infinity)
      .filter(isThere)
      .map((child) => (typeof child === "object" ? child : String(child))),
  };
}

/** A button that says what it does. */
export function smallButton(title, action, properties = {}) {
  return h("button", { key: title, type: "button", class: "small", onclick: action, ...properties }, title);
}

function setProperty(node, name, value) {
  if (name === "key") return;
  if (name.startsWith("on")) {
    node[name] = value ?? null;
  } else if (name === "style") {
    for (const [property, one] of Object.entries(value ?? {})) node.style.setProperty(property, one);
  } else if (["checked", "value", "indeterminate", "disabled", "selected"].includes(name)) {
    if (node[name] !== (value ?? false)) node[name] = value ?? false;
  } else if (value === null || value === undefined || value === false) {
    node.removeAttribute(name);
  } else {
    node.setAttribute(name, value === true ? "" : value);
  }
}

function changeProperties(node, before, now) {
  for (const name of Object.keys(before)) {
    if (!(name in now)) setProperty(node, name, undefined);
  }
  for (const [name, value] of Object.entries(now)) {
    // What a person has typed or ticked is not what was drawn.
    const isLive = name === "checked" || name === "value" || name === "indeterminate";
    if (isLive || before[name] !== value) setProperty(node, name, value);
  }
}

function create(description) {
  if (typeof description === "string") return document.createTextNode(description);
  const { tag, properties, children } = description;
  const node = svgTags.has(tag)
    ? document.createElementNS(svgNamespace, tag)
    : document.createElement(tag);
  patch(node, children);
  changeProperties(node, {}, properties);
  return node;
}

function update(one, description) {
  if (one.description === description) return;
  if (typeof description === "string") {
    if (one.description !== description) one.node.data = description;
  } else {
    patch(one.node, description.children);
    changeProperties(one.node, one.description.properties, description.properties);
  }
  one.description = description;
}

const keyOf = (description) =>
  typeof description === "string" ? undefined : description.properties.key;
const kindOf = (description) => (typeof description === "string" ? "text" : description.tag);

/** Makes the children of a node what they are described to be. */
export function patch(parent, descriptions) {
  const keyed = new Map();
  const loose = [];
  for (const one of drawn.get(parent) ?? []) {
    const key = keyOf(one.description);
    if (key === undefined) loose.push(one);
    else keyed.set(`${kindOf(one.description)} ${key}`, one);
  }
  const match = (description) => {
    const key = keyOf(description);
    if (key !== undefined) {
      const name = `${kindOf(description)} ${key}`;
      const found = keyed.get(name);
      keyed.delete(name);
      return found;
    }
    const place = loose.findIndex((one) => kindOf(one.description) === kindOf(description));
    return place < 0 ? undefined : loose.splice(place, 1)[0];
  };
  const now = [];
  for (const description of descriptions) {
    const found = match(description);
    if (found) update(found, description);
    now.push(found ?? { node: create(description), description });
  }
  for (const one of [...loose, ...keyed.values()]) one.node.remove();
  let place = parent.firstChild;
  for (const { node } of now) {
    if (node === place) place = place.nextSibling;
    else parent.insertBefore(node, place);
  }
  drawn.set(parent, now);
}
