// node speedscope.mjs PROFILE [SCREENSHOT]
//
// Opens a file in speedscope as its command does, in Chromium, and has speedscope save what it has read
// in its own format: what is printed is what its importer made of the file. Fails where the page says
// or asks for anything else.

import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { basename, dirname, join } from 'node:path';
import { fileURLToPath, pathToFileURL } from 'node:url';
import puppeteer from 'puppeteer-core';

const [profile, screenshot] = process.argv.slice(2);
const here = dirname(fileURLToPath(import.meta.url));
const page = join(process.env.VIEWERS_MODULES ?? join(here, 'node_modules'), 'speedscope', 'dist', 'release', 'index.html');

const folder = mkdtempSync(join(tmpdir(), 'ptick-speedscope-'));
const browser = await puppeteer.launch({
  executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
  // It draws with WebGL, here without a graphics card. As root, as on build servers, the browser's own
  // sandbox cannot start.
  args: ['--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--ignore-gpu-blocklist',
    ...(process.getuid() === 0 ? ['--no-sandbox'] : [])],
});
try {
  const tab = await browser.newPage();
  await tab.setViewport({ width: 1000, height: 420 });
  const complaints = [];
  tab.on('pageerror', (error) => complaints.push(String(error)));
  tab.on('dialog', (dialog) => {
    complaints.push(dialog.message());
    void dialog.dismiss();
  });
  // What it saves is kept instead of downloaded.
  await tab.evaluateOnNewDocument(() => {
    const create = URL.createObjectURL;
    URL.createObjectURL = (blob) => {
      if (blob instanceof Blob && blob.type === 'text/json') window.savedText = blob.text();
      return create.call(URL, blob);
    };
    HTMLAnchorElement.prototype.click = () => {};
  });
  const script = join(folder, 'profile.js');
  const bytes = JSON.stringify(readFileSync(profile).toString('base64'));
  writeFileSync(script, `speedscope.loadFileFromBase64(${JSON.stringify(basename(profile))}, ${bytes})`);
  await tab.goto(`${pathToFileURL(page).href}#localProfilePath=${script}`);
  await tab.waitForSelector('canvas');
  if (screenshot) await tab.screenshot({ path: screenshot });
  await tab.keyboard.down('Control');
  await tab.keyboard.press('s');
  await tab.keyboard.up('Control');
  await tab.waitForFunction(() => window.savedText, { timeout: 10000 });
  process.stdout.write(await tab.evaluate(() => window.savedText));
  if (complaints.length > 0) throw new Error(complaints.join('\n'));
} finally {
  await browser.close();
  rmSync(folder, { recursive: true });
}
