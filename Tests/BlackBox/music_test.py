#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Real players on one person's session bus: what plays there is what the other person's application shows, and no more than that travels.
Prints how long it took at most from the hand at the player to the partner."""
import json
import os
import pathlib
import socket
import subprocess
import sys
import time

from blackbox import PATIENCE, Server, options
from two import Two

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Scripts"))
from music import Mpv, song  # noqa: E402

TRAVELS = {"isPlaying", "progressMs", "sampledAt", "durationMs", "title", "artist", "artworkURL", "source"}


class Mpd:
    """mpd without a sound card, and mpDris2, which speaks MPRIS for it."""

    def __init__(self, music, folder, env):
        with socket.socket() as near:
            near.bind(("127.0.0.1", 0))
            self.port = near.getsockname()[1]
        conf = pathlib.Path(folder) / "mpd.conf"
        (pathlib.Path(folder) / "lists").mkdir()
        conf.write_text(f'music_directory "{music}"\nplaylist_directory "{folder}/lists"\ndb_file "{folder}/mpd.db"\n'
                        f'bind_to_address "127.0.0.1"\nport "{self.port}"\naudio_output {{\n type "null"\n name "none"\n}}\n')
        self.log = open(os.path.join(folder, "mpd.log"), "ab")
        self.processes = [self._start(env, "mpd", "--no-daemon", str(conf))]
        self.say("update")
        self.processes.append(self._start(env, "mpDris2", "--host", "127.0.0.1", "--port", str(self.port), "--music-dir", str(music)))

    def _start(self, env, *command):
        return subprocess.Popen(command, env=env, stdout=self.log, stderr=self.log)

    def say(self, *lines):
        end = time.monotonic() + PATIENCE
        while True:
            try:
                with socket.create_connection(("127.0.0.1", self.port)) as near:
                    near.settimeout(PATIENCE)
                    answers = near.makefile("rw")
                    answers.readline()
                    for line in lines:
                        answers.write(line + "\n")
                        answers.flush()
                        while (answer := answers.readline().strip()) and not answer.startswith(("OK", "ACK")):
                            pass
                        assert answer == "OK", (line, answer)
                    return
            except (ConnectionRefusedError, AssertionError):
                assert time.monotonic() < end, lines
                time.sleep(0.1)

    def quit(self):
        for process in reversed(self.processes):
            process.terminate()
            process.wait(PATIENCE)


class Listeners(Two):
    """Ann, who has players, and Bea's application, which shows what Ann listens to."""

    def shown(self):
        return json.loads(self.bea.ask("listening", json=True)["out"]).get("partner")


def plays(title, is_playing=True):
    return lambda shown: shown and shown["title"] == title and shown["isPlaying"] == is_playing


def nothing(shown):
    return shown is None


def real_mpv(two, folder, songs, lumaroctl):
    player = Mpv(songs[:1], folder, two.env)
    player.pause(False)
    time.sleep(1)
    assert two.shown() is None, "nobody has said yes yet"
    two.sees(lambda: two.ann.ask("listening", json=False, share=True), plays("So What"))
    two.bea.until(lambda: "artworkURL" in two.shown())
    assert set(two.shown()) == TRAVELS, two.shown()
    scripts_are_told(two, lumaroctl)
    two.sees(player.pause, plays("So What", False))
    two.sees(lambda: player.pause(False), plays("So What"))
    two.sees(lambda: player.command("seek", 100, "absolute"), lambda shown: 99_000 <= shown["progressMs"] <= 120_000)
    two.sees(lambda: player.command("loadfile", songs[1]), plays("Blue in Green"))
    return player


def two_players(two, folder, music, mpv):
    mpv.pause()
    mpd = Mpd(music, folder, two.env)
    mpd.say("clear", 'add "first.wav"', 'add "second.wav"')
    two.sees(lambda: mpd.say("play"), plays("So What"), counts=False)
    two.sees(lambda: mpd.say("next"), plays("Blue in Green"))
    # Both paused, then one of them plays.
    mpd.say("pause 1")
    two.sees(lambda: mpv.command("loadfile", os.path.join(music, "third.wav")), lambda shown: not shown["isPlaying"])
    two.sees(lambda: mpv.pause(False), plays("Flamenco Sketches"))
    two.sees(mpv.crash, plays("Blue in Green", False))
    two.sees(lambda: mpd.say("pause 0"), plays("Blue in Green"))
    two.sees(lambda: two.ann.ask("listening", json=False, share=False), nothing)
    mpd.say("previous")
    time.sleep(1)
    assert two.shown() is None, "it is shared no longer"
    two.sees(lambda: two.ann.ask("listening", json=False, share=True), plays("So What"))
    two.sees(mpd.quit, nothing)


def scripts_are_told(two, lumaroctl):
    def said(*words):
        return subprocess.run([lumaroctl, "--app", "--profile", two.ann.profile, "listening", *words], env=two.env, capture_output=True,
                              text=True, timeout=PATIENCE, check=True).stdout
    for words in ((), ("--json",), ()):  # asking changes nothing
        assert "So What" in said(*words), said()
    assert "not shared" in said("--no-share")
    two.sees(lambda: said("--share"), plays("So What"))


def only_this_travelled(wire):
    count = 0
    while (text := wire.poll(0.5)) is not None:
        message = json.loads(text) if text.startswith("{") else {}
        playing = message.get("nowPlaying")
        if message.get("type") == "presence" and playing:
            count += 1
            assert set(playing) <= TRAVELS, playing
        for secret in ("Kind of Blue", "/org/", "file:", ".wav", "mpv", "mpd"):
            assert secret not in text, text
    assert count >= 8, count


def main():
    asked = options("room", "lumaro", "lumaroctl")
    with Server(asked.room) as server:
        folder = server.folder.name
        music = pathlib.Path(folder) / "music"
        music.mkdir()
        songs = [song(music / name, title, "Miles Davis", "Kind of Blue", note=note)
                 for name, title, note in (("first.wav", "So What", 220), ("second.wav", "Blue in Green", 247), ("third.wav", "Flamenco Sketches", 262))]
        subprocess.run(["convert", "-size", "640x640", "gradient:#20497a-#a3c6e8", str(music / "cover.jpg")], check=True)
        two = Listeners(asked, server)
        try:
            two.meet()
            mpv = real_mpv(two, folder, songs, asked.lumaroctl)
            two_players(two, folder, str(music), mpv)
            only_this_travelled(two.wire)
        finally:
            two.close()
    print(f"from the hand at the player to the partner: {two.slowest:.2f} s at most")


if __name__ == "__main__":
    main()
