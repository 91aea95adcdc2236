// Debian's browsers without windows, and what the tests do with a page.
import assert from 'node:assert/strict';
import { existsSync, mkdirSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { join } from 'node:path';
import { setTimeout as pause } from 'node:timers/promises';
import { pathToFileURL } from 'node:url';
import axe from 'axe-core';
import { chromium, firefox } from 'playwright-core';
import { newFolder } from './folder.mjs';

// A desktop whose mail program writes down the address that it is opened with: Chromium calls it by the name of the
// desktop's own script, Firefox asks the desktop for it.
const desktop = newFolder(), opened = join(desktop, 'opened'), mailer = join(desktop, 'xdg-email');
const path = `${desktop}:${process.env.PATH}`;
const env = { ...process.env, PATH: path, XDG_DATA_HOME: desktop, XDG_CONFIG_HOME: desktop };
mkdirSync(join(desktop, 'applications'));
const script = `#!/bin/sh\nprintf '%s\\n' "$@" >${opened}.new && mv ${opened}.new ${opened}\n`;
writeFileSync(mailer, script, { mode: 0o755 });
writeFileSync(join(desktop, 'mimeapps.list'), '[Default Applications]\nx-scheme-handler/mailto=mail.desktop\n');
writeFileSync(join(desktop, 'applications', 'mail.desktop'),
  `[Desktop Entry]\nType=Application\nName=Mail\nExec=${mailer} %u\nMimeType=x-scheme-handler/mailto;\n`);

const launchers = {
  chromium: () => chromium.launch({ executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    args: ['--disable-gpu', '--disable-quic', '--disable-sync'], env }),
  firefox: () => firefox.launch({ executablePath: process.env.FIREFOX || '/usr/bin/firefox-esr',
    channel: 'moz-firefox', env,
    firefoxUserPrefs: { 'security.external_protocol_requires_permission': false,
      'network.protocol-handler.warn-external.mailto': false } }),
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

// The rows of a table's part, with | between the cells; all that is folded away, opened.
export const cells = (page, body) => page.locator(`#${body}`).evaluate((rows) =>
  [...rows.rows].map((row) => [...row.cells].map((cell) => cell.textContent).join('|')));
export const openAll = (page) => page.evaluate(() => document.querySelectorAll('details').forEach((part) => { part.open = true; }));

// What the page copies is then left to be copied by hand, so that every browser can.
export const withoutClipboard = (page) => page.evaluate(() => {
  Object.defineProperty(navigator, 'clipboard', { value: undefined, configurable: true });
  document.execCommand = () => false;
});

// Fills boxes and ticks what is `true`, by id, and chooses radio buttons, by name, in that order; returns the figure.
export async function enter(page, entries) {
  for (const [name, value] of Object.entries(entries)) {
    if (value === true) await page.check(`#${name}`);
    else if (/^(find|interval|.*Mode)$/.test(name)) await page.check(`input[name="${name}"][value="${value}"]`);
    else await page.fill(`#${name}`, value);
  }
  return textOf(page, 'figure');
}

// The e-mail that the browser opens at a click.
export async function mailOpenedBy(button) {
  await button.click();
  for (let waits = 0; waits < 500 && !existsSync(opened); ++waits) await pause(20);
  const address = readFileSync(opened, 'utf8').trim();
  rmSync(opened);
  const [, to, query] = /^mailto:([^?]*)\?(\S*)$/.exec(address);
  const fields = query.split('&').map((field) => field.split('=').map(decodeURIComponent));
  return { address, to: decodeURIComponent(to), ...Object.fromEntries(fields) };
}

// No word is parted but an address, and nothing stands beyond its cell or button.
export async function assertNothingSpilt(page, place) {
  const spilt = await page.evaluate(() => {
    const found = [], range = document.createRange(), walker = document.createTreeWalker(document.getElementById('sheet'), NodeFilter.SHOW_TEXT);
    while (walker.nextNode()) {
      const node = walker.currentNode, box = node.parentElement.closest('td, th, dt, dd, button, p, label, legend, summary');
      if (!box?.checkVisibility() || box.closest('.unseen') || node.parentElement.href?.startsWith('mailto')) continue;
      range.selectNodeContents(node);
      const text = range.getBoundingClientRect(), around = box.getBoundingClientRect();
      if (text.left < around.left - 1 || text.right > around.right + 1) found.push(node.data);
      for (const { index, 0: word } of node.data.matchAll(/[^\s-]+/g)) {
        range.setStart(node, index);
        range.setEnd(node, index + word.length);
        if (new Set(Array.from(range.getClientRects(), (rect) => Math.round(rect.top))).size > 1) found.push(word);
      }
    }
    return found;
  });
  assert.deepEqual(spilt, [], place);
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
