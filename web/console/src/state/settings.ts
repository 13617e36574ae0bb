// What the user has set, kept by the browser.

import { effect, type Signal, signal } from "@preact/signals";

export type Theme = "auto" | "light" | "dark";

function kept<T extends string>(name: string, values: readonly T[], initial: T): Signal<T> {
  const key = `eventd.${name}`;
  const found = values.find((value) => value === localStorage.getItem(key));
  const setting = signal(found ?? initial);
  effect(() => localStorage.setItem(key, setting.value));
  return setting;
}

const themes: readonly Theme[] = ["auto", "light", "dark"];

export const theme = kept("theme", themes, "auto");
export const clock = kept("clock", ["local", "utc"], "local");
export const shortcuts = kept("shortcuts", ["on", "off"], "on");

export function nextTheme(): void {
  theme.value = themes[(themes.indexOf(theme.value) + 1) % themes.length] ?? "auto";
}

export function nextClock(): void {
  clock.value = clock.value === "utc" ? "local" : "utc";
}

export function followTheme(): void {
  effect(() => {
    document.documentElement.dataset.theme = theme.value;
  });
}
