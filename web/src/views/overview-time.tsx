// The elapsed time as one bar: computing, typing, waiting; and that of the baseline below.

import type { RunTime } from '../model/elapsed';
import { duration, percent, signed } from '../model/numbers';

interface Part {
  name: string;
  note: string;
  kind: 'user' | 'system' | 'typing' | 'waiting';
  value(time: RunTime): number;
}

const PARTS: Part[] = [
  {
    name: 'Computing',
    note: 'CPU of the program',
    kind: 'user',
    value: (time) => time.userCpu ?? 0,
  },
  {
    name: 'System',
    note: 'CPU of the system for it',
    kind: 'system',
    value: (time) => time.systemCpu ?? 0,
  },
  {
    name: 'Typing',
    note: 'the user at the keyboard',
    kind: 'typing',
    value: (time) => time.typing,
  },
  {
    name: 'Waiting',
    note: 'the user thinks, disks, other processes',
    kind: 'waiting',
    value: (time) => time.waiting ?? 0,
  },
];

export function TimeBar({ now, before }: { now: RunTime; before: RunTime | null }) {
  if (!isWhole(now)) return null;
  const old = before && isWhole(before) ? before : null;
  const longest = Math.max(now.elapsed ?? 0, old?.elapsed ?? 0);
  return (
    <section class="card time" aria-label="Where the elapsed time went">
      <h2>
        Elapsed time <small>{duration(now.elapsed!)}</small>
      </h2>
      <Stack time={now} longest={longest} />
      {old && (
        <>
          <p class="hint">before: {duration(old.elapsed!)}</p>
          <Stack time={old} longest={longest} before />
        </>
      )}
      <ul class="stack-legend">
        {PARTS.map((part) => {
          const value = part.value(now);
          const change = old ? Number((value - part.value(old)).toFixed(2)) : 0;
          if (value === 0 && change === 0) return null;
          return (
            <li key={part.kind}>
              <i class={`key ${part.kind}`} aria-hidden="true" />
              <span>
                <b>{part.name}</b> {duration(value)} · {percent(value, now.elapsed!).toFixed(1)} %
                {change !== 0 && (
                  <span class={`delta ${change > 0 ? 'slower' : 'faster'}`}>
                    {' '}
                    {signed(change)} s
                  </span>
                )}
                <small>{part.note}</small>
              </span>
            </li>
          );
        })}
      </ul>
    </section>
  );
}

/** Whether the parts are known and add up to the elapsed time. */
function isWhole(time: RunTime): boolean {
  return time.elapsed !== null && time.elapsed > 0 && time.waiting !== null;
}

function Stack({
  time,
  longest,
  before = false,
}: {
  time: RunTime;
  longest: number;
  before?: boolean;
}) {
  return (
    <div class={before ? 'stack before' : 'stack'} aria-hidden="true">
      {PARTS.filter((part) => part.value(time) > 0).map((part) => (
        <i
          key={part.kind}
          class={part.kind}
          style={{ width: `${(part.value(time) / longest) * 100}%` }}
        />
      ))}
    </div>
  );
}
