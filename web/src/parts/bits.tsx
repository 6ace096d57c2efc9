// Small parts that all views use.

import type { ComponentChildren } from 'preact';
import type { Count } from '../data';
import { NONE, grouped, mean, percent, relative, share, signed, toNumber } from '../model/numbers';
import { clipped, nameText, visible } from '../model/text';

/** Longest text that is put into a cell or a tooltip; the whole text is where a row is selected. */
const CELL_LIMIT = 300;

/** A name as text: kept apart from the direction of its surroundings. */
export function Name({ name, whole = false }: { name: string | null; whole?: boolean }) {
  const text = nameText(name);
  const odd = name === null || name === '';
  return <bdi class={odd ? 'name odd' : 'name'}>{whole ? text : clipped(text, CELL_LIMIT)}</bdi>;
}

/** Text of a profile or a source. */
export function Text({ text, whole = false }: { text: string; whole?: boolean }) {
  const shown = visible(text);
  return <bdi>{whole ? shown : clipped(shown, CELL_LIMIT)}</bdi>;
}

/** A number with a bar as long as its share of the largest. */
export function Barred({ part, children }: { part: number; children: ComponentChildren }) {
  const width = `${Math.max(0, Math.min(1, part)) * 100}%`;
  return (
    <span class="barred">
      <span class="bar" aria-hidden="true">
        <i style={{ width }} />
      </span>
      <span class="bar-text">{children}</span>
    </span>
  );
}

/** A share of all ticks, cut to two decimals as in the reports. */
export function Share({ part, total, most }: { part: number; total: number; most: number }) {
  return <Barred part={most > 0 ? part / most : 0}>{share(part, total)}</Barred>;
}

/** How a value changed: by how much, and in per cent of the old one. */
export function Delta({
  change,
  old,
  unit = '',
  verdict = '',
}: {
  change: Count;
  old: Count | null;
  unit?: string;
  verdict?: '' | 'noise' | 'neutral';
}) {
  const value = toNumber(change);
  if (value === 0) return <span class="delta noise">as before</span>;
  const kind = verdict || (value > 0 ? 'slower' : value < 0 ? 'faster' : 'noise');
  return (
    <span class={`delta ${kind}`}>
      {verdict === 'noise' && '~ '}
      {signed(change)}
      {unit && ' ' + unit} <span class="relative">({relative(toNumber(old), value)})</span>
    </span>
  );
}

/** A change in a table: the number, greyed within noise. */
export function Changed({ change, kind }: { change: number; kind: string }) {
  return (
    <span class={`delta ${kind}`}>
      {kind === 'noise' && change !== 0 ? '~ ' : ''}
      {signed(change)}
    </span>
  );
}

export function Mean({ value }: { value: number }) {
  return <>{Number.isNaN(value) ? NONE : mean(value)}</>;
}

/** One of a few ways to look at something. */
export function Choice<Value extends string>(props: {
  label: string;
  options: readonly (readonly [Value, string])[];
  value: Value;
  onChoose: (value: Value) => void;
}) {
  return (
    <div class="choice" role="group" aria-label={props.label}>
      {props.options.map(([value, text]) => (
        <button
          type="button"
          key={value}
          aria-pressed={value === props.value}
          onClick={() => props.onChoose(value)}
        >
          {text}
        </button>
      ))}
    </div>
  );
}

export function FilterBox(props: {
  label: string;
  hint: string;
  value: string;
  onInput: (value: string) => void;
}) {
  return (
    <label class="filter">
      <span class="away">{props.label}</span>
      <svg viewBox="0 0 16 16" aria-hidden="true">
        <circle cx="7" cy="7" r="4.5" />
        <path d="M10.5 10.5 14 14" />
      </svg>
      <input
        type="search"
        placeholder={props.hint}
        value={props.value}
        autocomplete="off"
        spellcheck={false}
        data-filter
        onInput={(event) => props.onInput(event.currentTarget.value)}
        onKeyDown={(event) => {
          if (event.key === 'Escape' && props.value !== '') {
            event.preventDefault();
            props.onInput('');
          }
        }}
      />
    </label>
  );
}

/** A word of what was counted: "34 of 458 lines · 81.2 % of all ticks". Spoken when it changes. */
export function Tally(props: {
  shown: number;
  all: number;
  what: string;
  ticks?: number;
  total?: number;
}) {
  const part =
    props.ticks === undefined || !props.total
      ? ''
      : ` · ${percent(props.ticks, props.total).toFixed(2)} % of all ticks`;
  const count =
    props.shown === props.all
      ? grouped(props.all)
      : `${grouped(props.shown)} of ${grouped(props.all)}`;
  return (
    <p class="tally" role="status">
      {count} {props.what}
      {part}
    </p>
  );
}

export function Empty({ children }: { children: ComponentChildren }) {
  return <p class="empty">{children}</p>;
}

/** The heading of a view: its name, and the question that it answers. */
export function Heading({ title, question }: { title: string; question: string }) {
  return (
    <div class="heading">
      <h1 tabIndex={-1} data-heading>
        {title}
      </h1>
      <p>{question}</p>
    </div>
  );
}
