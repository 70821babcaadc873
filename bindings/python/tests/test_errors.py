"""Requests that are refused, files that do not carry their services, and libraries that do not fit.
"""

import os
import subprocess
import sys
import unittest
from pathlib import Path

import kestrel
from kestrel import KestrelError, Outcome, ServiceMapError, Status, Stream

PACKAGE = Path(kestrel.__file__).resolve().parents[1]


class RefusedRequestTest(unittest.TestCase):
    def test_a_lone_surrogate_is_bad_text(self) -> None:
        streams = [Stream("1", 1), Stream("2", 1, "L \ud800")]
        with self.assertRaises(KestrelError) as raised:
            kestrel.service_map(streams, "T2=Stereo")
        self.assertIs(raised.exception.status, Status.BAD_TEXT)
        self.assertIn("byte 2", str(raised.exception))
        self.assertIn("streams[1]", str(raised.exception))
        with self.assertRaises(KestrelError) as raised:
            kestrel.service_map([], "T2=\udfff")
        self.assertIn("the request", str(raised.exception))

    def test_a_nul_is_refused_in_any_text(self) -> None:
        for streams, layout, order in (
            ([], "T2=Stereo\0", ""),
            ([], "", "\0"),
            ([Stream("1\0", 1)], "", ""),
            ([Stream("1", 1, "L\0R")], "", ""),
        ):
            with self.assertRaises(ValueError):
                kestrel.service_map(streams, layout, order=order)

    def test_a_number_beyond_32_bits_is_refused(self) -> None:
        for stream in (
            Stream("1", 2**32 + 2),
            Stream("1", 2, group=-(2**31) - 1),
            Stream("1", 2, format_keys=(0, 0, 2**31)),
        ):
            with self.assertRaises(OverflowError):
                kestrel.service_map([stream], "T2=Stereo")

    def test_an_error_says_what_its_status_means(self) -> None:
        for status in Status:
            self.assertNotIn("unknown status", str(KestrelError(status)))
        self.assertEqual(KestrelError(99).status, 99)
        self.assertIn("unknown status", str(KestrelError(99)))


class ServiceMapErrorTest(unittest.TestCase):
    def test_check_raises_the_first_errors_sentence(self) -> None:
        streams = [Stream("1", 1, format_keys=(1, 1, 1)), Stream("2", 1)]
        for given, outcome in (([], Outcome.UNTOUCHED), (streams, Outcome.EMPTIED)):
            found = kestrel.service_map(given, "T2=Stereo,Other")
            self.assertIs(found.outcome, outcome)
            with self.assertRaises(ServiceMapError) as raised:
                found.check()
            self.assertEqual(str(raised.exception), found.findings[0].sentence)
            self.assertIs(raised.exception.service_map, found)


class LibraryTest(unittest.TestCase):
    def run_with(self, library: str) -> "subprocess.CompletedProcess[str]":
        """Asks a new process for the version, with another library."""
        environment = {**os.environ, "KESTREL_LIBRARY": library, "PYTHONPATH": str(PACKAGE)}
        return subprocess.run(
            [sys.executable, "-c", "import kestrel; print(kestrel.version())"],
            env=environment,
            capture_output=True,
            text=True,
            check=False,
        )

    def test_the_environment_names_the_library(self) -> None:
        missing = self.run_with("/nowhere/libkestrel-dll64.so")
        self.assertIn("OSError: /nowhere/libkestrel-dll64.so", missing.stderr)

    @unittest.skipUnless(sys.platform == "linux", "names a library of Linux")
    def test_another_library_is_refused(self) -> None:
        other = self.run_with("libc.so.6")
        self.assertIn("ImportError: libc.so.6 has no function kestrel", other.stderr)

    def test_the_interface_is_the_one_of_this_package(self) -> None:
        self.assertEqual(kestrel.abi_version(), 1)
        self.assertRegex(kestrel.version(), r"^\d+\.\d+\.\d+$")


if __name__ == "__main__":
    unittest.main()
