# SPDX-License-Identifier: Apache-2.0
"""A room behind the proxies of Packaging/Proxy, with a certificate by an authority of the test's own; and what `lumaro-room check-setup`
says of setups that lack something."""
import contextlib
import http.server
import json
import os
import pathlib
import socket
import ssl
import subprocess
import threading
import time
import uuid

from blackbox import PATIENCE, Server, WebSocket, batch, note, options

EXAMPLES = pathlib.Path(__file__).resolve().parents[2] / "Packaging/Proxy"


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as held:
        return held.getsockname()[1]


class Authority:
    """Makes certificates that whoever is given its own believes."""

    def __init__(self, folder):
        self.folder = folder
        self.file = self.path("authority.pem")
        self.openssl("req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-days", "2", "-subj", "/CN=test authority",
                     "-addext", "keyUsage=critical,keyCertSign", "-keyout", self.path("authority.key"), "-out", self.file)

    def path(self, name):
        return os.path.join(self.folder, name)

    @staticmethod
    def openssl(*arguments):
        subprocess.run(["openssl", *arguments], check=True, capture_output=True)

    def certificate(self, name, days="2"):
        key, request, certificate, names = (self.path(f"{name}{days}.{kind}") for kind in ("key", "csr", "pem", "ext"))
        pathlib.Path(names).write_text(f"subjectAltName=DNS:{name}\n")
        self.openssl("req", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:P-256", "-nodes", "-subj", f"/CN={name}", "-keyout", key, "-out", request)
        self.openssl("x509", "-req", "-in", request, "-CA", self.file, "-CAkey", self.path("authority.key"), "-CAcreateserial",
                     "-days", days, "-extfile", names, "-out", certificate)
        return certificate, key


class Nginx:
    def __init__(self, folder, certificate, port, room, without=()):
        site = (EXAMPLES / "nginx.conf").read_text()
        for there, here in (("listen 443", f"listen 127.0.0.1:{port}"), ("board.example;", "localhost;"), ("127.0.0.1:7700", f"127.0.0.1:{room}"),
                            ("/etc/ssl/board.example/fullchain.pem", certificate[0]), ("/etc/ssl/board.example/privkey.pem", certificate[1])):
            assert there in site, there
            site = site.replace(there, here)
        site = "\n".join(line for line in site.splitlines() if not any(word in line for word in without))
        self.folder = os.path.join(folder, f"nginx-{port}")
        os.makedirs(self.folder)
        places = "".join(f"{kind}_temp_path {self.folder}/{kind};\n" for kind in ("client_body", "proxy", "fastcgi", "uwsgi", "scgi"))
        configuration = os.path.join(self.folder, "nginx.conf")
        pathlib.Path(configuration).write_text(f"daemon off; master_process off; pid {self.folder}/pid; error_log stderr;\nevents {{}}\n"
                                               f"http {{\naccess_log off;\n{places}{site}\n}}\n")
        self.command = ["nginx", "-e", "stderr", "-p", self.folder, "-c", configuration]


class Caddy:
    def __init__(self, folder, certificate, port, room):
        site = (EXAMPLES / "Caddyfile").read_text()
        for there, here in (("\nboard.example {\n", f"\nhttps://localhost:{port} {{\n\tbind 127.0.0.1\n\ttls {certificate[0]} {certificate[1]}\n"),
                            ("127.0.0.1:7700", f"127.0.0.1:{room}")):
            assert there in site, there
            site = site.replace(there, here)
        self.folder = os.path.join(folder, f"caddy-{port}")
        os.makedirs(self.folder)
        configuration = os.path.join(self.folder, "Caddyfile")
        pathlib.Path(configuration).write_text("{\n\tadmin off\n\tauto_https disable_redirects\n}\n" + site)
        self.command = ["caddy", "run", "--adapter", "caddyfile", "--config", configuration]


@contextlib.contextmanager
def running(proxy, port):
    environment = {"PATH": os.environ["PATH"] + ":/usr/sbin", "HOME": proxy.folder, "XDG_DATA_HOME": proxy.folder, "XDG_CONFIG_HOME": proxy.folder}
    with open(os.path.join(proxy.folder, "log"), "ab") as log:
        process = subprocess.Popen(proxy.command, stdout=log, stderr=log, env=environment)
        try:
            end = time.monotonic() + PATIENCE
            while True:
                with contextlib.suppress(OSError), socket.create_connection(("127.0.0.1", port), PATIENCE):
                    break
                assert process.poll() is None and time.monotonic() < end, pathlib.Path(proxy.folder, "log").read_text()
                time.sleep(0.02)
            yield
        finally:
            process.terminate()
            process.wait(PATIENCE)


class Fronted:
    """The room as it is reached through its proxy, with its name and its certificate."""

    host = "localhost"

    def __init__(self, port, authority):
        self.port, self.trust = port, ssl.create_default_context(cafile=authority.file)

    def connect(self, source="127.0.0.1"):
        return self.trust.wrap_socket(socket.create_connection(("127.0.0.1", self.port), PATIENCE, (source, 0)), server_hostname="localhost")

    call, new_couple, new_code, join, pair, snapshot = (
        getattr(Server, name) for name in ("call", "new_couple", "new_code", "join", "pair", "snapshot"))


def two_devices_share_a_board(front):
    couple, tokens = front.pair()
    ada, bea = (WebSocket(front, couple, token) for token in tokens)
    for device in (ada, bea):
        device.receive("welcome")
    item = str(uuid.uuid4())
    ada.send(batch([note(item, "through the proxy", 1, "a")]))
    ada.receive("ack")
    assert item in json.dumps(bea.receive("ops"))
    status, headers, _ = front.call("GET", "/metrics")
    assert status == 404, status
    assert front.call("GET", "/healthz")[1]["Date"]
    for device in (ada, bea):
        device.close()


class Check:
    """`lumaro-room check-setup`, on a computer that trusts the authority, or not."""

    def __init__(self, room, authority):
        self.room, self.authority = room, authority

    def says(self, url, status, *words, trusts=True):
        environment = {"PATH": os.environ["PATH"], "SSL_CERT_FILE": self.authority.file if trusts else "/dev/null", "SSL_CERT_DIR": "/nonexistent",
                       **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}}
        done = subprocess.run([self.room, "check-setup", url], capture_output=True, text=True, timeout=2 * PATIENCE, env=environment, check=False)
        told = done.stdout + done.stderr
        assert done.returncode == status, (url, status, done.returncode, told)
        for word in words:
            assert word in told, (url, word, told)
        print("ok  ", url.split("localhost")[-1], status, words, flush=True)


class Impostor(http.server.BaseHTTPRequestHandler):
    """Answers like a room whose clock is an hour behind; with a path before it, like something else."""
    protocol_version = "HTTP/1.1"

    def do_GET(self):
        if self.path.startswith("/elsewhere"):
            return self.answer(301, b"", ("Location", "https://board.example/us"))
        if self.path.startswith("/endless"):
            return self.answer(200, b"x" * 200_000)
        if not self.path.endswith("/ws"):
            return self.answer(404, b"")
        if self.headers["Upgrade"]:
            return self.answer(401, b'{"code":"unauthorized","message":""}')
        return self.answer(426, b'{"code":"upgrade_required","message":""}')

    def date_time_string(self, timestamp=None):
        return super().date_time_string(time.time() - 3600)

    def answer(self, status, body, *headers):
        self.send_response(status)
        for name, value in (*headers, ("Content-Length", str(len(body)))):
            self.send_header(name, value)
        self.end_headers()
        with contextlib.suppress(OSError):
            self.wfile.write(body)

    def log_message(self, *_):
        pass


def faults_of_servers_are_named(check):
    check.says("http://no-such-name.invalid", 10, "has no address", "A or AAAA record")
    check.says(f"http://127.0.0.1:{free_port()}", 11, "nothing answers", "firewall")
    with http.server.ThreadingHTTPServer(("127.0.0.1", 0), Impostor) as impostor:
        threading.Thread(target=impostor.serve_forever, daemon=True).start()
        base = f"http://127.0.0.1:{impostor.server_port}"
        check.says(base.replace("http:", "https:"), 12, "no secure connection")
        check.says(base + "/endless", 11, "does not answer")
        check.says(base + "/elsewhere", 14, "sends elsewhere, to https://board.example/us")
        check.says(base, 17, "3600 seconds behind", "could not be told")
        impostor.shutdown()
    done = subprocess.run([check.room, "check-setup", "board.example"], capture_output=True, text=True, timeout=PATIENCE, check=False)
    assert done.returncode == 2, done


def main():
    asked = options("room")
    port, plain_port = free_port(), free_port()
    url = f"https://localhost:{port}"
    with Server(asked.room, "--public-url", url, "--trusted-proxies", "127.0.0.1,::1") as server:
        folder = server.folder.name
        authority = Authority(folder)
        certificate = authority.certificate("localhost")
        check = Check(asked.room, authority)
        faults_of_servers_are_named(check)
        for kind in (Nginx, Caddy):
            with running(kind(folder, certificate, port, server.port), port):
                two_devices_share_a_board(Fronted(port, authority))
                check.says(url, 0, "WebSockets come through", f"invites begin with {url}", "people can meet here")
                if kind is Nginx:
                    check.says(url, 12, "nobody whom this computer knows", trusts=False)
                    check.says(f"https://127.0.0.1:{port}", 12, "for another name")
        with running(Nginx(folder, certificate, plain_port, server.port, without=("Upgrade", "Connection")), plain_port):
            check.says(f"https://localhost:{plain_port}", 15, "WebSockets do not come through", "invites begin with " + url)
        other = free_port()
        with running(Nginx(folder, certificate, other, server.port), other):
            check.says(f"https://localhost:{other}", 16, f"set LUMARO_ROOM_PUBLIC_URL=https://localhost:{other} ")
        lonely = free_port()
        with running(Nginx(folder, certificate, lonely, free_port()), lonely):
            check.says(f"https://localhost:{lonely}", 13, "no room behind it (status 502)")
        expired = free_port()
        with running(Nginx(folder, authority.certificate("localhost", "-1"), expired, server.port), expired):
            check.says(f"https://localhost:{expired}", 12, "has expired")
        assert server.stop() == 0


if __name__ == "__main__":
    main()
