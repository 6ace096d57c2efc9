// Commands as a table, one by one and summed by their text.

import type { Baseline, Command, CommandChange, Count, Profile } from '../data';
import { toNumber } from './numbers';
import { Total } from './total';

/** Seconds between two clocks; null when one is missing or nobody knows how long a tick is. */
export function elapsed(
  item: { startclock: Count | null; endclock: Count | null },
  hertz: number | null,
): number | null {
  if (hertz === null || item.startclock === null || item.endclock === null) return null;
  const ticks = toNumber(item.endclock) - toNumber(item.startclock);
  return ticks / hertz;
}

/** CPU seconds of program and system together. */
export function cpu(command: Command, hertz: number | null): number | null {
  if (hertz === null || (command.usrcpu === null && command.syscpu === null)) return null;
  return (toNumber(command.usrcpu) + toNumber(command.syscpu)) / hertz;
}

export interface CommandSum {
  command: string;
  times: number;
  /** Seconds; null where no such command has clocks. */
  elapsed: number | null;
  longest: number | null;
  cpu: number | null;
  ticks: Count | null;
  /** Index of the longest one, the first of equal ones. */
  longestIndex: number;
  /** How it compares; null without a baseline or when nothing changed. */
  change: CommandChange | null;
}

/** Sums by command text, in the order of first appearance; then commands that only the baseline has. */
export function summedCommands(
  profile: Profile,
  hertz: number | null,
  baseline: Baseline | null,
): CommandSum[] {
  const groups = new Map<string, number[]>();
  profile.commands.forEach((command, index) => {
    const group = groups.get(command.command);
    if (group) group.push(index);
    else groups.set(command.command, [index]);
  });
  const changes = new Map(baseline?.changes.commands.map((change) => [change.command, change]));
  const sums = [...groups].map(([text, indexes]) =>
    sumOf(
      text,
      indexes.map((index) => ({ command: profile.commands[index], index })),
      hertz,
      changes.get(text) ?? null,
    ),
  );
  for (const change of changes.values()) {
    if (!groups.has(change.command)) {
      const none = {
        times: 0,
        elapsed: null,
        longest: null,
        cpu: null,
        ticks: null,
        longestIndex: -1,
      };
      sums.push({ command: change.command, ...none, change });
    }
  }
  return sums;
}

function sumOf(
  text: string,
  items: { command: Command; index: number }[],
  hertz: number | null,
  change: CommandChange | null,
): CommandSum {
  const ticks = new Total();
  let known = false;
  let longest: number | null = null;
  let longestIndex = items[0].index;
  for (const { command, index } of items) {
    if (command.ticks !== null) known = true;
    ticks.add(command.ticks);
    const took = elapsed(command, hertz);
    if (took !== null && (longest === null || took > longest)) {
      longest = took;
      longestIndex = index;
    }
  }
  const commands = items.map(({ command }) => command);
  return {
    command: text,
    times: items.length,
    elapsed: sumKnown(commands.map((command) => elapsed(command, hertz))),
    longest,
    cpu: sumKnown(commands.map((command) => cpu(command, hertz))),
    ticks: known ? ticks.value() : null,
    longestIndex,
    change,
  };
}

/** The sum of the values there are, null when there is none; free of the dust of binary fractions. */
function sumKnown(values: (number | null)[]): number | null {
  const known = values.filter((value) => value !== null);
  if (known.length === 0) return null;
  return Number(known.reduce((sum, value) => sum + value, 0).toFixed(6));
}
