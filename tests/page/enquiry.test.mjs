// The enquiry forms: filled, and never lost where there is no mail program.
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { after, test } from 'node:test';
import { addressOf, closeBrowsers, enter, mailOpenedBy, textOf, withPage, withoutClipboard } from './support/browser.mjs';
import { publish, runProgram, supplier } from './support/folder.mjs';

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
  if (byHand) await withoutClipboard(page);
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
      assert.match(await textOf(page, 'keep'), /If nothing opens[^]*lease@harrowgate\.example/);
      await frame.locator('[name="Contact Name"]').fill('Jo "Best" <b>');
      await frame.locator('[name="Equipment Description"]').fill('One press\nTwo feeders');
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
      assert.equal(await frame.locator('[name="Contact Name"]').inputValue(), 'Jo "Best" <b>');
      assert.equal(await frame.locator('input[name="Calculator Capital Cost"]').inputValue(), '\u00a313000.00');
      await page.click('#form-back');
      await openForm(page, 'Your Quotation');
      await frame.locator('img[src="logo.GIF"]').evaluate((logo) => logo.decode());
      await page.click('#form-back');
      await openForm(page, 'How Leasing Works');
      assert.equal(await page.isVisible('#keep'), false);
      await page.goBack();
      assert.ok(await page.isVisible('#calculator'));
      await page.reload();
      assert.deepEqual([await page.inputValue('#cost'), await page.inputValue('#deposit')], ['13,000', '10']);
      await openForm(page, 'Lease Proposal');
      await page.locator('#keep').waitFor();
      assert.equal(await frame.locator('[name="Contact Name"]').inputValue(), 'Jo "Best" <b>');
      await frame.locator('[name="Contact Name"]').fill('Jo');
      await page.reload();
      await page.locator('#keep').waitFor();
      assert.equal(await frame.locator('[name="Contact Name"]').inputValue(), 'Jo');
      await page.click('#form-back');
      await enter(page, { term: '360' });
      assert.match(await textOf(page, 'term-error'), /longest term is 60 months/);
    }, { browser, permissions }));
}

for (const [browser, permissions] of [['chromium', clipboard.permissions], ['firefox']]) {
  test(`${browser}: the e-mail of a form is what was typed; one that is too long is told`, { timeout: 120000 }, () => {
    const pages = { Ask: '<FORMSTART><input name="A&amp;B"><textarea name="Text"></textarea><FORMEND>' };
    const changes = { pages, card: { CompanyName: 'Smith & Sons +44 \u00a35' }, prefs: { OrgEmail: 'a+b@x.example' } };
    const folder = publish(changes), appFolder = dirname(folder);
    return withPage(addressOf(folder), async (page) => {
      await enter(page, { cost: '12500' });
      const frame = await openForm(page, 'Ask');
      const send = frame.locator('input[type=submit]'), text = frame.locator('textarea');
      await frame.locator('input[name="A&B"]').fill('50% = \u00a35 & \u20ac6; +44 caf\u00e9 \u4f60?');
      await text.fill('one\ntwo');
      const mail = await mailOpenedBy(send);
      const whole = `To: a+b@x.example\r\nSubject: Lease Calculator Response\r\n\r\n${mail.body}`;
      assert.deepEqual([mail.to, mail.subject], ['a+b@x.example', 'Lease Calculator Response']);
      assert.match(mail.body, /^A&B=50% = \u00a35 & \u20ac6; \+44 caf\u00e9 \u4f60\?\r\nText=one\r\ntwo\r\n/);
      assert.match(mail.body, /\nSupplier Name=Smith & Sons \+44 \u00a35\r\n[^]*\nCalculator Capital Cost=\u00a312500\.00\r/);
      assert.match(await textOf(page, 'keep-done'), /opens in your e-mail program/);
      assert.equal((await copied(page, !permissions)).replace(/\r?\n/g, '\r\n'), whole);

      const most = 'x'.repeat(1800 - mail.address.length + 'one%0D%0Atwo'.length);
      await text.fill(most);
      assert.equal((await mailOpenedBy(send)).address.length, 1800);
      await text.fill(`${most}x`);
      await send.click();
      assert.match(await textOf(page, 'keep-long'), /too long/);
      assert.equal(await page.evaluate(() => document.activeElement.id), 'keep-long');
      assert.match((await mailOpenedBy(page.locator('#short'))).body, /^The enquiry follows, or is attached/);
      assert.ok((await copied(page, !permissions)).includes(`${most}x`));
      await text.fill('short again');
      assert.match((await mailOpenedBy(send)).body, /Text=short again/);
      assert.equal(await page.isVisible('#short'), false);

      // The program's own preview of the sample pages.
      for (const [form, box] of [['1', 'Business Name'], ['2', 'Question']]) {
        const path = join(appFolder, 'Forms', `${form}.HTML`);
        await page.goto(addressOf(runProgram(['live', '--supplier', supplier.id, path], { appFolder }).trim(), ''));
        await page.locator('form').evaluate((sheet) => { sheet.noValidate = true; });
        await page.fill(`[name="${box}"]`, 'x'.repeat(1800));
        await page.click('input[type=submit]');
        assert.match(await page.inputValue('textarea:not([name])'), /^Too long [^]*\n[\w ]+=x{1800}\n/);
        await page.fill(`[name="${box}"]`, '50% & \u20ac6 +44');
        const preview = await mailOpenedBy(page.locator('input[type=submit]'));
        assert.equal(preview.to, 'a+b@x.example');
        for (const line of [`${box}=50% & \u20ac6 +44`, 'Supplier Name=Smith & Sons +44 \u00a35']) {
          assert.ok(preview.body.split('\r\n').includes(line), `${line} in\n${preview.body}`);
        }
      }
    }, { browser, permissions });
  });
}

test('an enquiry keeps its fields where the page opens no form, follows a link, is sent or has no figures yet', () => {
  const pages = {
    'Closes only': '<p>|Calculator Term|</p><input name="Who" value="Ann" required><FORMEND>',
    'Own form': '<form action="mailto:x@y.example"><input name="Who" value="Bob"></form><FORMEND>',
    'No address': '<form><input name="Who" value="Dee"><FORMEND>',
    'All its own': '<form method="post" action="mailto:x%2By@z.example?cc=c@z.example&amp;subject=5%25 + 1">' +
      '<input name="Who" value="Eve"><button name="Wish" value="A call">Go</button></form>',
    Links: '<FORMSTART><input name="Who"><a href="#end">down</a> <a href="How.html">how</a> ' +
      '<a href="javascript:history.back()">return</a><FORMEND><p id="end">End</p>',
    Information: '<h1>|Supplier Town|</h1>',
    // What it fetches, and what a browser complains of.
    Spying: '<script>x</script><body onload="x()"><h1 onclick="x()">Spy</h1><img src="http://127.0.0.1:9/a.png"><img src="logo.GIF">' +
      '<link rel="stylesheet" href="http://127.0.0.1:9/b.css"><style>h1 { background: url(http://127.0.0.1:9/c.png) }</style>' +
      '<iframe src="http://127.0.0.1:9/d.html"></iframe><meta http-equiv="refresh" content="0;url=http://127.0.0.1:9/e">' +
      '<video src="http://127.0.0.1:9/f"></video><input type="image" src="http://127.0.0.1:9/g">',
  };
  const folder = publish({ pages });
  writeFileSync(join(folder, 'How.html'), '<h1>How</h1>');
  return withPage(addressOf(folder), async (page) => {
    const frame = page.frameLocator('iframe');
    const sent = () => mailOpenedBy(frame.locator('input[type=submit], button'));
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
    // Whom the mail goes to, its subject, and how it begins.
    const mails = [
      ['Closes only', 'lease@harrowgate.example', 'Lease Calculator Response', /^Who=Ann\r\nSupplier Name=Ferris/],
      ['Own form', 'x@y.example', undefined, /^Who=Bob\r\nSupplier Name=Ferris/],
      ['No address', 'lease@harrowgate.example', 'Lease Calculator Response', /^Who=Dee\r\nSupplier Name=Ferris/],
      ['All its own', 'x+y@z.example', '5% + 1', /^Who=Eve\r\nWish=A call\r\n$/, 'c@z.example'],
    ];
    for (const [name, to, subject, body, cc] of mails) {
      await page.click(`#form-list >> text=${name}`);
      const mail = await sent();
      assert.deepEqual([mail.to, mail.subject, mail.cc], [to, subject, cc]);
      assert.match(mail.body, body);
      assert.ok((await copied(page)).replaceAll('\r\n', '\n').startsWith(`To: ${to}\n`));
      await page.click('#form-back');
    }

    const requests = [], complaints = [];
    page.on('request', (request) => requests.push(request.url()));
    page.on('requestfailed', (request) => requests.splice(requests.indexOf(request.url()), request.failure().errorText === 'csp' ? 1 : 0));
    page.on('console', (message) => complaints.push(message.text()));
    await openForm(page, 'Spying');
    await page.waitForLoadState('networkidle');
    await frame.locator('img[src="logo.GIF"]').evaluate((logo) => logo.decode());
    assert.deepEqual(requests.filter((url) => /^http/.test(url)), []);
    assert.deepEqual(complaints.filter((text) => !/Content Security Policy/.test(text)), []);
    await page.click('#form-back');
    complaints.splice(0);

    await openForm(page, 'Links');
    assert.deepEqual(complaints, []);
    await frame.locator('input[name=Who]').fill('Cy');
    await frame.locator('text=down').click();
    const [opened] = await Promise.all([page.context().waitForEvent('page'), frame.locator('text=how').click()]);
    await opened.waitForURL(/How\.html$/);
    assert.match(await copied(page), /Who=Cy\r?\n/);
    assert.match((await sent()).body, /^Who=Cy\r\n/);
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
