// Source: the text of a program with ticks and heat; its hot lines one key away, the whole at the edge.

import { useMemo, useState } from 'preact/hooks';
import { type ProgramLines, nextHot, programChoices, programLines } from '../model/hot';
import type { Model } from '../model/model';
import { counted, grouped, percent, share } from '../model/numbers';
import { programOf, programParam } from '../model/route';
import { clipped, lineText, nameText } from '../model/text';
import { Empty, Heading, Text } from '../parts/bits';
import { usePage } from '../parts/context';
import { Edge } from '../pictures/edge';
import { LineDetail } from './details';
import { SourceGrid } from './source-grid';

export function SourceView() {
  const { model, router, printing } = usePage();
  const program =
    programOf(model, router.param('program')) ?? model.document.profile.programs.program[0] ?? 0;
  const facts = useMemo(
    () => (model.document.names.length > 0 ? programLines(model, program) : null),
    [model, program],
  );
  const [sight, setSight] = useState({ from: 0, to: 0 });

  if (!facts) {
    return (
      <section class="view">
        <Heading title="Source" question="Which lines of the text are hot?" />
        <Empty>This profile names no program.</Empty>
      </section>
    );
  }
  const line = Number(router.param('line')) || null;
  const goTo = (target: number): void =>
    router.set({ program: programParam(model, program), line: String(target) });
  const step = (direction: 1 | -1): void => {
    const next = nextHot(facts.hot, line ?? (direction > 0 ? 0 : Infinity), direction);
    if (next !== null) goTo(next);
  };
  const takeKey = (key: string): boolean => {
    if (key === 'n') step(1);
    else if (key === 'p') step(-1);
    else if (key === 'h' && facts.hottest !== null) goTo(facts.hottest);
    else return false;
    return true;
  };
  const selected = line === null ? undefined : facts.byLine.get(line);
  return (
    <section class="view fill">
      <Heading title="Source" question="Which lines of the text are hot?" />
      <div class="bar-row">
        <ProgramChoice
          model={model}
          program={program}
          onChoose={(next) => router.go('source', { program: programParam(model, next) })}
        />
        <div class="steps">
          <button
            type="button"
            disabled={facts.hottest === null}
            onClick={() => facts.hottest !== null && goTo(facts.hottest)}
            title="h in the text"
          >
            Hottest line
          </button>
          <button
            type="button"
            disabled={facts.hot.length === 0}
            onClick={() => step(-1)}
            title="p in the text"
          >
            ↑ Previous hot
          </button>
          <button
            type="button"
            disabled={facts.hot.length === 0}
            onClick={() => step(1)}
            title="n in the text"
          >
            ↓ Next hot
          </button>
        </div>
      </div>
      <SourceFacts model={model} facts={facts} />
      <div class="source-box">
        <SourceGrid
          facts={facts}
          selected={line}
          onSelect={goTo}
          onKey={takeKey}
          onSight={(from, to) => setSight({ from: from - 1, to })}
        />
        {!printing && (
          <Edge
            lines={facts}
            inSight={sight}
            onJump={goTo}
            onKey={(event) => {
              const direction = event.key === 'ArrowDown' ? 1 : event.key === 'ArrowUp' ? -1 : 0;
              if (direction === 0) return;
              event.preventDefault();
              step(direction);
            }}
          />
        )}
      </div>
      {selected && <LineDetail row={selected.row} />}
      <Beyond facts={facts} />
    </section>
  );
}

/** The largest choice that browsers show quickly. */
const MOST_CHOICES = 1000;

function ProgramChoice({
  model,
  program,
  onChoose,
}: {
  model: Model;
  program: number;
  onChoose(program: number): void;
}) {
  const { document } = model;
  const choices = useMemo(() => {
    const first = programChoices(document, MOST_CHOICES);
    return first.includes(program) ? first : [program, ...first];
  }, [document, program]);
  const more = document.names.length - choices.length;
  return (
    <label class="chooser">
      <span>Program</span>
      <select
        value={String(program)}
        onChange={(event) => onChoose(Number(event.currentTarget.value))}
      >
        {choices.map((index) => (
          <option key={index} value={String(index)}>
            {clipped(nameText(document.names[index]), 60)} ·{' '}
            {share(model.programTicks[index], model.total)}
            {model.sourceOf(index) ? '' : ' · no source'}
          </option>
        ))}
        {more > 0 && <option disabled>{`${grouped(more)} more: see Hot spots`}</option>}
      </select>
    </label>
  );
}

function SourceFacts({ model, facts }: { model: Model; facts: ProgramLines }) {
  const source = model.sourceOf(facts.program);
  const part = facts.ticks > 0 ? percent(facts.hotTicks, facts.ticks).toFixed(2) : '0';
  return (
    <p class="tally">
      {source ? (
        <>
          <Text text={source.file} whole /> · {counted(source.lines.length, 'line')}
        </>
      ) : (
        <>
          {model.document.sources_wanted
            ? 'No source found for this program'
            : 'No sources in this page (ptick-view -f DIR puts them in)'}
          : its lines with ticks
        </>
      )}{' '}
      · {grouped(facts.ticks)} ticks, {share(facts.ticks, model.total)} of all
      {facts.hot.length > 0 &&
        ` · ${counted(facts.hot.length, 'hot line')} ${facts.hot.length === 1 ? 'holds' : 'hold'} ${part} % of them`}
    </p>
  );
}

/** Ticks on lines that the text does not have. */
function Beyond({ facts }: { facts: ProgramLines }) {
  const { model } = usePage();
  if (facts.beyond.length === 0) return null;
  const shown = facts.beyond.slice(0, 50);
  return (
    <p class="beyond">
      Not in the text:{' '}
      {shown.map((row, i) => (
        <span key={row}>
          {i > 0 && ', '}
          line “{lineText(model.lines.line(row))}” {grouped(model.lines.exactTicks(row))} ticks
        </span>
      ))}
      {facts.beyond.length > shown.length &&
        ` and ${grouped(facts.beyond.length - shown.length)} more lines`}
      .
    </p>
  );
}
