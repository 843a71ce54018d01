// The list of the plies: two to a row, behind the placements, which are folded away. A click on one
// shows the position behind it.

import {numPlies, ply} from './plies.js';

const list = document.getElementById('moves');
const fold = list.querySelector('details');
const placements = fold.querySelector('.plies');
const moves = list.querySelector(':scope > .plies');

let cells = [];  // by number of the ply, less 1
let marked = null;

// `look(number)` shows a position.
export function startMoves(look) {
    list.addEventListener('click', event => {
        const cell = event.target.closest('[data-ply]');
        if (cell) {
            look(Number(cell.dataset.ply));
        }
    });
}

// Makes the plies from number `first` on anew.
export function listPlies(first) {
    const kept = Math.max(0, first - 1);
    cells.splice(kept).forEach(cell => cell.remove());
    for (let number = kept + 1; number <= numPlies(); number++) {
        const one = ply(number);
        const cell = cellOf(number, one);
        cells.push(cell);
        (isPlacement(one) ? placements : moves).append(cell);
    }
    fold.hidden = placements.childElementCount === 0;
    list.hidden = cells.length === 0;
}

// Marks the ply that led to the shown position, and those behind the present one of the game.
export function markPly(shown, present) {
    marked?.removeAttribute('aria-current');
    marked = cells[shown - 1] ?? null;
    marked?.setAttribute('aria-current', 'true');
    cells.forEach((cell, i) => cell.classList.toggle('undone', i >= present));
    if (marked !== null && marked.parentNode === moves) {
        const top = marked.offsetTop - list.offsetTop;
        const isSeen = top >= list.scrollTop &&
                       top + marked.offsetHeight <= list.scrollTop + list.clientHeight;
        list.scrollTop = isSeen ? list.scrollTop : top - list.clientHeight / 2;
    }
}

function isPlacement(one) {
    return Boolean(one?.target) && !one.source;
}

function cellOf(number, one) {
    const cell = document.createElement('button');
    cell.type = 'button';
    cell.dataset.ply = number;
    cell.disabled = one === null;
    cell.append(one?.text ?? '?');
    if (one !== null) {
        cell.dataset.cut = one.cut;
        cell.setAttribute('aria-label', `Move ${number}: ${one.say}`);
    }
    if (one?.cut > 0) {
        const cut = document.createElement('small');
        cut.textContent = `\u2212${one.cut}`;
        cell.append(cut);
    }
    return cell;
}
