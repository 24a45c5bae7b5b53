"""What was measured, and on what."""

import datetime
import os
import re
import subprocess


def output_of(*command, folder=None):
    return subprocess.run(command, cwd=folder, check=True, capture_output=True,
                          text=True).stdout.strip()


def processor():
    model = re.search(r"^Model name:\s*(.+)$", output_of("lscpu"), re.MULTILINE)
    return model.group(1) if model else "unknown"


def memory_gib():
    return round(os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30)


def revision(root):
    """The commit, marked when other files than those that bench/run writes differ from it."""
    try:
        commit = output_of("git", "rev-parse", "--short", "HEAD", folder=root)
        changes = output_of("git", "status", "--porcelain", "--", ".", ":!bench/results.json",
                            ":!docs/performance.*", folder=root)
    except (OSError, subprocess.CalledProcessError):
        return "unknown"
    return commit + ("-dirty" if changes else "")


def describe(root, folder):
    return {
        "machine": {
            "processor": processor(),
            "cores": os.cpu_count(),
            "memory": f"{memory_gib()} GiB",
            "file system": output_of("stat", "--file-system", "--format=%T", str(folder)),
            "compiler": output_of("c++", "--version").splitlines()[0],
        },
        "revision": revision(root),
        "date": datetime.date.today().isoformat(),
    }
