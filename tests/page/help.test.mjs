// The help pages: whole, readable, and true to what they describe.
import assert from 'node:assert/strict';
import { readFileSync, readdirSync } from 'node:fs';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { addressOf, assertAccessible, closeBrowsers, withPage } from './support/browser.mjs';
import { installed, scriptOf } from './support/folder.mjs';

const help = join(installed, 'Help');
const textOf = (name) => readFileSync(join(help, name), 'latin1');
after(closeBrowsers);

test('the pages have no dead link, and axe finds nothing in them', async () => {
  for (const name of ['main.HTM', 'options.HTM', 'options_Forms.HTM', 'sendsub.HTM']) {
    for (const [colorScheme, width] of [['light', 1000], ['dark', 360]]) {
      const look = { colorScheme, viewport: { width, height: 800 } };
      await withPage(addressOf(help, name), (page) => assertAccessible(page, name), look);
    }
    for (const [, address] of textOf(name).matchAll(/\b(?:href|src)="(?!data:)([^"]*)"/g)) {
      const [file, anchor] = address.split('#');
      assert.ok(!file || readdirSync(help).includes(file), `${name}: ${address}`);
      if (anchor) assert.match(textOf(file || name), new RegExp(`id="${anchor}"`), `${name}: ${address}`);
    }
  }
});

test('every marker that a page can carry is explained, and no other', () => {
  const names = (text, pattern) => [...text.matchAll(pattern)].map((match) => match[1]).sort();
  const known = names(scriptOf('forms', installed), /\['((?:Supplier|Calculator) [^']+)',/g);
  assert.equal(known.length, 19);
  assert.deepEqual(names(textOf('options_Forms.HTM'), /scope="row"><code>\|([^|]+)\|/g), known);
});
