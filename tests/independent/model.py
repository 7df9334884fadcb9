"""An independent model of the panel, in plain Python.

It was written from the panel's required behaviour, without reading the C++
sources. The texts of the widgets are in a dict, each slot is a method with the
name of the slot, and every sum has the order of operations that the program
guarantees.
All arithmetic is IEEE double, as in the program; log, sin and asin come from
the C library.

Files are in a virtual file system (a dict from path to bytes), so the model never
uses the disk. The path "@" is a placeholder for the temporary folder of a replay.
"""

import codecs
import math
import posixpath
import re
import struct
from decimal import ROUND_HALF_UP, Context, Decimal

HC = 12398.424360387684  # Planck constant times speed of light, eV times angstrom
HC_KEV = 12.398424360387684
TWO_D = 6.2710632  # 2 d in angstrom, for plain spectrum files
DEFAULT_D = 3.1355316  # d in angstrom, until a "D=" entry of a beamline file sets it
SHORT_PI = 3.1415926535
MAX_PIXELS = 1 << 25
MAX_BOXES = 1_000_000
COLOURS = 45  # length of the panel's initial colour list

NAN = math.nan
INF = math.inf


# --- numbers: Qt's conversions and IEEE arithmetic ---------------------------


def div(a, b):
    """a / b by IEEE rules: infinity or NaN where Python would raise an exception."""
    if b == 0.0:
        if a == 0.0 or a != a:
            return NAN
        return math.copysign(INF, a) * math.copysign(1.0, b)
    return a / b


def ln(x):
    if x != x or x < 0.0:
        return NAN
    if x == 0.0:
        return -INF
    return math.log(x)


def sine(x):
    return NAN if math.isinf(x) else math.sin(x)


def arcsine(x):
    return math.asin(x) if -1.0 <= x <= 1.0 else NAN


_SIX_DIGITS = Context(prec=6, rounding=ROUND_HALF_UP)


def general(v):
    """The general format with six significant digits. Exact ties round away from zero."""
    if v != v:
        return "nan"
    if math.isinf(v):
        return "inf" if v > 0 else "-inf"
    if v == 0.0:
        return "0"
    rounded = _SIX_DIGITS.create_decimal_from_float(v)
    sign, digits, _ = rounded.as_tuple()
    exponent = rounded.adjusted()
    text = "".join(map(str, digits)).rstrip("0") or "0"
    if exponent < -4 or exponent >= 6:
        mantissa = text[0] + ("." + text[1:] if len(text) > 1 else "")
        text = "%se%s%02d" % (mantissa, "-" if exponent < 0 else "+", abs(exponent))
    elif exponent < 0:
        text = "0." + "0" * (-exponent - 1) + text
    elif len(text) <= exponent + 1:
        text = text + "0" * (exponent + 1 - len(text))
    else:
        text = text[: exponent + 1] + "." + text[exponent + 1 :]
    return ("-" if sign else "") + text


_THREE_PLACES = Context(prec=400, rounding=ROUND_HALF_UP)


def fixed3(v):
    """The C format "% 6.3f" as Qt prints it. -0.0 has no minus sign, but a negative
    number that rounds to 0 has one."""
    if v != v:
        return "   nan"
    if math.isinf(v):
        return "   inf" if v > 0 else "  -inf"
    return ("-" if v < 0 else " ") + format(Decimal(abs(v)).quantize(Decimal("0.001"), context=_THREE_PLACES), "f")


_SPACE = "\t\n\v\f\r \x85\xa0\u1680\u2000-\u200a\u2028\u2029\u202f\u205f\u3000"
_SPACES = re.compile("[%s]+" % _SPACE)
_NUMBER = re.compile(
    "[%s]*([+\u2212-]?)(?:([0-9]+\\.?[0-9]*|\\.[0-9]+)(?:[eE]([+\u2212-]?[0-9]+))?|([iI][nN][fF]))[%s]*"
    % (_SPACE, _SPACE)
)
_NAN_WORD = re.compile("[%s]*[nN][aA][nN][%s]*" % (_SPACE, _SPACE))
_INTEGER = re.compile("[\t\n\v\f\r ]*([+-]?[0-9]+)[\t\n\v\f\r ]*")


def number(text):
    """Converts a text to a double; 0 if it is not a number."""
    match = _NUMBER.fullmatch(text)
    if not match:
        return NAN if _NAN_WORD.fullmatch(text) else 0.0
    sign, mantissa, exponent, infinite = match.groups()
    if infinite:
        value = INF
    else:
        exponent = (exponent or "0").replace("\u2212", "-")
        value = float(mantissa + "e" + exponent)
        if value == 0.0 and mantissa.strip("0."):
            return 0.0  # the result of an underflow is 0.0, never -0.0
    return value if sign in ("", "+") else -value


def integer(text):
    """Converts a text to a 32-bit integer; 0 if it is not an integer or is out of range."""
    match = _INTEGER.fullmatch(text.split("\0")[0])  # a NUL character ends the text
    value = int(match.group(1)) if match else 0
    return value if -(1 << 31) <= value < (1 << 31) else 0


def simplified(text):
    return _SPACES.sub(" ", text).strip(" ")


def tokens_of(line):
    return simplified(line).split(" ")


def _bad_utf8(error):
    """Returns one replacement character for each invalid byte. An incomplete character
    at the end of the file is dropped."""
    data, start = error.object, error.start
    needed = 1 + (data[start] >= 0xC2) + (data[start] >= 0xE0) + (data[start] >= 0xF0)
    rest = data[start + 1 :]
    if data[start] < 0xF5 and len(rest) + 1 < needed and all(0x80 <= byte < 0xC0 for byte in rest):
        return "", len(data)
    return "\ufffd", start + 1


codecs.register_error("stream", _bad_utf8)


def text_lines(content, text_mode=True):
    """The lines of a file as QTextStream returns them.

    In text mode every carriage return is removed, otherwise only those before a line feed."""
    for bom, codec in (
        (b"\xff\xfe\0\0", "utf-32-le"),
        (b"\0\0\xfe\xff", "utf-32-be"),
        (b"\xff\xfe", "utf-16-le"),
        (b"\xfe\xff", "utf-16-be"),
        (b"\xef\xbb\xbf", "utf-8"),
    ):
        if content.startswith(bom):
            text = content[len(bom) :].decode(codec, "stream" if codec == "utf-8" else "replace")
            break
    else:
        text = content.decode("utf-8", "stream")
    text = text.replace("\r", "") if text_mode else text.replace("\r\n", "\n")
    lines = text.split("\n")
    if lines[-1] == "":
        lines.pop()
    return lines


def next_item(line):
    """Returns the first item of a line and the rest of the line. An item is quoted or ends at white space."""
    start = re.search(r"[^\t\n\v\f\r ]", line)
    if not start:
        return "", ""
    begin = start.start()
    if line[begin] == '"':
        end = line.find('"', begin + 1)
        if end < 0:
            return line[begin + 1 :], ""
        return line[begin + 1 : end], line[end + 1 :]
    blank = re.compile(r"[\t\n\v\f\r ]").search(line, begin)
    if not blank:
        return line[begin:], ""
    return line[begin : blank.start()], line[blank.start() :]


def hash_doubles(values, seed=0xCBF29CE484222325):
    """FNV-1a hash over 64-bit words; all NaNs have the same hash."""
    h = seed
    for v in values:
        bits = 0x7FF8000000000000 if v != v else struct.unpack("<Q", struct.pack("<d", v))[0]
        h = ((h ^ bits) * 0x100000001B3) & 0xFFFFFFFFFFFFFFFF
    return "%016x" % h


def hash_text(text):
    h = 0xCBF29CE484222325
    for byte in text.encode("utf-8"):
        h = ((h ^ byte) * 0x100000001B3) & 0xFFFFFFFFFFFFFFFF
    return "%016x" % h


# --- linear systems -----------------------------------------------------------


def lu_decompose(a):
    """LU decomposition with partial pivoting. Returns L, U and the order of the rows.

    The rows are not moved: row i of the factors is at index perm[i]. A zero pivot stays 0
    in U, but the elimination divides by 1.0 instead."""
    n = len(a)
    perm = list(range(n))
    work = [list(row) for row in a]
    for c in range(n):
        best, position = -1e300, c
        for k in range(c, n):
            size = abs(work[perm[k]][c])
            if size > best:
                best, position = size, k
        perm[c], perm[position] = perm[position], perm[c]
        pivot = work[perm[c]][c]
        if pivot == 0:
            pivot = 1.0
        for k in range(c + 1, n):
            row = work[perm[k]]
            row[c] = div(row[c], pivot)
            for j in range(c + 1, n):
                row[j] -= work[perm[c]][j] * row[c]
    u = [[0.0] * n for _ in range(n)]
    for i in range(n):
        p = perm[i]
        for j in range(i, n):
            u[p][j] = work[p][j]
            work[p][j] = 1.0 if i == j else 0.0
    return work, u, perm


def forward_solve(lower, b, perm):
    n = len(b)
    y = list(b)
    for i in range(n - 1):
        p = perm[i]
        y[p] = div(y[p], lower[p][i])
        for k in range(i + 1, n):
            y[perm[k]] -= y[p] * lower[perm[k]][i]
    return y


def back_solve(u, y, perm):
    n = len(y)
    x = list(y)
    for i in range(n - 1, -1, -1):
        p = perm[i]
        x[p] = div(x[p], u[p][i])
        for k in range(i - 1, -1, -1):
            x[perm[k]] -= x[p] * u[perm[k]][i]
    return x


def solve(matrix, right):
    lower, u, perm = lu_decompose(matrix)
    x = back_solve(u, forward_solve(lower, right, perm), perm)
    return [x[p] for p in perm]


class NormalEquations:
    """Linear least squares by normal equations, accumulated one row at a time."""

    def __init__(self, unknowns):
        self.matrix = [[0.0] * unknowns for _ in range(unknowns)]
        self.right = [0.0] * unknowns

    def add(self, phi, y):
        for i, left in enumerate(phi):
            row = self.matrix[i]
            for k, top in enumerate(phi):
                row[k] += left * top
            self.right[i] += left * y

    def solution(self):
        return solve(self.matrix, self.right)


# --- spectra ------------------------------------------------------------------


class Spectrum:
    def __init__(self):
        self.valid = False
        self.points = []  # (angle, energy, mut)
        self.extremes = [0.0] * 6
        self.pre_edge_end = 8000.0
        self.edge_energy = 0.0
        self.post_edge_start = 8500.0
        self.dE = 0.0
        self.pre_line = (0.0, 0.0, 0.0)  # c, a, b
        self.post_line = (0.0, 0.0, 0.0)
        self.sub_post = False

    def read_file(self, files, path):
        content = files.read(path)
        if content is None:
            return False
        first = content.split(b"\n", 1)[0].replace(b"\r", b"").decode("utf-8-sig", "replace")
        self.points = []
        self.valid = False
        lines = text_lines(content)
        if simplified(first).startswith("9809"):
            points = self._beamline_points(lines)
        else:
            points = self._plain_points(lines)
        self._take(points)
        if not points:
            return False
        self.valid = True
        self.fit_lines()
        return True

    def _take(self, points):
        self.points = points
        self.extremes = []
        for column in range(3):
            low, high = 1e300, -1e300
            for point in points:
                if point[column] < low:
                    low = point[column]
                if point[column] > high:
                    high = point[column]
            self.extremes += [low, high]

    @staticmethod
    def _plain_points(lines):
        points = []
        for line in lines:
            tokens = tokens_of(line)
            if tokens[0].startswith("#") or len(tokens) < 2:
                continue
            energy, mut = number(tokens[0]), number(tokens[1])
            angle = arcsine(div(div(HC, energy), TWO_D)) / SHORT_PI * 180.0
            points.append((angle, energy, mut))
        return points

    @staticmethod
    def _beamline_points(lines):
        d, modes, kind, i0_column, started = DEFAULT_D, [], -1, None, False
        points = []
        for line in lines:
            tokens = tokens_of(line)
            if started and len(tokens) > 4 and i0_column is not None and i0_column < len(tokens):
                angle = number(tokens[1])
                energy = div(HC_KEV, (d + d) * sine((angle / 180.0) * SHORT_PI)) * 1000.0
                i0 = number(tokens[i0_column])
                mut = 0.0
                channels = [(m, tokens[i + 3]) for i, m in enumerate(modes) if i + 3 < len(tokens)]
                if kind == 2:
                    for mode, token in channels:
                        if mode == 2:
                            mut = ln(div(i0, number(token)))
                            break
                elif kind == 3:
                    for mode, token in channels:
                        if mode == 3:
                            mut += div(number(token), i0)
                points.append((angle, energy, mut))
            if "Mode" in tokens:
                modes = []
                for t in range(3, len(tokens)):
                    mode = integer(tokens[t])
                    modes.append(mode)
                    if mode == 1:
                        i0_column = t
                    elif kind < 0 and mode >= 2:
                        kind = mode
            if "Offset" in tokens:
                started = True
            if "D=" in tokens:
                at = tokens.index("D=")
                if at + 1 < len(tokens):
                    d = number(tokens[at + 1])
        return points if started and i0_column is not None else []

    def working(self, i):
        return self.points[i][1] - self.dE

    @staticmethod
    def line_value(line, energy):
        c, a, b = line
        L = div(HC, energy)
        return (b * L + a) * L * L * L + c

    def pre(self, energy):
        return self.line_value(self.pre_line, energy)

    def post(self, energy):
        return self.line_value(self.post_line, energy)

    def jump(self):
        return self.post(self.edge_energy) - self.pre(self.edge_energy)

    def value(self, kind, i):
        """The absorbance of point i. Kind 1 subtracts the pre-edge line, kind 2 subtracts
        the post-edge line, and any other kind normalises by both lines."""
        e, m = self.working(i), self.points[i][2]
        if kind == 1:
            return m - self.pre(e)
        if kind == 2:
            return m - self.post(e)
        return div(m - self.pre(e), self.post(e) - self.pre(e))

    def index_below(self, energy):
        n = len(self.points)
        if n == 0 or energy < self.working(0):
            return 0
        if energy > self.working(n - 1):
            return max(n - 2, 0)
        for i in range(n - 1):
            if energy >= self.working(i) and self.working(i + 1) >= energy:
                return i
        return 0

    def value_at(self, kind, energy):
        """Linear interpolation of value(). Outside the points, the first or last segment is
        extrapolated. 0 if there are fewer than two points."""
        if len(self.points) < 2:
            return 0.0
        i = self.index_below(energy)
        e0, e1 = self.working(i), self.working(i + 1)
        v0, v1 = self.value(kind, i), self.value(kind, i + 1)
        return div(v1 - v0, e1 - e0) * (energy - e0) + v0

    def fit_lines(self):
        if not self.points:
            return
        self.pre_line = self._fit(lambda e: e < self.pre_edge_end)
        self.post_line = self._fit(lambda e: e > self.post_edge_start)

    def _fit(self, is_in_range):
        n = s3 = s4 = s6 = s7 = s8 = t0 = t3 = t4 = 0.0
        for _, energy, y in self.points:
            e = energy - self.dE
            if not is_in_range(e):
                continue
            L = div(HC, e)
            p3 = L * L * L
            p4 = p3 * L
            n += 1.0
            s3 += p3
            s4 += p4
            s6 += p3 * p3
            s7 += p3 * p4
            s8 += p4 * p4
            t0 += y
            t3 += y * p3
            t4 += y * p4
        return tuple(solve([[n, s3, s4], [s3, s6, s7], [s4, s7, s8]], [t0, t3, t4]))

    def find_edge(self):
        if not self.points:
            return 0.0
        best, at = -1.0, -1
        for i in range(len(self.points) - 1):
            d = self.points[i + 1][2] - self.points[i][2]
            if d > best:
                best, at = d, i
        if at < 0:
            return 0.5 * self.working(0)
        return 0.5 * (self.working(at) + self.working(at + 1))

    def mut_at(self, energy):
        """The interpolated absorbance minus the post-edge line if sub_post is set, else minus
        the pre-edge line. None if all points are below energy.

        Below the first point it interpolates from the point (0, 0), on purpose."""
        e0 = m0 = 0.0
        for i, point in enumerate(self.points):
            e1, m1 = self.working(i), point[2]
            if e1 >= energy:
                raw = div(m1 - m0, e1 - e0) * (energy - e0) + m0
                return raw - (self.post(energy) if self.sub_post else self.pre(energy))
            e0, m0 = e1, m1
        return None


# --- maps ---------------------------------------------------------------------


class Map:
    def __init__(self):
        self.extended = False
        self.clear()

    def clear(self):
        self.header_lines = []
        self.rows = []  # (x, y, intensity, i0)
        self.values = {}  # row index -> the value list of an extended map
        self.x_num = self.y_num = 0

    def derive_size(self):
        self.x_num = self.y_num = min(len(self.rows), 1)
        if len(self.rows) < 2:
            return
        x0, y0 = self.rows[0][:2]
        for x, y, _, _ in self.rows[1:]:
            if x == x0:
                self.y_num += 1
            if y == y0:
                self.x_num += 1

    def pixel(self, x, y):
        i = y * self.x_num + x
        if i < 0 or i >= len(self.rows):
            return -1.0
        _, _, intensity, i0 = self.rows[i]
        if i0 == 0.0:
            return intensity
        if intensity == 0.0:
            return 1.0
        return ln(div(i0, intensity))

    def read_text(self, content, energy_found):
        """Returns True if the map has a size and at least one row."""
        self.clear()
        kind, i0_column, i_column = 2, 0, 0
        for line_number, raw in enumerate(text_lines(content)):
            tokens = tokens_of(raw)
            if line_number == 0:
                if raw.startswith("# 1306"):
                    kind = 0
                elif raw.startswith("# 2003901"):
                    kind = 1
            if tokens[0].startswith("#"):
                self.header_lines.append(raw)
                keyword = tokens[1].upper() if len(tokens) > 1 else ""
                after_colon = raw[raw.find(":") + 1 :]
                if keyword == "AXIS" and len(tokens) > 7:
                    axis = integer(tokens[2])
                    if axis == 0:
                        self.x_num = integer(tokens[7]) + 1
                    elif axis == 1:
                        self.y_num = integer(tokens[7]) + 1
                elif keyword == "X-NUM" and len(tokens) > 2:
                    self.x_num = integer(tokens[2])
                elif keyword == "Y-NUM" and len(tokens) > 2:
                    self.y_num = integer(tokens[2])
                elif keyword == "ENERGY" and len(tokens) > 3:
                    energy_found(tokens[3])
                elif keyword == "I0" and len(tokens) > 2:
                    i0_column = integer(after_colon)
                elif keyword == "I" and len(tokens) > 2:
                    i_column = integer(after_colon)
            elif kind == 1:
                i0_at, i_at = i0_column + 2, i_column + 2
                if 0 <= i0_at < len(tokens) and 0 <= i_at < len(tokens):
                    self.rows.append(tuple(number(tokens[t]) for t in (0, 1, i_at, i0_at)))
            elif len(tokens) == 3:
                self.rows.append(tuple(number(t) for t in tokens) + (1.0,))
            elif len(tokens) > 3:
                self.rows.append(tuple(number(t) for t in tokens[:4]))
        if kind == 1:
            self.derive_size()
        if max(self.x_num, 1) * max(self.y_num, 1) > MAX_PIXELS:
            self.x_num = self.y_num = 0
        return self.x_num > 0 and self.y_num > 0 and bool(self.rows)

    def append_binary(self, content):
        """Appends the pixels of a binary map to the existing rows and sets its size."""
        width, height, values = binary_map(content)
        self.x_num, self.y_num = width, height
        for y in range(height):
            for x in range(width):
                self.rows.append((float(x), float(y), values[y * width + x], 0.0))


def is_binary_map(content):
    return content is not None and content[:64].decode("utf-8-sig", "replace").startswith("2dData")


def binary_map(content):
    """Returns the width, the height and the pixels; 0 by 0 if the content is invalid.

    Pixels that the content does not reach are 0."""
    if not is_binary_map(content):
        return 0, 0, []
    head = content[:64].decode("utf-8-sig", "replace")
    for _ in range(3):
        item, head = next_item(head)
    header_size = integer(item)
    width = height = 0
    for line in text_lines(content[: max(header_size, 0)], text_mode=False):
        key, rest = next_item(line)
        if key == "WIDTH:":
            width = integer(rest[1:])
        elif key == "HEIGHT:":
            height = integer(rest[1:])
    if width < 0 or height < 0 or max(width, 1) * max(height, 1) > MAX_PIXELS:
        return 0, 0, []
    size = width * height * 8
    block = content[header_size : header_size + size] if header_size >= 0 else content[:size]
    block += b"\0" * (size - len(block))
    return width, height, list(struct.unpack("<%dd" % (width * height), block))


# --- histograms ---------------------------------------------------------------


class Histogram:
    def __init__(self):
        self.min = self.max = self.step = 0.0
        self.bins = []
        self.under = self.over = 0

    def start(self, low, high, boxes):
        count = 0
        if boxes == boxes and boxes >= 1.0:
            count = MAX_BOXES if boxes >= MAX_BOXES else int(boxes)
        self.step = div(high - low, float(count - 1))
        self.min = low - self.step * 0.5
        self.max = high + self.step * 0.5
        self.bins = [0] * count
        self.under = self.over = 0

    def add(self, value):
        b = div(value - self.min, self.step)
        if b != b or b >= 2147483648.0 or b <= -2147483649.0:
            self.under += 1
            return
        b = int(b)
        if b < 0:
            self.under += 1
        elif b >= len(self.bins):
            self.over += 1
        else:
            self.bins[b] += 1

    def text(self):
        lines = []
        for i in range(-1, len(self.bins) + 1):
            count = self.under if i < 0 else self.over if i == len(self.bins) else self.bins[i]
            edges = (self.step * i + self.min, self.step * (i + 0.5) + self.min, self.step * (i + 1) + self.min)
            lines.append("%s %s %s  %d\n" % (*map(general, edges), count))
        return "".join(lines)

    def numbers(self):
        """The limits, the bin width and all counts in one list."""
        counts = [self.under, self.over, max(self.bins, default=0), *self.bins]
        return [self.min, self.max, self.step, *map(float, counts)]


# --- files --------------------------------------------------------------------


class Files:
    """A virtual file system: a dict from normalised absolute path to content, and a
    set of existing folders."""

    ROOT = "@"
    CWD = "@/cwd"

    def __init__(self, files, folders=()):
        self.content = dict(files)
        self.folders = {self.ROOT, self.CWD, "/", "/dev"} | set(folders)
        for path in self.content:
            self.folders.add(posixpath.dirname(path))

    def normal(self, path):
        if not path:
            return None
        if not path.startswith(("/", self.ROOT)):
            path = self.CWD + "/" + path
        return posixpath.normpath(path)

    def read(self, path):
        """The bytes of a regular file; None for anything else."""
        return self.content.get(self.normal(path))

    def exists(self, path):
        path = self.normal(path)
        return path in self.content or path in self.folders or path == "/dev/full"

    def write(self, path, data):
        path = self.normal(path)
        if path is None or path in self.folders or posixpath.dirname(path) not in self.folders:
            return False
        if path.startswith("/"):  # only the temporary folder of the replay is writable
            return False
        self.content[path] = data
        return True

    @staticmethod
    def base_and_suffix(path):
        name = posixpath.basename(path)
        base, dot, suffix = name.rpartition(".")
        return (base, suffix) if dot else (name, "")

    def canonical_folder(self, path):
        """The folder that contains an existing path; the working directory if the path does not exist."""
        return posixpath.dirname(self.normal(path)) if self.exists(path) else self.CWD


# --- the panel ----------------------------------------------------------------

RADIO_GROUPS = (
    ("radioButton", "TypeNonEquiv"),
    ("TypeTMKisExact", "TypeTMKisLS"),
    ("SubPreEforRef", "SubPostEforRef"),
    ("SubPreEforTarget", "SubPostEforTarget"),
    ("NonEquivBGLinear", "NonEquivBGVic"),
)
COLUMNS = ("alpha1 alpha2 alpha3 alpha4 dMut1 dMut2 dMut3 dMut4 Mut0 C1 C2 Valence Total-dMut").split()
COLUMN_BOXES = (
    "RecRatio1 RecRatio2 RecRatio3 RecRatio4 RecDMut1 RecDMut2 RecDMut3 RecDMut4"
    " RecMut0 RecC1 RecC2 RecValence RecAmount"
).split()
ROWS = range(8)
REFS = range(4)


class Refused(Exception):
    """Stops a calculation. Its argument is the message, or None for no message."""


class Panel:
    def __init__(self, files):
        self.files = files
        self.messages = []
        self.text = {
            "EdgeE": "8350",
            "PreEEndDE": "-50",
            "PostEStartDE": "100",
            "HgAFrom": "1.5",
            "HgATo": "3.5",
            "HgABoxes": "51",
            "HgTFrom": "-0.2",
            "HgTTo": "1.2",
            "HgTBoxes": "51",
            "CalcRes": "",
            "LCFRes": "",
            "TargetDMut": "",
            "MultiEnergys": "",
        }
        self.checked = {
            name: name in ("TypeNonEquiv", "TypeTMKisLS", "SubPreEforRef", "SubPreEforTarget", "NonEquivBGLinear")
            for group in RADIO_GROUPS
            for name in group
        }
        self.checked.update(HgAAuto=True, HgTAuto=True)
        self.checked.update({box: box in ("RecValence", "RecAmount") for box in COLUMN_BOXES})
        self.spectra = [Spectrum() for _ in range(5)]
        self.maps = [Map() for _ in ROWS]
        self.loaded = [False] * 8
        self.disp_muts = []
        self.disp_items = []
        self.disp_current = -1
        self.base = Map()
        self.target_v = self.target_t = 0.0
        self.hist_v, self.hist_t = Histogram(), Histogram()
        self.hist_ratio = [Histogram() for _ in REFS]
        self.hist_dmut = [Histogram() for _ in REFS]
        self.lcf_mut = None
        self.lcf_points = []  # (a and valence of the target calculation, a and valence of the fit, colour)
        self.lcf_color = 0

        for name in ("Ref1", "Ref2", "Ref3", "Ref4", "Target"):
            self.text[name + ".file"] = ""
            self.text[name + ".dE"] = "0"
        for row in ("Row%d" % (n + 1) for n in ROWS):
            self.text[row + ".file"] = ""
        for row in ("Save.file", "Disp.file", "Multi.file"):
            self.text[row] = ""
        for n in REFS:
            self.text["Ref%d.Valence" % (n + 1)] = str(n)
            self.text["Ref%d.RatioDisp" % (n + 1)] = ""
            self.text["Ref%d.AmountDisp" % (n + 1)] = ""
            self.checked["Ref%d.UseCB" % (n + 1)] = n < 2
        energies = (8313, 8381, 8390, 8404.5, 8460, 8475)
        for n in ROWS:
            self.checked["UseCB.%d" % (n + 1)] = n < 4
            self.checked["VPointCB.%d" % (n + 1)] = n == 2
            self.checked["LCFCB.%d" % (n + 1)] = False
            self.text["Energy.%d" % (n + 1)] = general(energies[n]) if n < len(energies) else ""
            for cell in ("Mut1", "Mut2", "Mut3", "Mut4", "MutT"):
                self.text["%s.%d" % (cell, n + 1)] = ""

        self.setEdge()
        self.changedSubBGTypeForRef(self.checked["SubPostEforRef"])
        self.changedSubBGTypeForTarget(self.checked["SubPostEforTarget"])

    # widgets

    def value(self, field):
        return number(self.text[field])

    def cell(self, name, row):
        return self.value("%s.%d" % (name, row + 1))

    def used(self, n):
        return self.checked["Ref%d.UseCB" % (n + 1)]

    def row_used(self, n):
        return self.checked["UseCB.%d" % (n + 1)]

    def row_is_v(self, n):
        return self.checked["VPointCB.%d" % (n + 1)]

    def message(self, text):
        self.messages.append(simplified(text))

    # slots

    def noticedNewEdge(self, e):
        self.text["EdgeE"] = general(e)
        self.setEdge()

    def setEdge(self):
        e = self.value("EdgeE")
        pre = e + self.value("PreEEndDE")
        post = e + self.value("PostEStartDE")
        for spectrum in self.spectra + self.disp_muts:
            spectrum.pre_edge_end = pre
            spectrum.edge_energy = e
            spectrum.post_edge_start = post
            spectrum.fit_lines()
        for n in REFS:
            self.receiveNewRef(n)

    def receiveNewRef(self, n):
        if self.spectra[n].valid:
            self.refresh_ref_column(n)

    def receiveNewRef1(self, _name):
        self.receiveNewRef(0)

    def receiveNewRef2(self, _name):
        self.receiveNewRef(1)

    def receiveNewRef3(self, _name):
        self.receiveNewRef(2)

    def receiveNewRef4(self, _name):
        self.receiveNewRef(3)

    def refresh_ref_column(self, n):
        for row in ROWS:
            energy = self.cell("Energy", row)
            if energy > 0:
                self._show_mut("Mut%d" % (n + 1), row, self.spectra[n], energy)
        self.calcBoth()

    def _show_mut(self, cell, row, spectrum, energy):
        mut = spectrum.mut_at(energy)
        self.text["%s.%d" % (cell, row + 1)] = "" if mut is None else general(mut)

    def receiveNewTarget(self, _name=""):
        for row in ROWS:
            self._show_mut("MutT", row, self.spectra[4], self.cell("Energy", row))

    def new_energy_of_row(self, row):
        energy = self.cell("Energy", row)
        for n in REFS:
            self._show_mut("Mut%d" % (n + 1), row, self.spectra[n], energy)
        self._show_mut("MutT", row, self.spectra[4], energy)

    def receiveNewEnergy(self, _e):
        """A direct call has no sender, so the row is unknown: no effect."""

    def receiveNewFile(self, _name):
        """A direct call has no sender: only the calculation runs."""
        self.calcBoth()

    def receiveNewDir(self, _dir):
        pass

    def changedSubBGTypeForRef(self, post):
        for n in REFS:
            self.spectra[n].sub_post = post
        for n in REFS:
            self.receiveNewRef(n)

    def changedSubBGTypeForTarget(self, post):
        self.spectra[4].sub_post = post
        self.receiveNewTarget()
        self.calcBoth()

    def receiveNewDispFiles(self, paths):
        for path in paths:
            spectrum = Spectrum()
            if not spectrum.read_file(self.files, path):
                continue
            self.disp_items.append(path)
            self.disp_muts.append(spectrum)
            if self.disp_current < 0:
                self.disp_current = 0
            self.setEdge()

    def removeAFile(self):
        if not self.disp_muts or not 0 <= self.disp_current < len(self.disp_muts):
            return
        del self.disp_items[self.disp_current]
        del self.disp_muts[self.disp_current]
        self.disp_current = min(self.disp_current, len(self.disp_muts) - 1)

    def receiveNewPaths(self, paths):
        for n, path in zip(ROWS, paths):
            self.new_file("Row%d" % (n + 1), path)

    def newMultiEnergys(self):
        rest = simplified(self.text["MultiEnergys"].replace(",", " "))
        row = 0
        while rest and row < 8:
            item, rest = next_item(rest)
            if item and number(item) > 0.0:
                self.text["Energy.%d" % (row + 1)] = item
                row += 1

    def valence_range(self):
        lo, hi = 10.0, 0.0
        for n in REFS:
            if self.used(n):
                valence = self.value("Ref%d.Valence" % (n + 1))
                if valence < lo:
                    lo = valence
                if valence > hi:
                    hi = valence
        return lo, hi

    def total_jump(self):
        checked = [n for n in REFS if self.used(n)]
        total = 0.0
        for n in checked[: self.valid_references()]:
            total += self.spectra[n].jump()
        return total

    def set_histogram_ranges(self):
        if self.checked["HgAAuto"]:
            lo, hi = self.valence_range()
            self.text["HgAFrom"] = general(lo - 0.5)
            self.text["HgATo"] = general(hi + 0.5)
        if self.checked["HgTAuto"]:
            self.text["HgTFrom"] = general(-0.5)
            self.text["HgTTo"] = general(self.total_jump() + 0.5)

    def calcBoth(self):
        self.set_histogram_ranges()
        self.calcMap()
        self.calcTarget()
        self.lcf()

    # file rows

    def new_file(self, row, path):
        """The slot newFile() of a file row and all slots connected to the row's signals."""
        if row == "Save":
            if self.files.base_and_suffix(path)[1] != "dat":
                path += ".dat"
        self.text[row + ".file"] = path
        self._on_new_file(row, path)

    def clear_file(self, row):
        self.text[row + ".file"] = ""
        self._on_new_file(row, "")

    def new_files(self, row, paths):
        self.text[row + ".file"] = "".join(posixpath.basename(path) + " " for path in paths)
        if row == "Disp":
            self.receiveNewDispFiles(paths)
        elif row == "Multi":
            self.receiveNewPaths(paths)

    def _on_new_file(self, row, path):
        if row.startswith("Row"):
            self.loadData(int(row[3:]) - 1, path)
        elif row.startswith("Ref"):
            n = int(row[3:]) - 1
            if self.spectra[n].read_file(self.files, path):
                self.noticedNewEdge(self.spectra[n].find_edge())
            self.receiveNewRef(n)
            self.calcBoth()
        elif row == "Target":
            self.spectra[4].read_file(self.files, path)
            self.receiveNewTarget()
            self.calcBoth()

    def new_shift(self, row):
        spectrum = self.spectra[4 if row == "Target" else int(row[3:]) - 1]
        spectrum.dE = self.value(row + ".dE")
        if spectrum.valid:
            self.calcBoth()

    def loadData(self, row, path):
        content = self.files.read(path)
        if is_binary_map(content):
            self.load2dProcData(row, path)
            return
        self.loaded[row] = False
        if content is None:
            return

        def energy_found(text):
            self.text["Energy.%d" % (row + 1)] = text
            self.new_energy_of_row(row)

        self.loaded[row] = self.maps[row].read_text(content, energy_found)

    def load2dProcData(self, row, path):
        self.maps[row].append_binary(self.files.read(path))
        self.loaded[row] = True

    # shared by the calculations

    def valid_references(self):
        return sum(self.used(n) and self.spectra[n].valid for n in REFS)

    def checked_reference(self, position):
        """The index of the checked reference with this position among all checked references;
        None if fewer references are checked."""
        checked = [n for n in REFS if self.used(n)]
        return checked[position] if position < len(checked) else None

    def first_checked(self, count):
        return [n for n in REFS if self.used(n)][:count]

    def valence_of(self, n):
        return self.value("Ref%d.Valence" % (n + 1))

    def valence_mix(self, a):
        if self.valid_references() < 2:
            return 0.0
        v1 = self.valence_of(self.checked_reference(0))
        v2 = self.valence_of(self.checked_reference(1))
        return (1 - a) * v2 + v1 * a

    def report_few_references(self):
        count = self.valid_references()
        if count < 2:
            self.message("Number of valied Ref Files is %d, which is less than 2." % count)

    def collect(self, needed):
        """Returns the rows in use that are not marked as V rows, the last marked row (the V
        row), the energies and both references' values of all these rows, and the ratio of the
        edge jumps."""
        first, second = self.checked_reference(0), self.checked_reference(1)
        if first is None or second is None:
            raise Refused(None)
        others, v = [], None
        for row in ROWS:
            if self.row_used(row):
                if self.row_is_v(row):
                    v = row
                else:
                    others.append(row)
        if len(others) + 1 < needed:
            raise Refused("Number of selected data sets %d is not %d." % (len(others) + 1, needed))
        rows = others + [v]
        E = [self.cell("Energy", row) for row in rows]
        R1 = [self.cell("Mut%d" % (first + 1), row) for row in rows]
        R2 = [self.cell("Mut%d" % (second + 1), row) for row in rows]
        r = div(self.spectra[first].jump(), self.spectra[second].jump())
        return others, v, E, R1, R2, r

    def form_of(self, n):
        """The calculation form for n selected rows."""
        if n == 3:
            return "3ps"
        if n == 4:
            return "exact" if self.checked["TypeTMKisExact"] else "ls"
        if n > 4 and self.checked["TypeTMKisLS"]:
            return "ls"
        raise Refused("Number of selected data sets %d is not 4." % n)

    NEEDED = {"3ps": 3, "exact": 4, "ls": 0}

    def solver(self, form):
        """Returns the rows, the V row, and a function that calculates the result from the
        absorbances of these rows and of the V row."""
        others, v, E, R1, R2, r = self.collect(self.NEEDED[form])
        if form == "3ps":
            rows = others[:2]

            def run(T, TV):
                return three_points(T, TV, R1[:2], R1[-1], R2[:2], R2[-1])

        elif form == "exact":
            rows = others[:3]

            def run(T, TV):
                return exact_four_points(T, TV, R1, R1[-1], R2, R2[-1], E, E[-1], r)

        else:
            rows = others

            def run(T, TV):
                return least_square(T, TV, R1[:-1], R1[-1], R2[:-1], R2[-1], E[:-1], E[-1], r)

        return rows, v, run

    # target

    def calcTarget(self):
        try:
            self._calc_target()
        except Refused as stop:
            if stop.args[0] is not None:
                self.message(stop.args[0])

    def _calc_target(self):
        selected = [row for row in ROWS if self.row_used(row)]
        n = len(selected)
        if not any(self.row_is_v(row) for row in selected):
            raise Refused("V Point is not selected.")
        self.report_few_references()
        for position, ordinal in ((0, "1st"), (1, "2nd")):
            reference = self.checked_reference(position)
            if reference is None:
                raise Refused(None)
            if not self.spectra[reference].valid:
                raise Refused("The %s Ref File is not valid." % ordinal)
        if not self.spectra[4].valid:
            raise Refused("Target File1 is not valid.")
        if self.checked["TypeNonEquiv"]:
            needed = 4 if self.checked["NonEquivBGLinear"] else 5
            if n < needed:
                raise Refused("Number of selected data sets %d is not %d." % (n, needed))
            return self._non_equivalent_target()
        form = self.form_of(n)
        rows, v, run = self.solver(form)
        a, thickness = run([self.cell("MutT", row) for row in rows], self.cell("MutT", v))
        valence = self.valence_mix(a)
        if form == "3ps":
            text = "3ps: a = %s, Valence = %s" % (general(a), general(valence))
        else:
            text = "a = %s, Valence = %s, t/ts = %s" % (general(a), general(valence), general(thickness))
            if form == "ls":
                text = "4ps2: " + text
        self.text["CalcRes"] = text
        if form != "exact":
            self.message(text)
        self.target_v, self.target_t = a, valence

    # map

    def calcMap(self):
        try:
            self._calc_map()
        except Refused as stop:
            if stop.args[0] is not None:
                self.message(stop.args[0])

    def _calc_map(self):
        selected = [row for row in ROWS if self.loaded[row] and self.row_used(row)]
        n = len(selected)
        non_equivalent = self.checked["TypeNonEquiv"]
        if not non_equivalent and not any(self.row_is_v(row) for row in selected):
            raise Refused("V Point is not selected")
        self.report_few_references()
        for i in REFS:
            if self.used(i):
                reference = self.checked_reference(i)
                if reference is None or not self.spectra[reference].valid:
                    raise Refused("Ref File %d is not valid." % i)
        if non_equivalent:
            bound = self.valid_references() + (2 if self.checked["NonEquivBGLinear"] else 3)
            if n < bound:
                raise Refused("Number of selected data sets %d is less than %d." % (n, bound))
            if self.valid_references() < 2:
                raise Refused(None)
            return self._non_equivalent_map()
        rows, v, run = self.solver(self.form_of(n))
        # The four-point methods reset the histograms of the references but count
        # nothing in them.
        self._start_histograms([self.hist_v, *self.hist_ratio], [self.hist_t, *self.hist_dmut])
        base_row = self.maps[v]
        self.base.clear()
        self.base.x_num, self.base.y_num = base_row.x_num, base_row.y_num
        self.base.header_lines = list(base_row.header_lines)
        for y in range(base_row.y_num):
            for x in range(base_row.x_num):
                T = [self.maps[row].pixel(x, y) for row in rows]
                a, thickness = run(T, base_row.pixel(x, y))
                i = y * base_row.x_num + x
                at = base_row.rows[i][:2] if i < len(base_row.rows) else (0.0, 0.0)
                self.base.rows.append((*at, a, thickness))
                self.hist_v.add(self.valence_mix(a))
                self.hist_t.add(thickness)
        self.base.extended = False

    def _start_histograms(self, valence, thickness):
        for histograms, letter in ((valence, "A"), (thickness, "T")):
            for histogram in histograms:
                histogram.start(*(self.value("Hg%s%s" % (letter, part)) for part in ("From", "To", "Boxes")))

    # the non-equivalent method

    def _non_equivalent_target(self):
        for n in self.first_checked(self.valid_references()):
            if not self.spectra[n].valid:
                raise Refused("Ref File %d is not valid." % n)
        fit = NonEquivalent(self)
        kind = 2 if self.checked["SubPostEforTarget"] else 1
        T = [self.spectra[4].value_at(kind, energy) for energy in fit.energies]
        out, total_of_shares = fit.solve(T)
        total = total_of_shares * fit.jump_sum
        for i in range(len(fit.refs)):
            out[4 + i] = out[i] * total
        valence = fit.finish(out, total)
        self.text["TargetDMut"] = general(total)
        for i, n in enumerate(fit.refs):
            self.text["Ref%d.RatioDisp" % (n + 1)] = general(out[i])
            self.text["Ref%d.AmountDisp" % (n + 1)] = general(out[4 + i])
        shares = " : ".join(fixed3(out[i]) for i in range(len(fit.refs)))
        text = "Result of NEQ :: %s, Valence = %s, t = %s" % (shares, fixed3(valence), fixed3(total))
        self.message(text)
        self.text["CalcRes"] = text
        self.target_v, self.target_t = out[0], valence

    def _non_equivalent_map(self):
        self._start_histograms([self.hist_v, *self.hist_ratio], [self.hist_t, *self.hist_dmut])
        fit = NonEquivalent(self)
        base_row = self.maps[fit.rows[0]]
        self.base.clear()
        self.base.x_num, self.base.y_num = base_row.x_num, base_row.y_num
        self.base.header_lines = list(base_row.header_lines)
        for y in range(base_row.y_num):
            for x in range(base_row.x_num):
                out, total_of_shares = fit.solve([self.maps[row].pixel(x, y) for row in fit.rows])
                total = total_of_shares * fit.jump_sum
                for i in range(len(fit.refs)):
                    out[4 + i] = out[i] * total_of_shares * fit.jump_sum
                valence = fit.finish(out, total)
                i = y * base_row.x_num + x
                at = base_row.rows[i][:2] if i < len(base_row.rows) else (0.0, 0.0)
                self.base.values[len(self.base.rows)] = out
                self.base.rows.append((*at, out[0], total))
                self.hist_v.add(valence)
                self.hist_t.add(total)
                for i in range(len(fit.refs)):
                    self.hist_ratio[i].add(out[i])
                    self.hist_dmut[i].add(out[4 + i])
        self.base.extended = True

    # linear combination fit

    def lcf(self):
        lowest, highest, count = 1e300, -1e300, 0
        for row in ROWS:
            if self.checked["LCFCB.%d" % (row + 1)]:
                energy = self.cell("Energy", row)
                count += 1
                if energy < lowest:
                    lowest = energy
                if energy > highest:
                    highest = energy
        if lowest > highest or count < 2:
            self.message("Energy Range is not selected, which should by selected by CB of TR.")
            return
        valid = self.valid_references()
        if valid < 2:
            self.message("Number of Valid Reference files is %d, which is less than 2" % valid)
            return
        refs = self.first_checked(valid)
        target = self.spectra[4]
        sums = NormalEquations(valid + 1)
        in_range = []  # (angle, energy, list of the references' values)
        for i, point in enumerate(target.points):
            e = target.working(i)
            if e >= lowest and e <= highest:
                values = [self.spectra[n].value_at(4, e) for n in refs]
                sums.add(values + [1.0], target.value(4, i))
                in_range.append((point[0], e, values))
        sol = sums.solution()
        total = valence = 0.0
        for i, n in enumerate(refs):
            total += sol[i]
            valence += sol[i] * self.valence_of(n)
        shares = " : ".join(fixed3(div(sol[i], total)) for i in range(valid))
        text = "Result of LCF :: %s, Valence = %s, Base = %s" % (shares, fixed3(valence), fixed3(sol[valid]))
        self.message(text)
        self.text["LCFRes"] = text
        self.lcf_points.append((self.target_v, self.target_t, div(sol[0], total), valence, self.lcf_color))
        self.lcf_mut = Spectrum()
        for angle, e, values in in_range:
            fitted = sol[valid]
            for i in range(valid):
                fitted += sol[i] * values[i]
            self.lcf_mut.points.append((angle, e, fitted))

    def clearLCFvs4PS(self):
        self.lcf_color = 0
        self.lcf_points = []

    def newColorLCFvs4PS(self):
        self.lcf_color = (self.lcf_color + 1) % COLOURS

    # output

    def calcAndWrite(self):
        self.calcMap()
        self.write()

    def write(self):
        path = self.text["Save.file"]
        if not self.files.write(path, self.result_text().encode("utf-8")):
            self.message("Can't open the file [%s]" % path)
        base, suffix = self.files.base_and_suffix(path)
        for histogram, name in ((self.hist_v, "HGAlpha"), (self.hist_t, "HGThick")):
            beside = "%s/%s_%s.%s" % (self.files.canonical_folder(path), base, name, suffix)
            if self.files.exists(beside):
                self.files.write(beside, histogram.text().encode())

    def result_text(self):
        parts = ["# qelk result map V1.0\n"]
        parts += [line + "\n" for line in self.base.header_lines]
        parts.append("\n")
        wanted = [i for i, box in enumerate(COLUMN_BOXES) if self.checked[box]]
        if self.base.extended:
            parts.append("# y x" + "".join(" " + COLUMNS[i] for i in wanted) + "\n")
        for y in range(self.base.y_num):
            for x in range(self.base.x_num):
                i = y * self.base.x_num + x
                inside = 0 <= i < len(self.base.rows)
                X, Y, a, t = self.base.rows[i] if inside else (0.0,) * 4
                if self.base.extended:
                    values = self.base.values.get(i, []) if inside else []
                    numbers = [X, Y] + [values[k] if k < len(values) else 0.0 for k in wanted]
                    parts.append("".join(" " + general(v).rjust(10) for v in numbers) + "\n")
                else:
                    numbers = (X, Y, a, self.valence_mix(a), t)
                    parts.append(" %s %s    %s %s %s\n" % tuple(general(v).rjust(10) for v in numbers))
            parts.append("\n")
        return "".join(parts)

    # buttons

    def click(self, button):
        if button in ("TypeTMKisExact", "TypeTMKisLS"):
            return  # these buttons are always disabled
        if button == "CalcTargetB":
            self.calcTarget()
        elif button == "CalcMapB":
            self.calcMap()
        elif button == "WriteB":
            self.calcAndWrite()
        elif button == "LCFB":
            self.lcf()
        elif button == "RemoveAFile":
            self.removeAFile()
        elif button.startswith("ShowMapB"):
            pass
        else:
            self.check(button, True if self._group(button) else not self.checked[button])
            if button.startswith(("UseCB.", "VPointCB.", "LCFCB.")):
                self.calcBoth()

    @staticmethod
    def _group(button):
        return next((group for group in RADIO_GROUPS if button in group), None)

    def check(self, button, on):
        """Sets a button by setChecked() and calls the slots connected to toggled()."""
        if self.checked[button] == on:
            return
        group = self._group(button)
        if group and not on:
            return  # the checked button of a group cannot be unchecked
        changed = [button]
        if group:
            other = group[0] if button == group[1] else group[1]
            changed = [other, button]
            self.checked[other] = False
        self.checked[button] = on
        for name in changed:
            if name in ("TypeNonEquiv", "NonEquivBGLinear"):
                self.calcBoth()
            elif name == "SubPostEforRef":
                self.changedSubBGTypeForRef(self.checked[name])
            elif name == "SubPostEforTarget":
                self.changedSubBGTypeForTarget(self.checked[name])
            elif name.startswith("Ref"):
                self.calcBoth()

    def set_use(self, n, on):
        before = self.used(n)
        self.check("Ref%d.UseCB" % (n + 1), on)
        if before != on:
            self.calcBoth()

    def editing_finished(self, field):
        if field in ("EdgeE", "PreEEndDE", "PostEStartDE"):
            self.setEdge()
        elif field == "MultiEnergys":
            self.newMultiEnergys()
        elif field.startswith("Energy."):
            self.new_energy_of_row(int(field[7:]) - 1)
        elif field.endswith(".dE"):
            self.new_shift(field[:-3])

    # the state that tst_independent compares with the state of the panel

    def state(self):
        """The state as a dict from field to text, without fields whose text is empty."""
        state = dict(self.text)
        for name, on in self.checked.items():
            state[name] = "on" if on else ""
        for n, spectrum in enumerate(self.spectra):
            name = "Target" if n == 4 else "Ref%d" % (n + 1)
            state[name + ".valid"] = "yes" if spectrum.valid else ""
            if spectrum.points:
                flat = [v for point in spectrum.points for v in point]
                state[name + ".points"] = "%d %s" % (len(spectrum.points), hash_doubles(flat)[:8])
                state[name + ".extremes"] = hash_doubles(spectrum.extremes)[:8]
                lines = spectrum.pre_line + spectrum.post_line
                state[name + ".lines"] = hash_doubles(lines)[:8]
        for n, m in enumerate(self.maps):
            row = "Row%d" % (n + 1)
            state[row + ".loaded"] = "yes" if self.loaded[n] else ""
            state.update(self._map_state(row, m))
        state.update(self._map_state("BaseData", self.base))
        state["BaseData.extended"] = "yes" if self.base.extended else ""
        for name, histogram in (("HistV", self.hist_v), ("HistT", self.hist_t)):
            if histogram.bins or histogram.under or histogram.over:
                limits = hash_doubles((histogram.min, histogram.max, histogram.step))[:8]
                counts = (len(histogram.bins), histogram.under, histogram.over, max(histogram.bins, default=0))
                state[name] = "%s %d < %d > %d highest %d" % (limits, *counts)
        state["TargetV"] = hash_doubles([self.target_v])[:8] if self.target_v != 0.0 else ""
        state["TargetT"] = hash_doubles([self.target_t])[:8] if self.target_t != 0.0 else ""
        for name, histograms in (("HistRatio", self.hist_ratio), ("HistDMut", self.hist_dmut)):
            if any(h.bins or h.under or h.over for h in histograms):
                flat = [v for h in histograms for v in h.numbers()]
                state[name] = "%d %s" % (len(flat), hash_doubles(flat)[:8])
        if self.lcf_mut is not None:
            fit = self.lcf_mut
            flat = [v for point in fit.points for v in point]
            state["LCFMut"] = "%d %s" % (len(fit.points), hash_doubles(flat)[:8])
            state["LCFMut.valid"] = "yes" if fit.valid else ""
            fields = (*fit.extremes, fit.pre_edge_end, fit.post_edge_start, fit.dE, *fit.pre_line, *fit.post_line)
            state["LCFMut.fields"] = hash_doubles(fields)[:8]
        if self.lcf_points:
            flat = [float(v) for point in self.lcf_points for v in point]
            state["LCFvs4PS"] = "%d %s" % (len(self.lcf_points), hash_doubles(flat)[:8])
        state["LCFColor"] = str(self.lcf_color) if self.lcf_color else ""
        state["SelectedFs"] = "\n".join(self.disp_items)
        state["SelectedFs.current"] = "" if self.disp_current < 0 else str(self.disp_current)
        return {key: text for key, text in state.items() if text}

    @staticmethod
    def _map_state(name, m):
        flat = [v for row in m.rows for v in row]
        lists = [v for i in range(len(m.rows)) for v in (float(len(m.values.get(i, ()))), *m.values.get(i, ()))]
        return {
            name + ".values": "%d %s" % (len(m.rows), hash_doubles(lists)[:8]) if any(m.values.values()) else "",
            name + ".size": "%d x %d" % (m.x_num, m.y_num) if m.x_num or m.y_num else "",
            name + ".rows": "%d %s" % (len(m.rows), hash_doubles(flat)[:8]) if m.rows else "",
            name + ".comments": hash_text("\n".join(m.header_lines))[:8] if m.header_lines else "",
        }


# --- calculation forms --------------------------------------------------------


def three_points(T, TV, R1, R1V, R2, R2V):
    def f(X, XV):
        return div(XV - X[0], X[1] - X[0])

    a = div(f(T, TV) - f(R2, R2V), f(R1, R1V) - f(R2, R2V))
    # R1[1] - R2[0] subtracts values of different references. This is on purpose: the panel
    # is required to use this formula.
    t = div(T[1] - T[0], 0.5 * ((R1[1] - R2[0]) + (R1[1] - R1[0])))
    return a, t


def exact_four_points(T, TV, R1, R1V, R2, R2V, E, EV, r):
    T0, T1, T2 = T[:3]
    E0, E1, E2 = E[:3]
    S0, S1, S2 = (R2[i] + R1[i] for i in range(3))
    DS = (E1 - E0) * S2 + (E0 - E2) * S1 + (E2 - E1) * S0
    DT = (E1 - E0) * T2 + (E0 - E2) * T1 + (E2 - E1) * T0
    K = div(DS, DT)
    tts = div(1.0, K * 0.5)
    p = div(r * K, r + 1)
    q = div(K, r + 1)
    N0 = -((E0 * T1 - E1 * T0) * S2 + (E1 * S0 - E0 * S1) * T2 + E2 * T0 * S1 - E2 * S0 * T1)
    N1 = T2 * (S0 - S1) + (T1 - T0) * S2 + S1 * T0 - S0 * T1
    B = div(N0, DS) + div(N1, DS) * EV
    return div((B - TV) * (p * q) + R2V * p, R2V * p - R1V * q), tts


def least_square(T, TV, R1, R1V, R2, R2V, E, EV, r):
    n = sE = sT = sEE = sET = sTT = sS = sSE = sST = 0.0
    for t, r1, r2, e in zip(T, R1, R2, E):
        s = r1 + r2
        n += 1.0
        sE += e
        sT += t
        sEE += e * e
        sET += e * t
        sTT += t * t
        sS += s
        sSE += s * e
        sST += s * t
    c0, c1, c2 = solve([[n, sE, sT], [sE, sEE, sET], [sT, sET, sTT]], [sS, sSE, sST])
    K = c2
    p = div(r * K, r + 1)
    q = div(K, r + 1)
    tts = div(1.0, K * 0.5)
    B = div(-c1, K) * EV + div(-c0, K)
    return div((B - TV) * p * q + R2V * p, R2V * p - R1V * q), tts


class NonEquivalent:
    """The non-equivalent method: the data common to all pixels, and the solution for
    one pixel as a list of thirteen columns."""

    def __init__(self, panel):
        self.linear = panel.checked["NonEquivBGLinear"]
        self.refs = panel.first_checked(panel.valid_references())
        self.rows = [row for row in ROWS if panel.row_used(row)]
        self.energies = [panel.cell("Energy", row) for row in self.rows]
        self.valences = [panel.valence_of(n) for n in self.refs]
        spectra = [panel.spectra[n] for n in self.refs]
        kind = 2 if panel.checked["SubPostEforRef"] else 1
        self.ref_values = [[spectrum.value_at(kind, energy) for energy in self.energies] for spectrum in spectra]
        self.jump_sum = 0.0
        for spectrum in spectra:
            self.jump_sum += spectrum.jump()
        self.weights = [div(spectrum.jump(), self.jump_sum) for spectrum in spectra]

    def solve(self, T):
        """Returns the thirteen columns and the sum by which the shares were divided. The
        edge jumps, the valence and the total are still 0."""
        n = len(self.refs)
        sums = NormalEquations(n + (2 if self.linear else 3))
        for e, y in enumerate(T):
            phi = [values[e] for values in self.ref_values] + [1.0]
            if self.linear:
                phi.append(self.energies[e])
            else:
                L = div(HC, self.energies[e])
                cube = L * L * L
                phi += [cube, cube * L]
            sums.add(phi, y)
        x = sums.solution()
        out = [0.0] * 13
        for i in range(n):
            out[i] = x[i] * self.weights[i]
        out[8], out[9], out[10] = x[n], x[n + 1], 0.0 if self.linear else x[n + 2]
        total = 0.0
        for i in range(4):
            total += out[i]
        for i in range(4):
            out[i] = div(out[i], total)
        return out, total

    def finish(self, out, total):
        """Stores the valence and the total in the columns. Returns the valence."""
        valence = 0.0
        for i, v in enumerate(self.valences):
            valence += out[i] * v
        out[11], out[12] = valence, total
        return valence


# --- replaying a list of actions ----------------------------------------------


def as_bytes(content):
    """Converts the content of a file in a case, a text or hexadecimal digits, to bytes."""
    return content.encode("utf-8") if isinstance(content, str) else bytes.fromhex(content["hex"])


def perform(panel, action):
    """Performs one action: by the user, by a call from code, or on the file system."""
    what, *args = action
    if what == "load":
        panel.new_file(*args)
    elif what == "loads":
        panel.new_files(*args)
    elif what == "clear":
        panel.clear_file(*args)
    elif what == "type":
        panel.text[args[0]] = args[1]
        panel.editing_finished(args[0])
    elif what == "text":
        panel.text[args[0]] = args[1]
    elif what == "click":
        panel.click(*args)
    elif what == "check":
        panel.check(*args)
    elif what == "setUse":
        panel.set_use(args[0] - 1, args[1])
    elif what == "slot":
        getattr(panel, args[0])(*args[1:])
    elif what == "rowslot":
        row, slot, *rest = args
        if slot == "inNewEnergy":
            panel.new_energy_of_row(row - 1)
        else:
            getattr(panel, slot)(row - 1, *rest)
    elif what == "combo":
        panel.disp_current = args[0]
    elif what == "base":
        set_base(panel.base, args[0])
    elif what == "file":
        panel.files.content[args[0]] = as_bytes(args[1])
        panel.files.folders.add(posixpath.dirname(args[0]))
    elif what == "remove":
        del panel.files.content[args[0]]
    elif what == "mkdir":
        panel.files.folders.add(args[0])
    else:
        raise ValueError(what)


def set_base(base, values):
    """Replaces the result map of the panel without a calculation."""
    base.clear()
    base.extended = values["extended"]
    base.x_num, base.y_num = values["size"]
    base.header_lines = list(values["comments"])
    base.rows = [tuple(map(float, row[:4])) for row in values["rows"]]
    base.values = {i: [float(v) for v in row[4:]] for i, row in enumerate(values["rows"])}
