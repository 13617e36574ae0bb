// The live tail of the queue that is shown: what has arrived, newest first, as far as the list is
// kept.

import { computed, effect, signal, untracked } from "@preact/signals";
import { Refusal } from "../api/http";
import { compareIntegers, minus, parseJson } from "../api/json";
import { type Message, readMessages } from "../api/serverSentEvents";
import type { Event } from "../api/types";
import { matcher } from "../events/filter";
import { walkBack } from "./ranges";
import { kinds, queue, text } from "./route";
import { reach, restartedAt, stats } from "./server";
import { openStream, standing } from "./session";

const backlog = 500; // how far back the list begins, in ids
const keptAtFirst = 2_000;
export const mostKept = 20_000;
const flushInterval = 150;
const silence = 40_000; // the server sends a comment every 15 s
const firstPause = 500;
const longestPause = 15_000;
const hiddenFor = 60_000;

export type Line = "off" | "connecting" | "live" | "broken" | "resting";

export const line = signal<Line>("off");
export const lineTrouble = signal(""); // what the server has against it
export const paused = signal(false);
export const held = signal<Event[]>([]);
export const waiting = signal<Event[]>([]); // newest last, while paused
export const missed = signal(0); // what a pause could not keep
export const reachesBack = signal<string | undefined>(); // the list knows all ids above this one
export const epoch = signal(0); // how often the list has begun anew

export const isFiltered = computed(() => text.value.trim() !== "" || kinds.value.size > 0);
export const matches = computed(() => matcher(text.value, kinds.value));
export const found = signal<Event[]>([]); // what matches of events older than those held
export const isFull = computed(() => held.value.length >= mostKept);
export const shown = computed(() => {
  const isOlder = (event: Event) => compareIntegers(event.id, reachesBack.value ?? 0) <= 0;
  return [...held.value.filter(matches.value), ...found.value.filter(isOlder)];
});

// What the server knows of the queue; undefined where it has no such queue.
export const figures = computed(() =>
  stats.value?.queues.find((one) => String(one.dsid) === queue.value),
);

let most = keptAtFirst;
let last: string | undefined; // the id to go on after
let arrived: Event[] = [];
let flushing: ReturnType<typeof setTimeout> | undefined;

function flush(): void {
  flushing = undefined;
  const events = arrived;
  arrived = [];
  if (paused.value) {
    const all = [...waiting.value, ...events];
    missed.value += Math.max(0, all.length - mostKept);
    waiting.value = all.slice(-mostKept);
  } else {
    prepend(events);
  }
}

function prepend(events: Event[]): void {
  if (events.length === 0) return;
  const all = [...events.reverse(), ...held.value];
  const dropped = all.slice(most);
  if (dropped[0]) {
    reachesBack.value = String(dropped[0].id);
    if (isFiltered.value) found.value = [...dropped.filter(matches.value), ...found.value];
  }
  held.value = all.slice(0, most);
}

function take(messages: Message[]): void {
  for (const message of messages) {
    const event = parseJson<Event>(message.data);
    if (last !== undefined && compareIntegers(event.id, last) <= 0) continue;
    last = String(event.id);
    arrived.push(event);
  }
  flushing ??= setTimeout(flush, flushInterval);
}

export function resume(): void {
  paused.value = false;
  const events = waiting.value;
  waiting.value = [];
  // Older events than those that a pause could not keep would hide the gap.
  if (missed.value > 0) {
    held.value = [];
    reachesBack.value = minus(events[0]?.id ?? 1, 1);
    epoch.value = epoch.peek() + 1;
  }
  missed.value = 0;
  prepend(events);
}

export function togglePause(): void {
  if (paused.value) resume();
  else paused.value = true;
}

export function clearTail(): void {
  clearTimeout(flushing);
  flushing = undefined;
  arrived = [];
  last = undefined;
  most = keptAtFirst;
  held.value = [];
  found.value = [];
  waiting.value = [];
  missed.value = 0;
  reachesBack.value = undefined;
  epoch.value = epoch.peek() + 1;
}

const renewals = signal(0);

// Forgets the list and begins it anew.
export function renewTail(): void {
  clearTail();
  ++renewals.value;
}

// Whether the list has the event, or will: false where the server has told all up to its id and
// not this one, so that ids have begun anew.
export function isHeardOf(event: Event): boolean {
  if (last === undefined || reachesBack.value === undefined) return true;
  if (compareIntegers(event.id, last) > 0) return true;
  if (compareIntegers(event.id, reachesBack.value) <= 0 || missed.value > 0) return true;
  return [...held.value, ...waiting.value, ...arrived].some(
    (one) => String(one.id) === String(event.id) && one.eventString === event.eventString,
  );
}

function highestId(): string {
  return String(figures.value?.highestId ?? 0);
}

async function listen(dsid: string, signal: AbortSignal, onLive: () => void): Promise<void> {
  const path = `/v1/queues/${dsid}/events/stream`;
  if (last === undefined) {
    last = minus(highestId(), backlog);
    reachesBack.value = last;
  }
  const quiet = new AbortController();
  let timer = setTimeout(() => quiet.abort(), silence);
  const onLife = () => {
    clearTimeout(timer);
    timer = setTimeout(() => quiet.abort(), silence);
  };
  try {
    const response = await openStream(path, {
      headers: { Accept: "text/event-stream", "Last-Event-ID": last },
      signal: AbortSignal.any([signal, quiet.signal]),
    });
    onLive();
    const takeOurs = (messages: Message[]) => signal.aborted || take(messages);
    if (response.body) await readMessages(response.body, takeOurs, onLife);
  } finally {
    clearTimeout(timer);
  }
}

let hurry: (() => void) | undefined;

function sleep(milliseconds: number, signal: AbortSignal): Promise<void> {
  return new Promise((resolve) => {
    const timer = setTimeout(resolve, milliseconds);
    hurry = resolve;
    signal.addEventListener("abort", () => {
      clearTimeout(timer);
      resolve();
    });
  });
}

async function follow(dsid: string, signal: AbortSignal): Promise<void> {
  let wait = firstPause;
  while (!signal.aborted) {
    line.value = "connecting";
    let asked = 0;
    try {
      await listen(dsid, signal, () => {
        line.value = "live";
        lineTrouble.value = "";
        wait = firstPause;
      });
    } catch (error) {
      lineTrouble.value = error instanceof Refusal ? error.message : "";
      if (error instanceof Refusal) asked = (error.retryAfter ?? 0) * 1000;
    }
    if (signal.aborted) return;
    line.value = "broken";
    // Spread, so that a server that comes back is not met by all its pages at once.
    await sleep(Math.max(asked, wait * (0.75 + Math.random() / 2)), signal);
    wait = Math.min(longestPause, wait * 2);
  }
}

// A browser allows few connections to one server: pages that nobody sees give theirs back.
const seen = signal(true);
let hiding: ReturnType<typeof setTimeout> | undefined;

document.addEventListener("visibilitychange", () => {
  clearTimeout(hiding);
  if (document.visibilityState === "visible") seen.value = true;
  else hiding = setTimeout(() => (seen.value = false), hiddenFor);
});

// After a restart with another store, ids may begin below those that were seen.
function isFromAnotherStore(): boolean {
  return (
    restartedAt.value !== undefined && last !== undefined && compareIntegers(highestId(), last) < 0
  );
}

export function keepTail(): void {
  const isUp = computed(() => reach.value.is === "up");
  effect(() => {
    if (isUp.value) hurry?.();
  });
  const ready = computed(() => standing.value === "in" && figures.value !== undefined);
  let before = "";
  effect(() => {
    const dsid = queue.value;
    if (!ready.value) {
      line.value = "off";
      untracked(clearTail);
      return;
    }
    void restartedAt.value;
    void renewals.value;
    if (dsid !== before || untracked(isFromAnotherStore)) untracked(clearTail);
    before = dsid;
    if (!seen.value) {
      line.value = "resting";
      return;
    }
    const stop = new AbortController();
    untracked(() => void follow(dsid, stop.signal));
    return () => stop.abort();
  });
}

export const olderState = signal<"" | "asking" | "none" | "failed">("");

export async function loadOlder(): Promise<void> {
  const before = reachesBack.value;
  const dsid = queue.value;
  if (before === undefined || olderState.value === "asking") return;
  olderState.value = "asking";
  try {
    let added = 0;
    await walkBack(dsid, before, (events, reached) => {
      if (dsid !== queue.value) return false;
      const all = [...held.value, ...events];
      added = events.length;
      most = Math.min(mostKept, Math.max(most, all.length));
      held.value = all.slice(0, mostKept);
      reachesBack.value = String(all[mostKept]?.id ?? reached);
      return added === 0;
    });
    olderState.value = added > 0 || reachesBack.value === "0" ? "" : "none";
  } catch {
    olderState.value = "failed";
  }
}
