"""Makes the mutants of a C++ source: copies that differ in one small place.

A mutant is a line with one change. The sources are formatted, which is what makes so simple a
reader do: a binary operator has a blank on both sides, an angle bracket of a template has not.
Comments, texts and includes are left alone, also static_asserts and the consteval functions that
answer them with a bool: a check of what is right passes when it checks less. The rows of a table
give one mutant each.
"""

import re
from dataclasses import dataclass

# A binary operator, blanks included, and what stands in for it.
BINARY = {
    "+": "-",
    "-": "+",
    "*": "/",
    "/": "*",
    "%": "/",
    "<": "<=",
    "<=": "<",
    ">": ">=",
    ">=": ">",
    "==": "!=",
    "!=": "==",
    "&&": "||",
    "||": "&&",
    "+=": "-=",
    "-=": "+=",
    "&": "|",
    "|": "&",
    "<<": ">>",
    ">>": "<<",
}
LONGEST_FIRST = sorted(map(re.escape, BINARY), key=len, reverse=True)
OPERATOR = re.compile(r"(?<= )(" + "|".join(LONGEST_FIRST) + r")(?= |$)")
NUMBER = re.compile(r"(?<![\w.'\"])(0x[0-9A-F]+|\d+)(U?)(?![\w.'\"])(?!>)")
WORDS = {"true": "false", "false": "true", "min": "max", "max": "min", "any_of": "all_of"}
WORD = re.compile(r"(?<!\w)(?:(?<=std::)|(?<=ranges::)|(?<!:))(" + "|".join(WORDS) + r")\b(?!\(\))")
POINTED = re.compile(r"\b(?:auto|const|[A-Z]\w+) +$")  # a type, so & and * are no operators
STEP = re.compile(r"\+\+|--")
NOT = re.compile(r"!(?=[\w(])")
HEAD = re.compile(r"\b(?:if|while) \(")
SIZE = re.compile(r"\b[\w.]+\.size\(\)")
RETURN = re.compile(r"return ([^;]+);")
STATEMENT = re.compile(
    r"^(?:(?:if|for|while) \(.*\) )?((?:\*?[\w.\[\]():]|->)+ (?:[-+|&]?=) .*;"
    r"|(?:[\w.:]|->|\(\)\.)+\([^=]*\);"
    r"|continue;|break;|return;|return false;|return \{\};|[-+]{2}[\w.]+;)$"
)
FUNCTION = re.compile(r"^ *(?:\[\[\w+\]\] )?((?:[\w:]+(?:<[^()]*>)?[ &*]+)+)([\w:~]+)\(")
WHOLE = re.compile(
    r"(?:std::)?(?:u?int\d+_t|size_t)|KestrelStatus|StreamType|ServiceMapItem|RuleIndex"
)
EMPTY = re.compile(r"optional|view|string|span|vector|TrackCursor")


@dataclass(frozen=True)
class Mutant:
    """One change of one line; `text` is the whole changed line."""

    file: str
    line: int
    kind: str
    before: str
    text: str

    def key(self):
        return f"{self.file}|{self.before.strip()}|{self.text.strip()}"


def blanked(source):
    """The source with comments, texts and what else is left alone as blanks, of equal length."""

    def blank(match):
        return re.sub(r"[^\n]", " ", match.group())

    skipped = r'//[^\n]*|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])+\'|^ *#[^\n]*'
    text = re.sub(skipped, blank, source, flags=re.M)
    text = re.sub(r"static_assert\((?:.|\n)*?\);$", blank, text, flags=re.M)
    text = re.sub(r"^consteval bool \w+\(\) \{\n(?:[^}\n].*\n|\n)*\}", blank, text, flags=re.M)
    return re.sub(r"\boperator\W+\(|\[=\]|\[&\]|= (?:default|delete);", blank, text)


def mutants_of(file, source):
    """All mutants of a file, in the order of the lines."""
    returned = ""
    for number, (line, code) in enumerate(
        zip(source.split("\n"), blanked(source).split("\n")), start=1
    ):
        header = FUNCTION.match(code)
        if header and not header.group(1).startswith(("return ", "else ", "throw ", "new ")):
            returned = header.group(1)
        if not code.strip() or code.lstrip().startswith(("using ", "template ", "}  //")):
            continue
        changes = dict.fromkeys(changes_of(line, code, returned))
        is_row = code.lstrip().startswith("{")
        for count, (kind, text) in enumerate(changes):
            if text != line and not (is_row and count):
                yield Mutant(file, number, kind, line, text)


def changes_of(line, code, returned):
    """(kind, changed line) for everything that can be changed in a line."""
    yield from operator_changes(line, code)
    yield from number_changes(line, code)
    yield from condition_changes(line, code)
    yield from return_changes(line, code, returned)
    statement = STATEMENT.match(code.strip())
    if statement:
        begin = len(code) - len(code.lstrip()) + statement.start(1)
        yield "statement", line[:begin] + ";"


def replaced(line, match, text, group=0):
    return line[: match.start(group)] + text + line[match.end(group) :]


def operator_changes(line, code):
    for match in OPERATOR.finditer(code):
        if match.group() in "&*" and POINTED.search(code[: match.start()]):
            continue
        yield "operator", replaced(line, match, BINARY[match.group()])
    for match in STEP.finditer(code):
        yield "step", replaced(line, match, "--" if match.group() == "++" else "++")
    for match in WORD.finditer(code):
        yield "word", replaced(line, match, WORDS[match.group()])


def number_changes(line, code):
    for match in NUMBER.finditer(code):
        value = int(match.group(1), 0)
        spell = hex if match.group(1).startswith("0x") else str
        for other in [value + 1, value - 1] if value else [1]:
            yield "constant", replaced(line, match, spell(other) + match.group(2))
    for match in SIZE.finditer(code):
        for other in ("+ 1", "- 1"):
            yield "bound", replaced(line, match, f"({match.group()} {other})")


def closing(code, begin):
    """The place of the parenthesis that closes the one before `begin`; None on another line."""
    depth = 1
    for at in range(begin, len(code)):
        depth += {"(": 1, ")": -1}.get(code[at], 0)
        if depth == 0:
            return at
    return None


def condition_changes(line, code):
    for match in NOT.finditer(code):
        yield "condition", replaced(line, match, "")
    for match in HEAD.finditer(code):
        end = closing(code, match.end())
        if end is None or re.search(r"\bconst auto\b|;", code[match.end() : end]):
            continue
        condition = line[match.end() : end]
        # Either constant is harder to notice than the opposite, which a loop may get.
        for other in (f"!({condition})",) if "while" in match.group() else ("true", "false"):
            yield "condition", line[: match.end()] + other + line[end:]


def return_changes(line, code, returned):
    match = RETURN.search(code)
    if not match or match.group(1) in ("true", "false"):
        return
    value = line[match.start(1) : match.end(1)]
    if re.search(r"\bbool\b", returned):
        yield "return", replaced(line, match, f"return !({value});")
    elif WHOLE.search(returned) and not EMPTY.search(returned) and "*" not in returned:
        more = f"static_cast<decltype({value})>(({value}) + 1)"
        yield "return", replaced(line, match, f"return {more};")
    elif EMPTY.search(returned) and value not in ("{}", "std::nullopt"):
        yield "return", replaced(line, match, "return {};")
