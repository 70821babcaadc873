"""The analysis of a file: which of its tracks carry the services of a layout description.

An analysis of the library is read in full and freed before `service_map` returns, so what it
returns is plain Python, to be kept and shared freely.
"""

from __future__ import annotations

import contextlib
import ctypes
from collections.abc import Iterator, Sequence
from dataclasses import dataclass
from enum import IntEnum
from typing import Any, Callable, Optional

from kestrel import _library
from kestrel._library import KestrelError, Status, library
from kestrel.catalogue import StreamType


@dataclass(frozen=True)
class Stream:
    """One audio stream of a file."""

    stream_id: str
    """Begins with the track number; may hold "-"."""
    channel_count: int
    track_labels: str = ""
    """Blank-separated labels of the tracks, in track order."""
    group: int = 0
    format_keys: tuple[int, int, int] = (0, 0, 0)
    """What neighbouring tracks of one service must share, such as sampling rate and bit depth."""
    is_pair_coded: bool = False
    is_pair_shared: bool = False


class Outcome(IntEnum):
    """Whether the file carries the services."""

    UNTOUCHED = 0
    """It does not: its tracks are not those that the services need."""
    EMPTIED = 1
    """It does not: neighbouring tracks of a service disagree."""
    FILLED = 2
    """It does."""


class FindingCode(IntEnum):
    """What a finding is about; below 100 stand the errors."""

    NO_STREAMS = 1
    NO_ENTRY = 2
    PAIR_CODED_TRACK = 3
    PLAIN_TRACK = 4
    TOO_FEW_TRACKS = 5
    KEY1_DIFFERS = 6
    KEY2_DIFFERS = 7
    KEY3_DIFFERS = 8
    UNKNOWN_SERVICE = 101
    EMPTY_ELEMENT = 102
    TRACKS_LEFT_OVER = 103
    LABEL_MISSING = 104
    LABEL_UNKNOWN = 105
    LABEL_DOUBLED = 106
    LABELS_REORDERED = 107
    RUN_TOO_LONG = 108
    SERVICE_WITHOUT_TRACK = 109


@dataclass(frozen=True)
class Track:
    """One track of a service."""

    track_number: int
    group: int
    source_group: int
    index_in_group: int


@dataclass(frozen=True)
class Service:
    """One service that was found."""

    index: int
    """Which element of the description's entry it is, from 0."""
    stream_type: StreamType
    track_count: int
    """Tracks of the service; -1 for a service of unknown name."""
    reported: bool
    is_emca: bool
    requested: bool
    label: str
    """The labels of a 5.1 Mix, else empty."""
    tracks: tuple[Track, ...]
    """The tracks that the file has for it, in order."""


@dataclass(frozen=True)
class Finding:
    """Something about the file that the host should know. What a code does not use is None."""

    code: int
    """A FindingCode, or the number of one that this package does not know yet."""
    service: Optional[int]
    slot: Optional[int]
    stream: Optional[int]
    track: Optional[int]
    first: int
    """The two values that disagree, the expected one first; 0 where there are none."""
    second: int
    text_offset: Optional[int]
    """Where an element begins in the description, in bytes of its UTF-8."""
    text_length: Optional[int]
    sentence: str

    @property
    def is_error(self) -> bool:
        """True for the findings that keep the outcome from being FILLED."""
        return self.code < 100


class ServiceMapError(Exception):
    """The file does not carry the services; `service_map` holds what was found instead."""

    def __init__(self, service_map: ServiceMap) -> None:
        errors = [finding.sentence for finding in service_map.findings if finding.is_error]
        super().__init__(errors[0] if errors else "The file does not carry the services.")
        self.service_map = service_map


@dataclass(frozen=True)
class ServiceMap:
    """All that an analysis tells."""

    outcome: Outcome
    track_total: int
    """The file's track total, which chooses the entry of the description."""
    services: tuple[Service, ...]
    findings: tuple[Finding, ...]
    """The errors, then the others."""
    described_totals: tuple[int, ...]
    """The track totals for which the description has entries."""

    def check(self) -> ServiceMap:
        """This map itself, when the file carries the services. ServiceMapError otherwise."""
        if self.outcome != Outcome.FILLED:
            raise ServiceMapError(self)
        return self


def service_map(
    streams: Sequence[Stream],
    layout: str,
    *,
    order: str = "L R C LFE Ls Rs",
    report_all: bool = False,
    surround_check: bool = True,
) -> ServiceMap:
    """Lays the services of a layout description over the streams of a file.

    layout is a list of entries such as "T8=5.1 Mix,Stereo;T4=Stereo,Stereo"; order the surround
    channel order that 5.1 mixes should have. report_all reports services behind "-" too;
    surround_check reads the labels of 5.1 mixes off the streams.

    Raises KestrelError when the library refuses the request, and nothing when the file does not
    carry the services: `ServiceMap.check` does.
    """
    request = _request(streams, layout, order)
    request.reportAll = report_all
    request.surroundCheck = surround_check
    with _analysis(request) as analysis:
        return _read(analysis)


def _request(streams: Sequence[Stream], layout: str, order: str) -> _library.Request:
    records = (_library.Stream * len(streams))(*map(_stream, streams))
    return _library.Request(
        structSize=ctypes.sizeof(_library.Request),
        streamCount=len(streams),
        layoutDescription=_library.encoded(layout),
        surroundChannelOrder=_library.encoded(order),
        streams=records,
        streamStride=ctypes.sizeof(_library.Stream),
    )


def _stream(stream: Stream) -> _library.Stream:
    key1, key2, key3 = map(_library.int32, stream.format_keys)
    return _library.Stream(
        structSize=ctypes.sizeof(_library.Stream),
        group=_library.int32(stream.group),
        streamId=_library.encoded(stream.stream_id),
        trackLabels=_library.encoded(stream.track_labels),
        channelCount=_library.int32(stream.channel_count),
        formatKey1=key1,
        formatKey2=key2,
        formatKey3=key3,
        isPairCoded=bool(stream.is_pair_coded),
        isPairShared=bool(stream.is_pair_shared),
    )


@contextlib.contextmanager
def _analysis(request: _library.Request) -> Iterator[Any]:
    """An analysis that is freed in the end, whatever happens meanwhile."""
    analysis = ctypes.POINTER(_library.Analysis)()
    bad_byte = ctypes.c_size_t()
    bad_stream = ctypes.c_int32()
    status = library().kestrelAnalyse(
        ctypes.byref(request),
        ctypes.byref(analysis),
        ctypes.byref(bad_byte),
        ctypes.byref(bad_stream),
    )
    if status == Status.BAD_TEXT:
        place = "the request" if bad_stream.value < 0 else f"streams[{bad_stream.value}]"
        raise KestrelError(status, f": byte {bad_byte.value} of a text of {place}")
    _library.check(status)
    try:
        yield analysis
    finally:
        library().kestrelFreeAnalysis(analysis)


def _read(analysis: Any) -> ServiceMap:
    functions = library()
    outcome = ctypes.c_int32()
    total = ctypes.c_uint32()
    _library.check(
        functions.kestrelOutcome(analysis, ctypes.byref(outcome), ctypes.byref(total))
    )
    return ServiceMap(
        outcome=Outcome(outcome.value),
        track_total=total.value,
        services=_all(analysis, functions.kestrelServiceCount, _service),
        findings=_all(analysis, functions.kestrelFindingCount, _finding),
        described_totals=_library.numbers(functions.kestrelDescribedTotals, analysis),
    )


def _all(
    analysis: Any, count: Callable[..., int], read: Callable[[Any, int], Any]
) -> tuple[Any, ...]:
    return tuple(read(analysis, index) for index in range(_library.number(count, analysis)))


def _service(analysis: Any, index: int) -> Service:
    record = _library.Service(structSize=ctypes.sizeof(_library.Service))
    _library.check(library().kestrelGetService(analysis, index, ctypes.byref(record)))
    slots = record.slots[: max(record.trackCount, 0)]
    tracks = (
        Track(slot.trackNumber, slot.group, slot.sourceGroup, slot.indexInGroup) for slot in slots
    )
    return Service(
        index=record.serviceIndex,
        stream_type=StreamType(record.streamType),
        track_count=record.trackCount,
        reported=bool(record.reported),
        is_emca=bool(record.isEmca),
        requested=bool(record.requested),
        label=record.label.decode(),
        tracks=tuple(track for track in tracks if track != _NO_TRACK),
    )


_NO_TRACK = Track(-1, -1, -1, -1)


def _finding(analysis: Any, index: int) -> Finding:
    record = _library.Finding(structSize=ctypes.sizeof(_library.Finding))
    _library.check(library().kestrelGetFinding(analysis, index, ctypes.byref(record)))
    return Finding(
        code=_finding_code(record.code),
        service=_used(record.service),
        slot=_used(record.slot),
        stream=_used(record.stream),
        # A track number may be -1 itself; it is used where the stream is.
        track=None if record.stream == -1 else record.track,
        first=record.first,
        second=record.second,
        text_offset=_used(record.textOffset),
        text_length=_used(record.textLength),
        sentence=_library.text(library().kestrelFindingText, analysis, index),
    )


def _finding_code(code: int) -> int:
    # A later library may find more than this package has names for.
    return FindingCode(code) if code in FindingCode.__members__.values() else code


def _used(index: int) -> Optional[int]:
    return None if index == -1 else index
