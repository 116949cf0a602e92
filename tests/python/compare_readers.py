"""Compares examples/python/read_streams.py with `roamscan info --json` on simulated streams and on damaged ones.

usage: compare_readers.py TOOL READER WORK_DIR
"""

import json
import math
import pathlib
import random
import shutil
import struct
import subprocess
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "examples" / "python"))
import read_streams  # noqa: E402

SEED = 20240517


def run(*command):
    return subprocess.run(command, capture_output=True, text=True, check=False)


def expect(condition, text):
    if not condition:
        sys.exit(f"compare_readers.py: {text}")


def equal(a, b, key=None):
    """Exact, also in the order of members; but the sum of a path's length may be rounded in another order."""
    if key == "pathLength" and isinstance(a, float) and isinstance(b, float):
        return math.isclose(a, b, rel_tol=1e-12)
    if isinstance(a, dict) and isinstance(b, dict):
        return list(a) == list(b) and all(equal(a[k], b[k], k) for k in a)
    if isinstance(a, list) and isinstance(b, list):
        return len(a) == len(b) and all(equal(x, y) for x, y in zip(a, b))
    return type(a) is type(b) and a == b


def described(text):
    return {entry["file"]: entry for entry in json.loads(text or "[]") if "error" not in entry}


def damaged_copies(path, count, rng):
    """Copies with one byte changed, most of them in the first kilobyte, where the offsets of the root are."""
    content = path.read_bytes()
    for i in range(count):
        damaged = bytearray(content)
        position = rng.randrange(min(1000, len(damaged)) if i % 3 else len(damaged))
        damaged[position] = rng.randrange(256)
        copy = path.with_name(f"{path.stem}-{i}{path.suffix}")
        copy.write_bytes(damaged)
        yield str(copy)


def extreme_copy(path):
    """A copy with numbers that overflow in the description or that JSON does not have."""
    content = bytearray(path.read_bytes())
    nodes = list(read_streams.Buffer(memoryview(bytes(content))[8:]).root().tables(0))
    extremes = {  # by the positions of times and poses
        nodes[5].field(0): -1.7e308,
        nodes[9].field(0): 1.7e308,
        nodes[20].field(0): math.nan,
        nodes[30].field(1): 1e200,
        nodes[40].field(1): math.inf,
    }
    for position, number in extremes.items():
        struct.pack_into("<d", content, 8 + position, number)
    copy = path.with_name("extreme.trajectory")
    copy.write_bytes(content)
    return str(copy)


def compare(tool, reader, files):
    """Both programs accept the same files and describe them alike; the number of accepted files."""
    by_tool = run(tool, "info", *files, "--json")
    by_reader = run(sys.executable, reader, *files)
    expected, actual = described(by_tool.stdout), described(by_reader.stdout)
    expect(list(expected) == list(actual), f"accepted: {sorted(set(expected) ^ set(actual))} by one program only")
    for file, description in expected.items():
        expect(equal(description, actual[file]), f"{file}: {actual[file]} instead of {description}")
    refused = len(files) - len(expected)
    lines = by_reader.stderr.splitlines()
    expect(len(lines) == refused, f"{len(lines)} lines for {refused} damaged files: {by_reader.stderr}")
    expect(all(line.startswith("read_streams.py: ") for line in lines), by_reader.stderr)
    expect(by_reader.returncode == (1 if refused else 0), f"exit status {by_reader.returncode}, {refused} damaged files")
    return len(expected)


def main(tool, reader, work_dir):
    folder = pathlib.Path(work_dir)
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    simulated = run(tool, "simulate", str(folder / "walk"), "--seconds", "2", "--panorama", "64")
    expect(simulated.returncode == 0, simulated.stderr)
    streams = [folder / "walk" / "walk.trajectory", folder / "walk" / "walk.sensors"]
    for stream in streams:
        expect(compare(tool, reader, [str(stream)]) == 1, f"{stream} is refused")

    expect(compare(tool, reader, [extreme_copy(streams[0])]) == 1, "a stream with extreme numbers is refused")

    # Streams in one file, a shortened stream, no stream at all, and an empty stream, which counts as a trajectory.
    content = streams[0].read_bytes()
    literal = {
        "two": content + streams[1].read_bytes(),
        "short": content[:-1],
        "prefix": content[:7],
        "empty": bytes.fromhex("0c00000000000000 080000000400040004000000"),
        "text": b"This is a text and no stream.",
        "none": b"",
    }
    for name, data in literal.items():
        (folder / name).write_bytes(data)
    accepted = compare(tool, reader, [str(folder / name) for name in literal] + [str(folder / "missing")])
    expect(accepted == 2, f"{accepted} files accepted instead of two and empty")

    print(f"seed {SEED}")
    rng = random.Random(SEED)
    for stream in streams:
        files = list(damaged_copies(stream, 40, rng))
        accepted = compare(tool, reader, files)
        print(f"{stream.name}: {accepted} of {len(files)} changed copies accepted by both")
        expect(0 < accepted < len(files), "the changed copies should include valid and damaged ones")


if __name__ == "__main__":
    main(*sys.argv[1:])
