"""Plans with surplus, missing or shifted answers: only a client that counts them notices."""
import threading
import time

from device import OK, REFUSAL
from plan import Plan, at, every_set, for_sets, last_set, middle_set, pause_between, say_also, say_before, say_instead


def thousand(device, request, line):
    device.deviate(line, *[OK] * 1000 if request.verb == "HELLO" else [])


def thousand_then_mute(device, request, line):
    if not request.is_set:
        thousand(device, request, line)


def every_second_twice(device, _request, line):
    device.deviate(*[line] * (2 if len(device.requests) % 2 == 0 else 1))


def shifted(count, rest):
    """Delays each answer by `count` requests and sends OK for the first ones; `rest` handles the answers left at END."""

    def deliver(device, request, line):
        if request.verb == "HELLO":
            device.held = [OK] * count
            device.say(line)
            return
        device.held.append(line)
        if request.verb == "END" and rest is disconnect:
            device.disconnect()
            return
        device.deviate(device.held.pop(0))
        if request.verb == "END":
            rest(device)

    return deliver


def say_held(device):
    device.say(*device.held)
    device.held = []


def say_held_soon(device):
    """Too late for a client that closes the connection after END's answer."""
    time.sleep(0.3)
    say_held(device)


def keep_held(_device):
    pass


def disconnect(device):
    device.disconnect()


def surplus_with_the_next(device, request, line):
    """Sends the surplus line after the next request, while the client waits for an answer."""
    if device.is_middle(request):
        device.deviate(line)
        device.held = [OK]
        return
    device.say(*device.held, line)
    device.held = []


def surplus_in_two_pieces(device, request, line):
    """The first half of the surplus line follows an answer, so that the rest looks like the answer to the next request."""
    if device.is_middle(request):
        device.deviated = True
        device.send(f"{line}\nOK".encode())
        device.held = [" OK"]
    elif device.held and request.verb != "END":
        device.say(device.held.pop(0))
        device.held.append(line)
    else:
        device.say(*device.held, line)


def after_middle(device, request):
    return REFUSAL if request.is_set and device.place() > device.total // 2 else None


def once_busy_then_refused(device, request):
    if not device.is_middle(request):
        return None
    return "ERR 308 busy" if device.tries[request.entry] == 1 else REFUSAL


def busy_and_surplus(device, line):
    device.deviate(line, *[OK] if line.startswith("ERR 308") else [])


def babble(device, request, line):
    """Sends OK continuously, regardless of requests."""
    device.deviated = True
    if request.verb == "HELLO":
        device.say(line)
        stop = threading.Event()
        device.held = [stop]
        threading.Thread(target=babble_until, args=(device.link, stop), daemon=True).start()


def fall_silent(device):
    for stop in device.held:
        stop.set()


def babble_until(link, stop):
    try:
        while not stop.wait(0.002):
            link.sendall((OK + "\n").encode())
    except OSError:
        pass


PLANS = [
    Plan("a thousand OK after the greeting, every set refused", every_set, thousand, often=True),
    Plan("a thousand OK after the greeting, no answer to sets", every_set, thousand_then_mute),
    Plan("continuous OK, nothing stored", every_set, babble, on_leave=fall_silent, unknowable=10000),
    Plan("surplus OK with the greeting, last set refused", last_set, at("HELLO", say_also(OK)), often=True),
    Plan("surplus OK after SESSION, last set refused", last_set, at("SESSION", say_also(OK))),
    Plan("surplus OK in the middle, last set refused", last_set, at("middle", say_also(OK)), often=True),
    Plan("surplus OK with the next answer", after_middle, surplus_with_the_next, unknowable=1),
    Plan("surplus OK in two pieces, last set refused", last_set, surplus_in_two_pieces),
    Plan("OK on connection, last set refused", last_set, on_arrival=lambda device: device.deviate(OK)),
    Plan("welcome line on connection", on_arrival=lambda device: device.deviate("READY")),
    Plan("every answer twice, last set refused", last_set, lambda device, _, line: device.deviate(line, line), often=True),
    Plan("every second answer twice, last set refused", last_set, every_second_twice),
    Plan("answers late by one, rest with END", last_set, shifted(1, say_held), unknowable=1, often=True),
    Plan("answers late by two, rest with END", last_set, shifted(2, say_held), unknowable=1, often=True),
    Plan("answers late by two, rest 0.3 s after END", last_set, shifted(2, say_held_soon), unknowable=1),
    Plan("answers late by two, rest after the client shuts down", last_set, shifted(2, keep_held),
         on_leave=say_held, unknowable=1),
    Plan("answers late by three, rest with END", last_set, shifted(3, say_held), unknowable=1),
    Plan("answers late by three, middle set refused", middle_set, shifted(3, say_held), unknowable=1),
    Plan("ERR, then OK to every set", every_set, for_sets(say_also(OK))),
    Plan("OK, then ERR to every set", every_set, for_sets(say_before(OK)), unknowable=1),
    Plan("OK, then ERR to the last set", last_set, at("last", say_before(OK)), unknowable=1),
    Plan("308 and surplus OK, repeated set refused", once_busy_then_refused, for_sets(busy_and_surplus)),
    Plan("unrequested VALUE in the middle", deliver=at("middle", say_also("VALUE int16 5"))),
    Plan("unrequested ERR in the middle", deliver=at("middle", say_also(REFUSAL))),
    Plan("HELLO from the device in the middle", deliver=at("middle", say_also("HELLO 1 0"))),
    Plan("surplus OK after END", deliver=at("END", say_also(OK)), often=True),
    Plan("surplus ERR after END", deliver=at("END", say_also(REFUSAL))),
    Plan("answers late by two, rest never, last set refused", last_set, shifted(2, keep_held), unknowable=1,
         limit="as many answers as requests, all OK"),
    Plan("answers late by one, disconnects on END, last set refused", last_set, shifted(1, disconnect), unknowable=1),
    Plan("OK to every set, nothing stored", every_set, for_sets(say_instead(OK)), unknowable=10000,
         limit="every answer in its place"),
    Plan("honest and slow", deliver=pause_between(4096, 0.01), must_succeed=True),
    Plan("honest, a byte at a time", deliver=pause_between(1, 0.002), must_succeed=True, often=True),
]
