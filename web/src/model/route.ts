// The place in the page that the address names: "#source?program=PRICE.LINES&line=82". A link with it
// opens there, and the browser's back button goes there.

import type { Line } from '../data';
import type { Model } from './model';

export const VIEWS = [
  'overview',
  'hot',
  'source',
  'session',
  'commands',
  'calls',
  'resources',
] as const;
export type View = (typeof VIEWS)[number];

export interface Route {
  view: View;
  /** What the view keeps: filter, order, selection. */
  params: ReadonlyMap<string, string>;
}

/** Everything that is no place of the page leads to the overview. */
export function parseRoute(fragment: string): Route {
  const [path, query = ''] = splitOnce(fragment.replace(/^#/, ''), '?');
  const view = VIEWS.find((name) => name === path);
  if (!view) return { view: 'overview', params: new Map() };
  const params = new Map<string, string>();
  for (const pair of query.split('&')) {
    const [key, value = ''] = splitOnce(pair, '=');
    if (key) params.set(decoded(key), decoded(value));
  }
  return { view, params };
}

/** Empty values are left out. */
export function formatRoute(view: View, params: Iterable<readonly [string, string]> = []): string {
  const pairs: string[] = [];
  for (const [key, value] of params) {
    if (value !== '') pairs.push(`${encoded(key)}=${encoded(value)}`);
  }
  return `#${view}` + (pairs.length > 0 ? '?' + pairs.join('&') : '');
}

/** Names up to this length go into addresses; longer ones go by their index, as "~17". */
const LONGEST_NAME = 200;

export function programParam(model: Model, program: number): string {
  const name = model.document.names[program];
  const plain =
    name !== '' && name.length <= LONGEST_NAME && !name.startsWith('~') && isWellFormed(name);
  return plain ? name : `~${program}`;
}

/** A line as a parameter: a text that is empty or begins with "~" has a "~" before it. */
export function lineParam(line: Line): string {
  const text = String(line);
  return text === '' || text.startsWith('~') ? `~${text}` : text;
}

export function programOf(model: Model, param: string | undefined): number | null {
  if (!param) return null;
  const index = /^~(\d+)$/.exec(param);
  if (!index) return model.programNamed(param);
  return Number(index[1]) < model.document.names.length ? Number(index[1]) : null;
}

function splitOnce(text: string, separator: string): [string, string?] {
  const at = text.indexOf(separator);
  return at < 0 ? [text] : [text.slice(0, at), text.slice(at + 1)];
}

function isWellFormed(text: string): boolean {
  return !/[\ud800-\udbff](?![\udc00-\udfff])|(?<![\ud800-\udbff])[\udc00-\udfff]/.test(text);
}

function encoded(text: string): string {
  const safe = isWellFormed(text) ? text : '';
  return encodeURIComponent(safe).replace(/%(20|3A|2F|2C|40)/g, (code) =>
    code === '%20' ? '+' : decodeURIComponent(code),
  );
}

function decoded(text: string): string {
  try {
    return decodeURIComponent(text.replace(/\+/g, ' '));
  } catch {
    return '';
  }
}
