// The note at the foot of the board: what matters now, with buttons for what can be done about it.
// What is said stays for a while; an offer as long as it holds.

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

// Shows what a state offers, and ends what was to stay until then.
export function showOffers(state) {
    named('resume').hidden = !state.buttons.resume;
    named('resume').textContent = state.resume === null ? ''
        : `Go on with the game of move ${state.resume}`;
    named('takeback').hidden = !state.buttons.takeback;
    if (lasts) {
        say('', false);
    }
    refresh();
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
    named('said').hidden = named('said').textContent === '';
    named('note').hidden = [...named('note').children].every(part => part.hidden);
}
