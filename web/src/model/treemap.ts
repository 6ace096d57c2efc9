// The picture of the hot spots: rectangles whose areas are ticks. Programs hold their lines; what would
// be too small to see is one rectangle that says how much it holds.

import { type HierarchyRectangularNode, hierarchy, treemap, treemapSquarify } from 'd3-hierarchy';
import type { Model } from './model';

export interface Cell {
  kind: 'program' | 'line' | 'more lines' | 'more programs';
  /** The program, -1 for "more programs". */
  program: number;
  /** The row of a line, else -1. */
  row: number;
  /** Lines or programs that it holds. */
  count: number;
  ticks: number;
  x: number;
  y: number;
  width: number;
  height: number;
  /** Room for a name at the top; 0 without. */
  head: number;
}

interface Item {
  kind: Cell['kind'] | 'all';
  program: number;
  row: number;
  count: number;
  ticks: number;
  children?: Item[];
}

/** Square pixels that a line, and a program, must have to be drawn on its own. */
const LEAST_LINE = 24;
const LEAST_PROGRAM = 150;

/** The place to fill, in pixels; `em` is the size of the page's text. */
export interface Place {
  width: number;
  height: number;
  em: number;
}

/** All programs with their lines. Programs come before the lines that they hold. */
export function layoutPrograms(model: Model, place: Place): Cell[] {
  const { programs } = model.document.profile;
  const total = programs.program.reduce(
    (sum, program) => sum + positive(model.programTicks[program]),
    0,
  );
  const perPixel = total / (place.width * place.height);
  const children: Item[] = [];
  const rest = { count: 0, ticks: 0 };
  programs.program.forEach((program, i) => {
    const ticks = model.programTicks[program];
    if (ticks >= LEAST_PROGRAM * perPixel && ticks > 0) {
      const inner = lineItems(model, program, LEAST_LINE * perPixel);
      children.push({
        kind: 'program',
        program,
        row: -1,
        count: programs.lines[i],
        ticks,
        children: inner,
      });
    } else if (ticks > 0) {
      rest.count += 1;
      rest.ticks += ticks;
    }
  });
  if (rest.count > 0) children.push({ kind: 'more programs', program: -1, row: -1, ...rest });
  return layout(children, place);
}

/** The lines of one program. */
export function layoutLines(model: Model, program: number, place: Place): Cell[] {
  const least = (LEAST_LINE * positive(model.programTicks[program])) / (place.width * place.height);
  return layout(lineItems(model, program, least), place);
}

function lineItems(model: Model, program: number, least: number): Item[] {
  const { lines, document } = model;
  const items: Item[] = [];
  let shown = 0;
  const rows = lines.rowsOf(program);
  for (const row of rows) {
    const ticks = lines.ticks[row];
    if (ticks < least || ticks <= 0) break;
    items.push({ kind: 'line', program, row, count: 1, ticks });
    shown += ticks;
  }
  const ticks = model.programTicks[program] - shown;
  const at = document.profile.programs.program.indexOf(program);
  const count = (document.profile.programs.lines[at] ?? rows.length) - items.length;
  if (count > 0 && ticks > 0) items.push({ kind: 'more lines', program, row: -1, count, ticks });
  return items;
}

function layout(children: Item[], { width, height, em }: Place): Cell[] {
  if (children.length === 0 || width <= 0 || height <= 0) return [];
  const root = hierarchy<Item>({
    kind: 'all',
    program: -1,
    row: -1,
    count: 0,
    ticks: 0,
    children,
  }).sum((item) => (item.children && item.children.length > 0 ? 0 : item.ticks));
  const placed = treemap<Item>()
    .tile(treemapSquarify.ratio(1.3))
    .size([width, height])
    .round(true)
    .paddingOuter((node) => (node.depth === 1 ? 1 : 0))
    .paddingInner((node) => (node.depth === 0 ? 3 : 1))
    .paddingTop((node) => headOf(node, em))(root);
  return placed
    .descendants()
    .filter((node) => node.depth > 0 && node.x1 > node.x0 && node.y1 > node.y0)
    .map((node) => ({
      kind: node.data.kind as Cell['kind'],
      program: node.data.program,
      row: node.data.row,
      count: node.data.count,
      ticks: node.data.ticks,
      x: node.x0,
      y: node.y0,
      width: node.x1 - node.x0,
      height: node.y1 - node.y0,
      head: headOf(node, em),
    }));
}

function headOf(node: HierarchyRectangularNode<Item>, em: number): number {
  const isProgram = node.depth === 1 && node.data.kind === 'program';
  if (!isProgram) return 0;
  return node.x1 - node.x0 >= 3.2 * em && node.y1 - node.y0 >= 3 * em ? Math.round(1.45 * em) : 1;
}

function positive(ticks: number): number {
  return Math.max(0, ticks);
}

/** The innermost cell at a point, by those that `wanted` accepts. */
export function cellAt(
  cells: Cell[],
  x: number,
  y: number,
  wanted: (cell: Cell) => boolean,
): Cell | null {
  const hit = (cell: Cell): boolean =>
    x >= cell.x && x < cell.x + cell.width && y >= cell.y && y < cell.y + cell.height;
  return cells.findLast((cell) => hit(cell) && wanted(cell)) ?? null;
}

/** The nearest cell in a direction, as the arrow keys walk: null at the edge. */
export function neighbour(
  cells: Cell[],
  from: Cell,
  direction: 'left' | 'right' | 'up' | 'down',
): Cell | null {
  const sideways = direction === 'left' || direction === 'right';
  const sign = direction === 'right' || direction === 'down' ? 1 : -1;
  const [x, y] = centre(from);
  let best: Cell | null = null;
  let least = Infinity;
  for (const cell of cells) {
    if (cell === from) continue;
    const [cx, cy] = centre(cell);
    const along = sign * (sideways ? cx - x : cy - y);
    const across = Math.abs(sideways ? cy - y : cx - x);
    const distance = along + 2 * across;
    if (along > 0.5 && distance < least) {
      least = distance;
      best = cell;
    }
  }
  return best;
}

function centre(cell: Cell): [number, number] {
  return [cell.x + cell.width / 2, cell.y + cell.height / 2];
}
