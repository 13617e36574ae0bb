// The server's figures, asked for again and again, and whether it answers.

import { computed, signal } from "@preact/signals";
import { Refusal } from "../api/http";
import type { Cluster, Limits, Queue, Stats } from "../api/types";
import { forgetHistory, interrupt, record } from "./history";
import { askServer, identify, standing } from "./session";

const interval = 2_000;
const readinessInterval = 10_000;
const firstPause = 1_000;
const longestPause = 10_000;

export type Reach =
  | { is: "unknown" }
  | { is: "up" }
  | { is: "down"; since: number; why: string }
  | { is: "troubled"; why: string };

export const reach = signal<Reach>({ is: "unknown" });
export const stats = signal<Stats | undefined>();
export const limits = signal<Limits | undefined>();
export const cluster = signal<Cluster | undefined>();
export const notReady = signal("");
export const restartedAt = signal<number | undefined>();

export const globalQueue = computed<Queue | undefined>(() =>
  stats.value?.queues.find((queue) => String(queue.dsid) === "0"),
);

let wake: (() => void) | undefined;

function pause(milliseconds: number): Promise<void> {
  return new Promise((resolve) => {
    const timer = setTimeout(resolve, milliseconds);
    wake = () => {
      clearTimeout(timer);
      resolve();
    };
  });
}

export function tryNow(): void {
  wake?.();
}

function noteFailure(error: unknown): void {
  const why = error instanceof Error ? error.message : String(error);
  if (error instanceof Refusal) {
    reach.value = { is: "troubled", why };
  } else if (reach.value.is !== "down") {
    reach.value = { is: "down", since: Date.now(), why };
    interrupt();
  }
}

function takeStats(next: Stats): void {
  const before = stats.value;
  if (before && before.startTime !== next.startTime) {
    restartedAt.value = next.startTime;
    limits.value = undefined;
  }
  stats.value = next;
  cluster.value = next.cluster;
  reach.value = { is: "up" };
  record(next);
}

let nextReadiness = 0;

async function askReadiness(): Promise<void> {
  if (Date.now() < nextReadiness) return;
  nextReadiness = Date.now() + readinessInterval;
  try {
    await askServer("/readyz");
    notReady.value = "";
  } catch (error) {
    // When the server does not answer at all, the next question for figures says so.
    if (error instanceof Refusal) notReady.value = error.message;
  }
}

// When the queues cannot be read, how their cluster is matters most.
async function askCluster(): Promise<void> {
  const answer = await askServer<Cluster & { clustered: boolean }>("/v1/cluster");
  cluster.value = answer.clustered ? answer : undefined;
}

async function askFigures(): Promise<void> {
  try {
    takeStats(await askServer<Stats>("/v1/stats"));
  } catch (error) {
    if (error instanceof Refusal && standing.value === "in") {
      await askCluster().catch(() => undefined);
    }
    throw error;
  }
}

async function askOnce(): Promise<void> {
  if (standing.value === "starting") await identify();
  if (standing.value !== "in") return;
  await askFigures();
  if (!limits.value) limits.value = await askServer<Limits>("/v1/limits");
  await askReadiness();
}

function pauseAfter(error: unknown, before: number): number {
  if (error instanceof Refusal && error.retryAfter !== undefined) return error.retryAfter * 1000;
  return Math.min(longestPause, Math.max(firstPause, before * 1.6));
}

// Never ends; where nobody is logged in it asks nothing.
export async function watchServer(): Promise<never> {
  let failing = 0;
  for (;;) {
    try {
      await askOnce();
      failing = 0;
    } catch (error) {
      noteFailure(error);
      failing = pauseAfter(error, failing);
    }
    await pause(failing || interval);
  }
}

export function forgetServer(): void {
  stats.value = undefined;
  limits.value = undefined;
  cluster.value = undefined;
  notReady.value = "";
  restartedAt.value = undefined;
  reach.value = { is: "unknown" };
  nextReadiness = 0;
  forgetHistory();
}
