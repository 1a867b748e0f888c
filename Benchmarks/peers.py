#!/usr/bin/env python3
"""What fontTools and ufoLib2 take for the same work: prints the median time in microseconds.

    peers.py model FILE     FILE has a line for each source: axis=value axis=value ..., normalised
    peers.py read FOLDER    every glyph of every UFO in the folder
"""
import pathlib
import statistics
import sys
import time


def median_time(work, rounds):
    times = []
    for _ in range(rounds):
        start = time.perf_counter()
        work()
        times.append(time.perf_counter() - start)
    return statistics.median(times) * 1e6


def build_model(path):
    from fontTools.varLib.models import VariationModel

    locations = []
    for line in pathlib.Path(path).read_text().splitlines():
        pairs = (pair.rsplit("=", 1) for pair in line.split("\t") if pair)
        locations.append({axis: float(value) for axis, value in pairs})
    return median_time(lambda: VariationModel(locations), 1 if len(locations) > 500 else 5)


def read_family(folder):
    import ufoLib2

    def read():
        for ufo in pathlib.Path(folder).glob("*.ufo"):
            font = ufoLib2.Font.open(ufo, lazy=False)
            assert len(font) > 0

    return median_time(read, 1)


print({"model": build_model, "read": read_family}[sys.argv[1]](sys.argv[2]))
