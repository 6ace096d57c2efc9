// The session as a picture: commands and inputs by their clocks, to zoom and pan by wheel, drag, touch
// and keys.

import { select } from 'd3-selection';
import { type D3ZoomEvent, type ZoomTransform, zoom, zoomIdentity } from 'd3-zoom';
import { useCallback, useEffect, useMemo, useRef, useState } from 'preact/hooks';
import type { Profile } from '../data';
import type { Model } from '../model/model';
import type { Event, Session } from '../model/session';
import {
  type Window,
  acrossEvent,
  eventAt,
  leastSpan,
  makeBands,
  showing,
  stepEvent,
  within,
  zoomed,
} from '../model/timeline';
import { Canvas, type Pen, type Point } from './canvas';
import { paintTimeline } from './timeline-paint';
import { useRootSize } from '../parts/use-root-size';

export interface TimelineProps {
  model: Model;
  now: Session;
  before: { session: Session; profile: Omit<Profile, 'lines'> } | null;
  window: Window;
  selected: Event | null;
  /** What is said of an event, in a line. */
  says(event: Event): string;
  onWindow(window: Window): void;
  onSelect(event: Event): void;
  onOpen(event: Event): void;
}

const STEP = 1.5;

export function Timeline(props: TimelineProps) {
  const { model, now, before, window: seen, selected } = props;
  const [width, setWidth] = useState(0);
  const [hover, setHover] = useState<{ event: Event; point: Point } | null>(null);
  const length = Math.max(now.length, before?.session.length ?? 0);
  const em = useRootSize();
  const { bands, height } = useMemo(
    () => makeBands(now, before?.session ?? null, em),
    [now, before, em],
  );
  const attach = useZoom(length, width, seen, props.onWindow);

  const draw = useCallback(
    (pen: Pen) =>
      paintTimeline(pen, {
        bands,
        window: seen,
        profile: model.document.profile,
        before: before?.profile ?? null,
        selected,
        hovered: hover?.event ?? null,
      }),
    [bands, seen, model, before, selected, hover],
  );

  const choose = (event: Event | null): void => {
    if (!event) return;
    props.onSelect(event);
    props.onWindow(showing(seen, event, length));
  };
  const hit = ({ x, y }: Point): Event | null => {
    const band = bands.find((each) => !each.before && y >= each.top && y < each.top + each.height);
    if (!band) return null;
    const perPixel = (seen.to - seen.from) / Math.max(1, width);
    return eventAt(
      band,
      Math.floor((y - band.top) / band.rowHeight),
      seen.from + x * perPixel,
      4 * perPixel,
    );
  };
  const onKey = (event: KeyboardEvent): void => {
    const span = seen.to - seen.from;
    const pan = (part: number): void =>
      props.onWindow(within({ from: seen.from + span * part, to: seen.to + span * part }, length));
    const middle = selected ? (selected.start + selected.end) / 2 : (seen.from + seen.to) / 2;
    const key = event.shiftKey && event.key.startsWith('Arrow') ? `Shift${event.key}` : event.key;
    const actions: Record<string, (() => void) | undefined> = {
      ArrowRight: () => choose(stepEvent(now.events, selected, 1)),
      ArrowLeft: () => choose(stepEvent(now.events, selected, -1)),
      ArrowUp: () => choose(selected && acrossEvent(now.events, selected)),
      ArrowDown: () => choose(selected && acrossEvent(now.events, selected)),
      ShiftArrowRight: () => pan(0.25),
      ShiftArrowLeft: () => pan(-0.25),
      PageDown: () => pan(0.9),
      PageUp: () => pan(-0.9),
      Home: () => choose(stepEvent(now.events, null, 1)),
      End: () => choose(stepEvent(now.events, null, -1)),
      '+': () => props.onWindow(zoomed(seen, 1 / STEP, middle, length)),
      '=': () => props.onWindow(zoomed(seen, 1 / STEP, middle, length)),
      '-': () => props.onWindow(zoomed(seen, STEP, middle, length)),
      '0': () => props.onWindow({ from: 0, to: length }),
      Enter: () => selected && props.onOpen(selected),
    };
    const action = event.ctrlKey || event.metaKey || event.altKey ? undefined : actions[key];
    if (!action) return;
    event.preventDefault();
    action();
  };

  return (
    <div class="timeline" style={{ height: `${height}px` }}>
      <Canvas
        label="Time line of commands and inputs. Arrow keys walk over events, plus and minus zoom, Page Up and Page Down move, 0 shows all. The table has the same."
        describedBy="timeline-status"
        draw={draw}
        onSize={setWidth}
        onKey={onKey}
        onHover={(point) => {
          const event = point && hit(point);
          setHover(event && point ? { event, point } : null);
        }}
        onClick={(point) => {
          const event = hit(point);
          if (event) props.onSelect(event);
        }}
        attach={attach}
      />
      {hover && <EventTip text={props.says(hover.event)} point={hover.point} width={width} />}
      <p id="timeline-status" class="away" role="status">
        {selected ? props.says(selected) : ''}
      </p>
    </div>
  );
}

function EventTip({ text, point, width }: { text: string; point: Point; width: number }) {
  const right = point.x > width / 2;
  const side = right ? { right: `${width - point.x + 12}px` } : { left: `${point.x + 12}px` };
  return (
    <div class="tip" style={{ top: `${point.y + 14}px`, ...side }} aria-hidden="true">
      {text}
    </div>
  );
}

function isSideways(event: WheelEvent): boolean {
  return event.shiftKey || Math.abs(event.deltaX) > Math.abs(event.deltaY);
}

/** Wheel, drag and pinch change the window; the window, changed otherwise, changes their transform. */
function useZoom(
  length: number,
  width: number,
  seen: Window,
  onWindow: (window: Window) => void,
): (element: HTMLCanvasElement) => () => void {
  const latest = useRef({ length, width, seen, onWindow });
  latest.current = { length, width, seen, onWindow };
  const canvas = useRef<HTMLCanvasElement | null>(null);
  const behaviour = useMemo(() => zoom<HTMLCanvasElement, unknown>(), []);

  useEffect(() => {
    const element = canvas.current;
    if (!element || width === 0 || length === 0) return;
    const most = length / leastSpan(length);
    behaviour
      .extent([
        [0, 0],
        [width, 1],
      ])
      .translateExtent([
        [0, -Infinity],
        [width, Infinity],
      ])
      .scaleExtent([1, most]);
    const scale = length / (seen.to - seen.from);
    const wanted = zoomIdentity.scale(scale).translate((-seen.from * width) / length, 0);
    const { k, x } = (element as unknown as { __zoom: ZoomTransform }).__zoom;
    if (Math.abs(k - wanted.k) > 1e-9 * k || Math.abs(x - wanted.x) > 0.01) {
      select(element).call((selection) => behaviour.transform(selection, wanted));
    }
  }, [behaviour, width, length, seen.from, seen.to]);

  return useCallback(
    (element: HTMLCanvasElement) => {
      canvas.current = element;
      behaviour.on('zoom', (event: D3ZoomEvent<HTMLCanvasElement, unknown>) => {
        if (!event.sourceEvent) return;
        const { length: all, width: wide, onWindow: report } = latest.current;
        const from = (event.transform.invertX(0) / wide) * all;
        report(within({ from, to: from + all / event.transform.k }, all));
      });
      // The wheel zooms; turned sideways, or with Shift, it moves. At the whole session it scrolls the
      // page on.
      behaviour.filter((event: MouseEvent) =>
        event.type === 'wheel' ? !isSideways(event as WheelEvent) : !event.button && !event.ctrlKey,
      );
      const selection = select(element);
      selection.call(behaviour).on('dblclick.zoom', null);
      selection.on('wheel.pan', (event: WheelEvent) => {
        if (!isSideways(event)) return;
        event.preventDefault();
        const { length: all, width: wide, seen: now, onWindow: report } = latest.current;
        const step = ((event.deltaX || event.deltaY) / wide) * (now.to - now.from);
        report(within({ from: now.from + step, to: now.to + step }, all));
      });
      return () => {
        selection.on('.zoom', null).on('.pan', null);
      };
    },
    [behaviour],
  );
}
