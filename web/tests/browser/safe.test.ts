// Names and texts are data: nothing of them runs, loads or moves. The page asks for nothing and keeps
// nothing.

import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { emptyDocument, ordersDocument } from '../../samples/documents';
import { HOSTILE, hostileDocument } from '../../samples/made';
import { MARKER } from '../../samples/page';
import { VIEWS } from '../../src/model/route';
import {
  clickText,
  goTo,
  gridRows,
  press,
  settled,
  text,
  texts,
  useChromium,
  withPage,
} from '../support/chromium';

useChromium();

test('hostile names run nothing in any view', () => {
  const hostile = hostileDocument();
  const places = [
    ...VIEWS,
    'hot?table=programs',
    'commands?table=each',
    ...hostile.names.map((_, program) => `source?program=~${program}&line=4`),
    ...hostile.names.map((_, program) => `hot?in=~${program}`),
    ...HOSTILE.map((name) => `calls?program=${encodeURIComponent(name)}&at=2`),
    ...HOSTILE.map((name) => `commands?filter=${encodeURIComponent(name)}&at=3`),
  ];
  return withPage(hostile, {}, async ({ tab }) => {
    for (const at of places) {
      await goTo(tab, at);
      const state = await tab.evaluate(() => ({
        ran: 'broken' in window,
        scripts: document.scripts.length,
        images: document.images.length,
        handlers: [...document.querySelectorAll('*')].filter((element) =>
          element.getAttributeNames().some((name) => name.startsWith('on')),
        ).length,
        addresses: [...document.querySelectorAll('a')].filter(
          (link) => !link.getAttribute('href')!.startsWith('#'),
        ).length,
        polluted: Object.keys(Object.prototype).length,
      }));
      const clean = { ran: false, scripts: 2, images: 0, handlers: 0, addresses: 0, polluted: 0 };
      assert.deepEqual(state, clean, at.slice(0, 200));
    }
  });
});

test('hostile names are text, with what hides or reorders made visible', () =>
  withPage(
    hostileDocument(),
    { at: 'hot', size: { width: 3000, height: 1200 } },
    async ({ tab }) => {
      const names = (await gridRows(tab)).map((row) => row[0]);
      for (const name of [
        '__proto__',
        '</script><script>window.broken=1</script>',
        'PAY⟨202E⟩LLOR⟨202C⟩',
        'NUL⟨00⟩ESC⟨1B⟩[31mRED',
        'שלום.PROGRAM',
        '😀.FACE',
        '(empty)',
        '⟨20⟩',
      ]) {
        assert.ok(names.includes(name), `${name} in ${names.join(' | ')}`);
      }
      const long = names.find((name) => name.startsWith('XXX'))!;
      assert.ok(long.length <= 300 && long.endsWith('…'));
      assert.equal(await tab.$$eval('.grid-body bdi', (all) => all.length > 0), true);
    },
  ));

test('a selected name is shown whole', () =>
  withPage(hostileDocument(), { at: 'hot' }, async ({ tab }) => {
    await tab.focus('[data-filter]');
    await tab.keyboard.type('xxxxx');
    await settled(tab);
    await tab.focus('[role=grid]');
    await press(tab, 'ArrowDown');
    assert.equal((await text(tab, '.detail h2')).replace(/ line .*/, '').length, 10_000);
  }));

test('numbers beyond 2^53 keep every digit', () =>
  withPage(hostileDocument(), {}, async ({ tab }) => {
    assert.ok((await texts(tab, '.tile')).some((tile) => tile.includes('9,007,199,254,740,993')));
    await clickText(tab, 'nav a', 'Resources');
    assert.ok(
      (await texts(tab, 'tbody tr')).some((row) =>
        row.startsWith('User tick 39,007,199,254,740,993'),
      ),
    );
  }));

test('the policy allows the page itself and nothing else', () =>
  withPage(ordersDocument(), {}, async ({ tab, complaints }) => {
    const policy = await tab.$eval('meta[http-equiv="Content-Security-Policy"]', (meta) =>
      meta.getAttribute('content'),
    );
    assert.match(
      policy!,
      /^default-src 'none'; script-src 'sha256-[\w+/=]{44}'; style-src 'sha256-[\w+/=]{44}'; base-uri 'none'; form-action 'none'$/,
    );
    const outcome = await tab.evaluate(async () => {
      const violations: string[] = [];
      document.addEventListener('securitypolicyviolation', (event) =>
        violations.push(event.violatedDirective),
      );
      const script = document.createElement('script');
      script.textContent = 'window.broken = 1';
      document.body.append(script);
      const image = new Image();
      image.src = 'https://example.invalid/x.png';
      document.body.append(image);
      const styled = document.createElement('div');
      styled.setAttribute('style', 'color: red');
      await fetch('https://example.invalid/').catch(() => 0);
      await new Promise((done) => setTimeout(done, 100));
      return {
        violations: violations.map((name) => name.replace(/-(elem|attr)$/, '')).sort(),
        broken: (window as unknown as { broken?: number }).broken,
      };
    });
    assert.equal(outcome.broken, undefined);
    assert.deepEqual(outcome.violations, ['connect-src', 'img-src', 'script-src', 'style-src']);
    complaints.length = 0;
  }));

test('the page keeps nothing', () =>
  withPage(ordersDocument(), { at: 'hot' }, async ({ tab }) => {
    await press(tab, '3', '4', '1');
    const kept = await tab.evaluate(async () => {
      const count = (make: () => number): number => {
        try {
          return make();
        } catch {
          return 0;
        }
      };
      return {
        local: count(() => localStorage.length),
        session: count(() => sessionStorage.length),
        cookies: document.cookie,
      };
    });
    assert.deepEqual(kept, { local: 0, session: 0, cookies: '' });
  }));

test('an empty profile is a profile', async () => {
  const wanted: Record<string, RegExp> = {
    overview: /Elapsed/,
    hot: /This profile has no lines with ticks\./,
    source: /This profile names no program\./,
    session: /This profile has no commands and no inputs\./,
    commands: /This profile has no commands\./,
    calls: /This profile has no subroutine calls\./,
    resources: /This profile says nothing about resources\./,
  };
  await withPage(emptyDocument(), {}, async ({ tab }) => {
    for (const at of VIEWS) {
      await goTo(tab, at);
      assert.match(await text(tab, 'main'), wanted[at], at);
    }
  });
});

test('a damaged page says what is wrong', async () => {
  const template = readFileSync('dist/ptick-view.html', 'utf8');
  const rows: [string, RegExp][] = [
    ['{"format":', /^This page cannot be shown: the data of this page is damaged/],
    ['[]', /^This page cannot be shown: this page holds no profile/],
    ['{"format":"ptick-view","version":7}', /version 7/],
  ];
  for (const [data, want] of rows) {
    await withPage(template.replace(MARKER, data), {}, async ({ tab }) => {
      assert.match(await text(tab, '[role=alert]'), want);
    });
  }
});
