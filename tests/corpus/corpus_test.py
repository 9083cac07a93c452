#!/usr/bin/env python3
"""corpus_test.py — the DBD and PSB libraries of projects nobody here wrote,
each loaded as a whole through the built tool, held to what its folder's SOURCE
file says: which libraries load clean, which errors the others give (exactly
those, at their cards), that an independent count of the SEGM, FIELD, PCB,
SENSEG and SENFLD statements equals what was loaded, that `generate` then
`load` with the files in another order gives the same documents, that `check`
finds no error the database manager would not, and that `diagram` draws every
definition. The count here is written apart from the reader: Python's own
code page 037 and a few lines of card rules.

Usage: corpus_test.py TOOL CORPUS LIBRARY  (exit 77: the corpus is absent)"""
import os
import re
import subprocess
import sys
import tempfile

TOOL, CORPUS, LIBRARY = sys.argv[1], sys.argv[2], sys.argv[3]
DECKS = os.path.join(CORPUS, "decks")
COUNTED = ("SEGM", "FIELD", "PCB", "SENSEG", "SENFLD")


def run(*args):
    p = subprocess.run([TOOL, *args], capture_output=True, text=True)
    return p.returncode, p.stdout, p.stderr


def files(folder, *names):
    """The decks of a library folder (its own files, not its subfolders)."""
    path = os.path.join(DECKS, folder)
    if names:
        return [os.path.join(path, n) for n in names]
    return sorted(os.path.join(path, n) for n in os.listdir(path)
                  if n != "SOURCE" and os.path.isfile(os.path.join(path, n)))


def cards(path):
    raw = open(path, "rb").read()
    if b"\n" not in raw and raw.count(b"\x40") > len(raw) // 10:
        text = raw.decode("cp037")
        lines = [text[i:i + 80] for i in range(0, len(text), 80)]
    else:
        text = raw.split(b"\x1a")[0].decode("latin-1")
        lines = text.replace("\r\n", "\n").split("\n")
    if not any(l.startswith("//") for l in lines[:5]):
        return lines
    # A job stream: the cards of its in-stream data sets.
    out, inside = [], False
    for l in lines:
        if inside and (l.startswith("/*") or l.startswith("//")):
            inside = False
        if inside:
            out.append(l)
        elif l.startswith("//") and re.search(r"\sDD\s+(\*|DATA)", l):
            inside = True
    return out


def count(paths):
    counts = dict.fromkeys(COUNTED, 0)
    for path in paths:
        continued = False
        for card in cards(path):
            card = card[:80]
            was_continued, continued = continued, len(card) >= 72 and card[71] != " "
            if was_continued or not card[:71].strip() or card.startswith("*"):
                continue
            words = card[:71].split()
            op = words[0] if card[0] == " " else (words[1] if len(words) > 1 else "")
            if op in counts:
                counts[op] += 1
    return counts


def loaded(stdout):
    counts = dict.fromkeys(COUNTED, 0)
    for line in stdout.splitlines():
        for key, word in (("SEGM", "segments"), ("FIELD", "fields"), ("PCB", "PCBs"), ("SENSEG", "SENSEGs"),
                          ("SENFLD", "SENFLDs")):
            m = re.search(r"\s%s (\d+)" % word, line)
            if m:
                counts[key] += int(m.group(1))
    return counts


failures = []


def expect(ok, what):
    if not ok:
        failures.append(what)


def errors(text):
    return [l for l in text.splitlines() if ": error: " in l]


def clean(paths):
    """A library the database manager takes as it is."""
    code, out, err = run("load", *paths)
    expect(code == 0 and not errors(err), "load exits 0 with no error: %s" % errors(err)[:3])
    expect(count(paths) == loaded(out), "statements counted %s, loaded %s" % (count(paths), loaded(out)))
    code, out, err = run("check", *paths)
    expect(code == 0 and not errors(out + err), "check finds no error: %s" % errors(out + err)[:3])
    with tempfile.TemporaryDirectory() as tmp:
        code, _, err = run("generate", *paths, "--out", tmp)
        expect(code == 0, "generate: %s" % err[:300])
        written = sorted((os.path.join(tmp, n) for n in os.listdir(tmp)), reverse=True)
        _, first, _ = run("load", "--json", *paths)
        code, again, err = run("load", "--json", *written)
        expect(code == 0 and first == again, "generate then load (files reversed) gives the same documents")
    code, out, _ = run("load", *paths)
    names = [l.split()[1] for l in out.splitlines() if l.startswith(("DBD ", "PSB "))]
    for name in names:
        code, svg, err = run("diagram", "--format", "svg", "--decks", *paths, "--", name)
        expect(code == 0 and "<svg" in svg, "diagram draws %s: %s" % (name, err[:200]))


def exactly(paths, expected):
    """A library with known faults: exactly these errors, located."""
    code, _, err = run("load", *paths)
    got = [re.sub(r"^.*/decks/", "", l) for l in errors(err)]
    expect(code == 1 and got == expected, "load gives exactly %s, not %s" % (expected, got))


def check_exactly(paths, expected):
    code, out, _ = run("check", *paths)
    got = [re.sub(r"^.*/decks/", "", l) for l in errors(out)]
    expect(got == expected, "check gives exactly %s, not %s" % (expected, got))


if not os.path.isdir(DECKS):
    print("corpus not found at %s: the corpus tests are skipped" % CORPUS)
    sys.exit(77)

if LIBRARY in ("carddemo", "dental-hisam", "friendlybank", "insurance-ebcdic"):
    clean(files(LIBRARY))
elif LIBRARY == "insurance-devops":
    exactly(files(LIBRARY), ["insurance-devops/DEMODB.dbd:58:22: error: LCHILD NAME: no DBD named INSURDX"])
    clean(files(LIBRARY, "alt/DEMODB.dbd", "DEMODX.dbd", "DEMO01.psb"))
elif LIBRARY == "java-lab":
    exactly(files(LIBRARY), ["java-lab/DHIDPHO1.dbd:23:16: error: LCHILD NAME: no DBD named DIPHO1"])
elif LIBRARY == "skills-course":
    exactly(files(LIBRARY), ["skills-course/IVPPSB1.psb:4:33: error: PCB DBDNAME: no DBD named IVPDB1",
                             "skills-course/IVPPSBL.psb:4:33: error: PCB DBDNAME: no DBD named IVPDB1"])
    clean([f for f in files(LIBRARY) if "IVPPSB" not in f])
elif LIBRARY == "niu-cs466":
    # Each job stands alone: the first holds the DBD, the others new versions of its PSB.
    prog1 = files(LIBRARY, "prog1.jcl")
    code, out, err = run("load", *prog1)
    expect(code == 0 and count(prog1) == loaded(out), "prog1 loads: %s %s" % (errors(err)[:2], loaded(out)))
    check_exactly(prog1, ["niu-cs466/prog1.jcl:74:8: error: [HIDAM-INDEX] HIDAM database BUSDBD has no primary "
                          "index (LCHILD ...,POINTER=INDX)"])
    code, _, err = run("load", *files(LIBRARY))
    expect([l for l in errors(err) if "defined again differently" not in l] == [] and len(errors(err)) == 2,
           "the three jobs give the two later versions of BUSPSB as differing: %s" % errors(err))
elif LIBRARY == "format-fixtures":
    clean(files(LIBRARY, "set03/CUSTDB.dbd", "set03/CUSTINQ.psb"))
    clean(files(LIBRARY, "CUSTDB.dbd"))
    check_exactly(files(LIBRARY, "BEACONDB.dbd"), [
        "format-fixtures/BEACONDB.dbd:1:10: error: [RANDOMIZER] HDAM database BEACONDB names no randomizing module "
        "(RMNAME)"])
    # The defects kept on purpose are one error each, at their cards; the
    # references that do not resolve are errors too; nothing else is told.
    exactly(files(LIBRARY), [
        "format-fixtures/CUSTINQ.psb:6:24: error: PCB PROCSEQ: no DBD named CUSTIDX",
        "format-fixtures/ORDERDB.dbd:10:10: error: continuation card: text found in column 10, where continued text "
        "begins in column 16 (column 72 of the card before is not blank)",
        "format-fixtures/ORDERDB.dbd:21:73: error: continuation mark in column 73: the statement goes on, but only a "
        "mark in column 72 continues it",
        "format-fixtures/ORDERDB.dbd:41:73: error: continuation mark in column 73: the statement goes on, but only a "
        "mark in column 72 continues it",
        "format-fixtures/POLICYDB.dbd:11:22: error: LCHILD NAME: no DBD named POLIXDB",
        "format-fixtures/POLICYDB.dbd:21:22: error: LCHILD NAME: no DBD named POLIXDB2",
        "format-fixtures/POLICYDB.dbd:22:73: error: continuation mark in column 73: the statement goes on, but only "
        "a mark in column 72 continues it"])
else:
    failures.append("no expectation for library %s" % LIBRARY)

for f in failures:
    print("FAILED: %s: %s" % (LIBRARY, f))
print("%s: %d failed" % (LIBRARY, len(failures)))
sys.exit(1 if failures else 0)
