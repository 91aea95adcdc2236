// quote-of.mjs FOLDER COST TERM: the payment that the calculator in the folder shows in a browser.
import { addressOf, closeBrowsers, enter, withPage } from './support/browser.mjs';

const [folder, cost, term] = process.argv.slice(2);
await withPage(addressOf(folder), async (page) => console.log(await enter(page, { term, cost })));
await closeBrowsers();
