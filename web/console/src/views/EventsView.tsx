import { useEffect, useRef } from "preact/hooks";
import { kindNames } from "../events/kinds";
import { visible } from "../events/visible";
import { grouped } from "../format";
import { openEvent } from "../state/route";
import { stats } from "../state/server";
import {
  held,
  isFull,
  kinds,
  type Line,
  line,
  lineTrouble,
  loadOlder,
  missed,
  olderState,
  paused,
  queue,
  reachesBack,
  shown,
  text,
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
  kinds.value = next;
}

function changePause(): void {
  togglePause();
  announce(paused.value ? "The list is paused." : "The list goes on.");
}

function QueueChoice() {
  const queues = stats.value?.queues ?? [];
  const known = queues.some((one) => String(one.dsid) === queue.value);
  return (
    <label class="field">
      <span class="unseen">Queue</span>
      <select value={queue.value} onChange={(event) => (queue.value = event.currentTarget.value)}>
        {known ? null : <option value={queue.value}>data selection {queue.value}</option>}
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
      <button
        type="button"
        aria-pressed={kinds.value.size === 0}
        onClick={() => (kinds.value = new Set())}
      >
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
          onInput={(event) => (text.value = event.currentTarget.value)}
          onKeyDown={(event) => event.key === "Escape" && (text.value = "")}
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

function Older() {
  if (isFull.value) return <span class="muted">the list holds no more</span>;
  if (reachesBack.value === undefined || reachesBack.value === "0") {
    return <span class="muted">all that are stored</span>;
  }
  return (
    <button type="button" disabled={olderState.value === "asking"} onClick={loadOlder}>
      {olderTexts[olderState.value]}
    </button>
  );
}

function Foot() {
  const count =
    shown.value.length === held.value.length
      ? `${grouped(held.value.length)} events`
      : `${grouped(shown.value.length)} of ${grouped(held.value.length)} events`;
  return (
    <div class="list-foot">
      <span data-testid="count">{count}</span>
      <Older />
    </div>
  );
}

function emptyText(): string {
  if (held.value.length > 0) return "No event in the list matches.";
  return line.value === "live" ? "No events here; new ones appear as they are stored." : "";
}

// The number of matches is told when the filter has come to rest.
function useFilterNews(): void {
  const filter = `${text.value}|${[...kinds.value].join()}`;
  // Only the filter is news.
  useEffect(() => {
    if (filter === "|") return;
    const timer = setTimeout(() => announce(`${shown.peek().length} events match.`), 800);
    return () => clearTimeout(timer);
  }, [filter]);
}

export function EventsView() {
  useFilterNews();
  const open = openEvent.value;
  // A link to an event of another queue brings its queue along.
  useEffect(() => {
    if (open) queue.value = open.dsid;
  }, [open?.dsid]);
  return (
    <div class={`events ${open ? "with-panel" : ""}`}>
      <section class="list card" aria-labelledby="events-title">
        <div class="card-head">
          <h2 id="events-title">Events</h2>
          <LineState />
        </div>
        <Tools />
        <KindChoices />
        <EventGrid rows={shown.value} empty={emptyText()} />
        <Foot />
      </section>
      {open ? <EventPanel key={`${open.dsid}/${open.id}`} dsid={open.dsid} id={open.id} /> : null}
    </div>
  );
}
