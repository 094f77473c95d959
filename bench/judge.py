"""Judges zenlot-monitor by what the kernel knows: runs zenlot-bindwatch beside it, a second monitor
that listens to it, and a reader that keeps every event. See bench/README.md.

As a program it is that reader: `judge.py SOCKET` prints the events as lines of JSON.
"""
import json
import os
import socket
import struct
import subprocess
import sys
import threading
import time
from collections import Counter
from pathlib import Path

HEAD = struct.Struct("=IHHIIQ")
RECORD = struct.Struct("=QQQQIIIIIiHHBBBB16s16s")
FIELDS = ("happened_at started_at control_group network_cookie network process thread parent user error port "
          "_ kind family flags _ address command").split()
REFUSED_KINDS = (1, 2)
IN_USE = 98
REFERENCE_DATE = 978307200
PATIENCE = 10
PYTHON = "/usr/bin/python3"  # that every user may run


def events_of(packet):
    _, _, size, count, _, lost = HEAD.unpack_from(packet)
    for place in range(count):
        event = dict(zip(FIELDS, RECORD.unpack_from(packet, HEAD.size + place * size)))
        event["command"] = event["command"].rstrip(b"\0").decode(errors="replace")
        event["address"] = event["address"][:4 if event["family"] == 4 else 16].hex()
        yield {**event, "lost": lost}


def connect(path):
    reader = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
    end = time.monotonic() + PATIENCE
    while True:
        try:
            reader.connect(str(path))
            return reader
        except OSError:
            if time.monotonic() > end:
                raise
            time.sleep(0.05)


def records_in(home, since):
    """What a monitor with that home has published since then."""
    try:
        text = (home / "state/group.dev.quorvane.zenlot/conflicts.json").read_text()
    except FileNotFoundError:
        return []
    return [record for record in json.loads(text) if record["detectedAt"] + REFERENCE_DATE > since]


def read_events():
    with connect(sys.argv[1]) as reader:
        while packet := reader.recv(1 << 16):
            for event in events_of(packet):
                print(json.dumps(event), flush=True)
            if len(packet) == HEAD.size:
                print("{}", flush=True)


class Judge:
    """`run` starts a program as the user who is judged; it takes what subprocess.Popen takes."""

    def __init__(self, helper, monitor, work, environment, run):
        self.events = []
        self.verdicts = []
        self.home = work / "told"
        path = work / "binds"
        self.helper = subprocess.Popen([os.path.abspath(helper), "--socket", str(path)])
        self.reader = run([PYTHON, os.path.abspath(__file__), str(path)],
                          stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, text=True)
        if not self.reader.stdout.readline():
            self.stop()
            sys.exit("the helper does not run here; it needs root and a kernel that lets it")
        threading.Thread(target=self.read, daemon=True).start()
        self.monitor = run([os.path.abspath(monitor), "--bindwatch", str(path)], stdin=subprocess.DEVNULL,
                           env={**environment, "HOME": str(self.home), "XDG_STATE_HOME": str(self.home / "state")})
        log = self.home / "Library/Logs/zenlot-monitor.log"
        end = time.monotonic() + PATIENCE
        while not (log.exists() and "told of refused ports" in log.read_text()):
            if time.monotonic() > end:
                self.stop()
                sys.exit("the monitor does not listen to the helper")
            time.sleep(0.05)

    def read(self):
        for line in self.reader.stdout:
            if event := json.loads(line):
                self.events.append({**event, "at": time.time() - time.clock_gettime(time.CLOCK_BOOTTIME) +
                                    event["happened_at"] / 1e9})

    def stop(self):
        for process in (getattr(self, "monitor", None), self.reader, self.helper):
            if process:
                process.terminate()
                process.wait()

    def told(self, since):
        return records_in(self.home, since)

    def refused(self, since):
        return [event for event in list(self.events)
                if event["kind"] in REFUSED_KINDS and event["error"] == IN_USE and event["at"] > since]

    def compare(self, name, since, inferred, expected=None):
        """What both monitors say of what happened since then. `expected` is the port and the process
        that must have been told; none when nobody knows, or when nothing must be."""
        told = self.told(since)
        refused = self.refused(since)
        key = lambda record: (record["port"], record["pid"], record["processName"])
        told_keys, inferred_keys = Counter(map(key, told)), Counter(map(key, inferred))
        missed, further = told_keys - inferred_keys, inferred_keys - told_keys
        said = []
        for port in sorted({k[0] for k in missed} & {k[0] for k in further}):
            said.append(f"MISNAMED {port}: {[k[1:] for k in further if k[0] == port]} for "
                        f"{[k[1:] for k in missed if k[0] == port]}")
        ports = {k[0] for k in missed} & {k[0] for k in further}
        said += [f"missed {k[0]}" for k in missed if k[0] not in ports]
        # Who finds out by connecting is refused nothing.
        is_expected = lambda k: expected and not refused and k[:2] == expected
        said += [f"inferred {k[0]}" if is_expected(k) else f"INVENTED {k[0]}" for k in further if k[0] not in ports]
        wrong = []
        # Some find out by connecting that their port is taken; of them only inference tells.
        if any(key(record) not in inferred_keys for record in told
               if record["port"] not in {event["port"] for event in refused}):
            wrong.append("TOLD WITHOUT A REFUSAL")
        if not refused and expected:
            said.append("was never refused")
        elif expected:
            if not any((record["port"], record["pid"]) == expected for record in told):
                wrong.append(f"NOT TOLD {expected}: {told}")
            if len(told) > 1:
                wrong.append(f"{len(told) - 1} MORE TOLD")
        delay = None
        if told and refused:
            first = min((event["at"] for event in refused if event["port"] == told[0]["port"]), default=None)
            delay = told[0]["detectedAt"] + REFERENCE_DATE - first if first else None
        self.verdicts.append((name, sorted({event["port"] for event in refused}), len(told), len(inferred),
                              said, wrong, delay, expected is not None))

    def report(self):
        print("\nwhat the kernel saw, what was told by it, and what inference made of it")
        width = max((len(verdict[0]) for verdict in self.verdicts), default=0)
        for name, refused, told, inferred, said, wrong, delay, _ in self.verdicts:
            if said or wrong or refused or told or inferred:
                print(f"{name:{width}}  refused {','.join(map(str, refused[:4])) or '-':12} told {told} inferred {inferred} "
                      f"{f'{delay * 1000:5.0f} ms' if delay is not None else '       -'}  "
                      f"{'; '.join(said) or 'agree'}  {'; '.join(wrong)}")
        loud = [verdict for verdict in self.verdicts if verdict[7]]
        asked = [verdict for verdict in loud if verdict[1]]
        right = [verdict for verdict in asked if not verdict[5]]
        print(f"servers that wanted a held port: {len(loud)}; refused by the kernel: {len(asked)}; "
              f"told with the right port and holder: {len(right)}")
        count = lambda word: sum(any(s.startswith(word) for s in verdict[4]) for verdict in self.verdicts)
        print(f"the inference, judged by it: {count('missed')} missed, {count('INVENTED')} invented, "
              f"{count('MISNAMED')} misnamed, of {sum(v[2] for v in self.verdicts)} that were told")
        delays = sorted(verdict[6] for verdict in self.verdicts if verdict[6] is not None)
        if delays:
            print(f"from the refusal to the record: median {delays[len(delays) // 2] * 1000:.0f} ms, "
                  f"worst {delays[-1] * 1000:.0f} ms of {len(delays)}")
        return len(right) == len(asked)


if __name__ == "__main__":
    read_events()
