import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import { hostileDocument, largeDocument } from '../../samples/made';
import { makeModel } from '../../src/model/model';
import { type Cell, cellAt, layoutLines, layoutPrograms, neighbour } from '../../src/model/treemap';

const PLACE = { width: 800, height: 600, em: 15 };
const model = makeModel(ordersDocument());

const sum = (cells: Cell[]): number => cells.reduce((ticks, cell) => ticks + cell.ticks, 0);

test('programs hold all ticks, and their lines hold theirs', () => {
  const cells = layoutPrograms(model, PLACE);
  const programs = cells.filter((cell) => cell.kind === 'program' || cell.kind === 'more programs');
  assert.equal(sum(programs), 23604);
  for (const program of programs.filter((cell) => cell.kind === 'program')) {
    const inner = cells.filter(
      (cell) => cell.kind !== 'program' && cell.program === program.program,
    );
    assert.equal(sum(inner), program.ticks);
    assert.equal(
      inner.reduce((count, cell) => count + cell.count, 0),
      program.count,
    );
    for (const cell of inner) {
      assert.ok(cell.x >= program.x && cell.x + cell.width <= program.x + program.width);
      assert.ok(cell.y >= program.y && cell.y + cell.height <= program.y + program.height);
    }
  }
});

test('areas of lines are as their ticks', () => {
  const program = model.programNamed('NIGHT.BATCH')!;
  const cells = layoutLines(model, program, PLACE);
  assert.equal(sum(cells), 4899);
  const perTick = (PLACE.width * PLACE.height) / 4899;
  for (const cell of cells.slice(0, 5)) {
    const area = cell.width * cell.height;
    assert.ok(Math.abs(area / perTick / cell.ticks - 1) < 0.05, `${cell.ticks}: ${area}`);
  }
});

test('a large profile stays a picture of few rectangles', () => {
  const large = makeModel(largeDocument(100_000));
  const cells = layoutPrograms(large, PLACE);
  assert.ok(cells.length < 8000, String(cells.length));
  const programs = cells.filter((cell) => cell.kind === 'program' || cell.kind === 'more programs');
  assert.equal(sum(programs), large.total);
  assert.equal(
    programs.reduce((count, cell) => count + (cell.kind === 'program' ? 1 : cell.count), 0),
    200,
  );
});

test('negative ticks, nothing at all, no room', () => {
  const hostile = makeModel(hostileDocument());
  assert.ok(layoutPrograms(hostile, PLACE).every((cell) => cell.ticks > 0));
  assert.deepEqual(layoutPrograms(model, { ...PLACE, width: 0 }), []);
  const empty = makeModel({
    ...ordersDocument(),
    names: [],
    sources: [],
    profile: {
      ...ordersDocument().profile,
      programs: { program: [], ticks: [], lines: [] },
      lines: { program: [], line: [], ticks: [] },
    },
  });
  assert.deepEqual(layoutPrograms(empty, PLACE), []);
});

test('points find the innermost cell', () => {
  const cells = layoutPrograms(model, PLACE);
  const line = cells.find((cell) => cell.kind === 'line')!;
  assert.equal(
    cellAt(cells, line.x + 1, line.y + 1, () => true),
    line,
  );
  assert.equal(
    cellAt(cells, line.x + 1, line.y + 1, (cell) => cell.kind === 'program')!.program,
    line.program,
  );
  assert.equal(
    cellAt(cells, -1, -1, () => true),
    null,
  );
});

test('arrow keys reach every program', () => {
  const programs = layoutPrograms(model, PLACE).filter((cell) => cell.kind === 'program');
  const reached = new Set([programs[0]]);
  for (const cell of reached) {
    for (const direction of ['left', 'right', 'up', 'down'] as const) {
      const next = neighbour(programs, cell, direction);
      if (next) reached.add(next);
    }
  }
  assert.equal(reached.size, programs.length);
});
