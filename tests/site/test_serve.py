"""`site/serve` starts, stays on loopback and ends."""

import os
import pathlib
import signal
import socket
import subprocess
import sys
import tempfile
import unittest

import served


def listens(port):
    with socket.socket() as probe:
        probe.settimeout(5)
        return probe.connect_ex(("127.0.0.1", port)) == 0


class Serve(unittest.TestCase):
    def test_it_ends_on_a_signal_and_leaves_nothing_behind(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(signal=number), served.Served() as site:
                self.assertEqual(site.request("")[0], 200)
                self.assertTrue(any(site.state.iterdir()))
                site.process.send_signal(number)
                self.assertEqual(site.process.wait(10), 0)
                self.assertFalse(listens(site.port))
                self.assertEqual(list(site.state.iterdir()), [])

    def test_it_ends_with_the_process_that_started_it(self):
        with tempfile.TemporaryDirectory() as folder:
            # The middle process starts the server, passes on its address and waits to be killed.
            middle = subprocess.Popen(
                [
                    sys.executable,
                    "-c",
                    "import subprocess, sys, time\n"
                    f"child = subprocess.Popen([{str(served.SERVE)!r}], stdout=subprocess.PIPE)\n"
                    "print(child.stdout.readline().decode().strip(), flush=True)\n"
                    "time.sleep(600)\n",
                ],
                stdout=subprocess.PIPE,
                text=True,
                env={**os.environ, "TMPDIR": folder},
            )
            try:
                port = int(middle.stdout.readline().rstrip("/\n").rpartition(":")[2])
                self.assertTrue(listens(port))
            finally:
                middle.kill()
                middle.wait()
                middle.stdout.close()
            self.assertTrue(served.until(lambda: not listens(port)))
            self.assertTrue(served.until(lambda: not os.listdir(folder)))

    def test_the_server_ends_when_the_script_is_killed(self):
        with served.Served() as site:
            site.process.kill()
            site.process.wait()
            self.assertTrue(served.until(lambda: not listens(site.port)))

    def test_it_uses_the_given_port(self):
        with served.Served() as first:
            port = first.port
        with served.Served(str(port)) as site:
            self.assertEqual(site.base, f"http://127.0.0.1:{port}/")
            self.assertEqual(site.request("Contact")[0], 200)

    def test_it_reports_a_port_that_is_in_use(self):
        with served.Served() as site:
            second = subprocess.run(
                [served.SERVE, str(site.port)],
                stdin=subprocess.DEVNULL,
                capture_output=True,
                text=True,
                timeout=30,
            )
            self.assertEqual((second.returncode, second.stdout), (1, ""))
            self.assertIn("is taken", second.stderr)
            self.assertEqual(site.request("")[0], 200)

    def test_it_listens_on_loopback_only(self):
        with served.Served() as site:
            # Lines of the kernel's tables: the second column is the local address, 0A is LISTEN.
            port = f":{site.port:04X}"
            listening = [
                line.split()[1]
                for table in ("tcp", "tcp6")
                for line in pathlib.Path("/proc/net", table).read_text().splitlines()[1:]
                if line.split()[3] == "0A" and line.split()[1].endswith(port)
            ]
            self.assertEqual(listening, ["0100007F" + port])

    def test_two_can_run_at_the_same_time(self):
        with served.Served() as one, served.Served() as other:
            self.assertNotEqual(one.port, other.port)
            self.assertEqual(one.request("")[0], other.request("")[0])

    def test_it_reports_a_site_that_is_not_built(self):
        with tempfile.TemporaryDirectory() as folder:
            run = subprocess.run(
                [served.SERVE],
                stdin=subprocess.DEVNULL,
                capture_output=True,
                text=True,
                timeout=30,
                env={**os.environ, "VANTREO_BUILD": folder},
            )
        self.assertEqual((run.returncode, run.stdout), (1, ""))
        self.assertIn("there is no site in", run.stderr)


if __name__ == "__main__":
    unittest.main()
