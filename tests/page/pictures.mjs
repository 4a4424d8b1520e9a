// Golden pictures of pages, with a tolerance for other versions of fonts and browsers.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';

const mostDifferent = 0.02;
const noticeable = 40;

// The part of the pixels in which two pictures differ noticeably; the browser decodes them.
async function compare(page, one, other) {
  return page.evaluate(async ([first, second, threshold]) => {
    const decode = async (base64) => {
      const bytes = Uint8Array.from(atob(base64), (letter) => letter.charCodeAt(0));
      const bitmap = await createImageBitmap(new Blob([bytes], {type: 'image/png'}));
      const canvas = new OffscreenCanvas(bitmap.width, bitmap.height);
      canvas.getContext('2d').drawImage(bitmap, 0, 0);
      return canvas.getContext('2d').getImageData(0, 0, bitmap.width, bitmap.height);
    };
    const [a, b] = [await decode(first), await decode(second)];
    if (a.width !== b.width || a.height !== b.height) return 1;
    let different = 0;
    for (let at = 0; at < a.data.length; at += 4) {
      const most = Math.max(...[0, 1, 2].map((part) => Math.abs(a.data[at + part] - b.data[at + part])));
      if (most > threshold) ++different;
    }
    return different / (a.width * a.height);
  }, [one.toString('base64'), other.toString('base64'), noticeable]);
}

// Compares what the page shows with the golden picture of that name. `blank` is an empty page.
export async function expectPicture(page, blank, name) {
  const golden = path.join(process.env.GOLDEN, name + '.png');
  const shown = await page.screenshot({animations: 'disabled', caret: 'hide'});
  if (process.env.CNDFRMT_REWRITE_GOLDEN) fs.writeFileSync(golden, shown);
  const part = await compare(blank, shown, fs.readFileSync(golden));
  if (part > mostDifferent) fs.writeFileSync(name + '.actual.png', shown);
  assert.ok(part <= mostDifferent, `${name}: ${(part * 100).toFixed(2)} % of the pixels differ`);
}
