-- The stud database: one file per kind of livestock, born as a copy of EmptyStock.mdb.
-- Dates are day serials (days since 30 December 1899, time of day as the fraction).
-- Text keys compare without regard to case, so a vocabulary walk yields "Black" once
-- even when "black" is on another animal. Relations between tables are not enforced:
-- the program removes dependent rows itself and survives references to rows that are gone.
-- SQLite index names are global, so each index carries its table's name in front of the
-- short name the program uses (Stock_PrimaryKey is the PrimaryKey of Stock).

CREATE TABLE Stock (
    Number    INTEGER PRIMARY KEY AUTOINCREMENT,
    Name      TEXT COLLATE NOCASE,
    RingNo    TEXT COLLATE NOCASE,
    id2       TEXT COLLATE NOCASE,
    id3       TEXT COLLATE NOCASE,
    Type      TEXT COLLATE NOCASE CHECK (length(Type) <= 30),
    Sex       TEXT COLLATE NOCASE,
    Colour    TEXT COLLATE NOCASE CHECK (length(Colour) <= 30),
    Breeder   TEXT COLLATE NOCASE CHECK (length(Breeder) <= 35),
    status    TEXT COLLATE NOCASE CHECK (length(status) <= 30),
    Archive   TEXT COLLATE NOCASE DEFAULT 'No',
    DOB       REAL,
    DOD       REAL,
    Sire      INTEGER,
    Dam       INTEGER,
    Weight    REAL CHECK (Weight IS NULL OR Weight >= 0),
    Genotype  TEXT,
    Health    TEXT,
    Notes     TEXT,
    BestAward TEXT CHECK (length(BestAward) <= 25)
);
CREATE INDEX Stock_PrimaryKey  ON Stock (Name);
CREATE INDEX Stock_ParentKey   ON Stock (Sex, Archive, Name);
CREATE INDEX Stock_SireKey     ON Stock (Sire);
CREATE INDEX Stock_DamKey      ON Stock (Dam);
CREATE INDEX Stock_TypeKey     ON Stock (Type);
CREATE INDEX Stock_ColourKey   ON Stock (Colour);
CREATE INDEX Stock_BreederKey  ON Stock (Breeder);
CREATE INDEX Stock_StatusKey   ON Stock (status);

CREATE TABLE Awards (
    "Unique"   INTEGER PRIMARY KEY AUTOINCREMENT,
    Number     INTEGER,
    Date       REAL,
    Venue      TEXT COLLATE NOCASE CHECK (length(Venue) <= 50),
    Secretary  TEXT COLLATE NOCASE CHECK (length(Secretary) <= 20),
    Judge      TEXT COLLATE NOCASE CHECK (length(Judge) <= 20),
    Award      TEXT COLLATE NOCASE CHECK (length(Award) <= 45),
    NoEntered  INTEGER,
    NoShown    INTEGER,
    Stars      TEXT,
    CCStars    TEXT,
    Comments   TEXT
);
CREATE INDEX Awards_PrimaryKey ON Awards (Number, Date, "Unique");
CREATE INDEX Awards_Awards     ON Awards (Award);
CREATE INDEX Awards_Judges     ON Awards (Judge);
CREATE INDEX Awards_Venues     ON Awards (Venue);

CREATE TABLE BreedNote (
    "Unique"  INTEGER PRIMARY KEY AUTOINCREMENT,
    Number    INTEGER,
    Date      REAL,
    Notes     TEXT
);
CREATE INDEX BreedNote_PrimaryKey ON BreedNote (Number, Date, "Unique");

CREATE TABLE Matings (
    "Unique"   INTEGER PRIMARY KEY AUTOINCREMENT,
    Sire       INTEGER,
    Dam        INTEGER,
    MatingDate REAL,
    Birthdate  REAL
);
CREATE INDEX Matings_SireKey  ON Matings (Sire);
CREATE INDEX Matings_DamKey   ON Matings (Dam);
CREATE INDEX Matings_BirthKey ON Matings (Birthdate);

CREATE TABLE Genes (
    StockNo  INTEGER NOT NULL,
    Id       INTEGER NOT NULL CHECK (Id BETWEEN 0 AND 255),
    allele1  INTEGER NOT NULL DEFAULT 0 CHECK (allele1 BETWEEN 0 AND 255),
    allele2  INTEGER NOT NULL DEFAULT 0 CHECK (allele2 BETWEEN 0 AND 255)
);
CREATE UNIQUE INDEX Genes_PrimaryKey ON Genes (StockNo, Id);

CREATE TABLE Images (
    Number    INTEGER,
    imageno   INTEGER,
    Path      TEXT,
    Caption   TEXT,
    Comments  TEXT,
    "Default" INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX Images_PrimaryKey ON Images (Number, imageno);
CREATE INDEX Images_DefaultKey ON Images (Number, "Default");
