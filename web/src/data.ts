// The data of the page: one JSON document that ptick-view puts into the template. It is the profile as
// ptick-export writes it, with the lines in columns, and beside it what the page alone needs. The page
// computes from nothing else.
//
// Everywhere: null is what the profile does not have. Names and texts are data of any length and any
// characters. Arrays of one table ("columns") have equal lengths.

/** A number as the reports count it. Beyond 2^53 it is its decimal text, so that no digit is lost. */
export type Count = number | string;

/** A source line: a number only when it is written the ordinary way, else the text of the profile. */
export type Line = number | string;

/** A moment or a duration in clock ticks of the process; `hertz` of them make a second. */
export type Clock = Count;

export interface ViewDocument {
  format: 'ptick-view';
  version: 1;
  /** Program and version that wrote the page, as "ptick-view 1.0.0". */
  producer: string;
  /**
   * The programs that have lines, on either side, or a source. All tables name them by index. Two names
   * are never the same text: of names that differ only in their bytes the second ends in " (Latin-1)".
   */
  names: string[];
  /** The run that is looked at; several profiles are merged into one. */
  profile: Profile;
  /** How many profiles were merged into it. */
  runs: number;
  /** What it is compared with. */
  baseline: Baseline | null;
  /** Whether the program was given folders to look for sources in; tells "none found" from "not asked". */
  sources_wanted: boolean;
  /** The source texts found, each program at most once. */
  sources: Source[];
  /** What did not get in, with counts; empty when all is there. */
  left_out: LeftOut[];
}

/** All but `lines` and `programs` is as in the JSON of ptick-export. */
export interface Profile {
  format: 'ptick-profile';
  version: 1;
  /** The name of the profile, as in the heading of the reports. */
  profile: string;
  /** First word of the command line. */
  program: string | null;
  command: string | null;
  /** Profiling ticks of the run: 100 per cent of all shares. */
  ticks: Count | null;
  /** Clock ticks in a second; without it there are no times. */
  hertz: Count | null;
  /**
   * Records of one value by record type: starttime and endtime in seconds since 1970 (UTC), startclock,
   * endclock, usrcpu and syscpu in clock ticks, ticks_index and ticks_trigger in ticks, pagesize in
   * bytes, the rest counts. A text is what is no number.
   */
  counters: Record<string, Count>;
  /** The twelve counts of the resource record, see model/resources.ts for their meaning. */
  resource: (Count | null)[] | null;
  /** Characters typed, and the clock ticks that took. */
  typerate: { characters: Count; clock: Clock } | null;
  /** Ticks of the program's own counters 1 to 10. */
  user_ticks: Count[];
  /** Programs with their ticks and number of lines, left-out lines included; most ticks first. */
  programs: { program: number[]; ticks: Count[]; lines: number[] };
  /** Entries of one program and line added up; most ticks first. */
  lines: LineColumns;
  commands: Command[];
  subroutines: Call[];
  objects: string[];
  inputs: Input[];
}

export interface LineColumns {
  program: number[];
  line: Line[];
  ticks: Count[];
}

/** A command as it was performed. Clocks and CPU in clock ticks, times in seconds since 1970. */
export interface Command {
  command: string;
  type: string | null;
  startclock: Clock | null;
  endclock: Clock | null;
  starttime: Count | null;
  endtime: Count | null;
  ticks: Count | null;
  usrcpu: Clock | null;
  syscpu: Clock | null;
}

export interface Call {
  caller: string | null;
  subroutine: string | null;
  times: Count;
}

/** Something typed: `code` is the character that ended it (13 Return, 0 none). */
export interface Input {
  code: Count | null;
  characters: Count | null;
  startclock: Clock | null;
  endclock: Clock | null;
  text: string | null;
}

export interface Source {
  program: number;
  /** The file it was read from, as found. */
  file: string;
  /** Its text; line 1 is element 0. Tabs are tabs. */
  lines: string[];
}

/** The other side, and what changed: the facts of ptick-diff, all its rows. */
export interface Baseline {
  profile: Omit<Profile, 'lines'>;
  /** How many profiles were merged into it. With several on a side, all changes are of means per run. */
  runs: number;
  /** The test of ticks: Welch's t-test on the runs, or the exact binomial test on the counts. */
  test: 'welch' | 'binomial';
  changes: {
    /** Lines whose ticks changed. A missing side is null. */
    lines: LineChanges;
    programs: ProgramChange[];
    commands: CommandChange[];
    subroutines: CallChange[];
    /** Values that count, with user_ticks_1 to user_ticks_10 and elapsed (seconds). */
    counters: CounterChange[];
  };
}

/** p and q to four significant digits; null where ticks cannot be tested. significant: 1 or 0. */
export interface LineChanges {
  program: number[];
  line: Line[];
  old: (Count | null)[];
  new: (Count | null)[];
  change: Count[];
  p: (number | null)[];
  q: (number | null)[];
  significant: (0 | 1)[];
}

export interface Change {
  old: Count | null;
  new: Count | null;
  change: Count;
}

export interface ProgramChange extends Change {
  program: number;
  p: number | null;
  q: number | null;
  significant: boolean;
}

/** By command text. Elapsed and CPU in seconds; old, new and change are ticks. */
export interface CommandChange extends Change {
  command: string;
  old_times: Count | null;
  new_times: Count | null;
  old_elapsed: Count | null;
  new_elapsed: Count | null;
  old_cpu: Count | null;
  new_cpu: Count | null;
}

export interface CallChange extends Change {
  caller: string | null;
  subroutine: string | null;
}

export interface CounterChange extends Change {
  counter: string;
}

type Table = 'lines' | 'commands' | 'inputs' | 'calls' | 'objects';

export interface LeftOut {
  what:
    Table | `changed ${Table | 'programs' | 'counters'}` | `${Table} of the baseline` | 'sources';
  /** How many were left out, and of how many. */
  count: number;
  of: number;
  /** Ticks of what was left out, where it has ticks. */
  ticks: Count | null;
}
