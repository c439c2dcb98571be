#include "forms/distinta/finestraverifica.h"

#include "data/sqltext.h"
#include "frame/formframe.h"
#include "framework/emptyviewhint.h"

#include <QDir>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace distinta {

FinestraVerifica::FinestraVerifica(FormFrame &form, const QString &title)
    : QWidget(&form, Qt::Window)
    , m_form(form)
    , m_title(title)
    , CMD_SALVAVERIFICA(
          fw::ExportFile::menuButton(QStringLiteral("CMD_SALVAVERIFICA"), QStringLiteral("Sal&va..."),
                                     QStringLiteral("Salva i problemi trovati in Excel o in CSV (Alt+V)"), this,
                                     [this](fw::ExportFile::Format formato) { CMD_SALVAVERIFICA_Click(formato); }))
    , GRD_VERIFICA(new QTableWidget(0, int(VerificaDistinte::colonne().size())))
{
    setObjectName(QStringLiteral("FRMGD_VERIFICA"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Verifica distinte - ") + title);
    CMD_SALVAVERIFICA->setEnabled(false);

    GRD_VERIFICA->setObjectName(QStringLiteral("GRD_VERIFICA"));
    QStringList intestazioni;
    for (const fw::ExportColumn &colonna : VerificaDistinte::colonne())
        intestazioni << colonna.caption;
    GRD_VERIFICA->setHorizontalHeaderLabels(intestazioni);
    GRD_VERIFICA->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GRD_VERIFICA->setSelectionBehavior(QAbstractItemView::SelectRows);
    GRD_VERIFICA->verticalHeader()->hide();
    GRD_VERIFICA->horizontalHeader()->setStretchLastSection(true);
    GRD_VERIFICA->setToolTip(QStringLiteral("Doppio clic o Invio: mostra il nodo nella distinta"));
    // A double click and Enter both activate a line.
    connect(GRD_VERIFICA, &QTableWidget::activated, this, [this](const QModelIndex &index) {
        if (index.row() >= 0 && index.row() < m_anomalie.size())
            emit nodoRichiesto(m_anomalie.at(index.row()));
    });
    m_vuoto = new fw::EmptyViewHint(GRD_VERIFICA, [] { return QStringLiteral("Nessun problema trovato."); });

    auto *comandi = new QHBoxLayout;
    comandi->addStretch();
    comandi->addWidget(CMD_SALVAVERIFICA);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(comandi);
    layout->addWidget(GRD_VERIFICA, 1);
    resize(1000, 500);
}

// The grid's own model is emptied after the viewport the hint's line sits on is gone: the hint
// goes first.
FinestraVerifica::~FinestraVerifica()
{
    delete m_vuoto;
}

void FinestraVerifica::mostra(const QList<Anomalia> &anomalie)
{
    m_anomalie = anomalie;
    GRD_VERIFICA->setRowCount(int(m_anomalie.size()));
    for (int row = 0; row < m_anomalie.size(); ++row) {
        const QList<QVariant> valori = VerificaDistinte::valori(m_anomalie.at(row));
        for (int column = 0; column < valori.size(); ++column)
            GRD_VERIFICA->setItem(row, column, new QTableWidgetItem(valori.at(column).toString()));
    }
    GRD_VERIFICA->resizeColumnsToContents();
    CMD_SALVAVERIFICA->setEnabled(!m_anomalie.isEmpty());
    m_vuoto->refresh();
}

void FinestraVerifica::CMD_SALVAVERIFICA_Click(fw::ExportFile::Format formato)
{
    if (m_anomalie.isEmpty())
        return;
    const QString nome =
        QStringLiteral("Verifica distinte %1 %2")
            .arg(m_title, sqltext::dayMonthYear(QDate::currentDate()).replace(QLatin1Char('/'), QLatin1Char('-')));
    const QString percorso = fw::ExportFile::chooseInDocuments(this, formato, nome);
    if (percorso.isEmpty())
        return;
    if (m_form.step(QStringLiteral("CMD_SALVAVERIFICA_Click"), [&] {
            VerificaDistinte::esporta(m_anomalie, percorso, formato, QStringLiteral("Verifica distinte"));
        }))
        m_form.notifica(QStringLiteral("Problemi salvati nel file \"%1\".").arg(QDir::toNativeSeparators(percorso)));
}

} // namespace distinta
