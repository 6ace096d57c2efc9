"""Command lines as GNU programs take them, by a table of options."""

from __future__ import annotations

from collections.abc import Sequence
from dataclasses import dataclass, field

from .problems import UsageError


@dataclass(frozen=True)
class Option:
    """An option: -o and --output, the second without its hyphens. Only one that has a name for its
    value takes one."""

    short: str
    long: str
    value_name: str
    help: str
    choices: tuple[str, ...] = ()

    def name(self) -> str:
        return "--" + self.long


@dataclass
class Arguments:
    """Options in their order, those without a value with an empty one, and operands."""

    options: list[tuple[Option, str]] = field(default_factory=list)
    operands: list[str] = field(default_factory=list)

    def values(self, long: str) -> list[str]:
        return [value for option, value in self.options if option.long == long]

    def has(self, long: str) -> bool:
        return bool(self.values(long))


def parse(options: Sequence[Option], words: Sequence[str]) -> Arguments:
    """Options are taken anywhere up to "--", short ones joined, values as --name=VALUE,
    --name VALUE, -nVALUE or -n VALUE. Long names are typed in full. Raises UsageError."""
    parsed = Arguments()
    rest = list(words)
    while rest:
        word = rest.pop(0)
        if word == "--":
            parsed.operands += rest
            break
        if word.startswith("--"):
            _take_long(options, word, rest, parsed)
        elif word.startswith("-") and word != "-":
            _take_short(options, word, rest, parsed)
        else:
            parsed.operands.append(word)
    return parsed


def _take_long(
    options: Sequence[Option], word: str, rest: list[str], parsed: Arguments
) -> None:
    name, equals, value = word[2:].partition("=")
    for option in options:
        if option.long == name:
            if equals and not option.value_name:
                raise UsageError(f"option '--{name}' takes no value")
            parsed.options.append((option, value if equals else _next_value(option, rest)))
            return
    meant = [f"'--{option.long}'" for option in options if option.long.startswith(name)]
    guess = f" (did you mean {alternatives(meant)}?)" if meant else ""
    raise UsageError(f"unknown option '--{name}'{guess}")


def _take_short(
    options: Sequence[Option], word: str, rest: list[str], parsed: Arguments
) -> None:
    letters = word[1:]
    while letters:
        letter, letters = letters[0], letters[1:]
        option = next((option for option in options if option.short == letter), None)
        if option is None:
            raise UsageError(f"unknown option '-{letter}{letters}'")
        if option.value_name and letters:
            parsed.options.append((option, letters))
            return
        parsed.options.append((option, _next_value(option, rest)))


def _next_value(option: Option, rest: list[str]) -> str:
    if not option.value_name:
        return ""
    if not rest:
        raise UsageError(f"option '{option.name()}' needs a value")
    return rest.pop(0)


def alternatives(words: Sequence[str]) -> str:
    """ "a, b or c" """
    return " or ".join([*([", ".join(words[:-1])] if len(words) > 1 else []), words[-1]])


def help_text(usage: Sequence[str], summary: str, options: Sequence[Option]) -> str:
    """What --help prints, in lines of at most 79 columns."""
    text = ""
    for line in usage:
        text += ("  or:  " if text else "Usage: ") + line + "\n"
    text += "\n" + _wrapped(summary, 0) + "\nOptions:\n"
    for option in options:
        names = "  " + (f"-{option.short}, " if option.short else "    ") + option.name()
        names += "=" + option.value_name if option.value_name else ""
        begin = names + "\n" + " " * 28 if len(names) > 26 else names.ljust(28)
        text += begin + _wrapped(option.help, 28)
    return text


def _wrapped(words: str, indent: int) -> str:
    lines = [""]
    for word in words.split(" "):
        if lines[-1] and indent + len(lines[-1]) + 1 + len(word) > 79:
            lines.append("")
        lines[-1] += (" " if lines[-1] else "") + word
    return ("\n" + " " * indent).join(lines) + "\n"
