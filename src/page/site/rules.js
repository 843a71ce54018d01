// The rules in five steps with pictures, which are drawn as the board is.

import {center, element, hexagon} from './geometry.js';
import {towerPicture} from './towers.js';

const STEPS = [
    ['First the board is filled, a stone a turn: the red life stones, then each one\u2019s own.',
     'l1 w1 b1 .'],
    ['A tower moves as far as it is high, in a straight line, onto a space that is not empty. ' +
     'With neighbours on all six sides it cannot move.', 'w2> b1 b1t .'],
    ['It lands on top: whoever\u2019s stone lies on top owns the tower.', '. b1 w3 .'],
    ['What is not connected to a life stone leaves the board after each move.', 'l1 w2 . b1x'],
    ['Who cannot move passes. When neither can, the owner of more stones wins: all towers count ' +
     'with their height.', 'w5 l1 b3 .'],
];
const OWNERS = {w: 'white', b: 'black', l: 'life', '.': 'empty'};

const dialog = document.getElementById('rulesbook');

export function startRules() {
    dialog.querySelector('ol').append(...STEPS.map(([text, row]) => {
        const step = document.createElement('li');
        step.append(picture(row), text);
        return step;
    }));
    document.getElementById('rules').addEventListener('click', open);
    document.getElementById('closerules').addEventListener('click', () => dialog.close());
    dialog.addEventListener('close', () => localStorage.setItem('rules', 'seen'));
}

// Stands at the top of the panel for whoever has not seen it, until the first ply.
export function showRulesOnce(lastMove) {
    if (localStorage.getItem('rules') === null && lastMove === 0) {
        dialog.show();
    } else if (dialog.open && !dialog.matches(':modal')) {
        dialog.close();
    }
    if (lastMove > 0) {
        localStorage.setItem('rules', 'seen');
    }
}

function open() {
    dialog.close();
    dialog.showModal();
    dialog.scrollTop = 0;
}

// A row of spaces: in each word the owner, the height, and what becomes of it.
function picture(row) {
    const spaces = row.split(' ').map((word, x) => ({
        x, y: 0, owner: OWNERS[word[0]], height: Number(word[1] ?? 0),
        life: word[0] === 'l' ? 1 : 0, fate: word[2] ?? ''}));
    const middles = spaces.map(center);
    const made = element('svg', {'aria-hidden': 'true', viewBox: viewBox(middles)});
    for (const [i, space] of spaces.entries()) {
        const {x, y} = middles[i];
        const mark = {'>': 'picked', t: 'target'}[space.fate] ?? '';
        made.append(element('g', {class: `drawn ${mark}`, transform: `translate(${x} ${y})`},
            element('polygon', {class: 'tile', points: hexagon(1)}),
            element('polygon', {class: 'mark', points: hexagon(4)})));
        if (space.owner !== 'empty') {
            const tower = towerPicture(space);
            tower.classList.toggle('leaves', space.fate === 'x');
            made.append(tower);
        }
    }
    return made;
}

function viewBox(middles) {
    const xs = middles.map(point => point.x);
    const ys = middles.map(point => point.y);
    const [left, top] = [Math.min(...xs) - 40, Math.min(...ys) - 42];
    return [left, top, Math.max(...xs) + 40 - left, Math.max(...ys) + 42 - top].join(' ');
}
