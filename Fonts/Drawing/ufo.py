"""Writes fonts as UFO 3 folders, and plists as other tools write them."""

import os
import shutil
from xml.sax.saxutils import escape

from outline import grid

HEAD = '<?xml version="1.0" encoding="UTF-8"?>\n'
PLIST = HEAD + ('<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" '
                '"http://www.apple.com/DTDs/PropertyList-1.0.dtd">\n<plist version="1.0">\n')


def write(path, text):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8", newline="\n") as file:
        file.write(text)


def plist_value(value, indent):
    pad, inner = "  " * indent, "  " * (indent + 1)
    if isinstance(value, bool):
        return f"{pad}<{'true' if value else 'false'}/>\n"
    if isinstance(value, dict):
        rows = "".join(f"{inner}<key>{escape(key)}</key>\n{plist_value(value[key], indent + 1)}" for key in value)
        return f"{pad}<dict>\n{rows}{pad}</dict>\n" if rows else f"{pad}<dict/>\n"
    if isinstance(value, (list, tuple)):
        rows = "".join(plist_value(item, indent + 1) for item in value)
        return f"{pad}<array>\n{rows}{pad}</array>\n" if rows else f"{pad}<array/>\n"
    if isinstance(value, int):
        return f"{pad}<integer>{value}</integer>\n"
    if isinstance(value, float):
        return f"{pad}<real>{value!r}</real>\n"
    return f"{pad}<string>{escape(value)}</string>\n"


def write_plist(path, value):
    write(path, PLIST + plist_value(value, 0) + "</plist>\n")


def file_name(name):
    """The file of a glyph or layer: capitals are marked, so that no two names meet on any disk."""
    name = "_" + name[1:] if name.startswith(".") else name
    return "".join(c + "_" if c != c.lower() else "_" if c in '"*+/:<>?[\\]()|' else c for c in name)


def glif(name, advance, contours, anchors, components, code=None, lib=None, unit=grid):
    """A glyph in GLIF 2. `contours` are lists of (x, y, type or None, smooth)."""
    rows = [f'<glyph name="{escape(name)}" format="2">']
    rows.append(f'  <advance width="{unit(advance)}"/>')
    if code is not None:
        rows.append(f'  <unicode hex="{code:04X}"/>')
    rows += [f'  <anchor x="{unit(x)}" y="{unit(y)}" name="{anchor}"/>' for anchor, x, y in anchors]
    if contours or components:
        rows.append("  <outline>")
        for points in contours:
            rows.append("    <contour>")
            for x, y, kind, smooth in points:
                rows.append(f'      <point x="{x}" y="{y}"' + (f' type="{kind}"' if kind else "")
                            + (' smooth="yes"' if smooth else "") + "/>")
            rows.append("    </contour>")
        for base, dx, dy in components:
            rows.append(f'    <component base="{base}"' + (f' xOffset="{dx}"' if dx else "")
                        + (f' yOffset="{dy}"' if dy else "") + "/>")
        rows.append("  </outline>")
    if lib:
        rows.append("  <lib>\n" + plist_value(lib, 2) + "  </lib>")
    return HEAD + "\n".join(rows) + "\n</glyph>\n"


def write_font(path, info, order, layers):
    """A whole UFO, in the place of what was there. `layers` is {layer name: {glyph name: GLIF text}}; the
    first is the default layer."""
    shutil.rmtree(path, ignore_errors=True)
    write_plist(f"{path}/metainfo.plist", {"creator": "typloom.drawing", "formatVersion": 3})
    write_plist(f"{path}/fontinfo.plist", info)
    write_plist(f"{path}/lib.plist", {"public.glyphOrder": order})
    folders = [(name, "glyphs" if index == 0 else "glyphs." + file_name(name)) for index, name in enumerate(layers)]
    write_plist(f"{path}/layercontents.plist", folders)
    for name, folder in folders:
        files = {glyph: file_name(glyph) + ".glif" for glyph in layers[name]}
        write_plist(f"{path}/{folder}/contents.plist", files)
        for glyph, file in files.items():
            write(f"{path}/{folder}/{file}", layers[name][glyph])


def write_designspace(path, axes, sources, instances=()):
    """axes: (name, tag, minimum, default, maximum, map pairs); sources: (name, file, family, style, location, layer)."""
    rows = ['<designspace format="5.0">', "  <axes>"]
    for name, tag, low, default, high, pairs in axes:
        head = f'    <axis tag="{tag}" name="{name}" minimum="{low}" maximum="{high}" default="{default}"'
        rows.append(head + ("/>" if not pairs else ">"))
        if pairs:
            rows += [f'      <map input="{user}" output="{design}"/>' for user, design in pairs] + ["    </axis>"]
    rows += ["  </axes>", "  <sources>"]

    def location(place, pad):
        return ([f"{pad}<location>"] + [f'{pad}  <dimension name="{axis}" xvalue="{value}"/>' for axis, value in place.items()]
                + [f"{pad}</location>"])
    for name, file, family, style, place, layer in sources:
        rows.append(f'    <source filename="{file}" name="{name}" familyname="{family}" stylename="{style}"'
                    + (f' layer="{layer}"' if layer else "") + ">")
        rows += location(place, "      ") + ["    </source>"]
    rows.append("  </sources>")
    if instances:
        rows.append("  <instances>")
        for family, style, place in instances:
            rows.append(f'    <instance name="{family} {style}" familyname="{family}" stylename="{style}">')
            rows += location(place, "      ") + ["    </instance>"]
        rows.append("  </instances>")
    write(path, HEAD + "\n".join(rows + ["</designspace>"]) + "\n")
