// Firefox over its remote control protocol (WebDriver BiDi): just what one look through the page takes.
import { spawn } from 'node:child_process';
import { mkdtempSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import WebSocket from 'ws';

export const firefox = process.env.FIREFOX || '/usr/bin/firefox-esr';

function start(profile) {
  const browser = spawn(firefox, ['--headless', '--no-remote', '--profile', profile, '--remote-debugging-port', '0'], {
    env: { ...process.env, HOME: profile }, stdio: ['ignore', 'ignore', 'pipe'] });
  const address = new Promise((found, failed) => {
    let text = '';
    browser.stderr.on('data', (bytes) => {
      text += bytes;
      const line = /WebDriver BiDi listening on (ws:\S+)/.exec(text);
      if (line) found(line[1]);
    });
    browser.on('exit', () => failed(new Error(`Firefox ended: ${text}`)));
  });
  return { browser, address };
}

async function connect(address) {
  const socket = new WebSocket(`${address}/session`);
  await new Promise((ready, failed) => { socket.onopen = ready; socket.onerror = failed; });
  const waiting = new Map();
  let last = 0;
  socket.onmessage = ({ data }) => {
    const answer = JSON.parse(data);
    const { done, failed } = waiting.get(answer.id) || {};
    if (answer.type === 'success') done?.(answer.result);
    if (answer.type === 'error') failed?.(new Error(`${answer.error}: ${answer.message}`));
  };
  return (method, params = {}) => new Promise((done, failed) => {
    waiting.set(++last, { done, failed });
    socket.send(JSON.stringify({ id: last, method, params }));
  });
}

// Runs `body` with { open, reload, run, type } and ends the browser that was started.
export async function withFirefox(body) {
  const profile = mkdtempSync(join(tmpdir(), 'firefox-'));
  const { browser, address } = start(profile);
  try {
    const call = await connect(await address);
    await call('session.new', { capabilities: {} });
    const { contexts: [{ context }] } = await call('browsingContext.getTree');
    await body({
      open: (url) => call('browsingContext.navigate', { context, url, wait: 'complete' }),
      reload: () => call('browsingContext.reload', { context, wait: 'complete' }),
      run: async (expression) => {
        const { result, exceptionDetails } = await call('script.evaluate', { expression, target: { context }, awaitPromise: true });
        if (exceptionDetails) throw new Error(exceptionDetails.text);
        return result.value;
      },
      type: (text) => call('input.performActions', { context, actions: [{ type: 'key', id: 'keys',
        actions: [...text].flatMap((value) => [{ type: 'keyDown', value }, { type: 'keyUp', value }]) }] }),
    });
  } finally {
    const ended = new Promise((done) => browser.once('exit', done));
    browser.kill();
    await ended;
    rmSync(profile, { recursive: true, force: true });
  }
}
