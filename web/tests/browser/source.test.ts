// Source by pointer and by keys: from hot line to hot line, the edge, another program.

import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import {
  address,
  clickAt,
  clickText,
  press,
  settled,
  text,
  useChromium,
  withPage,
} from '../support/chromium';

useChromium();
const orders = ordersDocument();

test('source: n, p and h go over the hot lines, as the buttons do', () =>
  withPage(orders, { at: 'source?program=NIGHT.BATCH' }, async ({ tab }) => {
    const line = async () => (await text(tab, '.grid-row[aria-selected=true] .line-number')).trim();
    await tab.focus('[role=grid]');
    await press(tab, 'h');
    assert.equal(await line(), '48');
    await press(tab, 'n');
    assert.equal(await line(), '53');
    await press(tab, 'n');
    assert.equal(await line(), '106');
    await press(tab, 'p', 'p', 'p', 'p', 'p');
    assert.equal(await line(), '108');
    await clickText(tab, 'button', 'Next hot');
    assert.equal(await line(), '44');
    await clickText(tab, 'button', 'Previous hot');
    assert.equal(await line(), '108');
    await clickText(tab, 'button', 'Hottest line');
    assert.equal(await address(tab), '#source?program=NIGHT.BATCH&line=48');
  }));

test('source: the edge shows the file and jumps in it', () =>
  withPage(orders, { at: 'source?program=NIGHT.BATCH' }, async ({ tab }) => {
    const height = await tab.$eval('.edge canvas', (canvas) => canvas.clientHeight);
    await clickAt(tab, '.edge canvas', 10, height * 0.999);
    assert.equal(await address(tab), '#source?program=NIGHT.BATCH&line=155');
    await tab.focus('.edge canvas');
    await press(tab, 'ArrowDown');
    assert.equal(await address(tab), '#source?program=NIGHT.BATCH&line=44');
  }));

test('source: another program is chosen', () =>
  withPage(orders, { at: 'source?program=NIGHT.BATCH&line=48' }, async ({ tab }) => {
    const value = await tab.$$eval(
      'select option',
      (options) =>
        (options as HTMLOptionElement[]).find((option) => option.text.startsWith('CALC.TAX'))!
          .value,
    );
    await tab.select('select', value);
    await settled(tab);
    assert.equal(await address(tab), '#source?program=CALC.TAX');
    await tab.goBack();
    await settled(tab);
    assert.equal(await address(tab), '#source?program=NIGHT.BATCH&line=48');
  }));
