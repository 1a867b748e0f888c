"""The family's glyphs: names, characters, order, and how each one is made for a style."""

import capitals
import lowercase
import signs
from outline import grid

# In glyph order: name, character, what draws it.
GLYPHS = [
    (".notdef", None, signs.notdef),
    ("space", " ", signs.space),
    *[(name, name, getattr(capitals, name)) for name in "AEHILNOSTV"],
    *[(name, name, getattr(lowercase, name)) for name in "abcdefgh"],
    ("i", "i", None),
    *[(name, name, getattr(lowercase, name)) for name in "klmnopqrstuvwxyz"],
    ("adieresis", "ä", None),
    ("odieresis", "ö", None),
    ("udieresis", "ü", None),
    ("dotlessi", "ı", lowercase.dotlessi),
    ("period", ".", signs.period),
    ("comma", ",", signs.comma),
    ("hyphen", "-", signs.hyphen),
    ("arrow", "→", signs.arrow),
    ("dieresis", "¨", signs.dieresis),
    ("dotaccent", "˙", signs.dotaccent),
]
COMPOSED = {
    "i": ("dotlessi", "dotaccent"),
    "adieresis": ("a", "dieresis"),
    "odieresis": ("o", "dieresis"),
    "udieresis": ("u", "dieresis"),
}
DRAWN = {name: draw for name, _, draw in GLYPHS}
TEXT_NAMES = {character: name for name, character, _ in GLYPHS if character}


def glyph(name, style):
    """(advance, contours, anchors, components) of a glyph; a component is (base, dx, dy)."""
    if name in COMPOSED:
        base, mark = COMPOSED[name]
        advance, _, anchors = DRAWN[base](style)
        onto = next(a for a in anchors if a[0] == "top")
        _, _, marks = DRAWN[mark](style)
        hook = next(a for a in marks if a[0] == "_top")
        return advance, [], [], [(base, 0, 0), (mark, grid(onto[1] - hook[1]), grid(onto[2] - hook[2]))]
    advance, contours, anchors = DRAWN[name](style)
    return advance, contours, anchors, []
