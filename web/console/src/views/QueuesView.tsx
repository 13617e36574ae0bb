import type { Queue } from "../api/types";
import { kindNames } from "../events/kinds";
import { ageOf, dateTime, grouped } from "../format";
import { stats } from "../state/server";
import { clock } from "../state/settings";
import { Wide } from "../ui/Wide";
import { queueName } from "./queueName";

function order(queue: Queue): [string, number][] {
  const rank = (kind: string) => {
    const at = kindNames.indexOf(kind);
    return at < 0 ? kindNames.length : at;
  };
  return Object.entries(queue.types).sort(([a], [b]) => rank(a) - rank(b));
}

function Mixture({ queue }: { queue: Queue }) {
  const parts = order(queue);
  if (queue.count === 0) return <span class="muted">empty</span>;
  const words = parts.map(([kind, count]) => `${kind} ${grouped(count)}`).join(", ");
  return (
    <div class="mixture" role="img" aria-label={words} title={words}>
      {parts.map(([kind, count]) => (
        <div key={kind} data-kind={kind} style={{ flexGrow: count }} />
      ))}
    </div>
  );
}

function QueueRow({ queue }: { queue: Queue }) {
  return (
    <tr>
      <th scope="row">
        <a href={`#/events/${queue.dsid}`}>{queueName(queue)}</a>
        {queue.known ? null : <span class="badge warn">not known</span>}
      </th>
      <td class="figure number">{grouped(queue.count)}</td>
      <td class="figure">{queue.oldest === undefined ? "–" : ageOf(queue.oldest)}</td>
      <td class={queue.damaged > 0 ? "figure number problem" : "figure number"}>
        {grouped(queue.damaged)}
      </td>
      <td class="figure">
        {queue.newest === undefined ? "–" : dateTime(queue.newest, clock.value)}
      </td>
      <td class="figure number">{grouped(queue.highestId)}</td>
      <td class="figure number">{queue.type ?? "–"}</td>
      <td class="wide">
        <Mixture queue={queue} />
      </td>
    </tr>
  );
}

export function QueuesView() {
  const queues = stats.value?.queues ?? [];
  return (
    <section class="card" aria-labelledby="queues-title">
      <h2 id="queues-title">Queues</h2>
      <p class="muted">The global queue and the queues of the data selections.</p>
      <Wide label="Table of the queues">
        <table class="data">
          <thead>
            <tr>
              <th scope="col">queue</th>
              <th scope="col" class="number">
                events
              </th>
              <th scope="col">oldest</th>
              <th scope="col" class="number">
                damaged
              </th>
              <th scope="col">newest</th>
              <th scope="col" class="number">
                highest id
              </th>
              <th scope="col" class="number">
                type
              </th>
              <th scope="col">kinds</th>
            </tr>
          </thead>
          <tbody>
            {queues.map((queue) => (
              <QueueRow key={queue.dsid} queue={queue} />
            ))}
          </tbody>
        </table>
      </Wide>
    </section>
  );
}
