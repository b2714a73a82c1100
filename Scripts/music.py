# SPDX-License-Identifier: Apache-2.0
"""Songs that are made here, and real players that play them without a sound card."""
import array
import json
import math
import pathlib
import socket
import struct
import subprocess
import time

RATE = 8000


def song(path, title, artist, album="an album", seconds=180, note=220):
    """Writes a WAV file that says what it is (RIFF INFO); returns its path."""
    wave = array.array("h", (int(6000 * math.sin(2 * math.pi * note * n / RATE)) for n in range(RATE)))
    words = ((b"INAM", title), (b"IART", artist), (b"IPRD", album))
    chunks = [(b"fmt ", struct.pack("<HHIIHH", 1, 1, RATE, 2 * RATE, 2, 16)),
              (b"LIST", b"INFO" + b"".join(chunk(name, text.encode() + b"\0") for name, text in words)),
              (b"data", wave.tobytes() * seconds)]
    whole = b"WAVE" + b"".join(chunk(*one) for one in chunks)
    pathlib.Path(path).write_bytes(chunk(b"RIFF", whole))
    return str(path)


def chunk(name, data):
    return name + struct.pack("<I", len(data)) + data + b"\0" * (len(data) % 2)


class Mpv:
    """mpv, which speaks MPRIS through its plug-in."""

    def __init__(self, files, folder, env, start=subprocess.Popen):
        self.socket = str(pathlib.Path(folder) / f"mpv-{time.monotonic_ns()}.socket")
        self.process = start(["mpv", "--no-config", "--no-terminal", "--no-video", "--ao=null", "--script=/usr/lib/mpv-mpris/mpris.so",
                              f"--input-ipc-server={self.socket}", *files], env=env)

    def command(self, *words):
        end = time.monotonic() + 20
        while True:
            try:
                with socket.socket(socket.AF_UNIX) as near:
                    near.connect(self.socket)
                    near.sendall(json.dumps({"command": words}).encode() + b"\n")
                    near.recv(4096)
                return
            except (FileNotFoundError, ConnectionRefusedError):
                if time.monotonic() > end:
                    raise
                time.sleep(0.05)

    def pause(self, is_paused=True):
        self.command("set_property", "pause", is_paused)

    def crash(self):
        self.process.kill()
        self.process.wait()

    def quit(self):
        self.command("quit")
        self.process.wait(20)
