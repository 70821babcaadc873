"""The scripts of examples/scale: many workers, of which some are killed, lose and double nothing.

usage: scale_test.py PROGRAM ROOT FILES

Workers are killed when so many lines of results stand, by signals to their process ids.
"""
import collections
import contextlib
import json
import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import unittest

PROGRAM, ROOT, FILES = sys.argv[1], pathlib.Path(sys.argv[2]), int(sys.argv[3])
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


def children(process):
    text = pathlib.Path(f"/proc/{process}/task/{process}/children").read_text(encoding="ascii")
    return [int(word) for word in text.split()]


def words_of(process):
    """None of one that has ended meanwhile."""
    try:
        return pathlib.Path(f"/proc/{process}/cmdline").read_bytes().split(b"\0")
    except (FileNotFoundError, ProcessLookupError):
        return []


def descendants(process):
    """Those that end meanwhile are left out."""
    found, waiting = [], [process]
    while waiting:
        try:
            waiting += (mine := children(waiting.pop()))
        except (FileNotFoundError, ProcessLookupError):
            continue
        found += mine
    return found


def kill(process):
    with contextlib.suppress(ProcessLookupError):
        os.kill(process, signal.SIGKILL)


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


class KilledWorkers(ScaleTest):
    def shard_files(self):
        return FILES // 10

    def start(self):
        command = subprocess.Popen(self.command("--jobs", "2"), env=self.environment,
                                   cwd=self.folder, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        self.addCleanup(command.wait)
        return command

    def await_lines(self, shard, count):
        """Returns when the shard has so many results; tail hands them on as they come."""
        file = self.out / "results" / f"{shard}.jsonl"
        file.parent.mkdir(parents=True, exist_ok=True)
        file.touch()
        with subprocess.Popen(["tail", "-n", "+1", "-f", file], stdout=subprocess.PIPE) as tail:
            for _ in range(count):
                self.assertTrue(tail.stdout.readline())
            tail.kill()

    def scan_of(self, command, shard):
        file = os.fsencode(self.out / "results" / f"{shard}.jsonl")
        scans = [process for process in descendants(command.pid)
                 if b"scan" in (words := words_of(process)) and file in words]
        self.assertEqual(len(scans), 1)
        return scans[0]

    def test_nothing_is_lost_and_nothing_done_twice(self):
        self.make_list(FILES)
        command = self.start()
        some = FILES // 50
        self.await_lines(0, some)
        for reader in descendants(self.scan_of(command, 0)):
            kill(reader)
        self.await_lines(0, 2 * some)
        kill(self.scan_of(command, 0))
        self.await_lines(5, 1)
        workers = [process for process in descendants(command.pid)
                   if b"scan" in words_of(process)]
        for process in [command.pid, *children(command.pid)]:
            kill(process)
        self.assertEqual(command.wait(), -signal.SIGKILL)
        self.assertFalse((self.out / "results.jsonl").exists())
        self.assertTrue([process for process in workers if os.path.exists(f"/proc/{process}")],
                        "no scan has outlived its parent")
        self.run_all("--jobs", "2")
        self.expect_results_of_one_scan(FILES)
        self.expect_none_examined_twice()
        before = self.raw_results()
        self.assertIn(" 0 to do", self.run_all().stderr)
        self.assertEqual(self.raw_results(), before)


class Hosts(ScaleTest):
    """GNU parallel's hosts. For ssh stands a script that runs the command here, elsewhere."""

    def ssh(self, script):
        self.environment["PARALLEL_SSH"] = str(self.folder / "ssh")
        ssh = self.folder / "ssh"
        ssh.write_text(f"#!/bin/sh\nhost=$1; shift 2\necho $host >>{self.folder}/hosts\n"
                       f"{script}\ncd / && HOME=/ exec sh -c \"$*\"\n", encoding="utf-8")
        ssh.chmod(0o755)

    def hosts_used(self):
        return set((self.folder / "hosts").read_text(encoding="utf-8").split())

    def test_slots_of_this_machine(self):
        self.make_list(60)
        self.run_all("--sshlogin", "3/:")
        self.expect_results_of_one_scan(60)
        self.expect_none_examined_twice()

    def test_shards_are_spread_over_hosts(self):
        self.make_list(60)
        self.ssh("")
        (self.folder / "logins").write_text("1/one\n1/two\n", encoding="utf-8")
        self.run_all("--sshloginfile", str(self.folder / "logins"))
        self.assertEqual(self.hosts_used(), {"one", "two"})
        self.expect_results_of_one_scan(60)

    def test_what_a_host_fails_to_do_another_does(self):
        self.make_list(60)
        self.ssh("[ $host != down ] || exit 255")
        self.run_all("--sshlogin", "1/down,1/up")
        self.assertEqual(self.hosts_used(), {"down", "up"})
        self.expect_results_of_one_scan(60)

    def test_without_hosts_that_work_the_merging_says_what_is_left(self):
        self.make_list(60)
        self.ssh("exit 255")
        run = subprocess.run(self.command("--sshlogin", "1/down"), env=self.environment,
                             capture_output=True, text=True, check=False)
        self.assertEqual(run.returncode, 1)
        self.assertRegex(run.stderr, r"merge: not done: shards [0-9 ]+; the same command")
        self.assertFalse((self.out / "results.jsonl").exists())
        self.run_all()
        self.expect_results_of_one_scan(60)


class Lists(ScaleTest):
    def names_in_results(self, before):
        """Of the lines that came since."""
        return {document["file"] for file, content in self.raw_results().items()
                for document in map(json.loads, content[len(before.get(file, b"")):].splitlines())}

    def test_of_a_list_that_has_grown_only_what_is_new_is_examined(self):
        names = self.make_list(60)
        write_list(self.folder / "list", names[10:])
        self.run_all()
        before = self.raw_results()
        write_list(self.folder / "list", list(reversed(names)))
        self.run_all()
        self.expect_none_examined_twice()
        examined = {document["file"] for document in documents(self.out / "results.jsonl")
                    if document["error"] is None}
        new = {os.fsdecode(name) for name in names[:10]}
        self.assertEqual(self.names_in_results(before) & examined, new & examined)
        self.assertTrue(new & examined)
        self.expect_results_of_one_scan(60)

    def test_what_is_no_longer_listed_is_in_no_result(self):
        names = self.make_list(60)
        self.run_all()
        write_list(self.folder / "list", names[:3])
        before = self.raw_results()
        self.run_all()
        self.assertEqual(self.names_in_results(before), set())
        self.expect_results_of_one_scan(3)

    def test_what_could_not_be_examined_is_tried_again_when_asked_for(self):
        names = self.make_list(60)
        self.run_all()
        late = pathlib.Path(os.fsdecode(names[-1]))
        os.link(self.folder / "in" / SOURCES[0], late)
        self.run_all()
        self.assertEqual(self.errors_of(late), ["no-such-file"])
        for file in (self.out / "done").iterdir():
            file.unlink()
        self.run_all()
        self.assertEqual(self.errors_of(late), [None])
        self.expect_none_examined_twice()

    def errors_of(self, file):
        return [document["error"] and document["error"]["id"]
                for document in documents(self.out / "results.jsonl")
                if document["file"] == str(file)]

    def test_another_question_needs_another_folder(self):
        self.make_list(60)
        self.run_all("--", "--item", "1")
        before = self.raw_results()
        refused = subprocess.run(self.command("--", "--item", "2"), env=self.environment,
                                 capture_output=True, text=True, check=False)
        self.assertEqual(refused.returncode, 1)
        self.assertIn("is of a scan with other options", refused.stderr)
        self.assertEqual(self.raw_results(), before)
        documents_ = documents(self.out / "results.jsonl")
        self.assertEqual({document["options"]["expectation"]["item"]["id"]
                          for document in documents_}, {1})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
