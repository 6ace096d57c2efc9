// Builds dist/ptick-view.html: the page with style and script inside, and one marker where the data goes.
// The same sources give the same bytes.

import { build } from 'esbuild';
import { createHash } from 'node:crypto';
import { mkdirSync, readFileSync, readdirSync, writeFileSync } from 'node:fs';

const MARKER = '@PTICK_VIEW_DATA@';
const LARGEST = 600 * 1024;

const bundled = await build({
  entryPoints: ['src/main.tsx', 'src/style/style.css'],
  outdir: 'dist',
  write: false,
  bundle: true,
  minify: true,
  charset: 'utf8',
  format: 'iife',
  target: ['es2022', 'chrome111', 'firefox113', 'safari16.4'],
  jsx: 'automatic',
  jsxImportSource: 'preact',
  legalComments: 'none',
  define: { 'process.env.NODE_ENV': '"production"' },
  metafile: true,
  logLevel: 'warning',
});

const output = (ending) =>
  bundled.outputFiles.find((file) => file.path.endsWith(ending)).text.trim();
const script = output('.js').replaceAll('</script', '<\\/script').replaceAll('<!--', '<\\!--');
const style = output('.css');
if (style.includes('</style')) throw new Error('the style holds </style');

const policy = [
  "default-src 'none'",
  `script-src '${hash(script)}'`,
  `style-src '${hash(style)}'`,
  "base-uri 'none'",
  "form-action 'none'",
].join('; ');

const page = fill(readFileSync('src/page.html', 'utf8'), {
  '@POLICY@': policy,
  '@STYLE@': style,
  '@SCRIPT@': script,
  '@NOTICES@': notices(Object.keys(bundled.metafile.inputs)),
});

const size = Buffer.byteLength(page);
if (page.split(MARKER).length !== 2) throw new Error(`the page must hold ${MARKER} once`);
if (size > LARGEST) throw new Error(`the page has ${size} bytes, more than ${LARGEST}`);
mkdirSync('dist', { recursive: true });
writeFileSync('dist/ptick-view.html', page);
console.log(
  `dist/ptick-view.html: ${size} bytes (script ${script.length}, style ${style.length} characters)`,
);

function hash(text) {
  return 'sha256-' + createHash('sha256').update(text).digest('base64');
}

/** Each mark of the template is replaced once, in one pass, so that no value is searched for marks. */
function fill(template, values) {
  return template.replace(/@[A-Z]+@/g, (mark) => values[mark] ?? mark);
}

/** The licences of the packages that are in the bundle. */
function notices(inputs) {
  const packages = new Set();
  for (const input of inputs) {
    const found = /^node_modules\/((?:@[^/]+\/)?[^/]+)\//.exec(input);
    if (found) packages.add(found[1]);
  }
  const texts = new Map();
  for (const name of [...packages].sort()) {
    const folder = `node_modules/${name}`;
    const { version } = JSON.parse(readFileSync(`${folder}/package.json`, 'utf8'));
    const file = readdirSync(folder).find((entry) => /^licen[cs]e/i.test(entry));
    if (!file) throw new Error(`${name} has no licence text`);
    const text = readFileSync(`${folder}/${file}`, 'utf8').replace(/\r/g, '').trim();
    texts.set(text, [...(texts.get(text) ?? []), `${name} ${version}`]);
  }
  const parts = [...texts].map(([text, names]) => `${names.join(', ')}\n\n${text}`);
  const all = 'This page contains these libraries:\n\n' + parts.join('\n\n---\n\n');
  return all.replaceAll('--', '- -');
}
