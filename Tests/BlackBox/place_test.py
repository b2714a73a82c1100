#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Where Ann's computer is, as its GeoClue says, is what Bea's application shows, with the weather of the room's server, or of the forecast
service where that has none, or the last one where nobody has any. Bea says by hand where she is. No more travels or is kept than people
agreed to."""
import json
import os
import pathlib
import subprocess
import sys

from blackbox import PATIENCE, Server, options
from two import Two

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "Scripts"))
from weather import Forecasts  # noqa: E402

HERE = os.path.dirname(os.path.abspath(__file__))
# In Lisbon. The digits after the third decimal are nobody's business.
LATITUDE, LONGITUDE = "38.7139427", "-9.1394113"
FINE = ("38.7139", "9.13941")
TRAVELS = {"lat", "lon", "label", "city", "tz", "precision", "since", "sampledAt", "weather"}


class Neighbours(Two):
    """Ann and Bea, who tell each other where they are."""

    def shown(self):
        return json.loads(self.bea.ask("place", json=True)["out"]).get("partner")


def at(label, celsius=None):
    return lambda here: here and here["label"] == label and (celsius is None or here.get("weather", {}).get("tempC") == celsius)


def found_by_the_computer(two, room):
    assert two.shown() is None, "nobody has said yes yet"
    two.sees(lambda: two.ann.ask("place", json=False, share=True), at("lisbon", 11))
    here = two.shown()
    assert (here["lat"], here["lon"], here["precision"]) == (38.71, -9.14, "neighbourhood"), here
    assert set(here) == TRAVELS, here
    two.sees(lambda: two.ann.ask("place", json=False, precision="block"), lambda here: here["lat"] == 38.714)
    two.sees(lambda: two.ann.ask("place", json=False, name="Nossa Casa"), at("Nossa Casa", 11))
    assert room.asked and all("latitude=38.71&longitude=-9.14&" in path for path in room.asked), room.asked


def by_hand(two, lumaroctl):
    def said(*words):
        return subprocess.run([lumaroctl, "--app", "--profile", two.bea.profile, "place", *words], env=two.env, capture_output=True,
                              text=True, timeout=PATIENCE, check=True).stdout
    assert said("show").startswith("you: not shared\nAnn: Nossa Casa, 38.714,-9.139 (block), 11 °C, cloud, since "), said("show")
    assert said("set", "KOLN").startswith("you: not shared")
    assert said("share", "yes").startswith("you: köln, 50.9"), said("show")
    two.ann.until(lambda: at("köln", 11)(json.loads(two.ann.ask("place", json=True)["out"]).get("partner")))
    assert json.loads(said("show", "--json"))["chosen"]["country"] == "DE"
    said("set", "")
    assert said("show").startswith("you: this computer does not tell where it is\n"), said("show")
    two.ann.until(lambda: "partner" not in json.loads(two.ann.ask("place", json=True)["out"]))


def whose_weather(two, room, service):
    room.works = False
    two.sees(lambda: two.ann.ask("place", json=False, town="porto", country="PT"), at("porto", 22))
    assert len(service.asked) == 1 and "latitude=41.1" in service.asked[0], service.asked
    service.works = False
    before = two.shown()["weather"]
    two.sees(lambda: two.ann.ask("place", json=False, town="vila nova de gaia"), at("vila nova de gaia"))
    two.ann.until(lambda: len(service.asked) > 1)
    assert two.shown()["weather"] == before, "the last one stays, as old as it is"
    two.sees(lambda: two.ann.ask("place", json=False, town="berlin"), lambda here: here["label"] == "berlin" and "weather" not in here)
    two.sees(lambda: two.ann.ask("place", json=False, share=False), lambda here: here is None)


def no_more_was_told(two, server):
    told = 0
    while (text := two.wire.poll(0.5)) is not None:
        told += '"here":{' in text
        assert not any(digits in text for digits in FINE), text
    assert told >= 6, told
    files = [file for file in pathlib.Path(server.folder.name).rglob("*") if file.is_file()]
    assert any(file.name == "settings.ini" and b"38.714,-9.139" in file.read_bytes() for file in files), "the name of a place is kept"
    for file in files:
        assert not any(digits.encode() in file.read_bytes() for digits in FINE), file
    logged = server.log_text() + two.ann.log_text() + two.bea.log_text()
    assert not any(digits in logged for digits in ("38.7", "9.13", "41.1", "50.9")), logged


def main():
    asked = options("room", "lumaro", "lumaroctl")
    room, service = Forecasts(temperature_2m=11), Forecasts(temperature_2m=22)
    with Server(asked.room, "--weather-upstream", room.url) as server:
        two = Neighbours(asked, server, "--forecasts", service.url, "--verbose")
        geoclue = None
        try:
            with open(os.path.join(server.folder.name, "geoclue.log"), "wb") as log:
                geoclue = subprocess.Popen(["/usr/bin/python3", "-B", os.path.join(HERE, "location_desktop.py"), "grant", LATITUDE, LONGITUDE],
                                           env=two.env, stdout=log, stderr=log)
            two.meet()
            found_by_the_computer(two, room)
            by_hand(two, asked.lumaroctl)
            whose_weather(two, room, service)
            no_more_was_told(two, server)
        finally:
            two.close()
            if geoclue:
                geoclue.kill()
                geoclue.wait(PATIENCE)
    print(f"from saying where to the partner: {two.slowest:.2f} s at most")


if __name__ == "__main__":
    main()
