// Where a rule is.

const sheetRules = document.styleSheets[0];
let markRule = -1;

function clearMarks() {
  document.querySelectorAll('.area').forEach((area) => area.remove());
  if (markRule >= 0) sheetRules.deleteRule(markRule);
  markRule = -1;
}

function placeOver(box, sheet, top, bottom, firstColumn, lastColumn) {
  const canvas = sections[sheet].querySelector('.canvas').getBoundingClientRect();
  const heads = rowsOf(sheet)[0].cells;
  const first = heads[firstColumn + 1].getBoundingClientRect();
  const last = heads[lastColumn + 1].getBoundingClientRect();
  const upper = rowsOf(sheet)[top].getBoundingClientRect();
  const lower = rowsOf(sheet)[bottom].getBoundingClientRect();
  const left = Math.min(first.left, last.left);
  box.style.left = left - canvas.left + 'px';
  box.style.top = upper.top - canvas.top + 'px';
  box.style.width = Math.max(first.right, last.right) - left + 'px';
  box.style.height = lower.bottom - upper.top + 'px';
  sections[sheet].querySelector('.canvas').append(box);
}

const mostAreas = 500;

function markAreas(sheet, rule) {
  const rows = rowsOf(sheet);
  const columns = data.sheets[sheet].columns;
  for (const [firstRow, firstColumn, endRow, endColumn] of rule.areas.slice(0, mostAreas)) {
    const top = findRow(rows, firstRow);
    const bottom = findRow(rows, endRow) - 1;
    const left = columns.findIndex((column) => column >= firstColumn);
    const right = columns.findLastIndex((column) => column < endColumn);
    if (top <= bottom && left >= 0 && left <= right) {
      placeOver(make('div', {className: 'area'}), sheet, top, bottom, left, right);
    }
  }
}

function showRule(index) {
  clearMarks();
  const sheet = data.sheets[state.sheet];
  state.rule = index === state.rule ? null : index;
  sections[state.sheet].querySelectorAll('.rules button').forEach((button, at) =>
    button.setAttribute('aria-pressed', String(at === state.rule)));
  if (state.rule === null) return;
  const deciding = sheet.decisions.map((rules, decision) => rules.includes(index) ? '.d' + decision : '')
    .filter(Boolean);
  if (deciding.length) {
    const inSheet = '#sheet-' + state.sheet + ' ';
    markRule = sheetRules.insertRule(
      deciding.map((name) => inSheet + 'td' + name).join(',') +
      '{box-shadow:inset 0 0 0 2px var(--mark)!important}', sheetRules.cssRules.length);
  }
  markAreas(state.sheet, sheet.rules[index]);
  const view = viewOf(state.sheet);
  const area = view.querySelector('.area');
  if (area) area.scrollIntoView({block: 'nearest', inline: 'nearest'});
}
