// A canvas that fills its place and is drawn anew when its size, its data or the scheme change. It takes
// the focus and keys; what it shows is said in its label and in a text beside it.

import { useEffect, useLayoutEffect, useRef, useState } from 'preact/hooks';
import { type Theme, onThemeChange, theme } from './theme';

export interface Pen {
  context: CanvasRenderingContext2D;
  width: number;
  height: number;
  theme: Theme;
  /** The canvas has the focus: what the keys are at should show. */
  focused: boolean;
}

export interface Point {
  x: number;
  y: number;
}

export interface CanvasProps {
  class?: string;
  label: string;
  /** Id of a text that says what is selected. */
  describedBy?: string;
  draw(pen: Pen): void;
  onSize?(width: number, height: number): void;
  onKey?(event: KeyboardEvent): void;
  onHover?(point: Point | null): void;
  onClick?(point: Point): void;
  onDoubleClick?(point: Point): void;
  /** Gets the element when it is there, to add more (zooming); gives back how to undo that. */
  attach?(element: HTMLCanvasElement): () => void;
}

export function Canvas(props: CanvasProps) {
  const canvas = useRef<HTMLCanvasElement>(null);
  const size = useSize(canvas, props.onSize);
  const [scheme, setScheme] = useState(0);
  const [focused, setFocused] = useState(false);
  useEffect(() => onThemeChange(() => setScheme((n) => n + 1)), []);
  useEffect(() => (canvas.current ? props.attach?.(canvas.current) : undefined), []);

  useLayoutEffect(() => {
    const element = canvas.current;
    const context = element?.getContext('2d');
    if (!element || !context || size.width === 0 || size.height === 0) return;
    const ratio = window.devicePixelRatio || 1;
    const [wide, high] = [Math.round(size.width * ratio), Math.round(size.height * ratio)];
    if (element.width !== wide || element.height !== high) {
      element.width = wide;
      element.height = high;
    }
    context.setTransform(ratio, 0, 0, ratio, 0, 0);
    context.clearRect(0, 0, size.width, size.height);
    props.draw({ context, ...size, theme: theme(), focused });
  }, [props.draw, size, scheme, focused]);

  return (
    <canvas
      ref={canvas}
      class={`picture ${props.class ?? ''}`}
      tabIndex={0}
      role="application"
      aria-label={props.label}
      aria-describedby={props.describedBy}
      onFocus={() => setFocused(true)}
      onBlur={() => setFocused(false)}
      onKeyDown={props.onKey}
      onPointerMove={(event) => props.onHover?.(pointOf(event))}
      onPointerLeave={() => props.onHover?.(null)}
      onClick={(event) => props.onClick?.(pointOf(event))}
      onDblClick={(event) => props.onDoubleClick?.(pointOf(event))}
    />
  );
}

function pointOf(event: MouseEvent): Point {
  const box = (event.currentTarget as HTMLElement).getBoundingClientRect();
  return { x: event.clientX - box.left, y: event.clientY - box.top };
}

function useSize(
  canvas: { current: HTMLCanvasElement | null },
  report: CanvasProps['onSize'],
): { width: number; height: number } {
  const [size, setSize] = useState({ width: 0, height: 0 });
  useLayoutEffect(() => {
    const element = canvas.current;
    if (!element) return;
    const measure = (): void => {
      const { clientWidth: width, clientHeight: height } = element;
      setSize((old) => (old.width === width && old.height === height ? old : { width, height }));
      report?.(width, height);
    };
    const observer = new ResizeObserver(measure);
    observer.observe(element);
    measure();
    return () => observer.disconnect();
  }, []);
  return size;
}

/** Text cut to a width, with an ellipsis; '' when not even a letter fits. */
export function fitted(context: CanvasRenderingContext2D, text: string, width: number): string {
  // No letter is narrower than about two pixels: what is beyond needs no measuring.
  const start = text.slice(0, Math.max(0, Math.ceil(width / 2)));
  if (start.length === text.length && context.measureText(text).width <= width) return text;
  let [low, high] = [0, start.length];
  while (low < high) {
    const middle = (low + high + 1) >> 1;
    if (context.measureText(start.slice(0, middle) + '…').width <= width) low = middle;
    else high = middle - 1;
  }
  return low === 0 ? '' : start.slice(0, low).replace(/[\ud800-\udbff]$/, '') + '…';
}
