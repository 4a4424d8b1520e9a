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
    const outcome = counts ? ' has a part in the look' : ' has no part in the look';
    why.append(make('div', {className: 'rule ' + (counts ? 'good' : 'plain')},
      make('h4', null, make('i', null, 'Rule ' + rule.number + outcome), ': ' + rule.text),
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
