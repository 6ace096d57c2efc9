// Hot spots by pointer and by keys: filter, order, selection, walking into the picture.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Page } from 'puppeteer-core';
import { ordersDocument } from '../../samples/documents';
import { hostileDocument } from '../../samples/made';
import {
  address,
  clickAt,
  clickText,
  gridRows,
  press,
  settled,
  text,
  texts,
  useChromium,
  withPage,
} from '../support/chromium';

useChromium();
const orders = ordersDocument();

test('the filter answers as one types, fades the picture, and Escape ends it', () =>
  withPage(orders, { at: 'hot' }, async ({ tab }) => {
    await tab.focus('[data-filter]');
    await tab.keyboard.type('price if');
    await settled(tab);
    const rows = await gridRows(tab);
    assert.ok(rows.length > 5);
    assert.ok(rows.every((row) => row[0] === 'PRICE.LINES' && /if/i.test(row[4])));
    assert.match(
      await text(tab, '[role=status].tally'),
      /^13 of 458 lines · 5\.87 % of all ticks$/,
    );
    assert.equal(await address(tab), '#hot?filter=price+if');
    await press(tab, 'Escape');
    assert.equal(await text(tab, '[role=status].tally'), '458 lines · 100.00 % of all ticks');
    await tab.keyboard.type('nothing like this');
    await settled(tab);
    assert.equal(await text(tab, '.grid-empty'), 'No line matches the filter.');
  }));

test('heads sort, up and down, and say so', () =>
  withPage(orders, { at: 'hot' }, async ({ tab }) => {
    const sorted = () =>
      tab.$$eval('[aria-sort]', (heads) => heads.map((head) => head.getAttribute('aria-sort')));
    assert.deepEqual(await sorted(), ['none', 'none', 'descending', 'none', 'none']);
    await clickText(tab, '[role=columnheader] button', 'Program');
    assert.deepEqual(await sorted(), ['ascending', 'none', 'none', 'none', 'none']);
    assert.equal((await gridRows(tab))[0][0], 'ALLOC.STOCK');
    await clickText(tab, '[role=columnheader] button', 'Program');
    assert.equal((await gridRows(tab))[0][0], 'SPOOL.PAGE');
    assert.equal(await address(tab), '#hot?sort=-program');
  }));

test('a table is walked by keys; the selection shows in full and opens the source', () =>
  withPage(orders, { at: 'hot' }, async ({ tab }) => {
    await tab.focus('[role=grid]');
    await press(tab, 'ArrowDown', 'ArrowDown', 'ArrowDown');
    const active = () =>
      tab.$eval(
        '[role=grid]',
        (grid) =>
          document.getElementById(grid.getAttribute('aria-activedescendant') ?? '')?.textContent,
      );
    assert.match((await active())!, /^PRICE\.LINES82/);
    assert.match(
      await text(tab, '.detail'),
      /^PRICE\.LINES line 82READ CAMP .*1,683 ticks, 7\.13 % of all, 35\.61 % of the program/,
    );
    assert.equal(await address(tab), '#hot?program=PRICE.LINES&line=82');
    await press(tab, 'End');
    assert.match(await address(tab), /^#hot\?program=/);
    const atEnd = await tab.$eval(
      '[role=grid]',
      (grid) => grid.scrollTop + grid.clientHeight >= grid.scrollHeight - 40,
    );
    assert.ok(atEnd);
    await press(tab, 'PageUp', 'Home', 'Enter');
    assert.equal(await address(tab), '#source?program=ALLOC.STOCK&line=61');
  }));

test('the table of programs leads into a program', () =>
  withPage(orders, { at: 'hot' }, async ({ tab }) => {
    await clickText(tab, '.choice button', 'Programs');
    assert.deepEqual(
      (await gridRows(tab))[0],
      ['NIGHT.BATCH', '45', '4,899', '20.75 %'].map(String),
    );
    await tab.focus('[role=grid]');
    await press(tab, 'ArrowDown', 'Enter');
    assert.match(await address(tab), /in=NIGHT\.BATCH/);
    assert.equal(await text(tab, '[role=status].tally'), '45 of 458 lines · 20.75 % of all ticks');
  }));

test('the picture is walked into by pointer, and out again', () =>
  withPage(orders, { at: 'hot', reducedMotion: false }, async ({ tab }) => {
    await clickAt(tab, '.treemap canvas', 30, 60);
    assert.equal(await text(tab, '.crumbs [aria-current]'), 'NIGHT.BATCH');
    await new Promise((done) => setTimeout(done, 400));
    await clickAt(tab, '.treemap canvas', 30, 60);
    assert.match(await text(tab, '.detail'), /^NIGHT\.BATCH line 48/);
    await clickText(tab, '.crumbs button', 'All programs');
    assert.equal(await text(tab, '.crumbs [aria-current]'), 'All programs');
    await tab.goBack();
    await settled(tab);
    assert.equal(await text(tab, '.crumbs [aria-current]'), 'NIGHT.BATCH');
  }));

test('the picture tells what is under the pointer', () =>
  withPage(orders, { at: 'hot' }, async ({ tab }) => {
    const box = (await (await tab.$('.treemap canvas'))!.boundingBox())!;
    await tab.mouse.move(box.x + 30, box.y + 60);
    await settled(tab);
    assert.match(
      await text(tab, '.tip'),
      /^NIGHT\.BATCH line 481,870 ticks · 7\.92 % of allREAD ORD FROM/,
    );
    await tab.mouse.move(5, 5);
    await settled(tab);
    assert.deepEqual(await texts(tab, '.tip'), []);
  }));

test('the picture is walked by keys and says where one is', () =>
  withPage(orders, { at: 'hot' }, async ({ tab }) => {
    const says = () => text(tab, '#treemap-status');
    await tab.focus('.treemap canvas');
    await press(tab, 'Home');
    assert.equal(await says(), 'NIGHT.BATCH, 45 lines: 4,899 ticks, 20.75 % of all');
    await press(tab, 'ArrowDown');
    assert.match(await says(), /^PRICE\.LINES, /);
    await press(tab, 'Enter', 'Home');
    assert.equal(await says(), 'PRICE.LINES line 82: 1,683 ticks, 7.13 % of all');
    assert.match(await address(tab), /in=PRICE\.LINES/);
    await press(tab, 'Escape');
    assert.equal(await text(tab, '.crumbs [aria-current]'), 'All programs');
    await press(tab, 'Enter', 'Home', 'Enter');
    assert.equal(await address(tab), '#source?program=PRICE.LINES&line=82');
  }));

test('lines that are no numbers are selected like others', () =>
  withPage(hostileDocument(), { at: 'hot?in=constructor&sort=line' }, async ({ tab }) => {
    await tab.focus('[role=grid]');
    await press(tab, 'End');
    assert.match(await text(tab, '.detail'), /^constructor line \(empty\)0\.25 ticks/);
    assert.match(await address(tab), /line=~$/);
    await tab.reload();
    assert.match(await text(tab, '.detail'), /^constructor line \(empty\)/);
  }));

test('a row in sight that is clicked does not move', () =>
  withPage(orders, { at: 'hot' }, async ({ tab }) => {
    await clickAt(tab, '[role=grid]', 60, 100);
    assert.match(await text(tab, '.detail'), /^PRICE\.LINES line 82/);
    assert.equal(await tab.$eval('[role=grid]', (grid) => grid.scrollTop), 0);
  }));

test('a row that is clicked at the edge stays in sight when its detail opens below', () =>
  withPage(orders, { at: 'hot' }, async ({ tab }) => {
    const height = await tab.$eval('[role=grid]', (grid) => grid.clientHeight);
    await clickAt(tab, '[role=grid]', 60, height - 20);
    await tab.waitForSelector('.detail');
    await settled(tab);
    const lowest = await edges(tab);
    assert.ok(lowest.above > 0 && lowest.below >= -1 && lowest.below < 40, JSON.stringify(lowest));
    await tab.setViewport({ width: 1280, height: 700 });
    await settled(tab);
    const lower = await edges(tab);
    assert.ok(lower.above > 0 && lower.below >= -1, JSON.stringify(lower));
  }));

/** Pixels between the selected row and the edges of its table. */
function edges(tab: Page): Promise<{ above: number; below: number }> {
  return tab.$eval('.grid-row[aria-selected=true]', (row) => {
    const grid = row.closest('[role=grid]')!.getBoundingClientRect();
    const box = row.getBoundingClientRect();
    return { above: box.top - grid.top, below: grid.bottom - box.bottom };
  });
}
