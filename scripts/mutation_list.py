"""The list of mutants that no test can notice, and the log of what came of the tried ones."""

import json
import pathlib
import threading


class Equivalents:
    """What the list names. A line of it is

      file ;; line as it stands ;; line of the mutant, or * for every change of the line ;; reason

    A line that stands in the file more than once is meant each time, or with `#2` before the reason
    the second time only. Several lines are written as one. A file of the host is named without its
    room, since files are moved more often than renamed.
    """

    def __init__(self, text):
        self._reasons = {}
        for line in text.splitlines():
            if line and not line.startswith("#"):
                *parts, reason = line.split(" ;; ")
                if len(parts) not in (3, 4) or len(parts) == 4 and not parts[3][1:].isdigit():
                    raise ValueError(f"what does this mean: {line}")
                self._reasons[tuple(parts)] = reason

    def entry_of(self, mutant):
        """The entry that names a mutant, or None."""
        file, before, change = named_parts(mutant)
        for entry in ((file, before, change), (file, before, "*")):
            for named in ((*entry, f"#{mutant.nth}"), entry):
                if named in self._reasons:
                    return named
        return None

    def stale(self, mutants, files):
        """The entries of these files that name no mutant, as text."""
        used = {self.entry_of(mutant) for mutant in mutants}
        for mutant in mutants:  # an entry for all changes may stand beside one for a single change
            line = (*named_parts(mutant)[:2], "*")
            used |= {line, (*line, f"#{mutant.nth}")}
        return [" ;; ".join(entry) for entry in self._reasons
                if entry[0] in map(without_room, files) and entry not in used]

    def files(self):
        return {entry[0] for entry in self._reasons}


def without_room(file):
    """host/verdict.cc for host/judging/verdict.cc."""
    return f"host/{pathlib.PurePath(file).name}" if file.startswith("host/") else file


def named_parts(mutant):
    file, before, change = mutant.parts()
    return without_room(file), before, change


class Log:
    """What came of the mutants tried so far, one line of JSON each."""

    def __init__(self, path, anew=False):
        self._path, self._lock = path, threading.Lock()
        self.results = {}
        if anew:
            path.unlink(missing_ok=True)
        if path.exists():
            for line in path.read_text(encoding="utf-8").splitlines():
                entry = json.loads(line)
                self.results[entry["key"]] = entry

    def result_of(self, mutant):
        return self.results.get(mutant.key(), {"result": ""})["result"]

    def add(self, mutant, result, by, seconds):
        entry = {"key": mutant.key(), "result": result, "by": by, "seconds": round(seconds, 1)}
        with self._lock:
            self.results[entry["key"]] = entry
            with open(self._path, "a", encoding="utf-8") as out:
                out.write(json.dumps(entry) + "\n")
            print(f"{mutant.file}:{mutant.line}: {result}{' by ' + by if by else ''}", flush=True)
            if result != "not compiling":
                _, before, change = mutant.parts()
                print(f"    {before}\n    {change}", flush=True)
