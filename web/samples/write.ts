// Writes a sample page: tools/sample NAME > page.html

import { readFileSync, writeSync } from 'node:fs';
import { SAMPLES } from './made';
import { page } from './page';

const [template, name, file = ''] = process.argv.slice(2);
const make = Object.hasOwn(SAMPLES, name ?? '') ? SAMPLES[name!] : null;
if (!template || !make) {
  writeSync(2, `usage: sample ${Object.keys(SAMPLES).join('|')} [FILE]\n`);
  process.exit(2);
}
const { writeFileSync } = await import('node:fs');
writeFileSync(file || 1, page(readFileSync(template, 'utf8'), make()));
