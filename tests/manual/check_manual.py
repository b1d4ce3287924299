#!/usr/bin/env python3
"""Checks the manual pages in html/: well-formed HTML5 on the shared stylesheet;
links, anchors and pictures resolve; every anchor the program opens (found in the
sources, so a new Help button cannot point at nothing), setting and switch is
documented; each page renders in headless Chromium (build/manual/).
Usage: check_manual.py [-v] [--no-browser]"""
import html.parser
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[2]
HTML = ROOT / "html"
PAGES = ["manual.html", "referenc.html"]
VOID = set("area base br col embed hr img input link meta source track wbr".split())
# Elements a browser will not keep inside <p>: it closes the paragraph first,
# and the </p> written after them is then a stray one.
BLOCK = set("address article aside blockquote div dl fieldset figure footer form h1 h2 h3 h4 h5 "
            "h6 header hr main nav ol p pre section table ul".split())
MAX_PICTURE_BYTES = 400 * 1024
# openManualTopic(owner, settings, topic) and openManualPage(owner, settings, "page", "#anchor")
TOPIC_CALL = re.compile(r"\bopenManualTopic\s*\(\s*[^,()]+(?:\([^()]*\))?\s*,\s*[^,()]+,"
                        r"\s*([^)]+?)\s*\)")
PAGE_CALL = re.compile(r"\bopenManualPage\s*\(\s*\w+\s*,\s*\w+\s*,\s*\"([^\"]+)\"\s*,"
                       r"\s*\"#([^\"]+)\"")


class Page(html.parser.HTMLParser):
    def __init__(self, name):
        super().__init__(convert_charrefs=True)
        self.problems, self.stack, self.ids, self.links, self.images = [], [], set(), [], []
        self.doctype, self.styles, self.stylesheets, self.has = False, 0, [], set()
        self.feed((HTML / name).read_text(encoding="utf-8"))

    def problem(self, text):
        self.problems.append(f"line {self.getpos()[0]}: {text}")

    def handle_decl(self, decl):
        self.doctype |= decl.lower() == "doctype html"

    def handle_starttag(self, tag, attrs):
        a, line = dict(attrs), self.getpos()[0]
        self.has.add(tag)
        if (tag, a.get("charset", "").lower()) == ("meta", "utf-8") or \
                tag == "html" and a.get("lang"):
            self.has.add("charset" if tag == "meta" else "lang")
        if tag in BLOCK and "p" in self.stack:
            self.problem(f"<{tag}> inside <p>")
        if a.get("id") in self.ids:
            self.problem(f"id {a['id']!r} used twice")
        self.ids |= {a["id"]} if "id" in a else set()
        if tag == "a" and "href" in a:
            self.links.append((line, a["href"]))
        if tag == "img":
            if not a.get("alt"):
                self.problem("<img> without alt text")
            self.images.append((line, a.get("src", "")))
        if tag == "link" and a.get("rel") == "stylesheet":
            self.stylesheets.append(a.get("href", ""))
        self.styles += tag == "style"
        if tag not in VOID:
            self.stack.append(tag)

    def handle_startendtag(self, tag, attrs):
        self.handle_starttag(tag, attrs)
        if tag not in VOID:
            self.stack.pop()

    def handle_endtag(self, tag):
        if tag in VOID:
            self.problem(f"end tag of void element </{tag}>")
        elif not self.stack or self.stack[-1] != tag:
            self.problem(f"</{tag}> closes <{self.stack[-1] if self.stack else 'nothing'}>")
            while tag in self.stack and self.stack.pop() != tag:
                pass
        else:
            self.stack.pop()


def check_form(page):
    """Well-formed, with its language, charset, title, heading and navigation,
    and styled by the shared stylesheet only."""
    problems = page.problems + [f"missing {n}" for n in ("lang", "charset", "title", "h1", "nav")
                                if n not in page.has]
    problems += [f"unclosed at the end: <{t}>" for t in page.stack]
    problems += [] if page.doctype else ["no <!DOCTYPE html>"]
    problems += [f"{page.styles} <style> block(s): use the shared stylesheet"] * bool(page.styles)
    problems += [] if page.stylesheets else ["no stylesheet link"]
    return problems + [f"stylesheet {s} not found" for s in page.stylesheets
                       if not (HTML / s).is_file()]


def check_links(name, page, pages):
    problems = []
    for line, href in (link for link in page.links if not re.match(r"^(https?|mailto):", link[1])):
        target, _, anchor = href.partition("#")
        target = target or name
        if "/" in target or "\\" in target or not (HTML / target).is_file():
            problems.append(f"line {line}: {href} names no page beside this one")
        elif anchor and target in pages and anchor not in pages[target].ids:
            problems.append(f"line {line}: {href}: no anchor {anchor!r} in {target}")
    return problems


def picture_table():
    """{picture file name: state} from scripts/manual_pictures.sh."""
    out = subprocess.run(["bash", str(ROOT / "scripts/manual_pictures.sh"), "--table"],
                         capture_output=True, text=True, check=True).stdout
    return {f"pictures/{r[1]}.png": r[3] for r in map(str.split, out.splitlines()) if r}


def check_images(name, page, table, warnings):
    problems = []
    for line, src in page.images:
        path = HTML / src
        if not path.is_file():
            pending = table.get(src) == "pending"
            (warnings if pending else problems).append(
                f"{name} line {line}: {src} not made yet (pending in manual_pictures.sh)" if pending
                else f"line {line}: picture {src} not found")
            continue
        data = path.read_bytes()
        problems += [f"line {line}: {src} {p}" for ok, p in (
            (data.startswith(b"\x89PNG\r\n\x1a\n"), "is not a PNG file"),
            (len(data) <= MAX_PICTURE_BYTES, f"is {len(data)} bytes; crop or reduce it"),
            (src in table, "has no row in scripts/manual_pictures.sh")) if not ok]
    return problems


def program_anchors():
    """[(page, anchor, where)] for every manual address the program opens."""
    texts = {p: p.read_text(encoding="utf-8", errors="replace")
             for folder in ("app", "dialogs", "notify", "shell", "ui", "feed", "settings")
             for ext in ("*.cpp", "*.h") for p in sorted((ROOT / folder).rglob(ext))}
    topic_page = None
    for text in texts.values():
        m = re.search(r"int\s+openManualTopic\s*\([^)]*\)\s*\{[^}]*?\"(\w+\.html)\"", text)
        topic_page = m.group(1) if m else topic_page
    found, problems = [], [] if topic_page else ["cannot find which page openManualTopic opens"]
    for path, text in texts.items():
        rel = path.relative_to(ROOT)
        line = lambda m: text.count("\n", 0, m.start()) + 1
        # char kTopic[] = "X", const char* kTopic = "X", std::string_view kTopic = "X"
        constants = dict(re.findall(r"\b(\w+)\s*(?:\[\])?\s*=\s*\"([^\"]*)\"", text))
        for m in TOPIC_CALL.finditer(text):
            arg = m.group(1)
            if arg in ("const char* topic", "topic"):
                continue  # the declaration and the definition
            literal = re.fullmatch(r"\"([^\"]*)\"", arg)
            topic = literal.group(1) if literal else constants.get(arg)
            if topic is None:
                problems.append(f"{rel}:{line(m)}: cannot tell the topic {arg}")
            elif topic_page:
                found.append((topic_page, topic, f"{rel}:{line(m)}"))
        for m in PAGE_CALL.finditer(text):
            found.append((m.group(1), m.group(2), f"{rel}:{line(m)}"))
    return found, problems + ([] if found else ["no manual topic found in the sources"])


def render(names, out_dir):
    """{page: problems} after rendering every page at once in headless Chromium;
    None without a browser. Tall enough for the whole page, so that a look at
    the picture shows everything."""
    browser = shutil.which("chromium") or shutil.which("chromium-browser")
    if not browser:
        return None
    runs = {}
    options = ("--headless --no-sandbox --disable-gpu --disable-quic --no-first-run "
               "--disable-background-networking --disable-component-update --disable-sync "
               "--window-size=1200,16000 --hide-scrollbars").split()
    with tempfile.TemporaryDirectory() as profiles:
        for i, name in enumerate(names):
            out = out_dir / (pathlib.Path(name).stem + ".png")
            out.unlink(missing_ok=True)
            runs[name] = (out, subprocess.Popen(  # a hung browser fails its page
                ["timeout", "180", browser, *options, f"--user-data-dir={profiles}/{i}", f"--screenshot={out}",
                 (HTML / name).as_uri()], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                text=True))
        results = {}
        for name, (out, proc) in runs.items():
            err = proc.communicate()[1]
            ok = proc.returncode == 0 and out.is_file() and out.stat().st_size > 10000
            results[name] = [] if ok else [f"chromium failed ({proc.returncode}): {err[-500:]}"]
    return results


def main():
    counts, warnings = {"passed": 0, "failed": 0}, []

    def case(title, problems):
        counts["failed" if problems else "passed"] += 1
        if problems or "-v" in sys.argv:
            print(f"{'FAIL' if problems else 'ok  '} {title}" +
                  "".join(f"\n    {p}" for p in problems))

    pages = {name: Page(name) for name in PAGES}
    table = picture_table()
    for name, page in pages.items():
        case(f"{name}: well-formed, shared stylesheet", check_form(page))
        case(f"{name}: links and anchors", check_links(name, page, pages))
        case(f"{name}: pictures", check_images(name, page, table, warnings))

    used = {src for page in pages.values() for _, src in page.images}
    case("every file in html/pictures is shown",
         [f"{p.name} is not used by any page" for p in sorted((HTML / "pictures").glob("*"))
          if f"pictures/{p.name}" not in used])

    anchors, problems = program_anchors()
    case("program topics found in the sources", problems)
    for page, anchor, where in sorted(set(anchors)):
        missing = page not in pages or anchor not in pages[page].ids
        case(f"{page}#{anchor} (opened at {where})",
             [f"no anchor {anchor!r} in {page}"] if missing else [])

    # Settings and switches the program has, each of which the reference must name.
    settings = re.findall(r"^\s*(?:NUM|TXT)\((\w+)",
                          (ROOT / "settings/settings_table.cpp").read_text(), re.M)
    switches = re.findall(r"\{\"(/[A-Z/]+)\"", (ROOT / "app/command_line.cpp").read_text())
    reference = (HTML / "referenc.html").read_text(encoding="utf-8")
    undocumented = lambda names: [f"{s} missing" for s in names if f"<code>{s}</code>" not in reference]
    case(f"all {len(settings)} settings documented", undocumented(settings) +
         ([] if len(settings) == 43 else [f"found {len(settings)} settings in the table, not 43"]))
    case(f"all {len(switches)} command-line switches documented", undocumented(switches) +
         ([] if switches else ["no switch found in app/command_line.cpp"]))

    if "--no-browser" not in sys.argv:
        out_dir = ROOT / "build/manual"
        out_dir.mkdir(parents=True, exist_ok=True)
        results = render(PAGES, out_dir)
        print("skip rendering: no chromium" if results is None else "", end="")
        for name, problems in (results or {}).items():
            case(f"{name}: rendered to build/manual/{pathlib.Path(name).stem}.png", problems)

    print("".join(f"warn {w}\n" for w in warnings), end="")
    print(f"manual cases: {counts['passed']} passed, {counts['failed']} failed")
    return 1 if counts["failed"] else 0


if __name__ == "__main__":
    sys.exit(main())
