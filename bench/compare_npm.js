// The converters from the npm registry that bench/compare measures against:
// pinyin-pro (tone-marked Hanyu Pinyin), @napi-rs/pinyin (tone-marked Hanyu
// Pinyin, plain or with its own word segmentation) and opencc-js (Simplified
// to Traditional, cn -> tw). Only the conversion is timed, the best of RUNS, in
// processor time (the process's, garbage collector threads included), as the
// C++ drivers do.
//
//   node bench/compare_npm.js MODULES_DIR TOOL FILE [RUNS]
//   TOOL: pinyin-pro, napi, napi-segment or opencc
//   -> seconds=1.234 result_chars=5678901
//   node bench/compare_npm.js MODULES_DIR TOOL FILE once
//   -> the converted text, for timing the whole process from outside
'use strict';
const fs = require('fs');
const path = require('path');
const { createRequire } = require('module');

const [modulesDir, tool, file, runsArg] = process.argv.slice(2);
const load = createRequire(path.join(path.resolve(modulesDir), 'package.json'));
const text = fs.readFileSync(file, 'utf8');
const runs = Math.max(1, parseInt(runsArg, 10) || 3);

let convert;
let write = (r) => r;
if (tool === 'pinyin-pro') {
  const { pinyin } = load('pinyin-pro');
  convert = (t) => pinyin(t, { toneType: 'symbol', type: 'string' });
} else if (tool === 'napi' || tool === 'napi-segment') {
  const napi = load('@napi-rs/pinyin');
  const options = { style: napi.PINYIN_STYLE.WithTone };
  if (tool === 'napi-segment') {
    options.segment = true;
    options.segmenter = 'phrase';
  }
  // The call alone is timed; its array of syllables is joined only to be
  // written out.
  convert = (t) => napi.pinyin(t, options);
  write = (r) => r.flat().join(' ');
} else if (tool === 'opencc') {
  const OpenCC = load('opencc-js');
  convert = OpenCC.Converter({ from: 'cn', to: 'tw' });
} else {
  console.error('unknown tool ' + tool);
  process.exit(2);
}

if (runsArg === 'once') {
  process.stdout.write(write(convert(text)));
  return;
}

let best = Infinity;
let result = '';
for (let run = 0; run < runs; ++run) {
  const start = process.cpuUsage();
  result = convert(text);
  const used = process.cpuUsage(start);
  const took = (used.user + used.system) / 1e6;
  best = Math.min(best, took);
}
console.log(`seconds=${best.toFixed(6)} result_chars=${result.length}`);
