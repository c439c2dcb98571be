#pragma once

#include "frame/formframe.h"
#include "platform/db/recordset.h"

#include <QColor>
#include <QDate>
#include <QHash>
#include <QSet>
#include <QPointer>

#include "framework/recordframe.h"
#include "framework/reportengine.h"
#include "framework/export/exportfile.h"
#include "framework/export/tablewriter.h"
#include <functional>
#include <optional>

class FRMGD_ANAGDISTINTA;
class FRMGD_PARAMETRI;
class StrutturaNodi;
class QLayout;
struct PrioritaScelta;
class QAction;
class QComboBox;
class QLabel;
class QLayout;
class QLineEdit;
class QMenu;
class QPushButton;
class QSplitter;
class QTabWidget;
class QTableWidget;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

class QMenu;
class QAction;

namespace fw {
class ModuleManager;
class RecordsetGrid;
class RecordsetGroupGrid;
class TreeList;
class TreeListNode;
class WorkflowStateControl;
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
    // chiave: the node to choose again after a rebuild, when it is still there.
    void InizializzaDistinte(const QString &chiave = {});
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
    // The texts of one row's billing code and priorities, when the load did not read them.
    void completaTestiDisegno(const db::Recordset &nodi, int row);
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

    // --- link checks and node deletion (frmgd_distinta_eliminazione.cpp)
    void CMD_REMANAGR_Click();
    void EliminaCliforDaStruttura();
    bool ContaFigli(qint64 idNodo);
    // dataFine: only deadlines after it count; none for any definitive bonus.
    bool PremioDefinitivo(qint64 idNodo, const std::optional<QDate> &dataFine);
    bool LegamiContratto(const QString &codice);
    bool LegamiPremiPromoAtt();
    bool LegamiPremiPromoAttFigli(const db::RecordsetPtr &figli);
    QString ultimoMessaggioControllo() const { return m_ultimoMessaggioControllo; }

    // --- validation of a link (frmgd_distinta_verifica.cpp)
    // The node being checked: set by the caller, read by VerificaNodo and VerificaRicorsivi.
    struct NodoInVerifica
    {
        qint64 idNodo = 0;        // 0 while inserting
        qint64 idPadre = 0;       // 0 for a root
        qint64 codice = 0;        // the subject's code
        QDate dataInizio;
        QDate dataFine;
        bool haPadre = false;
    };
    bool VerificaNodo(const QString &modo);   // "Insert" or "Edit"; true when the link may be saved
    bool VerificaRicorsivi();
    NodoInVerifica &nodoInVerifica() { return m_verifica; }
    QString anagraficheNonImportate() const { return m_nonImportate; }

    // --- node insertion (frmgd_distinta_inserimento.cpp)
    void CMD_ADDANAGR_Click();
    void CMD_ADDANAGRCAPO_Click();
    void InserisciNodo(bool &capostipite);

    // --- in-tree editing (frmgd_distinta_modifica.cpp, frmgd_distinta_txtalfa.cpp)
    QString DescrizionePrioritaDigitata(const QString &codice);
    void GestioneTXTAnagrafica(const QString &modo);   // "Anagr" or "Tendina"

    // --- propagation to the children and link state (frmgd_distinta_propagazione.cpp)
    void mnuPropagaFigli_Click();
    void mnuRilasciaFigli_Click();
    void TXT_GD02_STATO_AfterItem(bool cambiatoDallUtente);
    bool propagazioneInCorso() const { return m_propagazioneInCorso; }
    bool eliminazioneInCorso() const { return m_eliminazioneInCorso; }

    // --- search (frmgd_distinta_ricerca.cpp)
    void CercaNellaDistinta(const QString &campo);   // "RagioneSociale" or "trGD02_CLIFOR_CG44"
    void CercaDistinte(const QString &codice, const QString &ragioneSociale);

    // --- linked managements and the subject's master data and card (frmgd_distinta_gestioni.cpp)
    void CMD_GESTIONICOLLEGATE_Click(const QString &key, const QString &caption);
    void mnuAnagCF_Click();
    void mnuSchedaCF_Click();
    void RichiamaSchedaClienti(qint64 codice);
    void RichiamaSchedaFornitori(qint64 codice);
    FRMGD_ANAGDISTINTA *anagraficaDistinta() const;

    // --- price-list priorities of the node (frmgd_distinta_priorita.cpp)
    // Identifier of a priority code, code of an identifier; empty when there is none. A failing
    // lookup is reported and answers empty, with ok false.
    QVariant Get_MG3G_ID_LP09(const db::ConnectionPtr &connection, const QString &codice, bool *ok = nullptr);
    QString Get_LP09_CODICE(const db::ConnectionPtr &connection, const QVariant &idPriorita, bool *ok = nullptr);
    void TVW_DISTINTA_OnEditButtonClick(const fw::TreeListNode &node, const QString &column);
    // Opens the picker and waits for it; the priority chosen, none when closed without a choice.
    std::optional<PrioritaScelta> ScegliPriorita();

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

    // --- the subject's details under the tree (frmgd_distinta_dettagli*.cpp)
    void TAB_DETTAGLIOSOGGETTO_Click();
    void CaricaCondizioniCliente(double codice);
    // The display text of a value of the master-data sheet, by the field's type and scale.
    static QString CaricaDatiAnagrafici(const db::FieldInfo &field, const QVariant &value);
    void SvuotaFlex(QTableWidget *grid);
    void ConfiguraGRD_PREMI();
    void CaricaCondizioniFuoriFattura();
    void InvocaContratti();
    std::optional<qint64> soggettoCaricato() const { return m_ultimoSoggetto; }
    db::RecordsetPtr condizioniFuoriFattura() const { return m_condizioniFuoriFattura; }

    // --- in-invoice promotions of the node (frmgd_distinta_promozioni.cpp)
    void CBO_EREPROMO_ChangeRow();
    void CaricaCondizioniInFattura(qint64 idNodo, short regola);
    void InsertCondizioniInFattura(qint64 idNodo);
    void EliminaCondizioniInFattura();
    void SalvaCondizioniInFattura(qint64 idNodo);
    void ConfiguraQRID_PROMO();
    void Invoca_Promozioni();
    // The parameters form's choice of promotion inheritance for the node it was given.
    void ApplicaEreditaPromozioni(qint64 idNodo, short regola);
    db::RecordsetPtr promozioni() const { return m_promozioni; }

    // --- the module parameters form (frmgd_distinta_dettagli.cpp)
    void CMD_PARAMETRI_Click();
    FRMGD_PARAMETRI *formParametri() const;
    // --- the list as of a date (frmgd_distinta_alladata.cpp)
    std::optional<QDate> dataValidita() const { return m_dataValidita; }
    // The date typed in TXT_DATAVALIDITA applied: the tree reloaded as of it (empty text: every
    // node). False, with a message and nothing changed, for a text that is no date.
    bool ImpostaDataValidita(const QString &testo);
    static std::optional<QDate> leggiDataValidita(const QString &testo, bool *ok);
    // Shown only as the ancestor of nodes valid on the date.
    bool nodoNonValidoAllaData(qint64 idNodo) const;

    // --- export to a spreadsheet (frmgd_distinta_esportazione.cpp)
    void CMD_ESPORTA_Click(fw::ExportFile::Format formato);
    bool EsportaDistinta(const QString &percorso, fw::ExportFile::Format formato, const QString &testoLivello);
    bool EsportaSenzaFinestra(const QString &codiceTipo, std::optional<int> livello, std::optional<QDate> data,
                              const QString &percorso, fw::ExportFile::Format formato);
    // Where CMD_ESPORTA writes: the platform's save dialog unless replaced (tests, automation).
    using SceltaFile = std::function<QString(fw::ExportFile::Format formato, const QString &proposto)>;
    void setSceltaFileEsportazione(SceltaFile scelta) { m_sceltaFileEsportazione = std::move(scelta); }

    // --- moving a branch (frmgd_distinta_spostamento.cpp)
    // idDestinazione 0: the node becomes a root. True when the branch moved.
    bool SpostaNodo(qint64 idNodo, qint64 idDestinazione);
    void CMD_TAGLIANODO_Click();
    void CMD_INCOLLANODO_Click();
    void incollaComeCapostipite();
    qint64 nodoTagliato() const { return m_nodoTagliato; }

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

signals:
    void nodoTagliatoCambiato();

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
    void leggiTestiDisegno(const QSet<qint64> &billingCodes, const QSet<qint64> &priorities);

    // linked managements and priorities
    void collegaGestioni();
    void creaMenuCollegamento();
    fw::ModuleManager *gestoreModuli(const QString &gestione);
    void apriAnagraficaDistinta();
    void anagraficaDistintaChiusa();
    void collegaPriorita();
    void TXT_PRIORITA_Validate(QLineEdit *field, const QString &campo);
    bool assegnaPriorita(const QString &procedure, const QString &campo, const QVariant &idPriorita);
    void mostraCodiciPriorita();
    QString codicePriorita(const QVariant &idPriorita);
    void segnalaErrorePriorita(const QString &lookup, const std::exception &error, bool *ok);

    // selector
    QTreeWidgetItem *voceSelettore(const QString &key) const;
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

    // write side
    void aggiornaComandi();
    void contaSelezionatiPiuTardi();
    int domanda(const QString &testo);
    void avviso(const QString &testo);
    bool rigaModificataAltrove(const QString &procedure, bool soloSeEliminato = false);
    void rileggiNodoInConflitto(const db::DatabaseError &error);
    void TVW_DISTINTA_OnChangeNode(const fw::TreeListNode &previous, const fw::TreeListNode &current);
    void TVW_DISTINTA_OnEditing(const fw::TreeListNode &node, const QString &column, bool &allow);
    void TVW_DISTINTA_OnEditCloseUp(const fw::TreeListNode &node, const QString &column, const QVariant &value);
    void TVW_DISTINTA_OnValidateEdit(const fw::TreeListNode &node, const QString &column, QVariant &value,
                                     bool &accept, QString &error);
    bool TVW_DISTINTA_OnEdited(const fw::TreeListNode &node, const QString &column, const QVariant &value,
                               bool valid);
    void TVW_DISTINTA_OnMouseDown(const fw::TreeListNode &node, const QString &column, Qt::MouseButton button,
                                  const QPoint &pos);
    void azzeraCodiceFatturazione(const fw::TreeListNode &node);
    void creaTXT_ALFA();
    void TXT_ALFA_Invio();
    void TXT_ALFA_Annulla();
    QString guidNodo(qint64 idNodo);
    QHash<qint64, QString> guidNodiDistinta();
    fw::TreeListNode nodoCliccato() const;
    void apriMenuCollegamento(const fw::TreeListNode &node, const QPoint &globalPos);

    // details under the tree
    void collegaDettagli();
    void dettagliNodoFocalizzato(const fw::TreeListNode &current);
    void caricaPaginaPiuTardi();
    void dettagliDopoIlLavoro();
    void caricaPaginaDettaglio();
    void bloccaDateNodo(const fw::TreeListNode &current);
    void CBO_EREPROMO_Click();
    bool GRD_PROMO_BeforeColUpdate(int row, const QString &key, const QVariant &before);
    void parametriChiusi();

    // print
    void collegaStampa();
    void aggiornaStampa();
    bool scegliTipoSenzaFinestra(const QString &codice, const QString &procedura);

    // list as of a date, export, move of a branch
    QLayout *creaDataValidita();
    void collegaDataValidita();
    void filtraAllaData(const db::RecordsetPtr &nodi);
    QString intestazioneData() const;
    void segnaNodoNonValido(const fw::TreeListNode &node, const QString &column, QString &text);
    QToolButton *creaCMD_ESPORTA();
    void collegaEsportazione();
    QList<fw::ExportColumn> colonneEsportazione(QStringList &nomi) const;
    QLayout *creaComandiSpostamento();
    void collegaSpostamento();
    qint64 idDelNodo(const fw::TreeListNode &node) const;
    int rigaDelNodo(qint64 idNodo) const;
    QString nomeNodo(const StrutturaNodi &struttura, int indice) const;
    bool confermaPremiDefinitivi(const StrutturaNodi &struttura, const QList<int> &ramo);
    void mostraNodoSpostato(qint64 idNodo, qint64 idPadre);

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
    fw::WorkflowStateControl *TXT_GD02_STATO = nullptr;
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
    fw::RecordsetGroupGrid *GRD_PREMI = nullptr;

    QLineEdit *TXT_IDPRIORITA_STRUTTURA = nullptr;
    QLineEdit *TXT_IDPRIORITA_LOCALIZZATA = nullptr;
    QLineEdit *TXT_GD02_ID = nullptr;

    QLineEdit *TXT_ALFA = nullptr;                 // the billing code typed over its cell
    QMenu *mnuCollegamento = nullptr;
    QAction *mnuAnagCF = nullptr;
    QAction *mnuSchedaCF = nullptr;
    QAction *mnuPropagaFigli = nullptr;
    QMenu *mnuStatoLegame = nullptr;
    QAction *mnuRilasciaFigli = nullptr;

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

    NodoInVerifica m_verifica;
    qint64 m_codicePadre = 0;                   // subject of the prospective parent
    QString m_nonImportate;                     // refusal lines, each ending with a line feed
    QString m_ultimoMessaggioControllo;         // why PremioDefinitivo refused
    bool m_rifiutoPremioDefinitivo = false;     // the last VerificaNodo refused for that reason
    bool m_eliminazioneInCorso = false;
    bool m_propagazioneInCorso = false;
    bool m_conteggioInAttesa = false;
    int m_selezionati = 0;                      // ticked rows of the subject list

    // The node the context menu was opened on, as it was then.
    struct NodoCliccato
    {
        qint64 idNodo = 0;
        int livello = 0;
        int indice = -1;                        // absolute position in the tree
        short tipoAnagFatt = 0;
        double codiceFatt = 0;
    } m_cliccato;

    // The billing-code editor's node and mode while it is open.
    qint64 m_idNodoTXT_ALFA = 0;
    bool m_messaggioTXT_ALFA = false;           // a message of its own takes the focus from it

    QPointer<FRMGD_ANAGDISTINTA> m_anagraficaDistinta;
    std::optional<qint64> m_soggettoMenu;            // subject of the node the menu opened on
    QHash<qint64, QString> m_codiciPriorita;         // LP09_CODICE by LP09_ID, for the rows below
    std::weak_ptr<db::Recordset> m_codiciPrioritaDi;   // the rows the codes were read for

    // details under the tree
    std::optional<qint64> m_ultimoSoggetto;          // whose master data the sheet shows
    db::RecordsetPtr m_condizioniFuoriFattura;
    db::RecordsetPtr m_promozioni;
    qint64 m_idNodoPromo = 0;                        // node and rule of the campaign list shown
    short m_regolaPromo = 0;
    bool m_paginaInAttesa = false;                   // a page load waits for the focus to settle
    bool m_paginaCaricataNelGiro = false;            // a page was filled in this turn of the loop
    bool m_dateBloccate = false;                     // the focused node's dates are read-only
    QPointer<FRMGD_PARAMETRI> m_parametriForm;

    std::unique_ptr<fw::ReportEngine> PclsReport;
    QString m_chiaveStampa;
    QString m_livelloStampa;

    QLineEdit *TXT_DATAVALIDITA = nullptr;
    QToolButton *CMD_ESPORTA = nullptr;
    QPushButton *CMD_TAGLIANODO = nullptr;
    QPushButton *CMD_INCOLLANODO = nullptr;
    std::optional<QDate> m_dataValidita;
    bool m_dataInVerifica = false;
    QSet<qint64> m_nonValidiAllaData;                     // ancestors shown only for their children
    std::shared_ptr<const StrutturaNodi> m_strutturaAllaData;   // every row read, before the date
    SceltaFile m_sceltaFileEsportazione;
    qint64 m_nodoTagliato = 0;

    double m_quotaGestione = 0.30;    // share of the width taken by the management panel
    double m_quotaDistinta = 0.70;    // share of the right side's height taken by the tree

    // Everyday use: the layout each user leaves, the subject list's filter, the keyboard, what
    // empty areas and a search without result say.
public:
    static QString fileAspetto();                 // where each user's layout is kept
    static void impostaFileAspetto(const QString &file);
private:
    QLayout *creaFiltroAnagrafiche();
    void collegaFiltroAnagrafiche();
    void collegaUsabilita();
    void cercaSuccessivo();
    void ricarica();
    void ripristinaAspetto();
    void registraAspetto();
    void filtraAnagrafiche(const QString &testo);
    void aggiornaConteggioSelezionati();
    void aggiornaComandiUsabilita();
    void impostaTastiera();
    void impostaOrdineTab();
    void impostaIndicazioniVuote();
    void segnalaRicercaSenzaEsito(bool senzaEsito);
    QLineEdit *TXT_FILTROANAGRAFICHE = nullptr;
    QLabel *LBL_SELEZIONATI = nullptr;
    QString m_campoRicerca;                       // the field of the last search in the tree
};
