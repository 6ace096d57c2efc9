// Where in the page one is. The address follows: views and links make an entry of the history, smaller
// steps (typing, walking through rows) replace it after a moment, since browsers limit how often.

import { useCallback, useEffect, useMemo, useRef, useState } from 'preact/hooks';
import { type Route, type View, formatRoute, parseRoute } from '../model/route';

export interface Router extends Route {
  /** A parameter of the view, '' when it is not there. */
  param(key: string): string;
  /** Changes parameters of the view; '' removes one. */
  set(changes: Record<string, string>): void;
  /** Goes somewhere else, or to another place of the view that "back" should leave. */
  go(view: View, params?: Record<string, string>): void;
}

const WRITE_AFTER = 250;

export function useRouter(): Router {
  const [route, setRoute] = useState<Route>(() => parseRoute(location.hash));
  const current = useRef(route);
  const timer = useRef(0);

  const show = useCallback((next: Route) => {
    current.current = next;
    setRoute(next);
  }, []);

  const write = useCallback(() => {
    clearTimeout(timer.current);
    timer.current = 0;
    const address = formatRoute(current.current.view, current.current.params);
    if (location.hash !== address) history.replaceState(null, '', address);
  }, []);

  useEffect(() => {
    const arrive = (): void => {
      clearTimeout(timer.current);
      timer.current = 0;
      show(parseRoute(location.hash));
    };
    // What is not yet written must be before a link leads away.
    const leave = (): void => {
      if (timer.current !== 0) write();
    };
    addEventListener('hashchange', arrive);
    addEventListener('pagehide', leave);
    addEventListener('click', leave, true);
    return () => {
      removeEventListener('hashchange', arrive);
      removeEventListener('pagehide', leave);
      removeEventListener('click', leave, true);
    };
  }, [show, write]);

  return useMemo(
    (): Router => ({
      ...route,
      param: (key) => route.params.get(key) ?? '',
      set: (changes) => {
        const params = new Map(current.current.params);
        for (const [key, value] of Object.entries(changes)) {
          if (value === '') params.delete(key);
          else params.set(key, value);
        }
        show({ view: current.current.view, params });
        clearTimeout(timer.current);
        timer.current = window.setTimeout(write, WRITE_AFTER);
      },
      go: (view, params = {}) => {
        if (timer.current !== 0) write();
        location.hash = formatRoute(view, Object.entries(params));
        show(parseRoute(location.hash));
      },
    }),
    [route, show, write],
  );
}
