// Pages that ptick-view itself wrote: PTICK_VIEW is where it is. Without it there is nothing to test.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { gridRows, goTo, text, texts, useChromium, withPage } from '../support/chromium';

useChromium();
const program = process.env.PTICK_VIEW;
const skip = program ? false : 'PTICK_VIEW is not set';
const orders = '../examples/orders';

function pageOf(...words: string[]): string {
  return execFileSync(program!, words, { encoding: 'utf8', maxBuffer: 1 << 30 });
}

test(
  'a page of the sample shows its hottest line, its source and its slowest command',
  { skip },
  () =>
    withPage(
      pageOf('-f', `${orders}/src`, '-f', `${orders}/lib`, `${orders}/run1`),
      {},
      async ({ tab }) => {
        assert.ok((await texts(tab, 'main')).join(' ').includes('ALLOC.STOCK 61'));
        await goTo(tab, 'hot');
        const [hottest] = await gridRows(tab);
        assert.deepEqual(hottest.slice(0, 3), ['ALLOC.STOCK', '61', '2,135']);
        await goTo(tab, 'commands');
        assert.ok((await texts(tab, 'main')).join(' ').includes('NIGHT.BATCH NORTH TRIAL'));
      },
    ),
);

test('a page with a baseline shows what changed', { skip }, () =>
  withPage(
    pageOf(`--baseline=${orders}/run1`, `${orders}/run2`),
    { at: 'hot' },
    async ({ tab }) => {
      const rows = await gridRows(tab);
      assert.ok(rows[0].join(' ').includes('+948'), rows[0].join(' '));
      assert.ok((await text(tab, 'header')).includes('compared with'));
    },
  ),
);

test('nothing in a profile runs, whatever its names are', { skip }, () => {
  const folder = mkdtempSync(join(tmpdir(), 'ptick-view-'));
  try {
    const names = [
      '</script><script>alert(1)</script>',
      '<!--<script>',
      '__proto__',
      '\u202eabc',
      'a\u0001b',
    ];
    const lines = names.map((name, n) => `PROFILE:trace\t${name}\t${n}\t${n + 1}\n`);
    writeFileSync(
      join(folder, 'run'),
      Buffer.concat([
        Buffer.from(lines.join('')),
        Buffer.from('PROFILE:trace\t\xe9\xff\t1\t9\n', 'latin1'),
      ]),
    );
    return withPage(pageOf(join(folder, 'run')), { at: 'hot' }, async ({ tab }) => {
      assert.equal((await gridRows(tab)).length, names.length + 1);
    });
  } finally {
    rmSync(folder, { recursive: true });
  }
});
