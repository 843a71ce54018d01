// Where spaces lie in the picture, and how its elements are made. Each row stands half a space
// further right than the one above, as on the terminal.

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

export function center(space) {
    return {x: (space.x + space.y / 2) * WIDTH, y: space.y * ROW};
}

// The corners of a space whose edge lies `inset` inside the full one, around 0, 0.
export function hexagon(inset) {
    const reach = SIDE - inset * 2 / Math.sqrt(3);
    const half = WIDTH / 2 - inset;
    return [[0, -reach], [half, -reach / 2], [half, reach / 2], [0, reach], [-half, reach / 2],
            [-half, -reach / 2]].map(corner => corner.map(n => n.toFixed(2)).join()).join(' ');
}

// Whether a point lies in the space around `middle`.
export function inHexagon(point, middle) {
    const dx = Math.abs(point.x - middle.x);
    const dy = Math.abs(point.y - middle.y);
    return dx <= WIDTH / 2 && dy <= SIDE - dx / Math.sqrt(3);
}
