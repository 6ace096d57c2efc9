// The page as a whole: header, the view that the address names, help.

import type { FunctionComponent } from 'preact';
import { useEffect, useLayoutEffect, useMemo, useRef, useState } from 'preact/hooks';
import type { Model } from './model/model';
import type { View } from './model/route';
import { type Session, makeSession } from './model/session';
import { nameText } from './model/text';
import { CallsView } from './views/calls';
import { CommandsView } from './views/commands';
import { HotSpots } from './views/hot-spots';
import { Overview } from './views/overview';
import { ResourcesView } from './views/resources';
import { SessionView } from './views/session';
import { SourceView } from './views/source';
import { PageProvider } from './parts/context';
import { Header, TITLES } from './parts/header';
import { Help, shortcut } from './parts/help';
import { useRouter } from './parts/router';
import { usePrinting } from './parts/use-printing';

const PAGES: Record<View, FunctionComponent> = {
  overview: Overview,
  hot: HotSpots,
  source: SourceView,
  session: SessionView,
  commands: CommandsView,
  calls: CallsView,
  resources: ResourcesView,
};

export function App({ model }: { model: Model }) {
  const router = useRouter();
  const printing = usePrinting();
  const [help, setHelp] = useState(false);
  const [shortcuts, setShortcuts] = useState(true);
  const session = useMemo(() => once(() => makeSession(model.document.profile)), [model]);
  useTitle(model, router.view);
  useFocusOnView(router.view);

  useEffect(() => {
    if (!shortcuts) return;
    const take = (event: KeyboardEvent): void => {
      const action = shortcut(event);
      if (action === null) return;
      if (action === 'help') setHelp(true);
      else if (action !== 'filter') router.go(action.view);
      else {
        const filter = document.querySelector<HTMLInputElement>('[data-filter]');
        if (!filter) return;
        filter.focus();
      }
      event.preventDefault();
    };
    addEventListener('keydown', take);
    return () => removeEventListener('keydown', take);
  }, [shortcuts, router]);

  const Shown = PAGES[router.view];
  return (
    <PageProvider value={{ model, session, router, printing }}>
      <a class="skip" href="#main" onClick={skip}>
        Skip to the view
      </a>
      <Header onHelp={() => setHelp(true)} />
      <main id="main" class={`main-${router.view}`}>
        <Shown key={router.view} />
      </main>
      <Help
        open={help}
        onClose={() => setHelp(false)}
        shortcuts={shortcuts}
        onShortcuts={setShortcuts}
      />
    </PageProvider>
  );
}

/** The address is the page's: skipping moves the focus only. */
function skip(event: Event): void {
  event.preventDefault();
  document.querySelector<HTMLElement>('[data-heading]')?.focus();
}

function useTitle(model: Model, view: View): void {
  useEffect(() => {
    const { program, profile } = model.document.profile;
    document.title = `${TITLES[view]} – ${nameText(program ?? profile).slice(0, 100)} – ptick`;
  }, [model, view]);
}

/**
 * A new view is announced: the focus goes to its heading, at once, so that no key comes between. Not
 * when the page opens.
 */
function useFocusOnView(view: View): void {
  const first = useRef(true);
  useLayoutEffect(() => {
    if (!first.current) {
      document.querySelector<HTMLElement>('[data-heading]')?.focus({ preventScroll: true });
      scrollTo(0, 0);
    }
    first.current = false;
  }, [view]);
}

function once(make: () => Session): () => Session {
  let made: Session | null = null;
  return () => (made ??= make());
}
