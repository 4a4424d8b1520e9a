// The script of the page, put together from the files of this folder as one module.
//
// It adds to what the page shows without scripts: why cells look as they do, where rules are, search,
// filter and copy. Texts of the workbook are set as text alone; the page's policy forbids to parse
// them as markup.

const data = JSON.parse(document.getElementById('data').textContent);
const root = document.documentElement;
const sections = [...document.querySelectorAll('.sheet')];
const tabs = [...document.querySelectorAll('.tabs a')];
const state = {sheet: 0, cell: null, anchor: null, rule: null, hits: [], hit: -1};

// make('p', {className: 'x'}, 'text', child): an element with properties and children.
function make(name, properties, ...children) {
  const element = document.createElement(name);
  for (const [key, value] of Object.entries(properties || {})) {
    if (key in element) element[key] = value; else element.setAttribute(key, value);
  }
  element.append(...children);
  return element;
}

// Positions. Rows and columns count from 0 in the table of the workbook; `aria-rowindex` and
// `aria-colindex` count the heading as 1, the latter in the columns of the picture.

const viewOf = (sheet) => sections[sheet].querySelector('.view');
const tableOf = (sheet) => sections[sheet].querySelector('table');
const rowsOf = (sheet) => tableOf(sheet).rows;
const tableRow = (row) => Number(row.getAttribute('aria-rowindex')) - 2;

// Calls visit(cell, column) for each cell of a row, with its column in the picture.
function visitCells(row, visit) {
  let column = 0;
  for (const cell of row.cells) {
    if (cell.tagName === 'TH') continue;
    const index = cell.getAttribute('aria-colindex');
    if (index) column = Number(index) - 2;
    if (visit(cell, column) === true) return;
    column += cell.colSpan;
  }
}

function columnOf(cell) {
  let found = 0;
  visitCells(cell.parentElement, (other, column) => {
    if (other === cell) found = column;
    return other === cell;
  });
  return found;
}

// The cell of a row over a column of the picture; null below a merged cell.
function cellAt(row, column) {
  let found = null;
  visitCells(row, (cell, first) => {
    if (first <= column && column < first + cell.colSpan) found = cell;
    return first > column;
  });
  return found;
}

// As cellAt(), or the merged cell above.
function cellCovering(sheet, rowIndex, column) {
  const rows = rowsOf(sheet);
  for (let index = rowIndex; index > 0; --index) {
    const cell = cellAt(rows[index], column);
    if (cell) return index + cell.rowSpan > rowIndex ? cell : null;
    if (index < rowIndex - 1000) return null;
  }
  return null;
}

function nameColumn(index) {
  let name = '';
  for (let rest = index + 1; rest > 0; rest = Math.floor((rest - 1) / 26)) {
    name = String.fromCharCode(65 + (rest - 1) % 26) + name;
  }
  return name;
}

const columnsOf = () => data.sheets[state.sheet].columns;
const addressOf = (cell) =>
  nameColumn(columnsOf()[columnOf(cell)]) + (tableRow(cell.parentElement) + 1);

// The first row of a table whose row in the workbook is not below `index`; headings do not count.
function findRow(rows, index) {
  let low = 1;
  let high = rows.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (tableRow(rows[middle]) < index) low = middle + 1; else high = middle;
  }
  return low;
}
