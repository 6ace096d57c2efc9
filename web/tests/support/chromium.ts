// Opens pages in Chromium for tests. A page that logs, fails, violates its policy or asks for anything
// but itself fails the test that opened it.

import assert from 'node:assert/strict';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before } from 'node:test';
import { pathToFileURL } from 'node:url';
import puppeteer, { type Browser, type Page } from 'puppeteer-core';
import { page as makePage } from '../../samples/page';
import type { ViewDocument } from '../../src/data';

export type Scheme = 'light' | 'dark';

export interface OpenOptions {
  /** The place in the page, as "hot?filter=x". */
  at?: string;
  scheme?: Scheme;
  size?: { width: number; height: number; isMobile?: boolean; hasTouch?: boolean };
  reducedMotion?: boolean;
}

export interface Opened {
  tab: Page;
  /** What it said or asked for that it should not. */
  complaints: string[];
  /** Milliseconds until the first view was on the screen. */
  opened: number;
}

let browser: Browser | null = null;
let folder = '';

/** Starts Chromium for the tests of a file, and ends it after them. */
export function useChromium(): void {
  before(async () => {
    folder = mkdtempSync(join(tmpdir(), 'ptick-view-'));
    const executablePath = process.env.CHROMIUM ?? '/usr/bin/chromium';
    // As root, as on build servers, its own sandbox cannot start.
    const args = process.getuid?.() === 0 ? ['--no-sandbox'] : [];
    browser = await puppeteer.launch({ executablePath, args });
  });
  after(async () => {
    await browser?.close();
    rmSync(folder, { recursive: true });
  });
}

const template = (): string => readFileSync('dist/ptick-view.html', 'utf8');

/** Opens a page, hands it to `use`, and looks at its complaints. */
export async function withPage(
  document: ViewDocument | string,
  options: OpenOptions,
  use: (opened: Opened) => Promise<void>,
): Promise<void> {
  const opened = await open(document, options);
  try {
    await use(opened);
    assert.deepEqual(opened.complaints, []);
  } finally {
    await opened.tab.close();
  }
}

async function open(document: ViewDocument | string, options: OpenOptions): Promise<Opened> {
  const file = join(folder, 'page.html');
  writeFileSync(file, typeof document === 'string' ? document : makePage(template(), document));
  const address = pathToFileURL(file).href;
  const tab = await browser!.newPage();
  const complaints: string[] = [];
  tab.on('console', (message) => complaints.push(`console: ${message.text()}`));
  tab.on('pageerror', (error) => complaints.push(`error: ${String(error)}`));
  tab.on('dialog', (dialog) => {
    complaints.push(`dialog: ${dialog.message()}`);
    void dialog.dismiss();
  });
  tab.on('request', (request) => {
    if (request.url().split('#')[0] !== address) complaints.push(`request: ${request.url()}`);
  });
  await tab.setViewport(options.size ?? { width: 1280, height: 800 });
  await tab.emulateMediaFeatures([
    { name: 'prefers-color-scheme', value: options.scheme ?? 'light' },
    {
      name: 'prefers-reduced-motion',
      value: (options.reducedMotion ?? true) ? 'reduce' : 'no-preference',
    },
  ]);
  await tab.goto(`${address}#${options.at ?? ''}`);
  await tab.waitForSelector('main h1, [role=alert]');
  const opened = await tab.evaluate(
    () =>
      new Promise<number>((done) =>
        requestAnimationFrame(() => requestAnimationFrame(() => done(performance.now()))),
      ),
  );
  return { tab, complaints, opened };
}

/** Waits until the page has drawn what changed. */
export async function settled(tab: Page): Promise<void> {
  await tab.evaluate(
    () =>
      new Promise<void>((done) => {
        const frame = (then: () => void): unknown => requestAnimationFrame(() => setTimeout(then));
        frame(() => frame(() => frame(done)));
      }),
  );
}

/** Goes to another place of the page, as a link does. */
export async function goTo(tab: Page, at: string): Promise<void> {
  await tab.evaluate((place) => (location.hash = place), at);
  await settled(tab);
}

export async function texts(tab: Page, selector: string): Promise<string[]> {
  return tab.$$eval(selector, (elements) =>
    elements.map((element) => (element.textContent ?? '').replace(/\s+/g, ' ').trim()),
  );
}

export async function text(tab: Page, selector: string): Promise<string> {
  await tab.waitForSelector(selector, { timeout: 10_000 });
  const [first] = await texts(tab, selector);
  assert.notEqual(first, undefined, `nothing matches ${selector}`);
  return first;
}

/** The cells of the rows in sight, row by row, in order. */
export async function gridRows(tab: Page, label?: string): Promise<string[][]> {
  const grid = label ? `[role=grid][aria-label="${label}"]` : '[role=grid]';
  return tab.$$eval(`${grid} .grid-body [role=row]`, (rows) =>
    rows
      .sort(
        (a, b) => Number(a.getAttribute('aria-rowindex')) - Number(b.getAttribute('aria-rowindex')),
      )
      .map((row) =>
        [...row.querySelectorAll('[role=gridcell]')]
          .filter((cell) => getComputedStyle(cell).display !== 'none')
          .map((cell) => (cell.textContent ?? '').trim()),
      ),
  );
}

/** The fragment of the address, after the page had time to write it. */
export async function address(tab: Page): Promise<string> {
  await new Promise((done) => setTimeout(done, 350));
  return tab.evaluate(() => location.hash);
}

/** Presses keys one after the other, as somebody does who sees what each of them did. */
export async function press(
  tab: Page,
  ...keys: Parameters<Page['keyboard']['press']>[0][]
): Promise<void> {
  for (const key of keys) {
    await tab.keyboard.press(key);
    await settled(tab);
  }
}

/** Clicks at a place of an element, in pixels from its corner. */
export async function clickAt(
  tab: Page,
  selector: string,
  x: number,
  y: number,
  count = 1,
): Promise<void> {
  const box = await (await tab.$(selector))!.boundingBox();
  assert.ok(box, selector);
  await tab.mouse.click(box.x + x, box.y + y, { count });
  await settled(tab);
}

/** Clicks the first element with this text. */
export async function clickText(tab: Page, selector: string, wanted: string): Promise<void> {
  const found = await tab.$$eval(
    selector,
    (elements, word) => {
      const element = elements.find((each) => each.textContent?.includes(word));
      (element as HTMLElement | undefined)?.click();
      return element !== undefined;
    },
    wanted,
  );
  assert.ok(found, `no ${selector} with "${wanted}"`);
  await settled(tab);
}
