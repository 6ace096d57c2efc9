// The rows of a long list that are in sight; all rows have the same height. Lists higher than browsers
// allow (some end boxes at 17 million pixels) are squeezed: the scroll bar covers fewer pixels, while
// the rows keep their height.

import type { RefObject } from 'preact';
import { useLayoutEffect, useRef, useState } from 'preact/hooks';

const HIGHEST = 8_000_000;
/** Rows beyond the edges, so that scrolling a little shows no gap. */
const SPARE = 8;

export interface VirtualRows {
  /** Height of the box that holds the rows. */
  height: number;
  /** Rows to draw, with their places in the box. */
  rows: { index: number; top: number }[];
  /** Moves as little as it takes to show a row; into the middle when it was not in sight. */
  reveal(index: number): void;
  /** Moves as little as it takes to show a row. */
  scrollTo(index: number): void;
  /** Pixels in which rows are seen. */
  view: number;
  /** Rows that fit in sight. */
  page: number;
  /** The first and the last row in sight; the last is less than the first when there is none. */
  sight: [number, number];
}

/** `scroller` scrolls; its first child is a head that stays and covers what scrolls below it. */
export function useVirtual(
  count: number,
  rowHeight: number,
  scroller: RefObject<HTMLElement | null>,
): VirtualRows {
  const [scrolled, setScrolled] = useState(0);
  const [view, setView] = useState(0);
  const total = count * rowHeight;
  const height = Math.min(total, HIGHEST);
  const squeeze = squeezeOf(total, height, view);
  const latest = useRef({ squeeze, rowHeight });
  latest.current = { squeeze, rowHeight };

  useLayoutEffect(() => {
    const element = scroller.current;
    if (!element) return;
    const scroll = (): void => {
      const { squeeze: factor, rowHeight: step } = latest.current;
      // Rows keep their places unless the list is squeezed: then only a new first row is news.
      setScrolled(
        factor === 1 ? Math.floor(element.scrollTop / step) * step : element.scrollTop * factor,
      );
    };
    const measure = (): void => {
      setView(viewOf(element));
      scroll();
    };
    const observer = new ResizeObserver(measure);
    observer.observe(element);
    measure();
    element.addEventListener('scroll', scroll, { passive: true });
    return () => {
      observer.disconnect();
      element.removeEventListener('scroll', scroll);
    };
  }, []);

  const moveTo = (index: number, centred: boolean): void => {
    const element = scroller.current;
    if (!element || index < 0 || index >= count) return;
    // Measured anew: this may be asked for before a change of size is known.
    const seen = viewOf(element);
    const factor = squeezeOf(total, height, seen);
    const top = index * rowHeight;
    const bottomed = top + rowHeight - seen;
    const now = element.scrollTop * factor;
    // Positions are whole device pixels, so a little is as good as nothing.
    if (top >= now - factor && bottomed <= now + factor) return;
    const wanted = centred ? (top + bottomed) / 2 : top < now ? top : bottomed;
    element.scrollTop = wanted / factor;
  };

  const offset = Math.max(0, Math.min(scrolled, total - view));
  const first = Math.floor(offset / rowHeight);
  const last = Math.min(count - 1, Math.ceil((offset + view) / rowHeight) - 1);
  const shift = squeeze === 1 ? 0 : offset / squeeze - offset;
  const from = Math.max(0, first - SPARE);
  const to = Math.min(count - 1, last + SPARE + 1);
  return {
    height,
    rows: Array.from({ length: Math.max(0, to - from + 1) }, (_, i) => ({
      index: from + i,
      top: Math.round((from + i) * rowHeight + shift),
    })),
    reveal: (index) => moveTo(index, true),
    scrollTo: (index) => moveTo(index, false),
    page: Math.max(1, Math.floor(view / rowHeight) - 1),
    view,
    sight: [first, last],
  };
}

/** How many pixels of the list a pixel of the scroll bar is worth. */
function squeezeOf(total: number, height: number, view: number): number {
  return height === total || height <= view ? 1 : (total - view) / (height - view);
}

/** What the head leaves. */
function viewOf(scroller: HTMLElement): number {
  const head = scroller.firstElementChild as HTMLElement | null;
  return Math.max(0, scroller.clientHeight - (head?.offsetHeight ?? 0));
}
