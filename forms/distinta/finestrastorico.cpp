#include "forms/distinta/finestrastorico.h"

#include "data/sqltext.h"
#include "data/storicostatements.h"
#include "forms/distinta/campodata.h"
#include "frame/formframe.h"
#include "framework/messagestyle.h"

#include <QComboBox>
#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace distinta {

namespace {

const QStringList &operazioni()
{
    static const QStringList names {QString(),
                                    QStringLiteral("Inserimento"),
                                    QStringLiteral("Eliminazione"),
                                    QStringLiteral("Modifica"),
                                    QStringLiteral("Propagazione"),
                                    QStringLiteral("Spostamento"),
                                    QStringLiteral("Annullamento"),
                                    QStringLiteral("Ripristino"),
                                    QStringLiteral("Modifica esterna")};
    return names;
}

QLabel *etichetta(const QString &text, QWidget *buddy)
{
    auto *label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

} // namespace

FinestraStorico::FinestraStorico(FormFrame &form, qint64 typeId, const QString &title)
    : QWidget(&form, Qt::Window)
    , m_form(form)
    , m_typeId(typeId)
    , m_title(title)
    , TXT_DAL(new QLineEdit)
    , TXT_AL(new QLineEdit)
    , CBO_UTENTE(new QComboBox)
    , CBO_OPERAZIONE(new QComboBox)
    , CMD_CERCASTORICO(new QPushButton(QStringLiteral("&Cerca")))
    , CMD_ANNULLAOPERAZIONE(new QPushButton(QStringLiteral("Ann&ulla operazione...")))
    , CMD_SALVASTORICO(
          fw::ExportFile::menuButton(QStringLiteral("CMD_SALVASTORICO"), QStringLiteral("Sal&va..."),
                                     QStringLiteral("Salva le righe elencate in Excel o in CSV (Alt+V)"), this,
                                     [this](fw::ExportFile::Format formato) { CMD_SALVASTORICO_Click(formato); }))
    , GRD_STORICO(new QTableView)
{
    setObjectName(QStringLiteral("FRMGD_STORICO"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Storico - ") + title);
    TXT_DAL->setObjectName(QStringLiteral("TXT_DAL"));
    TXT_AL->setObjectName(QStringLiteral("TXT_AL"));
    for (QLineEdit *field : {TXT_DAL, TXT_AL}) {
        preparaCampoData(field, CMD_CERCASTORICO);
    }
    TXT_DAL->setText(sqltext::dayMonthYear(QDate::currentDate().addDays(-30)));
    TXT_AL->setText(sqltext::dayMonthYear(QDate::currentDate()));
    CBO_UTENTE->setObjectName(QStringLiteral("CBO_UTENTE"));
    CBO_UTENTE->setEditable(true);
    CBO_UTENTE->setToolTip(QStringLiteral("Vuoto: le modifiche di tutti gli utenti"));
    CBO_OPERAZIONE->setObjectName(QStringLiteral("CBO_OPERAZIONE"));
    CBO_OPERAZIONE->addItems(operazioni());
    CBO_OPERAZIONE->setItemText(0, QStringLiteral("(tutte)"));
    CMD_CERCASTORICO->setObjectName(QStringLiteral("CMD_CERCASTORICO"));
    CMD_CERCASTORICO->setToolTip(QStringLiteral("Elenca le modifiche della distinta con questi filtri (Alt+C)"));
    CMD_ANNULLAOPERAZIONE->setObjectName(QStringLiteral("CMD_ANNULLAOPERAZIONE"));
    CMD_ANNULLAOPERAZIONE->setToolTip(QStringLiteral("Annulla l'operazione della riga scelta (Alt+U)"));

    GRD_STORICO->setObjectName(QStringLiteral("GRD_STORICO"));
    GRD_STORICO->setModel(&m_modello);
    GRD_STORICO->setSelectionBehavior(QAbstractItemView::SelectRows);
    GRD_STORICO->setSelectionMode(QAbstractItemView::SingleSelection);
    GRD_STORICO->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GRD_STORICO->verticalHeader()->hide();
    GRD_STORICO->horizontalHeader()->setStretchLastSection(true);
    GRD_STORICO->setToolTip(QStringLiteral("Doppio clic: mostra il nodo nella distinta"));
    connect(GRD_STORICO, &QTableView::doubleClicked, this, [this](const QModelIndex &index) {
        const VoceStorico *voce = m_modello.voce(index.row());
        if (voce && voce->codiceSoggetto != 0)
            emit nodoRichiesto(voce->codiceSoggetto);
    });
    connect(GRD_STORICO->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &FinestraStorico::aggiornaComandi);
    connect(&m_modello, &QAbstractItemModel::modelReset, this, &FinestraStorico::aggiornaComandi);
    connect(CMD_CERCASTORICO, &QPushButton::clicked, this, &FinestraStorico::CMD_CERCASTORICO_Click);
    connect(CMD_ANNULLAOPERAZIONE, &QPushButton::clicked, this, &FinestraStorico::CMD_ANNULLAOPERAZIONE_Click);

    auto *filtri = new QHBoxLayout;
    filtri->addWidget(etichetta(QStringLiteral("&Dal"), TXT_DAL));
    filtri->addWidget(TXT_DAL);
    filtri->addWidget(etichetta(QStringLiteral("&al"), TXT_AL));
    filtri->addWidget(TXT_AL);
    filtri->addWidget(etichetta(QStringLiteral("U&tente"), CBO_UTENTE));
    filtri->addWidget(CBO_UTENTE, 1);
    filtri->addWidget(etichetta(QStringLiteral("&Operazione"), CBO_OPERAZIONE));
    filtri->addWidget(CBO_OPERAZIONE, 1);
    filtri->addWidget(CMD_CERCASTORICO);
    auto *comandi = new QHBoxLayout;
    comandi->addWidget(CMD_ANNULLAOPERAZIONE);
    comandi->addStretch();
    comandi->addWidget(CMD_SALVASTORICO);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(filtri);
    layout->addWidget(GRD_STORICO, 1);
    layout->addLayout(comandi);
    resize(1000, 560);
    aggiornaComandi();
}

void FinestraStorico::aggiornaComandi()
{
    const VoceStorico *voce = m_modello.voce(GRD_STORICO->currentIndex().row());
    CMD_ANNULLAOPERAZIONE->setEnabled(voce && voce->idOperazione != 0);
    CMD_SALVASTORICO->setEnabled(m_modello.rowCount() > 0);
}

bool FinestraStorico::CMD_CERCASTORICO_Click()
{
    const QString dal = TXT_DAL->text().trimmed();
    const QString al = TXT_AL->text().trimmed();
    storicostatements::FiltroStorico filtro;
    filtro.company = m_form.companyCode();
    filtro.typeId = m_typeId;
    filtro.from = sqltext::parseDayMonthYear(dal);
    filtro.to = sqltext::parseDayMonthYear(al);
    if ((!dal.isEmpty() && !filtro.from.isValid()) || (!al.isEmpty() && !filtro.to.isValid())) {
        m_form.avviso(QStringLiteral("Scrivere le date nel formato gg/mm/aaaa, o lasciarle vuote."));
        return false;
    }
    if (filtro.from.isValid() && filtro.to.isValid() && filtro.from > filtro.to) {
        m_form.avviso(QStringLiteral("La data iniziale (%1) è successiva alla data finale (%2).").arg(dal, al));
        return false;
    }
    filtro.user = CBO_UTENTE->currentText().trimmed();
    filtro.operation = CBO_OPERAZIONE->currentIndex() > 0 ? CBO_OPERAZIONE->currentText() : QString();
    QList<VoceStorico> voci;
    if (!m_form.step(QStringLiteral("CMD_STORICO_Click"), [&] {
            voci = LetturaStorico(m_form.connection(), m_form.companyCode())
                       .leggi(storicostatements::classificationHistoryQuery(filtro));
        }))
        return false;
    // The users seen become choices of the filter.
    QSet<QString> utenti;
    for (int i = 0; i < CBO_UTENTE->count(); ++i)
        utenti.insert(CBO_UTENTE->itemText(i));
    for (const VoceStorico &voce : std::as_const(voci)) {
        if (!utenti.contains(voce.utente)) {
            utenti.insert(voce.utente);
            CBO_UTENTE->addItem(voce.utente);
        }
    }
    m_modello.imposta(voci);
    GRD_STORICO->resizeColumnsToContents();
    return true;
}

void FinestraStorico::CMD_ANNULLAOPERAZIONE_Click()
{
    const VoceStorico *scelta = m_modello.voce(GRD_STORICO->currentIndex().row());
    if (!scelta || scelta->idOperazione == 0)
        return;
    const VoceStorico voce = *scelta;
    QStringList cambi;
    for (const VoceStorico &line : m_modello.voci()) {
        if (line.idOperazione == voce.idOperazione)
            cambi << QStringLiteral("- ") + (line.soggetto.isEmpty() ? QString() : line.soggetto + QStringLiteral(": "))
                    + line.riga.testo;
    }
    constexpr qsizetype mostrate = 10;
    QString elenco = cambi.mid(0, mostrate).join(QLatin1Char('\n'));
    if (cambi.size() > mostrate)
        elenco += QStringLiteral("\n... e altre %1 modifiche").arg(cambi.size() - mostrate);
    const QString domanda = QStringLiteral("Annullare l'operazione \"%1\" di %2 del %3?\nCambia:\n%4")
                                .arg(voce.operazione, voce.utente,
                                     voce.dataOra.toString(QStringLiteral("dd/MM/yyyy HH:mm")), elenco);
    if (m_form.domanda(domanda) != fw::Answer::Yes)
        return;
    emit annullamentoRichiesto(voce.idOperazione);
    CMD_CERCASTORICO_Click();
}

void FinestraStorico::CMD_SALVASTORICO_Click(fw::ExportFile::Format formato)
{
    if (m_modello.rowCount() == 0)
        return;
    const QString nome = QStringLiteral("Storico ") + m_title;
    const QString percorso = fw::ExportFile::chooseInDocuments(this, formato, nome);
    if (percorso.isEmpty())
        return;
    if (m_form.step(QStringLiteral("CMD_SALVASTORICO_Click"),
                    [&] { LetturaStorico::esporta(m_modello.voci(), percorso, formato, nome); }))
        m_form.notifica(QStringLiteral("Storico salvato nel file \"%1\".").arg(QDir::toNativeSeparators(percorso)));
}

} // namespace distinta
