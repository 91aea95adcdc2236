// Where the page's figures come from: beside it, over HTTP, or chosen by hand; and what it says when they are no good.
import assert from 'node:assert/strict';
import { existsSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { addressOf, closeBrowsers, enter, textOf, withPage } from './support/browser.mjs';
import { preferences, publish, record, supplier } from './support/folder.mjs';

after(closeBrowsers);

const folder = publish({ card: { www: 'https://ferrisdale.example' } }), bare = publish();
rmSync(join(bare, 'calcdata.txt'));
const inFolder = (name) => join(folder, name);
const figureFor = (page) => enter(page, { cost: '20000' });

test('figures, names and links are the same from a folder and a server with and without calcdata.txt', async () => {
  let expected = '';
  const headers = { 'X-Content-Type-Options': 'nosniff', 'Last-Modified': 'Wed, 15 May 2024 10:00:00 GMT' };
  await withPage(addressOf(folder), async (page) => {
    expected = await figureFor(page);
    assert.match(expected, /^\u00a3\d/);
    assert.equal(await page.title(), `${preferences.AliasCalcName} \u2013 ${supplier.name}`);
    for (const address of ['https://ferrisdale.example', 'http://www.harrowgate.example']) {
      assert.equal(await page.locator(`a[href="${address}"]`).count(), 1, address);
    }
    const made = `: ${supplier.name}. Made by ${preferences.OrgCompanyName}. Rates of \\d+ \\w+ \\d{4}\\.`;
    assert.match(await textOf(page, 'made'), new RegExp(made));
  });
  for (const served of [folder, bare]) {
    await withPage('about:blank', async (page) => {
      await page.route('http://calculator.example/**', (route) => {
        const path = join(served, new URL(route.request().url()).pathname);
        return route.fulfill(existsSync(path) ? { path, headers } : { status: 404 });
      });
      await page.goto('http://calculator.example/calc.html');
      assert.equal(await figureFor(page), expected);
      assert.equal(await page.isVisible('#pages'), served === folder);
      if (served === bare) assert.match(await textOf(page, 'made'), /of 15 May 2024/);
    });
  }
});

test('files are chosen by hand, pages in their own character set, and what is missing or held is told', () =>
  withPage(addressOf(bare), async (page) => {
    const pages = {
      none: Buffer.from('<h1>caf\xe9 \x80</h1>', 'latin1'),
      'utf-8': Buffer.from('<h1>caf\u00e9 \u20ac</h1>'),
      mark: Buffer.from('\ufeff<h1>caf\u00e9 \u20ac</h1>'),
      wide: Buffer.from('\ufeff<h1>caf\u00e9 \u20ac</h1>', 'utf16le'),
      latin9: Buffer.from('<meta charset="iso-8859-15"><h1>caf\xe9 \xa4</h1>', 'latin1'),
      told: Buffer.from('<meta charset="UTF-16"><h1>caf\u00e9 \u20ac</h1>'),
      unknown: Buffer.from('<meta charset="x-none"><h1>caf\xe9 \x80</h1>', 'latin1'),
    };
    const files = ['general.dat', 'Supplier.dat'].map(inFolder);
    const choose = (chosen) => page.setInputFiles('#files', chosen);
    const told = (text) => page.locator('#trouble', { hasText: text }).waitFor();
    await told('calcdata.txt');
    assert.equal(await page.isVisible('#calculator'), false);
    await choose(files.slice(0, 1));
    await told('Supplier.dat is missing');
    await page.evaluate(() => {
      window.read = Blob.prototype.arrayBuffer;
      Blob.prototype.arrayBuffer = () => Promise.reject(new Error('locked'));
    });
    await choose(files);
    await told('A file cannot be read');
    await page.evaluate(() => { Blob.prototype.arrayBuffer = window.read; });
    for (const [name, bytes] of Object.entries(pages)) writeFileSync(inFolder(`${name}!0.html`), bytes);
    await choose([...files, ...Object.keys(pages).map((name) => inFolder(`${name}!0.html`))]);
    assert.match(await figureFor(page), /^\u00a3\d/);
    for (const name of Object.keys(pages)) {
      await page.locator('#form-list button', { hasText: new RegExp(`^${name}$`) }).click();
      assert.equal(await page.frameLocator('iframe').locator('h1').innerText(), 'caf\u00e9 \u20ac', name);
      await page.click('#form-back');
    }
  }));

test('broken data and limits that contradict each other are named, and no figure is shown', async () => {
  const [general, card] = ['general.dat', 'Supplier.dat'].map((name) => readFileSync(inFolder(name)));
  const changed = (bytes, at, ...values) => Buffer.from(bytes).fill(Buffer.from(values), at, at + values.length);
  const limited = (limits) => readFileSync(record({ ...preferences, ...limits }));
  const data = (first, second, forms = []) => {
    const texts = { general: first.toString('base64'), supplier: second.toString('base64'), forms };
    return `window.calcData=${JSON.stringify(texts)};`;
  };
  const cases = [
    ['window.calcData={"general":', /missing/],
    ['window.calcData={"general":"","supplier":""};', /damaged[^]*0 bytes instead of 824/],
    ['window.calcData={"general":"***","supplier":"***"};', /damaged/],
    ['window.calcData=null;', /damaged/],
    ['window.calcData={"general":17};', /damaged[^]*record is missing/],
    [data(general.subarray(0, 800), card), /damaged[^]*800 bytes/],
    [data(general, card.subarray(0, 554)), /damaged[^]*554 bytes/],
    [data(changed(general, 198, 0, 0, 192, 127), card), /damaged[^]*a rate/], // no number
    [data(changed(general, 202, 7, 1, 2), card), /damaged[^]*text/],
    [data(changed(general, 818, 9, 0), card), /damaged[^]*deposit types/],
    [data(general, changed(card, 427, ...Array(8).fill(127))), /damaged[^]*amount/],
    [data(general, card, 'forms'), /damaged[^]*forms/],
    [data(Buffer.alloc(824), card), /limits/],
    [data(limited({ MinCapitalCost: 10, MaxCapitalCost: 5 }), card), /limits of the Equipment cost contradict/],
    [data(limited({ MinAdvancedPayments: 60 }), card), /limits of the Term, Payments in advance contradict/],
  ];
  for (const [text, message] of cases) {
    writeFileSync(join(bare, 'calcdata.txt'), text);
    await withPage(addressOf(bare), async (page, problems) => {
      assert.match(await textOf(page, 'trouble'), message, text.slice(0, 60));
      assert.equal(await page.isVisible('#calculator'), false);
      problems.splice(0); // The first is no program at all.
    });
  }
});
