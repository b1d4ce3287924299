"""keygen, sign and verify as a publisher runs them, with throw-away keys: each
tool's keys and signatures must be read by the other (OpenSSL natively, CNG on
Windows), so every step runs for each ordered pair of the tools given."""
import datetime
import os
import pathlib
import subprocess
import tempfile

SAMPLE = pathlib.Path(__file__).resolve().parents[2] / "examples" / "update.txt"


def run(tool, args, cwd):
    p = subprocess.run(tool + args, capture_output=True, timeout=120, cwd=cwd, encoding="latin-1")
    return p.returncode, p.stdout.replace("\r\n", "\n"), p.stderr


def pair_problems(a, b, work):
    """a makes the key and signs; b signs again with a's key and verifies."""
    problems = []
    expect = lambda ok, what: ok or problems.append(what)
    (work / "in.txt").write_bytes(SAMPLE.read_bytes())
    (work / "keys").mkdir()
    (work / "other").mkdir()
    rc, _, _ = run(a, ["keygen", "keys"], work)
    expect(rc == 0, f"keygen exit {rc}")
    private = work / "keys" / "feed-private.pem"
    before = private.read_bytes() if private.exists() else b""
    if os.name == "posix" and "wine" not in a[0]:
        expect(private.stat().st_mode & 0o077 == 0, "the private key is readable by others")
    rc, _, err = run(a, ["keygen", "keys"], work)
    expect(rc == 1 and private.read_bytes() == before, f"keygen over a key: exit {rc} {err!r}")
    run(b, ["keygen", "other"], work)

    today = datetime.datetime.now(datetime.timezone.utc).date()
    in_days = lambda n: (today + datetime.timedelta(days=n)).isoformat()
    key, pub, other = "keys/feed-private.pem", "keys/feed-public.pem", "other/feed-public.pem"
    steps = [  # tool, command, exit, text the output must hold
        (a, ["sign", "--key", key, "--serial", "5", "in.txt", "s1.txt"], 0, "expires: " + in_days(14)),
        (b, ["verify", "--key", pub, "s1.txt"], 0, "serial: 5\nexpires: " + in_days(14) + "\nvalid\n"),
        # an existing signature is replaced, not signed over
        (b, ["sign", "--key", key, "--serial", "6", "--expires", in_days(3), "s1.txt", "s2.txt"], 0, ""),
        (a, ["verify", "--key", other, "--key", pub, "s2.txt"], 0, "serial: 6\nexpires: " + in_days(3) + "\nvalid\n"),
        (a, ["verify", "--key", other, "s2.txt"], 1, "not valid: unknown key"),
        (b, ["sign", "--key", key, "--serial", "7", "--expires", in_days(-2), "in.txt", "old.txt"], 0, ""),
        (a, ["verify", "--key", pub, "old.txt"], 1, "not valid: expired"),
        (b, ["sign", "--key", pub, "--serial", "7", "in.txt", "x.txt"], 1, ""),
        (b, ["sign", "--key", key, "--serial", "0", "in.txt", "x.txt"], 2, ""),
    ]
    for tool, args, want_rc, want_out in steps:
        rc, out, err = run(tool, args, work)
        if rc != want_rc or want_out not in out:
            problems.append(f"{' '.join(args)}: exit {rc} (want {want_rc}), out {out!r} err {err!r}")
    expect((work / "in.txt").read_bytes() == SAMPLE.read_bytes(), "sign changed its input")
    signed = (work / "s2.txt").read_bytes() if (work / "s2.txt").exists() else b""
    expect(signed.count(b";heralder-signature ") == 1, "re-signing kept the old signature line")
    expect(signed.startswith(SAMPLE.read_bytes()), "the signed document does not begin with the original")
    return problems


def sign_cases(tools):
    """tools: name -> command prefix. Prints one line per failed pair and a total."""
    pairs = [(x, y) for x in tools for y in tools if x != y] or [(n, n) for n in tools]
    failed = 0
    for x, y in pairs:
        with tempfile.TemporaryDirectory() as tmp:
            if problems := pair_problems(tools[x], tools[y], pathlib.Path(tmp)):
                failed += 1
                print(f"FAIL signing {x} -> {y}: " + "; ".join(problems))
    print(f"sign cases: {len(pairs) - failed} passed, {failed} failed")
    return failed
