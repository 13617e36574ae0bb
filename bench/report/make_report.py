#!/usr/bin/env python3
"""Makes report.txt, report.json and report.html from what the benchmarks have written."""

import argparse
import datetime
import json
import pathlib
import re
import subprocess

import page
import text
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
    shown = subprocess.run(command, check=True, capture_output=True, text=True).stdout
    return [line for line in shown.splitlines() if not line.endswith(" ")][-1]


def versions_of(systems):
    versions = {}
    for system in systems:
        for begin, package in PACKAGES.items():
            if system["name"].startswith(begin):
                versions[system["name"]] = f"Debian package {package_version(package)}"
    return versions


def benchmarks_in(file):
    """What a Google Benchmark program wrote; its summaries only, where it repeats."""
    found = json.loads(file.read_text())["benchmarks"]
    summaries = [b for b in found if b.get("aggregate_name") == "median"]
    return [{"name": without_settings(b["name"]),
             **{k: b[k] for k in ("real_time", "cpu_time", "time_unit")}}
            for b in (summaries or found) if "real_time" in b]


def without_settings(name):
    """A benchmark's name without what says how it was run."""
    return re.sub(r"/(iterations:\d+|repeats:\d+|min_time:[\d.]+|(manual|real|process)_time)|"
                  r"_median$", "", name)


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--systems", type=pathlib.Path, required=True, help="from queue_systems")
    parser.add_argument("--micro", type=pathlib.Path, nargs="*", default=[], help="from *_bench")
    parser.add_argument("--texts", type=pathlib.Path, nargs="*", default=[], help="other tables")
    parser.add_argument("--out", type=pathlib.Path, required=True, help="folder of the report")
    return parser.parse_args()


def main():
    arguments = parse_arguments()
    measured = json.loads(arguments.systems.read_text())
    report = {
        "date": datetime.date.today().strftime("%-d %B %Y"),
        "versions": versions_of(measured["systems"]),
        "micro": {file.stem: benchmarks_in(file) for file in arguments.micro},
        "texts": {file.stem: file.read_text() for file in arguments.texts},
        "measured": measured,
    }
    figures = Figures(measured)
    (arguments.out / "report.json").write_text(json.dumps(report, indent=2) + "\n")
    (arguments.out / "report.txt").write_text(text.render(report, figures) + "\n")
    (arguments.out / "report.html").write_text(page.render(report, figures))


if __name__ == "__main__":
    main()
