// Looking back: which position this page shows. It asks nobody and disturbs nothing; the game, and
// other pages, go on meanwhile.

import {numPlies, ply, stateBehind} from './plies.js';

const named = name => document.getElementById(name);
const WALK = {first: () => 0, back: shown => shown - 1, forward: shown => shown + 1,
              last: () => numPlies()};

let state = null;    // the last state
let looking = null;  // the number of the position that is looked at, when it is not the game's
let show = null;

// `showView(view, stepped)` shows what a state tells; `stepped` tells that it is one ply on from
// what was shown before.
export function startLooking(showView, send) {
    show = showView;
    Object.keys(WALK).forEach(name => named(name).addEventListener('click', () => walk(name)));
    named('now').addEventListener('click', () => lookAt(state.move));
    named('fromhere').addEventListener('click', () => {
        if (send({button: 'fromhere', ply: looking})) {
            lookAt(state.move);
        }
    });
}

// Takes a state over. Answers what is to be shown: it, or the earlier position still.
export function viewOf(newState) {
    state = newState;
    if (looking === state.move || (looking !== null && ply(looking) === null)) {
        looking = null;
    }
    refresh();
    return looking === null ? state : stateBehind(looking, state);
}

export function isLooking() {
    return looking !== null;
}

// Plies from number `first` on are others now: who looks at one of them is led back.
export function forgetPlies(first) {
    if (looking >= first) {
        looking = null;
    }
}

// Takes one of the steps first, back, forward and last.
export function walk(name) {
    if (!named(name).disabled) {
        lookAt(WALK[name](looking ?? state.move));
    }
}

export function lookAt(number) {
    const before = looking ?? state.move;
    looking = number === state.move ? null : number;
    refresh();
    show(looking === null ? state : stateBehind(looking, state), number === before + 1);
}

function refresh() {
    const shown = looking ?? state.move;
    document.body.toggleAttribute('data-looking', looking !== null);
    named('looking').hidden = looking === null;
    named('now').textContent = `Move ${shown} of ${numPlies()} \u00b7 back to the game`;
    named('fromhere').disabled = !state.buttons.fromhere;
    for (const name of Object.keys(WALK)) {
        const number = WALK[name](shown);
        named(name).disabled = number === shown ||
                               (number !== state.move && ply(number) === null);
    }
}
