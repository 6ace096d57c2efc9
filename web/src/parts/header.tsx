// The top of the page: what ran, the views, and what the page holds or lacks.

import type { LeftOut } from '../data';
import { grouped, moment, share, toNumber } from '../model/numbers';
import type { Model } from '../model/model';
import { VIEWS, type View } from '../model/route';
import { nameText } from '../model/text';
import { Name, Text } from './bits';
import { usePage } from './context';

export const TITLES: Record<View, string> = {
  overview: 'Overview',
  hot: 'Hot spots',
  source: 'Source',
  session: 'Session',
  commands: 'Commands',
  calls: 'Calls',
  resources: 'Resources',
};

export function Header({ onHelp }: { onHelp(): void }) {
  const { model, router } = usePage();
  const { profile, baseline, runs } = model.document;
  const start = moment(profile.counters.starttime);
  return (
    <header class="top">
      <div class="run">
        <svg class="mark" viewBox="0 0 32 32" aria-hidden="true">
          <rect x="2" y="18" width="6" height="12" rx="1.5" />
          <rect x="10" y="10" width="6" height="20" rx="1.5" />
          <rect x="18" y="2" width="6" height="28" rx="1.5" class="hot" />
          <rect x="26" y="22" width="4" height="8" rx="1.5" />
        </svg>
        <div class="run-text">
          <p class="command" title={nameText(profile.command).slice(0, 500)}>
            <Name name={profile.command ?? profile.program} />
          </p>
          <p class="where">
            <span>
              profile <Text text={profile.profile} />
              {runs > 1 && ` (${grouped(runs)} runs merged)`}
            </span>
            {start && <span>{start}</span>}
            {baseline && (
              <span>
                compared with <Text text={baseline.profile.profile} />
                {baseline.runs > 1 && ` (${grouped(baseline.runs)} runs merged)`}
              </span>
            )}
          </p>
        </div>
        <button type="button" class="help-button" onClick={onHelp} aria-label="Help and keys">
          ?
        </button>
      </div>
      <Notices model={model} />
      <nav class="views" aria-label="Views">
        {VIEWS.map((view) => (
          <a key={view} href={`#${view}`} aria-current={router.view === view ? 'page' : undefined}>
            {TITLES[view]}
          </a>
        ))}
      </nav>
    </header>
  );
}

/** Whether source text is in the page, whose it is, and what did not get in. */
function Notices({ model }: { model: Model }) {
  const { sources, left_out: leftOut, names } = model.document;
  return (
    <div class="notices">
      {sources.length > 0 && (
        <details>
          <summary>
            This page holds the source text of{' '}
            {sources.length === 1 ? '1 program' : `${grouped(sources.length)} programs`}
          </summary>
          <ul>
            {sources.slice(0, MOST_LISTED).map((source) => (
              <li key={source.program}>
                <Name name={names[source.program]} /> <Text text={source.file} />
              </li>
            ))}
            {sources.length > MOST_LISTED && (
              <li>{grouped(sources.length - MOST_LISTED)} more: see the view Source</li>
            )}
          </ul>
        </details>
      )}
      {leftOut.map((item) => (
        <p key={item.what} class="warning">
          {leftOutText(item, model)}
        </p>
      ))}
    </div>
  );
}

const MOST_LISTED = 500;

export function leftOutText(item: LeftOut, model: Pick<Model, 'total'>): string {
  const ticks =
    item.ticks === null
      ? ''
      : `, ${grouped(item.ticks)} ticks (${share(toNumber(item.ticks), model.total)} of all)`;
  return `Left out of this page: ${grouped(item.count)} of ${grouped(item.of)} ${item.what}${ticks}`;
}
