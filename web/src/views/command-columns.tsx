// The columns of the tables of commands, and the orders they sort by.

import { type CommandSum, elapsed } from '../model/commands';
import type { Model } from '../model/model';
import { NONE, grouped, mean, seconds, signed, toNumber } from '../model/numbers';
import { type Sort, ordered } from '../model/order';
import { hasSeveralRuns, perRun } from '../model/run-changes';
import type { Session } from '../model/session';
import { matchCommands } from '../model/timeline';
import { Barred, Text } from '../parts/bits';
import type { Column } from '../parts/grid';

const NUMBER = 'minmax(4.4rem, 0.5fr)';
const BAR = 'minmax(6.5rem, 0.9fr)';
const TEXT = 'minmax(9rem, 3fr)';

export function summedColumns(model: Model, sums: CommandSum[]): Column[] {
  const compared = model.document.baseline !== null;
  const most = sums.reduce((largest, sum) => Math.max(largest, sum.elapsed ?? 0), 0);
  const columns: Column[] = [
    {
      key: 'command',
      title: 'Command',
      width: TEXT,
      cell: (row) => <Text text={sums[row].command} />,
    },
    {
      key: 'times',
      title: 'Times',
      hint: 'How often it was performed',
      align: 'right',
      width: NUMBER,
      minor: compared,
      cell: (row) => grouped(sums[row].times),
    },
    {
      key: 'elapsed',
      title: 'Elapsed, s',
      hint: 'Seconds of all together',
      align: 'right',
      width: BAR,
      cell: (row) => (
        <Barred part={most > 0 ? (sums[row].elapsed ?? 0) / most : 0}>
          {seconds(sums[row].elapsed)}
        </Barred>
      ),
    },
    {
      key: 'longest',
      title: 'Longest, s',
      hint: 'Seconds of the longest one',
      align: 'right',
      width: NUMBER,
      minor: compared ? 'soon' : true,
      cell: (row) => seconds(sums[row].longest),
    },
    {
      key: 'cpu',
      title: 'CPU, s',
      hint: 'User and system seconds',
      align: 'right',
      width: NUMBER,
      minor: true,
      cell: (row) => seconds(sums[row].cpu),
    },
    {
      key: 'ticks',
      title: 'Ticks',
      align: 'right',
      width: NUMBER,
      minor: true,
      cell: (row) => grouped(sums[row].ticks),
    },
  ];
  if (model.document.baseline) {
    const per = perRun(model.document);
    columns.push(
      {
        key: 'oldTimes',
        title: `Times before${per}`,
        align: 'right',
        width: NUMBER,
        minor: 'soon',
        cell: (row) => mean(timesBefore(model, sums[row])),
      },
      {
        key: 'old',
        title: `Before${per}, s`,
        hint: 'Elapsed seconds in the baseline',
        align: 'right',
        width: NUMBER,
        minor: true,
        cell: (row) => seconds(elapsedBefore(model, sums[row])),
      },
      {
        key: 'change',
        title: `Change${per}, s`,
        hint: 'Change of elapsed seconds',
        align: 'right',
        width: NUMBER,
        cell: (row) => <SecondsChange value={elapsedChange(sums[row])} />,
      },
    );
  }
  return columns;
}

export function SecondsChange({ value }: { value: number | null }) {
  if (value === null) return <>{NONE}</>;
  const kind = value > 0 ? 'slower' : value < 0 ? 'faster' : 'noise';
  return <span class={`delta ${kind}`}>{value === 0 ? '0' : signed(value)}</span>;
}

/** Without a row of changes no run differs from those before. */
function timesBefore(model: Model, sum: CommandSum): number | string | null {
  return sum.change ? sum.change.old_times : sum.times / model.document.runs;
}

function elapsedBefore(model: Model, sum: CommandSum): number | null {
  if (!sum.change) return sum.elapsed === null ? null : sum.elapsed / model.document.runs;
  return sum.change.old_elapsed === null ? null : toNumber(sum.change.old_elapsed);
}

/** Seconds; a command of one side only counts as 0 on the other. */
export function elapsedChange(sum: CommandSum): number | null {
  if (!sum.change) return 0;
  const { old_elapsed: old, new_elapsed: now } = sum.change;
  if (old === null && now === null) return null;
  return Number((toNumber(now) - toNumber(old)).toFixed(4));
}

export function summedOrder(model: Model, sums: CommandSum[], sort: Sort): Uint32Array {
  const by = (value: (sum: CommandSum) => number | string | null): Uint32Array =>
    ordered(sums.length, (row) => value(sums[row]) ?? NaN, sort.descending);
  switch (sort.key) {
    case 'command':
      return by((sum) => sum.command);
    case 'times':
      return by((sum) => sum.times);
    case 'longest':
      return by((sum) => sum.longest);
    case 'cpu':
      return by((sum) => sum.cpu);
    case 'ticks':
      return by((sum) => (sum.ticks === null ? null : toNumber(sum.ticks)));
    case 'oldTimes':
      return by((sum) => toNumber(timesBefore(model, sum)));
    case 'old':
      return by((sum) => elapsedBefore(model, sum));
    case 'change':
      return by(elapsedChange);
    default:
      return by((sum) => sum.elapsed);
  }
}

export function eachColumns(model: Model, session: Session): Column[] {
  const { profile, baseline } = model.document;
  const { commands } = profile;
  const starts = startsOf(session);
  const most = commands.reduce(
    (largest, command) => Math.max(largest, elapsed(command, model.hertz) ?? 0),
    0,
  );
  const columns: Column[] = [
    {
      key: 'start',
      title: 'Start, s',
      hint: 'Seconds from the start of the run',
      align: 'right',
      width: NUMBER,
      minor: baseline !== null,
      cell: (row) => seconds(starts.get(row) ?? null),
    },
    {
      key: 'elapsed',
      title: 'Elapsed, s',
      hint: 'Seconds from start to end',
      align: 'right',
      width: BAR,
      cell: (row) => {
        const took = elapsed(commands[row], model.hertz);
        return <Barred part={most > 0 ? (took ?? 0) / most : 0}>{seconds(took)}</Barred>;
      },
    },
    {
      key: 'type',
      title: 'Type',
      hint: 'Kind of command, as written',
      width: 'minmax(3.4rem, 0.3fr)',
      minor: true,
      cell: (row) => <Text text={commands[row].type ?? NONE} />,
    },
    {
      key: 'ticks',
      title: 'Ticks',
      align: 'right',
      width: NUMBER,
      minor: true,
      cell: (row) => grouped(commands[row].ticks),
    },
    {
      key: 'user',
      title: 'CPU user, s',
      align: 'right',
      width: NUMBER,
      minor: true,
      cell: (row) => clockSeconds(model, commands[row].usrcpu),
    },
    {
      key: 'system',
      title: 'CPU system, s',
      align: 'right',
      width: NUMBER,
      minor: true,
      cell: (row) => clockSeconds(model, commands[row].syscpu),
    },
    {
      key: 'command',
      title: 'Command',
      width: TEXT,
      cell: (row) => <Text text={commands[row].command} />,
    },
  ];
  if (hasPairs(model)) {
    const changes = eachChanges(model);
    columns.splice(2, 0, {
      key: 'change',
      title: 'Change, s',
      hint: 'Against the same command in the baseline',
      align: 'right',
      width: NUMBER,
      cell: (row) => <SecondsChange value={changes[row]} />,
    });
  }
  return columns;
}

function startsOf(session: Session): Map<number, number> {
  const starts = new Map<number, number>();
  for (const event of session.events)
    if (event.kind === 'command') starts.set(event.index, event.start);
  return starts;
}

function clockSeconds(model: Model, clock: number | string | null): string {
  return clock === null || model.hertz === null ? NONE : seconds(toNumber(clock) / model.hertz);
}

/** Whether commands can be compared one by one: one run on each side. */
export function hasPairs({ document }: Model): boolean {
  return document.baseline !== null && !hasSeveralRuns(document);
}

/** Seconds by which each command took longer than the same one in the baseline; null: there is none. */
export function eachChanges(model: Model): (number | null)[] {
  const { profile, baseline } = model.document;
  if (!baseline || !hasPairs(model)) return [];
  const oldHertz = toNumber(baseline.profile.hertz) || null;
  return matchCommands(profile.commands, baseline.profile.commands).map((match, index) => {
    if (match === null) return null;
    const now = elapsed(profile.commands[index], model.hertz);
    const old = elapsed(baseline.profile.commands[match], oldHertz);
    return now === null || old === null ? null : Number((now - old).toFixed(4));
  });
}

export function eachOrder(model: Model, session: Session, sort: Sort): Uint32Array {
  const { commands } = model.document.profile;
  const by = (value: (row: number) => number | string | null): Uint32Array =>
    ordered(commands.length, (row) => value(row) ?? NaN, sort.descending);
  const number = (count: number | string | null): number | null =>
    count === null ? null : toNumber(count);
  switch (sort.key) {
    case 'start': {
      const starts = startsOf(session);
      return by((row) => starts.get(row) ?? null);
    }
    case 'change': {
      const changes = eachChanges(model);
      return by((row) => changes[row]);
    }
    case 'type':
      return by((row) => commands[row].type ?? '');
    case 'ticks':
      return by((row) => number(commands[row].ticks));
    case 'user':
      return by((row) => number(commands[row].usrcpu));
    case 'system':
      return by((row) => number(commands[row].syscpu));
    case 'command':
      return by((row) => commands[row].command);
    default:
      return by((row) => elapsed(commands[row], model.hertz));
  }
}
