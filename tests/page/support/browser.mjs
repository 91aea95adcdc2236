// A headless browser for the tests, and what they do with a page.
import { createReadStream, existsSync } from 'node:fs';
import { createServer } from 'node:http';
import { extname, join } from 'node:path';
import { pathToFileURL } from 'node:url';
import { chromium } from 'playwright-core';

export const launch = () =>
  chromium.launch({
    executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
    args: ['--headless', '--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
      '--disable-background-networking', '--disable-component-update', '--disable-sync'],
  });

// Opens a page; what it reports as errors gathers in `problems`.
export async function openPage(context, address) {
  const page = await context.newPage();
  page.problems = [];
  page.on('pageerror', (error) => page.problems.push(String(error)));
  page.on('dialog', (dialog) => { page.problems.push(`dialog: ${dialog.message()}`); dialog.dismiss(); });
  await page.goto(address);
  return page;
}
export const addressOf = (folder, name = 'calc.html') => pathToFileURL(join(folder, name)).href;

// What stands where, as a reader sees it.
export const textOf = (page, id) => page.locator(`#${id}`).innerText();
export const choose = (page, name, value) => page.locator(`input[name="${name}"][value="${value}"]`).check();

// Serves a folder on a free port of this machine.
export async function serve(folder) {
  const types = { '.html': 'text/html; charset=windows-1252', '.txt': 'text/plain', '.GIF': 'image/gif', '.JPG': 'image/jpeg' };
  const server = createServer((request, response) => {
    const file = join(folder, decodeURIComponent(new URL(request.url, 'http://x').pathname));
    if (!existsSync(file)) return response.writeHead(404).end();
    response.writeHead(200, {
      'Content-Type': types[extname(file)] || 'application/octet-stream', 'X-Content-Type-Options': 'nosniff',
      'Last-Modified': 'Wed, 15 May 2024 10:00:00 GMT',
    });
    return createReadStream(file).pipe(response);
  });
  await new Promise((ready) => server.listen(0, '127.0.0.1', ready));
  return { address: `http://127.0.0.1:${server.address().port}/`, close: () => server.close() };
}
