#!/usr/bin/env python3
"""Checks that a screenshot shows capture failures: the orange warning
triangle that a failed source draws in place of its picture.

    failure_marks.py SHOT.png [minimum pixels]

Exits 1 with a reason when there are too few orange pixels.
"""
import subprocess
import sys

ORANGE = (255, 149, 0)
TOLERANCE = 30


def read_ppm(data):
    parts, pos = [], 0
    while len(parts) < 4:
        while data[pos:pos + 1].isspace():
            pos += 1
        end = pos
        while not data[end:end + 1].isspace():
            end += 1
        parts.append(data[pos:end])
        pos = end
    assert parts[0] == b"P6", "binary PPM expected"
    return int(parts[1]), int(parts[2]), data[pos + 1:]


shot = sys.argv[1]
minimum = int(sys.argv[2]) if len(sys.argv) > 2 else 300
ppm = subprocess.run(["convert", shot, "ppm:-"], check=True, capture_output=True).stdout
width, height, pixels = read_ppm(ppm)
orange = 0
for i in range(0, width * height * 3, 3):
    r, g, b = pixels[i], pixels[i + 1], pixels[i + 2]
    if abs(r - ORANGE[0]) <= TOLERANCE and abs(g - ORANGE[1]) <= TOLERANCE and abs(b - ORANGE[2]) <= TOLERANCE:
        orange += 1
print(f"orange warning pixels: {orange}")
if orange < minimum:
    print(f"fewer than {minimum}: no failed source is shown")
    sys.exit(1)
