// The shared objects of the run.

import { useMemo } from 'preact/hooks';
import { filtered, hasWords, words } from '../model/filter';
import { grouped } from '../model/numbers';
import { type Sort, formatSort, ordered, parseSort } from '../model/order';
import { FilterBox, Name, Tally } from '../parts/bits';
import { usePage } from '../parts/context';
import { type Column, Grid } from '../parts/grid';

const BY_ORDER: Sort = { key: 'order', descending: false };

export function Objects() {
  const { model, router } = usePage();
  const { profile, baseline } = model.document;
  const objects = useMemo(
    () => objectRows(profile.objects, baseline?.profile.objects ?? null),
    [model],
  );
  const columns = useMemo((): Column[] => {
    const all: Column[] = [
      {
        key: 'order',
        title: '#',
        hint: 'In the order of the profile',
        align: 'right',
        width: '4rem',
        cell: (row) => grouped(row + 1),
      },
      {
        key: 'name',
        title: 'Shared object',
        width: 'minmax(12rem, 1fr)',
        cell: (row) => <Name name={objects[row].name} />,
      },
    ];
    if (baseline)
      all.push({
        key: 'state',
        title: 'Change',
        width: '8rem',
        cell: (row) => (
          <span class={`delta ${objects[row].state === 'both' ? 'noise' : 'neutral'}`}>
            {STATES[objects[row].state]}
          </span>
        ),
      });
    return all;
  }, [objects, baseline]);
  const sort = parseSort(
    router.param('sort'),
    BY_ORDER,
    columns.map((column) => column.key),
  );
  const order = useMemo(
    () =>
      ordered(
        objects.length,
        (row) =>
          sort.key === 'name' ? objects[row].name : sort.key === 'state' ? objects[row].state : row,
        sort.descending,
      ),
    [objects, sort.key, sort.descending],
  );
  const filter = router.param('filter');
  const rows = useMemo(
    () => filtered(order, (row) => hasWords(objects[row].name, words(filter))),
    [order, filter],
  );
  const at = Number(router.param('at') || -1);
  return (
    <div class="table-block small">
      <div class="bar-row">
        <h2>Shared objects</h2>
        <FilterBox
          label="Filter shared objects by name"
          hint="Name"
          value={filter}
          onInput={(value) => router.set({ filter: value })}
        />
      </div>
      <Grid
        label="Shared objects"
        columns={columns}
        rows={rows}
        sort={sort}
        onSort={(next) =>
          router.set({ sort: formatSort(next) === 'order' ? '' : formatSort(next) })
        }
        selected={at >= 0 && at < objects.length ? at : null}
        onSelect={(row) => router.set({ at: String(row) })}
        empty="No shared object matches the filter."
      />
      <Tally shown={rows.length} all={objects.length} what="shared objects" />
    </div>
  );
}

const STATES = { both: 'as before', new: 'new', gone: 'only before' };

interface ObjectRow {
  name: string;
  state: keyof typeof STATES;
}

function objectRows(now: string[], before: string[] | null): ObjectRow[] {
  const old = new Set(before ?? []);
  const own = new Set(now);
  const rows = now.map((name): ObjectRow => ({ name, state: old.has(name) ? 'both' : 'new' }));
  for (const name of old) if (!own.has(name)) rows.push({ name, state: 'gone' });
  return rows;
}
