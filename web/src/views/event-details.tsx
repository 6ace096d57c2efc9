// A selected command or input in full.

import { cpu, elapsed } from '../model/commands';
import { NONE, duration, grouped, moment, share, toNumber } from '../model/numbers';
import { formatRoute } from '../model/route';
import type { Event } from '../model/session';
import { visible } from '../model/text';
import { Text } from '../parts/bits';
import { usePage } from '../parts/context';
import { Detail } from './details';

export function CommandDetail({ index, event }: { index: number; event: Event | null }) {
  const { model, router } = usePage();
  const command = model.document.profile.commands[index];
  const took = elapsed(command, model.hertz);
  const spent = cpu(command, model.hertz);
  const when = moment(command.starttime);
  const links = (
    <>
      {router.view !== 'session' && event && (
        <a href={formatRoute('session', aroundEvent(event, `c${index}`))}>Show on the time line</a>
      )}
      {router.view !== 'commands' && (
        <a href={formatRoute('commands', [['filter', command.command.slice(0, 200)]])}>
          All of its kind
        </a>
      )}
    </>
  );
  return (
    <Detail title={<Text text={command.command} whole />} links={links}>
      <p>
        {took === null ? (
          'No clocks'
        ) : (
          <>
            <b>{duration(took)}</b> elapsed
          </>
        )}
        {event && ` at ${duration(event.start)} of the session`}
        {when && `, ${when}`}
      </p>
      <p>
        {command.ticks === null
          ? 'no ticks recorded'
          : `${grouped(command.ticks)} ticks, ${share(toNumber(command.ticks), model.total)} of all`}
        {spent !== null && ` · CPU ${duration(spent)}`}
        {command.type !== null && (
          <>
            {' · type '}
            <Text text={command.type} whole />
          </>
        )}
      </p>
    </Detail>
  );
}

/** A window around an event: ten times as long as it took, ten seconds at least. */
export function aroundEvent(event: Event, name: string): [string, string][] {
  const margin = Math.max(5, (event.end - event.start) * 4.5);
  return [
    ['at', name],
    ['from', Math.max(0, event.start - margin).toFixed(2)],
    ['to', (event.end + margin).toFixed(2)],
  ];
}

export function InputDetail({ event }: { event: Event }) {
  const { model } = usePage();
  const input = model.document.profile.inputs[event.index];
  const took = event.end - event.start;
  const keys = toNumber(input.characters) + (toNumber(input.code) === 0 ? 0 : 1);
  return (
    <Detail
      title={
        <>
          Input “<Text text={input.text ?? ''} whole />”
        </>
      }
    >
      <p>
        <b>{duration(took)}</b> of typing at {duration(event.start)} of the session, after a pause
        of <b>{duration(event.pause)}</b>
      </p>
      <p>
        {input.characters === null ? NONE : grouped(input.characters)} characters, ended by{' '}
        {endName(input.code)}
        {keys > 0 && ` · ${(took / keys).toFixed(3)} s for each key`}
      </p>
    </Detail>
  );
}

/** The character that ended an input. */
function endName(code: number | string | null): string {
  if (code === null || code === '') return 'nothing known';
  const known: Record<string, string> = {
    '0': 'none',
    '9': 'Tab',
    '10': 'Line feed',
    '13': 'Return',
    '27': 'Escape',
    '32': 'Space',
    '127': 'Delete',
  };
  const name = Object.hasOwn(known, String(code)) ? known[String(code)] : null;
  if (name) return name === 'none' ? 'no key' : name;
  const number = Number(code);
  return Number.isInteger(number) && number > 32 && number < 127
    ? `“${String.fromCharCode(number)}”`
    : `code ${visible(String(code))}`;
}
