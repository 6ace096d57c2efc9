// What ptick-view does with the template and a document; see README.md.

import type { ViewDocument } from '../src/data';

export const MARKER = '@PTICK_VIEW_DATA@';

/** JSON that may be inside a script element: no "<", and no line separators of JavaScript. */
export function inertJson(document: ViewDocument): string {
  return JSON.stringify(document).replace(
    /[<\u2028\u2029]/g,
    (character) => '\\u' + character.charCodeAt(0).toString(16).padStart(4, '0'),
  );
}

export function page(template: string, document: ViewDocument): string {
  const at = template.indexOf(MARKER);
  if (at < 0) throw new Error(`the template has no ${MARKER}`);
  return template.slice(0, at) + inertJson(document) + template.slice(at + MARKER.length);
}
