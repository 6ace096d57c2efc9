// How the run changed in what a run has once: its times and its counts. Where a side holds several runs
// these are means per run, from the counters of the comparison: sums of merged runs say nothing.

import type { Change, Count, LeftOut, Profile, ViewDocument } from '../data';
import type { RunTime } from './elapsed';
import { toNumber } from './numbers';

/** Whether a side holds several runs. Their clocks differ, so moments of both sides are not compared. */
export function hasSeveralRuns(document: ViewDocument): boolean {
  return document.runs > 1 || (document.baseline?.runs ?? 1) > 1;
}

/** " per run" where changes are means, else nothing. */
export function perRun(document: ViewDocument): string {
  return document.baseline && hasSeveralRuns(document) ? ' per run' : '';
}

/** Null: a side does not tell. Times in seconds. */
export interface RunChanges {
  elapsed: Change | null;
  cpu: Change | null;
  ticks: Change | null;
  commands: Change | null;
  inputs: Change | null;
}

/** `now` and `before` are the times of the sides; without a baseline there are no changes. */
export function runChanges(
  document: ViewDocument,
  now: RunTime,
  before: RunTime | null,
): RunChanges | null {
  const { profile, baseline } = document;
  if (!baseline || !before) return null;
  const old = baseline.profile;
  const several = hasSeveralRuns(document);
  return {
    elapsed: several ? counterChange(document, 'elapsed') : difference(now.elapsed, before.elapsed),
    cpu: several ? cpuChange(document) : difference(cpuTime(now), cpuTime(before)),
    ticks: counterChange(document, 'ticks'),
    commands: several
      ? commandChange(document)
      : difference(commandCount(document), oldCommandCount(document)),
    inputs: several
      ? counterChange(document, 'input_count')
      : difference(toNumber(inputCount(profile)), toNumber(inputCount(old))),
  };
}

/** User and system time together, null when neither is known. */
export function cpuTime({ userCpu, systemCpu }: RunTime): number | null {
  return userCpu === null && systemCpu === null ? null : (userCpu ?? 0) + (systemCpu ?? 0);
}

/** Those that did not get into the page, too. */
export function commandCount({ profile, left_out: leftOut }: ViewDocument): number {
  return countOf(leftOut, 'commands', profile.commands.length);
}

function oldCommandCount({ baseline, left_out: leftOut }: ViewDocument): number {
  return countOf(leftOut, 'commands of the baseline', baseline?.profile.commands.length ?? 0);
}

function countOf(leftOut: LeftOut[], what: LeftOut['what'], kept: number): number {
  return leftOut.find((part) => part.what === what)?.of ?? kept;
}

export function inputCount({ counters, inputs }: Omit<Profile, 'lines'>): Count {
  return counters.input_count ?? inputs.length;
}

function difference(now: number | null, old: number | null): Change | null {
  if (now === null || old === null) return null;
  return { old, new: now, change: Number((now - old).toFixed(2)) };
}

/** What has no row did not change. */
function counterChange({ baseline }: ViewDocument, counter: string): Change {
  const row = baseline!.changes.counters.find((each) => each.counter === counter);
  return row ?? { old: null, new: null, change: 0 };
}

function cpuChange(document: ViewDocument): Change | null {
  const { profile, runs } = document;
  const hertz = toNumber(profile.hertz);
  if (hertz <= 0) return null;
  let [old, change] = [0, 0];
  for (const counter of ['usrcpu', 'syscpu']) {
    const row = counterChange(document, counter);
    change += toNumber(row.change);
    old += row.change === 0 ? toNumber(profile.counters[counter]) / runs : toNumber(row.old);
  }
  [old, change] = [old / hertz, Number((change / hertz).toFixed(2))];
  return { old, new: old + change, change };
}

function commandChange(document: ViewDocument): Change {
  const change = document.baseline!.changes.commands.reduce(
    (sum, row) => sum + toNumber(row.new_times) - toNumber(row.old_times),
    0,
  );
  const now = commandCount(document) / document.runs;
  return { old: now - change, new: now, change };
}
