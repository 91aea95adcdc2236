// page-load.mjs FOLDER: how long the calculator in the folder takes from the start of its opening from disk until it is
// painted with its boxes ready, and until it is loaded whole: the fastest and the middle of 30 openings, each in a profile
// of its own, after one that warms the browser; beside them a page of one letter. Needs the page's test
// tools (tests/page/run installs them).
import { writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { addressOf, closeBrowsers, withPage } from '../tests/page/support/browser.mjs';
import { newFolder } from '../tests/page/support/folder.mjs';

const folder = newFolder(), empty = addressOf(folder);
writeFileSync(join(folder, 'calc.html'), '<!DOCTYPE html><p>x</p>');
for (const browser of ['chromium', 'firefox']) {
  for (const [name, address] of [['calculator', addressOf(process.argv[2])], ['one letter', empty]]) {
    const painted = [], loaded = [];
    for (let i = 0; i < 31; ++i) await withPage('about:blank', (page) => open(page, address, painted, loaded), { browser });
    const told = (times) => times.slice(1).sort((a, b) => a - b).filter((time, i) => i === 0 || i === 15).map(Math.round).join(', ');
    console.log(`${browser}, ${name}: painted after ${told(painted)} ms, loaded after ${told(loaded)} ms`);
  }
}
await closeBrowsers();

async function open(page, address, painted, loaded) {
  await page.goto(address);
  const [paint, load] = await page.evaluate(() => new Promise((done) => {
    const told = () => performance.getEntriesByName('first-contentful-paint')[0];
    const look = () => (told() ? done([told().startTime, performance.timing.loadEventEnd - performance.timing.navigationStart]) : setTimeout(look, 10));
    look();
  }));
  if (address !== empty && await page.isHidden('#calculator')) throw new Error('no calculator');
  painted.push(paint);
  loaded.push(load);
}
