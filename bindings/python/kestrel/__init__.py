"""Knows and checks which audio services a media file carries on its tracks.

`service_map` lays the services of a layout description over the streams of a file and says which
track carries what, or why the file does not carry them. The functions of `kestrel.catalogue` list
the layouts that there are.
"""

from kestrel._library import KestrelError, Status, abi_version, version
from kestrel.analysis import (
    Finding,
    FindingCode,
    Outcome,
    Service,
    ServiceMap,
    ServiceMapError,
    Stream,
    Track,
    service_map,
)
from kestrel.catalogue import Item, LayoutCode, Row, StreamType

__all__ = [
    "Finding",
    "FindingCode",
    "Item",
    "KestrelError",
    "LayoutCode",
    "Outcome",
    "Row",
    "Service",
    "ServiceMap",
    "ServiceMapError",
    "Status",
    "Stream",
    "StreamType",
    "Track",
    "abi_version",
    "service_map",
    "version",
]
