"""What both programs are given: suppliers, contacts, forms, preferences and leases that look random and are the same at
each run."""
import sqlite3

# Letters of Windows-1252, letters beyond it, what means something in a page, a statement or a file, and the grave
# accent that the program stores for an apostrophe.
ODD = list("éüßŽœ£€“”–`·&<>\"%|+;=#?\\/:*~ñÅΩ漢🙂ł") + ["<BR>", "|Supplier Town|", "</script>", "%1", "&amp;", "''"]
PLAIN = "abcdefghijklmnopqrstuvwxyz"
WIDTHS = {"CompanyName": 50, "Address1": 50, "Address2": 50, "Town": 50, "County": 50, "PostCode": 15, "tel": 30,
          "fax": 30, "email": 50, "www": 50, "equipment": 50}


def letters(rng):
    return "".join(rng.choice(PLAIN) for _ in range(rng.randint(1, 9)))


def word(rng):
    chosen = letters(rng)
    if rng.random() < 0.6: chosen = chosen.capitalize()
    if rng.random() < 0.25:
        at = rng.randint(0, len(chosen))
        chosen = chosen[:at] + rng.choice(ODD) + chosen[at:]
    return chosen


def words(rng, most=5):
    return " ".join(word(rng) for _ in range(rng.randint(1, most)))


def text(rng, width):
    kind = rng.random()
    if kind < 0.12: return None
    if kind < 0.17: return ""
    if kind < 0.22: return (words(rng, 3) + " ").ljust(width, "x")[:width]
    if kind < 0.25: return words(rng, 3).ljust(width + 9, "y")  # another program stores what it likes
    if kind < 0.30: return "  " + words(rng, 2) + " "
    if kind < 0.32: return words(rng, 1) + rng.choice("\t\n") + words(rng, 1)
    if kind < 0.33: return word(rng) + "'" + word(rng)
    return words(rng)[:width]


def amount(rng):
    kind = rng.random()
    if kind < 0.08: return None
    if kind < 0.16: return 0
    if kind < 0.45: return rng.randint(1, 300) * 500
    if kind < 0.70: return round(rng.uniform(0, 90000), 2)
    if kind < 0.82: return round(rng.uniform(0, 90000), 4)
    if kind < 0.86: return rng.uniform(0, 1e6)
    if kind < 0.90: return "%.2f" % rng.uniform(0, 5000)
    if kind < 0.93: return "{:,.2f}".format(rng.uniform(1000, 90000))
    if kind < 0.95: return -rng.randint(1, 5000)
    return rng.choice([99999999.99, 922337203685477.5, 0.0001, 0.00005, "", 1e17])


def rate(rng):
    kind = rng.random()
    if kind < 0.08: return None
    if kind < 0.14: return 0
    if kind < 0.50: return rng.randint(4, 80) / 4
    if kind < 0.80: return round(rng.uniform(0, 25), 2)
    if kind < 0.94: return rng.uniform(0, 25)
    return rng.choice([1 / 3, -1.5, 150, "7.5", 1e-9, 100, ""])


def rate_card(rng):
    """The five thresholds, yields and commissions."""
    kind = rng.random()
    if kind < 0.10: return [None] * 15
    if kind < 0.15: return [0] * 15
    if kind < 0.55:
        thresholds = sorted((round(rng.uniform(500, 250000), rng.choice([0, 0, 2])) for _ in range(4)), reverse=True)
        rates = sorted(round(rng.uniform(4, 18), 2) for _ in range(5))
        return thresholds + [0] + rates + [round(rng.uniform(0, 6), 3) for _ in range(5)]
    if kind < 0.62: return [10000] * 5 + [rate(rng) for _ in range(10)]
    card = [amount(rng) for _ in range(5)] + [rate(rng) for _ in range(10)]
    if kind > 0.97: card[rng.randrange(15)] = rng.choice(["none", 9e999, "12 %", "1e3", b"\x01\x02"])
    return card


def add_suppliers(database, rng, count):
    columns = list(WIDTHS) + ["%s%d" % (name, i) for name in ("RangeEquipFROM", "Yield", "Com") for i in range(5)]
    columns += ["AdditionalPremium", "AdditionalPremiumMsg", "AdditionalPremiumYield", "AdditionalPremiumMin",
                "MaintenanceOption", "ResidualOption"]
    insert = "INSERT INTO suppliers (ID,%s) VALUES (%s)" % (",".join(columns), ",".join("?" * (len(columns) + 1)))
    forms = [row[0] for row in database.execute("SELECT ID FROM Forms")]
    taken = None
    for number in range(count):
        supplier = 13 + number if number % 50 < 49 else 40000 + number  # more than a record's key holds
        texts = [text(rng, width) for width in WIDTHS.values()]
        if rng.random() < 0.05: texts[0] = taken  # two of one name
        taken = texts[0]
        flag = lambda: rng.choice([0, 1, 1, -1])
        row = texts + rate_card(rng) + [flag(), text(rng, 30), rate(rng), amount(rng), flag(), flag()]
        database.execute(insert, [supplier] + row)
        if rng.random() < 0.75:
            for form in rng.choices(forms + [99], k=rng.randint(0, 6)):
                database.execute("INSERT INTO SupplierFormLink VALUES (?,?)", (form, supplier))
        for _ in range(rng.choice([0, 1, 1, 2, 3, 5])):
            reached = "%s@%s.example" % (letters(rng), letters(rng))
            address = rng.choice(["nobody"] + [None, "", " " + reached + " "] * 4 + [reached] * 30)
            row = [supplier, text(rng, 30), text(rng, 30), text(rng, 50), text(rng, 30), None, address,
                   rng.choice([None, None, "01 May 2025 10:00:00"])]
            database.execute("INSERT INTO contacts (Supplierid,firstname,surname,jobtitle,tel,fax,email,DateLastSent)"
                             " VALUES (?,?,?,?,?,?,?,?)", row)


MARKERS = ("<title>%s</title><p>|Supplier Company Name| |SUPPLIER TOWN| |supplier www| |Calculator Term|"
           " |Calculator Deposit| |Calculator Residual| |Calculator Additional Rate Text| |HEADERPIC| |No Such Marker|"
           "</p>\n<FORMSTART>%s<formend>")
# Link name, whether it is offered, and its page: None for one that is missing.
FORMS = [
    ("Plain", 1, (MARKERS % ("Plain", "x")).encode("cp1252")),
    ("Plain two", 1, (MARKERS % ("Two", "ä")).encode("utf-8")),
    ("Plain", 1, b"\xef\xbb\xbf" + (MARKERS % ("Mark", "漢")).encode("utf-8")),
    ("Wide", 1, b"\xff\xfe" + (MARKERS % ("Wide", "Ω")).encode("utf-16-le")),
    ("Latin £", 1, ("<meta charset=iso-8859-15>" + MARKERS % ("Latin", "€")).encode("iso-8859-15")),
    ("Empty", 1, b""),
    ("Missing", 1, None),
    ("Missing too", 1, None),
    ("a/b: no name", 1, b"<title>no file</title>"),
    ("", 1, b"<title>nameless</title>\r\rline"),
    ("Test of all", 1, b"<title>left out by a mask</title>"),
    ("Not offered", 0, b"<title>not offered</title>"),
    ("O`Brien & <Sons>", 1, b"<FORMEND>only an end"),
]


def add_forms(database, folder):
    for link, offered, page in FORMS:
        form = database.execute("INSERT INTO Forms (Description,LinkName,Available) VALUES (?,?,?)",
                                ("About " + link, link, offered)).lastrowid
        if page is not None: (folder / ("%d.HTML" % form)).write_bytes(page)


def fill(app, rng, count):
    """Fills an app folder whose sample database has been unpacked."""
    database = sqlite3.connect(app / "Tarvolinex.mdb")
    with database:
        add_forms(database, app / "Forms")
        add_suppliers(database, rng, count)
    database.close()


def preferences(rng, number):
    """Set 0 is the delivered one with an address; the others change everything that the options window offers."""
    record = {"OrgCompanyName": "Lessor & Söhne", "OrgEmail": "desk@lessor.example", "OrgContactName": "Ann O`Hara"}
    if number == 0: return record
    for name in ("CalcBackColour", "CaptionColour", "InputBackColour", "InputTextColour", "BorderColour",
                 "OrgCaptionColour", "PageBackColour"):
        record[name] = rng.randrange(1 << 24)
    for name in ("AliasSupplier", "AliasCalcName", "AliasResidual", "AliasDeposit", "AliasVat", "AliasMaint",
                 "AliasCapEquip", "OrgAddress1", "OrgTown", "OrgPostCode", "OrgTel", "OrgWebAddress"):
        record[name] = text(rng, 25) or ""
    record["CurrencySymbol"] = ["£", "€", "$", "kr", "", "R$", "%", "CHF"][number % 8]
    record["TaxRate"] = rng.choice([0, 17.5, 20, 7.7, 100])
    record["MinTerm"], record["MaxTerm"] = rng.choice([(0, 0), (12, 60), (24, 24), (1, 999)])
    record["MinCapitalCost"], record["MaxCapitalCost"] = rng.choice([(0, 0), (500, 250000), (0, 9999999)])
    record["MinDepositPercent"], record["MaxDepositPercent"] = rng.choice([(0, 0), (5.5, 50), (0, 100)])
    record["MinResidualPercent"], record["MaxResidualPercent"] = rng.choice([(0, 0), (1.25, 30), (0, 12.5)])
    record["MinAdvancedPayments"] = rng.choice([0, 1, 3])
    record["DepositOptions"] = number % 8
    record["ShowHeaderLogo"], record["ShowBackground"] = number % 2 == 0, number % 4 < 2
    record["IconName"] = ["CALCULATOR", "CHART", "", "GONE", "COINS"][number % 5]
    record["Reserved32"] = "%024x" % rng.randrange(1 << 90)
    if number == 5: record["OrgEmail"] = ""
    if number == 6: record["AliasCalcName"] = "  "
    return record


QUOTE_COLUMNS = ("Mode,CapitalCost,DepositMode,DepositValue,DepositPercent,AdvancedPayments,NumberOfPayments,"
                 "Quarterly,ResidualValue,ResidualPercent,Maintenance,ApplyPremium,Yield,CommissionPercent,"
                 "CommissionValue,Payment,CapLock").split(",")


def quote_rows(rng, count):
    """CSV for `quote`, in all modes."""
    def cell(name):
        if name == "Mode": return rng.randint(0, 6)
        if name == "DepositMode": return rng.randint(0, 2)
        if name == "NumberOfPayments": return rng.choice([0, 1, 4, 12, 36, 60, rng.randint(1, 240)])
        if name == "AdvancedPayments": return rng.choice([0, 0, 1, 3, 12])
        if name in ("Quarterly", "ApplyPremium", "CapLock"): return rng.randint(0, 1)
        if name == "CapitalCost":
            drawn = "%.2f" % rng.uniform(1, 300000)
            return rng.choice([0, drawn, drawn, rng.randint(1, 60) * 5000, "\"12,500.00\"", 99999999.99])
        if name == "Payment": return rng.choice([0, "%.2f" % rng.uniform(5, 9000)])
        if name in ("Yield", "CommissionPercent", "DepositPercent", "ResidualPercent"):
            return rng.choice([0, 0, round(rng.uniform(0, 30), 2), rng.uniform(0, 30), 100])
        return rng.choice([0, 0, "%.2f" % rng.uniform(0, 4000)])
    columns = QUOTE_COLUMNS if rng.random() < 0.7 else rng.sample(QUOTE_COLUMNS, rng.randint(3, 17))
    lines = [",".join(columns)] + [",".join(str(cell(name)) for name in columns) for _ in range(count)]
    return ("\r\n" if rng.random() < 0.2 else "\n").join(lines).encode() + b"\n"


def supplier_changes(rng):
    """JSON for `record write` of a Supplier.dat."""
    change = {"CompanyName": words(rng), "RangeEquipFROM%d" % rng.randint(0, 4): "%.4f" % rng.uniform(0, 1e6),
              "Yield%d" % rng.randint(0, 4): round(rng.uniform(0, 30), 3), "AdditionalPremium": rng.random() < 0.5,
              "ResidualOption": rng.randint(0, 1), "ID": rng.randint(0, 32767), "AdditionalPremiumMsg": words(rng, 8),
              "Com%d" % rng.randint(0, 4): "1.5e0", "Nope": 1, "Yield0": "much"}
    return {name: change[name] for name in change if rng.random() < (0.6 if name not in ("Nope", "Yield0") else 0.05)}
