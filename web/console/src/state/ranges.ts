// Events read from a queue by ranges of their ids.

import { Refusal } from "../api/http";
import { compareIntegers, type Integer, minus } from "../api/json";
import type { Event, EventPage } from "../api/types";
import { askServer } from "./session";

export const pageSize = 1_000; // the most that the server gives at once
const triesAtOnce = 10;

interface Page {
  after: string;
  limit?: number;
  kinds?: Iterable<string>;
}

export function readPage(
  dsid: string,
  { after, limit = pageSize, kinds = [] }: Page,
  signal?: AbortSignal,
): Promise<EventPage> {
  const type = [...kinds].join();
  const path = `/v1/queues/${dsid}/events?after=${after}&limit=${limit}${type && `&type=${type}`}`;
  return askServer<EventPage>(path, signal && { signal });
}

// All events with ids above `after`, up to `end`, oldest first. Long events make shorter pages.
export async function readRange(
  dsid: string,
  after: string,
  end: Integer,
  signal?: AbortSignal,
  kinds: Iterable<string> = [],
): Promise<Event[]> {
  const events: Event[] = [];
  for (let from = after; compareIntegers(from, end) < 0; ) {
    const page = await readPage(dsid, { after: from, kinds }, signal);
    const inside = page.events.filter((event) => compareIntegers(event.id, end) <= 0);
    events.push(...inside);
    if (inside.length < page.events.length || compareIntegers(page.last, from) <= 0) break;
    from = String(page.last);
  }
  return events;
}

export async function readOldest(dsid: string, signal?: AbortSignal): Promise<Event | undefined> {
  return (await readPage(dsid, { after: "0", limit: 1 }, signal)).events[0];
}

// The event, or undefined where the queue does not have it (any more) or can have no such id.
export async function readEvent(
  dsid: string,
  id: string,
  signal?: AbortSignal,
): Promise<Event | undefined> {
  try {
    return await askServer<Event>(`/v1/queues/${dsid}/events/${id}`, signal && { signal });
  } catch (error) {
    const isNone = error instanceof Refusal && (error.status === 404 || error.status === 400);
    if (isNone) return undefined;
    throw error;
  }
}

// Walks back from `end`, stretch by stretch, for as long as `take` says, and not too far at once: ids
// may have gaps of any width. `take` is given the events of a stretch, newest first, and the id
// above which all are known by then: "0" when nothing older is stored.
export async function walkBack(
  dsid: string,
  end: string,
  take: (events: Event[], reached: string) => boolean,
  signal?: AbortSignal,
): Promise<void> {
  const oldest = await readOldest(dsid, signal);
  for (let tries = 0, before = end; tries < triesAtOnce; ++tries) {
    const after = minus(before, pageSize);
    const isLast = !oldest || compareIntegers(oldest.id, after) > 0;
    const events = await readRange(dsid, after, before, signal);
    if (signal?.aborted || !take(events.reverse(), isLast ? "0" : after) || isLast) return;
    before = after;
  }
}
