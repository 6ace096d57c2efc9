// Resources: memory, faults, I/O, shared objects, the program's own tick counters.

import { useMemo } from 'preact/hooks';
import { NONE, grouped, mean, roundedShare, seconds, toNumber } from '../model/numbers';
import { type Fact, factGroups, userTicks } from '../model/resources';
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
    profile.typerate === null;
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
        {profile.typerate && <Keyboard />}
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
                  <Delta change={fact.change.change} old={fact.change.old} verdict="neutral" />,
                  before {mean(fact.change.old)}
                </small>
              )}
            </td>
          </tr>
        ))}
      </tbody>
    </table>
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
            {baseline && <th scope="col">Change</th>}
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
  const { typerate } = model.document.profile;
  if (!typerate) return null;
  const characters = toNumber(typerate.characters);
  const time = model.hertz ? toNumber(typerate.clock) / model.hertz : null;
  return (
    <section class="card">
      <h2>Keyboard</h2>
      <table class="facts">
        <tbody>
          <tr>
            <th scope="row">Characters typed</th>
            <td>
              <b>{grouped(typerate.characters)}</b> <span class="unit">characters</span>
            </td>
          </tr>
          <tr>
            <th scope="row">Time for them</th>
            <td>
              <b>{seconds(time)}</b> <span class="unit">s</span>
              {time !== null && characters > 0 && (
                <small>{(time / characters).toFixed(3)} s for each</small>
              )}
            </td>
          </tr>
        </tbody>
      </table>
    </section>
  );
}
