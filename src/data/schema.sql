-- The tables of a practice. Days are ISO text in columns declared DATE, times HH:MM text, amounts REAL in dinars;
-- SMALLINT columns hold signed 16-bit integers, INTEGER ones 32-bit keys.

-- Patients, acts, appointments and the journal of deleted acts are filled from outside the program.

CREATE TABLE Patients (
    num     INTEGER PRIMARY KEY,
    nom     TEXT,
    Prenom  TEXT,
    Naiss   DATE,
    Sexe    SMALLINT,           -- 0 male, otherwise female
    tel     TEXT,
    ville   TEXT,
    N_carte TEXT,
    diagno  TEXT,
    Flag_H  SMALLINT DEFAULT 0  -- 1 archived
);

-- Serves card numbers without letters, which are equal to themselves alone. Names are compared without regard to case and
-- accents, by rules that no index of SQLite knows.
CREATE INDEX Patients_Carte ON Patients (N_carte);

CREATE TABLE Actes (
    num         INTEGER PRIMARY KEY,
    Date        DATE,
    MM          SMALLINT,            -- month and year of Date
    AA          SMALLINT,
    date_Presta DATE,
    HH          SMALLINT,            -- hour slot, 0 for 8-9 to 9 for 17-18
    Heure       TEXT,
    num_patient INTEGER,
    num_presta  INTEGER,
    montant     REAL DEFAULT 0,
    Type        TEXT,                -- "C" or "K0" to "K30"
    flag_R      SMALLINT DEFAULT 0,  -- 0 NP, 1 R-, 2 P, 3 R+, 4 Gr, 5 AB
    Flag_H      SMALLINT DEFAULT 0   -- 1 archived
);

CREATE INDEX Actes_Date_Presta ON Actes (Date, num_presta);            -- the acts of a day and service, by key
CREATE INDEX Actes_Date_Montant ON Actes (Date, montant);              -- the balance before a day, from the index alone
CREATE INDEX Actes_Date_Reglement ON Actes (Date, num, flag_R);        -- by day in the order of the keys, pending or settled
CREATE INDEX Actes_Presta_Date ON Actes (num_presta, Date, montant);   -- counts and sums of a service over a period
CREATE INDEX Actes_DatePresta ON Actes (date_Presta, num_presta);      -- what was realised of a day's planning
CREATE INDEX Actes_Mois ON Actes (AA, MM, num_presta);                 -- the monthly situation

-- The highest key that was ever held tells new lines from those that were taken away here.
CREATE TABLE Actes_suppr (
    num         INTEGER PRIMARY KEY AUTOINCREMENT,
    Date        DATE,
    Heure       TEXT,
    num_patient INTEGER,
    num_presta  INTEGER,
    Type        TEXT,
    flag_R      SMALLINT,
    Date_Suppr  DATE,
    H_Suppr     TEXT
);

CREATE INDEX Actes_suppr_Date ON Actes_suppr (Date_Suppr);

CREATE TABLE Plani (
    num         INTEGER PRIMARY KEY,
    date        DATE,
    Num_Presta  INTEGER,
    HH          SMALLINT,
    num_patient INTEGER
);

CREATE INDEX Plani_Date ON Plani (date, Num_Presta, HH);

-- What the program itself keeps.

-- A key that was given once is never given again: appointments and deleted acts may still hold that of a deleted service.
CREATE TABLE Presta (
    num   INTEGER PRIMARY KEY AUTOINCREMENT,
    denom TEXT,
    prix  REAL,
    Ordre SMALLINT
);

-- One row, reached by position: the rate of C, then those of K0 to K30.
CREATE TABLE Tarif (
    C   SMALLINT, K0  SMALLINT, K1  SMALLINT, K2  SMALLINT, K3  SMALLINT, K4  SMALLINT, K5  SMALLINT, K6  SMALLINT,
    K7  SMALLINT, K8  SMALLINT, K9  SMALLINT, K10 SMALLINT, K11 SMALLINT, K12 SMALLINT, K13 SMALLINT, K14 SMALLINT,
    K15 SMALLINT, K16 SMALLINT, K17 SMALLINT, K18 SMALLINT, K19 SMALLINT, K20 SMALLINT, K21 SMALLINT, K22 SMALLINT,
    K23 SMALLINT, K24 SMALLINT, K25 SMALLINT, K26 SMALLINT, K27 SMALLINT, K28 SMALLINT, K29 SMALLINT, K30 SMALLINT
);

-- In spite of its name: the expenses.
CREATE TABLE Recettes (
    num     INTEGER PRIMARY KEY AUTOINCREMENT,
    Date    DATE,
    MM      REAL,
    objet   TEXT,
    montant REAL
);

CREATE INDEX Recettes_Date ON Recettes (Date, num, montant);

-- One row: the texts that the reports print.
CREATE TABLE textes (
    ch1 TEXT DEFAULT '', ch2 TEXT DEFAULT '', ch3 TEXT DEFAULT '', ch4 TEXT DEFAULT '', ch5 TEXT DEFAULT '',
    ch6 TEXT DEFAULT '', ch7 TEXT DEFAULT '', ch8 TEXT DEFAULT '', ch9 TEXT DEFAULT '', ch10 TEXT DEFAULT '',
    ch30 TEXT DEFAULT ''
);
INSERT INTO textes DEFAULT VALUES;

-- One row: the permanent data of the practice. The first eight fields are reached by position.
CREATE TABLE Permn (
    Registre   TEXT,
    Id_Fiscale TEXT,
    Article    TEXT,
    Telephone  TEXT,
    Fax        TEXT,
    Compte     TEXT,
    Agence     TEXT,
    RIB        TEXT,
    Charge1    REAL, Charge2 REAL, Charge3 REAL, Charge4 REAL, Charge5 REAL, Charge6 REAL, Charge7 REAL,
    Charge8    REAL,
    Charge9    REAL,
    Taux_CNAS  REAL,
    Taux_PP    REAL,
    Taux_VF    REAL,
    Date       TEXT,             -- dd/mm/yyyy, end of the last actualisation
    nbre       SMALLINT,         -- option chosen with it
    RC         TEXT              -- "OUI" for the limited display of acts
);
INSERT INTO Permn (Registre, Id_Fiscale, Article, Telephone, Fax, Compte, Agence, RIB, Taux_CNAS, Taux_PP, Taux_VF)
VALUES (' ', ' ', ' ', ' ', ' ', ' ', ' ', ' ', 9, 25.5, 6);

-- Scratch tables of the reports. Prov gets its sixth field, Mt2, when the practice is first opened.

CREATE TABLE Prov (
    num   INTEGER,
    unite TEXT,
    Page  INTEGER,
    Mt    REAL,
    Obs   TEXT
);

CREATE TABLE RCP2 (
    denom TEXT,
    C1 REAL, C2 REAL, C3 REAL, C4 REAL, C5 REAL, C6 REAL, C7 REAL
);
