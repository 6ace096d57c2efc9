import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import type { ViewDocument } from '../../src/data';
import { runTime } from '../../src/model/elapsed';
import { commandCount, hasSeveralRuns, perRun, runChanges } from '../../src/model/run-changes';
import { makeSession } from '../../src/model/session';

const one = ordersDocument({ run: 'run2', baseline: 'run1' });

function changesOf(document: ViewDocument) {
  const time = (profile: Parameters<typeof makeSession>[0]) =>
    runTime(profile, makeSession(profile));
  const { profile, baseline } = document;
  return runChanges(document, time(profile), baseline && time(baseline.profile));
}

test('one run a side: the sides are compared as they are', () => {
  assert.equal(hasSeveralRuns(one), false);
  assert.equal(perRun(one), '');
  const changes = changesOf(one)!;
  assert.deepEqual(changes.elapsed, { old: 542.07, new: 726.64, change: 184.57 });
  assert.equal(changes.cpu!.change, 136.88);
  assert.equal(changes.ticks!.change, 13677);
  assert.deepEqual(changes.commands, { old: 58, new: 60, change: 2 });
  assert.deepEqual(changes.inputs, { old: 100, new: 89, change: -11 });
});

test('without a baseline nothing is compared', () => {
  const alone = ordersDocument();
  assert.equal(changesOf(alone), null);
  assert.equal(perRun({ ...alone, runs: 3 }), '');
});

test('several runs: only what the comparison says per run', () => {
  const { baseline } = one;
  const counters = [
    { counter: 'elapsed', old: 100.5, new: 110, change: 9.5 },
    { counter: 'syscpu', old: 150, new: 100, change: -50 },
  ];
  const commands = [
    { command: 'A', old_times: 1.5, new_times: 4, old_elapsed: null, new_elapsed: null },
    { command: 'B', old_times: 2, new_times: null, old_elapsed: null, new_elapsed: null },
  ].map((row) => ({ ...row, old_cpu: null, new_cpu: null, old: null, new: null, change: 0 }));
  const several: ViewDocument = {
    ...one,
    runs: 2,
    profile: { ...one.profile, counters: { ...one.profile.counters, usrcpu: 4000, syscpu: 200 } },
    baseline: { ...baseline!, changes: { ...baseline!.changes, counters, commands } },
  };
  assert.equal(perRun(several), ' per run');
  const changes = changesOf(several)!;
  assert.equal(changes.elapsed!.change, 9.5);
  // User time did not change: 20 s a run. System time went from 1.5 s to 1 s.
  assert.deepEqual(changes.cpu, { old: 21.5, new: 21, change: -0.5 });
  assert.equal(changes.ticks!.change, 0);
  assert.deepEqual(changes.commands, { old: 29.5, new: 30, change: 0.5 });
  assert.equal(changes.inputs!.change, 0);
  const noClock = { ...several, profile: { ...several.profile, hertz: null } };
  assert.equal(changesOf(noClock)!.cpu, null);
});

test('commands that did not get in count', () => {
  const cut: ViewDocument = {
    ...one,
    left_out: [
      { what: 'commands', count: 40, of: 100, ticks: 7 },
      { what: 'commands of the baseline', count: 12, of: 70, ticks: null },
    ],
  };
  assert.equal(commandCount(cut), 100);
  assert.deepEqual(changesOf(cut)!.commands, { old: 70, new: 100, change: 30 });
});
