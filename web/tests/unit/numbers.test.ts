import assert from 'node:assert/strict';
import { test } from 'node:test';
import {
  counted,
  duration,
  grouped,
  mean,
  moment,
  percent,
  relative,
  roundedShare,
  seconds,
  share,
  signed,
  toNumber,
} from '../../src/model/numbers';

test('groups digits and keeps every one of them', () => {
  const rows: [Parameters<typeof grouped>[0], string][] = [
    [0, '0'],
    [999, '999'],
    [1000, '1,000'],
    [-1234567, '−1,234,567'],
    [2000.5, '2,000.5'],
    ['9007199254740993', '9,007,199,254,740,993'],
    ['18446744073709551616.25', '18,446,744,073,709,551,616.25'],
    ['+5', '+5'],
    ['much', 'much'],
    ['', ''],
    [null, '–'],
    [undefined, '–'],
  ];
  for (const [input, want] of rows) assert.equal(grouped(input), want, String(input));
});

test('a number for pictures is never NaN', () => {
  const rows: [Parameters<typeof toNumber>[0], number][] = [
    ['12.5', 12.5],
    ['much', 0],
    [null, 0],
    [NaN, 0],
    ['1e999', 0],
    [-3, -3],
  ];
  for (const [input, want] of rows) assert.equal(toNumber(input), want, String(input));
});

test('shares are cut, never rounded', () => {
  const rows: [number, number, string][] = [
    [2135, 23604, '9.04 %'],
    [1870, 23604, '7.92 %'],
    [1, 3, '33.33 %'],
    [2, 3, '66.66 %'],
    [29, 100, '29.00 %'],
    [1, 1, '100.00 %'],
    [0, 7, '0.00 %'],
    [-1, 8, '−12.50 %'],
    [5, 0, '–'],
  ];
  for (const [part, total, want] of rows)
    assert.equal(share(part, total), want, `${part}/${total}`);
  assert.equal(percent(5, 0), 0);
});

test('shares of counters are rounded, as the reports do', () => {
  assert.equal(roundedShare(5553, 23604), '23.53 %');
  assert.equal(roundedShare(972, 23604), '4.12 %');
  assert.equal(roundedShare(1, 0), '–');
});

test('changes carry their sign and at most two decimals', () => {
  const rows: [Parameters<typeof signed>[0], string][] = [
    [12, '+12'],
    [-3, '−3'],
    [0, '0'],
    [1234.5678, '+1,234.57'],
    ['9007199254740993', '+9,007,199,254,740,993'],
    ['-9007199254740993', '−9,007,199,254,740,993'],
    [1e21, '+1,000,000,000,000,000,000,000'],
  ];
  for (const [input, want] of rows) assert.equal(signed(input), want, String(input));
  assert.equal(mean(2.3333333), '2.33');
  assert.equal(mean(null), '–');
});

test('relative changes say what they are of', () => {
  const rows: [number, number, string][] = [
    [100, 12.5, '+12.5 %'],
    [100, -100, '−100 %'],
    [3, 100, '+3,333 %'],
    [-10, 5, '+50.0 %'],
    [0, 5, 'new'],
    [7, 0, '0 %'],
  ];
  for (const [old, change, want] of rows)
    assert.equal(relative(old, change), want, `${old} ${change}`);
});

test('durations', () => {
  const rows: [number, string][] = [
    [0, '0.00 s'],
    [0.04, '0.04 s'],
    [59.994, '59.99 s'],
    [59.996, '1 min 00.00 s'],
    [542.07, '9 min 02.07 s'],
    [3600, '1 h 00 min 00 s'],
    [3723.9, '1 h 02 min 03 s'],
    [-1.5, '−1.50 s'],
    [3600 * 12345, '12,345 h 00 min 00 s'],
  ];
  for (const [input, want] of rows) assert.equal(duration(input), want, String(input));
  assert.equal(seconds(1234.5), '1,234.50');
  assert.equal(seconds(null), '–');
});

test('moments are in UTC; what is none is null', () => {
  assert.equal(moment(1773043331), '9 Mar 2026 08:02:11 UTC');
  assert.equal(moment(0), '1 Jan 1970 00:00:00 UTC');
  assert.equal(moment(-1), '31 Dec 1969 23:59:59 UTC');
  for (const none of [null, undefined, '', 'noon', '1e40'])
    assert.equal(moment(none), null, String(none));
});

test('counts with their word', () => {
  assert.equal(counted(1, 'line'), '1 line');
  assert.equal(counted(1204, 'line'), '1,204 lines');
  assert.equal(counted(0, 'entry', 'entries'), '0 entries');
});
