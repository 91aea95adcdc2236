// link-of.mjs ADDRESS COST TERM BROWSER: opens the link as a telephone does, taps what opens the calculator, and prints the
// payment that it shows.
import assert from 'node:assert/strict';
import { assertAccessible, closeBrowsers, enter, withPage } from './support/browser.mjs';

const [address, cost, term, browser] = process.argv.slice(2);
await withPage(address, async (page) => {
  await assertAccessible(page, 'the link\'s page');
  const refused = [];
  page.on('console', (message) => {
    if (/Refused to execute|script-src/.test(message.text())) refused.push(message.text());
  });
  await page.click('a.main');
  console.log(await enter(page, { term, cost }));
  // Somebody else's script does not run.
  assert.deepEqual(refused, []);
  await page.evaluate(() => {
    const script = document.createElement('script');
    script.textContent = 'window.foreign = true';
    document.body.append(script);
  });
  assert.equal(await page.evaluate(() => window.foreign), undefined);
}, { browser, ignoreHTTPSErrors: true, viewport: { width: 360, height: 740 } });
await closeBrowsers();
