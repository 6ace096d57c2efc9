import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import { hostileDocument, slowerDocument } from '../../samples/made';
import {
  heatMarks,
  heatStep,
  nextHot,
  programChoices,
  programLines,
  verdictClass,
} from '../../src/model/hot';
import { makeModel } from '../../src/model/model';
import { hottestLines, mostChanged } from '../../src/model/overview';

test('the hot lines are the smallest set that holds four fifths of the ticks', () => {
  const model = makeModel(ordersDocument());
  const facts = programLines(model, model.programNamed('NIGHT.BATCH')!);
  assert.equal(facts.hottest, 48);
  assert.deepEqual(facts.hot, [44, 47, 48, 53, 106, 108]);
  assert.ok(facts.hotTicks >= 0.8 * facts.ticks);
  const least = Math.min(...facts.hot.map((line) => facts.byLine.get(line)!.ticks));
  assert.ok(facts.hotTicks - least < 0.8 * facts.ticks);
  assert.equal(facts.lastLine, 155);
  assert.deepEqual(facts.beyond, []);
});

test('lines that the text does not have are kept aside', () => {
  const model = makeModel(hostileDocument());
  const facts = programLines(model, model.programNamed('__proto__')!);
  assert.deepEqual(
    facts.beyond.map((row) => model.lines.line(row)),
    ['1e5', '<b>7</b>'],
  );
  const other = programLines(model, model.programNamed('constructor')!);
  assert.deepEqual(
    other.beyond.map((row) => model.lines.line(row)),
    [''],
  );
  assert.equal(other.byLine.get(3)!.heat, 0, 'negative ticks give no heat');
});

test('next and previous hot line go around the end', () => {
  const hot = [5, 9, 20];
  const rows: [number, 1 | -1, number][] = [
    [0, 1, 5],
    [5, 1, 9],
    [20, 1, 5],
    [9, -1, 5],
    [5, -1, 20],
    [Infinity, -1, 20],
  ];
  for (const [from, direction, want] of rows)
    assert.equal(nextHot(hot, from, direction), want, `${from} ${direction}`);
  assert.equal(nextHot([], 3, 1), null);
});

test('heat has ten steps, none without ticks', () => {
  assert.deepEqual([-1, 0, 0.001, 0.25, 1, 7].map(heatStep), [0, 0, 1, 5, 9, 9]);
});

test('what changed most is beyond noise', () => {
  const model = makeModel(slowerDocument());
  const changed = mostChanged(model, 5);
  const names = changed.rows.map(
    (row) => `${model.document.names[model.lines.program[row]]} ${model.lines.line(row)}`,
  );
  assert.equal(names[0], 'PRICE.LINES 82');
  assert.equal(names[1], 'NIGHT.BATCH 48');
  assert.equal(changed.rows.length, 5);
  assert.ok(changed.noise > 300);
  assert.ok(changed.rows.every((row) => ['slower', 'faster'].includes(verdictClass(model, row))));
  assert.deepEqual(mostChanged(makeModel(ordersDocument()), 5), { rows: [], changed: 0, noise: 0 });
});

test('the hottest lines are the first with ticks', () => {
  assert.deepEqual(hottestLines(makeModel(ordersDocument()), 3), [0, 1, 2]);
});

test('the strip marks each line of a short source and the hottest of each part of a long one', () => {
  const model = makeModel(ordersDocument());
  const facts = programLines(model, model.programNamed('NIGHT.BATCH')!);
  const all = heatMarks(facts, 1000);
  assert.equal(all.length, facts.byLine.size);
  assert.deepEqual(all.at(-1), { line: 48, heat: 1 });
  assert.ok(all.every(({ heat }, i) => i === 0 || heat >= all[i - 1].heat));
  const few = heatMarks(facts, 3);
  assert.deepEqual(few.map(({ line }) => line).sort(), [108, 48, 53].sort());
  assert.deepEqual(heatMarks({ ...facts, byLine: new Map(), lastLine: 0 }, 3), []);
});

test('programs to choose: with ticks first, then the others, no more than wanted', () => {
  const document = {
    ...ordersDocument(),
    names: ['a', 'b', 'c', 'd'],
  };
  document.profile = {
    ...document.profile,
    programs: { program: [2, 1], ticks: [9, 1], lines: [1, 1] },
  };
  assert.deepEqual(programChoices(document, 9), [2, 1, 0, 3]);
  assert.deepEqual(programChoices(document, 3), [2, 1, 0]);
  assert.deepEqual(programChoices(document, 1), [2]);
});
