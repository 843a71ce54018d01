#!/usr/bin/env python3
"""Plays on the page of talurex-board in a real browser, and compares the board there with the one
that a Talurex at the end of a pipe draws for the same lines.

    browser_test.py TALUREX_BOARD TALUREX

Ends with status 77 where there is no browser.
"""

import json
import os
import random
import re
import socket
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True  # nothing is left in the source tree
from webdriver import Browser, find_browser

SETTINGS = "NUM_HUMAN_PLAYERS 2\nCOMPUTER_LEVEL 0\nRANDOM_SEED 11\n"
SKIPPED = 77
MARKS = {"+": ("white", 0), "*": ("white", 1), "#": ("black", 0), "@": ("black", 1),
         "%": ("life", 1), ".": ("empty", 0)}
PROMPT = re.compile(r"Move \((\d+)/(\d+)\), (your move|game stopped): $")
BOARD = """Object.fromEntries([...document.querySelectorAll('[data-space]')].map(s =>
    [s.dataset.space, [+s.dataset.height, s.dataset.owner, +s.dataset.life]]))"""
STATE = """document.body.dataset.state === '%s' &&
    document.querySelector('#number').textContent === arguments[0]"""
SETTLED = STATE % "waiting"
THINKING = STATE % "thinking"
NAMES = "[...document.querySelectorAll(arguments[0])].map(s => s.dataset.space)"
FOCUS = "document.activeElement.dataset.space"
TEXT = "document.querySelector(arguments[0]).textContent"


class Terminal:
    """A Talurex at the end of a pipe: what people would see in the terminal."""

    def __init__(self, program, folder):
        self.process = subprocess.Popen([program], cwd=folder, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.read()

    def read(self):
        text = ""
        while not (prompt := PROMPT.search(text)):
            piece = os.read(self.process.stdout.fileno(), 65536)
            assert piece, "Talurex has ended: " + text
            text += re.sub("\x1b\\[[0-9;]*m", "", piece.decode())
        self.moves = prompt[1], prompt[2]
        if " is moving\n" in text:
            drawing = text.rsplit(" is moving\n", 1)[1].split("\n---")[0]
            rows = enumerate(drawing.split("\n"))
            self.board = dict(tower for row in rows for tower in towers(*row))
        return text

    def type(self, line):
        self.process.stdin.write(line.encode() + b"\n")
        self.process.stdin.flush()
        return self.read()


def towers(y, row):
    """The towers of a row as the terminal draws it: two columns further right than the one above,
    four columns for each space."""
    for tower in re.finditer(r"(\d+)([-+*#@%.])", row):
        yield (chr(65 + (tower.end() - 4 - 2 * y) // 4) + row[0],
               [int(tower[1]), *MARKS[tower[2]]])


def type_same(terminal, lines):
    text = ""
    for line in lines:
        text = terminal.type(line)
        assert "Error" not in text and "failed" not in text, text
    return text


def follow(page, terminal, *lines):
    """Types what was done on the page; when that tells of the same move, it has to show the same
    board. Tells what the terminal printed last."""
    text = type_same(terminal, lines)
    page.wait(SETTLED, "Move %s of %s" % terminal.moves)
    assert page.js(BOARD) == terminal.board, (lines, page.js(BOARD), terminal.board)
    return text


def tile(name):
    return f"[data-space={name}] .tile"


def with_clicks(page, source):
    """Places or moves, and tells the line that does the same."""
    page.tap(tile(source))
    targets = page.js(NAMES, "[data-target]")
    if not targets:
        return source
    target = random.choice(targets)
    page.tap(tile(target))
    return f"{source}-{target}"


def with_drags(page, source):
    start = page.middle(tile(source))
    page.tap(tile(source))
    targets = page.js(NAMES, "[data-target]")
    page.keys("Escape")
    assert targets and not page.js(NAMES, "[data-target]"), "Escape puts a tower back"
    target = random.choice(targets)
    page.pointer(start, "down", (start[0] + 9, start[1]), page.middle(tile(target)), "up")
    return f"{source}-{target}"


def tab_to(page, name):
    for _ in range(200):
        if page.js(FOCUS) == name:
            return
        page.keys("Tab")
    raise AssertionError(f"Tab does not lead to {name}")


def with_keys(page, source):
    tab_to(page, source)
    page.keys("Enter")
    targets = page.js(NAMES, "[data-target]")
    if not targets:
        return source
    target = random.choice(targets)
    tab_to(page, target)
    page.keys("Enter")
    return f"{source}-{target}"


def play(page, terminal, ways):
    """Plays a game to its end with moves taken by chance, each made in one of these ways."""
    text = ""
    while "The game ended" not in text:
        sources = page.js(NAMES, "[data-source]")
        if not sources:
            if not page.js("document.querySelector('#autopass').checked"):
                page.click("#pass")
            text = follow(page, terminal, "")
            continue
        setup = page.js(NAMES, "[data-place]")
        way = ways[0] if setup else random.choice(ways)
        line = way(page, random.choice(sources))
        text = follow(page, terminal, line)
        assert page.js(NAMES, "[data-last=target]") == [line[-2:]], line
    white, black = re.search(r"The game ended (\d+):(\d+)", text).groups()
    assert (page.js(TEXT, "#white"), page.js(TEXT, "#black")) == (white, black), text
    page.wait(f"{TEXT}.includes('The game ended {white}:{black}')", "#log")
    assert "\x1b" not in page.js(TEXT, "#log") and " is moving" not in page.js(TEXT, "#log")


def press(page, terminal, button, *lines):
    """Presses a button, after which another board may bear the number of the one before."""
    page.click(button)
    type_same(terminal, lines)
    page.wait(f"{SETTLED} && JSON.stringify(Object.entries({BOARD}).sort()) === arguments[1]",
              "Move %s of %s" % terminal.moves,
              json.dumps(sorted(terminal.board.items()), separators=(",", ":")))


def look(page, terminal, *steps):
    """Looks through the game by buttons and keys: pairs of one and of the line that shows the same
    in the terminal. The game itself stays where it is."""
    game = page.js(TEXT, "#number")
    for step, line in steps:
        if step.startswith("#"):
            page.click(step)
        else:
            page.keys(step)
        type_same(terminal, [line])
        shown = "Move %s of %s \u00b7 back to the game" % terminal.moves
        page.wait(f"{TEXT} === arguments[1]", "#now", shown)
        assert page.js(BOARD) == terminal.board, (step, line)
        assert page.js(TEXT, "#number") == game and not page.js(NAMES, "[data-source]")
        assert page.js("document.querySelector('#moves [aria-current]')?.dataset.ply ?? '0'") == \
            terminal.moves[0]


def walk(page, terminal):
    """Back and forth through the game that has been played, with buttons, keys, the list of moves
    and two tabs."""
    press(page, terminal, "#undo", "/back 1", "/start")
    last = int(terminal.moves[0])
    page.js("document.activeElement.blur()")
    look(page, terminal, ("#back", "/back"), ("Left", "/back"), ("Right", "/forward"),
         ("Home", "/back 1000"), ("#forward", "/forward"), ("End", "/forward 1000"),
         (f"#moves [data-ply='{last - 3}']", "/back 4"))
    page.click("#fromhere")
    type_same(terminal, ["/start"])
    page.wait(SETTLED, "Move %s of %s" % terminal.moves)
    press(page, terminal, "#takeback", "/forward 3", "/start")
    look(page, terminal, ("Left", "/back"))
    page.click("#now")
    first = page.call("GET", "/window")
    second = page.call("POST", "/window/new", {"type": "tab"})["handle"]
    url = page.js("location.href")
    page.call("POST", "/window", {"handle": second})
    page.go(url)
    follow(page, terminal, "/forward", "/start")
    page.call("DELETE", "/window")
    page.call("POST", "/window", {"handle": first})
    page.call("POST", "/refresh")
    follow(page, terminal, "/redraw")


def unfold(page):
    """Settings fold away when stones are on the board."""
    page.js("document.querySelector('#settings').open = true")


def resize(page, terminal, columns, rows):
    unfold(page)
    for name, number in [("columns", columns), ("rows", rows)]:
        page.click(f"#{name} option[value='{number}']")
    press(page, terminal, "#boardsize", "/stop", f"/boardsize {columns} {rows}")


def keep(page, terminal):
    """Saves a game, begins another one and loads it again; with markup in what is printed."""
    page.type("#filename", "kept")
    press(page, terminal, "#save", "/save kept")
    page.wait(f"{TEXT}.includes('kept.tlx')", "#log")
    press(page, terminal, "#new", "/stop", "/new")
    press(page, terminal, "#load", "/stop", "/load kept")
    press(page, terminal, "#takeback", "/load kept")
    page.click("#games")
    page.wait("document.querySelector(\"#stored [data-name='kept.tlx']\")")
    press(page, terminal, "#stored [data-name='kept.tlx']", "/stop", "/load kept")
    page.type("#command", "/load <img/src=x>" + "\ue007")
    page.wait(f"{TEXT}.includes('<img/src=x>')", "#log")
    page.wait(f"{TEXT}.includes('failed')", "#said")
    follow(page, terminal, "/redraw")


def bring(page, terminal, folders):
    """Files of one's own become saved games when they are such."""
    def choose(name, text):
        path = os.path.join(folders[2], name)
        with open(path, "w", encoding="ascii") as file:
            file.write(text)
        page.click("#games")
        page.type("#open", path)
    game = "DIM(3,1,1)\nB1 A1\nC1\nBREAK\n"
    choose("no.tlx", "nothing\n")
    page.wait(f"{TEXT}.includes('This is no saved game')", "#said")
    choose("mine.tlx", game)
    with open(os.path.join(folders[1], "mine.tlx"), "w", encoding="ascii") as file:
        file.write(game)
    follow(page, terminal, "/stop", "/load mine")
    choose("mine.tlx", game.replace("A1\nC1", "C1\nA1"))
    page.wait("!document.querySelector('#accept').hidden")
    page.click("#accept")
    page.wait("document.querySelector('[data-space=A1]').dataset.owner === 'white'")
    with open(os.path.join(folders[0], "mine.tlx"), encoding="ascii") as file:
        assert file.read() == game.replace("A1\nC1", "C1\nA1")


def hurry(page, terminal):
    """A computer that would think for hours moves when it is told to; two of them also stop."""
    unfold(page)
    page.click("#randomsetup option[value='1']")
    press(page, terminal, "#new", "/randomsetup 1", "/stop", "/new")
    page.click("#players option[value='1']")
    page.keys("Escape", *"/level 1000000000", "Enter")
    page.wait("document.querySelector('#level').value === '1000000000'")
    with_clicks(page, page.js(NAMES, "[data-source]")[0])
    page.wait(THINKING, "Move 1 of 1")
    page.click("#movenow")
    page.wait(SETTLED, "Move 2 of 2")
    unfold(page)
    page.click("#players option[value='0']")
    # Before it thinks, Talurex does not listen: press until it has.
    page.wait(f"(document.querySelector('#movenow').click(), {SETTLED})", "Move 3 of 3")
    assert page.js(TEXT, "#status").startswith("Stopped"), page.js(TEXT, "#status")
    assert page.js(TEXT, "#movenow") == "Stop"


def explore(page, terminal):
    """What the page tells of a game that is being set up and played, and what it hides."""
    sides = "['top', 'bottom'].map(id => document.getElementById(id).dataset.side)"
    assert page.js(sides) == ["black", "white"] and page.js(
        "document.querySelector('#bottom').hasAttribute('data-active')")
    page.click("#rules")
    assert page.js("document.querySelectorAll('#rulesbook:modal li svg').length") == 5
    page.click("#closerules")
    tab_to(page, "C2")
    page.keys("Right")
    assert page.js(FOCUS) == "D2", page.js(FOCUS)
    page.js("document.activeElement.blur()")
    page.click("#fill")
    page.wait("document.querySelector('#number').textContent === 'Move 26 of 26'")
    typed = re.findall(r"Move \(\d+/\d+\), your move: ([A-G][1-4])\n", page.js(TEXT, "#log"))[-26:]
    follow(page, terminal, *typed)
    assert not page.js("document.querySelector('#settings').open")
    page.tap(tile(page.js(NAMES, "[data-owner=black]")[0]))
    page.wait(f"{TEXT}.endsWith(\"This tower is Black's.\")", "#said")


def start(program, folder):
    """A board in the folder, and the address that it tells."""
    board = subprocess.Popen([program, "--no-open"], cwd=folder, text=True,
                             stdin=subprocess.DEVNULL, stdout=subprocess.PIPE)
    return board, re.fullmatch(r"Board: (http://127\.0\.0\.1:(\d+)/#\S+)\n",
                               board.stdout.readline())


def survive(page, terminal, board, program, folder):
    """Whoever kills the board loses nothing: the next one goes on with the game."""
    for _ in range(3):
        follow(page, terminal, with_clicks(page, page.js(NAMES, "[data-source]")[0]))
    board.kill()
    board.wait()
    page.wait("document.body.dataset.state === 'lost'")
    board, address = start(program, folder)
    page.go("about:blank")
    page.go(address[1])
    page.wait(f"{TEXT} === 'Go on with the game of move 3'", "#resume")
    press(page, terminal, "#resume", "/redraw")
    return board


def finish(page, board):
    page.type("#command", "/stop\ue007quit\ue007")
    page.wait("document.body.dataset.state === 'ended'")
    assert "See you" in page.js(TEXT, "#note"), page.js(TEXT, "#note")
    assert board.wait(10) == 0


def ask(port, *headers, path="/"):
    """The answer to a request with these headers."""
    with socket.create_connection(("127.0.0.1", port), 10) as peer:
        peer.sendall("\r\n".join([f"GET {path} HTTP/1.1", *headers, "", ""]).encode())
        return peer.recv(4096).decode("latin-1")


def strangers(page, port, url):
    """Nobody comes in from elsewhere."""
    here = f"127.0.0.1:{port}"
    upgrade = ["Connection: Upgrade", "Upgrade: websocket", "Sec-WebSocket-Version: 13",
               "Sec-WebSocket-Key: MDEyMzQ1Njc4OWFiY2RlZg==", f"Host: {here}"]
    assert "default-src 'none'" in ask(port, f"Host: {here}")
    for host in ["evil.example", f"evil.example:{port}", "127.0.0.1", ""]:
        assert " 403 " in ask(port, f"Host: {host}"), host
        assert " 403 " in ask(port, f"Host: {host}", path="/board.js"), host
    assert " 101 " in ask(port, *upgrade, f"Origin: http://{here}", path="/live")
    for origin in ["http://evil.example", f"https://{here}", "null", ""]:
        assert " 101 " not in ask(port, *upgrade, f"Origin: {origin}", path="/live"), origin
    assert " 101 " not in ask(port, *upgrade, path="/live"), "no origin"
    page.go(url.split("#")[0] + "#" + "0" * 32)
    page.wait(f"{TEXT}.includes('not the address')", "#status")
    assert page.js(BOARD) == {} and page.js("document.body.dataset.state") == "lost"


def main(board_program, program):
    found = find_browser()
    if not found:
        print("Skipped: there is no chromium with its chromedriver.")
        return SKIPPED
    random.seed(3)
    with tempfile.TemporaryDirectory() as scratch:
        folders = [os.path.join(scratch, name) for name in ("board", "terminal", "profile")]
        for folder in folders:
            os.mkdir(folder)
            with open(os.path.join(folder, "talurex.cfg"), "w", encoding="utf-8") as file:
                file.write(SETTINGS)
        page = Browser(found, folders[2])  # first: nothing is left running when it cannot be
        board, address = start(board_program, folders[0])
        terminal = Terminal(program, folders[1])
        try:
            strangers(page, int(address[2]), address[1])
            page.go("about:blank")
            page.go(address[1])
            follow(page, terminal, "/redraw")
            page.click("#closerules")
            page.click("#autopass")
            play(page, terminal, [with_clicks, with_clicks, with_drags])
            walk(page, terminal)
            unfold(page)
            page.click("#autopass")
            resize(page, terminal, 5, 3)
            play(page, terminal, [with_keys])
            keep(page, terminal)
            bring(page, terminal, folders)
            resize(page, terminal, 15, 9)
            resize(page, terminal, 1, 1)
            resize(page, terminal, 7, 4)
            explore(page, terminal)
            press(page, terminal, "#new", "/stop", "/new")
            board = survive(page, terminal, board, board_program, folders[0])
            hurry(page, terminal)
            finish(page, board)
            complaints = [text for text in page.complaints() if "WebSocket" not in text]
            assert not complaints, complaints
        finally:
            page.close()
            terminal.process.kill()
            board.terminate()
            board.wait(20)
    print("The browser and the terminal agree.")
    return 0


if __name__ == "__main__":
    sys.exit(main(*map(os.path.abspath, sys.argv[1:])))
