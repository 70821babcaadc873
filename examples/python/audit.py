#!/usr/bin/env python3
"""Sorts a list of programmes into those whose tracks carry what was ordered and those that do not.

usage: audit.py < programmes.jsonl

A line of the list is a JSON object with the programme's name, the ordered code of EBU R 123, and
its audio streams: id, channels, rate, bits, and where known labels and dolbyE (true or false). For
each wrong programme stand the reasons, and every layout of the catalogue that its tracks could
carry instead. The exit code is 0 when all are right, 1 when some are not, 2 when a line cannot be
used.
"""

from __future__ import annotations

import json
import sys
from dataclasses import dataclass, field
from typing import Any, Iterable

import kestrel
from kestrel.catalogue import Item, StreamType, item_from_layout_code, rows


@dataclass
class Audit:
    right: list[str] = field(default_factory=list)
    wrong: list[str] = field(default_factory=list)
    unusable: list[str] = field(default_factory=list)


def stream_of(stream: dict[str, Any], group: int) -> kestrel.Stream:
    coded = stream.get("dolbyE", False)
    return kestrel.Stream(
        stream_id=stream["id"],
        channel_count=stream["channels"],
        track_labels=stream.get("labels", ""),
        group=group,
        format_keys=(stream["rate"], stream["bits"], int(coded)),
        is_pair_coded=coded,
    )


def description(item: Item) -> str:
    """The text that asks the analyser for a layout of the catalogue; it calls coded pairs EMCA."""
    tracks = sum(kind.tracks for kind in item.stream_types)
    kinds = (StreamType.EMCA if kind is StreamType.DOLBY_E else kind for kind in item.stream_types)
    return f"T{tracks}=" + ",".join(kind.display_name for kind in kinds)


def lay(item: Item, streams: list[kestrel.Stream]) -> kestrel.ServiceMap:
    return kestrel.service_map(streams, description(item))


def possible(streams: list[kestrel.Stream], tracks: int) -> list[str]:
    """Every layout that fits; one whose labels do not is no candidate."""
    items = [item for row in rows() if row.tracks == tracks for item in row.items]
    maps = ((item, lay(item, streams)) for item in items)
    return [item.name for item, found in maps
            if found.outcome == kestrel.Outcome.FILLED and not found.findings]


def audit_line(line: str, audit: Audit) -> None:
    programme = json.loads(line)
    ordered = item_from_layout_code(programme["code"])
    streams = [stream_of(stream, group) for group, stream in enumerate(programme["streams"])]
    found = lay(ordered, streams)
    name = f'{programme["name"]}: {ordered.name}'
    if found.outcome == kestrel.Outcome.FILLED:
        audit.right.append(name)
        return
    reasons = [finding.sentence for finding in found.findings if finding.is_error]
    instead = " or ".join(possible(streams, found.track_total)) or "no layout of the catalogue"
    audit.wrong.append("\n    ".join([name, *reasons, f"It could be {instead}."]))


def audit_list(lines: Iterable[str]) -> Audit:
    audit = Audit()
    for number, line in enumerate(lines, start=1):
        try:
            audit_line(line, audit)
        except (ValueError, KeyError, TypeError, AttributeError, kestrel.KestrelError) as error:
            audit.unusable.append(f"line {number}: {error!r}")
    return audit


def main() -> int:
    audit = audit_list(sys.stdin)
    for heading, names in vars(audit).items():
        print(f"{heading}: {len(names)}", *names, sep="\n  ")
    return 2 if audit.unusable else 1 if audit.wrong else 0


sys.exit(main())
