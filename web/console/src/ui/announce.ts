// What a screen reader is told of things that happen elsewhere on the page.

import { signal } from "@preact/signals";

export const announcement = signal("");

export function announce(text: string): void {
  // The same words twice are two events; a reader speaks only what has changed.
  announcement.value = text === announcement.value ? `${text}\u00a0` : text;
}
