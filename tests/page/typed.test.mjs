// What is typed into the page in both browsers, beside what the program makes of the same quotes.
import assert from 'node:assert/strict';
import { join } from 'node:path';
import { after, test } from 'node:test';
import { addressOf, closeBrowsers, withPage } from './support/browser.mjs';
import { publish } from './support/folder.mjs';
import { generator, runOnRows } from './support/quotes.mjs';

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
const rowOf = (request) => ({
  Mode: 0, CapitalCost: request.cost, DepositMode: request.depositMode, DepositValue: request.depositMode === '0' ? request.deposit : 0,
  DepositPercent: request.depositMode === '1' ? request.deposit : 0, AdvancedPayments: request.depositMode === '2' ? request.deposit : 0,
  NumberOfPayments: request.term, Quarterly: isQuarterly(request) ? 1 : 0, ResidualValue: request.residualMode === '0' ? request.residual : 0,
  ResidualPercent: request.residualMode === '1' ? request.residual : 0, Maintenance: request.maintenance || 0, ApplyPremium: request.premium ? 1 : 0,
});
const money = (pounds) => `\u00a3${Number(pounds).toLocaleString('en-GB', { minimumFractionDigits: 2 })}`;
const isQuarterly = (request) => request.interval === 'quarterly';

// What the page shall show of each request, of what the program writes.
function expectedOf() {
  const run = (command, list, ...options) =>
    runOnRows(command, list.map(rowOf), join(folder, 'general.dat'), join(folder, 'Supplier.dat'), ...options);
  const expected = new Map();
  for (const quarterly of [true, false]) {
    const own = requests.filter((request) => isQuarterly(request) === quarterly), unit = quarterly ? 'quarters' : 'months';
    const years = [1, 2, 3, 4, 5].map((year) => year * (quarterly ? 4 : 12)), terms = years.concat(own.map((request) => Number(request.term)));
    const all = [...new Set(terms)].sort((a, b) => a - b), rows = run('compare', own, '--terms', all.join());
    own.forEach((request) => {
      const variants = rows.splice(0, all.length).filter((row, i) => years.includes(all[i]) || String(all[i]) === request.term);
      const now = variants.find((row) => row.NumberOfPayments === request.term);
      expected.set(request, [money(now.Payment), `${money(now.PaymentIncTax)} with VAT`,
        `Total payable|${money(now.Total)}|${money(now.TotalIncTax)}`, `|Total payable|${money(now.Total)}|${money(now.TotalIncTax - now.Total)}|${money(now.TotalIncTax)}`,
        ...variants.map((row) => `${row.NumberOfPayments} ${unit}|${money(row.Payment)}|${money(row.PaymentIncTax)}|${money(row.TotalIncTax)}`)]);
    });
  }
  for (const line of run('schedule', requests)) {
    expected.get(requests[line.Row - 1]).push([line.Number, ...[line.Amount, line.Tax, line.AmountIncTax].map(money)].join('|'));
  }
  return expected;
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
    return [el('figure').textContent, el('with-tax').textContent, ...cells('plan-total'), ...cells('schedule-total'), ...cells('terms'),
      ...cells('schedule').map((line) => line.replace(/\|[^|]*/, ''))];
  });
}

let expected;
for (const browser of ['chromium', 'firefox']) {
  test(`${browser}: ${QUOTES} typed quotes show the program's payments, totals, terms and schedules`, { timeout: 180000 }, () => {
    expected ??= expectedOf();
    return withPage(addressOf(folder), async (page) => {
      const told = await page.evaluate(typeAll, requests);
      requests.forEach((request, i) => assert.deepEqual(told[i], expected.get(request), JSON.stringify(request)));
    }, { browser });
  });
}
