// Takes the picture that the README opens with: take_picture.mjs OUT
import {launch, open} from './browser.mjs';

const browser = await launch();
const {page} = await open(browser, 'demo', {viewport: {width: 1060, height: 640}, colorScheme: 'light'});
await page.locator('#tab-1').click();
await page.locator('#sheet-1 td').getByText('6,410.50', {exact: true}).click();
await page.screenshot({path: process.argv[2]});
await browser.close();
