// Whether the page is being printed. Known in time: what is drawn in answer to "beforeprint" is printed.

import { useEffect, useState } from 'preact/hooks';
import { flushSync } from 'preact/compat';

export function usePrinting(): boolean {
  const [printing, setPrinting] = useState(false);
  useEffect(() => {
    const start = (): void => flushSync(() => setPrinting(true));
    const end = (): void => setPrinting(false);
    addEventListener('beforeprint', start);
    addEventListener('afterprint', end);
    return () => {
      removeEventListener('beforeprint', start);
      removeEventListener('afterprint', end);
    };
  }, []);
  return printing;
}
