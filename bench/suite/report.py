"""Prints the table, and publishes it with the figures, the plot and the machine."""

import json
import re
import shutil
import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

from workloads import KEYS

HEADINGS = ("Workload", "Encoder", "Compared", "Medians", "Ratio", "Range", "Target", "")
BEGIN, END = "<!-- bench/run begins -->", "<!-- bench/run ends -->"


def number(value):
    return f"{value:,.0f}" if value >= 100 else f"{value:.3g}"


def cells(row):
    ratio = "" if row.ratio is None else number(row.ratio)
    spread = ""
    if len(row.ratios) > 1:
        spread = f"{number(min(row.ratios))} to {number(max(row.ratios))}"
    target = "" if row.limit is None else f"{row.comparison} {row.limit:g}"
    return (row.workload, row.encoder, row.quantity, row.values, ratio, spread, target, row.verdict)


def summary(rows):
    verdicts = [row.verdict for row in rows if row.limit is not None]
    return (f"{verdicts.count('ok')} of {len(verdicts)} targets met, "
            f"{verdicts.count('missed')} missed, {verdicts.count('not measured')} not measured")


def plain_table(rows):
    lines = [HEADINGS, *(cells(row) for row in rows)]
    widths = [max(len(line[column]) for line in lines) for column in range(len(HEADINGS))]
    text = ["  ".join(cell.ljust(width) for cell, width in zip(line, widths)).rstrip()
            for line in lines]
    return "\n".join([*text, summary(rows)])


def markdown_table(rows):
    lines = ["| " + " | ".join(HEADINGS) + " |", "|" + "---|" * len(HEADINGS)]
    lines += ["| " + " | ".join(cells(row)) + " |" for row in rows]
    return "\n".join(line.replace("<=", "&le;").replace(">=", "&ge;") for line in lines)


def origins(workloads):
    """Which command measured what: parts of the table may have been measured anew."""
    keys_of = {}
    for key in sorted(workloads, key=list(KEYS).index):
        entry = workloads[key]
        origin = (entry["command"], entry["revision"], entry["date"])
        keys_of.setdefault(origin, []).append(key)
    return "\n".join(f"- `{command}` at revision {revision} on {date}: {', '.join(keys)}"
                     for (command, revision, date), keys in keys_of.items())


def by_machine(workloads):
    """Only what was measured on one machine can be compared."""
    parts = {}
    for key, entry in workloads.items():
        parts.setdefault(tuple(entry["machine"].items()), {})[key] = entry
    return parts


def machine_section(machine, workloads):
    lines = "\n".join(f"| {name} | {value} |" for name, value in machine)
    return f"| Machine | |\n|---|---|\n{lines}\n\nMeasured there by\n\n{origins(workloads)}"


def page_section(results, rows):
    return "\n\n".join([
        BEGIN,
        "![Throughput, file sizes and times compared](performance.svg)",
        *(machine_section(machine, workloads)
          for machine, workloads in by_machine(results["workloads"]).items()),
        markdown_table(rows),
        summary(rows) + ".",
        END])


@dataclass
class Publication:
    """Where figures, plot and page go."""

    figures: Path
    plot: Path
    page: Path
    script: Path

    @staticmethod
    def recorded(root):
        return Publication(root / "bench/results.json", root / "docs/performance.svg",
                           root / "docs/performance.md", root / "bench/plot.py")

    @staticmethod
    def tried(root):
        """A place of its own for what is no whole run."""
        folder = root / "build/bench/try"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir(parents=True)
        shutil.copy(root / "docs/performance.md", folder)
        return Publication(folder / "results.json", folder / "performance.svg",
                           folder / "performance.md", root / "bench/plot.py")

    def earlier_workloads(self):
        if not self.figures.exists():
            return {}
        return json.loads(self.figures.read_text())["workloads"]

    def save(self, results):
        self.figures.write_text(json.dumps(results, indent=1) + "\n")

    def publish(self, results, rows):
        results["table"] = [dict(zip((*HEADINGS[:-1], "Verdict"), cells(row))) for row in rows]
        self.save(results)
        page = self.page.read_text()
        section = page_section(results, rows)
        pattern = re.escape(BEGIN) + ".*" + re.escape(END)
        self.page.write_text(re.sub(pattern, lambda _: section, page, flags=re.DOTALL))
        drawn = subprocess.run([sys.executable, self.script, self.figures, self.plot])
        if drawn.returncode != 0:
            print("The plot could not be drawn", file=sys.stderr)
        print(f"Written: {self.figures}, {self.page}")
