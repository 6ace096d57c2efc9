import assert from 'node:assert/strict';
import { test } from 'node:test';
import { clipped, lineText, nameText, visible, visibleSource } from '../../src/model/text';

test('what is invisible or reorders text shows as its code', () => {
  const rows: [string, string][] = [
    ['PRICE.LINES', 'PRICE.LINES'],
    ['Café "Zum Anker"', 'Café "Zum Anker"'],
    ['שלום', 'שלום'],
    ['a\u0000b\u001b[31m', 'a⟨00⟩b⟨1B⟩[31m'],
    ['a\tb\nc', 'a⟨09⟩b⟨0A⟩c'],
    ['\u007f\u0085', '⟨7F⟩⟨85⟩'],
    ['PAY\u202eLLOR', 'PAY⟨202E⟩LLOR'],
    ['\u2066x\u2069\u200b', '⟨2066⟩x⟨2069⟩⟨200B⟩'],
    ['\u2028\u2029\ufeff', '⟨2028⟩⟨2029⟩⟨FEFF⟩'],
    ['😀\u202e😀', '😀⟨202E⟩😀'],
    ['\ud83d', '⟨D83D⟩'],
    ['\ude00\ud83d', '⟨DE00⟩⟨D83D⟩'],
  ];
  for (const [input, want] of rows) assert.equal(visible(input), want, JSON.stringify(input));
});

test('a source keeps its tabs', () => {
  assert.equal(visibleSource('\tA\u0001\tB'), '\tA⟨01⟩\tB');
});

test('a name is never nothing', () => {
  assert.equal(nameText(''), '(empty)');
  assert.equal(nameText(null), '(unknown)');
  assert.equal(nameText(' \u00a0\t'), '⟨20⟩⟨A0⟩⟨09⟩');
  assert.equal(nameText('__proto__'), '__proto__');
  assert.equal(lineText(''), '(empty)');
  assert.equal(lineText(82), '82');
});

test('clipped text says so and keeps pairs whole', () => {
  assert.equal(clipped('abcdef', 6), 'abcdef');
  assert.equal(clipped('abcdefg', 6), 'abcde…');
  assert.equal(clipped('abcd😀g', 6), 'abcd…');
});
