// Overview: what ran, when, how long; where the time went; the hottest and the slowest; what changed.

import type { ComponentChildren } from 'preact';
import { useMemo } from 'preact/hooks';
import type { Count } from '../data';
import { summedCommands } from '../model/commands';
import { runTime } from '../model/elapsed';
import { makeSession } from '../model/session';
import { NONE, duration, grouped, toNumber } from '../model/numbers';
import { Delta, Heading } from '../parts/bits';
import { usePage } from '../parts/context';
import { HottestLines, HottestPrograms, SlowestCommands } from './overview-lists';
import { TimeBar } from './overview-time';
import { WhatChanged } from './overview-changes';

export function Overview() {
  const page = usePage();
  const { model } = page;
  const { profile, baseline } = model.document;
  const session = page.session();
  const time = runTime(profile, session);
  const sums = useMemo(() => summedCommands(profile, model.hertz, baseline), [model]);
  const cpu =
    time.userCpu === null && time.systemCpu === null
      ? null
      : (time.userCpu ?? 0) + (time.systemCpu ?? 0);
  const change = (name: string) =>
    baseline?.changes.counters.find((each) => each.counter === name) ?? null;
  const before = useMemo(
    () => (baseline ? runTime(baseline.profile, makeSession(baseline.profile)) : null),
    [baseline],
  );
  const cpuBefore =
    before && (before.userCpu !== null || before.systemCpu !== null)
      ? (before.userCpu ?? 0) + (before.systemCpu ?? 0)
      : null;
  return (
    <section class="view">
      <Heading title="Overview" question="What ran, how long, and where did the time go?" />
      <div class="tiles">
        <Tile name="Elapsed" value={time.elapsed === null ? NONE : duration(time.elapsed)}>
          {before && before.elapsed !== null && time.elapsed !== null && (
            <SecondsDelta now={time.elapsed} old={before.elapsed} />
          )}
        </Tile>
        <Tile name="CPU, user and system" value={cpu === null ? NONE : duration(cpu)}>
          {cpu !== null && cpuBefore !== null && <SecondsDelta now={cpu} old={cpuBefore} />}
        </Tile>
        <Tile name="Ticks" value={grouped(model.exactTotal)}>
          <CounterDelta change={change('ticks')} unit="" />
        </Tile>
        <Tile name="Commands" value={grouped(profile.commands.length)}>
          {baseline && (
            <CountDelta now={profile.commands.length} old={baseline.profile.commands.length} />
          )}
        </Tile>
        <Tile
          name="Inputs"
          value={grouped(inputCount(profile.counters.input_count, profile.inputs.length))}
        >
          {baseline && (
            <CountDelta
              now={toNumber(inputCount(profile.counters.input_count, profile.inputs.length))}
              old={toNumber(
                inputCount(baseline.profile.counters.input_count, baseline.profile.inputs.length),
              )}
            />
          )}
        </Tile>
      </div>
      {baseline && <WhatChanged />}
      <TimeBar now={time} before={before} />
      <div class="cards two">
        <HottestLines />
        <HottestPrograms />
        {sums.length > 0 && <SlowestCommands sums={sums} />}
      </div>
    </section>
  );
}

function inputCount(counter: Count | undefined, inputs: number): Count {
  return counter ?? inputs;
}

function Tile({
  name,
  value,
  children,
}: {
  name: string;
  value: string;
  children?: ComponentChildren;
}) {
  return (
    <dl class="tile">
      <dt>{name}</dt>
      <dd>
        <b>{value.replaceAll(' ', '\u00a0')}</b>
        {children}
      </dd>
    </dl>
  );
}

function SecondsDelta({ now, old }: { now: number; old: number }) {
  return <Delta change={Number((now - old).toFixed(2))} old={old} unit="s" />;
}

function CountDelta({ now, old }: { now: number; old: number }) {
  return <Delta change={now - old} old={old} verdict="neutral" />;
}

function CounterDelta({
  change,
  unit,
}: {
  change: { change: Count; old: Count | null } | null;
  unit: string;
}) {
  return change ? <Delta change={change.change} old={change.old} unit={unit} /> : null;
}
