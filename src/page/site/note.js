// The note at the foot of the board: what matters now, with buttons for what can be done about it.
// What is said stays for a while; all else as long as it holds.

const NOTE_SECONDS = 8;

const named = name => document.getElementById(name);

let timer = 0;
let lasts = false;  // what is said stays until the next state
let accept = null;  // what the button of a question does

export function startNote() {
    named('accept').addEventListener('click', () => {
        const accepted = accept;
        say('', false);
        accepted?.();
    });
}

// Says something, for a while or until the next state.
export function showNote(text, untilState) {
    accept = null;
    say(text.trim(), untilState);
    if (!untilState) {
        timer = setTimeout(() => say('', false), NOTE_SECONDS * 1000);
    }
}

// Asks something; `yes` is the text of the button that does `action`.
export function ask(text, yes, action) {
    accept = action;
    named('accept').textContent = yes;
    say(text, false);
}

// Shows how the game stands where that asks for something, and what a state offers.
export function showMatter(state) {
    const {buttons} = state;
    named('matter').textContent = matterOf(state);
    named('pass').hidden = !buttons.pass;
    named('continue').hidden = !buttons.continue;
    named('fill').hidden = !buttons.fill;
    named('again').hidden = named('lookback').hidden = !state.gameOver || !buttons.new;
    named('resume').hidden = !state.buttons.resume;
    named('resume').textContent = state.resume === null ? ''
        : `Go on with the game of move ${state.resume}`;
    named('takeback').hidden = !state.buttons.takeback;
    if (lasts) {
        say('', false);
    }
    refresh();
}

// What is to be said aloud of a state: that somebody must pass, or the result.
export function matter(state) {
    return state !== null && (state.mustPass || state.gameOver) ? matterOf(state) : '';
}

function matterOf(state) {
    if (state.watching && !state.connected) {
        return 'Start a game with talurex -gui in a terminal, and it is shown here.';
    }
    if (state.state !== 'waiting') {
        return '';
    }
    if (state.gameOver) {
        return resultOf(state);
    }
    if (state.buttons.continue) {
        return `Stopped at move ${state.move} of ${state.lastMove}`;
    }
    const person = state.settings.players === 2 ? state.status.replace('must pass', 'has no move')
        : 'You have no move';
    return state.mustPass ? person : '';
}

function resultOf({score, settings}) {
    const [less, more] = [score.white, score.black].sort((a, b) => a - b);
    if (less === more) {
        return `A draw, ${more} to ${less}`;
    }
    const winner = score.white > score.black ? 'white' : 'black';
    if (settings.players === 1) {
        return settings.side === winner ? `You won, ${more} to ${less}`
            : `You lost, ${less} to ${more}`;
    }
    return `${winner === 'white' ? 'White' : 'Black'} won, ${more} to ${less}`;
}

function say(text, untilState) {
    clearTimeout(timer);
    lasts = untilState;
    accept = text === '' ? null : accept;
    named('said').textContent = text;
    refresh();
}

function refresh() {
    named('accept').hidden = accept === null;
    for (const text of [named('said'), named('matter')]) {
        text.hidden = text.textContent === '';
    }
    named('note').hidden = [...named('note').children].every(part => part.hidden);
}
