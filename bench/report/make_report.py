#!/usr/bin/env python3
"""Makes report.txt, report.json and report.html from what the benchmarks have written. What is
missing or cannot be read is left out and named."""

import argparse
import datetime
import json
import pathlib
import re
import subprocess

import page
import text
from bars import all_bars
from figures import Figures

PACKAGES = {
    "SQLite": "libsqlite3-0",
    "PostgreSQL": "postgresql-[0-9]*",
    "Redis": "redis-server",
    "beanstalkd": "beanstalkd",
    "NATS": "nats-server",
}


def package_version(package):
    """Name and version; of the newest, where a pattern is given."""
    command = ["dpkg-query", "--show", "--showformat=${Package} ${Version}\n", package]
    shown = subprocess.run(command, check=False, capture_output=True, text=True).stdout
    found = [line for line in shown.splitlines() if not line.endswith(" ")]
    return f"Debian package {found[-1]}" if found else "not a Debian package"


def versions_of(systems):
    versions = {}
    for system in systems:
        for begin, package in PACKAGES.items():
            if system["name"].startswith(begin):
                versions[system["name"]] = package_version(package)
    return versions


def benchmarks_in(file):
    """What a Google Benchmark program wrote; its summaries only, where it repeats."""
    found = json.loads(file.read_text())["benchmarks"]
    summaries = [b for b in found if b.get("aggregate_name") == "median"]
    wanted = ("real_time", "cpu_time", "time_unit", "ratio")
    return [{"name": without_settings(b["name"]), **{k: b[k] for k in wanted if k in b}}
            for b in (summaries or found) if "real_time" in b]


def without_settings(name):
    """A benchmark's name without what says how it was run."""
    return re.sub(r"/(iterations:\d+|repeats:\d+|min_time:[\d.]+|(manual|real|process)_time)|"
                  r"_median$", "", name)


class Measured:
    """The files of the programs, as far as they can be read, and what is left out."""

    def __init__(self, folder):
        self.folder = folder
        left_out = folder / "left-out"
        self.left_out = left_out.read_text().splitlines() if left_out.exists() else []

    def read(self, pattern, reader):
        found = {}
        for file in sorted(self.folder.glob(pattern)):
            try:
                found[file.name.split(".")[0]] = reader(file)
            except (ValueError, KeyError) as problem:
                self.left_out.append(f"{file.name}: cannot be read: {problem}")
        return found


def failures(systems):
    """What could not be measured, though the system offers it."""
    reasons = ((s["name"], Figures(systems).why_not(s["name"])) for s in systems["systems"])
    return [f"{name}: {why}" for name, why in reasons
            if why and why.startswith(("failed: ", "there was no time"))]


def collect(folder, build):
    measured = Measured(folder)
    systems = measured.read("systems.json", lambda file: json.loads(file.read_text()))
    systems = systems.get("systems")
    measured.left_out += failures(systems) if systems else []
    return {
        "date": datetime.date.today().strftime("%-d %B %Y"),
        "build": build,
        "versions": versions_of(systems["systems"]) if systems else {},
        "micro": measured.read("*.micro.json", benchmarks_in),
        "texts": measured.read("*.txt", pathlib.Path.read_text),
        "measured": systems,
        "left_out": measured.left_out,
    }


def write_page(out, report, figures):
    """With charts, which need more than Python itself."""
    try:
        (out / "report.html").write_text(page.render(report, figures))
    except Exception as problem:  # pylint: disable=broad-except
        report["left_out"].append(f"report.html: {problem}")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--measured", type=pathlib.Path, required=True, help="the programs' files")
    parser.add_argument("--build", required=True, help="how what is measured was built")
    parser.add_argument("--out", type=pathlib.Path, required=True, help="folder of the report")
    arguments = parser.parse_args()
    report = collect(arguments.measured, arguments.build)
    report["bars"] = [vars(bar) | {"verdict": bar.verdict()} for bar in all_bars(report)]
    figures = Figures(report["measured"]) if report["measured"] else None
    write_page(arguments.out, report, figures)
    (arguments.out / "report.json").write_text(json.dumps(report, indent=2) + "\n")
    (arguments.out / "report.txt").write_text(text.render(report, figures) + "\n")


if __name__ == "__main__":
    main()
