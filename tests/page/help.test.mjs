// The help pages: whole, readable, and true to what they describe.
import assert from 'node:assert/strict';
import { readFileSync, readdirSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import axe from 'axe-core';
import { addressOf, launch, openPage } from './support/browser.mjs';
import { helpFolder, sourceOf } from './support/folder.mjs';

let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

test('the pages have no dead link, and axe finds nothing in them', async () => {
  for (const colorScheme of ['light', 'dark']) {
    const context = await browser.newContext({ colorScheme, viewport: { width: colorScheme === 'dark' ? 360 : 1000, height: 800 } });
    for (const name of ['main.HTM', 'options.HTM', 'options_Forms.HTM', 'sendsub.HTM']) {
      const page = await openPage(context, addressOf(helpFolder, name));
      await page.evaluate(axe.source);
      const { violations } = await page.evaluate(() =>
        window.axe.run({ runOnly: ['wcag2a', 'wcag2aa', 'wcag21a', 'wcag21aa', 'wcag22aa', 'best-practice'] }));
      assert.deepEqual(violations.map((v) => `${name}: ${v.id} ${v.nodes[0].html}`), []);
      assert.ok((await page.evaluate(() => document.documentElement.scrollWidth)) <= page.viewportSize().width, name);
      for (const href of await page.locator('a, img, link[rel=stylesheet]').evaluateAll((all) => all.map((a) => a.getAttribute('href') || a.getAttribute('src')))) {
        const [file, anchor] = href.split('#');
        assert.ok(!file || readdirSync(helpFolder).includes(file), `${name}: ${href}`);
        if (anchor) assert.match(readFileSync(join(helpFolder, file || name), 'latin1'), new RegExp(`id="${anchor}"`), `${name}: ${href}`);
      }
    }
    await context.close();
  }
});

test('every marker that a page can carry is explained, and no other', () => {
  const known = [...sourceOf('forms').matchAll(/\['((?:Supplier|Calculator) [^']+)',/g)].map((match) => match[1]).sort();
  const told = [...readFileSync(join(helpFolder, 'options_Forms.HTM'), 'latin1').matchAll(/scope="row"><code>\|([^|]+)\|/g)].map((match) => match[1]).sort();
  assert.equal(known.length, 19);
  assert.deepEqual(told, known);
});
