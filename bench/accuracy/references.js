// Prints the readings that pinyin-pro and @napi-rs/pinyin give each
// character of a text: one JSON line per input line, [pinyinPro, napi],
// each an array of numbered syllables as the package writes them.
//
//   node references.js FILE
const fs = require('fs');
const { pinyin } = require('pinyin-pro');
const napi = require('@napi-rs/pinyin');

const lines = fs.readFileSync(process.argv[2], 'utf8').split('\n');
if (lines[lines.length - 1] === '') lines.pop();
const out = [];
for (const line of lines) {
  // Citation tones: no tone changes of 一 and 不 in context.
  const pro = pinyin(line, { toneType: 'num', type: 'array', toneSandhi: false, v: true });
  // Readings of words in context, not one reading per character.
  const other = napi.pinyin(line, {
    style: napi.PINYIN_STYLE.WithToneNumEnd,
    segment: true,
    segmenter: 'phrase',
  });
  out.push(JSON.stringify([pro, other]));
}
process.stdout.write(out.join('\n') + '\n');
