#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Guesses join codes from many addresses: the limits hold, across restarts too, and hurt nobody else before they must."""
import itertools
import threading

from blackbox import Server, options

PER_ORIGIN, IN_ALL = 10, 200
WRONG, LIMITED = {404, 410}, 429


class Attack:
    """Counts what the server must have counted."""

    def __init__(self, server):
        self.server, self.wrong = server, 0
        self.couple, self.token = server.new_couple()
        self.code = server.new_code(self.couple, self.token)

    def guess(self, code=None, **how):
        """The status of a join, by default by digits that are nobody's."""
        status, headers, answer = self.server.join(code or f"{(int(self.code) + 500_000) % 1_000_000:06}", **how)
        self.wrong += status in WRONG
        if status == LIMITED:
            assert int(headers["Retry-After"]) in range(1, 601), headers
            assert answer["code"] == "rate_limited", answer
        return status

    def exhaust(self, ways, expected=PER_ORIGIN):
        """Guesses in these ways until the limit; that is after exactly `expected` wrong ones."""
        for count, how in enumerate(ways):
            if self.guess(**how) == LIMITED:
                assert count == expected, f"limited after {count} wrong codes"
                return
            assert count < expected, f"not limited after {count + 1} wrong codes"


def forwarded(address):
    return {"headers": {"X-Forwarded-For": address}}


def every_way_of_one_origin(attack):
    """Each origin has ten wrong codes, however it dresses up, and right ones are refused as well while it is limited."""
    attack.exhaust(itertools.repeat({"source": "127.0.0.2"}))
    assert attack.guess(attack.code, source="127.0.0.2") == LIMITED
    # A peer that is no trusted proxy may claim what it likes.
    attack.exhaust({"source": "127.0.0.3"} | forwarded(f"198.51.100.{i}") for i in range(99))
    # What stands before the proxy's own entry is the client's claim too.
    attack.exhaust(forwarded(f"198.51.100.{i}, 203.0.113.9") for i in range(99))
    # One network of IPv6 is one origin; the one beside it is another.
    attack.exhaust(forwarded(f"2001:db8:1:2:{i:x}::1") for i in range(1, 99))
    assert attack.guess(**forwarded("2001:db8:1:3::1")) in WRONG


def after_a_crash(attack):
    attack.server.kill()
    attack.server.start()
    assert attack.guess(source="127.0.0.2") == LIMITED
    assert attack.guess(attack.code, **forwarded("203.0.113.9")) == LIMITED


def one_code_serves_one_join(attack):
    """Twenty at once, each from an address of its own: one gets in, the others count as wrong."""
    statuses = []

    def join(number):
        statuses.append(attack.server.join(attack.code, **forwarded(f"192.0.2.{number}"))[0])

    threads = [threading.Thread(target=join, args=(number,)) for number in range(20)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    assert sorted(statuses) == [200] + [410] * 19, statuses
    attack.wrong += 19


def right_codes_do_not_count(attack):
    """A code that lets its holder choose who they are stays good and is not counted, as often as it is shown."""
    code = attack.server.new_code(attack.couple, attack.token)
    for _ in range(PER_ORIGIN + 5):
        assert attack.guess(code, source="127.0.0.4") == 409
    newer = attack.server.new_code(attack.couple, attack.token)
    assert attack.guess(code, source="127.0.0.4") == 410, "a newer code ends the older one"
    status, _, joined = attack.server.call("POST", "/joins/code", source="127.0.0.4", body={
        "code": newer, "deviceId": "chosen", "name": "Bea", "slot": "b"})
    assert (status, joined["status"]) == (200, "rejoined"), joined


def what_is_no_code_gets_nowhere(attack):
    for number, code in enumerate(["", "12345", "1234567", "abcdef", "१२३४५६", "123456\u0000", "' OR 1=1 --", "-00001",
                                   "*", "0" * 60_000]):
        status, _, answer = attack.server.join(code, **forwarded(f"192.0.3.{number}"))
        assert status in {400} | WRONG, (code[:20], status, answer)
        attack.wrong += status in WRONG


def in_all(attack):
    """Two hundred wrong codes from anywhere end it for all, until some grow old."""
    attack.exhaust((forwarded(f"198.18.{i // 9}.1") for i in itertools.count()), IN_ALL - attack.wrong)
    code = attack.server.new_code(attack.couple, attack.token)
    assert attack.guess(code, source="127.0.0.9") == LIMITED


def main():
    asked = options("room")
    with Server(asked.room, "--trusted-proxies", "127.0.0.1/32") as server:
        attack = Attack(server)
        for step in (every_way_of_one_origin, after_a_crash, one_code_serves_one_join, right_codes_do_not_count,
                     what_is_no_code_gets_nowhere, in_all):
            step(attack)
            print(f"{step.__name__}: {attack.wrong} wrong codes so far")
        assert server.stop() == 0


if __name__ == "__main__":
    main()
