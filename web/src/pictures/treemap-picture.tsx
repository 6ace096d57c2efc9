// The picture of the hot spots: rectangles whose areas are ticks, to walk into by pointer and keys.

import { useCallback, useEffect, useMemo, useState } from 'preact/hooks';
import { verdictClass } from '../model/hot';
import { Verdict } from '../model/lines';
import type { Model } from '../model/model';
import { counted, grouped, share, signed } from '../model/numbers';
import { lineText, nameText, visible } from '../model/text';
import { type Cell, cellAt, layoutLines, layoutPrograms, neighbour } from '../model/treemap';
import { Canvas, type Pen, type Point } from './canvas';
import { paintWalk, useWalk } from './treemap-motion';
import { makeLook, paintCell, paintShape } from './treemap-paint';
import { useRootSize } from '../parts/use-root-size';

export interface TreemapProps {
  model: Model;
  /** The program that was walked into, null: all. */
  inside: number | null;
  /** The selected line. */
  selected: number | null;
  /** Which rows the filter keeps; null: all. */
  kept: ((row: number) => boolean) | null;
  onEnter(program: number): void;
  onLeave(): void;
  onSelect(row: number): void;
  onOpen(row: number): void;
}

export function Treemap(props: TreemapProps) {
  const { model, inside, selected, kept } = props;
  const em = useRootSize();
  const [size, setSize] = useState({ width: 0, height: 0 });
  const [walked, setWalked] = useState<Cell | null>(null);
  const [hover, setHover] = useState<{ cell: Cell; point: Point } | null>(null);

  const cells = useMemo(
    () =>
      inside === null
        ? layoutPrograms(model, { ...size, em })
        : layoutLines(model, inside, { ...size, em }),
    [model, inside, size, em],
  );
  const steps = useMemo(() => cells.filter((cell) => isStep(cell, inside)), [cells, inside]);
  const current = currentCell(steps, walked, inside, selected, model);
  const look = useMemo(() => makeLook(model), [model]);
  const walk = useWalk(inside);
  useEffect(() => setHover(null), [inside]);

  const draw = useCallback(
    (pen: Pen) => {
      if (walk) {
        const all = layoutPrograms(model, { ...size, em });
        const lines = layoutLines(model, walk.program, { ...size, em });
        paintWalk(pen, walk, all, lines, (cell) => paintShape(pen, cell, look));
        return;
      }
      for (const cell of cells) {
        const faded = kept !== null && cell.row >= 0 && !kept(cell.row);
        paintCell(pen, cell, look, faded);
      }
      for (const cell of cells) {
        if (cell.row === selected && selected !== null) {
          outline(pen, cell, pen.theme.surface, 5);
          outline(pen, cell, pen.theme.ink, 3);
        }
      }
      if (hover) outline(pen, hover.cell, pen.theme.ink, 1.5);
      if (current && pen.focused) outline(pen, current, pen.theme.focus, 3);
    },
    [cells, kept, selected, hover, current, look, walk],
  );

  const choose = (cell: Cell): void => {
    setWalked(cell);
    if (cell.row >= 0) props.onSelect(cell.row);
  };
  const enter = (cell: Cell): void => {
    if (inside === null && cell.program >= 0) props.onEnter(cell.program);
    else if (cell.row >= 0) props.onOpen(cell.row);
  };
  const onKey = (event: KeyboardEvent): void => {
    const direction = DIRECTIONS[event.key];
    const first = steps.reduce<Cell | null>(
      (most, cell) => (most && most.ticks >= cell.ticks ? most : cell),
      null,
    );
    if (direction) {
      const next = current ? neighbour(steps, current, direction) : first;
      if (next) choose(next);
    } else if (event.key === 'Home' && first) {
      choose(first);
    } else if (event.key === 'Enter' && current) {
      enter(current);
    } else if ((event.key === 'Escape' || event.key === 'Backspace') && inside !== null) {
      props.onLeave();
    } else {
      return;
    }
    event.preventDefault();
  };
  const hit = (point: Point): Cell | null => cellAt(cells, point.x, point.y, () => true);

  return (
    <div class="treemap">
      <Canvas
        class="treemap-canvas"
        label={`Picture of the ticks. ${counted(steps.length, 'rectangle')}; arrow keys walk, Enter goes in, Escape goes out. The table has the same numbers.`}
        describedBy="treemap-status"
        draw={draw}
        onSize={(width, height) => setSize({ width, height })}
        onKey={onKey}
        onHover={(point) => {
          const cell = point && hit(point);
          setHover(cell && point ? { cell, point } : null);
        }}
        onClick={(point) => {
          const cell = hit(point);
          if (cell && inside === null) enter(cell);
          else if (cell) choose(cell);
        }}
        onDoubleClick={(point) => {
          const cell = hit(point);
          if (cell && inside !== null) enter(cell);
        }}
      />
      {hover && <Tip model={model} cell={hover.cell} point={hover.point} size={size} />}
      <p id="treemap-status" class="away" role="status">
        {current ? says(model, current) : ''}
      </p>
    </div>
  );
}

const DIRECTIONS: Record<string, 'left' | 'right' | 'up' | 'down' | undefined> = {
  ArrowLeft: 'left',
  ArrowRight: 'right',
  ArrowUp: 'up',
  ArrowDown: 'down',
};

/** What the keys walk over: programs from above, lines inside of one. */
function isStep(cell: Cell, inside: number | null): boolean {
  return inside === null ? cell.kind === 'program' || cell.kind === 'more programs' : true;
}

/** The cell walked to last, if it is still there; else the one of the selected line. */
function currentCell(
  steps: Cell[],
  walked: Cell | null,
  inside: number | null,
  selected: number | null,
  model: Model,
): Cell | null {
  if (walked) {
    const same = steps.find(
      (cell) =>
        cell.kind === walked.kind && cell.program === walked.program && cell.row === walked.row,
    );
    if (same) return same;
  }
  if (selected === null) return null;
  const program = model.lines.program[selected];
  return (
    steps.find((cell) => (inside === null ? cell.program === program : cell.row === selected)) ??
    null
  );
}

function outline({ context }: Pen, cell: Cell, colour: string, width: number): void {
  context.strokeStyle = colour;
  context.lineWidth = width;
  context.strokeRect(
    cell.x + width / 2,
    cell.y + width / 2,
    cell.width - width,
    cell.height - width,
  );
}

/** "PRICE.LINES line 82: 1,683 ticks, 7.13 % of all" */
function says(model: Model, cell: Cell): string {
  return `${title(model, cell)}: ${grouped(cell.ticks)} ticks, ${share(cell.ticks, model.total)} of all`;
}

function title(model: Model, cell: Cell): string {
  const name = cell.program >= 0 ? nameText(model.document.names[cell.program]).slice(0, 120) : '';
  switch (cell.kind) {
    case 'program':
      return `${name}, ${counted(cell.count, 'line')}`;
    case 'line':
      return `${name} line ${lineText(model.lines.line(cell.row))}`;
    case 'more lines':
      return `${name}, ${counted(cell.count, 'more line')}`;
    case 'more programs':
      return counted(cell.count, 'more program');
  }
}

function Tip({
  model,
  cell,
  point,
  size,
}: {
  model: Model;
  cell: Cell;
  point: Point;
  size: { width: number; height: number };
}) {
  const { compared } = model.lines;
  const source =
    cell.row >= 0
      ? model.sourceOf(cell.program)?.lines[model.lines.number[cell.row] - 1]
      : undefined;
  const right = point.x > size.width / 2;
  const low = point.y > size.height / 2;
  const place = {
    [right ? 'right' : 'left']: `${right ? size.width - point.x + 12 : point.x + 12}px`,
    [low ? 'bottom' : 'top']: `${low ? size.height - point.y + 12 : point.y + 12}px`,
  };
  return (
    <div class="tip" style={place} aria-hidden="true">
      <b>{title(model, cell)}</b>
      <span>
        {grouped(cell.row >= 0 ? model.lines.exactTicks(cell.row) : cell.ticks)} ticks ·{' '}
        {share(cell.ticks, model.total)} of all
      </span>
      {cell.row >= 0 && compared && compared.verdict[cell.row] !== Verdict.same && (
        <span class={`delta ${verdictClass(model, cell.row)}`}>
          {signed(compared.change[cell.row])} ticks
          {compared.verdict[cell.row] === Verdict.noise ? ', within noise' : ''}
        </span>
      )}
      {source !== undefined && source.trim() !== '' && (
        <code>{visible(source.trim()).slice(0, 200)}</code>
      )}
    </div>
  );
}
