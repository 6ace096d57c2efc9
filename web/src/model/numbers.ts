// Numbers as texts: exact, grouped by commas, shares cut and never rounded, as in the reports.

import type { Count } from '../data';

/** What cannot be shown as a number. */
export const NONE = '–';

/** For pictures and sorting only; may lose digits. What is no number is 0. */
export function toNumber(count: Count | null | undefined): number {
  const value = Number(count ?? 0);
  return Number.isFinite(value) ? value : 0;
}

/** "1234567.5" as "1,234,567.5". A text that is no number stays as it is. */
export function grouped(count: Count | null | undefined): string {
  if (count === null || count === undefined) return NONE;
  const text = String(count);
  const parts = /^([+-]?)(\d+)(\.\d+)?$/.exec(text);
  if (!parts) return text;
  const [, sign, whole, fraction] = parts;
  return minus(sign + whole.replace(/\B(?=(\d{3})+$)/g, ',') + (fraction ?? ''));
}

/** A change with its sign: "+12", "−3", "0". At most two decimals. */
export function signed(count: Count): string {
  const shown = typeof count === 'number' ? trimmed(count) : count;
  return toNumber(count) > 0 ? '+' + grouped(shown) : grouped(shown);
}

/** A mean, to two decimals at most. */
export function mean(count: Count | null | undefined): string {
  return typeof count === 'number' ? grouped(trimmed(count)) : grouped(count);
}

function trimmed(value: number): string {
  if (Number.isSafeInteger(value) || Math.abs(value) >= 1e15) return plain(value);
  return plain(Number(value.toFixed(2)));
}

/** Without an exponent, which String() writes from 1e21 on. */
function plain(value: number): string {
  return Math.abs(value) < 1e21 ? String(value) : BigInt(value).toString();
}

function minus(text: string): string {
  return text.startsWith('-') ? '−' + text.slice(1) : text;
}

/** Per cent of the total, cut to two decimals: 2135 of 23604 is 9.04. Without a total it is 0. */
export function percent(part: number, total: number): number {
  return total === 0 ? 0 : Math.trunc((part * 10000) / total) / 100;
}

/** "9.04 %" */
export function share(part: number, total: number): string {
  return total === 0 ? NONE : minus(percent(part, total).toFixed(2)) + ' %';
}

/** "9.05 %": rounded, as the reports show the shares of counters. */
export function roundedShare(part: number, total: number): string {
  return total === 0 ? NONE : minus((Math.round((part * 10000) / total) / 100).toFixed(2)) + ' %';
}

/** Change in per cent of the old value: "+12.5 %", "new" when there was none. */
export function relative(oldValue: number, change: number): string {
  if (change === 0) return '0 %';
  if (oldValue === 0) return 'new';
  const value = (change / Math.abs(oldValue)) * 100;
  const text = Math.abs(value) >= 100 ? grouped(Math.round(value)) : minus(value.toFixed(1));
  return (value > 0 ? '+' : '') + text + ' %';
}

/** "0.04 s", "9 min 02.07 s", "1 h 02 min 03 s": exact to hundredths below an hour. */
export function duration(seconds: number): string {
  const sign = seconds < 0 ? '−' : '';
  const hundredths = Math.round(Math.abs(seconds) * 100);
  const minutes = Math.floor(hundredths / 6000);
  const rest = (hundredths % 6000) / 100;
  if (minutes === 0) return `${sign}${rest.toFixed(2)} s`;
  const hours = Math.floor(minutes / 60);
  if (hours === 0) return `${sign}${minutes} min ${rest.toFixed(2).padStart(5, '0')} s`;
  const wholeSeconds = String(Math.floor(rest)).padStart(2, '0');
  return `${sign}${grouped(hours)} h ${String(minutes % 60).padStart(2, '0')} min ${wholeSeconds} s`;
}

/** Seconds for a column: two decimals, more only where the clock is finer. */
export function seconds(value: number | null, digits = 2): string {
  return value === null ? NONE : grouped(value.toFixed(digits));
}

/** "9 Mar 2026 08:02:11 UTC"; null where the value is no moment. */
export function moment(time: Count | null | undefined): string | null {
  if (time === null || time === undefined || time === '') return null;
  const date = new Date(Number(time) * 1000);
  if (Number.isNaN(date.getTime())) return null;
  const months = 'Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec'.split(' ');
  const clock = date.toISOString().slice(-13, -5);
  return `${date.getUTCDate()} ${months[date.getUTCMonth()]} ${date.getUTCFullYear()} ${clock} UTC`;
}

/** "1 line", "2 lines". */
export function counted(count: number, one: string, many = one + 's'): string {
  return `${grouped(count)} ${count === 1 ? one : many}`;
}
