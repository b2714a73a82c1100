#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""The program that has a city page drawn, on a display without a screen: what it draws, what the page and nobody else learns,
and how it ends over pages that do not do as they should. Prints what a picture costs."""
import http.server
import json
import os
import pathlib
import signal
import subprocess
import tempfile
import threading
import time

from blackbox import PATIENCE, options

PAGE = pathlib.Path(__file__).with_name("city_page.html").read_bytes()
DRAW_LIMIT = 30  # seconds that the program gives a page
KEY = "k3y-of-the-window"
REQUEST = {"key": KEY, "lat": 52.52, "lon": 13.41, "at": 1777636800000, "width": 248, "height": 170, "scale": 2}
MEBIBYTE = 1 << 20


class Pages(http.server.ThreadingHTTPServer):
    """The page's server, and what it was asked."""

    def __init__(self):
        super().__init__(("127.0.0.1", 0), Answers)
        self.asked, self.told = [], None
        threading.Thread(target=self.serve_forever, daemon=True).start()

    def url(self, path, host="127.0.0.1"):
        return f"http://{host}:{self.server_port}/{path}"


class Answers(http.server.BaseHTTPRequestHandler):
    SCRIPTS = {
        "/waits": "",
        "/busy": "for (;;);",
        "/leaves": "location = 'http://localhost:' + location.port + '/elsewhere';",
        "/eats": "const all = []; setInterval(() => all.push(new Uint8Array(6e7).fill(7)), 20);",
    }

    def log_message(self, *_):
        pass

    def begin(self, status=200, kind="text/html", **more):
        self.send_response(status)
        for name, value in {"Content-Type": kind, **more}.items():
            self.send_header(name, value)
        self.end_headers()

    def do_POST(self):
        self.server.asked.append(self.path)
        self.server.told = json.loads(self.rfile.read(int(self.headers["Content-Length"])))
        self.begin()

    def do_GET(self):
        self.server.asked.append(self.path)
        assert KEY not in str(self.headers)
        if self.path == "/page":
            self.begin()
            self.wfile.write(PAGE)
        elif self.path in self.SCRIPTS:
            self.begin()
            self.wfile.write(f"<!doctype html><script>{self.SCRIPTS[self.path]}</script>".encode())
        elif self.path == "/redirect":
            self.begin(302, Location=self.server.url("elsewhere", "localhost"))
        elif self.path == "/file":
            self.begin(kind="application/octet-stream")
            self.wfile.write(b"x")
        elif self.path == "/huge":
            self.begin()
            try:
                for _ in range(100):
                    self.wfile.write(b"<p>x" * (MEBIBYTE // 4))
            except OSError:
                pass  # it has had enough
        else:
            self.begin(404)


class Run:
    """The program at work, in a session of its own, so that whatever it leaves can be found."""

    def __init__(self, env, program, request, *arguments, out=subprocess.PIPE):
        self.begun = time.monotonic()
        self.process = subprocess.Popen([program, *arguments], env=env, stdin=subprocess.PIPE, stdout=out,
                                        stderr=subprocess.PIPE, start_new_session=True)
        line = request if isinstance(request, bytes) else json.dumps(request).encode() + b"\n"
        self.took = 0
        self.feeder = threading.Thread(target=self.feed, args=(line,))
        self.feeder.start()

    def feed(self, line):
        try:
            self.process.stdin.write(line)
            self.process.stdin.close()
        except BrokenPipeError:
            pass
        self.process.wait()
        self.took = time.monotonic() - self.begun

    def family(self):
        """Those of its session that have not ended."""
        found = []
        for stat in pathlib.Path("/proc").glob("[0-9]*/stat"):
            try:
                state, _, _, session = stat.read_text().rpartition(")")[2].split()[:4]
            except (FileNotFoundError, ProcessLookupError):
                continue
            if int(session) == self.process.pid and state != "Z":
                found.append(stat.parent)
        return found

    def ends(self, status, why="", within=PATIENCE):
        """The picture, once it has ended so and left no process behind."""
        picture = self.process.stdout.read() if self.process.stdout else b""
        complaint, ended = self.process.stderr.read().decode(), self.process.wait(PATIENCE)
        self.feeder.join()
        assert ended == status and why in complaint, (ended, status, complaint)
        assert complaint.count("\n") == (1 if status > 0 else 0) and KEY not in complaint, complaint
        assert self.took < within, self.took
        self.leaves_nobody()
        return picture

    def leaves_nobody(self):
        end = time.monotonic() + 5
        while self.family():
            assert time.monotonic() < end, [(at / "cmdline").read_text() for at in self.family()]
            time.sleep(0.02)


def pixels(png):
    """Width, height and the colours of the four quarters' middles; a colour is (red, green, blue)."""
    size = subprocess.run(["identify", "-format", "%m %w %h", "png:-"], input=png, capture_output=True, check=True).stdout.decode().split()
    assert size[0] == "PNG", size
    width, height = int(size[1]), int(size[2])
    raw = subprocess.run(["convert", "png:-", "-depth", "8", "rgb:-"], input=png, capture_output=True, check=True).stdout
    places = [(x * width // 4, y * height // 4) for y in (1, 3) for x in (1, 3)]
    return width, height, [tuple(raw[3 * (y * width + x):][:3]) for x, y in places]


def draws_what_the_page_draws(run, pages):
    picture = run(REQUEST | {"page": pages.url("page")}).ends(0)
    shades = [round(REQUEST["lat"] + 90), round(REQUEST["lon"]), round(REQUEST["at"] / 36e5 % 24 * 10), 200]
    width, height, quarters = pixels(picture)
    assert (width, height) == (496, 340), (width, height)
    for (red, green, blue), shade, wanted in zip(quarters, shades, (0, 60, 120, 180)):
        assert max(abs(red - shade), abs(green - wanted), abs(blue - 90)) <= 2, (quarters, shades)
    assert pages.asked == ["/page", "/told"], pages.asked
    assert pages.told == REQUEST | {"kept": "nothing", "frameKnows": "undefined"}, pages.told
    other = run(REQUEST | {"page": pages.url("page"), "key": "another"}).ends(0)
    assert other == picture and pages.told["key"] == "another", "a key is in the picture"


def no_page_is_no_picture(run, pages):
    for path, status, why in (("nowhere", 69, "answered 404"), ("file", 69, "no page"), ("redirect", 77, "another server"),
                              ("leaves", 77, "another server"), ("eats", 70, "memory")):
        assert run(REQUEST | {"page": pages.url(path)}).ends(status, why) == b"", path
    # A hundred megabytes cost too much memory, or too much time.
    huge = run(REQUEST | {"page": pages.url("huge")})
    status = huge.process.wait(DRAW_LIMIT + 5)
    assert status in (70, 75), status
    huge.ends(status, within=DRAW_LIMIT + 5)
    assert "/elsewhere" not in pages.asked, pages.asked
    run(REQUEST | {"page": "http://127.0.0.1:9/"}).ends(69, "not reached")


def wrong_requests_are_refused(run, pages):
    page = pages.url("page")
    good = REQUEST | {"page": page}
    for wrong, why in (({}, "$.page"), ({**good, "page": "http://city.example/"}, "$.page"), ({**good, "key": "two words"}, "$.key"),
                       ({**good, "lat": 91}, "$.lat"), ({**good, "lon": "13"}, "$.lon"), ({**good, "width": 1025}, "$.width"),
                       ({**good, "height": 0}, "$.height"), ({**good, "scale": 0.5}, "$.scale"), ({**good, "at": None}, "$.at"),
                       (b"", "cannot be read"), (b"{", "cannot be read"), (b" " * 9000, "too long"), (b"x" * MEBIBYTE, "too long")):
        run(wrong).ends(64, why, within=5)
    run(good, "--page", page).ends(64, "no arguments", within=5)


def it_can_be_ended_at_any_time(run, pages):
    for span in (0, 0.1, 0.3, 1, 2):
        one = run(REQUEST | {"page": pages.url("waits")})
        time.sleep(span)
        one.process.send_signal(signal.SIGKILL)
        one.ends(-signal.SIGKILL)
    reading, writing = os.pipe()
    os.close(reading)
    run(REQUEST | {"page": pages.url("page")}, out=writing).ends(74, "could not be written")
    os.close(writing)


def cost(run, pages):
    """Seconds, and the most memory in MiB that all its processes shared fairly."""
    one, most = run(REQUEST | {"page": pages.url("page"), "width": 496, "height": 340}), 0
    while one.process.poll() is None:
        sum_of = 0
        for process in one.family():
            try:
                rollup = (process / "smaps_rollup").read_text()
                sum_of += int(next(line for line in rollup.splitlines() if line.startswith("Pss:")).split()[1])
            except (OSError, StopIteration):
                pass
        most = max(most, sum_of)
        time.sleep(0.02)
    one.ends(0)
    return one.took, most // 1024


def main():
    program = options("cityview").cityview
    with tempfile.TemporaryDirectory(prefix="lumaro-cityview-") as folder:
        home = pathlib.Path(folder) / "home"
        home.mkdir(mode=0o700)
        reading, writing = os.pipe()
        display = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "640x480x24", "-nolisten", "tcp", "-noreset"],
                                   stderr=subprocess.DEVNULL, pass_fds=[writing])
        os.close(writing)
        with os.fdopen(reading) as number:
            env = {"PATH": os.environ["PATH"], "HOME": str(home), "TMPDIR": str(home), "XDG_RUNTIME_DIR": folder, "DISPLAY": ":" + number.readline().strip(),
                   **{name: value for name, value in os.environ.items() if name.endswith("SAN_OPTIONS")}}
        try:
            check(env, program, home)
        finally:
            display.terminate()
            display.wait(PATIENCE)


def check(env, program, home):
    def run(request, *arguments, **more):
        return Run(env, program, request, *arguments, **more)

    pages, slow = Pages(), Pages()
    # They take all the time there is, meanwhile.
    waiting = [run(REQUEST | {"page": slow.url(path)}) for path in ("waits", "busy")]
    draws_what_the_page_draws(run, pages)
    no_page_is_no_picture(run, pages)
    wrong_requests_are_refused(run, pages)
    it_can_be_ended_at_any_time(run, pages)
    for one in waiting:
        assert one.ends(75, "not drawn in time", within=DRAW_LIMIT + 5) == b""
    assert not list(home.rglob("*")), list(home.rglob("*"))
    Run({**env, "DISPLAY": ""}, program, REQUEST | {"page": pages.url("page")}).ends(71, "no display", within=10)
    print("a picture of 992 by 680 took %.1f s and %d MiB of memory" % cost(run, pages))


if __name__ == "__main__":
    main()
