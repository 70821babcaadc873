"""The scripts of examples/scale: many workers, of which some are killed, lose and double nothing.

usage: scale_test.py PROGRAM ROOT FILES

Workers are killed when so many lines of results stand, by signals to their process ids.
"""
import contextlib
import os
import pathlib
import signal
import subprocess
import sys

from scale_support import ScaleTest, main

FILES = int(sys.argv[3])


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


main()
