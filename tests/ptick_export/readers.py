"""Reads the formats of ptick-export back, each by the rules of its format and nothing else."""

import collections
import csv
import gzip
import io
import json
import re

# The expression that flame graph tools read a line with.
FOLDED_LINE = re.compile(r"(.*)\s+(\d+(?:\.\d*)?)")


class Refused(Exception):
    """A file that is not in its format."""


def require(holds, what):
    if not holds:
        raise Refused(what)


def plain_name(text):
    """The name that callgrind's and folded's escapes stand for."""
    if text == "(empty)":
        return ""

    def meant(match):
        return "\\" if match[0] == "\\\\" else chr(int(match[0][2:], 16))

    return re.sub(r"\\\\|\\x[0-9a-f]{2}|\\u[0-9a-f]{4}", meant, text)


def lines_of(data):
    text = data.decode()
    require(not text or text.endswith("\n"), "the last line has no end")
    lines = text.split("\n")[:-1]
    require(sum(len(line.splitlines()) != 1 for line in lines if line) == 0, "a line end in a line")
    return lines


def read_folded(data):
    """{(program, line): ticks}, names as they are written."""
    stacks = {}
    for line in lines_of(data):
        match = FOLDED_LINE.fullmatch(line)
        require(match, f"no stack: {line!r}")
        frames = match[1].split(";")
        require(len(frames) == 2, f"no two frames: {line!r}")
        require(tuple(frames) not in stacks, f"twice: {line!r}")
        require("." not in match[2] and int(match[2]) > 0, f"no count: {line!r}")
        stacks[tuple(frames)] = int(match[2])
    return stacks


class Callgrind:
    """Costs by (function, line), calls by (caller, called), the file of each function."""

    def __init__(self, data):
        self.head = collections.defaultdict(list)
        self.costs = collections.Counter()
        self.calls = collections.Counter()
        self.files = {}
        self.names = {"fn": {}, "fl": {}}
        lines = iter(lines_of(data))
        require(next(lines) == "# callgrind format", "no first line")
        self.read_head(lines)
        self.read_body(lines)
        for key in ("summary", "totals"):
            require(self.head[key] == [str(sum(self.costs.values()))], f"{key} is no sum")

    def read_head(self, lines):
        for line in lines:
            key, colon, value = line.partition(": ")
            require(colon and "#" not in value, f"head: {line!r}")
            self.head[key].append(value)
            if key == "events":
                return
        raise Refused("no events")

    def name(self, kind, text):
        match = re.fullmatch(r"\((\d+)\)[ \t]*(.*)", text)
        require(match, f"no number: {text!r}")
        number, name = match.groups()
        if name:
            require(number not in self.names[kind], f"named twice: {text!r}")
            require(name not in self.names["fn"].values() or kind != "fn", f"two numbers: {name!r}")
            self.names[kind][number] = name
        require(number in self.names[kind], f"without a name: {text!r}")
        return self.names[kind][number]

    def place(self, function, file):
        require(self.files.setdefault(function, file) == file, f"two files of {function!r}")

    def read_body(self, lines):
        function = file = called = called_file = None
        for line in lines:
            key, equals, value = line.partition("=")
            if key in ("summary: ", "totals: ") or re.match(r"(summary|totals): \d+$", line):
                key, _, value = line.partition(": ")
                self.head[key].append(value)
            elif key == "fl" and equals:
                file = self.name("fl", value)
            elif key == "fn" and equals:
                function = self.name("fn", value)
                self.place(function, file)
            elif key == "cfi" and equals:
                called_file = self.name("fl", value)
            elif key == "cfn" and equals:
                called = self.name("fn", value)
                self.place(called, called_file)
            elif key == "calls" and equals:
                match = re.fullmatch(r"([1-9]\d*) 0", value)
                require(match, f"calls: {line!r}")
                require(next(lines) == "0 0", "a call without its cost")
                self.calls[function, called] += int(match[1])
            elif line:
                match = re.fullmatch(r"(\d+) ([1-9]\d*)", line)
                require(match, f"no cost: {line!r}")
                require((function, int(match[1])) not in self.costs, f"twice: {line!r}")
                self.costs[function, int(match[1])] += int(match[2])


def varint(data, at):
    value = shift = 0
    while True:
        byte = data[at]
        value |= (byte & 127) << shift
        at, shift = at + 1, shift + 7
        if byte < 128:
            return value, at


def fields(data):
    """The (number, value) pairs of a protocol buffer; a value is a number or bytes."""
    at = 0
    while at < len(data):
        key, at = varint(data, at)
        value, at = varint(data, at)
        if key & 7 == 2:
            require(at + value <= len(data), "a field that is cut off")
            value, at = data[at : at + value], at + value
        else:
            require(key & 7 == 0, "a field of an unknown kind")
        yield key >> 3, value


def signed(value):
    return value - (1 << 64) if value >> 63 else value


class Pprof:
    """Samples by (function, line), and what the profile says of itself."""

    def __init__(self, data):
        found = collections.defaultdict(list)
        for number, value in fields(gzip.decompress(data)):
            found[number].append(value)
        self.texts = [text.decode() for text in found[6]]
        require(self.texts[0] == "", "the first text is not empty")
        [sample_type] = [dict(fields(value)) for value in found[1]]
        require([self.texts[sample_type[at]] for at in (1, 2)] == ["ticks", "count"], "sample type")
        self.comments = [self.texts[at] for at in found[13]]
        self.time = [signed(value) for value in found[9]]
        self.duration = [signed(value) for value in found[10]]
        mappings = self.by_id(found[3])
        functions = self.by_id(found[5])
        places = {}
        for number, location in self.by_id(found[4]).items():
            require(location[2] in mappings, "a location without its mapping")
            line = dict(fields(location[4]))
            places[number] = self.texts[functions[line[1]][2]], line.get(2, 0)
        require(len(set(places.values())) == len(places), "a place has two locations")
        self.samples = {}
        for sample in map(dict, map(fields, found[2])):
            number, end = varint(sample[1], 0)
            ticks, ticks_end = varint(sample[2], 0)
            require((end, ticks_end) == (len(sample[1]), len(sample[2])), "a sample of two")
            require(places[number] not in self.samples and ticks > 0, "a sample")
            self.samples[places[number]] = ticks
        self.files = {self.texts[each[2]]: self.texts[each[4]] for each in functions.values()}

    @staticmethod
    def by_id(messages):
        found = {}
        for message in messages:
            message = dict(fields(message))
            require(message[1] > 0 and message[1] not in found, "ids")
            found[message[1]] = message
        return found


def read_csv(data):
    """The head and the rows, each a list of texts; what is absent is an empty one."""
    text = data.decode()
    require(text.endswith("\r\n"), "the last row has no end")
    head, *rows = csv.reader(io.StringIO(text, newline=""), strict=True)
    require(all(len(row) == len(head) for row in rows), "rows are not alike")
    return head, rows


def read_json(data):
    def no_constant(name):
        raise Refused(name)

    def pairs(found):
        require(len(dict(found)) == len(found), "a key comes twice")
        return dict(found)

    return json.loads(data.decode(), parse_constant=no_constant, object_pairs_hook=pairs)


def read_speedscope(data):
    """{(program, line): weight} and the closed events [(track, frame, begin, end)]."""
    file = read_json(data)
    require(file["$schema"] == "https://www.speedscope.app/file-format-schema.json", "schema")
    require(file["exporter"].startswith("ptick-export@"), "exporter")
    frames = file["shared"]["frames"]
    sampled, *evented = file["profiles"]
    require(sampled["type"] == "sampled", "the first profile")
    require(len(sampled["samples"]) == len(sampled["weights"]), "a weight for each sample")
    weights = {}
    for (program, line), weight in zip(sampled["samples"], sampled["weights"]):
        key = frames[program]["name"], frames[line]["name"]
        require(key not in weights, f"twice: {key}")
        require(frames[line].get("line", key[1]) in (key[1], int(key[1]) if key[1].isdigit() else None),
                "the line of a frame")  # fmt: skip
        weights[key] = weight
    spans = []
    for track, profile in enumerate(evented):
        require((profile["type"], profile["unit"]) == ("evented", "seconds"), "an evented profile")
        now, stack = profile["startValue"], []
        for event in profile["events"]:
            require(event["at"] >= now, "time goes back")
            now = event["at"]
            if event["type"] == "O":
                stack.append((event["frame"], now))
            else:
                frame, begin = stack.pop()
                require((event["type"], event["frame"]) == ("C", frame), "not nested")
                spans.append((track, frames[frame]["name"], begin, now))
        require(not stack and now <= profile["endValue"], "the end")
    return weights, spans


def read_trace(data):
    """The complete events [(name of the track, event)]."""
    names, events = {}, []
    for event in read_json(data)["traceEvents"]:
        if event["ph"] == "M":
            if event["name"] == "thread_name":
                names[event["tid"]] = event["args"]["name"]
            continue
        require(event["ph"] == "X" and event["dur"] >= 0, "an event")
        events.append((names[event["tid"]], event))
    for track in names.values():
        open_ends = []
        # In nanoseconds, which are whole.
        on_track = [
            (round(event["ts"] * 1000), round((event["ts"] + event["dur"]) * 1000))
            for name, event in events
            if name == track
        ]
        for begin, end in sorted(on_track, key=lambda span: (span[0], -span[1])):
            while open_ends and open_ends[-1] <= begin:
                open_ends.pop()
            require(not open_ends or end <= open_ends[-1], f"{track} crosses itself")
            open_ends.append(end)
    return events
