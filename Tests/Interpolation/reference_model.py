"""Instances of families (see ReferenceComparisonTests.cpp) by fontTools, a number a line."""
import sys

try:
    from fontTools.varLib.models import VariationModel
except ImportError:
    sys.exit(77)


def read_places(stream, count):
    return [[float(number) for number in next(stream).split()] for _ in range(count)]


def location(place):
    return {f"axis{axis:02}": value for axis, value in enumerate(place)}


with open(sys.argv[1], encoding="ascii") as stream:
    for line in stream:
        source_count, place_count = (int(number) for number in line.split())
        sources = read_places(stream, source_count)
        (values,) = read_places(stream, 1)
        places = read_places(stream, place_count)
        model = VariationModel([location(place) for place in sources], sorted(location(sources[0])))
        for place in places:
            print(repr(model.interpolateFromMasters(location(place), values)))
