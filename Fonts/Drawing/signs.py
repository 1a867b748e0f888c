"""Marks, points and the arrow. Each takes a style and gives (advance, contours, anchors)."""

import math

from outline import Contour, polygon, ring

CIRCLE = 0.5523


def dot(x, y, size):
    return ring(x - size / 2, y - size / 2, x + size / 2, y + size / 2, CIRCLE, CIRCLE)


def mark_height(s):
    return s.xh + 62 + s.dot / 2 + (s.asc - s.xh - 190) * 0.4


def dotaccent(s):
    return s.dot + 2 * s.sb, [dot(s.sb + s.dot / 2, mark_height(s), s.dot)], [("_top", s.sb + s.dot / 2, s.xh)]


def dieresis(s):
    size = s.dot * 0.94
    gap = s.n * 0.34 + 22 - s.V * 0.06
    left = s.rb
    middle = left + size + gap / 2
    y = mark_height(s)
    return 2 * middle, [dot(middle - (gap + size) / 2, y, size), dot(middle + (gap + size) / 2, y, size)], [("_top", middle, s.xh)]


def period(s):
    size = s.dot * 1.04
    return size + 2 * s.sb * 0.86, [dot(s.sb * 0.86 + size / 2, size / 2 - s.ov * 0.6, size)], []


def comma(s):
    size = s.dot * 1.04
    left = s.sb * 0.86
    right, top, bottom = left + size, size - s.ov * 0.6, -s.ov * 0.6
    x, y = (left + right) / 2, (top + bottom) / 2
    tail = size * 0.72 + 18
    c = Contour(right, y, CIRCLE, CIRCLE)
    c.toward_end(x, top).toward_side(left, y).toward_end(x - size * 0.02, bottom)
    c.line(x - size * 0.30, bottom - tail)
    c.line(x + size * 0.06, bottom - tail)
    c.curve(x + size * 0.38, bottom - tail * 0.42, right, y - size * 0.42, right, y)
    return right + left, [c], []


def hyphen(s):
    left = s.rb * 0.9
    right = left + s.n * 0.78 + s.V * 0.46
    y = s.xh * 0.46
    half = s.H * 0.52
    return right + left, [polygon(left, y - half, right, y - half, right, y + half, left, y + half)], []


def arrow(s):
    """An arrow to the right; s.bend turns it by up to a right angle either way, s.head sizes its head."""
    length = s.n * 2.2 + s.V * 2.2
    half, turn = s.H * 0.5, s.bend * math.radians(88)
    radius = length / turn if abs(turn) > 1e-9 else None

    def place(along, across):
        """The point at a distance along the middle line (from its middle) and across it."""
        if radius is None:
            return along, across
        angle = -along / radius
        return (-(radius + across) * math.sin(angle), (radius + across) * math.cos(angle) - radius)

    def heading(along):
        angle = 0 if radius is None else -along / radius
        return math.cos(angle), math.sin(angle)

    reach = s.H * (0.95 + 0.55 * s.head) + 46 + 34 * s.head   # half the head's width
    depth = reach * 0.92
    neck = length / 2 - depth * 0.80
    tail = -length / 2

    def edge(c, start, end, across):
        """Half of an edge of the shaft as one cubic: exact for a line, close for an arc of 44 degrees."""
        (x0, y0), (x1, y1) = place(start, across), place(end, across)
        span = (end - start) / radius if radius else 0
        scale = (radius + across) if radius else 1
        handle = 4 / 3 * math.tan(span / 4) * scale if radius else (end - start) / 3
        (ux, uy), (vx, vy) = heading(start), heading(end)
        return c.curve(x0 + ux * handle, y0 + uy * handle, x1 - vx * handle, y1 - vy * handle, x1, y1)

    dx, dy = heading(neck)
    nx, ny = place(neck, 0)

    def tip(forward, across):
        return nx + dx * forward - dy * across, ny + dy * forward + dx * across

    c = Contour(*place(tail, -half))
    edge(c, tail, (tail + neck) / 2, -half)
    edge(c, (tail + neck) / 2, neck, -half)
    point = tip(depth, 0)
    c.line(*tip(-depth * 0.06, -reach), *point, *tip(-depth * 0.06, reach), *place(neck, half))
    edge(c, neck, (tail + neck) / 2, half)
    edge(c, (tail + neck) / 2, tail, half)
    side = s.sb * 0.8
    advance = length + 2 * side + depth * 0.2
    height = s.xh * 0.48
    return advance, [c.mapped(lambda x, y: (x + advance / 2 - depth * 0.1, y + height))], []


def notdef(s):
    left, right = s.sb, s.sb + s.n * 1.2 + s.V * 2
    t = s.H * 0.6
    outer = polygon(left, 0, right, 0, right, s.cap, left, s.cap)
    inner = polygon(left + t, t, left + t, s.cap - t, right - t, s.cap - t, right - t, t)
    return right + s.sb, [outer, inner], []


def space(s):
    return s.n * 0.72 + 60, [], []
