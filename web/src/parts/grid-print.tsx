// A table on paper: a plain one, with as many rows as people read.

import { grouped } from '../model/numbers';
import type { GridProps } from './grid';

const MOST_ROWS = 1000;

export function PrintedGrid({ label, columns, rows, rowClass, empty }: GridProps) {
  if (rows.length === 0) return <p class="grid-empty">{empty}</p>;
  const left = rows.length - MOST_ROWS;
  return (
    <table class="printed">
      <caption>
        {label}
        {left > 0 && `: the first ${grouped(MOST_ROWS)} of ${grouped(rows.length)} rows`}
      </caption>
      <thead>
        <tr>
          {columns.map((column) => (
            <th key={column.key} scope="col" class={column.align}>
              {column.title}
            </th>
          ))}
        </tr>
      </thead>
      <tbody>
        {Array.from(rows.subarray(0, MOST_ROWS), (row) => (
          <tr key={row} class={rowClass?.(row)}>
            {columns.map((column) => (
              <td key={column.key} class={column.align}>
                {column.cell(row)}
              </td>
            ))}
          </tr>
        ))}
      </tbody>
    </table>
  );
}
