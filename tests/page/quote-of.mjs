// quote-of.mjs FOLDER COST TERM: the payment that the calculator in the folder shows in a browser.
import { addressOf, launch, openPage, textOf } from './support/browser.mjs';

const [folder, cost, term] = process.argv.slice(2);
const browser = await launch();
const page = await openPage(browser, addressOf(folder));
await page.fill('#term', term);
await page.fill('#cost', cost);
console.log(await textOf(page, 'figure'));
if (page.problems.length) throw new Error(page.problems.join('\n'));
await browser.close();
