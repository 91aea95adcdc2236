// The calculator page in a browser, opened from a published folder on disk.
import assert from 'node:assert/strict';
import { readdirSync, readFileSync, statSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { after, before, test } from 'node:test';
import axe from 'axe-core';
import { addressOf, choose, launch, openPage, textOf } from './support/browser.mjs';
import { forms, preferences, program, publish, supplier } from './support/folder.mjs';

let browser;
before(async () => { browser = await launch(); });
after(() => browser.close());

// Runs `body` with a fresh browser profile's page on a folder; no error may come up on the way.
async function withPage(folder, options, body) {
  const context = await browser.newContext({ viewport: { width: 1280, height: 900 }, ...options });
  const page = await openPage(context, addressOf(folder, options.file));
  await body(page, context);
  assert.deepEqual(page.problems, []);
  await context.close();
}

// One yield and one commission for every cost, so that an annuity table gives the payments.
const plain = {
  Yield0: 10, Yield1: 10, Yield2: 10, Yield3: 10, Yield4: 10, Com0: 2, Com1: 2, Com2: 2, Com3: 2, Com4: 2, AdditionalPremiumYield: 2,
};

test('typing shows the payment at once, and every switch prices anew', () =>
  withPage(publish({ card: plain }), {}, async (page) => {
    const expect = async (figure, tax) => {
      assert.equal(await textOf(page, 'figure'), figure);
      assert.equal(await textOf(page, 'with-tax'), `${tax} with VAT`);
    };
    assert.match(await textOf(page, 'figure'), /Type the Equipment cost/);
    await page.fill('#cost', '10,000');
    await expect('\u00a3329.13', '\u00a3394.95'); // 10,200.00 over 36 at 10 %
    await choose(page, 'depositMode', '2');
    await page.fill('#deposit', '3');
    await page.fill('#cost', '10000');
    await expect('\u00a3321.29', '\u00a3385.54'); // 10,200.00 over 33 with 3 at the start
    assert.match(await textOf(page, 'plan'), /3 payments in advance\s+\u00a3963.86[^]*33 monthly payments/);
    await choose(page, 'depositMode', '1');
    await page.fill('#deposit', '10');
    await expect('\u00a3296.86', '\u00a3356.23');
    await page.fill('#residual', '10');
    await expect('\u00a3272.92', '\u00a3327.51');
    await page.fill('#maintenance', '15');
    await expect('\u00a3287.92', '\u00a3345.51');
    await page.check('#premium');
    await expect('\u00a3297.36', '\u00a3356.83');
    await choose(page, 'interval', 'quarterly');
    assert.equal(await page.inputValue('#term'), '12');
    await page.press('#maintenance', 'ArrowUp');
    assert.equal(await page.inputValue('#maintenance'), '115.00');
  }));

test('the reverse question finds the cost that the payment buys', () =>
  withPage(publish({ card: plain }), {}, async (page) => {
    await choose(page, 'find', 'cost');
    await page.fill('#payment', '329.13');
    assert.match(await textOf(page, 'figure'), /^\u00a310,000\.\d\d$/);
    assert.match(await textOf(page, 'with-tax'), /for \u00a3329.13 a month/);
    await page.fill('#payment', '5');
    assert.match(await textOf(page, 'payment-error'), /lowest Equipment cost is \u00a31,000;/);
    await page.fill('#payment', '900000');
    assert.match(await textOf(page, 'payment-error'), /highest Equipment cost is \u00a3250,000;/);
  }));

test('the payment of the lowest and of the highest cost is accepted', () =>
  withPage(publish({ prefs: { MinCapitalCost: 1001, MaxCapitalCost: 77777, MinDepositPercent: 10 } }), {}, async (page) => {
    for (const cost of ['1001', '77777']) {
      await choose(page, 'find', 'payment');
      await page.fill('#cost', cost);
      const payment = (await textOf(page, 'figure')).replace(/[\u00a3,]/g, '');
      await choose(page, 'find', 'cost');
      await page.fill('#payment', payment);
      assert.equal(await textOf(page, 'payment-error'), '');
      const found = Number((await textOf(page, 'figure')).replace(/[\u00a3,]/g, ''));
      assert.ok(found >= 1001 && found <= 77777 && Math.abs(found - Number(cost)) < 1, `${found} for ${cost}`);
      await page.fill('#payment', (Number(payment) + (cost === '1001' ? -0.01 : 0.01)).toFixed(2));
      assert.match(await textOf(page, 'payment-error'), /Equipment cost is/);
    }
  }));

test('a limit can be typed as it is shown', () =>
  withPage(publish({ prefs: { MinDepositPercent: 12.345, MaxDepositPercent: 33.335, MinResidualPercent: 0.005, MaxResidualPercent: 12.345 } }), {}, async (page) => {
    await page.fill('#cost', '10001');
    await page.fill('#residual', '1');
    // Box, its mode's name, what is refused, the message's limit, and a hair beyond what is then typed.
    const cases = [
      ['deposit', '1', '1', /12\.345%/, '12.345', '12.344'], ['deposit', '1', '90', /33\.335%/, '33.335', '33.336'],
      ['deposit', '0', '1', /\u00a31,234\.63/, '1234.63', '1234.62'], ['deposit', '0', '9000', /\u00a33,333\.83/, '3333.83', '3333.84'],
      ['residual', '1', '90', /12\.345%/, '12.345', '12.346'], ['residual', '0', '9000', /\u00a31,234\.62/, '1234.62', '1234.63'],
    ];
    for (const [id, mode, refused, message, limit, beyond] of cases) {
      await choose(page, `${id}Mode`, mode);
      await page.fill(`#${id}`, refused);
      assert.match(await textOf(page, `${id}-error`), message);
      await page.fill(`#${id}`, limit);
      assert.equal(await textOf(page, `${id}-error`), '', limit);
      await page.fill(`#${id}`, beyond);
      assert.match(await textOf(page, `${id}-error`), message);
      await page.fill(`#${id}`, limit);
    }
    await page.click('#again');
    assert.equal(await page.inputValue('#deposit'), '12.345');
  }));

test('each limit is named beside its box, and no figure stands while it is broken', () =>
  withPage(publish({ prefs: { MinDepositPercent: 5, MinResidualPercent: 2, MinAdvancedPayments: 2 } }), {}, async (page) => {
    const refuses = async (id, text, message) => {
      const before = await page.inputValue(`#${id}`);
      await page.fill(`#${id}`, text);
      assert.match(await textOf(page, `${id}-error`), message);
      assert.equal(await page.getAttribute(`#${id}`, 'aria-invalid'), 'true');
      assert.doesNotMatch(await textOf(page, 'result'), /\d/);
      await page.fill(`#${id}`, before);
      assert.equal(await textOf(page, `${id}-error`), '');
      assert.match(await textOf(page, 'figure'), /\u00a3\d/);
    };
    await page.fill('#cost', '1000');
    await page.fill('#residual', '2');
    await refuses('cost', '999.99', /lowest Equipment cost is \u00a31,000\./);
    await refuses('cost', '250000.01', /highest Equipment cost is \u00a3250,000\./);
    await refuses('cost', '12,50', /amount such as/);
    await refuses('term', '11', /shortest term is 12 months/);
    await refuses('term', '61', /longest term is 60 months/);
    await refuses('term', '24.5', /whole number/);
    await refuses('deposit', '4.99', /lowest Deposit is 5%/);
    await refuses('deposit', '50.01', /highest Deposit is 50%/);
    await refuses('residual', '1.99', /lowest Residual is 2%/);
    await refuses('residual', '30.01', /highest Residual is 30%/);
    await refuses('maintenance', '100000000', /highest amount is \u00a399,999,999/);
    await choose(page, 'depositMode', '0');
    await page.fill('#deposit', '50');
    await refuses('deposit', '49.99', /lowest Deposit is 5% .* \u00a350\.00/);
    await refuses('deposit', '500.01', /highest Deposit is 50% .* \u00a3500\.00/);
    await choose(page, 'residualMode', '0');
    await page.fill('#residual', '20');
    await refuses('residual', '300.01', /highest Residual is 30% .* \u00a3300\.00/);
    await choose(page, 'depositMode', '2');
    await refuses('deposit', '1', /At least 2 payments/);
    await refuses('deposit', '36', /At most 35 payments of the 36/);
  }));

test('what the supplier or the organisation does not offer is not there', async () => {
  const card = { AdditionalPremium: false, ResidualOption: false, MaintenanceOption: false };
  await withPage(publish({ card, prefs: { DepositOptions: 4, TaxRate: 0, MinTerm: 13, MaxTerm: 14 }, pages: [] }), {}, async (page) => {
    for (const id of ['premium-part', 'residual-part', 'maintenance-part', 'deposit-kinds', 'pages']) {
      assert.equal(await page.isVisible(`#${id}`), false, id);
    }
    assert.equal(await page.isDisabled('input[value="quarterly"]'), true);
    await page.fill('#cost', '5000');
    assert.match(await textOf(page, 'plan'), /1 payment in advance/);
    assert.doesNotMatch(await textOf(page, 'result'), /VAT/);
  });
  await withPage(publish({ prefs: { MinCapitalCost: 10, MaxCapitalCost: 5 } }), {}, async (page) => {
    assert.match(await textOf(page, 'trouble'), /limits of the Equipment cost contradict/);
    assert.equal(await page.isVisible('#calculator'), false);
  });
  await withPage(publish({ prefs: { MinAdvancedPayments: 60, DepositOptions: 7 } }), {}, async (page) => {
    assert.match(await textOf(page, 'trouble'), /limits of the term and the payments in advance contradict/);
  });
  await withPage(publish({ prefs: { MinAdvancedPayments: 20, DepositOptions: 4 } }), {}, async (page) => {
    assert.equal(await page.isDisabled('input[value="quarterly"]'), true);
  });
});

test('the last calculation comes back for its supplier, and never in the test page', async () => {
  const folder = publish(), other = publish({ card: { ID: 8, CompanyName: 'Another' } });
  await withPage(folder, {}, async (page) => {
    await page.fill('#cost', '7654.32');
    await choose(page, 'interval', 'quarterly');
    await choose(page, 'depositMode', '1');
    await page.fill('#deposit', '12.5');
    const figure = await textOf(page, 'figure');
    await page.reload();
    assert.equal(await page.inputValue('#deposit'), '12.5');
    assert.equal(await textOf(page, 'figure'), figure);
    assert.equal(await page.isVisible('#preview'), false);
    for (const address of [addressOf(other), addressOf(folder, 'calc_test.html')]) {
      await page.goto(address);
      assert.equal(await page.inputValue('#cost'), '');
    }
    assert.match(await textOf(page, 'preview'), /Preview/);
    await page.fill('#cost', '4321');
    await page.reload();
    assert.equal(await page.inputValue('#cost'), '');
    await page.goto(addressOf(folder));
    assert.equal(await page.inputValue('#cost'), '7654.32');
    // What was typed for a mode that is no longer offered is not taken for something else.
    await page.evaluate(() => {
      const [key] = Object.keys(localStorage);
      const changed = { interval: 'weekly', term: '7', depositMode: '3', deposit: '30', residualMode: '9', residual: '25' };
      localStorage.setItem(key, JSON.stringify({ ...JSON.parse(localStorage.getItem(key)), ...changed }));
    });
    await page.reload();
    assert.deepEqual(await page.evaluate(() => ['cost', 'term', 'deposit', 'residual'].map((id) => document.getElementById(id).value)),
      ['7654.32', '36', '', '']);
    await page.click('#again');
    await page.reload();
    assert.equal(await page.inputValue('#cost'), '');
  });
});

test('values with markup in them are shown as they are and never run', async () => {
  const script = '"><img src=x onerror=alert(1)>';
  const prefs = { AliasCalcName: '<script>alert(1)</script>', AliasCapEquip: '<img src=x onerror=a()>', AliasVat: '</title>"\'&amp;',
    OrgCompanyName: script, OrgEmail: `${script}@x`, OrgWebAddress: 'javascript:alert(1)' };
  const card = { CompanyName: `O'Neill & "Sons" ${script}`, AdditionalPremiumMsg: script, www: 'javascript:alert(1)' };
  const pages = [...forms, { name: "O'Neill & Sons; `x`", file: 'x', text: '<script>parent.alert(1)</script><p onclick="alert(1)" id="p">|Supplier Company Name|</p><FORMEND>' }];
  await withPage(publish({ prefs, card, pages }), {}, async (page) => {
    await page.fill('#cost', '5000');
    assert.equal(await textOf(page, 'name'), prefs.AliasCalcName);
    assert.equal(await textOf(page, 'supplier'), card.CompanyName);
    assert.equal(await textOf(page, 'premium-label'), script);
    assert.match(await textOf(page, 'cost-label'), /^<img src=x/);
    for (const link of await page.locator('a').all()) assert.doesNotMatch(await link.getAttribute('href'), /^javascript/i);
    await page.click('#form-list li:last-child button');
    const frame = page.frameLocator('iframe');
    await frame.locator('#p').click();
    assert.equal(await frame.locator('#p').innerText(), card.CompanyName.replace("'", '`'));
    await page.click('#form-back');
    await page.click('text=Lease proposal');
    assert.equal(await frame.locator('input[name="Supplier Name"]').inputValue(), card.CompanyName);
  });
});

test('yields and commissions cannot be read in the page', () =>
  withPage(publish({ card: { Yield4: 11.137, Com4: 4.319 } }), {}, async (page) => {
    await page.fill('#cost', '3000');
    await page.click('text=Quotation summary');
    await page.frameLocator('iframe').locator('h1').waitFor();
    const all = await page.evaluate(() => document.documentElement.outerHTML + document.querySelector('iframe').contentDocument.documentElement.outerHTML +
      JSON.stringify(localStorage) + JSON.stringify(window.calcData || ''));
    assert.doesNotMatch(all, /11\.13|4\.31|129\.57/);
  }));

test('says whose calculator it is and when it was made, on screen and on one printed page', () =>
  withPage(publish({ card: { www: 'https://www.peakmoor.example' } }), {}, async (page) => {
    assert.equal(await page.title(), `${preferences.AliasCalcName} \u2013 ${supplier.CompanyName}`);
    const links = await page.locator('#organisation a, #supplier-contact a').evaluateAll((all) => all.map((a) => a.getAttribute('href')));
    assert.ok(links.includes('https://www.peakmoor.example') && links.includes('http://www.harrowgate.example'), String(links));
    assert.match(await textOf(page, 'made'), new RegExp(`of ${supplier.CompanyName}, made by ${preferences.OrgCompanyName} on \\d+ \\w+ \\d{4}`));
    for (const id of ['cost', 'deposit', 'residual', 'maintenance']) await page.fill(`#${id}`, { cost: '20000', deposit: '500' }[id] || '10');
    const pdf = (await page.pdf({ format: 'A4' })).toString('latin1');
    assert.equal(pdf.match(/\/Type\s*\/Page\b/g).length, 1);
    await page.emulateMedia({ media: 'print' });
    assert.ok(await page.isVisible('#made') && await page.isVisible('#figure') && !(await page.isVisible('#inputs')));
  }));

test('a keystroke shows its result in the same task', () =>
  withPage(publish(), {}, async (page) => {
    await choose(page, 'find', 'cost');
    const shown = await page.evaluate(() => ['100.00', '1000.00'].map((amount) => {
      const box = document.getElementById('payment');
      box.value = amount;
      box.dispatchEvent(new Event('input', { bubbles: true }));
      return document.getElementById('figure').textContent;
    }));
    assert.match(shown[0], /\d/);
    assert.notEqual(shown[0], shown[1]);
  }));

// A palette that could not be read as it is, the delivered one, and both where the desktop is dark.
const loud = { CalcBackColour: 0x00ffff, CaptionColour: 0x40ffff, InputBackColour: 0xff0000, InputTextColour: 0xff2020, BorderColour: 0x80ffff,
  OrgCaptionColour: 0x00e0ff, PageBackColour: 0x0000ff };
for (const [palette, prefs] of [['delivered', {}], ['loud', loud]]) {
  for (const colorScheme of ['light', 'dark']) {
    test(`axe finds nothing: ${palette} colours, ${colorScheme} desktop, wide and telephone`, () =>
      withPage(publish({ prefs }), { colorScheme }, async (page) => {
        const check = async (place) => {
          await page.evaluate(axe.source);
          const { violations } = await page.evaluate(() =>
            window.axe.run(document, { runOnly: ['wcag2a', 'wcag2aa', 'wcag21a', 'wcag21aa', 'wcag22aa', 'best-practice'], iframes: false }));
          assert.deepEqual(violations.map((v) => `${place}: ${v.id} ${v.nodes.map((n) => n.html).join(' ')}`), []);
        };
        await page.fill('#cost', '20000');
        await check('figures');
        await page.fill('#cost', '1');
        await check('an error');
        await page.setViewportSize({ width: 360, height: 740 });
        assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 360);
        await check('telephone');
        await page.click('text=Quotation summary');
        await page.frameLocator('iframe').locator('h1').waitFor();
        await check('a form');
        assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 360);
      }));
  }
}

test('the longest words and amounts fit a telephone and one printed page', () => {
  const word = 'W'.repeat(25);
  const prefs = { AliasDeposit: word, AliasResidual: word, AliasMaint: word, AliasCapEquip: word, AliasVat: word, AliasCalcName: word,
    CurrencySymbol: 'CHFX', MaxCapitalCost: 99999999, OrgCompanyName: 'M'.repeat(30), OrgEmail: `${'m'.repeat(46)}@x.y` };
  const card = { CompanyName: 'M'.repeat(50), AdditionalPremiumMsg: word };
  return withPage(publish({ prefs, card }), { viewport: { width: 360, height: 740 } }, async (page) => {
    for (const [id, text] of [['cost', '99999999'], ['deposit', '1000000'], ['residual', '20'], ['maintenance', '99999']]) await page.fill(`#${id}`, text);
    assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 360);
    assert.equal((await page.pdf({ format: 'A4' })).toString('latin1').match(/\/Type\s*\/Page\b/g).length, 1);
  });
});

test('pale colours turn dark with the desktop, strong ones stay', async () => {
  const pageColour = (page) => page.evaluate(() => getComputedStyle(document.documentElement).backgroundColor);
  await withPage(publish(), { colorScheme: 'dark' }, async (page) => {
    const [red] = (await pageColour(page)).match(/\d+/g);
    assert.ok(Number(red) < 40);
  });
  await withPage(publish({ prefs: loud }), { colorScheme: 'dark' }, async (page) => assert.equal(await pageColour(page), 'rgb(255, 0, 0)'));
});

test('the page is plain ASCII with each value filled in at one place, and what travels is small', (t) => {
  const text = readFileSync(join(dirname(program), 'delivered', 'CalcTemplate.html'), 'latin1');
  assert.ok(/^[\n\x20-\x7e]*$/.test(text));
  for (const name of ['ColourBackGround', 'CALCULATORNAME', 'LEASEORGEMAIL', 'PICBACKGROUND', 'HEADERPIC', 'CLASSID', 'CUSTREF', 'ASPTAGS']) {
    assert.equal(text.toLowerCase().split(`|${name}|`.toLowerCase()).length - 1, 1, name);
  }
  const folder = publish();
  const names = readdirSync(folder).filter((name) => !/^(logo|background|calc_test|setup)\./i.test(name));
  const sizes = names.map((name) => statSync(join(folder, name)).size);
  const total = sizes.reduce((sum, size) => sum + size);
  t.diagnostic(`${total} bytes: ${names.map((name, i) => `${name} ${sizes[i]}`).join(', ')}`);
  assert.ok(total < 120 * 1024, `${total} bytes`);
});
