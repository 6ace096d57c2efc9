// The page as a whole: keys everywhere, focus, addresses.

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

test('keys 1 to 7, / and ? work everywhere, until they are switched off', () =>
  withPage(orders, {}, async ({ tab }) => {
    for (const [key, title] of [
      ['2', 'Hot spots'],
      ['5', 'Commands'],
      ['7', 'Resources'],
      ['1', 'Overview'],
    ] as const) {
      await press(tab, key);
      assert.equal(await text(tab, 'h1'), title);
    }
    await press(tab, '6', '/');
    await tab.keyboard.type('2');
    await settled(tab);
    assert.equal(await text(tab, 'h1'), 'Calls');
    assert.equal(await address(tab), '#calls?filter=2');
    await tab.focus('[role=grid], h1');
    await press(tab, '?');
    assert.equal(await tab.$eval('dialog', (dialog) => (dialog as HTMLDialogElement).open), true);
    await tab.click('dialog input[type=checkbox]');
    await press(tab, 'Escape');
    await tab.focus('h1');
    await press(tab, '1');
    assert.equal(await text(tab, 'h1'), 'Calls');
  }));

test('everything is reached by Tab, and its focus is visible', () =>
  withPage(orders, { at: 'hot?program=PRICE.LINES&line=82' }, async ({ tab }) => {
    const seen: string[] = [];
    for (let i = 0; i < 40; ++i) {
      await tab.keyboard.press('Tab');
      const now = await tab.evaluate(() => {
        const active = document.activeElement as HTMLElement;
        if (active === document.body) return null;
        const style = getComputedStyle(active);
        const ring = style.outlineStyle !== 'none' && parseFloat(style.outlineWidth) >= 2;
        return {
          name: active.ariaLabel ?? active.textContent?.trim() ?? '',
          tag: active.tagName,
          ring,
        };
      });
      if (!now) break;
      assert.ok(now.ring, `${now.tag} ${now.name}`);
      seen.push(now.tag === 'INPUT' ? 'filter' : now.name.slice(0, 30));
    }
    for (const wanted of [
      'Skip to the view',
      'Help and keys',
      'Overview',
      'Resources',
      'Picture of the ticks. 13 recta',
      'Lines',
      'filter',
      'Lines by ticks',
      'Selected',
      'Show in source',
    ]) {
      assert.ok(seen.includes(wanted), `${wanted} in ${seen.join(' | ')}`);
    }
  }));

test('a link opens its place in another page, and back goes back', () =>
  withPage(
    orders,
    { at: 'hot?in=PRICE.LINES&filter=member&sort=line&program=PRICE.LINES&line=86' },
    async ({ tab }) => {
      assert.equal(await text(tab, '.crumbs [aria-current]'), 'PRICE.LINES');
      assert.deepEqual(
        (await gridRows(tab)).map((row) => row[1]),
        ['85', '86'],
      );
      assert.match(await text(tab, '.grid-row[aria-selected=true]'), /^PRICE\.LINES86/);
      await clickText(tab, 'nav a', 'Calls');
      assert.equal(await text(tab, 'h1'), 'Calls');
      await tab.goBack();
      await settled(tab);
      assert.equal(await text(tab, 'h1'), 'Hot spots');
      assert.deepEqual(
        (await gridRows(tab)).map((row) => row[1]),
        ['85', '86'],
      );
    },
  ));

test('addresses that lead nowhere do no harm', async () => {
  for (const at of [
    'nowhere',
    'hot?in=NOT.THERE&program=~999&line=x',
    'source?program=NOT.THERE&line=-5',
    'source?program=NIGHT.BATCH&line=99999',
    'session?from=900&to=-3&at=c9999',
    'commands?table=each&at=-1&sort=__proto__',
    'commands?at=1e9',
    'calls?program=NOT.THERE&at=77777',
    '%%%?%=%',
  ]) {
    await withPage(orders, { at }, async ({ tab }) => {
      assert.ok((await text(tab, 'h1')).length > 0, at);
    });
  }
});
