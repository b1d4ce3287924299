#!/usr/bin/env python3
"""Runs heralder-tool over the kept case sets and compares with the expected output.

A case is tests/tool/cases/SUBCOMMAND/NAME.in with NAME.json (compared as JSON) or
NAME.out (compared byte for byte); NAME.rc holds an exit code other than 0 and
NAME.err text that standard error must contain. "missing" as NAME.in's content
in a file NAME.missing means the tool is given a path that does not exist.
Prints one line per failure and a closing "N passed, N failed" line.
"""
import json
import pathlib
import subprocess
import sys

def run_case(tool, sub, case, prefix):
    name = case.stem
    # Relative to the case folder, so that a Windows build under Wine gets a
    # path it can open and both builds print the same text.
    inp = case.name if case.suffix == ".in" else name + ".does-not-exist"
    cmd = prefix + [tool, sub, inp]
    proc = subprocess.run(cmd, capture_output=True, timeout=120, cwd=case.parent)
    want_rc = 0
    rc_file = case.with_name(name + ".rc")
    if rc_file.exists():
        want_rc = int(rc_file.read_text().strip())
    problems = []
    if proc.returncode != want_rc:
        problems.append(f"exit {proc.returncode}, expected {want_rc}")
    err_file = case.with_name(name + ".err")
    if err_file.exists():
        want_err = err_file.read_text().strip().replace("{PATH}", str(inp))
        if want_err not in proc.stderr.decode("latin-1"):
            problems.append(f"stderr {proc.stderr!r} lacks {want_err!r}")
    json_file = case.with_name(name + ".json")
    out_file = case.with_name(name + ".out")
    if json_file.exists():
        try:
            got = json.loads(proc.stdout.decode("utf-8"))
        except ValueError as e:
            problems.append(f"stdout is not JSON: {e}")
        else:
            want = json.loads(json_file.read_text(encoding="utf-8"))
            if got != want:
                problems.append("JSON differs:\n  got  " + json.dumps(got)[:2000] +
                                "\n  want " + json.dumps(want)[:2000])
    elif out_file.exists():
        want = out_file.read_bytes()
        got = proc.stdout.replace(b"\r\n", b"\n") if prefix else proc.stdout
        if got != want:
            problems.append("output differs:\n  got  " + repr(got[:2000]) +
                            "\n  want " + repr(want[:2000]))
    return problems

def main():
    args = sys.argv[1:]
    prefix = []
    if args and args[0] == "--wine":
        prefix = ["wine"]
        args = args[1:]
    tool = str(pathlib.Path(args[0]).resolve())
    root = pathlib.Path(__file__).parent / "cases"
    passed = failed = 0
    subs = sorted(p for p in root.iterdir() if p.is_dir()) if root.is_dir() else []
    for sub_dir in subs:
        cases = sorted(list(sub_dir.glob("*.in")) + list(sub_dir.glob("*.missing")))
        for case in cases:
            problems = run_case(tool, sub_dir.name, case, prefix)
            if problems:
                failed += 1
                print(f"FAIL {sub_dir.name}/{case.name}: " + "; ".join(problems))
            else:
                passed += 1
    print(f"tool cases: {passed} passed, {failed} failed")
    return 1 if failed else 0

if __name__ == "__main__":
    sys.exit(main())
