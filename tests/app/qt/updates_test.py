#!/usr/bin/env python3
"""Checks for updates of the running program, against a server of our own.

updates_test.py PROGRAM PROVIDER VERSION. The program is one whose build names a feed. Its name
leads nowhere but through the proxy that the environment names, and the certificate is one that the
same environment trusts. Runs below `umockdev-wrapper`.
"""

import base64
import http.server
import pathlib
import shlex
import socketserver
import ssl
import subprocess
import tempfile
import threading

from desktop_case import DesktopCase

HOST = "updates.velotap.test"
PAGE = "https://velotap.test/get?version=new"
# The private half of the key in feed_source.cpp, and what stands before it in its file.
SEED = b"velotap's tests sign with this  "
PRIVATE_KEY = bytes.fromhex("302e020100300506032b657004220420") + SEED
CHECK = "Check for Updates…"
AVAILABLE = "A new version of Velotap is available"
CURRENT = "Velotap is up to date"
FAILED = "The check for updates failed"


def openssl(*words):
    return subprocess.run(["openssl", *words], capture_output=True, check=True).stdout


def signature_of(text, folder):
    (folder / "key").write_bytes(PRIVATE_KEY)
    (folder / "text").write_bytes(text)
    return base64.b64encode(openssl("pkeyutl", "-sign", "-rawin", "-keyform", "DER",
                                    "-inkey", folder / "key", "-in", folder / "text"))


class Server:
    """Answers what it is told to; `answer` is a feed, or nothing for no answer at all."""

    def __init__(self, folder):
        self.folder = folder
        self.answer = None
        self.asked = []
        self.certificate = folder / "certificate"
        openssl("req", "-x509", "-newkey", "rsa:2048", "-nodes", "-days", "2", "-subj",
                f"/CN={HOST}", "-addext", f"subjectAltName=DNS:{HOST}", "-keyout", folder / "private",
                "-out", self.certificate)
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(self.certificate, folder / "private")
        outer = self

        class Handler(http.server.BaseHTTPRequestHandler):
            def do_CONNECT(self):
                if self.path != f"{HOST}:443" or outer.answer is None:
                    self.send_error(502)
                    return
                self.send_response(200)
                self.end_headers()
                with context.wrap_socket(self.connection, server_side=True) as tunnel:
                    self.serve(tunnel)
                self.close_connection = True

            @staticmethod
            def serve(tunnel):
                request = tunnel.recv(65536).decode()
                outer.asked.append(request.splitlines()[0])
                head = f"HTTP/1.1 200 OK\r\nContent-Length: {len(outer.answer)}\r\n\r\n"
                tunnel.sendall(head.encode() + outer.answer)

            def log_message(self, *_):
                pass

        class Threads(socketserver.ThreadingMixIn, http.server.HTTPServer):
            daemon_threads = True

            def handle_error(self, *_):
                pass  # whoever hangs up early has had enough

        self.server = Threads(("127.0.0.1", 0), Handler)
        threading.Thread(target=self.server.serve_forever, daemon=True).start()
        proxy = f"http://127.0.0.1:{self.server.server_port}"
        self.environment = {"https_proxy": proxy, "HTTPS_PROXY": proxy, "no_proxy": "",
                            "CURL_CA_BUNDLE": str(self.certificate)}

    def announce(self, version, page=PAGE, changed=None):
        text = f"velotap-updates 1\nversion {version}\npage {page}\n".encode()
        signature = signature_of(text, self.folder)
        self.answer = (changed(text) if changed else text) + b"signature " + signature + b"\n"

    def close(self):
        self.server.shutdown()
        self.server.server_close()


class UpdatesTest(DesktopCase):
    arguments = ("program_path", "provider", "version")

    def setUp(self):
        folder = pathlib.Path(self.enterContext(
            tempfile.TemporaryDirectory(prefix="velotap-feed-")))
        self.server = Server(folder)
        self.addCleanup(self.server.close)
        self.opened = folder / "opened"
        opener = folder / "bin/xdg-open"
        opener.parent.mkdir()
        opener.write_text(f'#!/bin/sh\necho "$1" >> {shlex.quote(str(self.opened))}\n')
        opener.chmod(0o755)
        self.make_devices(plugged=1)
        self.make_host()
        self.start({"accessibilitySetupPresented": True}, PATH=f"{opener.parent}:/usr/bin:/bin",
                   **self.server.environment)
        self.item = self.await_item()

    def check(self, title, button, says):
        row = self.item.row(CHECK)
        self.assertTrue(row.enabled, "this build names a feed")
        row.choose()
        self.comes(lambda: title in self.windows.titles(), title)
        self.comes(lambda: self.windows.find(says, window=title), says)
        self.windows.press(button, window=title)
        self.comes(lambda: title not in self.windows.titles(), f"{button} closes it")

    def failed(self):
        self.check(FAILED, "OK", "There was no answer, or it could not be trusted. "
                                 "Please try again later.")

    def newer(self, button):
        self.check(AVAILABLE, button,
                   f"Version 99.1 is available; you have version {self.version}.")

    def test_what_the_feed_says_is_told(self):
        self.server.announce("99.1")
        self.newer("Later")
        self.assertEqual(self.server.asked, ["GET /feed HTTP/1.1"])
        self.assertFalse(self.opened.exists())
        self.newer("Open Download Page")
        self.comes(lambda: self.opened.exists() and self.opened.read_text() == f"{PAGE}\n",
                   "its page opens")
        for version in (self.version, "0.0.1"):
            self.server.announce(version)
            self.check(CURRENT, "OK", f"You have version {self.version}.")

    def test_what_cannot_be_trusted_is_not(self):
        self.server.announce("99.1", changed=lambda text: text.replace(b"99.1", b"99.2"))
        self.failed()
        self.server.announce("99.1", page="http://velotap.test/plain")
        self.failed()
        self.server.announce("99.1")
        self.server.answer = self.server.answer.replace(b"signature ", b"signature A")
        self.failed()
        self.server.answer = b""
        self.failed()
        self.server.announce("99.1", page=PAGE + "x" * 65536)
        self.failed()
        self.server.announce("99.1")
        self.newer("Later")

    def test_without_an_answer_it_can_be_asked_again(self):
        self.failed()
        self.assertEqual(self.server.asked, [])
        self.server.announce("99.1")
        # Of somebody else: nobody is asked for a feed who cannot prove the name.
        self.server.certificate.write_bytes(b"")
        self.failed()
        self.assertEqual(self.server.asked, [])


if __name__ == "__main__":
    UpdatesTest.main()
