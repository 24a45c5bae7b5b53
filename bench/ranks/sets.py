"""Makes indices of many files, and measures the commands that take them: sets.py BUILD [FILES...]"""

import json
import os
import re
import subprocess
import sys
import tempfile
import time
import zlib
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
PAGE = ROOT / "docs" / "scaling.md"
BEGIN, END = "<!-- bench/sets begins -->", "<!-- bench/sets ends -->"
COUNTS = (1000, 10000, 100000)
# Fewer than file systems let one file have.
LINKS = 30000
ROOT_INDEX = slice(12, 2800)
COMMANDS = {
    "mox ls --parts": ("ls", "--parts", "set.moxs"),
    "mox verify": ("verify", "set.moxs"),
    "mox check": ("check", "set.moxs"),
    "mox export": ("export", "set.moxs", "set.pvd"),
    "mox join": ("join", "set.moxs", "joined.mox"),
}


def make_set(model, count, folder):
    """All files are the same one: what is in them makes no difference."""
    content = model.read_bytes()
    about = f'"size": {len(content)}, "rootIndex": "{zlib.crc32(content[ROOT_INDEX]):08x}"'
    files = []
    for number in range(count):
        name = f"set.{number}.mox"
        if number % LINKS == 0:
            original = folder / name
            original.write_bytes(content)
        else:
            os.link(original, folder / name)
        files.append(f'    {{"name": "{name}", "ranks": [[{number}, {number}]], {about}}}')
    (folder / "set.moxs").write_text(
        '{\n  "format": "moxwriter partitioned model",\n  "version": 1,\n  "complete": true,\n'
        f'  "ranks": {count},\n  "files": [\n' + ",\n".join(files) + "\n  ]\n}\n")


def run(mox, arguments, folder):
    start = time.monotonic()
    process = subprocess.Popen([mox, *arguments], cwd=folder, stdout=subprocess.DEVNULL,
                               stderr=subprocess.PIPE)
    said = process.stderr.read()
    _, status, usage = os.wait4(process.pid, 0)
    if status != 0:
        sys.exit(f"mox {' '.join(arguments)} failed:\n{said.decode()}")
    return {"seconds": time.monotonic() - start, "processor": usage.ru_utime + usage.ru_stime,
            "bytes": usage.ru_maxrss << 10}


def measure(mox, model, count):
    with tempfile.TemporaryDirectory(prefix="moxwriter-sets-") as name:
        folder = Path(name)
        make_set(model, count, folder)
        results = {"index": (folder / "set.moxs").stat().st_size}
        for command, arguments in COMMANDS.items():
            results[command] = run(mox, arguments, folder)
            print(f"{count} files, {command}: {json.dumps(results[command])}", flush=True)
        entries = (folder / "set.pvd").read_text().count("<DataSet ")
        if entries == 0 or entries % count != 0:
            sys.exit(f"the collection has {entries} entries")
    return results


def row(count, results):
    cells = [f"{results[command]['seconds']:.3g} s ({results[command]['processor']:.3g} s), "
             f"{results[command]['bytes'] / 1e6:.0f} MB" for command in COMMANDS]
    return f"| {count:,} | {results['index'] / 1e6:.1f} MB | " + " | ".join(cells) + " |"


def table_of(rows):
    head = "| Files | Index | " + " | ".join(f"`{command}`" for command in COMMANDS) + " |"
    return "\n".join([head, "|" + "---|" * (len(COMMANDS) + 2), *rows])


def publish(table, size):
    section = "\n\n".join([BEGIN, f"Time, of it the processor's, and memory, for files of {size:,} bytes each:", table, END])
    text, count = re.subn(re.escape(BEGIN) + ".*" + re.escape(END), lambda _: section,
                          PAGE.read_text(), flags=re.DOTALL)
    if count != 1:
        sys.exit(f"{PAGE} has no place for the table")
    PAGE.write_text(text)


def main():
    build = Path(sys.argv[1]).resolve()
    counts = tuple(int(count) for count in sys.argv[2:]) or COUNTS
    with tempfile.TemporaryDirectory(prefix="moxwriter-sets-") as folder:
        subprocess.run([build / "bench" / "bench_moxwriter", "transient", "--edge", "2", "--steps", "1",
                        "--output", folder], check=True, stdout=subprocess.DEVNULL)
        model = Path(folder) / "result.mox"
        table = table_of([row(count, measure(build / "tools/mox/mox", model, count))
                          for count in counts])
        print(table)
        if counts == COUNTS:
            publish(table, model.stat().st_size)


if __name__ == "__main__":
    main()
