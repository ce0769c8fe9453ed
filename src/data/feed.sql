-- What the feed of a practice from another program keeps for itself. Screens, check and import don't see these tables.

-- By act: the settlement that the source had when the act was last fed (Null: none is known), both settlements of the
-- dispute that was named last, and why an act that the source no longer has was named.
CREATE TABLE IF NOT EXISTS "ZEP settlements" (
    num            INTEGER PRIMARY KEY,
    flag_R         SMALLINT,
    montant        REAL,
    our_flag_R     SMALLINT,
    our_montant    REAL,
    source_flag_R  SMALLINT,
    source_montant REAL,
    gone           SMALLINT
);

-- Lines of Actes_suppr that may still remove an act.
CREATE TABLE IF NOT EXISTS "ZEP deletions" (
    num         INTEGER PRIMARY KEY,
    Date        DATE,
    Heure       TEXT,
    num_patient INTEGER,
    num_presta  INTEGER,
    Type        TEXT,
    flag_R      SMALLINT
);
