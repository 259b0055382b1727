#!/usr/bin/env python3
"""Scores the first readings of quillmere-cli against two references.

    score.py CLI TABLE RUNS REFERENCES [CLI OPTIONS...]

RUNS holds runs of Chinese characters of running text, one a line; they
are looked up with `CLI --single --systems 10000 --numbers --table TABLE
[CLI OPTIONS]` as they stand, so that a run keeps its context. REFERENCES
is the output of references.js for the same runs (make_text.py). A character counts where both references give the
same reading; it is right when the CLI's reading is that one. Syllables are
compared as lower-case letters with ü written v and a tone digit, 5 for the
neutral tone. Polyphonic characters are those the table gives two or more
readings (found with a second look-up, without --single).
"""
import collections
import json
import os
import re
import subprocess
import sys
import tempfile

def normalize(syllable):
    s = syllable.lower().replace("ü", "v").replace("u:", "v")
    s = re.sub(r"^([jqxy])v", r"\1u", s)
    if s and s[-1] in "05":
        s = s[:-1]
    return s if s and s[-1].isdigit() else s + "5"


def look_up(cli, table, lines, options):
    with tempfile.NamedTemporaryFile("w", encoding="utf-8",
                                     suffix=".txt") as f:
        f.writelines(line + "\n" for line in lines)
        f.flush()
        out = subprocess.run([cli, "--systems", "10000", "--numbers",
                              "--table", table, "-i", f.name] + options,
                             check=True, capture_output=True,
                             text=True).stdout
    # The block's header and rule come first.
    result = out.split("\n")[2:]
    return [line.split() for line in result[:len(lines)]]


def main():
    cli, table, runs_file, refs = sys.argv[1:5]
    options = sys.argv[5:]
    with open(runs_file, encoding="utf-8") as f:
        runs = [line.rstrip("\n") for line in f]
    with open(refs, encoding="utf-8") as f:
        references = [json.loads(line) for line in f]
    assert len(runs) == len(references)

    chars = sorted({c for r in runs for c in r})
    readings = look_up(cli, table, chars, [])
    has_reading = {c: bool(r) for c, r in zip(chars, readings)}
    polyphonic = {c: "(" in "".join(r) for c, r in zip(chars, readings)}
    ours = look_up(cli, table, runs, ["--single"] + options)

    total = right = poly_total = poly_right = unscored = broken = 0
    mistakes = collections.Counter()
    # What the references read each scored character as, for the best that
    # any fixed first reading per character could reach on this text.
    seen = collections.defaultdict(collections.Counter)
    for run, (pro, napi), got in zip(runs, references, ours):
        if len(pro) != len(run) or len(napi) != len(run) or len(got) != sum(
                has_reading[c] for c in run):
            broken += len(run)
            continue
        got = iter(got)
        for i, c in enumerate(run):
            mine = normalize(next(got)) if has_reading[c] else "-"
            a, b = normalize(pro[i]), normalize(napi[i])
            if a != b or not a[:-1].isalpha():
                unscored += 1
                continue
            total += 1
            seen[c][a] += 1
            ok = mine == a
            right += ok
            if polyphonic[c]:
                poly_total += 1
                poly_right += ok
            if not ok:
                mistakes[(c, mine, a)] += 1
    print(f"  characters scored {total} (references disagree on "
          f"{unscored}, runs not aligned {broken})")
    print(f"  first reading right: {100.0 * right / max(total, 1):.2f}% "
          f"({right}/{total})")
    best = sum(max(counter.values()) for counter in seen.values())
    print(f"  best fixed first reading per character: "
          f"{100.0 * best / max(total, 1):.2f}%")
    print(f"  polyphonic: {100.0 * poly_right / max(poly_total, 1):.2f}% "
          f"({poly_right}/{poly_total})")
    print("  most frequent misses (character, ours, references):",
          ", ".join(f"{c} {m} {a} ×{n}"
                    for (c, m, a), n in mistakes.most_common(int(os.environ.get("ACCURACY_MISSES", "12")))))


if __name__ == "__main__":
    main()
