#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Two example devices at the real server: each sees the note of the other."""
import json
import pathlib
import subprocess
import sys

from blackbox import PATIENCE, Server, options, text_of

EXAMPLE = pathlib.Path(__file__).resolve().parents[2] / "Examples" / "board.py"


def device(server, *flags):
    return subprocess.Popen([sys.executable, EXAMPLE, server.url, *flags], stdout=subprocess.PIPE, text=True)


def hears(process, texts):
    """Reads along until notes of all these texts have come in "ops" or "welcome"."""
    seen = set()
    for line in process.stdout:
        message = json.loads(line)
        assert message["type"] != "error", message
        ops = message.get("ops", [])
        items = message.get("board", {}).get("items", []) + [op["item"] for op in ops if op["op"] == "upsert"]
        seen |= {text_of(item) for item in items}
        if seen >= texts:
            return
    raise AssertionError(f"only {seen} came")


def main():
    asked = options("room")
    with Server(asked.room) as server:
        ada = device(server, "--start", "--name", "Ada", "--note", "hello Bea")
        code = ada.stdout.readline().split()[1]
        bea = device(server, "--join", code, "--name", "Bea", "--note", "hello Ada")
        hears(ada, {"hello Ada"})
        hears(bea, {"hello Bea"})
        again = subprocess.run([sys.executable, EXAMPLE, server.url, "--join", code, "--name", "Eve"],
                               capture_output=True, timeout=PATIENCE, check=False)
        assert again.returncode != 0 and not again.stdout, "a used code let somebody in"
        for process in (ada, bea):
            process.kill()
            process.wait()
            process.stdout.close()
        assert server.stop() == 0


if __name__ == "__main__":
    main()
