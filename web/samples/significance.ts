// The test of ticks for samples of one run a side: the exact binomial test, and Benjamini-Hochberg.

/** Two-sided: the sum of all outcomes that are no more likely than the one observed. */
export function binomialTest(count: number, total: number, odds = 0.5): number {
  if (total === 0) return 1;
  const observed = logBinomial(count, total, odds) + 1e-7;
  let p = 0;
  for (let k = 0; k <= total; ++k) {
    const likelihood = logBinomial(k, total, odds);
    if (likelihood <= observed) p += Math.exp(likelihood);
  }
  return Math.min(1, p);
}

/** Benjamini-Hochberg's q for each p. */
export function falseDiscovery(ps: number[]): number[] {
  const order = ps.map((_, i) => i).sort((a, b) => ps[b] - ps[a]);
  const qs = new Array<number>(ps.length);
  let least = 1;
  order.forEach((index, i) => {
    least = Math.min(least, (ps[index] * ps.length) / (ps.length - i));
    qs[index] = least;
  });
  return qs;
}

const logFactorials = [0];

function logFactorial(n: number): number {
  for (let i = logFactorials.length; i <= n; ++i)
    logFactorials.push(logFactorials[i - 1] + Math.log(i));
  return logFactorials[n];
}

function logBinomial(k: number, n: number, odds: number): number {
  const ways = logFactorial(n) - logFactorial(k) - logFactorial(n - k);
  return ways + k * Math.log(odds) + (n - k) * Math.log(1 - odds);
}
