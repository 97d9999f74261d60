#!/usr/bin/env python3
"""Holds the includes of the tree against the picture of its rooms: no arrow up, and no circle.

A header and its source are one unit. The source of a header at a library's root may stand in a higher room of that
library, which then defines what the root declares.

usage: includes.py ROOT
"""

import re
import sys
from pathlib import Path

BELOW_THE_TOOL = ["Hosts/**", "VantixInAppMessage/**", "VantixPushNotification", "VantixCore/**", "DeclarativeUI/**",
                  "Platform/**"]

# Each room, and the rooms that its files may include beside their own; "X/**" stands for X and all rooms below it.
ROOMS = {
    "Platform/Values": [],
    "Platform/Ports": ["Platform/Values"],
    "Platform/Dispatchers": ["Platform/Ports", "Platform/Values"],
    "Platform/Disk": ["Platform/Ports", "Platform/Values"],
    "DeclarativeUI": ["Platform/Ports", "Platform/Values"],
    "DeclarativeUI/Layout": ["DeclarativeUI", "Platform/Ports", "Platform/Values"],
    "DeclarativeUI/Elements": ["DeclarativeUI", "DeclarativeUI/Layout", "Platform/Ports", "Platform/Values"],
    "DeclarativeUI/Interaction": ["DeclarativeUI", "Platform/Ports", "Platform/Values"],
    "DeclarativeUI/Offscreen": ["DeclarativeUI", "Platform/Ports", "Platform/Values"],
    "VantixCore": ["DeclarativeUI", "Platform/Ports", "Platform/Values"],
    "VantixCore/Settings": ["VantixCore", "Platform/Ports", "Platform/Values"],
    "VantixCore/Store": ["VantixCore", "Platform/Ports", "Platform/Values"],
    "VantixCore/Network": ["VantixCore", "Platform/Ports", "Platform/Values"],
    "VantixCore/Images": ["VantixCore", "VantixCore/Network", "DeclarativeUI", "Platform/Ports", "Platform/Values"],
    "VantixCore/Reports": ["VantixCore", "VantixCore/Network", "VantixCore/Store", "Platform/Ports", "Platform/Values"],
    "VantixCore/Installation": ["VantixCore/**", "DeclarativeUI", "DeclarativeUI/Elements", "Platform/**"],
    "VantixPushNotification": ["VantixCore", "Platform/Ports", "Platform/Values"],
    "VantixInAppMessage/**": ["VantixPushNotification", "VantixCore", "DeclarativeUI", "DeclarativeUI/Elements",
                              "Platform/Ports", "Platform/Values"],
    "CampaignCheck/Text": ["VantixInAppMessage/**", "VantixCore", "Platform/Values"],
    "CampaignCheck/Fields": ["VantixInAppMessage/**", "VantixCore", "Platform/Values"],
    "CampaignCheck/Schema": ["CampaignCheck/Fields", "VantixInAppMessage/**", "VantixCore", "Platform/Values"],
    "CampaignCheck/Rules": ["CampaignCheck/Text", "CampaignCheck/Fields", "VantixInAppMessage/**", "VantixCore",
                            "DeclarativeUI", "Platform/Ports", "Platform/Values"],
    "CampaignCheck": ["CampaignCheck/Rules", "CampaignCheck/Text", "VantixInAppMessage/**", "VantixCore",
                      "Platform/Values"],
    "Hosts/VantixQt/Drawing": ["DeclarativeUI", "Platform/Ports", "Platform/Values"],
    "Hosts/VantixQt/Windows": ["Hosts/VantixQt/Drawing", "DeclarativeUI", "DeclarativeUI/Interaction", "Platform/Ports",
                               "Platform/Values"],
    "Hosts/VantixQt": ["Hosts/VantixQt/Windows", "Hosts/VantixQt/Drawing", "VantixInAppMessage/**",
                       "VantixPushNotification", "VantixCore", "DeclarativeUI", "Platform/**"],
    "Hosts/VantixQtQuick": ["Hosts/VantixQt", "Hosts/VantixQt/Windows", "Hosts/VantixQt/Drawing",
                             "Platform/Values"],
    "Hosts/VantixQtWidgets": ["Hosts/VantixQt", "Hosts/VantixQt/Windows", "Platform/Values"],
    "Tools/certificate": [],
    "Tools/vantix-inapp/Input": ["VantixInAppMessage/**", "Platform/Values"],
    "Tools/vantix-inapp/Output": ["Tools/vantix-inapp/Input", "Platform/Values"],
    "Tools/vantix-inapp/Headless": ["Tools/vantix-inapp/Input", *BELOW_THE_TOOL],
    "Tools/vantix-inapp/Backend": ["Tools/vantix-inapp/Input", "Tools/vantix-inapp/Output", "Tools/certificate",
                                   *BELOW_THE_TOOL],
    "Tools/vantix-inapp/Scenario": ["Tools/vantix-inapp/Headless", "Tools/vantix-inapp/Backend",
                                    "Tools/vantix-inapp/Input", *BELOW_THE_TOOL],
    "Tools/vantix-inapp/Render": ["Tools/vantix-inapp/Headless", "Tools/vantix-inapp/Input", *BELOW_THE_TOOL],
    "Tools/vantix-inapp/Check": ["Tools/vantix-inapp/Headless", "Tools/vantix-inapp/Output", "Tools/vantix-inapp/Input",
                                 "CampaignCheck/**", *BELOW_THE_TOOL],
    "Tools/vantix-inapp/Play": ["Tools/vantix-inapp/Check", "CampaignCheck", "CampaignCheck/Rules",
                                "Tools/vantix-inapp/Scenario", "Tools/vantix-inapp/Headless",
                                "Tools/vantix-inapp/Backend", "Tools/vantix-inapp/Output", "Tools/vantix-inapp/Input",
                                *BELOW_THE_TOOL],
    "Tools/vantix-inapp/Simulate": ["Tools/vantix-inapp/Headless", "Tools/vantix-inapp/Backend",
                                    "Tools/vantix-inapp/Output", "Tools/vantix-inapp/Input", *BELOW_THE_TOOL],
    "Tools/vantix-inapp/CommandLine": ["Tools/vantix-inapp/Check", "Tools/vantix-inapp/Play", "Tools/vantix-inapp/Render",
                                       "Tools/vantix-inapp/Scenario", "Tools/vantix-inapp/Headless",
                                       "Tools/vantix-inapp/Simulate", "Tools/vantix-inapp/Backend",
                                       "Tools/vantix-inapp/Output", "Tools/vantix-inapp/Input", *BELOW_THE_TOOL],
    "Tools/vantix-inapp": ["Tools/vantix-inapp/CommandLine"],
}

INCLUDE = re.compile(r'^\s*#\s*include\s+"([^"]+)"', re.MULTILINE)
INCLUDE_ROOTS = ["", "Hosts/"]


def matches(folder, pattern):
    if pattern.endswith("/**"):
        return folder == pattern[:-3] or folder.startswith(pattern[:-2])
    return folder == pattern


def room_of(file):
    """The most closely named room that the file stands in."""
    folder = str(Path(file).parent)
    return max((room for room in ROOMS if matches(folder, room)), key=lambda room: not room.endswith("/**"),
               default=None)


def read_tree(root):
    """Every file of the rooms with the files that it includes."""
    tops = sorted({room.split("/")[0] for room in ROOMS})
    files = {str(path.relative_to(root)): path.read_text()
             for top in tops for path in sorted((root / top).rglob("*"))
             if path.suffix in (".h", ".cpp") and "Sanitizers" not in path.parts}

    def resolve(name):
        return next((base + name for base in INCLUDE_ROOTS if base + name in files), None)

    return {file: {target for name in INCLUDE.findall(text) if (target := resolve(name))}
            for file, text in files.items()}


def unit_of(file, includes):
    """The header's path for a header and its source, without ending."""
    path = Path(file)
    if path.suffix == ".h":
        return str(path.with_suffix(""))
    for header in (path.with_suffix(".h"), path.parent.parent / (path.stem + ".h")):
        if str(header) in includes[file]:
            return str(header.with_suffix(""))
    return str(path.with_suffix(""))


def forbidden_arrows(includes):
    for file, targets in sorted(includes.items()):
        room = room_of(file)
        if room is None:
            yield f"{file} stands in no room"
            continue
        for target in sorted(targets):
            folder = str(Path(target).parent)
            if matches(folder, room) or any(matches(folder, allowed) for allowed in ROOMS[room]):
                continue
            yield f"{file} includes {target}, which its room may not"


def circles(arrows):
    """The groups of units that lead to each other (Tarjan's strongly connected components)."""
    order, low, stack, found = {}, {}, [], []

    def visit(unit):
        order[unit] = low[unit] = len(order)
        stack.append(unit)
        for target in sorted(arrows.get(unit, ())):
            if target not in order:
                visit(target)
            if target in stack:
                low[unit] = min(low[unit], low[target])
        if low[unit] == order[unit]:
            at = stack.index(unit)
            if len(stack) - at > 1:
                found.append(sorted(stack[at:]))
            del stack[at:]

    for unit in sorted(arrows):
        if unit not in order:
            visit(unit)
    return found


def headerless_sources(includes):
    for file in sorted(includes):
        if file.endswith(".cpp") and not file.endswith("/main.cpp"):
            if unit_of(file, includes) + ".h" not in includes:
                yield f"{file} has no header of its own"


def main():
    includes = read_tree(Path(sys.argv[1]))
    arrows = {}
    for file, targets in includes.items():
        unit = unit_of(file, includes)
        arrows.setdefault(unit, set()).update(unit_of(target, includes) for target in targets)
        arrows[unit].discard(unit)

    problems = list(forbidden_arrows(includes)) + list(headerless_sources(includes))
    problems += ["a circle: " + ", ".join(circle) for circle in circles(arrows)]
    print("\n".join(problems) or f"{len(arrows)} units, no arrow up, no circle")
    sys.exit(bool(problems) or len(arrows) < 100)


sys.setrecursionlimit(10000)
main()
