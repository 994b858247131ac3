"""The parts of a plan: which sets the device refuses, and how it delivers its answers."""
import time
from dataclasses import dataclass
from typing import Callable

from device import REFUSAL


# Refusals: the answer to a set, or None to store the value.


def none(_device, _request):
    return None


def every_set(_device, _request):
    return REFUSAL


def first_set(device, _request):
    return REFUSAL if device.place() == 1 else None


def middle_set(device, request):
    return REFUSAL if device.is_middle(request) else None


def last_set(device, request):
    return REFUSAL if device.is_last(request) else None


# Deliveries: what the device sends for a request whose honest answer is `line`.


def honestly(device, _request, line):
    device.say(line)


def do_nothing(_device):
    pass


def for_sets(send):
    """Calls `send` instead of sending the answer to each set."""
    return lambda device, request, line: send(device, line) if request.is_set else device.say(line)


def at(stage, send):
    """Calls `send` instead of sending the answer at one stage: a verb, or "middle" or "last" for a set."""

    def deliver(device, request, line):
        here = {"middle": device.is_middle, "last": device.is_last}.get(stage, lambda r: r.verb == stage)
        if here(request):
            send(device, line)
        else:
            device.say(line)

    return deliver


def keep_silent(device, _line):
    device.deviated = True


def say_instead(*lines):
    return lambda device, _line: device.deviate(*lines)


def say_also(*lines):
    return lambda device, line: device.deviate(line, *lines)


def say_before(*lines):
    return lambda device, line: device.deviate(*lines, line)


def send_instead(data):
    def send(device, _line):
        device.deviated = True
        device.send(data)

    return send


def pause_between(pieces, seconds):
    def deliver(device, _request, line):
        data = (line + "\n").encode("utf-8")
        for start in range(0, len(data), pieces):
            device.send(data[start : start + pieces])
            time.sleep(seconds)

    return deliver


@dataclass
class Plan:
    name: str
    refuses: Callable = none
    deliver: Callable = honestly
    on_arrival: Callable = do_nothing
    on_leave: Callable = do_nothing
    must_succeed: bool = False  # the document allows everything it does, and it stores everything
    unknowable: int = 0         # sets that it did not store but answered with OK, each in its place
    limit: str = ""             # why no client can detect that the save is incomplete
    patience: int = 60          # timeout of the command line, in seconds for each answer
    drops: int = 0              # how often the user of the editor drops the connection
    often: bool = False         # every test run includes it in the editor


