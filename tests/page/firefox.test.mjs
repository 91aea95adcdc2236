// One look through the page in Debian's Firefox.
import assert from 'node:assert/strict';
import { existsSync } from 'node:fs';
import { test } from 'node:test';
import { addressOf } from './support/browser.mjs';
import { firefox, withFirefox } from './support/firefox.mjs';
import { publish } from './support/folder.mjs';

test('Firefox prices, opens a form and remembers, from a folder on disk', { timeout: 120000 }, () => {
  assert.ok(existsSync(firefox), `${firefox} is not installed`);
  return withFirefox(async ({ open, reload, run, type }) => {
    const text = (id) => run(`document.getElementById('${id}').textContent`);
    await open(addressOf(publish()));
    await run(`document.getElementById('cost').focus()`);
    await type('20000');
    assert.match(await text('figure'), /^\u00a36\d\d\.\d\d$/);
    const figure = await text('figure');
    await run(`document.querySelector('#form-list button').click()`);
    const shown = await run(`new Promise((done) => {
      const look = () => {
        const frame = document.querySelector('iframe');
        const page = frame && frame.contentDocument;
        if (page && page.querySelector('input[type=submit]')) done(page.body.innerText); else setTimeout(look, 20);
      };
      look();
    })`);
    assert.match(shown, /\u00a320000\.00/);
    // A browser that keeps its clipboard shut still offers the text.
    await run(`Object.defineProperty(navigator, 'clipboard', { value: undefined }); document.execCommand = () => false;`);
    await run(`document.getElementById('copy').click()`);
    const offered = await run(`new Promise((done) => {
      const look = () => {
        if (document.getElementById('keep-done').textContent) done(document.getElementById('keep-text').value); else setTimeout(look, 20);
      };
      look();
    })`);
    assert.match(offered, /^To: lease@harrowgate\.example[^]*\nSupplier Name=Peakmoor Fitness Equipment Ltd\r?\n/);
    await run(`document.getElementById('form-back').click()`);
    await reload();
    assert.equal(await text('figure'), figure);
    await run(`document.getElementById('term').focus()`);
    await type('0');
    assert.match(await text('term-error'), /longest term is 60 months/);
    assert.doesNotMatch(await text('figure'), /\d/);
  });
});
