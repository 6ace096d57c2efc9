import assert from 'node:assert/strict';
import { readFileSync, readdirSync } from 'node:fs';
import { test } from 'node:test';

/** From the bottom up. */
const FOLDERS = ['model', 'parts', 'pictures', 'views'];

test('a file includes its own folder or a lower one', () => {
  const wrong: string[] = [];
  let seen = 0;
  FOLDERS.forEach((folder, level) => {
    for (const file of readdirSync(`src/${folder}`)) {
      const text = readFileSync(`src/${folder}/${file}`, 'utf8');
      for (const [, other] of text.matchAll(/from '\.\.\/([a-z]+)\//g)) {
        ++seen;
        if (FOLDERS.indexOf(other) < 0 || FOLDERS.indexOf(other) >= level)
          wrong.push(`${folder}/${file}: ${other}`);
      }
    }
  });
  assert.deepEqual(wrong, []);
  assert.ok(seen > 100);
});

test('what computes knows no page', () => {
  for (const file of readdirSync('src/model')) {
    const text = readFileSync(`src/model/${file}`, 'utf8');
    assert.doesNotMatch(text, /from 'preact|getElementById|querySelector|createElement/, file);
  }
});

test('no file is long', () => {
  for (const folder of [
    'src',
    ...FOLDERS.map((name) => `src/${name}`),
    'src/style',
    'samples',
    'tests/unit',
    'tests/browser',
    'tests/support',
  ]) {
    for (const entry of readdirSync(folder, { withFileTypes: true })) {
      if (!entry.isFile()) continue;
      const lines = readFileSync(`${folder}/${entry.name}`, 'utf8').split('\n').length;
      assert.ok(lines <= 300, `${folder}/${entry.name}: ${lines} lines`);
    }
  }
});
