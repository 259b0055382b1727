// Reads runs of Chinese characters, one a line, and writes for each the
// readings of pinyin-pro and of @napi-rs/pinyin (with its segmentation),
// numbered pinyin, one syllable per character, as
// PINYIN_PRO<TAB>NAPI_RS<LF>. The accuracy check compares with both.
import { createRequire } from 'module';
import { readFileSync } from 'fs';
const require = createRequire(process.argv[2] + '/');
const { pinyin: pro } = require('pinyin-pro');
const napi = require('@napi-rs/pinyin');

const lines = readFileSync(0, 'utf8').split('\n');
const out = [];
for (const line of lines) {
  if (!line) { out.push('\t'); continue; }
  const a = pro(line, { type: 'array', toneType: 'num', v: true });
  const b = napi.pinyin(line, { style: 3, segment: true, segmenter: 'phrase' })
    .map((s) => (Array.isArray(s) ? s[0] : s));
  out.push(a.join(' ') + '\t' + b.join(' '));
}
process.stdout.write(out.join('\n') + '\n');
