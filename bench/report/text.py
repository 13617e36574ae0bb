"""The report as text of at most 96 columns: ratios first, then what they are made of."""

import textwrap

from bars import all_bars, summary
from figures import (OPERATIONS, PROMISES, disturbance_words, machine_words, method_words,
                     producers, rate_words, ratio_words, size_words, time_words)

WIDTH = 96
NAME = 27


def paragraph(words, indent=""):
    return textwrap.fill(words, WIDTH, initial_indent=indent, subsequent_indent=indent)


def ratio_head(figures):
    groups = "".join("   " + producers(w).center(26, "─") for w in figures.workers)
    columns = "".join("   " + "".join(o.rjust(8 if o == "produce" else 9) for o in OPERATIONS)
                      for _ in figures.workers)
    return [" " * NAME + groups, " " * NAME + columns]


def ratio_row(figures, promise, system, size):
    line = "  " + system.ljust(NAME - 2)
    for workers in figures.workers:
        line += "   "
        for operation in OPERATIONS:
            ratio = figures.ratio(promise, system, size, workers, operation)
            line += ratio_words(ratio).rjust(8 if operation == "produce" else 9)
    return line


def ratio_table(figures, size):
    heading = "speed, EventSystem's first row of each group being 1; 2 is twice as fast"
    lines = [f"{size_words(size)}: {heading}", ""] + ratio_head(figures)
    for promise, words in PROMISES.items():
        lines.append(words)
        lines += [ratio_row(figures, promise, name, size) for name in figures.names(promise)]
    return lines + [""]


def absolute_row(figures, system, size, workers):
    line = "  " + system.ljust(NAME - 2)
    for operation in OPERATIONS:
        cell = figures.operation(system, size, workers, operation)
        words = ("-", "", "") if cell is None else (
            rate_words(cell["per_second"]), time_words(cell["p50_us"]), time_words(cell["p99_us"]))
        line += words[0].rjust(7) + words[1].rjust(8) + words[2].rjust(8)
    return line.rstrip()


def absolute_table(figures, size, workers):
    lines = [f"{size_words(size)}, {producers(workers)}", "",
             " " * NAME + "".join("  " + o.center(21, "─") for o in OPERATIONS),
             " " * NAME + ("/s".rjust(7) + "p50".rjust(8) + "p99".rjust(8)) * len(OPERATIONS)]
    for promise, words in PROMISES.items():
        lines.append(words)
        lines += [absolute_row(figures, n, size, workers) for n in figures.names(promise)]
    return lines + [""]


def settings_list(figures, versions):
    lines = ["What was measured", ""]
    for system in figures.systems:
        lines.append(f"  {system['name']} ({versions.get(system['name'], 'this source tree')})")
        lines.append(paragraph(system["settings"], "    "))
        lines.append(paragraph(f"produce: {system['produce']}; read: {system['read']}; "
                               f"delete: {system['delete']}", "    "))
        why_not = figures.why_not(system["name"])
        if why_not:
            lines.append(f"    NOT MEASURED: {why_not}")
    return lines + [""]


def micro_table(name, benchmarks):
    lines = [f"{name} (one thread, time of one call)", ""]
    for each in benchmarks:
        unit = each["time_unit"].replace("us", "µs")
        lines.append(f"  {each['name']:<60} {each['real_time']:>14,.1f} {unit}")
    return lines + [""]


def other_text(name, text):
    return [name, ""] + text.rstrip().splitlines() + [""]


def bar_table(bars):
    lines = ["What a call may cost: " + summary(bars), "",
             f"  {'':<50} {'measured':>9} {'bar':>7}  {'':<13} beside"]
    for bar in bars:
        measured, limit = bar.words()
        lines.append(f"  {bar.what:<50} {measured:>9} {limit:>7}  {bar.verdict():<13} "
                     f"{bar.beside}".rstrip())
    return lines + [""]


def left_out_list(left_out):
    lines = ["Left out", ""] if left_out else ["Nothing was left out."]
    return lines + [paragraph(each, "  ") for each in left_out] + [""]


def systems_part(report, figures):
    lines = machine_words(figures)
    if disturbance_words(figures):
        lines.append(paragraph(disturbance_words(figures)))
    lines.append("")
    for size in figures.sizes:
        lines += ratio_table(figures, size)
    lines += [paragraph(method_words(figures)), "",
              "In figures: events a second, and how long one call takes", ""]
    for size in figures.sizes:
        for workers in figures.workers:
            lines += absolute_table(figures, size, workers)
    return lines + settings_list(figures, report["versions"])


def render(report, figures):
    title = "EventSystem's queue beside what one would use instead"
    lines = [title + report["date"].rjust(WIDTH - len(title)), "", f"Built as {report['build']}"]
    if figures:
        lines += systems_part(report, figures)
    lines += bar_table(all_bars(report))
    for name, benchmarks in report["micro"].items():
        lines += micro_table(name, benchmarks)
    for name, text in report["texts"].items():
        lines += other_text(name, text)
    lines += left_out_list(report["left_out"])
    return "\n".join(lines)
