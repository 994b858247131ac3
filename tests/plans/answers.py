"""Plans that answer each request once: refusals, error codes and malformed lines."""
from device import OK
from plan import Plan, at, every_set, first_set, for_sets, last_set, middle_set, say_before, say_instead, send_instead

EMPTY = "\\e"
WIPE = "\x1b[2J\x1b[1;31m"


def busy(code, times):
    """Refuses every seventh entry `times` times, then stores it. Not an empty text: a client takes 308 for success there."""

    def refuse(device, request):
        turn = device.place() % 7 == 0 and device.tries[request.entry] <= times and request.value != EMPTY
        return f"ERR {code} busy" if turn else None

    return refuse


def always(line):
    return lambda device, request: line if device.is_middle(request) else None


def no_empty_text(device, request):
    return "ERR 308 empty" if request.verb == "SETS" and request.value == EMPTY else None


def empty_text_cleared(device, request):
    device.stored.update({request.entry: request.value} if no_empty_text(device, request) else {})
    return no_empty_text(device, request)


def empty_text_valued(_device, request):
    return "VALUE 308 empty" if request.verb == "SETS" and request.value == EMPTY else None


def endless(device, _line):
    device.deviated = True
    for _ in range(64):
        device.send(b"OK" * 32768)


def coded(name, line):
    return Plan(f"sets answered by {name}", every_set, for_sets(say_instead(line)))


def garbled(name, data):
    """Raw bytes, because no line of the document looks like this."""
    return Plan(f"sets answered by {name}", every_set, for_sets(send_instead(data)))


def reason(name, text, **more):
    return Plan(f"a reason {name}", always(f"ERR 310 {text}"), **more)


PLANS = [
    Plan("honest", must_succeed=True, often=True),
    Plan("honest, CR LF", deliver=lambda device, _, line: device.say(line + "\r"), must_succeed=True),
    Plan("refuses the first set", first_set),
    Plan("refuses a set in the middle", middle_set, often=True),
    Plan("refuses the last set", last_set),
    Plan("refuses HELLO", deliver=at("HELLO", say_instead("ERR 408 refused"))),
    Plan("refuses SESSION", deliver=at("SESSION", say_instead("ERR 403 refused"))),
    Plan("refuses END", deliver=at("END", say_instead("ERR 310 refused"))),
    Plan("308 once, then stored", busy(308, 1), must_succeed=True),
    Plan("309 five times, then stored", busy(309, 5), must_succeed=True),
    Plan("308 always", always("ERR 308 busy")),
    Plan("309 always", always("ERR 309 busy")),
    Plan("308 to an empty text, stored", empty_text_cleared, must_succeed=True),
    Plan("308 to an empty text, not stored", no_empty_text, unknowable=10000,
         limit="308 to an empty text counts as stored"),
    Plan("VALUE 308 to an empty text, not stored", empty_text_valued),
    coded("ERR 0", "ERR 0 nothing"),
    coded("ERR without a code", "ERR"),
    coded("ERR and a huge code", "ERR 99999999999999999999 much"),
    coded("ERR and a negative code", "ERR -310 less"),
    coded("ERR and a text as the code", "ERR many"),
    coded("ERR and a fractional code", "ERR 308.5 half"),
    coded("ERR 200", "ERR 200 no\\sanswer\\syet"),
    coded("VALUE", "VALUE text OK"),
    coded("ok", "ok OK"),
    coded("OKAY", "OKAY OK"),
    coded("an indented OK", " OK OK"),
    coded("OK and two surplus fields", "OK OK 310 refused"),
    coded("OK and an unknown escape", "OK \\q"),
    garbled("an empty line", b"\n"),
    garbled("a NUL in the OK", b"O\0K OK\n"),
    garbled("a NUL after the OK", b"OK \0\n"),
    garbled("invalid UTF-8", b"OK \xff\xfe\xc0\x80\n"),
    garbled("an OK of 65,537 bytes", b"OK " + b"K" * 65534 + b"\n"),
    Plan("an empty line before each answer", last_set, for_sets(say_before(""))),
    Plan("endless line in the middle", middle_set, at("middle", endless)),
    Plan("honest, other texts after OK",
         deliver=lambda device, request, line: device.say(line.replace(OK, f"OK {request.verb}")), must_succeed=True),
    reason("with escape sequences", WIPE.replace("\x1b", "\\x1b") + "OK"),
    reason("with raw escape sequences", WIPE + "OK"),
    reason("of 60,000 bytes", "long" * 15000),
    reason("with line breaks", "refused\\noutfmt:\\s104\\sparameters\\swritten\\r\\nOK"),
    reason("with direction marks", "\u202eetirw\u202c\u200b"),
]
