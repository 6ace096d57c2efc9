// Large profiles open and answer. Times are measured and told; the marks are loose, since machines
// differ and others work beside.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { largeDocument, oneSidedDocument } from '../../samples/made';
import type { ViewDocument } from '../../src/data';
import { VIEWS } from '../../src/model/route';
import {
  type Opened,
  goTo,
  gridRows,
  press,
  settled,
  text,
  useChromium,
  withPage,
} from '../support/chromium';

useChromium();

/** Milliseconds until the page has drawn what typing `filter` leads to. */
async function filterTime({ tab }: Opened, filter: string): Promise<number> {
  return tab.$eval(
    '[data-filter]',
    (element, value) => {
      const input = element as HTMLInputElement;
      const start = performance.now();
      input.value = value;
      input.dispatchEvent(new Event('input', { bubbles: true }));
      return new Promise<number>((done) =>
        requestAnimationFrame(() => setTimeout(() => done(performance.now() - start))),
      );
    },
    filter,
  );
}

for (const [size, mark] of [
  [100_000, 1],
  [1_000_000, 3],
] as const) {
  const document: ViewDocument = largeDocument(size, [], size > 100_000 ? 0 : 20);

  test(`${size} lines open in every view`, async (context) => {
    for (const at of VIEWS) {
      await withPage(document, { at }, async ({ opened }) => {
        context.diagnostic(`${at}: open after ${opened.toFixed(0)} ms`);
        assert.ok(opened < 5000 * mark, `${at}: ${opened}`);
      });
    }
  });

  test(`${size} lines filter, sort and scroll`, (context) =>
    withPage(document, { at: 'hot' }, async (opened) => {
      const { tab } = opened;
      for (const filter of ['0', '00', '001', 'module 12', '']) {
        const time = await filterTime(opened, filter);
        context.diagnostic(`filter "${filter}": ${time.toFixed(0)} ms`);
        assert.ok(time < 1000 * mark, `${filter}: ${time}`);
      }
      await tab.focus('[role=grid]');
      await press(tab, 'End');
      const last = await text(tab, '.grid-row[aria-selected=true]');
      assert.match(last, /^MODULE\.\d+/);
      const rows = await tab.$$eval('.grid-body [role=row]', (all) =>
        all.map((row) => Number(row.getAttribute('aria-rowindex'))),
      );
      assert.equal(Math.max(...rows), size + 1);
      // The last row is in sight, although browsers end boxes of this height.
      const inSight = await tab.$eval('.grid-row[aria-selected=true]', (row) => {
        const box = row.getBoundingClientRect();
        const grid = row.closest('[role=grid]')!.getBoundingClientRect();
        return box.top >= grid.top && box.bottom <= grid.bottom + 1;
      });
      assert.ok(inSight);
      await tab.$eval('[role=grid]', (grid) => (grid.scrollTop = grid.scrollHeight / 2));
      await settled(tab);
      const middle = (await tab.$$eval('.grid-body [role=row]', (all) =>
        Number(all[0].getAttribute('aria-rowindex')),
      ))!;
      assert.ok(Math.abs(middle / size - 0.5) < 0.01, `row ${middle} in the middle`);
      assert.ok((await gridRows(tab)).length < 80);
    }));
}

for (const shape of ['one program', 'many programs'] as const) {
  test(`a million lines of ${shape} open in every view that shows them`, (context) =>
    withPage(oneSidedDocument(1_000_000, shape), {}, async ({ tab }) => {
      for (const at of ['overview', 'hot', 'hot?table=programs', 'source']) {
        const start = performance.now();
        await goTo(tab, at);
        const time = performance.now() - start;
        context.diagnostic(`${shape}, ${at}: ${time.toFixed(0)} ms`);
        assert.ok(time < 15_000, `${at}: ${time}`);
      }
      await tab.focus('[role=grid]');
      const start = performance.now();
      await press(tab, 'PageDown', 'PageDown', 'PageDown', 'PageDown');
      const time = performance.now() - start;
      context.diagnostic(`${shape}, four pages down: ${time.toFixed(0)} ms`);
      assert.ok(time < 5000, `scrolling: ${time}`);
    }));
}

test('a page that lacks lines says how many and how much', () =>
  withPage(
    largeDocument(20_000, [{ what: 'lines', count: 234_567, of: 254_567, ticks: 4_321 }]),
    {},
    async ({ tab }) => {
      assert.match(
        await text(tab, '.warning'),
        /^Left out of this page: 234,567 of 254,567 lines, 4,321 ticks \(\d+\.\d\d % of all\)$/,
      );
    },
  ));
