// Help: the keys, what the words mean, what the page is made of.

import { useEffect, useRef } from 'preact/hooks';
import { VIEWS, type View } from '../model/route';
import { usePage } from './context';

const KEYS: [string, string][] = [
  ['1 to 7', 'the views, from Overview to Resources'],
  ['/', 'the filter of the view'],
  ['?', 'this help'],
  ['↑ ↓ Page Home End', 'in a table: walk through the rows'],
  ['Enter', 'in a table or picture: open what is selected'],
  ['Arrows, Escape', 'in the picture of hot spots: walk, go out'],
  ['n p h', 'in a source: next, previous, hottest line'],
  ['+ − 0, Shift + arrows', 'on the time line: zoom, whole session, move'],
];

export function Help(props: {
  open: boolean;
  onClose(): void;
  shortcuts: boolean;
  onShortcuts(on: boolean): void;
}) {
  const { model } = usePage();
  const dialog = useRef<HTMLDialogElement>(null);
  useEffect(() => {
    if (props.open && !dialog.current?.open) dialog.current?.showModal();
    if (!props.open && dialog.current?.open) dialog.current.close();
  }, [props.open]);
  return (
    <dialog ref={dialog} class="help" aria-labelledby="help-title" onClose={props.onClose}>
      <h2 id="help-title">Help</h2>
      <table class="facts">
        <tbody>
          {KEYS.map(([key, text]) => (
            <tr key={key}>
              <th scope="row">
                <kbd>{key}</kbd>
              </th>
              <td>{text}</td>
            </tr>
          ))}
        </tbody>
      </table>
      <label class="check">
        <input
          type="checkbox"
          checked={props.shortcuts}
          onChange={(event) => props.onShortcuts(event.currentTarget.checked)}
        />{' '}
        Single keys (1 to 7, /, ?) work everywhere
      </label>
      <p>
        <b>Ticks</b> are samples: how often the profiler found the program on a line. <b>Shares</b>{' '}
        of lines and programs are cut to two decimals, not rounded, as in the reports.
        {model.document.baseline && (
          <>
            {' '}
            <b>~</b> marks a change of ticks that may be chance:{' '}
            {model.document.baseline.test === 'welch'
              ? "Welch's t-test"
              : 'the exact binomial test'}
            , at most 5 % false discoveries.
          </>
        )}
      </p>
      <p>
        The address keeps view, filter, order and selection: copy it to point at a line. The page
        asks nothing of the network and stores nothing.
      </p>
      <p class="made">
        Made by {model.document.producer}. It contains preact and parts of D3; their licences are at
        the end of the page's text.
      </p>
      <form method="dialog">
        <button type="submit">Close</button>
      </form>
    </dialog>
  );
}

/** What a single key does anywhere; null when it is none of these. */
export function shortcut(event: KeyboardEvent): { view: View } | 'filter' | 'help' | null {
  if (event.ctrlKey || event.metaKey || event.altKey || event.defaultPrevented) return null;
  const target = event.target as HTMLElement;
  if (target.closest('input, select, textarea, dialog')) return null;
  if (event.key === '/') return 'filter';
  if (event.key === '?') return 'help';
  const view = /^[1-9]$/.test(event.key) ? VIEWS[Number(event.key) - 1] : undefined;
  return view ? { view } : null;
}
