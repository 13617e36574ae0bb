// Where in the console we are: the part of the address behind "#".

import { computed, signal } from "@preact/signals";

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

const hash = signal(location.hash);

addEventListener("hashchange", () => {
  hash.value = location.hash;
});

const parts = computed(() => hash.value.replace(/^#\/?/, "").split("/"));

export const view = computed<View>(() => {
  const [first] = parts.value;
  return views.find((one) => one === first) ?? "overview";
});

// The event that the address names: #/events/DSID/ID
export const openEvent = computed(() => {
  const [first, dsid, id] = parts.value;
  const named = first === "events" && /^\d+$/.test(dsid ?? "") && /^\d+$/.test(id ?? "");
  return named ? { dsid: dsid as string, id: id as string } : undefined;
});

export function go(to: View): void {
  location.hash = `#/${to}`;
}

// Whether the event that was opened last takes the focus, or leaves it in the list.
export const opening = { takesFocus: true };

// Moving from one event to the next makes no history of its own.
export function showEvent(dsid: string, id: string, takesFocus = true): void {
  opening.takesFocus = takesFocus;
  const address = `#/events/${dsid}/${id}`;
  if (openEvent.value) history.replaceState(null, "", address);
  else history.pushState(null, "", address);
  hash.value = address;
}

export function closeEvent(): void {
  history.replaceState(null, "", "#/events");
  hash.value = "#/events";
}
