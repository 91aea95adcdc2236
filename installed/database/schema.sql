-- The tables of the supplier database.
-- The program reads the declared type of a column to choose how a field is
-- shown and how much may be typed into it: TEXT(n) holds n characters, CURRENCY
-- a decimal amount, SINGLE a rate in percent, YESNO 0 or 1.

-- One row a supplier. RangeEquipFROM0 to 3 are the thresholds of its rate card
-- in falling order, RangeEquipFROM4 is the floor of the last band.
CREATE TABLE suppliers (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    CompanyName TEXT(50) COLLATE NOCASE,
    Address1 TEXT(50),
    Address2 TEXT(50),
    Town TEXT(50) COLLATE NOCASE,
    County TEXT(50),
    PostCode TEXT(15),
    tel TEXT(30),
    fax TEXT(30),
    email TEXT(50),
    www TEXT(50),
    equipment TEXT(50),
    RangeEquipFROM0 CURRENCY,
    RangeEquipFROM1 CURRENCY,
    RangeEquipFROM2 CURRENCY,
    RangeEquipFROM3 CURRENCY,
    RangeEquipFROM4 CURRENCY,
    Yield0 SINGLE,
    Yield1 SINGLE,
    Yield2 SINGLE,
    Yield3 SINGLE,
    Yield4 SINGLE,
    Com0 SINGLE,
    Com1 SINGLE,
    Com2 SINGLE,
    Com3 SINGLE,
    Com4 SINGLE,
    AdditionalPremium YESNO NOT NULL DEFAULT 0,
    AdditionalPremiumMsg TEXT(30),
    AdditionalPremiumYield SINGLE,
    AdditionalPremiumMin CURRENCY,
    MaintenanceOption YESNO NOT NULL DEFAULT 0,
    ResidualOption YESNO NOT NULL DEFAULT 0
);

-- At most one row: the rate card that a new supplier starts with.
CREATE TABLE DefaultSupplier (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    CompanyName TEXT(50) COLLATE NOCASE,
    Address1 TEXT(50),
    Address2 TEXT(50),
    Town TEXT(50) COLLATE NOCASE,
    County TEXT(50),
    PostCode TEXT(15),
    tel TEXT(30),
    fax TEXT(30),
    email TEXT(50),
    www TEXT(50),
    equipment TEXT(50),
    RangeEquipFROM0 CURRENCY,
    RangeEquipFROM1 CURRENCY,
    RangeEquipFROM2 CURRENCY,
    RangeEquipFROM3 CURRENCY,
    RangeEquipFROM4 CURRENCY,
    Yield0 SINGLE,
    Yield1 SINGLE,
    Yield2 SINGLE,
    Yield3 SINGLE,
    Yield4 SINGLE,
    Com0 SINGLE,
    Com1 SINGLE,
    Com2 SINGLE,
    Com3 SINGLE,
    Com4 SINGLE,
    AdditionalPremium YESNO NOT NULL DEFAULT 0,
    AdditionalPremiumMsg TEXT(30),
    AdditionalPremiumYield SINGLE,
    AdditionalPremiumMin CURRENCY,
    MaintenanceOption YESNO NOT NULL DEFAULT 0,
    ResidualOption YESNO NOT NULL DEFAULT 0
);

-- The form pages that go out with the calculator of a supplier. Supplier 0 holds the
-- choice for new suppliers. Rows are inserted by position: FormId comes first.
CREATE TABLE SupplierFormLink (
    FormId INTEGER,
    SupplierId INTEGER
);

-- One row a form page, the page itself is the file Forms/<ID>.HTML. LinkName
-- becomes a file name, so it holds no character that a file name may not.
CREATE TABLE Forms (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Description TEXT(100) COLLATE NOCASE,
    LinkName TEXT(50),
    Available YESNO NOT NULL DEFAULT 0
);

-- The people at a supplier. DateLastSent stays empty until a calculator is sent.
CREATE TABLE contacts (
    ID INTEGER PRIMARY KEY AUTOINCREMENT,
    Supplierid INTEGER,
    firstname TEXT(30) COLLATE NOCASE,
    surname TEXT(30) COLLATE NOCASE,
    jobtitle TEXT(50),
    tel TEXT(30),
    fax TEXT(30),
    email TEXT(50),
    DateLastSent DATETIME
);

CREATE INDEX ContactsBySupplier ON contacts (Supplierid);
CREATE INDEX FormLinksBySupplier ON SupplierFormLink (SupplierId);
