import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import { hostileDocument } from '../../samples/made';
import { MARKER, inertJson, page } from '../../samples/page';
import { binomialTest, falseDiscovery } from '../../samples/significance';
import { makeModel, parseDocument } from '../../src/model/model';
import { factGroups, typingChanges, typingRate, userTicks } from '../../src/model/resources';

test('the data does no harm in a page: it ends no element and comes back whole', () => {
  const document = hostileDocument();
  const json = inertJson(document);
  assert.doesNotMatch(json, /[<\u2028\u2029\u0000-\u001f]/);
  assert.equal(JSON.stringify(parseDocument(json)), JSON.stringify(document));
});

test('the page is the template with the data in one place', () => {
  const template = readFileSync('dist/ptick-view.html', 'utf8');
  const [before, after] = template.split(MARKER);
  assert.equal(template.split(MARKER).length, 2);
  const whole = page(template, ordersDocument());
  assert.ok(whole.startsWith(before) && whole.endsWith(after));
  assert.equal(whole, page(template, ordersDocument()));
  assert.ok(Buffer.byteLength(template) <= 600 * 1024);
});

test('what is no document is refused with a reason', () => {
  const rows: [string, RegExp][] = [
    ['', /damaged/],
    ['{', /damaged/],
    ['null', /no profile/],
    ['{"format":"ptick-profile"}', /no profile/],
    ['{"format":"ptick-view","version":2}', /version 2/],
  ];
  for (const [text, want] of rows) assert.throws(() => parseDocument(text), want, text);
});

test('shares are of the ticks of the run; of the sum where it does not say', () => {
  const document = ordersDocument();
  assert.equal(makeModel(document).total, 23604);
  document.profile.ticks = null;
  assert.equal(makeModel(document).total, 23604);
  document.profile.ticks = '9007199254740993';
  assert.equal(makeModel(document).exactTotal, '9007199254740993');
  document.profile.hertz = 0;
  assert.equal(makeModel(document).hertz, null);
});

test('resources say their units, pages also in bytes', () => {
  const { profile } = ordersDocument();
  const groups = factGroups(profile, 23604, null);
  const facts = new Map(groups.flatMap((group) => group.facts).map((fact) => [fact.name, fact]));
  assert.deepEqual(
    groups.map((group) => group.title),
    [
      'Memory',
      'Page faults and block I/O',
      'Statements',
      'Index and trigger events',
      'Messages and switches',
    ],
  );
  assert.equal(facts.get('Maximum resident set size')!.note, '46,456,832 bytes');
  assert.equal(facts.get('Ticks on index events')!.note, '4.12 % of all ticks');
  assert.equal(facts.get('READ')!.value, 148213);
  assert.deepEqual(
    userTicks(profile, null).map((each) => [each.index, each.ticks]),
    [
      [1, 5553],
      [2, 4219],
      [3, 2386],
      [7, 2802],
    ],
  );
});

test('bytes of pages are exact beyond 2^53', () => {
  const { profile } = ordersDocument();
  profile.resource = ['9007199254740993', ...profile.resource!.slice(1)];
  const [memory] = factGroups(profile, 0, null);
  assert.match(
    memory.facts.find((fact) => fact.name.startsWith('Maximum'))!.note,
    /^36,893,488,147,419,107,328 bytes$/,
  );
});

test('a profile that says nothing has no facts', () => {
  const { profile } = ordersDocument();
  const silent = {
    ...profile,
    counters: {},
    resource: null,
    user_ticks: new Array<number>(10).fill(0),
  };
  assert.deepEqual(factGroups(silent, 0, null), []);
  assert.deepEqual(userTicks(silent, null), []);
});

test('the samples test ticks as the comparison does', () => {
  assert.equal(binomialTest(5, 10), 1);
  assert.equal(binomialTest(0, 10).toFixed(6), (2 / 1024).toFixed(6));
  assert.equal(binomialTest(0, 0), 1);
  assert.deepEqual(
    falseDiscovery([0.01, 0.04, 0.03]).map((q) => q.toFixed(3)),
    ['0.030', '0.040', '0.040'],
  );
});

test('typing is compared where both sides tell of it', () => {
  const side = (characters: number, clock: number) =>
    typingRate({ ...ordersDocument().profile, hertz: 100, typerate: { characters, clock } });
  assert.deepEqual(side(40, 1000), { characters: 40, time: 10, forEach: 0.25 });
  assert.deepEqual(typingChanges(side(50, 1010), side(40, 1000)), {
    characters: { old: 40, new: 50, change: 10 },
    time: { old: 10, new: 10.1, change: 0.1 },
  });
  assert.deepEqual(typingChanges(side(40, 1000), null), { characters: null, time: null });
  assert.deepEqual(typingChanges(null, null), { characters: null, time: null });
});

test('counters that did not change per run show no change, whatever their sums are', () => {
  const { profile, baseline } = ordersDocument({ run: 'run2', baseline: 'run1' });
  const same = { ...baseline!, changes: { ...baseline!.changes, counters: [] } };
  const facts = factGroups(profile, 1, same).flatMap((group) => group.facts);
  const changed = facts.filter(({ change }) => change !== null).map(({ name }) => name);
  assert.ok(!changed.includes('READ'), changed.join());
  assert.ok(changed.includes('Maximum resident set size'), changed.join());
});
