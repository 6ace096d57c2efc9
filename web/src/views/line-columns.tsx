// The columns of the table of lines, and the orders it sorts by.

import { verdictClass } from '../model/hot';
import type { Model } from '../model/model';
import { grouped, relative } from '../model/numbers';
import { perRun } from '../model/run-changes';
import { type Sort, nameRanks, ordered } from '../model/order';
import { lineText } from '../model/text';
import { Changed, Mean, Name, Share, Text } from '../parts/bits';
import type { Column } from '../parts/grid';

export const NAME_WIDTH = 'minmax(7rem, 1.6fr)';
export const NUMBER_WIDTH = 'minmax(4.5rem, 0.7fr)';
export const SHARE_WIDTH = 'minmax(6.5rem, 1fr)';

export function lineColumns(model: Model): Column[] {
  const { lines, document, total } = model;
  const most = lines.ticks.reduce((largest, ticks) => Math.max(largest, ticks), 0);
  const columns: Column[] = [
    {
      key: 'program',
      title: 'Program',
      width: NAME_WIDTH,
      cell: (row) => <Name name={document.names[lines.program[row]]} />,
    },
    {
      key: 'line',
      title: 'Line',
      align: 'right',
      width: 'minmax(3.2rem, 0.4fr)',
      cell: (row) => lineText(lines.line(row)),
    },
    {
      key: 'ticks',
      title: 'Ticks',
      hint: 'Profiling ticks',
      align: 'right',
      width: NUMBER_WIDTH,
      cell: (row) => grouped(lines.exactTicks(row)),
    },
    {
      key: 'share',
      title: 'Share',
      hint: 'Share of all ticks, cut to two decimals',
      align: 'right',
      width: SHARE_WIDTH,
      minor: lines.compared !== null,
      cell: (row) => <Share part={lines.ticks[row]} total={total} most={most} />,
    },
  ];
  const { compared } = lines;
  if (compared) {
    columns.push(
      {
        key: 'old',
        title: `Before${perRun(document)}`,
        hint: 'Ticks in the baseline',
        align: 'right',
        width: NUMBER_WIDTH,
        minor: true,
        cell: (row) => <Mean value={compared.old[row]} />,
      },
      {
        key: 'change',
        title: `Change${perRun(document)}`,
        hint: 'Change in ticks; ~ is within noise',
        align: 'right',
        width: NUMBER_WIDTH,
        cell: (row) => <Changed change={compared.change[row]} kind={verdictClass(model, row)} />,
      },
      {
        key: 'relative',
        title: 'Change %',
        hint: 'Change in per cent of before',
        align: 'right',
        width: NUMBER_WIDTH,
        minor: 'soon',
        cell: (row) => (
          <span class={`delta ${verdictClass(model, row)}`}>{relativeOf(model, row)}</span>
        ),
      },
    );
  }
  if (document.sources.length > 0) {
    columns.push({
      key: 'text',
      title: 'Source text',
      width: 'minmax(8rem, 2.6fr)',
      minor: compared ? 'soon' : true,
      cell: (row) => (
        <code>
          <Text text={sourceText(model, row).trim()} />
        </code>
      ),
    });
  }
  return columns;
}

export function relativeOf(model: Model, row: number): string {
  const compared = model.lines.compared!;
  const old = compared.old[row];
  return relative(Number.isNaN(old) ? 0 : old, compared.change[row]);
}

export function sourceText(model: Model, row: number): string {
  const { lines } = model;
  return model.sourceOf(lines.program[row])?.lines[lines.number[row] - 1] ?? '';
}

/** Rows of the line table in a column's order. */
export function lineOrder(model: Model, sort: Sort): Uint32Array {
  const { lines } = model;
  const { compared } = lines;
  const by = (value: (row: number) => number | string): Uint32Array =>
    ordered(lines.size, value, sort.descending);
  switch (sort.key) {
    case 'program': {
      const ranks = nameRanks(model.document.names);
      return by((row) => ranks[lines.program[row]]);
    }
    case 'line':
      return by((row) =>
        Number.isNaN(lines.number[row]) ? String(lines.line(row)) : lines.number[row],
      );
    case 'old':
      return by((row) => compared?.old[row] ?? 0);
    case 'change':
      return by((row) => compared?.change[row] ?? 0);
    case 'relative':
      return by((row) => (compared ? relativeKey(compared.old[row], compared.change[row]) : 0));
    case 'text':
      return by((row) => sourceText(model, row).trim());
    default:
      // As they came: most ticks first.
      return sort.descending
        ? Uint32Array.from({ length: lines.size }, (_, row) => row)
        : by((row) => lines.ticks[row]);
  }
}

/** What is new has no relative change: it counts as infinite. */
function relativeKey(old: number, change: number): number {
  if (change === 0) return 0;
  return Number.isNaN(old) || old === 0 ? Infinity : change / Math.abs(old);
}
