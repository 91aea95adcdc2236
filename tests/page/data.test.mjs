// Where the page's figures come from: beside it, over HTTP, or chosen by hand; and what it says when they are no good.
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { after, before, test } from 'node:test';
import { addressOf, launch, openPage, serve, textOf } from './support/browser.mjs';
import { calcData, forms, publish } from './support/folder.mjs';

let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

async function opened(address, body) {
  const context = await browser.newContext();
  const page = await openPage(context, address);
  await body(page);
  assert.deepEqual(page.problems, []);
  await context.close();
}
async function figureFor(page, cost) {
  await page.locator('#cost').fill(cost);
  return textOf(page, 'figure');
}

test('the same figures come from the folder, from a server with and without calcdata.txt, and from chosen files', async () => {
  const folder = publish();
  let expected = '';
  await opened(addressOf(folder), async (page) => { expected = await figureFor(page, '20000'); });
  assert.match(expected, /^\u00a3\d/);

  for (const except of [[], ['calcdata.txt']]) {
    const server = await serve(publish({ except }));
    await opened(`${server.address}calc.html`, async (page) => {
      assert.equal(await figureFor(page, '20000'), expected);
      assert.equal(await page.isVisible('#pages'), except.length === 0);
      if (except.length) assert.match(await textOf(page, 'made'), /on 15 May 2024/);
    });
    server.close();
  }

  await opened(addressOf(publish({ except: ['calcdata.txt'] })), async (page) => {
    assert.match(await textOf(page, 'trouble'), /calcdata\.txt/);
    assert.equal(await page.isVisible('#calculator'), false);
    await page.setInputFiles('#files', [join(folder, 'general.dat')]);
    await page.locator('#trouble', { hasText: 'Supplier.dat is missing' }).waitFor();
    await page.setInputFiles('#files', ['general.dat', 'Supplier.dat', forms[0].file].map((name) => join(folder, name)));
    assert.equal(await figureFor(page, '20000'), expected);
    assert.equal(await textOf(page, 'form-list'), forms[0].name);
  });
});

test('chosen pages are read in their own character set, and a file that cannot be read is reported', async () => {
  const declared = (charset) => `<meta charset="${charset}">`;
  const pages = {
    none: Buffer.from('<h1>caf\xe9 \x80</h1>', 'latin1'),
    'utf-8': Buffer.from('<h1>caf\u00e9 \u20ac</h1>'),
    mark: Buffer.from('\ufeff<h1>caf\u00e9 \u20ac</h1>'),
    wide: Buffer.from('\ufeff<h1>caf\u00e9 \u20ac</h1>', 'utf16le'),
    latin9: Buffer.from(`${declared('iso-8859-15')}<h1>caf\xe9 \xa4</h1>`, 'latin1'),
    told: Buffer.from(`${declared('UTF-16')}<h1>caf\u00e9 \u20ac</h1>`),
    unknown: Buffer.from(`${declared('x-none')}<h1>caf\xe9 \x80</h1>`, 'latin1'),
  };
  const folder = publish({ except: ['calcdata.txt'] });
  const names = Object.keys(pages).map((name) => join(folder, `${name}!0.html`));
  Object.values(pages).forEach((bytes, i) => writeFileSync(names[i], bytes));
  await opened(addressOf(folder), async (page) => {
    const records = ['general.dat', 'Supplier.dat'].map((name) => join(folder, name));
    await page.evaluate(() => { Blob.prototype.read = Blob.prototype.arrayBuffer; Blob.prototype.arrayBuffer = () => Promise.reject(new Error('locked')); });
    await page.setInputFiles('#files', records);
    await page.locator('#trouble', { hasText: 'A file cannot be read' }).waitFor();
    await page.evaluate(() => { Blob.prototype.arrayBuffer = Blob.prototype.read; });
    await page.setInputFiles('#files', [...records, ...names]);
    for (const name of Object.keys(pages)) {
      await page.locator('#form-list button', { hasText: new RegExp(`^${name}$`) }).click();
      assert.equal(await page.frameLocator('iframe').locator('h1').innerText(), 'caf\u00e9 \u20ac', name);
      await page.click('#form-back');
    }
  });
});

test('broken data is named, and no figure is shown', async () => {
  const folder = publish();
  const general = readFileSync(join(folder, 'general.dat')), supplier = readFileSync(join(folder, 'Supplier.dat'));
  const changed = (record, at, bytes) => Buffer.concat([record.subarray(0, at), Buffer.from(bytes), record.subarray(at + bytes.length)]);
  const cases = [
    ['window.calcData={"general":', /missing/],
    ['window.calcData={"general":"","supplier":""};', /damaged[^]*0 bytes instead of 824/],
    ['window.calcData={"general":"***","supplier":"***"};', /damaged/],
    ['window.calcData=null;', /damaged/],
    ['window.calcData={"general":17};', /damaged[^]*record is missing/],
    [calcData(general.subarray(0, 800), supplier, []), /damaged[^]*800 bytes/],
    [calcData(general, supplier.subarray(0, 554), []), /damaged[^]*554 bytes/],
    [calcData(changed(general, 198, [0, 0, 192, 127]), supplier, []), /damaged[^]*a rate/], // no number
    [calcData(changed(general, 202, [7, 1, 2]), supplier, []), /damaged[^]*text/],
    [calcData(changed(general, 818, [9, 0]), supplier, []), /damaged[^]*deposit types/],
    [calcData(general, changed(supplier, 427, Array(8).fill(127)), []), /damaged[^]*amount/],
    [calcData(general, supplier, 'forms'), /damaged[^]*forms/],
    [calcData(Buffer.alloc(824), supplier, []), /limits/],
  ];
  for (const [text, message] of cases) {
    writeFileSync(join(folder, 'calcdata.txt'), text);
    const context = await browser.newContext();
    const page = await context.newPage();
    await page.goto(addressOf(folder));
    assert.match(await textOf(page, 'trouble'), message, text.slice(0, 60));
    assert.equal(await page.isVisible('#calculator'), false);
    await context.close();
  }
});

test('a remembered calculation that someone has spoilt is passed over', async () => {
  const folder = publish();
  const context = await browser.newContext();
  const page = await openPage(context, addressOf(folder));
  await page.fill('#cost', '5000');
  for (const spoilt of ['{', '7', 'null', '{"cost":{},"find":"\\"]","depositMode":"9","term":5}']) {
    await page.evaluate((text) => localStorage.setItem(Object.keys(localStorage)[0], text), spoilt);
    await page.reload();
    assert.match(await figureFor(page, '5000'), /^\u00a3\d/, spoilt);
  }
  assert.deepEqual(page.problems, []);
  await context.close();
});
