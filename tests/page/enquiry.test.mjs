// The enquiry forms: filled, and never lost where there is no mail program.
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { addressOf, closeBrowsers, enter, textOf, withPage } from './support/browser.mjs';
import { publish } from './support/folder.mjs';

after(closeBrowsers);
const clipboard = { permissions: ['clipboard-read', 'clipboard-write'] };

async function openForm(page, name) {
  await page.click(`#form-list >> text=${name}`);
  const frame = page.frameLocator('iframe');
  await frame.locator('input[name="Tarvolinx Response"], h1').first().waitFor();
  return frame;
}
// The text that can be copied by hand where the page may not do it.
async function copied(page, byHand = false) {
  if (byHand) {
    await page.evaluate(() => {
      Object.defineProperty(navigator, 'clipboard', { value: undefined });
      document.execCommand = () => false;
    });
  }
  await page.click('#copy');
  await page.locator('#keep-done', { hasText: byHand ? 'selected' : 'copied' }).waitFor();
  return byHand ? page.inputValue('#keep-text') : page.evaluate(() => navigator.clipboard.readText());
}

let priced; // The same in both.
for (const [browser, permissions] of [['chromium', clipboard.permissions], ['firefox']]) {
  test(`${browser}: a form opens filled, is copied and saved whole, figures are kept`, { timeout: 120000 }, () =>
    withPage(addressOf(publish()), async (page) => {
      const figure = await enter(page, { cost: '12500', depositMode: '1', deposit: '10' });
      assert.equal(figure, priced ??= figure);
      const frame = await openForm(page, 'Lease Proposal');
      const shown = await frame.locator('table').first().innerText();
      assert.match(shown, /\u00a312500\.00[^]*\u00a31250\.00 \(10\.00%\)[^]*36 Months \(3 Years\)/);
      assert.ok(shown.includes(figure));
      assert.match(await textOf(page, 'keep'), /cut short[^]*lease@harrowgate\.example/);
      await frame.locator('#f10').fill('Jo "Best" <b>');
      await frame.locator('#f14').fill('One press\nTwo feeders');
      const text = (await copied(page, !permissions)).replaceAll('\r\n', '\n');
      assert.match(await textOf(page, 'keep-done'), /required answers are still empty/);
      for (const line of ['To: lease@harrowgate.example', 'Contact Name=Jo "Best" <b>', 'Two feeders',
        'Equipment Description=One press', 'Supplier Name=Ferrisdale CNC Machine Tools Ltd', 'Figures=Yes, as quoted',
        'Calculator Deposit=\u00a31250.00 (10.00%)']) {
        assert.ok(text.split('\n').includes(line), `${line} in\n${text}`);
      }
      assert.doesNotMatch(text, /Tarvolinx Response|Declaration/);
      if (browser === 'chromium') { // The other one does not tell of its downloads.
        const [download] = await Promise.all([page.waitForEvent('download'), page.click('#save')]);
        assert.equal(download.suggestedFilename(), 'Lease enquiry.txt');
        assert.equal(readFileSync(await download.path(), 'utf8'), text.replaceAll('\n', '\r\n'));
      }

      await frame.locator('input[value=" Back "]').click();
      assert.equal(await page.evaluate(() => document.activeElement.textContent), 'Lease Proposal');
      await enter(page, { cost: '13000' });
      await openForm(page, 'Lease Proposal');
      await frame.locator('table', { hasText: '\u00a313000.00' }).waitFor();
      await page.locator('#keep').waitFor();
      assert.equal(await frame.locator('#f10').inputValue(), 'Jo "Best" <b>');
      assert.equal(await frame.locator('input[name="Calculator Capital Cost"]').inputValue(), '\u00a313000.00');
      await page.click('#form-back');
      await openForm(page, 'Your Quotation');
      await frame.locator('img[src="logo.GIF"]').waitFor();
      await page.click('#form-back');
      await openForm(page, 'How Leasing Works');
      assert.equal(await page.isVisible('#keep'), false);
      await page.goBack();
      assert.ok(await page.isVisible('#calculator'));
      await page.reload();
      assert.deepEqual([await page.inputValue('#cost'), await page.inputValue('#deposit')], ['13000', '10']);
      await enter(page, { term: '360' });
      assert.match(await textOf(page, 'term-error'), /longest term is 60 months/);
    }, { browser, permissions }));
}

test('an enquiry keeps its fields where the page opens no form, follows a link, is sent or has no figures yet', () => {
  const pages = {
    'Closes only': '<p>|Calculator Term|</p><input name="Who" value="Ann" required><FORMEND>',
    'Own form': '<form action="mailto:x@y.example"><input name="Who" value="Bob"></form><FORMEND>',
    Links: '<FORMSTART><input name="Who"><a href="#end">down</a> <a href="How.html">how</a> ' +
      '<a href="javascript:history.back()">return</a><FORMEND><p id="end">End</p>',
    Information: '<h1>|Supplier Town|</h1>',
  };
  const folder = publish({ pages });
  writeFileSync(join(folder, 'How.html'), '<h1>How</h1>');
  return withPage(addressOf(folder), async (page) => {
    const sent = () => page.frameLocator('iframe').locator('input[type=submit]')
      .evaluate(({ form }) => [form.action, form.method, form.enctype]);
    const address = ['mailto:lease@harrowgate.example?subject=Lease%20Calculator%20Response', 'post', 'text/plain'];
    const warning = async (name) => {
      await openForm(page, name);
      const text = await textOf(page, 'form-warning');
      await page.click('#form-back');
      return text;
    };
    assert.equal(await warning('Information'), '');
    assert.match(await warning('Closes only'), /No payment has been worked out yet/);
    await enter(page, { cost: '5000' });
    assert.equal(await warning('Closes only'), '');
    const frame = await openForm(page, 'Closes only');
    assert.match(await copied(page), /Who=Ann\r?\n[^]*Supplier Name=Ferris[^]*Calculator Capital Cost=\u00a35000\.00/);
    assert.deepEqual(await sent(), address);
    await page.click('#form-back');
    await openForm(page, 'Own form');
    assert.match(await copied(page), /Who=Bob\r?\n[^]*Calculator Capital Cost=\u00a35000\.00/);
    await page.click('#form-back');

    await openForm(page, 'Links');
    await frame.locator('input[name=Who]').fill('Cy');
    await frame.locator('text=down').click();
    const [opened] = await Promise.all([page.context().waitForEvent('page'), frame.locator('text=how').click()]);
    await opened.waitForURL(/How\.html$/);
    assert.match(await copied(page), /Who=Cy\r?\n/);
    assert.deepEqual(await sent(), address);
    const refused = [];
    page.on('console', (message) => refused.push(message.text()));
    await frame.locator('input[type=submit]').click();
    await page.waitForTimeout(300); // A refusal comes on the console; nothing tells that the mail program was asked.
    assert.deepEqual(refused.filter((text) => /form submission|navigation|protocol/i.test(text)), []);
    await frame.locator('text=return').click();
    await openForm(page, 'Links');
    await page.locator('iframe').evaluate((sheet) => {
      sheet.removeAttribute('srcdoc');
      sheet.src = 'data:text/html,<h1>Elsewhere</h1>';
    });
    await frame.locator('text=Elsewhere').waitFor();
    await page.locator('#keep').waitFor({ state: 'hidden' });
    await page.click('#form-back');
    await page.locator('#calculator').waitFor();
  }, clipboard);
});
