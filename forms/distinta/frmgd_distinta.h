#pragma once

#include "frame/formframe.h"
#include "platform/db/recordset.h"

#include <QColor>
#include <QDate>
#include <QHash>
#include <QPointer>

#include "framework/recordframe.h"
#include "framework/reportengine.h"
#include <optional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSplitter;
class QTabWidget;
class QTableWidget;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace fw {
class RecordsetGrid;
class TreeList;
class TreeListNode;
}

// The classification tree editor, the form that the entry class opens.
//
// Its procedures live in one source file per concern (frmgd_distinta_<concern>.cpp) and are
// declared here; frmgd_distinta.cpp holds the frame's part: life cycle, main record frame and
// company change.
class FRMGD_DISTINTA : public FormFrame
{
    Q_OBJECT

public:
    // The module parameters of the company as the editor last read them (GD03_PARAMETRI).
    // The defaults are those of a company without a parameters row.
    struct Parametri
    {
        short tipoCaricaData = 0;                 // 0 dates from the parent node, 1 fixed dates
        QDate dataFissaInizio{2000, 1, 1};
        QDate dataFissaFine{2099, 12, 31};
        bool flgAnagrafica = true;
        bool flgCondVendita = true;
        bool flgClassificazioni = true;
        bool flgProvvigioni = true;
        short tipoCaricaFatt = 0;                 // GD02_TIPOANAGFATT of a new node
        short statoLegame = 0;                    // GD02_ID_WF02 of a new node: always 0
    };

    explicit FRMGD_DISTINTA(QWidget *parent = nullptr);
    ~FRMGD_DISTINTA() override;

    void Form_Initialize();
    void ImpostaFME_DISTINTE();

    // --- start-up (frmgd_distinta_avvio.cpp)
    void ColoriSTD();
    void TraduzioneIntestazione_TVW_DISTINTA();

    // --- layout (frmgd_distinta_layout.cpp)
    void SplitterSetup();
    void SplitterReposition();

    // --- selector of classification types (frmgd_distinta_selettore.cpp)
    void InizializzaDistinte();
    void TVW_SELDISTINTE_Click();

    // --- the tree (frmgd_distinta_caricamento.cpp)
    void CaricaDistinta();
    void DistruggiFrameworkDistinta();
    void CaricaIntestazioneDistinta();
    QString AssegnaRagioneSociale(qint64 codice);
    QString DescrizionePriorita(qint64 idPriorita);

    // CaricaDistinta is these phases in this order; public so that each can be timed alone.
    // The statement of the type selected in the selector, whose identifier becomes the current
    // one; empty when nothing is selected.
    QString statementDistinta();
    // Runs the statement into the node recordset (query and client-side rows).
    db::RecordsetPtr apriNodi(const QString &sql);
    // Reads the texts drawn in the unbound and priority columns, once per load.
    void caricaTestiDisegno(const db::Recordset &nodi);
    // Record frame, key and parent fields, hierarchy of the tree.
    void legaAlbero(const db::RecordsetPtr &nodi, const QString &sql);
    void espandiTutto();

    // --- levels (frmgd_distinta_livelli.cpp)
    void CaricaLivelli();
    void CMD_ESPANDICOLLASSA_Click();

    // --- parameters (frmgd_distinta_parametri.cpp)
    void CaricaParametri();
    const Parametri &parametri() const { return m_parametri; }

    // --- subject list (frmgd_distinta_anagrafiche.cpp)
    void CaricaAnagraficheDistinta();
    void EliminaTabellaTemp(const QString &table, const db::ConnectionPtr &connection);
    void InizializzaQgrid();

    // --- search (frmgd_distinta_ricerca.cpp)
    void CercaNellaDistinta(const QString &campo);   // "RagioneSociale" or "trGD02_CLIFOR_CG44"
    void CercaDistinte(const QString &codice, const QString &ragioneSociale);

    // --- print (frmgd_distinta_stampa.cpp)
    void CMD_STAMPA_Click();
    bool StampaDistinta(const QString &testoLivello);   // true when the report ran
    bool preparaStampa(const QString &testoLivello);    // its first part: the work rows
    static short limiteLivello(const QString &testoLivello);
    bool PulisciStampa();
    bool scriviRigheStampa(short limite);
    bool InvocaStampa();
    void PclsReport_BeforePrintReport();
    void PreparaLimiti();
    void PreparaNote();
    static QString NomeComputer();
    static QString NomeUtente();
    bool StampaSenzaFinestra(const QString &codiceTipo, std::optional<int> livello);
    QString chiaveStampa() const { return m_chiaveStampa; }

    // --- form state shared by the editor's procedures
    int tipoSoggetto() const { return m_tipoSoggetto; }           // 0 customers, 1 suppliers
    QString idDistinta() const { return m_idDistinta; }           // GD01_ID of the chosen type
    db::RecordsetPtr nodi() const { return m_nodi; }              // the rows the tree shows
    fw::RecordFrame *frameDistinta() const { return m_frameDistinta; }
    db::RecordsetPtr anagrafiche() const { return m_anagrafiche; }
    std::optional<qint64> divisione() const { return m_divisione; }
    QString guidDistinta() const { return m_guidDistinta; }
    int livelloMassimo() const { return m_livelloMassimo; }
    int livelloCorrente() const { return m_livelloCorrente; }
    bool ricercaInCorso() const { return m_ricercaInCorso; }

protected:
    void loadForm() override;
    bool activateForm() override;
    QString companyChangeText() const override;
    void release(Release what) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    // layout and events
    void creaControlli();
    void collegaEventi();
    QWidget *creaPannelloGestione();
    QWidget *creaPannelloDistinta();
    QWidget *creaPannelloDettaglio();
    void creaColonneDistinta();
    void registraPosizioneSplitter();

    // tree
    void scaricaDistinta();

    // selector
    QTreeWidgetItem *aggiungiRadice(const QString &key, const QString &text);
    void aggiungiTipi(QTreeWidgetItem *root, const QString &keyPrefix, int subjectKind);
    int contaNodiSelettore() const;
    QString chiaveSelezionata() const;

    // tree
    void TVW_DISTINTA_OnCustomDrawCell(const fw::TreeListNode &node, const QString &column, QString &text);
    void espandiLivello();
    void comprimiLivello();
    QString testo(int id, const QString &defaultText) const;
    QString traduci(const QString &text) const;

    // print
    void collegaStampa();
    void aggiornaStampa();

    // subject list and search
    void TAB_VISUALIZZAGESTIONE_Click(int index);
    void GRD_ANAGRAFICHEDISTINTA_HeaderClick(const QString &key);
    void GRD_CERCADISTINTA_ButtonClick(int row, const QString &key);
    void TXTCERCA_KeyDown();
    void CMD_CERCA_ButtonMenuClick(const QString &key);
    void cercaDaCaselle(const QString &procedure);

    // --- controls, named as the form names them (their object names too)
    QTabWidget *TAB_VISUALIZZAGESTIONE = nullptr;
    QTreeWidget *TVW_SELDISTINTE = nullptr;
    fw::RecordsetGrid *GRD_ANAGRAFICHEDISTINTA = nullptr;
    QPushButton *CMD_ADDANAGR = nullptr;
    QPushButton *CMD_ADDANAGRCAPO = nullptr;
    QPushButton *CMD_REMANAGR = nullptr;
    QLineEdit *TXT_CODICE = nullptr;
    QLineEdit *TXT_RAGIONESOC = nullptr;
    QPushButton *CMD_RICERCA = nullptr;
    fw::RecordsetGrid *GRD_CERCADISTINTA = nullptr;

    QLabel *lblDescDistinta = nullptr;
    QComboBox *CMB_LIVELLO = nullptr;
    QPushButton *CMD_ESPANDICOLLASSA = nullptr;
    QLineEdit *TXTCERCA = nullptr;
    QToolButton *CMD_CERCA = nullptr;
    QLineEdit *TXT_GD02_STATO = nullptr;
    QPushButton *CMD_STAMPA = nullptr;
    QPushButton *CMD_PARAMETRI = nullptr;
    QToolButton *CMD_GESTIONICOLLEGATE = nullptr;
    fw::TreeList *TVW_DISTINTA = nullptr;

    QTabWidget *TAB_DETTAGLIOSOGGETTO = nullptr;
    QTableWidget *GRD_DATIANAGRAFICI = nullptr;
    QComboBox *CBO_EREPROMO = nullptr;
    QLineEdit *TXT_PRIORITA_STRUTTURA = nullptr;
    QLineEdit *TXT_PRIORITA_LOCALIZZATA = nullptr;
    fw::RecordsetGrid *GRD_PROMO = nullptr;
    fw::RecordsetGrid *GRD_PREMI = nullptr;

    QLineEdit *TXT_IDPRIORITA_STRUTTURA = nullptr;
    QLineEdit *TXT_IDPRIORITA_LOCALIZZATA = nullptr;
    QLineEdit *TXT_GD02_ID = nullptr;

    QSplitter *SPLITTERVerticale = nullptr;
    QSplitter *SPLITTERorizzontale = nullptr;

    // The designed colours of the tree's header, footer and header text; the theme replaces them.
    static inline const QColor ColoreIntestazione{204, 225, 255};
    static inline const QColor ColorePiede{226, 250, 254};
    static inline const QColor ColoreTestoIntestazione{0, 0, 128};

    int m_tipoSoggetto = 0;
    QString m_idDistinta;
    db::RecordsetPtr m_nodi;
    QPointer<fw::RecordFrame> m_frameDistinta;
    int m_livelloMassimo = 0;
    int m_livelloCorrente = 0;
    std::optional<qint64> m_divisione;
    QString m_guidDistinta;
    QHash<qint64, QString> m_ragioniSocialiFatt;     // by GD02_CLIFORFATT_CG44
    QHash<qint64, QString> m_descrizioniPriorita;    // by LP09_ID

    Parametri m_parametri;
    db::RecordsetPtr m_rsParametri;

    db::RecordsetPtr m_anagrafiche;
    bool m_qgridConfigurata = false;
    bool m_selezionaTutti = false;

    db::RecordsetPtr m_risultatiRicerca;
    bool m_ricercaInCorso = false;

    std::unique_ptr<fw::ReportEngine> PclsReport;
    QString m_chiaveStampa;
    QString m_livelloStampa;

    double m_quotaGestione = 0.30;    // share of the width taken by the management panel
    double m_quotaDistinta = 0.70;    // share of the right side's height taken by the tree
};
