"""What the tests of examples/scale share: files, runs, and results held against a plain scan."""
import collections
import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

PROGRAM, ROOT = sys.argv[1], pathlib.Path(sys.argv[2])
PARALLEL = ROOT / "examples/scale/parallel.sh"
MEDIA = ROOT / "tests/media"
# Quickly read; the last two cannot be examined, and neither can the names that lead nowhere.
SOURCES = ["rf64_stereo.wav", "wav_mono.wav", "wav_dolby_e.wav", "aiff_stereo.aiff",
           "caf_stereo.caf", "mp4_aac_51.mp4", "mov_mixed_depths.mov", "mxf_51_stereo.mxf",
           "mxf_no_audio.mxf", "README.md"]
ODD_NAMES = [b"two\nlines.wav", b"\xe9t\xe9 'a' \"b\" $HOME `c`.wav", b" -x {} \\.wav"]


def make_files(folder, count):
    """Many names of few files, in directories of 100; the list has odd names and missing ones."""
    folder.mkdir()
    copies = {name: folder / name for name in SOURCES}
    for name, copy in copies.items():
        copy.write_bytes((MEDIA / name).read_bytes())
    names = [b"sub%03d/%05d.mxf" % (index // 100, index) for index in range(count - 4)]
    names += ODD_NAMES
    for index, name in enumerate(names):
        place = os.path.join(os.fsencode(folder), name)
        os.makedirs(os.path.dirname(place), exist_ok=True)
        os.link(copies[SOURCES[index % len(SOURCES)]], place)
    return [os.path.join(os.fsencode(folder), name) for name in names + [b"none.wav"]]


def write_list(file, names):
    # A name that stands twice, differently written, is one file.
    file.write_bytes(b"".join(name + b"\0" for name in [*names, b"/." + names[0]]))
    return file


def documents(file):
    return [json.loads(line) for line in file.read_text(encoding="utf-8").splitlines()]


def place_in(document):
    return document.get("fileBytes", document["file"])


class ScaleTest(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name).resolve()
        self.out = self.folder / "two words"
        self.environment = dict(os.environ, KESTREL=PROGRAM, LC_ALL="C.UTF-8",
                                KESTREL_SHARD_FILES=str(self.shard_files()),
                                PARALLEL_HOME=str(self.folder / "home"))

    def shard_files(self):
        return 10

    def command(self, *options):
        return [PARALLEL, self.folder / "list", self.out, *options]

    def run_all(self, *options):
        run = subprocess.run(self.command(*options), env=self.environment, capture_output=True,
                             text=True, check=False, cwd=self.folder)
        self.assertEqual(run.returncode, 0, run.stderr)
        return run

    def make_list(self, count):
        names = make_files(self.folder / "in", count)
        write_list(self.folder / "list", names)
        return names

    def scan_at_once(self):
        """The results and totals of one scan of the whole list."""
        run = subprocess.run([PROGRAM, "scan", "--files-from", "list", "-0", "-o", "plain.jsonl"],
                             cwd=self.folder, capture_output=True, text=True, check=False)
        self.assertIn(run.returncode, [1, 2])  # of the files
        return documents(self.folder / "plain.jsonl"), run.stderr

    def raw_results(self):
        return {file: file.read_bytes() for file in (self.out / "results").iterdir()}

    def expect_results_of_one_scan(self, count):
        merged = documents(self.out / "results.jsonl")
        plain, totals = self.scan_at_once()
        self.assertEqual(len(plain), count)
        self.assertEqual(sorted(merged, key=place_in), sorted(plain, key=place_in))
        self.assertEqual((self.out / "totals.txt").read_text(encoding="utf-8"), totals)
        self.assertTrue((self.out / "report.html").exists())

    def expect_none_examined_twice(self):
        counts = collections.Counter(
            place_in(document) for file in self.raw_results() for document in documents(file)
            if document["error"] is None)
        self.assertEqual([place for place, count in counts.items() if count != 1], [])


def main():
    unittest.main(argv=sys.argv[:1])
