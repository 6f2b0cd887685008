# SPDX-License-Identifier: MIT
"""Draws a heat map from rows of the layout that rtl_power introduced: heatmap.py IN.csv OUT.pgm

Each row is placed by what it says of itself, as tools of that family do: its time text down the
picture, its low and high frequency and its step across. Black is the weakest level, white the
strongest. Rows of one time share a line, which shows the stronger level.
"""
import sys


def read_rows(path):
    with open(path, encoding="ascii") as lines:
        for line in lines:
            fields = [field.strip() for field in line.split(",")]
            low, high, step = int(fields[2]), int(fields[3]), float(fields[4])
            levels = [float(field) for field in fields[6:]]
            if len(levels) != round((high - low) / step) + 1:
                sys.exit("a row whose frequencies don't fit its levels: " + line)
            yield fields[0] + " " + fields[1], low, step, levels


def main(source, target):
    rows = list(read_rows(source))
    times = sorted({time for time, _, _, _ in rows})
    step = min(step for _, _, step, _ in rows)
    left = min(low for _, low, _, _ in rows)
    width = max(round((low - left + each * (len(levels) - 1)) / step)
                for _, low, each, levels in rows) + 1
    weakest = min(min(levels) for _, _, _, levels in rows)
    strongest = max(max(levels) for _, _, _, levels in rows)
    picture = bytearray(width * len(times))
    for time, low, each, levels in rows:
        line = times.index(time) * width
        for number, level in enumerate(levels):
            place = line + round((low - left + number * each) / step)
            shade = round(255 * (level - weakest) / max(strongest - weakest, 1))
            picture[place] = max(picture[place], shade)
    with open(target, "wb") as out:
        out.write(b"P5 %d %d 255\n" % (width, len(times)) + picture)


main(*sys.argv[1:])
