"""Compares what the device stored with what the client claims and with what the host configuration contains."""
import re
from dataclasses import dataclass, field

REASON = (r"session \(code -?\d+\)|MIBSAP Error -?\d+|Communication error -?\d+|transport error \d+"
          r"|the device answers -?\d+|no answer within")
LONGEST = 1000


SUCCESS, FAILURE, OPEN = "success", "failure", "an open end"


@dataclass
class Outcome:
    """The behaviour of one client under one plan."""

    report: str                       # SUCCESS, FAILURE, or OPEN: accepted, but what the device holds is not known
    told: str                         # its message, its message boxes, or its hint line
    mirrored: list = field(default_factory=list)  # entries that it treats as written
    faults: list = field(default_factory=list)    # independent of the plan: crashes, hangs, changed files

    @property
    def claimed(self):
        return self.report == SUCCESS


@dataclass
class Row:
    plan: object
    device: object
    outcome: Outcome
    verdict: str

    def failed(self):
        return self.verdict.startswith("FAIL")

    def line(self, client):
        sets = sum(request.is_set for request in self.device.requests)
        cells = [self.plan.name, self.verdict, f"{len(self.device.requests)} requests, {sets} sets",
                 f"stored {len(self.device.stored)} of {self.device.total}", f"reports {self.outcome.report}",
                 f"mirrored {len(self.outcome.mirrored)}", shorten(self.outcome.told)]
        return f"{'not ok' if self.failed() else 'ok'} {client}: " + " | ".join(cells)


def shorten(text):
    shown = "".join(char if char.isprintable() else f"<{ord(char):02X}>" for char in text)
    return shown if len(shown) <= 240 else f"{shown[:160]} ... {shown[-60:]} ({len(shown)} characters)"


def not_stored(device, wanted, mirrored):
    """Number of mirrored entries that the device did not store with the intended value."""
    return sum(device.stored.get(entry) != wanted.get(entry) for entry in set(mirrored))


def unreadable(told):
    """A device must not control the terminal of whoever reads the message."""
    return [char for char in told if not char.isprintable()]


def judge(plan, device, wanted, outcome):
    """`wanted` is the store after the honest plan: the complete save."""
    stored_all = device.stored == wanted
    faults = list(outcome.faults)
    if outcome.claimed and not stored_all and not plan.limit:
        faults.append("reports success, but the device did not store everything")
    if plan.must_succeed and not (outcome.claimed and stored_all):
        faults.append("a save to an honest device fails")
    if not plan.must_succeed and not device.deviated:
        faults.append("the device never deviated")
    missing = not_stored(device, wanted, outcome.mirrored)
    if missing > plan.unknowable:
        faults.append(f"{missing} mirrored entries are not stored")
    if not outcome.claimed and not re.search(REASON, outcome.told):
        faults.append("the message gives no reason")
    if len(outcome.told) > LONGEST:
        faults.append("the message is too long to read")
    if unreadable(outcome.told):
        faults.append("the message contains control characters")
    if faults:
        return Row(plan, device, outcome, "FAIL (" + "; ".join(faults) + ")")
    limit = outcome.claimed and not stored_all
    return Row(plan, device, outcome, f"limit ({plan.limit})" if limit else "ok")
