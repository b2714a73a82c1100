#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Kills the server again and again under load: no batch it acknowledged is lost, none takes effect twice.

Devices in several rooms put up and take down notes of their own and resend after every restart what was not
acknowledged. A device touches a note once a round at most, so that the board after a restart shows of every single
batch whether it is there.
"""
import random
import subprocess
import sys
import threading
import time

from blackbox import PATIENCE, LineClosed, Server, WebSocket, batch, note, options, text_of

NOTES = 28  # of one device; two of them fit on a board
WINDOW = 8


class Device:
    """One device and what it knows to be true of the room."""

    def __init__(self, couple, token, slot, number):
        self.couple, self.token, self.slot, self.number = couple, token, slot, number
        self.partner = None
        self.sent = 0     # batches are numbered from 1 in the order of sending
        self.acked = 0    # batches 1 to `acked` are acknowledged
        self.stored = 0   # batches 1 to `stored` were on the board when the server last started
        self.heard = 0    # the partner's last batch heard of on this line
        self.faults = []

    def batch_id(self, count):
        return f"{self.number:08x}-0000-4000-8000-{count:012x}"

    def note_id(self, place):
        return f"{self.number:08x}-0000-4000-8000-00000000a{place:03x}"

    def message(self, count):
        """Batch `count`: every note is put up in one visit and taken down in the next."""
        visit, place = divmod(count - 1, NOTES)
        if visit % 2:
            return batch([{"op": "delete", "itemId": self.note_id(place), "deletedAt": count}], self.batch_id(count))
        return batch([note(self.note_id(place), str(count), count, self.slot)], self.batch_id(count))

    def after(self, count):
        """This device's notes once batches 1 to `count` are applied: note id to the number of its batch."""
        shown = {}
        for batch_count in range(max(1, count - NOTES + 1), count + 1):
            visit, place = divmod(batch_count - 1, NOTES)
            if visit % 2 == 0:
                shown[self.note_id(place)] = str(batch_count)
        return shown

    def run(self, server, acks):
        """One line: resends, goes on sending, and listens, until the line is gone or the round's notes are used up."""
        try:
            line = WebSocket(server, self.couple, self.token)
        except LineClosed:
            return
        try:
            line.receive("welcome")
            self.heard, last = 0, self.acked + NOTES
            for count in range(self.acked + 1, self.sent + 1):
                line.send(self.message(count))
            while True:
                while self.sent < min(last, self.acked + WINDOW):
                    self.sent += 1
                    line.send(self.message(self.sent))
                self.hear(line.receive(), acks)
        except LineClosed:
            pass
        except AssertionError as fault:
            self.faults.append(str(fault))
        finally:
            line.close()

    def hear(self, message, acks):
        if message["type"] == "ack":
            if message["batchId"] != self.batch_id(self.acked + 1):
                self.faults.append(f"the ack of {message['batchId']} came twice or out of order")
            self.acked += 1
            acks.release()
        elif message["type"] == "ops":
            count = int(message["batchId"][-12:], 16)
            if message["batchId"] != self.partner.batch_id(count) or count <= self.partner.stored:
                self.faults.append(f"batch {message['batchId']} took effect twice")
            if self.heard and count != self.heard + 1:
                self.faults.append(f"batch {message['batchId']} was relayed after batch {self.heard}")
            self.heard = count
        elif message["type"] == "error":
            self.faults.append(f"the room says {message}")

    def look(self, board):
        """After a restart: what of this device is on the board. The batches that are lost."""
        own = {self.note_id(place) for place in range(NOTES)}
        shown = {item["id"]: text_of(item) for item in board["items"] if item["id"] in own}
        for count in range(self.sent, max(0, self.sent - NOTES) - 1, -1):
            if shown == self.after(count):
                self.stored = count
                return max(0, self.acked - count)
        self.faults.append("the board is none that any number of batches makes")
        return 1


def play_round(server, devices, generator):
    """Load until a random number of acks has come; then the server dies."""
    acks = threading.Semaphore(0)
    lines = [threading.Thread(target=device.run, args=(server, acks)) for device in devices]
    for line in lines:
        line.start()
    for _ in range(generator.randint(1, 12 * len(devices))):
        while not acks.acquire(timeout=1):
            assert server.is_alive(), "the server ended by itself"
            assert any(line.is_alive() for line in lines), "no ack came"
    # Anywhere within the work on the batches that follow.
    time.sleep(generator.random() * 0.003)
    server.kill()
    for line in lines:
        line.join()


def resend_everything(server, device):
    """Resends old batches that were acknowledged: each is acknowledged again and changes nothing."""
    before = server.snapshot(device.couple, device.token)
    line, partner = (WebSocket(server, device.couple, one.token) for one in (device, device.partner))
    partner.receive("welcome")
    twice = 0
    for count in range(1, device.acked + 1, max(1, device.acked // 100)):
        line.send(device.message(count))
        assert line.receive("ack")["batchId"] == device.batch_id(count)
    line.send("hb")
    partner.send("hb")
    while (text := partner.poll(PATIENCE)) != "hb-ack":
        assert text is not None, "the room does not answer"
        twice += '"type":"ops"' in text
    line.close()
    partner.close()
    return twice + (server.snapshot(device.couple, device.token) != before)


def main():
    asked = options("room", kills=40, rooms=4, seed=1)
    generator = random.Random(asked.seed)
    devices, lost, twice = [], 0, 0
    limits = ("--messages-per-second", "100000", "--burst", "100000")
    with Server(asked.room, *limits) as server:
        for _ in range(asked.rooms):
            couple, tokens = server.pair()
            pair = [Device(couple, token, slot, len(devices) + i) for i, (token, slot) in enumerate(zip(tokens, "ab"))]
            pair[0].partner, pair[1].partner = pair[1], pair[0]
            devices += pair
        for _ in range(asked.kills):
            play_round(server, devices, generator)
            server.start()
            for device in devices:
                lost += device.look(server.snapshot(device.couple, device.token))
        twice += sum(resend_everything(server, device) for device in devices)
        status = server.stop() or subprocess.run([server.binary, "check", "--database", server.database]).returncode
    acked = sum(device.acked for device in devices)
    faults = [fault for device in devices for fault in device.faults]
    print(f"kills {asked.kills}, acked {acked}, lost {lost}, twice {twice}, other faults {len(faults)}")
    print(*faults[:20], sep="\n")
    sys.exit(bool(lost or twice or faults or status or acked < asked.kills))


if __name__ == "__main__":
    main()
