// Opens the page: reads its data and draws it. What goes wrong is said in the page.

import { render } from 'preact';
import { makeModel, parseDocument } from './model/model';
import { App } from './app';

function open(): void {
  const place = document.getElementById('page')!;
  place.textContent = '';
  try {
    const model = makeModel(parseDocument(document.getElementById('data')!.textContent ?? ''));
    render(<App model={model} />, place);
  } catch (error) {
    const message = document.createElement('p');
    message.className = 'opening';
    message.setAttribute('role', 'alert');
    message.textContent = `This page cannot be shown: ${error instanceof Error ? error.message : String(error)}`;
    place.replaceChildren(message);
  }
}

open();
