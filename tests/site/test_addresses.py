"""The answers of the real nginx with the published configuration."""

import io
import os
import pathlib
import re
import shutil
import socket
import subprocess
import tarfile
import tempfile
import unittest

import pages
import served

# The program finds the number by these markers.
REPLY_PATTERN = r"CURRENT_VERSION=>([0-9/.]*)b?<=CURRENT_VERSION"


class Addresses(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.site = served.Served()
        cls.addClassCleanup(cls.site.close)

    def assert_page(self, path):
        status, headers, body = self.site.request(path)
        self.assertEqual(status, 200)
        self.assertEqual(headers["Content-Type"], "text/html; charset=utf-8")
        self.assertTrue(body.startswith(b"<!DOCTYPE html>"))
        return body

    def test_every_page_that_the_program_opens_is_html(self):
        for path in (*pages.OPENED, *pages.FRONT.values()):
            with self.subTest(path=path):
                self.assertEqual(self.assert_page(path), pages.file_of(path).read_bytes())

    def test_a_query_or_a_doubled_slash_changes_nothing(self):
        for path in pages.OPENED:
            with self.subTest(path=path):
                expected = pages.file_of(path).read_bytes()
                self.assertEqual(self.assert_page(path + "?from=program&x=%C3%A9"), expected)
                self.assertEqual(self.assert_page("/" + path), expected)

    def test_the_version_reply_has_the_version_of_the_build(self):
        for query in ("", "?version=1.24&os=MacOSX", "?version=0.10&os=Linux"):
            with self.subTest(query=query):
                status, headers, body = self.site.request(pages.VERSION_REPLY + query)
                self.assertEqual(status, 200)
                self.assertEqual(headers["Content-Type"], "text/plain; charset=utf-8")
                # The program reads one block of this size.
                self.assertLessEqual(len(body), 1024)
                found = re.search(REPLY_PATTERN, body.decode("utf-8"))
                self.assertEqual(found.group(1), pages.project_version())

    def test_the_download_pages_have_the_version_of_the_build(self):
        version = pages.project_version()
        for path in ("Download", "FR/Telecharger"):
            text = self.assert_page(path).decode("utf-8")
            self.assertIn(f"<strong>{version}</strong>", text)
            self.assertEqual(set(re.findall(r"vantreo-([0-9.]+)\.tar", text)), {version})

    def test_the_archive_contains_the_sources_of_that_version(self):
        name = f"vantreo-{pages.project_version()}"
        status, headers, body = self.site.request(name + ".tar.gz")
        self.assertEqual(status, 200)
        self.assertEqual(headers["Content-Type"], "application/gzip")
        with tarfile.open(fileobj=io.BytesIO(body)) as archive:
            files = {member.name.partition("/")[2] for member in archive}
        self.assertLessEqual(
            {"run", "test", "CMakeLists.txt", "LICENSE", "src/i18n/table.cpp"}, files
        )
        self.assertFalse([file for file in files if file.startswith("build/")])

    def test_each_file_has_its_type(self):
        for path, kind in {
            "style.css": "text/css; charset=utf-8",
            "mark.svg": "image/svg+xml; charset=utf-8",
            "window.png": "image/png",
            "LICENSE.txt": "text/plain; charset=utf-8",
        }.items():
            status, headers, _ = self.site.request(path)
            self.assertEqual((status, headers["Content-Type"]), (200, kind))

    def test_an_unknown_address_gets_the_404_page(self):
        for path in ("Nowhere", "FR/Nulle_part", "a/b/c", "Download.html", "404.html"):
            with self.subTest(path=path):
                status, headers, body = self.site.request(path)
                self.assertEqual(status, 404)
                self.assertEqual(headers["Content-Type"], "text/html; charset=utf-8")
                self.assertEqual(body, (pages.WWW / "404.html").read_bytes())

    def test_the_french_front_page_is_found_without_its_slash(self):
        status, headers, _ = self.site.request("FR")
        self.assertEqual((status, headers["Location"]), (301, "/FR/"))

    def test_nothing_outside_the_site_is_served(self):
        for path in (
            "../CMakeCache.txt",
            "%2e%2e/%2e%2e/CMakeCache.txt",
            "FR/../../../../etc/passwd",
        ):
            self.assertIn(self.site.request(path)[0], (400, 404))

    def test_every_answer_has_the_security_headers(self):
        for path in ("", "Download", pages.VERSION_REPLY, "Nowhere"):
            with self.subTest(path=path):
                headers = self.site.request(path)[1]
                policy = headers["Content-Security-Policy"]
                self.assertIn("default-src 'none'", policy)
                self.assertIn("frame-ancestors 'none'", policy)
                self.assertEqual(headers["X-Content-Type-Options"], "nosniff")
                self.assertEqual(headers["Referrer-Policy"], "no-referrer")
                self.assertNotRegex(headers["Server"], r"\d")


class Publishing(unittest.TestCase):
    """The published server block, on a loopback port instead of port 80."""

    def test_the_published_server_block_serves_the_site(self):
        with socket.socket() as free:
            free.bind(("127.0.0.1", 0))
            port = free.getsockname()[1]
        sources = pages.SOURCES / "site/nginx"
        block = (sources / "vantreo.conf").read_text()
        for pattern, text in (
            (r"listen +80;", f"listen 127.0.0.1:{port};"),
            (r"listen +\[::\]:80;", ""),
            (r"root +/var/www/vantreo;", "root www;"),
        ):
            block, count = re.subn(pattern, text, block)
            self.assertEqual(count, 1, pattern)
        with tempfile.TemporaryDirectory() as folder:
            home = pathlib.Path(folder)
            (home / "www").symlink_to(pages.WWW.resolve())
            (home / "snippets").mkdir()
            shutil.copy(sources / "vantreo-pages.conf", home / "snippets")
            temporary = "".join(
                f"{kind}_temp_path {kind};"
                for kind in ("client_body", "proxy", "fastcgi", "uwsgi", "scgi")
            )
            (home / "nginx.conf").write_text(
                "daemon off; master_process off; pid nginx.pid; error_log stderr warn; events {}\n"
                f"http {{ access_log off; {temporary}\n{block}}}\n"
            )
            nginx = shutil.which("nginx", path=os.environ["PATH"] + ":/usr/sbin")
            server = subprocess.Popen(
                [nginx, "-p", folder + "/", "-e", "stderr", "-c", folder + "/nginx.conf"],
                stderr=subprocess.PIPE,
                text=True,
            )
            try:
                started = served.until(
                    lambda: (home / "nginx.pid").exists() or server.poll() is not None
                )
                self.assertTrue(started and server.poll() is None)
                for path, kind in (("Download", "text/html"), (pages.VERSION_REPLY, "text/plain")):
                    status, headers, body = served.request(
                        port, "/" + path, host="www.vantreo.example"
                    )
                    self.assertEqual((status, headers.get_content_type()), (200, kind))
                    self.assertEqual(body, pages.file_of(path).read_bytes())
            finally:
                server.terminate()
                warnings = server.communicate(timeout=30)[1]
            self.assertEqual(warnings, "")


if __name__ == "__main__":
    unittest.main()
