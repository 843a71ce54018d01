// The page of the board: it shows the states that the board program sends, and sends back what
// people do. It knows nothing of the rules.

import {giveUp, handState, putBack, startHand} from './hand.js';
import {connect, expectEnd, send} from './link.js';
import {announce, showLog, showLost, showNote, showPanel, startPanel} from './panel.js';
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
    takeStates(messages.filter(message => message.type === 'state'));
    takeLogs(messages.filter(message => message.type === 'log'));
    for (const message of messages.filter(message => message.type === 'error')) {
        giveUp();
        showNote(message.text, false);
    }
}

// A few states, as those around a move and the answer to it, are shown one after the other; of a
// rush only the last one counts.
function takeStates(states) {
    const rush = states.length > FEW;
    (rush ? states.slice(-1) : states).forEach(takeState);
    announce(states.slice(-FEW).map(state => state.announce).filter(Boolean).join('. '));
}

function takeState(state) {
    const next = shown !== null && state.serial === shown.serial + 1;
    shown = state;
    document.body.dataset.state = state.state;
    showBoard(state);
    showTowers(state.spaces, next ? state.step : null, state.state === 'waiting');
    handState(state);
    showPanel(state);
    if (state.state === 'ended') {
        expectEnd();
    }
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
