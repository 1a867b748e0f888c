"""Opens a designspace and the glyph of its arguments with the tools of other people; exit status 3 when they are missing.

Prints the names of the glyph's own axes, then of each of its layers in the UFOs the points' coordinates."""
import sys

try:
    import ufoLib2
    from fontTools.designspaceLib import DesignSpaceDocument
    from fontTools.ufoLib import UFOReader
except ImportError:
    sys.exit(3)

path, glyph_name = sys.argv[1:]
document = DesignSpaceDocument.fromfile(path)
for ufo_path in sorted({source.path for source in document.sources}):
    reader = UFOReader(ufo_path)
    for layer_name in reader.getLayerNames():
        reader.getGlyphSet(layer_name, validateRead=True, validateWrite=False)
    font = ufoLib2.Font.open(ufo_path)
    for layer in font.layers:
        if glyph_name not in layer:
            continue
        glyph = layer[glyph_name]
        designspace = glyph.lib.get("com.black-foundry.glyph-designspace", {})
        for axis in designspace.get("axes", []):
            print("axis", axis["name"], axis["minimum"], axis["default"], axis["maximum"])
        for source in designspace.get("sources", []):
            print("source", source.get("layername", "-"), sorted(source["location"].items()))
        print("layer", layer.name, glyph.width, [(p.x, p.y) for contour in glyph for p in contour])
