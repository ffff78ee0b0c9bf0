#!/usr/bin/env python3
"""Draws data of the gallery beside what matplotlib and gnuplot make of them, into docs/gallery/compare.

Needs python3-matplotlib, gnuplot and a release build. All three get the same points, titles and scales, and otherwise
draw as they do by themselves.
"""
import datetime
import pathlib
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
import matplotlib
matplotlib.use("Agg")
import matplotlib.dates
import matplotlib.pyplot as plt
from PIL import Image

import make_gallery_graphs as gallery

ROOT = pathlib.Path(__file__).resolve().parent.parent
SIZE = (800, 600)
SHOWN = (480, 360)
LOG, IS_TIME = 5, 10
EPOCH = datetime.datetime(1899, 12, 30)

graphs = {}


def capture():
    gallery.data_set = lambda points, name="data", look=None, record=None: (points, name, look or {})
    gallery.graph = lambda name, sets, title="", x=None, y=None, *rest, **more: graphs.__setitem__(
        name, (sets, title, x or {}, y or {}))
    for make in gallery.ALL:
        make()


def with_matplotlib(graph, out):
    sets, title, x, y = graph
    figure, axes = plt.subplots(figsize=(8, 6), dpi=100)
    for points, name, look in sets:
        values = [p[0] for p in points]
        if x.get(IS_TIME):
            values = [EPOCH + datetime.timedelta(days=v) for v in values]
        line = "-" if look.get(2, True) else ""
        axes.plot(values, [p[1] for p in points], line + ("o" if look.get(3) else ""), label=name)
    if x.get(LOG):
        axes.set_xscale("log")
    if y.get(LOG):
        axes.set_yscale("log")
    axes.set_title(title)
    if len(sets) > 1:
        axes.legend()
    figure.savefig(out)
    plt.close(figure)


def with_gnuplot(graph, out):
    sets, title, x, y = graph
    lines = ["set term pngcairo size %d,%d" % SIZE, "set output '%s'" % out, "set title '%s'" % title.replace("\n", " ")]
    lines += ["set logscale x"] if x.get(LOG) else []
    lines += ["set logscale y"] if y.get(LOG) else []
    lines += ["set xdata time", "set timefmt '%s'"] if x.get(IS_TIME) else []
    plots = []
    for k, (points, name, look) in enumerate(sets):
        lines.append("$d%d << EOD" % k)
        shift = lambda v: (v - 25569) * 86400 if x.get(IS_TIME) else v
        lines += ["%.17g %.17g" % (shift(a), b) for a, b in points]
        lines.append("EOD")
        style = "lines" if look.get(2, True) else "points"
        plots.append("$d%d using 1:2 with %s title '%s'" % (k, style, name))
    lines.append("plot " + ", ".join(plots))
    subprocess.run(["gnuplot"], input="\n".join(lines), text=True, check=True, stderr=subprocess.DEVNULL)


def compare(name, folder):
    ours, first, second = (folder / (name + end) for end in (".png", "-1.png", "-2.png"))
    program = ROOT / "build" / "release" / "bin" / "xydata"
    subprocess.run([program, "render", ROOT / "examples" / "gallery" / (name + ".ltp"), ours], check=True)
    with_matplotlib(graphs[name], first)
    with_gnuplot(graphs[name], second)
    sheet = Image.new("RGB", (3 * SHOWN[0], SHOWN[1]), "white")
    for place, picture in enumerate((ours, first, second)):
        shown = Image.open(picture).convert("RGB").resize(SHOWN, Image.LANCZOS)
        sheet.paste(shown, (place * SHOWN[0], 0))
    target = ROOT / "docs" / "gallery" / "compare"
    target.mkdir(exist_ok=True)
    sheet.quantize(64).save(target / (name + ".png"), optimize=True)


capture()
with tempfile.TemporaryDirectory() as scratch:
    for wanted in sys.argv[1:] or ["frame", "offset", "decades", "left-out", "thirty", "times-ms", "times-night",
                                   "times-years"]:
        compare(wanted, pathlib.Path(scratch))
