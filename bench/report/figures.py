"""What the tables and charts need from the measurements: looked up, related, put in words."""

OPERATIONS = ("produce", "read", "delete")
PROMISES = {
    "durable": "Survives power loss",
    "relaxed": "Power loss may take the newest",
}


class Figures:
    """The measurements of queue_systems, as it wrote them."""

    def __init__(self, measured):
        self.machine = measured["machine"]
        self.milliseconds = measured["milliseconds"]
        self.systems = measured["systems"]
        self._cells = {(c["system"], c["bytes"], c["workers"]): c for c in measured["cells"]}
        self.sizes = sorted({c["bytes"] for c in measured["cells"]})
        self.workers = sorted({c["workers"] for c in measured["cells"]})

    def names(self, promise):
        return [s["name"] for s in self.systems if s["promise"] == promise]

    def base(self, promise):
        """What the others of the same promise are compared with: this library's first."""
        return self.names(promise)[0]

    def operation(self, system, size, workers, operation):
        """The figures of one operation, or None where there are none."""
        return self._cells[system, size, workers].get(operation)

    def ratio(self, promise, system, size, workers, operation):
        """How many times as many events a second as the base."""
        figures = self.operation(system, size, workers, operation)
        base = self.operation(self.base(promise), size, workers, operation)
        if figures is None or base is None:
            return None
        return figures["per_second"] / base["per_second"]

    def why_not(self, system):
        """Why a system has no figures, or not all of them; or None."""
        refused = next(s["refused"] for s in self.systems if s["name"] == system)
        cells = (c for c in self._cells.values() if c["system"] == system)
        return refused or next((c["not_measured"] for c in cells if "not_measured" in c), None)

    def _operations(self):
        return [c[o] for c in self._cells.values() for o in OPERATIONS if o in c]

    def rounds(self):
        """How often the operations were measured: the fewest and the most rounds."""
        rounds = [o["rounds"] for o in self._operations()]
        return min(rounds, default=0), max(rounds, default=0)

    def spreads(self):
        """By how much the rounds of each operation differ, as a factor, in rising order."""
        return sorted(o["per_second_highest"] / o["per_second_lowest"] for o in self._operations())


def producers(count):
    return f"{count} producer" + ("" if count == 1 else "s")


def size_words(size):
    return f"{size}-byte events" if size < 1000 else f"{size / 1000:g} KB events"


def ratio_words(ratio):
    if ratio is None:
        return "-"
    if ratio < 0.01:
        return "<0.01"
    if ratio >= 9.95:
        return f"{ratio:.0f}"
    return f"{ratio:.1f}" if ratio >= 0.995 else f"{ratio:.2f}"


def rate_words(per_second):
    """Events a second in five characters at most."""
    if per_second >= 999_500:
        return f"{per_second / 1e6:.1f}M"
    if per_second >= 9_950:
        return f"{per_second / 1e3:.0f}k"
    return f"{per_second / 1e3:.1f}k" if per_second >= 999.5 else f"{per_second:.0f}"


def time_words(microseconds):
    if microseconds >= 999_500:
        return f"{microseconds / 1e6:.1f} s"
    if microseconds >= 9_950:
        return f"{microseconds / 1e3:.0f} ms"
    if microseconds >= 999.5:
        return f"{microseconds / 1e3:.1f} ms"
    return f"{microseconds:.0f} µs" if microseconds >= 9.95 else f"{microseconds:.1f} µs"


def machine_words(figures):
    machine = figures.machine
    return [
        f"{machine['cores']} x {machine['processor']}, {machine['kernel']}, "
        f"{machine['file_system']}",
        f"One flush of that disk (fdatasync of 4 KiB): {time_words(machine['flush_p50_us'])} in "
        f"the middle, 99 % below {time_words(machine['flush_p99_us'])}",
    ]


def disturbance_words(figures):
    """A warning, or nothing: figures of a busy machine say more about it than about the systems."""
    share = figures.machine["used_by_others"]
    if share < 0.1:
        return ""
    return (f"CAUTION: other programs took {100 * share:.0f} % of the processors meanwhile. "
            "Measure again on a quiet machine before you believe a ratio.")


def method_words(figures):
    fewest, most = figures.rounds()
    rounds = str(most) if fewest == most else f"{fewest} to {most}"
    words = f"Each operation ran {rounds} x {figures.milliseconds} ms, the systems in turns."
    if most > 1:
        spreads = figures.spreads()
        middle, widest = spreads[len(spreads) // 2], spreads[-1]
        words += (
            " Shown is the median round. From its slowest to its fastest round a cell differs "
            f"by a factor of {middle:.1f} in the middle, {widest:.1f} at most."
        )
    return words
