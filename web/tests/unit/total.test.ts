import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Count } from '../../src/data';
import { sum } from '../../src/model/total';

test('sums lose nothing', () => {
  const rows: [(Count | null)[], Count][] = [
    [[], 0],
    [[1, 2, 3], 6],
    [[null, 5, null], 5],
    [[0.1, 0.2], 0.3],
    [[1, 0.25, -4], -2.75],
    [[9007199254740991, 1], '9007199254740992'],
    [[9007199254740991, 2], '9007199254740993'],
    [['9007199254740993', '9007199254740993'], '18014398509481986'],
    [['9007199254740993', '-9007199254740993'], 0],
    [['18446744073709551616.5', 0.25], '18446744073709551616.75'],
    [['-9007199254740995', 1], '-9007199254740994'],
    [['much', 7], 7],
    [[1e21, 1], '1000000000000000000001'],
  ];
  for (const [input, want] of rows) assert.equal(sum(input), want, JSON.stringify(input));
});
