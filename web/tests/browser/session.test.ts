// Session and commands by pointer and by keys: zoom, pan, events, from sums to parts.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import {
  address,
  clickText,
  gridRows,
  press,
  settled,
  text,
  useChromium,
  withPage,
} from '../support/chromium';

useChromium();
const orders = ordersDocument();

test('session: zoom and pan by keys, buttons, wheel and drag', () =>
  withPage(orders, { at: 'session' }, async ({ tab }) => {
    const window = async (): Promise<[number, number]> => {
      const found = /from=([\d.]+)&to=([\d.]+)/.exec(await address(tab));
      return found ? [Number(found[1]), Number(found[2])] : [0, 542.07];
    };
    await tab.focus('.timeline canvas');
    await press(tab, '+', '+');
    const [from, to] = await window();
    assert.equal(((to - from) / 542.07).toFixed(3), (1 / 2.25).toFixed(3));
    await press(tab, 'PageDown');
    assert.ok((await window())[0] > from);
    await press(tab, '0');
    assert.doesNotMatch(await address(tab), /from/);
    await clickText(tab, 'button', '+');
    assert.equal(Math.round((await window())[1] - (await window())[0]), 271);
    await clickText(tab, 'button', 'Whole session');
    const box = (await (await tab.$('.timeline canvas'))!.boundingBox())!;
    await tab.mouse.move(box.x + box.width / 4, box.y + 60);
    await tab.mouse.wheel({ deltaY: -600 });
    const closer = await window();
    assert.ok(closer[1] - closer[0] < 400, String(closer));
    assert.ok(closer[0] < 135.5 && closer[1] > 135.5, 'what is under the pointer stays there');
    await tab.mouse.down();
    await tab.mouse.move(box.x + box.width / 2, box.y + 60, { steps: 4 });
    await tab.mouse.up();
    assert.ok((await window())[0] < closer[0]);
  }));

test('session: events are walked, said, and found in the table', () =>
  withPage(orders, { at: 'session' }, async ({ tab }) => {
    await tab.focus('.timeline canvas');
    await press(tab, 'Home', 'ArrowRight', 'ArrowRight');
    assert.equal(
      await text(tab, '#timeline-status'),
      'SELECT ORDERS WITH STATUS = OPEN BY CUST at 3.88 s, took 5.94 s, 356 ticks',
    );
    assert.match(await text(tab, '.grid-row[aria-selected=true]'), /SELECT ORDERS/);
    await press(tab, 'ArrowDown');
    assert.match(
      await text(tab, '#timeline-status'),
      /^Input “3” at 3\.77 s, took 0\.09 s, pause before 2\.82 s$/,
    );
    assert.match(
      await text(tab, '.detail'),
      /^Input “3”0\.09 s of typing at 3\.77 s .* ended by no key · 0\.090 s for each key/,
    );
    await press(tab, 'ArrowUp');
    await press(tab, 'Enter');
    assert.match(await address(tab), /^#commands\?table=each&at=\d+$/);
    await clickText(tab, '.detail a', 'Show on the time line');
    assert.match(await address(tab), /^#session\?at=c\d+&from=[\d.]+&to=[\d.]+$/);
  }));

test('session: the table filters, and brings an event into sight', () =>
  withPage(orders, { at: 'session?from=500&to=520' }, async ({ tab }) => {
    await tab.focus('[data-filter]');
    await tab.keyboard.type('input dahl');
    await settled(tab);
    assert.equal((await gridRows(tab)).length, 1);
    await tab.focus('[role=grid]');
    await press(tab, 'ArrowDown');
    const found = /from=([\d.]+)&to=([\d.]+)/.exec(await address(tab))!;
    assert.ok(Number(found[1]) < 33 && Number(found[2]) > 34);
  }));

test('commands: from a sum to its parts to the time line', () =>
  withPage(orders, { at: 'commands' }, async ({ tab }) => {
    await tab.focus('[role=grid]');
    await press(tab, 'ArrowDown', 'ArrowDown');
    assert.match(
      await text(tab, '.detail'),
      /^SELECT ORDERS WITH STATUS = OPEN BY CUST2 times, 10\.76 s elapsed, the longest 5\.94 s, CPU 6\.45 s645 ticks, 2\.73 % of all/,
    );
    await press(tab, 'Enter');
    assert.equal((await gridRows(tab)).length, 2);
    await press(tab);
    await tab.focus('[role=grid]');
    await press(tab, 'ArrowDown');
    assert.match(
      await text(tab, '.detail'),
      /5\.94 s elapsed at 3\.88 s of the session, 9 Mar 2026 08:02:15 UTC/,
    );
  }));
