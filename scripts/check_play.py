"""Checks what a played script printed, one "ok" or "not ok" line a case: check_play.py NAME TRANSCRIPT STATUS [LOG...]."""
import sys

# Lines that must stand in the transcript in this order; others may stand between them.
EXPECTED = {
    "tour": [
        "> press cmdApply",
        "log: MIBSAP.Connect",
        "log: (Send) MIBSAP Set /OutputFormat/Header = <STX>",
        "log: (Receive) MIBSAP Response OK",
        "log:   Writing /OutputFormat/Header = <STX>...",
        "log:   Write OK!",
        "log: (Send) MIBSAP Set /OutputFormat/Terminator = <CR><LF>",
        "log: (Receive) MIBSAP Response OK",
        "log:   Writing /OutputFormat/Terminator = <CR><LF>...",
        "log:   Write OK!",
        "log: (Send) MIBSAP EndSession",
        "log: MIBSAP Disconnect",
        "> print device 6",
        "= 02",
        "> print device 7",
        "= 0D0A",
        "> print host 6",
        "= 02",
        "> print host 7",
        "= 0D0A",
        "= disabled",
        "= 1",
        "closed: result 1",
        "terminated: 0 host objects in use",
    ],
    "failed-save": [
        "call: MibSapService.StartSession(3, ***)",
        "wire: > SESSION 3 ***",
        "log: (Receive) MIBSAP ERROR 310",
        "> print enabled cmdApply",
        "= enabled",
        "terminated: 0 host objects in use",
    ],
    "close-while-saving": ["> press cmdApply", "log: MIBSAP.Connect", "> meanwhile quit"],
    # In a container without an extender.
    "slave": [
        "box: [Warning] You are about to edit Data Format parameters for a Slave Device. Do you want to continue?",
        "answer: yes",
        "closed: result 2",
        "terminated: 0 host objects in use",
    ],
    "session": ["> press cmdApply", "log:   Writing /Codes/Expression = *", "terminated: 0 host objects in use"],
    "keyboard": ["> expect device 355:62 3", "terminated: 0 host objects in use"],
    "session-again": ["terminated: 0 host objects in use"],
    "drop-connection": [
        "> meanwhile menu Drop Connection",
        "log: (Receive) MIBSAP ERROR 504",
        "= enabled",
        "= 1",
        "= enabled",
        "terminated: 0 host objects in use",
    ],
}
SECRETS = ("VLPX", "RRNN", "QMVRTK4826", "TRAVEN")


def fits(found, line):
    return found.startswith(line[:-1]) if line.endswith("*") else found == line


def missing(lines, wanted):
    """The first wanted line that does not follow the ones before it; None when all stand in order."""
    rest = iter(lines)
    for line in wanted:
        if not any(fits(found, line) for found in rest):
            return line
    return None


def main(name, transcript, status, *logs):
    lines = open(transcript, encoding="utf-8").read().splitlines()
    gap = missing(lines, EXPECTED[name])
    print(f"ok {name}: {len(EXPECTED[name])} lines in order" if gap is None else f"not ok {name}: no \"{gap}\" in its place")
    print(f"{'ok' if status == '0' else 'not ok'} {name}: ended with {status}")
    texts = lines + [open(log, encoding="utf-8", errors="replace").read() for log in logs]
    leaks = [secret for secret in SECRETS if any(secret in text for text in texts)]
    print(f"not ok {name}: shows {leaks}" if leaks else f"ok {name}: no password")
    if gap is not None or status != "0":
        print("\n".join("   " + line for line in lines[-25:]))


main(*sys.argv[1:])
