// What the page knows: the lines that were played, what came of each, and where it stands.

const storageKey = "keyrow desk";
const shortWait = "wait 0.3s";

function changed(target, [step, ...rest], operation) {
  const copy = Array.isArray(target) ? [...target] : { ...target };
  if (rest.length > 0) {
    copy[step] = changed(copy[step], rest, operation);
  } else if (Array.isArray(copy)) {
    const place = step === "-" ? copy.length : Number(step);
    if (operation.op === "remove") copy.splice(place, 1);
    else copy.splice(place, operation.op === "replace" ? 1 : 0, operation.value);
  } else if (operation.op === "remove") {
    delete copy[step];
  } else {
    copy[step] = operation.value;
  }
  return copy;
}

/** The document after these changes (RFC 6902); what has not changed is shared with it. */
export function applied(document, operations) {
  let result = document;
  for (const operation of operations) {
    const path = operation.path
      .split("/")
      .slice(1)
      .map((step) => step.replaceAll("~1", "/").replaceAll("~0", "~"));
    result = path.length === 0 ? operation.value : changed(result, path, operation);
  }
  return result;
}

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));

export class Store {
  constructor(draw, tellIdle) {
    this.draw = draw;
    this.tellIdle = tellIdle;
    this.start = null;
    this.file = null;
    this.frames = [];
    /** Lines of the file that are still to come. */
    this.script = [];
    /** How many lines are shown to have been played. */
    this.at = 0;
    this.refused = null;
    this.hasDeparted = false;
    this.isPlaying = false;
    this.isFilm = false;
    this.isReachable = true;
    this.calls = [];
    this.settings = [];
    /** How late keyboards tell of the keys that are pressed on the page, as the language says it. */
    this.late = "";
    this.undos = [];
    this.stage = null;
    this.turn = Promise.resolve();
    this.waitingCount = 0;
    /** How many more lines of the timeline a person wants to see. */
    this.moreBefore = 0;
    this.moreAfter = 0;
  }

  /** Whether everything that was asked for is done. */
  get isIdle() {
    return this.waitingCount === 0;
  }

  get snapshot() {
    return this.at === 0 ? this.start : this.frames[this.at - 1].snapshot;
  }

  get lineCount() {
    return this.frames.length + this.script.length;
  }

  get lines() {
    return this.frames.map((frame) => frame.line);
  }

  /** What happened in the last lines that somebody did something with. */
  get recentEvents() {
    const events = [];
    for (let index = this.at - 1; index >= 0; --index) {
      events.unshift(...this.frames[index].events);
      const isWait = this.frames[index].line.startsWith("wait ");
      if (this.frames[index].kind === "action" && !isWait) break;
    }
    return events;
  }

  openFilm(data) {
    this.isFilm = true;
    this.file = data.file;
    this.start = data.start;
    this.replaceFrames(0, data.frames);
    this.script = data.file.lines.slice(this.frames.length);
    this.refused = data.refused;
    this.at = 0;
  }

  async open() {
    await this.openStage();
    const stored = this.stored();
    if (stored && stored.file === (this.file?.name ?? null)) {
      this.undos = stored.undos;
      this.hasDeparted = stored.hasDeparted;
      if (this.file && !this.hasDeparted) {
        this.script = this.file.lines;
        await this.goTo(Math.min(stored.at, this.script.length));
        return;
      }
      await this.replay(stored.lines);
      this.script = this.file?.lines.slice(this.file.lines.length - stored.rest) ?? [];
      if (this.frames.length > 0) {
        this.at = Math.min(stored.at, this.frames.length);
          return;
      }
    }
    await this.begin();
  }

  /** Starts again, with the file or with what every desk begins with. */
  async begin() {
    this.undos = [];
    this.hasDeparted = false;
    this.refused = null;
    this.script = this.file?.lines ?? [];
    await this.replay(this.file ? [] : this.opening);
    this.at = this.frames.length;
    this.keep();
    this.draw();
  }

  async openStage() {
    const opened = await this.post("/stages", {});
    this.stage = opened.stage;
    this.start = opened.start;
    this.file = opened.file;
    this.opening = opened.opening;
    this.calls = opened.calls;
    this.settings = opened.settings;
  }

  /** Plays all of these lines in place of those that were played. */
  async replay(lines) {
    const answer = await this.post(`/stages/${this.stage}/play`, { kept: 0, lines, joinsWaits: false });
    this.replaceFrames(answer.from, answer.frames);
    this.refused = answer.refused;
    return answer;
  }

  async post(path, body) {
    for (;;) {
      let response;
      try {
        response = await fetch(path, {
          method: "POST",
          headers: { "Content-Type": "application/json" },
          body: JSON.stringify(body),
        });
      } catch {
        // The desk was ended. It may be started again.
        this.isReachable = false;
        this.draw();
        await pause(500);
        continue;
      }
      this.isReachable = true;
      if (response.ok) return response.json();
      if (response.status === 404 && path !== "/stages") {
        // Another desk, or one that had no room: what was played is played again.
        const lines = this.lines;
        await this.openStage();
        path = path.replace(/[0-9a-f]{32}/, this.stage);
        await this.replay(lines);
        continue;
      }
      throw new Error((await response.json()).error);
    }
  }

  replaceFrames(from, frames) {
    let snapshot = from === 0 ? this.start : this.frames[from - 1].snapshot;
    const added = frames.map((frame) => {
      snapshot = applied(snapshot, frame.change);
      return { ...frame, change: undefined, snapshot };
    });
    this.frames = [...this.frames.slice(0, from), ...added];
  }

  /** Until this has come about the page is not idle. */
  during(promise) {
    ++this.waitingCount;
    this.tellIdle();
    return promise.finally(() => {
      --this.waitingCount;
      this.draw();
    });
  }

  /** Does one thing after the other, whatever is asked for meanwhile. */
  enqueue(work) {
    const result = this.during(this.turn.then(work));
    this.turn = result.catch(() => {});
    return result;
  }

  /** A person does this; everything that was played after the line shown is taken back. */
  act(line) {
    return this.play([line, shortWait]);
  }

  /** Plays lines after the one shown; `continues` what was done before, for taking it back. */
  play(lines, { continues = false } = {}) {
    if (this.isFilm) return Promise.resolve(false);
    this.isPlaying = false;
    return this.enqueue(() => {
      if (this.file) this.hasDeparted = true;
      this.script = [];
      return this.change(this.at, lines, { joinsWaits: true, continues });
    });
  }

  async change(kept, lines, { joinsWaits = false, continues = false, isUndo = false } = {}) {
    const before = this.lines;
    const wasAt = this.at;
    const answer = await this.post(`/stages/${this.stage}/play`, { kept, lines, joinsWaits });
    const hasChanged = answer.from < before.length || answer.frames.length > 0;
    this.replaceFrames(answer.from, answer.frames);
    this.refused = answer.refused;
    this.at = hasChanged ? this.frames.length : wasAt;
    if (!isUndo && !continues && hasChanged) {
      this.undos.push({ from: answer.from, lines: before.slice(answer.from) });
    }
    this.keep();
    return answer.refused === null;
  }

  /** Puts an expectation behind a line. */
  expect(index, text) {
    return this.enqueue(async () => {
      const at = this.at;
      if (this.file) this.hasDeparted = true;
      const rest = this.lines.slice(index + 1);
      await this.change(index + 1, [`expect ${text}`, ...rest]);
      this.at = Math.min(at + 1, this.frames.length);
      this.keep();
    });
  }

  takeBack() {
    return this.enqueue(async () => {
      const undo = this.undos.pop();
      if (undo) await this.change(undo.from, undo.lines, { isUndo: true });
    });
  }

  startAgain() {
    this.isPlaying = false;
    return this.enqueue(async () => {
      this.frames = [];
      this.at = 0;
      await this.begin();
    });
  }

  /** Shows how things stood after so many lines; plays what of the file is missing. */
  async goTo(count) {
    if (count > this.frames.length && !this.isFilm) {
      const missing = this.script.slice(0, count - this.frames.length).map((one) => one.line);
      const kept = this.frames.length;
      const answer = await this.post(`/stages/${this.stage}/play`, { kept, lines: missing, joinsWaits: false });
      this.replaceFrames(answer.from, answer.frames);
      this.script = this.script.slice(answer.frames.length);
      this.refused = answer.refused;
    }
    this.at = Math.max(0, Math.min(count, this.frames.length));
    this.keep();
    this.draw();
  }

  step(count) {
    return this.enqueue(() => this.goTo(this.at + count));
  }

  async playOn() {
    this.isPlaying = !this.isPlaying;
    if (this.isPlaying && this.at >= this.frames.length && this.script.length === 0) this.at = 0;
    this.draw();
    while (this.isPlaying && this.at < this.lineCount) {
      const before = this.at;
      await this.step(1);
      if (this.at === before) break;
      await pause(600);
    }
    this.isPlaying = false;
    this.draw();
  }

  keep() {
    if (this.isFilm) return;
    const kept = {
      file: this.file?.name ?? null,
      lines: this.lines,
      rest: this.script.length,
      at: this.at,
      hasDeparted: this.hasDeparted,
      undos: this.undos.slice(-100),
    };
    try {
      sessionStorage.setItem(storageKey, JSON.stringify(kept));
    } catch {
      // Without room for it, a reload begins anew.
    }
  }

  stored() {
    try {
      return JSON.parse(sessionStorage.getItem(storageKey));
    } catch {
      return null;
    }
  }

  /** The page goes, and its stage with it. */
  close() {
    if (this.stage) navigator.sendBeacon(`/stages/${this.stage}/close`);
  }

  /** All of it as a scenario. */
  get text() {
    return this.lines.map((line) => `${line}\n`).join("");
  }
}
