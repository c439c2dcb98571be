-- Reference rows shared by the demo companies (SQLite dialect, run untranslated).
-- Company-specific rows (agents, divisions, classifications, priorities, campaigns, subjects,
-- trees, contracts) are generated in C++ from a fixed seed.

INSERT INTO CG18_DITTE (CG18_DITTA, CG18_RAGSOC, CG18_CITTA, CG18_PROV, CG18_PARTIVA) VALUES
    (1, 'Emiliana Alimenti S.p.A.', 'Bologna', 'BO', '02841750377'),
    (2, 'Bottega del Gusto S.r.l.', 'Firenze', 'FI', '05512380482');

INSERT INTO WF01_STATI (WF01_ID, WF01_FLUSSO, WF01_CODICE, WF01_DESCR, WF01_FLGDEFAULT, WF01_ORDINE) VALUES
    (0, 'DISTINTA', 'NUOVO',  'Nuovo',           1, 0),
    (1, 'DISTINTA', 'INLAV',  'In lavorazione',  0, 1),
    (2, 'DISTINTA', 'DAAPP',  'Da approvare',    0, 2),
    (3, 'DISTINTA', 'APPROV', 'Approvato',       0, 3),
    (4, 'DISTINTA', 'SOSP',   'Sospeso',         0, 4),
    (5, 'DISTINTA', 'ANNUL',  'Annullato',       0, 5),
    (6, 'DISTINTA', 'ATTIVO', 'Attivo',          0, 6);

INSERT INTO CG62_CONDPAGDES (CG62_CODPAG, CG62_DESCPAG) VALUES
    ('RD',   'Rimessa diretta'),
    ('CON',  'Contrassegno'),
    ('BBAN', 'Bonifico anticipato'),
    ('BB30', 'Bonifico 30 gg d.f.'),
    ('BB60', 'Bonifico 60 gg d.f.'),
    ('BB90', 'Bonifico 30/60/90 gg d.f.f.m.'),
    ('RB30', 'Ri.Ba. 30 gg f.m.'),
    ('RB60', 'Ri.Ba. 60 gg f.m.'),
    ('RB36', 'Ri.Ba. 30/60 gg f.m.'),
    ('RB90', 'Ri.Ba. 90 gg f.m.'),
    ('SDD',  'SEPA SDD 60 gg f.m.'),
    ('RID',  'R.I.D. 30 gg d.f.');

INSERT INTO CG12_BANCHE (CG12_BANCA, CG12_DESCR) VALUES
    ('03069', 'Intesa Sanpaolo S.p.A.'),
    ('02008', 'UniCredit S.p.A.'),
    ('05034', 'Banco BPM S.p.A.'),
    ('01030', 'Banca Monte dei Paschi di Siena S.p.A.'),
    ('05387', 'BPER Banca S.p.A.'),
    ('06230', 'Crédit Agricole Italia S.p.A.'),
    ('03032', 'Credito Emiliano S.p.A.'),
    ('05696', 'Banca Popolare di Sondrio S.p.A.'),
    ('03440', 'Banco di Desio e della Brianza S.p.A.'),
    ('08327', 'Banca di Credito Cooperativo di Roma');

INSERT INTO LP01_PROVIDER (LP01_ID, LP01_CODICE, LP01_DESCR) VALUES
    (1, 'LISTBASE', 'Listino base'),
    (2, 'LISTCLI',  'Listino personalizzato cliente'),
    (3, 'SCCLI',    'Sconti cliente'),
    (4, 'SCCAT',    'Sconti per categoria merceologica'),
    (5, 'PROMO',    'Promozioni in fattura'),
    (6, 'CONTR',    'Condizioni da contratto'),
    (7, 'OMAGGI',   'Omaggi e sconto merce'),
    (8, 'NETTI',    'Prezzi netti concordati');
