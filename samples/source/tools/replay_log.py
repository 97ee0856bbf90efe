#!/usr/bin/env python3
"""Compares the demands in a field log with those of the zone control in the laboratory."""

import csv
import subprocess
import sys

TOLERANCE = 2.0


def read_log(path: str):
    with open(path, newline="", encoding="utf-8") as file:
        for row in csv.DictReader(file):
            yield float(row["wanted"]), float(row["measured"]), float(row["demand"])


def replay(control: str, samples) -> list[float]:
    lines = "".join(f"{wanted} {measured}\n" for wanted, measured, _ in samples)
    answer = subprocess.run([control], input=lines, capture_output=True, text=True, check=True)
    return [float(line) for line in answer.stdout.split()]


def main() -> int:
    if len(sys.argv) != 3:
        print("usage: replay_log.py CONTROL LOG", file=sys.stderr)
        return 2
    samples = list(read_log(sys.argv[2]))
    demands = replay(sys.argv[1], samples)
    apart = [
        (number, home, laboratory)
        for number, ((_, _, home), laboratory) in enumerate(zip(samples, demands), start=2)
        if abs(home - laboratory) > TOLERANCE
    ]
    for number, home, laboratory in apart:
        print(f"line {number}: home {home:.0f} %, laboratory {laboratory:.0f} %")
    return 1 if apart else 0


if __name__ == "__main__":
    sys.exit(main())
