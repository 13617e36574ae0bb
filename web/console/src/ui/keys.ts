// Shortcuts of single keys. They can be switched off, for those who speak to their computer.

import { signal } from "@preact/signals";
import { closeEvent, go, openEvent, view, views } from "../state/route";
import { standing } from "../state/session";
import { nextClock, nextTheme, shortcuts } from "../state/settings";
import { togglePause } from "../state/tail";

export const helpIsOpen = signal(false);
export const searchIsWanted = signal(false); // until the field has the focus

export const shortcutTexts: [string, string][] = [
  ["1 … 6", "go to a view"],
  ["/", "search in the events"],
  ["p", "pause the list of events, or go on"],
  ["↑ ↓ or k j", "move in the list of events"],
  ["Page ↑ ↓, Home, End", "move further"],
  ["Enter", "open the event"],
  ["Esc", "close the event, or this help"],
  ["c", "copy the event string"],
  ["t", "theme: as the system, light, dark"],
  ["u", "times: local or UTC"],
  ["?", "this help"],
];

function search(): void {
  go("events");
  searchIsWanted.value = true;
}

function copy(): void {
  document.getElementById("copy-event-string")?.click();
}

const actions: Record<string, () => void> = {
  "/": search,
  "?": () => (helpIsOpen.value = true),
  c: copy,
  p: () => view.value === "events" && togglePause(),
  t: nextTheme,
  u: nextClock,
};

function isTyping(target: EventTarget | null): boolean {
  return target instanceof HTMLElement && target.matches("input, textarea, select");
}

function onKey(event: KeyboardEvent): void {
  if (event.defaultPrevented || event.ctrlKey || event.metaKey || event.altKey) return;
  if (standing.value !== "in" || document.querySelector("dialog[open]")) return;
  if (event.key === "Escape" && openEvent.value) {
    closeEvent();
    return;
  }
  if (isTyping(event.target) || shortcuts.value === "off") return;
  const numbered = views[Number(event.key) - 1];
  const action = numbered ? () => go(numbered) : actions[event.key];
  if (!action) return;
  event.preventDefault();
  action();
}

export function listenToKeys(): () => void {
  addEventListener("keydown", onKey);
  return () => removeEventListener("keydown", onKey);
}
