import { useEffect, useRef } from "preact/hooks";
import { compareIntegers } from "../api/json";
import { kindNames } from "../events/kinds";
import { visible } from "../events/visible";
import { grouped } from "../format";
import { chooseKinds, chooseQueue, kinds, openEvent, queue, searchFor, text } from "../state/route";
import { lookedThrough, searchedTo, searchFurther, searchState } from "../state/search";
import { stats } from "../state/server";
import { gone, oldestId } from "../state/stored";
import {
  figures,
  held,
  isFiltered,
  isFull,
  type Line,
  line,
  lineTrouble,
  loadOlder,
  missed,
  olderState,
  paused,
  reachesBack,
  shown,
  togglePause,
  waiting,
} from "../state/tail";
import { announce } from "../ui/announce";
import { EventGrid } from "../ui/EventGrid";
import { Icon } from "../ui/Icon";
import { searchIsWanted } from "../ui/keys";
import { EventPanel } from "./EventPanel";
import { queueName } from "./queueName";

const lineTexts: Record<Line, [string, string]> = {
  off: ["not listening", ""],
  connecting: ["connecting", ""],
  live: ["live", "ok"],
  broken: ["interrupted, trying again", "bad"],
  resting: ["resting while this page is hidden", ""],
};

function toggleKind(kind: string): void {
  const next = new Set(kinds.value);
  if (!next.delete(kind)) next.add(kind);
  chooseKinds(next);
}

function changePause(): void {
  togglePause();
  announce(paused.value ? "The list is paused." : "The list goes on.");
}

function QueueChoice() {
  const queues = stats.value?.queues ?? [];
  return (
    <label class="field">
      <span class="unseen">Queue</span>
      <select value={queue.value} onChange={(event) => chooseQueue(event.currentTarget.value)}>
        {figures.value ? null : <option value={queue.value}>queue {queue.value}</option>}
        {queues.map((one) => (
          <option key={one.dsid} value={String(one.dsid)}>
            {queueName(one)}
          </option>
        ))}
      </select>
    </label>
  );
}

function KindChoices() {
  return (
    <fieldset class="choices kinds">
      <legend class="unseen">Kinds shown</legend>
      <button type="button" aria-pressed={kinds.value.size === 0} onClick={() => chooseKinds([])}>
        all kinds
      </button>
      {kindNames.map((kind) => (
        <button
          key={kind}
          type="button"
          class="kind"
          data-kind={kind}
          aria-pressed={kinds.value.has(kind)}
          onClick={() => toggleKind(kind)}
        >
          {kind}
        </button>
      ))}
    </fieldset>
  );
}

function LineState() {
  const [name, level] = lineTexts[line.value];
  if (!paused.value && line.value === "broken" && lineTrouble.value) {
    return <span class="state bad">interrupted: {visible(lineTrouble.value)}</span>;
  }
  if (!paused.value) return <span class={`state ${level}`}>{name}</span>;
  const more = missed.value > 0 ? ` and ${grouped(missed.value)} more` : "";
  return (
    <span class="state warn">
      paused, {grouped(waiting.value.length)}
      {more} new
    </span>
  );
}

function Tools() {
  const search = useRef<HTMLInputElement>(null);
  useEffect(() => {
    if (searchIsWanted.value) search.current?.focus();
    searchIsWanted.value = false;
  }, [searchIsWanted.value]);
  return (
    <div class="tools-row">
      <QueueChoice />
      <label class="field grow">
        <span class="unseen">Search in the events</span>
        <input
          ref={search}
          type="search"
          placeholder="Search id or text"
          value={text.value}
          onInput={(event) => searchFor(event.currentTarget.value)}
          onKeyDown={(event) => event.key === "Escape" && searchFor("")}
        />
      </label>
      <button type="button" class="with-icon" aria-pressed={paused.value} onClick={changePause}>
        <Icon name={paused.value ? "play" : "pause"} /> {paused.value ? "Go on" : "Pause"}
      </button>
    </div>
  );
}

const olderTexts = {
  "": "Older events",
  asking: "Looking …",
  none: "None found there; look further back",
  failed: "The server did not answer; try again",
};

// Below what the list knows there is nothing in the queue.
function isNothingOlder(): boolean {
  const end = reachesBack.value;
  if (end === undefined || end === "0") return end === "0";
  return oldestId.value !== undefined && compareIntegers(oldestId.value, end) > 0;
}

function hasAllStored(): boolean {
  const stored = held.value.filter((event) => !gone.value.has(String(event.id))).length;
  return line.value === "live" && !paused.value && stored === Number(figures.value?.count);
}

function Older() {
  if (reachesBack.value === undefined) return null;
  if (isNothingOlder()) {
    const text = hasAllStored() ? "all that are stored" : "nothing older is stored";
    return <span class="muted">{text}</span>;
  }
  if (isFull.value) return <span class="muted">the list holds no more</span>;
  return (
    <button type="button" disabled={olderState.value === "asking"} onClick={loadOlder}>
      {olderTexts[olderState.value]}
    </button>
  );
}

function SearchedTo() {
  const to = searchedTo.value ?? reachesBack.value;
  if (to === undefined) return null;
  if (searchState.value === "asking") return <span class="muted">Looking further back …</span>;
  if (to === "0" || isNothingOlder()) return <span class="muted">nothing older is stored</span>;
  return (
    <>
      <span class="muted">looked through down to id {grouped(to)}</span>
      <button type="button" onClick={searchFurther}>
        {searchState.value === "failed" ? olderTexts.failed : "Look further back"}
      </button>
    </>
  );
}

function countText(): string {
  const all = held.value.length + (lookedThrough.value ?? Number.NEGATIVE_INFINITY);
  const count = shown.value.length;
  if (isFiltered.value && count < all) return `${grouped(count)} of ${grouped(all)} events`;
  return count === 1 ? "1 event" : `${grouped(count)} events`;
}

function Foot() {
  const deleted = shown.value.filter((event) => gone.value.has(String(event.id))).length;
  return (
    <div class="list-foot">
      <span>
        <span data-testid="count">{countText()}</span>
        {deleted > 0 ? <span class="muted">, {grouped(deleted)} deleted since</span> : null}
      </span>
      {isFiltered.value ? <SearchedTo /> : <Older />}
    </div>
  );
}

function NoSuchQueue() {
  return (
    <p class="banner warn" role="alert">
      There is no queue {visible(queue.value)} here. <a href="#/events/0">The global queue</a>
    </p>
  );
}

function emptyText(): string {
  if (isFiltered.value) {
    const isDone = searchedTo.value === "0" || isNothingOlder();
    if (searchState.value === "asking" || (!isDone && searchedTo.value === undefined)) return "";
    return isDone ? "No event in the queue matches." : "No event matches so far.";
  }
  if (held.value.length > 0) return "";
  return line.value === "live" ? "No events here; new ones appear as they are stored." : "";
}

// The number of matches is told when the filter has come to rest.
function useFilterNews(): void {
  const isAsking = searchState.value === "asking";
  const filter = `${text.value}|${[...kinds.value].join()}`;
  // Only the filter is news.
  useEffect(() => {
    if (filter === "|" || isAsking) return;
    const timer = setTimeout(() => announce(`${shown.peek().length} events match.`), 800);
    return () => clearTimeout(timer);
  }, [filter, isAsking]);
}

export function EventsView() {
  useFilterNews();
  const isUnknown = stats.value !== undefined && figures.value === undefined;
  const open = isUnknown ? undefined : openEvent.value;
  return (
    <div class={`events ${open ? "with-panel" : ""}`}>
      <section class="list card" aria-labelledby="events-title">
        <div class="card-head">
          <h2 id="events-title">Events</h2>
          <LineState />
        </div>
        <Tools />
        <KindChoices />
        {isUnknown ? <NoSuchQueue /> : null}
        <EventGrid rows={shown.value} empty={emptyText()} />
        <Foot />
      </section>
      {open ? <EventPanel key={`${open.dsid}/${open.id}`} dsid={open.dsid} id={open.id} /> : null}
    </div>
  );
}
