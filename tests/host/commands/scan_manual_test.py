"""The manual and the completions say what the program says of itself.

usage: scan_manual_test.py PROGRAM ROOT
"""
import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = pathlib.Path(sys.argv[1])
ROOT = pathlib.Path(sys.argv[2])
MANUAL = ROOT / "docs/man/kestrel.1"
BASH = ROOT / "host/completions/kestrel.bash"
ZSH = ROOT / "host/completions"
COMMANDS = ["inspect", "scan", "report", "catalogue", "codes", "explain"]


def run(*words, **options):
    return subprocess.run(words, capture_output=True, text=True, check=False, **options)


def help_of(*command):
    return run(PROGRAM, *command, "--help").stdout


def options_of(*command):
    """The options that a command's help lists, as {'-o', '--output', ...}."""
    lines = [line for line in help_of(*command).splitlines() if line.startswith("  -")]
    heads = [re.split(r"[ :=]", line.strip())[0] for line in lines]
    return {option for head in heads for option in head.split(",")}


def environment(directory):
    """The program is called kestrel there, and found first."""
    os.symlink(PROGRAM, pathlib.Path(directory) / "kestrel")
    return dict(os.environ, PATH=f"{directory}:{os.environ['PATH']}", LC_ALL="C.UTF-8")


class Manual(unittest.TestCase):
    def test_every_command_and_option_is_in_it(self):
        text = MANUAL.read_text(encoding="utf-8")
        written = set(re.findall(r"(?:\bFl|,) (-?[a-zA-Z0-9-]+)", text))
        for command in COMMANDS:
            self.assertIn(f".It Cm {command}", text)
            for option in options_of(command):
                self.assertIn(option[1:], written, f"{command} {option}")

    def test_every_option_in_it_is_the_programs(self):
        text = MANUAL.read_text(encoding="utf-8")
        known = {"--version"}.union(*(options_of(command) for command in COMMANDS))
        items = [line for line in text.splitlines() if line.startswith(".It Fl")]
        for line in items:
            for option in re.findall(r"(?:Fl|,) (-?[a-zA-Z0-9-]+)", line):
                self.assertIn("-" + option, known, line)

    def test_it_has_no_warnings(self):
        if shutil.which("mandoc"):
            lint = run("mandoc", "-T", "lint", "-W", "warning", str(MANUAL))
            self.assertEqual((lint.returncode, lint.stdout + lint.stderr), (0, ""))
        page = run("man", "--warnings", "-E", "UTF-8", "-l", str(MANUAL),
                   env=dict(os.environ, MANWIDTH="80", MANPAGER="cat", LC_ALL="C.UTF-8"))
        self.assertEqual((page.returncode, page.stderr), (0, ""))
        self.assertIn("EXIT STATUS", re.sub(".\b", "", page.stdout))


class Bash(unittest.TestCase):
    def complete(self, *words):
        script = """
            source "$1"; shift
            COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))
            _kestrel 2>/dev/null
            ((${#COMPREPLY[@]})) && printf '%s\\0' "${COMPREPLY[@]}"
            exit 0"""
        with tempfile.TemporaryDirectory() as directory:
            env = environment(directory)
            (pathlib.Path(directory) / "two words.mxf").touch()
            (pathlib.Path(directory) / "two.jsonl").touch()
            result = run("bash", "--norc", "-c", script, "bash", str(BASH), *words,
                         env=env, cwd=directory)
        self.assertEqual(result.stderr, "")
        return set(result.stdout.split("\0")) - {""}

    def test_it_is_registered(self):
        result = run("bash", "--norc", "-c", f"source '{BASH}' && complete -p kestrel")
        self.assertEqual(result.stdout, "complete -F _kestrel kestrel\n")

    def test_commands(self):
        self.assertEqual(self.complete("kestrel", ""),
                         {*COMMANDS, "-h", "--help", "--version"})
        self.assertEqual(self.complete("kestrel", "c"), {"catalogue", "codes"})
        self.assertEqual(self.complete("kestrel", "x"), set())

    def test_the_options_are_those_of_the_program(self):
        for command in COMMANDS:
            self.assertEqual(self.complete("kestrel", command, "-"), options_of(command), command)

    def test_values(self):
        rows = [
            (("inspect", "--format", ""), {"text", "json", "html"}),
            (("codes", "--format", ""), {"text", "json"}),
            (("report", "--format", ""), {"html", "text", "jsonl"}),
            (("inspect", "--code", "12d"), {"12d"}),
            (("scan", "--item", "40"), {"40"}),
            (("scan", "--jobs", ""), set()),
            (("scan", "tw"), {"two words.mxf", "two.jsonl"}),
            (("scan", "--resume", "-o", "two.j"), {"two.jsonl"}),
            (("report", "two w"), {"two words.mxf"}),
            (("explain", "tw"), set()),
            (("scan", "--re"), {"--resume", "--recheck", "--report-all", "--require-isolation"}),
        ]
        for words, expected in rows:
            self.assertEqual(self.complete("kestrel", *words), expected, words)


@unittest.skipUnless(shutil.which("zsh"), "zsh is not installed")
class Zsh(unittest.TestCase):
    """Types into an interactive zsh: Tab completes, Ctrl-X prints the words of the line."""

    def setUp(self):
        self.directory = tempfile.TemporaryDirectory()
        home = pathlib.Path(self.directory.name)
        (home / "two words.mxf").touch()
        self.process, self.terminal = pty.fork()
        if self.process == 0:
            os.chdir(home)
            os.execvpe("zsh", ["zsh", "-f", "-i"], dict(environment(home), TERM="dumb"))
        self.type(f"""PS1=; fpath=('{ZSH}' $fpath); autoload -Uz compinit; compinit -u -D
            unsetopt automenu list_ambiguous prompt_sp
            words-out() {{ local -a words; words=(${{(z)BUFFER}}); BUFFER=
              print -r -- "<${{(j:|:)${{(@Q)words}}}}>" }}
            zle -N words-out; bindkey '^I' expand-or-complete; bindkey '^X' words-out
            print rea''dy\n""")
        self.read("ready")

    def tearDown(self):
        os.close(self.terminal)
        os.waitpid(self.process, 0)
        self.directory.cleanup()

    def type(self, text):
        os.write(self.terminal, text.encode())

    def read(self, end, seconds=30):
        text, limit = "", time.monotonic() + seconds
        while not re.search(end, text):
            ready, _, _ = select.select([self.terminal], [], [], max(0, limit - time.monotonic()))
            self.assertTrue(ready, f"no {end} in {text!r}")
            text += os.read(self.terminal, 65536).decode(errors="replace")
        return text

    def complete(self, line):
        self.type(line + "\t\x18")
        return re.findall(r"<([^<>]*)>", self.read(r"<[^<>]*>"))[-1]

    def test_what_is_unique_is_completed(self):
        rows = [
            ("kestrel sc", "kestrel|scan"),
            ("kestrel rep", "kestrel|report"),
            ("kestrel --ver", "kestrel|--version"),
            ("kestrel inspect --form", "kestrel|inspect|--format"),
            ("kestrel inspect --format ht", "kestrel|inspect|--format|html"),
            ("kestrel inspect --no", "kestrel|inspect|--no-label-check"),
            ("kestrel inspect --code 12d", "kestrel|inspect|--code|12d"),
            ("kestrel scan --resu", "kestrel|scan|--resume"),
            ("kestrel scan --files", "kestrel|scan|--files-from"),
            ("kestrel scan two", "kestrel|scan|two words.mxf"),
            ("kestrel report -o r.html two", "kestrel|report|-o|r.html|two words.mxf"),
            ("kestrel report --format jso", "kestrel|report|--format|jsonl"),
            ("kestrel scan --item 4", "kestrel|scan|--item|4"),
        ]
        for line, expected in rows:
            self.assertEqual(self.complete(line), expected, line)


class ZshOptions(unittest.TestCase):
    def test_they_are_those_of_the_program(self):
        text = (ZSH / "_kestrel").read_text(encoding="utf-8")
        for option in set().union(*(options_of(command) for command in COMMANDS)):
            self.assertRegex(text, r"[{',)\"]" + re.escape(option) + r"[\[},]", option)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
