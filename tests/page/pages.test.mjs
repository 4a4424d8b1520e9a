// What readers can do with pages, and what texts of workbooks cannot.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import {createRequire} from 'node:module';
import {after, before, describe, test} from 'node:test';
import {folder, launch, open} from './browser.mjs';
import {expectPicture} from './pictures.mjs';

const require = createRequire(import.meta.url);
const axe = fs.readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8');

let browser;
let blank;
before(async () => {
  browser = await launch();
  blank = await browser.newPage();
});
after(() => browser.close());

// Opens a page for one test, and fails if it complains.
async function withPage(name, options, use) {
  const {page, complaints, close} = await open(browser, name, options);
  await use(page);
  await close();
  assert.deepEqual(complaints, []);
}

// A cell of the sheet that is shown.
const cellWith = (page, text) =>
  page.locator('.sheet:not([hidden]) td').getByText(text, {exact: true}).first();
const why = (page) => page.locator('.sheet:not([hidden]) .why');

describe('accessibility', () => {
  for (const name of ['demo', 'ConditionalFormattingSamples', 'NewStyleConditionalFormattings',
                      'Risk_Register', 'hostile']) {
    for (const colorScheme of name === 'demo' ? ['light', 'dark'] : ['light']) {
      test(`axe finds no fault with ${name} in ${colorScheme}`, async () => {
        await withPage(name, {colorScheme, bypassCSP: true}, async (page) => {
          await page.evaluate(axe);
          const tabs = await page.locator('[role=tab]').count();
          for (let sheet = 0; sheet < Math.min(tabs, 2); ++sheet) {
            await page.locator('[role=tab]').nth(sheet).click();
            const {violations} = await page.evaluate(() => {
              // The colours of cells are those of the workbook.
              axe.configure({rules: [{id: 'color-contrast', selector: '*:not(td):not(td *)'}]});
              // Faults alone: to describe what is right takes most of the time.
              return axe.run(document, {resultTypes: ['violations'], selectors: false, preload: false});
            });
            assert.deepEqual(violations.map((fault) => [fault.id, fault.nodes[0].html]), []);
          }
        });
      });
    }
  }

  test('the table is a grid of named headings and cells', async () => {
    await withPage('demo', {}, async (page) => {
      const session = await page.context().newCDPSession(page);
      const {nodes} = await session.send('Accessibility.getFullAXTree');
      const roles = nodes.filter((node) => !node.ignored).map((node) => node.role?.value);
      const count = (role) => roles.filter((other) => other === role).length;
      assert.equal(count('grid'), 1);
      assert.equal(count('columnheader'), 8);
      assert.equal(count('rowheader'), 15);
      assert.ok(count('gridcell') >= 15 * 8 - 10, `${count('gridcell')} cells`);
    });
  });

  test('keys alone reach tools, tabs, cells and rules', async () => {
    await withPage('demo', {}, async (page) => {
      const reached = [];
      for (let step = 0; step < 8; ++step) {
        await page.keyboard.press('Tab');
        reached.push(await page.evaluate(() => {
          const active = document.activeElement;
          return active.id || active.tagName;
        }));
      }
      assert.deepEqual(reached.slice(0, 5), ['search', 'only', 'theme', 'tab-0', 'TD']);
      assert.equal(reached[5], 'BUTTON');
    });
  });
});

describe('accounts', () => {
  test('a cell tells why it looks so', async () => {
    await withPage('demo', {}, async (page) => {
      await page.locator('#tab-1').click();
      await cellWith(page, '6,410.50').click();
      const told = await why(page).innerText();
      assert.match(told, /^E5\n/);
      assert.match(told, /Rule 9 holds: formula \$D4<TODAY\(\)/);
      assert.match(told, /6410\.5 >= 5000 is true/);
      assert.match(told, /bold by rule 13/);
    });
  });

  test('pointing tells, and leaving returns to the chosen cell', async () => {
    await withPage('demo', {}, async (page) => {
      await cellWith(page, '48.2').click();
      await cellWith(page, '39.5').hover();
      assert.match(await why(page).innerText(), /^C4\n/);
      await page.locator('h1').hover();
      assert.match(await why(page).innerText(), /^B4\n/);
    });
  });

  test('arrow keys move over merged cells and to the ends', async () => {
    await withPage('demo', {}, async (page) => {
      await cellWith(page, '48.2').click();
      const at = async (...keys) => {
        for (const key of keys) await page.keyboard.press(key);
        return (await why(page).locator('h3').innerText());
      };
      assert.equal(await at('ArrowRight', 'ArrowDown'), 'C5');
      assert.equal(await at('End'), 'H5');
      assert.equal(await at('Home'), 'A5');
      assert.equal(await at('Control+End'), 'H15');
      assert.equal(await at('ArrowDown'), 'H15');
      assert.equal(await at('Control+Home'), 'A1');
      assert.equal(await at('ArrowUp', 'ArrowLeft'), 'A1');
    });
  });
});

describe('rules', () => {
  test('a rule shows its ranges and its cells, once more hides them', async () => {
    await withPage('demo', {}, async (page) => {
      await page.locator('#tab-1').click();
      const rule = page.locator('.sheet:not([hidden]) .rules button').nth(1);
      await rule.click();
      const area = await page.locator('.area').boundingBox();
      const first = await cellWith(page, 'R-1041').boundingBox();
      assert.ok(Math.abs(area.x - first.x) < 4 && Math.abs(area.y - first.y) < 6, JSON.stringify([area, first]));
      const marked = (text) => cellWith(page, text).evaluate((cell) =>
        getComputedStyle(cell).boxShadow.includes('192, 38, 211'));
      assert.equal(await marked('R-1043'), true);
      assert.equal(await marked('R-1053'), false);
      await rule.press('Enter');
      assert.equal(await page.locator('.area').count(), 0);
      assert.equal(await marked('R-1043'), false);
    });
  });

  test('the filter keeps rows with touched cells', async () => {
    await withPage('demo', {}, async (page) => {
      await page.locator('#tab-1').click();
      assert.equal(await cellWith(page, 'Open invoices').isVisible(), true);
      await page.locator('#only').check();
      assert.equal(await cellWith(page, 'Open invoices').isVisible(), false);
      assert.equal(await cellWith(page, 'R-1043').isVisible(), true);
    });
  });
});

describe('search and copy', () => {
  test('search finds cells and goes from one to the next', async () => {
    await withPage('demo', {}, async (page) => {
      await page.locator('#tab-1').click();
      await page.locator('#search').fill('OPEN');
      await page.locator('td.hit').first().waitFor();
      assert.equal(await page.locator('td.hit').count(), 9);
      await page.locator('#search').press('Enter');
      await page.locator('#search').press('Enter');
      assert.match(await page.locator('#tools').innerText(), /2 of 9/);
      await page.locator('#search').fill('not there');
      await page.getByText('nothing found').waitFor();
    });
  });

  test('a selection is copied as separated values', async () => {
    await withPage('demo', {}, async (page) => {
      await cellWith(page, 'Month').click();
      for (const key of ['Shift+ArrowRight', 'Shift+ArrowDown']) await page.keyboard.press(key);
      const copied = await page.evaluate(() => {
        const event = new ClipboardEvent('copy', {clipboardData: new DataTransfer(), cancelable: true});
        document.dispatchEvent(event);
        return event.clipboardData.getData('text/plain');
      });
      assert.equal(copied, 'Month\tNorth\nNov 25\t48.2');
    });
  });
});

describe('themes', () => {
  test('the choice counts above that of the system', async () => {
    await withPage('demo', {colorScheme: 'light'}, async (page) => {
      const back = () => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
      const light = await back();
      await page.locator('#theme').selectOption('dark');
      assert.notEqual(await back(), light);
    });
  });
});

describe('hostile texts', () => {
  test('stay texts', async () => {
    await withPage('hostile', {}, async (page) => {
      assert.equal(await page.evaluate(() => window.attacked), undefined);
      assert.equal(await page.locator('img, td script, td svg, td style').count(), 0);
      assert.equal(await page.locator('#tab-0').innerText(), '<img src=x>');
      assert.equal(await page.locator('#tab-1').innerText(), "O'Neil &amp; Co");
      const cell = cellWith(page, '<script>window.attacked = 1; alert(1)</script>');
      await cell.click();
      assert.match(await why(page).innerText(), /Rule 0 holds: formula \$A1="<script>window\.attacked/);
      for (const button of await page.locator('.sheet:not([hidden]) .rules button').all()) {
        await button.click();
      }
      assert.equal(await page.evaluate(() => window.attacked), undefined);
    });
  });

  test('could not run even as markup', async () => {
    const {page, complaints, close} = await open(browser, 'demo');
    await page.evaluate(() => {
      const script = document.createElement('script');
      try {
        script.text = 'window.attacked = 1';
      } catch {
        window.refused = true;
      }
      // A text that code of the page would vouch for.
      script.text = trustedTypes.createPolicy('careless', {createScript: (text) => text})
        .createScript('window.attacked = 1');
      document.body.append(script);
    });
    assert.equal(await page.evaluate(() => window.refused), true);
    assert.equal(await page.evaluate(() => window.attacked), undefined);
    assert.match(complaints.join('\n'), /Content Security Policy/);
    await close();
  });
});

describe('without scripts', () => {
  test('every sheet is a readable table with its rules', async () => {
    await withPage('demo', {javaScriptEnabled: false}, async (page) => {
      assert.equal(await page.locator('.sheet').count(), 5);
      for (const name of ['Sales', 'Invoices', 'Stock', 'Guests', 'Budget']) {
        assert.equal(await page.getByRole('heading', {name, exact: true}).isVisible(), true);
      }
      assert.equal(await page.getByRole('cell', {name: '6,410.50'}).count(), 1);
      assert.equal(await page.getByText('Rule 9: formula $D4<TODAY()').isVisible(), true);
    });
  });
});

describe('large sheets', () => {
  test('what is not seen is not laid out', async () => {
    await withPage('tall', {}, async (page) => {
      const laidOut = () => page.locator('.block').evaluateAll((blocks) =>
        blocks.filter((block) => block.rows[0].checkVisibility({contentVisibilityAuto: true})).length);
      const blocks = await page.locator('.block').count();
      assert.ok(blocks > 80, `${blocks} blocks`);
      assert.ok(await laidOut() < 12, `${await laidOut()} blocks are laid out`);
    });
  });

  test('frozen rows and columns stay, and rows keep their place', async () => {
    await withPage('tall', {}, async (page) => {
      await page.locator('.view').evaluate((view) => { view.scrollTo(100, 40000); });
      await page.waitForTimeout(200);
      const box = (row, column) => page.evaluate(([index, at]) => {
        const found = document.querySelector(`tr[aria-rowindex="${index}"]`).cells[at].getBoundingClientRect();
        const view = document.querySelector('.view').getBoundingClientRect();
        return [Math.round(found.left - view.left), Math.round(found.top - view.top)];
      }, [row, column]);
      assert.deepEqual(await box(2, 0), [0, 22], 'the first frozen row stays below the headings');
      const [left, top] = await box(2010, 1);
      assert.ok(left > 20 && left < 80, `the frozen column stays at ${left}`);
      assert.equal(top, 22 + 2008 * 20 - 40000);
    });
  });
});

describe('pictures', () => {
  const shows = [
    ['sales', {}, async () => {}],
    ['invoices', {}, async (page) => {
      await page.locator('#tab-1').click();
      await cellWith(page, '6,410.50').click();
    }],
    ['invoices-dark', {colorScheme: 'dark'}, async (page) => {
      await page.locator('#tab-1').click();
      await cellWith(page, '6,410.50').click();
    }],
    ['stock-rule', {}, async (page) => {
      await page.locator('#tab-2').click();
      await page.locator('.sheet:not([hidden]) .rules button').nth(1).click();
    }],
    ['guests-narrow', {viewport: {width: 640, height: 760}}, async (page) => {
      await page.locator('#tab-3').click();
    }],
    ['plain', {javaScriptEnabled: false}, async () => {}],
  ];
  for (const [name, options, prepare] of shows) {
    test(`${name} looks as it should`, async () => {
      await withPage('demo', options, async (page) => {
        await prepare(page);
        await expectPicture(page, blank, name);
      });
    });
  }
});
