import type { KindField, Limits } from "../api/types";
import { bytes, grouped } from "../format";
import { limits, stats } from "../state/server";
import { Kind } from "../ui/Kind";
import { Wide } from "../ui/Wide";
import { NearnessMeters } from "./NearnessMeters";

function Line({ name, value }: { name: string; value: string | undefined }) {
  if (value === undefined) return null;
  return (
    <div>
      <dt>{name}</dt>
      <dd class="figure">{value}</dd>
    </div>
  );
}

const optional = (value: number | undefined, format: (value: number) => string) =>
  value === undefined ? undefined : value === 0 ? "no limit" : format(value);

function Settings({ known }: { known: Limits }) {
  return (
    <dl class="fields figures-list">
      <Line name="most events in the global queue" value={optional(known.countLimit, grouped)} />
      <Line name="highest age, in days" value={optional(known.ageLimitDays, grouped)} />
      <Line name="largest request" value={optional(known.bodyBytes, bytes)} />
      <Line name="most events in one request" value={optional(known.batchEvents, grouped)} />
      <Line name="most connections" value={optional(known.connections, grouped)} />
      <Line name="most waiting readers" value={optional(known.waiting, grouped)} />
      <Line name="requests a second" value={optional(known.requestsPerSecond, grouped)} />
    </dl>
  );
}

function FieldRow({ field }: { field: KindField }) {
  return (
    <tr>
      <th scope="row">
        <code>{field.key}</code>
      </th>
      <td>{field.type}</td>
      <td>{field.required ? "required" : "optional"}</td>
      <td class="figure">{field.mostBytes ? `${grouped(field.mostBytes)}\u00a0B` : "–"}</td>
      <td class="wide">{field.help ?? ""}</td>
    </tr>
  );
}

interface KindProps {
  name: string;
  summary: string | undefined;
  fields: KindField[];
}

function KindLimits({ name, summary, fields }: KindProps) {
  const count = fields.length === 1 ? "1 field" : `${fields.length} fields`;
  return (
    <details>
      <summary>
        <Kind name={name} /> <span class="muted">{summary ? `${summary}, ${count}` : count}</span>
      </summary>
      <Wide label={`Fields of ${name}`}>
        <table class="data">
          <thead>
            <tr>
              <th scope="col">field</th>
              <th scope="col">type</th>
              <th scope="col">presence</th>
              <th scope="col">longest</th>
              <th scope="col">meaning</th>
            </tr>
          </thead>
          <tbody>
            {fields.map((field) => (
              <FieldRow key={field.key} field={field} />
            ))}
          </tbody>
        </table>
      </Wide>
    </details>
  );
}

export function LimitsView() {
  const now = stats.value;
  const known = limits.value;
  return (
    <div class="columns">
      <section class="card" aria-labelledby="near-title">
        <h2 id="near-title">How near they are</h2>
        {now ? <NearnessMeters now={now} /> : <p class="muted">Waiting for figures …</p>}
      </section>
      <section class="card" aria-labelledby="limits-title">
        <h2 id="limits-title">Limits in force</h2>
        {known ? <Settings known={known} /> : <p class="muted">Waiting for the limits …</p>}
      </section>
      <section class="card span" aria-labelledby="kinds-title">
        <h2 id="kinds-title">What an event may hold</h2>
        {Object.entries(known?.kinds ?? {}).map(([name, { summary, fields }]) => (
          <KindLimits key={name} name={name} summary={summary} fields={fields} />
        ))}
      </section>
    </div>
  );
}
