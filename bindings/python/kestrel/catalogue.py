"""The catalogue of layouts: which there are for a number of tracks, and what they hold.

A lookup of something that the catalogue does not hold raises KestrelError.
"""

from __future__ import annotations

import ctypes
import functools
from dataclasses import dataclass
from enum import IntEnum

from kestrel import _library
from kestrel._library import KestrelError, Status, library


class StreamType(IntEnum):
    """The kind of one audio service. The catalogue holds the first five."""

    MONO = 0
    STEREO = 1
    MIX_51 = 2
    MIX_71 = 3
    DOLBY_E = 4
    EMCA = 5
    UNKNOWN = 6

    @property
    def display_name(self) -> str:
        """The name as in "5.1 Mix"; of the types outside the catalogue "EMCA" or "unknown"."""
        if self > StreamType.DOLBY_E:
            return "EMCA" if self is StreamType.EMCA else "unknown"
        return _library.constant(library().kestrelStreamTypeName, self)

    @property
    def tracks(self) -> int:
        """Number of tracks that one stream of a catalogued type occupies."""
        return _library.number(library().kestrelStreamTypeTracks, self)


@dataclass(frozen=True)
class Item:
    """One layout."""

    id: int
    row: int
    name: str
    stream_types: tuple[StreamType, ...]
    stream_names: tuple[str, ...]
    """The stream types with an ordinal where there are several: "Stereo", "Mono 1", "Mono 2"."""
    text: str
    """The stream types as names joined by ",": "5.1 Mix,Stereo"."""


@dataclass(frozen=True)
class Row:
    """All layouts that fill one number of tracks, the default first."""

    id: int
    tracks: int
    items: tuple[Item, ...]

    @property
    def default(self) -> Item:
        return self.items[0]


@dataclass(frozen=True)
class LayoutCode:
    """An EBU R 123 layout code of AS-11 metadata, and the item that it is listed with."""

    code: str
    item: Item


@functools.lru_cache(maxsize=None)
def rows() -> tuple[Row, ...]:
    """The rows, by rising number of tracks."""
    count = ctypes.c_int32()
    other = ctypes.c_int32()
    _library.check(
        library().kestrelCatalogueSize(
            ctypes.byref(count), ctypes.byref(other), ctypes.byref(other)
        )
    )
    return tuple(_row(id) for id in range(count.value))


def items() -> tuple[Item, ...]:
    """All items, by id."""
    return tuple(item for row in rows() for item in row.items)


@functools.lru_cache(maxsize=None)
def item(id: int) -> Item:
    """The item of an id."""
    functions = library()
    types = _library.numbers(functions.kestrelItemStreamTypes, _library.int32(id))
    return Item(
        id=id,
        row=_library.number(functions.kestrelItemRow, id),
        name=_library.constant(functions.kestrelItemName, id),
        stream_types=tuple(StreamType(type) for type in types),
        stream_names=tuple(
            _library.text(functions.kestrelItemStreamName, id, i) for i in range(len(types))
        ),
        text=_library.text(functions.kestrelItemText, id),
    )


def item_from_name(name: str) -> Item:
    """The item with exactly this display name."""
    return item(_library.number(library().kestrelItemFromName, _library.encoded(name)))


def item_from_text(text: str) -> Item:
    """The first item whose stream types are exactly this text: "5.1 Mix,Stereo"."""
    return item(_library.number(library().kestrelItemFromText, _library.encoded(text)))


def item_from_layout_code(code: str) -> Item:
    """The item that an EBU R 123 layout code of AS-11 metadata stands for."""
    return item(_library.number(library().kestrelItemFromLayoutCode, _library.encoded(code)))


def stream_type_from_name(name: str) -> StreamType:
    """The stream type with exactly this name."""
    return StreamType(
        _library.number(library().kestrelStreamTypeFromName, _library.encoded(name))
    )


@functools.lru_cache(maxsize=None)
def layout_codes() -> tuple[LayoutCode, ...]:
    """The layout codes that the library knows, in the order in which they are tried."""
    codes: list[LayoutCode] = []
    while True:
        try:
            codes.append(_layout_code(len(codes)))
        except KestrelError as error:
            if error.status == Status.BAD_INDEX:
                return tuple(codes)
            raise


def _row(id: int) -> Row:
    ids = _library.numbers(library().kestrelRowItems, id)
    tracks = _library.number(library().kestrelRowTracks, id)
    return Row(id=id, tracks=tracks, items=tuple(item(id) for id in ids))


def _layout_code(index: int) -> LayoutCode:
    code = ctypes.c_char_p()
    id = ctypes.c_int32()
    _library.check(
        library().kestrelLayoutCode(index, ctypes.byref(code), ctypes.byref(id))
    )
    return LayoutCode(code=(code.value or b"").decode(), item=item(id.value))
