#!/usr/bin/env python3
"""Shares the files of a list among shards, pieces of work that any machine can do.

usage: prepare.py LIST FOLDER [SCAN_OPTION...]

A file's shard follows from its name alone, so that a list that has grown, has lost files or has
another order leaves all other files where they are; the number of shards is settled the first time,
by KESTREL_SHARD_FILES (1000) files each. The folder gets

    files       the names in the list, absolute, each once, ended by null bytes
    options     what the scan is asked for; another question needs another folder
    program     KESTREL, the program to run (kestrel)
    lists/N     the files of shard N, as `files`
    done/N.jsonl  made by scan-shard.sh when each of them has a result; taken away here when
                the shard's list is another one than before

and the shards that are not done are printed, one per line.
"""
import os
import pathlib
import shutil
import sys
import zlib


def names_in(text):
    """Names end with null bytes where there are any, else with newlines."""
    end = b"\0" if b"\0" in text else b"\n"
    return [name for name in text.split(end) if name]


def place_of(name):
    """As the scan tells files apart: absolute, without "." and doubled slashes."""
    whole = name if name.startswith(b"/") else os.getcwdb() + b"/" + name
    return b"/" + b"/".join(part for part in whole.split(b"/") if part not in (b"", b"."))


def ended(words):
    return b"".join(word + b"\0" for word in words)


def write(file, content):
    """Whole or not at all, and not when it holds that already: whether it was written."""
    if file.exists() and file.read_bytes() == content:
        return False
    beside = file.with_name(f"{file.name}.{os.getpid()}.new")
    beside.write_bytes(content)
    beside.replace(file)
    return True


def settled(file, content):
    """What stands there since the first time, else the content."""
    if not file.exists():
        write(file, content)
    return file.read_bytes()


def shard_lists(places, count):
    lists = {}
    for place in places:
        lists.setdefault(str(zlib.crc32(place) % count), []).append(place)
    return {shard: ended(list_) for shard, list_ in lists.items()}


def renew(folder, lists):
    """What was done by another list is done no more, from before that list changes."""
    for file in (folder / "lists").iterdir():
        if lists.get(file.name) != file.read_bytes():
            (folder / "done" / f"{file.name}.jsonl").unlink(missing_ok=True)
            if file.name not in lists:
                file.unlink()
    for shard, content in lists.items():
        write(folder / "lists" / shard, content)


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    folder, options = pathlib.Path(sys.argv[2]), ended(os.fsencode(word) for word in sys.argv[3:])
    places = list(dict.fromkeys(map(place_of, names_in(pathlib.Path(sys.argv[1]).read_bytes()))))
    if not places:
        sys.exit(f"prepare: no file in {sys.argv[1]}")
    for part in ["lists", "results", "done", "locks"]:
        (folder / part).mkdir(parents=True, exist_ok=True)
    if settled(folder / "options", options) != options:
        sys.exit(f"prepare: {folder} is of a scan with other options; take another folder")
    program = os.environ.get("KESTREL", "kestrel")
    write(folder / "program", os.fsencode(os.path.abspath(program) if "/" in program else program))
    size = int(os.environ.get("KESTREL_SHARD_FILES", "1000"))
    count = int(settled(folder / "shards", b"%d" % -(-len(places) // size)))
    write(folder / "files", ended(places))
    renew(folder, shard_lists(places, count))
    # The machines take the scripts from here. A copy that is at work keeps its own file.
    for script in ["scan-shard.sh", "merge.sh"]:
        if write(folder / script, pathlib.Path(__file__).with_name(script).read_bytes()):
            shutil.copymode(pathlib.Path(__file__).with_name(script), folder / script)
    shards = sorted((file.name for file in (folder / "lists").iterdir()), key=int)
    left = [shard for shard in shards if not (folder / "done" / f"{shard}.jsonl").exists()]
    print(f"{len(places)} files in {len(shards)} shards, {len(left)} to do", file=sys.stderr)
    print("\n".join(left))


main()
