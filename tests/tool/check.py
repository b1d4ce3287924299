#!/usr/bin/env python3
"""Runs heralder-tool over the kept cases: cases/SUBCOMMAND/NAME.in (or NAME.missing:
the tool gets a path that does not exist) with NAME.json (compared as JSON) or
NAME.out (byte for byte), NAME.rc (exit code other than 0), NAME.err (text standard
error must contain, {PATH} standing for the input). Usage: check.py [--wine] TOOL"""
import json
import pathlib
import subprocess
import sys


def problems_of(tool, case, prefix):
    name, sub = case.stem, case.parent.name
    # Relative to the case folder, so that Wine gets a path it can open and both
    # builds print the same text.
    inp = case.name if case.suffix == ".in" else name + ".does-not-exist"
    proc = subprocess.run(prefix + [tool, sub, inp], capture_output=True, timeout=120,
                          cwd=case.parent)
    sibling = lambda ext: case.with_name(name + ext)
    problems = []
    want_rc = int(sibling(".rc").read_text()) if sibling(".rc").exists() else 0
    if proc.returncode != want_rc:
        problems.append(f"exit {proc.returncode}, expected {want_rc}")
    if sibling(".err").exists():
        want_err = sibling(".err").read_text().strip().replace("{PATH}", inp)
        if want_err not in proc.stderr.decode("latin-1"):
            problems.append(f"stderr {proc.stderr!r} lacks {want_err!r}")
    if sibling(".json").exists():
        try:
            got, want = json.loads(proc.stdout), json.loads(sibling(".json").read_bytes())
        except ValueError as e:
            return problems + [f"stdout is not JSON: {e}"]
        if got != want:
            problems.append(f"JSON differs:\n  got  {json.dumps(got)[:2000]}\n  want {json.dumps(want)[:2000]}")
    elif sibling(".out").exists():
        got = proc.stdout.replace(b"\r\n", b"\n") if prefix else proc.stdout
        want = sibling(".out").read_bytes()
        if got != want:
            problems.append(f"output differs:\n  got  {got[:2000]!r}\n  want {want[:2000]!r}")
    return problems


def main():
    args = sys.argv[1:]
    prefix = ["wine"] if args[:1] == ["--wine"] else []
    tool = str(pathlib.Path(args[len(prefix)]).resolve())
    cases = sorted(p for p in pathlib.Path(__file__).parent.glob("cases/*/*")
                   if p.suffix in (".in", ".missing"))
    failed = 0
    for case in cases:
        problems = problems_of(tool, case, prefix)
        if problems:
            failed += 1
            print(f"FAIL {case.parent.name}/{case.name}: " + "; ".join(problems))
    print(f"tool cases: {len(cases) - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
