"""The scripts of examples/scale: hosts, shards and lists.

usage: scale_hosts_test.py PROGRAM ROOT
"""
import json
import os
import pathlib
import subprocess

from scale_support import PARALLEL, PROGRAM, SOURCES, ScaleTest, documents, main, write_list


class Hosts(ScaleTest):
    """GNU parallel's hosts. For ssh stands a script that runs the command here, elsewhere.

    Like ssh it hands over nothing of this environment, and whatever login shell there is.
    """

    def ssh(self, script):
        self.environment["PARALLEL_SSH"] = str(self.folder / "ssh")
        ssh = self.folder / "ssh"
        ssh.write_text(f"#!/bin/sh\nhost=$1; shift 2\necho $host >>{self.folder}/hosts\n"
                       f"{script}\ncd / && exec env -i HOME=/ SHELL=/nonexistent PATH=\"$PATH\" "
                       "sh -c \"$*\"\n", encoding="utf-8")
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


class Folders(ScaleTest):
    """Names of the folder that a shell, GNU parallel or Perl would read as something else."""

    NAMES = ["o{= open(my $f, '>', 'attacked') =}", "o{}", "o {#} {%} {1} {2} {.}", "-o", "--",
             "o'\"$(touch attacked)`touch attacked`", "two\nlines", "o ::: x", "$HOME;*?\\", "+%"]

    def expect_results_in(self, name, *options):
        run = subprocess.run([PARALLEL, "list", name, *options], env=self.environment,
                             capture_output=True, text=True, check=False, cwd=self.folder)
        self.assertEqual(run.returncode, 0, f"{name!r}: {run.stderr}")
        self.assertEqual(len(documents(self.folder / name / "results.jsonl")), 4)
        self.assertTrue((self.folder / name / "joblog").exists(), name)

    def entries(self):
        return {file.name for file in self.folder.iterdir()}

    def test_any_name_will_do(self):
        write_list(self.folder / "list", self.make_list(14)[:4])
        expected = self.entries() | {"home"}
        for name in self.NAMES:
            self.expect_results_in(name)
            expected.add(name)
            self.assertEqual(self.entries() - {"home"}, expected - {"home"}, name)


class OddFolderOnHosts(Hosts):
    """All of it over hosts too, whose shells read the command once more."""

    def setUp(self):
        super().setUp()
        self.out = self.folder / "o{= `touch attacked` =} '\"$(touch attacked) {1}"


class Shards(ScaleTest):
    """The work on one shard by itself."""

    def shard_files(self):
        return 60

    def prepare(self):
        subprocess.run([PARALLEL.with_name("prepare.py"), "list", self.out], check=True,
                       cwd=self.folder, env=self.environment, capture_output=True)

    def start(self):
        return subprocess.Popen([self.out / "scan-shard.sh", self.out, "0"],
                                stderr=subprocess.PIPE, text=True)

    def end(self, worker):
        _, errors = worker.communicate()
        self.assertEqual((worker.returncode, errors), (0, ""))

    def test_workers_that_come_at_once_wait_for_each_other(self):
        self.make_list(60)
        self.prepare()
        for worker in [self.start() for _ in range(4)]:
            self.end(worker)
        self.expect_none_examined_twice()
        self.assertEqual(len(documents(self.out / "done/0.jsonl")), 60)

    def test_a_shard_that_is_done_is_left_alone(self):
        self.make_list(60)
        self.prepare()
        (self.out / "done/0.jsonl").write_bytes(b"")
        self.end(self.start())
        self.assertEqual(self.raw_results(), {})

    def test_what_cannot_be_examined_gets_a_second_chance(self):
        names = self.make_list(60)
        late, hidden = os.fsdecode(names[0]), self.folder / "hidden"
        program = self.folder / "kestrel"
        program.write_text(f"""#!/bin/sh
            if [ ! -e '{self.folder}/begun' ]; then
              touch '{self.folder}/begun'; mv '{late}' '{hidden}'
              '{PROGRAM}' "$@"; code=$?
              mv '{hidden}' '{late}'; exit $code
            fi
            exec '{PROGRAM}' "$@"
            """, encoding="utf-8")
        program.chmod(0o755)
        self.environment["KESTREL"] = str(program)
        self.prepare()
        self.end(self.start())
        raw = [document["error"] and document["error"]["id"]
               for document in documents(self.out / "results/0.jsonl")
               if document["file"] == late]
        self.assertEqual(raw, ["no-such-file", None])
        merged = [document["error"] for document in documents(self.out / "done/0.jsonl")
                  if document["file"] == late]
        self.assertEqual(merged, [None])


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
        # Not a link: that would change the status of the file and of all that are linked with it.
        late.write_bytes((self.folder / "in" / SOURCES[0]).read_bytes())
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


main()
