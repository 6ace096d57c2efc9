// The text of a program as a table of lines with ticks and heat.

import { useMemo } from 'preact/hooks';
import { type ProgramLines, heatStep, verdictClass } from '../model/hot';
import type { Model } from '../model/model';
import { grouped } from '../model/numbers';
import { perRun } from '../model/run-changes';
import { clipped, nameText, visibleSource } from '../model/text';
import { Changed, Share } from '../parts/bits';
import { usePage } from '../parts/context';
import { type Column, Grid } from '../parts/grid';

export function SourceGrid(props: {
  facts: ProgramLines;
  selected: number | null;
  onSelect(line: number): void;
  onKey(key: string): boolean;
  onSight(from: number, to: number): void;
}) {
  const { model } = usePage();
  const { facts } = props;
  const source = model.sourceOf(facts.program);
  const rows = useMemo(() => lineNumbers(facts, source?.lines.length ?? null), [facts, source]);
  const columns = useMemo(() => sourceColumns(model, facts), [model, facts]);
  return (
    <div class="source-grid">
      <Grid
        dense
        label={`Source of ${clipped(nameText(model.document.names[facts.program]), 80)}`}
        columns={columns}
        rows={rows}
        selected={props.selected}
        onSelect={props.onSelect}
        {...(facts.hottest === null ? {} : { start: facts.hottest })}
        onKey={props.onKey}
        onSight={props.onSight}
        rowClass={(line) => {
          const own = facts.byLine.get(line);
          return own ? `heat-${heatStep(own.heat)} ${verdictClass(model, own.row)}` : '';
        }}
        empty="No line to show."
      />
    </div>
  );
}

/** All lines of a text; without one, those that have ticks. */
function lineNumbers(facts: ProgramLines, length: number | null): Uint32Array {
  if (length !== null) return Uint32Array.from({ length }, (_, index) => index + 1);
  return Uint32Array.from(facts.byLine.keys()).sort();
}

function sourceColumns(model: Model, facts: ProgramLines): Column[] {
  const source = model.sourceOf(facts.program);
  const { compared } = model.lines;
  const most = [...facts.byLine.values()].reduce((largest, own) => Math.max(largest, own.ticks), 0);
  const columns: Column[] = [
    {
      key: 'ticks',
      title: 'Ticks',
      align: 'right',
      width: '4.4rem',
      cell: (line) => {
        const own = facts.byLine.get(line);
        return own ? grouped(model.lines.exactTicks(own.row)) : '';
      },
    },
    {
      key: 'share',
      title: 'Share',
      hint: 'Share of all ticks',
      align: 'right',
      width: '7.5rem',
      minor: true,
      cell: (line) => {
        const own = facts.byLine.get(line);
        return own ? <Share part={own.ticks} total={model.total} most={most} /> : '';
      },
    },
  ];
  if (compared) {
    columns.push({
      key: 'change',
      title: `Change${perRun(model.document)}`,
      hint: 'Change in ticks; ~ is within noise',
      align: 'right',
      width: '4.6rem',
      cell: (line) => {
        const own = facts.byLine.get(line);
        return own && compared.change[own.row] !== 0 ? (
          <Changed change={compared.change[own.row]} kind={verdictClass(model, own.row)} />
        ) : (
          ''
        );
      },
    });
  }
  columns.push({
    key: 'line',
    title: 'Line',
    align: 'right',
    width: `${Math.max(2.4, String(facts.lastLine).length * 0.6 + 0.6)}rem`,
    cell: (line) => <span class="line-number">{line}</span>,
  });
  if (source) {
    const longest = source.lines.reduce((length, text) => Math.max(length, widthOf(text)), 20);
    columns.push({
      key: 'text',
      title: 'Text',
      width: `minmax(${Math.min(2000, longest + 2)}ch, 1fr)`,
      cell: (line) => <code>{clipped(visibleSource(source.lines[line - 1] ?? ''), 2000)}</code>,
    });
  }
  return columns;
}

/** Characters that a line takes, tabs to every fourth. */
function widthOf(text: string): number {
  let width = 0;
  for (let i = 0; i < text.length && width < 2000; ++i)
    width += text[i] === '\t' ? 4 - (width % 4) : 1;
  return width;
}
