"""A page of the board without a browser: starts talurex-board and talks to it as a page does."""
import base64
import json
import os
import select
import socket
import struct
import subprocess
import time


class Board:
    """A running talurex-board, with a settings file of its own in `folder`."""

    def __init__(self, program, folder, *options, settings=""):
        with open(os.path.join(folder, "talurex.cfg"), "w", encoding="ascii") as file:
            file.write(settings)
        self.process = subprocess.Popen(
            [program, "--no-open", *options], cwd=folder, text=True,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        line = self.process.stdout.readline()
        before, _, self.token = line.strip().partition("/#")
        assert before.startswith("Board: http://127.0.0.1:") and self.token, line
        self.port = int(before.rpartition(":")[2])

    def __enter__(self):
        return self

    def end(self, patience=20):
        """Asks it to end as a shell would. Answers its status and what it has complained of."""
        self.process.terminate()
        _, complaints = self.process.communicate(timeout=patience)
        return self.process.returncode, complaints

    def __exit__(self, *_):
        self.process.terminate()
        self.process.wait(20)


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as listener:
        return listener.getsockname()[1]


def http(port, request, patience=15):
    """Sends the bytes and answers all that comes back until the server closes."""
    with socket.create_connection(("127.0.0.1", port), patience) as connection:
        connection.sendall(request)
        answer = b""
        try:
            while piece := connection.recv(65536):
                answer += piece
        except ConnectionResetError:
            pass
        return answer


def has_gone(visitor, patience=5.0):
    """Whether the server has hung up on it, or does within the time. What it says is read over."""
    deadline = time.time() + patience
    try:
        while select.select([visitor], [], [], max(0.0, deadline - time.time()))[0]:
            if not visitor.recv(65536):
                return True
    except ConnectionResetError:
        return True
    return False


class Page:
    """A live connection. `last` is the latest state, `plies` are those of the game, `log` is the
    text of the program. With `room` the system keeps no more bytes than that for a page that does
    not receive."""

    def __init__(self, port, token=None, host=None, origin=None, room=None):
        self.socket = socket.socket()
        if room is not None:
            self.socket.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, room)
        self.socket.settimeout(15)
        self.socket.connect(("127.0.0.1", port))
        key = base64.b64encode(os.urandom(16)).decode()
        self.socket.sendall(
            f"GET /live HTTP/1.1\r\nHost: {host or f'127.0.0.1:{port}'}\r\n"
            f"Origin: {origin or f'http://127.0.0.1:{port}'}\r\n"
            "Connection: Upgrade\r\nUpgrade: websocket\r\n"
            f"Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: {key}\r\n\r\n".encode())
        self.bytes = b""
        self.last = None
        self.plies = []
        self.log = ""
        while b"\r\n\r\n" not in self.bytes:
            self._read(time.time() + 15)
        self.answer, _, self.bytes = self.bytes.partition(b"\r\n\r\n")
        if token is not None:
            self.send({"token": token})

    def send_frame(self, kind, content):
        mask = os.urandom(4)
        size = len(content)
        head = bytes([128 | kind, 128 | size]) if size < 126 else \
            bytes([128 | kind, 254]) + struct.pack(">H", size)
        self.socket.sendall(head + mask + bytes(c ^ mask[i % 4] for i, c in enumerate(content)))

    def send(self, message):
        self.send_frame(1, json.dumps(message).encode())

    def _read(self, deadline):
        if not select.select([self.socket], [], [], max(0, deadline - time.time()))[0]:
            raise TimeoutError
        piece = self.socket.recv(65536)
        if not piece:
            raise EOFError
        self.bytes += piece

    def _take(self, count, deadline):
        while len(self.bytes) < count:
            self._read(deadline)
        taken, self.bytes = self.bytes[:count], self.bytes[count:]
        return taken

    def receive(self, patience=15):
        """The next message. EOFError tells the code with which the server has parted."""
        deadline = time.time() + patience
        while True:
            kind, size = self._take(2, deadline)
            if size == 126:
                size = struct.unpack(">H", self._take(2, deadline))[0]
            elif size == 127:
                size = struct.unpack(">Q", self._take(8, deadline))[0]
            content = self._take(size, deadline)
            if kind & 15 == 8:
                try:
                    self.send_frame(8, content)
                except OSError:
                    pass  # it has not waited for the answer
                raise EOFError(struct.unpack(">H", content[:2])[0])
            if kind & 15 == 9:
                self.send_frame(10, content)
                continue
            message = json.loads(content)
            if message["type"] == "state":
                self.last = message
            elif message["type"] == "plies":
                del self.plies[message["first"]:]
                self.plies += message["plies"]
            elif message["type"] == "log":
                self.log = message["text"] if message["reset"] else self.log + message["text"]
            return message

    def state(self, wanted, patience=15):
        """Waits for a state of which `wanted` holds."""
        while True:
            message = self.receive(patience)
            if message["type"] == "state" and wanted(message):
                return message
