// Walking into a program and out again, as a short movement: the window of the picture moves between
// all of it and the program's rectangle. None for those who want no motion.

import { useEffect, useLayoutEffect, useRef, useState } from 'preact/hooks';
import type { Cell } from '../model/treemap';
import type { Pen } from './canvas';

const LASTS = 240;

export interface Walk {
  /** The program walked into or out of. */
  program: number;
  /** 0: all programs are seen, 1: only this one. */
  progress: number;
}

/** The movement that is under way, null when the picture is at rest. */
export function useWalk(inside: number | null): Walk | null {
  const [walk, setWalk] = useState<Walk | null>(null);
  const last = useRef(inside);
  const frame = useRef(0);

  // Before the first frame is drawn, so that the new state does not flash up.
  useLayoutEffect(() => {
    const from = last.current;
    last.current = inside;
    if (from === inside || matchMedia('(prefers-reduced-motion: reduce)').matches) return;
    const program = inside ?? from!;
    const start = performance.now();
    const step = (now: number): void => {
      const done = Math.min(1, Math.max(0, (now - start) / LASTS));
      const eased = done * done * (3 - 2 * done);
      setWalk(done === 1 ? null : { program, progress: inside === null ? 1 - eased : eased });
      if (done < 1) frame.current = requestAnimationFrame(step);
    };
    cancelAnimationFrame(frame.current);
    step(start);
  }, [inside]);
  useEffect(() => () => cancelAnimationFrame(frame.current), []);
  return walk;
}

/** Draws both pictures on the way; `paint` draws cells without text. */
export function paintWalk(
  { context, width, height }: Pen,
  walk: Walk,
  all: Cell[],
  lines: Cell[],
  paint: (cell: Cell) => void,
): void {
  const target = all.find((cell) => cell.kind === 'program' && cell.program === walk.program);
  const place = target ?? { x: width / 2 - 1, y: height / 2 - 1, width: 2, height: 2 };
  const between = (from: number, to: number): number => from + (to - from) * walk.progress;
  const seen = {
    x: between(0, place.x),
    y: between(0, place.y),
    width: between(width, place.width),
    height: between(height, place.height),
  };
  context.save();
  context.scale(width / seen.width, height / seen.height);
  context.translate(-seen.x, -seen.y);
  all.forEach(paint);
  context.translate(place.x, place.y);
  context.scale(place.width / width, place.height / height);
  context.globalAlpha = walk.progress;
  lines.forEach(paint);
  context.restore();
}
