// The filter of the tables: words that must all occur. It answers while one types, so what is equal for
// many rows (the name of a program, a line of source) is searched once.

import type { Model } from './model';

/** The words of a filter, in lower case. */
export function words(filter: string): string[] {
  return filter.toLowerCase().split(/\s+/).filter(Boolean);
}

/** Whether a text has all words. */
export function hasWords(text: string, wanted: string[]): boolean {
  const lower = text.toLowerCase();
  return wanted.every((word) => lower.includes(word));
}

/**
 * A test for rows of the line table. A word matches where the name of the program or the text of the
 * line has it, or the line number begins with it.
 */
export function lineFilter(model: Model, filter: string): (row: number) => boolean {
  const tests = words(filter).map((word) => wordFilter(model, word));
  return tests.length === 0 ? () => true : tests.reduce(both);
}

/** All tests in one go: most filters have a word or two. */
function both(a: (row: number) => boolean, b: (row: number) => boolean): (row: number) => boolean {
  return (row) => a(row) && b(row);
}

function wordFilter(model: Model, word: string): (row: number) => boolean {
  const { lines, document } = model;
  const named = Uint8Array.from(document.names, (name) =>
    Number(name.toLowerCase().includes(word)),
  );
  const texts = new Map<number, Uint8Array>();
  for (const source of document.sources) {
    texts.set(
      source.program,
      Uint8Array.from(source.lines, (text) => Number(text.toLowerCase().includes(word))),
    );
  }
  const begins = /^[1-9]\d{0,9}$/.test(word) ? Number(word) : null;
  return (row) => {
    const program = lines.program[row];
    if (named[program] === 1) return true;
    const number = lines.number[row];
    if (Number.isNaN(number)) return String(lines.line(row)).toLowerCase().includes(word);
    if (begins !== null && beginsWith(number, begins)) return true;
    return texts.get(program)?.[number - 1] === 1;
  };
}

/** Whether a whole number's digits begin with those of another. */
function beginsWith(number: number, digits: number): boolean {
  let rest = number;
  while (rest > digits) rest = Math.floor(rest / 10);
  return rest === digits;
}

/** Those of `order` that pass, in its order. */
export function filtered(order: Uint32Array, test: (row: number) => boolean): Uint32Array {
  const kept = new Uint32Array(order.length);
  let count = 0;
  for (const row of order) {
    if (test(row)) kept[count++] = row;
  }
  return kept.subarray(0, count);
}
