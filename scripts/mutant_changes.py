"""What can be changed in a C++ source, as (kind, begin, end, new text) of a stretch of it.

  operator    another binary operator          condition  always, never, or the opposite
  step        ++ for --                        return     another value, or none
  word        min for max, true for false      statement  gone
  constant    another number or name           call       gone, its value is that of its argument
  literal     another character                arguments  two neighbours exchanged
  bound       a size one off
"""

import re

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
OPERATOR = re.compile(r"(?<= )(" + "|".join(LONGEST_FIRST) + r")(?= |$)", re.M)
NUMBER = re.compile(r"(?<![\w.'\"])(0x[0-9A-Fa-f']+|\d[\d']*)(U?)(?![\w.'\"])(?!>)")
WORDS = {"true": "false", "false": "true", "min": "max", "max": "min", "any_of": "all_of"}
WORD = re.compile(r"(?<!\w)(?:(?<=std::)|(?<=ranges::)|(?<!:))(" + "|".join(WORDS) + r")\b(?!\(\))")
POINTED = re.compile(r"\b(?:auto|const|[A-Z]\w+) +$")  # a type, so & and * are no operators
STEP = re.compile(r"\+\+|--")
NOT = re.compile(r"!(?=[\w(])")
HEAD = re.compile(r"\b(?:if|while) \(")
SIZE = re.compile(r"\b[\w.]+\.size\(\)")
RETURN = re.compile(r"\breturn (?=[^;\s])")
# Of statements, without what their brackets hold.
STATEMENTS = re.compile(
    r"\*?(?:[\w.:\[\]()]|->)+ (?:[-+|&^%*/]|<<|>>)?= .*"
    r"|(?!static_assert|~?[A-Z]\w*\(\)$)(?:[\w:.\[\]()<>]|->)+\(\)"
    r"|continue|break|return|return false|return \{\}|throw .*|(?:[-+]{2}[\w.]+)",
    re.S,
)
WHOLE = re.compile(
    r"(?:std::)?(?:u?int\d+_t|size_t)|KestrelStatus|StreamType|ServiceMapItem|RuleIndex"
)
EMPTY = re.compile(r"optional|view|string|span|vector|TrackCursor")
CALL = re.compile(r"((?:\b(?:[A-Za-z_]\w*::)*|::)([A-Za-z_]\w*)(?:<[^()<>; ]*>)?)\(")
# No calls, or such whose removal changes nothing or does not compile.
NO_CALLS = set(
    "if for while switch catch return sizeof alignof alignas decltype noexcept static_assert void "
    "static_cast reinterpret_cast const_cast dynamic_cast assert defined operator".split()
)
KEPT_CALLS = set("move forward string string_view span optional size_t as_const ref bool".split())
SYMMETRIC = {"min", "max", "swap", "tie"}
# They give back what they are called of, or less of it.
SHORTENING = set("substr first last subspan lexically_normal filename parent_path".split())
PARAMETER = re.compile(
    r"(?!sizeof |new |return |throw )(?:[\w:<>,*& ]*[\w>][&*]* \w+(?: = .*)?"
    r"|(?:const )?[\w:<>, ]+[&*]+|(?:const )?(?:bool|int|char|double|(?:std::)?\w+_t))$"
)
NAMED = re.compile(
    r"(?<![\w:.>])((?:[A-Za-z_]\w*::)*(?:k[A-Z0-9]\w*)|[A-Z][A-Z0-9]*_[A-Z0-9_]+)\b(?![>(])"
)
DECLARED = re.compile(r"\b(?:constexpr|const)\b([^;(){}=]*?)(k[A-Z0-9]\w*)(?: =|\{|\()")
COMPARED_BEFORE = re.compile(
    r"(?:(?:==|!=) $)|\b(?:starts_with|ends_with|contains|find|rfind)\($"
)
COMPARED_BEHIND = re.compile(r" (?:==|!=) ")


def changes_of(source, signatures):
    """Everything that can be changed in a source, calls as far as the signatures let it compile."""
    for changes in (operators, numbers, bounds, conditions, returns, statements, names, literals):
        yield from changes(source)
    yield from calls(source, signatures)
    yield from arguments(source, signatures)


def operators(source):
    for match in OPERATOR.finditer(source.code):
        before = source.code[source.line_start(match.start()) : match.start()]
        if match.group() not in "&*" or not POINTED.search(before):
            yield "operator", *match.span(), BINARY[match.group()]
    for match in STEP.finditer(source.code):
        yield "step", *match.span(), "--" if match.group() == "++" else "++"
    for match in WORD.finditer(source.code):
        yield "word", *match.span(), WORDS[match.group()]


def numbers(source):
    for match in NUMBER.finditer(source.code):
        digits = match.group(1).replace("'", "")
        value = int(digits, 8 if re.fullmatch(r"0[0-7]+", digits) else 0)
        spell = hex if match.group(1).startswith("0x") else str
        others = [value + 1, value - 1, 0] if value else [1]
        for other in others[:1] if source.in_table(match.start()) else dict.fromkeys(others):
            yield "constant", *match.span(), spell(other) + match.group(2)


def bounds(source):
    for match in SIZE.finditer(source.code):
        for other in ("+ 1", "- 1"):
            yield "bound", *match.span(), f"({match.group()} {other})"


def conditions(source):
    for match in NOT.finditer(source.code):
        yield "condition", *match.span(), ""
    for match in HEAD.finditer(source.code):
        begin, end = match.end(), source.end_of(match.end() - 1)
        if end is None or re.search(r"\bconst auto\b|;", source.code[begin:end]):
            continue
        # Either constant is harder to notice than the opposite, which a loop may get.
        opposite = f"!({source.text[begin:end]})"
        for other in (opposite,) if "while" in match.group() else ("true", "false"):
            yield "condition", begin, end, other


def returns(source):
    for match in RETURN.finditer(source.code):
        end = source.expression_end(match.end())
        returned = source.returned(match.start())
        if end is None:
            continue
        value = source.text[match.end() : end]
        if value in ("true", "false"):
            continue
        if re.search(r"\bbool\b", returned):
            yield "return", match.end(), end, f"!({value})"
        elif WHOLE.search(returned) and not EMPTY.search(returned) and "*" not in returned:
            yield "return", match.end(), end, f"static_cast<decltype({value})>(({value}) + 1)"
        elif EMPTY.search(returned) and value not in ("{}", "std::nullopt"):
            yield "return", match.end(), end, "{}"


def statements(source):
    for begin, end in source.statements():
        if STATEMENTS.fullmatch(source.flat(begin, end)):
            yield "statement", begin, end, ""


def calls(source, signatures):
    """A call whose value is used gives way to its one argument, or to what it is called of."""
    whole = {(begin, end) for begin, end in source.statements()}
    for match in CALL.finditer(source.code):
        begin, opening = match.start(1), match.end() - 1
        end = source.end_of(opening)
        name = match.group(2)
        if end is None or name in NO_CALLS | KEPT_CALLS or source.is_declared(begin):
            continue
        if source.is_initialiser(opening) or source.code[:begin][-6:] == "throw ":
            continue
        given = source.arguments(opening)
        if any(is_parameter(source, span) for span in given) or is_statement(source, end, whole):
            continue
        of = re.search(r"(?:\.|->)$", source.code[:begin][-2:])
        if of:
            if name in SHORTENING or signatures.stays(name):
                yield "call", begin - len(of.group()), end + 1, ""
        elif (
            len(given) == 1
            and name[0].islower()
            and not name.endswith("_")
            and signatures.may_be_left_out(name)
        ):
            value = source.text[slice(*given[0])]
            if value[0] not in "[{":
                has_operator = " " in source.flat(*given[0])
                yield "call", begin, end + 1, f"({value})" if has_operator else value


def is_statement(source, close, whole):
    """Whether the call that ends there is the end of a statement that is a call."""
    return any(
        end == close + 1 and " " not in source.flat(begin, end) for begin, end in whole
    )


def is_parameter(source, span):
    return bool(PARAMETER.match(re.sub(r"\s+", " ", source.flat(*span).strip())))


def arguments(source, signatures):
    for name, opening in argument_lists(source):
        given = source.arguments(opening)
        if any(is_parameter(source, span) for span in given):
            continue
        for at, (left, right) in enumerate(zip(given, given[1:])):
            if not signatures.may_exchange(name, len(given), at):
                continue
            first, second = source.text[slice(*left)], source.text[slice(*right)]
            between = source.text[left[1] : right[0]]
            if first != second and are_alike(first, second) and "//" not in between:
                yield "arguments", left[0], right[1], second + between + first


def argument_lists(source):
    for match in CALL.finditer(source.code):
        if match.group(2) not in NO_CALLS | SYMMETRIC and not source.in_table(match.start()):
            yield match.group(2), match.end() - 1
    for match in re.finditer(r"\breturn (?:[A-Z]\w*)?\{", source.code):
        yield "", match.end() - 1


def are_alike(first, second):
    """Whether two arguments may be of one type, as far as their looks tell."""
    kinds = {kind_of(first), kind_of(second)}
    if kinds & {"function", "list"}:
        return False
    return len(kinds) == 1 or kinds in ({"number", "value"}, {"word", "value"})


def kind_of(argument):
    for kind, pattern in (
        ("function", r"\["),
        ("list", r"\{|[\w:<>]+\{|\.\w+ = "),
        ("text", r'(?:u8|[uUL])?"'),
        ("char", r"(?:u8|[uUL])?'"),
        ("number", r"-?\d"),
        ("word", r"(?:true|false)$"),
        ("enumerator", r"\w+::k[A-Z0-9]\w*$"),
        ("name", r"nullptr$"),
    ):
        if re.match(pattern, argument):
            return kind
    return "value"


def names(source):
    """A named constant gives way to the nearest other one of its family in the file."""
    types = {match.group(2): match.group(1).strip() for match in DECLARED.finditer(source.code)}
    families = {}
    for match in NAMED.finditer(source.code):
        if not is_declaration(source, match):
            family = (family_of(match.group(1), types), source.in_table(match.start()))
            families.setdefault(family, []).append(match)
    for matches in families.values():
        for match in matches:
            others = [other for other in matches if other.group(1) != match.group(1)]
            if others:
                near = min(others, key=lambda other: abs(other.start() - match.start()))
                yield "constant", *match.span(), near.group(1)


def family_of(name, types):
    if "::" in name:
        return name.rpartition("::")[0]
    return types.get(name, "k") if name.startswith("k") else name.split("_")[0]


def is_declaration(source, match):
    behind = source.code[match.end() : match.end() + 3]
    return (
        source.is_declared(match.start())
        or any(begin <= match.start() < end for begin, end in source.enums)
        or (behind.startswith(" = ") and not source.in_table(match.start()))
    )


def literals(source):
    """A character gives way to another; in a text only where a table or a comparison holds it."""
    for begin, end in source.literals:
        text = source.text[begin:end]
        if text.endswith("'"):
            yield "literal", begin, end, other_character(text)
        elif source.in_table(begin) or is_compared(source, begin, end):
            other = other_text(text)
            if other:
                yield "literal", begin, end, other


def is_compared(source, begin, end):
    before = source.code[source.line_start(begin) : begin]
    return bool(COMPARED_BEFORE.search(before)) or bool(COMPARED_BEHIND.match(source.code, end))


def other_character(literal):
    begin = literal.index("'") + 1
    content = literal[begin:-1]
    if content.startswith("\\"):
        return literal[:begin] + ("1'" if content == "\\0" else "\\0'")
    return literal[:begin] + neighbour(content) + "'"


def other_text(literal):
    """The literal with its first letter or digit changed that stands in no braces and no escape."""
    begin = literal.index('"') + 1
    for match in re.finditer(r"\\.|\{[^{}]*\}|([A-Za-z0-9])|.", literal[begin:-1]):
        if match.group(1):
            at = begin + match.start()
            return literal[:at] + neighbour(match.group(1)) + literal[at + 1 :]
    return None


def neighbour(character):
    """A character of the same kind beside it."""
    if character in "zZ9~/[&!":  # the next one would be of another kind, or need a backslash
        return chr(ord(character) - 1) if character not in "!/[&" else "."
    return chr(ord(character) + 1)
