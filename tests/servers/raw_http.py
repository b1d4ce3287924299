#!/usr/bin/env python3
"""A loopback HTTP server for the replies a real web server will not give.

Each path in REPLIES is one kind of reply (no Content-Length, a body shorter
than announced, a nonsense length, a body that never ends...). /echo returns
the request head as the body, so that a test can see exactly what the client
sent. It only ever binds 127.0.0.1, and it cannot outlive the test run: it exits
after --lifetime seconds, or as soon as the --parent process is gone, and no
connection is served for longer than --stall seconds.
"""
import argparse
import os
import socket
import socketserver
import threading
import time

MAX_HEAD = 16 * 1024


def head(status, *headers):
    lines = [f"HTTP/1.0 {status}"] + list(headers) + ["", ""]
    return "\r\n".join(lines).encode("ascii")


def reply(body, length="fit", status="200 OK"):
    """A head and body sent at once; length "fit" announces the body's size,
    None leaves the header out, anything else is sent as it stands."""
    headers = ["Content-Type: text/plain"]
    if length == "fit":
        length = len(body)
    if length is not None:
        headers.append(f"Content-Length: {length}")
    return head(status, *headers) + body


# path -> (bytes sent at once, what happens after them)
REPLIES = {
    "/empty": (reply(b""), "close"),
    "/no-length": (reply(b"a body without a length", length=None), "close"),
    "/missing": (reply(b"<html><h1>404 Not Found</h1></html>", status="404 Not Found"), "close"),
    "/short": (reply(b"only forty bytes of the hundred announce", length=100), "close"),
    "/negative": (reply(b"Hello", length="-5"), "close"),
    "/not-a-number": (reply(b"Hello", length="abc"), "close"),
    "/trailing-garbage": (reply(b"Hello", length="5abc"), "close"),
    "/long-length": (reply(b"Hello", length="0" * 40 + "5"), "close"),
    "/huge": (reply(b"Hello", length=100000000), "close"),
    "/extra": (reply(b"HelloEXTRA BYTES", length=5), "close"),
    "/endless": (reply(b"", length=4096), "endless"),
    "/stall": (reply(b"12345", length=10), "stall"),
    "/trickle": (reply(b"", length=10), "trickle"),
}


def read_head(conn):
    data = b""
    while b"\r\n\r\n" not in data and len(data) < MAX_HEAD:
        chunk = conn.recv(4096)
        if not chunk:
            break
        data += chunk
    return data.split(b"\r\n\r\n", 1)[0] + b"\r\n\r\n"


class Handler(socketserver.BaseRequestHandler):
    def handle(self):
        conn = self.request
        stall = self.server.stall
        deadline = time.monotonic() + stall
        conn.settimeout(stall)
        try:
            request = read_head(conn)
            parts = request.split(b"\r\n", 1)[0].split(b" ")
            path = parts[1].decode("latin-1") if len(parts) > 1 else ""
            if path == "/echo":
                conn.sendall(head("200 OK", f"Content-Length: {len(request)}") + request)
                return
            sent, then = REPLIES.get(path, (head("404 Not Found", "Content-Length: 0"), "close"))
            conn.sendall(sent)
            if then == "endless":
                chunk = b"x" * 1024
                while time.monotonic() < deadline:
                    conn.sendall(chunk)
            elif then == "stall":
                time.sleep(stall)
            elif then == "trickle":
                for digit in b"0123456789":
                    time.sleep(0.1)
                    conn.sendall(bytes([digit]))
        except OSError:
            pass  # the client went away: nothing to do
        finally:
            try:
                conn.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass


class Server(socketserver.ThreadingTCPServer):
    daemon_threads = True
    allow_reuse_address = True


def watch(parent, lifetime):
    end = time.monotonic() + lifetime
    while time.monotonic() < end:
        if parent:
            try:
                os.kill(parent, 0)
            except OSError:
                break
        time.sleep(0.5)
    os._exit(0)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--port", type=int, default=0, help="0: any free port")
    parser.add_argument("--port-file", help="where to write the port once listening")
    parser.add_argument("--lifetime", type=float, default=600)
    parser.add_argument("--stall", type=float, default=3, help="longest time per connection")
    parser.add_argument("--parent", type=int, default=0, help="exit when this process ends")
    args = parser.parse_args()

    server = Server(("127.0.0.1", args.port), Handler)
    server.stall = args.stall
    threading.Thread(target=watch, args=(args.parent, args.lifetime), daemon=True).start()
    if args.port_file:
        tmp = args.port_file + ".tmp"
        with open(tmp, "w") as f:
            f.write(str(server.server_address[1]))
        os.replace(tmp, args.port_file)
    server.serve_forever()


if __name__ == "__main__":
    main()
