// The page's scripts against the program, without a browser: the same money, the same texts, the same live pages.
import assert from 'node:assert/strict';
import { readFileSync, readdirSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { test } from 'node:test';
import vm from 'node:vm';
import {
  installed, newFolder, preferences, publish, record, runProgram, scriptOf, supplier } from './support/folder.mjs';
import { generator, priceInProgram } from './support/quotes.mjs';

const LeaseEngine = vm.runInThisContext(`${scriptOf('engine')}; LeaseEngine`);
const LeaseForms = vm.runInThisContext(`${scriptOf('forms')}; LeaseForms`);
const SEED = 20240517;
const QUOTES = 24000;
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

test(`${QUOTES} random quotes on ${CARDS} rate cards agree with the program to the fourth decimal`, () => {
  const random = generator(SEED);
  let compared = 0, found = 0;
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
      const residual = LeaseForms.shortest(page.residualPercent); // the shortest decimal of the same float
      assert.equal(String(residual), program.ResidualPercent, `ResidualPercent of ${told}`);
      const lines = LeaseEngine.scheduleOf(page, new Date('2024-01-31'));
      const sum = (name) => lines.reduce((total, line) => total + line[name], 0);
      const { amount, withTax } = LeaseEngine.totalsOf(page);
      assert.deepEqual([sum('amount'), sum('withTax'), sum('tax')], [amount, withTax, withTax - amount], told);
      compared += 1;
      if (page.mode === 2 && page.capitalCost > 0) found += 1;
    });
  }
  assert.equal(compared, QUOTES);
  assert.ok(found > QUOTES / 4, `only ${found} reverse quotes found a capital cost`);
});

// The amount, and what it comes to in ten-thousandths: halves to even, nothing lost on the way.
test('typed amounts become money exactly', () => {
  const cases = [['0', 0], ['12345.67', 123456700], ['.5', 5000], ['0.00005', 0], ['0.00015', 2], ['0.000050001', 1],
    ['99999999.9999', 999999999999], ['-3.1', -31000], ['', null], ['.', null], ['1e5', null], ['1,000', null]];
  for (const [text, units] of cases) assert.equal(LeaseEngine.moneyFromText(text), units, text);
});

test('a schedule names each day to the month\'s last, and amounts as they are shown', () => {
  const quote = (changes) => Object.assign(LeaseEngine.newQuote(), { numberOfPayments: 3, payment: 3291253, paymentIncTax: 3949504 }, changes);
  const told = (q, start) => LeaseEngine.scheduleOf(q, new Date(start)).map((line) =>
    [line.number, line.date.toISOString().slice(0, 10), line.kind, line.amount, line.tax, line.withTax].join(' '));
  assert.deepEqual(told(quote({ depositValue: 10000050, depositIncTax: 12000060, residualValue: 5000000, residualIncTax: 6000000 }), '2024-01-31'), [
    '0 2024-01-31 deposit 100001 20000 120001', '1 2024-02-29 payment 32913 6582 39495', '2 2024-03-31 payment 32913 6582 39495',
    '3 2024-04-30 payment 32913 6582 39495', '3 2024-04-30 residual 50000 10000 60000']);
  const advanced = quote({ advancedPayments: 1, depositValue: 3291253, depositIncTax: 3949504, quarterly: true });
  assert.deepEqual(told(advanced, '2022-11-30'), ['0 2022-11-30 advance 32913 6582 39495', '1 2023-02-28 payment 32913 6582 39495',
    '2 2023-05-30 payment 32913 6582 39495']);
  assert.deepEqual([1e15 - 1000, 1e15].map((pence) => LeaseEngine.isExact(quote({ numberOfPayments: 1000, payment: 0, paymentIncTax: pence / 10 }))), [true, false]);
  assert.equal(LeaseEngine.isExact(quote({ numberOfPayments: 1, paymentIncTax: 2 ** 53 })), false);
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
