#!/usr/bin/env python3
"""Draws data of the gallery beside what matplotlib and gnuplot make of them, into docs/gallery/compare.

Needs python3-matplotlib, gnuplot and a release build. All three get the same points, titles and scales, and otherwise
draw as they do by themselves.
"""
import datetime
import pathlib
import re
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
LOG, IS_TIME, TITLE, REVERSED, RAISED = 5, 10, 1, 14, re.compile(r"[\^_]\{[^}]*\}")
LETTERS = {"\\alpha": "α", "\\tau": "τ", "\\omega": "ω", "\\lambda": "λ", "\\Psi": "Ψ", "\\sigma": "σ", "\\pm": "±",
           "\\AA": "Å", "\\mu": "μ", "\\times": "×"}
EPOCH = datetime.datetime(1899, 12, 30)

ALONE = {"dark", "figure"}  # of these the others would need their look spelled out

graphs = {}


def capture():
    gallery.data_set = lambda points, name="data", look=None, record=None: (points, name, look or {})
    gallery.graph = lambda name, sets, title="", x=None, y=None, y2=None, **more: graphs.__setitem__(
        name, (sets, title, x or {}, y or {}, y2 or {}, more.get("marks", ())))
    gallery.graph_bytes = lambda *insets, **more: b""
    for make in gallery.ALL:
        if make is not gallery.bands:
            make()


def with_letters(text):
    for name, sign in LETTERS.items():
        text = text.replace(name, sign)
    return text


def for_matplotlib(text):
    return RAISED.sub(lambda raised: "$%s$" % raised.group().replace("−", "-"), with_letters(text))


def with_matplotlib(graph, out):
    sets, title, x, y, y2, marks = graph
    figure, axes = plt.subplots(figsize=(8, 6), dpi=100)
    second = axes.twinx() if any(look.get(11) is False for _, _, look in sets) else None
    for k, (points, name, look) in enumerate(sets):
        values = [p[0] for p in points]
        if x.get(IS_TIME):
            values = [EPOCH + datetime.timedelta(days=v) for v in values]
        line = "-" if look.get(2, True) else ""
        on = second if look.get(11) is False else axes
        rest = {"label": for_matplotlib(name), "color": "C%d" % k}
        if len(points[0]) > 2:
            on.errorbar(values, [p[1] for p in points], [p[2] for p in points], fmt=line + "o", capsize=3, **rest)
        else:
            on.plot(values, [p[1] for p in points], line + ("o" if look.get(3) else ""), **rest)
    for mark in marks:
        axes.annotate(mark[7], (mark[2], mark[3]))
    if x.get(LOG):
        axes.set_xscale("log")
    if y.get(LOG):
        axes.set_yscale("log")
    if y.get(REVERSED):
        axes.invert_yaxis()
    axes.set_title(for_matplotlib(title))
    axes.set_xlabel(for_matplotlib(x.get(TITLE, "")))
    axes.set_ylabel(for_matplotlib(y.get(TITLE, "")))
    if second:
        second.set_ylabel(for_matplotlib(y2.get(TITLE, "")))
    if len(sets) > 1:
        figure.legend() if second else axes.legend()
    figure.savefig(out)
    plt.close(figure)


def quoted(text):
    return '"%s"' % with_letters(text).replace('"', '\\"').replace("\n", "\\n")


def with_gnuplot(graph, out):
    sets, title, x, y, y2, marks = graph
    lines = ["set encoding utf8", "set term pngcairo size %d,%d" % SIZE, "set output '%s'" % out,
             "set title " + quoted(title), "set xlabel " + quoted(x.get(TITLE, "")),
             "set ylabel " + quoted(y.get(TITLE, ""))]
    lines += ["set logscale x"] if x.get(LOG) else []
    lines += ["set logscale y"] if y.get(LOG) else []
    lines += ["set yrange [] reverse"] if y.get(REVERSED) else []
    lines += ["set xdata time", "set timefmt '%s'"] if x.get(IS_TIME) else []
    if any(look.get(11) is False for _, _, look in sets):
        lines += ["set ytics nomirror", "set y2tics", "set y2label " + quoted(y2.get(TITLE, ""))]
    lines += ["set label %s at %g,%g point" % (quoted(mark[7]), mark[2], mark[3]) for mark in marks]
    plots = []
    for k, (points, name, look) in enumerate(sets):
        lines.append("$d%d << EOD" % k)
        shift = lambda v: (v - 25569) * 86400 if x.get(IS_TIME) else v
        lines += [" ".join("%.17g" % v for v in (shift(p[0]), *p[1:])) for p in points]
        lines.append("EOD")
        has_errors = len(points[0]) > 2
        style = "yerrorbars" if has_errors else "lines" if look.get(2, True) else "points"
        using = "1:2:3" if has_errors else "1:2"
        axes = " axes x1y2" if look.get(11) is False else ""
        plots.append("$d%d using %s%s with %s title %s" % (k, using, axes, style, quoted(name)))
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
    for wanted in sys.argv[1:] or sorted(set(graphs) - ALONE):
        compare(wanted, pathlib.Path(scratch))
