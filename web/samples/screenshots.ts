// Takes pictures of sample pages in Chromium: tools/screenshots FOLDER [SAMPLE[:VIEW...]]... They are for
// people to look at, and for the documentation.

import { mkdirSync, readFileSync, writeFileSync } from 'node:fs';
import { join, resolve } from 'node:path';
import { pathToFileURL } from 'node:url';
import puppeteer from 'puppeteer-core';
import { VIEWS } from '../src/model/route';
import { SAMPLES } from './made';
import { page } from './page';

const SIZES: Record<
  string,
  {
    width: number;
    height: number;
    deviceScaleFactor?: number;
    isMobile?: boolean;
    hasTouch?: boolean;
  }
> = {
  desktop: { width: 1440, height: 900 },
  phone: { width: 390, height: 844, deviceScaleFactor: 2, isMobile: true, hasTouch: true },
  '4k': { width: 3840, height: 2160 },
};

const [folder, size = 'desktop', scheme = 'light', ...wanted] = process.argv.slice(2);
if (!folder || !SIZES[size] || wanted.length === 0) {
  console.error('usage: screenshots FOLDER desktop|phone|4k light|dark|print SAMPLE#FRAGMENT...');
  process.exit(2);
}
mkdirSync(folder, { recursive: true });
const template = readFileSync('dist/ptick-view.html', 'utf8');
const browser = await puppeteer.launch({
  executablePath: '/usr/bin/chromium',
  args: ['--no-sandbox'],
});
const tab = await browser.newPage();
tab.on('console', (message) => console.error(`console: ${message.text()}`));
await tab.setViewport(SIZES[size]);
await tab.emulateMediaFeatures([
  { name: 'prefers-color-scheme', value: scheme === 'dark' ? 'dark' : 'light' },
]);
for (const item of wanted) {
  const [sample, fragment = ''] = item.split('#');
  const html = join(folder, `${sample}.html`);
  writeFileSync(html, page(template, SAMPLES[sample]()));
  for (const view of fragment === '' ? VIEWS : [fragment]) {
    await tab.goto('about:blank');
    await tab.goto(`${pathToFileURL(resolve(html))}#${view}`);
    await tab.waitForSelector('main h1');
    await new Promise((done) => setTimeout(done, 300));
    const name = `${sample}-${view.replace(/[^a-z]+/gi, '_').slice(0, 40)}-${size}-${scheme}`;
    if (scheme === 'print') await tab.pdf({ path: join(folder, `${name}.pdf`), format: 'A4' });
    else
      await tab.screenshot({
        path: join(folder, `${name}.png`) as `${string}.png`,
        fullPage: size === 'phone',
      });
    console.log(name);
  }
}
await browser.close();
