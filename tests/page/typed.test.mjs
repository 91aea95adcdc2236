// What is typed into the page in both browsers, beside what the program makes of the same quotes.
import assert from 'node:assert/strict';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { addressOf, closeBrowsers, withPage } from './support/browser.mjs';
import { publish } from './support/folder.mjs';
import { generator, priceInProgram } from './support/quotes.mjs';

after(closeBrowsers);
const QUOTES = 500;
const folder = publish({ card: { AdditionalPremium: true, ResidualOption: true, MaintenanceOption: true, AdditionalPremiumYield: 1.75 } });
const random = generator(20261125);
const requests = Array.from({ length: QUOTES }, () => {
  const quarterly = random.one(0.3), cost = random.decimal(1000, random.oneOf([3000, 60000, 250000]), random.oneOf([0, 2]));
  const mode = random.whole(0, 2), term = random.whole(4, 20) * (quarterly ? 1 : 3), byValue = random.one(0.3);
  return {
    cost, term: String(term), interval: quarterly ? 'quarterly' : 'monthly', depositMode: String(mode), residualMode: byValue ? '0' : '1',
    deposit: mode === 0 ? (cost * random.whole(0, 49) / 100).toFixed(2) : mode === 1 ? random.decimal(0, 50, 2) : String(random.whole(1, 3)),
    residual: byValue ? (cost * random.whole(0, 29) / 100).toFixed(2) : random.decimal(0, 30, 2), maintenance: random.oneOf(['', random.decimal(0, 90, 2)]),
    premium: random.one(0.3),
  };
});
const rowOf = (request, term) => ({
  Mode: 0, CapitalCost: request.cost, DepositMode: request.depositMode, DepositValue: request.depositMode === '0' ? request.deposit : 0,
  DepositPercent: request.depositMode === '1' ? request.deposit : 0, AdvancedPayments: request.depositMode === '2' ? request.deposit : 0,
  NumberOfPayments: term, Quarterly: request.interval === 'quarterly' ? 1 : 0, ResidualValue: request.residualMode === '0' ? request.residual : 0,
  ResidualPercent: request.residualMode === '1' ? request.residual : 0, Maintenance: request.maintenance || 0, ApplyPremium: request.premium ? 1 : 0,
});
const pence = (text) => Math.round(Number(text) * 10000 / 100 + 1e-7); // of four decimals, none of them below 0
const money = (amount) => `\u00a3${(amount / 100).toLocaleString('en-GB', { minimumFractionDigits: 2 })}`;
const termsOf = (request) => [1, 2, 3, 4, 5].map((year) => year * (request.interval === 'quarterly' ? 4 : 12))
  .concat(Number(request.term)).filter((term, i, all) => all.indexOf(term) === i).sort((a, b) => a - b);

// What the page shall show of a row of the program.
function shown(row, request, term) {
  const payments = term - (request.depositMode === '2' ? Number(request.deposit) : 0);
  const sum = (deposit, payment, residual) => pence(deposit) + payments * pence(payment) + pence(residual);
  return {
    payment: money(pence(row.Payment)), withTax: money(pence(row.PaymentIncTax)), total: money(sum(row.DepositValue, row.Payment, row.ResidualValue)),
    totalWithTax: money(sum(row.DepositIncTax, row.PaymentIncTax, row.ResidualIncTax)), lines: payments + (pence(row.DepositValue) > 0) + (pence(row.ResidualValue) > 0),
  };
}
function typeAll(all) {
  const el = (id) => document.getElementById(id);
  const cells = (body) => [...el(body).rows].map((row) => [...row.cells].map((cell) => cell.textContent).join('|'));
  document.querySelectorAll('details').forEach((part) => { part.open = true; });
  return all.map((request) => {
    el('again').click();
    for (const name of ['interval', 'depositMode', 'residualMode']) document.querySelector(`input[name="${name}"][value="${request[name]}"]`).click();
    if (request.premium) el('premium').click();
    for (const id of ['term', 'deposit', 'residual', 'maintenance', 'cost']) {
      el(id).value = request[id];
      el(id).dispatchEvent(new Event('input', { bubbles: true }));
      el(id).dispatchEvent(new Event('change', { bubbles: true }));
    }
    return [el('figure').textContent, el('with-tax').textContent, ...cells('plan-total'), ...cells('schedule-total'), el('schedule').rows.length, ...cells('terms')];
  });
}

let expected;
for (const browser of ['chromium', 'firefox']) {
  test(`${browser}: ${QUOTES} typed quotes show the program's payments, totals, terms and schedules`, { timeout: 180000 }, () => {
    if (!expected) {
      const rows = requests.flatMap((request) => termsOf(request).map((term) => rowOf(request, term)));
      const priced = priceInProgram(rows, join(folder, 'general.dat'), join(folder, 'Supplier.dat'));
      expected = requests.map((request) => {
        const terms = termsOf(request).map((term) => [term, shown(priced.shift(), request, term)]);
        const now = terms.find(([term]) => term === Number(request.term))[1], unit = request.interval === 'quarterly' ? 'quarters' : 'months';
        const tax = (amount) => Math.round(Number(amount.replace(/[\u00a3,]/g, '')) * 100);
        const difference = money(tax(now.totalWithTax) - tax(now.total));
        return [now.payment, `${now.withTax} with VAT`, `Total payable|${now.total}|${now.totalWithTax}`, `|Total payable|${now.total}|${difference}|${now.totalWithTax}`, now.lines,
          ...terms.map(([term, all]) => `${term} ${unit}|${all.payment}|${all.withTax}|${all.totalWithTax}`)];
      });
    }
    return withPage(addressOf(folder), async (page) => {
      const told = await page.evaluate(typeAll, requests);
      told.forEach((one, i) => assert.deepEqual(one, expected[i], JSON.stringify(requests[i])));
      assert.equal(told.length, QUOTES);
    }, { browser });
  });
}
