"""Outlines as the letters draw them: contours of lines and cubic curves, in font units."""

import math


class Contour:
    """A closed contour, drawn point by point. Outer contours run counter-clockwise."""

    def __init__(self, x, y, kh=0.56, kv=0.56):
        self.start = (x, y)
        self.at = (x, y)
        self.segments = []  # each: list of points, the last one on the curve
        self.kh, self.kv = kh, kv

    def line(self, *points):
        for point in zip(points[::2], points[1::2]):
            self.segments.append([point])
            self.at = point
        return self

    def curve(self, x1, y1, x2, y2, x, y):
        self.segments.append([(x1, y1), (x2, y2), (x, y)])
        self.at = (x, y)
        return self

    def toward_side(self, x, y):
        """A quarter that leaves horizontally and arrives at an extreme of x."""
        x0, y0 = self.at
        return self.curve(x0 + self.kh * (x - x0), y0, x, y - self.kv * (y - y0), x, y)

    def toward_end(self, x, y):
        """A quarter that leaves vertically and arrives at an extreme of y."""
        x0, y0 = self.at
        return self.curve(x0, y0 + self.kv * (y - y0), x - self.kh * (x - x0), y, x, y)

    def mapped(self, f):
        """The contour under a map of points; `f` takes and gives (x, y)."""
        out = Contour(*f(*self.start))
        out.segments = [[f(*point) for point in segment] for segment in self.segments]
        return out

    def mirrored(self, width):
        """Left and right exchanged within `width`, the direction kept."""
        return self.mapped(lambda x, y: (width - x, y)).reversed()

    def turned(self, width, height):
        """Turned by half a turn within the box; the direction stays by itself."""
        return self.mapped(lambda x, y: (width - x, height - y))

    def reversed(self):
        points = [[self.start]] + self.segments
        out = Contour(*points[-1][-1])
        for before, segment in zip(reversed(points[:-1]), reversed(points[1:])):
            out.segments.append(list(reversed(segment[:-1])) + [before[-1]])
        return out

    def points(self):
        """(x, y, type, smooth) in file order, rounded to whole units, beginning with the start."""
        segments = [[(grid(x), grid(y)) for x, y in segment] for segment in self.segments]
        start = (grid(self.start[0]), grid(self.start[1]))
        if segments[-1][-1] == start:
            closing = segments.pop()
        else:
            closing = [start]
        # The last segment's handles follow the last on-curve point; its end is the start itself.
        flat = [(start, "curve" if len(closing) == 3 else "line")]
        for segment in segments:
            flat += [(point, None) for point in segment[:-1]]
            flat.append((segment[-1], "curve" if len(segment) == 3 else "line"))
        flat += [(point, None) for point in closing[:-1]]
        return [(x, y, kind, kind is not None and is_smooth(flat, index))
                for index, ((x, y), kind) in enumerate(flat)]


def grid(value):
    return math.floor(value + 0.5)


def is_smooth(flat, index):
    """Smooth where a handle meets a handle or a line without a corner."""
    (x, y), _ = flat[index]
    (px, py), before = flat[index - 1]
    (nx, ny), after = flat[(index + 1) % len(flat)]
    if before is not None and after is not None:
        return False
    a, b = (x - px, y - py), (nx - x, ny - y)
    la, lb = math.hypot(*a), math.hypot(*b)
    if la < 1 or lb < 1:
        return False
    return (a[0] * b[0] + a[1] * b[1]) / (la * lb) > 0.997


def ring(left, bottom, right, top, kh, kv):
    """A closed superellipse, counter-clockwise."""
    x, y = (left + right) / 2, (bottom + top) / 2
    return (Contour(right, y, kh, kv).toward_end(x, top).toward_side(left, y)
            .toward_end(x, bottom).toward_side(right, y))


def polygon(*points):
    return Contour(points[0], points[1]).line(*points[2:])


def crossing(a, b, c, d):
    """Where the line through a and b meets the line through c and d."""
    (ax, ay), (bx, by), (cx, cy), (dx, dy) = a, b, c, d
    rx, ry, sx, sy = bx - ax, by - ay, dx - cx, dy - cy
    t = ((cx - ax) * sy - (cy - ay) * sx) / (rx * sy - ry * sx)
    return ax + t * rx, ay + t * ry
