"""The small letters. Each takes a style (see styles.py) and gives (advance, contours, anchors)."""

from outline import Contour, crossing, polygon, ring


def stem_top(s, x, y):
    """The slanted head of a stem, from right to left."""
    return (x + s.V, y, x, y - s.cut)


def arch(s, contour, x, top, right, deeper=0):
    """From the crotch of a stem whose right edge is x, over to the right stem, back to the notch."""
    span = right - s.V - x
    inner_top, shoulder = top - s.H, s.xh * 0.62
    xi, xo = x + span * 0.50, x + span * 0.58 + s.V * 0.10
    notch, crotch = top - s.notch - deeper, top - s.notch - s.join - deeper
    contour.line(x, crotch)
    contour.curve(x, crotch + 0.6 * (inner_top - crotch), xi - 0.58 * (xi - x), inner_top, xi, inner_top)
    contour.toward_side(right - s.V, min(shoulder, inner_top - 70))
    contour.line(right - s.V, 0, right, 0, right, shoulder + 6)
    contour.toward_end(xo, top)
    contour.curve(xo - 0.5 * (xo - x), top, x + 0.24 * (xo - x), notch + 0.70 * (top - notch), x, notch)


def arched(s, stem_height):
    x0 = s.sb
    right = x0 + 2 * s.V + s.n
    c = Contour(x0, 0, s.kh, s.kv).line(x0 + s.V, 0)
    arch(s, c, x0 + s.V, s.xh + s.ov, right)
    c.line(*stem_top(s, x0, stem_height))
    return right + s.sb * 0.94, c


def n(s):
    w, c = arched(s, s.xh)
    return w, [c], []


def h(s):
    w, c = arched(s, s.asc)
    return w, [c], []


def m(s):
    top, step = s.xh + s.ov, s.V + s.n * 0.90
    x0, x1 = s.sb, s.sb + step
    right = x1 + step + s.V
    first, second = Contour(0, 0, s.kh, s.kv), Contour(0, 0, s.kh, s.kv)
    arch(s, first, x0 + s.V, top, x1 + s.V)
    # The middle stem is the first arch's; the second leaves it where the first's shoulder has gone down.
    arch(s, second, x1 + s.V, top, right, deeper=max(0, 58 - s.V * 0.36))
    c = Contour(x0, 0).line(x0 + s.V, 0)
    c.segments += first.segments[:4] + [[(x1 + s.V, 0)]] + second.segments
    (x, y), (xo, _) = second.at, first.segments[-2][-1]
    c.curve(x - 0.08 * (x - xo), y + 0.56 * (top - y), xo + 0.56 * (x - xo), top, xo, top)
    c.segments.append(first.segments[-1])
    c.line(*stem_top(s, x0, s.xh))
    return right + s.sb * 0.94, [c], []


def u(s):
    """An n turned around, both its heads cut as every stem's, its foot flat."""
    w, turned = arched(s, s.xh)
    turned = turned.turned(w, s.xh)
    turned.segments[-2][0] = (turned.segments[-2][0][0], 0)
    left, right = w - s.sb - 2 * s.V - s.n, w - s.sb - s.V

    def head(x, y):
        return (x, y - s.cut) if y == s.xh and min(abs(x - left), abs(x - right)) < 0.01 else (x, y)
    return w, [turned.mapped(head)], [("top", w / 2, s.xh)]


def r(s):
    x, x0, top = s.sb + s.V, s.sb, s.xh + s.ov
    notch, crotch = top - s.notch, top - s.notch - s.join
    end = x + s.n * 0.62 + s.V * 0.12
    thick = s.H * 1.06
    c = Contour(x0, 0, s.kh, s.kv).line(x, 0, x, crotch)
    c.curve(x, crotch + 0.62 * (top - thick - crotch), x + 0.50 * (end - x), top - thick, end, top - thick - 2)
    c.line(end, top - 4)
    c.curve(end - 0.10 * (end - x), top + 1, end - 0.16 * (end - x), top, end - 0.26 * (end - x), top)
    xo = c.at[0]
    c.curve(xo - 0.5 * (xo - x), top, x + 0.24 * (xo - x), notch + 0.70 * (top - notch), x, notch)
    c.line(*stem_top(s, x0, s.xh))
    return end + s.rb * 0.35, [c], []


def bowl_counter(s, x, right, low, high):
    """The counter between a stem's right edge x and a bowl, clockwise."""
    crotch = s.notch + s.join
    xi = x + (right - s.Vr - x) * 0.47
    c = Contour(x, low + crotch, s.kh, s.kv)
    lo, hi = low + s.H, high - s.H
    c.line(x, high - crotch)
    c.curve(x, high - crotch + 0.6 * (hi - high + crotch), xi - 0.58 * (xi - x), hi, xi, hi)
    c.toward_side(right - s.Vr, (low + high) / 2).toward_end(xi, lo)
    c.curve(xi - 0.58 * (xi - x), lo, x, low + crotch - 0.6 * (low + crotch - lo), x, low + crotch)
    return c


def bowl(s, c, x, right, low, high):
    """From the lower notch at a stem's right edge x around a bowl to the upper notch."""
    xo = x + (right - x) * 0.47
    bottom, top = low + s.notch, high - s.notch
    c.line(x, bottom)
    c.curve(x + 0.24 * (xo - x), bottom - 0.70 * (bottom - low), xo - 0.5 * (xo - x), low, xo, low)
    c.toward_side(right, (low + high) / 2).toward_end(xo, high)
    c.curve(xo - 0.5 * (xo - x), high, x + 0.24 * (xo - x), top + 0.70 * (high - top), x, top)


def bowled(s, bottom, top, cut):
    """b and p, and, mirrored, d and q; `cut` is the slant of the head."""
    x0, x = s.sb, s.sb + s.V
    right = x + s.n * 1.16 + s.Vr
    c = Contour(x0, bottom, s.kh, s.kv).line(x, bottom)
    bowl(s, c, x, right, -s.ov, s.xh + s.ov)
    c.line(x, top if cut >= 0 else top + cut, x0, top - max(cut, 0))
    return right + s.rb, [c, bowl_counter(s, x, right, -s.ov, s.xh + s.ov)]


def b(s):
    w, c = bowled(s, 0, s.asc, s.cut)
    return w, c, []


def p(s):
    w, c = bowled(s, s.desc, s.xh, s.cut)
    return w, c, []


def d(s):
    w, c = bowled(s, 0, s.asc, -s.cut)
    return w, [x.mirrored(w) for x in c], []


def q(s):
    w, c = bowled(s, s.desc, s.xh, 0)
    return w, [x.mirrored(w) for x in c], []


def g(s):
    left, xs = s.rb, s.rb + s.Vr + s.n * 1.14
    right = xs + s.V
    w = right + s.sb
    high, low = s.xh + s.ov, s.bowl_low
    top, bottom = high - s.notch, low + s.notch
    xo = xs - (xs - left) * 0.47
    c = Contour(xs, s.xh, s.kh, s.kv).line(xs, top)
    c.curve(xs - 0.24 * (xs - xo), top + 0.70 * (high - top), xo + 0.5 * (xs - xo), high, xo, high)
    c.toward_side(left, (low + high) / 2).toward_end(xo, low)
    c.curve(xo + 0.5 * (xs - xo), low, xs - 0.24 * (xs - xo), bottom - 0.70 * (bottom - low), xs, bottom)
    # The tail: down the stem, around, and out to a cut end on the left.
    deep, thick = s.desc - 4, s.H * 1.02
    bend = (low - deep - thick) * 0.78
    turn = left + (right - left) * 0.44
    c.line(xs, deep + thick + bend)
    c.toward_end(turn, deep + thick)
    tip = left + s.V * 0.20 + 6
    rise = 26 + s.V * 0.05
    c.curve(turn - 0.42 * (turn - tip), deep + thick, tip + 0.38 * (turn - tip), deep + thick + rise * 0.25,
            tip + thick * 0.16, deep + thick + rise)
    c.line(tip - thick * 0.16, deep + rise * 1.02)
    c.curve(tip + 0.34 * (turn - tip), deep + rise * 0.18, turn - 0.45 * (turn - tip), deep, turn + 8, deep)
    c.toward_side(right, deep + thick + bend * 1.06)
    c.line(right, s.xh)
    counter = bowl_counter(s, 0, xs - left, low, high).mirrored(xs)
    return w, [c, counter], []


def o(s):
    left = s.rb
    right = left + 2 * s.Vr + s.n * 1.26
    low, high = -s.ov, s.xh + s.ov
    outer = ring(left, low, right, high, s.kh, s.kv)
    inner = ring(left + s.Vr, low + s.H, right - s.Vr, high - s.H, s.kh, s.kv).reversed()
    return right + s.rb, [outer, inner], [("top", (left + right) / 2, s.xh)]


def a(s):
    left = s.rb * 0.92
    right = left + s.Vr + s.n * 0.98 + s.V
    width = right - left
    xs = right - s.V
    top = s.xh + s.ov
    thick = s.H * 1.0
    # How far the upper end curls in, 0 to 1; how high the bowl stands.
    curl, height = s.terminal, s.bowl_height
    head = left + width * 0.51
    c = Contour(right, 0, s.kh, s.kv).line(right, s.xh * 0.64)
    c.toward_end(head, top)
    tip_x = left + width * (0.075 + 0.015 * curl)
    tip_y = s.xh * (0.80 - 0.055 * curl) + s.H * 0.07
    c.curve(head - 0.46 * (head - tip_x), top, tip_x + 0.16 * (head - tip_x) * (1 - curl), top - 0.30 * (top - tip_y) * (1 + curl * 0.6),
            tip_x, tip_y)
    # Plain: cut across the stroke. Curled: the end swells into a drop.
    c.curve(tip_x + thick * (0.10 - 0.02 * curl), tip_y - thick * (0.27 + 0.38 * curl),
            tip_x + thick * (0.20 + 0.50 * curl), tip_y - thick * (0.53 + 0.10 * curl),
            tip_x + thick * (0.30 + 0.68 * curl), tip_y - thick * (0.80 - 0.62 * curl))
    inner_top = top - thick
    inner_head = head - width * 0.015
    end_x, end_y = c.at
    c.curve(end_x + (0.20 - 0.16 * curl) * (inner_head - end_x), end_y + (0.58 + 0.16 * curl) * (inner_top - end_y),
            inner_head - 0.50 * (inner_head - end_x), inner_top, inner_head, inner_top)
    bowl_top = s.xh * height
    c.toward_side(xs, max(bowl_top + 10, min(s.xh * 0.625, inner_top - 48)))
    c.line(xs, bowl_top)
    bar, foot = s.H * (0.94 - 0.0005 * s.V), s.H * (0.97 - 0.0006 * s.V)
    low = -s.ov
    side = left + width * 0.50
    middle = low + (bowl_top - low) * 0.49
    c.line(side, bowl_top).toward_side(left, middle)
    below = left + width * 0.42
    c.toward_end(below, low)
    notch = low + s.notch * 0.96
    c.curve(below + 0.5 * (xs - below), low, xs - 0.24 * (xs - below), notch - 0.70 * (notch - low), xs, notch)
    c.line(xs, 0, right, 0)
    inner = Contour(xs, bowl_top - bar, s.kh, s.kv)
    crotch = min(low + s.notch + s.join, bowl_top - bar - 12)
    floor = low + foot
    inner.line(xs, crotch)
    x2 = below + (xs - below) * 0.10
    inner.curve(xs, crotch - 0.6 * (crotch - floor), x2 + 0.55 * (xs - x2), floor, x2, floor)
    inner.toward_side(left + s.Vr * 0.97, middle).toward_end(side + width * 0.03, bowl_top - bar)
    inner.line(xs, bowl_top - bar)
    return right + s.sb * 0.92, [c, inner], [("top", left + width * 0.52, s.xh)]


def e(s):
    left = s.rb
    right = left + 2 * s.Vr + s.n * 1.12
    width = right - left
    low, high = -s.ov, s.xh + s.ov
    bar_low = s.xh * 0.515 - s.H * 0.56
    bar_high = bar_low + s.H * 0.88
    mid, below = left + width * 0.505, left + width * 0.53
    c = Contour(right, bar_low, s.kh, s.kv)
    c.line(right, s.xh * 0.525)
    c.toward_end(mid, high).toward_side(left, s.xh * 0.497).toward_end(below, low)
    tip_x, tip_y = right - width * 0.055, s.xh * 0.125 + s.H * 0.03
    c.curve(below + 0.44 * (tip_x - below), low, tip_x - 0.26 * (tip_x - below), low + 0.34 * (tip_y - low), tip_x, tip_y)
    c.line(tip_x - s.H * 0.36, tip_y + s.H * 0.84)
    end_x, end_y = c.at
    floor = low + s.H * 1.0
    c.curve(end_x - 0.22 * (end_x - below), floor + 0.34 * (end_y - floor), below + 0.50 * (end_x - below), floor,
            below + width * 0.015, floor)
    c.toward_side(left + s.Vr, bar_low)
    inner = Contour(left + s.Vr, bar_high, s.kh, s.kv)
    inner.toward_end(mid, high - s.H).toward_side(right - s.Vr * 0.96, bar_high)
    return right + s.rb * 0.9, [c, inner], []


def c(s):
    left = s.rb
    right = left + 2 * s.Vr + s.n * 1.00
    width = right - left
    low, high = -s.ov, s.xh + s.ov
    top, below = left + width * 0.53, left + width * 0.53
    x1, y1 = right - width * 0.045, high - (s.xh * 0.155 + s.H * 0.03)
    x2, y2 = right - width * 0.035, low + s.xh * 0.145 + s.H * 0.03
    dx, dy = s.H * 0.36, s.H * 0.84
    k = Contour(x1, y1, s.kh, s.kv)
    k.curve(x1 - 0.26 * (x1 - top), high - 0.34 * (high - y1), top + 0.44 * (x1 - top), high, top, high)
    k.toward_side(left, s.xh / 2).toward_end(below, low)
    k.curve(below + 0.44 * (x2 - below), low, x2 - 0.26 * (x2 - below), low + 0.34 * (y2 - low), x2, y2)
    floor, roof = low + s.H, high - s.H
    ex, ey = x2 - dx, y2 + dy
    k.line(ex, ey)
    k.curve(ex - 0.22 * (ex - below), floor + 0.34 * (ey - floor), below + 0.5 * (ex - below), floor, below + width * 0.01, floor)
    k.toward_side(left + s.Vr, s.xh / 2).toward_end(top + width * 0.01, roof)
    ex, ey = x1 - dx, y1 - dy
    k.curve(top + 0.5 * (ex - top), roof, ex - 0.22 * (ex - top), roof - 0.34 * (roof - ey), ex, ey)
    return right + s.rb * 0.55, [k], []


def ess(s, left, right, height, ov, vr, hh, kh, kv):
    """S of any height: two open bowls and a spine."""
    width = right - left
    low, high = -ov, height + ov
    mid_x, mid_y = left + width * 0.50, height * 0.515
    spine = vr * 0.96 + hh * 0.04
    rise = 0.30 * spine
    top, below = left + width * 0.515, left + width * 0.485
    dx, dy = hh * 0.34, hh * 0.84
    x1, y1 = right - width * 0.055, high - height * 0.150 - hh * 0.05
    x2, y2 = left + width * 0.045, low + height * 0.155 + hh * 0.05
    upper, lower = left + width * 0.035, right
    roof, floor = high - hh, low + hh
    up_in = (roof + mid_y + spine * 0.62) / 2
    up_out = (high + mid_y - spine * 0.10) / 2 + height * 0.012
    lo_in = (floor + mid_y - spine * 0.62) / 2
    lo_out = (low + mid_y + spine * 0.10) / 2 - height * 0.012
    c = Contour(x1, y1, kh, kv)
    c.curve(x1 - 0.24 * (x1 - top), high - 0.36 * (high - y1), top + 0.46 * (x1 - top), high, top, high)
    c.toward_side(upper, up_out)
    # The spine's lower edge, through its middle.
    mx, my = mid_x - spine * 0.10, mid_y - spine * 0.50
    c.curve(upper, up_out - 0.62 * (up_out - my - rise), mx - width * 0.20, my + rise * 0.9 + width * 0.02, mx, my)
    c.curve(mx + width * 0.21, my - rise * 0.9 - width * 0.02, right - vr, lo_in + 0.60 * (my - lo_in - rise * 0.6), right - vr, lo_in)
    c.toward_end(below + width * 0.01, floor)
    ex, ey = x2 + dx, y2 + dy
    c.curve(below - 0.5 * (below - ex), floor, ex + 0.24 * (below - ex), floor + 0.36 * (ey - floor), ex, ey)
    c.line(x2, y2)
    c.curve(x2 + 0.24 * (below - x2), low + 0.36 * (y2 - low), below - 0.46 * (below - x2), low, below, low)
    c.toward_side(lower, lo_out)
    mx, my = mid_x + spine * 0.10, mid_y + spine * 0.50
    c.curve(lower, lo_out + 0.62 * (my - rise - lo_out), mx + width * 0.20, my - rise * 0.9 - width * 0.02, mx, my)
    c.curve(mx - width * 0.21, my + rise * 0.9 + width * 0.02, upper + vr, up_in - 0.60 * (up_in - my - rise * 0.6), upper + vr, up_in)
    c.toward_end(top - width * 0.01, roof)
    ex, ey = x1 - dx, y1 - dy
    c.curve(top + 0.5 * (ex - top), roof, ex - 0.24 * (ex - top), roof - 0.36 * (roof - ey), ex, ey)
    return c


def s(st):
    left = st.rb * 0.85
    vr = st.Vr * 0.95
    right = left + 2 * vr + st.n * 0.74
    return right + st.rb * 0.85, [ess(st, left, right, st.xh, st.ov, vr, st.H * 0.97, st.kh, st.kv)], []


def f(s):
    x0 = s.rb * 0.35 + s.n * 0.26
    x = x0 + s.V
    hook = x + s.n * 0.42 + s.V * 0.10
    top, roof = s.asc + s.ov * 0.5, s.asc + s.ov * 0.5 - s.H
    bend = s.n * 0.30 + 40
    reach = x + s.n * 0.36 + s.V * 0.05
    bar, under = s.xh - 4, s.xh - 4 - s.H * 0.94
    c = Contour(x0, 0, s.kh, s.kv).line(x, 0, x, under, reach, under, reach, bar, x, bar)
    c.line(x, roof - bend * 0.72)
    c.toward_end(hook - s.n * 0.10, roof)
    c.line(hook, roof - 2, hook, top - 2)
    c.line(hook - s.n * 0.16, top).toward_side(x0, top - s.H * 0.55 - bend)
    c.line(x0, bar, x0 - s.n * 0.26, bar, x0 - s.n * 0.26, under, x0, under)
    return hook + s.rb * 0.20, [c], []


def t(s):
    x0 = s.rb * 0.35 + s.n * 0.24
    x = x0 + s.V
    reach = x + s.n * 0.42 + s.V * 0.04
    tip = reach + s.n * 0.05
    top = s.xh + (s.asc - s.xh) * 0.56
    bar, under = s.xh - 4, s.xh - 4 - s.H * 0.94
    low, floor = -s.ov, s.H - s.ov
    turn = x + (tip - x) * 0.62
    bend = s.n * 0.26 + 44
    c = Contour(x0, low + s.H * 0.5 + bend, s.kh, s.kv)
    c.toward_end(turn - s.V * 0.06, low)
    c.curve(turn + 0.4 * (tip - turn), low, tip - 0.30 * (tip - turn), low + 4, tip, low + 12)
    c.line(tip, floor + 8)
    c.curve(tip - 0.30 * (tip - turn), floor + 2, turn + 0.4 * (tip - turn), floor, turn + s.V * 0.04, floor)
    c.toward_side(x, floor + bend * 0.66)
    c.line(x, under, reach, under, reach, bar, x, bar, x, top, x0, top - s.cut * 1.1)
    c.line(x0, bar, x0 - s.n * 0.24, bar, x0 - s.n * 0.24, under, x0, under)
    return tip + s.rb * 0.30, [c], []


def dotlessi(s):
    return s.V + 2 * s.sb, [polygon(s.sb, 0, s.sb + s.V, 0, *stem_top(s, s.sb, s.xh))], [("top", s.sb + s.V / 2, s.xh)]


def l(s):
    return s.V + 2 * s.sb, [polygon(s.sb, 0, s.sb + s.V, 0, *stem_top(s, s.sb, s.asc))], []


def k(s):
    x0, x = s.sb, s.sb + s.V
    thick, thin = s.V * 1.10, s.V * 1.02
    right = x + s.n * 0.84 + s.V * 1.02
    waist = s.xh * 0.36
    # The arm's lower edge leaves the stem at the waist; the leg leaves the arm.
    arm_low, arm_left = (right - s.V * 0.12, s.xh), (right - s.V * 0.12 - thin, s.xh)
    upper = (x, waist + s.join * 1.30 + s.V * 0.20)

    def on_arm(part):
        return x + part * (arm_low[0] - x), waist + part * (s.xh - waist)
    meet = on_arm(0.40)
    lean = (meet[0] - right) / meet[1]
    inner = crossing((x, waist), arm_low, (right - thick, 0), (right - thick + lean * 100 * 1.04, 100))
    part = max(0.03, (inner[0] - x) / (arm_low[0] - x))
    c = polygon(x0, 0, x, 0, x, waist, *on_arm(part), right - thick, 0, right, 0, *meet, *arm_low, *arm_left, *upper,
                *stem_top(s, x0, s.asc))
    return right + s.rb * 0.16, [c], []


def vee(s, left, right, height, thick, thin, flat, deepen):
    """The points of a V, its crotch cut in a little so that the join does not clot."""
    middle = (left + right) / 2 + (thick - thin) * 0.28
    lx, rx = middle - flat / 2, middle + flat / 2
    a, b = (left + thick, height), (left + thick + (lx - left), 0)
    e, f = (right - thin, height), (right - thin + (rx - right), 0)
    crotch = crossing(a, b, e, f)
    return a, (crotch[0], crotch[1] - deepen), e, (right, height), (rx, 0), (lx, 0), (left, height)


def v(s):
    left = s.rb * 0.26
    right = left + s.n * 1.16 + s.V * 1.72
    points = vee(s, left, right, s.xh, s.V * 1.07, s.V * 0.95, s.V * 0.88 + 4, s.V * 0.16)
    return right + s.rb * 0.26, [polygon(*sum(points, ()))], []


def w(s):
    left = s.rb * 0.28
    one = s.n * 0.92 + s.V * 1.60
    shift = one - s.V * 0.94
    first = vee(s, left, left + one, s.xh, s.V * 1.02, s.V * 0.86, s.V * 0.84 + 4, s.V * 0.16)
    second = vee(s, left + shift, left + shift + one, s.xh, s.V * 1.02, s.V * 0.90, s.V * 0.84 + 4, s.V * 0.16)
    # The two meet in a flat peak as wide as a foot.
    peak = ((second[6][0] + first[3][0]) / 2, s.xh)
    half = s.V * 0.42
    under = crossing(first[3], first[4], second[6], second[5])
    points = [first[0], first[1], (peak[0] - half, s.xh), (peak[0] + half, s.xh), second[1], second[2], second[3],
              second[4], second[5], (under[0], under[1] + s.V * 0.16), first[4], first[5], first[6]]
    return left + shift + one + s.rb * 0.28, [polygon(*sum(points, ()))], []


def x(s):
    left = s.rb * 0.30
    right = left + s.n * 1.08 + s.V * 1.70
    thick, thin = s.V * 1.15, s.V * 1.02
    inset = s.n * 0.05
    tl, tr = left + inset, right - inset
    # Thick stroke from upper left to lower right, thin one the other way.
    a0, a1 = (tl, s.xh), (right - thick, 0)
    b0, b1 = (tl + thick, s.xh), (right, 0)
    c0, c1 = (left, 0), (tr - thin, s.xh)
    d0, d1 = (left + thin, 0), (tr, s.xh)
    west, south = crossing(a0, a1, c0, c1), crossing(a0, a1, d0, d1)
    north, east = crossing(b0, b1, c0, c1), crossing(b0, b1, d0, d1)
    nick = s.V * 0.07
    points = [c0, d0, (south[0], south[1] + nick), a1, b1, (east[0] - nick * 0.5, east[1]), d1, c1,
              (north[0], north[1] - nick), b0, a0, (west[0] + nick * 0.5, west[1])]
    return right + s.rb * 0.30, [polygon(*sum(points, ()))], []


def y(s):
    left = s.rb * 0.26
    right = left + s.n * 1.16 + s.V * 1.72
    points = vee(s, left, right, s.xh, s.V * 1.07, s.V * 0.95, s.V * 0.88 + 4, s.V * 0.16)
    a, crotch, e, top, foot, heel, start = points
    slope = (top[0] - foot[0]) / s.xh
    tail = (foot[0] + slope * s.desc, s.desc)
    inner = (tail[0] - s.V * 0.97, s.desc)
    meet = crossing(inner, (inner[0] + slope * 100, inner[1] + 100), start, heel)
    return right + s.rb * 0.26, [polygon(*sum((a, crotch, e, top, tail, inner, meet, start), ()))], []


def z(s):
    left = s.rb * 0.72
    right = left + s.n * 0.98 + s.V * 1.10
    bar = s.H * 0.95
    thick = s.V * 1.06 + s.n * 0.05
    points = (left, 0, right, 0, right, bar, left + thick, bar, right - 2, s.xh - bar, right - 2, s.xh,
              left + 6, s.xh, left + 6, s.xh - bar, right - 2 - thick, s.xh - bar, left, bar)
    return right + s.rb * 0.66, [polygon(*points)], []
