// The events of the session as a table: the picture's numbers.

import { useMemo } from 'preact/hooks';
import { cpu } from '../model/commands';
import { filtered, hasWords, words } from '../model/filter';
import type { Model } from '../model/model';
import { NONE, grouped, seconds, toNumber } from '../model/numbers';
import { type Sort, formatSort, ordered, parseSort } from '../model/order';
import type { Event, Session } from '../model/session';
import { FilterBox, Tally, Text } from '../parts/bits';
import { usePage } from '../parts/context';
import { type Column, Grid } from '../parts/grid';
import { SecondsChange, eachChanges, hasPairs } from './command-columns';

const BY_START: Sort = { key: 'start', descending: false };

export function Events(props: {
  session: Session;
  selected: Event | null;
  onSelect(event: Event): void;
  onOpen(event: Event): void;
}) {
  const { model, router } = usePage();
  const { session } = props;
  const columns = useMemo(() => eventColumns(model, session), [model, session]);
  const sort = parseSort(
    router.param('sort'),
    BY_START,
    columns.map((column) => column.key),
  );
  const filter = router.param('filter');
  const texts = useMemo(
    () => session.events.map((event) => textOf(model, event)),
    [model, session],
  );
  const order = useMemo(
    () => eventOrder(model, session, sort),
    [session, sort.key, sort.descending],
  );
  const rows = useMemo(() => {
    const wanted = words(filter);
    return filtered(order, (row) => hasWords(`${session.events[row].kind} ${texts[row]}`, wanted));
  }, [order, filter, texts]);
  return (
    <div class="table-block">
      <div class="bar-row">
        <h2>Events</h2>
        <FilterBox
          label="Filter events by kind or text"
          hint="Command, input or text"
          value={filter}
          onInput={(value) => router.set({ filter: value })}
        />
      </div>
      <Grid
        label="Commands and inputs by time"
        columns={columns}
        rows={rows}
        sort={sort}
        onSort={(next) =>
          router.set({ sort: formatSort(next) === 'start' ? '' : formatSort(next) })
        }
        selected={props.selected ? session.events.indexOf(props.selected) : null}
        onSelect={(row) => props.onSelect(session.events[row])}
        onOpen={(row) => props.onOpen(session.events[row])}
        empty="No event matches the filter."
      />
      <Tally shown={rows.length} all={session.events.length} what="events" />
    </div>
  );
}

function textOf(model: Model, event: Event): string {
  const { commands, inputs } = model.document.profile;
  return event.kind === 'command'
    ? commands[event.index].command
    : (inputs[event.index].text ?? '');
}

function took(event: Event): number {
  return event.end - event.start;
}

function eventColumns(model: Model, session: Session): Column[] {
  const { profile } = model.document;
  const at = (row: number): Event => session.events[row];
  const command = (row: number) =>
    at(row).kind === 'command' ? profile.commands[at(row).index] : null;
  const columns: Column[] = [
    {
      key: 'start',
      title: 'Start, s',
      hint: 'Seconds from the start of the run',
      align: 'right',
      width: 'minmax(4.2rem, 0.5fr)',
      cell: (row) => seconds(at(row).start),
    },
    {
      key: 'pause',
      title: 'Pause before, s',
      hint: 'Seconds since the last event ended',
      align: 'right',
      width: 'minmax(4.6rem, 0.6fr)',
      minor: true,
      cell: (row) => seconds(at(row).pause),
    },
    {
      key: 'took',
      title: 'Took, s',
      hint: 'Seconds from start to end',
      align: 'right',
      width: 'minmax(4.2rem, 0.5fr)',
      cell: (row) => seconds(took(at(row))),
    },
  ];
  if (hasPairs(model)) {
    const changes = eachChanges(model);
    columns.push({
      key: 'change',
      title: 'Change, s',
      hint: 'Against the same command in the baseline',
      align: 'right',
      width: 'minmax(4.4rem, 0.5fr)',
      cell: (row) => {
        const event = at(row);
        return <SecondsChange value={event.kind === 'command' ? changes[event.index] : null} />;
      },
    });
  }
  columns.push(
    {
      key: 'ticks',
      title: 'Ticks',
      align: 'right',
      width: 'minmax(3.6rem, 0.5fr)',
      minor: hasPairs(model),
      cell: (row) => (command(row) ? grouped(command(row)!.ticks) : NONE),
    },
    {
      key: 'cpu',
      title: 'CPU, s',
      hint: 'User and system seconds',
      align: 'right',
      width: 'minmax(4rem, 0.5fr)',
      minor: true,
      cell: (row) => (command(row) ? seconds(cpu(command(row)!, model.hertz)) : NONE),
    },
    {
      key: 'kind',
      title: 'What',
      width: 'minmax(5rem, 0.5fr)',
      minor: true,
      cell: (row) => <span class={`kind ${at(row).kind}`}>{at(row).kind}</span>,
    },
    {
      key: 'text',
      title: 'Text',
      width: 'minmax(9rem, 3fr)',
      cell: (row) => <Text text={textOf(model, at(row))} />,
    },
  );
  return columns;
}

function eventOrder(model: Model, session: Session, sort: Sort): Uint32Array {
  const { profile } = model.document;
  const by = (value: (event: Event) => number | string): Uint32Array =>
    ordered(session.events.length, (row) => value(session.events[row]), sort.descending);
  const command = (event: Event) =>
    event.kind === 'command' ? profile.commands[event.index] : null;
  switch (sort.key) {
    case 'pause':
      return by((event) => event.pause);
    case 'took':
      return by(took);
    case 'change': {
      const changes = eachChanges(model);
      return by((event) => (event.kind === 'command' ? (changes[event.index] ?? NaN) : NaN));
    }
    case 'ticks':
      return by((event) =>
        command(event) && command(event)!.ticks !== null ? toNumber(command(event)!.ticks) : NaN,
      );
    case 'cpu':
      return by((event) => (command(event) ? (cpu(command(event)!, model.hertz) ?? NaN) : NaN));
    case 'kind':
      return by((event) => event.kind);
    case 'text':
      return by((event) => textOf(model, event));
    default:
      return by((event) => event.start);
  }
}
