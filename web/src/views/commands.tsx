// Commands: what they cost, summed by their text and one by one.

import { useMemo } from 'preact/hooks';
import { type CommandSum, summedCommands } from '../model/commands';
import { filtered, hasWords, words } from '../model/filter';
import { toNumber } from '../model/numbers';
import { type Sort, formatSort, parseSort } from '../model/order';
import { Choice, Empty, FilterBox, Heading, Tally } from '../parts/bits';
import { usePage } from '../parts/context';
import { Grid } from '../parts/grid';
import { eachColumns, eachOrder, summedColumns, summedOrder } from './command-columns';
import { SumDetail } from './command-detail';
import { CommandDetail } from './event-details';

const BY_ELAPSED: Sort = { key: 'elapsed', descending: true };

export function CommandsView() {
  const { model, router } = usePage();
  const { profile, baseline } = model.document;
  const sums = useMemo(() => summedCommands(profile, model.hertz, baseline), [model]);
  const table = router.param('table') === 'each' ? 'each' : 'summed';
  if (sums.length === 0) {
    return (
      <section class="view">
        <Heading title="Commands" question="Which commands took long?" />
        <Empty>This profile has no commands.</Empty>
      </section>
    );
  }
  return (
    <section class="view fill">
      <Heading title="Commands" question="Which commands were performed, and what did they cost?" />
      <div class="bar-row">
        <Choice
          label="Commands"
          options={
            [
              ['summed', 'Summed'],
              ['each', 'One by one'],
            ] as const
          }
          value={table}
          onChoose={(value) =>
            router.set({ table: value === 'summed' ? '' : value, sort: '', at: '' })
          }
        />
        <FilterBox
          label="Filter by command or type"
          hint="Command or type"
          value={router.param('filter')}
          onInput={(value) => router.set({ filter: value })}
        />
      </div>
      {table === 'summed' ? <Summed sums={sums} /> : <Each />}
    </section>
  );
}

function Summed({ sums }: { sums: CommandSum[] }) {
  const { model, router } = usePage();
  const columns = useMemo(() => summedColumns(model, sums), [model, sums]);
  const sort = parseSort(
    router.param('sort'),
    BY_ELAPSED,
    columns.map((column) => column.key),
  );
  const order = useMemo(() => summedOrder(model, sums, sort), [sums, sort.key, sort.descending]);
  const filter = router.param('filter');
  const rows = useMemo(
    () => filtered(order, (row) => hasWords(sums[row].command, words(filter))),
    [order, filter],
  );
  const at = Number(router.param('at') || -1);
  const times = rows.reduce((total, row) => total + sums[row].times, 0);
  return (
    <>
      <Grid
        label="Commands summed by their text"
        columns={columns}
        rows={rows}
        sort={sort}
        onSort={(next) => router.set({ sort: formatSort(next) })}
        selected={at >= 0 && at < sums.length ? at : null}
        onSelect={(row) => router.set({ at: String(row) })}
        onOpen={(row) =>
          router.go('commands', { table: 'each', filter: sums[row].command.slice(0, 200) })
        }
        rowClass={(row) => (sums[row].times === 0 ? 'gone' : '')}
        empty="No command matches the filter."
      />
      <Tally
        shown={rows.length}
        all={sums.length}
        what={`commands, performed ${times.toLocaleString('en-US')} times`}
      />
      {at >= 0 && at < sums.length && <SumDetail sum={sums[at]} />}
    </>
  );
}

function Each() {
  const page = usePage();
  const { model, router } = page;
  const { commands } = model.document.profile;
  const columns = useMemo(() => eachColumns(model, page.session()), [model]);
  const sort = parseSort(
    router.param('sort'),
    BY_ELAPSED,
    columns.map((column) => column.key),
  );
  const order = useMemo(
    () => eachOrder(model, page.session(), sort),
    [model, sort.key, sort.descending],
  );
  const filter = router.param('filter');
  const rows = useMemo(
    () =>
      filtered(order, (row) =>
        hasWords(`${commands[row].type ?? ''} ${commands[row].command}`, words(filter)),
      ),
    [order, filter],
  );
  const at = router.param('at') === '' ? -1 : Number(router.param('at'));
  const known = Number.isInteger(at) && at >= 0 && at < commands.length;
  const event = known
    ? (page.session().events.find((each) => each.kind === 'command' && each.index === at) ?? null)
    : null;
  const ticks = rows.reduce((total, row) => total + toNumber(commands[row].ticks), 0);
  return (
    <>
      <Grid
        label="Commands one by one"
        columns={columns}
        rows={rows}
        sort={sort}
        onSort={(next) => router.set({ sort: formatSort(next) })}
        selected={known ? at : null}
        onSelect={(row) => router.set({ at: String(row) })}
        empty="No command matches the filter."
      />
      <Tally
        shown={rows.length}
        all={commands.length}
        what="commands"
        ticks={ticks}
        total={model.total}
      />
      {known && <CommandDetail index={at} event={event} />}
    </>
  );
}
