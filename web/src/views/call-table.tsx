// All calls as a table.

import { useMemo } from 'preact/hooks';
import type { CallRow } from '../model/calls';
import { filtered, hasWords, words } from '../model/filter';
import type { Model } from '../model/model';
import { grouped, mean, toNumber } from '../model/numbers';
import { type Sort, formatSort, ordered, parseSort } from '../model/order';
import { perRun } from '../model/run-changes';
import { formatRoute, programParam } from '../model/route';
import { Barred, Changed, FilterBox, Name, Tally } from '../parts/bits';
import { usePage } from '../parts/context';
import { type Column, Grid } from '../parts/grid';

const BY_TIMES: Sort = { key: 'times', descending: true };

/** The address of a program in this view. */
export function callsLink(model: Model, name: string): string {
  const index = model.programNamed(name);
  return formatRoute('calls', [['program', index === null ? name : programParam(model, index)]]);
}

export function CallTable({ calls, name }: { calls: CallRow[]; name: string }) {
  const { model, router } = usePage();
  const columns = useMemo(() => callColumns(model, calls), [model, calls]);
  const sort = parseSort(
    router.param('sort'),
    BY_TIMES,
    columns.map((column) => column.key),
  );
  const order = useMemo(
    () => callOrder(model, calls, sort),
    [model, calls, sort.key, sort.descending],
  );
  const filter = router.param('filter');
  const rows = useMemo(() => {
    const wanted = words(filter);
    return filtered(order, (row) =>
      hasWords(`${calls[row].caller ?? ''} ${calls[row].subroutine ?? ''}`, wanted),
    );
  }, [order, filter]);
  const at = Number(router.param('at') || -1);
  const show = (row: number): void => {
    const target = calls[row].subroutine;
    if (target !== null) location.hash = callsLink(model, target).slice(1);
  };
  return (
    <div class="table-block">
      <div class="bar-row">
        <h2>All calls</h2>
        <FilterBox
          label="Filter by caller or subroutine"
          hint="Caller or subroutine"
          value={filter}
          onInput={(value) => router.set({ filter: value })}
        />
      </div>
      <Grid
        label="Subroutine calls by times"
        columns={columns}
        rows={rows}
        sort={sort}
        onSort={(next) =>
          router.set({ sort: formatSort(next) === '-times' ? '' : formatSort(next) })
        }
        selected={at >= 0 && at < calls.length ? at : null}
        onSelect={(row) => router.set({ at: String(row) })}
        onOpen={show}
        rowClass={(row) =>
          calls[row].caller === name || calls[row].subroutine === name ? 'near' : ''
        }
        empty="No call matches the filter."
      />
      <Tally shown={rows.length} all={calls.length} what="pairs of caller and subroutine" />
      <p class="hint">Enter or a double click shows the subroutine above.</p>
    </div>
  );
}

function callColumns(model: Model, calls: CallRow[]): Column[] {
  const most = calls[0]?.value ?? 0;
  const name = 'minmax(5.5rem, 1.6fr)';
  const number = 'minmax(4.4rem, 0.6fr)';
  const columns: Column[] = [
    {
      key: 'caller',
      title: 'Caller',
      width: name,
      cell: (row) => <Name name={calls[row].caller} />,
    },
    {
      key: 'subroutine',
      title: 'Subroutine',
      width: name,
      cell: (row) => <Name name={calls[row].subroutine} />,
    },
    {
      key: 'times',
      title: 'Times',
      hint: 'How often it was called',
      align: 'right',
      width: 'minmax(4.6rem, 1fr)',
      cell: (row) => (
        <Barred part={most > 0 ? calls[row].value / most : 0}>{grouped(calls[row].times)}</Barred>
      ),
    },
  ];
  if (model.document.baseline) {
    const per = perRun(model.document);
    columns.push(
      {
        key: 'old',
        title: `Before${per}`,
        hint: 'Times in the baseline',
        align: 'right',
        width: number,
        minor: true,
        cell: (row) => mean(timesBefore(model, calls[row])),
      },
      {
        key: 'change',
        title: `Change${per}`,
        hint: 'Change in times',
        align: 'right',
        width: number,
        cell: (row) => <CallChange call={calls[row]} />,
      },
    );
  }
  return columns;
}

/** Without a row of changes no run differs from those before. */
function timesBefore(model: Model, call: CallRow): number | string | null {
  if (call.change) return call.change.old;
  return model.document.runs === 1 ? call.times : call.value / model.document.runs;
}

export function CallChange({ call }: { call: CallRow }) {
  const change = toNumber(call.change?.change);
  return <Changed change={change} kind={change === 0 ? 'noise' : 'neutral'} />;
}

function callOrder(model: Model, calls: CallRow[], sort: Sort): Uint32Array {
  const by = (value: (call: CallRow) => number | string): Uint32Array =>
    ordered(calls.length, (row) => value(calls[row]), sort.descending);
  switch (sort.key) {
    case 'caller':
      return by((call) => call.caller ?? '');
    case 'subroutine':
      return by((call) => call.subroutine ?? '');
    case 'old':
      return by((call) => toNumber(timesBefore(model, call)));
    case 'change':
      return by((call) => toNumber(call.change?.change));
    default:
      return by((call) => call.value);
  }
}
