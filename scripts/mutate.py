"""Tries mutants of the library or the host against their tests; see mutation.sh for the usage.

Each worker has a copy of the tree with a build of its own. What came of a mutant goes into a log at
once, so an interrupted run is taken up.
"""

import argparse
import collections
import hashlib
import pathlib
import queue
import sys
import threading

from cxx_signatures import Signatures
from mutants import mutants_of
from mutation_build import HOME, Build, HostPlan, LibraryPlan
from mutation_list import Equivalents, Log, without_room

LIBRARY = ("catalogue", "analyser", "standards", "plain_c")
EQUIVALENT = pathlib.Path("tests/mutation/equivalent.txt")


def sources_in(folders):
    """The sources of the folders and of those in them."""
    found = [path for folder in folders for path in sorted(pathlib.Path(folder).rglob("*"))]
    return [path for path in found if path.suffix in (".cc", ".h")]


def all_mutants(rooms, files):
    for room in rooms:
        if not pathlib.Path(room).is_dir():
            sys.exit(f"mutation: there is no folder {room}")
    declared = sources_in(["api", *LIBRARY, "host"])
    signatures = Signatures(path.read_text(encoding="utf-8") for path in declared)
    for path in dict.fromkeys(sources_in(rooms)):
        if not files or str(path) in files:
            yield from mutants_of(str(path), path.read_text(encoding="utf-8"), signatures)


def work(build, log, files, failures):
    try:
        build.prepare()
        while True:
            build.try_all(files.get_nowait(), log.add)
    except queue.Empty:
        pass
    except BaseException as error:  # a worker that stops early must not look like one that is done
        failures.append(error)


def try_mutants(mutants, log, again, jobs):
    """Tries those of which nothing is known yet, file by file; what survived goes first."""
    groups, survived = collections.defaultdict(list), set()
    for mutant in sorted(mutants, key=lambda m: (m.file, m.line)):
        known = log.result_of(mutant)
        if again and known == "survived":
            survived.add(mutant.file)
            groups[mutant.file].insert(0, mutant)
        elif not known:
            groups[mutant.file].append(mutant)
    for plan in (LibraryPlan(), HostPlan()):
        files = queue.Queue()
        chosen = {f: g for f, g in groups.items() if f.startswith("host/") == (plan.name == "host")}
        for _, group in sorted(chosen.items(), key=lambda i: (i[0] not in survived, -len(i[1]))):
            files.put(group)
        failures = []
        workers = [
            threading.Thread(target=work, args=(Build(n, plan, list(chosen)), log, files, failures))
            for n in range(min(jobs, files.qsize()))
        ]
        for worker in workers:
            worker.start()
        for worker in workers:
            worker.join()
        if failures:
            sys.exit(f"mutation: {failures[0]}")


def show(mutant, what):
    _, before, change = mutant.parts()
    again = f" #{mutant.nth}" if mutant.nth > 1 else ""
    print(f"{what}: {mutant.file}:{mutant.line}: {mutant.kind}{again}\n    {before}\n    {change}")


def report(tried, log, left_out, wanted):
    results = {m: log.result_of(m) for m in tried if log.result_of(m)}
    counts = collections.Counter(results.values())
    for mutant, result in results.items():
        if result == "survived":
            show(mutant, result)
    noticed = counts["killed"] + counts["survived"]
    score = 100 * counts["killed"] / max(noticed, 1)
    print(f"{len(results)} of {len(tried)} mutants tried: {counts['killed']} killed, "
          f"{counts['survived']} survived, {counts['not compiling']} not compiling; "
          f"{left_out} more are equivalent")
    print(f"score {score:.2f} %")
    if score < wanted:
        print(f"mutation: less than {wanted:g} %")
        return 1
    return 0


def report_equivalents(tried, log, equivalents):
    """Names the entries that are not true: a test kills what they name, or it does not compile."""
    by_entry = collections.defaultdict(list)
    for mutant in tried:
        by_entry[equivalents.entry_of(mutant)].append(mutant)
    untrue = 0
    for mutants in by_entry.values():
        results = [log.result_of(mutant) for mutant in mutants]
        none_compiles = all(result == "not compiling" for result in results)
        for mutant, result in zip(mutants, results):
            if result == "killed" or none_compiles:
                show(mutant, f"no equivalent, {result}")
                untrue += 1
    print(f"{len(tried)} mutants of {len(by_entry)} entries tried: {untrue} are no equivalents")
    return 1 if untrue else 0


def lot_of(mutant, seed):
    """A random number; who draws the lowest ones draws nearly the same after a change elsewhere."""
    return hashlib.sha256(f"{seed}|{mutant.key()}".encode()).hexdigest()


def options():
    parser = argparse.ArgumentParser()
    parser.add_argument("rooms", nargs="*")
    parser.add_argument("--sample", type=int, default=0)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--file", action="append", default=[])
    parser.add_argument("--kind", action="append", default=[])
    parser.add_argument("--jobs", type=int, default=1)
    parser.add_argument("--at-least", type=float, default=100)
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--list", action="store_true")
    parser.add_argument("--report", action="store_true")
    parser.add_argument("--equivalents", action="store_true")
    return parser.parse_args()


def main():
    asked = options()
    rooms = [room.rstrip("/") for room in asked.rooms] or LIBRARY
    found = list(all_mutants(rooms, asked.file))
    equivalents = Equivalents(EQUIVALENT.read_text(encoding="utf-8"))
    looked_at = {str(path) for path in sources_in(rooms)}
    if asked.file:
        looked_at &= set(asked.file)
    known = {without_room(str(path)) for path in sources_in([*LIBRARY, "host"])}
    gone = equivalents.files() - known
    stale = equivalents.stale(found, looked_at | gone)
    if stale:
        sys.exit("mutation: equivalent.txt lists what is no mutant:\n  " + "\n  ".join(stale))
    left_out = {mutant for mutant in found if equivalents.entry_of(mutant)}
    chosen = [mutant for mutant in found if (mutant in left_out) == asked.equivalents]
    if asked.kind:
        chosen = [mutant for mutant in chosen if mutant.kind in asked.kind]
    if asked.sample and asked.sample < len(chosen):
        chosen = sorted(chosen, key=lambda mutant: lot_of(mutant, asked.seed))[: asked.sample]
    if asked.list:
        for mutant in sorted(chosen, key=lambda m: (m.file, m.line)):
            print(f"{mutant.file}:{mutant.line}: {mutant.kind}: {mutant.parts()[2]}")
        return 0
    HOME.mkdir(parents=True, exist_ok=True)
    if asked.equivalents:  # what a test notices today is asked, so nothing is taken from a log
        log = Log(HOME / "equivalents.jsonl", anew=not asked.report)
        if not asked.report:
            try_mutants(chosen, log, False, asked.jobs)
        return report_equivalents(chosen, log, equivalents)
    log = Log(HOME / "log.jsonl")
    if not asked.report:
        try_mutants(chosen, log, asked.again, asked.jobs)
    return report(chosen, log, len(left_out), asked.at_least)


if __name__ == "__main__":
    sys.exit(main())
