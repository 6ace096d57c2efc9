// The hottest lines and programs and the slowest commands, each with a link to all of them.

import type { ComponentChildren } from 'preact';
import type { CommandSum } from '../model/commands';
import { verdictClass } from '../model/hot';
import { Verdict } from '../model/lines';
import { counted, grouped, percent, seconds, share, signed, toNumber } from '../model/numbers';
import { hottestLines } from '../model/overview';
import { formatRoute, lineParam, programParam } from '../model/route';
import { lineText } from '../model/text';
import { sum } from '../model/total';
import { Barred, Name, Text } from '../parts/bits';
import { usePage } from '../parts/context';
import { SecondsChange, elapsedChange } from './command-columns';
import { sourceText } from './line-columns';
import { programVerdict } from './program-columns';

const SHOWN = 8;

export function Card(props: {
  title: string;
  link?: { text: string; href: string };
  children: ComponentChildren;
}) {
  return (
    <section class="card">
      <h2>{props.title}</h2>
      {props.children}
      {props.link && (
        <p class="links">
          <a href={props.link.href}>{props.link.text}</a>
        </p>
      )}
    </section>
  );
}

export function HottestLines() {
  const { model } = usePage();
  const rows = hottestLines(model, SHOWN);
  if (rows.length === 0) return null;
  const most = model.lines.ticks[rows[0]];
  const together = toNumber(sum(rows.map((row) => model.lines.exactTicks(row))));
  return (
    <Card
      title="Hottest lines"
      link={{
        text: `All ${counted(model.lines.ownSize, 'line')} (these ${rows.length}: ${percent(together, model.total).toFixed(2)} % of all ticks)`,
        href: '#hot',
      }}
    >
      <table class={model.document.baseline ? 'list compared' : 'list'}>
        <thead>
          <tr>
            <th scope="col">Line</th>
            <th scope="col">Ticks</th>
            <th scope="col">Share of all ticks</th>
            {model.lines.compared && <th scope="col">Change</th>}
          </tr>
        </thead>
        <tbody>
          {rows.map((row) => (
            <tr key={row}>
              <td>
                <LineLink row={row} />
              </td>
              <td class="right">{grouped(model.lines.exactTicks(row))}</td>
              <td class="right">
                <Barred part={model.lines.ticks[row] / most}>
                  {share(model.lines.ticks[row], model.total)}
                </Barred>
              </td>
              {model.lines.compared && (
                <td class="right">
                  <LineDelta row={row} />
                </td>
              )}
            </tr>
          ))}
        </tbody>
      </table>
    </Card>
  );
}

/** A line by name and number, with its text below. */
export function LineLink({ row }: { row: number }) {
  const { model } = usePage();
  const program = model.lines.program[row];
  const line = model.lines.line(row);
  const text = sourceText(model, row).trim();
  return (
    <a
      class="line-link"
      href={formatRoute('source', [
        ['program', programParam(model, program)],
        ['line', lineParam(line)],
      ])}
    >
      <Name name={model.document.names[program]} /> <b>{lineText(line)}</b>
      {text !== '' && (
        <code>
          <Text text={text} />
        </code>
      )}
    </a>
  );
}

export function LineDelta({ row }: { row: number }) {
  const { model } = usePage();
  const compared = model.lines.compared!;
  if (compared.verdict[row] === Verdict.same) return <span class="delta noise">0</span>;
  const noise = compared.verdict[row] === Verdict.noise;
  return (
    <span class={`delta ${verdictClass(model, row)}`}>
      {noise && '~ '}
      {signed(compared.change[row])}
    </span>
  );
}

export function HottestPrograms() {
  const { model } = usePage();
  const { profile, baseline, names } = model.document;
  const { programs } = profile;
  const changes = useChanges();
  const shown = programs.program.slice(0, SHOWN);
  if (shown.length === 0) return null;
  const most = toNumber(programs.ticks[0]);
  return (
    <Card
      title="Hottest programs"
      link={{
        text: `All ${counted(programs.program.length, 'program')}`,
        href: '#hot?table=programs',
      }}
    >
      <table class={model.document.baseline ? 'list compared' : 'list'}>
        <thead>
          <tr>
            <th scope="col">Program</th>
            <th scope="col">Ticks</th>
            <th scope="col">Share of all ticks</th>
            {baseline && <th scope="col">Change</th>}
          </tr>
        </thead>
        <tbody>
          {shown.map((program, i) => (
            <tr key={program}>
              <td>
                <a href={formatRoute('hot', [['in', programParam(model, program)]])}>
                  <Name name={names[program]} />
                </a>
              </td>
              <td class="right">{grouped(programs.ticks[i])}</td>
              <td class="right">
                <Barred part={most > 0 ? toNumber(programs.ticks[i]) / most : 0}>
                  {share(toNumber(programs.ticks[i]), model.total)}
                </Barred>
              </td>
              {baseline && (
                <td class="right">
                  <span class={`delta ${programVerdict(changes.get(program) ?? null) || 'noise'}`}>
                    {changes.get(program)?.significant === false && '~ '}
                    {signed(changes.get(program)?.change ?? 0)}
                  </span>
                </td>
              )}
            </tr>
          ))}
        </tbody>
      </table>
    </Card>
  );
}

function useChanges() {
  const { model } = usePage();
  return new Map(
    model.document.baseline?.changes.programs.map((change) => [change.program, change]),
  );
}

export function SlowestCommands({ sums }: { sums: CommandSum[] }) {
  const { model } = usePage();
  const timed = sums.some((each) => each.elapsed !== null);
  const key = (each: CommandSum): number => (timed ? (each.elapsed ?? 0) : each.times);
  const shown = sums
    .map((each, index) => ({ each, index }))
    .filter(({ each }) => each.times > 0)
    .sort((a, b) => key(b.each) - key(a.each))
    .slice(0, SHOWN);
  const most = shown.length > 0 ? key(shown[0].each) : 0;
  return (
    <Card
      title={timed ? 'Slowest commands' : 'Commands'}
      link={{ text: `All ${counted(sums.length, 'command')}`, href: '#commands' }}
    >
      <table class={model.document.baseline ? 'list compared' : 'list'}>
        <thead>
          <tr>
            <th scope="col">Command</th>
            <th scope="col">Times</th>
            <th scope="col">Elapsed, s</th>
            {model.document.baseline && <th scope="col">Change, s</th>}
          </tr>
        </thead>
        <tbody>
          {shown.map(({ each, index }) => (
            <tr key={index}>
              <td>
                <a href={formatRoute('commands', [['at', String(index)]])}>
                  <Text text={each.command} />
                </a>
              </td>
              <td class="right">{grouped(each.times)}</td>
              <td class="right">
                <Barred part={most > 0 ? key(each) / most : 0}>{seconds(each.elapsed)}</Barred>
              </td>
              {model.document.baseline && (
                <td class="right">
                  <SecondsChange value={elapsedChange(each)} />
                </td>
              )}
            </tr>
          ))}
        </tbody>
      </table>
    </Card>
  );
}
