// What the overview picks out of the rest: the hottest, the slowest, what changed most.

import type { Model } from './model';
import { Verdict } from './lines';

/** The rows with most ticks. */
export function hottestLines(model: Model, count: number): number[] {
  const rows: number[] = [];
  for (let row = 0; row < model.lines.ownSize && rows.length < count; ++row) {
    if (model.lines.ticks[row] > 0) rows.push(row);
  }
  return rows;
}

export interface ChangedLines {
  rows: number[];
  /** Lines that changed beyond noise, and lines that changed within it. */
  changed: number;
  noise: number;
}

/** The lines that changed most, beyond noise. */
export function mostChanged(model: Model, count: number): ChangedLines {
  const { compared, size } = model.lines;
  const result: ChangedLines = { rows: [], changed: 0, noise: 0 };
  if (!compared) return result;
  const rows: number[] = [];
  for (let row = 0; row < size; ++row) {
    if (compared.verdict[row] === Verdict.changed) rows.push(row);
    else if (compared.verdict[row] === Verdict.noise) ++result.noise;
  }
  result.changed = rows.length;
  rows.sort((a, b) => Math.abs(compared.change[b]) - Math.abs(compared.change[a]) || a - b);
  result.rows = rows.slice(0, count);
  return result;
}
