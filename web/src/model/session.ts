// The session as events on a time line: commands and inputs by their clocks, in seconds from the start
// of the run, with the pauses before them.

import type { Clock, Profile } from '../data';
import { toNumber } from './numbers';

export interface Event {
  kind: 'command' | 'input';
  /** Index into the profile's commands or inputs. */
  index: number;
  /** Seconds from the start of the run. */
  start: number;
  end: number;
  /** Seconds since the last event ended, 0 while one is running: what happened there is not recorded. */
  pause: number;
  /** Where it is drawn: tracks hold events that follow or contain each other, depth counts containers. */
  track: number;
  depth: number;
}

export interface Session {
  /** In the order of their starts. */
  events: Event[];
  /** Seconds that the time line covers, from 0. */
  length: number;
  /** Commands and inputs without usable clocks, which cannot be drawn. */
  unplaced: number;
}

export function makeSession(profile: Omit<Profile, 'lines'>): Session {
  const hertz = toNumber(profile.hertz);
  const candidates = [
    ...profile.commands.map((item, index) => ({ kind: 'command' as const, item, index })),
    ...profile.inputs.map((item, index) => ({ kind: 'input' as const, item, index })),
  ];
  const placed = candidates.filter(
    ({ item }) => isClock(item.startclock) && isClock(item.endclock),
  );
  if (hertz <= 0) return { events: [], length: 0, unplaced: candidates.length };

  const origin = originOf(
    profile,
    placed.map(({ item }) => toNumber(item.startclock)),
  );
  const events = placed.map(({ kind, item, index }): Event => {
    const start = (toNumber(item.startclock) - origin) / hertz;
    const end = Math.max(start, (toNumber(item.endclock) - origin) / hertz);
    return { kind, index, start, end, pause: 0, track: 0, depth: 0 };
  });
  events.sort(
    (a, b) =>
      a.start - b.start || b.end - a.end || kindOrder(a) - kindOrder(b) || a.index - b.index,
  );
  setPauses(events);
  setTracks(events.filter((event) => event.kind === 'command'));
  setTracks(events.filter((event) => event.kind === 'input'));
  const runEnd = isClock(profile.counters.endclock)
    ? (toNumber(profile.counters.endclock) - origin) / hertz
    : 0;
  const length = events.reduce((latest, event) => Math.max(latest, event.end), Math.max(0, runEnd));
  return { events, length, unplaced: candidates.length - placed.length };
}

function isClock(clock: Clock | null | undefined): boolean {
  return clock !== null && clock !== undefined && clock !== '' && Number.isFinite(Number(clock));
}

/** The start clock of the run; the first event's where that is missing or later. */
function originOf(profile: Omit<Profile, 'lines'>, starts: number[]): number {
  const first = starts.reduce((least, start) => Math.min(least, start), Infinity);
  const { startclock } = profile.counters;
  if (!isClock(startclock)) return Number.isFinite(first) ? first : 0;
  return Math.min(toNumber(startclock), first);
}

function kindOrder(event: Event): number {
  return event.kind === 'command' ? 0 : 1;
}

/** `events` in the order of their starts. */
function setPauses(events: Event[]): void {
  let latestEnd = 0;
  for (const event of events) {
    event.pause = Math.max(0, event.start - latestEnd);
    latestEnd = Math.max(latestEnd, event.end);
  }
}

/**
 * An event goes to the first track where it follows all others or lies inside the last one that still
 * runs; only events that cross need another track.
 */
function setTracks(events: Event[]): void {
  const tracks: Event[][] = [];
  for (const event of events) {
    let track = tracks.findIndex((open) => fits(open, event));
    if (track < 0) track = tracks.push([]) - 1;
    event.track = track;
    event.depth = tracks[track].length;
    tracks[track].push(event);
  }
}

/** Whether `event` can go below the events of a track that are still open; closes those that ended. */
function fits(open: Event[], event: Event): boolean {
  while (open.length > 0 && open[open.length - 1].end <= event.start) open.pop();
  return open.length === 0 || event.end <= open[open.length - 1].end;
}

/** Rows that the events of a kind take: for each track its first row and the rows of its depths. */
export function trackRows(events: Event[], kind: Event['kind']): { first: number[]; rows: number } {
  const depths: number[] = [];
  for (const event of events) {
    if (event.kind === kind)
      depths[event.track] = Math.max(depths[event.track] ?? 0, event.depth + 1);
  }
  let rows = 0;
  const first = depths.map((depth) => (rows += depth) - depth);
  return { first, rows };
}
