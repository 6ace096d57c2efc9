import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import { hostileDocument } from '../../samples/made';
import { filtered, hasWords, lineFilter, words } from '../../src/model/filter';
import { makeModel } from '../../src/model/model';
import { formatSort, nameRanks, ordered, parseSort } from '../../src/model/order';

const model = makeModel(ordersDocument());

function kept(filter: string): string[] {
  const all = Uint32Array.from({ length: model.lines.size }, (_, row) => row);
  return [...filtered(all, lineFilter(model, filter))].map(
    (row) => `${model.document.names[model.lines.program[row]]} ${model.lines.line(row)}`,
  );
}

test('a filter looks at program, line number and source text', () => {
  assert.equal(kept('').length, 458);
  assert.deepEqual(kept('price.lines 82'), ['PRICE.LINES 82']);
  assert.deepEqual(kept('PRICE 8').slice(0, 3), [
    'PRICE.LINES 82',
    'PRICE.LINES 86',
    'PRICE.LINES 85',
  ]);
  assert.deepEqual(kept('alloc read lock'), ['ALLOC.STOCK 61', 'ALLOC.STOCK 115']);
  assert.deepEqual(kept('no such thing'), []);
  assert.ok(kept('if').every((line) => !line.startsWith('FORM.PAINT')));
});

test('odd lines are found by their text', () => {
  const hostile = makeModel(hostileDocument());
  const test = lineFilter(hostile, '<b>7');
  const rows = Array.from({ length: hostile.lines.size }, (_, row) => row).filter(test);
  assert.deepEqual(
    rows.map((row) => hostile.lines.line(row)),
    ['<b>7</b>'],
  );
});

test('words', () => {
  assert.deepEqual(words('  One  TWO '), ['one', 'two']);
  assert.ok(hasWords('SELECT ORDERS', ['ord', 'sel']));
  assert.ok(!hasWords('SELECT ORDERS', ['ord', 'x']));
});

test('orders: numbers, texts, what is missing last in both directions', () => {
  const mixedKeys = [3, NaN, 'b', 1, 'a', NaN, 2];
  const rows: [(number | string)[], boolean, number[]][] = [
    [[3, 1, 2], false, [1, 2, 0]],
    [[3, 1, 2], true, [0, 2, 1]],
    [[1, 1, 0, 1], true, [0, 1, 3, 2]],
    [['b', 'a', 'b'], false, [1, 0, 2]],
    [mixedKeys, false, [3, 6, 0, 4, 2, 1, 5]],
    [mixedKeys, true, [2, 4, 0, 6, 3, 1, 5]],
    [[], false, []],
    [[Infinity, 1, -Infinity], true, [0, 1, 2]],
  ];
  for (const [keys, descending, want] of rows) {
    assert.deepEqual(
      [...ordered(keys.length, (row) => keys[row], descending)],
      want,
      `${keys} ${descending}`,
    );
  }
});

test('names rank by letters, then by characters', () => {
  assert.deepEqual([...nameRanks(['b', 'A', 'a', 'B'])], [3, 0, 1, 2]);
});

test('orders in addresses', () => {
  const fallback = { key: 'ticks', descending: true };
  assert.deepEqual(parseSort('-change', fallback, ['change']), { key: 'change', descending: true });
  assert.deepEqual(parseSort('change', fallback, ['change']), { key: 'change', descending: false });
  for (const odd of ['', undefined, '-', '__proto__', 'x'])
    assert.equal(parseSort(odd, fallback, ['change']), fallback);
  assert.equal(formatSort(fallback), '-ticks');
});
