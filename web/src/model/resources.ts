// What the run used, as tables: counters by their records, with names and units.

import type { Baseline, Change, Count, CounterChange, Profile } from '../data';
import { grouped, roundedShare, toNumber } from './numbers';

export interface Fact {
  name: string;
  value: Count | null;
  unit: string;
  /** A second reading of the value: bytes of pages, a share. */
  note: string;
  change: Change | null;
}

export interface FactGroup {
  title: string;
  facts: Fact[];
}

const RESOURCE: [name: string, unit: string, group: 'memory' | 'faults' | 'system'][] = [
  ['Maximum resident set size', 'pages', 'memory'],
  ['Integral resident set size', 'pages', 'memory'],
  ['Page faults with no I/O', 'faults', 'faults'],
  ['Page faults requiring physical I/O', 'faults', 'faults'],
  ['Swaps', 'swaps', 'faults'],
  ['Block input operations', 'blocks', 'faults'],
  ['Block output operations', 'blocks', 'faults'],
  ['Messages sent', 'messages', 'system'],
  ['Messages received', 'messages', 'system'],
  ['Signals received', 'signals', 'system'],
  ['Voluntary context switches', 'switches', 'system'],
  ['Involuntary context switches', 'switches', 'system'],
];

const STATEMENTS: [key: string, name: string][] = [
  ['read_count', 'READ'],
  ['write_count', 'WRITE'],
  ['delete_count', 'DELETE'],
  ['clearfile_count', 'CLEARFILE'],
  ['open_count', 'OPEN'],
];

/** Groups in which the profile says something; facts that it does not have are left out. */
export function factGroups(
  profile: Profile,
  total: number,
  baseline: Baseline | null,
): FactGroup[] {
  const changes = new Map<string, Change>(
    baseline?.changes.counters.map((change) => [change.counter, change]),
  );
  const before = baseline?.profile.counters ?? {};
  const counter = (key: string, name: string, unit: string, note = ''): Fact => ({
    name,
    value: Object.hasOwn(profile.counters, key) ? profile.counters[key] : null,
    unit,
    note,
    change: changes.get(key) ?? null,
  });
  const state = (key: string, name: string, unit: string): Fact => ({
    ...counter(key, name, unit),
    change: difference(profile.counters[key], before[key]),
  });
  const events = (kind: string, name: string): Fact[] => [
    counter(`${kind}_count`, `${name} events`, 'events'),
    counter(
      `ticks_${kind}`,
      `Ticks on ${name.toLowerCase()} events`,
      'ticks',
      shareNote(profile, `ticks_${kind}`, total),
    ),
  ];
  const groups: FactGroup[] = [
    {
      title: 'Memory',
      facts: [
        state('memused', 'Memory used', ''),
        state('memfree', 'Memory free', ''),
        state('pagesize', 'Page size', 'bytes'),
        ...resourceFacts(profile, baseline, 'memory'),
      ],
    },
    { title: 'Page faults and block I/O', facts: resourceFacts(profile, baseline, 'faults') },
    {
      title: 'Statements',
      facts: STATEMENTS.map(([key, name]) => counter(key, name, 'statements')),
    },
    {
      title: 'Index and trigger events',
      facts: [...events('index', 'Index'), ...events('trigger', 'Trigger')],
    },
    { title: 'Messages and switches', facts: resourceFacts(profile, baseline, 'system') },
  ];
  return groups
    .map(({ title, facts }) => ({
      title,
      facts: facts.filter((fact) => fact.value !== null || fact.change !== null),
    }))
    .filter(({ facts }) => facts.length > 0);
}

function resourceFacts(profile: Profile, baseline: Baseline | null, wanted: string): Fact[] {
  const pageSize = toNumber(profile.counters.pagesize);
  return RESOURCE.flatMap(([name, unit, group], i): Fact[] => {
    if (group !== wanted) return [];
    const value = profile.resource?.[i] ?? null;
    const inBytes = unit === 'pages' && pageSize > 0 && value !== null;
    const note = inBytes ? `${grouped(product(value, pageSize))} bytes` : '';
    const change = difference(value, baseline?.profile.resource?.[i]);
    return [{ name, value, unit, note, change }];
  });
}

/** What is no sum (memory, a page size) is compared as it is; null when a side lacks it. */
function difference(now: Count | null | undefined, old: Count | null | undefined): Change | null {
  if (now === null || now === undefined || old === null || old === undefined) return null;
  const change = toNumber(now) - toNumber(old);
  return change === 0 ? null : { old, new: now, change };
}

/** Exact for whole numbers. */
function product(count: Count, pageSize: number): string {
  const whole = /^[+-]?\d+$/.test(String(count)) && Number.isInteger(pageSize);
  return whole ? (BigInt(count) * BigInt(pageSize)).toString() : String(toNumber(count) * pageSize);
}

function shareNote(profile: Profile, key: string, total: number): string {
  if (profile.counters[key] === undefined || total === 0) return '';
  return `${roundedShare(toNumber(profile.counters[key]), total)} of all ticks`;
}

/** The program's own counters that are not 0, on either side. */
export interface UserTick {
  index: number;
  ticks: Count;
  change: CounterChange | null;
}

export function userTicks(profile: Profile, baseline: Baseline | null): UserTick[] {
  const changes = new Map(baseline?.changes.counters.map((change) => [change.counter, change]));
  return profile.user_ticks
    .map((ticks, i) => ({
      index: i + 1,
      ticks,
      change: changes.get(`user_ticks_${i + 1}`) ?? null,
    }))
    .filter(({ ticks, change }) => toNumber(ticks) !== 0 || change !== null);
}

/** What was typed and how long that took, in seconds; null where the profile does not tell. */
export interface TypingRate {
  characters: Count;
  time: number | null;
  /** Seconds for a character. */
  forEach: number | null;
}

export function typingRate({ typerate, hertz }: Omit<Profile, 'lines'>): TypingRate | null {
  if (!typerate) return null;
  const { characters, clock } = typerate;
  const time = toNumber(hertz) > 0 ? toNumber(clock) / toNumber(hertz) : null;
  const forEach = time !== null && toNumber(characters) > 0 ? time / toNumber(characters) : null;
  return { characters, time, forEach };
}

/** Merges drop it, so a side has it for one run or not at all. */
export function typingChanges(
  now: TypingRate | null,
  before: TypingRate | null,
): { characters: Change | null; time: Change | null } {
  const time = difference(now?.time, before?.time);
  return {
    characters: difference(now?.characters, before?.characters),
    time: time && { ...time, change: Number(toNumber(time.change).toFixed(2)) },
  };
}
