#!/usr/bin/env python3
"""Pixel checks for the console's end-to-end run, on a binary PPM screenshot.

  e2e_pixels.py stages SHOT.ppm X Y W H     preview and program show the gradient
  e2e_pixels.py placeholder SHOT.ppm X Y W H  program stage is hidden, border kept
  e2e_pixels.py popout SHOT.ppm X Y W H     the pop-out window shows the gradient
  e2e_pixels.py screen SHOT.ppm X Y W H R G B    program stage shows the desktop colour
  e2e_pixels.py noscreen SHOT.ppm X Y W H R G B  program stage no longer shows it

X Y W H is the window's client area on the screenshot. Exits 1 with a reason
when a check fails.
"""
import sys


def read_ppm(path):
    with open(path, "rb") as f:
        data = f.read()
    parts, pos = [], 0
    while len(parts) < 4:
        while data[pos:pos + 1].isspace():
            pos += 1
        if data[pos:pos + 1] == b"#":
            pos = data.index(b"\n", pos) + 1
            continue
        end = pos
        while not data[end:end + 1].isspace():
            end += 1
        parts.append(data[pos:end])
        pos = end
    assert parts[0] == b"P6", "binary PPM expected"
    w, h = int(parts[1]), int(parts[2])
    return w, h, data[pos + 1:]


class Shot:
    def __init__(self, path):
        self.w, self.h, self.px = read_ppm(path)

    def at(self, x, y):
        i = (int(y) * self.w + int(x)) * 3
        return self.px[i], self.px[i + 1], self.px[i + 2]


def is_red(c):
    r, g, b = c
    return r > g + 50 and r > b + 30


def is_gradient(c):
    r, g, b = c
    return r < 90 and b > r + 40 and b > 90


def fail(msg):
    print("FAIL:", msg)
    sys.exit(1)


def program_box(shot, x, y, w, h):
    """The live border's rectangle, right of the preview stage. The stages
    share the width between the scene list and the configuration sidebar, so
    the program stage begins left of the window's middle."""
    rows = {}
    cols = {}
    for yy in range(y, y + h):
        for xx in range(x + w * 35 // 100, x + w):
            if is_red(shot.at(xx, yy)):
                rows[yy] = rows.get(yy, 0) + 1
                cols[xx] = cols.get(xx, 0) + 1
    long_rows = [r for r, n in rows.items() if n > 150]
    long_cols = [c for c, n in cols.items() if n > 80]
    if not long_rows or not long_cols:
        fail("no red live border on the program stage")
    # Where the border runs over light parts of the picture it no longer reads
    # as red; the box is 16:9, so its width and top edge are enough.
    x0, x1, y0 = min(long_cols), max(long_cols), min(long_rows)
    return x0, y0, x1, y0 + (x1 - x0 + 1) * 9 // 16 - 1


def check_gradient(shot, name, x0, y0, x1, y1):
    # Near the edges, where a source drawn at its default scale leaves the
    # background free.
    w, h = x1 - x0, y1 - y0
    top = shot.at(x0 + w * 0.25, y0 + h * 0.02)
    bottom = shot.at(x0 + w * 0.25, y0 + h * 0.98)
    if not (is_gradient(top) and is_gradient(bottom)):
        fail(f"{name}: not the scene gradient: top {top}, bottom {bottom}")
    if bottom[1] < top[1] + 40:
        fail(f"{name}: no top-to-bottom gradient: top {top}, bottom {bottom}")
    print(f"ok {name}: top {top} bottom {bottom}")


def main():
    mode, path = sys.argv[1], sys.argv[2]
    x, y, w, h = (int(v) for v in sys.argv[3:7])
    shot = Shot(path)
    if mode == "popout":
        # The picture is the largest 16:9 box, centred in the client area.
        bw = min(w, h * 16 // 9)
        bh = bw * 9 // 16
        bx, by = x + (w - bw) // 2, y + (h - bh) // 2
        check_gradient(shot, "pop-out window", bx, by, bx + bw, by + bh)
        return
    px0, py0, px1, py1 = program_box(shot, x, y, w, h)
    print(f"ok red live border at {px0},{py0} to {px1},{py1}")
    if mode == "stages":
        check_gradient(shot, "program stage", px0 + 3, py0 + 3, px1 - 3, py1 - 3)
        # The preview box has the same height, on the left half.
        row = py0 + (py1 - py0) // 50
        xs = [xx for xx in range(x, x + w // 2) if is_gradient(shot.at(xx, row))]
        if len(xs) < 100:
            fail("no scene gradient on the preview stage")
        check_gradient(shot, "preview stage", min(xs), py0 + 3, max(xs), py1 - 3)
    elif mode == "placeholder":
        inner = [shot.at(px0 + (px1 - px0) * fx, py0 + (py1 - py0) * fy)
                 for fx in (0.1, 0.25, 0.75, 0.9) for fy in (0.1, 0.9)]
        if any(max(c) > 30 for c in inner):
            fail(f"program stage still draws the composition: {inner}")
        # The centred texts are light on black.
        light = sum(1 for xx in range(px0, px1) for yy in range(py0 + (py1 - py0) // 3, py1 - (py1 - py0) // 3)
                    if min(shot.at(xx, yy)) > 120)
        if light < 50:
            fail("no placeholder text on the program stage")
        print(f"ok placeholder: {light} light pixels")
    elif mode in ("screen", "noscreen"):
        want = tuple(int(v) for v in sys.argv[7:10])
        near = sum(1 for xx in range(px0 + 3, px1 - 3, 2) for yy in range(py0 + 3, py1 - 3, 2)
                   if all(abs(a - b) < 40 for a, b in zip(shot.at(xx, yy), want)))
        if mode == "screen" and near < 1500:
            fail(f"program stage shows too little of the screen colour {want}: {near} samples")
        if mode == "noscreen" and near > 50:
            fail(f"program stage still shows the screen colour {want}: {near} samples")
        print(f"ok {mode} {want}: {near} samples")
    else:
        fail("unknown mode " + mode)


if __name__ == "__main__":
    main()
