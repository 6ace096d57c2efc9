// With a baseline every view shows the change; what is within noise is greyed and marked.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import { slowerDocument } from '../../samples/made';
import {
  clickText,
  gridRows,
  press,
  text,
  texts,
  useChromium,
  withPage,
} from '../support/chromium';

useChromium();
const slower = slowerDocument();
/** Where tables have room for all columns. */
const WIDE = { width: 1900, height: 900 };

test('overview: what changed, first of all', () =>
  withPage(slower, {}, async ({ tab }) => {
    assert.match(await text(tab, '.where'), /compared with examples\/orders\/run1$/);
    const tiles = (await texts(tab, '.tile')).map((tile) => tile.replaceAll('\u00a0', ' '));
    assert.equal(tiles[2], 'Ticks25,454+1,850 (+7.8 %)');
    assert.equal(tiles[3], 'Commands58as before');
    assert.match(
      await text(tab, '.changes .tally'),
      /^8 lines changed beyond noise; 366 within noise are marked ~ and greyed\.$/,
    );
    const [programs, lines, commands] = await texts(tab, '.changes .card');
    assert.match(
      programs,
      /^Programs, ticksPRICE\.LINES\+2,459before 4,726NIGHT\.BATCH−503before 4,899/,
    );
    assert.match(
      lines,
      /^Lines, ticksPRICE\.LINES 82READ CAMP .*\+1,067NIGHT\.BATCH 48READ ORD .*−582/,
    );
    assert.match(commands, /^Commands, elapsed secondsSORT CUSTOMERS WITH AREA = 12 BY NAME\+3\.6/);
    await clickText(tab, 'a', 'All lines by change');
    assert.equal((await gridRows(tab))[0][1], '82');
  }));

test('hot spots: before, change and noise', () =>
  withPage(slower, { at: 'hot', size: WIDE }, async ({ tab }) => {
    const rows = await gridRows(tab);
    assert.deepEqual(rows[0].slice(0, 7), [
      'PRICE.LINES',
      '82',
      '2,750',
      '10.80 %',
      '1,683',
      '+1,067',
      '+63.4 %',
    ]);
    assert.deepEqual(rows[1].slice(0, 6), [
      'ALLOC.STOCK',
      '61',
      '2,092',
      '8.21 %',
      '2,135',
      '~ −43',
    ]);
    const look = await tab.$$eval('.grid-body .grid-row', (all) =>
      all
        .slice(0, 2)
        .map((row) => [row.className.replace('grid-row', '').trim(), getComputedStyle(row).color]),
    );
    assert.deepEqual(
      look.map(([kind]) => kind),
      ['slower', 'noise'],
    );
    assert.notEqual(look[0][1], look[1][1]);
    await tab.focus('[role=grid]');
    await press(tab, 'ArrowDown');
    assert.match(
      await text(tab, '.detail'),
      /\+1,067 ticks \(\+63\.4 %\), before 1,683, beyond noise \(p 3\.041e-58, q 1\.137e-55\)/,
    );
    await press(tab, 'ArrowDown');
    assert.match(
      await text(tab, '.detail'),
      /−43 ticks \(−2\.0 %\), before 2,135, within noise \(p 0\.\d+, q [01][.\d]*\)/,
    );
  }));

test('hot spots: lines that only one side has', () =>
  withPage(
    ordersDocument({ run: 'run2', baseline: 'run1' }),
    { at: 'hot?sort=-old', size: WIDE },
    async ({ tab }) => {
      const rows = await gridRows(tab);
      assert.deepEqual(rows[0].slice(0, 2), ['ALLOC.STOCK', '61']);
      await clickText(tab, '[role=columnheader] button', 'Change %');
      const relative = (await gridRows(tab)).map((row) => row[6]);
      assert.equal(relative[0], 'new');
    },
  ));

test('source: the change beside each line', () =>
  withPage(slower, { at: 'source?program=PRICE.LINES' }, async ({ tab }) => {
    const row = (await gridRows(tab)).find((cells) => cells[3] === '82')!;
    assert.deepEqual(row.slice(0, 4), ['2,750', '10.80 %', '+1,067', '82']);
  }));

test('session: both sessions on the line, and commands against their pairs', () =>
  withPage(slower, { at: 'session?filter=SORT' }, async ({ tab }) => {
    assert.match(
      await text(tab, '.facts-line'),
      /^Elapsed9 min 20\.57 s \+18\.5 sIn commands.*\+3\.54 s/,
    );
    const rows = await gridRows(tab);
    assert.deepEqual(
      rows.map((row) => row[3]),
      ['+1.8', '+1.8'],
    );
  }));

test('commands: times and seconds before', () =>
  withPage(slower, { at: 'commands?filter=sort', size: WIDE }, async ({ tab }) => {
    const [row] = await gridRows(tab);
    assert.deepEqual(row, [
      'SORT CUSTOMERS WITH AREA = 12 BY NAME',
      '2',
      '10.97',
      '5.87',
      '4.04',
      '684',
      '2',
      '7.37',
      '+3.6',
    ]);
    await clickText(tab, '.choice button', 'One by one');
    assert.deepEqual(
      (await gridRows(tab)).map((cells) => cells[2]),
      ['+1.8', '+1.8'],
    );
  }));

test('calls and resources: counts before', () =>
  withPage(ordersDocument({ run: 'run2', baseline: 'run1' }), { at: 'calls' }, async ({ tab }) => {
    const row = (await gridRows(tab)).find(
      (cells) => cells[0] === 'PRICE.LINES' && cells[1] === 'CALC.TAX',
    )!;
    assert.equal(row[3], '9,431');
    assert.match(row[4], /^\+[\d,]+$/);
    await clickText(tab, 'nav a', 'Resources');
    const facts = await texts(tab, '.card tbody tr');
    assert.ok(
      facts.some((fact) =>
        /^READ331,870 statements\+183,657 \(\+124 %\), before 148,213$/.test(fact),
      ),
      facts.join('\n'),
    );
  }));

test('several runs a side: means per run, and so it says', () => {
  const runs = { ...slower, runs: 3, baseline: { ...slower.baseline!, runs: 4 } };
  return withPage(runs, { at: 'hot', size: WIDE }, async ({ tab }) => {
    assert.match(
      await text(tab, '.where'),
      /\(slower\) \(3 runs merged\).*run1 \(4 runs merged\)$/,
    );
    const heads = await texts(tab, '[role=columnheader]');
    assert.ok(
      heads.includes('Before per run') && heads.includes('Change per run'),
      heads.join(' '),
    );
  });
});
