# SPDX-License-Identifier: Apache-2.0
"""What a process takes: processor, wake-ups, memory."""
import os
import pathlib
import time

CLOCK_TICKS = os.sysconf("SC_CLK_TCK")


def memory_mib(pid, field):
    for line in pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines():
        if line.startswith(field + ":"):
            return int(line.split()[1]) / 1024
    return 0


class Use:
    """What a process takes from now on."""

    def __init__(self, pid):
        self.pid, self.begin = pid, time.monotonic()
        self.ticks, self.switches = self.look()

    def look(self):
        with open(f"/proc/{self.pid}/stat", encoding="ascii") as stat:
            fields = stat.read().rsplit(")", 1)[1].split()
        switches = {task.name: int(line.split()[1]) for task in pathlib.Path(f"/proc/{self.pid}/task").iterdir()
                    for line in (task / "status").read_text().splitlines() if line.startswith("voluntary_ctxt_switches")}
        return int(fields[11]) + int(fields[12]), switches

    def so_far(self):
        """Percent of one core, and wake-ups a second."""
        ticks, switches = self.look()
        seconds = time.monotonic() - self.begin
        # Threads that have ended since are not counted.
        woken = sum(count - self.switches.get(task, 0) for task, count in switches.items())
        return 100 * (ticks - self.ticks) / CLOCK_TICKS / seconds, woken / seconds
