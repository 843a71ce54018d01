// The hand of the person at the board: picks towers, drags them, places stones, with a pointer or
// with keys. Which spaces can be played on, and where to, comes with each state.

import {center, inHexagon} from './geometry.js';
import {finishSlides, glideHome, leaveDropped, pictureOn, towerPicture} from './towers.js';
import {flag, spaceElement} from './view.js';

const DRAG_PIXELS = 3;
const PATIENCE = 2000;  // milliseconds until a move that got no answer may be tried again

const board = document.getElementById('board');

let state = null;
let picked = null;   // name of the space whose tower is picked
let press = null;    // {pointer, x, y, name, again, dragging} while a button or finger is down
let hovered = null;
let ghost = null;
let sent = 0;        // the timer that runs while a move is under way
let playMove = null;
let announce = null;
let explain = null;
let usesKeys = false;  // the focus was brought to where it is by the keyboard

// `play(move)` sends a move in notation, `say(text)` speaks to those who cannot see the board, and
// `tell(text)` shows why something cannot be done.
export function startHand(play, say, tell) {
    playMove = play;
    announce = say;
    explain = tell;
    board.addEventListener('pointerdown', pointerDown);
    board.addEventListener('pointermove', pointerMove);
    board.addEventListener('pointerup', pointerUp);
    board.addEventListener('pointercancel', pointerLost);
    board.addEventListener('lostpointercapture', pointerLost);
    board.addEventListener('touchstart', touchStart, {passive: false});
    board.addEventListener('pointerleave', () => hover(null));
    board.addEventListener('focusin', event => hover(nameOf(event.target)));
    board.addEventListener('focusout', () => hover(null));
    board.addEventListener('keydown', keyDown);
    document.addEventListener('keydown', event => usesKeys ||= event.key === 'Tab', true);
    document.addEventListener('pointerdown', () => usesKeys = false, true);
    // Assistive technology clicks without a pointer.
    board.addEventListener('click', event => event.detail === 0 && activate(nameOf(event.target)));
}

// Takes a new state, whose board is already shown. What is picked stays so if its tower can still
// move as it could before.
export function handState(newState) {
    const before = spaceOf(picked);
    const now = newState.spaces.find(space => space.space === picked);
    if (before && (now?.height !== before.height ||
                   now.targets?.join() !== before.targets.join())) {
        letGo();
    }
    state = newState;
    clearTimeout(sent);
    sent = 0;
    refresh();
}

export function putBack() {
    letGo();
    refresh();
}

// The move that is under way will not be made.
export function giveUp() {
    clearTimeout(sent);
    sent = 0;
    finishSlides();
    refresh();
}

function letGo() {
    if (picked !== null) {
        glideHome(spaceOf(picked));
    }
    if (press !== null) {
        press.name = null;
        press.dragging = false;
    }
    picked = null;
}

function spaceOf(name) {
    return name === null ? undefined : state?.spaces.find(space => space.space === name);
}

function nameOf(node) {
    return node.closest('.space')?.dataset.space ?? null;
}

function canPick(name) {
    return sent === 0 && spaceOf(name)?.targets?.length > 0;
}

function isTarget(name) {
    return sent === 0 && Boolean(spaceOf(picked)?.targets.includes(name));
}

function pick(name) {
    finishSlides();
    picked = name;
    refresh();
    const targets = spaceOf(name).targets;
    announce(`${name} picked, can go to ${targets.join(', ')}`);
}

// What a click or Enter on a space does.
function activate(name) {
    if (isTarget(name)) {
        play(`${picked}-${name}`);
    } else if (name !== picked && canPick(name)) {
        pick(name);
    } else if (picked !== null) {
        putBack();
    } else if (sent === 0 && spaceOf(name)?.place) {
        play(name);
    } else if (spaceOf(name)?.why) {
        explain(`${name}: ${spaceOf(name).why}`);
    }
}

function play(move) {
    sent = setTimeout(giveUp, PATIENCE);
    picked = null;
    refresh();
    playMove(move.toLowerCase());
}

// Brings all that shows what the hand does in line with it.
function refresh() {
    const targets = spaceOf(picked)?.targets ?? [];
    const quiet = !state?.spaces.some(space => space.place || space.targets?.length > 0);
    for (const space of state?.spaces ?? []) {
        const made = spaceElement(space.space);
        const name = space.space;
        const isPicked = name === picked;
        flag(made, 'target', targets.includes(name));
        flag(made, 'picked', isPicked);
        made.setAttribute('aria-label', space.label + (targets.includes(name) ? ', target' : ''));
        const useful = picked === null ? made.dataset.source : isPicked || made.dataset.target;
        made.setAttribute('tabindex', useful || quiet ? 0 : -1);  // Tab goes where one can play
        if (space.targets?.length > 0) {
            made.setAttribute('aria-pressed', isPicked);
        } else {
            made.removeAttribute('aria-pressed');
        }
        pictureOn(name)?.classList.toggle('raised', isPicked);
    }
    hover(hovered);
}

// Shows what could be done on the space under the pointer or focus.
function hover(name) {
    pictureOn(hovered)?.classList.remove('hover');
    ghost?.remove();
    ghost = null;
    hovered = name;
    if (canPick(name)) {
        pictureOn(name)?.classList.add('hover');
    } else if (sent === 0 && spaceOf(name)?.place) {
        ghost = towerPicture({...spaceOf(name), owner: state.placing, height: 1,
                              life: state.placing === 'life' ? 1 : 0});
        ghost.classList.add('ghost');
        document.getElementById('towers').append(ghost);
    }
}

function boardPoint(event) {
    return new DOMPoint(event.clientX, event.clientY)
        .matrixTransform(board.getScreenCTM().inverse());
}

function nameAt(event) {
    const point = boardPoint(event);
    return state?.spaces.find(space => inHexagon(point, center(space)))?.space ?? null;
}

function pointerDown(event) {
    if (press !== null || event.button !== 0 || state === null) {
        return;
    }
    const name = nameAt(event);
    press = {pointer: event.pointerId, x: event.clientX, y: event.clientY, name, again: true,
             dragging: false};
    if (!isTarget(name) && name !== picked && canPick(name)) {
        pick(name);
        press.again = false;
    }
    board.setPointerCapture(event.pointerId);
}

// A finger on a tower that can move drags it; anywhere else it scrolls the page.
function touchStart(event) {
    if (press !== null && canPick(press.name)) {
        event.preventDefault();
    }
}

function pointerMove(event) {
    if (press === null) {
        if (event.pointerType !== 'touch') {
            hover(nameAt(event));
        }
        return;
    }
    if (event.pointerId !== press.pointer) {
        return;
    }
    const far = Math.hypot(event.clientX - press.x, event.clientY - press.y) >= DRAG_PIXELS;
    if (!press.dragging && far && canPick(press.name)) {
        if (picked !== press.name) {
            pick(press.name);
        }
        press.dragging = true;
        hover(null);
        const picture = pictureOn(picked);
        picture.parentNode.append(picture);
        board.classList.add('dragging');
    }
    if (press.dragging) {
        const {x, y} = boardPoint(event);
        pictureOn(picked).style.transform = `translate(${x}px, ${y}px)`;
        over(nameAt(event));
    }
}

// Marks the target that a dragged tower is above.
function over(name) {
    board.querySelectorAll('[data-over]').forEach(made => delete made.dataset.over);
    if (isTarget(name)) {
        spaceElement(name).dataset.over = '1';
    }
}

function pointerUp(event) {
    if (press === null || event.pointerId !== press.pointer) {
        return;
    }
    const {name, again, dragging} = press;
    release();
    const end = nameAt(event);
    if (dragging && isTarget(end)) {
        leaveDropped(spaceOf(picked), spaceOf(end));
        play(`${picked}-${end}`);
    } else if (dragging && end === picked) {
        glideHome(spaceOf(picked));
    } else if (dragging) {
        putBack();
    } else if (again && end === name) {
        activate(name);
    }
}

function pointerLost() {
    if (press !== null) {
        const dragging = press.dragging;
        release();
        if (dragging) {
            putBack();
        }
    }
}

function release() {
    press = null;
    board.classList.remove('dragging');
    over(null);
}

const STEPS = {ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1]};

// The space next to one in a direction of the picture.
function nextSpace(name, [right, down]) {
    const from = center(spaceOf(name));
    let [best, least] = [null, Infinity];
    for (const space of state.spaces) {
        const {x, y} = center(space);
        const along = (x - from.x) * right + (y - from.y) * down;
        const aside = Math.abs((x - from.x) * down) + Math.abs((y - from.y) * right);
        if (along > aside / 2 && along + aside < least) {
            [best, least] = [space.space, along + aside];
        }
    }
    return best;
}

function keyDown(event) {
    const name = nameOf(event.target);
    if (usesKeys && name && event.key in STEPS) {
        event.preventDefault();
        spaceElement(nextSpace(name, STEPS[event.key]) ?? name).focus();
    } else if ((event.key === 'Enter' || event.key === ' ') && nameOf(event.target)) {
        event.preventDefault();
        if (!event.repeat) {
            activate(nameOf(event.target));
        }
    }
}
