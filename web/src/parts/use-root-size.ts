// The size of the page's text in pixels. It grows with the window, and rows and pictures with it.

import { useEffect, useState } from 'preact/hooks';

export function rootSize(): number {
  return parseFloat(getComputedStyle(document.documentElement).fontSize);
}

/** Kept up to date. */
export function useRootSize(): number {
  const [size, setSize] = useState(rootSize);
  useEffect(() => {
    const measure = (): void => setSize(rootSize());
    addEventListener('resize', measure);
    return () => removeEventListener('resize', measure);
  }, []);
  return size;
}
