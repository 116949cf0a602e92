"""Independent computation of placed points with numpy, for PlacedRecordingsTest.cpp.

placed_points.py make POSES FORMAT OFFSET OUT_POSES OUT_SCAN OUT_PLACED
    Moves a recorded trajectory (tum or euroc) to map coordinates, makes up a scan in doubles along it, and places it.
placed_points.py compare PLACED CLOUD
    Prints the number of points and the largest distance in metres between the placed points and a PLY cloud.
"""
import sys

import numpy as np

SCAN = np.dtype([("x", "<f8"), ("y", "<f8"), ("z", "<f8"), ("label", "<u2"), ("time", "<f8")])


def read_poses(path, form):
    """Times, positions, and quaternions in the order x, y, z, w; sorted by time, each time once."""
    table = np.loadtxt(path, delimiter="," if form == "euroc" else None, comments="#")
    times = table[:, 0]
    if form == "euroc":
        with open(path, encoding="ascii") as lines:
            whole = [int(line.split(",")[0]) for line in lines if line.strip() and not line.startswith("#")]
        times = np.array([nanoseconds / 10**9 for nanoseconds in whole])
    quaternions = table[:, 4:8] if form == "tum" else table[:, [5, 6, 7, 4]]
    # Of poses at the same time the last one counts.
    order = np.unique(times[::-1], return_index=True)[1]
    order = len(times) - 1 - order
    return times[order], table[order, 1:4], quaternions[order] / np.linalg.norm(quaternions[order], axis=1)[:, None]


def slerp(a, b, share):
    dot = np.sum(a * b, axis=1)
    b = np.where(dot[:, None] < 0, -b, b)
    angle = np.arccos(np.clip(np.abs(dot), 0, 1))
    sine = np.sin(angle)
    safe = np.where(sine < 1e-9, 1, sine)
    first = np.where(sine < 1e-9, 1 - share, np.sin((1 - share) * angle) / safe)
    second = np.where(sine < 1e-9, share, np.sin(share * angle) / safe)
    return first[:, None] * a + second[:, None] * b


def rotate(quaternions, points):
    axis, w = quaternions[:, :3], quaternions[:, 3:]
    cross = np.cross(axis, points)
    return points + 2 * (w * cross + np.cross(axis, cross))


def make(poses, form, offset, out_poses, out_scan, out_placed):
    times, positions, quaternions = read_poses(poses, form)
    positions = positions + float(offset)
    with open(out_poses, "w", encoding="ascii") as out:
        for time, position, q in zip(times, positions, quaternions):
            out.write(" ".join(repr(float(v)) for v in (time, *position, *q)) + "\n")

    random = np.random.default_rng(13)
    count = 20000
    scan = np.zeros(count, SCAN)
    scan["time"] = np.sort(random.uniform(times[0] - 1, times[-1] + 1, count))
    scan["time"][-1] = times[-1]  # exactly the last pose
    for axis in "xyz":
        scan[axis] = random.uniform(-20, 20, count)
    scan["label"] = random.integers(0, 65536, count)
    with open(out_scan, "wb") as out:
        properties = "property double x\nproperty double y\nproperty double z\nproperty ushort label\nproperty double time\n"
        out.write(f"ply\nformat binary_little_endian 1.0\nelement vertex {count}\n{properties}end_header\n".encode())
        out.write(scan.tobytes())

    steps = np.diff(times)
    gap = steps > 10 * np.sort(steps)[len(steps) // 2]
    inside = (scan["time"] >= times[0]) & (scan["time"] <= times[-1])
    lower = np.clip(np.searchsorted(times, scan["time"], "right") - 1, 0, len(times) - 2)
    kept = inside & (~gap[lower] | (scan["time"] == times[lower]) | (scan["time"] == times[-1]))
    scan, lower = scan[kept], lower[kept]
    share = (scan["time"] - times[lower]) / steps[lower]
    rotation = slerp(quaternions[lower], quaternions[lower + 1], share)
    translation = positions[lower] + share[:, None] * (positions[lower + 1] - positions[lower])
    placed = rotate(rotation, np.column_stack([scan[axis] for axis in "xyz"])) + translation
    np.save(out_placed, np.column_stack([placed, scan["label"], scan["time"]]))


def compare(expected, cloud):
    expected = np.load(expected)
    with open(cloud, "rb") as file:
        header, body = file.read().split(b"end_header\n", 1)
    assert b"property double x\nproperty double y\nproperty double z\nproperty ushort label\nproperty double time\n" in header
    placed = np.frombuffer(body, SCAN)
    assert len(placed) == len(expected), (len(placed), len(expected))
    assert np.array_equal(placed["label"], expected[:, 3]) and np.array_equal(placed["time"], expected[:, 4])
    points = np.column_stack([placed[axis] for axis in "xyz"])
    print(len(placed), np.max(np.linalg.norm(points - expected[:, :3], axis=1)))


if __name__ == "__main__":
    {"make": make, "compare": compare}[sys.argv[1]](*sys.argv[2:])
