// The editor's life cycle and the procedures that span several of its parts: choosing a type,
// following the focused node, reloading, and the runs without a window.
#include "forms/distinta/frmgd_distinta.h"

#include "data/distintastatements.h"
#include "data/sqltext.h"
#include "data/storicostatements.h"
#include "forms/distinta/confronto.h"
#include "forms/distinta/letturastorico.h"
#include "forms/distinta/verificadistinte.h"
#include "forms/distinta/alladata.h"
#include "forms/distinta/livelli.h"
#include "forms/distinta/parti.h"
#include "framework/globalservices.h"
#include "framework/gridcolors.h"
#include "framework/recordsetgrid.h"
#include "framework/themeservice.h"
#include "framework/treelist/treelist.h"
#include "framework/waitcursor.h"
#include "platform/db/readsnapshot.h"

#include <QHeaderView>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>

FRMGD_DISTINTA::FRMGD_DISTINTA(QWidget *parent)
    : FormFrame(parent)
    , TAB_VISUALIZZAGESTIONE(new QTabWidget)
{
    setObjectName(QStringLiteral("FRMGD_DISTINTA"));
    m_parti = std::make_unique<distinta::Parti>(*this, TAB_VISUALIZZAGESTIONE);
    creaControlli();
    collegaEventi();
    Form_Initialize();
}

FRMGD_DISTINTA::~FRMGD_DISTINTA() = default;

// Runs once, when the form object is created, before any host object is known.
void FRMGD_DISTINTA::Form_Initialize() { }

// The editor's main frame holds no rows of its own: an empty node set with the name column.
void FRMGD_DISTINTA::ImpostaFME_DISTINTE()
{
    step(QStringLiteral("ImpostaFME_DISTINTE"), [this] { openRecordFrame(distintastatements::emptyNodeFrameQuery()); });
}

QString FRMGD_DISTINTA::companyChangeText() const
{
    return QStringLiteral("Cambiando la ditta di lavoro è necessario uscire e rientrare nel programma.");
}

void FRMGD_DISTINTA::loadForm()
{
    m_parti->dettagli.preparaPagine();
    m_parti->aspetto.SplitterSetup();
    TAB_VISUALIZZAGESTIONE->setCurrentIndex(0);
}

// The first activation, after the frame has linked the host and opened the form's connection.
bool FRMGD_DISTINTA::activateForm()
{
    distinta::Parti &p = *m_parti;
    p.albero.TraduzioneIntestazione_TVW_DISTINTA();
    ImpostaFME_DISTINTE();
    InizializzaScriptLayout();
    InizializzaDistinte();
    p.anagrafiche.InizializzaQgrid();
    step(QStringLiteral("Form_Activate"), [&] {
        p.ricercaAlbero.preparaMenu();
        p.gestioni.preparaMenu();
    });
    step(QStringLiteral("Form_Activate"), [&] { p.stato.prepara(); });
    p.parametri.CaricaParametri();
    p.aspetto.SplitterReposition();
    p.aspetto.ripristinaAspetto();
    ColoriSTD();
    aggiornaComandi();
    return true;
}

void FRMGD_DISTINTA::release(Release what)
{
    distinta::Parti &p = *m_parti;
    switch (what) {
    case Release::GridWrapper:
        p.aspetto.registraAspetto();
        p.anagrafiche.rilascia();
        p.ricerca.rilascia();
        break;
    case Release::HelperObjects: p.albero.scaricaDistinta(); break;
    case Release::FrameworkObjects: p.stampa.rilascia(); break;
    }
}

void FRMGD_DISTINTA::resizeEvent(QResizeEvent *event)
{
    FormFrame::resizeEvent(event);
    m_parti->aspetto.SplitterReposition();
}

void FRMGD_DISTINTA::ColoriSTD()
{
    step(QStringLiteral("ColoriSTD"), [this] {
        fw::GlobalServices *services = globals();
        const std::shared_ptr<fw::ThemeService> theme = services ? services->createThemeService() : nullptr;
        if (!theme)
            return;
        fw::GridColors colors;
        colors.header = theme->color(QStringLiteral("GridHeaderColor"));
        colors.text = theme->color(QStringLiteral("GridFontColor"));
        colors.gridLines = theme->color(QStringLiteral("GridBorderColor"));
        colors.footer = theme->color(QStringLiteral("GridFooterColor"));
        colors.headerText = theme->color(QStringLiteral("GridHeaderFontColor"));
        colors.hideSelection = theme->color(QStringLiteral("GridHideSelectionColor"));
        colors.highlight = theme->color(QStringLiteral("GridHighLightColor"));
        colors.highlightText = theme->color(QStringLiteral("GridHighLightFontColor"));
        m_parti->albero.widget()->setColors(colors);
        QTableWidget *sheet = m_parti->dettagli.datiAnagrafici().griglia();
        fw::applyGridColors(sheet, colors);
        const QFont tahoma(QStringLiteral("Tahoma"));
        sheet->setFont(tahoma);
        sheet->horizontalHeader()->setFont(tahoma);
    });
}

void FRMGD_DISTINTA::InizializzaDistinte(const QString &chiave)
{
    distinta::Parti &p = *m_parti;
    if (!p.selettore.costruisci())
        return;
    // A rebuild keeps the node the user had chosen, as a choice of the user.
    if (p.selettore.scegli(chiave)) {
        TVW_SELDISTINTE_Click();
        return;
    }
    if (!p.selettore.distintaScelta())
        return;
    if (p.anagrafiche.mostrata())
        CaricaAnagraficheDistinta();
    CaricaDistinta();
}

void FRMGD_DISTINTA::TVW_SELDISTINTE_Click()
{
    distinta::Parti &p = *m_parti;
    if (p.selettore.contaNodi() < 3)
        return;
    fw::WaitCursor wait(this);

    const QString key = p.selettore.chiaveSelezionata();
    if (key == QLatin1String("P0") || key.startsWith(QLatin1Char('C')))
        p.albero.setTipoSoggetto(0);
    if (key == QLatin1String("P1") || key.startsWith(QLatin1Char('F')))
        p.albero.setTipoSoggetto(1);

    if (p.anagrafiche.mostrata())
        CaricaAnagraficheDistinta();
    p.albero.CaricaIntestazioneDistinta();
    p.ricercaAlbero.distintaMostrata(key);
    CaricaDistinta();
    aggiornaComandi();
    p.albero.widget()->setFocus();
}

void FRMGD_DISTINTA::CaricaDistinta()
{
    m_parti->albero.CaricaDistinta();
}

void FRMGD_DISTINTA::CaricaAnagraficheDistinta()
{
    m_parti->anagrafiche.CaricaAnagraficheDistinta();
}

// Showing the "Anagrafiche" page rebuilds the list, so that it reflects the trees as they are now.
void FRMGD_DISTINTA::TAB_VISUALIZZAGESTIONE_Click(int index)
{
    if (index == 1 && connection())
        CaricaAnagraficheDistinta();
}

// Nothing follows the focus while a propagation walks the branch or a removal takes the node
// away: the pages catch up once it is over.
void FRMGD_DISTINTA::TVW_DISTINTA_OnChangeNode(const fw::TreeListNode &, const fw::TreeListNode &current)
{
    distinta::Parti &p = *m_parti;
    if (p.albero.lavoroInCorso()) {
        p.dettagli.dopoIlLavoro();
        return;
    }
    aggiornaComandi();
    p.modifica.chiudiEditorCodice();
    if (!current.isValid() || !p.albero.nodi()) {
        p.stato.mostraNodo(0);
        p.dettagli.nodoFocalizzato(current);
        return;
    }
    const db::ReadSnapshot burst(connection()); // a focus change reads a dozen small things
    p.parametri.CaricaParametri();
    p.dettagli.nodoFocalizzato(current);
    step(QStringLiteral("TVW_DISTINTA_OnChangeNode"), [&] { p.stato.mostraNodo(p.albero.idDelNodo(current)); });
}

void FRMGD_DISTINTA::aggiornaComandi()
{
    distinta::Parti &p = *m_parti;
    const bool aggiungere = p.selettore.distintaScelta() && p.anagrafiche.selezionati() > 0;
    p.anagrafiche.aggiungiAlNodo()->setEnabled(aggiungere);
    p.anagrafiche.aggiungiCapostipite()->setEnabled(aggiungere);
    p.anagrafiche.rimuovi()->setEnabled(p.albero.widget()->focusedNode().isValid());
    p.importazione.pulsante()->setEnabled(p.selettore.distintaScelta());
    p.albero.livelli().aggiornaAbilitazione();
    p.ricercaAlbero.aggiornaAbilitazione();
}

void FRMGD_DISTINTA::vaiAlNodo(int tipoSoggetto, const QString &distinta, const QString &codice)
{
    distinta::Parti &p = *m_parti;
    p.albero.setTipoSoggetto(tipoSoggetto);
    p.selettore.scegliPerTesto(distinta);
    CaricaAnagraficheDistinta();
    CaricaDistinta();
    p.albero.CaricaIntestazioneDistinta();
    p.ricercaAlbero.distintaMostrata(p.selettore.chiaveSelezionata());
    p.ricercaAlbero.cercaCodice(QStringLiteral("GRD_CERCADISTINTA_ButtonClick"), codice);
    p.albero.widget()->setFocus();
}

// A link the tree does not show as of its date is looked for by the subject's code, as the
// history's lines are.
void FRMGD_DISTINTA::vaiAlLegame(const QString &chiaveTipo, qint64 idNodo, qint64 codice, const QString &procedura)
{
    distinta::Parti &p = *m_parti;
    if (p.selettore.chiaveSelezionata() != chiaveTipo) {
        if (!p.selettore.scegli(chiaveTipo)) {
            mostraInBarraDiStato(QStringLiteral("La distinta non è più tra quelle della ditta."));
            return;
        }
        TVW_SELDISTINTE_Click();
    }
    fw::TreeList *albero = p.albero.widget();
    const int riga = p.albero.rigaDelNodo(idNodo);
    if (riga >= 0)
        albero->setFocusedNode(albero->nodeOfRow(riga));
    else
        p.ricercaAlbero.cercaCodice(procedura, QString::number(codice));
    albero->setFocus();
    activateWindow();
}

void FRMGD_DISTINTA::ricarica()
{
    distinta::Parti &p = *m_parti;
    if (!p.selettore.distintaScelta())
        return;
    if (p.anagrafiche.mostrata())
        CaricaAnagraficheDistinta();
    CaricaDistinta();
}

bool FRMGD_DISTINTA::scegliSenzaFinestra(const QString &codice, const QString &procedura, const QString &senzaNodi)
{
    distinta::Parti &p = *m_parti;
    QString chiave;
    if (!step(procedura, [&] { chiave = p.selettore.chiaveDelCodice(codice); }))
        return false;
    if (!p.selettore.scegli(chiave)) {
        avviso(QStringLiteral("La distinta \"%1\" non esiste nella ditta %2.").arg(codice).arg(companyCode()));
        return false;
    }
    TVW_SELDISTINTE_Click();
    const db::RecordsetPtr caricati = nodi();
    if (!senzaNodi.isEmpty() && (!caricati || caricati->isEmpty())) {
        avviso(senzaNodi);
        return false;
    }
    return true;
}

int FRMGD_DISTINTA::ImportaSenzaFinestra(const QString &codiceTipo, const QString &file, bool soloProva,
                                         const QString &resoconto, fw::ExportFile::Format formato)
{
    if (!scegliSenzaFinestra(codiceTipo.trimmed().toUpper(), QStringLiteral("CMD_IMPORTA_Click"), {}))
        return 1;
    return m_parti->importazione.importaSenzaFinestra(file, soloProva, resoconto, formato);
}

bool FRMGD_DISTINTA::StoricoSenzaFinestra(const QString &codiceTipo, std::optional<QDate> dal, std::optional<QDate> al,
                                          const QString &utente, const QString &percorso,
                                          fw::ExportFile::Format formato)
{
    const QString procedura = QStringLiteral("Storico");
    const QString codice = codiceTipo.trimmed().toUpper();
    QString problema = fw::ExportFile::problem(percorso);
    if (problema.isEmpty() && dal && al && *dal > *al)
        problema = QStringLiteral("La data iniziale (%1) è successiva alla data finale (%2).")
                       .arg(sqltext::dayMonthYear(*dal), sqltext::dayMonthYear(*al));
    if (problema.isEmpty() && !connection()->hasTable(QString::fromLatin1(storicostatements::OperationsTable)))
        problema = QStringLiteral("Lo storico delle modifiche non è installato in questo database.");
    if (!problema.isEmpty()) {
        avviso(problema);
        return false;
    }
    if (!scegliSenzaFinestra(codice, procedura, {}))
        return false;
    storicostatements::FiltroStorico filtro;
    filtro.company = companyCode();
    filtro.typeId = m_parti->albero.idTipo();
    filtro.from = dal.value_or(QDate());
    filtro.to = al.value_or(QDate());
    filtro.user = utente;
    return step(procedura, [&] {
        const QList<distinta::VoceStorico> voci = distinta::LetturaStorico(connection(), companyCode())
                                                      .leggi(storicostatements::classificationHistoryQuery(filtro));
        distinta::LetturaStorico::esporta(voci, percorso, formato, QStringLiteral("Storico ") + codice);
    });
}

bool FRMGD_DISTINTA::ConfrontoSenzaFinestra(const QString &codiceTipo, const QDate &a, const QDate &b,
                                            const QString &percorso, fw::ExportFile::Format formato)
{
    const QString procedura = QStringLiteral("CMD_CONFRONTA_Click");
    const QString codice = codiceTipo.trimmed().toUpper();
    QString problema = fw::ExportFile::problem(percorso);
    if (problema.isEmpty())
        problema = distinta::Confronto::problemaDate(a, b);
    if (!problema.isEmpty()) {
        avviso(problema);
        return false;
    }
    if (!scegliSenzaFinestra(codice, procedura, {}))
        return false;
    return step(procedura, [&] {
        const QList<distinta::Differenza> differenze = distinta::Confronto::confronta(
            connection(), companyCode(), m_parti->albero.idTipo(), m_parti->albero.tipoSoggetto(), a, b);
        distinta::Confronto::esporta(differenze, percorso, formato, QStringLiteral("Confronto ") + codice);
    });
}

bool FRMGD_DISTINTA::VerificaSenzaFinestra(const QString &codiceTipo, const QString &percorso,
                                           fw::ExportFile::Format formato)
{
    const QString procedura = QStringLiteral("CMD_VERIFICA_Click");
    const QString codice = codiceTipo.trimmed().toUpper();
    const QString problema = fw::ExportFile::problem(percorso);
    if (!problema.isEmpty()) {
        avviso(problema);
        return false;
    }
    std::optional<qint64> tipo;
    if (!codice.isEmpty()) {
        if (!scegliSenzaFinestra(codice, procedura, {}))
            return false;
        tipo = m_parti->albero.idTipo();
    }
    return step(procedura, [&] {
        const QList<distinta::Anomalia> anomalie = distinta::VerificaDistinte::verifica(connection(), companyCode(),
                                                                                        QDate::currentDate(), tipo);
        distinta::VerificaDistinte::esporta(anomalie, percorso, formato,
                                            codice.isEmpty() ? QStringLiteral("Verifica distinte")
                                                             : QStringLiteral("Verifica ") + codice);
    });
}

bool FRMGD_DISTINTA::StampaSenzaFinestra(const QString &codiceTipo, std::optional<int> livello,
                                         std::optional<QDate> giorno)
{
    const QString codice = codiceTipo.trimmed().toUpper();
    m_parti->albero.allaData().impostaSenzaFinestra(giorno);
    const QString senzaNodi = giorno ? QStringLiteral("La distinta \"%1\" non ha nodi validi al %2 da stampare.")
                                           .arg(codice, sqltext::dayMonthYear(*giorno))
                                     : QStringLiteral("La distinta \"%1\" non ha nodi da stampare.").arg(codice);
    if (!scegliSenzaFinestra(codice, QStringLiteral("Stampa"), senzaNodi))
        return false;
    return m_parti->stampa.StampaDistinta(livello ? QString::number(*livello)
                                                  : m_parti->albero.livelli().testoLivello());
}

bool FRMGD_DISTINTA::EsportaSenzaFinestra(const QString &codiceTipo, std::optional<int> livello,
                                          std::optional<QDate> giorno, const QString &percorso,
                                          fw::ExportFile::Format formato)
{
    const QString codice = codiceTipo.trimmed().toUpper();
    const QString problema = fw::ExportFile::problem(percorso);
    if (!problema.isEmpty()) {
        avviso(problema);
        return false;
    }
    m_parti->albero.allaData().impostaSenzaFinestra(giorno);
    const QString senzaNodi = giorno ? QStringLiteral("La distinta \"%1\" non ha nodi validi al %2 da esportare.")
                                           .arg(codice, sqltext::dayMonthYear(*giorno))
                                     : QStringLiteral("La distinta \"%1\" non ha nodi da esportare.").arg(codice);
    if (!scegliSenzaFinestra(codice, QStringLiteral("Esporta"), senzaNodi))
        return false;
    return m_parti->esportazione.EsportaDistinta(
        percorso, formato, livello ? QString::number(*livello) : m_parti->albero.livelli().testoLivello());
}

db::RecordsetPtr FRMGD_DISTINTA::nodi() const
{
    return m_parti->albero.nodi();
}

const distinta::Parametri &FRMGD_DISTINTA::parametri() const
{
    return m_parti->parametri.valori();
}

void FRMGD_DISTINTA::ApplicaEreditaPromozioni(qint64 idNodo, short regola)
{
    m_parti->dettagli.promozioni().ApplicaEreditaPromozioni(idNodo, regola);
}
