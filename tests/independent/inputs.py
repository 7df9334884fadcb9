"""Input files for the cases: valid, unusual and broken spectra and maps.

All random numbers come from a random.Random that the caller seeds, so the same
seed gives the same bytes.
"""

import math
import struct

EDGE = 8345.0
NUMBERS = (
    "", "abc", "1,5", "nan", "NaN", "inf", "-inf", "1e400", " 8400 ", "+8400", "8.4e3", "0", "-0", "-5", "0x10",
    "8400eV", "1e-320", "infinity", "-nan", ".5", "5.", "1e", "8 400", "123456.5", "8395.5",
)  # fmt: skip


def mu(energy, valence, jump=1.0, base=0.3):
    """Absorbance at an energy (eV): background, edge, white line and EXAFS oscillations.

    The energy of the edge and the height of the white line depend on the valence."""
    edge = EDGE + 1.3 * valence
    L = 12398.42 / energy
    background = base + 0.02 * L**3 + 0.03 * L**4
    step = jump * (0.5 + math.atan((energy - edge) / 2.5) / math.pi)
    white = jump * (0.25 + 0.12 * valence) * math.exp(-(((energy - edge - 7.0) / 6.0) ** 2))
    oscillations = 0.05 * jump * math.sin((energy - edge) / 12.0) * (energy > edge + 15)
    return background + step + white + oscillations


def energies(rnd, count=36, low=8200.0, high=8560.0):
    """Energies of a scan (eV) with smaller steps around the edge and random offsets."""
    part = count // 3
    grid = [low + (8330 - low) * i / part for i in range(part)]
    grid += [8330 + 90.0 * i / part for i in range(part)]
    rest = count - 2 * part
    grid += [8420 + (high - 8420) * (i + 1) / rest for i in range(rest)]
    return [round(e + rnd.uniform(-0.3, 0.3), 2) for e in grid]


def spectrum_points(rnd, valence, count=36, noise=1e-3):
    jump, base = rnd.uniform(0.6, 1.4), rnd.uniform(-0.2, 0.6)
    return [(e, mu(e, valence, jump, base) + rnd.gauss(0, noise)) for e in energies(rnd, count)]


def plain(points, head="# energy mut\n", line="%.2f %.5f\n", end="\n"):
    text = head + "".join(line % p for p in points)
    return text.replace("\n", end)


def beamline(points, rnd, modes=(1, 2), d="3.13551", kind=2, offset=True, tail=""):
    """A spectrum file in the beamline format (9809): angles and counts."""
    lines = ["  9809     KEK-PF  BL12C", "sample", " Mono :   SI(111)       D=  %s A    Initial angle= 13.7" % d]
    lines.append(" Angle(c)  Angle(o)   time/s  " + "  ".join(str(i + 2) for i in range(len(modes))))
    lines.append("Mode  0  0  " + "  ".join(map(str, modes)))
    if offset:
        lines.append("Offset  0  0  " + "  ".join("21.5" for _ in modes))
    spacing = float(d) if d in ("3.13551", "3.1") else 3.1355316
    for energy, mut in points:
        angle = math.degrees(math.asin(12398.424360387684 / energy / (2 * spacing)))
        counts = []
        for mode in modes:
            i0 = 100000
            if mode == 1:
                counts.append(str(i0))
            elif mode == 2:
                counts.append(str(round(i0 * math.exp(-mut))))
            elif mode == 3:
                counts.append(str(round(i0 * max(mut, 0.0) * rnd.uniform(0.05, 0.06))))
            else:
                counts.append(str(rnd.randrange(100)))
        lines.append(" %.5f %.5f 1.00 %s" % (angle, angle, " ".join(counts)))
    return "\n".join(lines) + "\n" + tail


def unusual_spectrum(rnd):
    """A random choice of an unusual but valid spectrum file or an invalid one."""
    points = spectrum_points(rnd, rnd.uniform(0, 4), rnd.choice((9, 18, 24)))
    variant = rnd.randrange(20)
    if variant == 0:
        return plain(points[::-1])
    if variant == 1:
        return plain(points, end="\r\n")
    if variant == 2:
        return plain([p + (rnd.random(),) for p in points], line="%.2f\t%.5f  %.3f\n")
    if variant == 3:
        return "energy mut\n" + plain(points, head="")
    if variant == 4:
        return plain(points) + "8600 nan\n8610 inf\nnan 1\ninf 2\n8620 -inf\n"
    if variant == 5:
        return plain(points[:1])
    if variant == 6:
        return plain(points[:2])
    if variant == 7:
        return ""
    if variant == 8:
        return "# nothing but a comment\n\n8300\n"
    if variant == 9:
        return plain([p for p in points for _ in (0, 1)])
    if variant == 10:
        rnd.shuffle(points)
        return plain(points)
    if variant == 11:
        return beamline(points, rnd, offset=False)
    if variant == 12:
        return beamline(points, rnd, modes=(1, 0, 3, 3, 2))
    if variant == 13:
        return beamline(points, rnd, modes=(2, 1, 2))
    if variant == 14:
        return beamline(points, rnd, modes=(2, 2))
    if variant == 15:
        return beamline(points, rnd, modes=(1, 4, 2))
    if variant == 16:
        return beamline(points, rnd, d=rnd.choice(("3.1", "abc", "0", "3.13551,")))
    if variant == 17:
        second = "Mode 0 0 2 1\n" if rnd.random() < 0.5 else "Mode 0 0 1 3\n"
        return beamline(points, rnd, tail=second + " 13.1 13.1 1.0 5000 4000\n 13.0 13.0 1.0 5000\n 12.9 12.9 1.0 0 0\n")
    if variant == 18:
        return {"hex": rnd.randbytes(90).replace(b"\0", b"0").replace(b"\xff", b"5").hex()}
    return plain(points, head="", line="%.2f,%.5f\n")


class Stack:
    """A sample whose maps can be generated at any energy. The valence depends on x, the amount on y."""

    def __init__(self, rnd, width=5, height=4):
        self.rnd, self.width, self.height = rnd, width, height
        self.low, self.high = sorted((rnd.uniform(0, 4), rnd.uniform(0, 4)))

    def mut(self, energy, x, y):
        a = (x + 0.5) / self.width
        amount = 0.4 + 0.8 * (y + 0.5) / self.height
        mix = a * mu(energy, self.low) + (1 - a) * mu(energy, self.high)
        return amount * mix + 0.05 + 1e-5 * (energy - 8300) + self.rnd.gauss(0, 3e-3)

    def pixels(self, energy):
        return [(x, y, self.mut(energy, x, y)) for y in range(self.height) for x in range(self.width)]

    def text(self, energy, kind="plain", columns=4, size=None, head=True, end="\n"):
        width, height = size or (self.width, self.height)
        lines = {"1306": ["# 1306 map"], "2003901": ["# 2003901 map"]}.get(kind, ["# map of a stack"])
        if kind == "axis":
            lines += ["# AXIS 0 x um 0 1 %d" % (width - 1), "# Axis 1 y um 0 1 %d" % (height - 1)]
            lines[1] = "# AXIS 0 x um 0 1 %d end" % (width - 1)
            lines[2] = "# axis 1 y um 0 1 %d end" % (height - 1)
        else:
            lines += ["# X-NUM %d" % width, "# y-num %d" % height]
        if kind == "2003901":
            lines += ["# I0 : 1", "# I : 2"]
        if head:
            lines.append("# ENERGY : %s eV" % ("%.1f" % energy))
        for x, y, mut in self.pixels(energy):
            i0 = self.rnd.randrange(95000, 105000)
            i = i0 * math.exp(-mut)
            if kind == "2003901":
                lines.append("%g %g 7 %d %d" % (x, y, i0, i))
            elif columns == 3:
                lines.append("%g %g %.5f" % (x, y, math.exp(-mut)))
            else:
                lines.append("%g %g %d %d" % (x * 0.5, y * 0.5, i, i0))
        return end.join(lines) + end

    def binary(self, energy, **options):
        values = [mut for _, _, mut in self.pixels(energy)]
        return {"hex": binary_map(self.width, self.height, values, **options).hex()}


def binary_map(width, height, values, header_size=None, cut=None, claim=None, flags=True):
    claimed_width, claimed_height = claim or (width, height)
    lines = [
        "WIDTH: %s" % claimed_width,
        "HEIGHT: %s" % claimed_height,
        "DATA_ID: mut / map",
        "MIN_VAL: 0",
        "MAX_VAL: 1.5",
        "END_OF_HEADER:",
    ]
    size = 256 if header_size is None else header_size
    head = ("2dData-V0.0 HeaderSize: %s" % size).ljust(64) + "\n" + "\n".join(lines) + "\n"
    data = head.encode().ljust(256, b"\0") + struct.pack("<%dd" % len(values), *values)
    if flags:
        data += b"\1" * len(values)
    return data[:cut]


def unusual_map(rnd, stack, energy):
    """A random choice of an unusual but valid map file or an invalid one."""
    variant = rnd.randrange(22)
    text = stack.text(energy)
    if variant == 0:
        return stack.text(energy, columns=3)
    if variant == 1:
        return stack.text(energy, kind="1306")
    if variant == 2:
        return stack.text(energy, kind="2003901")
    if variant == 3:
        return stack.text(energy, kind="axis")
    if variant == 4:
        return stack.text(energy, end="\r\n")
    if variant == 5:
        return stack.text(energy, head=False)
    if variant == 6:
        return stack.text(energy, size=(stack.width + 2, stack.height))
    if variant == 7:
        return stack.text(energy, size=(stack.width, stack.height - 1))
    if variant == 8:
        return stack.text(energy, size=(0, 4))
    if variant == 9:
        return text.replace("# X-NUM", "#X-NUM")
    if variant == 10:
        return text + "1 2\nx y z w\nnan inf 1e400 -1\n\n"
    if variant == 11:
        lines = text.split("\n")
        for i in range(4, len(lines) - 1):
            if rnd.random() < 0.4:
                tokens = lines[i].split(" ")
                tokens[rnd.choice((2, 3))] = rnd.choice(("0", "nan", "inf", "-3", "word", "1,000", "1e400", "-0"))
                lines[i] = " ".join(tokens)
        return "\n".join(lines)
    if variant == 12:
        return text.replace("eV", "eV\n# ENERGY : %s eV" % rnd.choice(NUMBERS[1:8]))
    if variant == 13:
        return ""
    if variant == 14:
        return "# X-NUM 5\n# Y-NUM 4\n"
    if variant == 15:
        return "# 2003901\n" + "".join("%d %d 3 4 5\n" % (x, y) for y in range(3) for x in range(4))
    if variant == 16:
        return stack.binary(energy, cut=rnd.choice((70, 256, 300, 333)))
    if variant == 17:
        return stack.binary(energy, claim=rnd.choice(((-1, 4), (0, 0), (7, 3), ("x", 2), (100000, 100000), (4, 60))))
    if variant == 18:
        return stack.binary(energy, header_size=rnd.choice(("0", "100", "-5", "99999999999", "128")))
    if variant == 19:
        return {"hex": rnd.randbytes(120).replace(b"\0", b"0").replace(b"\xff", b"5").hex()}
    if variant == 20:
        return text.replace("# X-NUM 5", "# X-NUM 200000").replace("# y-num 4", "# Y-NUM 200000")
    return stack.text(energy, kind="2003901").replace("# I0 : 1", rnd.choice(("# I0 : 9", "# I0 1", "# i0 :2", "# I0 : -2")))
