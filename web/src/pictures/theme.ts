// Colours for canvases, from the style sheet, so that a scheme is defined in one place.

import { rootSize } from '../parts/use-root-size';

export interface Theme {
  ink: string;
  muted: string;
  line: string;
  surface: string;
  accent: string;
  command: string;
  input: string;
  pause: string;
  focus: string;
  /** Ten steps: no ticks to the hottest. */
  heat: string[];
  /** Four steps each: a little to much. */
  slower: string[];
  faster: string[];
  noise: string;
  same: string;
  font: string;
  mono: string;
  /** The size of the page's text in pixels. */
  em: number;
}

let cached: Theme | null = null;

/** The colours of the scheme in force. */
export function theme(): Theme {
  cached ??= readTheme();
  return cached;
}

/** Calls back when the scheme or the size of the text changes. */
export function onThemeChange(changed: () => void): () => void {
  const query = matchMedia('(prefers-color-scheme: dark)');
  const forget = (): void => {
    cached = null;
    changed();
  };
  const resized = (): void => {
    if (cached && cached.em !== rootSize()) forget();
  };
  query.addEventListener('change', forget);
  addEventListener('resize', resized);
  return () => {
    query.removeEventListener('change', forget);
    removeEventListener('resize', resized);
  };
}

function readTheme(): Theme {
  const style = getComputedStyle(document.documentElement);
  const colour = (name: string): string => style.getPropertyValue(`--${name}`).trim();
  const steps = (name: string, count: number): string[] =>
    Array.from({ length: count }, (_, step) => colour(`${name}-${step}`));
  return {
    ink: colour('ink'),
    muted: colour('muted'),
    line: colour('line'),
    surface: colour('surface'),
    accent: colour('accent'),
    command: colour('command'),
    input: colour('input'),
    pause: colour('pause'),
    focus: colour('focus'),
    heat: steps('heat', 10),
    slower: steps('slower', 4),
    faster: steps('faster', 4),
    noise: colour('noise-fill'),
    same: colour('same-fill'),
    font: colour('font'),
    mono: colour('mono'),
    em: rootSize(),
  };
}

/** A font for a canvas; `size` in parts of the page's text. */
export function fontOf(
  theme: Theme,
  weight: 400 | 600,
  size: number,
  family: 'font' | 'mono' = 'font',
): string {
  return `${weight} ${(theme.em * size).toFixed(2)}px ${theme[family]}`;
}

const inks = new Map<string, string>();

/** Black or white, whichever is read better on a colour "#rrggbb": never less than 4.5 to 1. */
export function inkOn(colour: string): string {
  let ink = inks.get(colour);
  if (ink === undefined) {
    const light = luminance(colour);
    ink = (light + 0.05) / 0.05 >= 1.05 / (light + 0.05) ? '#000000' : '#ffffff';
    inks.set(colour, ink);
  }
  return ink;
}

/** Relative luminance as WCAG has it. */
export function luminance(colour: string): number {
  const [red, green, blue] = [1, 3, 5].map((at) => {
    const value = parseInt(colour.slice(at, at + 2), 16) / 255;
    return value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4;
  });
  return 0.2126 * red + 0.7152 * green + 0.0722 * blue;
}
