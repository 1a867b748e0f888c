#!/usr/bin/env python3
"""Draws the small families of Fonts/Cases, each of one letter n and one case. Standard library only.

NoDefaultSource      no source stands at the axis default, so nothing can be interpolated
IncompatibleOutlines the bold n has a point more; the space beside it fits together
QuadraticCurves      curves of off-curve points alone, with implied points between them
"""

import os

from family import glyph
from styles import style
from ufo import glif, write_designspace, write_font

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "Cases")
AXIS = [("Weight", "wght", 100, 400, 900, [])]


def cubic_n(master):
    advance, contours, _, _ = glyph("n", style(master))
    return advance, [c.points() for c in contours]


def with_a_point_more(advance, contours):
    (x, y, kind, smooth), *rest = contours[0]
    (x2, y2, *_) = rest[0]
    return advance, [[(x, y, kind, smooth), ((x + x2) // 2, (y + y2) // 2, "line", False)] + rest] + contours[1:]


def quadratic_o(master):
    """A ring of eight off-curve points a side: its points on the curve are all implied."""
    s = style(master)
    left, right = s.rb, s.rb + 2 * s.Vr + s.n * 1.26

    def side(x0, y0, x1, y1):
        cx, cy, rx, ry = (x0 + x1) / 2, (y0 + y1) / 2, (x1 - x0) / 2, (y1 - y0) / 2
        # The corners of an octagon around the ellipse; the curve touches it in the middle of each side.
        near, far = 0.41421, 1.0
        corners = [(far, near), (near, far), (-near, far), (-far, near), (-far, -near), (-near, -far), (near, -far), (far, -near)]
        return [(round(cx + rx * u), round(cy + ry * v), None, False) for u, v in corners]
    outer = side(left, -s.ov, right, s.xh + s.ov)
    inner = side(left + s.Vr, s.H - s.ov, right - s.Vr, s.xh + s.ov - s.H)
    return right + s.rb, [outer, inner[::-1]]


def draw(case, sources):
    """sources: (style name, weight, {glyph name: (advance, contours)})."""
    rows = []
    for master, weight, glyphs in sources:
        codes = {"space": 0x20}
        texts = {name: glif(name, advance, contours, [], [], codes.get(name) or ord(name))
                 for name, (advance, contours) in glyphs.items()}
        s = style(master)
        info = {"ascender": s.asc, "capHeight": s.cap, "descender": s.desc, "familyName": case, "styleName": master,
                "unitsPerEm": 1000, "xHeight": s.xh}
        file = f"{case}-{master}.ufo"
        write_font(f"{FOLDER}/{case}/{file}", info, list(glyphs), {"public.default": texts})
        rows.append((f"{case} {master}", file, case, master, {"Weight": weight}, None))
    write_designspace(f"{FOLDER}/{case}/{case}.designspace", AXIS, rows)


def main():
    space = {"space": (240, [])}
    draw("NoDefaultSource", [("Thin", 100, space | {"n": cubic_n("Thin")}), ("Black", 900, space | {"n": cubic_n("Black")})])
    draw("IncompatibleOutlines", [("Regular", 400, space | {"n": cubic_n("Regular")}),
                                  ("Black", 900, {"space": (200, []), "n": with_a_point_more(*cubic_n("Black"))})])
    draw("QuadraticCurves", [("Regular", 400, space | {"o": quadratic_o("Regular")}),
                             ("Black", 900, {"space": (200, []), "o": quadratic_o("Black")})])


if __name__ == "__main__":
    main()
