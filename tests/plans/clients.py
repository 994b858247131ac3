"""The clients under test: the command line, and the editor in the bench host under Wine."""
import pathlib
import re
import shutil
import subprocess

from judge import FAILURE, OPEN, SUCCESS, Outcome

HANG = 300  # seconds; far longer than any run takes on a busy machine
HEADER = "/OutputFormat/Header"

# The expected box is that of a failed connection, "Communication error 504", or that of a failed save, "MIBSAP Error 504".
SCRIPT = """show
activate
select Format Definition
focus mbeHeader
key Ctrl+A
type <STX>1
expect-box rror answer ok
press cmdApply
{drops}print enabled cmdApply
print value lblHint
print host 6
close
terminate
"""


def run(command):
    """Returns exit status, output and error output; the status is None for a program that hangs."""
    with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
        try:
            out, err = process.communicate(timeout=HANG)
        except subprocess.TimeoutExpired:
            process.kill()
            out, err = process.communicate()
            return None, out.decode("utf-8", "replace"), err.decode("utf-8", "replace")
    return process.returncode, out.decode("utf-8", "replace"), err.decode("utf-8", "replace")


class CommandLine:
    def __init__(self, program, sample, folder):
        self.program, self.sample, self.folder = program, pathlib.Path(sample), pathlib.Path(folder)

    def meet(self, plan, device, wanted):
        file = self.folder / f"{device.port}.json"
        shutil.copy(self.sample, file)
        status, out, err = run([self.program, "apply", str(file), "--to", f"127.0.0.1:{device.port}",
                                "--timeout", str(plan.patience)])
        faults = [] if status in (0, 4) else [f"ended with {status}"]
        if file.read_bytes() != self.sample.read_bytes():
            faults.append("the file changed")
        file.unlink()
        told = err.removesuffix("\n") if status else out.removesuffix("\n")
        number = re.search(r"(\d+) of \d+ parameters written", err) or re.search(r"^(\d+) parameters written", out)
        everything = re.search("all parameters (written|accepted)", err)
        if not number and not everything:
            faults.append("the message does not say how much was written")
        written = device.total if everything else int(number[1]) if number else 0
        report = SUCCESS if status == 0 else OPEN if everything else FAILURE
        return Outcome(report, told, list(wanted)[:written], faults)


class Editor:
    def __init__(self, host, component, sample, folder):
        self.host, self.component, self.sample, self.folder = host, component, sample, pathlib.Path(folder)

    def meet(self, plan, device, wanted):
        script = self.folder / "plan.play"
        script.write_text(SCRIPT.format(drops="meanwhile menu Drop Connection\n" * plan.drops), encoding="utf-8")
        # A low level, because a save of few parameters deviates as well as a long one.
        status, out, err = run(["wine", self.host, self.sample, "--component", self.component, "--level", "1",
                                "--time-limit", "120", "--device-at", f"127.0.0.1:{device.port}",
                                "--play", str(script), "--shots", str(self.folder)])
        lines = out.replace("\r", "").splitlines()
        boxes = [line.removeprefix("box: ") for line in lines if line.startswith("box: ")]
        said = answers(lines)
        mirrored = [re.match(r"log:   Writing (\S+) = ", line)[1]
                    for line, behind in zip(lines, lines[1:])
                    if line.startswith("log:   Writing ") and behind == "log:   Write OK!"]
        if said.get("print host 6") == "0231" and HEADER not in mirrored:
            mirrored.append(HEADER)
        apply = said.get("print enabled cmdApply")
        hint = said.get("print value lblHint", "")
        # A session that does not end is no failed save, but the hint line must leave open what the device holds.
        report = FAILURE if boxes or apply != "disabled" else OPEN if "check what it holds" in hint else SUCCESS
        return Outcome(report, " // ".join(boxes or [hint]), mirrored,
                       faults_of(lines, status, apply, boxes, err))


def answers(lines):
    """Maps each "print" command of the script to its result."""
    return {command.removeprefix("> "): found.removeprefix("= ")
            for command, found in zip(lines, lines[1:])
            if command.startswith("> print") and found.startswith("= ")}


def faults_of(lines, status, apply, boxes, err):
    # The script expects a message box in any case, and complains at its end when a save succeeded without one.
    quiet = status == 1 and not boxes and any("never came" in line for line in lines)
    faults = []
    if not (status == 0 or quiet):
        reasons = [line for line in lines if line.startswith("failed: ")] or err.splitlines()[-1:]
        faults.append(f"ended with {status}" + "".join(f", {line}" for line in reasons))
    if "terminated: 0 host objects in use" not in lines:
        faults.append("the component was not released")
    if boxes and apply == "disabled":
        faults.append("Apply is disabled although a box reports a failure")
    return faults
