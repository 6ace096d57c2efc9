// How a rectangle of the treemap looks: its colour, and as much text as fits.

import { heatStep } from '../model/hot';
import { Verdict } from '../model/lines';
import type { Model } from '../model/model';
import { grouped, share, signed } from '../model/numbers';
import { lineText, nameText, visible } from '../model/text';
import type { Cell } from '../model/treemap';
import { type Pen, fitted } from './canvas';
import { type Theme, fontOf, inkOn } from './theme';

/** What is worked out once for a model. */
export interface Look {
  model: Model;
  colour(theme: Theme, cell: Cell): string;
  /** Changes of programs as texts: "+2,459" or "~ −12". */
  changes: Map<number, string>;
}

export function makeLook(model: Model): Look {
  const changes = new Map<number, string>();
  for (const change of model.document.baseline?.changes.programs ?? []) {
    changes.set(change.program, (change.significant ? '' : '~ ') + signed(change.change));
  }
  return { model, colour: colourOf(model), changes };
}

/** By heat; with a baseline by change, greyed within noise. */
function colourOf(model: Model): Look['colour'] {
  const { compared, ticks, size } = model.lines;
  if (!compared) {
    const most = ticks.length > 0 ? ticks[0] : 0;
    return (theme, cell) =>
      cell.row < 0 ? theme.heat[0] : theme.heat[heatStep(most > 0 ? cell.ticks / most : 0)];
  }
  let most = 0;
  for (let row = 0; row < size; ++row) {
    if (compared.verdict[row] === Verdict.changed)
      most = Math.max(most, Math.abs(compared.change[row]));
  }
  return (theme, cell) => {
    if (cell.row < 0 || compared.verdict[cell.row] === Verdict.same) return theme.same;
    if (compared.verdict[cell.row] === Verdict.noise) return theme.noise;
    const change = compared.change[cell.row];
    const step = Math.min(3, Math.floor(Math.sqrt(Math.abs(change) / most) * 4));
    return (change > 0 ? theme.slower : theme.faster)[step];
  };
}

/** The rectangle without its text. */
export function paintShape({ context, theme }: Pen, cell: Cell, look: Look): void {
  context.fillStyle = cell.kind === 'program' ? theme.line : look.colour(theme, cell);
  context.fillRect(cell.x, cell.y, cell.width, cell.height);
}

/** `faded`: the filter does not keep it. */
export function paintCell(pen: Pen, cell: Cell, look: Look, faded: boolean): void {
  const { context, theme } = pen;
  context.globalAlpha = faded ? 0.18 : 1;
  paintShape(pen, cell, look);
  if (cell.kind === 'program') writeHead(pen, cell, look);
  else if (cell.width >= 1.7 * theme.em && cell.height >= theme.em) {
    writeLines(pen, cell, texts(look.model, cell), inkOn(look.colour(theme, cell)));
  }
  context.globalAlpha = 1;
}

function writeHead({ context, theme }: Pen, cell: Cell, { model, changes }: Look): void {
  if (cell.head < 10) return;
  context.fillStyle = theme.ink;
  context.textBaseline = 'middle';
  context.font = fontOf(theme, 600, 0.8);
  const change = changes.get(cell.program);
  const part = share(cell.ticks, model.total) + (change ? `  ${change}` : '');
  const name = nameText(model.document.names[cell.program]);
  const full = fitted(context, name, cell.width - 14);
  context.fillText(full, cell.x + 7, cell.y + cell.head / 2 + 1);
  const taken = context.measureText(full).width;
  context.font = fontOf(theme, 400, 0.8);
  if (cell.width - taken > context.measureText(part).width + 28) {
    context.fillStyle = theme.muted;
    context.fillText(part, cell.x + 14 + taken, cell.y + cell.head / 2 + 1);
  }
}

/** What is written into a rectangle, most important first. */
function texts(model: Model, cell: Cell): string[] {
  if (cell.kind === 'more lines')
    return [`${grouped(cell.count)} more`, share(cell.ticks, model.total)];
  if (cell.kind === 'more programs')
    return [`${grouped(cell.count)} more programs`, share(cell.ticks, model.total)];
  const line = lineText(model.lines.line(cell.row));
  const source = model.sourceOf(cell.program)?.lines[model.lines.number[cell.row] - 1];
  const part = share(cell.ticks, model.total) + changeOf(model, cell.row);
  return [line, part, ...(source ? [visible(source.trim())] : [])];
}

/** "  +1,067" where a line changed beyond noise. */
function changeOf({ lines: { compared } }: Model, row: number): string {
  return compared?.verdict[row] === Verdict.changed ? `  ${signed(compared.change[row])}` : '';
}

function writeLines({ context, theme }: Pen, cell: Cell, lines: string[], ink: string): void {
  const room = cell.width - 10;
  const step = theme.em;
  context.fillStyle = ink;
  context.textBaseline = 'top';
  let y = cell.y + 4;
  lines.forEach((text, i) => {
    if (y + 0.8 * step > cell.y + cell.height) return;
    context.font = fontOf(
      theme,
      i === 0 ? 600 : 400,
      i === 0 ? 0.8 : 0.74,
      i === 2 ? 'mono' : 'font',
    );
    if (i === 2) {
      for (const part of wrapped(
        context,
        text,
        room,
        Math.floor((cell.y + cell.height - y - 2) / step),
      )) {
        context.fillText(part, cell.x + 5, y + 2);
        y += step;
      }
      return;
    }
    // A number that is cut would be another number.
    const fits = context.measureText(text).width <= room;
    const shown = fits ? text : text.length > 12 ? fitted(context, text, room) : '';
    if (shown === '') return;
    context.fillText(shown, cell.x + 5, y);
    y += step;
  });
}

/** Text in at most `count` lines of a width; nothing when it is too narrow to be read. */
function wrapped(
  context: CanvasRenderingContext2D,
  text: string,
  width: number,
  count: number,
): string[] {
  if (width < 60 || count < 1) return [];
  const parts: string[] = [];
  let rest = text.slice(0, 400);
  while (rest !== '' && parts.length < count) {
    if (parts.length === count - 1) return [...parts, fitted(context, rest, width)];
    let end = rest.length;
    while (end > 1 && context.measureText(rest.slice(0, end)).width > width) {
      const space = rest.lastIndexOf(' ', end - 1);
      end = space > 0 ? space : end - 1;
    }
    parts.push(rest.slice(0, end));
    rest = rest.slice(end).trimStart();
  }
  return parts;
}
