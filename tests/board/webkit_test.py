"""Plays a small game on the page of talurex-board in WebKit, and compares the board there with what a
Talurex at the end of a pipe draws: webkit_test.py TALUREX_BOARD TALUREX

Ends with status 77 where there is no such browser."""

import os
import random
import sys
import tempfile

sys.dont_write_bytecode = True  # nothing is left in the source tree
from browser_test import (SETTINGS, SKIPPED, Terminal, follow, play, press, start, with_clicks,
                          with_drags)
from webdriver import Browser, find_webkit


def main(board_program, program):
    found = find_webkit()
    if not found:
        print("Skipped: there is no WebKitGTK with its driver.")
        return SKIPPED
    random.seed(5)
    with tempfile.TemporaryDirectory() as scratch:
        folders = [os.path.join(scratch, name) for name in ("board", "terminal")]
        for folder in folders:
            os.mkdir(folder)
            with open(os.path.join(folder, "talurex.cfg"), "w", encoding="utf-8") as file:
                file.write(SETTINGS + "BOARD_X_DIM 5\nBOARD_Y_DIM 3\n")
        page = Browser(found, scratch)
        board, address = start(board_program, folders[0])
        terminal = Terminal(program, folders[1])
        try:
            page.go(address[1])
            follow(page, terminal, "/redraw")
            play(page, terminal, [with_clicks, with_clicks, with_drags])
            press(page, terminal, "#undo", "/back 1", "/start")
            page.call("POST", "/refresh")
            follow(page, terminal, "/redraw")
            page.type("#filename", "kept")
            press(page, terminal, "#save", "/save kept")
            press(page, terminal, "#new", "/stop", "/new")
            page.click("#games")
            page.wait("document.querySelector(\"#stored [data-name='kept.tlx']\")")
            press(page, terminal, "#stored [data-name='kept.tlx']", "/stop", "/load kept")
        finally:
            page.close()
            terminal.process.kill()
            board.terminate()
            board.wait(20)
    print("WebKit and the terminal agree.")
    return 0


if __name__ == "__main__":
    sys.exit(main(*map(os.path.abspath, sys.argv[1:])))
