// The lines of both sides as one table of typed columns: first those of the profile, most ticks first,
// then those that only the baseline has. A row is an index into the columns.

import type { Baseline, Count, Line, LineColumns } from '../data';
import { toNumber } from './numbers';

/** How a line compares. Without a baseline every line is `same`. */
export const enum Verdict {
  same,
  noise,
  changed,
}

export interface LineTable {
  size: number;
  /** Rows of the profile itself; the rest is of the baseline only. */
  ownSize: number;
  program: Uint32Array;
  /** The line number, NaN where it is a text. */
  number: Float64Array;
  ticks: Float64Array;
  compared: Compared | null;
  line(row: number): Line;
  /** Ticks without loss of digits. */
  exactTicks(row: number): Count;
  /** Rows of one program, most ticks first. */
  rowsOf(program: number): Uint32Array;
}

/** Per row: ticks per run on both sides (NaN: the line is not there), their difference, what it means. */
export interface Compared {
  old: Float64Array;
  now: Float64Array;
  change: Float64Array;
  verdict: Uint8Array;
  p: Float64Array;
  q: Float64Array;
}

export function lineTable(
  columns: LineColumns,
  names: number,
  runs: number,
  baseline: Baseline | null,
): LineTable {
  const ownSize = columns.line.length;
  const added = baseline ? onlyOld(baseline) : [];
  const size = ownSize + added.length;
  const changes = baseline?.changes.lines;

  const program = new Uint32Array(size);
  const number = new Float64Array(size);
  const ticks = new Float64Array(size);
  for (let row = 0; row < ownSize; ++row) {
    program[row] = columns.program[row];
    number[row] = typeof columns.line[row] === 'number' ? (columns.line[row] as number) : NaN;
    ticks[row] = toNumber(columns.ticks[row]);
  }
  added.forEach((change, i) => {
    const line = changes!.line[change];
    program[ownSize + i] = changes!.program[change];
    number[ownSize + i] = typeof line === 'number' ? line : NaN;
  });

  const line = (row: number): Line =>
    row < ownSize ? columns.line[row] : changes!.line[added[row - ownSize]];
  const groups = grouping(program, names);
  const table: LineTable = {
    size,
    ownSize,
    program,
    number,
    ticks,
    compared: null,
    line,
    exactTicks: (row) => (row < ownSize ? columns.ticks[row] : 0),
    rowsOf: (index) => groups.rows.subarray(groups.start[index], groups.start[index + 1]),
  };
  if (baseline) table.compared = compare(table, runs, baseline, added);
  return table;
}

/** Indexes of the changes whose line the profile does not have. */
function onlyOld(baseline: Baseline): number[] {
  const rows: number[] = [];
  baseline.changes.lines.new.forEach((value, change) => {
    if (value === null) rows.push(change);
  });
  return rows;
}

/** A counting sort by program that keeps the order of the rows. */
function grouping(program: Uint32Array, names: number): { start: Uint32Array; rows: Uint32Array } {
  const start = new Uint32Array(names + 1);
  for (const index of program) ++start[index + 1];
  for (let i = 0; i < names; ++i) start[i + 1] += start[i];
  const next = start.slice();
  const rows = new Uint32Array(program.length);
  program.forEach((index, row) => {
    rows[next[index]++] = row;
  });
  return { start, rows };
}

function compare(table: LineTable, runs: number, baseline: Baseline, added: number[]): Compared {
  const { size, ownSize, ticks } = table;
  const changes = baseline.changes.lines;
  const compared: Compared = {
    old: new Float64Array(size),
    now: new Float64Array(size),
    change: new Float64Array(size),
    verdict: new Uint8Array(size),
    p: new Float64Array(size).fill(NaN),
    q: new Float64Array(size).fill(NaN),
  };
  for (let row = 0; row < ownSize; ++row) {
    compared.old[row] = compared.now[row] = ticks[row] / runs;
  }
  const rows = rowFinder(table);
  const take = (change: number, row: number): void => {
    compared.old[row] = side(changes.old[change]);
    compared.now[row] = side(changes.new[change]);
    compared.change[row] = toNumber(changes.change[change]);
    compared.verdict[row] = changes.significant[change] ? Verdict.changed : Verdict.noise;
    compared.p[row] = changes.p[change] ?? NaN;
    compared.q[row] = changes.q[change] ?? NaN;
  };
  added.forEach((change, i) => take(change, ownSize + i));
  changes.program.forEach((program, change) => {
    if (changes.new[change] === null) return;
    const row = rows(program, changes.line[change]);
    if (row !== undefined) take(change, row);
  });
  return compared;
}

function side(count: Count | null): number {
  return count === null ? NaN : toNumber(count);
}

/** Finds the row of the profile with this program and line. Numbers are below 2^32, so keys are exact. */
function rowFinder(table: LineTable): (program: number, line: Line) => number | undefined {
  const numbered = new Map<number, number>();
  const texts = new Map<string, number>();
  for (let row = table.ownSize - 1; row >= 0; --row) {
    const line = table.line(row);
    if (typeof line === 'number') numbered.set(table.program[row] * 2 ** 32 + line, row);
    else texts.set(`${table.program[row]} ${line}`, row);
  }
  return (program, line) =>
    typeof line === 'number'
      ? numbered.get(program * 2 ** 32 + line)
      : texts.get(`${program} ${line}`);
}
