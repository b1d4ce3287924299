#!/usr/bin/env python3
"""Runs heralder-tool over the kept cases: cases/SUBCOMMAND/NAME.in (or NAME.missing:
the tool gets a path that does not exist) with NAME.json (compared as JSON) or
NAME.out (byte for byte), NAME.rc (exit code other than 0), NAME.err (text standard
error must contain, {PATH} standing for the input), NAME.args (options put before
the input, separated by blanks, paths relative to the case folder).
After them, keygen, sign and verify with throw-away keys (sign_cases.py); with
--other TOOL2 each tool's signatures are also checked by the other.
Usage: check.py [--wine] TOOL [--other TOOL2]"""
import json
import pathlib
import subprocess
import sys

from sign_cases import sign_cases


def problems_of(tool, case, prefix):
    side = lambda ext: case.with_name(case.stem + ext)
    # Relative to the case folder, so that Wine gets a path it can open and both
    # builds print the same text.
    inp = case.name if case.suffix == ".in" else case.stem + ".does-not-exist"
    args = side(".args").read_text().split() if side(".args").exists() else []
    run = lambda: subprocess.run(prefix + [tool, case.parent.name] + args + [inp],
                                 capture_output=True, timeout=120, cwd=case.parent)
    proc = run()
    # Once in several hundred starts on a busy machine, Wine itself fails to
    # start a program: an exit code with nothing written at all. The tool
    # always writes something, so such a run is tried once more, and said.
    if prefix and proc.returncode != 0 and not proc.stdout and not proc.stderr:
        print(f"note: {case.parent.name}/{case.name}: Wine started nothing (exit "
              f"{proc.returncode}); run again")
        proc = run()
    want_rc = int(side(".rc").read_text()) if side(".rc").exists() else 0
    want_err = side(".err").read_text().strip().replace("{PATH}", inp) if side(".err").exists() else ""
    problems = [f"exit {proc.returncode}, expected {want_rc}, stderr {proc.stderr[:500]!r}"
                ] * (proc.returncode != want_rc)
    if want_err not in proc.stderr.decode("latin-1"):
        problems.append(f"stderr {proc.stderr!r} lacks {want_err!r}")
    if side(".json").exists():
        try:
            got, want = json.loads(proc.stdout), json.loads(side(".json").read_bytes())
        except ValueError as e:
            got, want = f"not JSON: {e}", None
    elif side(".out").exists():
        got = proc.stdout.replace(b"\r\n", b"\n") if prefix else proc.stdout
        want = side(".out").read_bytes()
    else:
        got = want = None
    differs = f"output differs:\n  got  {str(got)[:2000]}\n  want {str(want)[:2000]}"
    return problems + [differs] * (got != want)


def main():
    prefix = ["wine"] if sys.argv[1:2] == ["--wine"] else []
    tool = str(pathlib.Path(sys.argv[1 + len(prefix)]).resolve())
    rest = sys.argv[2 + len(prefix):]
    other = [str(pathlib.Path(rest[1]).resolve())] if rest[:1] == ["--other"] else []
    cases = sorted(p for p in pathlib.Path(__file__).parent.glob("cases/*/*")
                   if p.suffix in (".in", ".missing"))
    failed = 0
    for case in cases:
        if problems := problems_of(tool, case, prefix):
            failed += 1
            print(f"FAIL {case.parent.name}/{case.name}: " + "; ".join(problems))
    print(f"tool cases: {len(cases) - failed} passed, {failed} failed")
    tools = {"wine" if prefix else "native": prefix + [tool]} | ({"native": other} if other else {})
    return 1 if failed + sign_cases(tools) else 0


if __name__ == "__main__":
    sys.exit(main())
