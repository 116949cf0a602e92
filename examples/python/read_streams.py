#!/usr/bin/env python3
"""Describes trajectory and sensor streams as `roamscan info --json` does.

usage: read_streams.py FILE...

Plain Python 3 that does not use the library: everything here follows from the page "File formats" of the documentation.
A damaged file is one line on standard error, and the exit status is then 1.
"""

import json
import math
import struct
import sys

LARGEST_TABLE_COUNT = 1_000_000
TICKS_PER_SECOND = 100_000_000.0


class Damaged(Exception):
    """The bytes are not a valid stream."""


# ------------------------------------------------------------------------------------------------------- FlatBuffers


class Buffer:
    """A FlatBuffers buffer. Every access is checked, so damaged bytes raise Damaged and nothing else."""

    def __init__(self, data):
        self.data = data
        self.tables = 0

    def check(self, position, size, alignment=1):
        if position < 0 or position + size > len(self.data):
            raise Damaged("an offset points outside the buffer")
        if position % alignment != 0:
            raise Damaged("a value is not aligned")

    def u16(self, position):
        self.check(position, 2, 2)
        return struct.unpack_from("<H", self.data, position)[0]

    def u32(self, position):
        self.check(position, 4, 4)
        return struct.unpack_from("<I", self.data, position)[0]

    def follow(self, position):
        """The position that the offset at a position refers to."""
        offset = self.u32(position)
        if not 0 < offset < 2**31:
            raise Damaged("an offset is not valid")
        return position + offset

    def root(self):
        return Table(self, self.follow(0))


class Table:
    """A table of a buffer. Fields are named by their ids; a field that is absent has its default."""

    def __init__(self, buffer, position):
        buffer.tables += 1
        if buffer.tables > LARGEST_TABLE_COUNT:
            raise Damaged("there are more than 1,000,000 tables")
        buffer.check(position, 4, 4)
        self.buffer = buffer
        self.position = position
        self.vtable = position - struct.unpack_from("<i", buffer.data, position)[0]
        self.vtable_size = buffer.u16(self.vtable)
        if self.vtable_size % 2 != 0:
            raise Damaged("a vtable has an odd size")
        buffer.check(self.vtable, self.vtable_size)

    def field(self, field_id):
        """The position of a field, None if it is absent."""
        entry = 4 + 2 * field_id
        offset = self.buffer.u16(self.vtable + entry) if entry < self.vtable_size else 0
        return self.position + offset if offset else None

    def values(self, field_id, layout, alignment):
        """The values of a scalar or struct, None if it is absent."""
        position = self.field(field_id)
        if position is None:
            return None
        self.buffer.check(position, struct.calcsize(layout), alignment)
        return struct.unpack_from(layout, self.buffer.data, position)

    def required(self, field_id, layout, alignment):
        """The values of a struct that every writer stores."""
        values = self.values(field_id, layout, alignment)
        if values is None:
            raise Damaged("a table lacks a required field")
        return values

    def scalar(self, field_id, layout, default):
        values = self.values(field_id, layout, struct.calcsize(layout))
        return default if values is None else values[0]

    def vector(self, field_id, element_size):
        """The position of the first element and the number of elements."""
        position = self.field(field_id)
        if position is None:
            return 0, 0
        position = self.buffer.follow(position)
        count = self.buffer.u32(position)
        self.buffer.check(position + 4, count * element_size)
        return position + 4, count

    def tables(self, field_id):
        first, count = self.vector(field_id, 4)
        for entry in range(first, first + 4 * count, 4):
            yield Table(self.buffer, entry + self.buffer.u32(entry))

    def text(self, field_id):
        """The bytes of a string, empty if it is absent."""
        if self.field(field_id) is None:
            return b""
        first, count = self.vector(field_id, 1)
        self.buffer.check(first + count, 1)
        if self.buffer.data[first + count] != 0:
            raise Damaged("a string has no terminator")
        return bytes(self.buffer.data[first : first + count])


# ---------------------------------------------------------------------------------------------------- sensor streams


def ticks(seconds):
    """Ticks of 10 ns, rounded to nearest and half away from zero. A time outside 64 bits counts as the smallest."""
    product = seconds * TICKS_PER_SECOND
    if not abs(product) < 2.0**63:
        return -(2**63)
    whole = math.floor(abs(product))
    whole += abs(product) - whole >= 0.5
    return int(math.copysign(whole, product))


def read_sensors(buffer):
    """The stores of a sensor stream: for each name, the samples by tick. A later sample of a tick replaces the earlier."""
    root = buffer.root()
    rangefinders, inertial_units, poses = {}, {}, {}
    for sensor in root.tables(0):
        name = sensor.text(0)
        for sample in sensor.tables(1):
            time = sample.scalar(0, "<d", 0.0)
            _, points = sample.vector(1, 16)
            sample.required(2, "<3f", 4)  # origin
            rangefinders.setdefault(name, {})[ticks(time)] = points
    for sensor in root.tables(1):
        name = sensor.text(0)
        for sample in sensor.tables(1):
            time = sample.scalar(0, "<d", 0.0)
            sample.required(1, "<3f", 4)  # linearAcceleration
            sample.required(2, "<3f", 4)  # angularVelocity
            magnetic_field = sample.values(3, "<3f", 4)
            inertial_units.setdefault(name, {})[ticks(time)] = magnetic_field is not None
    for pose in root.tables(2):
        poses[pose.text(0)] = pose.required(1, "<7f", 4)
    return rangefinders, inertial_units, poses, root.scalar(3, "<B", 0) != 0


def describe_times(samples):
    times = sorted(samples)
    duration = (times[-1] - times[0]) / TICKS_PER_SECOND
    gaps = [(later - earlier) / TICKS_PER_SECOND for earlier, later in zip(times, times[1:])]
    return {
        "samples": len(times),
        "from": times[0] * 1e-8,
        "to": times[-1] * 1e-8,
        "duration": duration,
        "rate": (len(times) - 1) / duration if len(times) > 1 else 0.0,
        "largestGap": max(gaps, default=0.0),
    }


def described(sensors, describe):
    """An object for each sensor, in order of their names."""
    return [{"name": name.decode(errors="replace"), **describe(sensors[name])} for name in sorted(sensors)]


def describe_sensors(buffer):
    rangefinders, inertial_units, poses, poses_applied = read_sensors(buffer)
    tables = 1 + len(poses) + sum(1 + len(samples) for kind in (rangefinders, inertial_units) for samples in kind.values())
    return {
        "kind": "sensor",
        "inertialUnits": described(
            inertial_units, lambda samples: {**describe_times(samples), "withMagneticField": sum(samples.values())}
        ),
        "rangefinders": described(
            rangefinders, lambda samples: {**describe_times(samples), "points": sum(samples.values())}
        ),
        "poses": described(poses, describe_pose),
        "posesApplied": poses_applied,
        "tables": tables,
        "largestTableCount": LARGEST_TABLE_COUNT,
    }


# ------------------------------------------------------------------------------------------------ trajectory streams


def describe_pose(pose):
    """A pose is stored as translation x, y, z, then rotation w, x, y, z."""
    return {"translation": list(pose[:3]), "rotation": list(pose[3:])}


def distance(pose, other):
    return math.sqrt(sum((a - b) * (a - b) for a, b in zip(pose[:3], other[:3])))


def read_trajectory(buffer):
    """The nodes as pairs of time and pose, and the poses by device."""
    root = buffer.root()
    nodes = []
    for node in root.tables(0):
        node.required(3, "<9d", 8)  # matrixA
        node.required(4, "<9d", 8)  # matrixB
        node.scalar(2, "<I", 0)  # type
        node.scalar(5, "<B", 0)  # flag
        nodes.append((node.scalar(0, "<d", 0.0), node.required(1, "<7d", 8)))
    devices = {}
    first, count = root.vector(1, 64)
    for position in range(first, first + 64 * count, 64):
        device, *pose = struct.unpack_from("<i4x7d", buffer.data, position)
        if 0 <= device <= 3:  # other devices are ignored
            devices[device] = pose
    return nodes, devices


def describe_trajectory(buffer):
    nodes, devices = read_trajectory(buffer)
    timed = [node for node in nodes if math.isfinite(node[0])]
    times = [time for time, _ in timed]
    latest = {time: pose for time, pose in timed}  # of several nodes at one time, the last one counts
    poses = sorted(latest.items(), key=lambda node: node[0])
    description = {
        "kind": "trajectory",
        "nodes": len(nodes),
        "inTimeOrder": times == sorted(times),
        "repeatedTimes": len(timed) - len(poses),
        "nodesWithoutTime": len(nodes) - len(timed),
    }
    if poses:
        first, last = poses[0][0], poses[-1][0]
        steps = list(zip(poses, poses[1:]))
        description |= {
            "from": first,
            "to": last,
            "duration": last - first,
            "meanStep": (last - first) / len(steps) if steps else 0.0,
            "largestStep": max((b[0] - a[0] for a, b in steps), default=0.0),
            "pathLength": sum(distance(a[1], b[1]) for a, b in steps),
        }
        durations = sorted(b[0] - a[0] for a, b in steps)
        usual = durations[len(durations) // 2] if durations else 0.0  # the median
        longest = 10.0 * usual
        description |= {
            "usualStep": usual,
            "longestStepWithoutGap": longest,
            "gaps": [
                {"from": a[0], "to": b[0], "duration": b[0] - a[0]} for a, b in steps if b[0] - a[0] > longest
            ],
        }
    description["devices"] = [{"device": device, **describe_pose(devices[device])} for device in sorted(devices)]
    return description


# ------------------------------------------------------------------------------------------------------------- files


def describe_buffer(data):
    """The content decides the kind: a buffer that is no sensor stream with content is read as a trajectory."""
    reasons = []
    sensors = None
    try:
        sensors = describe_sensors(Buffer(data))
        if sensors["tables"] > 1:
            return sensors
    except Damaged as reason:
        reasons.append(f"as a sensor stream, {reason}")
    try:
        return describe_trajectory(Buffer(data))
    except Damaged as reason:
        reasons.append(f"as a trajectory, {reason}")
    if sensors:
        return sensors
    raise Damaged("is damaged, or neither kind of stream: " + "; ".join(reasons))


def describe_file(path):
    with open(path, "rb") as file:
        content = file.read()
    if len(content) < 8:
        raise Damaged(f"is too short for a stream ({len(content)} bytes)")
    (length,) = struct.unpack_from("<Q", content)
    available = len(content) - 8
    if length > available:
        raise Damaged(f"ends early or is no stream: its length prefix is {length} bytes, but {available} bytes follow")
    description = describe_buffer(memoryview(content)[8 : 8 + length])
    return {"file": path, **description, "bytesBehind": available - length}


def finite(value):
    """The same document with null for each number that JSON does not have: NaN and the infinities."""
    if isinstance(value, dict):
        return {key: finite(member) for key, member in value.items()}
    if isinstance(value, list):
        return [finite(element) for element in value]
    return None if isinstance(value, float) and not math.isfinite(value) else value


def main(paths):
    if not paths:
        print("usage: read_streams.py FILE...", file=sys.stderr)
        return 1
    descriptions = []
    status = 0
    for path in paths:
        try:
            descriptions.append(describe_file(path))
        except (Damaged, OSError) as failure:
            reason = failure.strerror if isinstance(failure, OSError) else failure
            print(f"read_streams.py: {path}: {reason}", file=sys.stderr)
            status = 1
    if descriptions:
        print(json.dumps(finite(descriptions), indent=2, ensure_ascii=False))
    return status


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
