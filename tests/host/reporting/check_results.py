"""Validates what the program writes as JSON against the published schema.

usage: check_results.py PROGRAM MEDIA_DIRECTORY SCHEMA

Every media file with every kind of expectation, and files that cannot be examined. Then the schema
itself is tried: a document that lacks a member, or has a wrong value, must be refused.
"""
import copy
import json
import pathlib
import subprocess
import sys

import jsonschema

EXPECTATIONS = [
    [],
    ["--layout", "T8=5.1 Mix,-Stereo;T12=Stereo,EMCA,Stereo,EMCA,-Stereo,Mono,Mono;T2=EMCA"],
    ["--item", "7", "--report-all"],
    ["--code", "12a", "--strict"],
]
WRONG = [
    (["verdict", "result"], "fine"),
    (["verdict", "exitCode"], 3),
    (["schema"], "kestrel-result-2"),
    (["trackTotal"], -1),
    (["trackTotal"], 4097),
    (["streams", 0, "tracks"], [1, 1]),
    (["tracks", 0, "number"], 0),
    (["findings"], None),
    (["services"], {}),
    (["identification", 0, "item", "id"], 41),
    (["file"], 7),
    (["error"], "none"),
]


def inspect(program, files, options):
    words = [program, "inspect", "--timeout", "1", "--format", "json", *options, *files]
    run = subprocess.run(words, capture_output=True, check=False)
    assert run.returncode in (0, 1, 2), run
    return run.returncode, json.loads(run.stdout)


def check_documents(validator, program, media):
    files = sorted(str(f) for f in media.iterdir() if f.suffix not in (".md", ".py"))
    files += ["/no/such/file", str(media), b"/no/such/\xe9", str(media / "README.md")]
    count = 0
    for options in EXPECTATIONS:
        code, documents = inspect(program, files, options)
        assert len(documents) == len(files)
        assert code == max(d["verdict"]["exitCode"] for d in documents)
        for document in documents:
            validator.validate(document)
            assert (document["error"] is not None) == (
                document["verdict"]["result"] == "not-examined")
            count += 1
    return count


def check_lines(validator, program, media):
    count = 0
    for options in EXPECTATIONS:
        words = [program, "scan", "--timeout", "1", "-q", *options, str(media), "/no/such/file"]
        run = subprocess.run(words, capture_output=True, check=False)
        for line in run.stdout.splitlines():
            document = json.loads(line)
            validator.validate(document)
            for name in ("identity", "options"):
                assert is_refused(validator, {**document, name: {}}), f"{name} may be empty"
            count += 1
    assert count > 100, count
    return count


def is_refused(validator, document):
    return not validator.is_valid(document)


def check_near_misses(validator, document):
    for name in validator.schema["required"]:
        without = {k: v for k, v in document.items() if k != name}
        assert is_refused(validator, without), f"{name} may be absent"
    for path, value in WRONG:
        wrong = copy.deepcopy(document)
        place = wrong
        for step in path[:-1]:
            place = place[step]
        place[path[-1]] = value
        assert is_refused(validator, wrong), f"{path} may be {value}"


def main(program, media, schema):
    schema = json.loads(pathlib.Path(schema).read_text(encoding="utf-8"))
    jsonschema.Draft7Validator.check_schema(schema)
    validator = jsonschema.Draft7Validator(schema)
    count = check_documents(validator, program, pathlib.Path(media))
    count += check_lines(validator, program, pathlib.Path(media))
    _, document = inspect(program, [str(pathlib.Path(media) / "as11_8b_mca.mxf")], [])
    check_near_misses(validator, document)
    print(f"{count} documents are valid")


main(*sys.argv[1:])
