# SPDX-License-Identifier: Apache-2.0
"""What the black-box tests share: the real server as a process, HTTP and WebSockets over plain sockets."""
import argparse
import base64
import http.client
import json
import os
import re
import select
import signal
import socket
import struct
import subprocess
import tempfile
import uuid

PATIENCE = 30  # seconds until something that should come counts as missing
TEXT, BINARY, CLOSE, PING, PONG = 1, 2, 8, 9, 10


def options(*programs, **numbers):
    """What the command line says: where programs are, and numbers that are these unless it says otherwise."""
    parser = argparse.ArgumentParser()
    for name in programs:
        parser.add_argument(f"--{name}", required=True)
    for name, number in numbers.items():
        parser.add_argument(f"--{name}", type=type(number), default=number)
    return parser.parse_args()


class Server:
    """`lumaro-room` on a free port, which it keeps, with a database that outlives its processes."""

    host = "127.0.0.1"  # as requests name it

    def __init__(self, binary, *flags):
        self.folder = tempfile.TemporaryDirectory(prefix="lumaro-blackbox-")
        self.binary, self.flags, self.process, self.port = binary, flags, None, 0
        self.database = os.path.join(self.folder.name, "room.db")
        self.log = open(os.path.join(self.folder.name, "log"), "ab")

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, kind, *_):
        if self.process and self.process.poll() is None:
            self.process.terminate()
            self.process.wait(PATIENCE)
        self.log.close()
        if kind:
            print("the server's last words:", *self.log_text().splitlines()[-20:], sep="\n  ")
        self.folder.cleanup()

    def start(self):
        self.process = subprocess.Popen(
            [self.binary, "--listen", f"127.0.0.1:{self.port}", "--database", self.database, *self.flags],
            stdout=subprocess.PIPE, stderr=self.log)
        line = self.process.stdout.readline().decode()
        found = re.search(r"listening on https?://127\.0\.0\.1:(\d+)", line)
        assert found, f"the server did not start: {line!r}\n{self.log_text()}"
        self.port = int(found[1])

    def kill(self):
        self.process.send_signal(signal.SIGKILL)
        self.process.wait(PATIENCE)
        self.process.stdout.close()

    def stop(self):
        """Ends it in good order; its exit status."""
        self.process.terminate()
        status = self.process.wait(PATIENCE)
        self.process.stdout.close()
        return status

    def is_alive(self):
        return self.process.poll() is None

    def memory(self):
        """Bytes of its memory that were resident at most, so far."""
        with open(f"/proc/{self.process.pid}/status", encoding="ascii") as status:
            return 1024 * int(re.search(r"VmHWM:\s*(\d+) kB", status.read())[1])

    def log_text(self):
        with open(os.path.join(self.folder.name, "log"), encoding="utf-8", errors="replace") as log:
            return log.read()

    @property
    def url(self):
        return f"http://127.0.0.1:{self.port}"

    def connect(self, source="127.0.0.1"):
        return socket.create_connection(("127.0.0.1", self.port), PATIENCE, (source, 0))

    def call(self, method, path, body=None, token=None, source="127.0.0.1", headers=None):
        """Status, headers and JSON of the answer; a body is JSON unless it is bytes."""
        line = http.client.HTTPConnection(self.host, self.port)
        line.sock = self.connect(source)
        sent = dict(headers or {})
        if token:
            sent["Authorization"] = f"Bearer {token}"
        if body is not None and not isinstance(body, bytes):
            sent["Content-Type"] = "application/json"
            body = json.dumps(body)
        try:
            try:
                line.request(method, path, body, sent)
            except (BrokenPipeError, ConnectionResetError):
                pass  # it may be refused before all of it is sent
            answer = line.getresponse()
            text = answer.read()
            return answer.status, answer.headers, json.loads(text) if text.startswith((b"{", b"[")) else text
        finally:
            line.close()

    def new_couple(self):
        status, _, couple = self.call("POST", "/couples", {"deviceId": str(uuid.uuid4()), "name": "Ada"})
        assert status == 201, (status, couple)
        return couple["coupleId"], couple["token"]

    def new_code(self, couple, token):
        status, _, code = self.call("POST", f"/couples/{couple}/codes", {"name": "Ada"}, token)
        assert status == 201, (status, code)
        return code["code"]

    def join(self, code, **how):
        """Status, headers and answer of a join under a new device."""
        return self.call("POST", "/joins/code", {"code": code, "deviceId": str(uuid.uuid4()), "name": "Bea"}, **how)

    def pair(self):
        """A new couple: its id, and the tokens of a and b."""
        couple, token = self.new_couple()
        status, _, joined = self.join(self.new_code(couple, token))
        assert status == 200, (status, joined)
        return couple, (token, joined["token"])

    def snapshot(self, couple, token):
        status, _, board = self.call("GET", f"/couples/{couple}/snapshot", token=token)
        assert status == 200, (status, board)
        return board


def upgrade(path, token, *extra, host="127.0.0.1"):
    """The request that opens a socket."""
    lines = [f"GET {path} HTTP/1.1", f"Host: {host}", "Upgrade: websocket", "Connection: Upgrade",
             "Sec-WebSocket-Version: 13", "Sec-WebSocket-Key: " + base64.b64encode(os.urandom(16)).decode(),
             f"Authorization: Bearer {token}", *extra]
    return "\r\n".join(lines).encode() + b"\r\n\r\n"


def frame(data, kind=TEXT, first=0x80, mask=b"\x5a\xa5\x0f\xf0", size=None):
    """A frame as a client sends it; `first` are the FIN and reserved bits, `size` may lie, no `mask` leaves it out."""
    data = data.encode() if isinstance(data, str) else data
    size = len(data) if size is None else size
    bit = 0x80 if mask else 0
    head = bytes([first | kind])
    if size < 126:
        head += bytes([bit | size])
    elif size < 1 << 16:
        head += bytes([bit | 126]) + struct.pack(">H", size)
    else:
        head += bytes([bit | 127]) + struct.pack(">Q", size)
    if not mask:
        return head + data
    pattern = (mask * (len(data) // 4 + 1))[:len(data)]
    masked = int.from_bytes(data, "big") ^ int.from_bytes(pattern, "big")
    return head + mask + masked.to_bytes(len(data), "big")


class LineClosed(Exception):
    """The other side is gone; `code` of its close frame, 0 when there was none."""

    def __init__(self, code=0):
        super().__init__(f"closed with code {code}")
        self.code = code


class WebSocket:
    """A socket to a room, used by one thread."""

    def __init__(self, server, couple, token):
        self.stream, self.buffer = None, b""
        try:
            self.stream = server.connect()
            self.stream.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            self.stream.sendall(upgrade(f"/couples/{couple}/ws", token, host=server.host))
            while b"\r\n\r\n" not in self.buffer:
                self._more()
        except OSError as error:
            self.close()
            raise LineClosed from error
        head, self.buffer = self.buffer.split(b"\r\n\r\n", 1)
        self.status = int(head.split()[1])
        assert self.status == 101, head

    def _more(self):
        got = self.stream.recv(65536)
        if not got:
            raise LineClosed
        self.buffer += got

    def send(self, message):
        self.send_bytes(frame(message if isinstance(message, str) else json.dumps(message)))

    def send_bytes(self, raw):
        try:
            self.stream.sendall(raw)
        except OSError as error:
            raise LineClosed from error

    def _take_frame(self):
        """One whole frame of the buffer, None when there is none yet."""
        if len(self.buffer) < 2:
            return None
        size, start = self.buffer[1] & 0x7F, 2
        if size >= 126:
            start = 4 if size == 126 else 10
            if len(self.buffer) < start:
                return None
            size = int.from_bytes(self.buffer[2:start], "big")
        if len(self.buffer) < start + size:
            return None
        kind, data = self.buffer[0] & 0x0F, self.buffer[start:start + size]
        self.buffer = self.buffer[start + size:]
        return kind, data

    def poll(self, seconds):
        """The next text, None when none came in time; raises LineClosed at the end of the line."""
        try:
            while True:
                taken = self._take_frame()
                if taken and taken[0] == CLOSE:
                    raise LineClosed(int.from_bytes(taken[1][:2], "big"))
                if taken and taken[0] == PING:
                    self.stream.sendall(frame(taken[1], PONG))
                elif taken and taken[0] == TEXT:
                    return taken[1].decode()
                elif not taken:
                    if not select.select([self.stream], [], [], seconds)[0]:
                        return None
                    self._more()
        except OSError as error:
            raise LineClosed from error

    def receive(self, kind=None):
        """The next message; with `kind`, the next of that type."""
        while True:
            text = self.poll(PATIENCE)
            assert text is not None, f"no message came, waiting for {kind}"
            message = None if text in ("hb", "hb-ack") else json.loads(text)
            if message and kind in (None, message["type"]):
                return message

    def close(self):
        if self.stream:
            self.stream.close()


def note(item, text, at, author):
    """The op that puts up a note, or a newer version of it."""
    document = {"type": "doc", "content": [{"type": "paragraph", "content": [{"type": "text", "text": text}]}]}
    return {"op": "upsert", "item": {
        "id": item, "kind": "note", "center": {"x": 100, "y": 200}, "rotationDegrees": 0, "scale": 1, "z": 1,
        "author": author, "createdAt": 1, "updatedAt": at, "payload": {"pm": document, "paper": "butter", "pin": "brass"}}}


def text_of(item):
    return item["payload"]["pm"]["content"][0]["content"][0]["text"]


def batch(ops, batch_id=None):
    return {"v": 1, "type": "ops", "batchId": batch_id or str(uuid.uuid4()), "ops": ops}
