"""Plays at random on a talurex-board, and types the lines that come of it to a Talurex at the end of a
pipe. Every state that a page is sent has to show a board that the terminal has drawn, in the same
order, and the last one what stands in front of the prompt and what a saved game tells of it; and the
page reads what the terminal reads: live_test.py TALUREX_BOARD TALUREX [SEED [LINES]]"""
import os
import random
import re
import shutil
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True  # nothing is left in the source tree
from page_client import Board, Page

PROMPT = re.compile(r"Move \((\d+)/(\d+)\), (your move|game stopped): $")
TYPED = re.compile(r"Move \(\d+/\d+\), (?:your move|game stopped): (.*)\n")
MARKS = {"+": ("white", 0), "*": ("white", 1), "#": ("black", 0), "@": ("black", 1),
         "%": ("life", 1), ".": ("empty", 0)}
OWNERS = ["white", "black", "life", "empty"]
DRAWING = re.compile(r"(?:(?:\A|(?<=\n))\n)?(?:WHITE|BLACK) is moving\n(?:\d .*\n)+-+\n.*\n")
LINES = [
    "/back", "/back 3", "/forward", "/forward 2", "/undo", "/cont", "/start", "/stop", "/redraw",
    "/save one", "/save two", "/load one", "/load two", "/new", "/boardsize 5 1", "/boardsize 4 4",
    "/boardsize 6 3", "/boardsize 15 9", "/boardsize 11 5", "/lifestones 1", "/lifestones 4",
    "/randomsetup 0", "/randomsetup 1", "/color r", "/color w", "/color b", "/players 0", "/players 1",
    "/players 2", "/highlighting 0", "/highlighting 1", "/gui 0", "/gui 1", "/help", "nonsense", ""]
REPLACING = ("/load", "/new", "/boardsize")


def drawings(text):
    """Side, columns, rows and spaces of every board in the text."""
    for match in re.finditer(r"(WHITE|BLACK) is moving\n((?:\d .*\n)+)(-+)\n", text):
        rows = match[2].splitlines()
        columns = (len(match[3]) - 2 * len(rows)) // 4
        spaces = {}
        for y, row in enumerate(rows):
            for tower in re.finditer(r"(\d+)([+*#@%.])", row):
                column = (tower.end() - 4 - 2 * y) // 4
                spaces[chr(65 + column) + row[0]] = (int(tower[1]), *MARKS[tower[2]])
        yield match[1].lower(), columns, len(rows), spaces


class Terminal:
    def __init__(self, program, folder, options):
        self.process = subprocess.Popen([program, *options], cwd=folder, stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        self.folder = folder
        self.drawn = []
        self.log = self.read()  # as a page shows it: with what was typed, and without the boards

    def read(self):
        text = ""
        while not (prompt := PROMPT.search(text)):
            piece = os.read(self.process.stdout.fileno(), 65536)
            assert piece, text
            text += re.sub("\x1b\\[[0-9;]*m", "", piece.decode())
        self.drawn += drawings(text)
        self.prompt = int(prompt[1]), int(prompt[2]), prompt[3] == "your move"
        return DRAWING.sub("", text)

    def ask(self, line):
        self.process.stdin.write(line.encode() + b"\n")
        self.process.stdin.flush()
        return self.read()

    def type(self, line):
        self.log += line + "\n" + self.ask(line)

    def placing(self):
        """What is to be placed in the shown position, as the saved game has it: "life", "own", or
        None in the move phase."""
        self.ask("/save probe")
        with open(os.path.join(self.folder, "probe.tlx"), encoding="ascii") as file:
            text = file.read()
        size = re.match(r"DIM\((\d+),(\d+),(\d+)\)", text)
        columns, rows, stones = map(int, size.groups()) if size else (11, 5, 3)
        cut = (rows - 1) // 2
        spaces = sum(x + y >= cut and columns + rows - x - y - 2 >= cut
                     for x in range(columns) for y in range(rows))
        placements = re.findall(r"[A-O]\d", text.split("# phase 1:\n")[1].split("# Setup")[0])
        placed = min(self.prompt[0], len(placements))
        if re.search(r"^:", text, re.M) or placed == spaces:
            return None
        return "life" if placed < stones else "own"


def shown(state):
    side = "over" if state["gameOver"] else state["toMove"]
    return side, state["columns"], state["rows"], {
        space["space"]: (space["height"], space["owner"], space["life"])
        for space in state["spaces"]}


def shows(state, drawing):
    """At the end of a game it does not matter whose turn it would be."""
    found = shown(state)
    return found[1:] == drawing[1:] and found[0] in ("over", drawing[0])


def press(dice, state):
    """A message for the page that becomes several lines, by the game as it stands."""
    wanted = [{"load": "one"}, {"load": "two"}, {"load": "none"}, {"save": "one"},
              {"save": "two", "replace": True}, {"button": "new"}, {"button": "continue"},
              {"button": "fromhere", "ply": dice.randint(0, state["lastMove"])}]
    wanted += [{"button": "undo"}] * 6 if state["buttons"]["undo"] else []
    return dice.choice(wanted)


def choose(dice, state):
    """A message for the page, and the lines that it stands for, where that is known."""
    if state["buttons"]["takeback"] and dice.random() < 0.4:
        return {"button": "takeback"}, None
    moves = [space["space"] for space in state["spaces"] if space.get("place")] + [
        space["space"] + "-" + target for space in state["spaces"] for target in space["targets"]]
    if state["mustPass"]:
        moves.append("pass")
    if moves and dice.random() < (0.85 if state["running"] else 0.4):
        move = dice.choice(moves)
        return {"move": move, "ply": state["move"]}, [move if state["running"] else "/move " + move]
    if dice.random() < 0.5:
        return press(dice, state), None
    line = dice.choice(LINES)
    if line.startswith(REPLACING) and dice.random() < 0.8:
        return {"line": line, "stop": True}, ["/stop"] * state["running"] + [line]
    return {"line": line}, [line]


def states_up_to(page, mark):
    """The states up to the prompt behind the answer to the line `mark`, and the one it brings."""
    states = []
    while True:
        message = page.receive()
        if message["type"] == "state":
            states.append(message)
            if mark + "\n" in page.log and PROMPT.search(page.log.rsplit(mark + "\n", 1)[1]):
                return states


def play(program, terminal_program, folder, seed, lines):
    dice = random.Random(seed)
    settings = f"RANDOM_SEED {seed + 1}\nCOMPUTER_LEVEL 0\n"
    options = [dice.choice(["-players=1", "-players=2"]), dice.choice(["-color=w", "-color=r"]),
               dice.choice(["-setup=n", "-setup=n", "-setup=r"])]
    folders = [os.path.join(folder, name) for name in ("board", "terminal")]
    for name in folders:
        os.mkdir(name)
    with Board(program, folders[0], *options, settings=settings) as board:
        with open(os.path.join(folders[1], "talurex.cfg"), "w", encoding="ascii") as file:
            file.write(settings)
        terminal = Terminal(terminal_program, folders[1], options)
        page = Page(board.port, board.token)
        state = page.state(lambda message: message["state"] == "waiting")
        for number in range(lines):
            message, wanted = choose(dice, state)
            for name in os.listdir(folders[0]):  # what a line may load; both save alike
                if name.startswith(("previous", "autosave")):
                    shutil.copy(os.path.join(folders[0], name), folders[1])
            read = page.log.rindex("Move (")
            page.send(message)
            # The mark is an unknown command; what stands before it belongs to the message.
            page.send({"line": f"/mark{number}"})
            states = states_up_to(page, f"/mark{number}")
            typed = TYPED.findall(page.log[read:])
            assert wanted in (None, typed[:-1]), (seed, number, wanted, typed)
            before = [terminal.drawn[-1]]
            terminal.drawn.clear()
            for line in typed:
                terminal.type(line)
            left = before + terminal.drawn
            for state in states:
                while left and not shows(state, left[0]):
                    left.pop(0)
                assert left, (seed, number, typed, state["status"], shown(state))
            terminal.drawn = before + terminal.drawn
            assert shows(state, terminal.drawn[-1]), (seed, number, typed, shown(state))
            found = state["move"], state["lastMove"], state["running"]
            assert found == terminal.prompt, (seed, number, typed, found, terminal.prompt)
            placing = terminal.placing()
            placing = state["toMove"] if placing == "own" else placing
            assert state["placing"] == placing, (seed, number, typed, state["placing"], placing)
            can_place = {space["space"] for space in state["spaces"] if space.get("place")}
            empty = {space["space"] for space in state["spaces"] if space["height"] == 0}
            assert can_place == (empty if placing else set()), (seed, number, typed)
            codes = [space["height"] * 8 + space["life"] * 4 + OWNERS.index(space["owner"])
                     for space in state["spaces"]]
            assert len(page.plies) == state["lastMove"] + 1, (seed, number, typed)
            assert page.plies[state["move"]]["stones"] == codes, (seed, number, typed)
            assert page.log == terminal.log, (seed, number, typed, page.log[-500:],
                                              terminal.log[-500:])
        terminal.process.stdin.close()
        terminal.process.wait(20)


def main():
    seeds = [int(sys.argv[3])] if len(sys.argv) > 3 else range(4)
    lines = int(sys.argv[4]) if len(sys.argv) > 4 else 120
    for seed in seeds:
        with tempfile.TemporaryDirectory() as folder:
            play(sys.argv[1], sys.argv[2], folder, seed, lines)


main()
