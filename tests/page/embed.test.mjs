// The page in the web site of somebody else: under a strict policy, in a sandbox, with no storage.
import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import { existsSync, readFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { closeBrowsers, withPage } from './support/browser.mjs';
import { publish } from './support/folder.mjs';

after(closeBrowsers);
const folder = publish();
const hashes = [...readFileSync(join(folder, 'calc.html'), 'latin1').matchAll(/<script id="\w+">([^]*?)<\/script>/g)]
  .map((script) => `'sha256-${createHash('sha256').update(script[1].replaceAll('\r\n', '\n')).digest('base64')}'`);
const policy = `default-src 'none'; script-src 'self' ${hashes.join(' ')}; img-src 'self' data:; connect-src 'self'; base-uri 'none'; ` +
  "form-action mailto:; frame-ancestors http://dealer.example";
function write(box, text) {
  box.value = text;
  box.dispatchEvent(new Event('input', { bubbles: true }));
}
const around = (attributes) => `<!DOCTYPE html><title>Dealer</title><iframe id="calculator" title="Leasing" width="900" height="300"
  src="http://calculator.example/calc.html" ${attributes}></iframe><script>addEventListener('message', (event) => {
  const frame = document.getElementById('calculator');
  if (event.source === frame.contentWindow && event.data.calculatorHeight) frame.height = event.data.calculatorHeight; });</script>`;

for (const browser of ['chromium', 'firefox']) {
  test(`${browser}: the page works in a frame under a strict policy, and as well in a sandbox`, { timeout: 120000 }, async () => {
    assert.equal(hashes.length, 3);
    const sandbox = 'sandbox="allow-scripts allow-forms allow-popups allow-modals"';
    // How it is framed, and what the server says of the kind of its files.
    for (const [attributes, sniff] of [['', { 'X-Content-Type-Options': 'nosniff' }], [sandbox, {}]]) {
      await withPage('about:blank', async (page, problems) => {
        const complaints = [];
        page.on('console', (message) => complaints.push(message.text()));
        await page.route('http://dealer.example/', (route) => route.fulfill({ body: around(attributes), contentType: 'text/html' }));
        await page.route('http://calculator.example/**', (route) => {
          const path = join(folder, decodeURIComponent(new URL(route.request().url()).pathname));
          const headers = { 'Content-Security-Policy': policy, ...sniff };
          return route.fulfill(existsSync(path) ? { path, headers } : { status: 404, body: '' });
        });
        await page.goto('http://dealer.example/');
        const frame = page.frameLocator('#calculator');
        // A driver cannot type into every frame of another site.
        await frame.locator('#print').waitFor();
        await frame.locator('#cost').evaluate(write, '20000');
        assert.match(await frame.locator('#figure').innerText(), /\d/);
        await frame.locator('#schedule-part summary').evaluate((button) => button.click());
        await page.waitForFunction(() => Number(document.getElementById('calculator').height) > 2500);
        await frame.locator('#schedule-part summary').evaluate((button) => button.click());
        await page.waitForFunction(() => Number(document.getElementById('calculator').height) < 2500);
        await frame.locator('#kept-part summary').evaluate((button) => button.click());
        await frame.locator('#keep-it').evaluate((button) => button.click());
        assert.equal(await frame.locator('#kept thead, #kept tr').count() > 5, true);
        await frame.locator('#form-list button').first().evaluate((button) => button.click());
        const form = frame.frameLocator('iframe');
        await form.locator('h1').waitFor();
        if (!attributes) {
          assert.equal(await form.locator('h1').evaluate((head) => getComputedStyle(head).color), 'rgb(31, 58, 87)');
          await form.locator('input[name="Contact Name"]').evaluate(write, 'Ann');
          await frame.locator('#form-back').click();
          await frame.locator('#form-list button').first().evaluate((button) => button.click());
          assert.equal(await form.locator('input[name="Contact Name"]').inputValue(), 'Ann');
        }
        // Under a policy without styles a form's own are refused, and then set another way; a sandbox lets no script say so.
        assert.deepEqual(complaints.concat(problems.splice(0)).filter((text) => !/style|MIME|sandbox|storage/i.test(text)), []);
      }, { browser });
    }
  });
}
