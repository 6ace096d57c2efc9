// How the time line is drawn: an axis of seconds, bars for commands and inputs, pauses before inputs.

import type { Profile } from '../data';
import { duration, grouped } from '../model/numbers';
import type { Event } from '../model/session';
import { visible } from '../model/text';
import { type Band, type Window, rowOf } from '../model/timeline';
import { type Pen, fitted } from './canvas';
import { fontOf, inkOn } from './theme';

export interface TimelineLook {
  bands: Band[];
  window: Window;
  profile: Profile;
  before: Omit<Profile, 'lines'> | null;
  selected: Event | null;
  hovered: Event | null;
}

export function paintTimeline(pen: Pen, look: TimelineLook): void {
  const { context, width, height, theme } = pen;
  const x = scaleOf(look.window, width);
  context.fillStyle = theme.surface;
  context.fillRect(0, 0, width, height);
  paintAxis(pen, look.window);
  for (const band of look.bands) {
    context.font = fontOf(theme, 600, 0.75);
    context.textBaseline = 'alphabetic';
    context.fillStyle = theme.muted;
    context.fillText(band.title, 6, band.top - theme.em * 0.35);
    if (band.kind === 'input') paintPauses(pen, band, x);
    paintBand(pen, band, look, x);
  }
}

/** From seconds to pixels. */
type Scale = (seconds: number) => number;

function scaleOf({ from, to }: Window, width: number): Scale {
  return (seconds) => ((seconds - from) / (to - from)) * width;
}

function paintAxis({ context, width, height, theme }: Pen, window: Window): void {
  const x = scaleOf(window, width);
  const step = stepOf((window.to - window.from) / Math.max(2, width / (7.5 * theme.em)));
  context.font = fontOf(theme, 400, 0.75);
  context.textBaseline = 'middle';
  for (let i = Math.ceil(window.from / step); i * step <= window.to; ++i) {
    const time = i * step;
    const at = Math.round(x(time)) + 0.5;
    context.strokeStyle = theme.line;
    context.lineWidth = 1;
    context.beginPath();
    context.moveTo(at, theme.em * 1.4);
    context.lineTo(at, height);
    context.stroke();
    context.fillStyle = theme.muted;
    const text =
      step >= 1 && time >= 60 ? clock(Math.round(time)) : `${grouped(Number(time.toFixed(3)))} s`;
    if (at + 4 + context.measureText(text).width <= width)
      context.fillText(text, at + 4, theme.em * 0.75);
  }
}

const MINUTES = [
  1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 10800, 21600, 43200, 86400,
];

/** A step of the axis that people count in, at least `least` seconds. */
function stepOf(least: number): number {
  const found = MINUTES.find((step) => step >= least);
  if (least > 0.5 && found) return found;
  const power = 10 ** Math.floor(Math.log10(least));
  return power * ([1, 2, 5].find((factor) => factor * power >= least) ?? 10);
}

/** "9:02" as minutes and seconds, "1:09:02" with hours. */
function clock(seconds: number): string {
  const two = (value: number): string => String(value).padStart(2, '0');
  const minutes = Math.floor(seconds / 60);
  const rest = two(seconds % 60);
  return minutes < 60
    ? `${minutes}:${rest} min`
    : `${grouped(Math.floor(minutes / 60))}:${two(minutes % 60)}:${rest} h`;
}

function paintPauses({ context, width, theme }: Pen, band: Band, x: Scale): void {
  const high = Math.min(band.height, band.rowHeight);
  let drawn = -1;
  for (const event of band.session.events) {
    if (event.kind !== 'input' || event.pause <= 0) continue;
    const left = x(event.start - event.pause);
    const right = x(event.start);
    if (right < 0 || right < drawn + 0.5) continue;
    if (left > width) break;
    drawn = right;
    context.globalAlpha = band.before ? 0.5 : 1;
    context.fillStyle = theme.pause;
    context.fillRect(left, band.top + high * 0.3, Math.max(1, right - left - 1), high * 0.4);
    context.globalAlpha = 1;
    const text = duration(event.pause);
    context.font = fontOf(theme, 400, 0.68);
    if (
      !band.before &&
      high >= theme.em * 1.05 &&
      right - left > context.measureText(text).width + 16
    ) {
      context.fillStyle = theme.muted;
      context.textBaseline = 'middle';
      const from = Math.max(left, 0);
      const to = Math.min(right, width);
      context.fillText(
        text,
        (from + to) / 2 - context.measureText(text).width / 2,
        band.top + high / 2 + 0.5,
      );
    }
  }
}

function paintBand(pen: Pen, band: Band, look: TimelineLook, x: Scale): void {
  const { context, width, theme } = pen;
  const thin = Array.from({ length: band.rows }, () => new Float32Array(Math.ceil(width) + 1));
  const colour = band.kind === 'command' ? theme.command : theme.input;
  for (const event of band.session.events) {
    if (event.kind !== band.kind) continue;
    const left = x(event.start);
    if (left > width) break;
    const right = Math.max(x(event.end), left + 1);
    if (right < 0) continue;
    const row = rowOf(band, event);
    const marked = !band.before && (event === look.selected || event === look.hovered);
    if (right - left < 2 && !marked) {
      thin[row][Math.max(0, Math.floor(left))] += Math.max(0.05, x(event.end) - left);
      continue;
    }
    const top = band.top + row * band.rowHeight;
    const high = Math.max(2, band.rowHeight - 2);
    context.globalAlpha = band.before ? 0.45 : 1;
    context.fillStyle = colour;
    const from = Math.max(left, -2);
    const wide = Math.min(right, width + 2) - from;
    context.fillRect(from, top, Math.max(wide - (wide > 3 ? 1 : 0), 1), high);
    context.globalAlpha = 1;
    if (wide > theme.em * 2 && high >= theme.em * 0.9 && !band.before) {
      context.fillStyle = inkOn(colour);
      context.font = fontOf(theme, 400, 0.75);
      context.textBaseline = 'middle';
      context.fillText(
        fitted(context, label(look, event), wide - 8),
        Math.max(from, 0) + 4,
        top + high / 2 + 0.5,
      );
    }
    if (marked) frame(pen, event === look.selected, from, top, wide, high);
  }
  context.fillStyle = colour;
  thin.forEach((columns, row) => paintThin(context, columns, band, row));
}

/**
 * Events thinner than two pixels: where they crowd, a pixel is the stronger the more of its time they
 * fill.
 */
function paintThin(
  context: CanvasRenderingContext2D,
  columns: Float32Array,
  band: Band,
  row: number,
): void {
  const top = band.top + row * band.rowHeight;
  const high = Math.max(2, band.rowHeight - 2);
  columns.forEach((filled, column) => {
    if (filled === 0) return;
    const alone = !columns[column - 1] && !columns[column + 1];
    const strength = alone ? 1 : Math.max(0.5, Math.min(1, filled));
    context.globalAlpha = strength * (band.before ? 0.45 : 1);
    context.fillRect(column, top, 1, high);
  });
  context.globalAlpha = 1;
}

function frame(
  { context, theme, focused }: Pen,
  selected: boolean,
  x: number,
  y: number,
  width: number,
  height: number,
): void {
  context.strokeStyle = selected && focused ? theme.focus : theme.ink;
  context.lineWidth = selected ? 2.5 : 1.5;
  context.strokeRect(x - 1.5, y - 1.5, width + 3, height + 3);
}

function label({ profile }: TimelineLook, event: Event): string {
  if (event.kind === 'command') return visible(profile.commands[event.index].command.slice(0, 400));
  return visible((profile.inputs[event.index].text ?? '').slice(0, 400));
}
