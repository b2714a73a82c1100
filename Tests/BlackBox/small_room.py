# SPDX-License-Identifier: Apache-2.0
"""A room in memory on Python's standard library alone, written from docs/protocol.md (the numbers are its rules): enough
for devices to pair and share one board, not for anybody to rely on. It checks devices as strictly as it can."""
import base64
import hashlib
import http.server
import json
import threading
import uuid

TEXT, CLOSE, PING, PONG = 1, 8, 9, 10


class Couple:
    def __init__(self):
        self.board = {"v": 1, "background": "butter", "updatedAt": 0, "items": []}
        self.names, self.tokens, self.lines, self.taken = {}, {}, [], set()

    def token(self, couple_id, slot, name):
        token = f"lm1.{couple_id}.{slot}.{uuid.uuid4().hex}"
        self.tokens[token], self.names[slot] = slot, name
        return token

    def slots(self, held):
        return [slot for slot in "ab" if slot in held]

    def state(self):
        return {"names": self.names, "paired": self.slots(self.tokens.values())}

    def say(self, message, to):
        for line in to:
            line.send(json.dumps({"v": 1} | message))

    def welcome(self, line):
        online = self.slots([other.slot for other in self.lines])
        self.say({"type": "welcome", "partner": line.slot, "board": self.board, "roster": online} | self.state(), [line])

    def roster(self, but=None):
        online = self.slots([other.slot for other in self.lines])
        self.say({"type": "roster", "online": online} | self.state(), [line for line in self.lines if line is not but])

    def apply(self, op):
        """The last writer wins; a delete always does. Whether the op took effect (docs/board-rules.md, simplified)."""
        items = self.board["items"]
        if op["op"] == "setBackground":
            self.board["background"] = op["background"]
        elif op["op"] == "delete":
            self.board["items"] = [item for item in items if item["id"] != op["itemId"]]
        else:
            place = next((i for i, item in enumerate(items) if item["id"] == op["item"]["id"]), len(items))
            if place < len(items) and items[place]["updatedAt"] >= op["item"]["updatedAt"]:
                return False
            items[place:place + 1] = [op["item"]]
            self.board["updatedAt"] = max(self.board["updatedAt"], op["item"]["updatedAt"])
        return True

    def take(self, line, message):
        """P30 to P34."""
        batch, known = message["batchId"], message["batchId"] in self.taken
        applied = [] if known else [op for op in message["ops"] if self.apply(op)]
        self.taken.add(batch)
        self.say({"type": "ack", "batchId": batch}, [line])
        if known or len(applied) < len(message["ops"]):
            self.welcome(line)
        if applied:
            self.say({"type": "ops", "batchId": batch, "author": line.slot, "ops": applied},
                     [other for other in self.lines if other is not line])


class Handler(http.server.BaseHTTPRequestHandler):
    """One connection; `self.server.room` is the `SmallRoom`."""
    protocol_version = "HTTP/1.1"

    def log_message(self, *_):
        pass

    def answer(self, status, value):
        text = json.dumps(value).encode()
        self.send_response(status)
        self.send_header("Content-Type", "application/json")
        self.send_header("Content-Length", str(len(text)))
        self.end_headers()
        self.wfile.write(text)

    def couple(self):
        """The couple of the path, when the token opens it (P7)."""
        scheme, _, token = self.headers.get("Authorization", "").partition(" ")
        couple = self.server.room.couples.get(self.path.split("/")[2])
        self.slot = couple.tokens.get(token) if couple and scheme == "Bearer" else None
        return couple if self.slot else None

    def do_POST(self):
        body = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
        room, parts = self.server.room, self.path.split("/")
        with room.lock:
            if self.path == "/couples":
                couple_id = uuid.uuid4().hex[:8]
                couple = room.couples[couple_id] = Couple()
                return self.answer(201, {"coupleId": couple_id, "token": couple.token(couple_id, "a", body["name"]), "invite": {
                    "inviteId": "12345678", "link": f"{room.url}/for/12345678", "expiresAt": 9000000000000}})
            if self.path == "/joins/code":
                couple_id = room.codes.pop(body["code"], None)
                if not couple_id:
                    return self.answer(404, {"code": "code_not_found", "message": "no such code"})
                couple = room.couples[couple_id]
                token = couple.token(couple_id, "b", body["name"])
                couple.roster()
                return self.answer(200, {"token": token, "coupleId": couple_id, "partnerName": couple.names["a"],
                                         "slot": "b", "status": "joined"})
            if not self.couple():
                return self.answer(401, {"code": "unauthorized", "message": "no"})
            if parts[3] == "codes":
                code = f"{len(room.codes) + 123456:06}"
                room.codes[code] = parts[2]
                return self.answer(201, {"code": code, "expiresAt": 9000000000000, "slot": "b"})
        return self.answer(404, {"code": "not_configured", "message": "not here"})

    def do_GET(self):
        couple = self.couple()
        if not couple:
            return self.answer(401, {"code": "unauthorized", "message": "no"})
        if self.path.endswith("/snapshot"):
            return self.answer(200, couple.board)
        accept = hashlib.sha1((self.headers["Sec-WebSocket-Key"] + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11").encode())
        self.send_response(101)
        self.send_header("Upgrade", "websocket")
        self.send_header("Connection", "Upgrade")
        self.send_header("Sec-WebSocket-Accept", base64.b64encode(accept.digest()).decode())
        self.end_headers()
        self.close_connection = True
        try:
            self.listen(couple)
        except OSError:
            pass
        with self.server.room.lock:
            couple.lines.remove(self)
            couple.roster()

    def listen(self, couple):
        with self.server.room.lock:
            couple.lines.append(self)
            couple.welcome(self)
            couple.roster(but=self)
        for kind, data in iter(self.frame, None):
            if kind == CLOSE:
                return self.send(data, CLOSE)
            if kind == PING:
                self.send(data, PONG)
            elif data == b"hb":
                self.send("hb-ack")
            elif kind == TEXT:
                self.take(couple, json.loads(data))

    def take(self, couple, message):
        assert message["v"] == 1 and list(message)[:2] == ["v", "type"], "P23"
        with self.server.room.lock:
            self.server.room.heard.append(message)
            if message["type"] == "ops":
                couple.take(self, message)
            else:
                assert message["type"] == "presence" and "nowPlaying" in message and "here" in message, "P24"

    def frame(self):
        """The next whole frame of the device, None at the end of the line."""
        head = self.rfile.read(2)
        if len(head) < 2:
            return None
        assert head[0] & 0xF0 == 0x80 and head[1] & 0x80, "a whole, masked frame"
        size = head[1] & 0x7F
        if size >= 126:
            size = int.from_bytes(self.rfile.read(2 if size == 126 else 8), "big")
        mask = self.rfile.read(4)
        return head[0] & 0x0F, bytes(byte ^ mask[i % 4] for i, byte in enumerate(self.rfile.read(size)))

    def send(self, data, kind=TEXT):
        data = data.encode() if isinstance(data, str) else data
        size = bytes([len(data)]) if len(data) < 126 else b"\x7e" + len(data).to_bytes(2, "big")
        if len(data) >= 1 << 16:
            size = b"\x7f" + len(data).to_bytes(8, "big")
        try:
            self.wfile.write(bytes([0x80 | kind]) + size + data)
        except OSError:
            pass  # the line is gone; reading from it will say so


class SmallRoom:
    """The server, on a thread of its own and a free port."""

    def __init__(self):
        self.lock, self.couples, self.codes, self.heard = threading.RLock(), {}, {}, []
        self.http = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Handler)
        self.http.daemon_threads, self.http.room = True, self
        self.url = f"http://127.0.0.1:{self.http.server_port}"

    def __enter__(self):
        threading.Thread(target=self.http.serve_forever, daemon=True).start()
        return self

    def __exit__(self, *_):
        self.http.shutdown()
        self.http.server_close()

    def cut_lines(self):
        """Every line ends without a word, as when a network goes."""
        with self.lock:
            for couple in self.couples.values():
                for line in couple.lines:
                    line.connection.shutdown(2)
