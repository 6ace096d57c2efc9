// A small generator of random numbers, so that samples are the same every time (mulberry32).

export function randomNumbers(seed: number): () => number {
  let state = seed >>> 0;
  return () => {
    state = (state + 0x6d2b79f5) >>> 0;
    let mixed = Math.imul(state ^ (state >>> 15), state | 1);
    mixed ^= mixed + Math.imul(mixed ^ (mixed >>> 7), mixed | 61);
    return ((mixed ^ (mixed >>> 14)) >>> 0) / 2 ** 32;
  };
}

/** About normal, with mean 0 and deviation 1: the sum of twelve. */
export function normal(random: () => number): number {
  let total = -6;
  for (let i = 0; i < 12; ++i) total += random();
  return total;
}
