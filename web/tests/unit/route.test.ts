import assert from 'node:assert/strict';
import { test } from 'node:test';
import { HOSTILE, hostileDocument } from '../../samples/made';
import { makeModel } from '../../src/model/model';
import { formatRoute, lineParam, parseRoute, programOf, programParam } from '../../src/model/route';

test('addresses lead to places, all others to the overview', () => {
  const rows: [string, string, [string, string][]][] = [
    ['', 'overview', []],
    ['#', 'overview', []],
    ['#hot', 'hot', []],
    [
      '#hot?in=PRICE.LINES&filter=a+b',
      'hot',
      [
        ['in', 'PRICE.LINES'],
        ['filter', 'a b'],
      ],
    ],
    [
      '#source?program=A%26B%3DC&line=82',
      'source',
      [
        ['program', 'A&B=C'],
        ['line', '82'],
      ],
    ],
    ['#source?program=%', 'source', [['program', '']]],
    ['#source?&&=x&line', 'source', [['line', '']]],
    ['#__proto__', 'overview', []],
    ['#hot/../x', 'overview', []],
    ['#nowhere?line=3', 'overview', []],
  ];
  for (const [address, view, params] of rows) {
    const route = parseRoute(address);
    assert.equal(route.view, view, address);
    assert.deepEqual([...route.params], params, address);
  }
});

test('every place comes back from its address', () => {
  for (const text of HOSTILE.slice(0, -1)) {
    const address = formatRoute('hot', [
      ['filter', text],
      ['sort', '-ticks'],
    ]);
    assert.match(address, /^#hot\?[\x21-\x7e]+$/, JSON.stringify(text));
    assert.equal(parseRoute(address).params.get('filter') ?? '', text, JSON.stringify(text));
    assert.equal(parseRoute(address).params.get('sort'), '-ticks');
  }
  assert.equal(formatRoute('hot', [['filter', '']]), '#hot');
  assert.equal(formatRoute('hot', [['filter', '\ud800']]), '#hot?filter=');
});

test('programs go by name, and by index where the name is no good in an address', () => {
  const model = makeModel(hostileDocument());
  model.document.names.forEach((name, program) => {
    const param = programParam(model, program);
    assert.equal(programOf(model, param), program, JSON.stringify(name));
    assert.ok(param.length <= 200);
  });
  assert.equal(
    programParam(model, model.document.names.indexOf('')),
    `~${model.document.names.indexOf('')}`,
  );
  for (const none of ['', 'NOT.THERE', '~9999', '~x', undefined])
    assert.equal(programOf(model, none), null, none);
});

test('lines in addresses are different for different lines', () => {
  const lines = ['', '~', '~~', '82x', '0082', 82, '<b>'];
  assert.equal(new Set(lines.map(lineParam)).size, lines.length);
  assert.ok(lines.every((line) => lineParam(line) !== ''));
});
