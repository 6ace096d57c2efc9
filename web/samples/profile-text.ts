// Reads a profile's text into the document's form, for samples and tests. Only what samples need: plain
// profiles read alone. ptick-view itself uses the profile library.

import { readFileSync } from 'node:fs';
import type { Command, Count, Input, Line, Profile } from '../src/data';

export interface ParsedProfile {
  profile: Omit<Profile, 'lines' | 'programs'>;
  traces: { program: string; line: Line; ticks: number }[];
}

const COUNTERS = new Set(
  `ticks_index index_count ticks_trigger trigger_count usrcpu syscpu memused memfree pagesize starttime
   endtime startclock endclock read_count write_count delete_count clearfile_count open_count input_count
   portno pid ppid`.split(/\s+/),
);

export function readProfile(file: string, shownName = file): ParsedProfile {
  return parseProfile(decoded(readFileSync(file)), shownName);
}

export function parseProfile(text: string, shownName: string): ParsedProfile {
  const parsed: ParsedProfile = { profile: emptyProfile(shownName), traces: [] };
  for (const line of text.split('\n')) {
    if (line.startsWith('PROFILE:')) takeRecord(parsed, line.slice(8).split(/\t+/));
  }
  const { profile, traces } = parsed;
  traces.sort((a, b) => b.ticks - a.ticks);
  profile.subroutines.sort((a, b) => Number(b.times) - Number(a.times));
  return parsed;
}

export function emptyProfile(shownName: string): ParsedProfile['profile'] {
  return {
    format: 'ptick-profile',
    version: 1,
    profile: shownName,
    program: null,
    command: null,
    ticks: null,
    hertz: null,
    counters: {},
    resource: null,
    typerate: null,
    user_ticks: new Array<Count>(10).fill(0),
    commands: [],
    subroutines: [],
    objects: [],
    inputs: [],
  };
}

function takeRecord({ profile, traces }: ParsedProfile, fields: string[]): void {
  const [type, first = '', second = ''] = fields;
  if (type === 'trace') {
    traces.push({ program: first, line: lineOf(second), ticks: Number(fields[3]) });
  } else if (type === 'program') {
    profile.command = fields.slice(1).join(' ');
    profile.program = profile.command.split(' ')[0];
  } else if (type === 'perform') {
    profile.commands.push(commandOf(fields));
  } else if (type === 'input') {
    profile.inputs.push(inputOf(fields));
  } else if (type === 'subroutine_call') {
    const [caller = null, subroutine = null] = first.split(' ');
    profile.subroutines.push({ caller, subroutine, times: Number(second) });
  } else if (type === 'shared_object') {
    if (Number(second) !== 0 && first !== 'main()') profile.objects.push(first);
  } else if (type === 'user_ticks') {
    profile.user_ticks[Number(first) - 1] =
      Number(profile.user_ticks[Number(first) - 1]) + Number(second);
  } else if (type === 'typerate') {
    profile.typerate = { characters: Number(first), clock: Number(second) };
  } else if (type === 'resource') {
    profile.resource = fields.slice(1, 13).map(Number);
  } else if (type === 'ticks' || type === 'hertz') {
    profile[type] = Number(first);
  } else if (COUNTERS.has(type)) {
    profile.counters[type] = Number(first);
  }
}

function lineOf(text: string): Line {
  return /^(0|[1-9]\d{0,9})$/.test(text) && Number(text) < 2 ** 32 ? Number(text) : text;
}

function commandOf(fields: string[]): Command {
  const at = fields.indexOf('cmd');
  const pairs = new Map<string, string>();
  for (let i = 1; i + 1 <= at; i += 2) pairs.set(fields[i], fields[i + 1]);
  const count = (key: string): Count | null => (pairs.has(key) ? Number(pairs.get(key)) : null);
  return {
    command: fields.slice(at + 1).join('\t'),
    type: pairs.get('type') ?? null,
    startclock: count('startclock'),
    endclock: count('endclock'),
    starttime: count('starttime'),
    endtime: count('endtime'),
    ticks: count('ticks'),
    usrcpu: count('usrcpu'),
    syscpu: count('syscpu'),
  };
}

function inputOf(fields: string[]): Input {
  const [code, characters, startclock, endclock] = fields.slice(1, 5).map(Number);
  return { code, characters, startclock, endclock, text: fields.slice(5).join('\t') };
}

/** UTF-8 where it is valid, else byte for byte Latin-1. */
export function decoded(bytes: Uint8Array): string {
  try {
    return new TextDecoder('utf-8', { fatal: true, ignoreBOM: true }).decode(bytes);
  } catch {
    return Buffer.from(bytes).toString('latin1');
  }
}
