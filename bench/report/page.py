"""The report as one HTML page that needs nothing else."""

from base64 import b64encode
from html import escape

from bars import all_bars, summary
from figures import (OPERATIONS, PROMISES, disturbance_words, machine_words, method_words,
                     producers, rate_words, ratio_words, size_words, time_words)

STYLE = """
:root { color-scheme: light dark; --ink: #1e293b; --paper: #f8fafc; --card: #fff;
        --line: #e2e8f0; --soft: #64748b; --ours: #0b6e4f; }
@media (prefers-color-scheme: dark) {
  :root { --ink: #e2e8f0; --paper: #0f172a; --card: #1e293b;
          --line: #334155; --soft: #94a3b8; --ours: #4ade80; }
}
body { font: 15px/1.5 system-ui, sans-serif; color: var(--ink); background: var(--paper);
       max-width: 1120px; margin: 0 auto; padding: 24px 16px 64px; }
h1 { font-size: 26px; margin: 0 0 4px; }
h2 { font-size: 19px; margin: 36px 0 8px; }
p { max-width: 75ch; }
.soft { color: var(--soft); }
.chart { background: #fff; border: 1px solid var(--line); border-radius: 8px; display: block;
         box-sizing: border-box; width: 100%; height: auto; padding: 12px; margin: 12px 0; }
.wide { overflow-x: auto; }
pre { overflow-x: auto; font-size: 13px; line-height: 1.35; }
table { border-collapse: collapse; font-variant-numeric: tabular-nums; font-size: 14px;
        background: var(--card); }
th, td { padding: 4px 10px; border-bottom: 1px solid var(--line); text-align: right;
         white-space: nowrap; }
th:first-child, td:first-child { text-align: left; }
thead th { color: var(--soft); font-weight: 600; }
tr.group td { font-weight: 600; padding-top: 14px; }
tr.ours td:first-child { color: var(--ours); font-weight: 600; }
td.text { white-space: normal; text-align: left; }
thead .span { text-align: center; }
"""


def row(cells, kind=""):
    return f'<tr class="{kind}">' + "".join(f"<td>{c}</td>" for c in cells) + "</tr>"


def kind_of(name):
    return "ours" if name.startswith("EventSystem") else ""


def grouped(figures, columns, cells_of):
    rows = []
    for promise, words in PROMISES.items():
        rows.append(f'<tr class="group"><td colspan="{columns + 1}">{words}</td></tr>')
        rows += [row([escape(n)] + cells_of(promise, n), kind_of(n))
                 for n in figures.names(promise)]
    return "".join(rows)


def table(head, body):
    return f'<div class="wide"><table><thead>{head}</thead><tbody>{body}</tbody></table></div>'


def head_of(groups, columns):
    spans = "".join(f'<th class="span" colspan="{len(columns)}">{g}</th>' for g in groups)
    names = "".join(f"<th>{c}</th>" for c in columns) * len(groups)
    return f"<tr><th></th>{spans}</tr><tr><th></th>{names}</tr>"


def ratio_table(figures, size):
    def cells(promise, name):
        return [ratio_words(figures.ratio(promise, name, size, w, o))
                for w in figures.workers for o in OPERATIONS]

    head = head_of([producers(w) for w in figures.workers], OPERATIONS)
    return f"<h3>{size_words(size)}</h3>" + table(head, grouped(figures, 6, cells))


def absolute_table(figures, size, workers):
    def cells(_, name):
        found = [figures.operation(name, size, workers, o) for o in OPERATIONS]
        return [w for f in found for w in (("-", "", "") if f is None else (
            rate_words(f["per_second"]), time_words(f["p50_us"]), time_words(f["p99_us"])))]

    head = head_of(OPERATIONS, ("/s", "p50", "p99"))
    title = f"<h3>{size_words(size)}, {producers(workers)}</h3>"
    return title + table(head, grouped(figures, 9, cells))


def chart_sections(figures):
    import charts  # needs matplotlib, which takes a second; pylint: disable=import-outside-toplevel
    parts = []
    for promise, words in PROMISES.items():
        parts.append(f"<h2>{words}</h2>")
        for latency in (False, True):
            what = "time of one call" if latency else "events a second"
            drawn = b64encode(charts.svg(charts.draw(figures, promise, latency))).decode()
            parts.append(f'<img class="chart" alt="{words}: {what}, of every system" '
                         f'src="data:image/svg+xml;base64,{drawn}">')
    return "".join(parts)


def settings_table(figures, versions):
    rows = ""
    for system in figures.systems:
        why_not = figures.why_not(system["name"])
        settings = system["settings"] + (f". Not measured: {why_not}" if why_not else "")
        texts = (settings, system["produce"], system["read"], system["delete"])
        version = versions.get(system["name"], "this source tree")
        rows += (f'<tr class="{kind_of(system["name"])}"><td>{escape(system["name"])}<br>'
                 f'<span class="soft">{escape(version)}</span></td>'
                 + "".join(f'<td class="text">{escape(t)}</td>' for t in texts) + "</tr>")
    columns = ("system", "settings", *OPERATIONS)
    return table("<tr>" + "".join(f"<th>{c}</th>" for c in columns) + "</tr>", rows)


def micro_section(name, benchmarks):
    rows = "".join(row([escape(b["name"]), f"{b['real_time']:,.1f} {b['time_unit']}"])
                   for b in benchmarks)
    return f"<h2>{escape(name)}</h2>" + table("<tr><th>one call</th><th>time</th></tr>", rows)


def bar_section(bars):
    rows = "".join(row([escape(bar.what), escape(bar.beside), *map(escape, bar.words()),
                        bar.verdict()]) for bar in bars)
    head = "".join(f"<th>{c}</th>" for c in ("call", "beside", "measured", "bar", ""))
    return f"<h2>What a call may cost: {summary(bars)}</h2>" + table(f"<tr>{head}</tr>", rows)


def left_out_section(left_out):
    items = "".join(f"<li>{escape(each)}</li>" for each in left_out)
    return f"<h2>Left out</h2><ul>{items}</ul>" if left_out else ""


def machine_part(figures):
    machine = "<br>".join(map(escape, machine_words(figures)))
    return [f'<p class="soft">{machine}</p>',
            f"<p><strong>{escape(disturbance_words(figures))}</strong></p>"]


def systems_part(report, figures):
    parts = machine_part(figures)
    parts.append("<h2>Ratios</h2><p>Events a second, EventSystem's first row of each group being "
                 "1: a system with 2 is twice as fast, one with 0.50 half as fast.</p>")
    parts += [ratio_table(figures, size) for size in figures.sizes]
    parts += [f"<p>{escape(method_words(figures))}</p>", chart_sections(figures)]
    parts.append("<h2>In figures</h2>")
    parts += [absolute_table(figures, s, w) for s in figures.sizes for w in figures.workers]
    return parts + ["<h2>What was measured</h2>", settings_table(figures, report["versions"])]


def render(report, figures):
    parts = ["<h1>EventSystem's queue beside what one would use instead</h1>",
             f'<p class="soft">{escape(report["date"])}, built as {escape(report["build"])}</p>']
    if figures:
        parts += systems_part(report, figures)
    parts.append(bar_section(all_bars(report)))
    parts += [micro_section(name, each) for name, each in report["micro"].items()]
    parts += [f"<h2>{escape(n)}</h2><pre>{escape(t)}</pre>" for n, t in report["texts"].items()]
    parts.append(left_out_section(report["left_out"]))
    return ('<!doctype html><html lang="en"><head><meta charset="utf-8">'
            '<meta name="viewport" content="width=device-width, initial-scale=1">'
            f"<title>EventSystem: performance</title><style>{STYLE}</style></head><body>"
            + "\n".join(parts) + "</body></html>\n")
