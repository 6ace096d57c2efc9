// Hot spots: a picture of programs and lines by ticks, to walk into, beside a table of the same.

import { useMemo } from 'preact/hooks';
import { filtered, hasWords, lineFilter, words } from '../model/filter';
import { verdictClass } from '../model/hot';
import type { Model } from '../model/model';
import { type Sort, formatSort, parseSort } from '../model/order';
import { lineParam, programOf, programParam } from '../model/route';
import { sum } from '../model/total';
import { toNumber } from '../model/numbers';
import { Choice, Empty, FilterBox, Heading, Name, Tally } from '../parts/bits';
import { usePage } from '../parts/context';
import { Grid } from '../parts/grid';
import { Legend } from '../parts/legend';
import { Treemap } from '../pictures/treemap-picture';
import { LineDetail, ProgramDetail } from './details';
import { lineColumns, lineOrder } from './line-columns';
import { programColumns, programOrder, programTable, programVerdict } from './program-columns';

const BY_TICKS: Sort = { key: 'ticks', descending: true };

export function HotSpots() {
  const { model, router, printing } = usePage();
  const inside = programOf(model, router.param('in'));
  const table = router.param('table') === 'programs' ? 'programs' : 'lines';
  const filter = router.param('filter');
  const selected = selectedRow(model, router.param('program'), router.param('line'));

  const select = (row: number): void =>
    router.set({
      program: programParam(model, model.lines.program[row]),
      line: lineParam(model.lines.line(row)),
    });
  const open = (row: number): void =>
    router.go('source', {
      program: programParam(model, model.lines.program[row]),
      line: lineParam(model.lines.line(row)),
    });
  // Walking in and out is a step that "back" takes back.
  const walk = (changes: Record<string, string>): void =>
    router.go('hot', { ...Object.fromEntries(router.params), ...changes });
  const enter = (program: number): void => walk({ in: programParam(model, program), table: '' });
  const leave = (): void => walk({ in: '' });

  const test = useMemo(
    () => (words(filter).length > 0 ? lineFilter(model, filter) : null),
    [model, filter],
  );

  if (model.lines.size === 0) {
    return (
      <section class="view">
        <Heading title="Hot spots" question="Where did the ticks go?" />
        <Empty>This profile has no lines with ticks.</Empty>
      </section>
    );
  }
  return (
    <section class="view fill">
      <Heading title="Hot spots" question="Where did the ticks go, by program and line?" />
      <div class="split">
        {!printing && (
          <div class="pane picture-pane">
            <div class="bar-row">
              <nav class="crumbs" aria-label="Place in the picture">
                {inside === null ? (
                  <span aria-current="location">All programs</span>
                ) : (
                  <>
                    <button type="button" onClick={leave}>
                      All programs
                    </button>
                    <span aria-hidden="true">›</span>
                    <span aria-current="location">
                      <Name name={model.document.names[inside]} />
                    </span>
                  </>
                )}
              </nav>
              <Legend model={model} />
            </div>
            <Treemap
              model={model}
              inside={inside}
              selected={selected}
              kept={test}
              onEnter={enter}
              onLeave={leave}
              onSelect={select}
              onOpen={open}
            />
          </div>
        )}
        <div class="pane table-pane">
          <div class="bar-row">
            <Choice
              label="Table of"
              options={
                [
                  ['lines', 'Lines'],
                  ['programs', 'Programs'],
                ] as const
              }
              value={table}
              onChoose={(value) => router.set({ table: value === 'lines' ? '' : value, sort: '' })}
            />
            <FilterBox
              label="Filter by program, line number or source text"
              hint="Program, line or text"
              value={filter}
              onInput={(value) => router.set({ filter: value })}
            />
          </div>
          {table === 'lines' ? (
            <Lines
              inside={inside}
              test={test}
              selected={selected}
              onSelect={select}
              onOpen={open}
            />
          ) : (
            <Programs filter={filter} onEnter={enter} />
          )}
        </div>
      </div>
    </section>
  );
}

function Lines(props: {
  inside: number | null;
  test: ((row: number) => boolean) | null;
  selected: number | null;
  onSelect(row: number): void;
  onOpen(row: number): void;
}) {
  const { model, router } = usePage();
  const { inside, test } = props;
  const columns = useMemo(() => lineColumns(model), [model]);
  const sort = parseSort(
    router.param('sort'),
    BY_TICKS,
    columns.map((column) => column.key),
  );
  const order = useMemo(() => lineOrder(model, sort), [model, sort.key, sort.descending]);
  const rows = useMemo(() => {
    if (inside === null) return test ? filtered(order, test) : order;
    return filtered(order, (row) => model.lines.program[row] === inside && (!test || test(row)));
  }, [order, test, inside]);
  const ticks = useMemo(
    () => rows.reduce((total, row) => total + model.lines.ticks[row], 0),
    [rows],
  );
  return (
    <>
      <Grid
        label="Lines by ticks"
        columns={columns}
        rows={rows}
        sort={sort}
        onSort={(next) =>
          router.set({ sort: formatSort(next) === '-ticks' ? '' : formatSort(next) })
        }
        selected={props.selected}
        onSelect={props.onSelect}
        onOpen={props.onOpen}
        rowClass={(row) => verdictClass(model, row)}
        empty="No line matches the filter."
      />
      <Tally
        shown={rows.length}
        all={model.lines.size}
        what="lines"
        ticks={ticks}
        total={model.total}
      />
      {props.selected !== null && <LineDetail row={props.selected} />}
    </>
  );
}

function Programs({ filter, onEnter }: { filter: string; onEnter(program: number): void }) {
  const { model, router } = usePage();
  const table = useMemo(() => programTable(model), [model]);
  const columns = useMemo(() => programColumns(model, table), [model, table]);
  const sort = parseSort(
    router.param('sort'),
    BY_TICKS,
    columns.map((column) => column.key),
  );
  const order = useMemo(
    () => programOrder(model, table, sort),
    [model, table, sort.key, sort.descending],
  );
  const rows = useMemo(() => {
    const wanted = words(filter);
    return filtered(order, (row) => hasWords(model.document.names[table.program(row)], wanted));
  }, [order, filter]);
  const selected = programOf(model, router.param('program'));
  const ticks = toNumber(sum(Array.from(rows, (row) => table.ticks(row))));
  return (
    <>
      <Grid
        label="Programs by ticks"
        columns={columns}
        rows={rows}
        sort={sort}
        onSort={(next) =>
          router.set({ sort: formatSort(next) === '-ticks' ? '' : formatSort(next) })
        }
        selected={selected === null ? null : (table.rowOf.get(selected) ?? null)}
        onSelect={(row) =>
          router.set({ program: programParam(model, table.program(row)), line: '' })
        }
        onOpen={(row) => onEnter(table.program(row))}
        rowClass={(row) => programVerdict(table.change(row))}
        empty="No program matches the filter."
      />
      <Tally
        shown={rows.length}
        all={table.size}
        what="programs"
        ticks={ticks}
        total={model.total}
      />
      {selected !== null && (
        <ProgramDetail program={selected} change={table.change(table.rowOf.get(selected) ?? -1)} />
      )}
    </>
  );
}

/** The row that the address names, null when there is none. */
export function selectedRow(model: Model, program: string, line: string): number | null {
  const index = programOf(model, program);
  if (index === null || line === '') return null;
  return model.lines.rowsOf(index).find((row) => lineParam(model.lines.line(row)) === line) ?? null;
}
