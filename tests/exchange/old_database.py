"""Writes a database file as office programs of the 1990s did (Jet 3): tables without indexes, in pages of 2048 bytes."""
import datetime
import struct

PAGE = 2048
# Of a column: its kind in the file, its size there, and how a value is written; texts and switches are told apart below.
KINDS = {'yesno': (1, 1, None), 'integer': (3, 2, '<h'), 'long': (4, 4, '<i'), 'currency': (5, 8, '<q'), 'single': (6, 4, '<f'),
         'date': (8, 8, '<d'), 'text': (10, 255, None), 'bytes': (11, 0, None)}
LONG = ('text', 'bytes')  # as long as each value
DAY_0 = datetime.datetime(1899, 12, 30)


def scrambled(data, key=b'\xc7\xda\x39\x6b'):
    """The file's first page hides its settings (RC4 with a known key)."""
    state, j, out = list(range(256)), 0, bytearray()
    for i in range(256):
        j = (j + state[i] + key[i % len(key)]) % 256
        state[i], state[j] = state[j], state[i]
    i = j = 0
    for byte in data:
        i = (i + 1) % 256
        j = (j + state[i]) % 256
        state[i], state[j] = state[j], state[i]
        out.append(byte ^ state[(state[i] + state[j]) % 256])
    return bytes(out)


def first_page():
    settings = bytearray(126)
    settings[0x3c - 0x18:0x3e - 0x18] = struct.pack('<H', 1252)  # the code page; no password, nothing encrypted
    head = b'\0\x01\0\0Standard Jet DB\0' + struct.pack('<I', 0) + scrambled(settings)
    return head.ljust(PAGE, b'\0')


def fixed_value(kind, value):
    pattern = KINDS[kind][2]
    if value is None:
        return bytes(struct.calcsize(pattern))
    if kind == 'currency':
        value = round(value * 10000)
    if kind == 'date':
        value = (value - DAY_0) / datetime.timedelta(days=1)
    return struct.pack(pattern, value)


def row_bytes(columns, values):
    """Number of columns, the fixed ones, the texts, where they begin (backwards), and which columns hold something."""
    row = bytearray([len(columns)])
    for (_, kind), value in zip(columns, values):
        if KINDS[kind][2]:
            row += fixed_value(kind, value)
    begins = []
    for (_, kind), value in zip(columns, values):
        if kind in LONG:
            begins.append(len(row))
            row += (value or '').encode('cp1252')
    begins.append(len(row))
    held = 0
    for i, ((_, kind), value) in enumerate(zip(columns, values)):
        held |= (bool(value) if kind == 'yesno' else value is not None) << i
    mask = held.to_bytes((len(columns) + 7) // 8, 'little')
    # A place takes one byte: for each 256 that are passed the first text behind them is named.
    jumps = bytes(next(i for i, at in enumerate(begins) if at >= 256 * (n + 1)) for n in range(begins[-1] // 256))
    length = len(row) + len(begins) + len(jumps) + 1 + len(mask)
    jumps += b'\xff' * ((length + (length - 1) // 256 - len(jumps) - 1) // 256 - len(jumps))
    return bytes(row) + bytes(at % 256 for at in reversed(begins)) + jumps[::-1] + bytes([len(begins) - 1]) + mask


def rows_page(table_page, rows):
    page, offsets = bytearray(PAGE), []
    end = PAGE
    for row in rows:
        end -= len(row)
        page[end:end + len(row)] = row
        offsets.append(end)
    head = struct.pack('<BBHIH', 1, 1, end - 10 - 2 * len(rows), table_page, len(rows))
    page[:len(head) + 2 * len(rows)] = head + struct.pack(f'<{len(rows)}H', *offsets)
    return bytes(page)


def definition_page(columns, rows, map_page):
    entries, fixed, texts = b'', 0, 0
    for number, (_, kind) in enumerate(columns):
        code, size, pattern = KINDS[kind]
        entries += struct.pack('<BHHHHHHBHH', code, number, texts, number, 0x409, 0, 0, 2 if kind in LONG else 3, fixed, size)
        fixed += size if pattern else 0
        texts += kind in LONG
    names = b''.join(bytes([len(name)]) + name.encode('cp1252') for name, _ in columns)
    body = struct.pack('<IIBHHHIIII', rows, 0, 0x4e, len(columns), texts, len(columns), 0, 0, map_page << 8, map_page << 8)
    page = b'\x02\x01VC' + struct.pack('<II', 0, 8 + len(body) + len(entries) + len(names)) + body + entries + names
    return page.ljust(PAGE, b'\0')


class OldDatabase:
    def __init__(self):
        self.pages = [first_page(), bytes(PAGE), b'']  # the third page defines the list of tables
        self.listed = []

    def _rows(self, definition, columns, rows):
        """Writes the rows and the map of their pages; returns the definition."""
        packed, first = [[]], len(self.pages)
        for row in (row_bytes(columns, values) for values in rows):
            if sum(len(each) + 2 for each in packed[-1]) + len(row) + 12 > PAGE:
                packed.append([])
            packed[-1].append(row)
        self.pages += [rows_page(definition, page) for page in packed]
        bits = sum(1 << i for i in range(len(packed)))
        self.pages.append(rows_page(0, [struct.pack('<BI', 0, first) + bits.to_bytes(128, 'little')]))
        return definition_page(columns, len(rows), len(self.pages) - 1)

    def table(self, name, columns, rows):
        """columns: (name, kind) in their order; rows: a value for each, None where there is none."""
        place = len(self.pages)
        self.pages.append(b'')
        self.pages[place] = self._rows(place, columns, rows)
        self.listed.append((place, 0, name, 1, 0, None))

    def write(self, path):
        columns = [('Id', 'long'), ('ParentId', 'long'), ('Name', 'text'), ('Type', 'integer'), ('Flags', 'long'), ('LvProp', 'bytes')]
        self.pages[2] = self._rows(2, columns, self.listed)
        path.write_bytes(b''.join(self.pages))
