#!/usr/bin/env python3
"""How often quillmere-cli follows the chosen reading standard where the
mainland and Taiwan read a word differently.

    standards.py CLI TABLE RUNS [CLI OPTIONS...]

RUNS holds runs of Traditional Chinese characters of running text, one a
line (make_text.py). The words that both libchewing (Taiwan) and CC-CEDICT
(mainland) list are found in each run by longest match; inside them, the
characters that the two read differently (the neutral tone and the tone
changes of 一 and 不 aside) are scored. Each run is looked up as it stands
with `CLI --context --single --systems 10000 --numbers --table TABLE
--standard S`; under
the Taiwan standard a character counts as right when it reads as libchewing
has it, under the mainland standard when it reads as CC-CEDICT has it.
"""
import os
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "tools"))

import eval_phrases  # noqa: E402
import phrase_sources  # noqa: E402
import score  # noqa: E402


def main():
    cli, table, runs_file = sys.argv[1:4]
    options = sys.argv[4:]
    with open(runs_file, encoding="utf-8") as f:
        runs = [line.rstrip("\n") for line in f]
    pairs, words = eval_phrases.standard_pairs(phrase_sources.Syllables())
    found = eval_phrases.differing(runs, pairs, words)
    to_pinyin = eval_phrases.zhuyin_to_pinyin()
    for standard in ("taiwan", "mainland"):
        ours = score.look_up(cli, table, runs, [
            "--context", "--single", "--standard", standard] + options)
        total = right = 0
        for r, i, mainland, taiwan in found:
            if len(ours[r]) != len(runs[r]):
                continue
            mine = score.normalize(ours[r][i])
            want = ({to_pinyin(t) for t in taiwan} if standard == "taiwan"
                    else {to_pinyin(mainland)})
            total += 1
            right += mine in want
        print(f"  --standard {standard}: {100.0 * right / max(total, 1):.2f}% "
              f"({right}/{total}) follow the {standard} reading")


if __name__ == "__main__":
    main()
