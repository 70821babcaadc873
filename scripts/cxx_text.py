"""Reads a C++ source as far as the mutants need it: what is code, what brackets belong together,
where a statement begins and ends, what is a table.

The sources are formatted, which is what makes so simple a reader do: a binary operator has a blank
on both sides, an angle bracket of a template has none before it, and `T& name` declares while
`a & b` computes.
"""

import bisect
import re

OPENING, CLOSING = "([{", ")]}"
# What is skipped as one, in this order: a number may hold a ', a text may hold //.
TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*(?:.|\n)*?\*/)
    |(?P<directive>^[ ]*\#(?:[^\n\\]|\\.|\\\n)*)
    |(?P<raw>R"(?P<mark>[^(\s]*)\((?:.|\n)*?\)(?P=mark)")
    |(?P<number>\b[0-9](?:[\w.]|'[0-9A-Fa-f])*)
    |(?P<text>(?:\b(?:u8|u|U|L))?"(?:\\.|[^"\\\n])*")
    |(?P<char>(?:\b(?:u8|u|U|L))?'(?:\\.|[^'\\\n])+')""",
    re.X | re.M,
)
# A check of what is right passes when it checks less, and the rest says nothing that runs.
LEFT_ALONE = (
    re.compile(r"\bstatic_assert\((?:.|\n)*?\);$", re.M),
    re.compile(r"^consteval bool \w+\(\) \{\n(?:[^}\n].*\n|\n)*\}", re.M),
    re.compile(r"\boperator\W+\(|\[=\]|\[&\]|= (?:default|delete);"),
    re.compile(r"^ *(?:using|template)\b[^\n]*", re.M),
)
TABLE = re.compile(
    r"\b(?:constexpr|const|constinit|static)\b[^;(){}=]*\b(?:k[A-Z0-9]\w*|(?<=static )[^;(){}=]*)"
    r"(?: = (?:[\w:]+(?:<[^;{}()]*>)?)?)?\{"
)
LISTED = re.compile(r"\bfor \([^;{}]* : (?:std::initializer_list<[^{}]*>)?\{")
ENUM = re.compile(r"\benum\b[^;{}()]*\{")
FUNCTION = re.compile(r"^ *(?:\[\[\w+\]\] )?((?:[\w:]+(?:<[^()]*>)?[ &*]+)+)([\w:~]+)\(", re.M)
HEAD = re.compile(r"\b(?:if|for|while|switch)(?: constexpr)? \(")
LABEL = re.compile(r"\b(?:case [\w:']+|default):(?=\s)|\belse(?=\s)|\bdo(?=\s)|[;{}]")
# What stands before a name that is declared, `T name(` or `T& name(`; a keyword is no type.
DECLARES = re.compile(r"(\w+)>*[&*]{0,2} $")
NO_TYPE = {"return", "else", "case", "throw", "co_return", "new", "do", "in"}


class Source:
    """A source, its code with all else as blanks of equal length, and its literals."""

    def __init__(self, text):
        self.text = text
        self.literals = []
        self.code = self._code()
        self._ends = self._pairs()
        self.tables = [span for head in (TABLE, LISTED) for span in self._regions(head)]
        self.enums = list(self._regions(ENUM))
        self._lines = [0] + [at.end() for at in re.finditer("\n", text)]
        self._functions = [
            (at.start(), at.group(1))
            for at in FUNCTION.finditer(self.code)
            if at.group(1).split(" ")[0] not in NO_TYPE
        ]

    def _code(self):
        def blank(match):
            return re.sub(r"[^\n]", " ", match.group())

        def token(match):
            if match.group("number"):
                return match.group()
            if match.group("text") or match.group("char"):
                self.literals.append(match.span())
            return blank(match)

        code = TOKEN.sub(token, self.text)
        for pattern in LEFT_ALONE:
            code = pattern.sub(blank, code)
        # A literal in a check is left alone with it.
        checks = [at.span() for at in LEFT_ALONE[0].finditer(TOKEN.sub(token_blank, self.text))]
        self.literals = [
            span for span in dict.fromkeys(self.literals) if not within(span[0], checks)
        ]
        return code

    def _pairs(self):
        ends, stack, self._around = {}, [], {}
        for at, c in enumerate(self.code):
            if c in OPENING or c == ";":
                self._around[at] = self.code[stack[-1]] if stack else "{"
            if c in OPENING:
                stack.append(at)
            elif c in CLOSING and stack:
                ends[stack.pop()] = at
        return ends

    def _regions(self, head):
        for match in head.finditer(self.code):
            end = self.end_of(match.end() - 1)
            if end is not None:
                yield match.end(), end

    def end_of(self, opening):
        """The place of the bracket that closes the one at `opening`; None where none does."""
        return self._ends.get(opening)

    def is_initialiser(self, opening):
        """Whether the bracket holds what a member or a base is initialised with."""
        end = self._ends[opening]
        follows = re.match(r",| \{", self.code[end + 1 : end + 3])
        return self._around[opening] == "{" and follows is not None

    def line_of(self, at):
        """The number of the line, from 1 on."""
        return bisect.bisect_right(self._lines, at)

    def line_start(self, at):
        return self._lines[self.line_of(at) - 1]

    def line_end(self, at):
        end = self.text.find("\n", at)
        return len(self.text) if end < 0 else end

    def returned(self, at):
        """What the function returns whose text begins last before a place."""
        index = bisect.bisect_right(self._functions, (at, "~"))
        return self._functions[index - 1][1] if index else ""

    def in_table(self, at):
        return within(at, self.tables)

    def expression_end(self, begin):
        """The place of the ";" that ends what begins there; None if a bracket closes before."""
        at = begin
        while at < len(self.code):
            c = self.code[at]
            if c == ";":
                return at
            if c in CLOSING:
                return None
            at = self._ends.get(at, at) + 1 if c in OPENING else at + 1
        return None

    def statements(self):
        """(begin, end) of what stands where a statement may, the end at its ";"."""
        begins = set()
        for match in LABEL.finditer(self.code):
            if match.group() != ";" or self._around.get(match.start()) == "{":
                begins.add(match.end())
        for match in HEAD.finditer(self.code):
            end = self.end_of(match.end() - 1)
            if end is not None:
                begins.add(end + 1)
        found = set()
        for begin in begins:
            begin += len(self.code[begin:]) - len(self.code[begin:].lstrip())
            end = self.expression_end(begin)
            if end is not None and begin < end:
                found.add((begin, end))
        return sorted(found)

    def flat(self, begin, end):
        """The code of a stretch without what its brackets hold."""
        parts, at = [], begin
        while at < end:
            close = self._ends.get(at) if self.code[at] in OPENING else None
            if close is not None and close < end:
                parts.append(self.code[at] + self.code[close])
                at = close + 1
            else:
                parts.append(self.code[at])
                at += 1
        return "".join(parts)

    def arguments(self, opening):
        """(begin, end) of each argument between a bracket and the one that closes it."""
        end = self.end_of(opening)
        if end is None:
            return []
        spans, begin, at, angles = [], opening + 1, opening + 1, 0
        while at < end:
            c = self.code[at]
            if c in OPENING:
                at = self._ends.get(at, at)
            elif c == "<" and re.match(r"\w", self.code[at - 1]):
                angles += 1
            elif c == ">" and angles and self.code[at - 1] not in " -":
                angles -= 1
            elif c == "," and not angles:
                spans.append((begin, at))
                begin = at + 1
            at += 1
        spans.append((begin, end))
        return [self._trimmed(*span) for span in spans if self.text[slice(*span)].strip()]

    def _trimmed(self, begin, end):
        part = self.text[begin:end]
        return begin + len(part) - len(part.lstrip()), end - len(part) + len(part.rstrip())

    def is_declared(self, name_begin):
        """Whether a type stands before the name, so that what follows is no call of it."""
        before = self.code[self.line_start(name_begin) : name_begin]
        match = DECLARES.search(before)
        return bool(match) and match.group(1) not in NO_TYPE


def token_blank(match):
    return match.group() if match.group("number") else re.sub(r"[^\n]", " ", match.group())


def within(at, spans):
    return any(begin <= at < end for begin, end in spans)
