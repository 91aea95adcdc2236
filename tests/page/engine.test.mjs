// The page's scripts against the program, without a browser: the same money, the same texts, the same live pages.
import assert from 'node:assert/strict';
import { readFileSync, readdirSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { test } from 'node:test';
import vm from 'node:vm';
import {
  installed, newFolder, preferences, publish, record, runProgram, scriptOf, supplier } from './support/folder.mjs';
import { generator, priceInProgram, runOnRows } from './support/quotes.mjs';

const LeaseEngine = vm.runInThisContext(`${scriptOf('engine')}; LeaseEngine`);
const LeaseForms = vm.runInThisContext(`${scriptOf('forms')}; LeaseForms`);
const SEED = 20240517;
const QUOTES = 26400;
const CARDS = 12;
const MONEY = ['CapitalCost', 'DepositValue', 'ResidualValue', 'Maintenance', 'Payment'];
const RESULTS = ['CapitalCost', 'DepositValue', 'ResidualValue', 'Payment', 'NetCapital', 'PaymentIncTax',
  'DepositIncTax', 'ResidualIncTax'];

function randomCard(random) {
  const bounds = [1, 2, 3, 4].map(() => Number(random.decimal(500, 120000, random.oneOf([0, 2, 4]))));
  if (random.one(0.85)) bounds.sort((a, b) => b - a);
  const card = { AdditionalPremiumYield: Number(random.decimal(0, 4, 3)) };
  card.AdditionalPremiumMin = random.decimal(0, 60000, 2);
  bounds.forEach((bound, i) => { card[`RangeEquipFROM${i}`] = String(bound); });
  for (let i = 0; i < 5; ++i) {
    card[`Yield${i}`] = random.one(0.1) ? 0 : Number(random.decimal(0, 24, 3));
    card[`Com${i}`] = random.one(0.2) ? 0 : Number(random.decimal(0, 9, 3));
  }
  return card;
}

function randomQuote(random) {
  const cost = Number(random.decimal(1, random.oneOf([3000, 60000, 250000, 20000000]), random.oneOf([0, 2, 4])));
  const reverse = random.one(0.4);
  const depositMode = random.whole(0, 2);
  const payments = random.whole(1, random.oneOf([12, 60, 200]));
  const byValue = random.one(0.3);
  return {
    Mode: reverse ? 2 : 0, CapitalCost: reverse ? 0 : cost, DepositMode: depositMode,
    DepositValue: depositMode === 0 && random.one(0.6) ? (cost * random.whole(0, 60) / 100).toFixed(2) : 0,
    DepositPercent: depositMode === 1 ? random.decimal(0, 60, 2) : 0,
    AdvancedPayments: depositMode === 2 ? random.whole(0, Math.min(12, payments)) : 0,
    NumberOfPayments: payments, Quarterly: random.whole(0, 1),
    ResidualValue: byValue ? random.oneOf([0, (cost * random.whole(0, 30) / 100).toFixed(2)]) : 0,
    ResidualPercent: byValue ? 0 : random.oneOf([0, random.decimal(0, 40, 2)]),
    Maintenance: random.one(0.3) ? random.decimal(0, 120, 2) : 0, ApplyPremium: random.whole(0, 1),
    Payment: reverse ? random.decimal(0, cost / 20 + 1, 2) : 0,
  };
}

// A row of the program's tables as a quote of the page.
const ownName = (name) => name[0].toLowerCase() + name.slice(1);
function quoteOf(row) {
  const quote = LeaseEngine.newQuote();
  for (const [name, value] of Object.entries(row)) {
    if (MONEY.includes(name)) quote[ownName(name)] = LeaseEngine.moneyFromText(String(value));
    else if (/Percent$/.test(name)) quote[ownName(name)] = Math.fround(value);
    else quote[ownName(name)] = /^(Quarterly|ApplyPremium)$/.test(name) ? value === 1 : value;
  }
  return quote;
}

// The quote that the row comes to, null where it cannot be priced.
function priced(row, card, taxRate) {
  const quote = quoteOf(row), backwards = row.Mode === 2;
  if (quote.advancedPayments >= quote.numberOfPayments || (backwards && !(quote.payment > 0))) return null;
  LeaseEngine[backwards ? 'findCapitalCost' : 'calculatePayment'](quote, card, taxRate);
  return (backwards ? quote.capitalCost > 0 && quote.netCapital !== 0 : quote.payment !== 0 || quote.netCapital !== 0) ? quote : null;
}
const inPounds = (pence) => (pence / 100).toFixed(2);
function sameLines(own, told, last) {
  const others = told.map((row) => Object.values(row).join());
  assert.deepEqual([others.length, last in told[0]], [own.length, true]);
  own.forEach((line, i) => assert.equal(line, others[i]));
}

test(`${QUOTES} random quotes, their schedules and other terms on ${CARDS} rate cards agree with the program to the fourth decimal`, () => {
  const random = generator(SEED);
  let compared = 0, found = 0, scheduled = 0, varied = 0;
  for (let i = 0; i < CARDS; ++i) {
    const general = record({ ...preferences, TaxRate: random.oneOf([0, 17.5, 20, 7.25]) });
    const settings = record(randomCard(random));
    const card = LeaseEngine.decodeSettings(readFileSync(settings));
    const { TaxRate } = LeaseEngine.decodePreferences(readFileSync(general));
    const rows = Array.from({ length: QUOTES / CARDS }, () => randomQuote(random));
    priceInProgram(rows, general, settings).forEach((program, at) => {
      const page = quoteOf(rows[at]), told = JSON.stringify(rows[at]);
      LeaseEngine[page.mode === 2 ? 'findCapitalCost' : 'calculatePayment'](page, card, TaxRate);
      for (const name of RESULTS) {
        assert.equal(page[ownName(name)], LeaseEngine.moneyFromText(program[name]), `${name} of ${told}`);
      }
      assert.equal(page.residualPercent, Math.fround(program.ResidualPercent), `ResidualPercent of ${told}`);
      compared += 1;
      if (page.mode === 2 && page.capitalCost > 0) found += 1;
    });
    const at = (row, term) => priced({ ...row, NumberOfPayments: term }, card, TaxRate);
    const due = rows.filter((row) => at(row, row.NumberOfPayments)), start = random.oneOf(['2024-01-31', '2023-11-30', '2026-02-28']);
    const lines = due.flatMap((row, n) => LeaseEngine.scheduleOf(at(row, row.NumberOfPayments), new Date(start)).map((line) =>
      [n + 1, line.number, line.date.toISOString().slice(0, 10), line.kind, ...[line.amount, line.tax, line.withTax].map(inPounds)].join()));
    sameLines(lines, runOnRows('schedule', due, general, settings, '--start', start), 'AmountIncTax');
    const terms = [16, 25, 48, 120], variable = rows.filter((row) => terms.every((term) => at(row, term)));
    sameLines(variable.flatMap((row, n) => terms.map((term) => {
      const quote = at(row, term), totals = LeaseEngine.totalsOf(quote);
      const pence = [LeaseEngine.hundredths(quote.payment), LeaseEngine.hundredths(quote.paymentIncTax), totals.amount, totals.withTax];
      return [n + 1, term, ...pence.map(inPounds)].join();
    })), runOnRows('compare', variable, general, settings, '--terms', terms.join()), 'TotalIncTax');
    scheduled += due.length;
    varied += variable.length;
  }
  assert.equal(compared, QUOTES);
  assert.ok(found > QUOTES / 4, `only ${found} reverse quotes found a capital cost`);
  assert.ok(scheduled >= 20000 && varied >= 20000, `only ${scheduled} schedules and ${varied} comparisons`);
});

// The amount, and what it comes to in ten-thousandths: halves to even, nothing lost on the way.
test('typed amounts become money exactly, and what is not exact is known', () => {
  const cases = [['0', 0], ['12345.67', 123456700], ['.5', 5000], ['0.00005', 0], ['0.00015', 2], ['0.000050001', 1],
    ['99999999.9999', 999999999999], ['-3.1', -31000], ['', null], ['.', null], ['1e5', null], ['1,000', null]];
  for (const [text, units] of cases) assert.equal(LeaseEngine.moneyFromText(text), units, text);
  const isExact = (numberOfPayments, paymentIncTax) => LeaseEngine.isExact({ ...LeaseEngine.newQuote(), numberOfPayments, paymentIncTax });
  assert.deepEqual([isExact(1000, 1e14 - 100), isExact(1000, 1e14), isExact(1, 2 ** 53)], [true, false, false]);
});

// The table is the program's as well (tests/publish/LivePageTest.cpp), so that both fill markers alike.
test('markers of the shared quotes', () => {
  const rows = readFileSync(new URL('../publish/live-quotes.jsonl', import.meta.url), 'utf8').trim().split('\n');
  const blankCard = LeaseEngine.decodeSettings(Buffer.alloc(555));
  let markers = 0;
  for (const row of rows.map((line) => JSON.parse(line))) {
    const settings = { ...blankCard, AdditionalPremiumMsg: row.AdditionalPremiumMsg || '' };
    const values = { quote: quoteOf(row), settings, preferences: { CurrencySymbol: row.CurrencySymbol || '$' } };
    for (const name of Object.keys(row).filter((key) => key.startsWith('Calculator '))) {
      const text = LeaseForms.compose(`|${name.toLowerCase()}|`, values, (value) => value);
      assert.equal(text, row[name], `${name}, ${row.Case}`);
      markers += 1;
    }
  }
  assert.ok(markers > 30, `only ${markers} markers`);
});

// The program previews a page with the first quote of its window: nothing typed, twelve months.
test('page and program compose the same live page, with the picture only where its mark is as written', () => {
  const calculator = publish({ card: { CompanyName: "O'Neill" }, prefs: { AliasSupplier: 'Dealer' } });
  const file = join(newFolder(), 'page.html');
  const settings = LeaseEngine.decodeSettings(readFileSync(join(calculator, 'Supplier.dat')));
  const prefs = LeaseEngine.decodePreferences(readFileSync(join(calculator, 'general.dat')));
  const quote = Object.assign(LeaseEngine.newQuote(), { numberOfPayments: 12 });
  const composed = (text, logo = '', ShowHeaderLogo = true) =>
    LeaseForms.compose(text, { preferences: { ...prefs, ShowHeaderLogo }, settings, quote, logo }, (value) => value);
  const database = join(installed, 'database', 'Forms');
  const samples = readdirSync(database).map((name) => readFileSync(join(database, name), 'latin1'));
  const own = ['a<formstart>|supplier TOWN| |Supplier Company Name| |Other|<FormEnd>c', '<form action="own"><FORMEND>'];
  for (const text of [...samples.map((sample) => sample.replaceAll('|HEADERPIC|', '')), ...own]) {
    writeFileSync(file, text, 'latin1');
    const live = runProgram(['live', '--supplier', supplier.id, file], { appFolder: dirname(calculator) }).trim();
    const lines = [composed(text), readFileSync(live, 'latin1')].map((page) => page.trim().split(/\r?\n/));
    assert.deepEqual(lines[0], lines[1]);
  }
  const picture = composed('|headerpic||HEADERPIC|', 'logo.a&b "#c"');
  assert.equal(picture, '|headerpic|<img src="logo.a%26b%20%22%23c%22"><br>');
  assert.equal(composed('|HEADERPIC|', 'logo.GIF', false), '<BR>');
});
