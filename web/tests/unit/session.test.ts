import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import { emptyProfile } from '../../samples/profile-text';
import type { Command, Input } from '../../src/data';
import { runTime } from '../../src/model/elapsed';
import { type Event, makeSession, trackRows } from '../../src/model/session';

type Span = [start: number | string | null, end: number | string | null];

function session(commands: Span[], inputs: Span[] = [], counters = {}, hertz: number | null = 10) {
  const profile = {
    ...emptyProfile('x'),
    programs: { program: [], ticks: [], lines: [] },
    hertz,
    counters,
  };
  profile.commands = commands.map(([startclock, endclock]): Command => {
    const none = {
      type: null,
      starttime: null,
      endtime: null,
      ticks: null,
      usrcpu: null,
      syscpu: null,
    };
    return { command: 'C', startclock, endclock, ...none };
  });
  profile.inputs = inputs.map(([startclock, endclock]): Input => ({
    code: 13,
    characters: 1,
    startclock,
    endclock,
    text: 'x',
  }));
  return { profile, ...makeSession(profile) };
}

const shape = (event: Event) =>
  `${event.kind[0]}${event.index} ${event.start}-${event.end} ${event.track}.${event.depth}`;

test('events are in seconds from the start of the run, in order', () => {
  const { events, length } = session(
    [
      [1100, 1120],
      [1050, 1060],
    ],
    [[1070, 1090]],
    { startclock: 1000, endclock: 1200 },
  );
  assert.deepEqual(events.map(shape), ['c1 5-6 0.0', 'i0 7-9 0.0', 'c0 10-12 0.0']);
  assert.equal(length, 20);
});

test('pauses are the time since the last event ended', () => {
  const { events } = session(
    [
      [10, 50],
      [20, 30],
    ],
    [
      [60, 70],
      [70, 75],
    ],
    { startclock: 0 },
  );
  assert.deepEqual(
    events.map((event) => event.pause),
    [1, 0, 1, 0],
  );
});

test('events inside others share a track; only those that cross need another', () => {
  const { events } = session([
    [0, 100],
    [10, 40],
    [15, 20],
    [40, 60],
    [90, 120],
    [95, 110],
    [100, 105],
  ]);
  assert.deepEqual(events.map(shape), [
    'c0 0-10 0.0',
    'c1 1-4 0.1',
    'c2 1.5-2 0.2',
    'c3 4-6 0.1',
    'c4 9-12 1.0',
    'c5 9.5-11 1.1',
    'c6 10-10.5 0.0',
  ]);
  assert.deepEqual(trackRows(events, 'command'), { first: [0, 3], rows: 5 });
  assert.deepEqual(trackRows(events, 'input'), { first: [], rows: 0 });
});

test('what has no clocks is counted, not drawn', () => {
  const odd = session([
    [null, 5],
    ['', 7],
    ['soon', 8],
    [10, 20],
  ]);
  assert.equal(odd.unplaced, 3);
  assert.deepEqual(odd.events.map(shape), ['c3 0-1 0.0']);
  assert.equal(session([[1, 2]], [[3, 4]], {}, null).unplaced, 2);
  assert.deepEqual(session([[1, 2]], [], {}, null).events, []);
});

test('the line begins with the first event when that is before the start clock; ends never come first', () => {
  const { events, length } = session([[50, 40]], [], { startclock: 60, endclock: 10 });
  assert.deepEqual(events.map(shape), ['c0 0-0 0.0']);
  assert.equal(length, 0);
});

test('the sample session', () => {
  const { profile } = ordersDocument();
  const { events, length, unplaced } = makeSession(profile);
  assert.equal(events.length, 158);
  assert.equal(unplaced, 0);
  assert.equal(length, 542.07);
  const time = runTime(profile, { events, length, unplaced });
  assert.deepEqual(
    [time.elapsed, time.userCpu, time.systemCpu].map((value) => value!.toFixed(2)),
    ['542.07', '200.43', '35.78'],
  );
  assert.equal(time.typing.toFixed(2), '76.55');
  assert.equal(time.waiting!.toFixed(2), '229.31');
});

test('times by seconds where clocks are missing; no waiting when the parts do not fit', () => {
  const { profile } = session([], [], { starttime: 100, endtime: 160 }, null);
  assert.deepEqual(runTime(profile, null), {
    elapsed: 60,
    userCpu: null,
    systemCpu: null,
    typing: 0,
    waiting: null,
  });
  const busy = session([], [], { startclock: 0, endclock: 100, usrcpu: 500 });
  assert.equal(runTime(busy.profile, busy).waiting, null);
  assert.equal(runTime(session([], []).profile, null).elapsed, null);
});

test('overlapping inputs are typed once', () => {
  const overlapping = session(
    [],
    [
      [0, 50],
      [20, 80],
      [30, 40],
    ],
    { startclock: 0, endclock: 100, usrcpu: 10 },
  );
  assert.equal(runTime(overlapping.profile, overlapping).typing, 8);
});
