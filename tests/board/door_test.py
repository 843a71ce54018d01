"""Who may come in to talurex-board, and what becomes of those who only try: door_test.py PROGRAM"""
import json
import select
import socket
import struct
import subprocess
import sys
import tempfile
import time

sys.dont_write_bytecode = True  # nothing is left in the source tree
from page_client import Board, Page, free_port, has_gone, http


def expect(what, found, wanted):
    assert found == wanted, f"{what}: {found!r} instead of {wanted!r}"


def status_of(port, request):
    return http(port, request).split(b"\r\n")[0].decode(errors="replace")[9:12]


def try_requests(port):
    host = f"Host: 127.0.0.1:{port}\r\n".encode()
    for what, status, request in [
            ("the page", "200", b"GET / HTTP/1.1\r\n" + host),
            ("by its other name", "200", f"GET / HTTP/1.1\r\nHost: localhost:{port}\r\n".encode()),
            ("a wrong host", "403", b"GET / HTTP/1.1\r\nHost: example.org\r\n"),
            ("a host without a port", "403", b"GET / HTTP/1.1\r\nHost: 127.0.0.1\r\n"),
            ("no host", "403", b"GET / HTTP/1.1\r\n"),
            ("two hosts", "403", b"GET / HTTP/1.1\r\n" + 2 * host),
            ("a wrong host for what is not there", "403", b"GET /x HTTP/1.1\r\nHost: x\r\n"),
            ("what is not there", "404", b"GET /../talurex.cfg HTTP/1.1\r\n" + host),
            ("a wrong method", "405", b"DELETE / HTTP/1.1\r\n" + host),
            ("a body", "413", b"POST / HTTP/1.1\r\n" + host + b"Content-Length: 9\r\n"),
            ("a body in chunks", "413",
             b"GET / HTTP/1.1\r\n" + host + b"Transfer-Encoding: chunked\r\n"),
            ("a body in what is no chunks", "413",
             b"GET / HTTP/1.1\r\n" + host + b"Transfer-Encoding: xchunked\r\n"),
            ("a body as it is", "413",
             b"GET / HTTP/1.1\r\n" + host + b"Transfer-Encoding: identity\r\n"),
            ("a handshake with a body", "413", b"GET /live HTTP/1.1\r\n" + host +
             b"Upgrade: websocket\r\nConnection: Upgrade\r\nTransfer-Encoding: gzip\r\n"),
            ("a header of 9000 bytes", "431",
             b"GET / HTTP/1.1\r\n" + host + b"X: " + 9000 * b"x" + b"\r\n"),
            ("a path without end", "431", b"GET /" + 40000 * b"x"),
            ("garbage", "400", b"\x16\x03\x01\x02\r\n"),
            ("no handshake", "426", b"GET /live HTTP/1.1\r\n" + host)]:
        expect(what, status_of(port, request + b"\r\n"), status)


def try_headers(port):
    answer = http(port, f"GET / HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\n\r\n".encode()).decode()
    for header in ["Content-Security-Policy: default-src 'none'; script-src 'self'; ",
                   "X-Content-Type-Options: nosniff", "Referrer-Policy: no-referrer",
                   "Cross-Origin-Resource-Policy: same-origin", "Cache-Control: no-store"]:
        assert header in answer, header
    assert "Access-Control" not in answer


def parting(page):
    """How the server parts: its code, or None."""
    try:
        while True:
            page.receive()
    except EOFError as end:
        return end.args[0] if end.args else None
    except ConnectionResetError:
        return None


def refusal(page):
    while (message := page.receive())["type"] != "error":
        pass
    return message["text"]


def try_pages(board):
    port, token = board.port, board.token
    expect("a wrong origin", Page(port, origin="http://example.org").answer[9:12], b"403")
    expect("an origin of another port", Page(port, origin="http://127.0.0.1:1").answer[9:12],
           b"403")
    expect("a wrong host", Page(port, host="example.org").answer[9:12], b"403")
    expect("a wrong token", parting(Page(port, "0" * len(token))), 1008)
    expect("a short token", parting(Page(port, token[:-1])), 1008)
    page = Page(port)
    page.send({"line": "/new"})
    expect("a line before the token", parting(page), 1008)
    page = Page(port)
    page.send({"token": "x" * 5000})
    expect("a long message of a stranger", parting(page), 1009)
    page = Page(port, token)
    page.state(lambda state: True)
    page.send({"open": "large", "content": "x" * 65000})
    expect("a large file", "no saved game" in refusal(page), True)
    page = Page(port, token)
    page.socket.sendall(b"\x81\xff" + struct.pack(">Q", 1 << 30) + b"mask")
    expect("a frame of a gigabyte", parting(page), 1009)
    page = Page(port, token)
    page.send_frame(1, b"\xff\xfe")
    expect("text that is not UTF-8", parting(page), 1007)


def try_messages(page):
    for text in ["[]", "{}", "[" * 4000, '{"line":1}', '{"button":"x"}', '{"move":"e3;"}',
                 '{"line":"' + 199 * "x" + '"}', '{"line":"a\\nb"}', '{"line":"\\u009b"}']:
        page.send_frame(1, text.encode())
        refusal(page)


def silent(port):
    return socket.create_connection(("127.0.0.1", port))


def half_request(port):
    visitor = silent(port)
    visitor.sendall(f"GET / HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\nX: ".encode())
    return visitor


def half_page(port):
    """A handshake, and no token."""
    return Page(port).socket


def try_crowd(port, token, visit, dribble):
    """40 who wait for nothing: the last 16 may, and new pages come in past them all the same."""
    crowd = [visit(port) for _ in range(40)]
    for number, visitor in enumerate(crowd[:24]):
        assert has_gone(visitor), (visit.__name__, number)
    for number, visitor in enumerate(crowd[24:]):
        assert not has_gone(visitor, 0), (visit.__name__, number)
    for _ in range(12):
        for visitor in crowd:
            try:
                visitor.sendall(dribble)
            except OSError:
                pass  # it was dropped
        page = Page(port, token)
        page.state(lambda state: True)
        page.socket.close()
    for visitor in crowd:
        visitor.close()


def try_patience(port):
    """Whoever shows no token is sent away, however it fills the time."""
    began = time.time()
    visitors = {silent(port): b"", half_request(port): b"x", half_page(port): b"",
                half_page(port): b"\x89\x80mask"}
    unending = half_page(port)
    unending.sendall(b"\x01\x81maskm")
    visitors[unending] = b"\x00\x81maskm"
    dribbled = began
    while visitors:
        for visitor in select.select(list(visitors), [], [], 0.2)[0]:
            if has_gone(visitor, 0):
                assert 8 < time.time() - began, visitors[visitor]
                del visitors[visitor]
        assert time.time() - began < 14, list(visitors.values())
        if time.time() < dribbled + 0.2:
            continue
        dribbled = time.time()
        for visitor, dribble in visitors.items():
            try:
                visitor.sendall(dribble)
            except OSError:
                pass  # it has just gone


def try_full_house(port, token):
    """32 pages, and the next one when one of them leaves. One page is there already."""
    pages = [Page(port, token) for _ in range(31)]
    for page in pages:
        page.state(lambda state: True)
    expect("one too many", parting(Page(port, token)), 1013)
    pages.pop().socket.close()
    deadline = time.time() + 5
    while True:  # the server hears of the end when it comes to it
        try:
            page = Page(port, token)
            page.state(lambda state: True)
            break
        except EOFError:
            assert time.time() < deadline
    for page in [*pages, page]:
        page.socket.close()


def try_stalled_page(page, port, token):
    """A page that reads nothing holds up nobody, and has missed nothing but states in between."""
    stalled = Page(port, token, room=4096)
    for line in ["/stop", "/boardsize 15 9", "/move h5", "/stop"]:
        page.send({"line": line})
    page.state(lambda state: state["columns"] == 15 and state["move"] == 1)
    # More than the system keeps for a connection, and than the server does.
    numStates = 0
    numBytes = 0
    while numBytes < 8000000:
        for line, move in [("/back", 0), ("/forward", 1)]:
            page.send({"line": line})
            page.state(lambda state: state["state"] == "waiting" and state["move"] == move,
                       patience=2)
            numStates += 1
            numBytes += len(json.dumps(page.last))
    page.send({"line": "/last-mark"})
    while "/last-mark" not in page.log:
        page.receive()
    seen = 0
    while "/last-mark" not in stalled.log or stalled.last != page.last:
        seen += stalled.receive()["type"] == "state"
    assert seen < numStates, (seen, numStates)
    expect("what it sees at last", stalled.last["spaces"], page.last["spaces"])
    expect("what it reads at last", stalled.log.partition("/last-mark")[0][-1000:],
           page.log.partition("/last-mark")[0][-1000:])
    stalled.socket.close()


def try_flood(port, token):
    """A page that asks and does not read the answers is dropped when too much of them waits."""
    page = Page(port, token, room=4096)
    page.socket.sendall(200000 * b"\x81\x82mask\x36\x3c")  # "[]"
    # The server hangs up with questions left: that is heard of without reading.
    hungUp = select.poll()
    hungUp.register(page.socket, 0)
    assert hungUp.poll(60000)


def try_ports(program, folder):
    """Port 9997 when nobody has it, another one otherwise; a port that is asked for, or none."""
    taken = socket.socket()
    taken.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
    try:
        taken.bind(("127.0.0.1", 9997))
        taken.listen()
    except OSError:
        pass  # somebody else has it
    with Board(program, folder, "-players=2") as board:
        assert board.port != 9997
        page = Page(board.port, board.token)
        page.state(lambda state: state["state"] == "waiting")
        refused = subprocess.run([program, "--no-open", f"--port={board.port}"], cwd=folder,
                                 capture_output=True, text=True, check=False, timeout=20)
        expect("a port that is taken", refused.returncode, 1)
        assert f"port {board.port} of 127.0.0.1 cannot be used" in refused.stderr, refused.stderr
    taken.close()
    port = free_port()
    with Board(program, folder, "-players=2", f"--port={port}") as board:
        expect("a port that is asked for", board.port, port)
    with Board(program, folder, "-players=2") as board:
        if board.port != 9997:
            socket.create_connection(("127.0.0.1", 9997)).close()  # somebody else has it


def try_end(program, folder):
    """An end with visitors of every kind: nobody is waited for for long."""
    for stuck in (False, True):
        with Board(program, folder, "-players=2") as board:
            port, token = board.port, board.token
            page = Page(port, token)
            page.state(lambda state: state["state"] == "waiting")
            visitors = [silent(port), half_request(port), half_page(port), silent(port)]
            visitors[-1].sendall(f"GET / HTTP/1.1\r\nHost: 127.0.0.1:{port}\r\n\r\n".encode())
            assert visitors[-1].recv(10)  # and is not closed by us
            if stuck:
                flooded = Page(port, token, room=4096)
                flooded.socket.sendall(5000 * b"\x81\x82mask\x36\x3c")
                page.send_frame(1, b"[]")
                page.receive()
            expect("how it ends", board.end(10), (0, ""))
            for visitor in visitors:
                assert has_gone(visitor, 0), visitor
            expect("how it parts", parting(page), 1001)


def main():
    program = sys.argv[1]
    with tempfile.TemporaryDirectory() as folder, Board(program, folder, "-players=2") as board:
        port, token = board.port, board.token
        page = Page(port, token)
        page.state(lambda state: state["state"] == "waiting")
        try_requests(port)
        try_headers(port)
        try_pages(board)
        try_messages(page)
        try_crowd(port, token, silent, b"G")
        try_crowd(port, token, half_request, b"x")
        try_crowd(port, token, half_page, b"\x89\x80mask")
        try_patience(port)
        try_full_house(port, token)
        page.send({"move": "e3"})
        page.state(lambda state: state["move"] == 1)
        try_stalled_page(page, port, token)
        try_flood(port, token)
        page.send({"line": "/undo"})
        page.state(lambda state: state["state"] == "waiting")
    with tempfile.TemporaryDirectory() as folder:
        try_ports(program, folder)
        try_end(program, folder)


main()
