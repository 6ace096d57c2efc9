// Where the time of the run went: computing, typing, waiting.

import type { Profile } from '../data';
import { toNumber } from './numbers';
import type { Session } from './session';

/** Seconds; null where the profile does not tell. */
export interface RunTime {
  elapsed: number | null;
  userCpu: number | null;
  systemCpu: number | null;
  /** Time in which something was being typed. */
  typing: number;
  /** Elapsed time that was neither: the user thinks, disks, other processes. Null when unknown. */
  waiting: number | null;
}

export function runTime(profile: Omit<Profile, 'lines'>, session: Session | null): RunTime {
  const hertz = toNumber(profile.hertz);
  const { counters } = profile;
  const cpu = (key: string): number | null =>
    hertz > 0 && counters[key] !== undefined ? toNumber(counters[key]) / hertz : null;
  const userCpu = cpu('usrcpu');
  const systemCpu = cpu('syscpu');
  const elapsed = elapsedOf(profile, hertz);
  const typing = session ? typingTime(session) : 0;
  const busy = (userCpu ?? 0) + (systemCpu ?? 0) + typing;
  const known = elapsed !== null && (userCpu !== null || systemCpu !== null) && busy <= elapsed;
  return { elapsed, userCpu, systemCpu, typing, waiting: known ? elapsed - busy : null };
}

/** By the clocks; by the times where these are missing. */
function elapsedOf(profile: Omit<Profile, 'lines'>, hertz: number): number | null {
  const { startclock, endclock, starttime, endtime } = profile.counters;
  if (hertz > 0 && startclock !== undefined && endclock !== undefined) {
    return (toNumber(endclock) - toNumber(startclock)) / hertz;
  }
  if (starttime !== undefined && endtime !== undefined)
    return toNumber(endtime) - toNumber(starttime);
  return null;
}

/** The union of all inputs. */
function typingTime(session: Session): number {
  let time = 0;
  let until = 0;
  for (const event of session.events) {
    if (event.kind !== 'input') continue;
    const start = Math.max(event.start, until);
    time += Math.max(0, event.end - start);
    until = Math.max(until, event.end);
  }
  return time;
}
