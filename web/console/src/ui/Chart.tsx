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
  const room = Math.max((most - least) * 0.15, most * 0.02, 1);
  return [Math.max(0, least - room), most + room];
}

// A page that was just opened shows a minute, not its first two readings at full width.
function timesOf(first: number, last: number): uPlot.Range.MinMax {
  return [Math.min(first, last - 60), last];
}

function optionsOf(place: HTMLElement, props: Props): uPlot.Options {
  const ink = colourOf(place, "var(--muted)");
  const grid = { stroke: colourOf(place, "var(--line)"), width: 1 };
  const line = colourOf(place, `var(${props.colour})`);
  const area = colourOf(place, `color-mix(in srgb, var(${props.colour}) 14%, transparent)`);
  const font = "11px system-ui, sans-serif";
  return {
    width: Math.max(100, place.clientWidth),
    height,
    legend: { show: false },
    cursor: {
      y: false,
      sync: { key: "history" },
      points: { size: 6 },
      drag: { x: false, y: false },
    },
    scales: {
      x: { range: (_plot, first, last) => timesOf(first, last) },
      y: { range: (_plot, least, most) => scaleOf(least, most) },
    },
    tzDate: (seconds) =>
      clock.peek() === "utc"
        ? uPlot.tzDate(new Date(seconds * 1e3), "UTC")
        : new Date(seconds * 1e3),
    axes: [
      { stroke: ink, font, grid, ticks: { show: false }, size: 28, space: 76, values: axisTimes },
      {
        stroke: ink,
        font,
        grid,
        ticks: { show: false },
        size: 78,
        space: 28,
        incrs: props.steps,
        values: (_plot, ticks) => ticks.map(props.format),
      },
    ],
    series: [{}, { stroke: line, width: 1.6, fill: area, points: { show: false } }],
  };
}

const axisTimes: uPlot.Axis.Values = [
  [3600, "{HH}:{mm}", null, null, null, null, null, null, 1],
  [60, "{HH}:{mm}", null, null, null, null, null, null, 1],
  [1, "{HH}:{mm}:{ss}", null, null, null, null, null, null, 1],
];

// What stands under the cursor.
function readOut(plot: uPlot, place: HTMLElement | null, format: Props["format"]): void {
  if (!place) return;
  const at = plot.cursor.idx;
  const value = at == null ? undefined : plot.data[1]?.[at];
  const time = at == null ? undefined : plot.data[0][at];
  place.textContent =
    value == null || time === undefined
      ? ""
      : `${format(value)} at ${timeOfDay(time * 1000, clock.peek())}`;
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
    options.hooks = { setCursor: [(one) => readOut(one, readout.current, props.format)] };
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
