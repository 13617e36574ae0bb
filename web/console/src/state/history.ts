// The lengths of the queues over time, as this page has seen them.

import { signal } from "@preact/signals";
import type { Stats } from "../api/types";
import { thin } from "./thin";

export interface Reading {
  count: number;
  oldestAge: number | undefined; // seconds; nothing in an empty queue
}

export interface Sample {
  time: number; // seconds
  queues: Map<string, Reading>;
}

export const samples = signal<Sample[]>([]);

function ageOf(oldest: number | string | undefined, now: number): number | undefined {
  return oldest === undefined ? undefined : Math.max(0, now - Number(oldest));
}

function readingsOf(stats: Stats, now: number): Map<string, Reading> {
  const readings = new Map<string, Reading>();
  const all: Reading = { count: stats.count, oldestAge: undefined };
  for (const queue of stats.queues) {
    const oldestAge = ageOf(queue.oldest, now);
    readings.set(String(queue.dsid), { count: queue.count, oldestAge });
    if (oldestAge !== undefined) all.oldestAge = Math.max(all.oldestAge ?? 0, oldestAge);
  }
  readings.set("all", all);
  return readings;
}

const longestGap = 90; // seconds; a hidden page is let ask once a minute

// The line of the charts ends here: what follows was not seen.
export function interrupt(time = Date.now() / 1000): void {
  const last = samples.value.at(-1);
  if (last && last.queues.size > 0) samples.value = [...samples.value, { time, queues: new Map() }];
}

export function record(stats: Stats): void {
  const now = Date.now() / 1000;
  const last = samples.value.at(-1);
  if (last && now - last.time > longestGap) interrupt(last.time + 1);
  samples.value = [...thin(samples.value, now), { time: now, queues: readingsOf(stats, now) }];
}

export function forgetHistory(): void {
  samples.value = [];
}
