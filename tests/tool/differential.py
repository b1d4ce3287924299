#!/usr/bin/env python3
"""Compares "heralder-tool parse" with the independent reader in ref_parse.py on
generated documents. Usage: differential.py [--wine] TOOL [COUNT [SEED]].
Prints each disagreement and a closing "differential cases: N passed, N failed" line.
"""
import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile

sys.path.insert(0, str(pathlib.Path(__file__).parent))
import ref_parse  # noqa: E402

PIECES = [b":END", b":end", b":ENDS", b" ", b" ", b"=", b"==", b"\t", b"\r\n", b"\r\n", b"\n",
          b"\r", b"{", b"}", b"x", b"7", b"-3", b"+", b"4.2", b"\xe9", b"\xff", b"\x01", b"\"",
          b"\\", b":", b":BEGIN", b"S", b"Quenmark Atlas", b"11-20-2026"]
PIECES += [m for m, _ in ref_parse.MARKERS] + [k for k, _, _ in ref_parse.KEYS]


BREAKS = [b"\r\n", b"\r\n", b"\n", b"\r", b"\t", b"\r\n\r\n", b""]
SEPARATORS = [b"=", b" = ", b" ", b"==", b"", b"\t", b" =\t"]


def noise(rng, pieces):
    return b"".join(rng.choice(PIECES) for _ in range(rng.randint(0, pieces)))


def line(rng):
    """A begin marker, an end marker, a key with a value, or noise, often mangled."""
    roll = rng.random()
    if roll < 0.15:
        text = rng.choice(ref_parse.MARKERS)[0] + noise(rng, 1)
    elif roll < 0.3:
        text = ref_parse.END + noise(rng, 1)
    elif roll < 0.85:
        text = rng.choice(ref_parse.KEYS)[0] + rng.choice(SEPARATORS) + noise(rng, 4)
    else:
        text = noise(rng, 6)
    if rng.random() < 0.25:
        text = text.lower()
    if rng.random() < 0.05:
        text = b" " + text
    if rng.random() < 0.003:
        text += b"\0"
    return text


def document(rng):
    return b"".join(line(rng) + rng.choice(BREAKS) for _ in range(rng.randint(0, 40)))


def main():
    args = sys.argv[1:]
    prefix = []
    if args and args[0] == "--wine":
        prefix, args = ["wine"], args[1:]
    tool = args[0]
    count = int(args[1]) if len(args) > 1 else 300
    rng = random.Random(int(args[2]) if len(args) > 2 else 2026)
    passed = failed = 0
    with tempfile.TemporaryDirectory() as tmp:
        path = os.path.join(tmp, "update.txt")
        for n in range(count):
            doc = document(rng)
            with open(path, "wb") as f:
                f.write(doc)
            proc = subprocess.run(prefix + [tool, "parse", path], capture_output=True, timeout=60)
            want = ref_parse.parse(ref_parse.normalize(doc))
            try:
                got = json.loads(proc.stdout.decode("utf-8"))
            except ValueError as e:
                got = f"not JSON: {e}"
            if proc.returncode == 0 and got == want:
                passed += 1
            else:
                failed += 1
                print(f"FAIL document {n} {doc!r}: exit {proc.returncode}\n  got  "
                      f"{json.dumps(got)[:1500]}\n  want {json.dumps(want)[:1500]}")
    print(f"differential cases: {passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
