// The lengths of the queues over time, as this page has seen them.

import { signal } from "@preact/signals";
import type { Stats } from "../api/types";

export interface Reading {
  count: number;
  oldestAge: number | undefined; // seconds; nothing in an empty queue
}

export interface Sample {
  time: number; // seconds
  queues: Map<string, Reading>;
}

const fineSeconds = 20 * 60;
const coarseStep = 30;
const mostSeconds = 24 * 60 * 60;

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

// Every reading of the last minutes is kept; of what is older, one for each half minute.
export function thin(list: Sample[], now: number): Sample[] {
  let last = Number.NEGATIVE_INFINITY;
  return list.filter((sample) => {
    const age = now - sample.time;
    if (age > mostSeconds) return false;
    if (age > fineSeconds && sample.time - last < coarseStep) return false;
    last = sample.time;
    return true;
  });
}

export function record(stats: Stats): void {
  const now = Date.now() / 1000;
  samples.value = [...thin(samples.value, now), { time: now, queues: readingsOf(stats, now) }];
}

export function forgetHistory(): void {
  samples.value = [];
}
