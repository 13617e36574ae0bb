"""Throughput and latency of every system as SVG: dots on a logarithmic axis, one panel for each
operation and number of producers."""

import io
import math

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
from matplotlib.lines import Line2D  # noqa: E402
from matplotlib.ticker import FuncFormatter, LogLocator, NullLocator  # noqa: E402

from figures import OPERATIONS, producers, size_words  # noqa: E402

OURS = "#0b6e4f"
OTHERS = "#64748b"
GRID = "#e2e8f0"
INK = "#1e293b"


def rate_tick(per_second):
    return f"{per_second / 1e6:g}M" if per_second >= 1e6 else (
        f"{per_second / 1e3:g}k" if per_second >= 1e3 else f"{per_second:g}")


def time_tick(microseconds):
    return f"{microseconds / 1e6:g} s" if microseconds >= 1e6 else (
        f"{microseconds / 1e3:g} ms" if microseconds >= 1e3 else f"{microseconds:g} µs")


def colour(name):
    return OURS if name.startswith("EventSystem") else OTHERS


def say_not_measured(axes, row):
    axes.text(0.02, row, "not measured", transform=axes.get_yaxis_transform(), va="center",
              fontsize=8, style="italic", color=OTHERS)


def dots(axes, figures, names, workers, operation):
    for row, name in enumerate(names):
        values = [figures.operation(name, s, workers, operation) for s in figures.sizes]
        if None in values:
            say_not_measured(axes, row)
            continue
        rates = [v["per_second"] for v in values]
        axes.plot(rates, [row] * len(rates), color=colour(name), lw=1.2, alpha=0.5)
        axes.plot(rates[0], row, "o", color=colour(name), ms=7)
        axes.plot(rates[-1], row, "o", color=colour(name), ms=7, mfc="white", mew=1.6)


def bars(axes, figures, names, workers, operation):
    for row, name in enumerate(names):
        values = [figures.operation(name, s, workers, operation) for s in figures.sizes]
        if None in values:
            say_not_measured(axes, row)
            continue
        for offset, value in zip((-0.17, 0.17), values):
            ends = [value["p50_us"], value["p99_us"]]
            axes.plot(ends, [row + offset] * 2, color=colour(name), lw=1.2, alpha=0.5)
            fill = colour(name) if offset < 0 else "white"
            axes.plot(ends[0], row + offset, "o", color=colour(name), ms=5.5, mfc=fill, mew=1.4)
            axes.plot(ends[1], row + offset, "|", color=colour(name), ms=8, mew=1.6)


def style(axes, names, words):
    axes.set_xscale("log")
    axes.set_ylim(len(names) - 0.5, -0.5)
    axes.set_yticks(range(len(names)))
    axes.set_yticklabels(names)
    for label, name in zip(axes.get_yticklabels(), names):
        label.set_color(colour(name) if name.startswith("EventSystem") else INK)
        label.set_fontweight("bold" if name.startswith("EventSystem") else "normal")
    axes.xaxis.set_major_locator(LogLocator(base=10, numticks=7))
    axes.xaxis.set_minor_locator(NullLocator())
    axes.xaxis.set_major_formatter(FuncFormatter(lambda value, _: words(value)))
    axes.grid(axis="x", color=GRID, lw=0.8)
    axes.set_axisbelow(True)
    axes.tick_params(length=0, labelsize=9, colors=INK, labelbottom=True)
    for spine in axes.spines.values():
        spine.set_visible(False)


def whole_decades(axes):
    low, high = (math.log10(end) for end in axes.get_xlim())
    axes.set_xlim(10 ** math.floor(low), 10 ** math.ceil(high))


def legend(figure, figures, latency):
    small, large = (size_words(s) for s in (figures.sizes[0], figures.sizes[-1]))
    marks = [Line2D([], [], marker="o", ls="", color=INK, label=small),
             Line2D([], [], marker="o", ls="", color=INK, mfc="white", label=large)]
    if latency:
        marks.append(Line2D([], [], marker="|", ls="", ms=9, mew=1.6, color=INK,
                            label="p99 of the same"))
    figure.legend(handles=marks, loc="upper right", ncol=3, frameon=False, fontsize=9,
                  handletextpad=0.2)


def draw(figures, promise, latency):
    """A figure: calls a second, or how long half of the calls and 99 of 100 took."""
    names = figures.names(promise)
    height = 1.2 + len(figures.workers) * (0.36 * len(names) + 0.75)
    figure, grid = plt.subplots(len(figures.workers), len(OPERATIONS), figsize=(11, height),
                                sharex="col", sharey=True, squeeze=False)
    for row, workers in zip(grid, figures.workers):
        for axes, operation in zip(row, OPERATIONS):
            (bars if latency else dots)(axes, figures, names, workers, operation)
            style(axes, names, time_tick if latency else rate_tick)
            axes.set_title(f"{operation}, {producers(workers)}", fontsize=10, loc="left", color=INK)
    what = "time of one call: less is better" if latency else "events a second: more is better"
    figure.suptitle(what, x=0.01, ha="left", fontsize=11, color=INK)
    legend(figure, figures, latency)
    for axes in grid[0]:
        whole_decades(axes)
    figure.tight_layout(rect=(0, 0, 1, 0.98), h_pad=2.0)
    return figure


def svg(figure):
    """The figure as the text of an SVG file, in bytes."""
    buffer = io.BytesIO()
    figure.savefig(buffer, format="svg", metadata={"Date": None})
    plt.close(figure)
    return buffer.getvalue()
