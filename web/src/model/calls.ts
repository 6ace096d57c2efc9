// Who calls whom, and how often.

import type { Baseline, Call, CallChange, Count } from '../data';
import { toNumber } from './numbers';
import { Total } from './total';

/** Calls of one caller and subroutine, added up. `caller`, `subroutine` null: the record has no such word. */
export interface CallRow {
  caller: string | null;
  subroutine: string | null;
  times: Count;
  value: number;
  change: CallChange | null;
}

export function callRows(calls: Call[], baseline: Baseline | null): CallRow[] {
  const totals = new Map<string, { call: Call; total: Total }>();
  for (const call of calls) {
    const key = pairKey(call.caller, call.subroutine);
    const known = totals.get(key);
    if (known) {
      known.total.add(call.times);
    } else {
      const total = new Total();
      total.add(call.times);
      totals.set(key, { call, total });
    }
  }
  const changes = new Map(
    baseline?.changes.subroutines.map((change) => [
      pairKey(change.caller, change.subroutine),
      change,
    ]),
  );
  const rows = [...totals].map(([key, { call, total }]) =>
    makeRow(call.caller, call.subroutine, total.value(), changes.get(key) ?? null),
  );
  for (const [key, change] of changes) {
    if (!totals.has(key)) rows.push(makeRow(change.caller, change.subroutine, 0, change));
  }
  return rows.sort((a, b) => b.value - a.value);
}

function pairKey(caller: string | null, subroutine: string | null): string {
  return JSON.stringify([caller, subroutine]);
}

function makeRow(
  caller: string | null,
  subroutine: string | null,
  times: Count,
  change: CallChange | null,
): CallRow {
  return { caller, subroutine, times, value: toNumber(times), change };
}

/** All programs that call or are called: name, calls made and received; who calls most comes first. */
export function callers(rows: CallRow[]): { name: string; made: number; received: number }[] {
  const programs = new Map<string, { name: string; made: number; received: number }>();
  const of = (name: string) => {
    const known = programs.get(name);
    if (known) return known;
    const fresh = { name, made: 0, received: 0 };
    programs.set(name, fresh);
    return fresh;
  };
  for (const row of rows) {
    if (row.caller !== null) of(row.caller).made += row.value;
    if (row.subroutine !== null) of(row.subroutine).received += row.value;
  }
  return [...programs.values()].sort((a, b) => b.made - a.made || b.received - a.received);
}
