"""How well the page's colours can be told from what they lie on, in both schemes, by the formula of the
web's accessibility guidelines: contrast_test.py COLORS_CSS"""
import re
import sys

TEXT, SHAPE = 4.5, 3.0
# What lies on what. Of a stone either the face or the rim must do.
PAIRS = [
    (TEXT, ["ink"], "page"), (TEXT, ["ink"], "panel"), (TEXT, ["soft"], "page"),
    (TEXT, ["soft"], "panel"), (TEXT, ["page"], "ink"), (TEXT, ["cut"], "panel"),
    (TEXT, ["cut"], "page"), (SHAPE, ["control"], "page"), (SHAPE, ["control"], "panel"),
    (SHAPE, ["target"], "page"), (SHAPE, ["target"], "panel"), (SHAPE, ["target"], "space"),
    (SHAPE, ["last"], "space"), (SHAPE, ["last"], "panel"), (SHAPE, ["ink"], "space"),
    (SHAPE, ["white-face", "white-rim"], "space"), (SHAPE, ["black-face", "black-rim"], "space"),
    (SHAPE, ["life", "life-rim"], "space"), (SHAPE, ["life"], "white-face"),
    (SHAPE, ["life-on-black"], "black-face"),
]


def luminance(color):
    parts = [int(color[i:i + 2], 16) / 255 for i in (1, 3, 5)]
    linear = [part / 12.92 if part <= 0.04045 else ((part + 0.055) / 1.055) ** 2.4
              for part in parts]
    return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def contrast(one, other):
    high, low = sorted((luminance(one), luminance(other)), reverse=True)
    return (high + 0.05) / (low + 0.05)


def main(path):
    with open(path, encoding="utf-8") as file:
        light, dark = file.read().split("@media (prefers-color-scheme: dark)")
    colors = dict(re.findall(r"--([\w-]+): (#[0-9a-f]{6});", light))
    faults = []
    for scheme, more in (("light", {}), ("dark", dict(re.findall(r"--([\w-]+): (#\w{6});", dark)))):
        colors.update(more)
        for least, names, ground in PAIRS:
            best = max(contrast(colors[name], colors[ground]) for name in names)
            print(f"{scheme:5} {' or '.join(names):24} on {ground:10} {best:5.2f} ({least})")
            if best < least:
                faults.append((scheme, names, ground))
    assert not faults, faults


main(sys.argv[1])
