"""Checks what the played session left: check_session.py FOLDER, one "ok" or "not ok" line a case.

The configuration that the host saved, the file that the device wrote at its end and the exported text have to hold what
was entered, and all the rest of the device's parameters what they held before.
"""
import json
import sys

CLUSTER, DEVICE = 1, 2
SLOTS = 20  # items a format
FIRST, SECOND = 2 * SLOTS, 3 * SLOTS  # of formats 3 and 4
CODE, GLOBAL, TEXT = 0, 1, 2

# By parameter: what the elements hold afterwards, from the given one on.
ENTERED = {
    1: {0: [1, 1, 1, 0]},
    2: {0: [2, 1, 15]},
    3: {0: [5, 10]},  # a fixed length is kept as equal limits
    4: {0: [20, 10]},
    70: {0: [0, 0]},
    72: {0: [2]},
    9: {0: ["024E4F4E4503"]},
    191: {0: ["1|3&[2]"]},
    330: {0: [1]},
    341: {2: [4, 8]},
    345: {2: ["02"]},
    346: {2: ["0D0A"]},
    349: {2: [8, 8]},
    351: {FIRST: [GLOBAL, CODE, CODE, TEXT, GLOBAL, GLOBAL, GLOBAL, CODE],
          SECOND: [CODE, CODE, CODE, CODE, TEXT, GLOBAL, GLOBAL, GLOBAL]},
    355: {FIRST + 1: [0, 1], FIRST + 7: [3], SECOND: [0, 0, 5, 6]},
    356: {FIRST: [5], FIRST + 4: [6, 7, 8], SECOND + 5: [9, 10, 11]},
    368: {FIRST + 3: [";\x1d"], SECOND + 4: ["\x1f"]},
}
# What a save normalises, or sets with an item, beyond what is listed above.
MAY_CHANGE = set(range(351, 370)) | {3, 4, 5, 17, 18, 327, 328}


def parameters(file):
    with open(file, encoding="utf-8") as text:
        for device in json.load(text)["devices"]:
            if (device["cluster"], device["device"]) == (CLUSTER, DEVICE):
                return {p["number"]: p["values"] for p in device["parameters"]}
    raise SystemExit(f"not ok session: {file} lacks the device")


def differences(found):
    for number, places in ENTERED.items():
        for start, values in places.items():
            held = found[number][start:start + len(values)]
            if held != values:
                yield f"{number}:{start} holds {held}, not {values}"


def report(what, wrong):
    print(f"not ok session: {what}: {'; '.join(wrong)}" if wrong else f"ok session: {what}")


def main(folder):
    before = parameters("samples/tunnel.json")
    host = parameters(f"{folder}/session-host.json")
    device = parameters(f"{folder}/session-device.json")
    report("the host holds what was entered", list(differences(host)))
    report("the device holds what was entered", list(differences(device)))
    report("host and device agree", [str(n) for n in host if host[n] != device[n]])
    touched = set(ENTERED) | MAY_CHANGE
    report("nothing else changed", [str(n) for n in before if n not in touched and before[n] != host[n]])
    with open(f"{folder}/session-export.txt", "rb") as export, open(f"{folder}/session-model.txt", "rb") as model:
        text = export.read()
        report("the export is that of the saved file", [] if text and text == model.read() else ["they differ"])


try:
    main(*sys.argv[1:])
except OSError as missing:
    report("everything is there", [str(missing)])
