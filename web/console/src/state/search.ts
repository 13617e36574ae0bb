// The search beyond what the list holds: the server is asked for older events, some thousand at a
// time, and what matches joins the list.

import { computed, effect, signal, untracked } from "@preact/signals";
import { compareIntegers } from "../api/json";
import type { Event } from "../api/types";
import { pageSize, readEvent, readRange, walkBack } from "./ranges";
import { kinds, queue, text, view } from "./route";
import { epoch, figures, found, isFiltered, matches, mostKept, reachesBack, shown } from "./tail";

const settling = 400; // milliseconds that a filter stays as it is before the server is asked
const enough = 200; // matches, until more are asked for

export const searchedTo = signal<string | undefined>(); // ids above it have been looked through
export const searchState = signal<"" | "asking" | "failed">("");
// How many events older than those held; undefined where the server looked through them.
export const lookedThrough = signal<number | undefined>(0);

function add(events: Event[]): void {
  const known = new Set(found.value.map((event) => String(event.id)));
  const fresh = events.filter((event) => matches.value(event) && !known.has(String(event.id)));
  if (fresh.length === 0) return;
  const all = [...found.value, ...fresh].sort((a, b) => compareIntegers(b.id, a.id));
  found.value = all.slice(0, mostKept);
}

// Of kinds that are rare the server gives all at once, if it can: it looks through all that it has.
function areRare(): boolean {
  const types = figures.peek()?.types;
  if (kinds.peek().size === 0 || !types) return false;
  return [...kinds.peek()].reduce((sum, kind) => sum + (types[kind] ?? 0), 0) <= pageSize;
}

async function lookUp(dsid: string, signal: AbortSignal): Promise<void> {
  const id = text.peek().trim();
  if (!/^\d{1,20}$/.test(id)) return;
  const event = await readEvent(dsid, id, signal);
  if (event && !signal.aborted) add([event]);
}

async function lookBack(
  dsid: string,
  signal: AbortSignal,
  most: number,
  inSteps: boolean,
): Promise<void> {
  const end = searchedTo.peek() ?? reachesBack.peek() ?? "0";
  if (end === "0") return;
  if (!inSteps && areRare()) {
    const events = await readRange(dsid, "0", end, signal, kinds.peek());
    if (signal.aborted) return;
    add(events);
    lookedThrough.value = undefined;
    searchedTo.value = "0";
  } else if (shown.peek().length < most) {
    const take = (events: Event[], reached: string) => {
      lookedThrough.value = (lookedThrough.value ?? 0) + events.length;
      add(events);
      searchedTo.value = reached;
      return shown.value.length < most;
    };
    await walkBack(dsid, end, take, signal);
  }
}

async function look(signal: AbortSignal, most: number): Promise<void> {
  const dsid = queue.peek();
  const hasFailed = searchState.peek() === "failed";
  searchState.value = "asking";
  try {
    await lookUp(dsid, signal);
    await lookBack(dsid, signal, most, hasFailed);
    if (!signal.aborted) searchState.value = "";
  } catch {
    if (!signal.aborted) searchState.value = "failed";
  }
}

let current = new AbortController();

export function searchFurther(): void {
  if (searchState.value !== "asking") void look(current.signal, shown.value.length + enough);
}

function forget(): void {
  found.value = [];
  searchedTo.value = undefined;
  searchState.value = "";
  lookedThrough.value = 0;
}

// Begins anew whenever something else is looked for.
export function keepSearching(): void {
  const isWanted = computed(
    () => view.value === "events" && isFiltered.value && reachesBack.value !== undefined,
  );
  effect(() => {
    const stop = new AbortController();
    current = stop;
    void [queue.value, matches.value, epoch.value];
    untracked(forget);
    if (!isWanted.value) return;
    const timer = setTimeout(() => void look(stop.signal, enough), settling);
    return () => {
      clearTimeout(timer);
      stop.abort();
    };
  });
}
