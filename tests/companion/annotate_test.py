"""ptick-annotate: the source with its ticks beside it, and every tick told once. The listing is read back and
compared with sums, shares and lines that are found here by other means."""

import os
import random
import re
import unittest
from fractions import Fraction

from companion.literal_merge import merged, number, spelled
from companion.random_profiles import RandomProfile, seeds
from support.companions import CompanionTest, path_of
from support.terminal import Terminal

TRY = "Try 'ptick-annotate --help' for more information.\n"


def as_text(name):
    """Bytes as the listing shows them."""
    try:
        return name.decode()
    except UnicodeDecodeError:
        return name.decode("latin-1")


def trace_entries(text):
    """(program, line, ticks) of the trace records, as the file is read alone."""
    for line in text.replace(b"\xfe", b"\n").split(b"\n"):
        fields = re.sub(rb"\t+", b"\t", line.strip(b"\t")).split(b"\t")
        if fields[0].lower() == b"profile:trace" and fields[0].startswith(b"PROFILE:"):
            program, number_text, ticks = (fields[1:] + [b"", b"", b""])[:3]
            yield program, number_text, number(ticks) or Fraction(0)


def source_lines(text):
    lines = re.split(rb"[\n\xfe]", text)
    return lines[:-1] if text == b"" or text.endswith(b"\n") else lines


def shown_lines(with_ticks, count, context, is_whole):
    if is_whole:
        return list(range(1, count + 1))
    return [line for line in range(1, count + 1)
            if any(abs(line - hot) <= context for hot in with_ticks if hot <= count)]  # fmt: skip


def share(ticks, total):
    """Cut to hundredths of a per cent, then to tenths."""
    if total == 0:
        return "0.0"
    tenths = int(ticks * 1000 / total)
    return f"{'-' if tenths < 0 else ''}{abs(tenths) // 10}.{abs(tenths) % 10}"


class Listing:
    """A listing taken apart."""

    def __init__(self, text):
        self.programs, self.rest, self.gaps = [], {}, 0
        lines = text.split("\n")
        assert lines.pop() == ""
        self.head = lines[:2]
        place = 2
        while lines[place + 1].startswith("Program "):
            place = self.read_program(lines, place + 1)
        self.end = lines[place + 1 :]

    def read_program(self, lines, place):
        name, ticks, percent = re.fullmatch(
            r"Program (.*): (\S+) ticks?, (\S+) %", lines[place], re.DOTALL
        ).groups()
        path = lines[place + 1].removeprefix("Source ")
        place += 2
        rows = []
        if re.fullmatch(r" *Ticks +% +Line  Source", lines[place + 1]):
            head = lines[place + 1]
            ends = [head.index("Ticks") + 5, head.index("%") + 1, head.index("Line") + 4]
            place += 2
            while lines[place]:
                row = lines[place]
                cells = [row[: ends[0]], row[ends[0] : ends[1]], row[ends[1] : ends[2]]]
                rows.append(tuple(cell.strip() for cell in cells) + (row[ends[2] + 2 :],))
                place += 1
        self.programs.append((name, ticks, percent, path, rows))
        return place


class AnnotateTest(CompanionTest):
    companion = "ptick-annotate"

    def expected(self, profile, folders, context, is_whole):
        """What a listing has to say: programs, and ticks without source and beyond it."""
        entries = list(trace_entries(profile))
        names = list(dict.fromkeys(program for program, *_ in entries))
        totals = re.findall(rb"(?i)(?<![^\n\xfe])\t*PROFILE:ticks(?:\t+([^\t\n\xfe]*)|(?=[\n\xfe]|\Z))", profile)
        everything = sum((ticks for *_, ticks in entries), Fraction(0))
        total = (number(totals[-1]) or Fraction(0)) if totals and totals[-1] else everything
        programs, without, beyond = [], [], []
        sums = {name: sum((t for p, _, t in entries if p == name), Fraction(0)) for name in names}
        for name in sorted(names, key=lambda n: (-sums[n], -names.index(n))):
            by_line, odd = {}, {}
            for program, line, ticks in entries:
                if program == name:
                    is_line = line.isdigit() and line.isascii() and 0 < int(line) < 2**32
                    where = by_line if is_line else odd
                    key = int(line) if is_line else line
                    where[key] = where.get(key, 0) + ticks
            by_line = {line: ticks for line, ticks in by_line.items() if ticks}
            odd = {line: ticks for line, ticks in odd.items() if ticks}
            if not by_line and not odd:
                continue
            found = [folder for folder in folders if name in folder[1]]
            if not found or b"/" in name or name in (b"", b".", b".."):
                without.append((spelled(sums[name]).decode(), share(sums[name], total), as_text(name)))
                continue
            folder, sources = found[0]
            lines = source_lines(sources[name])
            rows, following = [], 1
            for shown in shown_lines(by_line, len(lines), context, is_whole):
                if shown > following:
                    rows.append(self.gap(shown - following))
                ticks = by_line.get(shown)
                rows.append((
                    spelled(ticks).decode() if ticks else "", share(ticks, total) if ticks else "",
                    str(shown), as_text(lines[shown - 1])))  # fmt: skip
                following = shown + 1
            if rows and following <= len(lines):
                rows.append(self.gap(len(lines) + 1 - following))
            amount = spelled(sums[name]).decode()
            programs.append((as_text(name), amount, share(sums[name], total),
                             f"{folder}/{as_text(name)}", rows))  # fmt: skip
            far = [(line, ticks) for line, ticks in sorted(by_line.items()) if line > len(lines)]
            for line, ticks in far + sorted(odd.items()):
                text = str(line) if isinstance(line, int) else as_text(line)
                beyond.append((ticks, text, as_text(name)))
        return everything, programs, without, beyond

    @staticmethod
    def gap(lines):
        return "", "", "...", f"({lines} line{'s' if lines != 1 else ''})"

    def test_listings_of_random_profiles(self):
        for seed in seeds(120):
            self.random = random.Random(seed)
            folders = [(name, self.sources(name)) for name in ("one", "two")]
            texts = [RandomProfile(seed * 10 + n).text(40) for n in range(self.random.choice([1, 1, 2, 3]))]
            names = [self.write(f"run{n}", text) for n, text in enumerate(texts)]
            profile = texts[0] if len(texts) == 1 else merged(texts)
            context = self.random.choice([0, 1, 3, 100])
            is_whole = self.random.random() < 0.2
            options = [f"--context={context}"] + ["--all"] * is_whole
            with self.subTest(seed=seed):
                result = self.run_it("-f", "one", "-f", "two", *options, *names)
                self.assertEqual((b"", 0), (result.err, result.status))
                self.compare(Listing(result.out.decode()), profile, folders, context, is_whole)

    def compare(self, listing, profile, folders, context, is_whole):
        everything, programs, without, beyond = self.expected(profile, folders, context, is_whole)
        self.assertEqual(programs, [self.nameless(program) for program in listing.programs])
        end = "\n".join(listing.end)
        for ticks, percent, name in without:
            self.assertRegex(end, rf"(?m)^ *{re.escape(ticks)} +{re.escape(percent)}  {re.escape(name)}")
        for ticks, line, name in beyond:
            amount = re.escape(spelled(ticks).decode())
            self.assertRegex(end, rf"(?m)^ *{amount} +\S+ +{re.escape(line)}  {re.escape(name)}")
        annotated = sum((Fraction(row[0]) for *_, rows in listing.programs for row in rows if row[0]), Fraction(0))
        [told] = re.findall(r"^Annotated: (\S+) of (\S+) ticks", end)
        self.assertEqual((spelled(annotated).decode(), spelled(everything).decode()), told)
        left = [Fraction(amount) for amount in re.findall(
            r"(?m)^(?:Without source|On lines that their source does not have): (\S+) ticks?,", end)]  # fmt: skip
        self.assertEqual(everything, annotated + sum(left))

    @staticmethod
    def nameless(program):
        """Names of one text are told apart in the listing, not here."""
        name, ticks, percent, path, rows = program
        return name.removesuffix(" (Latin-1)"), ticks, percent, path, rows

    def sources(self, folder):
        """Sources for some of the names that profiles have."""
        sources = {}
        os.makedirs(os.path.join(self.folder, folder), exist_ok=True)
        for name in os.listdir(os.path.join(os.fsencode(self.folder), folder.encode())):
            os.remove(os.path.join(os.fsencode(self.folder), folder.encode(), name))
        for name in {RandomProfile(self.random.randrange(10**6)).name() for _ in range(12)}:
            if name in (b"", b".") or b"/" in name or b"\x00" in name:
                continue
            pieces = [b"GOSUB X", b"", b"\tIF A", b"\xe4", b"\xc3\xa4", b"\x1b[1m", b"x" * 200, b" end "]
            ends = [b"\n", b"\n", b"\n", b"\xfe"]
            text = b"".join(
                self.random.choice(pieces) + self.random.choice(ends)
                for _ in range(self.random.randrange(45))
            )
            text = text[:-1] if self.random.random() < 0.3 else text
            sources[name] = text
            path = os.path.join(os.fsencode(self.folder), folder.encode(), name)
            with open(path, "wb") as file:
                file.write(text)
        return sources


class AnnotateUseTest(CompanionTest):
    companion = "ptick-annotate"

    def setUp(self):
        super().setUp()
        self.write("src/A", "one\n\ttwo\nthree\nfour\nfive\nsix\nseven\neight\n\x1b[31mnine\nten\n")
        self.write("lib/A", "other\n")
        self.write("lib/B", "b1\n")
        self.write("run", "PROFILE:program\tA x\nPROFILE:ticks\t1000\nPROFILE:trace\tA\t2\t90\n"
                   "PROFILE:trace\tA\t9\t9\nPROFILE:trace\tA\t2\t1\nPROFILE:trace\tA\t11\t3\n"
                   "PROFILE:trace\tB\t1\t900\nPROFILE:trace\tC\t1\t4\n")  # fmt: skip

    def test_the_listing(self):
        self.check(self.run_it("-f", "src", "-f", "lib", "-c1", "run"), (
            "Ticks by source line of program A from profile run\n"
            "Shares are of the profile's 1000 ticks, in per cent, cut to one decimal.\n"
            "\n"
            "Program B: 900 ticks, 90.0 %\n"
            "Source lib/B\n"
            "\n"
            "Ticks     %  Line  Source\n"
            "  900  90.0     1  b1\n"
            "\n"
            "Program A: 103 ticks, 10.3 %\n"
            "Source src/A\n"
            "\n"
            "Ticks    %  Line  Source\n"
            "               1  one\n"
            "   91  9.1     2  \ttwo\n"
            "               3  three\n"
            "             ...  (4 lines)\n"
            "               8  eight\n"
            "    9  0.9     9  \x1b[31mnine\n"
            "              10  ten\n"
            "\n"
            "Annotated: 1000 of 1007 ticks, 100.0 %\n"
            "\n"
            "Without source: 4 ticks, 0.4 %, in 1 program, looked for in src, lib\n"
            "Ticks    %  Program\n"
            "    4  0.4  C\n"
            "\n"
            "On lines that their source does not have: 3 ticks, 0.3 %, on 1 line\n"
            "Ticks    %  Line  Program\n"
            "    3  0.3    11  A\n"
        ))  # fmt: skip

    def test_programs_that_are_asked_for(self):
        result = self.run_it("--source=lib", "--program=B", "-pC", "--program=D", "run")
        self.check(result, (
            "Ticks by source line of program A from profile run\n"
            "Shares are of the profile's 1000 ticks, in per cent, cut to one decimal.\n"
            "\n"
            "Program B: 900 ticks, 90.0 %\n"
            "Source lib/B\n"
            "\n"
            "Ticks     %  Line  Source\n"
            "  900  90.0     1  b1\n"
            "\n"
            "Annotated: 900 of 1007 ticks, 90.0 %\n"
            "Not asked for: 103 ticks, 10.3 %, in 1 program\n"
            "\n"
            "Without source: 4 ticks, 0.4 %, in 1 program, looked for in lib\n"
            "Ticks    %  Program\n"
            "    4  0.4  C\n"
        ), "ptick-annotate: the profile has no ticks of program 'D'\n", 1)  # fmt: skip

    def test_what_is_empty(self):
        self.write("empty", "")
        self.check(self.run_it("-flib", "empty"), (
            "Ticks by source line of program (unknown) from profile empty\n"
            "Shares are of the 0 ticks of all lines, as the profile has no total, in per cent, cut to one "
            "decimal.\n"
            "\n"
            "Annotated: 0 of 0 ticks, 0.0 %\n"
        ))  # fmt: skip

    def test_wrong_use_and_trouble(self):
        self.write("bad", "PROFILE:ticks\t1\nPROFILE:trcae\tA\n")
        self.write("file", "")
        missing = "where are the sources? Name a folder of them with '-f DIR'"
        for arguments, err in [
            (["run"], f"{missing}\n{TRY}"),
            (["-f", "src"], f"missing operand\n{TRY}"),
            (["-f", "src", "-f", "none", "run"],
             f"cannot open the source folder 'none': No such file or directory\n{TRY}"),
            (["-f", "file", "run"], f"cannot open the source folder 'file': Not a directory\n{TRY}"),
            (["-f", "src", "none"], "none: No such file or directory\n"),
            (["-f", "src", "run", "bad", "run"],
             "bad: line 2: unknown record type: PROFILE:trcae ...\n"),
        ]:  # fmt: skip
            with self.subTest(arguments=arguments):
                result = self.run_it(*arguments, "-o", "out")
                self.check(result, err="ptick-annotate: " + err, status=2)
                self.assertFalse(os.path.exists(os.path.join(self.folder, "out")))

    def test_only_regular_files_are_sources(self):
        os.mkfifo(os.path.join(self.folder, "src", "C"))
        os.mkdir(os.path.join(self.folder, "lib", "C"))
        result = self.run_it("-f", "src", "-f", "lib", "run", "-o", "-")
        self.assertIn(b"\nWithout source: 4 ticks, 0.4 %, in 1 program, looked for in src, lib\n", result.out)

    def on_terminal(self, *arguments, **environment):
        terminal = Terminal([path_of(self.companion), *arguments], self.folder, rows=60, columns=40,
                            TERM="xterm", **environment)  # fmt: skip
        self.assertEqual(0, terminal.end())
        return terminal.output.decode().replace("\r\n", "\n")

    def test_a_terminal_is_safe_coloured_and_not_too_narrow(self):
        shown = self.on_terminal("-fsrc", "-flib", "-c1", "run")
        hot, warm, faint, plain = "\x1b[1;31m", "\x1b[33m", "\x1b[2m", "\x1b[0m"
        for row in (
            f"  {hot}900{plain}  {hot}90.0{plain}     {hot}1{plain}  {hot}b1{plain}\n",
            f"   {hot}91{plain}  {hot}9.1{plain}     {hot}2{plain}  {hot}        two{plain}\n",
            f"             {faint}...{plain}  {faint}(4 lines){plain}\n",
            "    9  0.9     9  ?[31mnine\n",
        ):
            self.assertIn(row, shown)
        self.assertNotIn(warm, shown)
        self.write("warm", "PROFILE:ticks\t100\nPROFILE:trace\tA\t1\t1\n")
        self.assertIn(f"{warm}one{plain}", self.on_terminal("-fsrc", "warm"))
        bare = self.on_terminal("-fsrc", "-flib", "run", "--color=never")
        self.assertNotIn("\x1b", bare)
        self.assertLessEqual(max(map(len, bare.split("\n"))), 40)
        self.assertNotIn("\x1b", self.on_terminal("-fsrc", "run", NO_COLOR="1"))

    def test_standard_input_and_files_are_merged(self):
        with_pipe = self.run_piped(self.read("run"), "-f", "src", "-", "run")
        self.assertIn(b"Program A: 206 ticks, 10.3 %\n", with_pipe.out)
        self.assertIn(b" from profile standard input ...\n", with_pipe.out)
        self.assertIn(b"profile's 2000 ticks,", with_pipe.out)


if __name__ == "__main__":
    unittest.main()
