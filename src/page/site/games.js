// Saved games: those of the program's folder to choose from, files of the person's own, and the
// present game as a file.

import {ask, showNote} from './note.js';

const LARGEST_FILE = 65536;  // bytes

const named = name => document.getElementById(name);
const dialog = named('gamelist');

let send = null;
let opened = null;  // the last message with a file, to be sent again when it may replace another

export function startGames(sendMessage) {
    send = sendMessage;
    named('games').addEventListener('click', () => {
        send({button: 'games'});
        dialog.showModal();
    });
    named('closegames').addEventListener('click', () => dialog.close());
    named('open').addEventListener('change', openFile);
    named('download').addEventListener('click', () => send({button: 'download'}));
    named('save').addEventListener('click', () => send({save: fileName()}));
    named('load').addEventListener('click', () => send({load: fileName()}));
}

export function showGames(games) {
    named('stored').replaceChildren(...games.map(rowOf));
    named('nogames').hidden = games.length > 0;
}

// The program asks before it writes over a file.
export function askToReplace({what, name}) {
    const message = what === 'open' ? opened : {save: name};
    if (message !== null) {
        ask(`There is a ${name} already.`, 'Replace it', () => send({...message, replace: true}));
    }
}

// Hands the game to the browser as a file.
export function download(content) {
    const link = document.createElement('a');
    link.download = `talurex-${new Date().toISOString().slice(0, 10)}.tlx`;
    link.href = URL.createObjectURL(new Blob([content], {type: 'text/plain'}));
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 1000);
}

function fileName() {
    return named('filename').value.trim();
}

async function openFile() {
    const file = named('open').files[0];
    dialog.close();
    if (file?.size > LARGEST_FILE) {
        showNote(`${file.name} is too large for a saved game: 64 KiB at most.`, false);
    } else if (file) {
        opened = {open: file.name, content: await file.text()};
        send(opened);
    }
    named('open').value = '';  // so that the same one can be chosen again
}

function rowOf(game) {
    const row = document.createElement('button');
    row.type = 'button';
    row.dataset.name = game.name;
    row.append(...textsOf(game).map(text => {
        const cell = document.createElement('span');
        cell.textContent = text;
        return cell;
    }));
    row.addEventListener('click', () => {
        dialog.close();
        send({load: game.name});
    });
    return row;
}

function textsOf(game) {
    const written = new Date(game.written * 1000);
    const score = `${Math.max(game.white, game.black)} : ${Math.min(game.white, game.black)}`;
    const winner = game.white > game.black ? 'White won' : 'Black won';
    const result = game.white === game.black ? 'a draw' : winner;
    return [game.name.replace(/\.tlx$/, ''),
            written.toLocaleString([], {dateStyle: 'medium', timeStyle: 'short'}),
            `${game.columns} \u00d7 ${game.rows}`, `${game.plies} plies`,
            game.over ? `${result}, ${score}` : ''];
}
