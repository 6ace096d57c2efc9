// Orders of table rows. An order is the row indexes as they are shown.

export interface Sort {
  key: string;
  descending: boolean;
}

/** A column's value of a row: numbers sort by size (NaN last), texts by their characters. */
export type SortValue = (row: number) => number | string;

/** Rows 0 to size - 1 by `value`; equal ones keep their order. */
export function ordered(size: number, value: SortValue, descending: boolean): Uint32Array {
  const order = Uint32Array.from({ length: size }, (_, row) => row);
  if (size === 0) return order;
  const keys = Array.from({ length: size }, (_, row) => value(row));
  const allNumbers = keys.every((key) => typeof key === 'number' && !Number.isNaN(key));
  const compare = allNumbers
    ? numbers(Float64Array.from(keys as number[]))
    : mixed(keys, descending);
  const direction = descending ? -1 : 1;
  return order.sort((a, b) => direction * compare(a, b) || a - b);
}

function numbers(keys: Float64Array): (a: number, b: number) => number {
  return (a, b) => keys[a] - keys[b];
}

/** Numbers before texts before what is missing (NaN), which stays last in both directions. */
function mixed(keys: (number | string)[], descending: boolean): (a: number, b: number) => number {
  const rank = (key: number | string): number =>
    typeof key === 'string' ? 1 : Number.isNaN(key) ? (descending ? -1 : 2) : 0;
  return (a, b) => {
    const left = keys[a];
    const right = keys[b];
    const ranks = rank(left) - rank(right);
    if (ranks !== 0) return ranks;
    if (typeof left === 'number' && typeof right === 'number') {
      return Number.isNaN(left) ? 0 : left - right;
    }
    return left < right ? -1 : left > right ? 1 : 0;
  };
}

/** Names by their letters, then their exact characters: the rank of each name. */
export function nameRanks(names: string[]): Uint32Array {
  const lower = names.map((name) => name.toLowerCase());
  const order = names
    .map((_, index) => index)
    .sort((a, b) => compareText(lower[a], lower[b]) || compareText(names[a], names[b]));
  const ranks = new Uint32Array(names.length);
  order.forEach((index, rank) => {
    ranks[index] = rank;
  });
  return ranks;
}

function compareText(a: string, b: string): number {
  return a < b ? -1 : a > b ? 1 : 0;
}

/** "-ticks" is by ticks, descending. */
export function parseSort(text: string | undefined, fallback: Sort, keys: string[]): Sort {
  if (!text) return fallback;
  const descending = text.startsWith('-');
  const key = descending ? text.slice(1) : text;
  return keys.includes(key) ? { key, descending } : fallback;
}

export function formatSort(sort: Sort): string {
  return (sort.descending ? '-' : '') + sort.key;
}
