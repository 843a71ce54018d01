"""Kills talurex-board at random moments of fast play: what it kept is always a whole game, and lacks
no ply that a page was told of; and the next board goes on with it as it stood:
killed_test.py TALUREX_BOARD TALUREX [KILLS [SEED]]"""
import os
import random
import re
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True  # nothing is left in the source tree
from page_client import Board, Page

SETTINGS = ["NUM_HUMAN_PLAYERS 2", "NUM_HUMAN_PLAYERS 1", "NUM_HUMAN_PLAYERS 0",
            "NUM_HUMAN_PLAYERS 0\nBOARD_X_DIM 15\nBOARD_Y_DIM 9",
            "NUM_HUMAN_PLAYERS 2\nSETUP_MODE 1\nBOARD_X_DIM 7"]


def saved_plies(text):
    """The plies of a saved game, in order."""
    lines = [line for line in text.splitlines() if not line.startswith(("#", ":", "DIM"))]
    return [word for line in lines for word in line.split() if word != "BREAK"]


SETTING_LINES = {"level": ["/level 0", "/level 1", "/level 3"], "players": ["/players 1", "/players 2"],
                 "side": ["/color white", "/color black"]}


def play(dice, page, deadline):
    """Plays as fast as it can, and begins anew behind the end. Answers the setting whose change the
    page may not have been told of."""
    changed = None
    while time.time() < deadline:
        state = page.last
        moves = [space["space"] for space in state["spaces"] if space.get("place")] + [
            space["space"] + "-" + target
            for space in state["spaces"] for target in space["targets"]]
        changed = None
        if state["gameOver"]:
            page.send({"button": "new"})
        elif dice.random() < 0.1:
            changed = dice.choice(list(SETTING_LINES))
            page.send({"line": dice.choice(SETTING_LINES[changed])})
        elif dice.random() < 0.05:
            page.send({"button": "undo"})
        elif state["mustPass"] or moves:
            page.send({"move": dice.choice(moves) if moves else "pass"})
        while time.time() < deadline:
            try:
                if page.receive(max(0.001, deadline - time.time()))["type"] == "state" and \
                        page.last["state"] == "waiting":
                    break
            except TimeoutError:
                return changed
    return changed


def check_game(talurex, folder, name):
    """Loads a game that was kept; answers its plies."""
    with open(os.path.join(folder, name + ".tlx"), encoding="ascii") as file:
        text = file.read()
    plies = saved_plies(text)
    run = subprocess.run([talurex], cwd=folder, capture_output=True, text=True, timeout=20,
                         input=f"/stop\nload {name}\nload {name}\nquit\n", check=True)
    assert "loading game was successful" in run.stdout, text
    last = re.findall(r"Move \(\d+/(\d+)\), game stopped", run.stdout)[-1]
    assert int(last) == len(plies), (last, text)
    return plies


def kill_once(dice, programs, folder, number):
    settings = SETTINGS[number % len(SETTINGS)]
    settings += f"\nCOMPUTER_LEVEL 0\nRANDOM_SEED {number + 1}\n"
    with Board(programs[0], folder, settings=settings) as board:
        page = Page(board.port, board.token)
        page.state(lambda state: True)
        changed = play(dice, page, time.time() + dice.random() * 0.1)
        told = [ply["text"] for ply in page.plies[1:page.last["move"] + 1]]  # but for undone ones
        board.process.kill()
        board.process.wait()
    # A game that was over may have been put aside already for the one that was to come.
    kept = [check_game(programs[1], folder, name) for name in ("autosave", "previous")
            if os.path.exists(os.path.join(folder, name + ".tlx"))]
    assert not told or any(plies[:len(told)] == told for plies in kept), (number, told, kept)
    resume(programs[0], folder, settings, page, changed)
    return len(told)


def resume(program, folder, settings, page, changed):
    """The next board offers the game unless it was over, and goes on with it."""
    text = None
    if os.path.exists(os.path.join(folder, "autosave.tlx")):
        with open(os.path.join(folder, "autosave.tlx"), encoding="ascii") as file:
            text = file.read()
    with Board(program, folder, settings=settings) as board:
        again = Page(board.port, board.token)
        state = again.state(lambda state: True)
        if text is None or ends(text):
            assert state["resume"] is None, state["resume"]
            again.socket.close()
            return
        kept = re.search(r"# Board: people (\d), color (\w+), level (\d+), move (\d+)\n$", text)
        assert state["resume"] == int(kept[4]), (state["resume"], text)
        again.send({"button": "resume"})
        state = again.state(lambda state: state["resume"] is None)
        again.socket.close()
        found = {name: str(state["settings"][name]) for name in ("players", "side", "level")}
        assert tuple(found.values()) == kept.groups()[:3], (found, text)
        plies = [ply["text"] for ply in again.plies[1:]]
        if state["move"] != int(kept[4]):  # the computer has moved on already
            assert kept[1] != "2" and state["move"] > int(kept[4]), (state["move"], text)
            plies = plies[:int(kept[4])]
        assert plies == saved_plies(text)[:len(plies)], text
        assert state["running"] or state["gameOver"], text
        last = page.last
        if saved_plies(text) == [ply["text"] for ply in page.plies[1:]]:
            for name in set(found) - {changed}:
                assert found[name] == str(last["settings"][name]), (name, changed, text)
            if state["move"] == last["move"]:
                towers = [[(space["height"], space["owner"], space["life"])
                           for space in one["spaces"]] for one in (state, last)]
                assert towers[0] == towers[1] and state["toMove"] == last["toMove"], text


def ends(text):
    """Whether a saved game is over: the score then stands in it no more."""
    return "BREAK" not in text


def main(board, talurex, kills=15, seed=1):
    dice = random.Random(int(seed))
    plies = 0
    for number in range(int(kills)):
        with tempfile.TemporaryDirectory() as folder:
            plies += kill_once(dice, (board, talurex), folder, number)
    assert plies > int(kills), plies
    print(f"{kills} kills, {plies} plies told, none lost.")


main(*sys.argv[1:])
