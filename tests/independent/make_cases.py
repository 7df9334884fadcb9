"""Generates the cases that tst_independent replays.

    python3 make_cases.py                        writes the committed cases to cases/
    python3 make_cases.py --random 2000 --seed 7 --out /tmp/cases
                                                 writes 2000 cases with random actions to another folder
    python3 make_cases.py --numbers 500 --seed 7 --out /tmp/numbers
                                                 writes 500 cases with random numbers
    python3 make_cases.py --fits 500 --seed 7 --out /tmp/fits
                                                 writes 500 cases with unusual numbers for the fits

A case is a list of actions on the panel and the state that model.py calculates
after each action. A state is written as the difference from the previous state,
and the first state as the difference from start.json.
"""

import argparse
import copy
import json
import pathlib
import random
import struct

import inputs
import model

HERE = pathlib.Path(__file__).parent


class Case:
    """Performs actions on a model and records the changes of state after each action."""

    def __init__(self, name, files, folders=("@/out", "@/in", "@/cwd")):
        self.name = name
        self.files = files
        self.folders = list(folders)
        contents = {path: model.as_bytes(content) for path, content in files.items()}
        self.panel = model.Panel(model.Files(contents, self.folders))
        self.table = []
        self.steps = []
        self.state = self.panel.state()
        self.said = len(self.panel.messages)

    def do(self, *action):
        files = self.panel.files
        before = dict(files.content)
        model.perform(self.panel, copy.deepcopy(action))
        state = self.panel.state()
        step = {"do": list(action)}
        changed = {k: state.get(k, "") for k in {**self.state, **state} if state.get(k, "") != self.state.get(k, "")}
        if changed:
            step["set"] = dict(sorted(changed.items()))
        new_messages = self.panel.messages[self.said :]
        if new_messages:
            step["say"] = self._indices(new_messages)
        if action[0] not in ("file", "remove", "mkdir"):
            written = {p: c for p, c in files.content.items() if before.get(p) != c}
            if written:
                step["files"] = {p: self._content(c) for p, c in sorted(written.items())}
        self.state, self.said = state, len(self.panel.messages)
        self.steps.append(step)
        return self

    def _indices(self, messages):
        """The indices of messages in the table of messages. Appends new messages to the table."""
        for text in messages:
            if text not in self.table:
                self.table.append(text)
        return [self.table.index(text) for text in messages]

    @staticmethod
    def _content(content):
        try:
            return content.decode("utf-8")
        except UnicodeDecodeError:
            return {"hex": content.hex()}

    def json(self):
        lines = [
            '{"name": %s,' % dump(self.name),
            '"folders": %s,' % dump(self.folders),
            '"files": {%s},' % ",\n".join("%s: %s" % (dump(p), dump(c)) for p, c in sorted(self.files.items())),
            '"messages": %s,' % dump(self.table),
            '"steps": [',
            ",\n".join(map(dump, self.steps)),
            "]}",
        ]
        return "\n".join(lines) + "\n"


def dump(value):
    return json.dumps(value, ensure_ascii=True, separators=(",", ":"))


# --- measurements -------------------------------------------------------------

VALENCES = (0, 2, 3, 4)
ENERGIES = (8313, 8340, 8352, 8360, 8400, 8460)


def measurement(seed, width=5, height=4, count=30):
    """Returns files of four references, a target, a beamline spectrum, six maps and a binary map.

    Also returns the random generator and the sample, for further files."""
    rnd = random.Random(seed)
    files = {}
    for n, valence in enumerate(VALENCES):
        files["@/in/ref%d.txt" % (n + 1)] = inputs.plain(inputs.spectrum_points(rnd, valence, count))
    points = inputs.spectrum_points(rnd, 1.2, count)
    files["@/in/target.txt"] = inputs.plain(points, head="")
    files["@/in/beam.dat"] = inputs.beamline(inputs.spectrum_points(rnd, 2, count), rnd)
    stack = inputs.Stack(rnd, width, height)
    for n, energy in enumerate(ENERGIES):
        files["@/in/map%d.dat" % (n + 1)] = stack.text(energy)
    files["@/in/bin3.2dp"] = stack.binary(ENERGIES[2])
    return files, rnd, stack


def only(files, *names):
    return {"@/in/" + name: files["@/in/" + name] for name in names}


def load_all(case, refs=2, maps=4, target=True):
    """Loads references, the target and maps, as a user does."""
    for n in range(refs):
        case.do("load", "Ref%d" % (n + 1), "@/in/ref%d.txt" % (n + 1))
    if target:
        case.do("load", "Target", "@/in/target.txt")
    if maps:
        case.do("loads", "Multi", ["@/in/map%d.dat" % (n + 1) for n in range(maps)])
    return case


MAPS = ["map%d.dat" % (n + 1) for n in range(6)]
BASIC = ["ref1.txt", "ref2.txt", "target.txt"] + MAPS[:4]
HISTOGRAMS = {"@/out/r_HGAlpha.dat": "old\n", "@/out/r_HGThick.dat": "old\n"}


MORE_ENERGIES = (8346, 8420)


def fit_measurement(seed, width=2, height=1, count=12):
    """Like measurement(), but with eight maps: four references with a Victoreen background need
    at least seven."""
    files, rnd, stack = measurement(seed, width, height, count)
    for n, energy in enumerate(MORE_ENERGIES):
        files["@/in/map%d.dat" % (n + 7)] = stack.text(energy)
    return files, rnd, stack


def load_fit(case, refs=2, rows=5, boxes=4):
    """Loads references, the target and maps, and puts all of them in use."""
    case.do("text", "HgABoxes", str(boxes)).do("text", "HgTBoxes", str(boxes))
    for row in range(5, rows + 1):
        case.do("check", "UseCB.%d" % row, True)
    case.do("loads", "Multi", ["@/in/map%d.dat" % (n + 1) for n in range(rows)])
    for n in range(refs):
        case.do("load", "Ref%d" % (n + 1), "@/in/ref%d.txt" % (n + 1))
        if n >= 2:
            case.do("click", "Ref%d.UseCB" % (n + 1))
    return case.do("load", "Target", "@/in/target.txt")


FIT = ["ref1.txt", "ref2.txt", "target.txt"] + ["map%d.dat" % (n + 1) for n in range(5)]
FIT_ALL = FIT + ["ref3.txt", "ref4.txt"] + ["map%d.dat" % (n + 6) for n in range(3)]


def write_to(case, path="@/out/r.dat"):
    return case.do("load", "Save", path).do("click", "WriteB")


# --- hand-written cases --------------------------------------------------------


def three_points_end_to_end():
    files, _, _ = measurement(1)
    case = Case("three points end to end", {**only(files, *BASIC), **HISTOGRAMS})
    case.do("click", "radioButton").do("click", "UseCB.4")
    load_all(case, maps=3).do("text", "HgABoxes", "7").do("text", "HgTBoxes", "9")
    case.do("click", "CalcTargetB").do("click", "CalcMapB")
    return write_to(case)


def exact_four_points_end_to_end():
    files, _, _ = measurement(2)
    case = Case("exact four points end to end", {**only(files, *BASIC), **HISTOGRAMS})
    case.do("check", "TypeTMKisExact", True).do("click", "radioButton")
    load_all(case).do("text", "HgABoxes", "5").do("text", "HgTBoxes", "5")
    case.do("click", "CalcTargetB").do("click", "CalcMapB")
    write_to(case)
    # The exact form needs exactly four rows. With five rows the calculation is refused
    # and the earlier result is kept.
    case.do("load", "Row5", "@/in/map4.dat").do("click", "UseCB.5")
    return case.do("click", "CalcMapB").do("click", "CalcTargetB").do("click", "WriteB")


def least_square_four_to_six_rows():
    files, _, _ = measurement(3)
    case = Case("least square four to six rows", {**only(files, *BASIC, *MAPS[4:]), **HISTOGRAMS})
    case.do("click", "radioButton")
    load_all(case, maps=6).do("text", "HgABoxes", "51").do("text", "HgTBoxes", "4")
    case.do("click", "CalcMapB").do("click", "UseCB.5").do("click", "UseCB.6")
    return write_to(case).do("click", "CalcTargetB")


def four_references_and_gaps():
    files, _, _ = measurement(4)
    names = BASIC + ["ref3.txt", "ref4.txt"]
    case = Case("four references, gaps among the checked ones", only(files, *names))
    case.do("click", "radioButton")
    load_all(case, refs=4)
    case.do("click", "Ref3.UseCB").do("click", "CalcMapB").do("click", "Ref2.UseCB")
    case.do("click", "CalcMapB").do("click", "CalcTargetB")  # references 1 and 3 in use: map refused, target calculated
    case.do("click", "Ref1.UseCB").do("click", "CalcMapB").do("click", "CalcTargetB")  # only reference 3 in use
    case.do("click", "Ref4.UseCB").do("click", "Ref3.UseCB").do("click", "Ref4.UseCB")
    case.do("click", "CalcMapB").do("click", "CalcTargetB")  # no reference in use
    case.do("click", "Ref1.UseCB").do("click", "CalcMapB").do("click", "CalcTargetB")  # only reference 1 in use
    case.do("click", "UseCB.4").do("click", "UseCB.3")  # one reference and only two rows in use, without the V row
    case.do("click", "UseCB.3").do("click", "CalcMapB")
    return case.do("setUse", 2, True).do("setUse", 2, True).do("setUse", 1, False).do("setUse", 4, True)


def refusals_of_the_start():
    files, _, _ = measurement(5)
    case = Case("refusals one after the other", only(files, *BASIC))
    case.do("click", "CalcMapB").do("click", "CalcTargetB")
    case.do("click", "VPointCB.3").do("click", "CalcMapB").do("click", "CalcTargetB")  # no V row
    case.do("click", "radioButton").do("click", "CalcMapB").do("click", "CalcTargetB")
    case.do("click", "VPointCB.3").do("click", "CalcTargetB")
    case.do("load", "Ref1", "@/in/ref1.txt").do("click", "CalcTargetB")
    case.do("load", "Ref2", "@/in/ref2.txt").do("click", "CalcTargetB")
    case.do("load", "Target", "@/in/target.txt").do("click", "CalcTargetB")
    for row in (1, 2, 4):
        case.do("click", "UseCB.%d" % row).do("click", "CalcTargetB")
    case.do("click", "UseCB.3").do("click", "CalcTargetB")  # no row in use
    return case.do("click", "CalcMapB")


def two_v_rows():
    files, _, _ = measurement(7)
    case = Case("two V rows", only(files, *BASIC, *MAPS[4:]))
    case.do("click", "radioButton")
    load_all(case, maps=6)
    case.do("click", "CalcMapB")
    case.do("click", "VPointCB.4")  # row 4 becomes the V row: least squares with two other rows
    case.do("click", "UseCB.1")  # three rows in use, two of them V rows
    case.do("click", "CalcMapB").do("click", "CalcTargetB")
    case.do("check", "TypeTMKisExact", True).do("click", "UseCB.1").do("click", "CalcTargetB").do("click", "CalcMapB")
    case.do("click", "VPointCB.2").do("click", "CalcTargetB").do("click", "CalcMapB")
    # Row 1 is in use, but its map is removed. collect() in model.py counts this row; the
    # choice of the calculation form does not.
    case.do("click", "VPointCB.2").do("click", "VPointCB.3").do("clear", "Row1").do("click", "CalcMapB")
    return case.do("check", "TypeTMKisLS", True).do("click", "VPointCB.1").do("click", "VPointCB.2").do("click", "VPointCB.3")


def rows_without_maps_and_other_sizes():
    files, rnd, _ = measurement(8)
    small = inputs.Stack(rnd, 3, 3)
    extra = {"@/in/small.dat": small.text(8360.0), "@/in/wide.dat": inputs.Stack(rnd, 7, 2).text(8340.0)}
    case = Case("rows without maps, maps of other sizes", {**only(files, *BASIC), **extra})
    case.do("click", "radioButton")
    load_all(case, maps=3)
    case.do("click", "CalcMapB")  # row 4 is in use but has no map: three points
    case.do("click", "UseCB.1").do("load", "Row4", "@/in/small.dat").do("click", "CalcMapB")
    case.do("click", "UseCB.1").do("click", "CalcMapB")
    write_to(case)
    case.do("load", "Row1", "@/in/wide.dat").do("click", "CalcMapB")
    case.do("load", "Row3", "@/in/small.dat").do("click", "CalcMapB")
    case.do("clear", "Row3").do("click", "CalcMapB")  # the row is cleared but keeps its pixels
    case.do("clear", "Row1").do("click", "VPointCB.2").do("click", "CalcMapB")
    return case.do("click", "WriteB")


def binary_maps():
    files, rnd, stack = measurement(9)
    extra = {
        "@/in/short.2dp": stack.binary(8340.0, cut=256 + 8 * 11 + 3),
        "@/in/lie.2dp": stack.binary(8340.0, claim=(-5, 4)),
        "@/in/huge.2dp": stack.binary(8340.0, claim=(100000, 100000)),
        "@/in/tiny.2dp": "2dData",
        "@/in/words.2dp": stack.binary(8340.0, claim=("5 px", "4")),
        "@/in/named.dat": "2dData is how this text begins\n1 2 3 4\n",
    }
    case = Case("binary maps", {**only(files, *BASIC, "bin3.2dp"), **extra})
    case.do("click", "radioButton")
    load_all(case)
    case.do("load", "Row3", "@/in/bin3.2dp").do("click", "CalcMapB")  # the binary map's pixels are appended to the pixels of the text map
    case.do("load", "Row5", "@/in/bin3.2dp").do("click", "UseCB.5").do("click", "UseCB.3").do("click", "VPointCB.5")
    case.do("click", "CalcMapB")
    case.do("load", "Row5", "@/in/bin3.2dp").do("load", "Row6", "@/in/short.2dp").do("click", "UseCB.6")
    case.do("click", "UseCB.2").do("click", "CalcMapB")
    write_to(case)
    for name in ("lie.2dp", "huge.2dp", "tiny.2dp", "words.2dp", "named.dat"):
        case.do("load", "Row7", "@/in/" + name)
    case.do("rowslot", 8, "load2dProcData", "@/in/missing.2dp").do("rowslot", 8, "loadData", "@/in/map1.dat")
    case.do("load", "Row5", "@/in/huge.2dp").do("click", "CalcMapB")  # the V row's map is 0 by 0
    return case.do("click", "WriteB")


def binary_heads():
    """Valid and invalid headers of binary maps."""

    def head(lines, first="2dData-V0.0 HeaderSize: 256", size=256, values=(0.25, 0.5, -1.0, 1e-7, 7.0, 9.0), end=b"\1" * 6):
        text = (first.ljust(64) + "\n" + lines).encode()
        return {"hex": (text.ljust(size, b"\0")[:size] + struct.pack("<%dd" % len(values), *values) + end).hex()}

    size = "WIDTH: 3\nHEIGHT: 2\n"
    files = {
        "bom": head(size, first="\ufeff2dData-V0.0 HeaderSize: 256"),
        "quoted": head('"WIDTH:" 3\n"HEIGHT:"12\n'),
        "indented": head("  WIDTH: 3\n\tHEIGHT:\t2\n"),
        "crlf": head(size.replace("\n", "\r\n")),
        "twice": head("WIDTH: 9\n" + size + "END_OF_HEADER:\nHEIGHT: 1\n"),
        "lower": head(size.lower()),
        "plus": head("WIDTH: +3\nHEIGHT:   2  \n"),
        "real": head("WIDTH: 3.0\nHEIGHT: 2\n"),
        "noblank": head("WIDTH:3\nHEIGHT: 2\n"),
        "other": head(size, first="2dDataX any 256"),
        "quotedsize": head(size, first='"2dData" "x" "256" 9'),
        "quotedfirst": head(size, first='2dData "x y" 256'),
        "nosize": head(size, first="2dData-V0.0 HeaderSize:"),
        "beyond": head(size, first="2dData-V0.0 HeaderSize: 4096"),
        "inside": head(size, first="2dData-V0.0 HeaderSize: 80"),
        "cut": head(size, values=(0.5, 0.25), end=b"\1\2\3\4\5"),
        "specials": head(size, values=(float("nan"), float("inf"), -0.0, 5e-324, -float("inf"), 1e300)),
        "flat": head("WIDTH: 3\nHEIGHT: 0\n"),
        "wide": head("WIDTH: 33554433\nHEIGHT: 1\n"),
        "overflow": head("WIDTH: 65536\nHEIGHT: 65536\n"),
        "big": head("WIDTH: 2147483648\nHEIGHT: 2\n"),
    }
    case = Case("headers of binary maps", {"@/in/%s.2dp" % name: content for name, content in files.items()})
    for n, name in enumerate(files):
        case.do("load", "Row%d" % (n % 8 + 1), "@/in/%s.2dp" % name)
    return case


def map_text_forms():
    rnd = random.Random(10)
    stack = inputs.Stack(rnd, 4, 3)
    files = {
        "@/in/a.dat": stack.text(8313.0, kind="1306"),
        "@/in/b.dat": stack.text(8340.0, kind="2003901"),
        "@/in/c.dat": stack.text(8352.0, kind="axis", columns=3),
        "@/in/d.dat": stack.text(8360.0, end="\r\n"),
        "@/in/nochannels.dat": "# 2003901\n0 0 5 6\n1 0 5 0\n0 1 nan 3\n1 1 word 3\n",
        "@/in/single.dat": "# 2003901 x\n# X-NUM 9\n# I0 :0\n# I : 1 \n3 4 100 50\n",
        "@/in/spread.dat": "# 2003901 x\n# I0 : 0\n# I : 1\n0 0 10 5\n1 1 10 5\n2 2 10 5\n",
        "@/in/shortrows.dat": "# 2003901\n# i0 : 1\n# i : 3\n0 0 10 5\n1 0 10 5 6\n2 0 10 5 6 7\n",
        "@/in/join.dat": "#X-NUM 3\n# X-NUM 3\n#\tY-NUM\t2\n0 0 1 2\n1 0 3\n2 0 4\r0 1 2\n",
        "@/in/axis7.dat": "# AXIS 0 x um 0 1\n# AXIS 2 x um 0 1 9 e\n# AXIS 1x x um 0 1 2\n# AXIS z y um 0 1 2\n0 0 1 2\n",
        "@/in/twice.dat": "# X-NUM 1\n# Y-NUM 1\n# ENERGY : 8400\n# Energy : 8390.25 eV\n0 0 4 8\n# ENERGY 1\n",
        "@/in/words.dat": "  # X-NUM 2\n# Y-NUM 2.0\n# y-num 2\nx y z w\nnan inf 1e400 -5\n0 0 0 0\n1 1 1,000 +7\n\n5 5\n",
        "@/in/nosize.dat": "0 0 1 2\n1 0 1 2\n",
        "@/in/unicode.dat": "# gr\u00f6\u00dfe \u00b5m\n# X-NUM 1\n# Y-NUM 2\n0 0 1 2\n0 1 1 \u2212\u0032\n",
    }
    case = Case("the forms of text maps", files)
    for row, name in enumerate("abcd"):
        case.do("load", "Row%d" % (row + 1), "@/in/%s.dat" % name)
    for name in ("nochannels", "single", "spread", "shortrows", "join", "axis7", "twice", "words", "nosize", "unicode"):
        case.do("load", "Row5", "@/in/%s.dat" % name)
    case.do("load", "Row5", "@/in/missing.dat").do("load", "Row5", "@/in")
    case.do("load", "Row1", "@/in/nosize.dat").do("clear", "Row2")
    return case.do("load", "Row6", "@/in/unicode.dat").do("rowslot", 6, "inNewEnergy")


def odd_characters():
    """Texts with byte order marks, all kinds of white space, and control characters."""
    points = inputs.spectrum_points(random.Random(24), 2, 9)
    spectrum = inputs.plain(points)
    beam = inputs.beamline(points, random.Random(24))
    grid = "# 2003901\n# I0 : 1\n# I : 0\n0 0 5 6\n1 0 5 7\n"
    table = "# X-NUM 2\n# Y-NUM 1\n0 0 5 6\n1 0 5 7\n"
    files = {
        "@/in/bom.txt": "\ufeff" + beam,
        "@/in/u16.txt": {"hex": ("\ufeff" + spectrum).encode("utf-16-le").hex()},
        "@/in/blanks.txt": spectrum.replace(" ", "\u00a0").replace("\n", "\u3000\n\u2003"),
        "@/in/nul.txt": spectrum.replace(" ", " \0", 2) + "8600\0 1\n8610 \u22121\n8620\x1c2 3\n8630\x0b+.5\n\u2028# x 1\n",
        "@/in/long.txt": spectrum + "8700." + "0" * 700 + " 1e-400\n8710 -1e-400 " + "word " * 100 + "\n8720 .%s5e801" % ("0" * 800),
        "@/in/bom.dat": "\ufeff" + grid,
        "@/in/u16.dat": {"hex": ("\ufeff" + grid).encode("utf-16-be").hex()},
        "@/in/upper.dat": grid.replace("# I :", "# \u0131 :") + "# ax\u0131s 0 a b c d e 8\n",
        "@/in/blanks.dat": table.replace(" ", "\u00a0").replace("6\n", "6\u2029\n"),
        "@/in/nul.dat": table.replace("X-NUM 2", "X-NUM 2\0z").replace("5 7", "5\0 7") + "\x0c1\x0b0\x852\xa0-0\n2 0 \u22123 1e-400\n3 0 -1e-400 -1e400\n",
        "@/in/cr.dat": table.replace("\n", "\r\n").replace("5 6", "5\r6").replace("# X", "\r#\r X"),
        "@/in/crs.dat": table.replace("\n", "\r"),
        "@/in/colon.dat": "# 2003901\n# I0 :\u00a01\n# I:x 1 : 1\n# i x:\t+1 \n# I0 y : 0 : 1\n0 0 5 6\n",
        "@/in/long.dat": table + "# " + "long " * 100 + "\n0 1 7." + "0" * 700 + " 8\n",
        "@/in/bad.dat": {"hex": (table.encode() + b"# \xe0\xa7k \xff\xc3\n1 1 2\xa0 3\n4 4 5 6\xe2\x82").hex()},
    }  # fmt: skip
    case = Case("odd characters", files)
    case.do("click", "radioButton")
    for name in sorted(files):
        case.do("load", "Row1" if name.endswith("dat") else "Target", name)
    return case


def odd_maps_calculated():
    files, _, _ = measurement(11)
    extra = {
        "@/in/odd.dat": "# X-NUM 5\n# Y-NUM 4\n# comment  with   blanks \n#\n"
        + "".join(
            "%g %g %s\n" % (i % 5, i // 5, v)
            for i, v in enumerate(
                ("0 5", "5 0", "0 0", "nan 3", "3 nan", "inf 3", "3 inf", "-3 3", "3 -3", "1e-300 1e300", "0", "word",
                 "1e400 1", "-0 7", "7 -0", "0.5", "1e-320 1", "2 1e400")
            )
        ),
    }  # fmt: skip
    case = Case("pixels of every kind", {**only(files, *BASIC), **extra, **HISTOGRAMS})
    case.do("click", "radioButton")
    load_all(case).do("text", "HgABoxes", "3").do("text", "HgTBoxes", "3")
    case.do("load", "Row3", "@/in/odd.dat").do("click", "CalcMapB")
    write_to(case)
    case.do("load", "Row2", "@/in/odd.dat").do("click", "WriteB")
    case.do("check", "TypeTMKisExact", True).do("click", "WriteB")
    return case.do("click", "UseCB.1").do("click", "WriteB")


def edge_and_limits():
    files, _, _ = measurement(12)
    case = Case("edge, limits and energies changed", only(files, *BASIC))
    case.do("click", "radioButton")
    load_all(case)
    for field, text in (
        ("EdgeE", "8346"), ("PreEEndDE", "-20"), ("PostEStartDE", "40"), ("EdgeE", "abc"), ("EdgeE", "nan"),
        ("EdgeE", " 8.347e3 "), ("PreEEndDE", "-500"), ("PreEEndDE", "-40"), ("PostEStartDE", "5000"),
        ("PostEStartDE", "-inf"), ("PostEStartDE", "50"), ("EdgeE", "0"), ("EdgeE", "8350,5"), ("EdgeE", "8350.5"),
        ("Energy.2", "8341.25"), ("Energy.2", "abc"), ("Energy.2", ""), ("Energy.1", "9000"), ("Energy.1", "-3"),
        ("Energy.1", "8200"), ("Energy.1", "inf"), ("Energy.1", "1e-5"), ("Energy.7", "8381"), ("Energy.8", "nan"),
    ):  # fmt: skip
        case.do("type", field, text)
    return case.do("slot", "setEdge").do("click", "CalcMapB").do("click", "CalcTargetB")


def shift_of_energies():
    files, _, _ = measurement(13)
    case = Case("shifts of energy", only(files, *BASIC))
    case.do("click", "radioButton").do("type", "Ref1.dE", "2").do("text", "Ref3.dE", "7")
    load_all(case)
    for row, text in (("Ref1", "-1.5"), ("Ref2", "abc"), ("Ref2", "3"), ("Target", "5"), ("Target", "inf"), ("Ref4", "1")):
        case.do("type", row + ".dE", text)
    case.do("type", "EdgeE", "8348").do("type", "Target.dE", "-2").do("slot", "receiveNewTarget", "")
    case.do("load", "Ref2", "@/in/ref2.txt").do("load", "Target", "@/in/target.txt")
    return case.do("type", "Ref2.dE", "nan").do("slot", "setEdge").do("click", "CalcMapB")


def background_choice():
    files, _, _ = measurement(14)
    case = Case("choice of the background line", only(files, *BASIC, "ref3.txt"))
    case.do("click", "SubPostEforRef").do("click", "radioButton")
    load_all(case, refs=3)
    case.do("click", "SubPreEforRef").do("click", "SubPreEforRef").do("click", "SubPostEforTarget")
    case.do("click", "SubPostEforRef").do("click", "SubPreEforTarget")
    case.do("slot", "changedSubBGTypeForRef", False).do("slot", "changedSubBGTypeForTarget", True)
    return case.do("type", "Energy.1", "8330").do("click", "CalcMapB")


def spectrum_forms():
    rnd = random.Random(15)
    points = [inputs.spectrum_points(rnd, v, 15) for v in (0, 2, 3, 4)]
    words = "energy mut\n" + inputs.plain(points[0], head="") + "8700 word\n1,000 2\n 8710 +1.5 x\n#8720 5\n"
    files = {
        "@/in/desc.txt": inputs.plain(points[0][::-1]),
        "@/in/beam2.dat": inputs.beamline(points[1], rnd),
        "@/in/fluo.dat": inputs.beamline(points[2], rnd, modes=(1, 0, 3, 3, 2)),
        "@/in/twoi0.dat": inputs.beamline(points[2], rnd, modes=(2, 1, 2, 1)),
        "@/in/four.dat": inputs.beamline(points[3], rnd, modes=(1, 4, 2)),
        "@/in/nooffset.dat": inputs.beamline(points[3], rnd, offset=False),
        "@/in/noi0.dat": inputs.beamline(points[3], rnd, modes=(2, 2)),
        "@/in/second.dat": inputs.beamline(
            points[3][:8], rnd, tail="Mode 0 0 3 1\n 13.1 13.1 1.0 5000 4000\n 13 13 1 5\n 12.9 12.9 1.0 0 0\n D= 3.2\n 13 13 1 7 9\n"
        ),
        "@/in/joined.dat": inputs.beamline(points[3][:6], rnd).replace("D=  3.13551", "D=3.2"),
        "@/in/badd.dat": inputs.beamline(points[3][:6], rnd, d="abc"),
        "@/in/words.txt": words,
        "@/in/nan.txt": inputs.plain(points[1][:9]) + "8600 nan\n8610 inf\nnan 1\ninf 2\n0 1\n",
        "@/in/one.txt": "8300 0.5\n",
        "@/in/two.txt": "8300 0.5\n8400 1.5",
        "@/in/empty.txt": "",
        "@/in/comment.txt": "# a\n\n8300\n",
        "@/in/cr.txt": "8300 0.5\r8310 1.5\r\n8320 2\r\n\r\n",
        "@/in/blank9809.txt": "  9809 only words\n8300 1\n",
        "@/in/flat.txt": "".join("%d 1\n" % e for e in range(8200, 8500, 20)),
        "@/in/falling.txt": "8300 9\n8400 7\n8500 5\n8600 3\n",
        "@/in/word9809.txt": "x9809 5\n8300 1\n",
    }
    case = Case("the forms of spectra", files)
    case.do("click", "radioButton")
    for name in sorted(files):
        if name in ("@/in/four.dat", "@/in/joined.dat", "@/in/second.dat", "@/in/words.txt"):
            case.do("load", "Target", name)
        case.do("load", "Ref1", name)
    case.do("load", "Ref2", "@/in/desc.txt").do("load", "Target", "@/in/beam2.dat")
    case.do("load", "Ref2", "@/in/missing.txt").do("load", "Ref2", "@/in").do("clear", "Ref2")
    case.do("load", "Target", "@/in/nooffset.dat").do("load", "Target", "@/in/missing.txt")
    return case.do("clear", "Target").do("load", "Ref1", "@/in/empty.txt")


def histogram_limits():
    files, _, _ = measurement(16)
    case = Case("histogram limits and boxes", {**only(files, *BASIC), **HISTOGRAMS})
    case.do("click", "radioButton").do("click", "HgAAuto").do("click", "HgTAuto")
    load_all(case).do("load", "Save", "@/out/r.dat")
    for letter, low, high, boxes in (
        ("A", "0", "1", "11"), ("T", "-1", "3", "5"), ("A", "0", "2", "1"), ("T", "0.5", "0.5", "1"), ("A", "0", "2", "0"),
        ("T", "0", "2", "-4"), ("A", "2", "0", "4"), ("T", "1", "1", "4"), ("A", "abc", "2", "3.9"), ("T", "0", "inf", "3"),
        ("A", "nan", "2", "3"), ("T", "-1e308", "1e308", "3"), ("A", "0", "1e-9", "3"), ("T", "0", "2", "abc"),
        ("A", "0", "2", "0.9"), ("T", "0", "2", " 3 "), ("A", "0", "2", "nan"), ("T", "0", "2", "4e0"),
    ):  # fmt: skip
        for part, text in (("From", low), ("To", high), ("Boxes", boxes)):
            case.do("text", "Hg%s%s" % (letter, part), text)
        if letter == "T":
            case.do("click", "WriteB")
    case.do("text", "HgABoxes", "1e9").do("click", "CalcMapB").do("text", "HgABoxes", "3")
    case.do("click", "HgAAuto").do("slot", "calcBoth").do("click", "WriteB").do("click", "HgTAuto")
    for text in ("12", "-4", "abc", "nan", "1e400", "-inf"):
        case.do("text", "Ref1.Valence", text).do("slot", "calcBoth")
    case.do("click", "Ref1.UseCB").do("click", "Ref2.UseCB")
    return case


def valences():
    files, _, _ = measurement(17, width=3, height=2)
    case = Case("texts of valences", only(files, *BASIC, "ref3.txt"))
    case.do("click", "radioButton")
    load_all(case, refs=3).do("load", "Save", "@/out/v.dat")
    for n, text in ((1, "2.5"), (2, "abc"), (2, ""), (1, "nan"), (1, "-1"), (2, "1e308"), (1, "inf"), (1, " 3 "), (2, "4,5")):
        case.do("type", "Ref%d.Valence" % n, text).do("click", "CalcTargetB").do("click", "WriteB")
    case.do("type", "Ref3.Valence", "7").do("click", "Ref3.UseCB").do("click", "CalcTargetB").do("click", "Ref1.UseCB")
    case.do("click", "CalcTargetB").do("click", "CalcMapB")  # the first reference is not in use: the map is refused
    # With only one valid reference, all values in the valence column are 0.
    return case.do("click", "Ref3.UseCB").do("slot", "write")


def written_files():
    files, _, _ = measurement(18, width=3, height=2)
    case = Case("written files", only(files, *BASIC), ("@/out", "@/in", "@/cwd", "@/out/folder.dat"))
    case.do("click", "WriteB")  # no file name and no result
    case.do("file", "@/cwd/_HGAlpha.", "old").do("click", "WriteB")
    case.do("text", "Save.file", "@/out/empty").do("click", "WriteB")
    case.do("click", "radioButton")
    load_all(case)
    case.do("text", "HgABoxes", "3").do("text", "HgTBoxes", "2")
    case.do("load", "Save", "@/out/a.b.txt").do("click", "WriteB")
    case.do("file", "@/out/a.b.txt_HGAlpha.dat", "old").do("file", "@/out/a.b_HGThick.dat", "old").do("click", "WriteB")
    case.do("text", "Save.file", "@/out/a.b").do("file", "@/out/a_HGAlpha.b", "x").do("click", "WriteB")
    case.do("text", "Save.file", "@/out/nosuffix").do("file", "@/out/nosuffix_HGThick.", "").do("click", "WriteB")
    case.do("text", "Save.file", "@/out").do("file", "@/out_HGAlpha.", "x").do("click", "WriteB")
    case.do("load", "Save", "@/out/folder").do("click", "WriteB")
    case.do("load", "Save", "@/missing folder/two  blanks").do("file", "@/cwd/two  blanks_HGAlpha.dat", "x")
    case.do("click", "WriteB")
    case.do("text", "Save.file", "relative.dat").do("click", "WriteB").do("text", "Save.file", "/dev/full").do("click", "WriteB")
    case.do("load", "Save", "@/out/x.DAT").do("load", "Save", "@/out/.dat").do("load", "Save", "")
    case.do("clear", "Save").do("click", "WriteB")
    case.do("load", "Save", "@/out/100%1.dat").do("click", "WriteB")
    case.do("click", "VPointCB.3").do("click", "WriteB")  # refused: the earlier result is written again
    return case


def extended_results():
    case = Case("results in the extended layout", {})
    rows = [[0, 0, 1, 2] + [k + 0.1 for k in range(13)], [1, 0, 3, 4, 0.5], [0, 1, 0, 0], [0.125, 123456.5, 1, 1] + [-1e-7] * 13]
    base = {"extended": True, "size": [2, 3], "comments": ["# one", "#  two   blanks "], "rows": rows}
    case.do("text", "Save.file", "@/out/e.dat").do("base", base).do("slot", "write")
    for k in range(13):
        case.do("check", model.COLUMN_BOXES[k], True)
    case.do("slot", "write")
    for k in (0, 4, 11, 12):
        case.do("check", model.COLUMN_BOXES[k], False)
    case.do("slot", "write")
    for k in range(13):
        case.do("check", model.COLUMN_BOXES[k], False)
    case.do("slot", "write").do("base", {**base, "size": [0, 0], "rows": []}).do("slot", "write")
    case.do("base", {**base, "extended": False}).do("slot", "write")
    return case.do("base", {**base, "extended": False, "size": [0, 2]}).do("slot", "write")


def energy_list():
    files, _, _ = measurement(19)
    case = Case("lists of energies", only(files, *BASIC[:3]))
    load_all(case, maps=0)
    for text in (
        "8310, 8350,8360.50 , 8.4e3", "", "   ", "abc 8311 -5 0 8312", '"8315 8316" "8317"8318 8319', "nan inf 1e400",
        "1 2 3 4 5 6 7 8 9 10", '"8340', '8341 8342"', '"" 8343', "+8344,,8345", "1,000 8346.0000001",
    ):  # fmt: skip
        case.do("type", "MultiEnergys", text)
    case.do("type", "Energy.1", "8350").do("slot", "newMultiEnergys").do("slot", "setEdge")
    return case.do("slot", "receiveNewTarget", "")


def display_files():
    files, _, _ = measurement(20)
    case = Case("spectra for display only", {**only(files, *BASIC[:3], "ref3.txt", "beam.dat"), "@/in/bad.txt": "#\n"})
    case.do("click", "RemoveAFile").do("load", "Ref1", "@/in/ref1.txt")
    case.do("loads", "Disp", ["@/in/ref2.txt", "@/in/missing.txt", "@/in/bad.txt", "@/in/ref3.txt", "@/in"])
    case.do("combo", 1).do("slot", "receiveNewDispFiles", ["@/in/beam.dat", "@/in/ref2.txt"])
    case.do("click", "RemoveAFile").do("type", "EdgeE", "8349").do("combo", 2).do("click", "RemoveAFile")
    case.do("slot", "removeAFile").do("slot", "removeAFile").do("slot", "removeAFile")
    return case.do("loads", "Disp", []).do("load", "Disp", "@/in/ref2.txt")


def files_change_on_disk():
    files, rnd, stack = measurement(21)
    case = Case("files that change on disk", only(files, *BASIC))
    case.do("click", "radioButton")
    load_all(case)
    case.do("file", "@/in/ref1.txt", inputs.plain(inputs.spectrum_points(rnd, 3, 18)))
    case.do("load", "Ref1", "@/in/ref1.txt")
    case.do("file", "@/in/ref1.txt", "").do("load", "Ref1", "@/in/ref1.txt").do("click", "CalcTargetB")
    case.do("remove", "@/in/ref2.txt").do("load", "Ref2", "@/in/ref2.txt").do("click", "CalcTargetB")
    case.do("file", "@/in/map2.dat", "# X-NUM 5\n# Y-NUM 0\n0 0 1 2\n").do("load", "Row2", "@/in/map2.dat")
    case.do("file", "@/in/map3.dat", stack.binary(8352.0)).do("load", "Row3", "@/in/map3.dat")
    case.do("remove", "@/in/map4.dat").do("load", "Row4", "@/in/map4.dat").do("click", "CalcMapB")
    case.do("file", "@/in/target.txt", inputs.beamline(inputs.spectrum_points(rnd, 1, 12), rnd, modes=(2, 2)))
    return case.do("load", "Target", "@/in/target.txt").do("click", "CalcTargetB")


def typed_cells():
    files, _, _ = measurement(22)
    case = Case("cells typed over", only(files, *BASIC))
    case.do("click", "radioButton")
    load_all(case)
    for cell, text in (
        ("Mut1.1", "0.5"), ("Mut2.1", "abc"), ("MutT.2", "nan"), ("MutT.2", "-0.1"), ("Mut1.3", "inf"), ("Mut1.3", "1e400"),
        ("Mut1.3", "0.9"), ("MutT.4", "0,7"), ("Mut1.1", "0"), ("Energy.4", "8313"), ("Energy.2", "8313"), ("MutT.1", "1e-320"),
    ):  # fmt: skip
        case.do("text", cell, text).do("click", "CalcTargetB").do("click", "CalcMapB")
    case.do("check", "TypeTMKisExact", True).do("click", "CalcTargetB").do("click", "CalcMapB")
    case.do("click", "UseCB.1").do("click", "CalcTargetB").do("text", "MutT.4", case.panel.text["MutT.2"])
    return case.do("click", "CalcTargetB")


def slots_by_name():
    files, _, _ = measurement(23)
    case = Case("slots called by name", only(files, *BASIC, "ref3.txt", "ref4.txt"))
    case.do("check", "radioButton", True)
    load_all(case, refs=2, maps=2)
    case.do("slot", "receiveNewPaths", ["@/in/map%d.dat" % (k % 4 + 1) for k in range(9)])
    case.do("slot", "noticedNewEdge", 8349.123456).do("slot", "noticedNewEdge", -0.0).do("slot", "noticedNewEdge", 123456.5)
    case.do("slot", "noticedNewEdge", 8346.5).do("slot", "receiveNewRef", 2).do("slot", "receiveNewRef", 1)
    case.do("slot", "receiveNewRef1", "x").do("slot", "receiveNewRef2", "").do("slot", "receiveNewRef4", "")
    case.do("slot", "receiveNewFile", "").do("slot", "receiveNewEnergy", 8400.0).do("slot", "receiveNewDir", "/")
    case.do("check", "UseCB.3", False).do("slot", "calcBoth").do("slot", "calcMap").do("slot", "calcTarget")
    case.do("check", "TypeTMKisExact", True).do("check", "TypeTMKisExact", False).do("click", "TypeTMKisLS")
    case.do("check", "UseCB.3", True).do("click", "LCFCB.2").do("click", "ShowMapB.4").do("slot", "calcAndWrite")
    return case


def non_equivalent_two_to_four_references():
    files, _, _ = fit_measurement(30)
    case = Case("non-equivalent, two to four references", {**only(files, *FIT_ALL), **HISTOGRAMS})
    load_fit(case, refs=4, rows=8).do("click", "CalcTargetB").do("click", "CalcMapB")
    write_to(case).do("click", "NonEquivBGVic").do("click", "WriteB")
    # There are seven unknowns: four references and three Victoreen terms. First seven
    # energy rows are in use, then six.
    case.do("click", "UseCB.8").do("click", "WriteB").do("click", "UseCB.7")
    case.do("click", "Ref4.UseCB").do("click", "WriteB").do("click", "NonEquivBGLinear").do("click", "UseCB.6")
    case.do("click", "Ref3.UseCB").do("click", "NonEquivBGVic").do("click", "WriteB").do("click", "NonEquivBGLinear")
    case.do("click", "UseCB.1").do("click", "WriteB").do("click", "Ref1.UseCB").do("click", "CalcTargetB")
    return case.do("click", "Ref3.UseCB").do("click", "CalcTargetB").do("click", "CalcMapB").do("setUse", 4, True)


def non_equivalent_backgrounds():
    files, _, _ = fit_measurement(31)
    case = Case("non-equivalent, choice of the background line", only(files, *FIT))
    load_fit(case)
    for button in ("SubPostEforRef", "SubPostEforTarget", "NonEquivBGVic", "SubPreEforRef", "SubPreEforTarget"):
        case.do("click", button).do("click", "CalcTargetB")
    # The arguments change only the cells of the rows; the calculation reads the radio buttons.
    case.do("slot", "changedSubBGTypeForRef", True).do("slot", "changedSubBGTypeForTarget", True)
    case.do("text", "MutT.1", "7").do("text", "Mut1.2", "7").do("click", "CalcTargetB").do("click", "CalcMapB")
    case.do("type", "PreEEndDE", "-20").do("type", "PostEStartDE", "40").do("click", "CalcTargetB")
    return case.do("type", "EdgeE", "8350.5").do("type", "PostEStartDE", "5000").do("type", "PostEStartDE", "30")


def non_equivalent_columns():
    files, _, _ = fit_measurement(32)
    case = Case("columns of the result file", only(files, *FIT_ALL))
    load_fit(case, refs=3, rows=6).do("load", "Save", "c.dat").do("slot", "calcMap").do("slot", "write")
    case.do("check", "RecValence", False).do("check", "RecAmount", False).do("slot", "write")
    for box in model.COLUMN_BOXES:
        case.do("click", box).do("slot", "write").do("check", box, False)
    for box in model.COLUMN_BOXES:
        case.do("check", box, True)
    case.do("slot", "write").do("click", "NonEquivBGVic").do("slot", "write")
    for box in ("RecRatio2", "RecC1", "RecValence", "RecDMut4"):
        case.do("click", box)
    case.do("click", "WriteB").do("click", "radioButton").do("click", "WriteB")
    return case.do("click", "VPointCB.1").do("click", "WriteB").do("click", "TypeNonEquiv").do("slot", "write")


def non_equivalent_refusals():
    files, _, _ = fit_measurement(33)
    case = Case("non-equivalent refusals one after the other", only(files, *FIT))
    both = lambda: case.do("click", "CalcTargetB").do("click", "CalcMapB")  # noqa: E731
    both().do("click", "Ref1.UseCB").do("click", "Ref2.UseCB")
    both().do("loads", "Multi", ["@/in/map%d.dat" % (n + 1) for n in range(5)]).do("check", "UseCB.5", True)
    both().do("click", "NonEquivBGVic").do("click", "UseCB.2").do("click", "UseCB.3")  # no reference
    both().do("click", "UseCB.3").do("click", "Ref1.UseCB")
    both().do("load", "Ref1", "@/in/ref1.txt").do("click", "UseCB.2")  # one valid reference
    both().do("click", "Ref2.UseCB")
    both().do("load", "Ref2", "@/in/ref2.txt")
    both().do("load", "Target", "@/in/target.txt")
    both().do("click", "VPointCB.3")  # no V row: only the target is refused
    both().do("click", "UseCB.1").do("click", "NonEquivBGLinear")
    both().do("click", "UseCB.2").do("click", "VPointCB.4")
    return both()


def non_equivalent_base_rows():
    files, rnd, stack = fit_measurement(34, 3, 2)
    wild = "0.5 0\n0 5\n nan 3\n3 inf\n-3 3\n1e-300 1e300\n".replace("\n ", "\n").split("\n")[:-1]
    extra = {
        "@/in/small.dat": inputs.Stack(rnd, 2, 2).text(8340.0, head=False),
        "@/in/wide.dat": inputs.Stack(rnd, 4, 1).text(8352.0, head=False),
        "@/in/wild.dat": "# X-NUM 3\n# Y-NUM 2\n" + "".join("%d %d %s\n" % (i % 3, i // 3, v) for i, v in enumerate(wild)),
        "@/in/short.dat": "# X-NUM 2\n# Y-NUM 2\n# comment \n0.25 0 5 6\n",
    }
    case = Case("rows without maps and of other sizes, non-equivalent", {**only(files, *FIT_ALL), **extra, **HISTOGRAMS})
    load_fit(case, rows=6).do("load", "Save", "@/out/r.dat").do("click", "WriteB")
    case.do("load", "Row2", "@/in/small.dat").do("click", "CalcMapB").do("load", "Row1", "@/in/wide.dat").do("click", "CalcMapB")
    case.do("load", "Row4", "@/in/wild.dat").do("click", "WriteB").do("load", "Row1", "@/in/wild.dat").do("click", "WriteB")
    case.do("load", "Row1", "@/in/short.dat").do("click", "WriteB")
    case.do("clear", "Row1").do("click", "WriteB")  # the row is cleared but keeps its pixels and is still the base row
    case.do("click", "UseCB.1").do("click", "UseCB.7").do("load", "Row7", "@/in/map1.dat").do("click", "CalcMapB")
    case.do("click", "UseCB.2").do("clear", "Row8").do("click", "UseCB.8").do("click", "CalcMapB")
    return case


def non_equivalent_empty_base():
    files, _, _ = fit_measurement(35)
    case = Case("a base row that never held a map", {**only(files, *FIT[:2], *FIT[3:]), **HISTOGRAMS})
    case.do("text", "HgABoxes", "2").do("text", "HgTBoxes", "2").do("check", "UseCB.5", True)
    for n in (1, 2):
        case.do("load", "Ref%d" % n, "@/in/ref%d.txt" % n)
    for row in range(2, 6):
        case.do("load", "Row%d" % row, "@/in/map%d.dat" % (row - 1))
    case.do("load", "Save", "@/out/r.dat").do("click", "WriteB").do("click", "UseCB.1").do("click", "WriteB")
    case.do("click", "UseCB.1").do("click", "radioButton").do("click", "VPointCB.1").do("click", "WriteB")
    return case.do("click", "VPointCB.1").do("click", "VPointCB.2").do("click", "WriteB")


def invalid_third_reference():
    files, _, _ = fit_measurement(36)
    case = Case("a reference that is not valid among valid ones", {**only(files, *FIT_ALL), "@/in/none.txt": "#\n"})
    for row in (1, 5):
        case.do("check", "LCFCB.%d" % row, True)
    load_fit(case, rows=8).do("load", "Ref4", "@/in/ref4.txt").do("click", "VPointCB.1").do("click", "VPointCB.3")
    case.do("click", "Ref3.UseCB").do("click", "CalcTargetB").do("click", "CalcMapB")  # two of three references are valid
    case.do("click", "Ref4.UseCB").do("click", "CalcTargetB").do("click", "LCFB").do("click", "CalcMapB")
    case.do("click", "NonEquivBGVic").do("click", "UseCB.8").do("check", "UseCB.7", False).do("check", "UseCB.6", False)
    case.do("check", "UseCB.5", False).do("click", "CalcTargetB").do("check", "UseCB.5", True)
    case.do("load", "Ref3", "@/in/ref3.txt").do("load", "Ref3", "@/in/none.txt").do("click", "LCFB")
    case.do("load", "Ref1", "@/in/none.txt").do("click", "LCFB").do("click", "Ref1.UseCB").do("click", "CalcTargetB")
    return case.do("load", "Ref3", "@/in/ref3.txt").do("click", "Ref4.UseCB")


def fits_of_odd_spectra():
    files, rnd, _ = fit_measurement(37)
    points = inputs.spectrum_points(rnd, 2, 14)
    extra = {
        "@/in/falling.txt": inputs.plain(points[::-1]),
        "@/in/twice.txt": inputs.plain([p for p in points for _ in (0, 1)]),
        "@/in/mixed.txt": inputs.plain(points[7:] + points[:7]),
        "@/in/one.txt": "8300 0.5\n",
        "@/in/two.txt": "8300 0.5\n8400 1.5",
        "@/in/flat.txt": "".join("%d 1\n" % e for e in range(8200, 8500, 20)),
        "@/in/nan.txt": inputs.plain(points[:9]) + "8600 nan\n8610 inf\nnan 1\ninf 2\n0 1\n8450 0.7\n8500 0.6\n8550 0.5\n",
    }
    case = Case("fits of odd spectra", {**only(files, *FIT), **extra})
    for row in (1, 5):
        case.do("check", "LCFCB.%d" % row, True)
    load_fit(case, rows=5).do("check", "VPointCB.1", True)
    for name in ("falling", "twice", "mixed", "one", "two", "flat", "nan"):
        case.do("load", "Ref1", "@/in/%s.txt" % name)
    case.do("load", "Ref2", "@/in/flat.txt").do("load", "Ref1", "@/in/flat.txt").do("click", "NonEquivBGVic")
    case.do("load", "Ref1", "@/in/ref1.txt").do("load", "Ref2", "@/in/ref1.txt")  # the same spectrum twice
    case.do("click", "NonEquivBGLinear").do("load", "Ref2", "@/in/ref2.txt")
    for name in ("falling", "one", "nan", "ref1"):
        case.do("load", "Target", "@/in/%s.txt" % name)
    return case


def fits_of_odd_numbers():
    files, _, _ = fit_measurement(38)
    case = Case("fits of odd numbers", only(files, *FIT))
    case.do("check", "LCFCB.1", True).do("check", "LCFCB.5", True)
    load_fit(case).do("check", "VPointCB.1", True).do("load", "Save", "@/out/r.dat")
    for field, text in (
        ("Ref1.Valence", "-2.5"), ("Ref2.Valence", "1e300"), ("Ref1.Valence", "nan"), ("Ref2.Valence", "abc"), ("Ref1.Valence", "-inf"),
        ("Ref1.Valence", "1"), ("Energy.2", "abc"), ("Energy.2", "nan"), ("Energy.2", "inf"), ("Energy.2", "1e-300"),
        ("Energy.3", "9000"), ("Energy.5", "-8400"), ("HgABoxes", "0"), ("HgTBoxes", "-1"),
    ):  # fmt: skip
        case.do("text", field, text)
        case.do("click", "NonEquivBGLinear" if case.panel.checked["NonEquivBGVic"] else "NonEquivBGVic")
    case.do("click", "WriteB")
    for row in range(2, 6):  # the same energy in all rows
        case.do("text", "Energy.%d" % row, "8313")
    case.do("click", "NonEquivBGLinear").do("click", "NonEquivBGVic")
    for field, text in (("Ref1.dE", "2.5"), ("Ref2.dE", "nan"), ("Ref2.dE", "-1"), ("Target.dE", "inf")):
        case.do("type", field, text)
    return case.do("type", "EdgeE", "abc")


def result_fields_of_the_target():
    files, _, _ = fit_measurement(39)
    case = Case("result fields of the target", only(files, *FIT_ALL))
    for field in ("Ref1.RatioDisp", "Ref2.AmountDisp", "Ref3.RatioDisp", "Ref4.AmountDisp", "TargetDMut", "LCFRes", "CalcRes"):
        case.do("text", field, "old  text")
    load_fit(case, refs=3, rows=5).do("check", "VPointCB.2", True).do("click", "CalcTargetB")
    case.do("click", "Ref1.UseCB").do("click", "Ref3.UseCB")  # the result fields of references not in use keep their old text
    case.do("load", "Ref4", "@/in/ref4.txt").do("click", "Ref4.UseCB").do("clear", "Target").do("click", "CalcTargetB")
    return case.do("click", "radioButton").do("click", "CalcTargetB").do("click", "TypeNonEquiv")


def fit_range():
    files, _, _ = fit_measurement(40)
    points = [line.split()[0] for line in files["@/in/target.txt"].splitlines()]
    case = Case("range of the linear combination fit", only(files, *BASIC[:3]))
    case.do("click", "LCFB").do("click", "LCFCB.2").do("click", "LCFCB.3")  # no valid reference
    load_all(case, maps=0).do("click", "LCFCB.3").do("click", "LCFCB.1")  # marks only row 2, then rows 1 and 2
    case.do("click", "UseCB.1").do("click", "LCFCB.2").do("check", "LCFCB.8", True).do("click", "LCFB")
    for one, eight in (
        (points[3], points[3]), ("8300.001", "8300.002"), (points[2], points[9]), (points[9], points[2]), ("abc", "8500"),
        ("nan", "8500"), ("nan", "nan"), ("-inf", "inf"), ("inf", "inf"), ("8200", points[4]), ("8300", "8460"),
    ):  # fmt: skip
        case.do("text", "Energy.1", one).do("text", "Energy.8", eight).do("click", "LCFB")
    case.do("click", "LCFCB.5").do("text", "Energy.5", "8600").do("slot", "lcf")
    case.do("type", "Target.dE", "4").do("slot", "lcf").do("type", "Ref2.dE", "-3")
    return case.do("check", "Ref2.UseCB", False).do("click", "LCFB")


def fit_references():
    files, _, _ = fit_measurement(41)
    case = Case("references of the linear combination fit", {**only(files, *FIT_ALL[:3], "ref3.txt"), "@/in/none.txt": "#\n"})
    case.do("check", "LCFCB.1", True).do("check", "LCFCB.6", True)
    for n in range(3):
        case.do("load", "Ref%d" % (n + 1), "@/in/ref%d.txt" % (n + 1))
    case.do("click", "LCFB").do("load", "Target", "@/in/target.txt")  # the fits until here have no target
    case.do("click", "Ref3.UseCB").do("click", "Ref1.UseCB").do("type", "Ref3.Valence", "abc").do("click", "LCFB")
    case.do("load", "Target", "@/in/ref2.txt").do("load", "Ref1", "@/in/none.txt").do("click", "Ref1.UseCB")
    case.do("load", "Ref3", "@/in/ref2.txt").do("load", "Target", "@/in/none.txt").do("load", "Target", "@/in/target.txt")
    return case.do("type", "PreEEndDE", "-9999").do("type", "PreEEndDE", "-30").do("click", "Ref2.UseCB")


def comparison_points():
    files, _, _ = fit_measurement(42)
    case = Case("points of the comparison with the fit", only(files, *BASIC))
    case.do("slot", "newColorLCFvs4PS").do("slot", "clearLCFvs4PS").do("click", "radioButton")
    load_all(case).do("click", "LCFB").do("check", "LCFCB.1", True).do("check", "LCFCB.4", True)
    case.do("click", "LCFB").do("slot", "newColorLCFvs4PS").do("slot", "lcf").do("click", "CalcTargetB").do("slot", "calcBoth")
    for _ in range(43):  # advances to the last colour of the list
        case.do("slot", "newColorLCFvs4PS")
    case.do("slot", "lcf").do("slot", "newColorLCFvs4PS").do("slot", "lcf").do("slot", "newColorLCFvs4PS")
    case.do("click", "TypeNonEquiv").do("slot", "clearLCFvs4PS")
    return case.do("type", "Ref1.dE", "1").do("check", "UseCB.4", False).do("click", "LCFB")


HAND_WRITTEN = (
    three_points_end_to_end,
    exact_four_points_end_to_end,
    least_square_four_to_six_rows,
    four_references_and_gaps,
    refusals_of_the_start,
    two_v_rows,
    rows_without_maps_and_other_sizes,
    binary_maps,
    binary_heads,
    map_text_forms,
    odd_characters,
    odd_maps_calculated,
    edge_and_limits,
    shift_of_energies,
    background_choice,
    spectrum_forms,
    histogram_limits,
    valences,
    written_files,
    extended_results,
    energy_list,
    display_files,
    files_change_on_disk,
    typed_cells,
    slots_by_name,
    non_equivalent_two_to_four_references,
    non_equivalent_backgrounds,
    non_equivalent_columns,
    non_equivalent_refusals,
    non_equivalent_base_rows,
    non_equivalent_empty_base,
    invalid_third_reference,
    fits_of_odd_spectra,
    fits_of_odd_numbers,
    result_fields_of_the_target,
    fit_range,
    fit_references,
    comparison_points,
)


# --- random cases ---------------------------------------------------------------


class RandomCase:
    """A case with random actions of a user."""

    def __init__(self, seed, length=None, odd_files=6):
        self.rnd = random.Random("case %s" % seed)
        rnd = self.rnd
        width, height = rnd.choice(((5, 4), (3, 2), (4, 3), (2, 2)))
        files, _, self.stack = fit_measurement(rnd.random(), width, height, rnd.choice((12, 18, 24)))
        for n in range(odd_files):
            files["@/in/odd%d.txt" % n] = inputs.unusual_spectrum(rnd)
            files["@/in/odd%d.dat" % n] = inputs.unusual_map(rnd, self.stack, rnd.uniform(8300, 8480))
        if rnd.random() < 0.7:
            files.update({"@/out/r_HGAlpha.dat": "", "@/out/r_HGThick.dat": ""})
        self.spectra = [p for p in files if p.endswith(".txt")] + ["@/in/beam.dat", "@/in/missing.txt"]
        self.good_spectra = ["@/in/ref%d.txt" % n for n in range(1, 5)] + ["@/in/target.txt", "@/in/beam.dat"]
        self.map_files = [p for p in files if p.startswith("@/in/") and p.endswith(("dat", "2dp"))]
        self.map_files.append("@/in/missing.dat")
        self.good_maps = ["@/in/map%d.dat" % n for n in range(1, 9)] + ["@/in/bin3.2dp"]
        self.case = Case("random %s" % seed, files)
        self._prepare()
        for _ in range(length or rnd.randrange(12, 26)):
            self._act()
        remove_unused_files(self.case)

    def _prepare(self):
        rnd, do = self.rnd, self.case.do
        four_points = rnd.random() < 0.45
        if four_points:
            do("click", "radioButton")
        elif rnd.random() < 0.4:
            do("click", "NonEquivBGVic")
        if rnd.random() < 0.4:
            do("check", "TypeTMKisExact", True)
        if rnd.random() < 0.6:
            for row in rnd.sample(range(1, 9), 2):
                do("check", "LCFCB.%d" % row, True)
        for box in rnd.sample(model.COLUMN_BOXES, rnd.choice((0, 0, 1, 4, 13))):
            do("click", box)
        for letter in "AT":
            if rnd.random() < 0.9:
                do("text", "Hg%sBoxes" % letter, str(rnd.randrange(2, 9)))
        rows = rnd.choice((3, 3, 4, 4, 4, 5, 6) if four_points else (4, 5, 5, 6, 6, 7, 8))
        for row in range(1, 9):
            if (row <= rows) != (row <= 4):
                do("check", "UseCB.%d" % row, row <= rows)
        if rnd.random() < 0.1:
            return
        for n in range(rnd.choice((1, 2, 2, 2, 2, 3, 4) if four_points else (1, 2, 2, 3, 3, 4, 4))):
            do("load", "Ref%d" % (n + 1), rnd.choice(self.good_spectra))
            if n >= 2 and rnd.random() < 0.7:
                do("click", "Ref%d.UseCB" % (n + 1))
        if rnd.random() < 0.9:
            do("load", "Target", rnd.choice(self.good_spectra))
        paths = [rnd.choice(self.good_maps[k : k + 1] * 4 + self.map_files) for k in range(rows)]
        do("loads", "Multi", paths)
        do("load", "Save", "@/out/r.dat")

    def _act(self):
        rnd, do = self.rnd, self.case.do
        number = lambda plausible: rnd.choice((plausible,) * 3 + (rnd.choice(inputs.NUMBERS),))  # noqa: E731
        row = rnd.randrange(1, 9)
        used = rnd.randrange(1, 6)
        ref = rnd.randrange(1, 5)
        spectrum_row = rnd.choice(("Ref1", "Ref2", "Ref3", "Ref4", "Target"))
        energy = "%.1f" % rnd.uniform(8250, 8500)
        actions = {
            "write": lambda: do("click", "WriteB"),
            "map": lambda: do("click", "CalcMapB"),
            "target": lambda: do("click", "CalcTargetB"),
            "spectrum": lambda: do("load", spectrum_row, rnd.choice(self.spectra)),
            "good spectrum": lambda: do("load", rnd.choice(("Ref1", "Ref2", "Target")), rnd.choice(self.good_spectra)),
            "map file": lambda: do("load", "Row%d" % used, rnd.choice(self.map_files)),
            "map files": lambda: do("loads", "Multi", [rnd.choice(self.map_files) for _ in range(rnd.randrange(6))]),
            "energy": lambda: do("type", "Energy.%d" % row, number(energy)),
            "energies": lambda: do("type", "MultiEnergys", self._energy_list()),
            "edge": lambda: do("type", "EdgeE", number("%.2f" % rnd.uniform(8330, 8365))),
            "pre": lambda: do("type", "PreEEndDE", number("%d" % rnd.uniform(-120, 0))),
            "post": lambda: do("type", "PostEStartDE", number("%d" % rnd.uniform(0, 150))),
            "use row": lambda: do("click", "UseCB.%d" % used),
            "v row": lambda: do("click", "VPointCB.%d" % used),
            "use ref": lambda: do("click", "Ref%d.UseCB" % ref),
            "set use": lambda: do("setUse", ref, rnd.random() < 0.7),
            "method": lambda: do("click", rnd.choice(("radioButton", "TypeNonEquiv"))),
            "form": lambda: do("check", rnd.choice(("TypeTMKisExact", "TypeTMKisLS")), True),
            "line": lambda: do("click", rnd.choice(("NonEquivBGLinear", "NonEquivBGVic"))),
            "background": lambda: do("click", "Sub%sEfor%s" % (rnd.choice(("Pre", "Post")), rnd.choice(("Ref", "Target")))),
            "shift": lambda: do("type", spectrum_row + ".dE", number("%.1f" % rnd.uniform(-6, 6))),
            "valence": lambda: do("type", "Ref%d.Valence" % ref, number("%.1f" % rnd.uniform(-1, 12))),
            "auto": lambda: do("click", "Hg%sAuto" % rnd.choice("AT")),
            "limit": lambda: do("text", "Hg%s%s" % (rnd.choice("AT"), rnd.choice(("From", "To"))), number("%.2f" % rnd.uniform(-2, 5))),
            "boxes": lambda: do("text", "Hg%sBoxes" % rnd.choice("AT"), rnd.choice(("4", "6.7", "1", "0", "-2", "abc", "", "1e1"))),
            "cell": lambda: do("text", "%s.%d" % (rnd.choice(("Mut1", "Mut2", "MutT")), used), number("%.3f" % rnd.uniform(-1, 2))),
            "clear": lambda: do("clear", rnd.choice(("Row%d" % used, "Row%d" % row, spectrum_row))),
            "display": lambda: do("loads", "Disp", [rnd.choice(self.spectra) for _ in range(rnd.randrange(3))]),
            "remove": lambda: do("click", "RemoveAFile"),
            "slot": lambda: do("slot", rnd.choice(("setEdge", "calcBoth", "write", "calcAndWrite", "newMultiEnergys", "calcMap"))),
            "fit": lambda: do(*rnd.choice((("click", "LCFB"), ("slot", "lcf")))),
            "fit row": lambda: do("click", "LCFCB.%d" % row),
            "comparison": lambda: do("slot", rnd.choice(("clearLCFvs4PS", "newColorLCFvs4PS", "newColorLCFvs4PS"))),
            "column": lambda: do("click", rnd.choice(model.COLUMN_BOXES)),
            "more rows": lambda: do("click", "UseCB.%d" % row),
            "more map files": lambda: do("load", "Row%d" % row, rnd.choice(self.good_maps)),
            "more spectra": lambda: do("load", spectrum_row, rnd.choice(self.good_spectra)),
            "refresh": lambda: do("slot", "receiveNewTarget", ""),
            "overwrite map": lambda: self._overwrite(self.good_maps),
            "overwrite spectrum": lambda: self._overwrite(self.good_spectra),
            "save name": lambda: do("text", "Save.file", rnd.choice(("@/out/r.dat", "@/out/r.dat", "@/out/q", "", "@/none/r.dat"))),
        }
        often = ["write", "map", "target", "good spectrum", "map file", "use row"] * 2
        actions[rnd.choice(often + list(actions))]()

    def _energy_list(self):
        rnd = self.rnd
        items = [rnd.choice(("%.1f" % rnd.uniform(8250, 8500),) * 3 + inputs.NUMBERS) for _ in range(rnd.randrange(10))]
        return "".join(item + rnd.choice((" ", ",", ", ", "  ")) for item in items)

    def _overwrite(self, paths):
        path = self.rnd.choice(paths)
        if path in self.good_maps:
            content = inputs.unusual_map(self.rnd, self.stack, self.rnd.uniform(8300, 8480))
        else:
            content = inputs.unusual_spectrum(self.rnd)
        self.case.do("file", path, content)
        rows = ["Row%d" % n for n in range(1, 6)] if path in self.good_maps else ["Ref1", "Ref2", "Target"]
        self.case.do("load", self.rnd.choice(rows), path)


def remove_unused_files(case):
    """Removes the files that no action names, except those in out/."""
    named = json.dumps([step["do"] for step in case.steps])
    case.files = {p: c for p, c in case.files.items() if p.startswith("@/out/") or json.dumps(p) in named}


def random_numbers(seed, length=30):
    """A case with many random numbers in the fields, to test the arithmetic of the calculation forms."""
    rnd = random.Random("numbers %s" % seed)
    files, _, _ = measurement(rnd.random(), 2, 2, 12)
    pixel = lambda: rnd.choice(("%.5g" % rnd.uniform(0, 9), "%d" % rnd.randrange(3), rnd.choice(inputs.NUMBERS).replace(" ", "") or "7"))  # noqa: E731
    for n in range(1, 7):
        body = "".join("%d %d %s %s\n" % (x, y, pixel(), pixel()) for y in range(3) for x in range(3))
        files["@/in/wild%d.dat" % n] = "# X-NUM 3\n# Y-NUM 3\n" + body
    names = ["ref1.txt", "ref2.txt", "target.txt"] + ["wild%d.dat" % n for n in range(1, 7)]
    case = Case("numbers %s" % seed, {**only(files, *names), **HISTOGRAMS})
    case.do("click", "radioButton")
    for letter in "AT":
        case.do("text", "Hg%sBoxes" % letter, str(rnd.randrange(2, 9)))
    load_all(case, maps=0).do("loads", "Multi", ["@/in/wild%d.dat" % n for n in range(1, 7)])
    case.do("load", "Save", "@/out/r.dat")
    few = ["%.3f" % rnd.uniform(-1, 1) for _ in range(4)]
    for _ in range(length):
        for _ in range(rnd.randrange(1, 9)):
            row, cell = rnd.randrange(1, 7), rnd.choice(("Mut1", "Mut2", "MutT", "MutT", "Energy"))
            plausible = "%.1f" % rnd.uniform(8300, 8480) if cell == "Energy" else "%.*f" % (rnd.randrange(1, 6), rnd.uniform(-1, 2))
            odd = rnd.choice(inputs.NUMBERS) if cell == "Energy" else rnd.choice(inputs.NUMBERS + tuple(few) * 9)
            case.do("text", "%s.%d" % (cell, row), odd if rnd.random() < 0.1 else plausible)
        if rnd.random() < 0.6:
            case.do("click", "UseCB.%d" % rnd.randrange(1, 7))
        if rnd.random() < 0.3:
            case.do("check", rnd.choice(("TypeTMKisExact", "TypeTMKisLS")), True)
        case.do("click", rnd.choice(("CalcTargetB", "CalcTargetB", "CalcMapB", "WriteB")))
    return case


def random_fits(seed, length=30):
    """A case with unusual pixels, energies, spectra and valences, for the
    non-equivalent method and the linear combination fit."""
    rnd = random.Random("fits %s" % seed)
    files, _, _ = fit_measurement(rnd.random(), 2, 2, 12)
    wild = ["%.5g" % rnd.uniform(0, 9) for _ in range(6)] + ["0", "-1", "1e200", "nan"]
    for n in range(1, 9):
        body = "".join("%d %d %s %s\n" % (x, y, rnd.choice(wild), rnd.choice(wild)) for y in range(2) for x in range(3))
        files["@/in/wild%d.dat" % n] = "# X-NUM %d\n# Y-NUM 2\n" % rnd.choice((2, 3, 3)) + body
    few = ["%.1f" % rnd.uniform(8250, 8560) for _ in range(5)] + ["8250", "8300", "8300"]
    for n in range(6):
        points = [(rnd.choice(few), rnd.choice(wild[:7])) for _ in range(rnd.randrange(1, 9))]
        files["@/in/few%d.txt" % n] = "".join("%s %s\n" % p for p in points)
    for n in range(6):
        files["@/in/odd%d.txt" % n] = inputs.unusual_spectrum(rnd)
    good = ["ref%d.txt" % n for n in range(1, 5)] + ["target.txt", "beam.dat"]
    names = ["wild%d.dat" % n for n in range(1, 9)] + ["map%d.dat" % n for n in range(1, 9)] + good
    names += ["few%d.txt" % n for n in range(6)] + ["odd%d.txt" % n for n in range(6)]
    case = Case("fits %s" % seed, {**only(files, *names), **HISTOGRAMS})
    refs = rnd.randrange(2, 5)
    load_fit(case, refs, rnd.randrange(4, 9)).do("check", "VPointCB.1", True).do("load", "Save", "@/out/r.dat")
    for row in rnd.sample(range(1, 9), 3):
        case.do("check", "LCFCB.%d" % row, True)
    for box in rnd.sample(model.COLUMN_BOXES, 6):
        case.do("click", box)
    for _ in range(length):
        row, ref = rnd.randrange(1, 9), rnd.randrange(1, 5)
        spectrum = rnd.choice(("Target", "Ref%d" % ref))
        energy = rnd.choice(inputs.NUMBERS) if rnd.random() < 0.15 else rnd.choice(few + ["%.1f" % rnd.uniform(8250, 8560)] * 4)
        small = rnd.choice(inputs.NUMBERS) if rnd.random() < 0.15 else "%.2f" % rnd.uniform(-5, 5)
        for _ in range(rnd.randrange(1, 3)):
            case.do(
                *rnd.choice(
                    (
                        ("type", "Energy.%d" % row, energy),
                        ("text", "Energy.%d" % row, energy),
                        ("text", "Ref%d.Valence" % ref, small),
                        ("type", spectrum + ".dE", small),
                        ("type", rnd.choice(("EdgeE", "EdgeE", "PreEEndDE", "PostEStartDE")), rnd.choice(("8346", "8350", "-30", "60"))),
                        ("load", "Row%d" % row, "@/in/" + rnd.choice(("wild", "map")) + "%d.dat" % row),
                        ("load", spectrum, "@/in/" + rnd.choice(good)),
                        ("load", spectrum, "@/in/" + rnd.choice(good)),
                        ("load", spectrum, "@/in/" + rnd.choice(names[-12:])),
                        ("click", "UseCB.%d" % row),
                        ("click", "LCFCB.%d" % row),
                        ("click", "Ref%d.UseCB" % ref),
                        ("click", rnd.choice(("NonEquivBGVic", "NonEquivBGLinear"))),
                        ("click", "Sub%sEfor%s" % (rnd.choice(("Pre", "Post")), rnd.choice(("Ref", "Target")))),
                        ("text", "Hg%s%s" % (rnd.choice("AT"), rnd.choice(("From", "To"))), small),
                        ("slot", rnd.choice(("newColorLCFvs4PS", "clearLCFvs4PS"))),
                    )
                )
            )
        case.do("click", rnd.choice(("CalcTargetB", "CalcMapB", "WriteB", "LCFB")))
    remove_unused_files(case)
    return case


# --- writing -------------------------------------------------------------------


def start_state():
    panel = model.Panel(model.Files({}))
    return {"state": panel.state(), "messages": panel.messages}


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--out", type=pathlib.Path, default=HERE / "cases")
    parser.add_argument("--random", type=int, default=0, help="number of random users; the committed cases are then not written")
    parser.add_argument("--numbers", type=int, default=0, help="number of cases with random numbers, likewise")
    parser.add_argument("--fits", type=int, default=0, help="number of cases with unusual numbers for the fits, likewise")
    parser.add_argument("--seed", type=int, default=0, help="seed of the first case; each further case adds 1")
    arguments = parser.parse_args()
    arguments.out.mkdir(parents=True, exist_ok=True)
    (arguments.out / "start.json").write_text(json.dumps(start_state(), indent=0, sort_keys=True) + "\n")
    for seed in range(arguments.seed, arguments.seed + arguments.random):
        (arguments.out / ("random-%06d.json" % seed)).write_text(RandomCase(seed).case.json())
    for seed in range(arguments.seed, arguments.seed + arguments.numbers):
        (arguments.out / ("numbers-%06d.json" % seed)).write_text(random_numbers(seed).json())
    for seed in range(arguments.seed, arguments.seed + arguments.fits):
        (arguments.out / ("fits-%06d.json" % seed)).write_text(random_fits(seed).json())
    if arguments.random or arguments.numbers or arguments.fits:
        return
    for make in HAND_WRITTEN:
        (arguments.out / (make.__name__.replace("_", "-") + ".json")).write_text(make().json())
    (arguments.out / "numbers-1.json").write_text(random_numbers("committed", length=10).json())
    (arguments.out / "fits-1.json").write_text(random_fits("committed", length=6).json())
    for seed in range(1, 7):
        case = RandomCase("committed %d" % seed, length=12, odd_files=4).case
        (arguments.out / ("random-%02d.json" % seed)).write_text(case.json())


if __name__ == "__main__":
    main()
