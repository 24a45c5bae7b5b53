"""Runs the subjects of a workload in turns, each run in a process and a folder of its own."""

import json
import os
import shutil
import subprocess
import sys
import tempfile


def run_once(subject, folder):
    output = tempfile.mkdtemp(prefix="run-", dir=subject.folder or folder)
    # What earlier runs left to be written to the disk is not for this one to wait for.
    os.sync()
    environment = {**os.environ, **subject.environment}
    done = subprocess.run([*subject.command, "--output", output], capture_output=True, text=True,
                          env=environment)
    shutil.rmtree(output)
    if done.returncode != 0:
        sys.exit(f"{subject.name} failed:\n{done.stderr}")
    return json.loads(done.stdout)


def run(workload, repetitions, folder):
    """The runs of each subject, by its name; those with the same index belong to one round."""
    print(f"Measuring {workload.key}: {workload.title}", flush=True)
    if workload.measure is not None:
        return workload.measure(repetitions)
    workload.prepare()
    runs = {subject.name: [] for subject in workload.subjects}
    for number in range(min(repetitions, workload.most_rounds)):
        for subject in workload.subjects:
            if number >= subject.most_rounds:
                continue
            measured = run_once(subject, folder)
            runs[subject.name].append(measured)
            print(f"  round {number + 1}: {subject.name}: {measured['seconds']:.3f} s, "
                  f"{measured['file_bytes'] / 1e6:.1f} MB", flush=True)
    workload.clean_up()
    return runs
