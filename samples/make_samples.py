#!/usr/bin/env python3
"""Writes the sample device descriptions beside this script. Same input, same bytes: the files are committed."""

import json
import os
import sys

SYMBOLOGIES = [
    "Industrial 2 of 5", "Interleaved 2 of 5", "Code 39", "Code 128", "EAN-8", "EAN-13", "UPC-A", "UPC-E",
    "EAN/UPC any", "Codabar", "Code 93", "Pharmacode", "Data Matrix", "PDF417", "Postal", "QR Code", "GS1 DataBar",
    "Aztec", "MaxiCode",
]
CODE_ITEMS = {
    0: "Code", 1: "Length", 2: "Readings mask", 3: "Total readings", 4: "Partial readings", 5: "X position",
    6: "Y position", 7: "Z position", 8: "Identifier", 9: "Direction", 10: "Distance", 11: "Decode mode",
    12: "Decode time", 13: "Decode scans", 14: "Average position", 15: "Minimum position", 16: "Maximum position",
    17: "Ink spread", 18: "Decodability", 19: "Encoder", 20: "Arm", 21: "Start sync", 22: "Stop sync", 23: "Laser",
    24: "Persistence", 25: "Focus", 26: "Angle", 27: "Reject reason", 28: "Quiet zone", 30: "Quality index",
}
GLOBAL_ITEMS = {
    0: "Total readings mask", 1: "Failure mask", 2: "Scanner status", 3: "Total readings", 4: "Partial readings",
    5: "Parcel number", 6: "Hours", 7: "Minutes", 8: "Seconds", 9: "Day", 10: "Month", 11: "Year", 12: "Checksum",
    13: "Other info", 14: "Minimum distance", 15: "Maximum distance", 16: "Reading mode", 17: "Rejected codes",
    18: "Parcel length", 19: "Start counter", 20: "Stop counter", 21: "Exit counter", 22: "Reading phases",
    23: "Working hours", 24: "Good reads", 25: "No reads", 26: "Multiple reads", 27: "Partial reads",
    28: "Diagnostics", 29: "Diagnostic events",
}
ALIGNMENTS = ["None", "Left", "Right", "Centre"]
SCALES = ["Global", "Millimetres", "Centimetres", "Tenths of an inch"]
TRANSPORTS = [
    "Main serial", "Auxiliary serial", "DeviceNet", "", "E-mail client", "EtherNet/IP", "PROFINET", "FTP client",
    "FTP server", "HTTP client", "HTTP server", "Modbus client", "System socket", "Data socket 1", "Data socket 2",
    "Data socket 3",
]
# One mask a device model, by its index.
TRANSPORT_MASKS = "FFFF,3083,000F,1003"

STX, ETX, CR, LF, GS = "\x02", "\x03", "\r", "\n", "\x1d"


class Device:
    def __init__(self, cluster, device, description):
        self.head = {"cluster": cluster, "device": device, "description": description}
        self.parameters = []

    def add(self, number, path, kind, level, values, limits=None, choices=None, length=None):
        entry = {"number": number, "path": path, "type": kind, "level": level, "elementCount": len(values)}
        if choices is not None:
            pairs = choices.items() if isinstance(choices, dict) else enumerate(choices)
            entry["enumeration"] = [{"value": value, "label": label} for value, label in pairs]
        if limits is not None:
            entry["minimum"], entry["maximum"] = limits
        if length is not None:
            entry["maximumStringLength"] = length
        if kind == "bytes":
            values = [value.encode("cp1252").hex().upper() for value in values]
        entry["values"] = values
        self.parameters.append(entry)


def filled(count, first, rest):
    """`first`, cut or lengthened with `rest` to `count` values."""
    return (list(first) + [rest] * count)[:count]


def add_globals(dev, c):
    dev.add(330, "/OutputFormat/Advanced", "int16", 1, [c["advanced"]], choices=["Standard", "Advanced"])
    dev.add(399, "/OutputFormat/CodeIdentifier", "int32", 1, [c["code_id"]],
            choices=["Disabled", "Standard", "Custom", "AIM"])
    for index in range(19):
        text = "" if index in (8, 11, 17) else chr(ord("A") + index)
        dev.add(400 + index, f"/OutputFormat/CustomIdentifier{index}", "bytes", 2, [text], length=16)
    dev.add(370, "/OutputFormat/CodeItemsNotSupported", "text", 0, [c["no_code_items"]])
    dev.add(371, "/OutputFormat/GlobalItemsNotSupported", "text", 0, [c["no_global_items"]])
    dev.add(372, "/OutputFormat/GlobalNoRead", "int32", 1, [1], choices=["None", "No-read string", "Empty fields"])
    dev.add(601, "/Transports/MasksByModel", "text", 0, [TRANSPORT_MASKS])
    dev.add(603, "/Transports/Names", "text", 0, [",".join(c["transports"])])
    dev.add(6, "/OutputFormat/Header", "bytes", 1, [c["header"]], length=128)
    dev.add(7, "/OutputFormat/Terminator", "bytes", 1, [CR + LF], length=128)
    dev.add(82, "/OutputFormat/CodeSeparator", "bytes", 1, [GS], length=64)


def add_code_settings(dev, c):
    dev.add(72, "/Codes/Combination", "int32", 1, [c["combination"]],
            choices=["Single code", "Multiple codes", "Logical combination", "Match code"])
    dev.add(191, "/Codes/Expression", "text", 2, [c["expression"]], length=256)
    dev.add(14, "/Codes/NoReadMessage", "int32", 1, [1], choices=["Disabled", "Local string", "Global string"])
    dev.add(9, "/Codes/NoReadString", "bytes", 1, ["NOREAD" + CR], length=128)
    dev.add(15, "/Codes/MultipleReadMessage", "int32", 1, [2],
            choices=["Disabled", "Global string", "Local string"])
    dev.add(16, "/Codes/MultipleReadString", "bytes", 1, ["MULTI" + STX + "READ" + ETX], length=128)
    count = c["groups"]
    dev.add(17, "/Codes/Groups/NoReadString", "bytes", 2, filled(count, ["G1?", "G2?" + CR], ""), length=128)
    dev.add(327, "/Codes/Groups/MultipleReadString", "bytes", 2, filled(count, ["G1+", "G2+"], ""), length=128)


def add_slots(dev, count):
    def slot(number, name, kind, level, first, rest, **more):
        dev.add(number, "/Codes/Slots/" + name, kind, level, filled(count, first, rest), **more)

    flag = {"limits": (0, 1)}
    slot(1, "Enabled", "int16", 1, [1, 1, 1, 1], 0, **flag)
    slot(2, "Symbology", "int32", 1, [3, 1, 12, 5, 2, 9, 14, 15, 16, 18], 0, choices=SYMBOLOGIES)
    slot(3, "MinimumLength", "int16", 2, [4, 6, 1], 1, limits=(1, 64))
    slot(4, "MaximumLength", "int16", 2, [32, 14, 200], 64, limits=(1, 255))
    slot(70, "Length", "int16", 2, [0, 8], 0, limits=(0, 64))
    slot(5, "CheckDigit", "int16", 2, [0, 1], 0, **flag)
    slot(382, "StartCharacter", "int32", 3, [], 0, choices=["Not sent", "Lower case", "Upper case"])
    slot(383, "StopCharacter", "int32", 3, [], 0, choices=["Not sent", "Lower case", "Upper case"])
    slot(18, "NoReadString", "bytes", 2, ["N1" + CR, "N2"], "", length=128)
    slot(328, "MultipleReadString", "bytes", 2, ["M1", "M2" + GS], "", length=128)
    slot(527, "CheckDigitCode39", "int16", 3, [], 0, choices=["Modulo 43", "Modulo 10"])
    slot(526, "CheckDigitInterleaved", "int16", 3, [0, 1], 0, choices=["Modulo 10", "Luhn", "Modulo 7"])
    slot(32, "Addon", "int16", 3, [], 0, choices=["None", "Two digits", "Five digits", "Any"])
    slot(3002, "DataMatrixColumns", "byte", 3, [0, 0, 24], 0, limits=(0, 144))
    slot(3003, "DataMatrixRows", "byte", 3, [0, 0, 24], 0, limits=(0, 144))
    slot(3004, "ModuleSize", "int16", 3, [10, 10, 12], 10, limits=(1, 100))
    slot(3005, "DataMatrixRectangular", "int16", 3, [0, 0, 1], 0, **flag)
    slot(3006, "DataMatrixFast", "int16", 3, [0, 0, 1], 0, **flag)
    slot(3007, "PostalSymbology", "int16", 3, [], 0, choices=["Any", "Four state", "Two state"])
    slot(3008, "PostalDirection", "int16", 3, [], 0, choices=["Any", "Forward", "Backward"])
    slot(3009, "PostalMinimumBars", "byte", 3, [], 20, limits=(1, 120))
    slot(3010, "PostalMaximumBars", "byte", 3, [], 80, limits=(1, 120))
    slot(3011, "PostalBarDistance", "int16", 3, [], 48, limits=(10, 500))
    slot(3012, "DataBarVariant", "int16", 3, [], 1, choices=["Any", "Omnidirectional", "Limited", "Expanded"])
    for mode in range(7):
        slot(3013 + mode, f"MaxiCodeMode{mode}", "int16", 3, [], 1 if mode in (2, 3, 4) else 0, **flag)


def add_formats(dev, c):
    count, items = c["formats"], c["items"]

    def each(number, name, kind, level, first, rest, **more):
        dev.add(number, "/OutputFormat/Formats/" + name, kind, level, filled(count, first, rest), **more)

    dev.add(340, "/OutputFormat/FormatCount", "int16", 0, [count])
    dev.add(350, "/OutputFormat/MaximumItems", "int16", 0, [items])
    each(341, "Transports", "int32", 1, c["format_transports"], 0)
    each(342, "Alignment", "int32", 2, [1], 0, choices=ALIGNMENTS)
    each(343, "AlignmentLength", "int16", 2, [40], 0, limits=(0, 512))
    each(344, "AlignmentFiller", "bytes", 2, ["."], " ", length=1)
    each(345, "Header", "bytes", 1, [STX, "<"], "", length=128)
    each(346, "Terminator", "bytes", 1, [ETX, ">" + CR + LF], "", length=128)
    each(348, "Scale", "int32", 2, [2], 1, choices=dict(list(enumerate(SCALES))[1:]))
    each(349, "ItemCount", "int16", 1, [len(row) for row in c["rows"]], 0)


# Fields of an item in the order of the tuples below: category, type of the category, code, alignment, length.
def item(category, kind, code=0, align=0, length=0, **more):
    return {"category": category, "code_kind": kind if category != 1 else 0,
            "global_kind": kind if category == 1 else 0, "code": code, "align": align, "length": length, **more}


def add_items(dev, c):
    size = c["items"]
    slots = []
    for n in range(c["formats"]):
        row = c["rows"][n] if n < len(c["rows"]) else []
        slots += filled(size, row, {})

    def each(number, name, kind, level, key, rest, **more):
        values = [slot.get(key, rest) for slot in slots]
        dev.add(number, "/OutputFormat/Items/" + name, kind, level, values, **more)

    each(351, "Category", "int32", 1, "category", 0, choices=["Code", "Global", "Text"])
    each(352, "Alignment", "int32", 2, "align", 0, choices=ALIGNMENTS)
    each(353, "AlignmentLength", "int16", 2, "length", 0, limits=(0, 255))
    each(354, "AlignmentFiller", "bytes", 2, "filler", " ", length=1)
    each(355, "CodeItem", "int32", 1, "code_kind", 0, choices=CODE_ITEMS)
    each(356, "GlobalItem", "int32", 1, "global_kind", 0, choices=GLOBAL_ITEMS)
    each(357, "DiagnosticEvent", "int32", 3, "event", 0, choices=["Any", "Motor", "Laser", "Overheating"])
    each(358, "CodeNumber", "byte", 1, "code", 0, limits=(0, 10))
    each(359, "Cut", "int32", 2, "cut", 0, choices=["None", "Characters", "Pattern"])
    each(360, "CutLeading", "byte", 2, "leading", 0, limits=(0, 64))
    each(361, "CutTrailing", "byte", 2, "trailing", 0, limits=(0, 64))
    each(362, "CutPattern", "text", 2, "pattern", "", length=128)
    each(363, "CutPatternMode", "int32", 2, "pattern_mode", 0, choices=["Keep", "Remove"])
    each(364, "NumberFormat", "int32", 2, "format", 0, choices=["Dec", "Bin", "Hex", "Asc"])
    each(365, "NumberLength", "byte", 2, "digits", 0, limits=(0, 32))
    each(366, "Link", "int32", 3, "link", 0, choices=["None", "Previous item", "Next item"])
    each(367, "Scale", "int32", 2, "scale", 1, choices=SCALES)
    each(368, "Text", "text", 1, "text", "", length=256)
    sources = {"choices": c["sources"]} if c["sources"] else {}
    each(369, "Device", "int16", 2, "device", 0, limits=(0, 31), **sources)


def add_system(dev, c):
    dev.add(10001, "/SystemInfo/Model/ModelIndex", "int32", 0, [c["model"]], limits=(0, 16))
    dev.add(10002, "/Cluster/Descr", "text", 0, [c["cluster_name"]], length=64)
    dev.add(10003, "/Cluster/Device/Descr", "text", 0, [dev.head["description"]], length=64)


def device(cluster, number, description, settings):
    dev = Device(cluster, number, description)
    add_globals(dev, settings)
    add_code_settings(dev, settings)
    add_slots(dev, settings["slots"])
    add_formats(dev, settings)
    add_items(dev, settings)
    add_system(dev, settings)
    dev.parameters.sort(key=lambda entry: entry["number"])
    return dev


def base(cluster_name, model):
    rows = [
        [item(0, 0, 1, 1, 20, filler=".", cut=1, leading=2, trailing=1), item(2, 0, text="; " + GS),
         item(0, 1, 1, format=0, digits=3), item(0, 5, 2, 2, 6, filler="0", format=0, digits=5, scale=2),
         item(0, 0, 3, cut=2, pattern="^??*" + GS, pattern_mode=1)],
        [item(1, 5, format=0, digits=6), item(1, 11, format=0, digits=4, link=1), item(1, 2, format=2, digits=2,
         device=1), item(1, 29, format=0, digits=5, event=2, device=2)],
        [item(2, 0, text="PARCEL ")],
    ]
    return {
        "advanced": 1, "code_id": 2, "combination": 2, "expression": "1|2&[3]", "header": "CONV ",
        "no_code_items": "21 22 25 26", "no_global_items": "18 19 20 21", "transports": TRANSPORTS,
        "slots": 10, "groups": 10, "formats": 4, "items": 20, "rows": rows, "format_transports": [1, 8192, 4226],
        "sources": ["Master", "Slave 1", "Slave 2", "Slave 3"], "model": model, "cluster_name": cluster_name,
    }


def conveyor():
    """Its third item takes code 3, which is group 3 here, and there are two groups: on purpose, for what says so."""
    name = "Conveyor 7"
    return [(0, name)], [device(0, 0, "Sorter head", base(name, 2))]


def tunnel():
    name = "Tunnel A"
    master = base(name, 1)
    master["sources"] = None
    slaves = []
    for number, side in enumerate(["left", "right", "bottom"], start=1):
        slave = dict(master, model=number + 1, header=f"S{number} ", combination=number % 2,
                     expression="", advanced=number % 2, no_code_items=["21 22", "", "1 11 12"][number - 1],
                     no_global_items=["", "2 4 28", "29"][number - 1],
                     transports=[TRANSPORTS, ["A", "B"], []][number - 1], format_transports=[1, 2])
        slaves.append(device(1, number, f"Slave {side}", slave))
    return [(1, name)], [device(1, 0, "Master top", master)] + slaves


def tiny():
    name = "Desk"
    small = dict(base(name, 0), advanced=0, combination=0, expression="", slots=1, groups=1, formats=1, items=2,
                 format_transports=[1], rows=[[item(0, 0, 1), item(2, 0, text="!")]], transports=[], header="")
    return [(0, name)], [device(0, 0, "Desk reader", small)]


def bare():
    """A device that knows next to nothing: every field has to say why it is disabled."""
    dev = Device(0, 0, "Hand reader")
    dev.add(6, "/OutputFormat/Header", "bytes", 1, [""], length=32)
    dev.add(7, "/OutputFormat/Terminator", "bytes", 1, [CR], length=32)
    add_system(dev, {"model": 0, "cluster_name": "Counter"})
    return [(0, "Counter")], [dev]


def odd():
    """A conveyor that answers nonsense, or nothing: what the strip above the pages says. Not kept as a file."""
    clusters, devices = conveyor()
    devices.append(device(0, 1, "Slave 1", base("Conveyor 7", 2)))
    parameters = {entry["number"]: entry for entry in devices[0].parameters}
    parameters[72]["values"] = [2]
    parameters[191]["values"] = ["1|2^3&4"]
    parameters[3002]["values"][2] = None
    parameters[3003]["values"][2] = None
    parameters[14]["values"] = [None]
    parameters[7]["values"] = [None]
    parameters[350]["values"] = [30]
    parameters[349]["values"][0] = 21
    parameters[352]["values"][1] = None
    parameters[345]["values"][0] = None
    for number, level in ((3002, 2), (3003, 2), (357, 3), (366, 3)):
        parameters[number]["level"] = level
    return clusters, devices


def compact(value):
    return json.dumps(value, ensure_ascii=False, separators=(",", ":"))


def render(clusters, devices, access_level=3):
    lines = ["{", f'  "accessLevel": {access_level},', '  "clusters": [']
    lines.append(",\n".join("    " + compact({"index": i, "description": d}) for i, d in clusters))
    lines += ["  ],", '  "devices": [']
    blocks = []
    for dev in devices:
        block = ["    {"] + [f'      "{key}": {compact(value)},' for key, value in dev.head.items()]
        block.append('      "parameters": [')
        block.append(",\n".join("        " + compact(entry) for entry in dev.parameters))
        blocks.append("\n".join(block + ["      ]", "    }"]))
    return "\n".join(lines + [",\n".join(blocks), "  ]", "}"]) + "\n"


def main():
    if sys.argv[1:] == ["--odd"]:
        sys.stdout.write(render(*odd(), access_level=2))
        return
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    for name, make in (("conveyor", conveyor), ("tunnel", tunnel), ("tiny", tiny), ("bare", bare)):
        with open(os.path.join(folder, name + ".json"), "w", encoding="utf-8", newline="\n") as out:
            out.write(render(*make()))


if __name__ == "__main__":
    main()
