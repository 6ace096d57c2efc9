// The baseline of a sample document: what changed between two profiles, one run a side.

import type {
  Baseline,
  CallChange,
  Change,
  CommandChange,
  Count,
  CounterChange,
  Line,
  Profile,
} from '../src/data';
import { elapsed, summedCommands } from '../src/model/commands';
import { toNumber } from '../src/model/numbers';
import { binomialTest, falseDiscovery } from './significance';

interface Row {
  key: string;
  old: number | null;
  new: number | null;
}

export function compare(old: Profile, now: Profile): Baseline {
  const { lines: _, ...profile } = old;
  const lines = tested(
    changedRows(
      old.lines.line.map((line, i) => [
        lineKey(old.lines.program[i], line),
        toNumber(old.lines.ticks[i]),
      ]),
      now.lines.line.map((line, i) => [
        lineKey(now.lines.program[i], line),
        toNumber(now.lines.ticks[i]),
      ]),
    ),
  );
  const programs = tested(
    changedRows(
      old.programs.program.map((program, i) => [String(program), toNumber(old.programs.ticks[i])]),
      now.programs.program.map((program, i) => [String(program), toNumber(now.programs.ticks[i])]),
    ),
  );
  const keys = lines.map((row) => JSON.parse(row.key) as [number, Line]);
  return {
    profile,
    runs: 1,
    test: 'binomial',
    changes: {
      lines: {
        program: keys.map(([program]) => program),
        line: keys.map(([, line]) => line),
        old: lines.map((row) => row.old),
        new: lines.map((row) => row.new),
        change: lines.map((row) => change(row)),
        p: lines.map((row) => digits(row.p)),
        q: lines.map((row) => digits(row.q)),
        significant: lines.map((row) => (row.q <= 0.05 ? 1 : 0)),
      },
      programs: programs.map((row) => ({
        program: Number(row.key),
        old: row.old,
        new: row.new,
        change: change(row),
        p: digits(row.p),
        q: digits(row.q),
        significant: row.q <= 0.05,
      })),
      commands: commandChanges(old, now),
      subroutines: callChanges(old, now),
      counters: counterChanges(old, now),
    },
  };
}

function lineKey(program: number, line: Line): string {
  return JSON.stringify([program, line]);
}

function change(row: Row): number {
  return (row.new ?? 0) - (row.old ?? 0);
}

function digits(value: number): number {
  return Number(value.toPrecision(4));
}

function changedRows(old: [string, number][], now: [string, number][]): Row[] {
  const rows = new Map<string, Row>();
  for (const [key, value] of old) rows.set(key, { key, old: value, new: null });
  for (const [key, value] of now) {
    const known = rows.get(key);
    if (known) known.new = value;
    else rows.set(key, { key, old: null, new: value });
  }
  return [...rows.values()]
    .filter((row) => change(row) !== 0)
    .sort((a, b) => Math.abs(change(b)) - Math.abs(change(a)));
}

function tested(rows: Row[]): (Row & { p: number; q: number })[] {
  const ps = rows.map((row) => binomialTest(row.new ?? 0, (row.new ?? 0) + (row.old ?? 0)));
  const qs = falseDiscovery(ps);
  return rows.map((row, i) => ({ ...row, p: ps[i], q: qs[i] }));
}

function commandChanges(old: Profile, now: Profile): CommandChange[] {
  const side = (profile: Profile) =>
    new Map(
      summedCommands(profile, toNumber(profile.hertz) || null, null).map((sum) => [
        sum.command,
        sum,
      ]),
    );
  const before = side(old);
  const after = side(now);
  const texts = new Set([...before.keys(), ...after.keys()]);
  return [...texts]
    .map((command): CommandChange => {
      const a = before.get(command);
      const b = after.get(command);
      return {
        command,
        old_times: a?.times ?? null,
        new_times: b?.times ?? null,
        old_elapsed: a?.elapsed ?? null,
        new_elapsed: b?.elapsed ?? null,
        old_cpu: a?.cpu ?? null,
        new_cpu: b?.cpu ?? null,
        ...values(a ? (a.ticks ?? 0) : null, b ? (b.ticks ?? 0) : null),
      };
    })
    .filter(
      (row) =>
        row.old_times !== row.new_times ||
        row.old_elapsed !== row.new_elapsed ||
        row.old_cpu !== row.new_cpu ||
        row.change !== 0,
    );
}

function callChanges(old: Profile, now: Profile): CallChange[] {
  const side = (profile: Profile) =>
    profile.subroutines.map(({ caller, subroutine, times }): [string, number] => [
      JSON.stringify([caller, subroutine]),
      toNumber(times),
    ]);
  return changedRows(side(old), side(now)).map((row) => {
    const [caller, subroutine] = JSON.parse(row.key) as [string | null, string | null];
    return { caller, subroutine, ...values(row.old, row.new) };
  });
}

const COUNTED = /^(ticks|index|trigger|usrcpu|syscpu|read|write|delete|clearfile|open|input)(_|$)/;

function counterChanges(old: Profile, now: Profile): CounterChange[] {
  const side = (profile: Profile): [string, number][] => [
    ...Object.entries(profile.counters)
      .filter(([key]) => COUNTED.test(key))
      .map(([key, value]): [string, number] => [key, toNumber(value)]),
    ...(profile.ticks === null ? [] : [['ticks', toNumber(profile.ticks)] as [string, number]]),
    ...profile.user_ticks.map((ticks, i): [string, number] => [
      `user_ticks_${i + 1}`,
      toNumber(ticks),
    ]),
    ...elapsedCounter(profile),
  ];
  return changedRows(side(old), side(now)).map((row) => ({
    counter: row.key,
    ...values(row.old, row.new),
  }));
}

function elapsedCounter(profile: Profile): [string, number][] {
  const { startclock = null, endclock = null } = profile.counters;
  const seconds = elapsed({ startclock, endclock }, toNumber(profile.hertz) || null);
  return seconds === null ? [] : [['elapsed', seconds]];
}

function values(old: Count | null, now: Count | null): Change {
  return { old, new: now, change: toNumber(now) - toNumber(old) };
}
