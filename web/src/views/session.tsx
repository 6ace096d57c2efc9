// Session: commands and inputs on a time line by their clocks, and the same as a table.

import { useMemo } from 'preact/hooks';
import type { Profile } from '../data';
import { runTime } from '../model/elapsed';
import type { Model } from '../model/model';
import { NONE, counted, duration, grouped, signed } from '../model/numbers';
import { hasSeveralRuns } from '../model/run-changes';
import { type Event, type Session, makeSession } from '../model/session';
import { clipped, visible } from '../model/text';
import { type Window, showing, within, zoomed } from '../model/timeline';
import { Empty, Heading } from '../parts/bits';
import { usePage } from '../parts/context';
import { Timeline } from '../pictures/timeline';
import { CommandDetail, InputDetail } from './event-details';
import { Events } from './session-events';

export function SessionView() {
  const page = usePage();
  const { model, router, printing } = page;
  const session = page.session();
  const { baseline, profile } = model.document;
  const before = useMemo(
    () =>
      baseline && !hasSeveralRuns(model.document)
        ? { session: makeSession(baseline.profile), profile: baseline.profile }
        : null,
    [baseline],
  );
  if (session.events.length === 0) {
    return (
      <section class="view">
        <Heading title="Session" question="What happened when?" />
        <Empty>{whyNothing(profile)}</Empty>
      </section>
    );
  }
  const length = Math.max(session.length, before?.session.length ?? 0);
  const window = windowOf(router.param('from'), router.param('to'), length);
  const selected = eventNamed(session, router.param('at'));
  const setWindow = (next: Window): void => {
    const whole = next.to - next.from >= length * 0.9999;
    router.set({ from: whole ? '' : next.from.toFixed(2), to: whole ? '' : next.to.toFixed(2) });
  };
  const select = (event: Event): void => router.set({ at: nameOf(event) });
  const open = (event: Event): void => {
    if (event.kind === 'command') router.go('commands', { table: 'each', at: String(event.index) });
  };
  const span = window.to - window.from;
  return (
    <section class="view">
      <Heading
        title="Session"
        question="What happened when, what did it cost, and where were the pauses?"
      />
      <Sums model={model} session={session} />
      {!printing && (
        <>
          <div class="bar-row">
            <p class="legend">
              <span>
                <i class="key command" aria-hidden="true" /> commands
              </span>
              <span>
                <i class="key input" aria-hidden="true" /> inputs
              </span>
              <span>
                <i class="key pause" aria-hidden="true" /> pause before an input: the user thinks,
                or the program works on its own
              </span>
            </p>
            <div class="steps" role="group" aria-label="Zoom and move">
              <button
                type="button"
                aria-label="Earlier"
                onClick={() =>
                  setWindow(
                    within({ from: window.from - span / 2, to: window.to - span / 2 }, length),
                  )
                }
              >
                ←
              </button>
              <button
                type="button"
                aria-label="Later"
                onClick={() =>
                  setWindow(
                    within({ from: window.from + span / 2, to: window.to + span / 2 }, length),
                  )
                }
              >
                →
              </button>
              <button
                type="button"
                aria-label="Zoom in"
                onClick={() => setWindow(zoomed(window, 0.5, centre(window, selected), length))}
              >
                +
              </button>
              <button
                type="button"
                aria-label="Zoom out"
                onClick={() => setWindow(zoomed(window, 2, centre(window, selected), length))}
              >
                −
              </button>
              <button type="button" onClick={() => setWindow({ from: 0, to: length })}>
                Whole session
              </button>
            </div>
          </div>
          <Timeline
            model={model}
            now={session}
            before={before}
            window={window}
            selected={selected}
            says={(event) => saysEvent(model, event)}
            onWindow={setWindow}
            onSelect={select}
            onOpen={open}
          />
        </>
      )}
      {selected &&
        (selected.kind === 'command' ? (
          <CommandDetail index={selected.index} event={selected} />
        ) : (
          <InputDetail event={selected} />
        ))}
      <Events
        session={session}
        selected={selected}
        onSelect={(event) => {
          select(event);
          setWindow(showing(window, event, length));
        }}
        onOpen={open}
      />
    </section>
  );
}

function whyNothing(profile: Profile): string {
  if (profile.commands.length === 0 && profile.inputs.length === 0)
    return 'This profile has no commands and no inputs.';
  return profile.hertz === null
    ? 'This profile does not say how long a clock tick is, so there is no time line. Commands are in the view Commands.'
    : 'No command and no input of this profile has clocks, so there is no time line.';
}

function centre(window: Window, selected: Event | null): number {
  if (selected && selected.end >= window.from && selected.start <= window.to)
    return (selected.start + selected.end) / 2;
  return (window.from + window.to) / 2;
}

function windowOf(from: string, to: string, length: number): Window {
  const start = Number(from);
  const end = to === '' ? length : Number(to);
  if (!Number.isFinite(start) || !Number.isFinite(end) || end <= start)
    return { from: 0, to: length };
  return within({ from: start, to: end }, length);
}

/** "c12" is the command with index 12, "i3" an input. */
function nameOf(event: Event): string {
  return (event.kind === 'command' ? 'c' : 'i') + String(event.index);
}

function eventNamed(session: Session, name: string): Event | null {
  return name === '' ? null : (session.events.find((event) => nameOf(event) === name) ?? null);
}

function saysEvent(model: Model, event: Event): string {
  const { commands, inputs } = model.document.profile;
  const when = `at ${duration(event.start)}, took ${duration(event.end - event.start)}`;
  if (event.kind === 'input')
    return `Input “${clipped(visible(inputs[event.index].text ?? ''), 120)}” ${when}, pause before ${duration(event.pause)}`;
  const command = commands[event.index];
  const ticks = command.ticks === null ? '' : `, ${grouped(command.ticks)} ticks`;
  return `${clipped(visible(command.command), 160)} ${when}${ticks}`;
}

/** What the session came to, and before. */
function Sums({ model, session }: { model: Model; session: Session }) {
  const { baseline, profile } = model.document;
  const now = sumsOf(profile, session).slice(0, model.document.runs > 1 ? 2 : 4);
  const several = hasSeveralRuns(model.document);
  const before =
    baseline && !several ? sumsOf(baseline.profile, makeSession(baseline.profile)) : null;
  return (
    <dl class="facts-line">
      {now.map(({ name, value }, i) => {
        const old = before?.[i]?.value;
        return (
          <div key={name}>
            <dt>{model.document.runs > 1 && i === 0 ? 'First start to last end' : name}</dt>
            <dd>
              {value === null ? NONE : duration(value)}
              {value !== null && old !== undefined && old !== null && value !== old && (
                <span class={`delta ${value > old ? 'slower' : value < old ? 'faster' : 'noise'}`}>
                  {' '}
                  {signed(Number((value - old).toFixed(2)))} s
                </span>
              )}
            </dd>
          </div>
        );
      })}
      {several && <p>{severalText(model)}</p>}
      {session.unplaced > 0 && (
        <p>{counted(session.unplaced, 'event')} without clocks: not on the line.</p>
      )}
    </dl>
  );
}

function severalText({ document }: Model): string {
  const merged =
    document.runs > 1
      ? 'Several runs on one line, each by its clocks; inputs are not merged. '
      : '';
  const compared = document.baseline
    ? 'Clocks of several runs are not compared: see Overview and Commands for changes per run.'
    : '';
  return (merged + compared).trim();
}

function sumsOf(
  profile: Omit<Profile, 'lines'>,
  session: Session,
): { name: string; value: number | null }[] {
  const time = runTime(profile, session);
  const spent = (kind: Event['kind']): number =>
    session.events
      .filter((event) => event.kind === kind && event.depth === 0)
      .reduce((sum, event) => sum + event.end - event.start, 0);
  const pauses = session.events
    .filter((event) => event.kind === 'input')
    .reduce((sum, event) => sum + event.pause, 0);
  return [
    { name: 'Elapsed', value: time.elapsed },
    { name: 'In commands', value: spent('command') },
    { name: 'Typing', value: time.typing },
    { name: 'Pauses before inputs', value: pauses },
  ];
}
