#!/usr/bin/env python3
"""Checks the direction of every #include between the source folders.

The folders form a chain: document, then engine, then the subsystems
(paint, composition, slides, capture, recording, streaming, remote,
teleprompter), then the console, then the application root. A file may
include from its own folder or from a folder lower in the chain; the
subsystems may include one another as long as no two of them do so both
ways round. Inside the console, the screen's parts follow the same rule:
no two parts include each other, directly or through others.

Prints every include that breaks a rule and exits 1, or prints a summary
of the graph and exits 0.
"""
import re
import sys
from pathlib import Path

RANK = {"document": 0, "engine": 1, "console": 3, "app": 4}
SUBSYSTEM_RANK = 2
INCLUDE = re.compile(r'^\s*#\s*include\s+"([a-z_]+)/(?:([a-z_]+)/)?[^"]*"', re.M)


def rank(folder):
    return RANK.get(folder, SUBSYSTEM_RANK)


def edges_of(root, top, nested):
    """(from, to) -> first file that makes the edge. With nested, the edges
    run between the sub-folders of `top`."""
    edges = {}
    base = root / top if nested else root
    for path in sorted(base.rglob("*")):
        if path.suffix not in (".h", ".cpp"):
            continue
        rel = path.relative_to(base).parts
        if len(rel) < 2:
            continue
        here = rel[0]
        for match in INCLUDE.finditer(path.read_text(errors="replace")):
            folder, sub = match.group(1), match.group(2)
            if nested:
                if folder != top or sub is None:
                    continue
                there = sub
            else:
                there = folder
            if there != here and (root / (f"{top}/{there}" if nested else there)).is_dir():
                edges.setdefault((here, there), str(path.relative_to(root)))
    return edges


def find_cycle(edges):
    graph = {}
    for a, b in edges:
        graph.setdefault(a, set()).add(b)
    state = {}

    def visit(node, trail):
        state[node] = 1
        for nxt in sorted(graph.get(node, ())):
            if state.get(nxt) == 1:
                return trail[trail.index(nxt):] + [nxt] if nxt in trail else [node, nxt]
            if state.get(nxt) is None:
                found = visit(nxt, trail + [nxt])
                if found:
                    return found
        state[node] = 2
        return None

    for start in sorted(graph):
        if state.get(start) is None:
            found = visit(start, [start])
            if found:
                return found
    return None


def main():
    root = Path(sys.argv[1] if len(sys.argv) > 1 else Path(__file__).resolve().parents[2] / "src")
    problems = []

    layers = edges_of(root, None, nested=False)
    for (a, b), where in sorted(layers.items()):
        if rank(b) > rank(a):
            problems.append(f"{where}: {a} includes {b}, which sits higher in the chain")
    cycle = find_cycle(layers)
    if cycle:
        problems.append("folders include each other: " + " -> ".join(cycle))

    parts = edges_of(root, "console", nested=True)
    cycle = find_cycle(parts)
    if cycle:
        chain = " -> ".join(cycle)
        witnesses = [parts[(x, y)] for x, y in zip(cycle, cycle[1:]) if (x, y) in parts]
        problems.append(f"console parts include each other: {chain} ({', '.join(witnesses)})")
    loose = [p.name for p in (root / "console").glob("*") if p.suffix in (".h", ".cpp")]
    if loose:
        problems.append("console files outside a part's folder: " + ", ".join(sorted(loose)))

    if problems:
        print("\n".join(problems))
        return 1
    print(f"{len(layers)} folder edges and {len(parts)} console part edges, all pointing one way")
    return 0


if __name__ == "__main__":
    sys.exit(main())
