"""Every analysis is freed, also one that could not be read to its end."""

import os
import sys
import unittest
from typing import Any
from unittest import mock

import kestrel
from kestrel import KestrelError, Status, Stream
from kestrel._library import library

CALLS = 10_000
STREAMS = [Stream("1", 6, "L L C"), Stream("2", 2), Stream("3", 2, "é" * 40)]
LAYOUT = "T10=5.1 Mix,Stereo,Other"


def resident_bytes() -> int:
    with open("/proc/self/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * os.sysconf("SC_PAGE_SIZE")


class MemoryTest(unittest.TestCase):
    def setUp(self) -> None:
        """Counts the analyses that are made and those that are freed."""
        self.made = self.patch("kestrelAnalyse")
        self.freed = self.patch("kestrelFreeAnalysis")

    def patch(self, name: str, **behaviour: Any) -> mock.Mock:
        counting = mock.Mock(side_effect=getattr(library(), name), **behaviour)
        patch = mock.patch.object(library(), name, counting)
        patch.start()
        self.addCleanup(patch.stop)
        return counting

    def test_every_analysis_is_freed(self) -> None:
        for _ in range(5):
            kestrel.service_map(STREAMS, LAYOUT)
        self.assertEqual(self.made.call_count, 5)
        self.assertEqual(self.freed.call_count, 5)

    def test_an_analysis_that_cannot_be_read_is_freed(self) -> None:
        for name in ("kestrelOutcome", "kestrelGetService", "kestrelFindingText"):
            failing = mock.Mock(return_value=Status.OUT_OF_MEMORY)
            with mock.patch.object(library(), name, failing):
                with self.assertRaises(KestrelError) as raised:
                    kestrel.service_map(STREAMS, LAYOUT)
            self.assertIs(raised.exception.status, Status.OUT_OF_MEMORY)
            self.assertEqual(self.freed.call_count, self.made.call_count)

    def test_a_refused_request_leaves_nothing_to_free(self) -> None:
        with self.assertRaises(KestrelError):
            kestrel.service_map([Stream("\ud800", 1)], "")
        self.assertEqual(self.made.call_count, 1)
        self.assertEqual(self.freed.call_count, 0)


@unittest.skipUnless(sys.platform == "linux", "reads /proc")
class GrowthTest(unittest.TestCase):
    def test_the_process_does_not_grow(self) -> None:
        for _ in range(CALLS // 10):
            kestrel.service_map(STREAMS, LAYOUT)
        before = resident_bytes()
        for _ in range(CALLS):
            kestrel.service_map(STREAMS, LAYOUT)
        # An analysis takes some kilobytes, so ten thousand that were kept would take far more.
        self.assertLess(resident_bytes() - before, 8 * 1024 * 1024)


if __name__ == "__main__":
    unittest.main()
