// Made documents: as large as they come, as hostile as they come, and a run that got slower by noise and
// by a cause.

import { join } from 'node:path';
import type { Input, LeftOut, ViewDocument } from '../src/data';
import { makeDocument, ordersDocument } from './documents';
import { type ParsedProfile, emptyProfile, readProfile } from './profile-text';
import { normal, randomNumbers } from './random';

/** `size` lines in programs of up to 2,000 lines, with commands and inputs, and sources of `sourced`. */
export function largeDocument(size: number, leftOut: LeftOut[] = [], sourced = 0): ViewDocument {
  const random = randomNumbers(size);
  const programs = Math.max(1, Math.ceil(size / 500));
  const traces: ParsedProfile['traces'] = [];
  for (let i = 0; i < size; ++i) {
    const program = `MODULE.${String(i % programs).padStart(5, '0')}`;
    const line = 1 + Math.floor(i / programs) * 4;
    traces.push({ program, line, ticks: ticksOf(random, i % programs) });
  }
  const profile = emptyProfile('runs/large');
  profile.command = 'MODULE.00000 ALL';
  profile.program = 'MODULE.00000';
  profile.hertz = 100;
  profile.ticks = traces.reduce((total, trace) => total + trace.ticks, 0);
  const events = Math.min(size, 50_000);
  profile.counters = {
    startclock: 0,
    endclock: events * 100,
    usrcpu: events * 40,
    syscpu: events * 5,
  };
  for (let i = 0; i < events; ++i) {
    if (i % 2 === 0) profile.commands.push(madeCommand(i, random));
    else profile.inputs.push(madeInput(i));
  }
  for (let i = 0; i < Math.min(programs, 5000); ++i) {
    const callee = `MODULE.${String((i * 7 + 1) % programs).padStart(5, '0')}`;
    profile.subroutines.push({
      caller: `MODULE.${String(i).padStart(5, '0')}`,
      subroutine: callee,
      times: 1 + (i % 997),
    });
  }
  const text = Array.from(
    { length: 2000 },
    (_, i) => `\tREAD REC.${i} FROM F.MAIN, ID ELSE REC.${i} = ""`,
  );
  const wanted = new Set(
    Array.from({ length: sourced }, (_, i) => `MODULE.${String(i).padStart(5, '0')}`),
  );
  return makeDocument(
    { profile, traces },
    null,
    (name) => (wanted.has(name) ? { file: `src/${name}`, lines: text } : null),
    leftOut,
  );
}

/** `size` lines, all of one program or each of a program of its own. */
export function oneSidedDocument(
  size: number,
  shape: 'one program' | 'many programs',
): ViewDocument {
  const profile = emptyProfile(`runs/${shape}`);
  const traces = Array.from({ length: size }, (_, i): ParsedProfile['traces'][number] => ({
    program: shape === 'one program' ? 'ALL' : `M${i}`,
    line: shape === 'one program' ? i + 1 : 7,
    ticks: 1 + (i % 50),
  }));
  return makeDocument({ profile, traces }, null, null);
}

/** Few programs are hot, and few lines of each. */
function ticksOf(random: () => number, program: number): number {
  return 1 + Math.floor((100_000 / (program + 1)) * random() ** 30) + Math.floor(3 * random());
}

function madeCommand(
  i: number,
  random: () => number,
): ParsedProfile['profile']['commands'][number] {
  const took = 5 + Math.floor(90 * random());
  return {
    command: `SELECT FILE${i % 300} WITH STATUS = ${i % 7}`,
    type: 'qry',
    startclock: i * 100,
    endclock: i * 100 + took,
    starttime: null,
    endtime: null,
    ticks: took,
    usrcpu: Math.floor(took / 2),
    syscpu: 1,
  };
}

function madeInput(i: number): Input {
  return {
    code: 13,
    characters: 5,
    startclock: i * 100 + 10,
    endclock: i * 100 + 60,
    text: `${10000 + i}`,
  };
}

/** Names and texts that try to be something else. */
export const HOSTILE = [
  '__proto__',
  'constructor',
  'toString',
  '</script><script>window.broken=1</script>',
  '<img src=x onerror="window.broken=1">',
  '<!--<script>',
  '{{7*7}}${7*7}',
  '"onmouseover="window.broken=1',
  'javascript:window.broken=1',
  'PAY\u202eLLOR\u202c',
  '\u2066left\u2069 \u200bzero',
  'NUL\u0000ESC\u001b[31mRED',
  'LS\u2028PS\u2029',
  'שלום.PROGRAM',
  '😀.FACE',
  '../../etc/passwd',
  '~1',
  '%41&b=c#d',
  '',
  ' ',
  'X'.repeat(10_000),
];

export function hostileDocument(): ViewDocument {
  const profile = emptyProfile(HOSTILE[3]);
  profile.command = HOSTILE.slice(0, 12).join(' ');
  profile.program = '__proto__';
  profile.hertz = 100;
  profile.ticks = '9007199254740993';
  profile.counters = {
    startclock: 0,
    endclock: 90_000,
    usrcpu: '18446744073709551616',
    memused: 'much' as never,
    __evil__: 1,
  };
  Object.defineProperty(profile.counters, '__proto__', { value: 5, enumerable: true });
  profile.user_ticks[2] = '9007199254740993';
  profile.objects = [...HOSTILE];
  const traces: ParsedProfile['traces'] = HOSTILE.map((program, i) => ({
    program,
    line: i + 1,
    ticks: 100 - i,
  }));
  traces.push(
    { program: '__proto__', line: '1e5', ticks: 3 },
    { program: '__proto__', line: '<b>7</b>', ticks: 2 },
  );
  traces.push(
    { program: 'constructor', line: 3, ticks: -4 },
    { program: 'constructor', line: '', ticks: 0.25 },
  );
  HOSTILE.forEach((text, i) => {
    profile.commands.push({
      ...madeCommand(i, () => 0.5),
      command: text || 'EMPTY',
      type: text.slice(0, 40),
    });
    profile.inputs.push({ ...madeInput(i), text });
    profile.subroutines.push({
      caller: text,
      subroutine: HOSTILE[(i + 1) % HOSTILE.length],
      times: i + 1,
    });
  });
  const old = structuredClone({ profile, traces }) as ParsedProfile;
  old.traces.forEach((trace, i) => (trace.ticks = 20 + 5 * i));
  const document = makeDocument({ profile, traces }, old, (name) =>
    name.length > 40
      ? null
      : { file: `src/${name}`, lines: HOSTILE.map((text) => `PRINT ${text}`) },
  );
  return document;
}

/** Run 1 after a change that made the price lookup slower, compared with run 1; all else is noise. */
export function slowerDocument(): ViewDocument {
  const document = ordersDocument();
  const load = (): ParsedProfile =>
    readProfile(join('../examples/orders', 'run1'), 'examples/orders/run1');
  const old = load();
  const now = load();
  const random = randomNumbers(7);
  for (const trace of now.traces) {
    const slower =
      trace.program === 'PRICE.LINES' && Number(trace.line) >= 80 && Number(trace.line) <= 88;
    const faster = trace.program === 'NIGHT.BATCH' && trace.line === 48;
    const expected = trace.ticks * (slower ? 1.6 : faster ? 0.7 : 1);
    trace.ticks = Math.max(0, Math.round(expected + Math.sqrt(expected) * normal(random)));
  }
  now.traces = now.traces.filter((trace) => trace.ticks > 0);
  now.profile.profile = 'examples/orders/run1 (slower)';
  now.profile.ticks = now.traces.reduce((total, trace) => total + trace.ticks, 0);
  const extra = Number(now.profile.ticks) - Number(old.profile.ticks);
  now.profile.counters.usrcpu = Number(old.profile.counters.usrcpu) + extra;
  now.profile.counters.endclock = Number(old.profile.counters.endclock) + extra;
  now.profile.commands.forEach((command) => {
    if (command.ticks !== null && command.command.startsWith('SORT')) {
      command.endclock = Number(command.endclock) + 180;
      command.ticks = Number(command.ticks) + 140;
    }
  });
  const sources = new Map(
    document.sources.map((source) => [document.names[source.program], source]),
  );
  return makeDocument(now, old, (name) => {
    const source = sources.get(name);
    return source ? { file: source.file, lines: source.lines } : null;
  });
}

/** All samples by name, as `sample` and the tests use them. */
export const SAMPLES: Record<string, () => ViewDocument> = {
  orders: () => ordersDocument(),
  'orders-without-sources': () => ordersDocument({ sources: false }),
  compared: () => ordersDocument({ run: 'run2', baseline: 'run1' }),
  slower: slowerDocument,
  empty: () => makeDocument({ profile: emptyProfile('empty'), traces: [] }, null, null),
  'lines-100k': () => largeDocument(100_000, [], 20),
  'lines-1m': () =>
    largeDocument(1_000_000, [{ what: 'lines', count: 234_567, of: 1_234_567, ticks: 234_567 }]),
  hostile: hostileDocument,
};
