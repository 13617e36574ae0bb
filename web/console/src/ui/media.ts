// What the browser says of its user and its window.

import { type Signal, signal } from "@preact/signals";

function watched(query: string): Signal<boolean> {
  const list = matchMedia(query);
  const value = signal(list.matches);
  list.addEventListener("change", () => (value.value = list.matches));
  return value;
}

export const prefersDark = watched("(prefers-color-scheme: dark)");
export const isNarrow = watched("(max-width: 640px)");
