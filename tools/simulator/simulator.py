#!/usr/bin/env python3
"""Local stand-in for every HTTP service that Quillard talks to.

One HTTP/1.1 server on 127.0.0.1 plays the maker's web site, the desktop API,
the data-file service, the image, leaflet and attachment services, the ChPL
viewer and the Sentry store endpoint. Tests steer it through plain GETs below
/_sim/ (faults, records, settings). Only the Python standard library is used.

Usage: simulator.py [--port N] [--db PATH] [--demodb-tool PATH] [--state-dir DIR]
Prints "LISTENING <port>" on stdout once it accepts connections; the request
log goes to stderr. See README.md beside this file.
"""

import argparse
import base64
import collections
import hashlib
import html
import http.server
import json
import os
import re
import select
import shlex
import shutil
import signal
import socket
import sqlite3
import struct
import subprocess
import sys
import tempfile
import threading
import time
import urllib.parse
import zipfile
import zlib

DEFAULT_PORT = 18765
DEFAULT_APP_VERSION = "1.6.5.0"
DATABASE_NAME = "corvane_quillard_desktop.sqlite3"
FAULT_MODES = ("none", "404", "500", "302", "301", "302loop", "slow", "truncated",
               "noanswer", "badjson", "reject", "oversized")

DESKTOP_POST_PATHS = (
    "/desktop/new_drug_image.php",
    "/desktop/registration/user_pharmacy.php",
    "/desktop/registration/update_user_additional.php",
    "/desktop/registration/update_user_pharmacy.php",
    "/desktop/usage/scanned_ean.php",
    "/desktop/usage/search.php",
    "/desktop/usage/click.php",
    "/desktop/usage/recipe_group.php",
    "/desktop/usage/recipe_drug.php",
    "/desktop/usage/substitute_view.php",
    "/desktop/usage/substitute_click.php",
)

# Control requests that are neither recorded nor subject to faults.
CONTROL_PATHS = ("/_sim/fault", "/_sim/reset", "/_sim/records", "/_sim/set", "/_sim/state")

SENTRY_STORE = re.compile(r"^/api/([0-9]+)/store/?$")

# The newest requests kept for /_sim/records; older ones are dropped, so that
# a long run does not grow without end.
MAX_RECORDS = 10000

# "slow" spreads a body over at most this many seconds, as long as "noanswer"
# holds a connection.
MAX_FAULT_SECONDS = 900
DECIMAL = re.compile(r"[0-9]+(\.[0-9]*)?|\.[0-9]+")

# "oversized" declares a body of this many bytes (1 TiB) and sends filler until
# the client hangs up or OVERSIZED_SENT_LIMIT bytes are out.
OVERSIZED_DECLARED = 1 << 40
OVERSIZED_SENT_LIMIT = 256 << 20

# Group ids of package pictures: ASCII digits only (str.isdigit() and int()
# also take other scripts' digits), and short enough for a 64-bit integer.
GROUP_ID = re.compile(r"[0-9]{1,18}")


def log(text):
    sys.stderr.write(time.strftime("%H:%M:%S ") + text + "\n")
    sys.stderr.flush()


# ---------------------------------------------------------------------------
# Documents: PDF, PNG, installer bytes

def pdf_text(text):
    """A PDF string literal of Latin-1 text."""
    raw = text.encode("latin-1", errors="replace")
    raw = raw.replace(b"\\", b"\\\\").replace(b"(", b"\\(").replace(b")", b"\\)")
    return b"(" + raw + b")"


def make_pdf(pages):
    """A valid PDF with one A4 page per list of text lines (Helvetica).

    The first line of a page is set as a heading. Offsets in the cross-reference
    table are counted from the bytes written, so pdfinfo and pdftocairo read it
    without repairing anything.
    """
    objects = []  # bodies of objects 1..n

    def add(body):
        objects.append(body)
        return len(objects)

    catalog = add(None)
    page_tree = add(None)
    font = add(b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>")
    bold = add(b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica-Bold /Encoding /WinAnsiEncoding >>")
    kids = []
    for lines in pages:
        ops = [b"0.85 0.1 0.1 RG 3 w 50 780 m 545 780 l S"]
        y = 750
        for index, line in enumerate(lines):
            face, size = (b"/F2", 18) if index == 0 else (b"/F1", 12)
            ops.append(b"BT %s %d Tf 56 %d Td %s Tj ET" % (face, size, y, pdf_text(line)))
            y -= 30 if index == 0 else 18
        ops.append(b"0.2 0.4 0.8 rg 50 60 495 4 re f")
        stream = b"\n".join(ops) + b"\n"
        content = add(b"<< /Length %d >>\nstream\n%s\nendstream" % (len(stream), stream))
        page = add(b"<< /Type /Page /Parent %d 0 R /MediaBox [0 0 595 842] "
                   b"/Resources << /Font << /F1 %d 0 R /F2 %d 0 R >> >> /Contents %d 0 R >>"
                   % (page_tree, font, bold, content))
        kids.append(page)
    objects[catalog - 1] = b"<< /Type /Catalog /Pages %d 0 R >>" % page_tree
    objects[page_tree - 1] = b"<< /Type /Pages /Kids [%s] /Count %d >>" % (
        b" ".join(b"%d 0 R" % k for k in kids), len(kids))
    info = add(b"<< /Producer (Quillard service simulator) /Title %s >>" % pdf_text(pages[0][0]))

    out = bytearray(b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n")
    offsets = []
    for number, body in enumerate(objects, start=1):
        offsets.append(len(out))
        out += b"%d 0 obj\n%s\nendobj\n" % (number, body)
    xref = len(out)
    out += b"xref\n0 %d\n0000000000 65535 f \n" % (len(objects) + 1)
    for offset in offsets:
        out += b"%010d 00000 n \n" % offset
    out += b"trailer\n<< /Size %d /Root %d 0 R /Info %d 0 R >>\nstartxref\n%d\n%%%%EOF\n" % (
        len(objects) + 1, catalog, info, xref)
    return bytes(out)


def document_pdf(title, path, page_count):
    pages = []
    for number in range(1, page_count + 1):
        lines = [title,
                 "Dokument: " + path,
                 "Strona %d/%d" % (number, page_count),
                 "",
                 "To jest dokument pokazowy symulatora uslug Quillard.",
                 "Tresc nie jest prawdziwa i nie sluzy do celow medycznych."]
        if number == 1:
            lines += ["", "1. Co to jest lek i w jakim celu sie go stosuje",
                      "2. Informacje wazne przed zastosowaniem leku",
                      "3. Jak stosowac lek", "4. Mozliwe dzialania niepozadane"]
        pages.append(lines)
    return make_pdf(pages)


def corrupt_pdf():
    """A PDF whose body was cut off after its header: poppler's tools refuse it."""
    return b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n1 0 obj\n<< /Type /Catalog /Pages 2 0 R\n"


def leaflet_pages(path):
    # Three or four pages, fixed per document.
    return 3 + (zlib.crc32(path.encode("utf-8")) & 1)


def png_chunk(kind, data):
    return (struct.pack(">I", len(data)) + kind + data
            + struct.pack(">I", zlib.crc32(kind + data) & 0xffffffff))


def make_png(width, height, pixel):
    """An RGB PNG; pixel(x, y) gives an (r, g, b) tuple."""
    rows = bytearray()
    for y in range(height):
        rows.append(0)
        for x in range(width):
            rows.extend(pixel(x, y))
    return (b"\x89PNG\r\n\x1a\n"
            + png_chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
            + png_chunk(b"IDAT", zlib.compress(bytes(rows), 9))
            + png_chunk(b"IEND", b""))


def package_picture(gid):
    """A drug box: a coloured box with a white stripe and a darker edge, its
    colour fixed by the group id."""
    digest = hashlib.sha1(str(gid).encode("utf-8")).digest()
    colour = (80 + digest[0] % 150, 80 + digest[1] % 150, 80 + digest[2] % 150)
    edge = tuple(c // 2 for c in colour)
    width, height = 160, 120
    stripe_top = 40 + digest[3] % 30

    def pixel(x, y):
        if x < 16 or x >= width - 16 or y < 12 or y >= height - 12:
            return (255, 255, 255)
        if x < 19 or x >= width - 19 or y < 15 or y >= height - 15:
            return edge
        if stripe_top <= y < stripe_top + 14:
            return (250, 250, 245)
        return colour

    return make_png(width, height, pixel)


def installer_script(marker):
    """A harmless installer for tests: a shell script that only writes
    "started" into the marker file, by default beside itself."""
    target = shlex.quote(marker) if marker else '"$(dirname "$0")/installer-started"'
    return ("#!/bin/sh\necho started > %s\n" % target).encode("utf-8")


def installer_bytes(name):
    header = b"MZ" + ("Quillard installer from the service simulator: %s\r\n" % name).encode("ascii", "replace")
    body = bytearray(header)
    counter = 0
    while len(body) < 65536:
        body += hashlib.sha256(name.encode("utf-8") + struct.pack(">I", counter)).digest()
        counter += 1
    return bytes(body[:65536])


def write_archive(path, database, kind):
    """The offered database's zip: `database` as its member, or for `kind`
    "notdatabase" a member that is text, for "badcrc" one whose stored bytes
    no longer match their CRC."""
    if kind == "notdatabase":
        with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
            archive.writestr(DATABASE_NAME, "Brak bazy: to nie jest plik SQLite.\n" * 64)
        return
    method = zipfile.ZIP_STORED if kind == "badcrc" else zipfile.ZIP_DEFLATED
    with zipfile.ZipFile(path, "w", method) as archive:
        archive.write(database, DATABASE_NAME)
    if kind == "badcrc":
        with open(path, "r+b") as archive:
            header = archive.read(30)
            name_length, extra_length = struct.unpack("<HH", header[26:30])
            archive.seek(30 + name_length + extra_length + os.path.getsize(database) // 2)
            byte = archive.read(1)
            archive.seek(-1, os.SEEK_CUR)
            archive.write(bytes([byte[0] ^ 0xFF]))


def normalise_slashes(path):
    return path.replace("\\", "/").lstrip("/")


# ---------------------------------------------------------------------------
# Shared state

class State:
    def __init__(self, db_path, state_dir, demodb_tool):
        self.lock = threading.Lock()
        self.build_lock = threading.Lock()
        self.db_path = db_path
        self.state_dir = state_dir
        self.demodb_tool = demodb_tool
        self.stopping = threading.Event()
        self.faults = {}
        self.records = collections.deque(maxlen=MAX_RECORDS)
        self.settings = {}
        self.catalogue = None  # what the database offers: paths, group ids, cfg
        self.archives = {}
        self.told_missing = False
        self.reset()

    def reset(self):
        with self.lock:
            self.faults = {}
            self.records.clear()
            self.settings = {"app_version": DEFAULT_APP_VERSION, "image_src": "picture",
                             "installer_name": "", "installer_marker": "", "installer_body": "file",
                             "app_list": "", "archive": "database"}

    # --- demo database -----------------------------------------------------

    def ensure_database(self):
        """Makes the demo database with the generator tool if one was named and
        the file is missing."""
        if not self.db_path or os.path.exists(self.db_path) or not self.demodb_tool:
            return
        with self.build_lock:
            if os.path.exists(self.db_path):
                return
            log("making the demo database with %s" % self.demodb_tool)
            subprocess.run([self.demodb_tool, "--output", self.db_path], check=False,
                           stdout=sys.stderr, stderr=sys.stderr)

    def read_catalogue(self):
        with self.lock:
            if self.catalogue is not None:
                return self.catalogue
        self.ensure_database()
        catalogue = {"leaflets": set(), "decisions": set(), "cfg": {}, "present": False}
        if self.db_path and os.path.exists(self.db_path):
            try:
                uri = "file:%s?mode=ro" % urllib.parse.quote(os.path.abspath(self.db_path))
                connection = sqlite3.connect(uri, uri=True)
                try:
                    catalogue["present"] = True
                    catalogue["cfg"] = dict(connection.execute("SELECT key, val FROM cfg").fetchall())
                    for (leaflet,) in connection.execute("SELECT leaflet FROM v WHERE leaflet IS NOT NULL AND leaflet <> ''"):
                        leaflet = str(leaflet)
                        if len(leaflet) > 6:
                            leaflet = leaflet[:6] + "/" + leaflet[7:]
                        catalogue["leaflets"].add(normalise_slashes(leaflet))
                    for (path,) in connection.execute("SELECT path FROM vg WHERE path IS NOT NULL AND path <> ''"):
                        catalogue["decisions"].add(normalise_slashes(str(path)))
                finally:
                    connection.close()
            except sqlite3.Error as error:
                log("cannot read %s: %s" % (self.db_path, error))
        elif not self.told_missing:
            self.told_missing = True
            log("no demo database at %s" % self.db_path)
        # A missing database is looked for again at the next request: a test may
        # write it after the simulator has started.
        if catalogue["present"]:
            with self.lock:
                self.catalogue = catalogue
        return catalogue

    def offered(self):
        """The newer database on offer: (data_version text, list_date text)."""
        cfg = self.read_catalogue()["cfg"]
        with self.lock:
            version = self.settings.get("data_version")
            list_date = self.settings.get("list_date")
        if version is None:
            try:
                version = str(int(str(cfg.get("data_version", "")).strip()) + 86400)
            except ValueError:
                version = "1700000000"
        if list_date is None:
            list_date = str(cfg.get("list_date") or "2024-01-01")
        return version, list_date

    def archive(self):
        """Path of the zip with the offered database, made once per offer."""
        version, list_date = self.offered()
        if not self.read_catalogue()["present"]:
            return None
        with self.lock:
            kind = self.settings.get("archive", "database")
        key = (version, list_date, kind)
        with self.build_lock:
            path = self.archives.get(key)
            if path and os.path.exists(path):
                return path
            safe = re.sub(r"[^0-9A-Za-z_.-]", "_", "%s_%s_%s" % key)
            work = os.path.join(self.state_dir, "db-%s.sqlite3" % safe)
            path = os.path.join(self.state_dir, "archive-%s.zip" % safe)
            shutil.copyfile(self.db_path, work)
            connection = sqlite3.connect(work)
            try:
                for name, value in (("data_version", version), ("list_date", list_date)):
                    if connection.execute("UPDATE cfg SET val = ? WHERE key = ?", (value, name)).rowcount == 0:
                        connection.execute("INSERT INTO cfg (key, val) VALUES (?, ?)", (name, value))
                connection.commit()
            finally:
                connection.close()
            partial = path + ".part"
            write_archive(partial, work, kind)
            os.replace(partial, path)
            os.remove(work)
            self.archives[key] = path
            log("built archive %s" % path)
            return path

    # --- faults and records ------------------------------------------------

    def set_fault(self, key, mode, target, seconds, message):
        with self.lock:
            if mode == "none":
                self.faults.pop(key, None)
            else:
                self.faults[key] = {"mode": mode, "target": target, "seconds": seconds, "message": message}

    def fault_for(self, path, query_pairs):
        with self.lock:
            faults = dict(self.faults)
        best = None
        best_rank = -1
        for key, fault in faults.items():
            rank = key_matches(key, path, query_pairs)
            if rank > best_rank:
                best, best_rank = fault, rank
        return best

    def record(self, entry):
        with self.lock:
            self.records.append(entry)

    def records_for(self, path):
        with self.lock:
            records = list(self.records)
        if path is None:
            return records
        return [r for r in records
                if key_matches(path, r["path"], urllib.parse.parse_qsl(r["query"], keep_blank_values=True)) >= 0]


def key_matches(key, path, query_pairs):
    """How well a fault or record key matches a request: -1 for no match, and
    higher numbers for more specific keys. A key is a path, a path followed by
    "?name=value[&...]" that the query must hold, or a prefix ending in "*"."""
    key_path, _, key_query = key.partition("?")
    if key_path.endswith("*"):
        if not path.startswith(key_path[:-1]):
            return -1
        rank = 0
    elif key_path == path:
        rank = 10
    else:
        return -1
    wanted = urllib.parse.parse_qsl(key_query, keep_blank_values=True)
    for pair in wanted:
        if pair not in query_pairs:
            return -1
    return rank + len(wanted)


def fault_seconds(text):
    """The seconds of a fault as a float, or None unless the text is a plain
    decimal number within 0..MAX_FAULT_SECONDS ("nan", "inf", "-1" and "1e3"
    are not)."""
    if not DECIMAL.fullmatch(text):
        return None
    seconds = float(text)
    return seconds if seconds <= MAX_FAULT_SECONDS else None


# ---------------------------------------------------------------------------
# HTTP

class Reply:
    def __init__(self, status=200, body=b"", content_type="text/plain; charset=utf-8", headers=None):
        self.status = status
        self.body = body if isinstance(body, bytes) else body.encode("utf-8")
        self.content_type = content_type
        self.headers = headers or []


def json_reply(value, status=200):
    return Reply(status, json.dumps(value, ensure_ascii=False, separators=(",", ":")),
                 "application/json; charset=utf-8")


def html_reply(title, text, status=200):
    page = ("<!DOCTYPE html>\n<html lang=\"pl\"><head><meta charset=\"utf-8\"><title>%s</title></head>\n"
            "<body><h1>%s</h1>\n%s\n</body></html>\n" % (title, title, text))
    return Reply(status, page, "text/html; charset=utf-8")


def not_found(path):
    return html_reply("404 Nie znaleziono", "<p>Brak zasobu: %s</p>" % html.escape(path), 404)


def envelope(status, message=""):
    return json_reply({"status": status, "message": message})


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    server_version = "QuillardSimulator/1.0"
    # Idle keep-alive connections go after this many seconds.
    timeout = 120

    @property
    def state(self):
        return self.server.state

    def log_message(self, format, *args):
        log("%s %s" % (self.address_string(), format % args))

    def do_GET(self):
        self.serve()

    def do_POST(self):
        self.serve()

    def do_HEAD(self):
        self.serve()

    def do_PUT(self):
        self.serve()

    def do_DELETE(self):
        self.serve()

    def do_OPTIONS(self):
        self.serve()

    # --- request reading ---------------------------------------------------

    def read_body(self):
        if "chunked" in self.headers.get("Transfer-Encoding", "").lower():
            body = bytearray()
            while True:
                size_line = self.rfile.readline(1024)
                if not size_line:
                    break
                size = int(size_line.split(b";")[0].strip() or b"0", 16)
                if size == 0:
                    while self.rfile.readline(1024) not in (b"\r\n", b"\n", b""):
                        pass
                    break
                body += self.rfile.read(size)
                self.rfile.readline(1024)
            return bytes(body)
        length = self.headers.get("Content-Length")
        if length is None:
            return b""
        length = int(length)
        if length < 0:
            raise ValueError("negative Content-Length")
        return self.rfile.read(length)

    def serve(self):
        try:
            body = self.read_body()
        except (ValueError, OSError) as error:
            self.close_connection = True
            try:
                self.send_error(400, "Bad request body: %s" % error)
            except OSError:
                pass
            return
        split = urllib.parse.urlsplit(self.path)
        path = urllib.parse.unquote(split.path)
        query = split.query
        pairs = urllib.parse.parse_qsl(query, keep_blank_values=True)
        params = dict(pairs)

        if path in CONTROL_PATHS:
            self.send(self.control(path, params))
            return

        headers = {}
        for name, value in self.headers.items():
            headers[name] = headers[name] + ", " + value if name in headers else value
        self.state.record({"method": self.command, "path": path, "query": query,
                           "headers": headers, "body": body.decode("utf-8", errors="replace")})

        fault = self.state.fault_for(path, pairs)
        mode = fault["mode"] if fault else None
        if mode == "noanswer":
            self.hold_without_answer()
            return
        if mode in ("404", "500"):
            self.send(html_reply("%s Błąd symulowany" % mode, "<p>Błąd ustawiony w symulatorze.</p>", int(mode)))
            return
        if mode in ("301", "302"):
            self.send(self.redirect(int(mode), self.absolute(fault["target"] or "/_sim/echo")))
            return
        if mode == "302loop":
            self.send(self.redirect(302, self.absolute(self.path)))
            return
        if mode == "badjson":
            self.send(Reply(200, b"{not json", "application/json; charset=utf-8"))
            return
        if mode == "oversized":
            self.send_oversized()
            return
        if mode == "reject":
            self.send(envelope("error", fault["message"] or "Serwer odrzucił dane (symulator)"))
            return

        try:
            reply = self.route(path, params, body)
        except Exception as error:  # a fault of ours must not end the server
            log("error serving %s: %r" % (self.path, error))
            reply = html_reply("500 Błąd serwera", "<p>%s</p>" % html.escape(str(error)), 500)

        if mode == "slow":
            self.send(reply, pace=fault["seconds"])
        elif mode == "truncated":
            self.send(reply, truncate=True)
        else:
            self.send(reply)

    # --- answers -----------------------------------------------------------

    def absolute(self, target):
        if re.match(r"^[a-zA-Z][a-zA-Z0-9+.-]*://", target):
            return target
        host = self.headers.get("Host") or "127.0.0.1:%d" % self.server.server_address[1]
        if not target.startswith("/"):
            target = "/" + target
        return "http://%s%s" % (host, target)

    def redirect(self, status, location):
        reply = html_reply("%d Przeniesiono" % status, "<p><a href=\"%s\">%s</a></p>" % (html.escape(location), html.escape(location)), status)
        reply.headers.append(("Location", location))
        return reply

    def send(self, reply, pace=None, truncate=False):
        body = reply.body
        declared = len(body) + (max(64, len(body)) if truncate else 0)
        self.send_response(reply.status)
        self.send_header("Content-Type", reply.content_type)
        self.send_header("Content-Length", str(declared))
        for name, value in reply.headers:
            self.send_header(name, value)
        if truncate:
            self.send_header("Connection", "close")
            self.close_connection = True
        self.end_headers()
        if self.command == "HEAD":
            return
        try:
            if truncate:
                self.wfile.write(body[:len(body) // 2])
                self.wfile.flush()
                self.connection.shutdown(socket.SHUT_RDWR)
            elif pace:
                pieces = min(len(body), 200) or 1
                step = max(1, -(-len(body) // pieces))
                pause = pace / pieces
                for start in range(0, len(body), step):
                    if self.state.stopping.is_set():
                        break
                    self.wfile.write(body[start:start + step])
                    self.wfile.flush()
                    time.sleep(pause)
            else:
                self.wfile.write(body)
        except OSError:
            self.close_connection = True

    def send_oversized(self):
        """200 with a body that says it is 1 TiB long: zeros until the client
        gives up (or OVERSIZED_SENT_LIMIT bytes), then the connection closes."""
        self.close_connection = True
        self.send_response(200)
        self.send_header("Content-Type", "application/octet-stream")
        self.send_header("Content-Length", str(OVERSIZED_DECLARED))
        self.send_header("Connection", "close")
        self.end_headers()
        if self.command == "HEAD":
            return
        piece = bytes(65536)
        sent = 0
        try:
            while sent < OVERSIZED_SENT_LIMIT and not self.state.stopping.is_set():
                self.wfile.write(piece)
                sent += len(piece)
        except OSError:
            pass

    def hold_without_answer(self):
        """Keeps the connection open without a word until the client gives up."""
        self.close_connection = True
        deadline = time.monotonic() + 900
        while not self.state.stopping.is_set() and time.monotonic() < deadline:
            try:
                readable, _, _ = select.select([self.connection], [], [], 0.5)
                if readable and not self.connection.recv(4096):
                    break
            except OSError:
                break

    # --- control -----------------------------------------------------------

    def control(self, path, params):
        state = self.state
        if path == "/_sim/reset":
            state.reset()
            return json_reply({"status": "ok"})
        if path == "/_sim/fault":
            key = params.get("key", "")
            mode = params.get("mode", "")
            if not key or mode not in FAULT_MODES:
                return json_reply({"status": "error", "message": "key and one of the modes %s needed"
                                   % ", ".join(FAULT_MODES)}, 400)
            seconds = fault_seconds(params.get("seconds", "3"))
            if seconds is None:
                return json_reply({"status": "error", "message": "seconds must be a decimal number from 0 to %d"
                                   % MAX_FAULT_SECONDS}, 400)
            state.set_fault(key, mode, params.get("target", ""), seconds, params.get("message", ""))
            return json_reply({"status": "ok", "key": key, "mode": mode})
        if path == "/_sim/records":
            return json_reply(state.records_for(params.get("path")))
        if path == "/_sim/set":
            key = params.get("key", "")
            if key not in ("app_version", "data_version", "list_date", "image_src",
                           "installer_name", "installer_marker", "installer_body", "app_list",
                           "refund_answer", "archive"):
                return json_reply({"status": "error", "message": "unknown key"}, 400)
            with state.lock:
                state.settings[key] = params.get("value", "")
            return json_reply({"status": "ok"})
        # /_sim/state
        version, list_date = state.offered()
        with state.lock:
            app_version = state.settings["app_version"]
            faults = dict(state.faults)
        return json_reply({"app_version": app_version, "data_version": version, "list_date": list_date,
                           "faults": faults, "database": state.db_path or ""})

    # --- services ----------------------------------------------------------

    def route(self, path, params, body):
        if path == "/":
            return html_reply("Corvane - Quillard",
                              "<p>Quillard: baza leków dla farmaceutów. Strona symulatora usług.</p>")
        if path == "/_sim/echo":
            return json_reply({"method": self.command, "path": path, "query": urllib.parse.urlsplit(self.path).query,
                               "body_length": len(body), "body": body.decode("utf-8", errors="replace"),
                               "headers": {k: v for k, v in self.headers.items()}})
        if path == "/_sim/pdf":
            if params.get("corrupt") == "1":
                return Reply(200, corrupt_pdf(), "application/pdf")
            try:
                pages = max(1, min(50, int(params.get("pages", "1"))))
            except ValueError:
                pages = 1
            return Reply(200, document_pdf(params.get("title", "Dokument testowy - DEMO"), "/_sim/pdf", pages),
                         "application/pdf")
        if path == "/desktop/app_version.php":
            return self.app_version(params)
        if path in DESKTOP_POST_PATHS:
            return self.desktop_post(body)
        if path == "/files/check.php":
            return self.check(params)
        if path.startswith("/images/"):
            return self.document(path[len("/images/"):], "decisions", "Decyzja GIF - DEMO", 1)
        if path.startswith("/leaflets/"):
            rest = path[len("/leaflets/"):]
            return self.document(rest, "leaflets", "Ulotka dla pacjenta - DEMO", leaflet_pages(rest))
        if path == "/mobile/pdf/index.php":
            name = params.get("f", "")
            if not name:
                return not_found(path)
            return Reply(200, document_pdf("Zalacznik - DEMO", name, 2), "application/pdf")
        if path in ("/chpl", "/chpl/", "/chpl/index.html"):
            return html_reply("ChPL - Charakterystyka Produktu Leczniczego",
                              "<p id=\"search\"></p><script>document.getElementById('search').textContent = "
                              "'Szukane: ' + decodeURIComponent(location.hash.replace(/^#search=/, ''));</script>")
        match = SENTRY_STORE.match(path)
        if match:
            return self.sentry(body)
        return not_found(path)

    def app_version(self, params):
        with self.state.lock:
            settings = dict(self.state.settings)
        version = settings["app_version"]
        installer = settings["installer_name"] or "quillard-setup-%s.exe" % version
        action = params.get("a")
        if action == "version":
            return Reply(200, version)
        if action == "list":
            if settings["app_list"]:
                return Reply(200, settings["app_list"], "application/json; charset=utf-8")
            return json_reply([version, [[0, ["installer", [0, installer]]]]])
        if action == "file":
            if params.get("f") != installer:
                return not_found("/desktop/app_version.php?a=file&f=" + params.get("f", ""))
            if settings["installer_body"] == "empty":
                body = b""
            elif installer.endswith(".sh"):
                body = installer_script(settings["installer_marker"])
            else:
                body = installer_bytes(installer)
            return Reply(200, body, "application/octet-stream",
                         [("Content-Disposition", "attachment; filename=\"%s\"" % re.sub(r'[^ !#-~]', "_", os.path.basename(installer)))])
        return Reply(400, "unknown action")

    def desktop_post(self, body):
        if self.command != "POST":
            reply = envelope("error", "Nieprawidłowa metoda żądania, oczekiwano POST")
            reply.status = 405
            reply.headers.append(("Allow", "POST"))
            return reply
        try:
            value = json.loads(body.decode("utf-8"))
        except (UnicodeDecodeError, ValueError):
            return envelope("error", "Nieprawidłowe dane: treść nie jest obiektem JSON")
        if not isinstance(value, dict):
            return envelope("error", "Nieprawidłowe dane: treść nie jest obiektem JSON")
        if "app_key" not in value:
            return envelope("error", "Brak klucza aplikacji (app_key)")
        return envelope("success")

    def check(self, params):
        action = params.get("a")
        if action == "info_refund":
            with self.state.lock:
                answer = self.state.settings.get("refund_answer")
            if answer is not None:
                return Reply(200, answer)
            return Reply(200, "1#%s" % self.state.offered()[1])
        if action == "info":
            return Reply(200, self.state.offered()[0])
        if action == "get":
            path = self.state.archive()
            if path is None:
                return not_found("/files/check.php?a=get")
            with open(path, "rb") as archive:
                return Reply(200, archive.read(), "application/zip",
                             [("Content-Disposition", "attachment; filename=\"database.zip\"")])
        if action == "getImage":
            gid = params.get("id", "").strip()
            if not GROUP_ID.fullmatch(gid) or int(gid) % 5 == 0:
                return json_reply([])
            with self.state.lock:
                kind = self.state.settings.get("image_src", "picture")
            if kind == "empty":
                picture = ""
            elif kind == "notimage":
                picture = base64.b64encode(b"Brak zdjecia: to nie jest obraz PNG.").decode("ascii")
            else:
                picture = base64.b64encode(package_picture(int(gid))).decode("ascii")
            return json_reply([{"gid": gid, "src": picture}])
        return Reply(400, "unknown action")

    def document(self, rest, kind, title, pages):
        wanted = normalise_slashes(rest)
        if not wanted or wanted not in self.state.read_catalogue()[kind]:
            return not_found(rest)
        return Reply(200, document_pdf(title, wanted, pages), "application/pdf")

    def sentry(self, body):
        if self.command != "POST":
            return json_reply({"error": "Method not allowed"}, 405)
        auth = self.headers.get("X-Sentry-Auth", "")
        if "sentry_key=" not in auth:
            return json_reply({"error": "Missing authentication header"}, 401)
        try:
            event = json.loads(body.decode("utf-8"))
        except (UnicodeDecodeError, ValueError):
            return json_reply({"error": "Bad data reconstructing object"}, 400)
        event_id = ""
        if isinstance(event, dict):
            event_id = re.sub(r"[^0-9a-f]", "", str(event.get("event_id", "")).lower())
        if len(event_id) != 32:
            event_id = hashlib.md5(body).hexdigest()
        return json_reply({"id": event_id})


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True
    allow_reuse_address = True

    def handle_error(self, request, client_address):
        log("error on a connection from %s: %r" % (client_address, sys.exc_info()[1]))


def main(argv=None):
    parser = argparse.ArgumentParser(description="Quillard service simulator")
    parser.add_argument("--port", type=int, default=DEFAULT_PORT, help="port on 127.0.0.1 (0: a free one)")
    parser.add_argument("--db", default="", help="demo database to offer and to read paths from")
    parser.add_argument("--demodb-tool", default="", help="generator that makes --db when the file is missing")
    parser.add_argument("--state-dir", default="", help="folder for built archives (default: a temp folder)")
    args = parser.parse_args(argv)

    try:
        server = Server(("127.0.0.1", args.port), Handler)
    except OSError as error:
        log("cannot listen on 127.0.0.1:%d: %s" % (args.port, error.strerror or error))
        return 1
    # Made only once the port is ours, so that a failed start leaves no folder behind.
    own_state_dir = not args.state_dir
    state_dir = args.state_dir or tempfile.mkdtemp(prefix="quillard-sim-")
    os.makedirs(state_dir, exist_ok=True)
    server.state = State(args.db, state_dir, args.demodb_tool)
    stop = threading.Event()

    def on_signal(number, frame):
        stop.set()
        # A test killed mid-run may leave our stderr pipe unread: a write to it
        # would block the orderly stop for ever, and the port with it.
        watchdog = threading.Timer(3.0, lambda: os._exit(0))
        watchdog.daemon = True
        watchdog.start()

    signal.signal(signal.SIGTERM, on_signal)
    signal.signal(signal.SIGINT, on_signal)
    # A mask inherited from the starting thread must not hold the stop back.
    signal.pthread_sigmask(signal.SIG_UNBLOCK, {signal.SIGTERM, signal.SIGINT})

    worker = threading.Thread(target=server.serve_forever, kwargs={"poll_interval": 0.2}, daemon=True)
    worker.start()
    sys.stdout.write("LISTENING %d\n" % server.server_address[1])
    sys.stdout.flush()
    log("serving on 127.0.0.1:%d, database %s" % (server.server_address[1], args.db or "(none)"))

    # The simulator goes with whoever started it, also through a launcher
    # script whose own end the operating system wouldn't pass on to us.
    parent = os.getppid()
    while not stop.wait(0.5):
        if os.getppid() != parent:
            break
    server.state.stopping.set()
    server.shutdown()
    server.server_close()
    if own_state_dir:
        shutil.rmtree(state_dir, ignore_errors=True)
    log("stopped")
    return 0


if __name__ == "__main__":
    sys.exit(main())
