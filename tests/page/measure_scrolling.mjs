// Measures how much work a page is while it scrolls: measure_scrolling.mjs PAGE [PIXELS [FRAMES]]
//
// Scrolls the first sheet by so many pixels a frame (300), for so many frames (100), and prints the
// processor time of the page's main thread for a frame, by kind of work. Processor time does not
// depend on what else the machine does. check_pages.sh puts this file where its packages are.
import path from 'node:path';
import {launch} from './browser.mjs';

const [file, pixels = '300', frames = '100'] = process.argv.slice(2);
const browser = await launch();
const page = await browser.newPage({viewport: {width: 1200, height: 760}});
await page.goto('file://' + path.resolve(file), {timeout: 120000});
await page.waitForTimeout(500);

const session = await browser.newBrowserCDPSession();
const events = [];
session.on('Tracing.dataCollected', ({value}) => { for (const event of value) events.push(event); });
await session.send('Tracing.start', {
  traceConfig: {includedCategories: ['toplevel', 'devtools.timeline', 'blink', 'cc']},
  transferMode: 'ReportEvents',
});
await page.evaluate(([step, count]) => new Promise((resolve) => {
  const view = document.querySelector('.view');
  const next = () => {
    view.scrollTop += step;
    if (--count > 0) requestAnimationFrame(next); else resolve();
  };
  requestAnimationFrame(next);
}), [Number(pixels), Number(frames)]);
const complete = new Promise((resolve) => session.once('Tracing.tracingComplete', resolve));
await session.send('Tracing.end');
await complete;
await browser.close();

// The events of the thread that lays the page out, each before those inside it.
const threadOf = (event) => event.pid + ':' + event.tid;
const layouts = events.filter((event) => event.name === 'Layout').map(threadOf);
const main = layouts.sort((a, b) =>
  layouts.filter((item) => item === b).length - layouts.filter((item) => item === a).length)[0];
const ofPage = events.filter((event) => event.ph === 'X' && event.tdur && threadOf(event) === main)
  .sort((a, b) => a.ts - b.ts || b.dur - a.dur);

const own = new Map();
const add = (name, time) => own.set(name, (own.get(name) || 0) + time);
const open = [];
for (const event of ofPage) {
  while (open.length && open.at(-1).ts + open.at(-1).dur <= event.ts) open.pop();
  if (open.length) add(open.at(-1).name, -event.tdur);
  add(event.name, event.tdur);
  open.push(event);
}

const perFrame = (time) => (time / 1000 / Number(frames)).toFixed(2).padStart(8);
console.log('ms of processor time for a frame:');
console.log(perFrame([...own.values()].reduce((sum, time) => sum + time, 0)), 'in all');
for (const [name, time] of [...own].sort((a, b) => b[1] - a[1]).slice(0, 10)) {
  console.log(perFrame(time), name);
}
const tasks = ofPage.filter((event) => event.name === 'RunTask').map((event) => event.tdur / 1000);
console.log('longest tasks: ' + tasks.sort((a, b) => b - a).slice(0, 10).map((time) => time.toFixed(1)).join(' '));
