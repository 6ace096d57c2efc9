// The hot lines of a program, for its source view.

import type { ViewDocument } from '../data';
import type { Model } from './model';
import { Verdict } from './lines';

export interface LineFacts {
  row: number;
  ticks: number;
  /** Share of the hottest line of the program, 0 to 1. */
  heat: number;
}

export interface ProgramLines {
  program: number;
  ticks: number;
  /** By line number. */
  byLine: Map<number, LineFacts>;
  /** Rows whose line the source does not have: beyond its end, line 0, texts. */
  beyond: number[];
  /** Line numbers of the hot lines, ascending. */
  hot: number[];
  /** Ticks that the hot lines hold. */
  hotTicks: number;
  /** The hottest line, null when no line of the source has ticks. */
  hottest: number | null;
  /** The last line that can be shown. */
  lastLine: number;
}

/** The smallest set of hottest lines with this part of the program's ticks is "hot". */
export const HOT_PART = 0.8;

export function programLines(model: Model, program: number): ProgramLines {
  const { lines } = model;
  const source = model.sourceOf(program);
  const rows = lines.rowsOf(program);
  const byLine = new Map<number, LineFacts>();
  const beyond: number[] = [];
  let lastLine = source?.lines.length ?? 0;
  let most = 0;
  for (const row of rows) {
    const number = lines.number[row];
    const exists =
      Number.isInteger(number) && number >= 1 && (!source || number <= source.lines.length);
    if (!exists) {
      beyond.push(row);
      continue;
    }
    byLine.set(number, { row, ticks: lines.ticks[row], heat: 0 });
    most = Math.max(most, lines.ticks[row]);
    if (!source) lastLine = Math.max(lastLine, number);
  }
  if (most > 0) for (const facts of byLine.values()) facts.heat = Math.max(0, facts.ticks / most);
  const ticks = model.programTicks[program];
  return { program, ticks, byLine, beyond, ...hotLines(byLine, ticks), lastLine };
}

function hotLines(
  byLine: Map<number, LineFacts>,
  ticks: number,
): Pick<ProgramLines, 'hot' | 'hotTicks' | 'hottest'> {
  const ranked = [...byLine]
    .filter(([, facts]) => facts.ticks > 0)
    .sort((a, b) => b[1].ticks - a[1].ticks);
  const hot: number[] = [];
  let hotTicks = 0;
  for (const [line, facts] of ranked) {
    if (hotTicks >= ticks * HOT_PART) break;
    hot.push(line);
    hotTicks += facts.ticks;
  }
  return { hot: hot.sort((a, b) => a - b), hotTicks, hottest: ranked[0]?.[0] ?? null };
}

/** The next hot line after `line` (or before it), around the end; null when there is none. */
export function nextHot(hot: number[], line: number, direction: 1 | -1): number | null {
  if (hot.length === 0) return null;
  if (direction > 0) return hot.find((candidate) => candidate > line) ?? hot[0];
  return hot.findLast((candidate) => candidate < line) ?? hot[hot.length - 1];
}

/** Heat in ten steps: 0 no ticks, 9 the hottest line. Grows with the root, so that warm lines show. */
export function heatStep(heat: number): number {
  return heat <= 0 ? 0 : Math.max(1, Math.round(Math.sqrt(Math.min(1, heat)) * 9));
}

/** "slower", "faster", "noise" or "" as a class name. */
export function verdictClass(model: Model, row: number): '' | 'slower' | 'faster' | 'noise' {
  const { compared } = model.lines;
  if (!compared || compared.verdict[row] === Verdict.same) return '';
  if (compared.verdict[row] === Verdict.noise) return 'noise';
  return compared.change[row] > 0 ? 'slower' : 'faster';
}

/** The first programs to choose from: those with ticks, most first, then those that only the baseline has. */
export function programChoices({ names, profile }: ViewDocument, most: number): number[] {
  const choices = profile.programs.program.slice(0, most);
  const known = new Set(profile.programs.program);
  for (let index = 0; index < names.length && choices.length < most; ++index)
    if (!known.has(index)) choices.push(index);
  return choices;
}

/**
 * What a strip beside the source shows: of each of at most `most` equal parts the hottest line, so that
 * drawing takes no longer for a long source. Coldest first.
 */
export function heatMarks(lines: ProgramLines, most: number): { line: number; heat: number }[] {
  const lineCount = Math.max(1, lines.lastLine);
  const parts = new Map<number, { line: number; heat: number }>();
  for (const [line, { heat }] of lines.byLine) {
    if (heat <= 0) continue;
    const part = lineCount <= most ? line : Math.floor(((line - 1) / lineCount) * most);
    const known = parts.get(part);
    if (!known || heat > known.heat) parts.set(part, { line, heat });
  }
  return [...parts.values()].sort((a, b) => a.heat - b.heat);
}
