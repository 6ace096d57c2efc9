// What each view shows of the sample profile.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import { clickText, gridRows, text, texts, useChromium, withPage } from '../support/chromium';

useChromium();
const orders = ordersDocument();

test('the top says what ran, when, and whose source the page holds', () =>
  withPage(orders, {}, async ({ tab }) => {
    assert.equal(await text(tab, '.run .command'), 'ORDER.DESK NORTH 4 -JP');
    assert.equal(await text(tab, '.where'), 'profile examples/orders/run19 Mar 2026 08:02:11 UTC');
    assert.equal(
      await text(tab, '.notices summary'),
      'This page holds the source text of 11 programs',
    );
    const listed = await texts(tab, '.notices li');
    assert.equal(listed.length, 11);
    assert.ok(listed.includes('PRICE.LINES examples/orders/src/PRICE.LINES'));
    assert.equal(await tab.title(), 'Overview – ORDER.DESK – ptick');
  }));

test('a page without sources does not say that it has some', () =>
  withPage(ordersDocument({ sources: false }), {}, async ({ tab }) => {
    assert.deepEqual(await texts(tab, '.notices *'), []);
  }));

test('what is left out is said on top', () =>
  withPage(
    { ...orders, left_out: [{ what: 'lines', count: 1204, of: 1662, ticks: 236 }] },
    {},
    async ({ tab }) => {
      assert.equal(
        await text(tab, '.warning'),
        'Left out of this page: 1,204 of 1,662 lines, 236 ticks (0.99 % of all)',
      );
    },
  ));

test('overview: totals, computing and waiting, hottest and slowest', () =>
  withPage(orders, {}, async ({ tab }) => {
    assert.deepEqual(
      (await texts(tab, '.tile')).map((tile) => tile.replaceAll('\u00a0', ' ')),
      [
        'Elapsed9 min 02.07 s',
        'CPU, user and system3 min 56.21 s',
        'Ticks23,604',
        'Commands58',
        'Inputs100',
      ],
    );
    assert.deepEqual(await texts(tab, '.stack-legend b'), [
      'Computing',
      'System',
      'Typing',
      'Waiting',
    ]);
    assert.match(
      await text(tab, '.stack-legend li:last-child'),
      /Waiting 3 min 49\.31 s · 42\.3 %/,
    );
    const [lines, programs, commands] = await texts(tab, '.card .list tbody tr:first-child');
    assert.equal(lines, 'ALLOC.STOCK 61READ LOCK STK FROM F.STK, STK.ID LOCKED2,1359.04 %');
    assert.equal(programs, 'NIGHT.BATCH4,89920.75 %');
    assert.equal(commands, 'NIGHT.BATCH NORTH TRIAL1140.84');
    assert.ok(
      (await texts(tab, '.card .links')).includes('All 458 lines (these 8: 43.51 % of all ticks)'),
    );
  }));

test('overview: the hottest line is one click from its source', () =>
  withPage(orders, {}, async ({ tab }) => {
    await clickText(tab, 'a', 'ALLOC.STOCK 61');
    assert.equal(await text(tab, 'h1'), 'Source');
    const selected = await text(tab, '.grid-row[aria-selected=true]');
    assert.match(selected, /^2,1359\.04 %61 READ LOCK STK/);
    assert.equal(await tab.evaluate(() => document.activeElement?.tagName), 'H1');
  }));

test('hot spots: lines by ticks with shares and text', () =>
  withPage(orders, { at: 'hot' }, async ({ tab }) => {
    const rows = await gridRows(tab);
    assert.deepEqual(rows[0], [
      'ALLOC.STOCK',
      '61',
      '2,135',
      '9.04 %',
      'READ LOCK STK FROM F.STK, STK.ID LOCKED',
    ]);
    assert.equal(await text(tab, '[role=status].tally'), '458 lines · 100.00 % of all ticks');
    assert.equal(
      await tab.$eval('[role=grid]', (grid) => grid.getAttribute('aria-rowcount')),
      '459',
    );
    assert.ok(rows.length < 60, 'only rows in sight are elements');
  }));

test('source: ticks beside the text, opened at the hottest line', () =>
  withPage(orders, { at: 'source?program=PRICE.LINES' }, async ({ tab }) => {
    const rows = await gridRows(tab);
    const hot = rows.find((row) => row[2] === '82')!;
    assert.deepEqual(hot, [
      '1,683',
      '7.13 %',
      '82',
      'READ CAMP FROM F.CAMP, ACTIVE[A] ELSE CAMP = ""',
    ]);
    assert.match(
      await text(tab, '.tally'),
      /^examples\/orders\/src\/PRICE\.LINES · 112 lines · 4,726 ticks, 20\.02 % of all · \d+ hot lines hold/,
    );
  }));

test('source: a program without text shows its lines with ticks', () =>
  withPage(orders, { at: 'source?program=FORM.PAINT' }, async ({ tab }) => {
    assert.match(
      await text(tab, '.tally'),
      /^No source found for this program: its lines with ticks/,
    );
    const rows = await gridRows(tab);
    assert.ok(rows.every((row) => row.length === 3 && row[0] !== ''));
  }));

test('session: events in order with pauses, and what they came to', () =>
  withPage(orders, { at: 'session' }, async ({ tab }) => {
    assert.equal(
      await text(tab, '.facts-line'),
      'Elapsed9 min 02.07 sIn commands2 min 49.27 sTyping1 min 16.55 sPauses before inputs4 min 34.61 s',
    );
    const rows = await gridRows(tab);
    assert.deepEqual(rows[0], ['0.84', '0.84', '0.04', '–', '–', 'command', 'TERM DESK 4']);
    assert.deepEqual(rows[2], ['3.77', '2.82', '0.09', '–', '–', 'input', '3']);
    assert.equal(await text(tab, '[role=status].tally'), '158 events');
  }));

test('commands: summed and one by one', () =>
  withPage(orders, { at: 'commands' }, async ({ tab }) => {
    const rows = await gridRows(tab);
    assert.deepEqual(rows[0], [
      'NIGHT.BATCH NORTH TRIAL',
      '1',
      '140.84',
      '140.84',
      '121.12',
      '12,112',
    ]);
    assert.equal(await text(tab, '[role=status].tally'), '17 commands, performed 58 times');
    await clickText(tab, '.choice button', 'One by one');
    const each = await gridRows(tab);
    assert.deepEqual(each[1], [
      '3.88',
      '5.94',
      'qry',
      '356',
      '2.61',
      '0.95',
      'SELECT ORDERS WITH STATUS = OPEN BY CUST',
    ]);
  }));

test('calls: callers and callees of a program, and all pairs', () =>
  withPage(orders, { at: 'calls?program=DATE.WINDOW' }, async ({ tab }) => {
    assert.match(await text(tab, '.middle .card'), /^DATE\.WINDOWcalled 5,820 times/);
    assert.deepEqual(
      await texts(tab, '.call-list:first-child li'),
      [
        'PRICE.LINES3,144',
        'NIGHT.BATCH1,846',
        'PRINT.ORDERS821',
        'ORDER.ENTRY7',
        'POST.INVOICE2',
      ].map((item) => item.replace(' ', '')),
    );
    await clickText(tab, '.call-list a', 'NIGHT.BATCH');
    assert.match(await text(tab, '.middle .card'), /^NIGHT\.BATCH/);
    assert.deepEqual((await gridRows(tab))[0], ['PRICE.LINES', 'CALC.TAX', '9,431']);
  }));

test('resources: user ticks, counters with units, shared objects', () =>
  withPage(orders, { at: 'resources' }, async ({ tab }) => {
    const cards = await texts(tab, '.card h2');
    assert.deepEqual(cards, [
      'User ticks',
      'Memory',
      'Page faults and block I/O',
      'Statements',
      'Index and trigger events',
      'Messages and switches',
      'Keyboard',
    ]);
    const rows = await texts(tab, '.card tbody tr');
    assert.ok(rows.includes('User tick 15,55323.53 %'), rows.join('\n'));
    assert.ok(rows.includes('Maximum resident set size11,342 pages46,456,832 bytes'));
    assert.ok(rows.includes('READ148,213 statements'));
    const objects = await gridRows(tab);
    assert.equal(objects.length, 8);
    assert.deepEqual(objects[0], ['1', '/apps/orders/so/desk.so']);
  }));
