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

function select(cell, extendsSelection) {
  if (!cell) return;
  if (state.cell) state.cell.tabIndex = -1;
  state.cell = cell;
  if (!extendsSelection) state.anchor = cell;
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
