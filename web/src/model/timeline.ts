// The layout of the time line: bands of rows for commands and inputs, and those of the baseline below.

import { type Event, type Session, trackRows } from './session';

export interface Band {
  title: string;
  session: Session;
  kind: Event['kind'];
  /** First row for each track. */
  first: number[];
  rows: number;
  top: number;
  rowHeight: number;
  height: number;
  /** Of the baseline: drawn paler, not selected. */
  before: boolean;
}

/**
 * Rows are as high as fits, within reason: all together take about 23 lines of text at most. `em` is the
 * size of the page's text in pixels.
 */
export function makeBands(
  now: Session,
  before: Session | null,
  em: number,
): { bands: Band[]; height: number } {
  const [axis, gap, title] = [1.75 * em, 0.65 * em, 1.1 * em];
  const wanted = [
    band('Commands', now, 'command', false),
    band('Inputs', now, 'input', false),
    ...(before
      ? [
          band('Commands before', before, 'command', true),
          band('Inputs before', before, 'input', true),
        ]
      : []),
  ].filter((candidate) => candidate.rows > 0);
  const rows = wanted.reduce((sum, candidate) => sum + candidate.rows, 0);
  const free = 23 * em - axis - wanted.length * (gap + title);
  const rowHeight = Math.max(0.35 * em, Math.min(2 * em, Math.floor(free / Math.max(1, rows))));
  let top = axis;
  for (const candidate of wanted) {
    candidate.top = top + title;
    candidate.rowHeight = rowHeight;
    candidate.height = candidate.rows * rowHeight;
    top = candidate.top + candidate.height + gap;
  }
  return { bands: wanted, height: top };
}

function band(title: string, session: Session, kind: Event['kind'], before: boolean): Band {
  return {
    title,
    session,
    kind,
    ...trackRows(session.events, kind),
    top: 0,
    rowHeight: 0,
    height: 0,
    before,
  };
}

/** The row of an event within its band. */
export function rowOf(band: Band, event: Event): number {
  return band.first[event.track] + event.depth;
}

/** The window of time that is seen, in seconds. */
export interface Window {
  from: number;
  to: number;
}

/** Closest look: a hundredth of a second across, or a millionth of the whole. */
export function leastSpan(length: number): number {
  return Math.max(0.01, length / 1e6);
}

/** `window` moved and cut so that it lies within the session. */
export function within(window: Window, length: number): Window {
  const span = Math.min(length, Math.max(leastSpan(length), window.to - window.from));
  const from = Math.max(0, Math.min(length - span, window.from));
  return { from, to: from + span };
}

/** Zoomed by a factor around a moment: below 1 is closer. */
export function zoomed(window: Window, factor: number, around: number, length: number): Window {
  const from = around - (around - window.from) * factor;
  return within({ from, to: from + (window.to - window.from) * factor }, length);
}

/** Brings an event into sight: moved when it is outside, zoomed when it would be too small to see. */
export function showing(window: Window, event: Event, length: number): Window {
  const span = window.to - window.from;
  if (event.start >= window.from && event.end <= window.to) return window;
  if (event.end - event.start > span) return within({ from: event.start, to: event.end }, length);
  const centre = (event.start + event.end) / 2;
  return within({ from: centre - span / 2, to: centre + span / 2 }, length);
}

/** The event at a moment in a row; within `slack` seconds, so that thin ones can be hit. */
export function eventAt(band: Band, row: number, time: number, slack: number): Event | null {
  let best: Event | null = null;
  let least = slack;
  for (const event of band.session.events) {
    if (event.start > time + slack) break;
    if (event.kind !== band.kind || rowOf(band, event) !== row) continue;
    const distance = Math.max(event.start - time, time - event.end, 0);
    if (distance <= least) {
      least = distance;
      best = event;
    }
  }
  return best;
}

/** The next event of the same kind before or after; `from` null: the first or last one. */
export function stepEvent(events: Event[], from: Event | null, direction: 1 | -1): Event | null {
  const same = from ? events.filter((event) => event.kind === from.kind) : events;
  if (!from) return (direction > 0 ? same[0] : same[same.length - 1]) ?? null;
  return same[same.indexOf(from) + direction] ?? null;
}

/** The event of the other kind whose start is nearest. */
export function acrossEvent(events: Event[], from: Event): Event | null {
  let best: Event | null = null;
  for (const event of events) {
    if (event.kind === from.kind) continue;
    if (!best || Math.abs(event.start - from.start) < Math.abs(best.start - from.start))
      best = event;
  }
  return best;
}

/** Pairs each command with that of the other run: same text, same occurrence. */
export function matchCommands(
  now: { command: string }[],
  before: { command: string }[],
): (number | null)[] {
  const waiting = new Map<string, number[]>();
  before.forEach(({ command }, index) => {
    const list = waiting.get(command);
    if (list) list.push(index);
    else waiting.set(command, [index]);
  });
  const taken = new Map<string, number>();
  return now.map(({ command }) => {
    const next = taken.get(command) ?? 0;
    taken.set(command, next + 1);
    return waiting.get(command)?.[next] ?? null;
  });
}
