// Calls: who calls whom, and how often. A program with its callers and callees to walk through, and all
// calls as a table.

import { useMemo } from 'preact/hooks';
import { type CallRow, callRows, callers } from '../model/calls';
import { grouped, share } from '../model/numbers';
import { formatRoute, programOf, programParam } from '../model/route';
import { sum } from '../model/total';
import { Barred, Empty, Heading, Name } from '../parts/bits';
import { usePage } from '../parts/context';
import { CallChange, CallTable, callsLink } from './call-table';

export function CallsView() {
  const { model, router } = usePage();
  const { profile, baseline } = model.document;
  const calls = useMemo(() => callRows(profile.subroutines, baseline), [model]);
  const programs = useMemo(() => callers(calls), [calls]);
  if (calls.length === 0) {
    return (
      <section class="view">
        <Heading title="Calls" question="Who calls whom?" />
        <Empty>This profile has no subroutine calls.</Empty>
      </section>
    );
  }
  const param = router.param('program');
  const index = programOf(model, param);
  const name = index !== null ? model.document.names[index] : param || (programs[0]?.name ?? '');
  return (
    <section class="view">
      <Heading title="Calls" question="Who calls whom, and how often?" />
      <Neighbours calls={calls} name={name} />
      <CallTable calls={calls} name={name} />
    </section>
  );
}

const MOST_SHOWN = 8;

function Neighbours({ calls, name }: { calls: CallRow[]; name: string }) {
  const { model } = usePage();
  const by = calls.filter((call) => call.subroutine === name);
  const to = calls.filter((call) => call.caller === name);
  const index = model.programNamed(name);
  const most = Math.max(0, ...[...by, ...to].slice(0, 2000).map((call) => call.value));
  return (
    <div class="butterfly">
      <CallList
        title="Called by"
        calls={by}
        most={most}
        pick={(call) => call.caller}
        none="no program on record"
      />
      <div class="middle">
        <p class="arrow" aria-hidden="true">
          →
        </p>
        <div class="card">
          <h2>
            <Name name={name} whole />
          </h2>
          <p>
            called {grouped(sum(by.map((call) => call.times)))} times
            <br />
            calls {grouped(sum(to.map((call) => call.times)))} times
          </p>
          {index !== null && (
            <>
              <p>
                {grouped(model.programTicks[index])} ticks,{' '}
                {share(model.programTicks[index], model.total)} of all
              </p>
              <p class="links">
                <a href={formatRoute('hot', [['in', programParam(model, index)]])}>Hot spots</a>
                <a href={formatRoute('source', [['program', programParam(model, index)]])}>
                  Source
                </a>
              </p>
            </>
          )}
        </div>
        <p class="arrow" aria-hidden="true">
          →
        </p>
      </div>
      <CallList
        title="Calls"
        calls={to}
        most={most}
        pick={(call) => call.subroutine}
        none="no subroutine"
      />
    </div>
  );
}

function CallList(props: {
  title: string;
  calls: CallRow[];
  most: number;
  pick(call: CallRow): string | null;
  none: string;
}) {
  const { model } = usePage();
  const { calls, pick } = props;
  const compared = model.document.baseline !== null;
  return (
    <div class="call-list">
      <h2>{props.title}</h2>
      {calls.length === 0 && <p class="empty">{props.none}</p>}
      <ul>
        {calls.slice(0, MOST_SHOWN).map((call) => {
          const other = pick(call);
          return (
            <li key={other}>
              <a href={callsLink(model, other ?? '')}>
                <Name name={other} />
              </a>
              <Barred part={props.most > 0 ? call.value / props.most : 0}>
                {grouped(call.times)}
              </Barred>
              {compared && <CallChange call={call} />}
            </li>
          );
        })}
      </ul>
      {calls.length > MOST_SHOWN && (
        <p class="more">{grouped(calls.length - MOST_SHOWN)} more in the table</p>
      )}
    </div>
  );
}
