#!/usr/bin/env python3
"""Draws the sample family Skarvane into Fonts/Skarvane, over what is there. Standard library only."""

import os

from family import GLYPHS, glyph
from styles import style
from ufo import glif, write_designspace, write_font

NAME = "Skarvane"
FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", NAME)

# The design coordinate of the weight is the thickness of the regular width's stem.
AXES = [
    ("Weight", "wght", 100, 400, 900,
     [(100, 24), (200, 42), (300, 61), (400, 80), (500, 100), (600, 122), (700, 144), (800, 165), (900, 184)]),
    ("Width", "wdth", 75, 100, 125, []),
]
# The default stands in the middle; each axis has its ends, and the one corner that their sum
# does not make well, black and condensed, is drawn too.
MASTERS = [
    ("Regular", (80, 100)),
    ("Thin", (24, 100)),
    ("Black", (184, 100)),
    ("Condensed", (80, 75)),
    ("Wide", (80, 125)),
    ("Black Condensed", (184, 75)),
]
# Intermediate layers: style, the master whose UFO holds it, place, letters.
SPARSE = [
    ("SemiBold", "Regular", (122, 100), "aegs"),
    ("SemiBold Condensed", "Condensed", (122, 75), "aes"),
]
# Glyph axes: (name, minimum, default, maximum). "Spur" and "Tail" have no source yet.
GLYPH_AXES = {
    "a": [("Terminal", 0, 0, 100), ("Bowl", -100, 0, 100), ("Spur", 0, 0, 100)],
    "arrow": [("Bend", -100, 0, 100), ("Head", 0, 50, 100), ("Tail", 0, 0, 100)],
}
# Their sources: glyph, layer, style, what changes, location.
GLYPH_SOURCES = [
    ("a", "a curled", "Regular", {"terminal": 1.0}, {"Terminal": 100}),
    ("a", "a curled", "Black", {"terminal": 1.0}, {"Terminal": 100, "Weight": 184}),
    ("a", "a bowl low", "Regular", {"bowl_height": 0.50}, {"Bowl": -100}),
    ("a", "a bowl high", "Regular", {"bowl_height": 0.655}, {"Bowl": 100}),
    ("arrow", "arrow down", "Regular", {"bend": -1.0}, {"Bend": -100}),
    ("arrow", "arrow up", "Regular", {"bend": 1.0}, {"Bend": 100}),
    ("arrow", "arrow small head", "Regular", {"head": 0.0}, {"Head": 0}),
    ("arrow", "arrow large head", "Regular", {"head": 1.4}, {"Head": 100}),
]
CODES = {name: ord(character) for name, character, _ in GLYPHS if character}


def outline_of(name, drawn, lib=None, is_default=True):
    advance, contours, anchors, components = glyph(name, drawn)
    return glif(name, advance, [c.points() for c in contours], anchors, components,
                CODES.get(name) if is_default else None, lib)


def local_lib(name):
    axes = [{"default": default, "maximum": high, "minimum": low, "name": axis} for axis, low, default, high in GLYPH_AXES[name]]
    sources = [{"layername": layer, "location": place, "name": layer + (" black" if "Weight" in place else "")}
               for base, layer, _, _, place in GLYPH_SOURCES if base == name]
    return {"com.black-foundry.glyph-designspace": {"axes": axes, "sources": sources}}


def info(master):
    s = style(master)
    return {"ascender": s.asc, "capHeight": s.cap, "descender": s.desc, "familyName": NAME, "italicAngle": 0,
            "styleName": master, "unitsPerEm": 1000, "versionMajor": 1, "versionMinor": 0, "xHeight": s.xh}


def layers_of(master):
    drawn = style(master)
    layers = {"public.default": {}}
    for name, _, _ in GLYPHS:
        lib = local_lib(name) if master == "Regular" and name in GLYPH_AXES else None
        layers["public.default"][name] = outline_of(name, drawn, lib)
    for layer, holder, _, letters in SPARSE:
        if holder == master:
            layers[layer.lower()] = {name: outline_of(name, style(layer), is_default=False) for name in letters}
    for name, layer, base, changes, _ in GLYPH_SOURCES:
        if base == master:
            layers.setdefault(layer, {})[name] = outline_of(name, style(base, **changes), is_default=False)
    return layers


def main():
    order = [name for name, _, _ in GLYPHS]

    def file(master):
        return f"{NAME}-{master.replace(' ', '')}.ufo"

    def place(values):
        return dict(zip(("Weight", "Width"), values))
    for master, _ in MASTERS:
        write_font(f"{FOLDER}/{file(master)}", info(master), order, layers_of(master))
    sources = [(f"{NAME} {master}", file(master), NAME, master, place(at), None) for master, at in MASTERS]
    sources += [(f"{NAME} {layer}", file(holder), NAME, layer, place(at), layer.lower()) for layer, holder, at, _ in SPARSE]
    instances = [(NAME, name, place((weight, width)))
                 for width, prefix in ((75, "Condensed "), (100, ""), (125, "Wide "))
                 for weight, name in ((61, prefix + "Light"), (80, (prefix + "Regular").replace(" Regular", "")), (144, prefix + "Bold"))]
    write_designspace(f"{FOLDER}/{NAME}.designspace", AXES, sources, instances)


if __name__ == "__main__":
    main()
