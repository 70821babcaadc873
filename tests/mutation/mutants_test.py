"""Tests what scripts/mutants.py makes of lines of C++: every mutant of a line, and of near misses
none; and how the list of equivalents names them.

usage: mutants_test.py ROOT
"""

import pathlib
import sys
import unittest

ROOT = pathlib.Path(sys.argv.pop(1) if len(sys.argv) > 1 else ".").resolve()
sys.path.insert(0, str(ROOT / "scripts"))

from cxx_signatures import Signatures  # noqa: E402
from mutants import joined, mutants_of  # noqa: E402
from mutation_list import Equivalents  # noqa: E402


def changed(text, kinds=(), signatures=Signatures()):
    """(kind, changed lines) of all mutants of a text, or of some kinds alone."""
    found = mutants_of("a.cc", text, signatures)
    return [(m.kind, joined(m.text)) for m in found if not kinds or m.kind in kinds]


def body(line, returned="void"):
    """The line as the body of a function."""
    return f"{returned} f() {{\n  {line}\n}}\n"


class Rows(unittest.TestCase):
    """Rows of a line and what it gives."""

    def gives(self, rows, *kinds, wrap=body):
        for line, *expected in rows:
            with self.subTest(line=line):
                found = [text for _, text in changed(wrap(line), kinds)]
                self.assertEqual(found, expected)

    def test_operators(self):
        self.gives(
            (
                ("x = a + b;", "x = a - b;"),
                ("x = a && b;", "x = a || b;"),
                ("x = a & b;", "x = a | b;"),
                ("x += a;", "x -= a;"),
                ("++x;", "--x;"),
                ("x = std::min(a, b);", "x = std::max(a, b);"),
                ("x = Limits::min();",),
                ("const T& x = a;",),  # declares
                ("auto* const x = a;",),
                ("std::vector<T> x;",),
                ("x = a->b;",),
                ("x = -a;",),
            ),
            "operator",
            "step",
            "word",
        )

    def test_numbers_are_one_more_one_less_and_none(self):
        self.gives(
            (
                ("x = a * 5;", "x = a * 6;", "x = a * 4;", "x = a * 0;"),
                ("x = a * 1;", "x = a * 2;", "x = a * 0;"),
                ("x = a * 0;", "x = a * 1;"),
                ("x = 0x7FU;", "x = 0x80U;", "x = 0x7eU;", "x = 0x0U;"),
                ("x = 0x10'00;", "x = 0x1001;", "x = 0xfff;", "x = 0x0;"),
                ("x = 010;", "x = 9;", "x = 7;", "x = 0;"),
                ("x = f<16>(y);",),
                ("x = k51Mix;",),
                ("x = 1.5;",),
                ('x = "5";',),
                ("x = y;  // 5",),
                ("x = a.size();", "x = (a.size() + 1);", "x = (a.size() - 1);"),
            ),
            "constant",
            "bound",
        )

    def test_a_named_constant_gives_way_to_the_nearest_of_its_family(self):
        def wrap(line):
            return body(f"use(kOne, Kind::kA, LIB_FIRST);\n\n\n\n  {line}")

        def of_line(line):
            return [m.text.strip() for m in mutants_of("a.cc", wrap(line))
                    if m.kind == "constant" and m.line == 6]

        for line, *expected in (
            ("return x == kTwo;", "return x == kOne;"),
            ("return x == Kind::kB;", "return x == Kind::kA;"),
            ("return x == LIB_SECOND;", "return x == LIB_FIRST;"),
            ("return x == Other::kB;",),  # the one of its family
            ("return x == OTHER_SECOND;",),
            ("return x == kOne;",),
            ("constexpr int kTwo = f();",),  # declares
            ("return g<kTwo>();",),
        ):
            with self.subTest(line=line):
                self.assertEqual(of_line(line), expected)

    def test_constants_that_the_file_declares_of_other_types_are_no_family(self):
        text = (
            "constexpr int kOne = f();\nconstexpr T kSame = f();\nconstexpr T kTwo = f();\n"
            + body("use(kTwo, kOne, kSame);")
        )
        found = [text for _, text in changed(text, ("constant",))]
        self.assertEqual(found, ["use(kSame, kOne, kSame);", "use(kTwo, kOne, kTwo);"])

    def test_enumerators_stay_where_they_are_declared(self):
        self.assertEqual(changed("enum class Kind {\n  kA,\n  kB,\n};\n"), [])

    def test_conditions(self):
        self.gives(
            (
                ("if (a) b();", "if (true) b();", "if (false) b();"),
                ("while (a) b();", "while (!(a)) b();"),
                ("if (!a) b();", "if (a) b();", "if (true) b();", "if (false) b();"),
                ("if (a &&\n      b) {", "if (true) {", "if (false) {"),
                ("if (const auto a = b()) {",),
                ("if (int a = b(); a) {",),
                ("return !(a);", "return (a);"),
                ("x = a != b;",),
            ),
            "condition",
            wrap=lambda line: body(line + "\n  }" if line.endswith("{") else line),
        )

    def test_returned_values(self):
        for returned, line, *expected in (
            ("bool", "return a;", "return !(a);"),
            ("bool", "return a ||\n         b;", "return !(a || b);"),
            ("bool", "return false;"),
            ("std::size_t", "return a;", "return static_cast<decltype(a)>((a) + 1);"),
            ("std::string", "return a;", "return {};"),
            ("std::string", "return {};"),
            ("std::optional<int>", "return std::nullopt;"),
            ("void", "return;"),
            ("Unknown", "return a;"),
        ):
            with self.subTest(line=line):
                found = [text for _, text in changed(body(line, returned), ("return",))]
                self.assertEqual(found, expected)

    def test_statements_are_removed_wherever_they_stand(self):
        self.gives(
            (
                ("f();", ";"),
                ("if (x) f();", "if (x) ;"),
                ("if (x) y = 1;", "if (x) ;"),
                ("for (const T& x : y) x.f(a, b);", "for (const T& x : y) ;"),
                ("else f();", "else ;"),
                ("case kOne: f();", "case kOne: ;"),
                ("g([&] { f(); });", ";", "g([&] { ; });"),
                ("a.reserve(b.size() + 1);", ";"),
                ("f<16>(a);", ";"),
                ("std::ranges::sort(a);", ";"),
                ("f(a,\n    b);", ";"),
                ("*out = a;", ";"),
                ("a[i].b = {1, 2};", ";"),
                ("a |= b;", ";"),
                ("continue;", ";"),
                ("return false;", ";"),
                ("throw Error(a);", ";"),
                ("++x;", ";"),
                ("f();  // why", ";  // why"),
                ("// f();",),
                ('a = "; f();"', ),
                ("int a = f();",),
                ("const T a(b);",),
                ("return f();",),
                ("static_assert(f());",),
                ("for (; f();) {}",),
                ("Foo(const Foo&) = delete;",),
                ("explicit Foo(int x);",),
                ("Foo();",),
            ),
            "statement",
        )

    def test_a_call_gives_way_to_its_argument(self):
        self.gives(
            (
                ("x = f(y);", "x = y;"),
                ("x = a::f(y.z);", "x = y.z;"),
                ("x = f(y + 1) * 2;", "x = (y + 1) * 2;"),
                ("if (f(y)) g();", "if (y) g();"),
                ("g(f(y), z);", "g(y, z);"),
                ("x = y.substr(1);", "x = y;"),
                ("return f(y);", "return y;"),
                ("f(y);",),  # a statement, which is removed
                ("x.f(y);",),
                ("x = f();",),
                ("x = f(y, z);",),
                ("x = y.f();",),
                ("x = static_cast<int>(y);",),
                ("x = std::move(y);",),
                ("x = sizeof(y);",),
                ("const T x(y);",),
                ("x = Type(y);",),
                ("throw error(y);",),
                ("x = [&](int y) { return 1; }(2);",),
                ("std::string f(const T& y);",),
                ("static_assert(f(y));",),
                ('x = "f(y)";',),
                ("x = y;  // f(y)",),
            ),
            "call",
        )
        initialised = "struct A {\n  explicit A(int a) : a_(a), B(a) {}\n};\n"
        self.assertEqual(changed(initialised, ("call",)), [])

    def test_neighbouring_arguments_are_exchanged(self):
        self.gives(
            (
                ("f(a, b);", "f(b, a);"),
                ("f(a, b, c);", "f(b, a, c);", "f(a, c, b);"),
                ("x.f(a.b(), c[1]);", "x.f(c[1], a.b());"),
                ("x = f(g(a, b));", "x = f(g(b, a));"),
                ("f(a,\n    b);", "f(b, a);"),
                ("f(a, 1);", "f(1, a);"),
                ('f("a", "b");', 'f("b", "a");'),
                ("return {a, b};", "return {b, a};"),
                ("f(std::pair<a, b>(c), d);", "f(d, std::pair<a, b>(c));"),
                ("f(a, a);",),
                ("f(a);",),
                ('f("a", b);',),
                ("f(a, [] { return b; });",),
                ("f({a, b}, c);",),
                ("f(Kind::kA, b);",),
                ("x = std::max(a, b);",),
                ("void f(int a, int b);",),
                ("std::function<void(int, bool)> f;",),
                ("static_assert(f(a, b));",),
                ("x = y;  // f(a, b)",),
                ('x = "f(a, b)";',),
            ),
            "arguments",
        )

    def test_characters_and_compared_texts(self):
        self.gives(
            (
                ("x = 'x';", "x = 'y';"),
                ("x = y == 'Z';", "x = y == 'Y';"),
                ("x = '\\0';", "x = '1';"),
                ("x = '\\n';", "x = '\\0';"),
                ("x = L'-';", "x = L'.';"),
                ('x = y == "ab";', 'x = y == "bb";'),
                ('x = "-9" == y;', 'x = "-8" == y;'),
                ('x = y.starts_with("a");', 'x = y.starts_with("b");'),
                ('x = y == "";',),
                ('x = "a";',),  # a message
                ('f("a");',),
                ("#include 'x'",),
                ("// 'x'",),
                ("static_assert(c == 'x');",),
                ("x = 1'000;",),
            ),
            "literal",
        )

    def test_what_says_nothing_that_runs_is_left_alone(self):
        for text in (
            "// x = a + b;\n",
            "/* x = a + b;\n   f(); */\n",
            '#include "a + b"\n',
            "#define A(b) \\\n  b + 1\n",
            "static_assert(a + 1 == b && f(c));\n",
            "static_assert(all_of(a, [](int x) {\n  return x == 1;\n}));\n",
            "consteval bool isSound() {\n  return a == b;\n}\n",
            "using A = B<1 + 2>;\n",
            "template <class T, int N = 3>\n",
            'const char* const a = R"(if (a && b) f();)";\n',
            "bool operator==(const T&) const = default;\n",
        ):
            with self.subTest(text=text):
                self.assertEqual(changed(text), [])


class Tables(unittest.TestCase):
    """Each value of a row gives one mutant."""

    def test_rows(self):
        table = """constexpr std::array<Row, 2> kRows = {{
    {Kind::kA, "2a", 0},   {Kind::kB, "{x} 4b", 33},
    {true, 'x', kTwo, f(kOne)},
}};
"""
        self.assertEqual(
            changed(table),
            [
                ("constant", '{Kind::kA, "2a", 1},   {Kind::kB, "{x} 4b", 33},'),
                ("constant", '{Kind::kA, "2a", 0},   {Kind::kB, "{x} 4b", 34},'),
                ("constant", '{Kind::kB, "2a", 0},   {Kind::kB, "{x} 4b", 33},'),
                ("constant", '{Kind::kA, "2a", 0},   {Kind::kA, "{x} 4b", 33},'),
                ("literal", '{Kind::kA, "3a", 0},   {Kind::kB, "{x} 4b", 33},'),
                ("literal", '{Kind::kA, "2a", 0},   {Kind::kB, "{x} 5b", 33},'),
                ("word", "{false, 'x', kTwo, f(kOne)},"),
                ("constant", "{true, 'x', kOne, f(kOne)},"),
                ("constant", "{true, 'x', kTwo, f(kTwo)},"),
                ("literal", "{true, 'y', kTwo, f(kOne)},"),
                ("call", "{true, 'x', kTwo, kOne},"),
            ],
        )

    def test_texts_of_lines_of_their_own(self):
        table = 'constexpr std::array<const char*, 2> kTexts = {\n    "ok",\n    "no",\n};\n'
        self.assertEqual(changed(table, ("literal",)), [("literal", '"pk",'), ("literal", '"oo",')])

    def test_a_list_that_is_walked(self):
        self.assertEqual(
            changed(body('for (const T& a : {"x", "y"}) f(a);'), ("literal",)),
            [
                ("literal", 'for (const T& a : {"y", "y"}) f(a);'),
                ("literal", 'for (const T& a : {"x", "z"}) f(a);'),
            ],
        )

    def test_a_list_in_code_is_no_table(self):
        self.assertEqual(changed(body('f({"x", "y"});'), ("literal",)), [])


class KnownFunctions(unittest.TestCase):
    """What cannot compile is left out where the declaration is known."""

    declared = Signatures(
        [
            "void f(const Track& a, Part b);\nvoid g(std::int32_t a, std::size_t b);\n"
            "Track h(const Track& a);\nTrack i(Part b);\n"
            "struct Cursor {\n  Cursor next() const;\n  int size() const;\n};\n"
        ]
    )

    def test_rows(self):
        for line, *expected in (
            ("f(x, y);",),
            ("g(x, y);", "g(y, x);"),
            ("unknown(x, y);", "unknown(y, x);"),
            ("x = h(y);", "x = y;"),
            ("x = i(y);",),
            ("x = unknown(y);", "x = y;"),
            ("x = y.next();", "x = y;"),
            ("x = y.size();",),
        ):
            with self.subTest(line=line):
                found = changed(body(line), ("call", "arguments"), self.declared)
                self.assertEqual([text for _, text in found], expected)


class Keys(unittest.TestCase):
    """Every mutant has a name of its own."""

    text = body("f();\n  g();\n    f();")

    def mutants(self):
        return list(mutants_of("a.cc", self.text))

    def test_doubled_lines_are_told_apart(self):
        self.assertEqual(
            [(m.key(), m.line) for m in self.mutants()],
            [("a.cc|f();|;", 2), ("a.cc|g();|;", 3), ("a.cc|f();|;|#2", 4)],
        )

    def test_each_is_written_into_its_own_line(self):
        self.assertEqual(
            [m.written_into(self.text) for m in self.mutants()],
            [body(";\n  g();\n    f();"), body("f();\n  ;\n    f();"), body("f();\n  g();\n    ;")],
        )

    def test_several_lines_are_replaced_as_one(self):
        text = body("f(a,\n    b);\n  g();")
        (mutant,) = (m for m in mutants_of("a.cc", text) if m.kind == "arguments")
        self.assertEqual(mutant.written_into(text), body("f(b,\n    a);\n  g();"))
        self.assertEqual(mutant.key(), "a.cc|f(a, b);|f(b, a);")

    def test_all_sources_give_different_keys(self):
        for path in sorted((ROOT / "analyser").glob("*.cc")):
            keys = [m.key() for m in mutants_of(path.name, path.read_text(encoding="utf-8"))]
            self.assertEqual(len(keys), len(set(keys)), path.name)

    def entries(self, *lines):
        listed = Equivalents("\n".join(("# a comment", "", *lines)))
        taken = [m.line for m in self.mutants() if listed.entry_of(m)]
        return taken, listed.stale(self.mutants(), {"a.cc"})

    def test_entries_of_the_list(self):
        for line, taken, stale in (
            ("a.cc ;; f(); ;; ; ;; why", [2, 4], []),
            ("a.cc ;; f(); ;; ; ;; #2 ;; why", [4], []),
            ("a.cc ;; f(); ;; ; ;; #1 ;; why", [2], []),
            ("a.cc ;; f(); ;; * ;; why", [2, 4], []),
            ("a.cc ;; f(); ;; * ;; #2 ;; why", [4], []),
            ("a.cc ;; f(); ;; ; ;; #3 ;; why", [], ["a.cc ;; f(); ;; ; ;; #3"]),
            ("a.cc ;; f(); ;; g(); ;; why", [], ["a.cc ;; f(); ;; g();"]),
            ("a.cc ;; h(); ;; * ;; why", [], ["a.cc ;; h(); ;; *"]),
            ("b.cc ;; h(); ;; * ;; why", [], []),  # not looked at
        ):
            with self.subTest(line=line):
                self.assertEqual(self.entries(line), (taken, stale))

    def test_a_file_of_the_host_is_named_without_its_room(self):
        listed = Equivalents("host/a.cc ;; f(); ;; ; ;; why")
        for file, taken in (("host/a.cc", 2), ("host/room/a.cc", 2), ("room/a.cc", 0)):
            with self.subTest(file=file):
                found = list(mutants_of(file, self.text))
                self.assertEqual(sum(listed.entry_of(m) is not None for m in found), taken)
                self.assertEqual(listed.stale(found, {file}), [])

    def test_an_entry_that_says_nothing_is_refused(self):
        for line in ("a.cc ;; f(); ;; why", "a.cc ;; f(); ;; ; ;; twice ;; why"):
            with self.subTest(line=line), self.assertRaises(ValueError):
                self.entries(line)


if __name__ == "__main__":
    unittest.main()
