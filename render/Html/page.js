// The page with scripts: why cells look as they do, where rules are, search, filter and copy.
//
// Texts of the workbook are set as text alone: the page's policy forbids to parse them as markup.
// Nothing here throws away what the page shows without scripts.
'use strict';
(() => {
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

  // Why a cell looks as it does.

  const why = make('div', {className: 'why'});
  const said = make('p', {className: 'hidden', role: 'status'});
  const text = (index) => data.texts[index];

  function swatch(colour) {
    const svg = document.createElementNS('http://www.w3.org/2000/svg', 'svg');
    const rect = document.createElementNS('http://www.w3.org/2000/svg', 'rect');
    svg.setAttribute('class', 'swatch');
    svg.setAttribute('aria-hidden', 'true');
    for (const [key, value] of [['width', '100%'], ['height', '100%'], ['fill', colour]]) {
      rect.setAttribute(key, value);
    }
    svg.append(rect);
    return svg;
  }

  function phrase(parent, [words, colour], rest) {
    parent.append(...(colour ? [swatch(colour)] : []), text(words) + rest);
  }

  function list(lines) {
    return make('ul', null, ...lines.map((line) => make('li', null, line)));
  }

  function addFormula(box, [here, steps, isCut]) {
    const lines = [];
    if (text(here)) lines.push('here ' + text(here));
    if (isCut) lines.push('some steps are left out');
    if (lines.length) box.append(list(lines));
    const steady = make('dl');
    for (const [step, value] of steps) {
      steady.append(make('dt', null, text(step)), make('dd', null, text(value)));
    }
    if (steps.length) box.append(steady);
  }

  function addStyle(box, sets, taken) {
    const lines = make('ul');
    for (const [words, colour] of sets) {
      const line = make('li', null, 'sets ');
      phrase(line, [words, colour], '');
      lines.append(line);
    }
    for (const [words, colour, by] of taken) {
      const line = make('li', null, 'not ');
      phrase(line, [words, colour], ' (rule ' + by + ' has set it)');
      lines.append(line);
    }
    if (!sets.length && !taken.length) lines.append(make('li', null, 'sets nothing'));
    box.append(lines);
  }

  function addRule([number, outcome, tone, condition, reasons, formulas, elsewhere, holds, sets,
                    taken, doubts]) {
    const box = make('div', {className: 'rule ' + tone},
      make('h4', null, make('i', null, 'Rule ' + number + ' ' + text(outcome)), ': ' + text(condition)),
      list(reasons.map(text)));
    for (const formula of formulas) addFormula(box, formula);
    if (text(elsewhere)) box.append(list([text(elsewhere)]));
    if (holds) addStyle(box, sets, taken);
    if (doubts.length) box.append(list(doubts.map((doubt) => 'in doubt: ' + text(doubt))));
    why.append(box);
  }

  function addLook(style, visuals, own) {
    if (style.length || visuals.length) {
      const lines = make('ul');
      for (const [words, colour, rule] of [...style, ...visuals]) {
        const line = make('li');
        phrase(line, [words, colour], ' by rule ' + rule);
        lines.append(line);
      }
      why.append(make('h4', null, 'The cell looks like this'), lines);
    }
    if (own.length) {
      const line = make('li', null, 'of its own: ');
      own.forEach((item, index) => phrase(line, item, index + 1 < own.length ? ', ' : ''));
      why.append(make('ul', null, line));
    }
  }

  function tellWhole([value, absence, rules, nearest, style, visuals, own]) {
    why.append(make('p', null, text(value)));
    if (text(absence)) why.append(make('p', null, text(absence)));
    rules.forEach((rule) => addRule(data.rules[rule]));
    why.append(list(nearest.map(text)));
    addLook(style, visuals, own);
    return rules.map((index) => {
      const [number, outcome] = data.rules[index];
      return 'rule ' + number + ' ' + text(outcome);
    }).join(', ');
  }

  const decisionOf = (cell) => {
    const name = [...cell.classList].find((item) => /^d\d+$/.test(item));
    return name ? Number(name.slice(1)) : 0;
  };

  // Of a cell without an account: which rules are on it, and which have a part in its look.
  function tellShort(cell) {
    const sheet = data.sheets[state.sheet];
    const row = tableRow(cell.parentElement);
    const column = columnsOf()[columnOf(cell)];
    const deciding = sheet.decisions[decisionOf(cell)] || [];
    const on = sheet.rules.filter((rule, index) => deciding.includes(index) ||
      rule.areas.some((area) => area[0] <= row && row < area[2] && area[1] <= column && column < area[3]));
    why.append(make('p', null, cell.textContent || 'empty'));
    if (!on.length) {
      why.append(make('p', null, sheet.rules.length ? 'No conditional format is on this cell.'
                                                    : 'The sheet has no conditional format.'));
      return 'no rule';
    }
    for (const rule of on) {
      const counts = deciding.includes(sheet.rules.indexOf(rule));
      why.append(make('div', {className: 'rule ' + (counts ? 'good' : 'plain')},
        make('h4', null, make('i', null, 'Rule ' + rule.number + (counts ? ' has a part in the look' : ' has no part in the look')),
             ': ' + rule.text),
        list(['on ' + rule.ranges, ...(counts ? [rule.style] : [])])));
    }
    return on.map((rule) => 'rule ' + rule.number).join(', ');
  }

  function findAccount(cell) {
    const cells = data.sheets[state.sheet].cells[tableRow(cell.parentElement)] || [];
    const column = columnsOf()[columnOf(cell)];
    for (let index = 0; index < cells.length; index += 2) {
      if (cells[index] === column) return data.accounts[cells[index + 1]];
    }
    return null;
  }

  let told = null;
  function tell(cell) {
    if (told === cell) return;
    told = cell;
    why.replaceChildren();
    if (!cell) {
      why.append(make('p', null, 'Point at a cell, or go to it with the arrow keys, to see why it looks so.'));
      return;
    }
    const address = addressOf(cell);
    why.append(make('h3', null, address));
    const account = findAccount(cell);
    const summary = account ? tellWhole(account) : tellShort(cell);
    if (cell === state.cell) said.textContent = address + ': ' + summary;
  }

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

  // The selection: from the cell that has the focus to the one where it began.

  const selection = make('div', {className: 'selection'});

  function bounds() {
    const [a, b] = [state.anchor || state.cell, state.cell];
    const rows = [a, b].map((cell) => cell.parentElement.rowIndex);
    const columns = [a, b].map(columnOf);
    const ends = [a, b].map((cell, index) => rows[index] + cell.rowSpan - 1);
    const rights = [a, b].map((cell, index) => columns[index] + cell.colSpan - 1);
    return [Math.min(...rows), Math.min(...columns), Math.max(...ends), Math.max(...rights)];
  }

  function showSelection() {
    selection.remove();
    if (!state.cell || !state.anchor || state.anchor === state.cell) return;
    const [top, left, bottom, right] = bounds();
    placeOver(selection, state.sheet, top, bottom, left, right);
  }

  function copyText() {
    const [top, left, bottom, right] = bounds();
    const lines = [];
    const rows = rowsOf(state.sheet);
    for (let index = top; index <= bottom; ++index) {
      if (!rows[index].offsetParent && rows[index].getClientRects().length === 0) continue;
      const fields = new Array(right - left + 1).fill('');
      visitCells(rows[index], (cell, column) => {
        if (left <= column && column <= right) fields[column - left] = field(cell.textContent);
        return column > right;
      });
      lines.push(fields.join('\t'));
    }
    return lines.join('\n');
  }

  const field = (value) => /[\t\n"]/.test(value) ? '"' + value.replaceAll('"', '""') + '"' : value;

  function select(cell, extends_) {
    if (!cell) return;
    if (state.cell) state.cell.tabIndex = -1;
    state.cell = cell;
    if (!extends_) state.anchor = cell;
    cell.tabIndex = 0;
    cell.focus({preventScroll: true});
    uncover(cell);
    showSelection();
    told = null;
    tell(cell);
  }

  // Scrolls so that headings and frozen cells do not cover a cell.
  function uncover(cell) {
    const view = viewOf(state.sheet);
    cell.scrollIntoView({block: 'nearest', inline: 'nearest'});
    if (cell.closest('.frozen')) return;
    const frame = view.getBoundingClientRect();
    const place = cell.getBoundingClientRect();
    const frozen = view.querySelector('.frozen') || view.querySelector('thead');
    const top = frozen.getBoundingClientRect().bottom;
    if (place.top < top) view.scrollTop -= top - place.top;
    if (cell.classList.contains('f')) return;
    const heads = [...view.querySelectorAll('thead th.f, .corner')].pop().getBoundingClientRect();
    const isMirrored = heads.left > frame.left + frame.width / 2;
    if (!isMirrored && place.left < heads.right) view.scrollLeft -= heads.right - place.left;
    if (isMirrored && place.right > heads.left) view.scrollLeft += place.right - heads.left;
  }

  const isSeen = (row) => row.getClientRects().length > 0 && row.offsetHeight > 0;

  function move(event) {
    const cell = state.cell;
    const rows = rowsOf(state.sheet);
    const row = cell.parentElement.rowIndex;
    const column = columnOf(cell);
    const last = columnsOf().length - 1;
    const page = Math.max(1, Math.floor(viewOf(state.sheet).clientHeight / 20) - 3);
    const vertical = (step, count) => {
      let index = step > 0 ? row + cell.rowSpan - 1 : row;
      let found = null;
      for (let left = count; left > 0 && rows[index + step] && index + step > 0; --left) {
        do index += step; while (rows[index] && index > 0 && !isSeen(rows[index]));
        if (!rows[index] || index < 1) break;
        found = cellCovering(state.sheet, index, column) || found;
      }
      return found;
    };
    const horizontal = (step) => {
      const next = step > 0 ? column + cell.colSpan : column - 1;
      return next < 0 || next > last ? null : cellCovering(state.sheet, row, next);
    };
    const isRtl = sections[state.sheet].querySelector('.canvas').dir === 'rtl';
    const targets = {
      ArrowUp: () => vertical(-1, 1),
      ArrowDown: () => vertical(1, 1),
      ArrowLeft: () => horizontal(isRtl ? 1 : -1),
      ArrowRight: () => horizontal(isRtl ? -1 : 1),
      PageUp: () => vertical(-1, page),
      PageDown: () => vertical(1, page),
      Home: () => cellCovering(state.sheet, event.ctrlKey ? 1 : row, 0),
      End: () => cellCovering(state.sheet, event.ctrlKey ? rows.length - 1 : row, last),
    };
    if (!targets[event.key]) return;
    event.preventDefault();
    select(targets[event.key](), event.shiftKey);
  }

  // Sheets.

  function openSheet(index, wantsFocus) {
    clearMarks();
    state.rule = null;
    state.sheet = index;
    state.cell = state.anchor = null;
    selection.remove();
    sections.forEach((section, at) => { section.hidden = at !== index; });
    tabs.forEach((tab, at) => {
      tab.setAttribute('aria-selected', String(at === index));
      tab.tabIndex = at === index ? 0 : -1;
    });
    sections[index].querySelectorAll('.rules button').forEach((button) =>
      button.setAttribute('aria-pressed', 'false'));
    sections[index].querySelector('.about').prepend(said, why);
    const first = tableOf(index).querySelector('td[tabindex="0"]') || cellAt(rowsOf(index)[1] || rowsOf(index)[0], 0);
    if (first) {
      state.cell = state.anchor = first;
      first.tabIndex = 0;
    }
    told = undefined;
    tell(null);
    if (wantsFocus) tabs[index].focus();
    findHits();
  }

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

  // Wiring.

  function buildTools() {
    theme.value = root.dataset.theme;
    document.getElementById('tools').append(
      make('label', {htmlFor: 'search'}, 'Search', search), searched,
      make('label', {htmlFor: 'only'}, only, 'Only rows with touched cells'),
      make('label', {htmlFor: 'theme'}, 'Theme', theme));
    search.addEventListener('input', findHits);
    search.addEventListener('keydown', (event) => {
      if (event.key === 'Enter') goToHit(event.shiftKey ? -1 : 1);
    });
    only.addEventListener('change', filterRows);
    theme.addEventListener('change', () => { root.dataset.theme = theme.value; });
  }

  function buildTabs() {
    const list_ = document.querySelector('.tabs');
    list_.setAttribute('role', 'tablist');
    tabs.forEach((tab, index) => {
      tab.setAttribute('role', 'tab');
      tab.setAttribute('aria-controls', sections[index].id);
      sections[index].setAttribute('role', 'tabpanel');
      tab.addEventListener('click', (event) => {
        event.preventDefault();
        openSheet(index, true);
      });
      tab.addEventListener('keydown', (event) => {
        const step = {ArrowRight: 1, ArrowLeft: -1}[event.key];
        if (event.key === ' ') event.preventDefault();
        if (event.key === ' ') openSheet(index, true);
        if (step) openSheet((index + step + tabs.length) % tabs.length, true);
      });
    });
  }

  function buildRules() {
    sections.forEach((section) => section.querySelectorAll('.rules li').forEach((item, index) => {
      const button = make('button', {type: 'button'}, ...item.childNodes);
      button.setAttribute('aria-pressed', 'false');
      button.addEventListener('click', () => showRule(index));
      item.append(button);
    }));
  }

  function buildTables() {
    sections.forEach((section, sheet) => {
      const view = viewOf(sheet);
      const table = tableOf(sheet);
      view.removeAttribute('tabindex');
      table.setAttribute('role', 'grid');
      table.setAttribute('aria-readonly', 'true');
      table.addEventListener('focusin', (event) => {
        const cell = event.target.closest('td');
        if (cell && cell !== state.cell && !event.target.closest('a')) select(cell, false);
        else if (cell) tell(cell);
      });
      table.addEventListener('keydown', (event) => {
        if (event.target.tagName === 'TD') move(event);
        if (event.key === 'Enter' && event.target.tagName === 'TD') event.target.querySelector('a')?.click();
      });
      table.addEventListener('pointerdown', (event) => {
        const cell = event.target.closest('td');
        if (!cell || event.button !== 0 || cell.classList.contains('corner')) return;
        if (event.target.closest('a')) return;
        event.preventDefault();
        select(cell, event.shiftKey);
      });
      table.addEventListener('pointerover', (event) => {
        const cell = event.target.closest('td:not(.corner)');
        if (cell && event.buttons === 1 && state.anchor) select(cell, true);
        else tell(cell || state.cell);
      });
      table.addEventListener('pointerleave', () => tell(state.cell));
      table.querySelectorAll('a').forEach((link) => { link.tabIndex = -1; });
      table.addEventListener('click', (event) => {
        const link = event.target.closest('a[data-place]');
        if (!link) return;
        event.preventDefault();
        goToPlace(link.dataset.place);
      });
    });
    document.addEventListener('copy', (event) => {
      if (!state.cell || !state.cell.contains(document.activeElement)) return;
      event.clipboardData.setData('text/plain', copyText());
      event.preventDefault();
    });
  }

  root.classList.add('js');
  buildTools();
  buildTabs();
  buildRules();
  buildTables();
  if (sections.length) openSheet(0, false);
})();
