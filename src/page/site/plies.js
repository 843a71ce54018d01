// The plies of the game, each with the picture of the position that it led to: the page keeps them
// all, so that it can show any of them without asking.

let plies = [];         // by number; 0 is the start position, and null one that is not known
let firstNew = 0;       // those from here on have come since the last look

// Takes a message over: the plies from its first on are these now.
export function keepPlies(message) {
    plies.length = Math.min(plies.length, message.first);
    plies.push(...message.plies);
    firstNew = Math.min(firstNew, message.first);
}

// What happened between position `before` of the last state and `now` of this one: the plies, or
// nothing when it was no step forward in the same game. To be called once for each state.
export function pliesBetween(before, now) {
    const isSameGame = before < firstNew;
    firstNew = Infinity;
    const stepped = isSameGame && before < now ? plies.slice(before + 1, now + 1) : [];
    return stepped.length === now - before && stepped.every(ply => ply?.text) ? stepped : [];
}

// The spaces of a state with the towers that stood on them behind a ply.
export function spacesBehind(ply, spaces) {
    const owners = ['white', 'black', 'life', 'empty'];
    return spaces.map((space, i) => ({
        ...space, owner: owners[ply.stones[i] & 3], life: ply.stones[i] >> 2 & 1,
        height: ply.stones[i] >> 3, targets: [], place: false}));
}
