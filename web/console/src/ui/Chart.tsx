// One line over time, drawn by uPlot; the words say the same to those who do not see it.

import { useEffect, useRef } from "preact/hooks";
import uPlot from "uplot";
import { timeOfDay } from "../format";
import { clock, theme } from "../state/settings";
import { prefersDark } from "./media";

interface Props {
  title: string;
  label: string;
  colour: string;
  times: number[];
  values: (number | null)[];
  format: (value: number) => string;
  steps: number[]; // between the lines of the scale, in the values' unit
  empty: string; // said where there are no values
}

const height = 150;

// uPlot paints on a canvas, which knows no CSS variables.
function colourOf(place: HTMLElement, css: string): string {
  place.style.color = css;
  const colour = getComputedStyle(place).color;
  place.style.color = "";
  return colour;
}

function scaleOf(least: number | null, most: number | null): uPlot.Range.MinMax {
  if (least === null || most === null) return [0, 1];
  const room = Math.max((most - least) * 0.15, most * 0.05, 1);
  return [Math.max(0, least - room), most + room];
}

// A page that was just opened shows a minute, not its first readings at full width. A single one
// would be shown with the whole day that follows it.
function timesOf({ data: [times] }: uPlot): uPlot.Range.MinMax {
  const last = times.at(-1) ?? Date.now() / 1000;
  return [Math.min(times[0] ?? last, last - 60), last];
}

function lastSeen({ data }: uPlot): number | undefined {
  const values = data[1] ?? [];
  for (let at = values.length - 1; at >= 0; --at) if (values[at] != null) return at;
  return undefined;
}

// The newest value is a dot: it is there when there is no line yet, and says where the line ends.
const newest: uPlot.Series.Points.Filter = (plot) => {
  const at = lastSeen(plot);
  return at === undefined ? null : [at];
};

function optionsOf(place: HTMLElement, props: Props): uPlot.Options {
  const ink = colourOf(place, "var(--muted)");
  const grid = { stroke: colourOf(place, "var(--line)"), width: 1 };
  const line = colourOf(place, `var(${props.colour})`);
  const area = colourOf(place, `color-mix(in srgb, var(${props.colour}) 14%, transparent)`);
  const font = "11px system-ui, sans-serif";
  return {
    width: Math.max(100, place.clientWidth),
    height,
    padding: [8, null, null, null],
    legend: { show: false },
    cursor: {
      y: false,
      sync: { key: "history" },
      points: { size: 6 },
      drag: { x: false, y: false },
    },
    scales: {
      x: { range: timesOf },
      y: { range: (_plot, least, most) => scaleOf(least, most) },
    },
    tzDate: (seconds) =>
      clock.peek() === "utc"
        ? uPlot.tzDate(new Date(seconds * 1e3), "UTC")
        : new Date(seconds * 1e3),
    axes: [
      { stroke: ink, font, grid, ticks: { show: false }, size: 24, space: 76, values: axisTimes },
      {
        stroke: ink,
        font,
        grid,
        ticks: { show: false },
        size: 72,
        space: 28,
        incrs: props.steps,
        values: (plot, ticks) => (lastSeen(plot) === undefined ? [] : ticks.map(props.format)),
      },
    ],
    series: [
      {},
      {
        stroke: line,
        width: 1.6,
        fill: area,
        points: { show: false, filter: newest, size: 6, fill: line },
      },
    ],
  };
}

const axisTimes: uPlot.Axis.Values = [
  [3600, "{HH}:{mm}", null, null, null, null, null, null, 1],
  [60, "{HH}:{mm}", null, null, null, null, null, null, 1],
  [1, "{HH}:{mm}:{ss}", null, null, null, null, null, null, 1],
];

// What stands under the cursor, or is the newest.
function readOut(plot: uPlot, place: HTMLElement | null, { format, empty }: Props): void {
  if (!place) return;
  const newest = lastSeen(plot);
  const at = plot.cursor.idx ?? newest;
  const value = at === undefined ? undefined : plot.data[1]?.[at];
  const time = at === undefined ? undefined : plot.data[0][at];
  if (newest === undefined) place.textContent = empty;
  else if (value == null || time === undefined) place.textContent = "";
  else if (at === newest) place.textContent = format(value);
  else place.textContent = `${format(value)} at ${timeOfDay(time * 1000, clock.peek())}`;
}

export function Chart(props: Props) {
  const place = useRef<HTMLDivElement>(null);
  const readout = useRef<HTMLSpanElement>(null);
  const plot = useRef<uPlot | null>(null);
  const data: uPlot.AlignedData = [props.times, props.values];
  const look = `${theme.value} ${clock.value} ${prefersDark.value}`;

  // Drawn anew only when it looks different.
  useEffect(() => {
    const element = place.current;
    if (!element) return;
    const options = optionsOf(element, props);
    const tell = (one: uPlot) => readOut(one, readout.current, props);
    options.hooks = { ready: [tell], setCursor: [tell], setData: [tell] };
    const made = new uPlot(options, data, element);
    plot.current = made;
    const watch = new ResizeObserver(() => {
      if (element.clientWidth > 0) made.setSize({ width: element.clientWidth, height });
    });
    watch.observe(element);
    return () => {
      watch.disconnect();
      made.destroy();
    };
  }, [look]);

  useEffect(() => plot.current?.setData(data));

  return (
    <figure class="chart">
      <figcaption>
        {props.title} <span class="readout" ref={readout} />
      </figcaption>
      <div ref={place} role="img" aria-label={props.label} />
    </figure>
  );
}
