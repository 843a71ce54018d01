// The page of the board: it shows the states that the board program sends, and sends back what
// people do. It knows nothing of the rules.

import {showBars} from './bars.js';
import {askToReplace, download, showGames, startGames} from './games.js';
import {watchTurns} from './geometry.js';
import {giveUp, handState, putBack, startHand} from './hand.js';
import {connect, expectEnd, send} from './link.js';
import {forgetPlies, isLooking, lookAt, startLooking, viewOf} from './looking.js';
import {listPlies, markPly, startMoves} from './moves.js';
import {matter, showNote, startNote} from './note.js';
import {announce, sendPause, showLog, showLost, showPanel, startPanel} from './panel.js';
import {keepPlies, ply, pliesBetween, spacesBehind, stepOf} from './plies.js';
import {showRulesOnce, startRules} from './rules.js';
import {showTowers} from './towers.js';
import {showBoard} from './view.js';

const FEW = 4;
const PASS_DELAY = 1200;  // milliseconds

// What is to be done with the messages that are no part of the game.
const ANSWERS = {
    error: message => {
        giveUp();
        showNote(message.text, false);
    },
    ask: askToReplace,
    games: message => showGames(message.games),
    file: message => download(message.content),
};

let shown = null;   // the last state; null before the first one of a connection
let heard = [];     // messages that are not looked at yet
let saidMatter = '';  // of the last state
let passTimer = 0;

// What arrives together is looked at together. A message channel, and not a timer, because timers
// of hidden pages are slow.
const later = new MessageChannel();
later.port1.onmessage = takeMessages;

function takeMessages() {
    const messages = heard;
    heard = [];
    messages.forEach(message => ANSWERS[message.type]?.(message));
    takeGame(messages.filter(message => message.type === 'state' || message.type === 'plies'));
    takeLogs(messages.filter(message => message.type === 'log'));
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
            forgetPlies(message.first);
            listPlies(message.first);
        } else if (!rush || message === states.at(-1)) {
            said.push(takeState(message));
        }
    }
    const words = matter(shown);
    announce([...said, words === saidMatter ? '' : words].filter(Boolean).join('. '));
    saidMatter = words;
}

// Answers what is to be said of it.
function takeState(state) {
    const before = shown;
    shown = state;
    document.body.dataset.state = state.state;
    const wasLooking = isLooking();
    const view = viewOf(state);
    showBoard(view);
    const stepped = pliesBetween(before?.move ?? -1, state.move);
    if (isLooking()) {
        showTowers(view.spaces, null, true);
    } else {
        showSteps(wasLooking || stepped.length > FEW ? [] : stepped, state);
    }
    handState(view);
    showPanel(state);
    showBars(state);
    markPly(view.move, state.move);
    passSoon(state);
    if (state.state === 'ended') {
        expectEnd();
    } else if (!state.watching) {
        if (before === null) {
            sendPause();
        }
        showRulesOnce(state.lastMove);
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

// Shows an earlier position, or the game's again.
function showView(view, stepped) {
    showBoard(view);
    showTowers(view.spaces, stepped ? stepOf(ply(view.move)) : null, true);
    handState(view);
    markPly(view.move, shown.move);
}

// Who has no move need not say so: after a moment to see it, the page does.
function passSoon(state) {
    clearTimeout(passTimer);
    if (state.mustPass && state.running && state.buttons.pass) {
        passTimer = setTimeout(() => {
            if (document.getElementById('autopass').checked) {
                send({button: 'pass', ply: state.move});
            }
        }, PASS_DELAY);
    }
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
    clearTimeout(passTimer);
    if (shown !== null) {
        const spaces = shown.spaces.map(space => ({...space, targets: [], place: false}));
        const view = viewOf({...shown, spaces, buttons: {}});
        showBoard(view);
        handState(view);
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

startHand(move => send({move, ply: shown.move}), announce, text => showNote(text, false));
startRules();
watchTurns(() => shown !== null && showView(viewOf(shown), false));
startLooking(showView, send);
startMoves(lookAt);
startNote();
startGames(send);
startPanel(send, putBack);
connect(hear, takeLoss);
addEventListener('hashchange', () => connect(hear, takeLoss));
