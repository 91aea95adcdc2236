// The page's arithmetic against the program's, on random quotes.
import assert from 'node:assert/strict';
import { writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { test } from 'node:test';
import vm from 'node:vm';
import { newFolder, preferences, record, runProgram, scriptOf, supplier } from './support/folder.mjs';

const LeaseEngine = vm.runInThisContext(`${scriptOf('engine')}; LeaseEngine`);
const LeaseForms = vm.runInThisContext(`${scriptOf('forms')}; LeaseForms`);
const SEED = 20240517;
const QUOTES = 24000;
const CARDS = 12;

// Lehmer's generator: the same quotes in every run.
function generator(seed) {
  let state = seed;
  const next = () => (state = (state * 48271) % 2147483647) / 2147483647;
  return {
    whole: (low, high) => low + Math.floor(next() * (high - low + 1)),
    decimal: (low, high, places) => (low + next() * (high - low)).toFixed(places),
    oneOf: (list) => list[Math.floor(next() * list.length)],
    one: (chance) => next() < chance,
  };
}

function randomCard(random) {
  const bounds = [1, 2, 3, 4].map(() => Number(random.decimal(500, 120000, random.oneOf([0, 2, 4]))));
  if (random.one(0.85)) bounds.sort((a, b) => b - a);
  const card = { ...supplier, AdditionalPremiumYield: Number(random.decimal(0, 4, 3)), AdditionalPremiumMin: random.decimal(0, 60000, 2) };
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
    Mode: reverse ? 2 : 0,
    CapitalCost: reverse ? 0 : cost,
    DepositMode: depositMode,
    DepositValue: depositMode === 0 && random.one(0.6) ? (cost * random.whole(0, 60) / 100).toFixed(2) : 0,
    DepositPercent: depositMode === 1 ? random.decimal(0, 60, 2) : 0,
    AdvancedPayments: depositMode === 2 ? random.whole(0, Math.min(12, payments)) : 0,
    NumberOfPayments: payments,
    Quarterly: random.whole(0, 1),
    ResidualValue: byValue ? random.oneOf([0, (cost * random.whole(0, 30) / 100).toFixed(2)]) : 0,
    ResidualPercent: byValue ? 0 : random.oneOf([0, random.decimal(0, 40, 2)]),
    Maintenance: random.one(0.3) ? random.decimal(0, 120, 2) : 0,
    ApplyPremium: random.whole(0, 1),
    Payment: reverse ? random.decimal(0, cost / 20 + 1, 2) : 0,
  };
}

function priceInPage(row, card, taxRate) {
  const money = (value) => LeaseEngine.moneyFromText(String(value));
  const quote = Object.assign(LeaseEngine.newQuote(), {
    capitalCost: money(row.CapitalCost), depositMode: row.DepositMode, depositValue: money(row.DepositValue),
    depositPercent: Math.fround(row.DepositPercent), advancedPayments: row.AdvancedPayments,
    numberOfPayments: row.NumberOfPayments, quarterly: row.Quarterly === 1, residualValue: money(row.ResidualValue),
    residualPercent: Math.fround(row.ResidualPercent), maintenance: money(row.Maintenance),
    applyPremium: row.ApplyPremium === 1, payment: money(row.Payment),
  });
  if (row.Mode === 2) LeaseEngine.findCapitalCost(quote, card, taxRate);
  else LeaseEngine.calculatePayment(quote, card, taxRate);
  return quote;
}

const RESULTS = {
  CapitalCost: 'capitalCost', DepositValue: 'depositValue', ResidualValue: 'residualValue', Payment: 'payment',
  PaymentIncTax: 'paymentIncTax', NetCapital: 'netCapital', DepositIncTax: 'depositIncTax', ResidualIncTax: 'residualIncTax',
};

function priceInProgram(rows, general, card) {
  const folder = newFolder();
  const names = Object.keys(rows[0]);
  writeFileSync(join(folder, 'General.dat'), general);
  writeFileSync(join(folder, 'Supplier.dat'), card);
  const input = [names.join(','), ...rows.map((row) => names.map((name) => row[name]).join(','))].join('\n') + '\n';
  const lines = runProgram(
    ['quote', '--supplier', join(folder, 'Supplier.dat'), '--general', join(folder, 'General.dat'), '-'], input).trim().split('\n');
  const header = lines.shift().split(',');
  return lines.map((line) => Object.fromEntries(line.split(',').map((cell, i) => [header[i], cell])));
}

test(`${QUOTES} random quotes on ${CARDS} rate cards agree with the program to the fourth decimal`, () => {
  const random = generator(SEED);
  let compared = 0, found = 0;
  for (let i = 0; i < CARDS; ++i) {
    const general = record({ ...preferences, TaxRate: random.oneOf([0, 17.5, 20, 7.25]) });
    const settings = record(randomCard(random));
    const card = LeaseEngine.decodeSettings(settings);
    const { TaxRate } = LeaseEngine.decodePreferences(general);
    const rows = Array.from({ length: QUOTES / CARDS }, () => randomQuote(random));
    priceInProgram(rows, general, settings).forEach((program, at) => {
      const page = priceInPage(rows[at], card, TaxRate);
      for (const [name, own] of Object.entries(RESULTS)) {
        assert.equal(page[own], LeaseEngine.moneyFromText(program[name]), `${name} of ${JSON.stringify(rows[at])}`);
      }
      // The shortest decimal of the same float.
      assert.equal(String(LeaseForms.shortest(page.residualPercent)), program.ResidualPercent, `ResidualPercent of ${JSON.stringify(rows[at])}`);
      compared += 1;
      if (rows[at].Mode === 2 && page.capitalCost > 0) found += 1;
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
