// Where spaces lie in the picture, and how its elements are made. Each row stands half a space
// further right than the one above. On a telephone the board is turned: the first column is on top.

export const WIDTH = 64;            // of a space; everything else is measured by it
const ROW = 55.4;            // from row to row
const SIDE = WIDTH / Math.sqrt(3);  // from the centre of a space to its corners

const SVG = 'http://www.w3.org/2000/svg';

export function element(name, attributes = {}, ...children) {
    const made = document.createElementNS(SVG, name);
    for (const [key, value] of Object.entries(attributes)) {
        made.setAttribute(key, value);
    }
    made.append(...children);
    return made;
}

const narrow = matchMedia('(max-aspect-ratio: 3/4) and (max-width: 46rem)');

// `changed()` is called when the board is turned.
export function watchTurns(changed) {
    narrow.addEventListener('change', changed);
}

export function isTurned() {
    return narrow.matches;
}

export function center(space) {
    return turned((space.x + space.y / 2) * WIDTH, space.y * ROW);
}

// A place or a step of the board that is not turned, in the picture.
export function turned(x, y) {
    return narrow.matches ? {x: -y, y: x} : {x, y};
}

// The corners of a space whose edge lies `inset` inside the full one, around 0, 0.
export function hexagon(inset) {
    const reach = SIDE - inset * 2 / Math.sqrt(3);
    const half = WIDTH / 2 - inset;
    return [[0, -reach], [half, -reach / 2], [half, reach / 2], [0, reach], [-half, reach / 2],
            [-half, -reach / 2]].map(([x, y]) => turned(x, y))
        .map(({x, y}) => `${x.toFixed(2)},${y.toFixed(2)}`).join(' ');
}

// Whether a point lies in the space around `middle`.
export function inHexagon(point, middle) {
    const [across, down] = narrow.matches ? ['y', 'x'] : ['x', 'y'];
    const dx = Math.abs(point[across] - middle[across]);
    const dy = Math.abs(point[down] - middle[down]);
    return dx <= WIDTH / 2 && dy <= SIDE - dx / Math.sqrt(3);
}
