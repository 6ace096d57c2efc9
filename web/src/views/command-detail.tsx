// A selected sum of commands in full.

import type { CommandSum } from '../model/commands';
import { counted, duration, grouped, share, toNumber } from '../model/numbers';
import { formatRoute } from '../model/route';
import { Text } from '../parts/bits';
import { usePage } from '../parts/context';
import { SecondsChange, elapsedChange } from './command-columns';
import { Detail } from './details';
import { aroundEvent } from './event-details';

export function SumDetail({ sum }: { sum: CommandSum }) {
  const page = usePage();
  const { model } = page;
  const longest = page
    .session()
    .events.find((event) => event.kind === 'command' && event.index === sum.longestIndex);
  return (
    <Detail
      title={<Text text={sum.command} whole />}
      links={
        <>
          {sum.times > 0 && (
            <a
              href={formatRoute('commands', [
                ['table', 'each'],
                ['filter', sum.command.slice(0, 200)],
              ])}
            >
              One by one
            </a>
          )}
          {longest && (
            <a href={formatRoute('session', aroundEvent(longest, `c${longest.index}`))}>
              Longest on the time line
            </a>
          )}
        </>
      }
    >
      <p>
        {sum.times === 0 ? 'Only in the baseline' : counted(sum.times, 'time')}
        {sum.elapsed !== null && (
          <>
            {', '}
            <b>{duration(sum.elapsed)}</b> elapsed
            {sum.longest !== null && sum.times > 1 && `, the longest ${duration(sum.longest)}`}
          </>
        )}
        {sum.cpu !== null && `, CPU ${duration(sum.cpu)}`}
      </p>
      {sum.ticks !== null && (
        <p>
          {grouped(sum.ticks)} ticks, {share(toNumber(sum.ticks), model.total)} of all
        </p>
      )}
      {sum.change && (
        <p>
          Before:{' '}
          {sum.change.old_times === null
            ? 'not performed'
            : counted(toNumber(sum.change.old_times), 'time')}
          {sum.change.old_elapsed !== null &&
            `, ${duration(toNumber(sum.change.old_elapsed))} elapsed`}{' '}
          · change <SecondsChange value={elapsedChange(sum)} /> s
        </p>
      )}
    </Detail>
  );
}
