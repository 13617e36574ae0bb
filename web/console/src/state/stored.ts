// Which events of the list are stored no more, because they were consumed or deleted. The server tells
// what arrives, not what goes. So it is asked, when its figures have changed, for the oldest event,
// below which all are gone, and for those in sight.

import { effect, signal, untracked } from "@preact/signals";
import { compareIntegers, minus } from "../api/json";
import type { Event } from "../api/types";
import { readOldest, readPage } from "./ranges";
import { openEvent, queue, view } from "./route";
import { stats } from "./server";
import { epoch, figures, found, held, isHeardOf, paused, reachesBack, renewTail } from "./tail";

const pageSize = 100;
const mostPages = 10;

export const gone = signal<ReadonlySet<string>>(new Set()); // ids
export const oldestId = signal<string | undefined>();
export const inSight = signal<readonly Event[]>([]);

let renewedFor = ""; // an oldest event that the list lacked
let stoppedAt = "0"; // the rows in sight up to there were looked at last time

// Which of the rows are gone. Those that lie far apart are looked at in turn, some each time.
async function missingOf(dsid: string, rows: readonly Event[]): Promise<string[]> {
  const ids = [...new Set(rows.map((event) => String(event.id)))].sort(compareIntegers);
  const isLater = (id: string) => compareIntegers(id, stoppedAt) > 0;
  const rest = [...ids.filter(isLater), ...ids.filter((id) => !isLater(id))];
  const missing: string[] = [];
  for (let pages = 0; pages < mostPages && rest[0] !== undefined; ++pages) {
    const after = minus(rest[0], 1);
    const { events } = await readPage(dsid, { after, limit: pageSize });
    const there = new Set(events.map((event) => String(event.id)));
    const end = events.at(-1)?.id;
    const isTold = (id: string) =>
      compareIntegers(id, after) > 0 && (end === undefined || compareIntegers(id, end) <= 0);
    while (rest[0] !== undefined && isTold(rest[0])) {
      stoppedAt = rest[0];
      if (!there.has(stoppedAt)) missing.push(stoppedAt);
      rest.shift();
    }
  }
  if (rest.length === 0) stoppedAt = "0";
  return missing;
}

async function check(): Promise<void> {
  const dsid = queue.peek();
  const begun = epoch.peek();
  const known = [...held.peek(), ...found.peek()];
  const opened = known.filter((event) => String(event.id) === openEvent.peek()?.id);
  const rows = [...inSight.peek(), ...opened];
  const oldest = await readOldest(dsid);
  if (epoch.peek() !== begun) return;
  if (oldest && !paused.peek() && !isHeardOf(oldest) && oldest.eventString !== renewedFor) {
    renewedFor = oldest.eventString; // once is enough
    renewTail();
    return;
  }
  const isBelow = (event: Event) => !oldest || compareIntegers(event.id, oldest.id) < 0;
  const above = rows.filter((event) => !isBelow(event));
  const missing = await missingOf(dsid, above);
  if (epoch.peek() !== begun) return;
  const ids = new Set([...gone.peek(), ...missing]);
  const isGone = (event: Event) => isBelow(event) || ids.has(String(event.id));
  gone.value = new Set(known.filter(isGone).map((event) => String(event.id)));
  oldestId.value = oldest ? String(oldest.id) : undefined;
}

export function noteGone(id: string): void {
  gone.value = new Set([...gone.peek(), id]);
}

// What the last check has seen: while it stays so, nothing has gone.
function lookOfThings(): string {
  const { count, highestId } = figures.value ?? {};
  const rows = inSight.value;
  return [queue.value, epoch.value, count, highestId, rows[0]?.id, rows.at(-1)?.id].join();
}

export function watchStored(): void {
  let seen = "";
  let isChecking = false;
  const tick = async () => {
    const isShown = view.value === "events" || view.value === "overview";
    const look = lookOfThings();
    if (isChecking || !isShown || document.hidden || look === seen) return;
    if (!figures.value || reachesBack.value === undefined) return;
    isChecking = true;
    try {
      await check();
      seen = stoppedAt === "0" ? look : "";
    } catch {
      // The figures are asked for by the same way, and say what is wrong with it.
    } finally {
      isChecking = false;
    }
  };
  effect(() => {
    if (stats.value) untracked(() => void tick());
  });
  effect(() => {
    void epoch.value;
    gone.value = new Set();
    oldestId.value = undefined;
    stoppedAt = "0";
  });
}
