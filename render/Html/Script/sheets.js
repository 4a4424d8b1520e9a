// Sheets.

// Makes texts smaller that shrink to fit: only the browser knows how wide they are. More cells than
// anyone looks at stay cut, as they are without scripts.
function shrinkTexts(sheet) {
  const mostCells = 2000;
  const range = document.createRange();
  const cells = [...tableOf(sheet).querySelectorAll('td.k')].slice(0, mostCells);
  const sizes = cells.map((cell) => {
    range.selectNodeContents(cell);
    const wanted = range.getBoundingClientRect().width;
    const room = cell.clientWidth - 6;
    return wanted > room ? parseFloat(getComputedStyle(cell).fontSize) * room / wanted : 0;
  });
  cells.forEach((cell, index) => {
    cell.classList.remove('k');
    if (sizes[index]) cell.style.fontSize = sizes[index] + 'px';
  });
}

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
  shrinkTexts(index);
  if (wantsFocus) tabs[index].focus();
  findHits();
}
