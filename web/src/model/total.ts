// Sums without loss: plain addition as long as it is exact, else decimals of four places in big integers.

import type { Count } from '../data';

const PLACES = 4;
const SCALE = 10n ** BigInt(PLACES);

export class Total {
  private small = 0;
  private large = 0n;

  add(count: Count | null): void {
    if (count === null) return;
    if (typeof count === 'number') {
      const sum = this.small + count;
      if (Number.isSafeInteger(sum) && Number.isSafeInteger(count)) {
        this.small = sum;
        return;
      }
    }
    this.large += scaled(count);
  }

  /** A number when that is exact, else decimal text. */
  value(): Count {
    if (this.large === 0n) return this.small;
    const sum = this.large + BigInt(this.small) * SCALE;
    const digits = (sum < 0n ? -sum : sum).toString().padStart(PLACES + 1, '0');
    const fraction = digits.slice(-PLACES).replace(/0+$/, '');
    const text = (sum < 0n ? '-' : '') + digits.slice(0, -PLACES) + (fraction && '.' + fraction);
    const value = Number(text);
    return Math.abs(value) <= Number.MAX_SAFE_INTEGER ? value : text;
  }
}

export function sum(counts: Iterable<Count | null>): Count {
  const total = new Total();
  for (const count of counts) total.add(count);
  return total.value();
}

/** Ten thousandths of a count; further places are cut, what is no number is 0. */
function scaled(count: Count): bigint {
  const text = typeof count === 'number' ? fixed(count) : count;
  const parts = /^([+-]?)(\d+)(?:\.(\d+))?$/.exec(text);
  if (!parts) return 0n;
  const fraction = (parts[3] ?? '').slice(0, PLACES).padEnd(PLACES, '0');
  const value = BigInt(parts[2] + fraction);
  return parts[1] === '-' ? -value : value;
}

function fixed(value: number): string {
  if (!Number.isFinite(value)) return '';
  return Math.abs(value) >= 1e21 ? BigInt(value).toString() : value.toFixed(PLACES);
}
