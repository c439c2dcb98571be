#include "forms/distinta/finestraimportazione.h"

#include "data/sqltext.h"
#include "forms/distinta/resocontoimportazione.h"
#include "frame/formframe.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

namespace distinta {

using Esito = PianoImportazione::Esito;

FinestraImportazione::FinestraImportazione(FormFrame &form, const QString &file, const QString &distinta)
    : QWidget(&form, Qt::Window)
    , m_form(form)
    , m_file(file)
    , LBL_RIEPILOGO(new QLabel)
    , CMD_APPLICA(new QPushButton(QStringLiteral("&Applica")))
    , CMD_SALVAIMPORTA(
          fw::ExportFile::menuButton(QStringLiteral("CMD_SALVAIMPORTA"), QStringLiteral("Sal&va..."),
                                     QStringLiteral("Salva l'esito di ogni riga in Excel o in CSV (Alt+V)"), this,
                                     [this](fw::ExportFile::Format formato) { CMD_SALVAIMPORTA_Click(formato); }))
    , GRD_IMPORTA(new QTableWidget(0, int(ResocontoImportazione::colonne().size())))
{
    setObjectName(QStringLiteral("FRMGD_IMPORTA"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Importazione in %1 - %2").arg(distinta, QFileInfo(file).fileName()));
    LBL_RIEPILOGO->setObjectName(QStringLiteral("LBL_RIEPILOGO"));
    CMD_APPLICA->setObjectName(QStringLiteral("CMD_APPLICA"));
    CMD_APPLICA->setToolTip(
        QStringLiteral("Scrive nella distinta le righe accettate, come una sola operazione (Alt+A)"));
    CMD_APPLICA->setEnabled(false);
    connect(CMD_APPLICA, &QPushButton::clicked, this, &FinestraImportazione::applicaRichiesta);

    GRD_IMPORTA->setObjectName(QStringLiteral("GRD_IMPORTA"));
    QStringList intestazioni;
    for (const fw::ExportColumn &colonna : ResocontoImportazione::colonne())
        intestazioni << colonna.caption;
    GRD_IMPORTA->setHorizontalHeaderLabels(intestazioni);
    GRD_IMPORTA->setEditTriggers(QAbstractItemView::NoEditTriggers);
    GRD_IMPORTA->setSelectionBehavior(QAbstractItemView::SelectRows);
    GRD_IMPORTA->verticalHeader()->hide();
    GRD_IMPORTA->horizontalHeader()->setStretchLastSection(true);

    auto *comandi = new QHBoxLayout;
    comandi->addWidget(LBL_RIEPILOGO, 1);
    comandi->addWidget(CMD_APPLICA);
    comandi->addWidget(CMD_SALVAIMPORTA);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(comandi);
    layout->addWidget(GRD_IMPORTA, 1);
    resize(1000, 500);
}

void FinestraImportazione::mostra(const PianoImportazione &piano)
{
    m_piano = piano;
    GRD_IMPORTA->setRowCount(int(m_piano.voci.size()));
    const QColor rifiuto = palette().color(QPalette::Active, QPalette::Text).lightness() > 128 ? QColor(255, 120, 120)
                                                                                               : QColor(170, 0, 0);
    for (int row = 0; row < m_piano.voci.size(); ++row) {
        const PianoImportazione::Voce &voce = m_piano.voci.at(row);
        const QList<QVariant> valori = ResocontoImportazione::valori(voce);
        const bool rifiutata = voce.esito == Esito::Rifiutato || voce.esito == Esito::Errore;
        for (int column = 0; column < valori.size(); ++column) {
            const QVariant &valore = valori.at(column);
            auto *item = new QTableWidgetItem(valore.metaType().id() == QMetaType::QDate
                                                  ? sqltext::dayMonthYear(valore.toDate().startOfDay())
                                                  : valore.toString());
            if (rifiutata)
                item->setForeground(rifiuto);
            GRD_IMPORTA->setItem(row, column, item);
        }
    }
    GRD_IMPORTA->resizeColumnsToContents();
    LBL_RIEPILOGO->setText(ResocontoImportazione::riepilogo(m_piano));
    CMD_APPLICA->setEnabled(m_piano.quante(Esito::DaInserire) + m_piano.quante(Esito::DaAggiornare) > 0);
}

void FinestraImportazione::applicata()
{
    CMD_APPLICA->setEnabled(false);
    LBL_RIEPILOGO->setText(QStringLiteral("Importazione eseguita. ") + ResocontoImportazione::riepilogo(m_piano));
}

void FinestraImportazione::CMD_SALVAIMPORTA_Click(fw::ExportFile::Format formato)
{
    const QString nome = QStringLiteral("Importazione %1").arg(QFileInfo(m_file).completeBaseName());
    const QString percorso = fw::ExportFile::chooseInDocuments(this, formato, nome);
    if (percorso.isEmpty())
        return;
    if (m_form.step(QStringLiteral("CMD_SALVAIMPORTA_Click"), [&] {
            ResocontoImportazione::esporta(m_piano, percorso, formato, QStringLiteral("Importazione"));
        }))
        m_form.notifica(QStringLiteral("Esito salvato nel file \"%1\".").arg(QDir::toNativeSeparators(percorso)));
}

} // namespace distinta
