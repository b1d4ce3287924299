#!/usr/bin/env python3
"""raw_http.py PORT: a loopback HTTP server for the replies a real web server
will not give (REPLIES, SLOW, redirects); /echo returns the request line and
User-Agent the client sent. tests/win/fixtures.sh limits its lifetime."""
import gzip
import re
import socketserver
import sys
import time


def reply(body, length="fit", status="200 OK", location=None, encoding=None):
    """length "fit" announces the body's size, None leaves the header out,
    anything else is sent as it stands; encoding names a Content-Encoding."""
    head = [f"HTTP/1.0 {status}", "Content-Type: text/plain"] + \
        [f"Location: {location}"] * (location is not None) + \
        [f"Content-Encoding: {encoding}"] * bool(encoding) + \
        [f"Content-Length: {len(body) if length == 'fit' else length}"] * (length is not None)
    return ("\r\n".join(head) + "\r\n\r\n").encode("ascii") + body


REPLIES = {
    "/empty": reply(b""),
    "/no-length": reply(b"a body without a length", length=None),
    "/missing": reply(b"<html><h1>404 Not Found</h1></html>", status="404 Not Found"),
    "/short": reply(b"only forty bytes of the hundred announce", length=100),
    "/negative": reply(b"Hello", length=-5),
    "/not-a-number": reply(b"Hello", length="abc"),
    "/huge": reply(b"Hello", length=100000000),
    "/extra": reply(b"HelloEXTRA BYTES", length=5),
    "/gzip": reply(gzip.compress(b"decoded text " * 100), encoding="gzip"),
    # 64 KiB on the wire, one byte past 64 MiB once decoded.
    "/gzip-bomb": reply(gzip.compress(bytes(64 * 1024 * 1024 + 1), 9), encoding="gzip"),
    "/not-modified": reply(b"", length=None, status="304 Not Modified"),
}
NOT_FOUND = reply(b"", status="404 Not Found")
# Replies that never finish: the client's time limits must end them.
TRICKLE_BODY = b"x" * 1000


def trickle(sock):
    """Announces 1000 bytes, then sends one every 100 ms: never idle for long,
    yet far slower than any whole-fetch limit a test sets."""
    sock.sendall(reply(TRICKLE_BODY)[: -len(TRICKLE_BODY)])
    for byte in TRICKLE_BODY:
        sock.sendall(bytes([byte]))
        time.sleep(0.1)


# /silent accepts the request, then says nothing for longer than any test waits.
SLOW = {"/silent": lambda sock: time.sleep(20), "/trickle": trickle}

# Redirects: /hop/N sends the client N more hops before it arrives; the others
# point elsewhere. Requests for the loops are counted (a list's append needs no
# lock) and /count tells how many.
PORT = 0
loop_requests = []


def moved(location):
    return reply(b"moved", status="302 Found", location=location)


def redirect(path):
    if hop := re.fullmatch(r"/hop/(\d+)", path):
        return moved(f"/hop/{int(hop[1]) - 1}") if int(hop[1]) else reply(b"arrived")
    elsewhere = {"/hop-absolute": f"http://127.0.0.1:{PORT}",
                 "/hop-other-port": f"http://127.0.0.1:{PORT + 1}",
                 "/hop-https": f"https://127.0.0.1:{PORT}"}
    if path in elsewhere:
        return moved(elsewhere[path] + "/hop/0")
    if path in ("/loop", "/slow-loop"):
        loop_requests.append(path)
        time.sleep(0.6 if path == "/slow-loop" else 0)
        return moved(path)
    if path == "/count":
        return reply(str(len(loop_requests)).encode("ascii"))
    return None


class Handler(socketserver.BaseRequestHandler):
    def handle(self):
        self.request.settimeout(3)
        request = b""
        try:
            while b"\r\n\r\n" not in request and len(request) < 16384:
                chunk = self.request.recv(4096)
                if not chunk:
                    break
                request += chunk
            path = (request.split(b" ") + [b""])[1].decode("latin-1")
            lines = request.split(b"\r\n")
            agent = [line for line in lines if line.startswith(b"User-Agent:")]
            echo = reply(b"\r\n".join(lines[:1] + agent))
            if path in SLOW:
                SLOW[path](self.request)
            elif (moving := redirect(path)) is not None:
                self.request.sendall(moving)
            else:
                self.request.sendall(echo if path == "/echo" else REPLIES.get(path, NOT_FOUND))
        except OSError:
            pass  # the client went away: nothing to do


if __name__ == "__main__":
    PORT = int(sys.argv[1])
    socketserver.ThreadingTCPServer.daemon_threads = True
    socketserver.ThreadingTCPServer(("127.0.0.1", PORT), Handler).serve_forever()
