// page-load.mjs FOLDER: how long the calculator in the folder takes from the start of its opening from disk until it is
// painted with its boxes ready, and until it is loaded whole; the middle of 15 openings in a profile of their own, after
// one that warms the browser. Needs the page's test tools (tests/page/run installs them).
import { addressOf, closeBrowsers, withPage } from '../tests/page/support/browser.mjs';

const middle = (times) => times.sort((a, b) => a - b)[times.length >> 1].toFixed(0);
for (const browser of ['chromium', 'firefox']) {
  const painted = [], loaded = [];
  for (let i = 0; i < 16; ++i) {
    await withPage('about:blank', async (page) => {
      await page.goto(addressOf(process.argv[2]));
      const [paint, load] = await page.evaluate(() => new Promise((done) => {
        const told = () => performance.getEntriesByName('first-contentful-paint')[0];
        const look = () => (told() ? done([told().startTime, performance.timing.loadEventEnd - performance.timing.navigationStart]) : setTimeout(look, 10));
        look();
      }));
      if (await page.isHidden('#calculator')) throw new Error('no calculator');
      if (i) painted.push(paint) && loaded.push(load);
    }, { browser });
  }
  console.log(`${browser}: painted after ${middle(painted)} ms, loaded after ${middle(loaded)} ms; at most ${Math.max(...painted).toFixed(0)} and ${Math.max(...loaded)} ms`);
}
await closeBrowsers();
