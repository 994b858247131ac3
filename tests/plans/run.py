#!/usr/bin/env python3
"""Runs a client against a device that deviates from its protocol, plan by plan, and prints one row for each plan.

run.py outfmt PROGRAM [NAME...]
run.py editor HOST COMPONENT [--often] [NAME...]     under Wine, with WINEPREFIX and DISPLAY set

A plan passes when the client reports success only if the device stored everything, when the host configuration contains only
what the device stored, and when a failure gives its reason. NAME is part of a plan's name and selects plans.
"""
import concurrent.futures
import sys
import tempfile

import answers
import counting
import link
from clients import CommandLine, Editor
from device import Device
from judge import judge

PLANS = answers.PLANS + counting.PLANS + link.PLANS
SAMPLE = "samples/tiny.json"


def play(client, plan, wanted):
    with Device(plan, len(wanted)) as device:
        outcome = client.meet(plan, device, wanted)
    return judge(plan, device, wanted, outcome)


def whole_save(client):
    """The store of an honest device after the save; every other plan is compared with it."""
    honest = PLANS[0]
    with Device(honest) as device:
        client.meet(honest, device, {})
    if len(device.stored) < 20:
        raise SystemExit(f"not ok honest: only {len(device.stored)} entries came")
    return device.stored


def chosen(names, often):
    plans = [plan for plan in PLANS if (plan.often or not often) and (not names or any(name in plan.name for name in names))]
    if not plans:
        raise SystemExit("not ok plans: none of that name")
    return plans


def main(kind, *arguments):
    often = "--often" in arguments
    names = [argument for argument in arguments if argument != "--often"]
    with tempfile.TemporaryDirectory() as folder:
        if kind == "outfmt":
            client, names, at_once = CommandLine(names[0], SAMPLE, folder), names[1:], 6
        else:
            client, names, at_once = Editor(names[0], names[1], SAMPLE, folder), names[2:], 1
        wanted = whole_save(client)
        failed = 0
        with concurrent.futures.ThreadPoolExecutor(at_once) as pool:
            for row in pool.map(lambda plan: play(client, plan, wanted), chosen(names, often)):
                failed += row.failed()
                print(row.line(kind), flush=True)
    return 1 if failed else 0


if __name__ == "__main__":
    try:
        sys.exit(main(*sys.argv[1:]))
    except Exception as failure:
        print(f"not ok plans: ended early: {failure!r}")
        raise
