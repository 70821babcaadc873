"""What holds between an SPDX list and the package that it lies in; rules yield their problems."""

import hashlib
import json
import pathlib

import jsonschema

SHAPE = json.loads((pathlib.Path(__file__).parent / "spdx_shape.json").read_text())


def shape_problems(content):
    validator = jsonschema.Draft202012Validator(SHAPE)
    return [f"{error.json_path}: {error.message}" for error in validator.iter_errors(content)]


def file_problems(content, root, listed):
    """Every file of the package stands in the list once, but for the list itself."""
    there = {f"./{path.relative_to(root).as_posix()}" for path in root.rglob("*") if path.is_file()}
    names = [entry["fileName"] for entry in content["files"]]
    if len(names) != len(set(names)):
        yield "a file is listed twice"
    for name in (there - {listed}) ^ set(names):
        yield f"{name} is listed or there, not both"


def checksum_problems(content, root):
    for entry in content["files"]:
        path = root / entry["fileName"]
        data = path.read_bytes() if path.is_file() else b""
        for checksum in entry["checksums"]:
            made = hashlib.new(checksum["algorithm"].lower(), data).hexdigest()
            if made != checksum["checksumValue"]:
                yield f"{entry['fileName']} has another {checksum['algorithm']}"


def verification_problems(content, listed):
    """The code is made of the sorted SHA1 sums of all files but the excluded ones."""
    pairs = [(sum_["algorithm"], sum_["checksumValue"])
             for entry in content["files"] for sum_ in entry["checksums"]]
    sums = sorted(value for algorithm, value in pairs if algorithm == "SHA1")
    code = content["packages"][0]["packageVerificationCode"]
    if code["packageVerificationCodeValue"] != hashlib.sha1("".join(sums).encode()).hexdigest():
        yield "the verification code is another"
    if code["packageVerificationCodeExcludedFiles"] != [listed]:
        yield "the list excludes something else than itself"


def relationship_problems(content):
    elements = content["packages"] + content["files"]
    ids = [content["SPDXID"], *(element["SPDXID"] for element in elements)]
    if len(ids) != len(set(ids)):
        yield "an id stands for two things"
    ends = [(one["spdxElementId"], one["relatedSpdxElement"]) for one in content["relationships"]]
    for end in {end for pair in ends for end in pair} ^ set(ids):
        yield f"{end} is related or there, not both"


def problems(content, root, listed):
    shape = shape_problems(content)
    if shape:
        return shape
    return [
        *file_problems(content, root, listed),
        *checksum_problems(content, root),
        *verification_problems(content, listed),
        *relationship_problems(content),
    ]
