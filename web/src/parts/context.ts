// What every part of the page may know.

import { createContext } from 'preact';
import { useContext } from 'preact/hooks';
import type { Model } from '../model/model';
import type { Session } from '../model/session';
import type { Router } from './router';

export interface PageState {
  model: Model;
  /** The time line of the run; made when it is first asked for. */
  session(): Session;
  router: Router;
  /** On paper all tables are plain ones. */
  printing: boolean;
}

const Context = createContext<PageState | null>(null);

export const PageProvider = Context.Provider;

export function usePage(): PageState {
  const state = useContext(Context);
  if (!state) throw new Error('a part is used outside of the page');
  return state;
}
