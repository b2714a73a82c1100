#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Sends the server what no honest client would: it answers or closes, lives, and goes on serving everybody else."""
import json
import random
import select
import socket
import struct
import time
import uuid

from blackbox import BINARY, CLOSE, PATIENCE, PING, TEXT, LineClosed, Server, WebSocket, batch, frame, note, options, upgrade

SILENT, ALIVE, BAD, LIMIT = 0, "alive", "bad_message", "limit_exceeded"  # silent: closed without a close frame

# What goes over an open socket: bytes, and what may become of it: the codes it is closed with, the code of an "error", or
# that it lives on without a word.
FRAMES = {
    "an unmasked frame": (frame("hb", mask=b""), {1002, SILENT}),
    "a reserved bit": (frame("hb", first=0xC0), {1002, SILENT}),
    "an unknown opcode": (frame("hb", kind=3), {1002, SILENT}),
    "a fragmented ping": (frame("x", PING, first=0), {1002, SILENT}),
    "a ping over 125 bytes": (frame("x" * 126, PING), {1002, SILENT}),
    "a continuation of nothing": (frame("x", kind=0), {1002, SILENT}),
    "a text inside a fragmented text": (frame("h", first=0) + frame("b"), {1002, SILENT}),
    "a length of 2^63": (frame("x", size=1 << 63), {1002, 1009, SILENT}),
    "a length not in its shortest form": (bytes([0x81, 0xFE, 0, 2]) + bytes(4) + b"hb", {1002, SILENT}),
    "fragments that sum to over 4 MiB": (frame("x" * (3 << 20), first=0) + frame("x" * (2 << 20), kind=0), {1009, SILENT}),
    "invalid UTF-8": (frame(b"\xc3\x28"), {1007, SILENT}),
    "a surrogate in UTF-8": (frame(b"\xed\xa0\x80"), {1007, SILENT}),
    "invalid UTF-8 in a close": (frame(struct.pack(">H", 1000) + b"\xff", CLOSE), {1000, 1002, 1007, SILENT}),
    "a close of one byte": (frame(b"\x03", CLOSE), {1002, SILENT}),
    "a close with a code that is none": (frame(struct.pack(">H", 1005), CLOSE), {1002, SILENT}),
    "a close in good order": (frame(struct.pack(">H", 1000), CLOSE), {1000}),
    "HTTP on an open socket": (b"GET / HTTP/1.1\r\nHost: x\r\n\r\n", {1002, SILENT}),
    "a binary frame of noise": (frame(bytes(range(256)), BINARY), {1003}),
    "a heartbeat in three pieces, a ping between": (
        frame("h", first=0) + frame("", PING) + frame("", kind=0, first=0) + frame("b", kind=0), {ALIVE}),
    "a thousand pings": (frame("x" * 125, PING) * 1000, {ALIVE}),
    "JSON nested 100,000 deep": (frame("[" * 100_000), {BAD}),
    "an object nested deep in an unknown key": (frame('{"v":1,"type":"ops","x":' + '{"x":' * 5000 + "0" + "}" * 5001), {BAD}),
    "a number beyond all numbers": (frame('{"type":"ops","batchId":1e999999,"ops":[]}'), {BAD}),
    "an unknown type": (frame('{"v":1,"type":"welcome"}'), {BAD}),
    "4 MiB of zeros": (frame("0" * (4 << 20)), {BAD}),
    "a batch of 101 ops": (frame(json.dumps(batch([{"op": "setBackground", "background": "oat"}] * 101))), {LIMIT}),
    "a delete of nothing in the far future": (
        frame(json.dumps(batch([{"op": "delete", "itemId": str(uuid.uuid4()), "deletedAt": 9223372036854775}]))), {ALIVE}),
    "an item of 32 KiB and more": (frame(json.dumps(batch([note(str(uuid.uuid4()), "x" * 40_000, 1, "a")]))), {ALIVE}),
}
GET = b"GET /healthz HTTP/1.1\r\nHost: x\r\n"
BODY = b"POST /couples HTTP/1.1\r\nHost: x\r\nContent-Type: application/json\r\n"
# What goes over a fresh line: bytes, and the statuses it may be answered with; 0 is a line closed without an answer.
REQUESTS = {
    "noise": (random.Random(7).randbytes(4096), {0, 400}),
    "the first bytes of TLS": (b"\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03" + bytes(500), {0, 400}),
    "ten thousand headers": (GET + b"x: y\r\n" * 10_000 + b"\r\n", {0, 400, 413, 431}),
    "a target of 100 KB": (b"GET /" + b"x" * 100_000 + b" HTTP/1.1\r\nHost: x\r\n\r\n", {0, 400, 404, 413, 414, 431}),
    "a NUL in a header": (GET + b"x: a\x00b\r\n\r\n", {0, 400}),
    "a length that is no number": (BODY + b"Content-Length: ten\r\n\r\n{}", {0, 400}),
    "a length beyond all numbers": (BODY + b"Content-Length: 99999999999999999999\r\n\r\n{}", {0, 400, 413}),
    "two lengths": (BODY + b"Content-Length: 2\r\nContent-Length: 40\r\n\r\n{}", {0, 400}),
    "a length and chunks": (BODY + b"Content-Length: 2\r\nTransfer-Encoding: chunked\r\n\r\n0\r\n\r\n", {0, 400}),
    "a body over 64 KiB": (BODY + b"Content-Length: 70000\r\n\r\n" + b"x" * 70_000, {413}),
    "chunks over 64 KiB": (BODY + b"Transfer-Encoding: chunked\r\n\r\n" + (b"4000\r\n" + b"x" * 0x4000 + b"\r\n") * 5, {413}),
    "a chunk of a negative size": (BODY + b"Transfer-Encoding: chunked\r\n\r\n-1\r\n\r\n", {0, 400}),
    "a body of nested arrays": (BODY + b"Content-Length: 60000\r\n\r\n" + b"[" * 60_000, {400}),
    "HTTP of the future": (b"GET /healthz HTTP/3.9\r\nHost: x\r\n\r\n", {0, 200, 400, 505}),
    "the preface of HTTP/2": (b"PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n", {0, 400, 404, 405, 505}),
    "a proxy's request": (b"CONNECT example.org:443 HTTP/1.1\r\nHost: x\r\n\r\n", {0, 400, 404, 405}),
    "an escaped path upwards": (b"GET /couples/..%2f..%2froom.db/snapshot HTTP/1.1\r\nHost: x\r\n\r\n", {400, 401, 404}),
    "an escaped NUL in an id": (b"GET /couples/a%00b/snapshot HTTP/1.1\r\nHost: x\r\n\r\n", {400, 401, 404}),
    "a broken escape": (b"GET /couples/%zz/snapshot HTTP/1.1\r\nHost: x\r\n\r\n", {400, 401, 404}),
    "markup in an invite": (b"GET /for/%3Cscript%3Ealert(1)%3C/script%3E HTTP/1.1\r\nHost: x\r\n\r\n", {400, 404}),
    "a token of 10 KB": (b"GET /couples/x/snapshot HTTP/1.1\r\nHost: x\r\nAuthorization: Bearer " + b"x" * 10_000 + b"\r\n\r\n", {401}),
    "a chunk whose extension is no extension": (BODY + b"Transfer-Encoding: chunked\r\n\r\n2;=\r\n{}\r\n0\r\n\r\n", {0, 400}),
    "an upgrade without a token": (upgrade("/couples/x/ws", ""), {401}),
    "an upgrade of another path": (upgrade("/healthz", "x"), {200, 400, 404}),
}

CHUNKED = BODY + b"Transfer-Encoding: chunked\r\n\r\n"
# What begins a request, and what goes on and on behind it; and the status that ends it.
ENDLESS = {
    "a header": (GET, b"x", 431),
    "headers": (GET, b"x: y\r\n", 431),
    "the size of a chunk": (CHUNKED, b"0", 413),
    "the extension of a chunk": (CHUNKED + b"2;", b"x", 413),
    "the extension of a later chunk": (CHUNKED + b"2\r\n{}\r\n1;", b"x", 413),
    "the extension of the last chunk": (CHUNKED + b"0;", b"x", 413),
    "a trailer": (CHUNKED + b"0\r\nx: ", b"y", 413),
    "trailers": (CHUNKED + b"0\r\n", b"x: y\r\n", 413),
}
MOST = 32 << 20  # bytes of what never ends


def status_of(server, raw):
    """The status that these bytes on a fresh line are answered with; 0 when the line is closed without one."""
    with server.connect() as line:
        got = b""
        try:
            line.sendall(raw)
            while b"\r\n" not in got and (part := line.recv(65536)):
                got += part
        except (ConnectionResetError, BrokenPipeError):
            pass
        assert b"root:" not in got and b"<script>alert" not in got, got
        return int(got.split()[1]) if got.startswith(b"HTTP/") else 0


def status_of_endless(server, start, more):
    """The status that ends a request which does not; 0 when all that there is of it was taken without a word."""
    piece, sent = (more * (1 << 18))[:1 << 18], 0
    with server.connect() as line:
        line.sendall(start)
        while sent < MOST and not select.select([line], [], [], 0)[0]:
            line.sendall(piece)
            sent += len(piece)
        got = line.recv(65536) if sent < MOST else b""
        return int(got.split()[1]) if got.startswith(b"HTTP/") else 0


def fate_of(server, couple, token, raw):
    """What becomes of an open socket on which these bytes come, and a heartbeat behind them."""
    line = WebSocket(server, couple, token)
    fate = ALIVE
    try:
        line.receive("welcome")
        line.send_bytes(raw + frame("hb"))
        while (text := line.poll(PATIENCE)) != "hb-ack":
            assert text is not None, "no answer and no close"
            message = json.loads(text)
            fate = message["code"] if message["type"] == "error" else fate
        return fate
    except LineClosed as closed:
        return closed.code
    finally:
        line.close()


def serves(server, couple, tokens):
    """Two good clients: what one puts up, the other sees."""
    ada, bea = (WebSocket(server, couple, token) for token in tokens)
    bea.receive("welcome")
    sent = batch([note(str(uuid.uuid4()), "still here", int(time.time() * 1000), "a")])
    ada.send(sent)
    assert ada.receive("ack")["batchId"] == sent["batchId"]
    assert bea.receive("ops")["ops"][0]["item"]["id"] == sent["ops"][0]["item"]["id"]
    ada.send(batch([{"op": "delete", "itemId": sent["ops"][0]["item"]["id"], "deletedAt": int(time.time() * 1000)}]))
    ada.receive("ack")
    ada.close()
    bea.close()


def pipelining(server):
    """Requests that come at once are answered one by one."""
    with server.connect() as line:
        line.sendall((GET + b"\r\n") * 20 + GET + b"Connection: close\r\n\r\n")
        got = b""
        while part := line.recv(65536):
            got += part
    assert got.count(b"HTTP/1.1 200") == 21, got[:2000]


def mutated(generator, raw):
    """The bytes with a few of them changed, left out, doubled or cut off."""
    raw = bytearray(raw)
    for _ in range(generator.randint(1, 4)):
        at = generator.randrange(len(raw) + 1)
        kind = generator.randrange(5)
        if kind == 0 and at < len(raw):
            raw[at] = generator.randrange(256)
        elif kind == 1:
            raw[at:at + generator.randint(1, 9)] = b""
        elif kind == 2:
            raw[at:at] = generator.choice([b"\\u0000", b'"', b"{", b"]", b"-", b"1e400", b"\xff", b"null", b":", b"0" * 40])
        elif kind == 3:
            raw[at:at] = raw[at:at + generator.randint(1, 60)]
        elif generator.random() < 0.2:
            del raw[at:]
    return bytes(raw)


def fuzz(server, couple, tokens, seconds, seed):
    """Mutated messages in good frames and, more rarely, mutated frames, for so long; the partner reads along."""
    generator = random.Random(seed)
    messages = [json.dumps(message).encode() for message in (
        batch([note("00000000-0000-4000-8000-0000000000f1", "fuzz \"\u00e9", 5, "a")]),
        batch([{"op": "delete", "itemId": "00000000-0000-4000-8000-0000000000f1", "deletedAt": 6},
               {"op": "setBackground", "background": "oat"}]),
        {"v": 1, "type": "presence", "nowPlaying": None, "activity": "editing", "here": {
            "lat": 1.5, "lon": 2, "label": "x", "tz": "UTC", "precision": "block", "since": 1, "sampledAt": 2}})]
    partner, end, sent, lines = WebSocket(server, couple, tokens[1]), time.monotonic() + seconds, 0, 0
    while time.monotonic() < end:
        line = WebSocket(server, couple, tokens[0])
        lines += 1
        try:
            while time.monotonic() < end:
                raw = generator.choice(messages)
                whole = generator.random() < 0.02
                line.send_bytes(mutated(generator, frame(raw)) if whole else frame(mutated(generator, raw)) + frame("hb"))
                sent += 1
                while not whole and (text := line.poll(PATIENCE)) != "hb-ack":
                    json.loads(text)
                while partner.poll(0):
                    pass
                if whole:
                    break  # the server may wait for the rest of a frame
        except LineClosed:
            pass
        finally:
            line.close()
        assert server.is_alive(), "the server is gone"
    partner.close()
    print(f"fuzz: {sent} messages on {lines} lines, seed {seed}")


def main():
    asked = options("room", seconds=5.0, seed=1)
    with Server(asked.room, "--messages-per-second", "100000", "--burst", "100000") as server:
        couple, tokens = server.pair()
        faults = []
        idlers = [server.connect(f"127.0.5.{i + 1}") for i in range(100)]
        for idler in idlers:
            idler.sendall(GET + b"x: a header that never en")
        for name, (raw, fates) in FRAMES.items():
            fate = fate_of(server, couple, tokens[0], raw)
            if fate not in fates or not server.is_alive():
                faults.append(f"{name}: {fate}, not one of {fates}")
        for name, (raw, statuses) in REQUESTS.items():
            status = status_of(server, raw)
            if status not in statuses or not server.is_alive():
                faults.append(f"{name}: {status}, not one of {statuses}")
        before = server.memory()
        for name, (start, more, wanted) in ENDLESS.items():
            status = status_of_endless(server, start, more)
            if status != wanted or not server.is_alive():
                faults.append(f"{name} without an end: {status}, not {wanted}")
        if server.memory() > before + MOST // 2:
            faults.append(f"what does not end took {server.memory() - before} bytes")
        print(f"{len(FRAMES)} kinds of frames, {len(REQUESTS)} kinds of requests", *faults, sep="\n")
        pipelining(server)
        fuzz(server, couple, tokens, asked.seconds, asked.seed)
        serves(server, couple, tokens)
        for idler in idlers:
            idler.close()
        log = server.log_text()
        assert not any(token in log for token in tokens), "the log holds a token"
        assert server.stop() == 0 and not faults


if __name__ == "__main__":
    main()
