#!/usr/bin/env python3
"""Checks that the API reference has every name that the shared libraries export.

usage: check_exports.py TAGFILE LIBRARY...

Doxygen itself reports the undocumented members of a class. This check finds the classes, functions and constants that are not
in the reference at all, for instance because their namespace is not documented.
"""

import re
import subprocess
import sys
import xml.etree.ElementTree as xml

# Names of the ABI about a class: its class is checked by its functions.
ABI = re.compile(r"(vtable|VTT|typeinfo|typeinfo name|guard variable|construction vtable|(non-virtual|virtual) thunk)\b")


def documented_names(tagfile):
    """The classes, and the functions and variables of namespaces and headers."""
    classes, others = set(), set()
    for compound in xml.parse(tagfile).getroot():
        kind, name = compound.get("kind"), compound.findtext("name")
        if kind in ("class", "struct", "union"):
            classes.add(re.sub(r"<.*>", "", name).strip())
        elif kind == "namespace":
            members = (re.sub(r"^operator\b.*", "operator", member.findtext("name")) for member in compound.findall("member"))
            others.update(f"{name}::{member}" for member in members)
    return classes, others


def without_template_arguments(name):
    while (shorter := re.sub(r"<[^<>]*>", "", name)) != name:
        name = shorter
    return name


def exported_names(library):
    """The qualified names, without arguments and return types."""
    symbols = subprocess.run(["nm", "-D", "-C", "--defined-only", library], capture_output=True, text=True, check=True).stdout
    for line in symbols.splitlines():
        symbol = line.split(" ", 2)[2]
        if ABI.match(symbol):
            continue
        name = re.sub(r"operator\s*(<=>|<<=?|>>=?|->\*?|[<>]=?|\(\)|[^\s(]+)", "operator", symbol)
        name = without_template_arguments(name.replace("[abi:cxx11]", "")).split("(", 1)[0].strip()
        yield name.split(" ")[-1]


def main(tagfile, *libraries):
    classes, others = documented_names(tagfile)
    missing = set()
    for library in libraries:
        for name in exported_names(library):
            if name not in others and name.rpartition("::")[0] not in classes:
                missing.add(name)
    for name in sorted(missing):
        print(f"{name} is exported and not in the API reference", file=sys.stderr)
    sys.exit(1 if missing else 0)


if __name__ == "__main__":
    main(*sys.argv[1:])
