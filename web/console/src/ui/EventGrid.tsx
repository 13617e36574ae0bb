// The list of events: only the rows in sight are in the page, however long the list is.

import type { TargetedKeyboardEvent } from "preact";
import { useEffect, useLayoutEffect, useRef, useState } from "preact/hooks";
import type { Event } from "../api/types";
import { summaryOf } from "../events/summary";
import { visible } from "../events/visible";
import { dateTime, zoneName, zoneOf } from "../format";
import { openEvent, showEvent } from "../state/route";
import { clock } from "../state/settings";
import { gone, inSight } from "../state/stored";
import { Kind } from "./Kind";
import { isNarrow } from "./media";

const margin = 8; // rows above and below those in sight

const keyOf = (event: Event) => `${event.dsid}/${event.id}`;

interface RowProps {
  event: Event;
  index: number;
  height: number;
  active: boolean;
  opened: boolean;
  onActive: () => void;
}

function Row({ event, index, height, active, opened, onActive }: RowProps) {
  const { main, details } = summaryOf(event);
  const isGone = gone.value.has(String(event.id));
  return (
    <div
      role="row"
      class={`row${event.problem ? " damaged" : ""}${isGone ? " gone" : ""}`}
      aria-rowindex={index + 2}
      aria-selected={opened}
      tabIndex={active ? 0 : -1}
      data-key={keyOf(event)}
      style={{ transform: `translateY(${index * height}px)`, height: `${height}px` }}
      onFocus={onActive}
      onClick={() => showEvent(String(event.dsid), String(event.id), false)}
    >
      <span role="gridcell" class="id">
        {event.id}
      </span>
      <span role="gridcell" class="when">
        {dateTime(event.date, clock.value)}
      </span>
      <span role="gridcell">
        <Kind name={event.kind} />
      </span>
      <span role="gridcell" class="what">
        {isGone ? <span class="badge">deleted</span> : null}
        {event.problem ? <strong class="problem">{visible(event.problem)} </strong> : null}
        {visible(main)}
        {details.map((detail) => (
          <span key={detail} class="detail">
            {visible(detail)}
          </span>
        ))}
      </span>
    </div>
  );
}

const steps: Record<string, (at: number, page: number, last: number) => number> = {
  ArrowDown: (at) => at + 1,
  ArrowUp: (at) => at - 1,
  j: (at) => at + 1,
  k: (at) => at - 1,
  PageDown: (at, page) => at + page,
  PageUp: (at, page) => at - page,
  Home: () => 0,
  End: (_at, _page, last) => last,
};

interface Sight {
  top: number;
  height: number;
}

// How far the list is scrolled and how much of it is in sight. Rows that come on top do not move
// what is being read further down.
function useSight(rows: Event[], height: number) {
  const place = useRef<HTMLDivElement>(null);
  const [sight, setSight] = useState<Sight>({ top: 0, height: 600 });
  const anchor = useRef<{ key: string; offset: number } | undefined>(undefined);
  const look = () => {
    const element = place.current;
    if (!element) return;
    const top = Math.floor(element.scrollTop / height);
    const first = rows[top];
    const offset = element.scrollTop - top * height;
    anchor.current = element.scrollTop > 0 && first ? { key: keyOf(first), offset } : undefined;
    setSight({ top: element.scrollTop, height: element.clientHeight });
  };
  const lookNow = useRef(look);
  lookNow.current = look;
  useLayoutEffect(() => {
    if (!place.current) return;
    const watch = new ResizeObserver(() => lookNow.current());
    watch.observe(place.current);
    return () => watch.disconnect();
  }, []);
  useLayoutEffect(() => {
    const kept = anchor.current;
    const at = kept ? rows.findIndex((event) => keyOf(event) === kept.key) : -1;
    if (kept && at >= 0 && place.current) place.current.scrollTop = at * height + kept.offset;
    lookNow.current();
  }, [rows, height]);
  return { place, sight, look };
}

function indexesInSight(sight: Sight, height: number, count: number, active: number): number[] {
  const first = Math.max(0, Math.floor(sight.top / height) - margin);
  const end = Math.min(count, Math.ceil((sight.top + sight.height) / height) + margin);
  const indexes = Array.from({ length: Math.max(0, end - first) }, (_, i) => first + i);
  // The row with the focus stays in the page, or the focus would be lost.
  if (active >= end) indexes.push(active);
  else if (active >= 0 && active < first) indexes.unshift(active);
  return indexes;
}

function rowOf(list: HTMLElement | null, key: string): HTMLElement | null {
  return list?.querySelector<HTMLElement>(`[data-key="${key}"]`) ?? null;
}

export function EventGrid({ rows, empty }: { rows: Event[]; empty: string }) {
  const height = isNarrow.value ? 52 : 30;
  const { place, sight, look } = useSight(rows, height);
  const [activeKey, setActiveKey] = useState("");
  const opened = openEvent.value ? `${openEvent.value.dsid}/${openEvent.value.id}` : "";
  const found = rows.findIndex((event) => keyOf(event) === activeKey);
  const active = found >= 0 ? found : Math.min(rows.length - 1, Math.floor(sight.top / height));

  const openedBefore = useRef("");
  useEffect(() => {
    const before = openedBefore.current;
    openedBefore.current = opened;
    if (opened) setActiveKey(opened);
    else if (before) rowOf(place.current, before)?.focus({ preventScroll: true });
  }, [opened]);

  const indexes = indexesInSight(sight, height, rows.length, active);
  useEffect(() => {
    inSight.value = indexes.flatMap((index) => rows[index] ?? []);
  });

  const focusRow = (index: number) => {
    const target = rows[index];
    const element = place.current;
    if (!target || !element) return;
    setActiveKey(keyOf(target));
    const head = height; // the heading covers as much
    if (index * height < element.scrollTop) element.scrollTop = index * height;
    const bottom = (index + 1) * height + head - element.clientHeight;
    if (bottom > element.scrollTop) element.scrollTop = bottom;
    requestAnimationFrame(() => {
      rowOf(element, keyOf(target))?.focus({ preventScroll: true });
    });
    if (opened) showEvent(String(target.dsid), String(target.id), false);
  };

  const onKeyDown = (event: TargetedKeyboardEvent<HTMLDivElement>) => {
    if (event.ctrlKey || event.metaKey || event.altKey) return;
    const current = rows[active];
    if (event.key === "Enter" && current) {
      event.preventDefault();
      showEvent(String(current.dsid), String(current.id));
      return;
    }
    const step = steps[event.key];
    if (!step || rows.length === 0) return;
    event.preventDefault();
    const page = Math.max(1, Math.floor(sight.height / height) - 2);
    focusRow(Math.min(rows.length - 1, Math.max(0, step(active, page, rows.length - 1))));
  };

  return (
    <div
      ref={place}
      class="grid"
      role="grid"
      aria-label="Events, newest first"
      aria-rowcount={rows.length + 1}
      style={{ "--id-width": `${String(rows[0]?.id ?? "").length}ch` }}
      onScroll={look}
      onKeyDown={onKeyDown}
    >
      <div role="row" class="row head" aria-rowindex={1}>
        <span role="columnheader" class="id">
          id
        </span>
        <span role="columnheader" title={zoneOf(clock.value)}>
          time ({zoneName(clock.value)})
        </span>
        <span role="columnheader">kind</span>
        <span role="columnheader">event</span>
      </div>
      <div role="rowgroup" class="rows" style={{ height: `${rows.length * height}px` }}>
        {indexes.map((index) => {
          const event = rows[index];
          if (!event) return null;
          return (
            <Row
              key={keyOf(event)}
              event={event}
              index={index}
              height={height}
              active={index === active}
              opened={keyOf(event) === opened}
              onActive={() => setActiveKey(keyOf(event))}
            />
          );
        })}
      </div>
      {rows.length === 0 ? <p class="empty">{empty}</p> : null}
    </div>
  );
}
