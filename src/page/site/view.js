// The board on the page: one element for each space, with all that is known of it in its
// attributes, the marks of moves, and the coordinates. The towers on it are drawn by towers.js.

import {WIDTH, center, element, hexagon, isTurned, turned} from './geometry.js';
import {startTowers} from './towers.js';

const board = document.getElementById('board');
const LEAST_WIDTH = 6 * WIDTH;  // a small board stays a small one
const LEAST_HEIGHT = 4 * WIDTH;
const ARROW = 37;               // from the end of a line to the middle of its target: head and rim

let spaces = new Map();  // elements by name
let size = '';
let moves = null;        // the layer of the lines of moves

export function spaceElement(name) {
    return spaces.get(name);
}

// Shows a state's spaces and its last and next move. The board is made anew when its size changes.
export function showBoard(state) {
    const shape = `${state.columns} ${state.rows} ${isTurned()}`;
    if (shape !== size) {
        size = shape;
        build(state);
    }
    for (const space of state.spaces) {
        const made = spaces.get(space.space);
        made.dataset.height = space.height;
        made.dataset.owner = space.owner;
        made.dataset.life = space.life;
        flag(made, 'place', space.place);
        flag(made, 'source', space.place || space.targets?.length > 0);
        mark(made, 'last', space.space, state.last);
        mark(made, 'next', space.space, state.next);
    }
    moves.replaceChildren(...line(state, state.last, 'last'), ...line(state, state.next, 'next'));
}

export function flag(made, name, on) {
    if (on) {
        made.dataset[name] = '1';
    } else {
        delete made.dataset[name];
    }
}

function mark(made, kind, name, move) {
    const role = name === move?.source ? 'source' : name === move?.target ? 'target' : '';
    if (role) {
        made.dataset[kind] = role;
    } else {
        delete made.dataset[kind];
    }
}

function build(state) {
    const layers = ['spaces', 'labels', 'lines', 'towers'].map(name =>
        element('g', name === 'spaces' ? {id: name} : {id: name, 'aria-hidden': 'true'}));
    const [ground, labels, lines, towers] = layers;
    spaces = new Map(state.spaces.map(space => [space.space, spaceOf(space)]));
    ground.append(...spaces.values());
    labels.append(...rowLabels(state.spaces), ...columnLabels(state.spaces));
    moves = lines;
    board.replaceChildren(arrowHeads(), ...layers);
    board.setAttribute('viewBox', viewBox(state.spaces));
    startTowers(towers);
}

function spaceOf(space) {
    const {x, y} = center(space);
    return element('g', {class: 'space', role: 'button', 'data-space': space.space,
                         transform: `translate(${x} ${y})`},
        element('polygon', {class: 'ground', points: hexagon(0)}),
        element('polygon', {class: 'tile', points: hexagon(1)}),
        element('polygon', {class: 'mark', points: hexagon(4)}),
        nameOf(space), element('polygon', {class: 'focus', points: hexagon(1.5)}));
}

// Faint, at the lower corner.
function nameOf(space) {
    const name = label(space.space, {x: 0, y: isTurned() ? 26 : 27});
    name.setAttribute('class', 'name');
    name.setAttribute('aria-hidden', 'true');
    return name;
}

function label(text, {x, y}) {
    const made = element('text', {x, y, dy: '.355em'});
    made.textContent = text;
    return made;
}

// Row numbers stand left of each row.
function rowLabels(all) {
    const first = all.filter((space, i) => i === 0 || space.y !== all[i - 1].y);
    return first.map(space => label(space.space.slice(1), beside(space, -50, 0)));
}

// Letters stand at the foot of each column, where the column would go on.
function columnLabels(all) {
    const lowest = new Map(all.map(space => [space.x, space]));
    return [...lowest.values()].map(space => label(space.space[0], beside(space, 24, 45)));
}

function beside(space, x, y) {
    const [middle, step] = [center(space), turned(x, y)];
    return {x: middle.x + step.x, y: middle.y + step.y};
}

function viewBox(all) {
    const xs = all.map(space => center(space).x);
    const ys = all.map(space => center(space).y);
    const [before, above, behind, below] = isTurned() ? [62, 64, 44, 44] : [64, 41, 44, 62];
    const left = Math.min(...xs) - before;
    const top = Math.min(...ys) - above;
    const width = Math.max(...xs) + behind - left;
    const height = Math.max(...ys) + below - top;
    const [leastWidth, leastHeight] = isTurned() ? [LEAST_HEIGHT, LEAST_WIDTH]
        : [LEAST_WIDTH, LEAST_HEIGHT];
    const moreWidth = Math.max(0, leastWidth - width);
    const moreHeight = Math.max(0, leastHeight - height);
    return [left - moreWidth / 2, top - moreHeight / 2, width + moreWidth,
            height + moreHeight].join(' ');
}

function arrowHeads() {
    return element('defs', {}, ...['last', 'next'].map(kind =>
        element('marker', {id: `head-${kind}`, viewBox: '0 0 10 10', refX: 1, refY: 5,
                           markerWidth: 14, markerHeight: 13, markerUnits: 'userSpaceOnUse',
                           orient: 'auto'},
            element('path', {class: `head ${kind}`, d: 'M0 0L10 5L0 10z'}))));
}

// The line of a move: from the middle of its source to the rim of the tower on its target.
function line(state, move, kind) {
    const [source, target] = [move?.source, move?.target].map(name =>
        state.spaces.find(space => space.space === name));
    if (!source || !target) {
        return [];
    }
    const [a, b] = [center(source), center(target)];
    const length = Math.hypot(b.x - a.x, b.y - a.y);
    const short = 1 - ARROW / length;
    return [element('line', {class: `move ${kind}`, x1: a.x, y1: a.y, x2: a.x + (b.x - a.x) * short,
                             y2: a.y + (b.y - a.y) * short, 'marker-end': `url(#head-${kind})`})];
}
