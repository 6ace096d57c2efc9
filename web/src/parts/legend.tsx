// What the colours of the hot spots mean.

import type { Model } from '../model/model';

export function Legend({ model }: { model: Model }) {
  if (!model.lines.compared) {
    return (
      <p class="legend">
        <span>few ticks</span>
        <span class="ramp heat" aria-hidden="true" />
        <span>many</span>
      </p>
    );
  }
  return (
    <p class="legend">
      <span>faster</span>
      <span class="ramp faster" aria-hidden="true" />
      <span class="ramp noise" aria-hidden="true" />
      <span>noise</span>
      <span class="ramp slower" aria-hidden="true" />
      <span>slower</span>
    </p>
  );
}
