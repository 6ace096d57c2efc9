import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import { callRows, callers } from '../../src/model/calls';
import { cpu, elapsed, summedCommands } from '../../src/model/commands';

const { profile } = ordersDocument();

test('commands summed by text agree with those one by one', () => {
  const sums = summedCommands(profile, 100, null);
  assert.equal(sums.length, 17);
  assert.equal(
    sums.reduce((times, sum) => times + sum.times, 0),
    58,
  );
  const select = sums.find((sum) => sum.command.startsWith('SELECT ORDERS'))!;
  assert.deepEqual(
    [select.times, select.elapsed, select.longest, select.cpu, select.ticks],
    [2, 10.76, 5.94, 6.45, 645],
  );
  const clear = sums.find((sum) => sum.command === 'TERM CLEAR')!;
  assert.deepEqual([clear.times, clear.cpu, clear.ticks], [39, null, null]);
  assert.equal(profile.commands[select.longestIndex].command, select.command);
});

test('no times without hertz, no CPU without CPU', () => {
  assert.equal(elapsed(profile.commands[0], null), null);
  assert.equal(elapsed({ startclock: 5, endclock: null }, 100), null);
  assert.equal(cpu(profile.commands[0], 100), null);
  const sums = summedCommands(profile, null, null);
  assert.ok(sums.every((sum) => sum.elapsed === null));
});

test('commands of the baseline alone follow', () => {
  const compared = ordersDocument({ run: 'run2', baseline: 'run1' });
  const sums = summedCommands(compared.profile, 100, compared.baseline);
  const gone = sums.filter((sum) => sum.times === 0);
  assert.ok(gone.length > 0);
  assert.ok(gone.every((sum) => sum.change !== null && sum.change.new_times === null));
  assert.equal(new Set(sums.map((sum) => sum.command)).size, sums.length);
});

test('calls of a pair are added up, odd names and all', () => {
  const rows = callRows(
    [
      { caller: '__proto__', subroutine: 'a', times: 2 },
      { caller: '__proto__', subroutine: 'a', times: '9007199254740993' },
      { caller: null, subroutine: 'a', times: 1 },
      { caller: 'null', subroutine: 'a', times: 4 },
    ],
    null,
  );
  assert.deepEqual(
    rows.map((row) => [row.caller, row.times]),
    [
      ['__proto__', '9007199254740995'],
      ['null', 4],
      [null, 1],
    ],
  );
});

test('who calls most comes first', () => {
  const rows = callRows(profile.subroutines, null);
  assert.equal(rows.length, 27);
  const programs = callers(rows);
  assert.deepEqual(programs[0], { name: 'PRICE.LINES', made: 12575, received: 1853 });
});

test('calls of the baseline alone follow with no times', () => {
  const compared = ordersDocument({ run: 'run1', baseline: 'run2' });
  const rows = callRows(compared.profile.subroutines, compared.baseline);
  const gone = rows.filter((row) => row.change?.new === null);
  assert.ok(gone.length > 0);
  assert.ok(gone.every((row) => row.value === 0));
});
