import assert from 'node:assert/strict';
import { test } from 'node:test';
import { ordersDocument } from '../../samples/documents';
import { makeSession } from '../../src/model/session';
import {
  acrossEvent,
  eventAt,
  makeBands,
  matchCommands,
  showing,
  stepEvent,
  within,
  zoomed,
} from '../../src/model/timeline';

const session = makeSession(ordersDocument().profile);

test('windows stay within the session', () => {
  const rows: [[number, number], [number, number]][] = [
    [
      [-10, 20],
      [0, 30],
    ],
    [
      [90, 120],
      [70, 100],
    ],
    [
      [-50, 500],
      [0, 100],
    ],
    [
      [10, 20],
      [10, 20],
    ],
    [
      [50, 50],
      [50, 50.01],
    ],
  ];
  for (const [[from, to], [wantFrom, wantTo]] of rows) {
    assert.deepEqual(within({ from, to }, 100), { from: wantFrom, to: wantTo }, `${from} ${to}`);
  }
});

test('zooming keeps the moment in its place', () => {
  assert.deepEqual(zoomed({ from: 0, to: 100 }, 0.5, 50, 100), { from: 25, to: 75 });
  assert.deepEqual(zoomed({ from: 0, to: 100 }, 0.5, 0, 100), { from: 0, to: 50 });
  assert.deepEqual(zoomed({ from: 25, to: 75 }, 4, 50, 100), { from: 0, to: 100 });
});

test('an event is brought into sight', () => {
  const event = session.events[session.events.length - 1];
  const seen = showing({ from: 0, to: 10 }, event, session.length);
  assert.ok(seen.from <= event.start && seen.to >= event.end);
  assert.equal((seen.to - seen.from).toFixed(6), '10.000000');
  assert.deepEqual(showing(seen, event, session.length), seen);
});

test('bands have a place each and hold their events', () => {
  const { bands, height } = makeBands(session, session, 15);
  assert.deepEqual(
    bands.map((band) => band.title),
    ['Commands', 'Inputs', 'Commands before', 'Inputs before'],
  );
  bands.reduce((end, band) => {
    assert.ok(band.top >= end);
    return band.top + band.height;
  }, 0);
  assert.ok(height >= bands[3].top + bands[3].height);
  const [commands] = bands;
  const batch = session.events.find(
    (event) => event.kind === 'command' && event.end - event.start > 100,
  )!;
  assert.equal(eventAt(commands, 0, batch.start + 1, 0), batch);
  assert.equal(eventAt(commands, 1, batch.start + 1, 0), null);
  assert.equal(eventAt(commands, 0, batch.end + 0.005, 0.01), batch);
});

test('steps go over events of a kind, and across to the other', () => {
  const { events } = session;
  const first = stepEvent(events, null, 1)!;
  assert.equal(first, events[0]);
  const second = stepEvent(events, first, 1)!;
  assert.equal(second.kind, first.kind);
  assert.equal(stepEvent(events, second, -1), first);
  assert.equal(stepEvent(events, first, -1), null);
  assert.equal(stepEvent([], null, -1), null);
  const across = acrossEvent(events, first)!;
  assert.notEqual(across.kind, first.kind);
});

test('commands are paired by text and occurrence', () => {
  const list = (texts: string) => [...texts].map((command) => ({ command }));
  assert.deepEqual(matchCommands(list('abab'), list('bba')), [2, 0, null, 1]);
  assert.deepEqual(matchCommands([{ command: '__proto__' }], [{ command: '__proto__' }]), [0]);
});
