// A page of cndfrmt in headless Chromium.
import {chromium} from 'playwright-core';
import path from 'node:path';
import {fileURLToPath} from 'node:url';

export const folder = path.dirname(fileURLToPath(import.meta.url));

// A browser that asks nobody for anything.
export const launch = () => chromium.launch({
  executablePath: process.env.CHROMIUM || '/usr/bin/chromium',
  args: ['--no-sandbox', '--disable-gpu', '--disable-quic', '--no-first-run',
         '--disable-background-networking', '--disable-component-update', '--disable-sync',
         '--force-color-profile=srgb', '--font-render-hinting=none'],
});

// Opens the page of a workbook. What the page complains about is in `complaints`: errors, messages,
// dialogs, and requests for other addresses than its own.
export async function open(browser, name, options = {}) {
  const context = await browser.newContext({viewport: {width: 1200, height: 760}, ...options});
  const page = await context.newPage();
  page.setDefaultTimeout(15000);
  const complaints = [];
  page.on('console', (message) => complaints.push(message.text()));
  page.on('pageerror', (error) => complaints.push(String(error)));
  page.on('dialog', (dialog) => {
    complaints.push('dialog: ' + dialog.message());
    dialog.dismiss();
  });
  const address = 'file://' + path.join(folder, name + '.html');
  page.on('request', (request) => {
    if (!request.url().startsWith(address)) complaints.push('request: ' + request.url());
  });
  await page.goto(address);
  return {page, complaints, close: () => context.close()};
}
