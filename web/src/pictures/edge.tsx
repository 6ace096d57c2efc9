// The edge of a source: the whole file as a strip of heat, to see where it is hot and to jump there.

import { useCallback, useMemo } from 'preact/hooks';
import { type ProgramLines, heatMarks, heatStep } from '../model/hot';
import { Canvas, type Pen, type Point } from './canvas';

export interface EdgeProps {
  lines: ProgramLines;
  /** Lines in sight, 0-based, end excluded. */
  inSight: { from: number; to: number };
  onJump(line: number): void;
  onKey(event: KeyboardEvent): void;
}

export function Edge({ lines, inSight, onJump, onKey }: EdgeProps) {
  const count = Math.max(1, lines.lastLine);
  const marks = useMemo(() => heatMarks(lines, MOST_MARKS), [lines]);
  const draw = useCallback(
    (pen: Pen) => paint(pen, marks, count, inSight),
    [marks, count, inSight.from, inSight.to],
  );
  const jump = ({ y }: Point, height: number): void => {
    onJump(Math.max(1, Math.min(count, Math.ceil((y / height) * count))));
  };
  return (
    <div class="edge">
      <Canvas
        label={`Overview of ${lines.lastLine} lines by heat. Arrow keys jump to the next and previous hot line.`}
        draw={draw}
        onKey={onKey}
        onClick={(point) => {
          const height = document.querySelector('.edge canvas')?.clientHeight ?? 1;
          jump(point, height);
        }}
      />
    </div>
  );
}

/** More than a screen has rows of pixels that can be told apart. */
const MOST_MARKS = 2000;

function paint(
  { context, width, height, theme }: Pen,
  marks: { line: number; heat: number }[],
  count: number,
  inSight: EdgeProps['inSight'],
): void {
  // As high as the file is long, up to the whole height; each line at least a pixel and a half.
  const perLine = Math.min(6, height / count);
  const scale = height / count;
  context.fillStyle = theme.surface;
  context.fillRect(0, 0, width, height);
  for (const { line, heat } of marks) {
    context.fillStyle = theme.heat[heatStep(heat)];
    const wide = Math.max(4, (width - 4) * Math.sqrt(heat));
    context.fillRect(2, (line - 1) * scale, wide, Math.max(2, perLine));
  }
  context.strokeStyle = theme.muted;
  context.lineWidth = 1;
  const top = inSight.from * scale;
  const high = Math.max(6, (inSight.to - inSight.from) * scale);
  context.globalAlpha = 0.12;
  context.fillStyle = theme.ink;
  context.fillRect(0, top, width, high);
  context.globalAlpha = 1;
  context.strokeRect(0.5, top + 0.5, width - 1, Math.min(high, height - top) - 1);
}
