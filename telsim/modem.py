#!/usr/bin/env python3
"""A modem without a telephone line, on a pseudo-terminal.

    modem.py [--link PATH] [--control PATH] [--while PID] [--delay MILLISECONDS]

Prints the terminal's path once it can be opened, and runs until it is ended. Whoever opens the terminal finds a modem
that knows the usual AT commands and echoes every byte while it is connected. docs/telsim.md has the list of commands.

    --link     a symbolic link to the terminal, gone when the modem ends
    --control  a named pipe made for the modem, gone when it ends; it takes one order a line:
               ring [NUMBER [NAME]], ring blocked, hangup
    --while    ends when that process ends
    --delay    between dialing or answering and the result, 50 unless told otherwise
"""

import argparse
import collections
import ctypes
import heapq
import itertools
import os
import re
import select
import signal
import sys
import termios
import time
import tty

RESULTS = {"OK": 0, "CONNECT 33600": 1, "RING": 2, "NO CARRIER": 3, "ERROR": 4, "NO DIALTONE": 6, "BUSY": 7}
# The last digit of a number decides what becomes of a call; any other digit gets a connection.
DIAL_RESULTS = {"7": "BUSY", "8": "NO DIALTONE", "9": "NO CARRIER"}
IDENTITY = {0: "33600", 1: "000", 2: "OK", 3: "Simulated Modem 33600", 4: "no line, echoes data"}
DEFAULT_REGISTERS = {0: 0, 2: 43, 3: 13, 4: 10, 5: 8, 7: 50, 12: 50}
RING_SECONDS = 3
MAX_RINGS = 10
MAX_COMMAND = 256
MAX_PENDING = 65536  # bytes not yet taken by the terminal; beyond this nothing more is read

# A command within a line: a letter with an optional number; the letters' meaning does not matter to a modem without a
# line.
IGNORED = re.compile(r"(?:[BCLMNPTWXY]|[&\\%][A-Z])\d*", re.I)
# Settings by name, such as +VCID=1 or #CID=1.
SETTING = re.compile(r"[+#][A-Z]+(?:=[^;]*|\?)?;?", re.I)
REGISTER = re.compile(r"S(\d+)(?:=(\d*)|(\?))", re.I)
LETTER = re.compile(r"([EHIOQVZ])(\d*)", re.I)
ORDER = re.compile(r"\*(RING|HANGUP)(?:=([^;]*))?;?", re.I)


class Modem:
    """What a modem does, apart from where its bytes come from. Time is seconds of a clock that only goes forward."""

    def __init__(self, delay, clock=time.monotonic):
        self.clock = clock
        self.delay = delay
        self.output = collections.deque()  # pieces for the terminal
        self.pending = 0                   # their bytes
        self._timers = []                  # (due, number, action): number keeps equal times in order
        self._numbers = itertools.count()
        self._generation = 0               # raised to forget all timers
        self.reset()

    def reset(self):
        """As it is when switched on: nothing stays of a call or of settings."""
        self._generation += 1
        self.online = False     # connected, be it in data or in command mode
        self.data_mode = False
        self._dialing = False
        self._rings = 0         # of a call that comes in; 0: there is none
        self._caller = None
        self._hangup_after = None
        self._settings()

    def _settings(self):
        self.registers = dict(DEFAULT_REGISTERS)
        self._echo, self._verbose, self._quiet = True, True, False
        self._command = bytearray()
        self._escapes = 0       # escape characters seen in a row, after the guard time
        self._last_input = -60.0

    # Time

    def after(self, seconds, action):
        heapq.heappush(self._timers, (self.clock() + seconds, next(self._numbers), self._generation, action))

    def until_next_timer(self):
        """Seconds; None when there is nothing to wait for."""
        return max(0, self._timers[0][0] - self.clock()) if self._timers else None

    def run_timers(self):
        while self._timers and self._timers[0][0] <= self.clock():
            _, _, generation, action = heapq.heappop(self._timers)
            if generation == self._generation:
                action()

    # Output

    def send(self, data):
        self.output.append(bytes(data))
        self.pending += len(data)

    def say(self, text):
        self.send(f"\r\n{text}\r\n".encode("latin-1", "replace"))

    def result(self, text):
        if not self._quiet:
            self.send(f"\r\n{text}\r\n".encode() if self._verbose else f"{RESULTS[text]}\r".encode())

    # Input

    def receive(self, data):
        if self.data_mode:
            self._receive_data(data)
            return
        for position in range(len(data)):
            if self.data_mode:  # ATO: what follows is data
                self._receive_data(data[position:])
                return
            self._receive_command_byte(data[position])

    def _receive_command_byte(self, byte):
        if self._dialing:  # any key ends dialing
            self._dialing = False
            self._generation += 1
            self.result("NO CARRIER")
            return
        if self._echo:
            self.send(bytes([byte]))
        if byte == self.registers[3]:
            line, self._command = self._command.decode("latin-1").strip(), bytearray()
            self._execute(line)
        elif byte == self.registers[5]:
            del self._command[-1:]
        elif byte != self.registers[4] and len(self._command) < MAX_COMMAND:
            self._command.append(byte)

    def _receive_data(self, data):
        now = self.clock()
        guard = self.registers[12] / 50
        escape = self.registers[2]
        alone = data == bytes([escape]) * len(data) and escape < 128
        if alone and (self._escapes or now - self._last_input >= guard) and self._escapes + len(data) <= 3:
            self._escapes += len(data)
            if self._escapes == 3:
                self.after(guard, lambda: self._escape(now))
        else:
            self._escapes = 0
        self._last_input = now
        self.send(data)

    def _escape(self, last_input):
        if self.data_mode and self._escapes == 3 and self._last_input == last_input:
            self.data_mode = False
            self._escapes = 0
            self.result("OK")

    # Commands

    def _execute(self, line):
        if not line:
            return
        if not line.upper().startswith("AT"):
            self.result("ERROR")
            return
        rest, answer = line[2:], "OK"
        while rest and answer == "OK":
            rest, answer = self._execute_one(rest)
        if answer:
            self.result(answer)

    def _execute_one(self, text):
        """One command at the beginning of a text. Returns what follows it, and a result: None if that comes later."""
        if text[0] in " ;":
            return text[1:], "OK"
        if text[0] in "Dd":
            return "", self._dial(text[1:])
        if text[0] in "Aa":
            return "", self._answer()
        for pattern, action in ((LETTER, self._letter), (REGISTER, self._register), (ORDER, self._order)):
            if match := pattern.match(text):
                return text[match.end():], action(match)
        match = IGNORED.match(text) or SETTING.match(text)
        return (text[match.end():], "OK") if match else ("", "ERROR")

    def _letter(self, match):
        letter, number = match[1].upper(), int(match[2] or 0)
        if letter == "Z":
            self._hang_up()
            self._settings()
        elif letter == "H":
            if number > 1:
                return "ERROR"
            self._hang_up()
        elif letter == "O":
            if not self.online:
                return "NO CARRIER"
            self._enter_data_mode()
            return "CONNECT 33600"
        elif letter == "I":
            if number not in IDENTITY:
                return "ERROR"
            self.say(IDENTITY[number])
        elif number > 1:
            return "ERROR"
        elif letter == "E":
            self._echo = bool(number)
        elif letter == "V":
            self._verbose = bool(number)
        elif letter == "Q":
            self._quiet = bool(number)
        return "OK"

    def _register(self, match):
        number = int(match[1])
        if number > 255:
            return "ERROR"
        if match[3]:
            self.say(f"{self.registers.get(number, 0):03}")
            return "OK"
        value = int(match[2] or 0)
        if value > 255:
            return "ERROR"
        self.registers[number] = value
        return "OK"

    def _order(self, match):
        if match[1].upper() == "HANGUP":
            if not (match[2] or "0").isdigit():
                return "ERROR"
            self._hangup_after = int(match[2] or 0) / 1000
            return "OK"
        number, _, name = (match[2] or "").partition(",")
        # The answer to the order itself comes first.
        self.after(self.delay, lambda: self.ring(number.strip(), name.strip()))
        return "OK"

    # Calls

    def _dial(self, number):
        digits = re.sub(r"[^0-9*#;]", "", number)
        if self.online or self._rings:
            return "NO CARRIER"
        if digits.endswith(";"):
            return "OK"  # dials, and stays in command mode
        self._dialing = True
        answer = DIAL_RESULTS.get(digits[-1:], "CONNECT 33600")
        self.after(self.delay, lambda: self._finish_dialing(answer))
        return None

    def _answer(self):
        if not self._rings:
            return "NO CARRIER"
        self._rings = 0
        self._dialing = True
        self.after(self.delay, lambda: self._finish_dialing("CONNECT 33600"))
        return None

    def _finish_dialing(self, answer):
        self._dialing = False
        self.result(answer)
        if answer.startswith("CONNECT"):
            self.online = True
            self._enter_data_mode()
            if self._hangup_after is not None:
                self.after(self._hangup_after, self.remote_hang_up)
                self._hangup_after = None

    def _enter_data_mode(self):
        self.data_mode = True
        self._escapes = 0
        self._last_input = self.clock()

    def _hang_up(self):
        self._generation += 1
        self.online = self.data_mode = self._dialing = False
        self._rings = 0

    def ring(self, number="", name=""):
        """A call comes in. The number "blocked" stands for a caller who does not want to be known."""
        if self.online or self._dialing or self._rings:
            return
        self._caller = (number, name)
        self._ring_once(1)

    def _ring_once(self, count):
        if count > 1 and not self._rings or count > MAX_RINGS:
            self._rings = 0
            return
        self._rings = count
        self.result("RING")
        if count == 1:
            number, name = self._caller
            if number.lower() == "blocked":
                number = name = "P"
            if number or name:
                self.say(time.strftime("DATE = %m%d\r\nTIME = %H%M\r\n") + f"NMBR = {number}\r\nNAME = {name}")
        if 0 < self.registers[0] <= count:
            self._answer()
        else:
            self.after(RING_SECONDS, lambda: self._ring_once(count + 1))

    def remote_hang_up(self):
        """The other side hangs up, or stops ringing."""
        was_online = self.online
        self._hang_up()
        if was_online:
            self._command = bytearray()
            self.result("NO CARRIER")

    def order(self, line):
        """An order from the control pipe."""
        words = line.split(None, 2)
        if words[:1] == ["ring"]:
            self.ring(*words[1:])
        elif words == ["hangup"]:
            self.remote_hang_up()
        elif words:
            print(f"modem: no such order: {line.strip()}", file=sys.stderr, flush=True)


class CloseWatch:
    """Tells when somebody has closed the terminal: a pseudo-terminal has no line that would drop."""

    IN_CLOSE = 0x08 | 0x10

    def __init__(self, path):
        libc = ctypes.CDLL(None, use_errno=True)
        self.fd = libc.inotify_init1(os.O_NONBLOCK | os.O_CLOEXEC)
        if self.fd < 0 or libc.inotify_add_watch(self.fd, path.encode(), self.IN_CLOSE) < 0:
            raise OSError(ctypes.get_errno(), "cannot watch " + path)

    def fileno(self):
        return self.fd

    def closed(self):
        try:
            return bool(os.read(self.fd, 4096))
        except BlockingIOError:
            return False


def open_terminal():
    master, slave = os.openpty()
    tty.setraw(slave)
    settings = termios.tcgetattr(slave)
    settings[4] = settings[5] = termios.B115200  # a rate that serial programs can make something of
    termios.tcsetattr(slave, termios.TCSANOW, settings)
    os.set_blocking(master, False)
    return master, slave, os.ttyname(slave)


def optional(what, make):
    """What make returns; None where the system refuses it, with a word on what the modem then cannot do."""
    try:
        return make()
    except OSError as e:
        print(f"modem: cannot {what}: {e}", file=sys.stderr, flush=True)
        return None


def run(options, master, slave, path, cleanup):
    modem = Modem(options.delay / 1000)
    watch = optional("notice that the port is closed", lambda: CloseWatch(path))
    parent = optional("notice the end of --while", lambda: os.pidfd_open(options.parent)) if options.parent else None
    waited = {master, watch, parent} - {None}
    control = None
    orders = b""
    if options.control:
        try:
            os.unlink(options.control)
        except FileNotFoundError:
            pass
        os.mkfifo(options.control)
        cleanup.append(options.control)
        control = os.open(options.control, os.O_RDWR | os.O_NONBLOCK)  # both ways: so it never comes to an end
        waited.add(control)
    if options.link:
        temporary = f"{options.link}.{os.getpid()}"
        os.symlink(path, temporary)
        os.replace(temporary, options.link)
        cleanup.append(options.link)
    print(path, flush=True)

    while True:
        reads = waited if modem.pending < MAX_PENDING else waited - {master}
        ready, writable, _ = select.select(reads, [master] if modem.output else [], [], modem.until_next_timer())
        if parent is not None and parent in ready:
            return
        if watch is not None and watch in ready and watch.closed():
            # As if the computer had taken back its readiness: hang up, and keep nothing for the next who opens. This
            # comes before reading, for he may have written already.
            modem.reset()
            modem.output.clear()
            modem.pending = 0
            termios.tcflush(slave, termios.TCIFLUSH)
        if control is not None and control in ready:
            orders += os.read(control, 4096)
            *lines, orders = orders.split(b"\n")
            for line in lines:
                modem.order(line.decode("utf-8", "replace"))
        if master in ready:
            try:
                modem.receive(os.read(master, 4096))
            except BlockingIOError:
                pass
        modem.run_timers()
        while modem.output:
            piece = modem.output.popleft()
            try:
                written = os.write(master, piece)
            except BlockingIOError:
                written = 0
            modem.pending -= written
            if written < len(piece):
                modem.output.appendleft(piece[written:])
                break


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--link", metavar="PATH")
    parser.add_argument("--control", metavar="PATH")
    parser.add_argument("--while", dest="parent", type=int, metavar="PID")
    parser.add_argument("--delay", type=int, default=50, metavar="MILLISECONDS")
    options = parser.parse_args()
    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
        signal.signal(number, lambda *_: sys.exit(0))
    cleanup = []
    # The modem keeps the computer's side open too: so it meets no end of file while nobody else has it.
    master, slave, path = open_terminal()
    try:
        run(options, master, slave, path, cleanup)
    finally:
        for name in cleanup:
            # A link that meanwhile leads elsewhere is another modem's.
            if not os.path.islink(name) or os.readlink(name) == path:
                os.unlink(name)


if __name__ == "__main__":
    main()
