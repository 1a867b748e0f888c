"""Draws lines of text as an SVG on standard output, to look at the letters: preview.py TEXT..."""

import sys

from family import TEXT_NAMES, glyph
from styles import STYLES, style


def path(contours, dx, dy):
    out = []
    for c in contours:
        x, y = c.start
        out.append(f"M{x + dx:.1f} {dy - y:.1f}")
        for segment in c.segments:
            out.append("LC"[len(segment) == 3] + " ".join(f"{x + dx:.1f} {dy - y:.1f}" for x, y in segment))
        out.append("Z")
    return "".join(out)


def main(texts):
    y, rows = 0, []
    for name in STYLES:
        for text in texts:
            y += 1050
            x = 60
            for character in text:
                advance, contours = flat(TEXT_NAMES[character], style(name))
                rows.append(f'<path d="{path(contours, x, y)}"/>')
                x += advance
    print(f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {max(x, 9000)} {y + 400}" width="1800">'
          f'<rect width="100%" height="100%" fill="white"/>{"".join(rows)}</svg>')


def flat(name, s):
    advance, contours, _, components = glyph(name, s)
    for base, dx, dy in components:
        contours = contours + [c.mapped(lambda x, y: (x + dx, y + dy)) for c in flat(base, s)[1]]
    return advance, contours


if __name__ == "__main__":
    main(sys.argv[1:] or ["Skarvane"])
