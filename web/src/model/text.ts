// Names and texts of a profile as they are shown: every character that is invisible or would reorder
// what surrounds it becomes its code, as "⟨1B⟩".

// Controls, what breaks lines, what reorders or hides text; not the tab, which callers may keep.
const HIDDEN =
  /[\u0000-\u001f\u007f-\u009f\u00ad\u061c\u180e\u200b-\u200f\u2028-\u202e\u2060-\u206f\ufeff\ufff9-\ufffb\ud800-\udfff]/;
const HIDDEN_ALL = new RegExp(HIDDEN.source, 'g');
const PAIRS = /[\ud800-\udbff][\udc00-\udfff]/;

/** `text` with visible stand-ins. Pairs of surrogates are characters and stay. */
export function visible(text: string): string {
  if (!HIDDEN.test(text)) return text;
  if (PAIRS.test(text))
    return text
      .split(/([\ud800-\udbff][\udc00-\udfff])/)
      .map(visiblePart)
      .join('');
  return visiblePart(text);
}

function visiblePart(part: string): string {
  if (part.length === 2 && PAIRS.test(part)) return part;
  return part.replace(HIDDEN_ALL, standIn);
}

function standIn(character: string): string {
  const code = character.charCodeAt(0);
  return `\u27e8${code
    .toString(16)
    .toUpperCase()
    .padStart(code < 0x100 ? 2 : 4, '0')}\u27e9`;
}

/** A line of source: tabs stay. */
export function visibleSource(text: string): string {
  if (!HIDDEN.test(text)) return text;
  return text.split('\t').map(visible).join('\t');
}

/** A line number, or the text that the profile has in its place. */
export function lineText(line: number | string): string {
  return line === '' ? '(empty)' : clipped(visible(String(line)), 60);
}

/** What is shown for a name: never nothing. */
export function nameText(name: string | null): string {
  if (name === null) return '(unknown)';
  if (name === '') return '(empty)';
  return name.trim() === '' ? name.replace(/./gsu, standIn) : visible(name);
}

/** At most `limit` characters, with an ellipsis where text was cut. Pairs of surrogates stay whole. */
export function clipped(text: string, limit: number): string {
  if (text.length <= limit) return text;
  const end = /[\ud800-\udbff]/.test(text[limit - 2]) ? limit - 2 : limit - 1;
  return text.slice(0, end) + '…';
}
