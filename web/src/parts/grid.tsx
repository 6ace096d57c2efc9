// A table of any length: only the rows in sight are elements. Sorted by its heads, walked by the arrow
// keys; one row is selected. On paper it is a plain table.

import type { ComponentChildren } from 'preact';
import { useEffect, useId, useLayoutEffect, useRef } from 'preact/hooks';
import type { Sort } from '../model/order';
import { usePage } from './context';
import { PrintedGrid } from './grid-print';
import { useRootSize } from './use-root-size';
import { useVirtual } from './use-virtual';

export interface Column {
  key: string;
  title: string;
  /** Said with the title: unit, what a share is of. */
  hint?: string;
  align?: 'right';
  /** A track of a CSS grid. */
  width: string;
  /** Left out on narrow screens, or already where there is little room. */
  minor?: boolean | 'soon';
  cell(row: number): ComponentChildren;
}

export interface GridProps {
  /** What the table shows, for those who do not see it. */
  label: string;
  columns: Column[];
  /** Rows in the order shown. */
  rows: Uint32Array;
  /** Without: the order is fixed. */
  sort?: Sort;
  onSort?(sort: Sort): void;
  selected: number | null;
  onSelect(row: number): void;
  /** Enter or a double click. */
  onOpen?(row: number): void;
  rowClass?(row: number): string;
  /** Rows as near as lines of text. */
  dense?: boolean;
  /** Further keys; true when it took the key. */
  onKey?(key: string): boolean;
  /** The row to show first when none is selected. */
  start?: number;
  /** Tells which rows are in sight, from the first to the last. */
  onSight?(first: number, last: number): void;
  /** Said when there are no rows. */
  empty: string;
}

/** Heights of rows in parts of the page's text. */
const ROW = 2;
const DENSE = 1.6;

export function Grid(props: GridProps) {
  const { printing } = usePage();
  return printing ? <PrintedGrid {...props} /> : <ScreenGrid {...props} />;
}

function ScreenGrid(props: GridProps) {
  // A table without rows has no scroller: it starts anew when there are some.
  if (props.rows.length === 0) return <p class="grid-empty">{props.empty}</p>;
  return <FilledGrid {...props} />;
}

function FilledGrid(props: GridProps) {
  const { rows, selected, columns } = props;
  const scroller = useRef<HTMLDivElement>(null);
  // Whole pixels, so that rows do not blur.
  const rowHeight = Math.round(useRootSize() * (props.dense ? DENSE : ROW));
  const virtual = useVirtual(rows.length, rowHeight, scroller);
  const id = useId();
  const at = selected === null ? -1 : rows.indexOf(selected);

  const { start } = props;
  useEffect(() => {
    if (at < 0 && start !== undefined) virtual.reveal(rows.indexOf(start));
  }, [start, rows, rowHeight]);
  const drawn = virtual.rows.some((row) => row.index === at);
  // A selection that comes from elsewhere (a link, the picture) is brought into sight.
  useEffect(() => (drawn ? virtual.scrollTo(at) : virtual.reveal(at)), [at]);
  // When the table gets lower, what was in sight stays so.
  useEffect(() => {
    if (drawn) virtual.scrollTo(at);
  }, [virtual.view]);

  const [first, last] = virtual.sight;
  useEffect(() => {
    if (last >= first) props.onSight?.(rows[first], rows[last]);
  }, [first, last, rows]);

  const walk = (event: KeyboardEvent): void => {
    if (event.target !== scroller.current) return;
    const next = stepped(event.key, at, rows.length, virtual.page);
    if (next !== null) {
      event.preventDefault();
      props.onSelect(rows[next]);
      virtual.scrollTo(next);
    } else if (event.key === 'Enter' && at >= 0) {
      event.preventDefault();
      props.onOpen?.(rows[at]);
    } else if (!event.ctrlKey && !event.metaKey && !event.altKey && props.onKey?.(event.key)) {
      event.preventDefault();
    }
  };

  return (
    <div
      class="grid"
      style={{ '--row-height': `${rowHeight}px` }}
      ref={scroller}
      role="grid"
      aria-label={props.label}
      aria-rowcount={rows.length + 1}
      aria-colcount={columns.length}
      aria-activedescendant={drawn ? `${id}-${at}` : undefined}
      tabIndex={0}
      onKeyDown={walk}
    >
      <GridHead {...props} />
      <div class="grid-body" role="rowgroup" style={{ height: `${virtual.height}px` }}>
        {virtual.rows.map(({ index, top }) => (
          <div
            key={index}
            id={`${id}-${index}`}
            role="row"
            aria-rowindex={index + 2}
            aria-selected={index === at}
            class={`grid-row ${props.rowClass?.(rows[index]) ?? ''}`}
            style={{ transform: `translateY(${top}px)` }}
            onClick={() => props.onSelect(rows[index])}
            onDblClick={() => props.onOpen?.(rows[index])}
          >
            {columns.map((column) => (
              <div role="gridcell" key={column.key} class={cellClass(column)}>
                {column.cell(rows[index])}
              </div>
            ))}
          </div>
        ))}
      </div>
    </div>
  );
}

function GridHead({ columns, sort, onSort }: GridProps) {
  const head = useRef<HTMLDivElement>(null);
  const wide = columns.map((column) => column.width).join(' ');
  const less = columns
    .filter((column) => column.minor !== 'soon')
    .map((column) => column.width)
    .join(' ');
  const narrow = columns
    .filter((column) => !column.minor)
    .map((column) => column.width)
    .join(' ');
  useLayoutEffect(() => {
    const style = head.current?.parentElement?.style;
    style?.setProperty('--columns', wide);
    style?.setProperty('--columns-less', less);
    style?.setProperty('--columns-narrow', narrow);
  }, [wide, less, narrow]);
  return (
    <div class="grid-head" role="rowgroup" ref={head}>
      <div role="row" aria-rowindex={1} class="grid-row">
        {columns.map((column) => {
          if (!sort || !onSort) {
            return (
              <div
                role="columnheader"
                key={column.key}
                class={cellClass(column)}
                title={column.hint}
              >
                {column.title}
              </div>
            );
          }
          const active = sort.key === column.key;
          const order = !active ? 'none' : sort.descending ? 'descending' : 'ascending';
          const numeric = column.align === 'right';
          return (
            <div role="columnheader" key={column.key} class={cellClass(column)} aria-sort={order}>
              <button
                type="button"
                title={column.hint}
                onClick={() =>
                  onSort({ key: column.key, descending: active ? !sort.descending : numeric })
                }
              >
                <span>{column.title}</span>
                <i aria-hidden="true">{order === 'none' ? '' : sort.descending ? '▾' : '▴'}</i>
              </button>
            </div>
          );
        })}
      </div>
    </div>
  );
}

function cellClass(column: Column): string {
  return `cell${column.align ? ' right' : ''}${column.minor === 'soon' ? ' minor soon' : column.minor ? ' minor' : ''}`;
}

/** Where a key leads from row `at` (-1: none yet); null when it is no key of the table. */
export function stepped(key: string, at: number, count: number, page: number): number | null {
  const last = count - 1;
  const clamp = (index: number): number => Math.max(0, Math.min(last, index));
  switch (key) {
    case 'ArrowDown':
      return clamp(at + 1);
    case 'ArrowUp':
      return clamp(at < 0 ? last : at - 1);
    case 'PageDown':
      return clamp(at + page);
    case 'PageUp':
      return clamp(at - page);
    case 'Home':
      return 0;
    case 'End':
      return last;
    default:
      return null;
  }
}
