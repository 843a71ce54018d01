// The bars above and below the board: who plays each side, what it is doing, and its stones. One's
// own side is below; with two people that is White.

import {wordOf} from './levels.js';

const bars = {top: document.getElementById('top'), bottom: document.getElementById('bottom')};

export function showBars(state) {
    const {players, side} = state.settings;
    const below = players === 1 && !state.watching ? side : 'white';
    showBar(bars.top, below === 'white' ? 'black' : 'white', state);
    showBar(bars.bottom, below, state);
}

function showBar(bar, side, state) {
    const active = !state.gameOver && side === state.toMove;
    const [stone, name, doing, count] = bar.children;
    bar.dataset.side = side;
    bar.toggleAttribute('data-active', active);
    stone.className = `stone ${side}`;
    name.textContent = nameOf(side, state);
    doing.textContent = active ? doingOf(side, state) : strengthOf(side, state);
    count.id = side;
    count.textContent = state.score[side];
}

function isPerson(side, {settings: {players, side: own}, watching}) {
    return !watching && (players === 2 || (players === 1 && own === side));
}

function nameOf(side, state) {
    const title = side === 'white' ? 'White' : 'Black';
    if (state.watching || state.settings.players === 2) {
        return title;
    }
    return isPerson(side, state) ? 'You' : 'Talurex';
}

function strengthOf(side, state) {
    return state.watching || isPerson(side, state) ? '' : wordOf(state.settings.level);
}

function doingOf(side, state) {
    if (state.state === 'thinking') {
        return state.evaluating ? '' : 'is thinking';
    }
    if (state.mustPass) {
        return 'must pass';
    }
    if (state.placing) {
        return state.placing === 'life' ? 'places a life stone' : 'places a stone';
    }
    const isYours = state.settings.players === 1 && isPerson(side, state);
    return isYours ? 'it is your move' : 'is to move';
}
