// Sample documents: real ones from the example profiles, and made ones at the edges.

import { existsSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import type { LeftOut, Profile, Source, ViewDocument } from '../src/data';
import { sum } from '../src/model/total';
import { compare } from './compare';
import { type ParsedProfile, decoded, emptyProfile, readProfile } from './profile-text';

/** The folder of the example profiles, from web/. */
const ORDERS = '../examples/orders';

/** Profile run2, with sources; compared with run1 when `baseline` is given. */
export function ordersDocument(
  options: { run?: string; baseline?: string; sources?: boolean } = {},
): ViewDocument {
  const { run = 'run1', baseline, sources = true } = options;
  const load = (name: string): ParsedProfile =>
    readProfile(join(ORDERS, name), `examples/orders/${name}`);
  return makeDocument(load(run), baseline ? load(baseline) : null, sources ? findSource : null);
}

/** What is in no record: an empty profile is a profile. */
export function emptyDocument(): ViewDocument {
  return makeDocument({ profile: emptyProfile('empty'), traces: [] }, null, null);
}

/** Puts a document together from parsed profiles; `find` gives the source of a program. */
export function makeDocument(
  now: ParsedProfile,
  old: ParsedProfile | null,
  find: ((program: string) => Omit<Source, 'program'> | null) | null,
  leftOut: LeftOut[] = [],
): ViewDocument {
  const names = [...new Set([...now.traces, ...(old?.traces ?? [])].map((trace) => trace.program))];
  const indexes = new Map(names.map((name, index) => [name, index]));
  const profile = withLines(now, indexes);
  const sources = names.flatMap((name, program): Source[] => {
    const found = find?.(name);
    return found ? [{ program, ...found }] : [];
  });
  return {
    format: 'ptick-view',
    version: 1,
    producer: 'ptick-view (sample)',
    names,
    profile,
    runs: 1,
    baseline: old ? compare(withLines(old, indexes), profile) : null,
    sources_wanted: find !== null,
    sources,
    left_out: leftOut,
  };
}

/** Entries of a program and line added up, most ticks first. */
function withLines({ profile, traces }: ParsedProfile, indexes: Map<string, number>): Profile {
  const byKey = new Map<string, ParsedProfile['traces'][number]>();
  for (const trace of traces) {
    const key = JSON.stringify([trace.program, trace.line]);
    const known = byKey.get(key);
    if (known) known.ticks += trace.ticks;
    else byKey.set(key, { ...trace });
  }
  const lines = [...byKey.values()].sort((a, b) => b.ticks - a.ticks);
  const groups = new Map<string, number[]>();
  for (const { program, ticks } of lines) {
    const group = groups.get(program);
    if (group) group.push(ticks);
    else groups.set(program, [ticks]);
  }
  const programs = [...groups]
    .map(([name, ticks]) => ({
      program: indexes.get(name)!,
      ticks: sum(ticks),
      lines: ticks.length,
    }))
    .sort((a, b) => Number(b.ticks) - Number(a.ticks));
  return {
    ...profile,
    programs: {
      program: programs.map(({ program }) => program),
      ticks: programs.map(({ ticks }) => ticks),
      lines: programs.map(({ lines }) => lines),
    },
    lines: {
      program: lines.map(({ program }) => indexes.get(program)!),
      line: lines.map(({ line }) => line),
      ticks: lines.map(({ ticks }) => ticks),
    },
  };
}

function findSource(program: string): Omit<Source, 'program'> | null {
  for (const folder of ['src', 'lib']) {
    const file = join(ORDERS, folder, program);
    if (!/^[A-Z.]+$/.test(program) || !existsSync(file)) continue;
    const lines = decoded(readFileSync(file)).replace(/\n$/, '').split('\n');
    return { file: `examples/orders/${folder}/${program}`, lines };
  }
  return null;
}
