// The live connection to the board program. It is opened again whenever it breaks, except where
// that cannot help: after the program has ended, and with an address that it does not accept.

const RETRY_SECONDS = [0.5, 1, 2, 4, 5];
const REFUSED = 1008;  // the close code for a wrong token

let socket = null;
let tries = 0;
let timer = 0;
let over = false;

// Calls `heard(message)` for each message of the server and `lost(refused)` each time the
// connection breaks or cannot be made.
export function connect(heard, lost) {
    clearTimeout(timer);
    socket?.close();
    const own = new WebSocket(`ws://${location.host}/live`);
    socket = own;
    own.onopen = () => own.send(JSON.stringify({token: location.hash.slice(1)}));
    own.onmessage = event => {
        if (own === socket) {
            tries = 0;
            heard(JSON.parse(event.data));
        }
    };
    own.onclose = event => {
        if (own !== socket) {
            return;
        }
        const refused = event.code === REFUSED;
        lost(refused);
        if (!refused && !over) {
            const pause = RETRY_SECONDS[Math.min(tries++, RETRY_SECONDS.length - 1)];
            timer = setTimeout(() => connect(heard, lost), pause * 1000);
        }
    };
}

// Sends a message if there is a connection; tells whether there is one.
export function send(message) {
    const open = socket !== null && socket.readyState === WebSocket.OPEN;
    if (open) {
        socket.send(JSON.stringify(message));
    }
    return open;
}

// After this a closed connection is no news.
export function expectEnd() {
    over = true;
}
