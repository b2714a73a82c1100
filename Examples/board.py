#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""A small device, on Python's standard library alone, written from docs/protocol.md.

Joins a board with the six digits (or starts one and says the digits), puts up a note, and prints what the room says:

    board.py http://127.0.0.1:7700 --start --name Ada                     # prints the code
    board.py http://127.0.0.1:7700 --join 012345 --name Bea --note "hi"   # in another terminal
"""
import argparse
import base64
import json
import os
import socket
import struct
import sys
import time
import urllib.parse
import urllib.request
import uuid


def call(server, path, body, token=None):
    headers = {"content-type": "application/json"} | ({"authorization": f"Bearer {token}"} if token else {})
    request = urllib.request.Request(server + path, json.dumps(body).encode(), headers, method="POST")
    with urllib.request.urlopen(request, timeout=15) as answer:
        return json.load(answer)


def pair(server, options):
    """The token and the couple's id."""
    person = {"deviceId": str(uuid.uuid4()), "name": options.name}
    if options.join:
        joined = call(server, "/joins/code", person | {"code": options.join})
        return joined["token"], joined["coupleId"]
    couple = call(server, "/couples", person)
    code = call(server, f"/couples/{couple['coupleId']}/codes", {"name": options.name}, couple["token"])
    print("code", code["code"], flush=True)
    return couple["token"], couple["coupleId"]


class Socket:
    """A WebSocket of text frames (RFC 6455)."""

    def __init__(self, server, path, token):
        url = urllib.parse.urlsplit(server)
        self.stream = socket.create_connection((url.hostname, url.port or 80))
        key = base64.b64encode(os.urandom(16)).decode()
        self.stream.sendall((f"GET {url.path}{path} HTTP/1.1\r\nHost: {url.netloc}\r\nUpgrade: websocket\r\n"
                             f"Connection: Upgrade\r\nSec-WebSocket-Version: 13\r\nSec-WebSocket-Key: {key}\r\n"
                             f"Authorization: Bearer {token}\r\n\r\n").encode())
        self.bytes = self.stream.makefile("rb")
        status = self.bytes.readline().split()[1]
        while self.bytes.readline().strip():
            pass
        if status != b"101":
            raise ConnectionError(f"the room refused with status {status.decode()}")

    def send(self, text, kind=1):
        data = text if isinstance(text, bytes) else text.encode()
        size = (bytes([0x80 | len(data)]) if len(data) < 126 else
                b"\xfe" + struct.pack(">H", len(data)) if len(data) < 65536 else
                b"\xff" + struct.pack(">Q", len(data)))
        mask = os.urandom(4)
        self.stream.sendall(bytes([0x80 | kind]) + size + mask + bytes(b ^ mask[i % 4] for i, b in enumerate(data)))

    def frame(self):
        head = self.bytes.read(2)
        if len(head) < 2:
            return True, 8, b""
        size = head[1] & 0x7F
        if size >= 126:
            size = int.from_bytes(self.bytes.read(2 if size == 126 else 8), "big")
        return bool(head[0] & 0x80), head[0] & 0x0F, self.bytes.read(size)

    def texts(self):
        """The room's messages, until it closes the connection."""
        parts = b""
        while True:
            is_last, kind, data = self.frame()
            if kind == 8:
                return
            if kind == 9:
                self.send(data, 10)
            elif kind in (0, 1, 2):
                parts += data
                if is_last:
                    yield parts.decode()
                    parts = b""


def note(text, slot):
    """A batch that puts up one note."""
    now = int(time.time() * 1000)
    document = {"type": "doc", "content": [{"type": "paragraph", "content": [{"type": "text", "text": text}]}]}
    item = {"id": str(uuid.uuid4()), "kind": "note", "center": {"x": 800, "y": 500}, "rotationDegrees": 0, "z": 1,
            "author": slot, "createdAt": now, "updatedAt": now,
            "payload": {"pm": document, "paper": "butter", "pin": "brass"}}
    return {"v": 1, "type": "ops", "batchId": str(uuid.uuid4()), "ops": [{"op": "upsert", "item": item}]}


def main():
    parser = argparse.ArgumentParser(description="A small device.")
    parser.add_argument("server")
    way = parser.add_mutually_exclusive_group(required=True)
    way.add_argument("--join", metavar="CODE")
    way.add_argument("--start", action="store_true")
    parser.add_argument("--name", required=True)
    parser.add_argument("--note", metavar="TEXT")
    parser.add_argument("--messages", type=int, default=0, help="leave after so many messages; 0: never")
    options = parser.parse_args()
    server = options.server.rstrip("/")
    token, couple = pair(server, options)
    room = Socket(server, f"/couples/{couple}/ws", token)
    heard, beat = 0, time.monotonic()
    for text in room.texts():
        # Only when something has come: a real device sends its heartbeat also while nothing comes.
        if time.monotonic() - beat > 30:
            room.send("hb")
            beat = time.monotonic()
        if text in ("hb", "hb-ack"):
            continue
        print(text, flush=True)
        message = json.loads(text)
        if message["type"] == "welcome" and options.note and heard == 0:
            room.send(json.dumps(note(options.note, message["partner"])))
        heard += 1
        if heard == options.messages:
            return room.send(struct.pack(">H", 1000), 8)
    sys.exit("the room closed the line")


if __name__ == "__main__":
    main()
