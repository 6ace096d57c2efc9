// All that the views share, computed once when the page opens.

import type { Count, Source, ViewDocument } from '../data';
import { type LineTable, lineTable } from './lines';
import { toNumber } from './numbers';
import { sum } from './total';

export interface Model {
  document: ViewDocument;
  lines: LineTable;
  /** 100 per cent: the ticks of the run; the sum of the lines where the profile does not say. */
  total: number;
  exactTotal: Count;
  /** Clock ticks in a second, null when times cannot be told. */
  hertz: number | null;
  /** Ticks by program index, 0 for programs without. */
  programTicks: Float64Array;
  sourceOf(program: number): Source | null;
  /** The index of a program's name, null when no line or source has it. */
  programNamed(name: string): number | null;
}

export function makeModel(document: ViewDocument): Model {
  const { profile, names } = document;
  const exactTotal = profile.ticks ?? sum(profile.programs.ticks);
  const hertz = toNumber(profile.hertz);
  const programTicks = new Float64Array(names.length);
  profile.programs.program.forEach((program, i) => {
    programTicks[program] = toNumber(profile.programs.ticks[i]);
  });
  const sources = new Map(document.sources.map((source) => [source.program, source]));
  const indexes = new Map(names.map((name, index) => [name, index]));
  return {
    document,
    lines: lineTable(profile.lines, names.length, document.runs, document.baseline),
    total: toNumber(exactTotal),
    exactTotal,
    hertz: hertz > 0 ? hertz : null,
    programTicks,
    sourceOf: (program) => sources.get(program) ?? null,
    programNamed: (name) => indexes.get(name) ?? null,
  };
}

/** Reads the document out of the page. Throws a message for people when it is none of ours. */
export function parseDocument(text: string): ViewDocument {
  let document: unknown;
  try {
    document = JSON.parse(text);
  } catch (error) {
    throw new Error(`the data of this page is damaged (${(error as Error).message})`);
  }
  const { format, version } = (document ?? {}) as Partial<ViewDocument>;
  if (format !== 'ptick-view') throw new Error('this page holds no profile');
  if (version !== 1)
    throw new Error(`this page holds data of version ${version}, it reads version 1`);
  return document as ViewDocument;
}
