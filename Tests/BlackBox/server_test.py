#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The room server from without: its answers over HTTP, WebSockets and TLS, each deed at a server of its own."""
import http.client
import http.server
import json
import os
import socketserver
import ssl
import subprocess
import threading
import uuid

from blackbox import PATIENCE, LineClosed, Server, WebSocket, batch, note, options

PNG = b"\x89PNG\r\n\x1a\n and its pixels"
MEDIA = "/media/6f9619ff-8b86-4d01-b42d-00cf4fc964f"  # without its last digit
JPEG = b"\xff\xd8\xff and its pixels"
COVER = MEDIA.replace("media", "covers")


class TlsServer(Server):
    """The same, under a certificate of its own."""

    def __init__(self, binary, *flags):
        super().__init__(binary, *flags)
        paths = [os.path.join(self.folder.name, name) for name in ("cert.pem", "key.pem")]
        subprocess.run(["openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days", "1",
                        "-subj", "/CN=localhost", "-addext", "subjectAltName=IP:127.0.0.1", "-out", paths[0], "-keyout", paths[1]],
                       check=True, capture_output=True)
        self.flags += ("--tls-cert", paths[0], "--tls-key", paths[1])
        self.context = ssl.create_default_context(cafile=paths[0])

    def connect(self, source="127.0.0.1"):
        return self.context.wrap_socket(super().connect(source), server_hostname="127.0.0.1")


def found(server, name="Ada"):
    """A new board: its id, the token of its founder, and its invite."""
    status, _, couple = server.call("POST", "/couples", {"deviceId": "ada-1", "name": name})
    assert status == 201, couple
    return couple["coupleId"], couple["token"], couple["invite"]["inviteId"]


def joined(server, invite):
    """The token of Ben's one device; the one from before ends."""
    status, _, answer = server.call("POST", "/joins/link", {"inviteId": invite, "deviceId": "ben-1", "name": "Ben"})
    assert status == 200, answer
    return answer["token"]


def upgrade(server, couple, token, **headers):
    """Status, headers and body of the answer to an upgrade."""
    return server.call("GET", f"/couples/{couple}/ws", token=token, headers=headers | {
        "Connection": "Upgrade", "Upgrade": "websocket", "Sec-WebSocket-Version": "13", "Sec-WebSocket-Key": "bHVtYXJvIGx1bWFybyE="})


def answers(server, *rows):
    """Calls one after the other; each answer has its status, and this in its body."""
    for method, path, body, token, wanted, part in rows:
        status, _, answer = server.call(method, path, body, token)
        assert status == wanted and part in str(answer), (method, path, status, answer)


def end_of(line):
    """The code that a socket is closed with, whatever it says before."""
    try:
        while True:
            line.receive()
    except LineClosed as closed:
        return closed.code


def metrics(server):
    return server.call("GET", "/metrics")[2].decode()


def links_names_and_devices_come_and_go(server):
    couple, ada, invite = found(server)
    ben, home, invited = joined(server, invite), f"/couples/{couple}", {"inviteId": invite}
    answers(server,
            ("POST", "/joins/link", invited | {"deviceId": "new", "name": "Ben"}, None, 409,
             "'names': {'a': 'Ada', 'b': 'Ben'}, 'suggested': 'b'"),
            ("POST", "/handoff", invited, None, 200, str(invited | {"inviter": "Ada"})),
            ("POST", "/handoff", {}, None, 404, "'not_found'"),
            ("PUT", home + "/names/self", {"name": "Benno"}, ben, 200, "{}"),
            ("GET", home + "/partner", None, ada, 200, "Benno"),
            ("DELETE", home + "/links", None, ben, 200, "{}"),
            ("POST", "/handoff", invited, None, 404, "'not_found'"),
            ("POST", home + "/links", {"name": "Benno"}, ben, 201, "inviteId"),
            ("DELETE", home + "/partner", None, ben, 200, "{}"),
            ("GET", home + "/snapshot", None, ada, 401, "unauthorized"),
            ("DELETE", home + "/devices/self", None, ben, 200, "{}"),
            ("GET", home + "/snapshot", None, ben, 401, "unauthorized"))


def faulty_requests_get_their_status(server):
    couple, token, _ = found(server)
    home = f"/couples/{couple}"
    answers(server,
            ("GET", "/room", None, None, 200, "{'room': 'lumaro', 'v': 1}"),
            ("POST", "/room", {}, None, 405, "'method_not_allowed'"),
            ("GET", "/nowhere", None, token, 404, "'not_found'"),
            ("PATCH", "/couples", None, token, 405, "'method_not_allowed'"),
            ("POST", "/couples", b"{", token, 400, "'bad_request'"),
            ("POST", "/couples", {"deviceId": "d"}, token, 400, "'bad_request'"),
            ("POST", "/joins/link", {"inviteId": "aaaaaaaa", "deviceId": "d", "name": "n"}, token, 404, "'invite_not_found'"),
            ("GET", home + "/ws", None, token, 426, "'upgrade_required'"),
            ("GET", home + "/window-key", None, token, 404, "'not_configured'"),
            ("GET", home + "/weather?lat=91&lon=0", None, token, 400, "'bad_request'"),
            ("GET", home + MEDIA + "f", None, token, 404, "'not_found'"),
            ("BAD METHOD", "/", None, token, 400, "'bad_request'"))
    assert server.call("GET", "/", headers={"X-Long": "x" * 20_000})[0] == 431


def calls_without_a_good_token_are_refused_alike(server):
    """P7, P18: before the upgrade too."""
    couple, token, _ = found(server)
    other, home = found(server)[1], f"/couples/{couple}"
    refusal = server.call("GET", home + "/snapshot")[2]
    for path, wrong in ((home + "/snapshot", f"lm1.{couple}.a.nonsense"), (home + "/snapshot", other),
                        ("/couples/nosuchcouple/snapshot", token), (home + "/weather?lat=1&lon=1", other),
                        (home + "/window-key", other), (home + MEDIA + "f", other),
                        (home + COVER + "f", other)):
        status, _, answer = server.call("GET", path, token=wrong)
        assert (status, answer) == (401, refusal), (path, status, answer)
    for at, wrong in ((couple, None), (couple, other), (couple, token + "x"), ("nosuchcouple", token)):
        status, _, answer = upgrade(server, at, wrong)
        assert (status, answer) == (401, refusal), (at, status, answer)


def media_is_written_once_kept_by_caches_and_limited(server):
    couple, token, _ = found(server)
    path, largest = f"/couples/{couple}{MEDIA}", PNG.ljust(2_097_152, b".")
    answers(server,
            ("PUT", path + "f", PNG, token, 201, ""),
            ("PUT", path + "f", PNG, token, 200, ""),
            ("PUT", path + "f", PNG + b"!", token, 409, "'media_exists'"),
            ("PUT", path + "0", b"<svg/>", token, 415, ""),
            ("PUT", f"/couples/{couple}/media/not-a-uuid", PNG, token, 404, ""),
            ("PUT", path + "1", largest + b".", token, 413, ""),
            ("PUT", path + "1", largest, "lm1.wrong.a.token", 401, ""),
            ("PUT", path + "1", largest, token, 201, ""))
    _, headers, image = server.call("GET", path + "f", token=token)
    assert image == PNG and headers["Content-Type"] == "image/png" and "immutable" in headers["Cache-Control"], (headers, image)


def covers_are_jpegs_apart_from_the_boards_media(server):
    """P16, P44."""
    couple, token, _ = found(server)
    stranger = found(server)[1]
    path, media, largest = f"/couples/{couple}{COVER}", f"/couples/{couple}{MEDIA}", JPEG.ljust(131_072, b".")
    answers(server,
            ("PUT", path + "f", JPEG, token, 201, ""),
            ("PUT", path + "f", JPEG, token, 200, ""),
            ("PUT", path + "f", JPEG + b"!", token, 409, "'media_exists'"),
            ("PUT", path + "0", PNG, token, 415, "'bad_media'"),
            ("PUT", f"/couples/{couple}/covers/not-a-uuid", JPEG, token, 404, "'not_found'"),
            ("PUT", path + "1", largest + b".", token, 413, ""),
            ("PUT", path + "1", JPEG, stranger, 401, "'unauthorized'"),
            ("PUT", path + "1", largest, stranger, 401, "'unauthorized'"),
            ("GET", path + "1", None, token, 404, "'not_found'"),
            ("PUT", path + "1", largest, token, 201, ""),
            ("GET", media + "f", None, token, 404, "'not_found'"))
    _, headers, image = server.call("GET", path + "f", token=token)
    assert image == JPEG and headers["Content-Type"] == "image/jpeg" and headers["X-Content-Type-Options"] == "nosniff", (headers, image)
    assert headers["Cache-Control"] == "private, max-age=31536000, immutable", headers


def devices_get_the_window_key(server):
    """P45: and nobody else does; no log has it."""
    couple, token, _ = found(server)
    path, key = f"/couples/{couple}/window-key", {"page": "https://city.example/view", "key": "window-s3cret"}
    status, headers, answer = server.call("GET", path, token=token)
    assert (status, answer) == (200, key) and headers["Cache-Control"] == "no-store", (status, headers, answer)
    status, _, answer = server.call("GET", path, token=found(server)[1])
    assert status == 401 and "s3cret" not in str(answer), answer
    assert server.stop() == 0
    assert "route=window_key status=200" in server.log_text() and "s3cret" not in server.log_text()


def pages_name_the_inviter_and_run_nothing(server):
    invite = found(server, '<b>"Ada" & co')[2]
    own_link = f"lumaro://join-invite?i={invite}&amp;s=http%3A%2F%2F127.0.0.1%3A{server.port}"
    answers(server,
            ("GET", f"/for/{invite}", None, None, 200, "&lt;b&gt;&quot;Ada&quot; &amp; co"),
            ("GET", f"/for/{invite}", None, None, 200, own_link + '"'),
            ("GET", "/for/nosuchinvite", None, None, 404, ""),
            ("GET", f"/dl/{invite}", None, None, 200, own_link + '"'),
            ("GET", '/dl/%22%3E"><i', None, None, 200, "the button is on the invite"),
            ("GET", f"/dl/{invite}&s=https%3A%2F%2Fevil.example", None, None, 200, "the button is on the invite"))
    for path in (f"/for/{invite}", f"/dl/{invite}", "/download"):
        _, headers, page = server.call("GET", path)
        assert headers["Content-Security-Policy"].startswith("default-src 'none'; style-src 'sha256-"), path
        assert b"<script" not in page, path


def pages_of_other_sites_open_no_socket(server):
    """P17: the server's own public URL is the one `Origin`."""
    couple, token, _ = found(server)
    for origin, wanted in (("https://board.example", 101), ("https://board.example:443", 101), ("http://board.example", 403),
                           ("https://board.example.evil", 403), ("null", 403)):
        assert upgrade(server, couple, token, Origin=origin)[0] == wanted, origin


def a_replaced_token_closes_its_sockets(server):
    """P8, P21: the error comes first."""
    couple, _, invite = found(server)
    ben = WebSocket(server, couple, joined(server, invite))
    second = joined(server, invite)
    assert ben.receive("error")["code"] == "unauthorized" and end_of(ben) == 4401
    WebSocket(server, couple, second).receive("welcome")


def an_address_has_so_many_sockets(server):
    """P22."""
    couple, token, _ = found(server)
    first, second = (WebSocket(server, couple, token) for _ in range(2))
    status, headers, _ = upgrade(server, couple, token)
    assert status == 429 and headers["Retry-After"], status
    second.close()
    while upgrade(server, couple, token)[0] == 429:
        pass  # until the room has seen the socket go
    first.send("hb")


def a_fast_sender_is_read_slowly_and_loses_nothing(server):
    """P22."""
    couple, token, _ = found(server)
    ada = WebSocket(server, couple, token)
    sent = [batch([note(str(uuid.uuid4()), "again", 1, "a")]) for _ in range(300)]
    for message in sent:
        ada.send(message)
    for message in sent:
        assert ada.receive("ack")["batchId"] == message["batchId"]
    assert "lumaro_delayed_frames_total 0\n" not in metrics(server)


def a_reader_that_stands_still_is_cut_off(server):
    """P22."""
    couple, token, invite = found(server)
    ben = WebSocket(server, couple, joined(server, invite))
    ada = WebSocket(server, couple, token)
    places, version = [str(uuid.uuid4()) for _ in range(40)], 0
    # Ben reads nothing: what his machine and the server hold for him fills up.
    while "lumaro_slow_readers_total 1\n" not in metrics(server):
        version += 1
        assert version < 100, "he is still served"
        ada.send(batch([note(place, "x" * 30_000, version, "a") for place in places]))
        ada.receive("ack")
    assert end_of(ben) == 0


def strangers_are_not_let_in(server):
    assert server.call("GET", "/room", source="127.0.0.2")[0] == 200
    try:
        status = server.call("GET", "/room")[0]
    except (OSError, http.client.HTTPException):
        return
    assert False, status


def a_server_that_goes_down_says_goodbye(server):
    """P21: with code 1001."""
    couple, token, _ = found(server)
    ada = WebSocket(server, couple, token)
    ada.send(batch([note(str(uuid.uuid4()), "last words", 1, "a")]))
    ada.receive("ack")
    server.process.terminate()
    assert end_of(ada) == 1001


def the_log_holds_no_secrets(server):
    couple, token, invite = found(server)
    ben = joined(server, invite)
    line = WebSocket(server, couple, ben)
    line.receive("welcome")
    line.close()
    server.call("GET", f"/couples/{couple}/weather?lat=52.516&lon=13.377", token=ben)
    assert server.stop() == 0
    text = server.log_text()
    assert "socket opened" in text
    for secret in (couple, token, ben, invite, "52.5"):
        assert secret not in text, secret


def the_same_is_served_over_tls(server):
    # Under TLS a connection stays on the shard that took it: couples on both shards are reached from either.
    for _ in range(6):
        couple, token, _ = found(server)
        ada = WebSocket(server, couple, token)
        ada.receive("welcome")
        ada.send("hb")
        assert ada.poll(PATIENCE) == "hb-ack"
    with Server.connect(server) as plain:
        plain.sendall(b"GET /healthz HTTP/1.1\r\nHost: x\r\n\r\n")
        assert not plain.recv(65536).startswith(b"HTTP")


def a_server_that_cannot_start_says_why(server):
    empty = os.path.join(server.folder.name, "empty.pem")
    open(empty, "wb").close()
    for port, flags, why in ((server.port, (), "cannot listen"), (0, ("--tls-cert", empty, "--tls-key", empty), "no certificate")):
        done = subprocess.run([server.binary, "--listen", f"127.0.0.1:{port}", "--database", server.database + why, *flags],
                              capture_output=True, text=True, timeout=PATIENCE, check=False)
        assert done.returncode == 1 and why in done.stderr, done


class Upstream(http.server.BaseHTTPRequestHandler):
    """A forecast service that answers once it may."""
    asked, may_answer = [], threading.Event()

    def do_GET(self):
        self.asked.append(self.path)
        self.may_answer.wait(PATIENCE)
        self.send_response(200)
        self.end_headers()
        self.wfile.write(json.dumps({"current": {
            "time": "2026-05-01T12:00", "temperature_2m": 11.5, "apparent_temperature": 9, "is_day": 1, "weather_code": 3}, "daily": {}}).encode())

    def log_message(self, *_):
        pass


def all_who_ask_for_a_place_share_one_forecast(server):
    couple, token, _ = found(server)
    path, queries = f"/couples/{couple}/weather", ("?lat=52.5163&lon=13.3777", "?lon=13.381&lat=52.519", "?lat=52.52&lon=13.38")
    lines = [server.connect() for _ in queries]
    for line, query in zip(lines, queries):
        line.sendall(f"GET {path}{query} HTTP/1.1\r\nHost: x\r\nAuthorization: Bearer {token}\r\nConnection: close\r\n\r\n".encode())
    Upstream.may_answer.set()
    for line in lines:
        assert b'"tempC":11.5' in b"".join(iter(lambda: line.recv(65536), b""))
    answers(server, ("GET", path + queries[2], None, token, 200, "11.5"))
    assert len(Upstream.asked) == 1 and "latitude=52.52&longitude=13.38&" in Upstream.asked[0], Upstream.asked


def a_forecast_that_never_ends_is_given_up(server):
    couple, token, _ = found(server)
    answers(server, ("GET", f"/couples/{couple}/weather?lat=1&lon=1", None, token, 502, "'weather_unavailable'"))
    assert EndlessUpstream.was_hung_up_on.wait(PATIENCE), "all that there is of it was read"


class EndlessUpstream(socketserver.BaseRequestHandler):
    """A forecast service whose answer begins with a chunk with an extension without an end."""
    was_hung_up_on = threading.Event()

    def handle(self):
        self.request.recv(65536)
        try:
            self.request.sendall(b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1;")
            for _ in range(512):
                self.request.sendall(b"x" * 65536)
        except OSError:
            self.was_hung_up_on.set()


def main():
    room = options("room").room
    upstream = http.server.ThreadingHTTPServer(("127.0.0.1", 0), Upstream)
    endless = socketserver.TCPServer(("127.0.0.1", 0), EndlessUpstream)
    for service in (upstream, endless):
        threading.Thread(target=service.serve_forever, daemon=True).start()
    forecasts = ("--weather-upstream", f"http://127.0.0.1:{upstream.server_port}")
    forecasts_without_end = ("--weather-upstream", f"http://127.0.0.1:{endless.server_address[1]}")
    for kind, deed, *flags in (
            (Server, links_names_and_devices_come_and_go),
            (Server, faulty_requests_get_their_status),
            (Server, calls_without_a_good_token_are_refused_alike),
            (Server, media_is_written_once_kept_by_caches_and_limited),
            (Server, covers_are_jpegs_apart_from_the_boards_media),
            (Server, pages_name_the_inviter_and_run_nothing),
            (Server, pages_of_other_sites_open_no_socket, "--public-url", "https://board.example"),
            (Server, a_replaced_token_closes_its_sockets),
            (Server, an_address_has_so_many_sockets, "--sockets-per-address", "2"),
            (Server, strangers_are_not_let_in, "--only-from", "127.0.0.2,10.0.0.0/8"),
            (Server, a_fast_sender_is_read_slowly_and_loses_nothing, "--messages-per-second", "1000", "--burst", "10"),
            (Server, a_reader_that_stands_still_is_cut_off),
            (Server, a_server_that_goes_down_says_goodbye),
            (Server, the_log_holds_no_secrets, "--log-level", "debug", "--weather-upstream", "http://127.0.0.1:1"),
            (Server, devices_get_the_window_key, "--log-level", "debug",
             "--window-page", "https://city.example/view", "--window-key", "window-s3cret"),
            (TlsServer, the_same_is_served_over_tls),
            (Server, a_server_that_cannot_start_says_why),
            (Server, all_who_ask_for_a_place_share_one_forecast, *forecasts),
            (Server, a_forecast_that_never_ends_is_given_up, *forecasts_without_end)):
        with kind(room, "--threads", "2", *flags) as server:
            deed(server)
            assert server.stop() == 0
            print("ok", deed.__name__, flush=True)


if __name__ == "__main__":
    main()
