#!/usr/bin/env python3
"""Reads a 640 x 480 screenshot (binary PPM) of the game and says whether the console
panel is down over it. Prints one of "open", "closed" or "between", then the figures
behind the answer.

The panel darkens everything above canvas row 242 to half, so with it down no pixel
there is brighter than the log's 0.7 grey text (179); the title's sky without it has
thousands. The grey rule under the panel falls on window row 194 and is half 0.7 grey
over the scenery, so it stands well above the darkened rows over it and above the
plain scenery under it."""
import sys

BRIGHT = 190  # above the log text's 179


def load_ppm(path):
    data = open(path, "rb").read()
    fields = []
    pos = 0
    while len(fields) < 4:
        while data[pos:pos + 1].isspace():
            pos += 1
        if data[pos:pos + 1] == b"#":
            pos = data.index(b"\n", pos)
            continue
        end = pos
        while not data[end:end + 1].isspace():
            end += 1
        fields.append(data[pos:end])
        pos = end
    if fields[0] != b"P6" or fields[3] != b"255":
        raise ValueError("not an 8-bit binary PPM")
    return int(fields[1]), int(fields[2]), data[pos + 1:]


def main():
    width, height, pixels = load_ppm(sys.argv[1])
    if (width, height) != (640, 480):
        print("between size %dx%d" % (width, height))
        return

    def row(y):
        start = y * width * 3
        line = pixels[start:start + width * 3]
        return [tuple(line[i:i + 3]) for i in range(0, len(line), 3)]

    def row_mean(y):
        return sum(max(p) for p in row(y)) / width

    bright = text = 0
    for y in range(190):
        for p in row(y):
            if max(p) > BRIGHT:
                bright += 1
            elif min(p) >= 165 and max(p) - min(p) <= 12:
                text += 1
    above = sum(row_mean(y) for y in range(190, 194)) / 4
    rule = max(row_mean(194), row_mean(195))
    below = sum(row_mean(y) for y in range(196, 200)) / 4
    if bright <= 20 and text >= 300 and rule - above >= 50 and rule - below >= 15 and below >= above * 1.4:
        state = "open"
    elif bright >= 1000:
        state = "closed"
    else:
        state = "between"
    print("%s bright=%d text=%d above=%.0f rule=%.0f below=%.0f" % (state, bright, text, above, rule, below))


if __name__ == "__main__":
    main()
