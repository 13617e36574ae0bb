import type { Signal } from "@preact/signals";
import { duration, grouped, roundDuration } from "../format";
import { type Reading, type Sample, samples } from "../state/history";
import { Chart } from "../ui/Chart";

const ranges: [string, number][] = [
  ["10 min", 600],
  ["1 h", 3600],
  ["all", Number.POSITIVE_INFINITY],
];

const countSteps = Array.from({ length: 12 }, (_, power) =>
  [1, 2, 5].map((n) => n * 10 ** power),
).flat();

const day = 86_400;
const ageSteps = [1, 2, 5, 10, 30, 60, 120, 300, 600, 1800, 3600, 7200, 21_600, 43_200].concat(
  [1, 2, 5, 10, 20, 50, 100, 200, 500, 1000, 5000, 10_000].map((days) => days * day),
);

type Pick = (reading: Reading) => number | undefined;

function seriesOf(list: Sample[], queue: string, pick: Pick): (number | null)[] {
  return list.map((sample) => {
    const reading = sample.queues.get(queue);
    return reading ? (pick(reading) ?? null) : null;
  });
}

function words(name: string, values: (number | null)[], format: (value: number) => string): string {
  const known = values.filter((value) => value !== null);
  const last = known.at(-1);
  if (last === undefined) return `${name}: nothing yet`;
  const least = format(Math.min(...known));
  const most = format(Math.max(...known));
  return `${name}: now ${format(last)}, between ${least} and ${most}`;
}

export function RangeChoice({ range }: { range: Signal<number> }) {
  return (
    <fieldset class="choices">
      <legend class="unseen">Time shown</legend>
      {ranges.map(([name, seconds]) => (
        <button
          key={name}
          type="button"
          aria-pressed={range.value === seconds}
          onClick={() => (range.value = seconds)}
        >
          {name}
        </button>
      ))}
    </fieldset>
  );
}

export function HistoryCharts({ queue, seconds }: { queue: string; seconds: number }) {
  const now = Date.now() / 1000;
  const recent = samples.value.filter((sample) => now - sample.time <= seconds);
  const times = recent.map((sample) => sample.time);
  const lengths = seriesOf(recent, queue, (reading) => reading.count);
  const ages = seriesOf(recent, queue, (reading) => reading.oldestAge);
  return (
    <>
      <Chart
        title="Events"
        label={words("Events in the queue", lengths, grouped)}
        colour="--accent"
        times={times}
        values={lengths}
        format={grouped}
        steps={countSteps}
        empty="not seen yet"
      />
      <Chart
        title="Age of the oldest"
        label={words("Age of the oldest event", ages, duration)}
        colour="--second"
        times={times}
        values={ages}
        format={roundDuration}
        steps={ageSteps}
        empty="nothing waits"
      />
    </>
  );
}
