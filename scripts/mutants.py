"""Makes the mutants of a C++ source: copies that differ in one small place.

Comments, includes and messages are left alone, also static_asserts and the consteval functions that
answer them with a bool: a check of what is right passes when it checks less. In a table each value
gives one mutant.
"""

from dataclasses import dataclass

from cxx_signatures import Signatures
from cxx_text import Source
from mutant_changes import changes_of


@dataclass(frozen=True)
class Mutant:
    """One change: the whole lines that it stands in, `before` it and as the mutant's `text`.

    The same lines may stand in a file more than once: `nth` counts them from 1 on.
    """

    file: str
    line: int
    kind: str
    before: str
    text: str
    nth: int = 1

    def parts(self):
        """The file, what stands there and what the mutant has instead, several lines as one."""
        return self.file, joined(self.before), joined(self.text)

    def key(self):
        """Names the mutant as long as its lines stay as they are, wherever they stand."""
        return "|".join(self.parts()) + (f"|#{self.nth}" if self.nth > 1 else "")

    def written_into(self, source):
        """The source with the change made."""
        lines, more = source.split("\n"), self.before.count("\n")
        return "\n".join(lines[: self.line - 1] + [self.text] + lines[self.line + more :])


def joined(lines):
    """Several lines as one."""
    return " ".join(line.strip() for line in lines.split("\n")).strip()


def mutants_of(file, text, signatures=Signatures()):
    """All mutants of a file, in the order of the lines."""
    source = Source(text)
    made = {}
    for kind, begin, end, new in changes_of(source, signatures):
        first, last = source.line_start(begin), source.line_end(max(begin, end - 1))
        before, after = text[first:last], text[first:begin] + new + text[end:last]
        if joined(after) != joined(before):
            made.setdefault((source.line_of(begin), before, after), kind)
    seen = {}
    for (line, before, after), kind in sorted(made.items(), key=lambda item: item[0][0]):
        same = joined(before), joined(after)
        nth = seen[same] = seen.get(same, 0) + 1
        yield Mutant(file, line, kind, before, after, nth)
