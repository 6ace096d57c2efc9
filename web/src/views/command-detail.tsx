// A selected sum of commands in full.

import type { Count } from '../data';
import type { CommandSum } from '../model/commands';
import { counted, duration, grouped, mean, share, toNumber } from '../model/numbers';
import { perRun } from '../model/run-changes';
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
        {sum.times === 0 ? whyNone(sum) : counted(sum.times, 'time')}
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
          Before{perRun(model.document)}:{' '}
          {sum.change.old_times === null ? 'not performed' : timesText(sum.change.old_times)}
          {sum.change.old_elapsed !== null &&
            `, ${duration(toNumber(sum.change.old_elapsed))} elapsed`}{' '}
          · change <SecondsChange value={elapsedChange(sum)} /> s
        </p>
      )}
    </Detail>
  );
}

/** A command that the page has only as a change. */
function whyNone({ change }: CommandSum): string {
  return change?.new_times === null ? 'Only in the baseline' : 'Left out of this page';
}

/** "1 time", "2.5 times". */
function timesText(times: Count): string {
  return `${mean(times)} ${toNumber(times) === 1 ? 'time' : 'times'}`;
}
