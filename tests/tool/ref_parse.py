#!/usr/bin/env python3
"""A reader of update documents written apart from the agent's own, for checking it.

It reads a document the way the agent does (the document ends at its first NUL;
line breaks become CR LF; logical lines end at a control byte outside braces;
blocks run from a begin marker to the next ":END" line; keys are found by their
first line in the block) and gives the items in the form that
"heralder-tool parse" prints. Usage: ref_parse.py FILE (prints the JSON).
"""
import json
import sys

MARKERS = [(b":BEGINALERT", "ALRT"), (b":BEGINVERSION", "VERS"), (b":BEGINTIP", "TIP_"),
           (b":BEGINNOTICE", "NOTC"), (b":BEGINOFFTOPIC", "OFFT"),
           (b":BEGINCHANGEINI", "CINI"), (b":BEGINNEWGRAPHIC", "GRPN")]
END = b":END"

# (document key, member name, kind) in the order the members are printed.
KEYS = [(b"DATE", "date", "text"), (b"ORIGINATOR", "originator", "text"),
        (b"APPLICATION", "application", "text"), (b"INIFILE", "iniFile", "text"),
        (b"SECTION", "section", "text"), (b"TITLE", "title", "text"), (b"URL", "url", "text"),
        (b"PLAINTEXT", "plainText", "text"), (b"KEYWORDS", "keywords", "text"),
        (b"IGNOREUNTIL", "ignoreUntil", "text"), (b"GRAPHIC", "graphic", "text"),
        (b"VERSION", "version", "number"), (b"SUBVERSION", "subVersion", "number"),
        (b"REVISION", "revision", "letter"), (b"PATCH", "patch", "number"),
        (b"BETA", "beta", "number"), (b"IMPORTANCE", "importance", "number"),
        (b"IFREGISTERED", "ifRegistered", "number"), (b"IFEVAL", "ifEval", "number"),
        (b"NUMBER", "number", "number")]


def normalize(doc):
    return doc.split(b"\0", 1)[0].replace(b"\r", b"").replace(b"\n", b"\r\n")


def logical_lines(text):
    """(start, end) of every logical line, in order."""
    lines = []
    start = 0
    while True:
        braces = False
        end = start
        while end < len(text):
            c = text[end]
            if c == 0x7B:
                braces = True
            elif c == 0x7D:
                braces = False
            elif c < 32 and not braces:
                break
            end += 1
        lines.append((start, end))
        nxt = end
        while nxt < len(text) and 1 <= text[nxt] <= 31:
            nxt += 1
        if nxt >= len(text):
            return lines
        start = nxt


def starts_with(text, start, word):
    return len(text) - start > len(word) and text[start:start + len(word)].upper() == word


def atoi(text):
    i = 0
    while i < len(text) and text[i] in b" \t\n\v\f\r":
        i += 1
    sign = 1
    if i < len(text) and text[i] in b"+-":
        sign = -1 if text[i] == 0x2D else 1
        i += 1
    digits = 0
    value = 0
    while i + digits < len(text) and 0x30 <= text[i + digits] <= 0x39:
        value = value * 10 + text[i + digits] - 0x30
        digits += 1
    return max(-2**31, min(2**31 - 1, sign * value))


def read_key(text, lines, begin, key, kind):
    for start, end in lines[begin:]:
        if starts_with(text, start, END):
            break
        if starts_with(text, start, key):
            v = start + len(key)
            while v < len(text) and text[v] in b" =":
                v += 1
            if kind == "text":
                return text[v:end].replace(b"{", b"").replace(b"}", b"").decode("latin-1")
            if kind == "number":
                return atoi(text[v:])
            return text[v] if v < len(text) else 0
    return None if kind == "text" else 0


def parse(normalized):
    text = normalized.split(b"\0", 1)[0]
    lines = logical_lines(text)
    items = []
    i = 0
    while True:
        begin = next((j for j in range(i, len(lines))
                      if any(starts_with(text, lines[j][0], m) for m, _ in MARKERS)), None)
        if begin is None:
            break
        item = {"type": next(t for m, t in MARKERS if starts_with(text, lines[begin][0], m))}
        for key, name, kind in KEYS:
            item[name] = read_key(text, lines, begin, key, kind)
        items.append(item)
        end = next((j for j in range(begin, len(lines)) if starts_with(text, lines[j][0], END)),
                   None)
        if end is None:
            break
        i = end
    return items


def main():
    with open(sys.argv[1], "rb") as f:
        print(json.dumps(parse(normalize(f.read())), indent=1, ensure_ascii=False))


if __name__ == "__main__":
    main()
