"""Makes a font "Uneven Digits", in which no two digits have the same advance, as the given file."""

import sys

from fontTools.fontBuilder import FontBuilder
from fontTools.ttLib.tables._g_l_y_f import Glyph

digits = [f"digit{digit}" for digit in range(10)]
names = [".notdef", *digits]
font = FontBuilder(1000, isTTF=True)
font.setupGlyphOrder(names)
font.setupCharacterMap({ord("0") + value: name for value, name in enumerate(digits)})
font.setupGlyf({name: Glyph() for name in names})
font.setupHorizontalMetrics({name: (300 + 50 * index, 0) for index, name in enumerate(names)})
font.setupHorizontalHeader(ascent=800, descent=-200)
font.setupNameTable({"familyName": "Uneven Digits", "styleName": "Regular"})
font.setupOS2(sTypoAscender=800, sTypoDescender=-200, usWinAscent=800, usWinDescent=200)
font.setupPost()
font.save(sys.argv[1])
