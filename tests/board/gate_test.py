"""Who is taken for a game on the display port of talurex-board: gate_test.py TALUREX_BOARD TALUREX"""
import os
import socket
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True  # nothing is left in the source tree
from page_client import Board, Page, free_port, has_gone, http

# An update with a tower that no game has.
FORGED = b"L -1 -1 0 0\nN -1 -1 -1 -1\nS 5 2 47 0 1\nTMove (30/30) WHITE is moving\nD\n"
NOTHING = b"L -1 -1 -1 -1\n"


class Game:
    """A Talurex that is told what to type."""

    def __init__(self, program, folder, port):
        with open(os.path.join(folder, "talurex.cfg"), "w", encoding="ascii") as file:
            file.write(f"GUI_PORT {port}\nNUM_HUMAN_PLAYERS 2\n")
        self.process = subprocess.Popen([program, "-gui"], cwd=folder, text=True,
                                        stdin=subprocess.PIPE, stdout=subprocess.PIPE)

    def type(self, *lines):
        for line in lines:
            self.process.stdin.write(line + "\n")
        self.process.stdin.flush()

    def end(self):
        text, _ = self.process.communicate("/quit\n", timeout=20)
        return text


def connect(port, begin=b""):
    caller = socket.create_connection(("127.0.0.1", port), 15)
    caller.sendall(begin)
    return caller


def heights(state):
    return {space["space"]: space["height"] for space in state["spaces"] if space["height"]}


def shows(*spaces):
    return lambda state: state["connected"] and heights(state) == dict.fromkeys(spaces, 1)


def try_others(port):
    """Those that begin with something else are hung up on, whatever comes behind it."""
    body = FORGED + b"Q\n"
    post = (f"POST / HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\nContent-Type: text/plain\r\n"
            f"Content-Length: {len(body)}\r\n\r\n").encode()
    assert http(port, post + body) == b""
    for begin in [b"\n", b"\r\n", b"X\n", b"D \n", b"l 0 0 0 0\n", b"L 0 0 0\n",
                  b"TRACE / HTTP/1.1\n", b"CONNECT 127.0.0.1:1 HTTP/1.1\r\n", b"\x16\x03\x01" + 300 * b"\x01",
                  b"TMove (1/1) " + 300 * b"x" + b"\n", 257 * b"C"]:
        assert has_gone(connect(port, begin + FORGED)), begin
    assert has_gone(connect(port, 257 * b"C")), "a first line without end"
    with connect(port, b"L -1 -1 -1") as unfinished:
        assert not has_gone(unfinished, 0)


def try_game(program, folder, port, page):
    """A game that is shown, past all that wait; none comes between it and the page."""
    game = Game(program, folder, port)
    page.state(shows())
    game.type("a1", "b1")
    page.state(shows("A1", "B1"))
    second = connect(port, FORGED)
    began = time.time()
    assert has_gone(second)
    assert time.time() - began < 5
    game.type("c1")
    page.state(shows("A1", "B1", "C1"))
    return game


def try_change(program, folder, port, page, game):
    """The next game can come at any time: right behind the end of the one that is shown, and while
    many wait."""
    game.process.kill()
    game.process.communicate()
    with connect(port, NOTHING + b"TMove (9/9) WHITE is moving\nD\n"):
        page.state(lambda state: state["connected"] and state["move"] == 9)
    page.state(lambda state: not state["connected"])
    crowd = [connect(port) for _ in range(20)]
    game = Game(program, folder, port)
    page.state(shows())
    game.type("d2")
    page.state(shows("D2"))
    text = game.end()
    assert "successfully established" in text and "was lost" not in text, text
    page.state(lambda state: not state["connected"])
    assert all(has_gone(caller) for caller in crowd[:17])
    for caller in crowd:
        caller.close()


def try_lines(port, page):
    """A line is as long as it is, and a wrong one is skipped, wherever the pieces end."""
    with connect(port, NOTHING) as game:
        for piece in [b"S 0 4 1 0 0", b"\nS 1 4", b" 1 1 0\n" + 9000 * b"S", 9000 * b"1",
                      b"\nS 2 4 1 0 0\nTMove (7/7) WHITE is ", b"moving\nD\n"]:
            game.sendall(piece)
        page.state(lambda state: state["connected"] and state["move"] == 7)
        found = heights(page.last)
        assert {found.get(space) for space in ("A1", "B1", "C1")} == {1}, found
        game.sendall(b"Q\n")
        assert has_gone(game)
    page.state(lambda state: not state["connected"])


def main():
    board, talurex = sys.argv[1:3]
    port = free_port()
    with tempfile.TemporaryDirectory() as folder, tempfile.TemporaryDirectory() as other, \
            Board(board, folder, f"--watch={port}") as shown:
        page = Page(shown.port, shown.token)
        assert not page.state(lambda state: True)["connected"]
        seen = []
        take = page.receive

        def receive(patience=15):
            message = take(patience)
            seen.append(message)
            return message

        page.receive = receive
        began = time.time()
        quiet = connect(port)
        try_others(port)
        game = try_game(talurex, other, port, page)
        assert not has_gone(quiet, 0)
        assert has_gone(quiet, 15)
        assert 8 < time.time() - began < 14
        game.type("d1")
        page.state(shows("A1", "B1", "C1", "D1"))
        assert not any(message.get("move") == 30 for message in seen)
        try_change(talurex, other, port, page, game)
        try_lines(port, page)
        with connect(port), connect(port, b"L"), connect(port, NOTHING):
            page.state(lambda state: state["connected"])
            assert shown.end() == (0, "")


main()
