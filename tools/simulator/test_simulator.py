#!/usr/bin/env python3
"""Self-test of the service simulator: starts it on a free port with a small
database of its own and checks every endpoint and fault mode over real HTTP."""

import base64
import http.client
import io
import json
import os
import shutil
import signal
import socket
import sqlite3
import struct
import subprocess
import sys
import tempfile
import time
import unittest
import urllib.parse
import zipfile
import zlib

HERE = os.path.dirname(os.path.abspath(__file__))
SIMULATOR = os.path.join(HERE, "simulator.py")

sys.path.insert(0, HERE)
from simulator import DATABASE_NAME, DESKTOP_POST_PATHS, MAX_RECORDS, State  # noqa: E402

DATABASE_SQL = """
CREATE TABLE v (vid TEXT, name TEXT, gid TEXT, leaflet TEXT);
CREATE TABLE vg (id INTEGER, version_id TEXT, kind_id INTEGER, date TEXT, path TEXT);
CREATE TABLE cfg (key TEXT, val TEXT);
INSERT INTO v VALUES ('1001', 'Apap', '7', 'ulotki\\apap_500.pdf');
INSERT INTO v VALUES ('1002', 'Ibuprom', '10', 'ulotki#ibuprom.pdf');
INSERT INTO v VALUES ('1003', 'Bez ulotki', '11', '');
INSERT INTO vg VALUES (1, '1001', 1, '2020-01-02', 'gif\\2020\\wstrzymanie_1001.pdf');
INSERT INTO cfg VALUES ('data_version', '1600000000');
INSERT INTO cfg VALUES ('list_date', '2020-03-01');
"""

START_TIMEOUT = 15


def start_simulator(*arguments):
    process = subprocess.Popen([sys.executable, SIMULATOR, "--port", "0"] + list(arguments),
                               stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    words = process.stdout.readline().split()
    if len(words) != 2 or words[0] != "LISTENING":
        process.kill()
        raise RuntimeError("simulator did not start: %r" % words)
    return process, int(words[1])


def stop_simulator(process):
    process.terminate()
    code = process.wait(10)
    process.stdout.close()
    return code


def png_size(data):
    if data[:8] != b"\x89PNG\r\n\x1a\n" or data[12:16] != b"IHDR":
        return None
    return struct.unpack(">II", data[16:24])


def png_pixels_ok(data):
    """Walks the chunks, checks every CRC and inflates the picture data."""
    position, idat = 8, b""
    while position < len(data):
        length, kind = struct.unpack(">I4s", data[position:position + 8])
        chunk = data[position + 8:position + 8 + length]
        crc, = struct.unpack(">I", data[position + 8 + length:position + 12 + length])
        if zlib.crc32(kind + chunk) & 0xffffffff != crc:
            return False
        if kind == b"IDAT":
            idat += chunk
        position += 12 + length
    width, height = png_size(data)
    return len(zlib.decompress(idat)) == height * (1 + 3 * width)


class SimulatorTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.mkdtemp(prefix="quillard-simtest-")
        cls.database = os.path.join(cls.folder, "demo.sqlite3")
        connection = sqlite3.connect(cls.database)
        connection.executescript(DATABASE_SQL)
        connection.commit()
        connection.close()
        cls.state_dir = os.path.join(cls.folder, "state")
        cls.process, cls.port = start_simulator("--db", cls.database, "--state-dir", cls.state_dir)

    @classmethod
    def tearDownClass(cls):
        stop_simulator(cls.process)
        shutil.rmtree(cls.folder, ignore_errors=True)

    def setUp(self):
        self.assertEqual(self.request("/_sim/reset")[0], 200)

    def request(self, path, body=None, method=None, headers=None, timeout=10):
        """(status, headers, body) of one request; redirects are not followed."""
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=timeout)
        try:
            connection.request(method or ("POST" if body is not None else "GET"), path, body=body,
                               headers=headers or {})
            reply = connection.getresponse()
            return reply.status, dict(reply.getheaders()), reply.read()
        finally:
            connection.close()

    def json(self, path, body=None, **keywords):
        status, _, data = self.request(path, body, **keywords)
        self.assertEqual(status, 200, path)
        return json.loads(data)

    def fault(self, key, mode, **extra):
        query = urllib.parse.urlencode(dict(key=key, mode=mode, **extra))
        self.assertEqual(self.json("/_sim/fault?" + query)["status"], "ok")

    def records(self, path):
        return self.json("/_sim/records?" + urllib.parse.urlencode({"path": path}))

    # --- web site, viewer, echo -------------------------------------------

    def test_pages(self):
        for path in ("/", "/chpl/"):
            status, headers, body = self.request(path)
            self.assertEqual(status, 200, path)
            self.assertTrue(headers["Content-Type"].startswith("text/html"))
            self.assertIn(b"<html", body)
        self.assertEqual(self.request("/nie/ma/takiej/strony")[0], 404)

    def test_echo_describes_request(self):
        echo = self.json("/_sim/echo?x=1", b"abcdef")
        self.assertEqual((echo["method"], echo["body_length"], echo["query"]), ("POST", 6, "x=1"))

    # --- desktop API --------------------------------------------------------

    def test_program_version_list_and_installer(self):
        self.assertEqual(self.request("/desktop/app_version.php?a=version")[2], b"1.6.5.0")
        self.json("/_sim/set?key=app_version&value=1.7.0.0")
        self.assertEqual(self.request("/desktop/app_version.php?a=version")[2], b"1.7.0.0")
        listing = self.json("/desktop/app_version.php?a=list")
        name = listing[1][0][1][1][1]
        self.assertEqual(name, "quillard-setup-1.7.0.0.exe")
        status, _, first = self.request("/desktop/app_version.php?a=file&f=" + name)
        self.assertEqual(status, 200)
        self.assertTrue(first.startswith(b"MZ"))
        self.assertEqual(self.request("/desktop/app_version.php?a=file&f=" + name)[2], first)
        for other in ("", "inny.exe", "../" + name):
            self.assertEqual(self.request("/desktop/app_version.php?a=file&f=" + urllib.parse.quote(other))[0], 404)

    def test_installer_settings(self):
        folder = tempfile.mkdtemp(prefix="quillard-installer-", dir=self.folder)
        self.json("/_sim/set?key=installer_name&value=setup.sh")
        self.assertEqual(self.json("/desktop/app_version.php?a=list")[1][0][1][1][1], "setup.sh")
        marker = os.path.join(folder, "a b's marker")
        for setting, written in (("", os.path.join(folder, "installer-started")), (marker, marker)):
            self.json("/_sim/set?" + urllib.parse.urlencode({"key": "installer_marker", "value": setting}))
            status, _, script = self.request("/desktop/app_version.php?a=file&f=setup.sh")
            self.assertEqual(status, 200)
            self.assertTrue(script.startswith(b"#!/bin/sh\n"))
            path = os.path.join(folder, "setup.sh")
            with open(path, "wb") as file:
                file.write(script)
            subprocess.run(["/bin/sh", path], check=True)
            with open(written) as file:
                self.assertEqual(file.read(), "started\n")
        self.json("/_sim/set?key=installer_name&value=../x.sh")
        self.assertEqual(self.request("/desktop/app_version.php?a=file&f=../x.sh")[0], 200)
        self.json("/_sim/set?key=installer_body&value=empty")
        self.assertEqual(self.request("/desktop/app_version.php?a=file&f=../x.sh")[:3:2], (200, b""))
        self.json("/_sim/set?" + urllib.parse.urlencode({"key": "app_list", "value": '[0,[[0,[0,[0,"a.exe"]]]]]'}))
        self.assertEqual(self.request("/desktop/app_version.php?a=list")[2], b'[0,[[0,[0,[0,"a.exe"]]]]]')
        self.json("/_sim/reset")
        self.assertEqual(self.json("/desktop/app_version.php?a=list")[1][0][1][1][1], "quillard-setup-1.6.5.0.exe")

    def test_post_endpoints_answer_envelope_and_record(self):
        for path in DESKTOP_POST_PATHS:
            body = json.dumps({"app_key": "{6f9619ff-8b86-d011-b42d-00c04fc964ff}", "path": path},
                              separators=(",", ":")).encode()
            self.assertEqual(self.json(path, body), {"status": "success", "message": ""}, path)
            records = self.records(path)
            self.assertEqual(len(records), 1, path)
            self.assertEqual((records[0]["method"], records[0]["body"]), ("POST", body.decode()))

    def test_post_endpoints_refuse_bad_bodies(self):
        cases = {"not json": b"app_key=1", "array": b'["app_key"]', "no app_key": b'{"vid":"1"}',
                 "empty": b""}
        for name, body in cases.items():
            answer = self.json("/desktop/usage/search.php", body)
            self.assertEqual(answer["status"], "error", name)
            self.assertTrue(answer["message"], name)
        self.assertEqual(len(self.records("/desktop/usage/search.php")), len(cases))

    def test_records_keep_order_query_and_headers(self):
        self.request("/desktop/usage/click.php", b'{"app_key":"1"}', headers={"X-Probe": "a"})
        self.request("/files/check.php?a=info&db=5")
        self.request("/desktop/usage/click.php", b'{"app_key":"2"}')
        clicks = self.records("/desktop/usage/click.php")
        self.assertEqual([r["body"] for r in clicks], ['{"app_key":"1"}', '{"app_key":"2"}'])
        self.assertEqual(clicks[0]["headers"]["X-Probe"], "a")
        self.assertEqual(self.records("/files/check.php")[0]["query"], "a=info&db=5")
        self.assertEqual(len(self.records("/files/check.php?a=info")), 1)
        self.assertEqual(self.records("/files/check.php?a=get"), [])
        self.assertEqual(len(self.records("/desktop/usage/*")), 2)
        self.assertEqual(len(self.json("/_sim/records")), 3)

    # --- Sentry -------------------------------------------------------------

    def test_sentry_store(self):
        auth = {"X-Sentry-Auth": "Sentry sentry_version=5,sentry_client=Raven-Qt/0.2,sentry_timestamp=1,"
                                 "sentry_key=0123456789abcdef0123456789abcdef,sentry_secret=x",
                "Content-Type": "application/json"}
        event = {"event_id": "{6f9619ff-8b86-d011-b42d-00c04fc964ff}", "message": "Http error"}
        answer = self.json("/api/16/store/", json.dumps(event, indent=4).encode(), headers=auth)
        self.assertEqual(answer, {"id": "6f9619ff8b86d011b42d00c04fc964ff"})
        stored = self.records("/api/16/store/")
        self.assertEqual(stored[0]["headers"]["X-Sentry-Auth"], auth["X-Sentry-Auth"])
        self.assertEqual(json.loads(stored[0]["body"]), event)
        self.assertEqual(self.request("/api/16/store/", b"{}")[0], 401)

    # --- data-file service --------------------------------------------------

    def test_database_offer(self):
        self.assertEqual(self.request("/files/check.php?a=info&db=1600000000")[2], b"1600086400")
        self.assertEqual(self.request("/files/check.php?a=info_refund&db=1600000000")[2], b"1#2020-03-01")
        self.json("/_sim/set?key=data_version&value=1700000000")
        self.json("/_sim/set?key=list_date&value=2020-04-01")
        self.assertEqual(self.request("/files/check.php?a=info&db=1600000000")[2], b"1700000000")
        self.assertEqual(self.request("/files/check.php?a=info_refund&db=1600000000")[2], b"1#2020-04-01")

        status, headers, data = self.request("/files/check.php?a=get&app=quillard_desktop&db=1600000000")
        self.assertEqual(status, 200)
        with zipfile.ZipFile(io.BytesIO(data)) as archive:
            self.assertEqual(archive.namelist(), ["corvane_quillard_desktop.sqlite3"])
            self.assertIsNone(archive.testzip())
            unpacked = os.path.join(self.folder, "unpacked.sqlite3")
            with open(unpacked, "wb") as out:
                out.write(archive.read("corvane_quillard_desktop.sqlite3"))
        connection = sqlite3.connect(unpacked)
        cfg = dict(connection.execute("SELECT key, val FROM cfg"))
        drugs = connection.execute("SELECT count(*) FROM v").fetchone()[0]
        connection.close()
        self.assertEqual(cfg, {"data_version": "1700000000", "list_date": "2020-04-01"})
        self.assertEqual(drugs, 3)
        # The demo database itself is left as it was.
        connection = sqlite3.connect(self.database)
        self.assertEqual(connection.execute("SELECT val FROM cfg WHERE key = 'data_version'").fetchone()[0],
                         "1600000000")
        connection.close()

    def test_spoiled_database_offer(self):
        for answer in ("x#2020-04-01\n", ""):
            self.json("/_sim/set?key=refund_answer&value=" + urllib.parse.quote(answer))
            self.assertEqual(self.request("/files/check.php?a=info_refund&db=1")[2], answer.encode())
        self.json("/_sim/set?key=archive&value=notdatabase")
        data = self.request("/files/check.php?a=get&db=1")[2]
        with zipfile.ZipFile(io.BytesIO(data)) as archive:
            self.assertIsNone(archive.testzip())
            self.assertFalse(archive.read(DATABASE_NAME).startswith(b"SQLite format 3"))
        self.json("/_sim/set?key=archive&value=badcrc")
        data = self.request("/files/check.php?a=get&db=1")[2]
        with zipfile.ZipFile(io.BytesIO(data)) as archive:
            self.assertEqual(archive.testzip(), DATABASE_NAME)

    def test_package_pictures(self):
        answer = self.json("/files/check.php?a=getImage&app=quillard&kind=desktop&id=7")
        picture = base64.b64decode(answer[0]["src"])
        self.assertIsNotNone(png_size(picture))
        self.assertTrue(png_pixels_ok(picture))
        again = self.json("/files/check.php?a=getImage&app=quillard&kind=desktop&id=7")
        self.assertEqual(again[0]["src"], answer[0]["src"])
        other = self.json("/files/check.php?a=getImage&app=quillard&kind=desktop&id=8")
        self.assertNotEqual(other[0]["src"], answer[0]["src"])
        # Multiples of 5 have no picture; anything but a short run of ASCII
        # digits is no group id, and never a server error.
        for gid in ("10", "25", "", "abc", "-7", "7.0", "\u0667", "\uff17", "7" * 19, "7" * 5000):
            self.assertEqual(self.json("/files/check.php?a=getImage&id=" + urllib.parse.quote(gid)), [], gid[:20])

    def test_package_picture_switch(self):
        url = "/files/check.php?a=getImage&app=quillard&kind=desktop&id=7"
        self.json("/_sim/set?key=image_src&value=empty")
        self.assertEqual(self.json(url), [{"gid": "7", "src": ""}])
        self.json("/_sim/set?key=image_src&value=notimage")
        self.assertIsNone(png_size(base64.b64decode(self.json(url)[0]["src"])))
        self.assertEqual(self.json("/files/check.php?a=getImage&id=10"), [])
        self.request("/_sim/reset")
        self.assertIsNotNone(png_size(base64.b64decode(self.json(url)[0]["src"])))

    # --- documents ----------------------------------------------------------

    def check_pdf(self, path, pages):
        status, headers, data = self.request(path)
        self.assertEqual(status, 200, path)
        self.assertEqual(headers["Content-Type"], "application/pdf")
        self.assertTrue(data.startswith(b"%PDF-") and data.rstrip().endswith(b"%%EOF"))
        # Every cross-reference offset points at the start of its object.
        xref = int(data[data.rindex(b"startxref") + 9:].split()[0])
        entries = data[xref:].split(b"\n")[2:]
        count = int(data[xref:].split(b"\n")[1].split()[1])
        for number in range(1, count):
            offset = int(entries[number].split()[0])
            self.assertTrue(data[offset:].startswith(b"%d 0 obj" % number), (path, number))
        if pages is None:
            # Leaflets have three or four pages, always the same for one document.
            pages = data.count(b"/Type /Page ")
            self.assertIn(pages, (3, 4), path)
        self.assertEqual(data.count(b"/Type /Page "), pages)
        if shutil.which("pdfinfo"):
            target = os.path.join(self.folder, "check.pdf")
            with open(target, "wb") as out:
                out.write(data)
            info = subprocess.run(["pdfinfo", target], capture_output=True, text=True)
            self.assertEqual(info.returncode, 0, info.stderr)
            self.assertEqual(info.stderr, "", path)
            self.assertRegex(info.stdout, r"(?m)^Pages:\s+%d$" % pages)
            if shutil.which("pdftocairo"):
                render = subprocess.run(["pdftocairo", "-png", "-r", "20", "-f", "1", "-l", "1", target,
                                         os.path.join(self.folder, "page")], capture_output=True, text=True)
                self.assertEqual((render.returncode, render.stderr), (0, ""), path)
        return data

    def test_documents(self):
        self.check_pdf("/images/gif/2020/wstrzymanie_1001.pdf", 1)
        leaflet = self.check_pdf("/leaflets/ulotki/apap_500.pdf", None)
        self.assertIn(b"Ulotka dla pacjenta - DEMO", leaflet)
        self.assertEqual(self.request("/leaflets/ulotki/apap_500.pdf")[2], leaflet)
        self.check_pdf("/leaflets/ulotki/ibuprom.pdf", None)
        self.check_pdf("/mobile/pdf/index.php?f=zalacznik_1.pdf", 2)
        self.check_pdf("/_sim/pdf?pages=5", 5)
        self.check_pdf("/_sim/pdf?pages=12", 12)
        status, headers, data = self.request("/_sim/pdf?corrupt=1")
        self.assertEqual((status, headers["Content-Type"]), (200, "application/pdf"))
        self.assertTrue(data.startswith(b"%PDF-"))
        if shutil.which("pdfinfo"):
            target = os.path.join(self.folder, "corrupt.pdf")
            with open(target, "wb") as out:
                out.write(data)
            self.assertNotEqual(subprocess.run(["pdfinfo", target], capture_output=True).returncode, 0)
        for missing in ("/images/gif/2020/inna.pdf", "/leaflets/ulotki/brak.pdf", "/leaflets/",
                        "/mobile/pdf/index.php"):
            self.assertEqual(self.request(missing)[0], 404, missing)

    # --- faults -------------------------------------------------------------

    def test_status_faults(self):
        for mode in ("404", "500"):
            self.fault("/desktop/app_version.php", mode)
            self.assertEqual(self.request("/desktop/app_version.php?a=version")[0], int(mode))
        self.fault("/desktop/app_version.php", "none")
        self.assertEqual(self.request("/desktop/app_version.php?a=version")[0], 200)

    def test_redirect_faults(self):
        self.fault("/desktop/app_version.php?a=version", "302")
        status, headers, _ = self.request("/desktop/app_version.php?a=version")
        self.assertEqual((status, headers["Location"]), (302, "http://127.0.0.1:%d/_sim/echo" % self.port))
        self.assertEqual(self.request("/desktop/app_version.php?a=list")[0], 200)

        self.fault("/", "301", target="/chpl/")
        status, headers, _ = self.request("/")
        self.assertEqual((status, headers["Location"]), (301, "http://127.0.0.1:%d/chpl/" % self.port))

        self.fault("/desktop/usage/search.php", "302loop")
        status, headers, _ = self.request("/desktop/usage/search.php?n=1", b"{}")
        self.assertEqual(status, 302)
        self.assertEqual(headers["Location"], "http://127.0.0.1:%d/desktop/usage/search.php?n=1" % self.port)

    def test_specific_key_wins(self):
        self.fault("/files/check.php", "500")
        self.fault("/files/check.php?a=info", "404")
        self.assertEqual(self.request("/files/check.php?a=info&db=1")[0], 404)
        self.assertEqual(self.request("/files/check.php?a=info_refund&db=1")[0], 500)
        self.fault("/images/*", "500")
        self.assertEqual(self.request("/images/gif/2020/wstrzymanie_1001.pdf")[0], 500)

    def test_body_faults(self):
        self.fault("/desktop/usage/click.php", "badjson")
        self.assertEqual(self.request("/desktop/usage/click.php", b'{"app_key":"1"}')[2], b"{not json")
        self.fault("/desktop/usage/click.php", "reject", message="Nieznany klucz")
        self.assertEqual(self.json("/desktop/usage/click.php", b'{"app_key":"1"}'),
                         {"status": "error", "message": "Nieznany klucz"})
        self.assertEqual(len(self.records("/desktop/usage/click.php")), 2)

    def test_slow(self):
        self.fault("/desktop/app_version.php", "slow", seconds="1")
        started = time.monotonic()
        status, _, body = self.request("/desktop/app_version.php?a=version")
        self.assertEqual((status, body), (200, b"1.6.5.0"))
        self.assertGreaterEqual(time.monotonic() - started, 0.8)

    def test_oversized(self):
        self.fault("/files/check.php?a=get", "oversized")
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=10)
        connection.request("GET", "/files/check.php?a=get")
        reply = connection.getresponse()
        self.assertEqual((reply.status, reply.getheader("Content-Length")), (200, str(1 << 40)))
        self.assertEqual(reply.read(1 << 20), bytes(1 << 20))
        connection.close()
        # The server goes on serving after the client has hung up.
        self.assertEqual(self.request("/desktop/app_version.php?a=version")[2], b"1.6.5.0")

    def test_truncated(self):
        self.fault("/leaflets/*", "truncated")
        connection = http.client.HTTPConnection("127.0.0.1", self.port, timeout=10)
        connection.request("GET", "/leaflets/ulotki/apap_500.pdf")
        reply = connection.getresponse()
        self.assertEqual(reply.status, 200)
        with self.assertRaises(http.client.IncompleteRead):
            reply.read()
        connection.close()

    def test_noanswer_blocks_only_its_client(self):
        self.fault("/", "noanswer")
        waiting = socket.create_connection(("127.0.0.1", self.port), timeout=1)
        waiting.sendall(b"GET / HTTP/1.1\r\nHost: x\r\n\r\n")
        self.assertEqual(self.request("/chpl/")[0], 200)
        with self.assertRaises(socket.timeout):
            waiting.recv(10)
        waiting.close()

    def test_bad_faults_are_refused(self):
        cases = {"unknown mode": {"mode": "explode"},
                 **{"seconds " + repr(seconds): {"mode": "slow", "seconds": seconds}
                    for seconds in ("", "abc", "nan", "inf", "-1", "1e3", "\u0663", "901")}}
        for name, extra in cases.items():
            query = urllib.parse.urlencode(dict(key="/", **extra))
            self.assertEqual(self.request("/_sim/fault?" + query)[0], 400, name)
        self.assertEqual(self.json("/_sim/state")["faults"], {})
        for seconds in ("0", "0.25", "900"):
            self.fault("/", "slow", seconds=seconds)

    def test_reset_clears_everything(self):
        self.fault("/", "500")
        self.json("/_sim/set?key=app_version&value=2.0.0.0")
        self.request("/desktop/usage/search.php", b'{"app_key":"1"}')
        self.json("/_sim/reset")
        self.assertEqual(self.request("/")[0], 200)
        self.assertEqual(self.request("/desktop/app_version.php?a=version")[2], b"1.6.5.0")
        self.assertEqual(self.records("/desktop/usage/search.php"), [])

    # --- robustness ---------------------------------------------------------

    def test_malformed_requests_do_not_stop_server(self):
        for raw in (b"GARBAGE\r\n\r\n", b"GET / HTTP/1.1\r\nContent-Length: abc\r\n\r\n",
                    b"POST /desktop/usage/search.php HTTP/1.1\r\nContent-Length: -5\r\n\r\n",
                    b"\x00\xff\xfe" * 100, b"GET /" + b"a" * 70000 + b" HTTP/1.1\r\n\r\n"):
            connection = socket.create_connection(("127.0.0.1", self.port), timeout=5)
            try:
                connection.sendall(raw)
                connection.shutdown(socket.SHUT_WR)
                connection.recv(1000)
            except OSError:
                pass
            connection.close()
        self.assertEqual(self.request("/")[0], 200)


class RecordsTest(unittest.TestCase):
    def test_only_the_newest_records_are_kept(self):
        # A load test reads back about 1,000 usage records.
        self.assertGreaterEqual(MAX_RECORDS, 2000)
        state = State("", tempfile.gettempdir(), "")
        for number in range(MAX_RECORDS + 3):
            state.record({"method": "POST", "path": "/desktop/usage/click.php", "query": "n=%d" % number})
        records = state.records_for("/desktop/usage/click.php")
        self.assertEqual(len(records), MAX_RECORDS)
        self.assertEqual((records[0]["query"], records[-1]["query"]), ("n=3", "n=%d" % (MAX_RECORDS + 2)))
        state.reset()
        self.assertEqual(state.records_for(None), [])


class LifecycleTest(unittest.TestCase):
    def test_stops_on_signals_also_with_a_held_connection(self):
        for number in (signal.SIGTERM, signal.SIGINT):
            process, port = start_simulator()
            control_path = "/_sim/fault?key=/&mode=noanswer"
            connection = http.client.HTTPConnection("127.0.0.1", port, timeout=5)
            connection.request("GET", control_path)
            connection.getresponse().read()
            held = socket.create_connection(("127.0.0.1", port), timeout=5)
            held.sendall(b"GET / HTTP/1.1\r\nHost: x\r\n\r\n")
            time.sleep(0.3)
            process.send_signal(number)
            self.assertEqual(process.wait(START_TIMEOUT), 0)
            process.stdout.close()
            held.close()
            connection.close()

    def test_default_state_dir_and_missing_database(self):
        process, port = start_simulator("--db", "/nonexistent/demo.sqlite3")
        try:
            connection = http.client.HTTPConnection("127.0.0.1", port, timeout=5)
            connection.request("GET", "/files/check.php?a=get&db=1")
            self.assertEqual(connection.getresponse().status, 404)
            connection.close()
        finally:
            stop_simulator(process)

    def test_generator_makes_missing_database(self):
        folder = tempfile.mkdtemp(prefix="quillard-simtest-")
        try:
            tool = os.path.join(folder, "fake-demodb")
            with open(tool, "w") as out:
                out.write("#!%s\nimport sqlite3, sys\n"
                          "c = sqlite3.connect(sys.argv[sys.argv.index('--output') + 1])\n"
                          "c.executescript(%r)\nc.commit()\n" % (sys.executable, DATABASE_SQL))
            os.chmod(tool, 0o755)
            database = os.path.join(folder, "made.sqlite3")
            process, port = start_simulator("--db", database, "--demodb-tool", tool)
            try:
                connection = http.client.HTTPConnection("127.0.0.1", port, timeout=10)
                connection.request("GET", "/files/check.php?a=info&db=1")
                self.assertEqual(connection.getresponse().read(), b"1600086400")
                connection.close()
                self.assertTrue(os.path.exists(database))
            finally:
                stop_simulator(process)
        finally:
            shutil.rmtree(folder, ignore_errors=True)

    def test_busy_port_is_an_error(self):
        process, port = start_simulator()
        try:
            second = subprocess.run([sys.executable, SIMULATOR, "--port", str(port)], capture_output=True,
                                    text=True, timeout=START_TIMEOUT)
            self.assertNotEqual(second.returncode, 0)
            self.assertNotIn("LISTENING", second.stdout)
        finally:
            stop_simulator(process)


if __name__ == "__main__":
    unittest.main()
