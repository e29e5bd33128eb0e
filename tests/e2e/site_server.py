"""A web server on loopback whose answers a test defines."""

import contextlib
import socket
import threading
import time
from collections.abc import Callable

Answer = Callable[[socket.socket], None]


def send(reply: bytes) -> Answer:
    return lambda connection: connection.sendall(reply)


def http_reply(body: str = "", status: str = "200 OK", *headers: str) -> bytes:
    lines = (f"HTTP/1.0 {status}", f"Content-Length: {len(body)}", *headers)
    return ("\r\n".join(lines) + "\r\n\r\n" + body).encode("ascii")


def send_after(signal: threading.Event, reply: bytes) -> Answer:
    def answer(connection: socket.socket) -> None:
        signal.wait()
        connection.sendall(reply)

    return answer


def send_and_stay(reply: bytes) -> Answer:
    """Keeps the connection open until the other side closes it or the server ends."""

    def answer(connection: socket.socket) -> None:
        connection.sendall(reply)
        stay_silent(connection)

    return answer


def stay_silent(connection: socket.socket) -> None:
    """Sends nothing until the other side closes the connection or the server ends."""
    while connection.recv(1024):
        pass


def drip(reply: bytes) -> Answer:
    """Sends a byte a second until the other side closes the connection or the server ends."""

    def answer(connection: socket.socket) -> None:
        connection.settimeout(1)
        for byte in reply:
            with contextlib.suppress(TimeoutError):
                if not connection.recv(1024):
                    return
            connection.sendall(bytes([byte]))

    return answer


class SiteServer:
    """Accepts one connection after the other; a context manager."""

    def __init__(self, answer: Answer) -> None:
        self._answer = answer
        self._listener = socket.create_server(("127.0.0.1", 0))
        self._connection: socket.socket | None = None
        self.host = "{}:{}".format(*self._listener.getsockname())
        self.request_lines: list[str] = []
        # Readings of the monotonic clock.
        self.accepted: list[float] = []
        self.answered: list[float] = []  # for an answer that waits for it, when the other side left
        self.ending = threading.Event()
        self._thread = threading.Thread(target=self._serve)
        self._thread.start()

    @property
    def address(self) -> str:
        return f"http://{self.host}/"

    def __enter__(self) -> "SiteServer":
        return self

    def __exit__(self, *_: object) -> None:
        self.ending.set()
        for open_socket in (self._listener, self._connection):
            with contextlib.suppress(AttributeError, OSError):
                open_socket.shutdown(socket.SHUT_RDWR)
        self._thread.join()
        self._listener.close()

    def _serve(self) -> None:
        while not self.ending.is_set():
            # Either side may close at any time.
            with contextlib.suppress(OSError), self._listener.accept()[0] as self._connection:
                self.accepted.append(time.monotonic())
                with self._connection.makefile("r", encoding="ascii", newline="\r\n") as head:
                    self.request_lines.append(head.readline().removesuffix("\r\n"))
                    while head.readline().strip():
                        pass
                with contextlib.suppress(ConnectionError):
                    self._answer(self._connection)
                self.answered.append(time.monotonic())
