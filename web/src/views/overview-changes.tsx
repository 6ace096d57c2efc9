// What changed against the baseline: programs, lines and commands that changed most.

import { useMemo } from 'preact/hooks';
import { summedCommands } from '../model/commands';
import { counted, grouped, mean, signed, toNumber } from '../model/numbers';
import { mostChanged } from '../model/overview';
import { hasSeveralRuns } from '../model/run-changes';
import { formatRoute, programParam } from '../model/route';
import { Name, Text } from '../parts/bits';
import { usePage } from '../parts/context';
import { SecondsChange, elapsedChange } from './command-columns';
import { Card, LineDelta, LineLink } from './overview-lists';

const SHOWN = 5;

export function WhatChanged() {
  const { model } = usePage();
  const { baseline, profile } = model.document;
  const lines = useMemo(() => mostChanged(model, SHOWN), [model]);
  const commands = useMemo(
    () =>
      summedCommands(profile, model.hertz, baseline)
        .map((sum, index) => ({ sum, index, change: elapsedChange(sum) ?? 0 }))
        .filter(({ change }) => change !== 0)
        .sort((a, b) => Math.abs(b.change) - Math.abs(a.change))
        .slice(0, SHOWN),
    [model],
  );
  if (!baseline) return null;
  const programs = [...baseline.changes.programs]
    .filter((change) => change.significant)
    .sort((a, b) => Math.abs(toNumber(b.change)) - Math.abs(toNumber(a.change)))
    .slice(0, SHOWN);
  return (
    <section class="changes" aria-label="What changed">
      <h2>What changed</h2>
      <p class="tally">
        {counted(lines.changed, 'line')} changed beyond noise; {grouped(lines.noise)} within noise{' '}
        {lines.noise === 1 ? 'is' : 'are'} marked ~ and greyed
        {hasSeveralRuns(model.document) ? '. Changes are those of the means per run' : ''}.
      </p>
      <div class="cards three">
        <Card
          title="Programs, ticks"
          link={{ text: 'All programs by change', href: '#hot?table=programs&sort=-change' }}
        >
          {programs.length === 0 && <p class="empty">none beyond noise</p>}
          <table class="list">
            <tbody>
              {programs.map((change) => (
                <tr key={change.program}>
                  <td>
                    <a
                      href={formatRoute('hot', [
                        ['in', programParam(model, change.program)],
                        ['sort', '-change'],
                      ])}
                    >
                      <Name name={model.document.names[change.program]} />
                    </a>
                  </td>
                  <td class="right">
                    <span class={`delta ${toNumber(change.change) > 0 ? 'slower' : 'faster'}`}>
                      {signed(change.change)}
                    </span>
                    <small>before {change.old === null ? 'none' : mean(change.old)}</small>
                  </td>
                </tr>
              ))}
            </tbody>
          </table>
        </Card>
        <Card
          title="Lines, ticks"
          link={{ text: 'All lines by change', href: '#hot?sort=-change' }}
        >
          {lines.rows.length === 0 && <p class="empty">none beyond noise</p>}
          <table class="list">
            <tbody>
              {lines.rows.map((row) => (
                <tr key={row}>
                  <td>
                    <LineLink row={row} />
                  </td>
                  <td class="right">
                    <LineDelta row={row} />
                  </td>
                </tr>
              ))}
            </tbody>
          </table>
        </Card>
        <Card
          title="Commands, elapsed seconds"
          link={{ text: 'All commands by change', href: '#commands?sort=-change' }}
        >
          {commands.length === 0 && <p class="empty">none</p>}
          <table class="list">
            <tbody>
              {commands.map(({ sum, index, change }) => (
                <tr key={index}>
                  <td>
                    <a
                      href={formatRoute('commands', [
                        ['at', String(index)],
                        ['sort', '-change'],
                      ])}
                    >
                      <Text text={sum.command} />
                    </a>
                  </td>
                  <td class="right">
                    <SecondsChange value={change} />
                  </td>
                </tr>
              ))}
            </tbody>
          </table>
        </Card>
      </div>
    </section>
  );
}
