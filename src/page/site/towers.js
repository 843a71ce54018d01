// The towers as they are seen: discs on top of each other, and how they slide and fade. What a
// tower is stands on its space (view.js); here are only pictures, which may lag behind by the
// length of a slide or two.

import {center, element} from './geometry.js';

const SLIDE = 200;  // milliseconds
const FADE = 260;
const QUIET = 250;  // after a rush of moves nothing slides until this long nothing has happened
const EASE = 'cubic-bezier(.3, .1, .2, 1)';

const RX = 23;
const RY = 16;
const STONE = 4.2;      // thickness of a stone in towers of up to six; higher ones are pressed
const FULL_STONES = 6;
const MOST_DISCS = 13;

const calm = matchMedia('(prefers-reduced-motion: reduce)');

let layer = null;
let pictures = new Map();  // by the name of the space: {key, picture}
let goal = [];             // the spaces that are drawn, or will be when all slides are done
let running = [];          // the animations of the slide under way
let waiting = null;        // the one slide that follows it
let quietUntil = 0;
let dropped = null;        // the move whose tower was dragged there already

export function startTowers(towerLayer) {
    layer = towerLayer;
    running.forEach(animation => animation.cancel());
    pictures = new Map();
    goal = [];
    running = [];
    waiting = null;
    dropped = null;
}

// Shows the towers of these spaces. With a step (what moved since they were shown last) it slides,
// unless many come at once: a person's move and the answer to it slide one after the other.
// `answered` tells that a tower that was dropped has arrived by now, or never will.
export function showTowers(spaces, step, answered) {
    if (keyOf(spaces) === keyOf(goal)) {
        if (dropped !== null && answered) {
            finishSlides();
        }
        return;
    }
    const now = performance.now();
    const rush = waiting !== null || now < quietUntil;
    if (step === null || rush || calm.matches || document.hidden) {
        quietUntil = rush ? now + QUIET : 0;
        goal = spaces;
        finishSlides();
    } else if (running.length > 0) {
        goal = spaces;
        waiting = {spaces, step};
    } else {
        goal = spaces;
        slide(spaces, step);
    }
}

// Ends what slides at once; the pictures are then up to date.
export function finishSlides() {
    running.forEach(animation => animation.cancel());
    running = [];
    waiting = null;
    dropped = null;
    draw(goal, []);
}

export function pictureOn(name) {
    return pictures.get(name)?.picture;
}

// Lets the tower stay where it was dropped until the program has answered.
export function leaveDropped(source, target) {
    dropped = {source: source.space, target: target.space};
    pictureOn(source.space).style.transform = at(target);
}

// Takes a tower that is in the air back to its space.
export function glideHome(space) {
    const picture = pictureOn(space.space);
    const from = picture?.style.transform;
    if (from) {
        picture.style.transform = '';
        if (!calm.matches) {
            picture.animate([{transform: from}, {transform: at(space)}],
                            {duration: SLIDE * 0.7, easing: EASE});
        }
    }
}

function at(space) {
    const {x, y} = center(space);
    return `translate(${x}px, ${y}px)`;
}

function keyOf(spaces) {
    return spaces.map(keyOfTower).join();
}

function keyOfTower(space) {
    return `${space.space} ${space.x} ${space.y} ${space.owner} ${space.height} ${space.life}`;
}

// Draws all towers but those that `kept` names, whose pictures stay as they are.
function draw(spaces, kept) {
    for (const space of spaces.filter(({space: name}) => !kept.includes(name))) {
        const old = pictures.get(space.space);
        const key = keyOfTower(space);
        if (old && old.key === key) {
            old.picture.style.transform = '';
            continue;
        }
        old?.picture.remove();
        pictures.delete(space.space);
        if (space.owner !== 'empty') {
            const picture = towerPicture(space);
            layer.append(picture);
            pictures.set(space.space, {key, picture});
        }
    }
}

function slide(spaces, step) {
    const mover = pictures.get(step.source)?.picture;
    const source = spaces.find(space => space.space === step.source);
    const target = spaces.find(space => space.space === step.target);
    const carried = dropped?.source === step.source && dropped?.target === step.target;
    dropped = null;
    if (mover && source && target && !carried) {
        layer.append(mover);
        const way = [{transform: at(source)}, {transform: at(target)}];
        run(mover, way, {duration: SLIDE, fill: 'forwards'},
            () => fade(spaces, step.removed));
        return;
    }
    fade(spaces, step.removed);
    const placed = step.source === null ? pictureOn(step.target) : undefined;
    if (placed) {
        run(placed.firstChild,
            [{transform: 'translateY(-14px)', opacity: 0}, {transform: 'none', opacity: 1}],
            {duration: SLIDE * 0.7}, settle);
    }
}

// The move is made; what is cut off leaves.
function fade(spaces, removed) {
    draw(spaces, removed);
    removed.map(pictureOn).filter(Boolean).forEach(picture =>
        run(picture, [{opacity: 1}, {opacity: 0}], {duration: FADE, fill: 'forwards'}, settle));
    settle();
}

function run(picture, frames, options, then) {
    const animation = picture.animate(frames, {easing: EASE, ...options});
    running.push(animation);
    animation.onfinish = () => {
        running = running.filter(other => other !== animation);
        then();
    };
}

// When nothing slides any more, the next one does.
function settle() {
    if (running.length > 0) {
        return;
    }
    const next = waiting;
    waiting = null;
    if (next === null) {
        draw(goal, []);
    } else {
        slide(next.spaces, next.step);
    }
}

// A tower with its foot on the point 0, 0 of its space; it is moved there by its transform. The
// inner group is what style sheets may lift.
export function towerPicture(space) {
    const discs = Math.min(space.height, MOST_DISCS);
    const rise = STONE * Math.min(discs, FULL_STONES) + 1.2 * Math.max(0, discs - FULL_STONES);
    const foot = Math.min(15, 2.2 + rise * 0.45);
    const top = foot - rise;
    const stack = element('g', {class: 'lift'});
    for (let i = 0; i < discs; i++) {
        stack.append(side(foot - (i + 1) * rise / discs, rise / discs,
                          i === 0 && space.life ? 'side red' : 'side'));
    }
    stack.append(element('ellipse', {class: 'face', cy: top, rx: RX, ry: RY}));
    stack.append(...signs(space, top));
    const {x, y} = center(space);
    return element('g', {class: `tower ${space.owner}`, transform: `translate(${x} ${y})`}, stack);
}

function side(top, thickness, name) {
    return element('path', {class: name, d: `M${-RX} ${top}v${thickness}` +
        `a${RX} ${RY} 0 0 0 ${2 * RX} 0v${-thickness}a${RX} ${RY} 0 0 1 ${-2 * RX} 0z`});
}

// What stands on the top face: the height, and a diamond for a life stone.
function signs(space, top) {
    if (space.owner === 'life') {
        return [diamond(0, top, 9, 'lone')];
    }
    const digits = String(space.height).length;
    const text = element('text', {x: space.life ? -6 : 0, y: top, dy: '.355em',
                                  class: digits > 2 ? 'long' : ''});
    text.textContent = space.height;
    const rim = space.owner === 'black'
        ? [element('ellipse', {class: 'rim', cy: top, rx: RX - 3.2, ry: RY - 2.6})] : [];
    return [...rim, text, ...(space.life ? [diamond(6.6 + digits * 3.2, top, 5.4, 'sign')] : [])];
}

function diamond(x, y, size, name) {
    return element('path', {class: name, d: `M${x} ${y - size}l${size} ${size}l${-size} ${size}` +
        `l${-size} ${-size}z`});
}
