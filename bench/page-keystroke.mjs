// page-keystroke.mjs FOLDER: how long a keystroke in a published calculator takes until everything is laid out, with other
// terms, schedule and chart open, beside laying out one changed word of the same page; forwards and backwards, at the
// shortest and the longest term. Needs the page's test tools (tests/page/run installs them).
import { addressOf, closeBrowsers, withPage } from '../tests/page/support/browser.mjs';

await withPage(addressOf(process.argv[2]), async (page) => {
  for (const find of ['payment', 'cost']) {
    for (const year of ['first', 'last']) {
      const [keystroke, word] = await page.evaluate(measure, [find, year]);
      console.log(`${find === 'cost' ? 'backwards' : 'forwards'}, ${year} term: 95 of 100 keystrokes ${keystroke.toFixed(2)} ms; ` +
        `one changed word ${word.toFixed(2)} ms; ${(keystroke / word).toFixed(1)} times`);
    }
  }
});
await closeBrowsers();

function measure([find, year]) {
  document.querySelectorAll('details').forEach((part) => { part.open = true; });
  document.querySelector(`input[name="find"][value="${find}"]`).click();
  document.querySelector(`#years button:${year}-child`).click();
  const box = document.getElementById(find === 'cost' ? 'payment' : 'cost'), heading = document.querySelector('h1');
  const least = find === 'cost' ? 900 : 20000;
  const timed = (change) => {
    const start = performance.now();
    change();
    document.body.getBoundingClientRect(); // lays out what has changed
    return performance.now() - start;
  };
  // The fastest of five: what is slower was waiting for other work of the machine.
  const most = (change) => {
    const times = [];
    for (let i = 0; i < 60; ++i) times.push(Math.min(...[0, 1, 2, 3, 4].map((more) => timed(() => change(i, more)))));
    return times.sort((a, b) => a - b)[57];
  };
  return [
    most((i, more) => {
      box.value = (least + i * 37.13 + more / 100).toFixed(2);
      box.dispatchEvent(new Event('input', { bubbles: true }));
    }),
    // So short that the browser's clock does not show one alone.
    most((i, more) => {
      for (let turn = 0; turn < 20; ++turn) {
        heading.textContent = `Word ${i}${more}${turn}`;
        document.body.getBoundingClientRect();
      }
    }) / 20,
  ];
}
