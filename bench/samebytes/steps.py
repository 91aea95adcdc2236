"""The commands that both programs are given, and what happens to their folder before each."""
import json
import shutil
import sqlite3
from dataclasses import dataclass, field
from typing import Callable, List

from . import sample


@dataclass
class Step:
    arguments: List[str]
    stdin: bytes = b""
    before: List[Callable] = field(default_factory=list)  # each is given the folder
    fresh: str = ""  # "seed": in the folder as it was made, "empty": in an empty one; else in what stands there
    day: int = 0
    answer: bytes = b"<STATUS>Received</STATUS>SUCCESS"  # of the web server


def put(name, data):
    def act(root):
        path = root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
    return act


def remove(name):
    def act(root):
        path = root / name
        shutil.rmtree(path) if path.is_dir() else path.unlink(missing_ok=True)
    return act


def copy(source, target):
    def act(root):
        (root / target).parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(root / source, root / target)
    return act


def sql(statement):
    def act(root):
        database = sqlite3.connect(root / "app/Tarvolinex.mdb")
        with database: database.execute(statement)
        database.close()
    return act


def patch(name, at, data):
    def act(root):
        old = (root / name).read_bytes()
        (root / name).write_bytes(old[:at] + data + old[at + len(data):])
    return act


def elsewhere(root):
    """The database and what lies beside it, in another folder."""
    (root / "other däta").mkdir()
    for name in ("Tarvolinex.mdb", "Forms", "logo", "icons"):
        shutil.move(root / "app" / name, root / "other däta" / name)


def profile(text):
    return put("app/Mail.INI", ("[PROFILES]\r\nDefaultProfile=mine\r\n[mine]\r\n" + text).encode())


OUTBOX = profile("Transport=outbox\r\nFrom=Sales <sales@lessor.example>\r\nFolder=%ROOT%/mails\r\n")
PAGES = [1, 2, 3, 4] + [5 + i for i, form in enumerate(sample.FORMS) if form[2] is not None]  # the sample's come first
COMMANDS = ("quote", "record", "suppliers", "preferences", "publish", "package", "send", "live")


class Plan:
    """root: where the folder stands while a program works in it; database: the seed's."""

    def __init__(self, rng, root, database, per_block):
        self.rng, self.root, self.steps, self.day, self.data = rng, root, [], 0, []
        self.suppliers = [row[0] for row in database.execute("SELECT ID FROM suppliers ORDER BY ID")]
        self.contacts = {}
        for contact, supplier, email in database.execute("SELECT ID,Supplierid,email FROM contacts ORDER BY ID"):
            self.contacts.setdefault(supplier, []).append((contact, (email or "").strip()))
        self.first_start()
        blocks = [self.suppliers[i:i + per_block] for i in range(0, len(self.suppliers), per_block)]
        for number, block in enumerate(blocks): self.block(number, block)
        self.day += 1
        self.mistakes()
        self.hindrances()

    def add(self, *arguments, **more):
        before = more.pop("before", [])
        self.steps.append(Step([str(a) for a in self.data] + [str(a) for a in arguments], before=before, day=self.day,
                               **more))

    def first_start(self):
        for command in (["suppliers"], ["publish", "--supplier", 2], ["quote", "--supplier", 3],
                        ["package", "--supplier", 1, "--output", self.root / "out/a.exe"]):
            self.add(*command, fresh="empty", stdin=sample.quote_rows(self.rng, 5))
            self.add("suppliers")
        self.add("preferences", "write", fresh="empty", stdin=json.dumps(sample.preferences(self.rng, 0)).encode())
        self.add("suppliers")

    def block(self, number, suppliers):
        """Suppliers under one set of preferences, on a day of its own. One of them has its database elsewhere."""
        self.day += 1
        there = number == 3
        self.data = ["--data-folder", self.root / "other däta"] if there else []
        record = sample.preferences(self.rng, number)
        self.add("preferences", "write", stdin=json.dumps(record).encode(), fresh="seed",
                 before=[elsewhere] if there else [])
        self.add("record", "show", self.root / "app/General.dat")
        self.add("suppliers")
        for supplier in suppliers: self.supplier(supplier)
        self.add("suppliers")
        self.data = []

    def supplier(self, supplier):
        rng, root = self.rng, self.root
        self.add("publish", "--supplier", supplier)
        self.add("record", "show", root / "app/calculator/Supplier.dat")
        form = rng.choice(PAGES)
        self.add("live", "--supplier", supplier, root / "pages" / ("%d.html" % form))
        self.add("record", "write", root / "out/Supplier.dat", stdin=json.dumps(sample.supplier_changes(rng)).encode(),
                 before=[copy("app/calculator/Supplier.dat", "out/Supplier.dat")] if rng.random() < 0.8 else [])
        self.add("record", "show", root / "out/Supplier.dat")
        self.quote(supplier)
        for ending in ("exe", "zip"):
            kept = rng.random() < 0.2
            self.add(*(["--yes"] if rng.random() < 0.5 else []), "package", "--supplier", supplier, "--output",
                     root / "out" / ("Päck." + ending), before=[] if kept else [remove("out/Päck." + ending)])
        if any(email for _, email in self.contacts.get(supplier, [])):
            for way, mail in (("exe", []), ("zip", []), ("exe", [OUTBOX]), ("link", [OUTBOX])):
                self.send(supplier, way, mail)

    def quote(self, supplier):
        rng, root = self.rng, self.root
        rows = sample.quote_rows(rng, 40)
        kind = rng.randrange(5)
        if kind == 0: return self.add("quote", "--supplier", supplier, stdin=rows)
        if kind == 1: return self.add("quote", "--supplier", root / "app/calculator/Supplier.dat", "-", stdin=rows)
        if kind == 2: return self.add("quote", stdin=rows)
        if kind == 3: return self.add("quote", "--supplier", supplier, "--general", root / "app/calculator/general.dat",
                                      root / "out/rows.csv", before=[put("out/rows.csv", rows)])
        return self.add("quote", "--supplier", supplier, "--output", root / "out/priced.csv", stdin=rows)

    def send(self, supplier, way, mail):
        rng = self.rng
        reachable = [contact for contact, email in self.contacts[supplier] if email]
        chosen = rng.sample(reachable, rng.randint(1, len(reachable)))
        words = ["--yes"] if rng.random() < 0.5 else []
        words += ["send", "--supplier", supplier]
        for contact in chosen: words += ["--contact", contact]
        message = rng.choice(["", "One line", "Two\nlines, £ and €\n\n.\nFrom <CALCNAME>", sample.words(rng, 60)])
        words += ["--as", way, "--subject", rng.choice(["Your calculator", "Räte & `card` 🙂", sample.words(rng)]),
                  "--message", message]
        if rng.random() < 0.5: words += ["--instructions"]
        self.add(*words, before=mail or [remove("app/Mail.INI")])

    def mistakes(self):
        """Words that no command understands, and values that none takes."""
        root, out = self.root, self.root / "out"
        for words in [["--help"], ["--version"], [], ["dance"], ["--dance"], ["--app-folder"]]:
            self.add(*words, fresh="seed")
        for command in COMMANDS:
            self.add(command, "--help")
            self.add(command, "--nonsense")
        for supplier in ("4711", "0", "abc", "1 OR 1=1", "99999999999"):
            self.add("publish", "--supplier", supplier)
            self.add("quote", "--supplier", supplier, stdin=b"Mode\n0\n")
        package, live = ["package", "--supplier", 1], ["live", "--supplier", 1]
        for words in (package, package + ["--output", out / "no/such/a.exe"], package + ["--output", root], live,
                      live + [root / "pages/none.html"], live + [root / "app/inst0.txt"], ["record", "burn"],
                      ["record", "show", root / "app/inst0.txt"], ["record", "show", out / "none.dat"]):
            self.add(*words)
        text = ["--subject", "S", "--message", "M"]
        send = ["send", "--supplier", 1, "--as", "zip"]
        for words in (send + text, send + text + ["--contact", 4711], send + text + ["--contact", 3],
                      send + text + ["--contact", 1, "--contact", 1], send + ["--contact", 1, "--message", "M"],
                      ["send", "--supplier", 2, "--as", "zip", "--contact", 5] + text,
                      ["send", "--supplier", 1, "--as", "owl", "--contact", 1] + text):
            self.add(*words)
        for rows in (b"", b"Mode,Mode\n", b"Mode,Dance\n0,1\n", b"Mode\n7\n", b"Mode,Quarterly\n0,2\n", b"Mode\n\"0\n",
                     b"CapitalCost\nabc\n", b"Mode,CapitalCost\n0\n", b"\xef\xbb\xbfmode,CAPITALCOST\r\n0,5\r\n\r\n0,6"):
            self.add("quote", "--supplier", 1, stdin=rows)
        for change in (b"", b"{", b"[]", b'{"Nope": 1}', b'{"TaxRate": "x"}', b'{"MinTerm": 61, "MaxTerm": 60}',
                       b'{"MinTerm": 3}', b'{"MinAdvancedPayments": 60}', b'{"MinDepositPercent": 51}', b"{}",
                       b'{"OrgEmail": "\\u00e9@x.example"}'):
            self.add("preferences", "write", stdin=change)
            self.add("record", "write", out / "General.dat", stdin=change)
            self.add("record", "write", out / "new.dat", stdin=change, before=[remove("out/new.dat")])

    def hindrances(self):
        """Folders as they may be found, each tried with every command."""
        send = ["send", "--supplier", 1, "--contact", 1, "--contact", 2, "--subject", "S", "--message", "M", "--as"]
        for before in found_folders():
            for words in (["publish", "--supplier", 1], ["--yes"] + send + ["exe"], send + ["link"], ["suppliers"],
                          ["package", "--supplier", 1, "--output", self.root / "out/b.exe"], ["preferences", "write"]):
                self.add(*words, fresh="seed", before=before, stdin=b'{"TaxRate": 5, "OrgEmail": "a@b.example"}')
            self.add("publish", "--supplier", 2)
        for mail in ("Transport=owl\r\n", "", "Transport=smtp\r\nSecurity=none\r\nServer=127.0.0.1:1\r\n",
                     "Transport=outbox\r\nFrom=nobody\r\n"):
            self.add(*send, "zip", fresh="seed", before=[profile(mail)])
        for answer in (b"ERROR", b"", b"<STATUS>Full\x80</STATUS> error success", b"500"):
            self.add(*send, "link", answer=answer)


def found_folders():
    """What happened to the folder before the program came, each as steps."""
    def file(name, data): return [put("app/" + name, data)]

    def gone(*names): return [remove("app/" + name) for name in names]
    unnoted = ("1\t1\t02 January 2026 09:08:07\tHelen Ackroyd\t%ROOT%/app\n9\tx\n2\t3\tthen\tPriya Nair\t%ROOT%/app\n"
               "1\t2\tthen\tGareth Evans\t/elsewhere\n")
    small_template = b"<p>|CALCULATORNAME| |custref| |PICBACKGROUND| |headerpic|\n"
    refuses = "CREATE TRIGGER t BEFORE UPDATE ON contacts BEGIN SELECT RAISE(ABORT,'not now'); END"
    return [
        gone("logo"), gone("logo/logo.GIF"), gone("icons"), gone("Forms"), gone("CalcTemplate.html"), gone("Calc.Html"),
        gone("calculator"), gone("Help"), gone("Delivered.lst"), gone("General.dat"), gone("inst1.txt"),
        gone("Tarvolinex.mdb"), gone("Pages.INI"), gone("Calc.Html", "Calc_test.Html"),
        file("icons/CALCULATOR.ICO", b"no icon"), file("CalcTemplate.html", small_template),
        file("Calc.Html", b"mine") + file("Calc_test.Html", b"mine too"), file("inst0.txt", b"<CALCNAME> mine"),
        file("Setup.lst", b"[Setup]\r\nTitle=|title|\r\n[Files]\r\n"), file("Sent.lst", unnoted.encode()),
        file("calculator/old.zip", b"x") + file("calculator/old.EXE", b"x") + file("calculator/Note.txt", b"n"),
        file("logo/logo.bmp", b"another logo"), file("General.dat", b"short"), file("Database.zip", b"PK damaged"),
        file("Tarvolinex.mdb", b"no database"), [copy("app/Database.Bak", "app/Database.zip")],
        file("General.INI", b"[OPTIONS]\r\nDATABASEPATH=/no/where\r\nLASTSUBJECT=x\r\n"),
        file("Tarvolinex.ini", b"[WEB]\r\nwww=127.0.0.1:1\r\nref=8\r\n"), [patch("app/General.dat", 16, b"\x63\0\0\0")],
        [sql("DROP TABLE contacts")], [sql("ALTER TABLE suppliers DROP COLUMN Com4")], [sql(refuses)],
        [sql("DELETE FROM suppliers WHERE ID<>1")],
    ]
