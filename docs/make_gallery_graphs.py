#!/usr/bin/env python3
"""Writes the graphs of examples/gallery that show axes, labels, legends and captions at their limits.

Each is a graph file in the text encoding (docs/stream-format.md) that holds only the settings which differ from the
defaults. Data are computed here, so that the files can be made again.
"""
import math
import pathlib
import random
import struct

FOLDER = pathlib.Path(__file__).resolve().parent.parent / "examples" / "gallery"
BLACK, GREY, RED, BLUE, GREEN, ORANGE = 0x404040, 0xD0D0D0, 0x3030C0, 0xB06010, 0x508020, 0x2080E0
LABELS, TITLES, CAPTION = 12, 14, 17


def text(value):
    if isinstance(value, bool):
        return "true" if value else "false"
    return repr(value) if isinstance(value, float) else str(value)


def item(value):
    data = text(value)
    try:
        data = data.encode("cp1252")
    except UnicodeEncodeError:
        data = b"\xef\xbb\xbf" + data.encode("utf-8")
    return (b"\x06" + bytes([len(data)]) if len(data) < 256 else b"\x0c" + struct.pack("<i", len(data))) + data


def entry(key, value):
    if isinstance(value, tuple):  # a font: name, size, colour
        name, size, colour = value
        values = [item(name), b"\x04" + struct.pack("<i", size), b"\x04" + struct.pack("<i", colour)]
        return item("%2dF" % key) + b"".join(values) + b"\x08\x08\x08\x08"
    return item("%2dS" % key) + item(value)


def section(name, entries, header="Section:"):
    keys = b"".join(entry(key, value) for key, value in entries.items())
    return item(header + "99S") + item(name) + keys + item("EndOfSection 0S") + item(False)


def font(size):
    return ("Arial", size, BLACK)


def data_set(points, name="data", look=None, record=None):
    style = {2: True, 3: False, 5: BLUE, 6: BLUE, 18: 1, 19: 2, 10: 7, 8: 1} | (look or {})
    entries = len(points[0])  # X, Y and, where there is one, the standard error of Y
    block = item(" 1S") + item(len(points)) + item(" 2S") + item(entries) + item("S")
    block += b"".join(item(float(value)) for point in points for value in point)
    described = {1: name, 3: True} | ({72: True} if entries == 3 else {}) | (record or {})
    return (section("Series", style, "") +
            b"".join(entry(key, value) for key, value in described.items()) +
            item("EndOfSection 0S") + item(False) + block)


def graph(name, sets, title="", *axes, **settings):
    (FOLDER / (name + ".ltp")).write_bytes(graph_bytes(sets, title, *axes, **settings))


def graph_bytes(sets, title="", x=None, y=None, y2=None, appearance=None, dimensions=None, legend=None, marks=(),
                children=()):
    look = {2: BLACK, 7: GREY, 13: title, 16: font(TITLES), 17: font(CAPTION), 18: font(LABELS), 40: ""}
    axes = [x or {}, y or {}, y2 or {}]
    out = item("xygg06.01") + section("Appearance", look | (appearance or {}), "Section")
    out += section("Dimensions", dimensions or {})
    out += b"".join(section("Axis", {20: False} | axis) for axis in axes)
    out += section("Legend", {9: font(LABELS), 2: 0xFFFFFF} | (legend or {}))
    out += b"".join(item(part) for part in ("S", len(sets), "S", len(marks)))
    out += b"".join(sets) + b"".join(section("Mark", {1: i + 1} | mark) for i, mark in enumerate(marks))
    return out + struct.pack("<i", len(children)) + b"".join(children)


def curve(function, low, high, count=200):
    steps = [low + (high - low) * i / (count - 1) for i in range(count)]
    return [(x, function(x)) for x in steps]


def frame():
    chance = random.Random(1)
    points = [(v, 0.4 * v ** 0.5 + chance.gauss(0, 0.05)) for v in range(1, 41)]
    graph("frame", [data_set(points, "measured", {2: False, 3: True, 4: False}),
                    data_set(curve(lambda v: 0.4 * v ** 0.5, 0.2, 40), "model", {5: RED})],
          "Frame, ticks inside, ranges that end at the data",
          {1: "Velocity / m s^{−1}", 60: True, 17: False}, {1: "Drag coefficient \\times 10^{3}", 17: False},
          appearance={60: True, 61: True}, legend={1: True, 60: True, 4: 1, 3: 1})


def offsets():
    chance = random.Random(2)
    walk = [1e9]
    for _ in range(100):
        walk.append(walk[-1] + 0.1)
    graph("offset", [data_set([(v, 1e-8 * (2 + math.sin(3 * v) + chance.gauss(0, 0.1))) for v in walk])],
          "1e9 to 1e9 + 10", {1: "Pulse number"}, {1: "Charge / C"})


def decades():
    points = [(10.0 ** k, 10.0 ** (-60 + k + 3 * math.sin(k / 5))) for k in range(0, 61, 2)]
    graph("decades", [data_set(points, look={3: True})], "Sixty decades",
          {1: "Frequency / Hz", 5: True}, {1: "Power", 5: True})


def few_decades():
    """Logarithmic axes over a third of a decade, one, three and twenty of them."""
    for name, low, high in (("third", 2.1, 4.4), ("one", 2.0, 19.0), ("three", 0.3, 420.0), ("twenty", 3e-9, 5e11)):
        ratio = math.log(high / low)
        points = [(k, low * math.exp(ratio * (k + 2 * math.sin(k / 2)) / 40)) for k in range(41)]
        graph("decades-" + name, [data_set(points, look={3: True})], "%g to %g" % (low, high),
              {1: "Sample"}, {1: "Concentration / mol l^{−1}", 5: True})


def left_out():
    points = [(x / 10, math.exp(-x / 20) - 0.2) for x in range(0, 81)]
    graph("left-out", [data_set(points, look={2: False, 3: True})], "Points that a logarithmic axis can not show",
          {1: "Time / s"}, {1: "Current / \\mu A", 5: True})


def reversed_axis():
    graph("reversed", [data_set(curve(lambda t: 900 - 7 * t, 0, 100), "depth"),
                       data_set(curve(lambda t: 15 - 8 * t / 100, 0, 100), "temperature", {5: RED, 11: False})],
          "Two axes that run against each other", {1: "Time / d"},
          {1: "Depth / m", 14: True}, {1: "Temperature / °C", 13: True, 18: True, 19: True},
          legend={1: True, 60: True, 4: 1})


def legend_of_thirty():
    sets = []
    for k in range(30):
        colour = [BLUE, RED, GREEN, ORANGE, 0x804080, 0x808000][k % 6]
        wave = curve(lambda x, k=k: math.sin(x + k / 5) + k / 10, 0, 12, 80)
        sets.append(data_set(wave, "sample %d, %d K" % (k + 1, 280 + 5 * k), {5: colour, 9: k % 5, 19: 1}))
    graph("thirty", sets, "Thirty data sets", {1: "Time / s"}, {1: "Signal"}, legend={1: True, 60: True, 4: 1, 3: 1})


def long_names():
    names = ("copper, annealed at 600 K for two hours in argon", "copper as delivered",
             "aluminium alloy 6061, solution treated and aged", "x")
    sets = [data_set(curve(lambda x, k=k: 1 / (1 + math.exp(-(x - 3 - k) * 2)), 0, 10), name,
                     {5: (BLUE, RED, GREEN, ORANGE)[k], 9: k}) for k, name in enumerate(names)]
    graph("long-names", sets, "Names of any length", {1: "Strain / %", 60: True}, {1: "Part that has given way"},
          legend={1: True, 60: True, 4: 1, 3: 1})


def dark():
    light = 0xE0E0E0
    pale = lambda size: ("Arial", size, light)
    points = curve(lambda x: math.exp(-x / 4) * math.cos(3 * x), 0, 12, 90)
    graph("dark", [data_set(points, "measured", {2: False, 3: True, 5: 0x40C0FF, 6: 0x40C0FF}),
                   data_set(curve(lambda x: math.exp(-x / 4), 0, 12), "envelope", {5: 0xFFC060, 9: 1}),
                   data_set(curve(lambda x: -math.exp(-x / 4), 0, 12), "", {5: 0xFFC060, 9: 1, 18: 0})],
          "Light on dark", {1: "Time / s", 60: True}, {1: "Deflection / mm"},
          appearance={2: light, 3: 0x302820, 4: 0x201810, 7: 0x605850, 16: pale(TITLES), 17: pale(CAPTION),
                      18: pale(LABELS), 60: True, 61: True},
          legend={1: True, 60: True, 4: 1, 2: 0x302820, 9: pale(LABELS)})


def crowd():
    chance = random.Random(4)
    peaks = sorted(chance.uniform(5, 95) for _ in range(14))
    points = curve(lambda x: 1 + sum(math.exp(-((x - p) / 0.8) ** 2) for p in peaks), 0, 100, 800)
    marks = [{2: p, 3: 2.0, 4: 0.0, 6: RED, 7: "Peak %d\n%.1f eV" % (i + 1, p), 8: 2} for i, p in enumerate(peaks)]
    graph("captions", [data_set(points)], "Captions keep off each other, lines and data",
          {1: "Energy / eV"}, {1: "Counts"}, appearance={11: True}, marks=marks)


def letters():
    points = curve(lambda t: math.exp(-t / 3) * math.cos(4 * t), 0, 10)
    graph("letters", [data_set(points, "\\Psi_{0}e^{−t/\\tau} cos \\omega t")],
          "Raised and lowered letters: E = mc^{2}, \\lambda_{max} = 5000 \\AA\nand a second line",
          {1: "t / 10^{−3} s"}, {1: "\\Psi \\pm \\sigma"}, legend={1: True, 60: True})


def times():
    day = 1.0 / 86400
    start = 45000.0
    for name, length, what in (("ms", 0.02 * day, "20 milliseconds"), ("minutes", 600 * day, "ten minutes"),
                               ("night", 14.0 / 24, "a night"), ("years", 365.25 * 4, "four years"),
                               ("centuries", 365.25 * 350, "three centuries and a half")):
        at = start + (0.75 if name == "night" else 0)
        points = [(at + length * k / 60, math.sin(k / 6)) for k in range(61)]
        graph("times-" + name, [data_set(points)], "A time axis over " + what, {1: "", 10: True, 12: 0, 11: ""},
              {1: "Signal"})


def errors():
    chance = random.Random(5)
    points = []
    for t in range(0, 20):
        counts = max(1, round(400 * math.exp(-t / 3.5) + chance.gauss(0, 1) * 3))
        points.append((t, counts, max(counts ** 0.5, 2.5)))
    graph("error-bars", [data_set(points, look={2: False, 3: True})], "Counts and their standard errors",
          {1: "Time / min"}, {1: "Counts", 5: True})


def figure():
    """As a paper would print it: measurements with errors, model curves, and what follows from them in an inset."""
    chance = random.Random(7)
    colours = (0xA05A00, 0x3C9A3C, 0x2A3FC8)
    temperatures = (280, 310, 340)
    energy, fastest = 3800, 3.0e5  # kelvin; per microsecond
    sets = []
    for temperature, colour, shape in zip(temperatures, colours, (1, 0, 2)):
        rate = fastest * math.exp(-energy / temperature)
        model = curve(lambda t, rate=rate: 100 * math.exp(-rate * t), 0, 5)
        sets.append(data_set(model, "model", {5: colour, 19: 2, 18: 0}))
        points = []
        for step in range(1, 20):
            height = 100 * math.exp(-rate * step / 4)
            error = 1.2 + 0.035 * height
            points.append((step / 4, height + chance.gauss(0, error), error))
        sets.append(data_set(points, "%d K" % temperature,
                             {2: False, 3: True, 4: True, 5: colour, 6: colour, 8: shape, 10: 8, 20: 1, 19: 1}))
    logs = [(1000 / t, math.log(fastest) - energy / t) for t in (270, 280, 290, 300, 310, 325, 340, 355)]
    measured = [(x, y + chance.gauss(0, 0.05), 0.09) for x, y in logs]
    line = curve(lambda v: math.log(fastest) - energy * v / 1000, 2.75, 3.77, 2)
    look = {60: True, 61: True, 16: font(12), 17: font(12), 18: font(11)}
    inset = graph_bytes([data_set(line, "line", {5: RED, 19: 1, 18: 0}),
                         data_set(measured, "measured", {2: False, 3: True, 4: False, 10: 6, 20: 1, 19: 1,
                                                         5: BLACK, 6: BLACK, 18: 0})],
                        x={1: "1000 K / T", 17: False}, y={1: "ln(k μs)", 17: False}, appearance=look,
                        dimensions={1: 44, 2: 52, 3: 12, 4: 12, 14: 0.5, 15: 0.055, 16: 0.455, 17: 0.42})
    graph("figure", sets, "", {1: "Time / μs", 60: True, 17: False}, {1: "Luminescence / 10^{3} counts", 17: False, 6: 110.0, 7: -10.0, 8: 10.0},
          appearance={60: True, 61: True, 16: font(17), 18: font(15)},
          children=[inset],
          dimensions={1: 66, 2: 78, 3: 24, 4: 24}, legend={1: True, 3: 0, 4: 1, 5: 300, 6: 640, 7: 0, 8: 0, 9: font(15)})


def errors_on_two_axes():
    chance = random.Random(6)
    rises = [(t, 2 * t ** 0.5 + chance.gauss(0, 0.2), 0.15 + 0.02 * t) for t in range(0, 25, 2)]
    falls = [(t, 300 - 6 * t + chance.gauss(0, 5), 6 + 4 * (t % 3)) for t in range(0, 25, 2)]
    graph("errors-two-axes", [data_set(rises, "growth", {2: True, 3: True}),
                              data_set(falls, "load", {2: False, 3: True, 5: RED, 6: RED, 11: False})],
          "Errors on two axes", {1: "Time / h"}, {1: "Growth / mm"}, {1: "Load / kN", 13: True, 18: True, 15: 1, 3: True},
          legend={1: True, 60: True, 4: 1})


def bands():
    """The fitted curve of fit.ltp with its bands and residuals: the appearance has two entries more."""
    whole = (FOLDER / "fit.ltp").read_bytes()
    end = whole.index(item("EndOfSection 0S"))
    (FOLDER / "bands.ltp").write_bytes(whole[:end] + entry(62, 3) + entry(63, True) + whole[end:])


ALL = (errors, errors_on_two_axes, bands, figure, frame, offsets, decades, few_decades, left_out, reversed_axis, legend_of_thirty,
       long_names, dark, crowd, letters, times)

if __name__ == "__main__":
    for make in ALL:
        make()
