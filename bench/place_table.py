#!/usr/bin/env python3
"""Measures `roamscan place` from PLY to PLY: time, peak memory and points a second, on one core and on two.

    bench/place_table.py --tool before=OLD/roamscan --tool after=build/bench/tools/roamscan

Makes a trajectory of 100,000 poses and scans of 22 bytes a point in a temporary folder ($TMPDIR), runs every tool on
every scan, and prints a table in Markdown. Each time is the least of --repeat runs with the scan in the page cache.
Needs numpy, and on the disk 80 bytes for each point of the largest scan. Linux only.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile
import time

import numpy as np

SECONDS = 1000.0  # of the walk
POSES = 100_000
HEADER = """ply
format binary_little_endian 1.0
element vertex {}
property float x
property float y
property float z
property ushort intensity
property double time
end_header
"""


def write_poses(path):
    """A circle with a rotation that changes all the time, in TUM's format."""
    with open(path, "w") as text:
        for t in np.linspace(0.0, SECONDS, POSES):
            half = 0.5 * np.array([0.1 * np.sin(0.5 * t), 0.1 * np.cos(0.3 * t), 0.2 * t + 0.1])
            angle = np.linalg.norm(half)
            q = [*(half / angle * np.sin(angle)), np.cos(angle)]
            place = (10.0 * np.cos(0.05 * t), 10.0 * np.sin(0.05 * t), 1.5)
            print(f"{t:.9f}", *place, *q, file=text)


def write_scan(path, count):
    """Points within 12 m of the scanner, evenly distributed over the walk."""
    generator = np.random.default_rng(29)
    record = np.dtype([("position", "<f4", 3), ("intensity", "<u2"), ("time", "<f8")])
    with open(path, "wb") as file:
        file.write(HEADER.format(count).encode())
        for first in range(0, count, 1_000_000):
            index = np.arange(first, min(first + 1_000_000, count))
            points = np.empty(len(index), record)
            points["position"] = generator.uniform(-12.0, 12.0, (len(index), 3))
            points["intensity"] = index & 0xFFFF
            points["time"] = SECONDS * index / count
            points.tofile(file)


def run(command, cores):
    """Wall seconds, processor seconds and peak bytes of a command."""
    start = time.perf_counter()
    process = subprocess.Popen(
        command, stdout=subprocess.PIPE, preexec_fn=lambda: os.sched_setaffinity(0, range(cores))
    )
    output = process.stdout.read().decode()
    _, status, usage = os.wait4(process.pid, 0)
    seconds = time.perf_counter() - start
    if status != 0:
        sys.exit(f"{command[0]} failed: {output}")
    return seconds, usage.ru_utime + usage.ru_stime, usage.ru_maxrss * 1024


def copy_bytes(source, target, size):
    """Wall seconds for reading the bytes of a file and writing `size` bytes, 1 MiB at once."""
    buffer = bytearray(1 << 20)
    start = time.perf_counter()
    with open(source, "rb", buffering=0) as file:
        while file.readinto(buffer):
            pass
    with open(target, "wb", buffering=0) as file:
        while size > 0:
            size -= file.write(buffer[: min(size, len(buffer))])
    return time.perf_counter() - start


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--tool", action="append", required=True, metavar="NAME=PATH", help="a roamscan to measure")
    parser.add_argument("--points", type=int, nargs="+", default=[10_000_000, 100_000_000])
    parser.add_argument("--cores", type=int, nargs="+", default=[1, 2])
    parser.add_argument("--repeat", type=int, default=3)
    options = parser.parse_args()
    tools = [tool.split("=", 1) for tool in options.tool]

    print("| points | cores | tool | seconds | times the bytes | processor seconds | points a second | peak memory |")
    print("|---|---|---|---|---|---|---|---|")
    with tempfile.TemporaryDirectory(prefix="roamscan-place-") as name:
        folder = pathlib.Path(name)
        poses, trajectory, scan, cloud = (folder / n for n in ("poses.txt", "walk.trajectory", "scan.ply", "out.ply"))
        write_poses(poses)
        subprocess.run([tools[-1][1], "import", "--format", "tum", poses, trajectory], check=True, stdout=subprocess.DEVNULL)
        for points in options.points:
            write_scan(scan, points)
            for cores in options.cores:
                # Interleaved, so that what else the machine does affects all alike.
                runs = {tool: [] for tool, _ in tools}
                bytes_alone = []
                for _ in range(options.repeat):
                    for tool, path in tools:
                        runs[tool].append(
                            run(
                                [path, "place", "--trajectory", trajectory, "--from", "0", "--to", "0"]
                                + ["--points", scan, "--cloud", cloud],
                                cores,
                            )
                        )
                    size = cloud.stat().st_size
                    cloud.unlink()
                    bytes_alone.append(copy_bytes(scan, cloud, size))
                    cloud.unlink()
                for tool, measured in runs.items():
                    seconds, processor, _ = min(measured)
                    peak = max(run[2] for run in measured)
                    print(
                        f"| {points:,} | {cores} | {tool} | {seconds:.2f} | {seconds / min(bytes_alone):.2f} "
                        f"| {processor:.2f} | {points / seconds / 1e6:.1f} million | {peak / 1e6:.0f} MB |",
                        flush=True,
                    )


if __name__ == "__main__":
    main()
