"""What functions take and give back, as far as their declarations in some sources tell by their
looks: enough to leave out mutants that cannot compile."""

import re

from cxx_text import FUNCTION, NO_TYPE, Source

ARITHMETIC = re.compile(r"(?:std::)?(?:u?int\d*_t|size_t|ptrdiff_t)|int|unsigned|bool|char|double")
CLASS = re.compile(r"\b(?:struct|class)(?: alignas\(\w+\))? (\w+)(?: final)?(?: : [^{};]*)? ?\{")
GIVES = re.compile(
    r"\b(?:virtual|static|inline|constexpr|consteval|explicit|friend|const|auto)\b|\[\[\w+\]\]|[&*]"
)


class Signatures:
    """By the name of a function: (what it gives back, what it takes) of each of that name."""

    def __init__(self, texts=()):
        self._known = {}
        self._same = set()
        for source in map(Source, texts):
            classes = [
                (at.group(1), at.end(), source.end_of(at.end() - 1))
                for at in CLASS.finditer(source.code)
            ]
            for match in FUNCTION.finditer(source.code):
                given = source.arguments(match.end() - 1)
                takes = [type_of(source.text[slice(*span)]) for span in given]
                if "" in takes or match.group(1).split(" ")[0] in NO_TYPE:
                    continue
                name = match.group(2).rpartition("::")[2]
                around = [c for c, begin, end in classes if end and begin <= match.start() < end]
                if around and around[-1] == plain(match.group(1)):
                    self._same.add(name)
                self._known.setdefault(name, set()).add((plain(match.group(1)), tuple(takes)))

    def may_exchange(self, name, count, at):
        """Whether a function of that name may take its arguments `at` and `at` + 1 exchanged."""
        known = [takes for _, takes in self._known.get(name, ()) if len(takes) >= count]
        return not known or any(are_one(takes[at], takes[at + 1]) for takes in known)

    def stays(self, name):
        """Whether a member function of that name gives back one of the type it is called of."""
        return name in self._same

    def may_be_left_out(self, name):
        """Whether a function of that name may give back what it takes as its only argument."""
        known = [(gives, takes[0]) for gives, takes in self._known.get(name, ()) if len(takes) == 1]
        return not known or any(are_one(*types) for types in known)


def plain(type_):
    return re.sub(r"\s+", "", GIVES.sub("", type_))


def type_of(parameter):
    """The type of a parameter as it is declared; "" for what is none."""
    declared = re.sub(r"\s+", " ", parameter.split(" = ")[0]).removeprefix("const ")
    if not re.fullmatch(r"[\w:<>, ]*[\w>][&*]*(?: \w+)?", declared):
        return ""
    return plain(re.sub(r"(?<=[\w>&*]) \w+$", "", declared))


def are_one(left, right):
    """Whether one type may stand for the other; an unnamed or a template's type may be any."""
    if left == right or re.fullmatch(r"|T|Char|\w*LookUp|\w*Call", left + right):
        return True
    if any(len(type_) < 2 for type_ in (left, right)):
        return True
    return bool(ARITHMETIC.fullmatch(left) and ARITHMETIC.fullmatch(right))
