"""Talurex at a terminal, and under signals: what a recorded session cannot type.

    terminal_test.py PROGRAM [NUMBER]      NUMBER: how often a saving process is killed (50)

Every wait is bounded; a wait in vain shows what was printed so far.
"""
import os
import pty
import random
import re
import select
import signal
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = os.path.abspath(sys.argv[1])
KILLS = int(sys.argv[2]) if len(sys.argv) > 2 else 50
PATIENCE = 30
PROMPT = r"Move \(\d+/\d+\), (your move|game stopped): $"
HINT = "(Ctrl-C once more ends Talurex; /help lists the commands)"
KEPT = "The game is kept: /stop, /load autosave and /cont go on with it."
LONG_THOUGHT = ["-setup=r", "-level=2000000000"]


class Session:
    """A running Talurex; its standard streams are a terminal, or pipes."""

    def __init__(self, test, *options, config="RANDOM_SEED 7\n", terminal=True, folder=None,
                 environment=None):
        self.folder = folder or tempfile.mkdtemp()
        test.addCleanup(subprocess.run, ["rm", "-rf", self.folder])
        with open(self.path("talurex.cfg"), "w", encoding="ascii") as file:
            file.write(config)
        self.test, self.text = test, ""
        self.output = self.input = None
        streams = [subprocess.PIPE] * 2 + [subprocess.STDOUT]
        if terminal:
            self.output, slave = pty.openpty()
            streams = [slave] * 3
        self.process = subprocess.Popen(
            [PROGRAM, *options], cwd=self.folder, stdin=streams[0], stdout=streams[1],
            stderr=streams[2], start_new_session=True, env={**os.environ, **(environment or {})},
            preexec_fn=self.take_terminal if terminal else None)
        if terminal:
            os.close(slave)
            self.input = self.output
        else:
            self.output = self.process.stdout.fileno()
            self.input = self.process.stdin.fileno()
        test.addCleanup(self.process.kill)

    @staticmethod
    def take_terminal():
        os.close(os.open(os.ttyname(0), os.O_RDWR))  # now it is the one that Ctrl-C comes from

    def path(self, name):
        return os.path.join(self.folder, name)

    def read(self):
        """Reads on. Answers False at the end."""
        if not select.select([self.output], [], [], PATIENCE)[0]:
            self.test.fail("nothing more came behind: " + self.text[-500:])
        try:
            piece = os.read(self.output, 65536)
        except OSError:  # the other side of the terminal is closed
            return False
        self.text += piece.decode().replace("\r\n", "\n")
        return bool(piece)

    def expect(self, pattern):
        """Reads until the pattern comes; answers what stood before and with it."""
        while not (found := re.search(pattern, self.text)):
            if not self.read():
                self.test.fail(f"no {pattern!r} in: " + self.text[-500:])
        taken, self.text = self.text[:found.end()], self.text[found.end():]
        return taken

    def type(self, text):
        os.write(self.input, text.encode())

    def end(self):
        """Reads to the end; answers all that came, and the exit status."""
        while self.read():
            pass
        return self.text, self.process.wait(PATIENCE)

    def hurry(self):
        self.process.send_signal(signal.SIGUSR1)


class Terminal(unittest.TestCase):
    def test_interrupt_makes_the_computer_move(self):
        for size in "", "BOARD_X_DIM 15\nBOARD_Y_DIM 9\n":
            session = Session(self, *LONG_THOUGHT, "-color=b", config="RANDOM_SEED 7\n" + size)
            session.expect(r"Depth \d+: move \d+/\d+, \d+ positions")  # it has thought a second
            session.type("\x03")
            said = session.expect(PROMPT)
            self.assertRegex(said, r"\r\x1b\[KTalurex does move: \(\w\d-\w\d\)\n")
            self.assertRegex(said, r"Value: -?\d+\.\d+ \(Depth \d+, Positions: \d+\)\n")
            self.assertNotIn(HINT, said)

    def test_interrupt_stops_the_computer_against_itself(self):
        session = Session(self, *LONG_THOUGHT, "-players=0")
        session.expect("Depth")
        session.type("\x03")
        self.assertIn("Talurex does move", session.expect(PROMPT))
        session.type("quit\n")
        self.assertEqual(session.end()[1], 0)

    def test_interrupt_ends_an_evaluation(self):
        session = Session(self, "-setup=r", "-players=2")
        session.expect(PROMPT)
        session.type("/evaluate d20\n")
        session.expect("Depth 20: move")
        session.type("\x03")
        self.assertIn("Evaluation was interrupted!\n", session.expect(PROMPT))
        session.type("/evaluate 2000000000\n")
        session.expect(r"Depth \d+: move")
        session.type("\x03")
        self.assertRegex(session.expect(PROMPT), r"\x1b\[KThe value is .*, best move: \w\d-\w\d ")

    def test_second_interrupt_at_the_prompt_ends(self):
        session = Session(self, "-players=2")
        session.expect(PROMPT)
        session.type("\x03")
        session.expect(re.escape(HINT) + r"\nMove \(0/0\), your move: $")
        session.type("e3\n")  # a line in between: the next one is a first one again
        session.expect(PROMPT)
        session.type("e4\x03")
        self.assertIn(HINT, session.expect(PROMPT))
        session.type("\x03")
        said, status = session.end()
        self.assertIn(KEPT, said)
        self.assertEqual(status, 130)

    def test_every_end_keeps_the_game(self):
        def close_terminal(session):
            os.close(session.output)

        ends = [(lambda s: s.process.terminate(), 143), (lambda s: s.type("\x04"), 0),
                (close_terminal, None), (lambda s: s.type("/stop\nload long\n"), 1)]
        for end, status in ends:
            session = Session(self, "-players=2")
            with open(session.path("long.tlx"), "w", encoding="ascii") as file:
                file.write("DIM(3,3,1)\n" + "x" * 300 + "\n")
            session.expect(PROMPT)
            session.type("e3\n")
            session.expect(PROMPT)
            end(session)
            if end is close_terminal:
                session.process.wait(PATIENCE)
            else:
                said, seen = session.end()
                self.assertIn(KEPT, said)
                self.assertEqual(seen, status)
            again = Session(self, "-players=2", config="GAME_RUN_FLAG 0\n", folder=session.folder)
            again.expect(PROMPT)
            again.type("load autosave\n")
            self.assertIn("loading game was successful.", again.expect(r"Move \(1/1\)"))
            again.type("quit\n")  # what is in a file needs no other
            self.assertNotIn(KEPT, again.end()[0])

    def test_end_of_input_behind_an_unfinished_line(self):
        session = Session(self, "-players=2")
        session.expect(PROMPT)
        session.type("e3\x04")  # sent off, but not ended
        session.type("\x04")
        said, status = session.end()
        self.assertIn("Move (1/1)", said)
        self.assertIn(KEPT, said)
        self.assertEqual(status, 0)

    def test_a_game_in_a_file_is_not_kept_again(self):
        session = Session(self, "-players=2")
        session.expect(PROMPT)
        session.type("e3\n/save\n\x04")
        self.assertNotIn(KEPT, session.end()[0])
        self.assertFalse(os.path.exists(session.path("autosave.tlx")))

    def test_no_color(self):
        session = Session(self, environment={"NO_COLOR": "1"})
        self.assertNotIn("\x1b", session.expect(PROMPT))
        self.assertIn("\x1b", Session(self, environment={"NO_COLOR": ""}).expect(PROMPT))


class Pipes(unittest.TestCase):
    def test_move_now(self):
        session = Session(self, *LONG_THOUGHT, terminal=False)
        session.expect(PROMPT)
        session.hurry()  # while a line is awaited: dropped
        session.type("/redraw\n")
        session.expect(PROMPT)
        session.type("/color b\n")  # now the computer is to move, and thinks for ever
        time.sleep(0.2)
        for _ in range(1000):
            session.hurry()
        said = session.expect(PROMPT)
        self.assertEqual(said.count("Talurex does move"), 1)
        self.assertNotIn("Depth ", said.replace("(Depth ", ""))  # no progress where nobody looks
        session.process.stdin.close()
        self.assertEqual(session.end()[1], 0)
        self.assertFalse(os.path.exists(session.path("autosave.tlx")))

    def test_move_now_stops_the_computer_against_itself(self):
        session = Session(self, *LONG_THOUGHT, "-players=0", terminal=False)
        session.expect("is moving")
        time.sleep(0.2)
        session.hurry()
        self.assertIn("game stopped", session.expect(PROMPT))

    def test_killed_while_saving(self):
        session = Session(self, "-players=2", terminal=False)
        games = []  # one of them is always there
        for moves in "a3\n", "a3\nb3\n", "a3\nb3\nc3\n":
            run = subprocess.run([PROGRAM, "-players=2"], cwd=session.folder, text=True,
                                 input=moves + "/save\n", capture_output=True, check=True)
            self.assertIn("Saving game was successful.", run.stdout)
            with open(session.path("quicksave.tlx"), encoding="ascii") as file:
                games.append(file.read())
        for _ in range(KILLS):
            process = subprocess.Popen([PROGRAM, "-players=2"], cwd=session.folder, text=True,
                                       stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)
            process.stdin.write("a3\n/save\nb3\nc3\n/save\n" + "/undo\nb3\n/save\nc3\n/save\n" * 9)
            process.stdin.flush()
            time.sleep(random.uniform(0.001, 0.02))
            process.kill()
            process.communicate()
            with open(session.path("quicksave.tlx"), encoding="ascii") as file:
                self.assertIn(file.read(), games)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1], verbosity=2, warnings="ignore")
