-- Schema of the suite's database as the classification-list module needs it (Microsoft SQL Server).
--
-- The module's own tables (GD01, GD02, GD03, GD04, GD12), the suite's tables and views that the
-- module reads, and the host's workflow-state tables. Equivalent to db/schema_sqlite.sql, the
-- schema of the embedded database; keep the two in step.
--
-- For installations: run it with sqlcmd -f 65001 (the file is UTF-8; batches are separated by GO)
-- on a database whose collation accepts Italian texts (e.g. Latin1_General_CI_AS). On an
-- installation of the suite the suite's own tables already exist: run only the module's section
-- (GD01..GD12, the views GDVISTA03_SOGGETTICOND and MO09_TIPODIST, the triggers and the GD
-- indexes).
--
-- Conventions: generated keys are IDENTITY(1,1); guids default to NEWID(); root nodes of
-- GD02_DISTINTA have parent 0 or NULL; deleting a node removes its subtree (trigger); triggers
-- refuse rows that would break a tree (see Triggers).

-- ---------------------------------------------------------------------------------------------
-- Host: companies and workflow states
-- ---------------------------------------------------------------------------------------------

CREATE TABLE CG18_DITTE (
    CG18_DITTA          INT      NOT NULL PRIMARY KEY,
    CG18_RAGSOC         VARCHAR(80)  NOT NULL,
    CG18_CITTA          VARCHAR(40)  NULL,
    CG18_PROV           VARCHAR(2)   NULL,
    CG18_PARTIVA        VARCHAR(11)  NULL
);
GO

-- States of the workflows; GD02_ID_WF02, GD03_ID_WF02 and GD04_ID_WF02 hold a WF01_ID.
CREATE TABLE WF01_STATI (
    WF01_ID             INT      NOT NULL PRIMARY KEY,
    WF01_FLUSSO         VARCHAR(30)  NOT NULL DEFAULT 'DISTINTA',
    WF01_CODICE         VARCHAR(10)  NOT NULL,
    WF01_DESCR          VARCHAR(60)  NOT NULL,
    WF01_FLGDEFAULT     INT      NOT NULL DEFAULT 0,
    WF01_ORDINE         INT      NOT NULL DEFAULT 0
);
GO

-- Current state of a row identified by its guid (GD01_GUID, gd02_guid), with its audit stamp.
CREATE TABLE WF02_STATORIGA (
    WF02_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    WF02_GUID           UNIQUEIDENTIFIER NOT NULL,
    WF02_TABELLA        VARCHAR(30)  NULL,
    WF02_ID_WF01        INT      NOT NULL,
    WF02_DATACRE        DATETIME     NULL DEFAULT GETDATE(),
    WF02_GRUPPOCRE      VARCHAR(20)  NULL,
    WF02_UTENTECRE      VARCHAR(20)  NULL,
    WF02_DATAVAR        DATETIME     NULL DEFAULT GETDATE(),
    WF02_GRUPPOVAR      VARCHAR(20)  NULL,
    WF02_UTENTEVAR      VARCHAR(20)  NULL
);
GO

-- ---------------------------------------------------------------------------------------------
-- Suite: general master data, customers and suppliers
-- ---------------------------------------------------------------------------------------------

CREATE TABLE CG16_ANAGGEN (
    CG16_CODICE         INT      NOT NULL PRIMARY KEY,
    CG16_RAGSOANAG      VARCHAR(80)  NOT NULL,
    CG16_INDIRIZZO      VARCHAR(60)  NULL,
    CG16_CAP            VARCHAR(5)   NULL,
    CG16_CITTA          VARCHAR(40)  NULL,
    CG16_PROV           VARCHAR(2)   NULL,
    CG16_TEL1NUM        VARCHAR(20)  NULL,
    CG16_FAXNUM         VARCHAR(20)  NULL,
    CG16_PARTIVA        VARCHAR(11)  NULL
);
GO

CREATE TABLE CG62_CONDPAGDES (
    CG62_CODPAG         VARCHAR(4)   NOT NULL PRIMARY KEY,
    CG62_DESCPAG        VARCHAR(60)  NOT NULL
);
GO

CREATE TABLE CG12_BANCHE (
    CG12_BANCA          VARCHAR(5)   NOT NULL PRIMARY KEY,
    CG12_DESCR          VARCHAR(60)  NOT NULL
);
GO

CREATE TABLE CG13_AGENZIE (
    CG13_BANCA_CG12     VARCHAR(5)   NOT NULL,
    CG13_CODCAB         VARCHAR(5)   NOT NULL,
    CG13_DESCR          VARCHAR(60)  NOT NULL,
    PRIMARY KEY (CG13_BANCA_CG12, CG13_CODCAB)
);
GO

CREATE TABLE MG17_AGENTI (
    MG17_IDAGENTE       INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    MG17_DITTA_CG18     INT      NOT NULL,
    MG17_AGENTE         VARCHAR(6)   NOT NULL,
    MG17_ANAGEN_CG16    INT      NULL,
    MG17_PERCPROVV      DECIMAL(18,4) NULL
);
GO

CREATE TABLE CG44_CLIFOR (
    CG44_DITTA_CG18     INT      NOT NULL,
    CG44_TIPOCF         INT      NOT NULL,
    CG44_CLIFOR         INT      NOT NULL,
    CG44_CODICE_CG16    INT      NOT NULL,
    CG44_CODPAG_CG62    VARCHAR(4)   NULL,
    CG44_IDAGENTE_MG17  INT      NULL,
    CG44_CODICE_CG08    VARCHAR(3)   NULL,
    CG44_CODICE_CG28    VARCHAR(4)   NULL,
    CG44_CODABI_CG12    VARCHAR(5)   NULL,
    CG44_CODCAB_CG13    VARCHAR(5)   NULL,
    CG44_FIDO           DECIMAL(18,4) NULL,
    PRIMARY KEY (CG44_DITTA_CG18, CG44_TIPOCF, CG44_CLIFOR)
);
GO

-- ---------------------------------------------------------------------------------------------
-- Suite: market classifications, keyed by company and subject kind
-- ---------------------------------------------------------------------------------------------

CREATE TABLE MG07_MACROAREE (
    MG07_DITTA_CG18     INT      NOT NULL,
    MG07_TIPOCF_CG44    INT      NOT NULL,
    MG07_MACROAREA      VARCHAR(6)   NOT NULL,
    MG07_DESCRMACROAR   VARCHAR(40)  NOT NULL,
    PRIMARY KEY (MG07_DITTA_CG18, MG07_TIPOCF_CG44, MG07_MACROAREA)
);
GO

CREATE TABLE MG08_AREE (
    MG08_DITTA_CG18     INT      NOT NULL,
    MG08_TIPOCF_CG44    INT      NOT NULL,
    MG08_MACROAREA_MG07 VARCHAR(6)   NOT NULL,
    MG08_AREA           VARCHAR(6)   NOT NULL,
    MG08_DESCRAREA      VARCHAR(40)  NOT NULL,
    PRIMARY KEY (MG08_DITTA_CG18, MG08_TIPOCF_CG44, MG08_MACROAREA_MG07, MG08_AREA)
);
GO

CREATE TABLE MG09_ZONE (
    MG09_DITTA_CG18     INT      NOT NULL,
    MG09_TIPOCF_CG44    INT      NOT NULL,
    MG09_MACROAREA_MG07 VARCHAR(6)   NOT NULL,
    MG09_AREA_MG08      VARCHAR(6)   NOT NULL,
    MG09_ZONA           VARCHAR(6)   NOT NULL,
    MG09_DESCRZONA      VARCHAR(40)  NOT NULL,
    PRIMARY KEY (MG09_DITTA_CG18, MG09_TIPOCF_CG44, MG09_MACROAREA_MG07, MG09_AREA_MG08, MG09_ZONA)
);
GO

CREATE TABLE MG10_MACROCAT (
    MG10_DITTA_CG18     INT      NOT NULL,
    MG10_TIPOCF_CG44    INT      NOT NULL,
    MG10_MACROCAT       VARCHAR(6)   NOT NULL,
    MG10_DESCRMACROCAT  VARCHAR(40)  NOT NULL,
    PRIMARY KEY (MG10_DITTA_CG18, MG10_TIPOCF_CG44, MG10_MACROCAT)
);
GO

CREATE TABLE MG11_CATEG (
    MG11_DITTA_CG18     INT      NOT NULL,
    MG11_TIPOCF_CG44    INT      NOT NULL,
    MG11_MACROCAT_MG10  VARCHAR(6)   NOT NULL,
    MG11_CATEG          VARCHAR(6)   NOT NULL,
    MG11_DESCRCAT       VARCHAR(40)  NOT NULL,
    PRIMARY KEY (MG11_DITTA_CG18, MG11_TIPOCF_CG44, MG11_MACROCAT_MG10, MG11_CATEG)
);
GO

CREATE TABLE MG12_SOTTOCAT (
    MG12_DITTA_CG18     INT      NOT NULL,
    MG12_TIPOCF_CG44    INT      NOT NULL,
    MG12_MACROCAT_MG10  VARCHAR(6)   NOT NULL,
    MG12_CATEG_MG11     VARCHAR(6)   NOT NULL,
    MG12_SOTTCAT        VARCHAR(6)   NOT NULL,
    MG12_DESCRSOTTOCAT  VARCHAR(40)  NOT NULL,
    PRIMARY KEY (MG12_DITTA_CG18, MG12_TIPOCF_CG44, MG12_MACROCAT_MG10, MG12_CATEG_MG11, MG12_SOTTCAT)
);
GO

CREATE TABLE MG31_RAGGRCF1 (
    MG31_DITTA_CG18     INT      NOT NULL,
    MG31_TIPOCF_CG44    INT      NOT NULL,
    MG31_CODRAGGRCF1    VARCHAR(6)   NOT NULL,
    MG31_DESCRAGGRCF1   VARCHAR(40)  NOT NULL,
    PRIMARY KEY (MG31_DITTA_CG18, MG31_TIPOCF_CG44, MG31_CODRAGGRCF1)
);
GO

CREATE TABLE MG32_RAGGRCF2 (
    MG32_DITTA_CG18     INT      NOT NULL,
    MG32_TIPOCF_CG44    INT      NOT NULL,
    MG32_CODRAGGRCF2    VARCHAR(6)   NOT NULL,
    MG32_DESCRAGGRCF2   VARCHAR(40)  NOT NULL,
    PRIMARY KEY (MG32_DITTA_CG18, MG32_TIPOCF_CG44, MG32_CODRAGGRCF2)
);
GO

CREATE TABLE MG33_RAGGRCF3 (
    MG33_DITTA_CG18     INT      NOT NULL,
    MG33_TIPOCF_CG44    INT      NOT NULL,
    MG33_CODRAGGRCF3    VARCHAR(6)   NOT NULL,
    MG33_DESCRAGGRCF3   VARCHAR(40)  NOT NULL,
    PRIMARY KEY (MG33_DITTA_CG18, MG33_TIPOCF_CG44, MG33_CODRAGGRCF3)
);
GO

-- Sales data of a subject. The third grouping column is spelled MG19_RAGGCRF3 in the suite.
CREATE TABLE MG19_CLIFORVA (
    MG19_DITTA_CG18     INT      NOT NULL,
    MG19_TIPOCF_CG44    INT      NOT NULL,
    MG19_CLIFOR_CG44    INT      NOT NULL,
    MG19_LISTMAG        INT      NULL,
    MG19_MACROAREA      VARCHAR(6)   NULL,
    MG19_AREA           VARCHAR(6)   NULL,
    MG19_ZONA           VARCHAR(6)   NULL,
    MG19_MACROCAT       VARCHAR(6)   NULL,
    MG19_CATEG          VARCHAR(6)   NULL,
    MG19_SOTTOCAT       VARCHAR(6)   NULL,
    MG19_RAGGRCF1       VARCHAR(6)   NULL,
    MG19_RAGGRCF2       VARCHAR(6)   NULL,
    MG19_RAGGCRF3       VARCHAR(6)   NULL,
    PRIMARY KEY (MG19_DITTA_CG18, MG19_TIPOCF_CG44, MG19_CLIFOR_CG44)
);
GO

-- ---------------------------------------------------------------------------------------------
-- Suite: divisions and per-division data of a subject
-- ---------------------------------------------------------------------------------------------

CREATE TABLE CO1A_ANAGDIVISIONI (
    CO1A_IDDIV          INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    CO1A_DITTA_CG18     INT      NOT NULL,
    CO1A_CODICE         VARCHAR(6)   NOT NULL,
    CO1A_DESCR          VARCHAR(40)  NOT NULL
);
GO

-- One row per subject and division; a NULL override means "the subject's general value".
CREATE TABLE CO1D_CLIFORDIV (
    CO1D_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    CO1D_DITTA_CG18     INT      NOT NULL,
    CO1D_TIPOCF_CG44    INT      NOT NULL,
    CO1D_CLIFOR_CG44    INT      NOT NULL,
    CO1D_IDDIV_CO1A     INT      NOT NULL,
    CO1D_CODPAG_CG62    VARCHAR(4)   NULL,
    CO1D_IDAGENTE_MG17  INT      NULL,
    CO1D_MACROAREA      VARCHAR(6)   NULL,
    CO1D_AREA           VARCHAR(6)   NULL,
    CO1D_ZONA           VARCHAR(6)   NULL,
    CO1D_MACROCAT       VARCHAR(6)   NULL,
    CO1D_CATEG          VARCHAR(6)   NULL,
    CO1D_SOTTOCAT       VARCHAR(6)   NULL,
    CO1D_RAGGRCF1       VARCHAR(6)   NULL,
    CO1D_RAGGRCF2       VARCHAR(6)   NULL,
    CO1D_RAGGRCF3       VARCHAR(6)   NULL
);
GO

CREATE VIEW VCO1C_CLIFOR AS
SELECT CO1D_ID            AS CO1C_ID,
       CO1D_DITTA_CG18    AS CO1C_DITTA_CG18,
       CO1D_TIPOCF_CG44   AS CO1C_TIPOCF_CG44,
       CO1D_CLIFOR_CG44   AS CO1C_CLIFOR_CG44,
       CO1D_IDDIV_CO1A    AS CO1C_IDDIV_CO1A,
       CO1D_CODPAG_CG62, CO1D_IDAGENTE_MG17,
       CO1D_MACROAREA, CO1D_AREA, CO1D_ZONA,
       CO1D_MACROCAT, CO1D_CATEG, CO1D_SOTTOCAT,
       CO1D_RAGGRCF1, CO1D_RAGGRCF2, CO1D_RAGGRCF3
  FROM CO1D_CLIFORDIV;
GO

-- ---------------------------------------------------------------------------------------------
-- Suite: price-list priorities and promotional campaigns
-- ---------------------------------------------------------------------------------------------

-- LP09_INDTIPOTABPRIORITA: 0 structural, 1 localised.
CREATE TABLE LP09_TESTATAPRIORITA (
    LP09_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    LP09_DITTA_CG18     INT      NOT NULL,
    LP09_CODICE         VARCHAR(10)  NOT NULL,
    LP09_DESCR          VARCHAR(60)  NOT NULL,
    LP09_INDTIPOTABPRIORITA INT  NOT NULL DEFAULT 0
);
GO

CREATE TABLE LP01_PROVIDER (
    LP01_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    LP01_CODICE         VARCHAR(10)  NOT NULL,
    LP01_DESCR          VARCHAR(60)  NOT NULL
);
GO

CREATE TABLE LP10_DETTAGLIOPRIORITA (
    LP10_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    LP10_ID_LP09        INT      NOT NULL,
    LP10_ID_LP01        INT      NOT NULL,
    LP10_ORDINE         INT      NOT NULL DEFAULT 0
);
GO

CREATE TABLE MG94_CAMPANAG (
    MG94_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    MG94_DITTA_CG18     INT      NOT NULL,
    MG94_CODCAMP        VARCHAR(10)  NOT NULL,
    MG94_DESCAMP        VARCHAR(60)  NOT NULL,
    MG94_DATAINIZIO     DATETIME     NULL,
    MG94_DATAFINE       DATETIME     NULL,
    MG94_FLGATTIVA      INT      NOT NULL DEFAULT 0
);
GO

-- ---------------------------------------------------------------------------------------------
-- Suite: contracts, bonuses and their settlements
-- ---------------------------------------------------------------------------------------------

CREATE TABLE GD10_CONTRATTI (
    GD10_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    GD10_DITTA_CG18     INT      NOT NULL,
    GD10_CODCONTR       VARCHAR(10)  NOT NULL,
    GD10_VERCONTR       INT      NOT NULL DEFAULT 1,
    GD10_DESCR          VARCHAR(60)  NOT NULL,
    GD10_TIPOCF_CG44    INT      NOT NULL DEFAULT 0,
    GD10_CLIFOR_CG44    INT      NOT NULL,
    GD10_IDDIV_CO1A     INT      NULL,
    GD10_DATAINIZIO     DATETIME     NULL,
    GD10_DATAFINE       DATETIME     NULL
);
GO

-- A condition of a contract: GD13_TIPOCOND 0 bonus ("Premio"), 1 promotional activity.
CREATE TABLE GD13_PREMI (
    GD13_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    GD13_DITTA_CG18     INT      NOT NULL,
    GD13_ID_GD10        INT      NOT NULL,
    GD13_CODCONTR_GD10  VARCHAR(10)  NOT NULL,
    GD13_VERCONTR_GD10  INT      NOT NULL,
    GD13_PROGRCOND      INT      NOT NULL,
    GD13_CODCOND        VARCHAR(10)  NOT NULL,
    GD13_DESCR          VARCHAR(60)  NOT NULL,
    GD13_TIPOCOND       INT      NOT NULL DEFAULT 0,
    GD13_TIPOPREMIO     VARCHAR(10)  NULL,
    GD13_PERCENTUALE    DECIMAL(18,4) NULL,
    GD13_DATAINIZIO     DATETIME     NULL,
    GD13_DATAFINE       DATETIME     NULL
);
GO

-- The subjects a condition applies to: a node (GD14_ID_GD02) or, with GD14_ID_GD02 = 0, a subject.
CREATE TABLE GD14_SOGGCONTR (
    GD14_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    GD14_DITTA_CG18     INT      NOT NULL,
    GD14_ID_GD13        INT      NOT NULL,
    GD14_CODCONTR_GD10  VARCHAR(10)  NOT NULL,
    GD14_VERCONTR_GD10  INT      NOT NULL,
    GD14_PROGRCOND_GD13 INT      NOT NULL,
    GD14_ID_GD02        INT      NOT NULL DEFAULT 0,
    GD14_TIPOCF_CG44    INT      NOT NULL DEFAULT 0,
    GD14_CLIFOR_CG44    INT      NULL
);
GO

-- Settlement deadlines of a bonus; GD18_STATOSCADENZA 2 or more is definitive.
CREATE TABLE GD18_LIQUIDAZIONE (
    GD18_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    GD18_DITTA_CG18     INT      NOT NULL,
    GD18_ID_GD13        INT      NOT NULL,
    GD18_DATASCADENZA   DATETIME     NOT NULL,
    GD18_STATOSCADENZA  INT      NOT NULL DEFAULT 0,
    GD18_IMPORTO        DECIMAL(18,4) NULL
);
GO

-- Nodes excluded from a contract condition.
CREATE TABLE GD27_SOGGCONTRDISAB (
    GD27_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    GD27_DITTA_CG18     INT      NOT NULL,
    GD27_CODCONTR_GD10  VARCHAR(10)  NOT NULL,
    GD27_VERCONTR_GD10  INT      NOT NULL,
    GD27_PROGRCOND_GD13 INT      NOT NULL,
    GD27_ID_GD02        INT      NOT NULL
);
GO

-- ---------------------------------------------------------------------------------------------
-- Module: classification types, nodes, parameters, print work table, node promotions
-- ---------------------------------------------------------------------------------------------

CREATE TABLE GD01_TIPODISTINTA (
    GD01_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    GD01_DITTA_CG18     INT      NOT NULL,
    GD01_CODICE         VARCHAR(20)  NOT NULL,
    GD01_DESCR          VARCHAR(80)  NOT NULL,
    GD01_INDTIPOSOGG    INT      NOT NULL DEFAULT 0,
    GD01_IDDIV_CO1A     INT      NULL,
    GD01_ID_LP09        INT      NULL,
    GD01_GUID           UNIQUEIDENTIFIER NULL DEFAULT NEWID(),
    GD01_DATACRE        DATETIME     NULL,
    GD01_GRUPPOCRE      VARCHAR(20)  NULL,
    GD01_UTENTECRE      VARCHAR(20)  NULL,
    GD01_DATAVAR        DATETIME     NULL,
    GD01_GRUPPOVAR      VARCHAR(20)  NULL,
    GD01_UTENTEVAR      VARCHAR(20)  NULL
);
GO

-- GD02_IDPARENT_GD02: 0 or NULL for a root node ("capostipite").
CREATE TABLE GD02_DISTINTA (
    GD02_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    GD02_ID_GD01        INT      NOT NULL,
    GD02_IDPARENT_GD02  INT      NULL,
    GD02_DITTA_CG18     INT      NOT NULL,
    GD02_TIPOCF_CG44    INT      NOT NULL,
    GD02_CLIFOR_CG44    INT      NULL,
    GD02_INDREGPROV     INT      NULL DEFAULT 0,
    GD02_ID_WF02        INT      NULL DEFAULT 0,
    GD02_DATAINIZIOVAL  DATETIME     NULL,
    GD02_DATAFINEVAL    DATETIME     NULL,
    GD02_TIPOANAGFATT   INT      NULL DEFAULT 0,
    GD02_CLIFORFATT_CG44 INT     NULL,
    GD02_DESCR          VARCHAR(80)  NULL,
    GD02_IDSTRUTTURA_LP09 INT    NULL,
    GD02_IDLOCALIZZATA_LP09 INT  NULL,
    GD02_INDEREPROMO    INT      NULL DEFAULT 0,
    gd02_guid           UNIQUEIDENTIFIER NULL DEFAULT NEWID(),
    GD02_DATACRE        DATETIME     NULL,
    GD02_GRUPPOCRE      VARCHAR(20)  NULL,
    GD02_UTENTECRE      VARCHAR(20)  NULL,
    GD02_DATAVAR        DATETIME     NULL,
    GD02_GRUPPOVAR      VARCHAR(20)  NULL,
    GD02_UTENTEVAR      VARCHAR(20)  NULL
);
GO

CREATE TABLE GD03_PARAMETRI (
    GD03_DITTA_CG18     INT      NOT NULL PRIMARY KEY,
    GD03_ID_WF02        INT      NULL,
    GD03_TIPOCARICODATA INT      NULL,
    GD03_DATAINIZIOVAL  DATETIME     NULL,
    GD03_DATAFINEVAL    DATETIME     NULL,
    GD03_TIPOANAGFATT   INT      NULL,
    GD03_FLG_ANAG       INT      NULL,
    GD03_FLG_CONDVEND   INT      NULL,
    GD03_FLG_CLAS       INT      NULL,
    GD03_FLG_PROV       INT      NULL
);
GO

CREATE TABLE GD04_STDISTINTA (
    GD04_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    GD04_KEY            VARCHAR(200) NOT NULL,
    GD04_DITTA_CG18     INT      NOT NULL,
    GD04_ID_GD01        INT      NULL,
    GD04_LIVELLO        VARCHAR(40)  NULL,
    GD04_TIPOCF_CG44    INT      NULL,
    GD04_CLIFOR_CG44    INT      NULL,
    GD04_DATAINIZIOVAL  DATETIME     NULL,
    GD04_DATAFINEVAL    DATETIME     NULL,
    GD04_ID_WF02        INT      NULL
);
GO

CREATE TABLE GD12_PROMO (
    GD12_ID             INT          IDENTITY(1,1) NOT NULL PRIMARY KEY,
    GD12_DITTA_CG18     INT      NOT NULL,
    GD12_ID_GD02        INT      NOT NULL,
    GD12_ID_MG94        INT      NOT NULL
);
GO
-- ---------------------------------------------------------------------------------------------
-- Views
-- ---------------------------------------------------------------------------------------------

-- Conditions (bonuses and promotional activities of contracts) that reach a node (ID = GD02_ID)
-- or a subject (ID = 0, matched by CondizioneTipoCF/CondizioneCodIntest and period).
-- Nodes excluded from a condition (GD27_SOGGCONTRDISAB) are not reached by it.
CREATE VIEW GDVISTA03_SOGGETTICOND AS
SELECT GD14_ID              AS IDProg,
       GD14_DITTA_CG18      AS Ditta,
       GD10_IDDIV_CO1A      AS Divisione,
       GD14_ID_GD02         AS ID,
       CASE WHEN GD13_TIPOCOND = 0 THEN 'Premio' ELSE 'Attività promozionale' END AS TipoCondizione,
       GD10_ID              AS IDContratto,
       GD10_CODCONTR        AS ContrattoCod,
       GD10_DESCR           AS ContrattoDes,
       GD10_VERCONTR        AS ContrattoVer,
       GD13_ID              AS IDCondizione,
       GD13_CODCOND         AS CondizioneCod,
       GD13_DESCR           AS CondizioneDes,
       GD13_TIPOPREMIO      AS TipoPremioAtt,
       GD13_DATAINIZIO      AS CondizioneIni,
       GD13_DATAFINE        AS CondizioneFin,
       GD14_TIPOCF_CG44     AS CondizioneTipoCF,
       GD14_CLIFOR_CG44     AS CondizioneCodIntest,
       CG16_RAGSOANAG       AS CondizioneRagIntest
  FROM GD14_SOGGCONTR
       INNER JOIN GD13_PREMI ON GD13_PREMI.GD13_ID = GD14_SOGGCONTR.GD14_ID_GD13
       INNER JOIN GD10_CONTRATTI ON GD10_CONTRATTI.GD10_ID = GD13_PREMI.GD13_ID_GD10
       LEFT OUTER JOIN CG44_CLIFOR ON CG44_CLIFOR.CG44_DITTA_CG18 = GD14_SOGGCONTR.GD14_DITTA_CG18
                                  AND CG44_CLIFOR.CG44_TIPOCF = GD14_SOGGCONTR.GD14_TIPOCF_CG44
                                  AND CG44_CLIFOR.CG44_CLIFOR = GD14_SOGGCONTR.GD14_CLIFOR_CG44
       LEFT OUTER JOIN CG16_ANAGGEN ON CG16_ANAGGEN.CG16_CODICE = CG44_CLIFOR.CG44_CODICE_CG16
 WHERE NOT EXISTS (SELECT 1
                     FROM GD27_SOGGCONTRDISAB
                    WHERE GD27_DITTA_CG18     = GD14_SOGGCONTR.GD14_DITTA_CG18
                      AND GD27_CODCONTR_GD10  = GD14_SOGGCONTR.GD14_CODCONTR_GD10
                      AND GD27_VERCONTR_GD10  = GD14_SOGGCONTR.GD14_VERCONTR_GD10
                      AND GD27_PROGRCOND_GD13 = GD14_SOGGCONTR.GD14_PROGRCOND_GD13
                      AND GD27_ID_GD02        = GD14_SOGGCONTR.GD14_ID_GD02);
GO

-- Source of the classification-types print "MO09_TIPODIST_01.rpt".
CREATE VIEW MO09_TIPODIST AS
SELECT GD01_ID              AS MO09_ID,
       GD01_DITTA_CG18      AS MO09_DITTA,
       GD01_CODICE          AS MO09_CODDIST,
       GD01_DESCR           AS MO09_DESCDIST,
       GD01_INDTIPOSOGG     AS MO09_INDTIPOSOGG,
       CASE WHEN GD01_INDTIPOSOGG = 0 THEN 'Cliente' ELSE 'Fornitore' END AS MO09_TIPOSOGG,
       CO1A_CODICE          AS MO09_CODDIV,
       CO1A_DESCR           AS MO09_DESCDIV,
       LP09_CODICE          AS MO09_CODPRIORITA,
       LP09_DESCR           AS MO09_DESCPRIORITA
  FROM GD01_TIPODISTINTA
       LEFT OUTER JOIN CO1A_ANAGDIVISIONI ON CO1A_IDDIV = GD01_IDDIV_CO1A
       LEFT OUTER JOIN LP09_TESTATAPRIORITA ON LP09_ID = GD01_ID_LP09;
GO

-- ---------------------------------------------------------------------------------------------
-- Triggers
-- ---------------------------------------------------------------------------------------------

-- The trees keep themselves valid whoever writes to them (the editor, another program, a
-- statement typed by hand): a statement that would break a tree is refused with a message (THROW
-- rolls it back, so nothing of it is written). Refused are a node whose type does not exist in
-- the node's company; a parent that does not exist or belongs to another type or company (0 and
-- NULL both mean "no parent": the editor writes 0 for a root); a node placed below itself or
-- below one of its descendants; a start of validity after the end (the same day is a valid
-- one-day period; a missing date is allowed); a change of type or company of a node whose
-- children stay behind; the removal, or a change of company, of a type that has nodes. That a
-- date is a date the DATETIME columns enforce themselves. The keys are IDENTITY columns and
-- cannot change.
-- Triggers rather than CHECK and FOREIGN KEY constraints: a root's parent 0 matches no row, a
-- parent must share the node's type and company, which no foreign key expresses, and a cycle is
-- seen only by walking up the parents; the same rules as the embedded database, which has the
-- same triggers. The checks run only for what a statement changes (UPDATE()), and find their
-- rows by key or through IX_GD02_PARENT and IX_GD02_GD01.
CREATE TRIGGER TR_GD02_DISTINTA_INSERT ON GD02_DISTINTA AFTER INSERT
AS
BEGIN
    SET NOCOUNT ON;
    IF NOT EXISTS (SELECT 1 FROM inserted) RETURN;
    IF EXISTS (SELECT 1 FROM inserted I
                WHERE NOT EXISTS (SELECT 1 FROM GD01_TIPODISTINTA T
                                   WHERE T.GD01_ID = I.GD02_ID_GD01 AND T.GD01_DITTA_CG18 = I.GD02_DITTA_CG18))
        THROW 50001, N'Nodo non salvato: il tipo distinta non esiste nella ditta del nodo.', 1;
    IF EXISTS (SELECT 1 FROM inserted I
                WHERE ISNULL(I.GD02_IDPARENT_GD02, 0) <> 0
                  AND NOT EXISTS (SELECT 1 FROM GD02_DISTINTA P
                                   WHERE P.GD02_ID = I.GD02_IDPARENT_GD02 AND P.GD02_ID_GD01 = I.GD02_ID_GD01
                                     AND P.GD02_DITTA_CG18 = I.GD02_DITTA_CG18))
        THROW 50002, N'Nodo non salvato: il nodo padre non esiste oppure è di un altro tipo distinta o di un''altra ditta.', 1;
    IF EXISTS (SELECT 1 FROM inserted WHERE GD02_DATAINIZIOVAL > GD02_DATAFINEVAL)
        THROW 50004, N'Nodo non salvato: la data di inizio validità è successiva alla data di fine.', 1;
    -- Rows inserted with explicit keys (IDENTITY_INSERT) could point at each other.
    DECLARE @CICLI INT;
    WITH ANCESTORS (START, ID) AS (
        SELECT I.GD02_ID, I.GD02_IDPARENT_GD02 FROM inserted I WHERE ISNULL(I.GD02_IDPARENT_GD02, 0) <> 0
        UNION ALL
        SELECT A.START, P.GD02_IDPARENT_GD02 FROM ANCESTORS A INNER JOIN GD02_DISTINTA P ON P.GD02_ID = A.ID
         WHERE A.ID <> A.START AND ISNULL(P.GD02_IDPARENT_GD02, 0) <> 0)
    SELECT @CICLI = COUNT(*) FROM ANCESTORS WHERE ID = START
    OPTION (MAXRECURSION 32767);
    IF @CICLI > 0
        THROW 50003, N'Nodo non salvato: un nodo non può stare sotto sé stesso o sotto un suo discendente.', 1;
END;
GO

CREATE TRIGGER TR_GD02_DISTINTA_UPDATE ON GD02_DISTINTA AFTER UPDATE
AS
BEGIN
    SET NOCOUNT ON;
    IF NOT EXISTS (SELECT 1 FROM inserted) RETURN;
    IF UPDATE(GD02_ID_GD01) OR UPDATE(GD02_DITTA_CG18)
    BEGIN
        IF EXISTS (SELECT 1 FROM inserted I INNER JOIN GD02_DISTINTA C ON C.GD02_IDPARENT_GD02 = I.GD02_ID
                    WHERE C.GD02_ID_GD01 <> I.GD02_ID_GD01 OR C.GD02_DITTA_CG18 <> I.GD02_DITTA_CG18)
            THROW 50005, N'Nodo non salvato: il nodo ha dei figli, quindi identificativo, tipo distinta e ditta non possono cambiare.', 1;
        IF EXISTS (SELECT 1 FROM inserted I
                    WHERE NOT EXISTS (SELECT 1 FROM GD01_TIPODISTINTA T
                                       WHERE T.GD01_ID = I.GD02_ID_GD01 AND T.GD01_DITTA_CG18 = I.GD02_DITTA_CG18))
            THROW 50001, N'Nodo non salvato: il tipo distinta non esiste nella ditta del nodo.', 1;
    END;
    IF UPDATE(GD02_IDPARENT_GD02) OR UPDATE(GD02_ID_GD01) OR UPDATE(GD02_DITTA_CG18)
    BEGIN
        IF EXISTS (SELECT 1 FROM inserted I
                    WHERE ISNULL(I.GD02_IDPARENT_GD02, 0) <> 0
                      AND NOT EXISTS (SELECT 1 FROM GD02_DISTINTA P
                                       WHERE P.GD02_ID = I.GD02_IDPARENT_GD02 AND P.GD02_ID_GD01 = I.GD02_ID_GD01
                                         AND P.GD02_DITTA_CG18 = I.GD02_DITTA_CG18))
            THROW 50002, N'Nodo non salvato: il nodo padre non esiste oppure è di un altro tipo distinta o di un''altra ditta.', 1;
    END;
    IF UPDATE(GD02_IDPARENT_GD02)
    BEGIN
        -- Walking up from each new parent (a handful of rows) rather than down the subtrees.
        DECLARE @CICLI INT;
        WITH ANCESTORS (START, ID) AS (
            SELECT I.GD02_ID, I.GD02_IDPARENT_GD02 FROM inserted I WHERE ISNULL(I.GD02_IDPARENT_GD02, 0) <> 0
            UNION ALL
            SELECT A.START, P.GD02_IDPARENT_GD02 FROM ANCESTORS A INNER JOIN GD02_DISTINTA P ON P.GD02_ID = A.ID
             WHERE A.ID <> A.START AND ISNULL(P.GD02_IDPARENT_GD02, 0) <> 0)
        SELECT @CICLI = COUNT(*) FROM ANCESTORS WHERE ID = START
        OPTION (MAXRECURSION 32767);
        IF @CICLI > 0
            THROW 50003, N'Nodo non salvato: un nodo non può stare sotto sé stesso o sotto un suo discendente.', 1;
    END;
    IF (UPDATE(GD02_DATAINIZIOVAL) OR UPDATE(GD02_DATAFINEVAL))
       AND EXISTS (SELECT 1 FROM inserted WHERE GD02_DATAINIZIOVAL > GD02_DATAFINEVAL)
        THROW 50004, N'Nodo non salvato: la data di inizio validità è successiva alla data di fine.', 1;
END;
GO

CREATE TRIGGER TR_GD01_TIPODISTINTA_DELETE ON GD01_TIPODISTINTA AFTER DELETE
AS
BEGIN
    SET NOCOUNT ON;
    IF EXISTS (SELECT 1 FROM deleted X INNER JOIN GD02_DISTINTA D ON D.GD02_ID_GD01 = X.GD01_ID)
        THROW 50006, N'Tipo distinta non cancellato: ha dei nodi.', 1;
END;
GO

CREATE TRIGGER TR_GD01_TIPODISTINTA_UPDATE ON GD01_TIPODISTINTA AFTER UPDATE
AS
BEGIN
    SET NOCOUNT ON;
    IF UPDATE(GD01_DITTA_CG18)
       AND EXISTS (SELECT 1 FROM deleted X
                          INNER JOIN inserted I ON I.GD01_ID = X.GD01_ID
                          INNER JOIN GD02_DISTINTA D ON D.GD02_ID_GD01 = X.GD01_ID
                    WHERE I.GD01_DITTA_CG18 <> X.GD01_DITTA_CG18)
        THROW 50007, N'Tipo distinta non salvato: ha dei nodi, quindi identificativo e ditta non possono cambiare.', 1;
END;
GO

-- Deleting nodes removes their whole subtrees, and with every removed node what hangs on it in
-- this module and in the host: its in-invoice campaigns (GD12_PROMO) and its workflow state
-- (WF02_STATORIGA, by the node's guid), so that no orphan of ours is left. Rows owned by other
-- managements of the suite stay: the subjects of contract conditions (GD14_SOGGCONTR) and their
-- exclusions (GD27_SOGGCONTRDISAB) belong to the contracts management, which decides what a
-- condition on a removed node becomes (the editor warns about those links before deleting, and
-- refuses when a definitive bonus hangs on the node).
-- This works whatever the RECURSIVE_TRIGGERS setting (a nested firing finds no children left).
CREATE TRIGGER TR_GD02_DISTINTA_DELETE ON GD02_DISTINTA AFTER DELETE
AS
BEGIN
    SET NOCOUNT ON;
    IF NOT EXISTS (SELECT 1 FROM deleted) RETURN;
    DECLARE @NODI TABLE (ID INT NOT NULL PRIMARY KEY, NODOGUID UNIQUEIDENTIFIER NULL);
    INSERT INTO @NODI (ID, NODOGUID) SELECT GD02_ID, gd02_guid FROM deleted;
    WITH SUBTREE (ID) AS (
        SELECT D.GD02_ID FROM GD02_DISTINTA D INNER JOIN deleted X ON D.GD02_IDPARENT_GD02 = X.GD02_ID
        UNION ALL
        SELECT D.GD02_ID FROM GD02_DISTINTA D INNER JOIN SUBTREE S ON D.GD02_IDPARENT_GD02 = S.ID)
    INSERT INTO @NODI (ID, NODOGUID)
    SELECT D.GD02_ID, D.gd02_guid
      FROM GD02_DISTINTA D
     WHERE D.GD02_ID IN (SELECT ID FROM SUBTREE)
    OPTION (MAXRECURSION 32767);
    DELETE FROM GD12_PROMO WHERE GD12_ID_GD02 IN (SELECT ID FROM @NODI);
    DELETE FROM WF02_STATORIGA WHERE WF02_GUID IN (SELECT NODOGUID FROM @NODI WHERE NODOGUID IS NOT NULL);
    DELETE FROM GD02_DISTINTA WHERE GD02_ID IN (SELECT ID FROM @NODI);
END;
GO

-- A row written with an explicit NULL guid still gets one (the column default covers omission).
CREATE TRIGGER TR_GD01_TIPODISTINTA_GUID ON GD01_TIPODISTINTA AFTER INSERT
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE T SET GD01_GUID = NEWID()
      FROM GD01_TIPODISTINTA T INNER JOIN inserted I ON T.GD01_ID = I.GD01_ID
     WHERE I.GD01_GUID IS NULL;
END;
GO

CREATE TRIGGER TR_GD02_DISTINTA_GUID ON GD02_DISTINTA AFTER INSERT
AS
BEGIN
    SET NOCOUNT ON;
    UPDATE T SET gd02_guid = NEWID()
      FROM GD02_DISTINTA T INNER JOIN inserted I ON T.GD02_ID = I.GD02_ID
     WHERE I.gd02_guid IS NULL;
END;
GO

-- ---------------------------------------------------------------------------------------------
-- Indexes: one for every filter and join the module runs
-- ---------------------------------------------------------------------------------------------

CREATE UNIQUE INDEX IX_WF02_GUID ON WF02_STATORIGA (WF02_GUID);
GO

CREATE INDEX IX_CG44_CG16 ON CG44_CLIFOR (CG44_CODICE_CG16);
GO
CREATE INDEX IX_MG17_DITTA ON MG17_AGENTI (MG17_DITTA_CG18, MG17_IDAGENTE);
GO
CREATE UNIQUE INDEX IX_CO1A_DITTA_CODICE ON CO1A_ANAGDIVISIONI (CO1A_DITTA_CG18, CO1A_CODICE);
GO
CREATE UNIQUE INDEX IX_CO1D_SOGGETTO ON CO1D_CLIFORDIV (CO1D_DITTA_CG18, CO1D_TIPOCF_CG44, CO1D_CLIFOR_CG44, CO1D_IDDIV_CO1A);
GO

CREATE INDEX IX_LP09_DITTA_CODICE ON LP09_TESTATAPRIORITA (LP09_DITTA_CG18, LP09_CODICE);
GO
CREATE INDEX IX_LP09_DITTA_TIPO ON LP09_TESTATAPRIORITA (LP09_DITTA_CG18, LP09_INDTIPOTABPRIORITA);
GO
CREATE INDEX IX_LP10_LP09 ON LP10_DETTAGLIOPRIORITA (LP10_ID_LP09);
GO
CREATE INDEX IX_MG94_DITTA ON MG94_CAMPANAG (MG94_DITTA_CG18);
GO

CREATE INDEX IX_GD10_DITTA_CLIFOR ON GD10_CONTRATTI (GD10_DITTA_CG18, GD10_CLIFOR_CG44);
GO
CREATE INDEX IX_GD13_GD10 ON GD13_PREMI (GD13_ID_GD10);
GO
CREATE INDEX IX_GD14_GD02 ON GD14_SOGGCONTR (GD14_ID_GD02);
GO
CREATE INDEX IX_GD14_GD13 ON GD14_SOGGCONTR (GD14_ID_GD13);
GO
CREATE INDEX IX_GD14_SOGGETTO ON GD14_SOGGCONTR (GD14_DITTA_CG18, GD14_TIPOCF_CG44, GD14_CLIFOR_CG44);
GO
CREATE INDEX IX_GD18_GD13 ON GD18_LIQUIDAZIONE (GD18_ID_GD13);
GO
CREATE INDEX IX_GD27_CONDIZIONE ON GD27_SOGGCONTRDISAB (GD27_DITTA_CG18, GD27_CODCONTR_GD10, GD27_VERCONTR_GD10, GD27_PROGRCOND_GD13, GD27_ID_GD02);
GO

CREATE INDEX IX_GD01_DITTA_TIPO ON GD01_TIPODISTINTA (GD01_DITTA_CG18, GD01_INDTIPOSOGG, GD01_CODICE);
GO
CREATE INDEX IX_GD02_TIPODISTINTA ON GD02_DISTINTA (GD02_DITTA_CG18, GD02_TIPOCF_CG44, GD02_ID_GD01);
GO
-- The links of one subject, in the order of their type: the overlap check of a new or changed
-- link reads them through this index, already sorted as it reports them.
CREATE INDEX IX_GD02_SOGGETTO ON GD02_DISTINTA (GD02_DITTA_CG18, GD02_TIPOCF_CG44, GD02_CLIFOR_CG44, GD02_ID_GD01);
GO
CREATE INDEX IX_GD02_PARENT ON GD02_DISTINTA (GD02_IDPARENT_GD02);
GO
CREATE INDEX IX_GD02_GD01 ON GD02_DISTINTA (GD02_ID_GD01);
GO
CREATE INDEX IX_GD04_KEY ON GD04_STDISTINTA (GD04_KEY, GD04_DITTA_CG18);
GO
CREATE INDEX IX_GD12_NODO ON GD12_PROMO (GD12_ID_GD02, GD12_ID_MG94);
GO
