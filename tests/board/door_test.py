"""Who may come in to talurex-board, and what becomes of those who only try: door_test.py PROGRAM"""
import socket
import struct
import sys
import tempfile
import time

sys.dont_write_bytecode = True  # nothing is left in the source tree
from page_client import Board, Page, http


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
    page = Page(port, token)
    page.send({"line": "x" * 5000})
    expect("a long message", parting(page), 1009)
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
        expect(text[:20], page.receive()["type"], "error")


def try_crowd(port):
    """More than 32 at once; and those who say nothing are sent away."""
    crowd = [socket.create_connection(("127.0.0.1", port)) for _ in range(40)]
    began = time.time()
    for visitor in crowd:
        visitor.settimeout(30)
    expect("one too many", crowd[-1].recv(1), b"")
    assert time.time() - began < 5
    expect("a silent one", crowd[0].recv(1), b"")
    assert 5 < time.time() - began < 25, time.time() - began
    for visitor in crowd:
        visitor.close()


def main():
    with tempfile.TemporaryDirectory() as folder, \
            Board(sys.argv[1], folder, "-players=2") as board:
        page = Page(board.port, board.token)
        page.state(lambda state: state["state"] == "waiting")
        try_requests(board.port)
        try_headers(board.port)
        try_pages(board)
        try_messages(page)
        try_crowd(board.port)
        page.send({"move": "e3"})
        page.state(lambda state: state["move"] == 1)


main()
