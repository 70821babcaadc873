"""The shared library: where it is found, its records and its functions.

The library is loaded by the first call that needs it. It is looked for at the path in the
environment variable KESTREL_LIBRARY, then beside this file, then where the system looks.
"""

from __future__ import annotations

import ctypes
import functools
import os
import sys
from ctypes import POINTER, Structure, c_char_p, c_int32, c_int64, c_size_t, c_uint8, c_uint32
from enum import IntEnum
from pathlib import Path
from typing import Any, Callable

ABI = 1
SLOTS = 32
FILE_NAME = "libkestrel-dll64" + (".dll" if sys.platform == "win32" else ".so")


class Status(IntEnum):
    """What a function of the library answers."""

    OK = 0
    UNKNOWN_ID = 1
    UNKNOWN_NAME = 2
    BUFFER_TOO_SMALL = 3
    NULL_ARGUMENT = 4
    BAD_TEXT = 5
    BAD_COUNT = 6
    BAD_RECORD_SIZE = 7
    BAD_INDEX = 8
    OUT_OF_MEMORY = 9


class KestrelError(Exception):
    """A call that the library refused; `status` is a Status wherever this package knows it."""

    def __init__(self, status: int, detail: str = "") -> None:
        phrase: bytes = library().kestrelStatusText(status)
        super().__init__(phrase.decode() + detail)
        known = status in Status.__members__.values()
        self.status: int = Status(status) if known else status


class Stream(Structure):
    _fields_ = [
        ("structSize", c_uint32),
        ("group", c_int32),
        ("streamId", c_char_p),
        ("trackLabels", c_char_p),
        ("channelCount", c_int32),
        ("formatKey1", c_int32),
        ("formatKey2", c_int32),
        ("formatKey3", c_int32),
        ("isPairCoded", c_uint8),
        ("isPairShared", c_uint8),
        ("reserved", c_uint8 * 6),
    ]


class Request(Structure):
    _fields_ = [
        ("structSize", c_uint32),
        ("streamCount", c_int32),
        ("layoutDescription", c_char_p),
        ("surroundChannelOrder", c_char_p),
        ("streams", POINTER(Stream)),
        ("streamStride", c_uint32),
        ("reportAll", c_uint8),
        ("surroundCheck", c_uint8),
        ("reserved", c_uint8 * 2),
    ]


class Track(Structure):
    _fields_ = [
        ("trackNumber", c_int64),
        ("group", c_int32),
        ("sourceGroup", c_int32),
        ("indexInGroup", c_int32),
        ("reserved", c_int32),
    ]


class Service(Structure):
    _fields_ = [
        ("structSize", c_uint32),
        ("trackCount", c_int32),
        ("serviceIndex", c_int32),
        ("streamType", c_int32),
        ("reported", c_uint8),
        ("isEmca", c_uint8),
        ("requested", c_uint8),
        ("reserved", c_uint8 * 5),
        ("label", c_char_p),
        ("slots", Track * SLOTS),
    ]


class Finding(Structure):
    _fields_ = [
        ("structSize", c_uint32),
        ("code", c_int32),
        ("service", c_int32),
        ("slot", c_int32),
        ("stream", c_int32),
        ("reserved", c_int32),
        ("track", c_int64),
        ("first", c_int64),
        ("second", c_int64),
        ("textOffset", c_int64),
        ("textLength", c_int64),
    ]


class Analysis(Structure):
    """Owned by the library, which alone knows its fields."""


_INT = POINTER(c_int32)
_TEXT = POINTER(c_char_p)
_SIZE = POINTER(c_size_t)
_ANALYSIS = POINTER(Analysis)

# The arguments of every function that returns a status.
_ARGUMENTS: dict[str, list[Any]] = {
    "kestrelCatalogueSize": [_INT, _INT, _INT],
    "kestrelRowTracks": [c_int32, _INT],
    "kestrelRowItems": [c_int32, _INT, c_size_t, _SIZE],
    "kestrelRowDefaultItem": [c_int32, _INT],
    "kestrelItemRow": [c_int32, _INT],
    "kestrelItemName": [c_int32, _TEXT],
    "kestrelItemFromName": [c_char_p, _INT],
    "kestrelItemStreamTypes": [c_int32, _INT, c_size_t, _SIZE],
    "kestrelItemText": [c_int32, c_char_p, c_size_t, _SIZE],
    "kestrelItemFromText": [c_char_p, _INT],
    "kestrelItemStreamName": [c_int32, c_int32, c_char_p, c_size_t, _SIZE],
    "kestrelStreamTypeName": [c_int32, _TEXT],
    "kestrelStreamTypeTracks": [c_int32, _INT],
    "kestrelStreamTypeFromName": [c_char_p, _INT],
    "kestrelItemFromLayoutCode": [c_char_p, _INT],
    "kestrelLayoutCode": [c_int32, _TEXT, _INT],
    "kestrelAnalyse": [POINTER(Request), POINTER(_ANALYSIS), _SIZE, _INT],
    "kestrelOutcome": [_ANALYSIS, _INT, POINTER(c_uint32)],
    "kestrelServiceCount": [_ANALYSIS, _INT],
    "kestrelGetService": [_ANALYSIS, c_int32, POINTER(Service)],
    "kestrelFindingCount": [_ANALYSIS, _INT],
    "kestrelGetFinding": [_ANALYSIS, c_int32, POINTER(Finding)],
    "kestrelFindingText": [_ANALYSIS, c_int32, c_char_p, c_size_t, _SIZE],
    "kestrelDescribedTotals": [_ANALYSIS, _INT, c_size_t, _SIZE],
}

_OTHER_FUNCTIONS: dict[str, tuple[list[Any], Any]] = {
    "kestrelStatusText": ([c_int32], c_char_p),
    "kestrelVersion": ([], c_char_p),
    "kestrelAbiVersion": ([], c_int32),
    "kestrelFreeAnalysis": ([_ANALYSIS], None),
}


def find() -> str:
    """The library's path, or its bare name, for the system to look for."""
    named = os.environ.get("KESTREL_LIBRARY")
    if named:
        return named
    beside = Path(__file__).with_name(FILE_NAME)
    return str(beside) if beside.exists() else FILE_NAME


@functools.lru_cache(maxsize=None)
def library() -> ctypes.CDLL:
    """The loaded library. OSError when there is none, ImportError when it is of another ABI."""
    path = find()
    loaded = ctypes.CDLL(path)
    for name, arguments in _ARGUMENTS.items():
        _declare(loaded, name, arguments, c_int32)
    for name, (arguments, result) in _OTHER_FUNCTIONS.items():
        _declare(loaded, name, arguments, result)
    abi = loaded.kestrelAbiVersion()
    if abi != ABI:
        raise ImportError(f"{path} has interface {abi}; this package needs {ABI}")
    return loaded


def _declare(loaded: ctypes.CDLL, name: str, arguments: list[Any], result: Any) -> None:
    try:
        function = getattr(loaded, name)
    except AttributeError as error:
        raise ImportError(f"{loaded._name} has no function {name}") from error
    function.argtypes = arguments
    function.restype = result


def version() -> str:
    """The version of the library."""
    text: bytes = library().kestrelVersion()
    return text.decode()


def abi_version() -> int:
    """The number of the library's interface."""
    number: int = library().kestrelAbiVersion()
    return number


def check(status: int) -> None:
    """Raises KestrelError for anything but OK."""
    if status != Status.OK:
        raise KestrelError(status)


def encoded(text: str) -> bytes:
    """A text as the library takes it. It ends at a NUL, so none may stand inside."""
    if "\0" in text:
        raise ValueError("a text must not hold a NUL")
    # Lone surrogates are passed on, so that the library refuses them like any other bad text.
    return text.encode("utf-8", "surrogatepass")


def int32(value: int) -> int:
    """A number that the library takes; ctypes would cut off the rest of a larger one."""
    if not -(2**31) <= value < 2**31:
        raise OverflowError(f"{value} does not fit into 32 bits")
    return value


def number(function: Callable[..., int], *arguments: Any) -> int:
    """The one number that a function writes."""
    out = c_int32()
    check(function(*arguments, ctypes.byref(out)))
    return out.value


def constant(function: Callable[..., int], *arguments: Any) -> str:
    """The one constant text that a function writes."""
    out = c_char_p()
    check(function(*arguments, ctypes.byref(out)))
    return (out.value or b"").decode()


def numbers(function: Callable[..., int], *arguments: Any) -> tuple[int, ...]:
    """The numbers that a function fills into a buffer."""
    size = _needed(function, *arguments)
    buffer = (c_int32 * size)()
    check(function(*arguments, buffer, size, ctypes.byref(c_size_t())))
    return tuple(buffer)


def text(function: Callable[..., int], *arguments: Any) -> str:
    """The text that a function fills into a buffer."""
    size = _needed(function, *arguments)
    buffer = ctypes.create_string_buffer(size)
    check(function(*arguments, buffer, size, ctypes.byref(c_size_t())))
    return buffer.value.decode()


def _needed(function: Callable[..., int], *arguments: Any) -> int:
    needed = c_size_t()
    status = function(*arguments, None, 0, ctypes.byref(needed))
    if status != Status.BUFFER_TOO_SMALL:
        check(status)
    return needed.value
