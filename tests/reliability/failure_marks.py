#!/usr/bin/env python3
"""Checks that a screenshot shows capture failures: the orange warning
triangle that a failed source draws in place of its picture.

    failure_marks.py SHOT.png [minimum pixels]

Exits 1 with a reason when there are too few orange pixels.
"""
import os
import subprocess
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "console"))
from e2e_pixels import read_ppm  # noqa: E402

ORANGE = (255, 149, 0)
TOLERANCE = 30


shot = sys.argv[1]
minimum = int(sys.argv[2]) if len(sys.argv) > 2 else 300
with tempfile.TemporaryDirectory() as scratch:
    ppm = os.path.join(scratch, "shot.ppm")
    subprocess.run(["convert", shot, ppm], check=True)
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
