// All around the board: the line on top, the buttons, the settings, the text of the program and
// the line to type in. What the program prints reaches the page as text and nothing else.

import {LEVELS} from './levels.js';
import {walk} from './looking.js';
import {showMatter, showNote} from './note.js';

const [MOST_COLUMNS, MOST_ROWS] = [15, 9];
const MOST_LOG = 200000;  // characters
const QUIET = 150;        // milliseconds

// Settings and the commands that change them.
const COMMANDS = {level: '/level', players: '/players', color: '/color',
                  randomsetup: '/randomsetup', lifestones: '/lifestones'};
const KEYS = {ArrowLeft: 'back', ArrowRight: 'forward', Home: 'first', End: 'last'};

const named = name => document.getElementById(name);
const log = named('log');
const command = named('command');

let send = null;
let shown = null;         // the last state
let wanted = null;        // a button that had the focus when it was switched off
let titleTimer = 0;
let plies = -1;           // of the game, when the settings were folded or not
let logLength = 0;
let logAtEnd = true;      // people have not scrolled away from what is new
const history = [];
let place = 0;            // in the history

// `sendMessage(message)` sends to the server; `escape()` is what the Escape key does to the board.
export function startPanel(sendMessage, escape) {
    send = sendMessage;
    addOptions('columns', numbers(MOST_COLUMNS));
    addOptions('rows', numbers(MOST_ROWS));
    named('level').append(...LEVELS.map(({level, word}) =>
        new Option(`${word} (${level})`, level)));
    document.querySelectorAll('select[data-setting]').forEach(control =>
        control.selectedIndex = -1);
    // These only tell the server their name, and where they were pressed.
    document.querySelectorAll('button[data-plain]').forEach(button =>
        button.addEventListener('click', () => send({button: button.id, ply: shown.move})));
    named('boardsize').addEventListener('click', () =>
        send({line: `/boardsize ${named('columns').value} ${named('rows').value}`, stop: true}));
    named('evaluate').addEventListener('click', () => {
        named('text').open = true;
        log.scrollIntoView({block: 'nearest'});  // where the answer comes
    });
    rememberSwitch('autopass');
    rememberSwitch('names');
    named('pause').value = localStorage.getItem('pause') ?? '0';
    named('pause').addEventListener('change', () => {
        localStorage.setItem('pause', named('pause').value);
        sendPause();
    });
    named('again').addEventListener('click', () => named('new').click());
    named('lookback').addEventListener('click', () => walk('back'));
    Object.keys(COMMANDS).forEach(name => named(name).addEventListener('change', () =>
        changeSetting(name)));
    named('line').addEventListener('submit', typed);
    log.addEventListener('scroll', () =>
        logAtEnd = log.scrollHeight - log.scrollTop - log.clientHeight < 40);
    new ResizeObserver(showLogEnd).observe(log);
    document.addEventListener('keydown', event => keyDown(event, escape));
}

export function showPanel(state) {
    shown = state;
    named('status').textContent = state.status;
    showTitle(state.status);
    const nothing = state.watching && !state.connected;
    named('dot').className = nothing || state.gameOver ? '' : state.toMove;
    named('number').textContent = `Move ${state.move} of ${state.lastMove}`;
    named('number').hidden = nothing;
    document.body.toggleAttribute('data-watching', Boolean(state.watching));
    showButtons(state.buttons);
    showSettings(state.settings);
    showMatter(state);
    foldSettings(state.lastMove);
    if (state.state === 'ended') {
        showNote(`Talurex has ended (status ${state.exitStatus}).\n${state.message ?? ''}`, true);
    }
}

// The connection is lost; with `refused`, for good.
export function showLost(refused) {
    const text = refused ? 'This is not the address of the board'
                         : 'No connection to the board, trying again';
    named('status').textContent = text;
    showTitle(text);
    showButtons({});
    if (refused) {
        showNote('The board has a new address. Open the one that talurex-board printed when it ' +
                 'was started: its last part lets you in, and is another one each time.', true);
    }
}

// The title of the window costs more than all the rest of a move: it waits until things are quiet.
function showTitle(text) {
    clearTimeout(titleTimer);
    titleTimer = setTimeout(() => document.title = `${text} – Talurex`, QUIET);
}

// Speaks to those who do not see the board; the same text twice would not be spoken.
export function announce(text) {
    const region = named('announce');
    if (text) {
        region.textContent = text === region.textContent ? `${text}\u00a0` : text;
    }
}

export function showLog(text, reset) {
    if (reset) {
        log.textContent = '';
        logLength = 0;
    }
    log.append(text);
    logLength += text.length;
    if (logLength > 1.5 * MOST_LOG) {
        log.textContent = log.textContent.slice(-MOST_LOG);
        logLength = MOST_LOG;
    }
    logAtEnd = logAtEnd || reset;
    requestAnimationFrame(showLogEnd);
}

function showLogEnd() {
    if (logAtEnd) {
        log.scrollTop = log.scrollHeight;
    }
}

function numbers(most) {
    return Array.from({length: most}, (_, i) => i + 1);
}

function addOptions(name, values) {
    named(name).append(...values.map(value => new Option(value, value)));
}

// Settings are for the start of a game; while one is played they are out of the way.
function foldSettings(lastMove) {
    if (plies < 0 || (lastMove === 0) !== (plies === 0)) {
        named('settings').open = lastMove === 0;
    }
    plies = lastMove;
}

export function sendPause() {
    send({pause: Number(named('pause').value)});
}

// A switch that is the page's own, and stands as it was left.
function rememberSwitch(name) {
    const control = named(name);
    control.checked = localStorage.getItem(name) !== 'off';
    const show = () => document.body.toggleAttribute(`data-${name}`, control.checked);
    control.addEventListener('change', () => {
        localStorage.setItem(name, control.checked ? 'on' : 'off');
        show();
    });
    show();
}

function changeSetting(name) {
    const control = named(name);
    delete control.dataset.shown;
    if (control.value !== '' && control.checkValidity()) {
        send({line: `${COMMANDS[name]} ${control.value}`});
    } else {
        showSettings(shown.settings);
    }
}

function showButtons(enabled) {
    const focused = document.activeElement;
    for (const button of document.querySelectorAll('button[data-gated]')) {
        button.disabled = !enabled[button.id];
    }
    named('open').disabled = !enabled.load;
    named('boardsize').disabled = !enabled.new;
    document.querySelectorAll('.settings [data-setting]').forEach(control =>
        control.disabled = !('new' in enabled));
    named('movenow').textContent = shown?.settings?.players === 0 ? 'Stop' : 'Move now';
    keepFocus(focused);
}

// A button that is switched off loses the focus; it gets it back when it can be pressed again.
function keepFocus(focused) {
    if (focused?.disabled) {
        wanted = focused;
    } else if (wanted !== null && document.activeElement !== document.body) {
        wanted = null;
    } else if (wanted !== null && !wanted.disabled) {
        wanted.focus();
        wanted = null;
    }
}

// Controls follow the program, but not while a person is choosing something else.
function showSettings(settings) {
    for (const [name, value] of Object.entries(settings ?? {})) {
        const control = named(name);
        if (control === null || control.dataset.shown === String(value)) {
            continue;
        }
        if (name === 'level' && ![...control.options].some(o => Number(o.value) === value)) {
            control.add(new Option(value, value),
                        [...control.options].find(o => Number(o.value) > value) ?? null);
        }
        control.value = value;
        control.dataset.shown = value;
    }
}

function typed(event) {
    event.preventDefault();
    const line = command.value;
    if (send({line})) {
        if (line !== '' && line !== history.at(-1)) {
            history.push(line);
        }
        place = history.length;
        command.value = '';
    }
}

// The arrows up and down bring back what was typed before.
function recall(step) {
    place = Math.max(0, Math.min(history.length, place + step));
    command.value = history[place] ?? '';
}

function keyDown(event, escape) {
    if (event.defaultPrevented || event.isComposing ||
        event.ctrlKey || event.metaKey || event.altKey) {
        return;
    }
    const field = event.target.closest?.('input, select, textarea, dialog');
    if (event.key === 'Escape') {
        escape();
        field?.blur();
    } else if (field === command && (event.key === 'ArrowUp' || event.key === 'ArrowDown')) {
        event.preventDefault();
        recall(event.key === 'ArrowUp' ? -1 : 1);
    } else if (event.key in KEYS && (!field || (field === command && field.value === ''))) {
        event.preventDefault();
        walk(KEYS[event.key]);
    } else if (!field && event.key.length === 1 && event.key !== ' ') {
        command.focus();  // and the key is typed there
    }
}
