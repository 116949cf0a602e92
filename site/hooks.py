"""Extends mkdocs for the pages in docs/.

A line that starts with `--8<--` is replaced:

--8<-- "examples/PlaceScanPoint.cpp"
    by the lines of a file of the project
--8<-- "FILE" from "TEXT" to "TEXT"
    by the lines from the first that contains a text to the next that contains the other one
--8<-- "FILE" literal NAME
    by the contents of the C++ raw string constant with this name
--8<-- "FILE" json from "TEXT" to "TEXT"
    by the JSON document in the raw strings of these lines, indented
--8<-- "FILE" bytes from "TEXT" to "TEXT" base N
    by a table of the bytes that these lines of a test write, with offsets that start at -N
--8<-- manual
    by the tool's manual, made of its own help texts

A link to `api:NAME` leads to the API reference of that class, function or header. Whatever cannot be found fails the build.

Environment: ROAMSCAN_TOOL is the tool, ROAMSCAN_GENERATED the folder of the pictures and of Doxygen's pages (api/), and
ROAMSCAN_TAGS Doxygen's tag file.
"""

import json
import os
import pathlib
import re
import struct
import subprocess
import textwrap
import xml.etree.ElementTree as xml

from mkdocs.exceptions import PluginError
from mkdocs.structure.files import File

PROJECT = pathlib.Path(__file__).resolve().parent.parent


# ----------------------------------------------------------------------------------------------------------- snippets


def lines_between(path, first, last):
    """The lines from the first that contains `first` to the next that contains `last`, without their indentation."""
    lines = (PROJECT / path).read_text().splitlines()
    start = next((i for i, line in enumerate(lines) if first in line), None)
    if start is None:
        raise PluginError(f"{path} has no line with '{first}'")
    end = next((i for i in range(start, len(lines)) if last in lines[i]), None)
    if end is None:
        raise PluginError(f"{path} has no line with '{last}' after that with '{first}'")
    found = [re.sub(r"^\s*/// ?", "", line) for line in lines[start : end + 1]]
    return textwrap.dedent("\n".join(found)).splitlines()


def raw_string(path, name):
    match = re.search(rf'\b{name}\b\s*=\s*R"\((.*?)\)"', (PROJECT / path).read_text(), re.S)
    if not match:
        raise PluginError(f"{path} has no raw string constant {name}")
    return match[1].splitlines()


def raw_json(path, first, last):
    parts = re.findall(r'R"\((.*?)\)"', "\n".join(lines_between(path, first, last)), re.S)
    return json.dumps(json.loads("".join(parts)), indent=2).splitlines()


# The functions with which the tests write bytes.
BYTE_FUNCTIONS = {
    "u16": lambda number: struct.pack("<H", number),
    "u32": lambda number: struct.pack("<I", number),
    "u64": lambda number: struct.pack("<Q", number),
    "f32": lambda numbers: struct.pack(f"<{len(numbers)}f", *numbers),
    "f64": lambda numbers: struct.pack(f"<{len(numbers)}d", *numbers),
    "bytes": bytes,
}


def bytes_of(expression):
    """The bytes of a C++ expression such as `u32(3) + "imu" + bytes({0})`."""
    expression = expression.replace("{", "[").replace("}", "]")
    expression = re.sub(r'"(\w+)"', r'b"\1"', expression)
    expression = re.sub(r"\b(0x[0-9A-Fa-f]+(?=U)|[\d.]+(?=[FU]))[FU]\b", r"\1", expression)
    return eval(expression, {"__builtins__": {}}, BYTE_FUNCTIONS)


def byte_table(path, first, last, base):
    """A row for each line of a stream in a test. Where a comment begins with an offset, it must be the offset of its line."""
    rows = ["| offset | bytes | meaning |", "|---|---|---|"]
    stream = b""
    for line in lines_between(path, first, last):
        code, _, comment = line.partition("//")
        data = bytes_of(re.sub(r"^(return|\+)\s*", "", code.strip().rstrip(";")))
        offset = len(stream) - base
        stated, meaning = re.match(r"\s*(?:(\d+)\s+)?(.*)", comment).groups()
        if offset < 0:
            stated, meaning = None, comment.strip()
        if stated and int(stated) != offset:
            raise PluginError(f"{path} says {stated} where the offset is {offset}: {line}")
        groups = [data[i : i + 8].hex(" ") for i in range(0, len(data), 8)]
        rows.append(f"| {offset if offset >= 0 else ''} | {'<br>'.join(groups)} | {meaning} |")
        stream += data
    if int.from_bytes(stream[:8], "little") != len(stream) - 8:
        raise PluginError(f"{path}: the length prefix is not that of the {len(stream)} bytes")
    return ['<div class="bytes" markdown>', "", *rows, "", "</div>"]


# ------------------------------------------------------------------------------------------------------ the tool's manual


def tool_output(*arguments):
    result = subprocess.run([os.environ["ROAMSCAN_TOOL"], *arguments], capture_output=True, text=True, check=False)
    if result.returncode != 0:
        raise PluginError(f"roamscan {' '.join(arguments)} failed: {result.stderr}")
    return result.stdout


def subcommands(help_text):
    """The names and descriptions in the list of subcommands."""
    section = re.search(r"^Subcommands:\n((?:[ ].*\n)+)", help_text, re.M)
    return re.findall(r"^  (\S+) +(\S.*)$", section[1], re.M) if section else []


def manual(*command):
    """A section for each command, with its help text."""
    lines = []
    help_text = tool_output(*command, "--help")
    if command:
        lines += [f"{'#' * (1 + len(command))} {' '.join(command)}", ""]
    lines += ["```text", *help_text.rstrip().splitlines(), "```", ""]
    for name, _ in subcommands(help_text):
        lines += manual(*command, name)
    return lines


# ------------------------------------------------------------------------------------------------------------- the hooks

FORMS = [
    (re.compile(r'"([^"]+)"$'), lambda m: (PROJECT / m[1]).read_text().splitlines()),
    (re.compile(r'"([^"]+)" from "(.+)" to "(.+)"$'), lambda m: lines_between(m[1], m[2], m[3])),
    (re.compile(r'"([^"]+)" literal (\w+)$'), lambda m: raw_string(m[1], m[2])),
    (re.compile(r'"([^"]+)" json from "(.+)" to "(.+)"$'), lambda m: raw_json(m[1], m[2], m[3])),
    (re.compile(r'"([^"]+)" bytes from "(.+)" to "(.+)" base (\d+)$'), lambda m: byte_table(m[1], m[2], m[3], int(m[4]))),
    (re.compile(r"manual$"), lambda m: manual()),
]


def expanded(match):
    for form, expand in FORMS:
        if found := form.match(match[1].strip()):
            return "\n".join(expand(found))
    raise PluginError(f"unknown snippet: {match[0]}")


def api_addresses():
    """The address of each documented name, by its qualified name."""
    addresses = {}
    for compound in xml.parse(os.environ["ROAMSCAN_TAGS"]).getroot():
        name, file = compound.findtext("name"), compound.findtext("filename")
        if compound.get("kind") == "file":
            path = pathlib.Path(compound.findtext("path")) / name
            addresses[str(path.relative_to(PROJECT))] = file
            continue
        addresses.setdefault(name, file)
        scope = f"{name}::" if compound.get("kind") in ("class", "struct", "namespace") else ""
        for member in compound.findall("member"):
            address = f"{member.findtext('anchorfile')}#{member.findtext('anchor')}"
            addresses.setdefault(scope + member.findtext("name"), address)
    return addresses


def on_config(config):
    config["api_addresses"] = api_addresses()
    return config


def generated_files(config):
    """The generated pictures, Doxygen's pages and the style sheet, as if they were in docs/."""
    generated = pathlib.Path(os.environ["ROAMSCAN_GENERATED"])
    for path in sorted(generated.rglob("*")):
        if path.is_file():
            yield File(str(path.relative_to(generated)), str(generated), config["site_dir"], False)
    yield File("extra.css", str(PROJECT / "site"), config["site_dir"], False)


def on_files(files, config):
    for name in ("plan.png", "panorama.png"):  # of the README
        files.remove(files.get_file_from_path(name))
    for file in generated_files(config):
        files.append(file)
    return files


def on_page_markdown(markdown, page, config, files):
    markdown = re.sub(r"^--8<-- (.*)$", expanded, markdown, flags=re.M)

    def link(match):
        addresses = config["api_addresses"]
        candidates = {address for prefix in ("", "oV::Roamscan::", "oV::", "Bv_1_1::", "mapping::")
                      if (address := addresses.get(prefix + match[1]))}
        if len(candidates) != 1:
            raise PluginError(f"{page.file.src_path}: {len(candidates)} documented names for api:{match[1]}")
        return f"](api/{candidates.pop()})"

    return re.sub(r"\]\(api:([^)]+)\)", link, markdown)
