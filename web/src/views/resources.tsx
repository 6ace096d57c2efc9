// Resources: memory, faults, I/O, shared objects, the program's own tick counters.

import { useMemo } from 'preact/hooks';
import type { Change } from '../data';
import { NONE, grouped, mean, roundedShare, seconds, toNumber } from '../model/numbers';
import { type Fact, factGroups, typingChanges, typingRate, userTicks } from '../model/resources';
import { perRun } from '../model/run-changes';
import { Barred, Delta, Empty, Heading } from '../parts/bits';
import { usePage } from '../parts/context';
import { Objects } from './shared-objects';

export function ResourcesView() {
  const { model } = usePage();
  const { profile, baseline } = model.document;
  const groups = useMemo(() => factGroups(profile, model.total, baseline), [model]);
  const ticks = userTicks(profile, baseline);
  const nothing =
    groups.length === 0 &&
    ticks.length === 0 &&
    profile.objects.length === 0 &&
    profile.typerate === null &&
    !baseline?.profile.typerate;
  return (
    <section class="view">
      <Heading title="Resources" question="What did the run use?" />
      {nothing && <Empty>This profile says nothing about resources.</Empty>}
      <div class="cards">
        {ticks.length > 0 && <UserTicks />}
        {groups.map((group) => (
          <section class="card" key={group.title}>
            <h2>{group.title}</h2>
            <FactTable facts={group.facts} />
          </section>
        ))}
        {(profile.typerate ?? baseline?.profile.typerate) && <Keyboard />}
      </div>
      {(profile.objects.length > 0 || (baseline?.profile.objects.length ?? 0) > 0) && <Objects />}
    </section>
  );
}

function FactTable({ facts }: { facts: Fact[] }) {
  return (
    <table class="facts">
      <thead class="away">
        <tr>
          <th scope="col">What</th>
          <th scope="col">Value</th>
        </tr>
      </thead>
      <tbody>
        {facts.map((fact) => (
          <tr key={fact.name}>
            <th scope="row">{fact.name}</th>
            <td>
              <b>{fact.value === null ? NONE : grouped(fact.value)}</b>{' '}
              <span class="unit">{fact.unit}</span>
              {fact.note && <small>{fact.note}</small>}
              {fact.change && (
                <small>
                  <ChangeBefore change={fact.change} />
                </small>
              )}
            </td>
          </tr>
        ))}
      </tbody>
    </table>
  );
}

/** By how much, and from what. */
function ChangeBefore({ change }: { change: Change }) {
  const { model } = usePage();
  return (
    <>
      <Delta change={change.change} old={change.old} verdict="neutral" />, before {mean(change.old)}
      {perRun(model.document)}
    </>
  );
}

function UserTicks() {
  const { model } = usePage();
  const { profile, baseline } = model.document;
  const ticks = userTicks(profile, baseline);
  const most = ticks.reduce((largest, each) => Math.max(largest, toNumber(each.ticks)), 0);
  return (
    <section class="card">
      <h2>User ticks</h2>
      <table class="facts">
        <thead>
          <tr>
            <th scope="col">Counter</th>
            <th scope="col">Ticks</th>
            <th scope="col">Share of all ticks</th>
            {baseline && <th scope="col">Change{perRun(model.document)}</th>}
          </tr>
        </thead>
        <tbody>
          {ticks.map((each) => (
            <tr key={each.index}>
              <th scope="row">User tick {each.index}</th>
              <td>{grouped(each.ticks)}</td>
              <td>
                <Barred part={most > 0 ? toNumber(each.ticks) / most : 0}>
                  {roundedShare(toNumber(each.ticks), model.total)}
                </Barred>
              </td>
              {baseline && (
                <td>
                  {each.change ? (
                    <Delta change={each.change.change} old={each.change.old} verdict="neutral" />
                  ) : (
                    '0'
                  )}
                </td>
              )}
            </tr>
          ))}
        </tbody>
      </table>
    </section>
  );
}

function Keyboard() {
  const { model } = usePage();
  const { profile, baseline } = model.document;
  const rate = typingRate(profile);
  const before = baseline ? typingRate(baseline.profile) : null;
  const changes = typingChanges(rate, before);
  return (
    <section class="card">
      <h2>Keyboard</h2>
      <table class="facts">
        <tbody>
          <tr>
            <th scope="row">Characters typed</th>
            <td>
              <b>{grouped(rate?.characters)}</b> <span class="unit">characters</span>
              {changes.characters && (
                <small>
                  <ChangeBefore change={changes.characters} />
                </small>
              )}
            </td>
          </tr>
          <tr>
            <th scope="row">Time for them</th>
            <td>
              <b>{seconds(rate?.time ?? null)}</b> <span class="unit">s</span>
              {rate?.forEach != null && <small>{rate.forEach.toFixed(3)} s for each</small>}
              {changes.time && (
                <small>
                  <ChangeBefore change={changes.time} />
                </small>
              )}
            </td>
          </tr>
        </tbody>
      </table>
    </section>
  );
}
