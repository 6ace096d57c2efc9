// Overview: what ran, when, how long; where the time went; the hottest and the slowest; what changed.

import type { ComponentChildren } from 'preact';
import { useMemo } from 'preact/hooks';
import type { Change } from '../data';
import { summedCommands } from '../model/commands';
import { runTime } from '../model/elapsed';
import { makeSession } from '../model/session';
import { NONE, duration, grouped } from '../model/numbers';
import {
  commandCount,
  cpuTime,
  hasSeveralRuns,
  inputCount,
  perRun,
  runChanges,
} from '../model/run-changes';
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
  const cpu = cpuTime(time);
  const before = useMemo(
    () => (baseline ? runTime(baseline.profile, makeSession(baseline.profile)) : null),
    [baseline],
  );
  const several = hasSeveralRuns(model.document);
  const changes = runChanges(model.document, time, before);
  return (
    <section class="view">
      <Heading title="Overview" question="What ran, how long, and where did the time go?" />
      <div class="tiles">
        <Tile
          name={model.document.runs > 1 ? 'First start to last end' : 'Elapsed'}
          value={time.elapsed === null ? NONE : duration(time.elapsed)}
        >
          {time.elapsed !== null && <TileChange change={changes?.elapsed} unit="s" />}
        </Tile>
        <Tile name="CPU, user and system" value={cpu === null ? NONE : duration(cpu)}>
          {cpu !== null && <TileChange change={changes?.cpu} unit="s" />}
        </Tile>
        <Tile name="Ticks" value={grouped(model.exactTotal)}>
          <TileChange change={changes?.ticks} />
        </Tile>
        <Tile name="Commands" value={grouped(commandCount(model.document))}>
          <TileChange change={changes?.commands} neutral />
        </Tile>
        <Tile name="Inputs" value={grouped(inputCount(profile))}>
          <TileChange change={changes?.inputs} neutral />
        </Tile>
      </div>
      {baseline && <WhatChanged />}
      {model.document.runs === 1 && <TimeBar now={time} before={several ? null : before} />}
      <div class="cards two">
        <HottestLines />
        <HottestPrograms />
        {sums.length > 0 && <SlowestCommands sums={sums} />}
      </div>
    </section>
  );
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

function TileChange({
  change,
  unit = '',
  neutral = false,
}: {
  change: Change | null | undefined;
  unit?: string;
  neutral?: boolean;
}) {
  const { model } = usePage();
  if (!change) return null;
  return (
    <Delta
      change={change.change}
      old={change.old}
      unit={(unit + perRun(model.document)).trim()}
      verdict={neutral ? 'neutral' : ''}
    />
  );
}
