"""Plans that stop answering, disconnect or reset the connection at each stage of a save."""
from device import OK
from plan import Plan, at, keep_silent, last_set, middle_set


def disconnect(device, _line):
    device.disconnect()


def reset(device, _line):
    device.reset()


def answer_and(end):
    def send(device, line):
        device.say(line)
        end(device, line)

    return send


def stop_sending(device, _line):
    device.stop_sending()


def break_off(text):
    def send(device, _line):
        device.send(text)
        device.disconnect()

    return send


def keep_open(device):
    """Keeps the connection open after the client has shut down its side."""
    device.deviated = True
    device.kept = device.link.dup()


def silent(name, stage, refuses=middle_set, drops=1):
    return Plan(f"silent {name}", refuses, at(stage, keep_silent), patience=5, drops=drops)


PLANS = [
    silent("on HELLO", "HELLO", drops=5),
    silent("on SESSION", "SESSION"),
    silent("on a set in the middle", "middle"),
    silent("on the last set", "last", last_set),
    silent("on END", "END", lambda *_: None),
    Plan("disconnects on connection", on_arrival=lambda device: device.disconnect()),
    Plan("disconnects on HELLO", deliver=at("HELLO", disconnect)),
    Plan("disconnects after HELLO's answer", deliver=at("HELLO", answer_and(disconnect))),
    Plan("disconnects after SESSION's answer", deliver=at("SESSION", answer_and(disconnect))),
    Plan("disconnects on a set", middle_set, at("middle", disconnect), often=True),
    Plan("disconnects within a set's answer", middle_set, at("middle", break_off(b"O"))),
    Plan("disconnects before the line feed of a set's answer", middle_set, at("middle", break_off(OK.encode()))),
    Plan("disconnects on the last set", last_set, at("last", disconnect)),
    Plan("disconnects on END", deliver=at("END", disconnect), often=True),
    Plan("disconnects before the line feed of END's answer", deliver=at("END", break_off(OK.encode()))),
    Plan("disconnects after END's answer", deliver=at("END", answer_and(disconnect)), must_succeed=True),
    Plan("resets on SESSION", deliver=at("SESSION", reset)),
    Plan("resets on a set", middle_set, at("middle", reset)),
    Plan("resets after the answer to a set", deliver=at("middle", answer_and(reset))),
    Plan("resets on END", deliver=at("END", reset)),
    Plan("resets after END's answer", deliver=at("END", answer_and(reset))),
    Plan("stops sending after SESSION's answer", deliver=at("SESSION", answer_and(stop_sending))),
    Plan("refuses the last set and disconnects", last_set, at("last", answer_and(disconnect))),
    Plan("keeps the connection open after END", on_leave=keep_open),
]
