import { useSignal } from "@preact/signals";
import type { ComponentChildren } from "preact";
import { useEffect } from "preact/hooks";
import type { Event, Queue, Stats } from "../api/types";
import { kindNames } from "../events/kinds";
import { summaryOf } from "../events/summary";
import { visible } from "../events/visible";
import { ageOf, dateTime, duration, grouped, rateFormat, shortTime } from "../format";
import { queue } from "../state/route";
import { stats } from "../state/server";
import { clock } from "../state/settings";
import { gone, inSight } from "../state/stored";
import { held } from "../state/tail";
import { Kind } from "../ui/Kind";
import { HistoryCharts, RangeChoice } from "./HistoryCharts";
import { NearnessMeters } from "./NearnessMeters";
import { queueName } from "./queueName";

function Figure({
  name,
  children,
  note,
}: {
  name: string;
  children: ComponentChildren;
  note: string;
}) {
  return (
    <div class="card figure-card">
      <dt>{name}</dt>
      <dd class="figure">{children}</dd>
      <dd class="note">{note}</dd>
    </div>
  );
}

function oldestOf(queues: Queue[]): number | undefined {
  const dates = queues.flatMap((queue) =>
    queue.oldest === undefined ? [] : [Number(queue.oldest)],
  );
  return dates.length > 0 ? Math.min(...dates) : undefined;
}

function Figures({ now }: { now: Stats }) {
  const oldest = oldestOf(now.queues);
  const damaged = now.queues.reduce((sum, queue) => sum + queue.damaged, 0);
  const queues = now.queues.length;
  const written = now.rates?.written?.["1m"] ?? 0;
  const deleted = now.rates?.deleted?.["1m"] ?? 0;
  const rate = rateFormat(written, deleted);
  return (
    <dl class="figures">
      <Figure
        name="Events in the queues"
        note={
          damaged > 0
            ? `${grouped(damaged)} of them damaged`
            : `in ${queues} queue${queues === 1 ? "" : "s"}`
        }
      >
        {grouped(now.count)}
      </Figure>
      <Figure
        name="Age of the oldest"
        note={oldest === undefined ? "nothing waits" : `since ${dateTime(oldest, clock.value)}`}
      >
        {oldest === undefined ? "–" : ageOf(oldest)}
      </Figure>
      <Figure name="Written" note="mean of the last minute">
        {rate(written)}
      </Figure>
      <Figure name="Deleted" note="mean of the last minute">
        {rate(deleted)}
      </Figure>
      <Figure
        name="Waiting readers"
        note={`${grouped(now.connections)} connection${now.connections === 1 ? "" : "s"}`}
      >
        {grouped(now.waiting)}
      </Figure>
      <Figure name="Running for" note={`${now.version}, durability ${now.durability}`}>
        {duration(Date.now() / 1000 - now.startTime)}
      </Figure>
    </dl>
  );
}

function Rates({ now }: { now: Stats }) {
  const rates = now.rates?.byType ?? {};
  const others = Object.keys(rates).filter((kind) => !kindNames.some((known) => known === kind));
  const most = Math.max(...Object.values(rates), Number.MIN_VALUE);
  const rate = rateFormat(most);
  return (
    <section class="card" aria-labelledby="rates-title">
      <h2 id="rates-title">Written by kind</h2>
      <table class="rates">
        <thead class="unseen">
          <tr>
            <th scope="col">Kind</th>
            <th scope="col">Share</th>
            <th scope="col">Rate</th>
          </tr>
        </thead>
        <tbody>
          {[...kindNames, ...others].map((kind) => (
            <tr key={kind}>
              <th scope="row">
                <Kind name={kind} />
              </th>
              <td class="bar-cell" aria-hidden="true">
                <div class="bar" data-kind={kind}>
                  <div style={{ width: `${(100 * (rates[kind] ?? 0)) / most}%` }} />
                </div>
              </td>
              <td class="figure">{rate(rates[kind] ?? 0)}</td>
            </tr>
          ))}
        </tbody>
      </table>
    </section>
  );
}

function inShort(event: Event): string {
  const { main, details } = summaryOf(event);
  return [main, ...details.slice(0, 1)].join(", ");
}

function Newest() {
  const events = held.value.slice(0, 8);
  useEffect(() => {
    inSight.value = events;
  });
  return (
    <section class="card" aria-labelledby="newest-title">
      <h2 id="newest-title">Newest events{queue.value === "0" ? "" : ` of ${queue.value}`}</h2>
      {events.length === 0 ? <p class="muted">None have been seen yet.</p> : null}
      <ul class="newest">
        {events.map((event) => (
          <li
            key={`${event.dsid}/${event.id}`}
            class={gone.value.has(String(event.id)) ? "gone" : ""}
          >
            <a href={`#/events/${event.dsid}/${event.id}`}>
              <span class="when">{shortTime(event.date, clock.value)}</span>
              <Kind name={event.kind} />
              <span class="what">
                {gone.value.has(String(event.id)) ? <span class="badge">deleted</span> : null}{" "}
                {visible(inShort(event))}
              </span>
            </a>
          </li>
        ))}
      </ul>
    </section>
  );
}

export function Overview() {
  const chosen = useSignal("all");
  const range = useSignal(600);
  const now = stats.value;
  if (!now) return <p class="empty">Waiting for the first figures …</p>;
  return (
    <div class="overview">
      <h2 class="unseen">Overview</h2>
      <Figures now={now} />
      <div class="stack">
        <section class="card charts" aria-labelledby="charts-title">
          <div class="card-head">
            <h2 id="charts-title">While this page is open</h2>
            <RangeChoice range={range} />
            <label>
              <span class="unseen">Queue of the charts</span>
              <select
                value={chosen.value}
                onChange={(event) => (chosen.value = event.currentTarget.value)}
              >
                <option value="all">all queues</option>
                {now.queues.map((queue) => (
                  <option key={queue.dsid} value={String(queue.dsid)}>
                    {queueName(queue)}
                  </option>
                ))}
              </select>
            </label>
          </div>
          <HistoryCharts queue={chosen.value} seconds={range.value} />
        </section>
        <Newest />
      </div>
      <div class="stack">
        <section class="card" aria-labelledby="near-title">
          <h2 id="near-title">Near the limits</h2>
          <NearnessMeters now={now} />
        </section>
        <Rates now={now} />
      </div>
    </div>
  );
}
