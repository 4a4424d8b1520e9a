// Search and filter.

const search = make('input', {type: 'search', id: 'search', placeholder: 'Search this sheet'});
const searched = make('span', {role: 'status'});
const only = make('input', {type: 'checkbox', id: 'only'});
const theme = make('select', {id: 'theme'}, ...[['auto', 'Automatic'], ['light', 'Light'], ['dark', 'Dark']]
  .map(([value, label]) => make('option', {value}, label)));

function findHits() {
  document.querySelectorAll('td.hit').forEach((cell) => cell.classList.remove('hit'));
  const wanted = search.value.trim().toLowerCase();
  state.hits = [];
  state.hit = -1;
  if (wanted) {
    for (const cell of tableOf(state.sheet).querySelectorAll('td')) {
      if (cell.textContent.toLowerCase().includes(wanted)) state.hits.push(cell);
    }
    if (only.checked) state.hits = state.hits.filter((cell) => !cell.parentElement.classList.contains('z'));
    state.hits.forEach((cell) => cell.classList.add('hit'));
  }
  sayHits();
}

function sayHits() {
  const count = state.hits.length;
  searched.textContent = !search.value.trim() ? ''
    : count === 0 ? 'nothing found'
    : state.hit < 0 ? count + (count === 1 ? ' cell' : ' cells')
    : (state.hit + 1) + ' of ' + count;
}

function goToHit(step) {
  const count = state.hits.length;
  if (!count) return;
  state.hit = state.hit < 0 && step < 0 ? count - 1 : (state.hit + step + count) % count;
  const cell = state.hits[state.hit];
  select(cell, false);
  search.focus({preventScroll: true});
  sayHits();
}

// Blocks whose rows are hidden are lower than the style sheet says.
function filterRows() {
  root.classList.toggle('only', only.checked);
  for (const block of document.querySelectorAll('.block')) {
    if (!only.checked) {
      block.style.containIntrinsicBlockSize = '';
      continue;
    }
    const seen = [...block.rows].filter((row) => !row.classList.contains('z')).length;
    block.style.containIntrinsicBlockSize = 'auto ' + seen * 20 + 'px';
  }
  clearMarks();
  showSelection();
  if (state.rule !== null) {
    const rule = state.rule;
    state.rule = null;
    showRule(rule);
  }
  findHits();
}

function goToPlace(place) {
  const split = place.lastIndexOf('!');
  const name = split < 0 ? '' : place.slice(0, split).replace(/^'|'$/g, '').replaceAll("''", "'");
  const sheet = name ? data.sheets.findIndex((item) => item.name.toLowerCase() === name.toLowerCase()) : state.sheet;
  const found = /^\$?([A-Z]{1,3})\$?(\d+)/i.exec(place.slice(split + 1));
  if (sheet < 0) return;
  if (sheet !== state.sheet) openSheet(sheet, false);
  if (!found) return;
  const column = [...found[1].toUpperCase()].reduce((sum, letter) => sum * 26 + letter.charCodeAt(0) - 64, 0) - 1;
  const row = findRow(rowsOf(sheet), Number(found[2]) - 1);
  const shown = columnsOf().indexOf(column);
  if (shown >= 0 && rowsOf(sheet)[row]) select(cellCovering(sheet, row, shown), false);
}
