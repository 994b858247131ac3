"""A device written from docs/device-protocol.md alone, so that it shares no code and no mistake with the clients under test.

It stores what it receives and answers as the document says, except where its plan deviates.
"""
import socket
import struct
import threading

OK = "OK OK"
REFUSAL = "ERR 310 refused by plan"


class Request:
    def __init__(self, text):
        self.verb, *self.fields = text.split(" ")
        self.is_set = self.verb in ("SETN", "SETS")
        self.entry = self.fields[0] if self.is_set and self.fields else ""
        self.value = self.fields[1] if self.is_set and len(self.fields) > 1 else ""


class Device:
    """A context manager that listens on a free port. `total` is the number of sets in a complete save."""

    def __init__(self, plan, total=0):
        self.plan, self.total = plan, total
        self.requests = []
        self.stored = {}    # entry: value, as received
        self.tries = {}     # entry: number of requests
        self.deviated = False
        self.held = []      # answers that the plan sends later
        self.greeted = self.in_session = False
        self.link = None
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.port = self.listener.getsockname()[1]
        self.thread = threading.Thread(target=self.serve, daemon=True)

    def __enter__(self):
        self.thread.start()
        return self

    def __exit__(self, *_):
        try:
            self.listener.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass
        self.thread.join(30)
        self.listener.close()

    def serve(self):
        while True:
            try:
                self.link, _ = self.listener.accept()
            except OSError:
                return
            self.greeted = self.in_session = False
            self.held = []
            self.link.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
            try:
                self.talk()
            except OSError:
                pass  # the client or the plan closed the connection
            self.link.close()

    def talk(self):
        self.plan.on_arrival(self)
        rest = b""
        while chunk := self.link.recv(65536):
            *lines, rest = (rest + chunk).split(b"\n")
            for line in lines:
                request = Request(line.decode("utf-8").removesuffix("\r"))
                self.requests.append(request)
                self.tries[request.entry] = self.tries.get(request.entry, 0) + 1
                self.plan.deliver(self, request, self.answer(request))
                if request.verb == "BYE":
                    self.link.shutdown(socket.SHUT_WR)
        self.plan.on_leave(self)

    def answer(self, request):
        """Executes the request and returns the answer of an honest device. A save needs no other verbs."""
        wanted = {"HELLO": 2, "SESSION": 2, "END": 1, "SETN": 2, "SETS": 2, "BYE": 0}.get(request.verb)
        if wanted != len(request.fields) or self.greeted == (request.verb == "HELLO"):
            return "ERR 405 malformed\\sor\\sout\\sof\\sturn"
        if request.is_set:
            return self.answer_set(request)
        self.greeted = True
        self.in_session = request.verb == "SESSION"
        return OK

    def answer_set(self, request):
        if not self.in_session:
            return "ERR 402 no\\ssession"
        refusal = self.plan.refuses(self, request)
        if refusal:
            self.deviated = True
            return refusal
        self.stored[request.entry] = request.value
        return OK

    # Actions of a plan on the connection.

    def say(self, *lines):
        self.send("".join(line + "\n" for line in lines).encode("utf-8"))

    def deviate(self, *lines):
        self.deviated = True
        self.say(*lines)

    def send(self, data):
        self.link.sendall(data)

    def disconnect(self):
        self.deviated = True
        self.link.shutdown(socket.SHUT_RDWR)

    def reset(self):
        self.deviated = True
        self.link.setsockopt(socket.SOL_SOCKET, socket.SO_LINGER, struct.pack("ii", 1, 0))
        self.link.close()

    def stop_sending(self):
        self.deviated = True
        self.link.shutdown(socket.SHUT_WR)

    # Position of a request in the save.

    def place(self):
        """Number of the current set, from 1; a repeated one keeps its number."""
        return len([entry for entry in self.tries if entry])

    def is_last(self, request):
        return request.is_set and self.place() == self.total

    def is_middle(self, request):
        return request.is_set and self.place() == self.total // 2
