#!/usr/bin/env python3
"""Draws a trajectory stream from above as SVG: the path, and the sampled pose at every second.

usage: draw_trajectory.py FILE.trajectory OUT.svg
"""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "examples" / "python"))
import read_streams  # noqa: E402

WIDTH = 900.0
MARGIN = 30.0
ARROW = 0.45  # metres


def rotated_x_axis(pose):
    """The direction of the device's x axis in the plane, from the rotation w, x, y, z."""
    w, x, y, z = pose[3:]
    return 1 - 2 * (y * y + z * z), 2 * (x * y + w * z)


def main(source, target):
    content = pathlib.Path(source).read_bytes()
    length = int.from_bytes(content[:8], "little")
    nodes, _ = read_streams.read_trajectory(read_streams.Buffer(memoryview(content)[8 : 8 + length]))
    left, right = min(pose[0] for _, pose in nodes), max(pose[0] for _, pose in nodes)
    bottom, top = min(pose[1] for _, pose in nodes), max(pose[1] for _, pose in nodes)
    scale = (WIDTH - 2 * MARGIN) / (right - left)

    def place(x, y):
        return f"{MARGIN + (x - left) * scale:.1f},{MARGIN + (top - y) * scale:.1f}"

    lines = []
    next_mark = nodes[0][0]
    for time, pose in nodes:
        if time >= next_mark:
            next_mark += 1.0
            x, y = pose[:2]
            along, across = rotated_x_axis(pose)
            lines.append(f'<path class="heading" d="M{place(x, y)} L{place(x + ARROW * along, y + ARROW * across)}"/>')
            centre = place(x, y).split(",")
            lines.append(f'<circle cx="{centre[0]}" cy="{centre[1]}" r="4"/>')
    path = " ".join(place(*pose[:2]) for _, pose in nodes)
    height = (top - bottom) * scale + 2 * MARGIN
    pathlib.Path(target).write_text(
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH:.0f} {height:.0f}">\n'
        "<style>polyline{fill:none;stroke:#9cc;stroke-width:3}circle{fill:#066}"
        ".heading{stroke:#c60;stroke-width:2.5}</style>\n"
        f'<polyline points="{path}"/>\n' + "\n".join(lines) + "\n</svg>\n"
    )


if __name__ == "__main__":
    main(*sys.argv[1:])
