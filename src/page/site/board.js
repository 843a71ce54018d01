// The page of the board: it shows the states that the board program sends, and sends back what
// people do. It knows nothing of the rules.

import {giveUp, handState, putBack, startHand} from './hand.js';
import {connect, expectEnd, send} from './link.js';
import {announce, showLog, showLost, showNote, showPanel, startPanel} from './panel.js';
import {keepPlies, pliesBetween, spacesBehind} from './plies.js';
import {showTowers} from './towers.js';
import {showBoard} from './view.js';

const FEW = 4;

let shown = null;   // the last state; null before the first one of a connection
let heard = [];     // messages that are not looked at yet

// What arrives together is looked at together. A message channel, and not a timer, because timers
// of hidden pages are slow.
const later = new MessageChannel();
later.port1.onmessage = takeMessages;

function takeMessages() {
    const messages = heard;
    heard = [];
    takeGame(messages.filter(message => message.type === 'state' || message.type === 'plies'));
    takeLogs(messages.filter(message => message.type === 'log'));
    for (const message of messages.filter(message => message.type === 'error')) {
        giveUp();
        showNote(message.text, false);
    }
}

// A few states, as those around a move and the answer to it, are shown one after the other; of a
// rush only the last one counts.
function takeGame(messages) {
    const states = messages.filter(message => message.type === 'state');
    const rush = states.length > FEW;
    const said = [];
    for (const message of messages) {
        if (message.type === 'plies') {
            keepPlies(message);
        } else if (!rush || message === states.at(-1)) {
            said.push(takeState(message));
        }
    }
    announce(said.filter(Boolean).join('. '));
}

// Answers what is to be said of it.
function takeState(state) {
    const before = shown;
    shown = state;
    document.body.dataset.state = state.state;
    showBoard(state);
    const stepped = pliesBetween(before?.move ?? -1, state.move);
    showSteps(stepped.length > FEW ? [] : stepped, state);
    handState(state);
    showPanel(state);
    if (state.state === 'ended') {
        expectEnd();
    }
    return before === null ? '' : saidOf(before, state, stepped);
}

// The towers slide ply by ply to where the state has them.
function showSteps(stepped, state) {
    const answered = state.state === 'waiting';
    stepped.slice(0, -1).forEach(ply =>
        showTowers(spacesBehind(ply, state.spaces), stepOf(ply), false));
    const last = stepped.at(-1);
    showTowers(state.spaces, last === undefined ? null : stepOf(last), answered);
}

function stepOf(ply) {
    return ply.target === null ? null : ply;
}

function saidOf(before, state, stepped) {
    if (stepped.length > 0) {
        const first = state.move - stepped.length + 1;
        return stepped.map((ply, i) => `Move ${first + i}: ${ply.say}`).slice(-FEW).join('. ');
    }
    const same = before.move === state.move && before.lastMove === state.lastMove;
    return same ? '' : `Move ${state.move} of ${state.lastMove} is shown`;
}

function takeLogs(logs) {
    const first = Math.max(0, logs.findLastIndex(message => message.reset));
    if (logs.length > 0) {
        showLog(logs.slice(first).map(message => message.text).join(''), logs[first].reset);
    }
}

// Without a connection the board stays to be looked at.
function takeLoss(refused) {
    takeMessages();
    if (shown?.state === 'ended') {
        return;
    }
    document.body.dataset.state = 'lost';
    if (shown !== null) {
        const spaces = shown.spaces.map(space => ({...space, targets: [], place: false}));
        showBoard({...shown, spaces});
        handState({...shown, spaces});
    }
    shown = null;
    showLost(refused);
}

function hear(message) {
    heard.push(message);
    if (heard.length === 1) {
        later.port2.postMessage(0);
    }
}

startHand(move => send({move}), announce);
startPanel(send, putBack);
connect(hear, takeLoss);
addEventListener('hashchange', () => connect(hear, takeLoss));
