// What is selected, in full: whole names and texts, exact numbers, and where to look further.

import type { ComponentChildren } from 'preact';
import type { ProgramChange } from '../data';
import { Verdict } from '../model/lines';
import { verdictClass } from '../model/hot';
import { NONE, grouped, mean, relative, share, signed, toNumber } from '../model/numbers';
import { formatRoute, lineParam, programParam } from '../model/route';
import { lineText } from '../model/text';
import { Name, Text } from '../parts/bits';
import { usePage } from '../parts/context';
import { relativeOf, sourceText } from './line-columns';
import { programVerdict } from './program-columns';

/** A box with what is selected; links at its end. */
export function Detail({
  title,
  children,
  links,
}: {
  title: ComponentChildren;
  children?: ComponentChildren;
  links?: ComponentChildren;
}) {
  return (
    <aside class="detail" aria-label="Selected" tabIndex={0}>
      <h2>{title}</h2>
      {children}
      {links && <p class="links">{links}</p>}
    </aside>
  );
}

export function LineDetail({ row }: { row: number }) {
  const { model } = usePage();
  const { lines, document, total } = model;
  const program = lines.program[row];
  const name = programParam(model, program);
  const text = sourceText(model, row);
  const line = lines.line(row);
  return (
    <Detail
      title={
        <>
          <Name name={document.names[program]} whole /> line {lineText(line)}
        </>
      }
      links={
        <>
          <a
            href={formatRoute('source', [
              ['program', name],
              ['line', lineParam(line)],
            ])}
          >
            Show in source
          </a>
          <a href={formatRoute('calls', [['program', name]])}>Calls of the program</a>
        </>
      }
    >
      {text.trim() !== '' && (
        <pre>
          <Text text={text.trim()} whole />
        </pre>
      )}
      <p>
        <b>{grouped(lines.exactTicks(row))}</b> ticks, {share(lines.ticks[row], total)} of all,{' '}
        {share(lines.ticks[row], model.programTicks[program])} of the program
      </p>
      {lines.compared && <LineChange row={row} />}
    </Detail>
  );
}

function LineChange({ row }: { row: number }) {
  const { model } = usePage();
  const compared = model.lines.compared!;
  const verdict = compared.verdict[row] as Verdict;
  if (verdict === Verdict.same) return <p class="delta">As in the baseline.</p>;
  const p = compared.p[row];
  const old = compared.old[row];
  return (
    <p class={`delta ${verdictClass(model, row)}`}>
      {signed(compared.change[row])} ticks ({relativeOf(model, row)}), before{' '}
      {Number.isNaN(old) ? 'none' : mean(old)}
      {verdict === Verdict.noise ? ', within noise' : ', beyond noise'}
      {!Number.isNaN(p) && ` (p ${probability(p)}, q ${probability(compared.q[row])})`}
    </p>
  );
}

/** Four digits as they came. */
function probability(value: number): string {
  return Number.isNaN(value) ? NONE : String(value);
}

export function ProgramDetail({
  program,
  change,
}: {
  program: number;
  change: ProgramChange | null;
}) {
  const { model } = usePage();
  const name = programParam(model, program);
  const source = model.sourceOf(program);
  return (
    <Detail
      title={<Name name={model.document.names[program]} whole />}
      links={
        <>
          <a href={formatRoute('hot', [['in', name]])}>Its lines</a>
          <a href={formatRoute('source', [['program', name]])}>Source</a>
          <a href={formatRoute('calls', [['program', name]])}>Calls</a>
        </>
      }
    >
      <p>
        <b>{grouped(model.programTicks[program])}</b> ticks,{' '}
        {share(model.programTicks[program], model.total)} of all
        {source && (
          <>
            {' '}
            · <Text text={source.file} whole />
          </>
        )}
      </p>
      {change && (
        <p class={`delta ${programVerdict(change)}`}>
          {signed(change.change)} ticks ({relative(toNumber(change.old), toNumber(change.change))}),
          before {change.old === null ? 'none' : mean(change.old)}
          {change.significant ? ', beyond noise' : ', within noise'}
          {change.p !== null && ` (p ${probability(change.p)}, q ${probability(change.q ?? NaN)})`}
        </p>
      )}
    </Detail>
  );
}
