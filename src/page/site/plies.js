// The plies of the game, each with the picture of the position that it led to: the page keeps them
// all, so that it can show any of them without asking.

const OWNERS = ['white', 'black', 'life', 'empty'];

let plies = [];    // by number; 0 is the start position, and null one that is not known
let firstNew = 0;  // those from here on have come since the last look

// Takes a message over: the plies from its first on are these now.
export function keepPlies(message) {
    plies.length = Math.min(plies.length, message.first);
    plies.push(...message.plies);
    firstNew = Math.min(firstNew, message.first);
}

export function ply(number) {
    return plies[number] ?? null;
}

export function numPlies() {
    return plies.length - 1;
}

// What happened between position `before` of the last state and `now` of this one: the plies, or
// nothing when it was no step forward in the same game. To be called once for each state.
export function pliesBetween(before, now) {
    const isSameGame = before < firstNew;
    firstNew = Infinity;
    const stepped = isSameGame && before < now ? plies.slice(before + 1, now + 1) : [];
    return stepped.length === now - before && stepped.every(one => one?.text) ? stepped : [];
}

// The spaces of a state with the towers that stood on them behind a ply, where nothing can be done.
export function spacesBehind(one, spaces) {
    return spaces.map((space, i) => {
        const [owner, life, height] = towerOf(one.stones[i]);
        return {...space, owner, life, height, targets: [], place: false,
                label: labelOf(space.space, owner, life, height)};
    });
}

// What a state would say of position `number`, where nothing can be done.
export function stateBehind(number, state) {
    const one = plies[number];
    const spaces = spacesBehind(one, state.spaces);
    return {...state, spaces, move: number, placing: null, mustPass: false,
            last: stepOf(one) ?? stepOf(plies[number - 1]), next: stepOf(plies[number + 1])};
}

// What a ply moved; null for a pass.
export function stepOf(one) {
    return one?.target ? one : null;
}

function towerOf(stones) {
    return [OWNERS[stones & 3], stones >> 2 & 1, stones >> 3];
}

function labelOf(name, owner, life, height) {
    if (owner === 'empty') {
        return `${name}, empty`;
    }
    return owner === 'life' ? `${name}, life stone`
        : `${name}, ${owner} tower of ${height}${life ? ' with a life stone' : ''}`;
}
