import assert from 'node:assert/strict';
import { test } from 'node:test';
import type { Baseline, LineColumns } from '../../src/data';
import { Verdict, lineTable } from '../../src/model/lines';
import { ordersDocument } from '../../samples/documents';
import { emptyProfile } from '../../samples/profile-text';

const COLUMNS: LineColumns = {
  program: [1, 0, 1, 0, 2],
  line: [10, 7, '1e5', 4294967295, 7],
  ticks: [50, 40, '9007199254740993', 2, -1],
};

function baseline(changes: Partial<Baseline['changes']['lines']>): Baseline {
  const { profile } = emptyProfileOnly();
  return {
    profile,
    runs: 2,
    test: 'welch',
    changes: {
      lines: {
        program: [],
        line: [],
        old: [],
        new: [],
        change: [],
        p: [],
        q: [],
        significant: [],
        ...changes,
      },
      programs: [],
      commands: [],
      subroutines: [],
      counters: [],
    },
  };
}

function emptyProfileOnly() {
  return { profile: { ...emptyProfile('old'), programs: { program: [], ticks: [], lines: [] } } };
}

test('columns become typed ones without losing digits', () => {
  const table = lineTable(COLUMNS, 3, 1, null);
  assert.equal(table.size, 5);
  assert.equal(table.line(2), '1e5');
  assert.ok(Number.isNaN(table.number[2]));
  assert.equal(table.number[3], 4294967295);
  assert.equal(table.exactTicks(2), '9007199254740993');
  assert.equal(table.compared, null);
});

test('rows of a program keep their order', () => {
  const table = lineTable(COLUMNS, 3, 1, null);
  assert.deepEqual([...table.rowsOf(0)], [1, 3]);
  assert.deepEqual([...table.rowsOf(1)], [0, 2]);
  assert.deepEqual([...table.rowsOf(2)], [4]);
});

test('changes find their rows, also of odd lines; lines of the baseline alone are added', () => {
  const table = lineTable(
    COLUMNS,
    3,
    2,
    baseline({
      program: [1, 1, 0, 2],
      line: [10, '1e5', 99, '<b>'],
      old: [20, null, 30, 3],
      new: [25, 5, null, null],
      change: [5, 5, -30, -3],
      p: [0.04, null, 0.001, 0.5],
      q: [0.2, null, 0.002, 0.6],
      significant: [0, 1, 1, 0],
    }),
  );
  const compared = table.compared!;
  assert.equal(table.size, 7);
  assert.equal(table.ownSize, 5);
  assert.deepEqual([table.line(5), table.line(6)], [99, '<b>']);
  assert.equal(table.ticks[5], 0);
  assert.deepEqual([...table.rowsOf(0)], [1, 3, 5]);
  assert.deepEqual(
    [...compared.verdict],
    [
      Verdict.noise,
      Verdict.same,
      Verdict.changed,
      Verdict.same,
      Verdict.same,
      Verdict.changed,
      Verdict.noise,
    ],
  );
  assert.deepEqual([...compared.change], [5, 0, 5, 0, 0, -30, -3]);
  assert.deepEqual([...compared.old], [20, 20, NaN, 1, -0.5, 30, 3]);
  assert.deepEqual([...compared.now], [25, 20, 5, 1, -0.5, NaN, NaN]);
  assert.ok(Number.isNaN(compared.p[2]));
  assert.equal(compared.q[0], 0.2);
});

test('without changes both sides are the same, per run', () => {
  const table = lineTable(COLUMNS, 3, 2, baseline({}));
  assert.deepEqual([...table.compared!.old], [25, 20, 4503599627370496, 1, -0.5]);
});

test('the sample profile has the ticks of its report', () => {
  const { profile, names } = ordersDocument();
  const table = lineTable(profile.lines, names.length, 1, null);
  assert.equal(table.size, 458);
  assert.equal(names[table.program[0]], 'ALLOC.STOCK');
  assert.equal(table.line(0), 61);
  assert.equal(table.ticks[0], 2135);
  assert.equal(
    table.ticks.reduce((sum, ticks) => sum + ticks, 0),
    23604,
  );
});
