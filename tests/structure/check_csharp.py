"""The declarations for C# say what the plain C header says: constants, records, functions.

usage: check_csharp.py ROOT

Both are read into the same form, with the types of C written as those of C#. The offsets that the
fields have by the rules of sequential layout are those that the C compilers assert. In the end each
line of the declarations is left out once, and must be missed.
"""
import pathlib
import re
import sys

# How a value of a type of C is passed from C#, and how it stands in a record.
PASSED = {
    "KestrelStatus": "int",
    "int32_t": "int",
    "size_t": "UIntPtr",
    "const char*": "[MarshalAs(UnmanagedType.LPUTF8Str)] string",
    "char*": "[Out] byte[]",
    "const char**": "out IntPtr",
    "int32_t*": "out int",
    "uint32_t*": "out uint",
    "size_t*": "out UIntPtr",
    "KestrelAnalysis*": "IntPtr",
    "const KestrelAnalysis*": "IntPtr",
    "KestrelAnalysis**": "out IntPtr",
    "const KestrelRequest*": "ref KestrelRequest",
    "KestrelService*": "ref KestrelService",
    "KestrelFinding*": "ref KestrelFinding",
}
RETURNED = {"KestrelStatus": "int", "int32_t": "int", "const char*": "IntPtr", "void": "void"}
STORED = {
    "uint32_t": "uint",
    "int32_t": "int",
    "int64_t": "long",
    "uint8_t": "byte",
    "const char*": "IntPtr",
    "const KestrelStream*": "IntPtr",
}
SIZES = {"byte": 1, "int": 4, "uint": 4, "long": 8, "IntPtr": 8}
SLOTS = "[MarshalAs(UnmanagedType.ByValArray, SizeConst = Kestrel.KESTREL_SLOTS)] KestrelTrack[]"
SLOTS_SIZE = 32 * 24
IMPORT = "[DllImport(Library, CallingConvention = C)] public static extern"
SETTINGS = [
    "public static class Kestrel",
    'private const string Library = "libkestrel-dll64";',
    "private const CallingConvention C = CallingConvention.Cdecl;",
]


def plain(text):
    """Without comments, every run of white space one blank."""
    return " ".join(re.sub(r"/\*.*?\*/|//[^\n]*", " ", text, flags=re.S).split()).replace("( ", "(")


def parameters_of_c(text):
    for parameter in [] if text == "void" else text.split(", "):
        kind, name = re.fullmatch(r"(.*?) ?(\w+)", parameter).groups()
        # A capacity behind it tells that integers go into a buffer.
        buffer = kind == "int32_t*" and f"{parameter}, size_t capacity" in text
        yield ("[Out] int[]" if buffer else PASSED[kind]), name


def functions_of_c(header):
    found = re.findall(r"KESTREL_FUNCTION ([\w ]+?\*?) (kestrel\w+)\((.*?)\);", plain(header))
    return {name: (RETURNED[kind], list(parameters_of_c(text))) for kind, name, text in found}


def functions_of_csharp(text):
    found = re.findall(re.escape(IMPORT) + r" (\w+) (\w+)\(((?:\([^)]*\)|[^()])*)\);", plain(text))
    return {
        name: (kind, [tuple(p.rsplit(" ", 1)) for p in listed.split(", ") if p])
        for kind, name, listed in found
    }


def fields_of_c(body):
    for kind, name, count in re.findall(r"([\w ]+?\*?) (\w+)(?:\[(\w+)\])?;", body):
        if count == "KESTREL_SLOTS":
            yield SLOTS, name
        elif count:
            yield from ((STORED[kind.strip()], f"{name}{i}") for i in range(int(count)))
        else:
            yield STORED[kind.strip()], name


def records_of_c(header):
    found = re.findall(r"typedef struct (\w+) \{(.*?)\}", plain(header))
    return {name: list(fields_of_c(body)) for name, body in found}


def records_of_csharp(text):
    found = re.findall(
        r"\[StructLayout\(LayoutKind\.Sequential\)\] public struct (\w+) \{(.*?)\}", plain(text))
    fields = r"((?:\[[^]]*\] )?)public (\S+) ([\w, ]+);"
    return {
        record: [(attribute + kind, name) for attribute, kind, names in re.findall(fields, body)
                 for name in names.split(", ")]
        for record, body in found
    }


def offsets(records):
    """Each field at the next multiple of its size, the array of slots at one of 8."""
    found = {}
    for record, fields in records.items():
        end = widest = 0
        for kind, name in fields:
            size = SIZES.get(kind, SLOTS_SIZE)
            width = min(size, 8)
            start = -(-end // width) * width
            found[record, name.replace("reserved0", "reserved")] = start
            end, widest = start + size, max(widest, width)
        found[record] = -(-end // widest) * widest
    return found


def offsets_asserted(text):
    found = re.findall(r"^FIELD_STANDS_AT\((\w+), (\w+), (\d+)\);", text, re.M)
    sizes = re.findall(r"^RECORD_TAKES\((Kestrel\w+), (\d+)\);", text, re.M)
    return {**{(record, field): int(n) for record, field, n in found},
            **{record: int(n) for record, n in sizes}}


def constants_of_c(*headers):
    return dict(re.findall(r"^#define (KESTREL_\w+) (\d+)\b", "\n".join(headers), re.M))


def constants_of_csharp(text):
    return dict(re.findall(r"public const int (\w+) = (\d+);", text))


class Interface:
    def __init__(self, root):
        def read(name):
            return (root / name).read_text(encoding="utf-8")

        header = read("api/kestrel.h")
        self.constants = constants_of_c(header, read("cmake/kestrel_version.h.in"))
        self.records = records_of_c(header)
        self.functions = functions_of_c(header)
        self.offsets = offsets_asserted(read("tests/c_api/c_record_offsets.h"))
        self.names = {n for n in read("api/exported_names.txt").split() if n.startswith("kestrel")}

    def differences(self, text):
        """What the declarations say otherwise: the kind of thing, here and there."""
        records, functions = records_of_csharp(text), functions_of_csharp(text)
        found = offsets(records)
        for kind, here, there in [
            ("constants", self.constants, constants_of_csharp(text)),
            ("records", self.records, records),
            ("functions", self.functions, functions),
            ("exported names", dict.fromkeys(self.names), dict.fromkeys(functions)),
            ("offsets", self.offsets, {key: found.get(key) for key in self.offsets}),
            ("settings", dict.fromkeys(SETTINGS),
             {setting: None for setting in SETTINGS if setting in text}),
        ]:
            for key in {*here, *there}:
                if key not in here or key not in there or here[key] != there[key]:
                    yield f"{kind}: {key}: {here.get(key)} in C, {there.get(key)} in C#"


def lines_not_missed(interface, text):
    lines = text.splitlines()
    for index, line in enumerate(lines):
        if re.match(r"\s*(//.*|using .*|[{}]|)$", line):
            continue
        if not any(interface.differences("\n".join(lines[:index] + lines[index + 1:]))):
            yield f"line {index + 1} says what nothing looks at: {line}"


def main():
    root = pathlib.Path(sys.argv[1])
    interface = Interface(root)
    text = (root / "examples" / "csharp" / "Kestrel.cs").read_text(encoding="utf-8")
    wrong = [*interface.differences(text)] or [*lines_not_missed(interface, text)]
    print("\n".join([*wrong, f"{len(interface.functions)} functions, {len(interface.constants)} "
                     f"constants, {len(interface.offsets)} sizes and offsets"]))
    sys.exit(1 if wrong or not interface.offsets else 0)


main()
