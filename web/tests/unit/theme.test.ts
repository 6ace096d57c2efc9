import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { inkOn, luminance } from '../../src/pictures/theme';

/** The colours of a scheme by name: the first block of the style sheet is light, the second dark. */
function schemes(): Map<string, string>[] {
  const style = readFileSync('src/style/colours.css', 'utf8');
  return style
    .split('@media print')[0]
    .split('@media (prefers-color-scheme: dark)')
    .map((part) => new Map([...part.matchAll(/--([\w-]+): (#\w{6});/g)].map((m) => [m[1], m[2]])));
}

function contrast(one: string, other: string): number {
  const [dark, light] = [luminance(one), luminance(other)].sort((a, b) => a - b);
  return (light + 0.05) / (dark + 0.05);
}

test('what pictures write is read at 4.5 to 1, in both schemes', () => {
  const [light, dark] = schemes();
  for (const [scheme, colours] of Object.entries({ light, dark })) {
    const fills = [...colours.keys()].filter((name) =>
      /^((heat|slower|faster)-\d|(noise|same)-fill|command|input)$/.test(name),
    );
    assert.equal(fills.length, 10 + 4 + 4 + 2 + 2, `${scheme}: ${fills.join(' ')}`);
    const pairs = fills.map((name) => [inkOn(colours.get(name)!), name]);
    for (const under of ['surface', 'line', 'pause']) pairs.push([colours.get('muted')!, under]);
    for (const [ink, name] of pairs) {
      const found = contrast(ink, colours.get(name)!);
      assert.ok(found >= 4.5, `${scheme}: ${ink} on ${name}, ${found.toFixed(2)}`);
    }
  }
});

test('luminance is that of WCAG', () => {
  assert.equal(luminance('#ffffff').toFixed(4), '1.0000');
  assert.equal(luminance('#000000'), 0);
  assert.equal(luminance('#777777').toFixed(4), '0.1845');
});
