// Where in the console we are: the part of the address behind "#". Whoever has it sees the same:
// after a reload, by a link, by "back".
//   #/VIEW
//   #/events/QUEUE[/ID][?kinds=audit,legacy&search=TEXT]

import { computed, signal } from "@preact/signals";
import { kindNames } from "../events/kinds";

export const views = ["overview", "events", "queues", "limits", "check", "cluster"] as const;
export type View = (typeof views)[number];

export const viewNames: Record<View, string> = {
  overview: "Overview",
  events: "Events",
  queues: "Queues",
  limits: "Limits",
  check: "Check",
  cluster: "Cluster",
};

const typingTime = 300; // until a search is in the address

interface Place {
  view: View;
  queue: string; // as the address has it, which may be no number
  id: string; // of the event that is open, or ""
  kinds: string; // those shown, with commas; "" for all
  search: string;
}

const atFirst: Place = { view: "overview", queue: "0", id: "", kinds: "", search: "" };

// An address that names no queue leaves the events as they were last looked at.
function placeOf(address: string, before: Place): Place {
  const [path = "", ...query] = address.replace(/^#\/?/, "").split("?");
  const [first, queue, id = ""] = path.split("/");
  const named = views.find((one) => one === first) ?? "overview";
  if (named !== "events" || !queue) return { ...before, view: named, id: "" };
  const asked = new URLSearchParams(query.join("?"));
  const names = (asked.get("kinds") ?? "").split(",");
  return {
    view: named,
    queue,
    id: /^\d+$/.test(id) ? id : "",
    kinds: names.filter((name) => kindNames.includes(name)).join(),
    search: asked.get("search") ?? "",
  };
}

function addressOf({ view: to, queue: dsid, id, kinds: names, search }: Place): string {
  if (to !== "events") return `#/${to}`;
  const asked = new URLSearchParams();
  if (names) asked.set("kinds", names);
  if (search) asked.set("search", search);
  const query = asked.toString().replaceAll("%2C", ",");
  return `#/events/${dsid}${id && `/${id}`}${query && `?${query}`}`;
}

const place = signal(placeOf(location.hash, atFirst));

export const view = computed(() => place.value.view);
export const queue = computed(() => place.value.queue);
export const text = computed(() => place.value.search);
const kindList = computed(() => place.value.kinds);
export const kinds = computed<ReadonlySet<string>>(
  () => new Set(kindList.value.split(",").filter(Boolean)),
);
const openKey = computed(() => place.value.id && `${place.value.queue}/${place.value.id}`);
export const openEvent = computed(() => {
  const [dsid = "", id] = openKey.value.split("/");
  return id ? { dsid, id } : undefined;
});

// Whether the event that was opened last takes the focus, or leaves it in the list.
export const opening = { takesFocus: true };

let writing: ReturnType<typeof setTimeout> | undefined;
let isOfTyping = false; // the entry of the history that we are at

function write(replaces: boolean): void {
  clearTimeout(writing);
  writing = undefined;
  const address = addressOf(place.peek());
  if (address === location.hash) return;
  if (replaces) history.replaceState(null, "", address);
  else history.pushState(null, "", address);
}

// All letters of a search are one step of the history.
function writeSearch(): void {
  write(isOfTyping);
  isOfTyping = true;
}

function move(change: Partial<Place>, replaces = false): void {
  if (writing !== undefined) writeSearch();
  place.value = { ...place.peek(), ...change };
  write(replaces);
  if (!replaces) isOfTyping = false;
}

addEventListener("hashchange", () => {
  clearTimeout(writing);
  writing = undefined;
  isOfTyping = false;
  opening.takesFocus = true;
  place.value = placeOf(location.hash, place.peek());
  if (view.peek() === "events") write(true);
});

export function addressOfView(to: View): string {
  return addressOf({ ...place.value, view: to, id: "" });
}

export function go(to: View): void {
  move({ view: to, id: "" });
}

export function chooseQueue(dsid: string): void {
  move({ queue: dsid, id: "" });
}

export function chooseKinds(chosen: Iterable<string>): void {
  move({ kinds: [...chosen].join() });
}

export function searchFor(search: string): void {
  place.value = { ...place.peek(), search };
  clearTimeout(writing);
  writing = setTimeout(writeSearch, typingTime);
}

// Moving from one event to the next makes no history of its own.
export function showEvent(dsid: string, id: string, takesFocus = true): void {
  opening.takesFocus = takesFocus;
  move({ view: "events", queue: dsid, id }, openEvent.peek() !== undefined);
}

export function closeEvent(): void {
  move({ id: "" }, true);
}

if (view.peek() === "events") write(true);
