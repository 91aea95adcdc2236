// The calculator page in a browser, opened from a published folder on disk.
import assert from 'node:assert/strict';
import { readdirSync, readFileSync, statSync } from 'node:fs';
import { join } from 'node:path';
import { after, test } from 'node:test';
import {
  addressOf, assertAccessible, assertNothingSpilt, cells, closeBrowsers, enter, openAll, textOf, withPage,
} from './support/browser.mjs';
import { delivered, publish } from './support/folder.mjs';

after(closeBrowsers);
const withCalculator = (changes, body, options) => withPage(addressOf(publish(changes)), body, options);
const amountOf = (text) => Number(text.replace(/[\u00a3,]/g, ''));

// One yield and one commission for every cost, so that an annuity table gives the payments.
const plain = {
  Yield0: 10, Yield1: 10, Yield2: 10, Yield3: 10, Yield4: 10, Com0: 2, Com1: 2, Com2: 2, Com3: 2, Com4: 2,
  AdditionalPremiumYield: 2, AdditionalPremiumMin: 2000,
};

test('typing shows the payment, and every switch prices anew', () =>
  withCalculator({ card: plain }, async (page) => {
    const cases = [
      [{ cost: '10,000' }, '329.13', '394.95'], // 10,200.00 over 36 at 10 %
      [{ depositMode: '2', deposit: '3', cost: '10000' }, '321.29', '385.54', // 10,200.00 over 33 with 3 at the start
        /3 payments in advance\s+\u00a3963\.86[^]*33 monthly payments/],
      [{ depositMode: '1', deposit: '10' }, '296.86', '356.23'],
      [{ residual: '10' }, '272.92', '327.51'],
      [{ maintenance: '15' }, '287.92', '345.51'],
      [{ premium: true }, '297.36', '356.83'],
    ];
    assert.match(await textOf(page, 'figure'), /Type the Equipment cost/);
    for (const [typed, figure, tax, plan = /36 monthly payments/] of cases) {
      assert.equal(await enter(page, typed), `\u00a3${figure}`);
      assert.equal(await textOf(page, 'with-tax'), `\u00a3${tax} with VAT`);
      assert.match(await textOf(page, 'plan'), plan);
    }
    assert.match(await enter(page, { depositMode: '2' }), /\d/);
    assert.match(await textOf(page, 'plan'), /3 payments in advance, without Maintenance/);
    assert.match(await textOf(page, 'rounded'), /the last digit can differ/);
    await page.click('#again');
    assert.equal(await enter(page, { cost: '10000', term: '12' }), '\u00a3896.74');
    assert.equal(await textOf(page, 'rounded'), '');
  }));

test('what was typed comes back with its choice, and stepping ends at the limits', () =>
  withCalculator({ card: plain, prefs: { MinDepositPercent: 12.345 } }, async (page) => {
    const kinds = [['term', { interval: 'quarterly' }, '12', { interval: 'monthly' }, '37'],
      ['deposit', { depositMode: '1' }, '12.345', { depositMode: '0' }, '37'],
      ['residual', { residualMode: '0' }, '', { residualMode: '1' }, '37']];
    await enter(page, { depositMode: '0', cost: '10000' });
    for (const [id, other, start, back, typed] of kinds) {
      await enter(page, { [id]: typed, ...other });
      assert.equal(await page.inputValue(`#${id}`), start);
      await enter(page, back);
      assert.equal(await page.inputValue(`#${id}`), typed);
    }
    await enter(page, { interval: 'quarterly', term: '16' });
    await enter(page, { interval: 'monthly' });
    assert.equal(await page.inputValue('#term'), '48');
    await page.click('#again');
    // Box, what is typed before, its number, what one step up and, from another number, one step down leave.
    const steps = [
      ['cost', {}, '249950', '250,000', '1050', '1,000'], ['cost', {}, '10', '1,000', '999999999', '250,000'],
      ['term', {}, '60', '60', '12', '12'], ['maintenance', { cost: '10000' }, '15', '115.00', '50', '0'],
      ['deposit', { depositMode: '1' }, '49.9', '50', '12.4', '12.345'],
      ['deposit', { depositMode: '0' }, '4950', '5,000', '1300', '1,234.5'],
      ['deposit', { depositMode: '2', term: '24' }, '23', '23', '1', '1'],
      ['residual', { residualMode: '1' }, '29.9', '30', '0.1', '0'],
      ['residual', { residualMode: '0' }, '2950', '3,000', '50', '0'],
      ['payment', { find: 'cost', depositMode: '1', deposit: '20' }, '11000', '9,459.71', '20', '37.84'],
    ];
    for (const [id, before, high, up, low, down] of steps) {
      await enter(page, { cost: '10000', ...before, [id]: high });
      await page.press(`#${id}`, 'ArrowUp');
      assert.equal(await page.inputValue(`#${id}`), up, `${id} ${high}`);
      await enter(page, { [id]: low });
      await page.press(`#${id}`, 'ArrowDown');
      assert.equal(await page.inputValue(`#${id}`), down, `${id} ${low}`);
      assert.match(await textOf(page, 'figure'), /\d/, `${id} ${down}`);
    }
  }));

test('totals, other terms and the schedule follow the figures; a switch of the data leaves the totals out', async () => {
  const typed = { cost: '10000', deposit: '1000', residual: '10', maintenance: '15' };
  await withCalculator({ card: plain }, async (page) => {
    await enter(page, typed);
    await openAll(page);
    await page.fill('#start', '2026-08-31');
    // 12,365.12 less the cost and the maintenance: 1,000.00, 36 of 272.92 by the annuity table, and 1,000.00.
    assert.match(await textOf(page, 'summary'), /beside Equipment cost, Maintenance \(Before VAT\)\s+\u00a31,825\.12/);
    const days = (await cells(page, 'schedule')).map((line) => line.split('|')[1]);
    assert.deepEqual([days[0], days[6], days[37]], ['31 Aug 2026 \u2013 Deposit', '28 Feb 2027', '31 Aug 2029 \u2013 Residual']);
    assert.match(await page.getAttribute('#chart', 'aria-label'), /^At the start: Deposit \u00a31,000\.00 .*; 36 monthly .* 31 August 2026 \u2013 31 August 2029$/);
    const terms = await cells(page, 'terms');
    await page.click('#terms >> text=24 months');
    assert.equal(await textOf(page, 'figure'), terms[1].split('|')[1]);
    assert.equal(await page.locator('#terms [aria-current]').innerText(), '24 months');
    const payment = await enter(page, { find: 'cost', term: '30', payment: '300' });
    const spent = await cells(page, 'terms');
    assert.match(spent[2], new RegExp(`^30 months\\|${payment.replace('.', '\\.')}\\|`));
    await page.click('#terms >> text=48 months');
    assert.equal(await textOf(page, 'figure'), spent[4].split('|')[1]);
  });
  await withCalculator({ card: plain, options: { totals: false } }, async (page) => {
    await enter(page, typed);
    await openAll(page);
    assert.doesNotMatch(await page.locator('body').innerText(), /[Tt]otal|beside|12,365|14,838|1,825|2,473/);
  });
});

test('more than 15 digits are refused, and 32,767 payments have a schedule', () => {
  const card = { ...plain, Yield0: 900000, RangeEquipFROM0: 5000, RangeEquipFROM1: 4000, RangeEquipFROM2: 3000, RangeEquipFROM3: 2000 };
  return withCalculator({ card, prefs: { MaxTerm: 32767, MaxCapitalCost: 99999999 } }, async (page) => {
    await page.evaluate(() => { document.querySelector('#schedule-part').open = true; });
    await enter(page, { cost: '99999999', term: '32767' });
    assert.match(await textOf(page, 'cost-error'), /more than 15 digits/);
    assert.equal(await textOf(page, 'figure'), '');
    await enter(page, { cost: '4000' });
    await page.waitForFunction(() => document.querySelector('#schedule').rows.length === 32767);
    const total = Math.round(Number((await textOf(page, 'plan-total')).split('\u00a3')[2].replaceAll(',', '')) * 100);
    assert.equal(total, 32767 * Math.round(amountOf((await textOf(page, 'with-tax')).split(' ')[0]) * 100));
  });
});

test('a payment that no cost within the limits has is told by payments', () =>
  // Two bands whose edge a payment falls over.
  withCalculator({ card: { ...plain, RangeEquipFROM0: 20000, RangeEquipFROM1: 9000, RangeEquipFROM2: 8000, RangeEquipFROM3: 7000, Yield0: 30, MaintenanceOption: true } }, async (page) => {
    const cases = [
      ['10', '', /^The lowest payment is \u00a332\.91, for Equipment cost \u00a31,000\.$/],
      ['99999', '', /^The highest payment is \u00a310,825\.\d\d, for Equipment cost \u00a3250,000\.$/],
      ['123456789012', '', /^The highest payment is \u00a310,825/],
      ['700', '', /^No Equipment cost gives this payment. The nearest: \u00a3658\.25 \/ \u00a3866\.\d\d\.$/],
      ['50', '60', /^The Maintenance alone is \u00a360\.00 in each payment\.$/],
    ];
    for (const [payment, maintenance, message] of cases) {
      await enter(page, { find: 'cost', payment, maintenance });
      assert.match(await textOf(page, 'payment-error'), message);
      assert.equal(await page.isDisabled('#print'), true);
    }
    await page.click('#look');
    assert.equal(await page.evaluate(() => document.activeElement.id), 'payment');
  }));

test('a payment finds the cost that it buys, from the lowest to the highest, in the task of its keystroke', () => {
  const prefs = { MinCapitalCost: 1001, MaxCapitalCost: 77777, MinDepositPercent: 10 };
  // On this card a limit's payment leads the search beyond the limit.
  const card = { RangeEquipFROM0: 50000, RangeEquipFROM1: 25000, RangeEquipFROM2: 10000, RangeEquipFROM3: 5000,
    Yield0: 7.5, Com0: 1, Yield4: 11.137, Com4: 3 };
  return withCalculator({ card, prefs }, async (page) => {
    for (const cost of [1001, 20000, 77777]) {
      const payment = amountOf(await enter(page, { find: 'payment', cost: String(cost) }));
      await enter(page, { find: 'cost' });
      const found = amountOf(await page.locator('#payment').evaluate((box, text) => {
        box.value = text;
        box.dispatchEvent(new Event('input', { bubbles: true }));
        return document.getElementById('figure').textContent;
      }, payment.toFixed(2)));
      assert.equal(await textOf(page, 'payment-error'), '');
      assert.ok(found >= 1001 && found <= 77777 && Math.abs(found - cost) < 1, `${found} for ${cost}`);
      assert.match(await textOf(page, 'with-tax'), /for \u00a3[\d,]+\.\d\d a month/);
      if (cost === 20000) continue;
      await enter(page, { payment: (payment + (cost === 1001 ? -0.01 : 0.01)).toFixed(2) });
      const limit = cost === 1001 ? /lowest payment is .* \u00a31,001\./ : /highest payment is .* \u00a377,777\./;
      assert.match(await textOf(page, 'payment-error'), limit);
    }
  });
});

test('beyond a limit its box names it and no figure stands; the limit can be typed as it is named', () => {
  const prefs = { MinDepositPercent: 12.345, MaxDepositPercent: 33.335, MinResidualPercent: 0.005,
    MaxResidualPercent: 12.345, MinAdvancedPayments: 2 };
  // Box and its mode, what is refused, the message, and what is then accepted.
  const cases = [
    ['cost', '', '999.99', /lowest Equipment cost is \u00a31,000\./, '1000'],
    ['cost', '', '250000.01', /highest Equipment cost is \u00a3250,000\./, '250000'],
    ['cost', '', '1234567890123', /highest Equipment cost is \u00a3250,000\./, '250000'],
    ['cost', '', '12,50', /amount such as/, '10001'],
    ['term', '', '11', /shortest term is 12 months/, '12'],
    ['term', '', '999999', /longest term is 60 months/, '60'],
    ['term', '', '24.5', /whole number/, '36'],
    ['maintenance', '', '100000000', /highest amount is \u00a399,999,999/, '99999999'],
    ['deposit', '1', '12.344', /lowest Deposit is 12\.345%/, '12.345'],
    ['deposit', '1', '33.336', /highest Deposit is 33\.335%/, '33.335'],
    ['deposit', '0', '1234.62', /lowest Deposit is 12\.345% .* \u00a31,234\.63/, '1234.63'],
    ['deposit', '0', '3333.84', /highest Deposit is 33\.335% .* \u00a33,333\.83/, '3333.83'],
    ['residual', '1', '0.004', /lowest Residual is 0\.005%/, '0.005'],
    ['residual', '1', '12.346', /highest Residual is 12\.345%/, '12.345'],
    ['residual', '0', '1234.63', /highest Residual is 12\.345% .* \u00a31,234\.62/, '1234.62'],
    ['deposit', '2', '1', /At least 2 payments/, '2'],
    ['deposit', '2', '999999', /At most 35 payments of the 36/, '35'],
  ];
  return withCalculator({ prefs }, async (page) => {
    for (const [id, mode, refused, message, accepted] of cases) {
      if (mode) await enter(page, { [`${id}Mode`]: mode });
      await enter(page, { [id]: refused });
      assert.match(await textOf(page, `${id}-error`), message);
      assert.equal(await page.getAttribute(`#${id}`, 'aria-invalid'), 'true');
      assert.doesNotMatch(await textOf(page, 'result'), /\d/);
      await page.click('#look');
      assert.equal(await page.evaluate(() => document.activeElement.id), id);
      assert.match(await enter(page, { [id]: accepted }), /\u00a3\d/, `${id} ${accepted}`);
      assert.equal(await textOf(page, `${id}-error`), '');
    }
    // The cost that a payment buys moves with the deposit: no amount is told that would be refused in its turn.
    await enter(page, { find: 'cost', payment: '300', maintenance: '', depositMode: '0', deposit: '9000' });
    assert.match(await textOf(page, 'deposit-error'), /^The highest Deposit is 33\.335% of the Equipment cost\.$/);
    await page.click('#again');
    assert.equal(await page.inputValue('#deposit'), '12.345');
  });
});

test('a unit chooses the kind of a box, or is refused; nothing is taken for something else', () =>
  // Box, its mode before, what is typed, the mode after and what is left in the box, or the refusal.
  withCalculator({ card: plain, prefs: { CurrencySymbol: 'Fr' } }, async (page) => {
    const cases = [
      ['deposit', '0', '10%', '1', '10'], ['deposit', '1', 'Fr1000', '0', '1,000'], ['deposit', '2', '5 %', '1', '5'],
      ['deposit', '2', '500 fr', '0', '500'], ['deposit', '0', 'FR 700', '0', '700'],
      ['residual', '1', 'Fr 25', '0', '25'], ['residual', '0', '25%', '1', '25'],
      ['residual', '1', '\u00a325', /write a percentage such as 12\.5\.$/],
      ['term', '', '36%', /a whole number, not a percentage\./],
      ['term', '', 'Fr36', /a whole number, not an amount\./],
      ['cost', '', '10%', /an amount such as 12,345\.67, not a percentage\./],
      ['maintenance', '', '5%', /an amount .* not a percentage\./],
    ];
    for (const [id, mode, typed, after, left] of cases) {
      await page.click('#again');
      await enter(page, { cost: '10000', ...(mode && { [`${id}Mode`]: mode }) });
      await enter(page, { [id]: typed });
      await page.locator(`#${id}`).blur();
      const value = await page.inputValue(`#${id}`), error = await textOf(page, `${id}-error`);
      if (left) {
        assert.deepEqual([error, value], ['', left], `${id} ${typed}`);
        assert.ok(await page.isChecked(`input[name="${id}Mode"][value="${after}"]`), `${id} ${typed}`);
      } else {
        assert.match(error, after);
        assert.equal(value, typed);
      }
    }
    await enter(page, { cost: '10000', term: '36', depositMode: '0', deposit: '10%', maintenance: '0' });
    assert.match(await textOf(page, 'plan'), /Deposit\s+Fr 1,000\.00/);
  }));

test('what the supplier or the organisation does not offer is not there', async () => {
  const card = { AdditionalPremium: false, ResidualOption: false, MaintenanceOption: false };
  const prefs = { DepositOptions: 4, TaxRate: 0, MinTerm: 13, MaxTerm: 14 };
  await withCalculator({ card, prefs, pages: {} }, async (page) => {
    for (const id of ['premium-part', 'residual-part', 'maintenance-part', 'deposit-kinds', 'pages']) {
      assert.equal(await page.isVisible(`#${id}`), false, id);
    }
    assert.equal(await page.isDisabled('input[value="quarterly"]'), true);
    await enter(page, { cost: '5000', deposit: '1%' });
    assert.match(await textOf(page, 'deposit-error'), /a whole number, not a percentage/);
    await enter(page, { deposit: '1' });
    assert.match(await textOf(page, 'plan'), /1 payment in advance/);
    assert.doesNotMatch(await textOf(page, 'result'), /VAT/);
  });
  await withCalculator({ prefs: { MinAdvancedPayments: 0, DepositOptions: 4 } }, async (page) => {
    await enter(page, { cost: '5000' });
    assert.doesNotMatch(await textOf(page, 'plan'), /in advance/);
    assert.match(await textOf(page, 'figure'), /\d/);
  });
  await withCalculator({ prefs: { MinAdvancedPayments: 20, DepositOptions: 4 } }, async (page) => {
    assert.equal(await page.isDisabled('input[value="quarterly"]'), true);
  });
});

test('the last calculation comes back for its supplier and never in the test page; a spoilt one is passed over', () => {
  const folder = publish(), other = publish({ id: '8' });
  return withPage(addressOf(folder), async (page) => {
    const boxes = async (...ids) => Promise.all(ids.map((id) => page.inputValue(`#${id}`)));
    const figure = await enter(page, { cost: '7654.32', interval: 'quarterly', depositMode: '1', deposit: '12.5' });
    await page.reload();
    assert.deepEqual(await boxes('cost', 'deposit'), ['7,654.32', '12.5']);
    assert.equal(await textOf(page, 'figure'), figure);
    assert.equal(await page.isVisible('#preview'), false);
    for (const address of [addressOf(other), addressOf(folder, 'calc_test.html')]) {
      await page.goto(address);
      assert.deepEqual(await boxes('cost'), ['']);
    }
    assert.match(await textOf(page, 'preview'), /Preview/);
    await enter(page, { cost: '4321' });
    await page.reload();
    assert.deepEqual(await boxes('cost'), ['']);
    await page.goto(addressOf(folder));
    const kinds = '"interval":"weekly","term":"7","depositMode":"3","deposit":"30","residualMode":"9","residual":"25"';
    const spoilt = { '{': '', 7: '', null: '', '{"cost":{},"find":"\\"]","depositMode":"9","term":5}': '',
      // What was typed for a mode that is no longer offered is not taken for something else.
      [`{"cost":"7654.32",${kinds}}`]: '7,654.32' };
    for (const [state, cost] of Object.entries(spoilt)) {
      await page.evaluate((text) => localStorage.setItem(Object.keys(localStorage)[0], text), state);
      await page.reload();
      assert.deepEqual(await boxes('cost', 'term', 'deposit', 'residual'), [cost, '36', '', ''], state);
      assert.match(await enter(page, { cost: '5000' }), /^\u00a3\d/, state);
    }
    await page.click('#again');
    await page.reload();
    assert.deepEqual(await boxes('cost'), ['']);
  });
});

test('values with markup are shown as they are and never run, and no yield or commission can be read', () => {
  const script = '"><img src=x onerror=alert(1)>';
  const prefs = { AliasCalcName: '<script>alert(1)</script>', AliasCapEquip: '<img src=x onerror=a()>',
    OrgCompanyName: script, AliasVat: '</title>"&amp;', OrgEmail: `${script}@x`, OrgWebAddress: 'javascript:alert(1)' };
  const name = `O'Neill & "Sons" ${script}`;
  const card = { CompanyName: name, AdditionalPremiumMsg: script, www: 'javascript:a()', Yield4: 11.137, Com4: 4.319 };
  const text = '<script>parent.alert(1)</script><p onclick="alert(1)" id="p">|Supplier Company Name|</p><FORMEND>';
  return withCalculator({ prefs, card, pages: { "O'Neill & Sons; `x`": text } }, async (page) => {
    await enter(page, { cost: '3000' });
    const texts = ['name', 'supplier', 'premium-label', 'cost-label'].map((id) => textOf(page, id));
    assert.deepEqual(await Promise.all(texts), [prefs.AliasCalcName, name, script, `${prefs.AliasCapEquip} cost`]);
    assert.equal(await page.locator('a[href^="javascript" i]').count(), 0);
    await page.click('#form-list button');
    const frame = page.frameLocator('iframe');
    await frame.locator('#p').click();
    assert.equal(await frame.locator('#p').innerText(), name.replace("'", '`'));
    assert.equal(await frame.locator('input[name="Supplier Name"]').inputValue(), name);
    const kept = await page.evaluate(() => JSON.stringify(localStorage) + JSON.stringify(window.calcData || ''));
    const all = kept + await page.content() + await frame.locator(':root').innerHTML();
    assert.doesNotMatch(all, /11\.13|4\.31|129\.57/);
  });
});

// The delivered palette; one that could not be read as it is, with the longest words and amounts; both where the
// desktop is dark.
const word = 'W'.repeat(25);
const loud = { CalcBackColour: 0x00ffff, CaptionColour: 0x40ffff, InputBackColour: 0xff0000, InputTextColour: 0xff2020,
  BorderColour: 0x80ffff, OrgCaptionColour: 0x00e0ff, PageBackColour: 0x0000ff, AliasDeposit: word, AliasResidual: word,
  AliasMaint: word, AliasCapEquip: word, AliasVat: word, AliasCalcName: word, CurrencySymbol: 'CHFX',
  MaxCapitalCost: 99999999, OrgCompanyName: 'M'.repeat(30), OrgEmail: `${'m'.repeat(46)}@x.y` };
const looks = [
  ['delivered', { light: /246, 248, 251/, dark: /\([1-3]?\d,/ }, {}, { cost: '20000', deposit: '500' }],
  ['loud', { light: /255, 0, 0/, dark: /255, 0, 0/ },
    { prefs: loud, card: { CompanyName: 'M'.repeat(50), AdditionalPremiumMsg: word } },
    { cost: '99999999', deposit: '1000000' }],
];
for (const [palette, papers, changes, typed] of looks) {
  for (const colorScheme of ['light', 'dark']) {
    test(`${palette} colours, ${colorScheme} desktop: axe finds nothing, telephone and printed page are enough`, () =>
      withCalculator(changes, async (page) => {
        await page.evaluate(() => {
          window.moved = 0;
          const add = (list) => list.getEntries().forEach((entry) => { window.moved += entry.hadRecentInput ? 0 : entry.value; });
          new PerformanceObserver(add).observe({ type: 'layout-shift', buffered: true });
        });
        await page.waitForLoadState();
        assert.equal(await page.evaluate(() => new Promise((done) => { requestAnimationFrame(() => setTimeout(() => done(window.moved), 100)); })), 0);
        const colour = await page.evaluate(() => getComputedStyle(document.documentElement).backgroundColor);
        assert.match(colour, papers[colorScheme]);
        await enter(page, { ...typed, residual: '10', maintenance: '99999' });
        await assertAccessible(page, 'figures');
        const pdf = (await page.pdf({ format: 'A4' })).toString('latin1');
        assert.equal(pdf.match(/\/Type\s*\/Page\b/g).length, 1);
        const printed = async (...ids) => {
          await page.emulateMedia({ media: 'print' });
          const seen = await Promise.all(ids.map((id) => page.isVisible(`#${id}`)));
          await page.emulateMedia({ media: 'screen' });
          return seen;
        };
        assert.deepEqual(await printed('made', 'figure', 'supplier-contact', 'inputs'), [true, true, true, false]);
        await page.setViewportSize({ width: 360, height: 740 });
        await assertAccessible(page, 'telephone');
        if (palette === 'delivered') await assertNothingSpilt(page, 'telephone');
        await enter(page, { cost: '1' });
        await assertAccessible(page, 'an error');
        await page.click('text=Your Quotation');
        await page.frameLocator('iframe').locator('h1').waitFor();
        await assertAccessible(page, 'a form');
        assert.deepEqual(await printed('form-place', 'form-title', 'name', 'made'), [true, false, false, false]);
      }, { colorScheme }));
  }
}

test('the page is plain ASCII with each value filled in at one place, and what travels is small', (t) => {
  const text = readFileSync(join(delivered, 'CalcTemplate.html'), 'latin1');
  assert.match(text, /^[\n\x20-\x7e]*$/);
  for (const name of ['ColourBackGround', 'CALCULATORNAME', 'LEASEORGEMAIL', 'PICBACKGROUND', 'HEADERPIC', 'CLASSID',
    'CUSTREF', 'ASPTAGS']) assert.equal(text.match(new RegExp(`\\|${name}\\|`, 'gi'))?.length, 1, name);
  const folder = publish();
  const files = readdirSync(folder).filter((name) => !/^(logo|background|calc_test|setup)\./i.test(name));
  const total = files.reduce((sum, name) => sum + statSync(join(folder, name)).size, 0);
  t.diagnostic(`${total} bytes`);
  assert.ok(total < 120 * 1024, `${total} bytes`);
});
