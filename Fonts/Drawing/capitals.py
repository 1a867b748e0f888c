"""The capitals. Each takes a style (see styles.py) and gives (advance, contours, anchors)."""

from lowercase import ess
from outline import crossing, polygon, ring


def A(s):
    left = s.rb * 0.30
    right = left + s.N * 1.34 + s.C * 1.94
    thick, thin = s.C * 1.10, s.C * 1.0
    middle = (left + right) / 2
    peak = s.C * 0.98 + 4
    lx, rx = middle - peak / 2, middle + peak / 2
    low = s.cap * 0.245 - s.Hc * 0.2
    high = low + s.Hc * 0.92
    # Inner edges, parallel to the outer ones.
    il = (left + thin, 0), (left + thin + (lx - left), s.cap)
    ir = (right - thick, 0), (right - thick + (rx - right), s.cap)
    top = crossing(*il, *ir)

    def on(edge, y):
        return crossing(*edge, (0, y), (1, y))
    outer = polygon(left, 0, left + thin, 0, *on(il, low), *on(ir, low), right - thick, 0, right, 0, rx, s.cap, lx, s.cap)
    inner = polygon(*on(il, high), top[0], top[1] + s.C * 0.14, *on(ir, high))
    return right + s.rb * 0.30, [outer, inner], [("top", middle, s.cap)]


def E(s):
    left, stem = s.sb * 1.12, s.sb * 1.12 + s.C
    right = stem + s.N * 0.88 + s.C * 0.18
    arm = right - (right - stem) * 0.09
    mid = s.cap * 0.52
    bar = s.Hc
    c = polygon(left, 0, right, 0, right, bar, stem, bar, stem, mid - bar * 0.5, arm, mid - bar * 0.5, arm,
                mid + bar * 0.46, stem, mid + bar * 0.46, stem, s.cap - bar, right - 4, s.cap - bar, right - 4, s.cap, left, s.cap)
    return right + s.rb * 0.62, [c], []


def H(s):
    left = s.sb * 1.12
    right = left + 2 * s.C + s.N * 1.18
    low = s.cap * 0.515 - s.Hc * 0.48
    high = low + s.Hc * 0.96
    a, b = left + s.C, right - s.C
    c = polygon(left, 0, a, 0, a, low, b, low, b, 0, right, 0, right, s.cap, b, s.cap, b, high, a, high, a, s.cap, left, s.cap)
    return right + s.sb * 1.12, [c], []


def I(s):
    left = s.sb * 1.12
    return s.C + 2 * left, [polygon(left, 0, left + s.C, 0, left + s.C, s.cap, left, s.cap)], []


def L(s):
    left = s.sb * 1.12
    right = left + s.C + s.N * 0.84 + s.C * 0.12
    return right + s.rb * 0.42, [polygon(left, 0, right, 0, right, s.Hc, left + s.C, s.Hc, left + s.C, s.cap, left, s.cap)], []


def N(s):
    left = s.sb * 1.12
    right = left + 2 * s.C + s.N * 1.22
    a, b = left + s.C * 0.94, right - s.C * 0.94
    # The diagonal enters both stems; its edges meet them above the foot and below the head.
    nick = s.C * 1.30 + 18
    c = polygon(left, 0, a, 0, a, s.cap - nick, b - s.C * 0.22, 0, right, 0, right, s.cap, b, s.cap, b, nick,
                a + s.C * 0.22, s.cap, left, s.cap)
    return right + s.sb * 1.12, [c], []


def O(s):
    left = s.rb * 1.02
    right = left + 2 * s.Cr + s.N * 1.62
    low, high = -s.ov, s.cap + s.ov
    outer = ring(left, low, right, high, s.kh, s.kv)
    inner = ring(left + s.Cr, low + s.Hc, right - s.Cr, high - s.Hc, s.kh, s.kv).reversed()
    return right + s.rb * 1.02, [outer, inner], [("top", (left + right) / 2, s.cap)]


def S(s):
    left = s.rb * 0.92
    right = left + 2 * s.Cr * 0.96 + s.N * 0.98
    return right + s.rb * 0.92, [ess(s, left, right, s.cap, s.ov, s.Cr * 0.97, s.Hc * 0.98, s.kh, s.kv)], []


def T(s):
    left = s.rb * 0.40
    right = left + s.C + s.N * 1.34
    stem = (left + right - s.C) / 2
    bar = s.cap - s.Hc
    c = polygon(stem, 0, stem + s.C, 0, stem + s.C, bar, right, bar, right, s.cap, left, s.cap, left, bar, stem, bar)
    return right + s.rb * 0.40, [c], []


def V(s):
    w, c, anchors = A(s)
    turned = c[0].turned(w, s.cap).points()
    outer = [(x, y) for x, y, _, _ in turned]
    # An A upside down without its bar: the crotch takes the place of the bar's two corners.
    left, right = outer[5], outer[0]
    inner_left, inner_right = outer[4], outer[1]
    foot = outer[6], outer[7]
    depth = crossing(inner_left, (inner_left[0] + foot[0][0] - left[0], 0), inner_right,
                     (inner_right[0] + foot[1][0] - right[0], 0))
    points = (inner_left, (depth[0], depth[1] - s.C * 0.14), inner_right, right, foot[1], foot[0], left)
    return w, [polygon(*sum(points, ()))], []
