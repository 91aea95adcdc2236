// Debian's browsers without windows, and what the tests do with a page.
import assert from 'node:assert/strict';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';
import axe from 'axe-core';
import { chromium, firefox } from 'playwright-core';

const launchers = {
  chromium: () => chromium.launch({ executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    args: ['--disable-gpu', '--disable-quic', '--disable-sync'] }),
  firefox: () => firefox.launch({ executablePath: process.env.FIREFOX || '/usr/bin/firefox-esr',
    channel: 'moz-firefox' }),
};
const launched = {};
export const closeBrowsers = () =>
  Promise.all(Object.values(launched).map(async (launching) => (await launching).close()));

// Runs `body` with an address opened in a profile of its own; no error may come up on the way.
export async function withPage(address, body, { browser = 'chromium', ...options } = {}) {
  launched[browser] ??= launchers[browser]();
  const context = await (await launched[browser]).newContext({ viewport: { width: 1280, height: 900 }, ...options });
  const page = await context.newPage();
  const problems = [];
  page.on('pageerror', (error) => problems.push(String(error)));
  page.on('dialog', (dialog) => { problems.push(`dialog: ${dialog.message()}`); dialog.dismiss(); });
  await page.goto(address);
  await body(page, problems);
  assert.deepEqual(problems, []);
  await context.close();
}
export const addressOf = (folder, name = 'calc.html') => pathToFileURL(join(folder, name)).href;

// What stands there, as a reader sees it.
export const textOf = (page, id) => page.locator(`#${id}`).innerText();

// Fills boxes and ticks what is `true`, by id, and chooses radio buttons, by name, in that order; returns the figure.
export async function enter(page, entries) {
  for (const [name, value] of Object.entries(entries)) {
    if (value === true) await page.check(`#${name}`);
    else if (/^(find|interval|.*Mode)$/.test(name)) await page.check(`input[name="${name}"][value="${value}"]`);
    else await page.fill(`#${name}`, value);
  }
  return textOf(page, 'figure');
}

// The form pages are the organisation's own: they are not looked into.
export async function assertAccessible(page, place) {
  await page.evaluate(axe.source);
  const runOnly = ['wcag2a', 'wcag2aa', 'wcag21a', 'wcag21aa', 'wcag22aa', 'best-practice'];
  const { violations } = await page.evaluate((options) => window.axe.run(options), { runOnly, iframes: false });
  assert.deepEqual(violations.map((v) => `${place}: ${v.id} ${v.nodes.map((n) => n.html).join(' ')}`), []);
  const width = await page.evaluate(() => document.documentElement.scrollWidth);
  assert.ok(width <= page.viewportSize().width, `${place} is ${width} wide`);
}
