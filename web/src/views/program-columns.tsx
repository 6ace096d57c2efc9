// The columns of the table of programs, and the orders it sorts by.

import type { ProgramChange } from '../data';
import type { Model } from '../model/model';
import { grouped, toNumber } from '../model/numbers';
import { perRun } from '../model/run-changes';
import { type Sort, nameRanks, ordered } from '../model/order';
import { Changed, Name, Share } from '../parts/bits';
import type { Column } from '../parts/grid';
import { NAME_WIDTH, NUMBER_WIDTH, SHARE_WIDTH } from './line-columns';

/** Programs of both sides: those with ticks, most first, then those that only the baseline has. */
export interface ProgramTable {
  size: number;
  program(row: number): number;
  rowOf: Map<number, number>;
  ticks(row: number): number | string;
  lines(row: number): number;
  change(row: number): ProgramChange | null;
}

export function programTable(model: Model): ProgramTable {
  const { programs } = model.document.profile;
  const changes = new Map(
    model.document.baseline?.changes.programs.map((change) => [change.program, change]),
  );
  const own = new Set(programs.program);
  const gone = [...changes.keys()].filter((program) => !own.has(program));
  const all = [...programs.program, ...gone];
  return {
    size: all.length,
    program: (row) => all[row],
    rowOf: new Map(all.map((program, row) => [program, row])),
    ticks: (row) => programs.ticks[row] ?? 0,
    lines: (row) => programs.lines[row] ?? 0,
    change: (row) => changes.get(all[row]) ?? null,
  };
}

export function programColumns(model: Model, table: ProgramTable): Column[] {
  const { document, total } = model;
  const most = model.programTicks.reduce((largest, ticks) => Math.max(largest, ticks), 0);
  const columns: Column[] = [
    {
      key: 'program',
      title: 'Program',
      width: NAME_WIDTH,
      cell: (row) => <Name name={document.names[table.program(row)]} />,
    },
    {
      key: 'lines',
      title: 'Lines',
      hint: 'Lines with ticks',
      align: 'right',
      width: NUMBER_WIDTH,
      minor: true,
      cell: (row) => grouped(table.lines(row)),
    },
    {
      key: 'ticks',
      title: 'Ticks',
      hint: 'Profiling ticks',
      align: 'right',
      width: NUMBER_WIDTH,
      cell: (row) => grouped(table.ticks(row)),
    },
    {
      key: 'share',
      title: 'Share',
      hint: 'Share of all ticks, cut to two decimals',
      align: 'right',
      width: SHARE_WIDTH,
      minor: document.baseline !== null,
      cell: (row) => <Share part={toNumber(table.ticks(row))} total={total} most={most} />,
    },
  ];
  if (document.baseline) {
    columns.push(
      {
        key: 'old',
        title: `Before${perRun(document)}`,
        hint: 'Ticks in the baseline',
        align: 'right',
        width: NUMBER_WIDTH,
        minor: true,
        cell: (row) => grouped(oldProgram(model, table, row)),
      },
      {
        key: 'change',
        title: `Change${perRun(document)}`,
        hint: 'Change in ticks; ~ is within noise',
        align: 'right',
        width: NUMBER_WIDTH,
        cell: (row) => (
          <Changed
            change={toNumber(table.change(row)?.change)}
            kind={programVerdict(table.change(row))}
          />
        ),
      },
    );
  }
  return columns;
}

function oldProgram(model: Model, table: ProgramTable, row: number): number | string | null {
  const change = table.change(row);
  return change ? change.old : toNumber(table.ticks(row)) / model.document.runs;
}

export function programVerdict(change: ProgramChange | null): string {
  if (!change) return '';
  if (!change.significant) return 'noise';
  return toNumber(change.change) > 0 ? 'slower' : 'faster';
}

export function programOrder(model: Model, table: ProgramTable, sort: Sort): Uint32Array {
  const by = (value: (row: number) => number | string): Uint32Array =>
    ordered(table.size, value, sort.descending);
  switch (sort.key) {
    case 'program': {
      const ranks = nameRanks(model.document.names);
      return by((row) => ranks[table.program(row)]);
    }
    case 'lines':
      return by((row) => table.lines(row));
    case 'old':
      return by((row) => toNumber(oldProgram(model, table, row)));
    case 'change':
      return by((row) => toNumber(table.change(row)?.change));
    default:
      return by((row) => toNumber(table.ticks(row)));
  }
}
