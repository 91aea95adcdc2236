"""What a command left, as contents that two programs have alike: an archive is its members without their times, a
database its rows, and a mail lacks the identifiers that are drawn for it."""
import base64
import hashlib
import io
import re
import sqlite3
import zipfile
import zlib

SFX_MARK = b"TARVOLINEX-SFX1\0"


def archive(name, data):
    """The members of a zip, in their order; the bytes before the first one are not looked at here."""
    with zipfile.ZipFile(io.BytesIO(data)) as packed:
        members = packed.infolist()
        about = ["%s method %d flags %d system %d attributes %d" % (m.filename, m.compress_type, m.flag_bits,
                                                                   m.create_system, m.external_attr) for m in members]
        yield name + " (list)", ("\n".join(about) + "\ncomment " + repr(packed.comment)).encode()
        for number, member in enumerate(members):
            yield "%s (%d %s)" % (name, number, member.filename), packed.read(member)


def install_file(name, data):
    """The program in front, the settings, the archive. An .exe that is no install file is one item."""
    at = data.find(SFX_MARK)
    while at >= 0:
        start = at + len(SFX_MARK) + 8
        settings = int.from_bytes(data[start - 8:start - 4], "little")
        packed = int.from_bytes(data[start - 4:start], "little")
        if start + settings + packed == len(data):
            yield name + " (program)", data[:at]
            yield name + " (settings)", data[start:start + settings]
            yield from archive(name, data)
            return
        at = data.find(SFX_MARK, at + 1)
    yield name, data


def mail(name, data):
    """The message with its identifiers masked; of an attachment only how its lines stand, its content beside it."""
    message = re.sub(rb"(?m)^Message-Id: <[^@>\r\n]+@", b"Message-Id: <ID@", data, flags=re.I)
    boundary = re.search(rb'boundary="([^"]+)"', message)
    if boundary: message = message.replace(boundary.group(1), b"BOUNDARY")

    def outlined(match):
        return match.group(1) + re.sub(rb"[A-Za-z0-9+/]", b"x", match.group(2))
    for found in re.finditer(rb'filename="?([^"\r\n;]+)"?.*?\r\n\r\n([A-Za-z0-9+/=\r\n]+)', message, re.S):
        yield from content(name + " " + found.group(1).decode(), base64.b64decode(found.group(2)))
    yield name, re.sub(rb'(filename="?[^"\r\n;]+"?.*?\r\n\r\n)([A-Za-z0-9+/=\r\n]+)', outlined, message, flags=re.S)


def database(name, path, data):
    connection = sqlite3.connect("file:%s?mode=ro&immutable=1" % path, uri=True)
    connection.text_factory = bytes
    try:
        lines = [repr(row) for row in connection.execute("SELECT type,name,sql FROM sqlite_master ORDER BY name")]
        tables = connection.execute("SELECT name FROM sqlite_master WHERE type='table' ORDER BY name").fetchall()
        for (table,) in tables:
            rows = connection.execute('SELECT rowid,* FROM "%s" ORDER BY rowid' % table.decode())
            lines += ["%s %r" % (table.decode(), row) for row in rows]
        yield name, "\n".join(lines).encode()
    except sqlite3.Error:
        yield name, data
    finally:
        connection.close()


def content(name, data, path=None):
    ending = name.lower().rsplit(".", 1)[-1]
    try:
        if ending == "exe": return list(install_file(name, data))
        if ending in ("zip", "bak"): return list(archive(name, data))
        if ending == "mdb" and path: return list(database(name, path, data))
        if ending == "eml": return list(mail(name, data))
    except (zipfile.BadZipFile, zlib.error):
        pass
    return [(name, data)]


class Blobs:
    """Bytes by their print."""

    def __init__(self):
        self.bytes_of = {}

    def put(self, data):
        print_of = hashlib.sha256(data).hexdigest()
        if print_of not in self.bytes_of: self.bytes_of[print_of] = zlib.compress(data, 1)
        return print_of

    def get(self, print_of):
        return zlib.decompress(self.bytes_of[print_of])


class Watch:
    """Sees what stands below a folder. Files that have not changed since are not read again."""

    def __init__(self, root, blobs):
        self.root, self.blobs, self.known = root, blobs, {}

    def look(self):
        seen = {}
        for path in sorted(self.root.rglob("*")):
            name = str(path.relative_to(self.root))
            if path.is_dir():
                seen[name + "/"] = self.blobs.put(b"")
                continue
            if name.endswith(".eml"): name = str(path.parent.relative_to(self.root) / "mail.eml")  # drawn at random
            about = path.stat()
            key = (name, about.st_mtime_ns, about.st_ino, about.st_size)
            if key not in self.known:
                items = content(name, path.read_bytes(), path)
                self.known[key] = [(item, self.blobs.put(data)) for item, data in items]
            seen.update(self.known[key])
        return seen


def difference(old, new):
    """Where two contents part, in one line."""
    if old is None or new is None: return "only %s has it" % ("NEW" if old is None else "OLD")
    at = next((i for i, (a, b) in enumerate(zip(old, new)) if a != b), min(len(old), len(new)))
    line = old.count(b"\n", 0, at) + 1
    start = max(at - 20, 0)
    return "line %d, byte %d: OLD %r, NEW %r" % (line, at, old[start:at + 30], new[start:at + 30])
