"""What a call may cost beside what it cannot do without, and whether it does: pass or MISS.

A bar is looked up in what the programs of the longer tables have written. Where one of them has
written nothing, its bars say so."""

from dataclasses import dataclass

KINDS = ("Legacy", "ImageRep", "LSUStatus", "ServerStatus", "Capacity", "Abilities", "Activity",
         "Audit", "Kelp")
SAMPLES = ("a short event", "a long event")


@dataclass
class Bar:
    what: str
    beside: str
    limit: float
    at_least: bool
    measured: float | None

    def verdict(self):
        if self.measured is None:
            return "not measured"
        good = self.measured >= self.limit if self.at_least else self.measured <= self.limit
        return "pass" if good else "MISS"

    def words(self):
        """What was measured, and the bar."""
        shown = "-" if self.measured is None else f"{self.measured:.2f}"
        return shown, f"{'>=' if self.at_least else '<='} {self.limit:g}"


def ratio(micro, program, name):
    """The counter of this name's benchmark, which says how many times the bare way it takes."""
    found = (b for b in micro.get(program, []) if b["name"] == name)
    return next((b["ratio"] for b in found if "ratio" in b), None)


def times_as_fast(micro, name):
    """How many times as fast the library is as the plain formulation."""
    times = {b["name"]: b["cpu_time"] for b in micro.get("event_text_bench", [])}
    oracle, ours = times.get(f"{name}/oracle"), times.get(f"{name}/ours")
    return oracle / ours if oracle and ours else None


def column(text, row, number):
    """A number of the row of a table that begins with `row`."""
    for line in text.splitlines():
        fields = line.split()
        if fields[:1] == [row]:
            return float(fields[number])
    return None


def database_bars(micro):
    limits = (("newEvent", "strict", "one prepared INSERT and its flush", 1.15),
              ("deleteEvent", "strict", "one prepared DELETE and its flush", 1.1),
              ("getNextEvent", "no_audit_file", "one prepared SELECT", 2),
              ("newEvent", "relaxed", "one prepared INSERT", 1.6))
    return [Bar(f"{call}, {case.replace('_', ' ')}", beside, limit, False,
                ratio(micro, "database_store_bench", f"{call}/{case}/log:0"))
            for call, case, beside, limit in limits]


def memory_bars(micro):
    return [Bar(f"in-memory {call}, {SAMPLES[sample]}, {held:,} held", "one write and one parse",
                1.5, False,
                ratio(micro, "memory_store_bench", f"{call}/sample:{sample}/held:{held}"))
            for call in ("writeEvent", "readEvent") for held in (1000, 100000)
            for sample in range(len(SAMPLES))]


def table_bars(texts):
    durability, startup = texts.get("durability", ""), texts.get("startup", "")
    bars = [Bar("group, 16 threads, each waiting", "strict, 16 threads, events a second", 5, True,
                column(durability, "median", 1))]
    for rows in (10**4, 10**5, 10**6):
        bars.append(Bar(f"start-up with {rows:,} rows", "a bare scan of the same columns", 3, False,
                        column(startup, str(rows), 3)))
    bars.append(Bar("bytes of memory for each id, 1,000,000 rows", "", 64, False,
                    column(startup, str(10**6), 5)))
    return bars


def text_bars(micro):
    return [Bar(f"{verb} of {kind}, times as fast", f"the formulation with {call}", limit, True,
                times_as_fast(micro, f"{verb}/{kind}"))
            for verb, call, limit in (("parse", "sscanf", 8), ("write", "snprintf", 6))
            for kind in KINDS]


def all_bars(report):
    micro, texts = report["micro"], report["texts"]
    return database_bars(micro) + memory_bars(micro) + table_bars(texts) + text_bars(micro)


def summary(bars):
    verdicts = [bar.verdict() for bar in bars]
    counts = ((verdicts.count(verdict), words) for verdict, words in
              (("pass", "passed"), ("MISS", "missed"), ("not measured", "not measured")))
    return ", ".join(f"{count} {words}" for count, words in counts if count)
