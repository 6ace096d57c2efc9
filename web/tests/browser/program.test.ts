// Pages that ptick-view itself wrote: PTICK_VIEW is where it is. Without it there is nothing to test.

import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { VIEWS } from '../../src/model/route';
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

/** What the views say changed, other than nothing. */
const CHANGES = `[...document.querySelectorAll('.delta')]
  .filter((each) => !/^(0|0 %|as before)$/.test(each.textContent.trim()))
  .map((each) => each.closest('tr, [role=row], .tile, li, div').textContent)`;

test('runs that are compared with the same runs changed nowhere', { skip }, async () => {
  const [run1, run2] = [`${orders}/run1`, `${orders}/run2`];
  for (const words of [
    ['--baseline', run1, run1],
    ['--baseline', run1, '--baseline', run1, run1],
    ['--baseline', run1, '--baseline', run2, run2, run1],
    ['--baseline', run1, run1, run1],
  ]) {
    await withPage(pageOf(...words), {}, async ({ tab }) => {
      for (const at of [...VIEWS, 'hot?table=programs', 'commands?table=each']) {
        await goTo(tab, at);
        assert.deepEqual(await tab.evaluate(CHANGES), [], `${words.join(' ')} ${at}`);
      }
    });
  }
});

test('several runs a side: what a run has once is compared per run', { skip }, () => {
  const [run1, run2] = [`${orders}/run1`, `${orders}/run2`];
  return withPage(
    pageOf('--baseline', run1, '--baseline', run1, run2, run1),
    { size: { width: 1900, height: 900 } },
    async ({ tab }) => {
      // Half of what run 2 has more than run 1.
      assert.deepEqual(
        (await texts(tab, '.tile')).map((tile) => tile.replaceAll('\u00a0', ' ')),
        [
          'First start to last end33 h 08 min 40 s+92.28 s per run (+17.0 %)',
          'CPU, user and system10 min 09.30 s+68.44 s per run (+29.0 %)',
          'Ticks60,885+6,838.5 per run (+29.0 %)',
          'Commands118+1 per run (+1.7 %)',
          'Inputs189−5.5 per run (−5.5 %)',
        ],
      );
      assert.deepEqual(await texts(tab, '.time'), []);
      await goTo(tab, 'commands?filter=NIGHT.BATCH+NORTH&sort=command');
      assert.ok((await texts(tab, '[role=columnheader]')).includes('Before per run, s'));
      assert.deepEqual(
        (await gridRows(tab)).map((row) => row.slice(-3)),
        [
          ['–', '–', '+116.58'],
          ['1', '140.84', '+1.68'],
        ],
      );
      await goTo(tab, 'session');
      assert.match(
        await text(tab, '.facts-line'),
        /^First start to last end33 h 08 min 40 sIn commands9 min 34\.77 sSeveral runs on one line/,
      );
      assert.ok(!(await texts(tab, '[role=columnheader]')).includes('Change, s'));
    },
  );
});

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
