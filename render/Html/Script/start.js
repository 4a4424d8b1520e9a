// Wiring.

function buildTools() {
  theme.value = root.dataset.theme;
  document.getElementById('tools').append(
    make('label', {htmlFor: 'search'}, 'Search', search), searched,
    make('label', {htmlFor: 'only'}, only, 'Only rows with touched cells'),
    make('label', {htmlFor: 'theme'}, 'Theme', theme));
  let timer = 0;
  search.addEventListener('input', () => {
    clearTimeout(timer);
    timer = setTimeout(findHits, 120);
  });
  search.addEventListener('keydown', (event) => {
    if (event.key === 'Enter') goToHit(event.shiftKey ? -1 : 1);
  });
  only.addEventListener('change', filterRows);
  theme.addEventListener('change', () => { root.dataset.theme = theme.value; });
}

function buildTabs() {
  const tabList = document.querySelector('.tabs');
  tabList.setAttribute('role', 'tablist');
  tabList.setAttribute('aria-label', 'Sheets');
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
    view.addEventListener('scroll', () => view.classList.toggle('slid', view.scrollLeft !== 0));
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
