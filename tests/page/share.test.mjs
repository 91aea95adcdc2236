// What leaves the page or stays on the device: links, text, kept quotes, paper; and the languages that they are in.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, test } from 'node:test';
import {
  addressOf, assertAccessible, assertNothingSpilt, cells, closeBrowsers, enter, openAll, textOf, withPage, withoutClipboard,
} from './support/browser.mjs';
import { newFolder, publish } from './support/folder.mjs';

after(closeBrowsers);
const folder = publish({ options: { validDays: 30 } });
async function copied(page, button) {
  await withoutClipboard(page);
  await page.click(`#${button}`);
  return page.inputValue('#share-text');
}
const inputs = (page) => page.evaluate(() => [...document.querySelectorAll('input')]
  .filter((box) => box.type !== 'file' && box.id !== 'kept-name').map((box) => (/radio|checkbox/.test(box.type) ? box.checked : box.value)));

const states = [
  { cost: '12,345.67', interval: 'quarterly', term: '8', depositMode: '1', deposit: '12.5', residualMode: '0', residual: '500', maintenance: '15' },
  { find: 'cost', payment: '450', depositMode: '2', deposit: '3', premium: true },
  { cost: '30000', depositMode: '0', deposit: '1500', residual: '10', customer: 'Smith & Sons = "x" +1 #2', equipment: '<b>Press</b> \u4f60',
    reference: 'Q/7', start: '2027-01-31' },
];
for (const [maker, reader] of [['chromium', 'firefox'], ['firefox', 'chromium']]) {
  test(`a link made in ${maker} opens in ${reader}: the same inputs, the same figure`, async () => {
    const made = [];
    await withPage(addressOf(folder), async (page) => {
      await openAll(page);
      assert.equal(await page.isDisabled('#copy-link'), true);
      for (const state of states) {
        await page.click('#again');
        const figure = await enter(page, state);
        await page.locator('#customer').focus(); // leaves the last box
        made.push([await copied(page, 'copy-link'), figure, await inputs(page)]);
      }
    }, { browser: maker });
    assert.match(made[0][0], /#interval=quarterly&cost=12345\.67&term=8&deposit-percent=12\.5&residual=500&maintenance=15$/);
    assert.doesNotMatch(made[1][0], /&for=|&start=/);
    for (const [link, figure, boxes] of made) {
      await withPage(link, async (page) => {
        assert.equal(await textOf(page, 'figure'), figure);
        await openAll(page);
        assert.deepEqual(await inputs(page), boxes);
        assert.equal(await page.isVisible('#told'), false);
        assert.doesNotMatch(page.url(), /#./);
      }, { browser: reader });
    }
  });
}

test('1,000 hostile links show nothing that could not have been typed', { timeout: 300000 }, () => withPage(addressOf(folder), async (page) => {
  let state = 20261125;
  const next = (list) => list[(state = (state * 48271) % 2147483647) % list.length];
  const keys = ['cost', 'payment', 'term', 'interval', 'deposit', 'deposit-percent', 'advance', 'residual', 'residual-percent', 'maintenance',
    'premium', 'start', 'for', 'what', 'ref', '__proto__', 'constructor', 'toString', 'form-1', '<img src=x onerror=alert(1)>', 'find', ''];
  const values = ['1', '20000', '36', '1e9', '-5', '0x10', 'NaN', '99999999999999999999', '1'.repeat(3000), '12.345678901', '1,000', 'quarterly',
    'weekly', 'yes', '2027-02-31', '9999-99-99', '"><script>alert(1)</script>', '<img src=x onerror=alert(1)>', '%00%0a', '%', '\u202e\ud83d\ude00', '__proto__'];
  const links = Array.from({ length: 1000 }, () => Array.from({ length: 1 + next([0, 1, 2, 5]) }, () => `${next(keys)}=${next(values)}`).join('&'));
  const bad = await page.evaluate(async (all) => {
    const wrong = [];
    for (const link of all) {
      location.hash = link;
      await new Promise((done) => { setTimeout(done); });
      const figure = document.getElementById('figure').textContent, amount = Number(figure.replace(/[^\d.]/g, ''));
      const typed = [...document.querySelectorAll('#inputs input[type=text]')].every((box) => /^[\d,.]{0,30}$/.test(box.value));
      if (!typed || /NaN|undefined|Infinity/.test(document.body.innerText) || (/\d/.test(figure) && !(amount > 0 && amount <= 250000))) wrong.push([link, figure]);
    }
    return wrong.concat(document.querySelectorAll('#sheet img:not(#logo), #sheet script').length || []);
  }, links);
  assert.deepEqual(bad, []);
  await page.evaluate(() => { location.hash = 'cost=20000&residual=x&find=cost'; });
  assert.match(await textOf(page, 'told'), /residual, find\.$/);
  assert.match(await textOf(page, 'figure'), /\d/);
}));

test('quotes are kept on the device as they were, compared, opened and removed; spoilt ones are passed over', () => withPage(addressOf(folder), async (page) => {
  await openAll(page);
  const first = await enter(page, { cost: '20000', 'kept-name': '<b>One</b>' });
  await page.press('#kept-name', 'Enter');
  const second = await enter(page, { term: '60', customer: 'Ann' });
  await page.click('#keep-it');
  await page.reload();
  await openAll(page);
  const shown = await cells(page, 'kept');
  assert.deepEqual([shown[0], shown[2], shown[4]], ['|<b>One</b>|Ann', 'Term|36 months|60 months', `Payments|${first}|${second}`]);
  await assertAccessible(page, 'kept quotes');
  await page.setViewportSize({ width: 320, height: 640 });
  await assertNothingSpilt(page, 'kept quotes');
  await page.click('#kept >> text=One');
  assert.equal(await textOf(page, 'figure'), first);
  await page.click('#kept [aria-label="Remove: <b>One</b>"]');
  assert.deepEqual((await cells(page, 'kept'))[0], '|Ann');
  const key = await page.evaluate(() => Object.keys(localStorage).find((name) => name.endsWith('/kept')));
  for (const spoilt of ['{', '[{}]', '[null,{"name":"x","day":"2026-01-01","link":"","quote":{"payment":"1"}}]', '7']) {
    await page.evaluate(([name, text]) => localStorage.setItem(name, text), [key, spoilt]);
    await page.reload();
    assert.equal(await page.isVisible('#kept'), false, spoilt);
    assert.deepEqual((await cells(page, 'kept'))[0], '', spoilt);
  }
  await page.goto(addressOf(folder, 'calc_test.html'));
  await openAll(page);
  await enter(page, { cost: '5000' });
  await page.click('#keep-it');
  assert.equal(await page.evaluate(() => Object.values(localStorage).some((text) => text.includes('5000'))), false);
}));

test('text and paper say for whom, what and until when; the schedule is a second page', () => withPage(addressOf(folder), async (page) => {
  // A telephone's own sheet.
  await page.context().addInitScript(() => { navigator.share = async (what) => { window.handedOver = what; }; });
  await page.reload();
  await openAll(page);
  const figure = await enter(page, { cost: '20000', deposit: '500', ...states[2], term: '60' });
  const text = await copied(page, 'copy-text');
  for (const line of [/^Lease Calculator \u2013 Ferrisdale/, /\nCustomer: Smith & Sons/, /\nWhat is leased: <b>Press<\/b>/, /\nValid until: \d+ \w+ \d{4}\n/,
    new RegExp(`\n60 monthly payments of ${figure}, `), /\nTotal payable /, /lease@harrowgate\.example/]) assert.match(text, line);
  assert.doesNotMatch(text, /file:/);
  await page.click('#share');
  assert.equal(await page.evaluate(() => window.handedOver.text), text);
  await page.evaluate(() => { document.querySelector('#schedule-part').open = false; });
  const pages = async () => {
    const file = join(newFolder(), 'page.pdf');
    writeFileSync(file, await page.pdf({ format: 'Letter' }));
    return execFileSync('pdftotext', ['-layout', file, '-'], { encoding: 'utf8' }).trimEnd().split('\f');
  };
  const one = await pages();
  assert.equal(one.length, 1);
  for (const printed of [/Smith & Sons/, /Q\/7/, /Valid until/, /0114 496/, /machines@ferrisdale/]) assert.match(one[0], printed);
  await page.check('#with-schedule');
  const two = await pages();
  assert.equal(two.length, 2);
  assert.match(two[1], /1 +28 Feb 2027/);
  assert.doesNotMatch(two[0], /28 Feb 2027/);
}));

test('words, numbers and dates follow the language that the data or the browser names', async () => {
  // Locale, language of the data, what is typed, the figure, a label and the language of the page.
  const cases = [
    ['de-AT', undefined, '20.000,00', '\u00a3650,30', 'Monatsrate', 'de'], ['fr-FR', undefined, '20 000', '\u00a3650,30', 'Loyer mensuel', 'fr'],
    ['es-MX', undefined, '20.000', '\u00a3650,30', 'Cuota mensual', 'es'], ['it-IT', undefined, "20'000", '\u00a3650,30', 'Canone mensile', 'it'],
    ['pl-PL', undefined, '20,000.00', '\u00a3650.30', 'Monthly payment', 'en-GB'], ['de-DE', 'en', '20000.0', '\u00a3650.30', 'Monthly payment', 'en-GB'],
    ['en-US', 'it', '20000,', '\u00a3650,30', 'Canone mensile', 'it'],
  ];
  for (const [locale, language, typed, figure, label, lang] of cases) {
    await withPage(addressOf(publish({ options: language && { language } })), async (page) => {
      assert.equal(await enter(page, { cost: typed }), figure, locale);
      assert.equal(await textOf(page, 'answer-title'), label);
      assert.equal(await page.getAttribute('html', 'lang'), lang);
      await openAll(page);
      await page.locator('#cost').blur();
      assert.doesNotMatch(await page.locator('body').innerText(), /\{\w+\}|undefined|\|/);
      const left = await page.inputValue('#cost'), wrong = lang === 'en-GB' ? '12,50' : '12.50';
      await page.reload();
      assert.equal(await page.inputValue('#cost'), left);
      await page.setViewportSize({ width: 320, height: 640 });
      await openAll(page);
      await enter(page, { deposit: '1000', residual: '5', maintenance: '25' });
      await assertAccessible(page, `${lang}, everything open`);
      for (const width of [320, 360]) {
        await page.setViewportSize({ width, height: 640 });
        await assertNothingSpilt(page, `${lang}, ${width}`);
      }
      await enter(page, { cost: wrong });
      assert.match(await textOf(page, 'cost-error'), lang === 'en-GB' ? /12,345\.67/ : /12[.\u202f]345,67/);
    }, { locale });
  }
});

test('words are explained where they stand, in the words of the organisation; old rates are told', async () => {
  const explained = (page) => page.evaluate(() => [...document.querySelectorAll('.why')].filter((part) => part.checkVisibility())
    .map((part) => `${part.firstChild.textContent} ${part.lastChild.textContent}`));
  const options = { words: { deposit: 'Ours <b>' }, ratesDays: 30 };
  await withPage(addressOf(publish({ options, made: '2024-05-15' })), async (page) => {
    const words = await explained(page);
    assert.deepEqual(words.slice(0, 2), ['What is VAT? 20% is added to each amount.', 'What is Deposit? Ours <b>']);
    assert.match(words[2], /^What is Residual\? A last amount/);
    assert.equal(words.length, 4);
    await enter(page, { depositMode: '2', cost: '20000' });
    assert.match((await explained(page))[1], /^What is Payments in advance\? Some of the payments/);
    assert.match(await textOf(page, 'age'), /made on 15 May 2024 and may have changed\. Ask for new ones$/);
    assert.match(await page.getAttribute('#age-mail', 'href'), /^mailto:lease@harrowgate\.example\?subject=Lease%20Calculator/);
    assert.match(await textOf(page, 'figure'), /\d/);
  });
  await withPage(addressOf(publish({ options: { ratesDays: 30 } })), async (page) => assert.equal(await page.isVisible('#age'), false));
});

test('all is reached and used by keyboard alone, and axe finds nothing with every part open in any colours and size', async () => {
  const looks = [{ forcedColors: 'active' }, { colorScheme: 'dark', viewport: { width: 640, height: 450 } }, { viewport: { width: 320, height: 640 } }];
  for (const look of looks) {
    await withPage(addressOf(publish({ options: { ratesDays: 30 }, made: '2024-05-15' })), async (page) => {
      const tabs = async (count) => { for (let i = 0; i < count; ++i) await page.keyboard.press('Tab'); };
      await page.locator('#cost').focus();
      await page.keyboard.type('20000');
      await page.keyboard.press('Shift+Tab');
      await page.keyboard.press('ArrowRight');
      assert.ok(await page.isChecked('input[value="cost"]'));
      await page.keyboard.press('ArrowLeft');
      await openAll(page);
      await page.focus('#kept-name');
      await page.keyboard.type('One');
      await page.keyboard.press('Enter');
      await assertAccessible(page, JSON.stringify(look));
      // Each stop once, from the first link to the last: a group of choices is one.
      const stops = await page.evaluate(() => {
        document.activeElement.blur();
        return [...document.querySelectorAll('a[href], button, input, summary, textarea, [tabindex="0"]')].filter((node) =>
          node.checkVisibility() && !node.disabled && (node.type !== 'radio' || node.checked)).length;
      });
      await page.locator('header a').first().focus();
      const seen = new Set();
      for (let i = 0; i < stops + 8; ++i) {
        seen.add(await page.evaluate(() => {
          const at = document.activeElement;
          at.dataset.stop = at.dataset.stop || Math.random();
          return at === document.body ? 'body' : at.dataset.stop;
        }));
        await tabs(1);
      }
      seen.delete('body');
      assert.equal(seen.size, stops);
    }, look);
  }
});
