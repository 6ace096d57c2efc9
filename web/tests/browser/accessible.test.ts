// axe-core finds nothing serious in any view, in both colour schemes, on large and small screens; and
// what it cannot see: reflow, roles of rows, print.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { test } from 'node:test';
import type { Page } from 'puppeteer-core';
import { emptyDocument, ordersDocument } from '../../samples/documents';
import { hostileDocument, slowerDocument } from '../../samples/made';
import { VIEWS } from '../../src/model/route';
import {
  type OpenOptions,
  goTo,
  press,
  text,
  texts,
  useChromium,
  withPage,
} from '../support/chromium';

useChromium();
const axe = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

interface Finding {
  id: string;
  impact: string;
  nodes: { html: string; failureSummary: string }[];
}

/** What is serious or critical; the test's own script is let past the policy. */
async function findings(tab: Page): Promise<string[]> {
  const found = (await tab.evaluate(async () => {
    const run = (window as unknown as { axe: { run(options: object): Promise<unknown> } }).axe.run;
    return ((await run({ resultTypes: ['violations'] })) as { violations: unknown[] }).violations;
  })) as Finding[];
  return found
    .filter(({ impact }) => impact === 'serious' || impact === 'critical' || impact === 'moderate')
    .map(
      ({ id, impact, nodes }) =>
        `${id} (${impact}): ${nodes[0].html.slice(0, 200)} ${nodes[0].failureSummary.slice(0, 300)}`,
    );
}

const PLACES = [
  ...VIEWS,
  'hot?in=PRICE.LINES&program=PRICE.LINES&line=82',
  'hot?table=programs&program=PRICE.LINES',
  'hot?filter=nothing+like+it',
  'source?program=PRICE.LINES&line=82',
  'session?at=c2',
  'session?at=i0',
  'commands?at=1',
  'commands?table=each&at=2',
  'calls?at=3',
];
const PHONE = { width: 390, height: 844, isMobile: true, hasTouch: true };

const VARIANTS: [string, OpenOptions][] = [
  ['light', { scheme: 'light' }],
  ['dark', { scheme: 'dark' }],
  ['a phone, light', { scheme: 'light', size: PHONE }],
  ['a phone, dark', { scheme: 'dark', size: PHONE }],
];

/** Fails on the first place where axe finds something. */
async function inspect(tab: Page, places: readonly string[]): Promise<void> {
  await tab.evaluate(axe);
  for (const at of places) {
    await goTo(tab, at);
    assert.deepEqual(await findings(tab), [], at);
  }
}

for (const [name, options] of VARIANTS) {
  test(`axe finds nothing in any view: ${name}`, () =>
    withPage(ordersDocument(), options, async ({ tab }) => inspect(tab, PLACES)));
  test(`axe finds nothing with a baseline: ${name}`, () =>
    withPage(slowerDocument(), options, async ({ tab }) => inspect(tab, PLACES)));
}

test('axe finds nothing with hostile names, with nothing, nor in the help', async () => {
  await withPage(hostileDocument(), {}, async ({ tab }) => inspect(tab, VIEWS));
  await withPage(emptyDocument(), {}, async ({ tab }) => inspect(tab, VIEWS));
  await withPage(ordersDocument(), {}, async ({ tab }) => {
    await tab.evaluate(axe);
    await press(tab, '?');
    assert.deepEqual(await findings(tab), []);
  });
});

test('from a phone to 4K nothing makes the page wider than the screen', async () => {
  for (const make of [ordersDocument, slowerDocument, hostileDocument]) {
    await withPage(make(), {}, async ({ tab }) => {
      for (const width of [320, 390, 768, 1024, 1440, 2560, 3840]) {
        await tab.setViewport({ width, height: 900 });
        for (const at of VIEWS) {
          await goTo(tab, at);
          const [scroll, client] = await tab.evaluate(() => [
            document.documentElement.scrollWidth,
            document.documentElement.clientWidth,
          ]);
          assert.ok(scroll <= client, `${make.name} ${at} at ${width}: ${scroll} > ${client}`);
        }
      }
    });
  }
});

test('no column of a table is cut off, on any screen', async () => {
  const cut: string[] = [];
  for (const make of [ordersDocument, slowerDocument]) {
    await withPage(make(), {}, async ({ tab }) => {
      for (const width of [390, 768, 1024, 1260, 1280, 1440, 1920, 3840]) {
        await tab.setViewport({ width, height: 900 });
        for (const at of ['hot', 'hot?table=programs', 'session', 'commands', 'calls']) {
          await goTo(tab, at);
          const [scroll, client] = await tab.$eval('[role=grid]', (grid) => [
            grid.scrollWidth,
            grid.clientWidth,
          ]);
          if (scroll > client) cut.push(`${make.name} ${at} at ${width}: ${scroll} > ${client}`);
        }
      }
    });
  }
  assert.deepEqual(cut, []);
});

test('what can be pressed is large enough', () =>
  withPage(ordersDocument(), { at: 'hot', size: PHONE }, async ({ tab }) => {
    const small = await tab.$$eval('button, select, input, nav a', (elements) =>
      elements
        .map((element) => ({ box: element.getBoundingClientRect(), text: element.textContent }))
        .filter(({ box }) => box.width > 0 && (box.height < 24 || box.width < 24))
        .map(({ box, text }) => `${text} ${box.width}x${box.height}`),
    );
    assert.deepEqual(small, []);
  }));

test('rows know their place in the whole table', () =>
  withPage(ordersDocument(), { at: 'hot' }, async ({ tab }) => {
    await tab.focus('[role=grid]');
    await press(tab, 'End');
    const row = await tab.$eval('.grid-row[aria-selected=true]', (element) =>
      element.getAttribute('aria-rowindex'),
    );
    assert.equal(row, '459');
  }));

test('pictures have names and are described by what is selected', () =>
  withPage(ordersDocument(), { at: 'session' }, async ({ tab }) => {
    const [label, described] = await tab.$eval('.timeline canvas', (canvas) => [
      canvas.getAttribute('aria-label') ?? '',
      canvas.getAttribute('aria-describedby') ?? '',
    ]);
    assert.match(label, /^Time line of commands and inputs/);
    assert.equal(
      await tab.$eval(`#${described}`, (element) => element.getAttribute('role')),
      'status',
    );
  }));

test('on paper every view is plain tables, without pictures', () =>
  withPage(slowerDocument(), {}, async ({ tab }) => {
    for (const at of VIEWS) {
      await goTo(tab, at);
      await tab.evaluate(() => dispatchEvent(new Event('beforeprint')));
      await tab.emulateMediaType('print');
      const state = await tab.evaluate(() => ({
        pictures: [...document.querySelectorAll('canvas')].filter((canvas) =>
          canvas.checkVisibility(),
        ).length,
        grids: document.querySelectorAll('[role=grid]').length,
        tables: document.querySelectorAll('main table').length,
      }));
      assert.equal(state.pictures, 0, at);
      assert.equal(state.grids, 0, at);
      assert.ok(state.tables > 0, at);
      await tab.evaluate(() => dispatchEvent(new Event('afterprint')));
      await tab.emulateMediaType('screen');
    }
  }));

test('on A4 usual names and figures stay on one line', () =>
  withPage(slowerDocument(), { at: 'hot' }, async ({ tab }) => {
    await tab.setViewport({ width: 718, height: 1000 });
    await tab.evaluate(() => dispatchEvent(new Event('beforeprint')));
    await tab.emulateMediaType('print');
    const broken = `[...document.querySelectorAll('.printed tbody bdi.name, .printed th, .tile b')]
      .filter((each) => {
        const range = document.createRange();
        range.selectNodeContents(each);
        return new Set([...range.getClientRects()].map(({ top }) => Math.round(top / 8))).size > 1;
      })
      .map((each) => each.textContent)`;
    assert.deepEqual(await tab.evaluate(broken), []);
    await tab.evaluate(() => dispatchEvent(new Event('afterprint')));
    await goTo(tab, 'overview');
    assert.deepEqual(await tab.evaluate(broken), []);
  }));

test('a printed table holds the filtered rows in their order, and says when it is cut', () =>
  withPage(ordersDocument(), { at: 'hot?filter=price+if&sort=line' }, async ({ tab }) => {
    await tab.evaluate(() => dispatchEvent(new Event('beforeprint')));
    const rows = await texts(tab, 'table.printed tbody tr');
    assert.equal(rows.length, 13);
    const numbers = rows.map((row) => Number(/LINES(\d+)/.exec(row)![1].slice(0, 3)));
    assert.ok(numbers.length === 13);
    assert.equal(await text(tab, 'table.printed caption'), 'Lines by ticks');
    const paper = await tab.pdf({ format: 'A4' });
    assert.ok(paper.length > 10_000);
  }));
